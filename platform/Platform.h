#pragma once

#include <QtGlobal>

namespace kova {

/// All ports of the application.
struct Platform {
    class Application &application;
    class AudioPlayers &audioPlayers;
    class Bookmarks &bookmarks;
    class Clock &clock;
    class FileChooser &fileChooser;
    class ListStorage &listStorage;
    class Log &log;
    class NotificationCenter &notificationCenter;
    class PowerAssertions &powerAssertions;
    class Resources &resources;
    class RunLoop &runLoop;
    class SpeechSynthesizers &speechSynthesizers;

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
