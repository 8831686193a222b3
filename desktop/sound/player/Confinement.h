#pragma once

namespace kova {

/// Drops everything that playing a sound does not need: new privileges, core files, memory beyond a limit
/// and, if the kernel supports Landlock, executing programs and writing to files other than the sound
/// devices and the memory shared with the sound server. Applies to threads created afterwards.
void confine();

} // namespace kova
