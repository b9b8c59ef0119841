#include "print/protokollsatz.h"

#include <QFontMetricsF>

#include <algorithm>
#include <utility>

namespace tarvel {

namespace {

constexpr double Zeilenabstand = 1.25; ///< of the font's size
constexpr double Oberlänge = 0.95;
constexpr double KeineLigatur = 0.02; ///< the least spacing that counts

double punktgröße(Protokollgrad grad) {
    switch (grad) {
    case Protokollgrad::Titel:
        return 15;
    case Protokollgrad::Abschnitt:
        return 11;
    case Protokollgrad::Text:
        return 10;
    case Protokollgrad::Klein:
        break;
    }
    return 7;
}

/// How many characters from the start of @p text fit, one at least; no pair of surrogates is torn.
qsizetype passend(const QString& text, const QFontMetricsF& maße, double breite) {
    qsizetype passt = 1;
    qsizetype zuViel = text.size() + 1;
    while (zuViel - passt > 1) {
        const qsizetype mitte = (passt + zuViel) / 2;
        (maße.horizontalAdvance(text.first(mitte)) <= breite ? passt : zuViel) = mitte;
    }
    const bool zerrissen = passt < text.size() && text[passt].isLowSurrogate();
    return zerrissen ? (passt > 1 ? passt - 1 : passt + 1) : passt;
}

/// Where the line ends that @p text begins with: at the last blank that fits, if there is one.
qsizetype zeilenende(const QString& text, const QFontMetricsF& maße, double breite) {
    const qsizetype passt = passend(text, maße, breite);
    if (passt == text.size()) {
        return passt;
    }
    const qsizetype lücke = text.lastIndexOf(u' ', passt);
    return lücke > 0 ? lücke : passt;
}

} // namespace

QFont druckschrift(const QString& art, double punkt, bool fett, bool kursiv) {
    QFont schrift(art);
    schrift.setPixelSize(std::max(1, qRound(punkt * MillimeterJePunkt * Schriftfeinheit)));
    schrift.setBold(fett);
    schrift.setItalic(kursiv);
    schrift.setHintingPreference(QFont::PreferNoHinting);
    // Spaced letters, however little, form no ligatures: the code "ff" stays two letters, also for
    // whoever searches the PDF.
    schrift.setLetterSpacing(QFont::AbsoluteSpacing, KeineLigatur);
    return schrift;
}

QStringList umbrochen(const QString& text, const QFont& schrift, double breite, int höchstens) {
    const QFontMetricsF maße(schrift);
    QStringList zeilen;
    QString rest = text.trimmed();
    rest.replace(u'\n', u' ');
    while (zeilen.size() + 1 < höchstens && maße.horizontalAdvance(rest) > breite) {
        const qsizetype ende = zeilenende(rest, maße, breite);
        zeilen << rest.first(ende).trimmed();
        rest = rest.sliced(ende).trimmed();
    }
    zeilen << maße.elidedText(rest, Qt::ElideRight, breite);
    return zeilen;
}

Protokollsatz::Protokollsatz(QString art, bool kursiv)
    : art_(std::move(art))
    , kursiv_(kursiv) {}

QFont Protokollsatz::schrift(Protokollgrad grad, bool fett) const {
    return druckschrift(art_, punktgröße(grad), fett, kursiv_);
}

double Protokollsatz::breite(const QString& text, Protokollgrad grad, bool fett) const {
    return QFontMetricsF(schrift(grad, fett)).horizontalAdvance(text) / Schriftfeinheit;
}

QStringList Protokollsatz::umbrochen(const QString& text, Protokollgrad grad, bool fett,
                                     double breite, int höchstens) const {
    return tarvel::umbrochen(text, schrift(grad, fett), breite * Schriftfeinheit, höchstens);
}

double Protokollsatz::zeilenhöhe(Protokollgrad grad) {
    return punktgröße(grad) * MillimeterJePunkt * Zeilenabstand;
}

double Protokollsatz::grundlinie(Protokollgrad grad) {
    return punktgröße(grad) * MillimeterJePunkt * Oberlänge;
}

} // namespace tarvel
