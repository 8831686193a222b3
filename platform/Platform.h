#pragma once

#include <QtGlobal>

namespace kova {

class Application;
class AudioPlayers;
class Bookmarks;
class Clock;
class FileChooser;
class ListStorage;
class Log;
class NotificationCenter;
class PowerAssertions;
class ProcessActivity;
class Resources;
class RunLoop;
class SpeechSynthesizers;

/// All ports of the application.
struct Platform {
    Application &application;
    AudioPlayers &audioPlayers;
    Bookmarks &bookmarks;
    Clock &clock;
    FileChooser &fileChooser;
    ListStorage &listStorage;
    Log &log;
    NotificationCenter &notificationCenter;
    PowerAssertions &powerAssertions;
    ProcessActivity &processActivity;
    Resources &resources;
    RunLoop &runLoop;
    SpeechSynthesizers &speechSynthesizers;

    /// Sets the ports of the shared services. Call once, from main, before any of them is used. The argument
    /// and its ports must outlive every use of a service.
    static void install(const Platform &platform) {
        Q_ASSERT_X(s_installed == nullptr, "Platform", "installed twice");
        s_installed = &platform;
    }

    static const Platform &installed() {
        Q_ASSERT_X(s_installed != nullptr, "Platform", "a shared service was used before install()");
        return *s_installed;
    }

private:
    static inline const Platform *s_installed = nullptr;
};

} // namespace kova
