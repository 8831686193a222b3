#pragma once

namespace kova {

/// Sets what the process must have from its first moment: its streams, its heap and what the toolkit reads in
/// the environment. Once, by main, before all else.
void prepareProcess();

} // namespace kova
