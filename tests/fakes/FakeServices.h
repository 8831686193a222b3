#pragma once

#include "AlarmScheduler.h"
#include "Application.h"
#include "FakeAudioPlayers.h"
#include "FakeBookmarks.h"
#include "FakeClock.h"
#include "FakeLog.h"
#include "FakeResources.h"
#include "FakeRunLoop.h"
#include "FakeSpeechSynthesizers.h"
#include "FileChooser.h"
#include "ListStorage.h"
#include "NotificationCenter.h"
#include "PowerManager.h"
#include "SoundPlayer.h"
#include "TTSPlayer.h"

namespace kova {

/// Counts the activations.
class FakeApplication : public Application {
public:
    int activations = 0;

    void activate() override { activations += 1; }
    void showMainWindow(const QByteArray &) override {}
};

/// A list in memory. It is written when something asks for it, like the newest one of a disk that is slow.
class FakeListStorage : public ListStorage {
public:
    int writes = 0;
    QStringList unreadable; ///< the reasons

    std::optional<QByteArray> stored() {
        if (m_pending) {
            m_stored = std::exchange(m_pending, nullptr)();
        }
        return m_stored;
    }
    void store(const QByteArray &bytes) {
        m_pending = nullptr;
        m_stored = bytes;
    }

    std::optional<QByteArray> read() override { return stored(); }
    void write(Encoder encode) override {
        writes += 1;
        m_pending = std::move(encode);
    }
    void markUnreadable(const QString &reason) override { unreadable.append(reason); }

private:
    std::optional<QByteArray> m_stored;
    Encoder m_pending;
};

/// Records the requests. The test replies to the permission request.
class FakeNotificationCenter : public NotificationCenter {
public:
    QList<NotificationRequest> requests;
    int asked = 0;
    Authorized answer;
    std::function<void()> added = [] {}; ///< called for each request

    void requestAuthorization(Authorized answered) override {
        asked += 1;
        answer = std::move(answered);
    }
    void add(const NotificationRequest &request) override {
        requests.append(request);
        added();
    }
};

/// Creates assertions with the ids 12345, 12346 and so on, or fails with a code.
class FakePowerAssertions : public PowerAssertions {
public:
    QMap<AssertionID, QString> held; ///< id to name
    qint32 failure = 0;              ///< the code to fail with, 0 to succeed
    int made = 0;

    Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) override {
        if (failure != 0) {
            return Failure{failure};
        }
        const AssertionID id = 12345U + static_cast<AssertionID>(made);
        made += 1;
        held.insert(id, name);
        return id;
    }
    void release(AssertionID id) override { held.remove(id); }
    std::unique_ptr<QObject> beginUserInitiated(const QString &) override { return nullptr; }
};

/// Returns a path set by the test, or cancels.
class FakeFileChooser : public FileChooser {
public:
    std::optional<QString> answer;
    QList<FileChooserRequest> requests;
    std::function<void()> meanwhile = [] {}; ///< called while the dialog is open
    int cancellations = 0;

    std::optional<QString> chooseFile(const FileChooserRequest &request) override {
        requests.append(request);
        meanwhile();
        return answer;
    }
    void cancel() override { cancellations += 1; }
};

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
