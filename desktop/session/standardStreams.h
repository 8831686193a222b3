#pragma once

namespace kova {

/// Makes descriptors 0 to 2 fit for a program that nothing may hold up: one that is closed leads nowhere, a
/// pipe or terminal that is not read makes nobody wait, and the toolkit's messages are lines on standard
/// error. Before anything else is opened.
void prepareStandardStreams();

} // namespace kova
