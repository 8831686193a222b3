#pragma once

#include <QString>

namespace kova {

/// The text on one line: a space for each control character and line separator.
QString plainLine(QString text);

} // namespace kova
