#pragma once

#include <QString>

namespace kova {

/// Numbers as they are said in Japanese: in katakana, a long vowel written ー. Any thread.

/// Whether a number is written with this character: a digit, a kanji digit or a kanji unit.
bool isNumeral(QChar character);

/// Of a number such as 25, 二十五, 5万 or 二〇二六; digit by digit where it has no value below 10^16.
QString numberInKana(const QString &number);

/// Digit by digit, as behind a decimal point.
QString digitsInKana(const QString &digits);

/// A number, in kana, with what it counts, and the sounds that change where they meet: 3 and 分, フン, are
/// サンプン, 1 and 人, ニン, are ヒトリ.
QString countedInKana(const QString &number, const QString &counter, const QString &reading);

/// A text whose times, dates and thousands are written in full: 7:05 as 7時05分, 11/25 as 11月25日, 1,000 as
/// 1000, 7時〜8時 as 7時から8時. Only for ASCII digits.
QString withNumbersInFull(QString text);

} // namespace kova
