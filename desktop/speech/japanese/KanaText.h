#pragma once

#include <QByteArray>
#include <QString>

namespace kova {

/// A Japanese text and its reading, around a morphological analyser that tells each word on a line: the word
/// with the space before it, a tab, and its features as IPADIC has them. An empty line ends each line of the
/// text. Any thread.

/// Whether the text has kana or kanji.
bool isJapanese(const QString &text);

/// The text as the analyser is to see it, in UTF-8.
QByteArray forAnalyser(const QString &text);

/// The reading in katakana, as it is pronounced; the phrases stand apart, and what is not Japanese stays.
/// Empty where it can't be told.
QString kanaOf(const QByteArray &analysis);

} // namespace kova
