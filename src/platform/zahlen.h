#pragma once

#include <QString>

#include <optional>

namespace tarvel {

/// How a person's system writes numbers.
struct Zahlenformat {
    QChar dezimal = u'.';
    QChar tausender = u',';
    QString währung = {};

    /// That of the system's regional settings.
    [[nodiscard]] static Zahlenformat system();
};

/// @p wert by a pattern: "000", "0.00", "#.0", "+0.0;-0.0". A section is literal characters, then
/// digit places ('0' always shown, '#' shown if there is a digit) with at most one '.', then
/// literal characters; literals stand as they are. The second section, if there is one, is for
/// negative numbers and then brings the sign itself, the third for zero. Rounds half away from zero
/// on the decimal text: 15 digits of a double, 7 of a float, so 1.005 by "0.00" gives 1.01. A
/// negative number keeps its sign when it rounds to zero. NaN and infinity come out as zahltext.
[[nodiscard]] QString Format(double wert, QStringView pattern, const Zahlenformat& format);
[[nodiscard]] QString Format(float wert, QStringView pattern, const Zahlenformat& format);
[[nodiscard]] QString Format(int wert, QStringView pattern, const Zahlenformat& format);
[[nodiscard]] QString Format(qint16 wert, QStringView pattern, const Zahlenformat& format);
/// Numeric text is formatted as its double; any other text comes back unchanged.
[[nodiscard]] QString Format(const QString& text, QStringView pattern, const Zahlenformat& format);

/// The shortest default text: up to 15 digits of a double, 7 of a float, with an exponent ("1E-05",
/// "1,234568E+07") below 0.0001 and where the digits do not reach the point. Minus zero is "0".
[[nodiscard]] QString zahltext(double wert, const Zahlenformat& format);
[[nodiscard]] QString zahltext(float wert, const Zahlenformat& format);

/// The number a text begins with; the decimal separator is always a point. Blanks, tabs and line
/// feeds are skipped wherever they stand, exponents may be written with E or D, "&H1F" and "&O17"
/// are whole numbers. 0 when the text begins with no number; the largest double of its sign when
/// the number is larger still.
[[nodiscard]] double Val(QStringView text);

/// The number that the whole text means on a system with @p format: blanks around it, a sign (also
/// apart from the digits), parentheses for a negative number, thousands separators anywhere after
/// the first digit, the currency sign before or behind, an exponent, "&H1F" and "&O17" are
/// understood. nullopt for anything else and for a number beyond the range of double.
[[nodiscard]] std::optional<double> zahlAusText(QStringView text, const Zahlenformat& format);
/// Whether zahlAusText finds a number.
[[nodiscard]] bool istNumerisch(QStringView text, const Zahlenformat& format);

/// The number in a field a person types decimals into. '.' and ',' are both the decimal separator,
/// nothing is a thousands separator, so "1.234,5" is no number. Blanks around, a sign and an
/// exponent are understood. nullopt when the text is no number or beyond the range of double.
[[nodiscard]] std::optional<double> getippteZahl(QStringView text);

/// @p wert as a single; nullopt beyond its range, or when nothing but zero would remain of it.
[[nodiscard]] std::optional<float> einfachGenau(double wert);

/// Rounded to the nearest whole number, halves to the even one (2.5 gives 2); nullopt when that
/// does not fit, and for NaN.
[[nodiscard]] std::optional<qint16> ganzzahl16(double wert);
[[nodiscard]] std::optional<qint32> ganzzahl32(double wert);

/// The number of a wing or bee as lists, marks and messages show it: at least three digits.
[[nodiscard]] QString dreistellig(int nummer);

} // namespace tarvel
