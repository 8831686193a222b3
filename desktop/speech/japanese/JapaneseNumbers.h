#pragma once

#include <QString>

namespace kova {

/// The readings of numbers in katakana, as pronounced: a long vowel is written ー. All functions are
/// reentrant.

/// Returns whether the character is a digit, a kanji digit or a kanji unit.
bool isNumeral(QChar character);

/// Returns the reading of a number such as 25, 二十五, 5万 or 二〇二六; digit by digit if it has no value
/// below 10^16.
QString numberInKana(const QString &number);

/// Returns the reading digit by digit, as after a decimal point.
QString digitsInKana(const QString &digits);

/// Returns the reading of a number, given in kana, with a counter and its reading: サン, 分 and フン give
/// サンプン, イチ, 人 and ニン give ヒトリ.
QString countedInKana(const QString &number, const QString &counter, const QString &reading);

/// Returns the text with times, dates, prices, units and thousands written in full: 7:05 as 7時05分, 11/25 as
/// 11月25日, ¥1,000 as 1000円, 5km as 5キロメートル, 7時〜8時 as 7時から8時. Expects ASCII digits.
QString withNumbersInFull(QString text);

} // namespace kova
