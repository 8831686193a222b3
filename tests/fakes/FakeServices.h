#pragma once

#include "AlarmScheduler.h"
#include "FakeApplication.h"
#include "FakeAudioPlayers.h"
#include "FakeBookmarks.h"
#include "FakeClock.h"
#include "FakeListStorage.h"
#include "FakeLog.h"
#include "FakeNotificationCenter.h"
#include "FakePowerAssertions.h"
#include "FakeResources.h"
#include "FakeRunLoop.h"
#include "FakeSpeechSynthesizers.h"
#include "PowerManager.h"
#include "SoundPlayer.h"
#include "TTSPlayer.h"

namespace kova {

/// The real services on fake ports, in the order in which they need each other.
struct FakeServices {
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    FakeLog log;
    FakeListStorage listStorage;
    FakeAudioPlayers audioPlayers;
    FakeSpeechSynthesizers synthesizers;
    FakeNotificationCenter notificationCenter;
    FakePowerAssertions powerAssertions;
    FakeBookmarks bookmarks;
    FakeResources resources;
    FakeApplication application;

    SoundPlayer soundPlayer{audioPlayers, bookmarks, resources, runLoop, log};
    TTSPlayer ttsPlayer{synthesizers, runLoop, log};
    PowerManager powerManager{powerAssertions, log};
    AlarmScheduler scheduler{{clock, runLoop, notificationCenter, application, log, soundPlayer, ttsPlayer}};
};

} // namespace kova
