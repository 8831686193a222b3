#pragma once

#include "Platform.h"

#include <memory>

namespace kova {

class MessageBuses;

/// The real desktop: every port but those that need a window, which come from outside and must outlive it.
/// Needs the application object.
class DesktopPlatform {
public:
    DesktopPlatform(Application &application, FileChooser &fileChooser);
    ~DesktopPlatform();
    DesktopPlatform(const DesktopPlatform &) = delete;
    DesktopPlatform &operator=(const DesktopPlatform &) = delete;

    Platform ports();

    /// What the program's own parts of the desktop use too.
    MessageBuses &buses();

    /// Lands what is to be saved and lets go of the machine's sleep, in bounded time. False when a
    /// service still holds up a thread of ours: then the process can only end at once.
    bool shutDown();

private:
    struct Services;

    Application &m_application;
    FileChooser &m_fileChooser;
    std::unique_ptr<Services> m_services;
};

} // namespace kova
