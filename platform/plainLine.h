#pragma once

#include <QString>

namespace kova {

/// Returns the text for display outside the application: on one line, with a space for each control character
/// and line separator, and without format characters, such as those that reverse text, but for those that
/// join.
QString plainLine(QString text);

} // namespace kova
