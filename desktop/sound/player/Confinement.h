#pragma once

namespace kova {

/// Gives up what playing a sound does not need: new privileges, core files, much memory and, where the kernel
/// can take them away, the starting of programs and all writing but to the sound devices and the memory that
/// is shared with the sound server. Holds for the threads that come after it.
void confine();

} // namespace kova
