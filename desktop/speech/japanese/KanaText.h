#pragma once

#include <QByteArray>
#include <QString>

namespace kova {

/// Conversion of Japanese text to kana by a morphological analyser, which writes one word per line: the word
/// with the space before it, a tab, and its features in IPADIC's order. An empty line ends each line of the
/// text. All functions are reentrant.

/// Returns whether the text contains kana or kanji.
bool isJapanese(const QString &text);

/// Returns the analyser's input for the text, in UTF-8.
QByteArray forAnalyser(const QString &text);

/// Returns the reading in katakana, as pronounced, with spaces between phrases and other scripts unchanged;
/// empty if the analysis has no readings.
QString kanaOf(const QByteArray &analysis);

} // namespace kova
