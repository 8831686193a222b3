#pragma once

#include <QString>

namespace kova {

/// The length to which the views and notifications shorten a text: more than they have room for.
constexpr int maxShownLength = 1000;

/// Returns the text, or its first `maxLength` characters (graphemes) and "…" if it is longer. The duration
/// depends on `maxLength` only, so call this before a layout.
QString elided(const QString &text, int maxLength = maxShownLength);

/// Returns the text for display outside the application, on one line: replaces control characters and line
/// separators by spaces, and removes format characters, such as those that reverse text, except joiners.
QString plainLine(QString text);

} // namespace kova
