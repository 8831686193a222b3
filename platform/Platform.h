#pragma once

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
    static void install(const Platform &platform);

    /// Returns the installed ports.
    static const Platform &installed();
};

} // namespace kova
