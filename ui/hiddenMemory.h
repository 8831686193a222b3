#pragma once

namespace kova {

/// Gives back what a program in the background can do without: free pages of the heap, and the pages of code,
/// which come back from the disk cache when they run again.
void releaseHiddenMemory();

} // namespace kova
