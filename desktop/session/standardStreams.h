#pragma once

namespace kova {

/// Prepares descriptors 0 to 2: opens closed ones on /dev/null, makes output to pipes and terminals
/// non-blocking, and sends Qt's messages to standard error. Call before anything else is opened.
void prepareStandardStreams();

} // namespace kova
