#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace tarvel {

/// Fonts are laid out in whole units of hundredths of a millimetre, fine enough for any printer.
inline constexpr double Schriftfeinheit = 100;
inline constexpr double MillimeterJePunkt = 25.4 / 72;

/// Font of @p punkt points for a painter whose unit is a hundredth of a millimetre. Unhinted, so
/// that its widths are the same on every target.
[[nodiscard]] QFont druckschrift(const QString& art, double punkt, bool fett, bool kursiv);

/// Lines of @p text that are not wider than @p breite, in the units of the font: broken at blanks,
/// a longer word anywhere. What does not fit into @p höchstens lines ends in an ellipsis. One line
/// at least.
[[nodiscard]] QStringList umbrochen(const QString& text, const QFont& schrift, double breite,
                                    int höchstens);

/// The type sizes of the report.
enum class Protokollgrad {
    Titel,     ///< 15 points
    Abschnitt, ///< 11 points: headings and the verdict
    Text,      ///< 10 points: values
    Klein,     ///< 7 points: names of values and notes
};

/// Measures and breaks the report's text. Lengths are millimetres.
class Protokollsatz {
public:
    Protokollsatz(QString art, bool kursiv);

    [[nodiscard]] QFont schrift(Protokollgrad grad, bool fett) const;
    [[nodiscard]] double breite(const QString& text, Protokollgrad grad, bool fett) const;
    [[nodiscard]] QStringList umbrochen(const QString& text, Protokollgrad grad, bool fett,
                                        double breite, int höchstens) const;
    /// Height of a line, the same for all fonts.
    [[nodiscard]] static double zeilenhöhe(Protokollgrad grad);
    /// From the top of a line to where its letters stand.
    [[nodiscard]] static double grundlinie(Protokollgrad grad);

private:
    QString art_;
    bool kursiv_;
};

} // namespace tarvel
