#include "collection/kolonietabelle.h"

#include "results/zeileneingabe.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr double Bildbreite = 1480;
constexpr double Tabellenzeile = 21;
constexpr double Kopfhöhe = 40;
constexpr double Fußzeilen = 5; ///< as high as rows, with the heading
constexpr int ersteIndexspalte = static_cast<int>(Kolonienspalte::Index);

Größe größeIn(int spalte) {
    return Größen.at(static_cast<std::size_t>((spalte - ersteIndexspalte) / SpaltenJeIndex));
}
int artIn(int spalte) {
    return (spalte - ersteIndexspalte) % SpaltenJeIndex;
}
bool istIndex(int spalte) {
    return spalte >= ersteIndexspalte && spalte < SpalteUrteil;
}

/// A figure of the discoidal shift; the number of its wings is none.
bool istDVWert(int spalte) {
    return istIndex(spalte) && größeIn(spalte) == Größe::DV && artIn(spalte) > 0;
}

double bildbreiteVon(int spalte) {
    constexpr std::array<double, 6> Angaben{96, 92, 100, 130, 84, 70};
    constexpr std::array<double, SpaltenJeIndex> JeIndex{36, 50, 44, 50, 50};
    return spalte < ersteIndexspalte ? Angaben.at(static_cast<std::size_t>(spalte))
           : istIndex(spalte)        ? JeIndex.at(static_cast<std::size_t>(artIn(spalte)))
           : spalte == SpalteUrteil  ? 96
                                     : 90;
}

QString indextext(const Koloniewerte& k, int spalte, const Übersichtsworte& worte) {
    const std::optional<double> zahl = indexzahl(k, spalte);
    if (!zahl) {
        return {};
    }
    switch (artIn(spalte)) {
    case 0:
        return QString::number(*zahl) + (*zahl > 0 && *zahl < WenigeFlügel ? u"*"_s : QString());
    case 1:
        return werttext(größeIn(spalte), *zahl, worte.format);
    case 2:
        return streuungstext(größeIn(spalte), *zahl, worte.format);
    default:
        return Format(*zahl, u"0"_s, worte.format);
    }
}

} // namespace

QString spaltenkopf(int spalte, const Texte& t) {
    if (istIndex(spalte)) {
        QString name = kurzname(größeIn(spalte), t);
        switch (artIn(spalte)) {
        case 0:
            return u"n "_s + name;
        case 1:
            return name;
        case 2:
            return u"s "_s + name;
        case 3:
            return name + u" < %"_s;
        default:
            return name + u" > %"_s;
        }
    }
    switch (static_cast<Kolonienspalte>(spalte)) {
    case Kolonienspalte::Nummer:
        return t(Text::SpalteNummer);
    case Kolonienspalte::Volk:
        return t(Text::Volk);
    case Kolonienspalte::Königin:
        return t(Text::Königin);
    case Kolonienspalte::Züchter:
        return t(Text::Züchter);
    case Kolonienspalte::Datum:
        return t(Text::SpalteDatum);
    case Kolonienspalte::Dpi:
        return t(Meldung::EinheitDpi);
    default:
        return spalte == SpalteUrteil ? t(Text::SpalteEntspricht)
                                      : t(Meldung::ÜbersichtSpalteHistogramm);
    }
}

QString spaltentipp(int spalte, const Texte& t) {
    if (!istIndex(spalte)) {
        return spalte == SpalteUrteil ? t(Meldung::ÜbersichtTippUrteil) : QString();
    }
    constexpr std::array<Meldung, SpaltenJeIndex> Tipps{
        Meldung::ÜbersichtTippAnzahl, Meldung::ÜbersichtTippMittel, Meldung::ÜbersichtTippStreuung,
        Meldung::ÜbersichtTippUnter, Meldung::ÜbersichtTippÜber};
    return t(Tipps.at(static_cast<std::size_t>(artIn(spalte)))).arg(kurzname(größeIn(spalte), t));
}

QString zellentext(const Koloniewerte& k, int spalte, const Übersichtsworte& worte) {
    if (istIndex(spalte)) {
        const QString text = indextext(k, spalte, worte);
        return istDVWert(spalte) && !text.isEmpty() && DVUnvergleichbar(k) ? u'(' + text + u')'
                                                                           : text;
    }
    switch (static_cast<Kolonienspalte>(spalte)) {
    case Kolonienspalte::Nummer:
    case Kolonienspalte::Volk:
    case Kolonienspalte::Königin:
    case Kolonienspalte::Züchter:
        return textIn(k, spalte);
    case Kolonienspalte::Datum:
        return kurzesDatum(worte.texte, k.datum);
    case Kolonienspalte::Dpi:
        return k.dpi > 0                         ? QString::number(k.dpi)
               : k.dpi == Koloniewerte::Gemischt ? worte.texte(Meldung::ÜbersichtDpiKurz)
                                                 : u"?"_s;
    default:
        return spalte == SpalteUrteil ? urteilstext(k, worte.texte) : QString();
    }
}

QString zellentipp(const Koloniewerte& k, int spalte, const Texte& t) {
    const bool betrifft = istDVWert(spalte) || spalte == static_cast<int>(Kolonienspalte::Dpi);
    if (!betrifft || !DVUnvergleichbar(k)) {
        return {};
    }
    return t(k.dpi == Koloniewerte::Gemischt ? Meldung::ÜbersichtTippDvGemischt
                                             : Meldung::ÜbersichtTippDvUnbekannt)
        .arg(kurzname(Größe::DV, t));
}

QStringList DVHinweise(const Kolonieauswahl& kolonien, const Texte& t) {
    const QString name = kurzname(Größe::DV, t);
    QStringList liste;
    const std::vector<int> dpi = auflösungenVon(kolonien);
    if (std::count_if(dpi.begin(), dpi.end(), [](int d) { return d > 0; }) > 1) {
        liste << t(Meldung::ÜbersichtDvNurGleiche).arg(name);
    }
    const auto zahl = std::count_if(kolonien.begin(), kolonien.end(),
                                    [](const Koloniewerte* k) { return DVUnvergleichbar(*k); });
    if (zahl > 0) {
        liste << t(Meldung::ÜbersichtDvKlammern).arg(name, QString::number(zahl));
    }
    return liste;
}

void maleKleinesHistogramm(QPainter& painter, const QRectF& rahmen, const Koloniewerte& kolonie,
                           const QColor& farbe, const QColor& grundlinie) {
    const auto& klassen = kolonie[Größe::CI].klassen;
    const auto anzahl = static_cast<std::size_t>(klassenzahl(Größe::CI));
    const int höchste = *std::max_element(klassen.begin() + 1, klassen.begin() + anzahl + 1);
    painter.fillRect(QRectF(rahmen.left(), rahmen.bottom() - 1, rahmen.width(), 1), grundlinie);
    if (höchste == 0) {
        return;
    }
    const double breite = rahmen.width() / static_cast<double>(anzahl);
    for (std::size_t klasse = 1; klasse <= anzahl; ++klasse) {
        const double höhe = (rahmen.height() - 1) * klassen.at(klasse) / höchste;
        painter.fillRect(QRectF(rahmen.left() + static_cast<double>(klasse - 1) * breite,
                                rahmen.bottom() - 1 - höhe, breite * 0.9, höhe),
                         farbe);
    }
}

QSizeF tabellengröße(std::size_t zeilen) {
    const auto gezeigt = static_cast<double>(std::min<std::size_t>(zeilen, HöchsteBildzeilen));
    return {Bildbreite, Kopfhöhe + Tabellenzeile * (std::max(gezeigt, 3.0) + Fußzeilen) + 12};
}

void maleTabelle(QPainter& painter, const QRectF& rahmen, const Kolonieauswahl& zeilen,
                 const Übersichtsworte& worte, const Diagrammstil& stil) {
    if (rahmen.width() < 1 || rahmen.height() < 1) {
        return;
    }
    const QSizeF größe = tabellengröße(zeilen.size());
    Diagrammmaß maß;
    maß.faktor = std::min(rahmen.width() / größe.width(), rahmen.height() / größe.height());
    maß.ursprung = rahmen.topLeft();
    maß.größe = rahmen.size() / maß.faktor;
    Zeichenfläche z(painter, maß, stil);
    const Texte& t = worte.texte;
    const QFont titel = diagrammschrift(stil, Schriftgrad::Titel, true);
    const QFont fett = diagrammschrift(stil, Schriftgrad::Klein, true);
    const QFont klein = diagrammschrift(stil, Schriftgrad::Klein);
    constexpr double Rand = Übersichtsblatt::Rand;
    const double rechts = größe.width() - Rand;
    z.text({Rand, Kopfhöhe / 2}, Qt::AlignLeft, t(Meldung::Zuchtübersicht), titel, stil.schrift);
    const auto zeile = [&](double y, const QFont& schrift, auto&& text) {
        double x = Rand;
        for (int spalte = 0; spalte < Kolonienspalten; ++spalte) {
            const double breite = bildbreiteVon(spalte);
            const QString wort = text(spalte);
            const QFont passend = verkleinert(schrift, wort, breite - 6);
            const bool zahl = istIndex(spalte);
            z.text({zahl ? x + breite - 6 : x, y + Tabellenzeile / 2},
                   zahl ? Qt::AlignRight : Qt::AlignLeft, gekürzt(wort, passend, breite - 6),
                   passend, stil.schrift);
            x += breite;
        }
    };
    double y = Kopfhöhe;
    zeile(y, fett, [&](int spalte) { return spaltenkopf(spalte, t); });
    y += Tabellenzeile;
    z.linie({Rand, y}, {rechts, y}, stil.blass, 1.2);
    const std::size_t gezeigt = std::min<std::size_t>(zeilen.size(), HöchsteBildzeilen);
    for (std::size_t i = 0; i < gezeigt; ++i) {
        const Koloniewerte& k = *zeilen[i];
        zeile(y, klein, [&](int spalte) { return zellentext(k, spalte, worte); });
        const double breite = bildbreiteVon(SpalteHistogramm);
        maleKleinesHistogramm(z.painter(),
                              QRectF(rechts - breite, y + 2, breite, Tabellenzeile - 4), k,
                              stil.probe, stil.gitter);
        y += Tabellenzeile;
        z.linie({Rand, y}, {rechts, y}, stil.gitter, 1);
    }
    QStringList fuß{zeilen.empty() ? t(Meldung::ÜbersichtLeer)
                                   : t(Meldung::ÜbersichtTabelleErklärung)};
    fuß << DVHinweise(zeilen, t);
    if (gezeigt < zeilen.size()) {
        fuß << t(Meldung::ÜbersichtErsteZeilen).arg(gezeigt).arg(zeilen.size());
    }
    for (const QString& absatz : fuß) {
        for (const QString& wort : umbruch(absatz, klein, rechts - Rand)) {
            y += Übersichtsblatt::Fußzeile;
            z.text({Rand, y - 4}, Qt::AlignLeft, wort, klein, stil.blass);
        }
    }
}

} // namespace tarvel
