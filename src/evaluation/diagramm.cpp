#include "evaluation/diagramm.h"

#include "lang/protokolltexte.h"
#include "lang/texte.h"
#include "platform/zahlen.h"

#include <QFont>
#include <QPalette>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QColor gemischt(const QColor& farbe, const QColor& grund, double anteil) {
    const auto kanal = [anteil](int f, int g) { return qRound(g + (f - g) * anteil); };
    return {kanal(farbe.red(), grund.red()), kanal(farbe.green(), grund.green()),
            kanal(farbe.blue(), grund.blue())};
}

/// Mixed colours rather than transparent ones: printers and vector files render them all alike.
Diagrammstil gefärbt(const QFont& schrift, const QColor& grund, const QColor& text) {
    const bool dunkel = grund.lightness() < 128;
    Diagrammstil stil;
    stil.schriftart = schrift.family();
    stil.kursiv = schrift.italic();
    stil.grund = grund;
    stil.schrift = text;
    stil.blass = gemischt(text, grund, 0.72);
    stil.gitter = gemischt(text, grund, 0.13);
    // Blue, orange and vermilion stay apart for all common kinds of colour blindness.
    stil.probe = dunkel ? QColor(95, 185, 240) : QColor(0, 100, 170);
    stil.fläche = gemischt(stil.probe, grund, dunkel ? 0.5 : 0.45);
    stil.rasse = dunkel ? QColor(240, 170, 40) : QColor(150, 95, 0);
    stil.bereich = gemischt(stil.rasse, grund, dunkel ? 0.16 : 0.12);
    stil.verfehlt = dunkel ? QColor(255, 125, 85) : QColor(195, 65, 0);
    stil.gewählt = text;
    return stil;
}

} // namespace

Diagrammstil Diagrammstil::bildschirm(const QPalette& palette, const QFont& schrift) {
    return gefärbt(schrift, palette.color(QPalette::Base), palette.color(QPalette::Text));
}

Diagrammstil Diagrammstil::farbdruck(const QFont& schrift) {
    return gefärbt(schrift, Qt::white, QColor(20, 20, 20));
}

Diagrammstil Diagrammstil::schwarzweiß(const QFont& schrift) {
    Diagrammstil stil;
    stil.schriftart = schrift.family();
    stil.kursiv = schrift.italic();
    stil.grund = Qt::white;
    stil.schrift = stil.probe = stil.rasse = stil.verfehlt = stil.gewählt = Qt::black;
    stil.blass = QColor(60, 60, 60);
    stil.gitter = QColor(205, 205, 205);
    stil.fläche = QColor(165, 165, 165);
    stil.bereich = QColor(240, 240, 240);
    return stil;
}

Diagrammworte Diagrammworte::bildschirm(const Texte& texte) {
    Diagrammworte worte = protokoll(texte, ProtokolltexteStandard(texte));
    worte.ausgelassen = texte(Meldung::AnzahlAusgelassen);
    return worte;
}

Diagrammworte Diagrammworte::protokoll(const Texte& texte, const Protokolltexte& eigene) {
    return {.cubitalindex = eigene(Text::Cubitalindex),
            .hantelindex = eigene(Text::Hantelindex),
            .discoidalverschiebung = texte(Text::Discoidalverschiebung),
            .CI = eigene(Text::CI),
            .HI = eigene(Text::HI),
            .DV = eigene(Text::DV),
            .klasse = eigene(Text::Klasse),
            .bienenJeKlasse = eigene(Text::BienenJeKlasse),
            .mittelwert = eigene(Text::Mittelwert),
            .nebengipfel = eigene(Text::Nebengipfel),
            .keinNebengipfel = texte(Meldung::KeinNebengipfel),
            .hantelklassen = texte(Text::HantelindexBienenJeKlasse),
            .dvKlassen = texte(Meldung::DVBienenJeKlasse),
            .korrelation = eigene(Text::KorrelationHantelindexDiscoidalverschiebung),
            .imVertrauensbereich = texte(Meldung::ImVertrauensbereich),
            .nichtImVertrauensbereich = eigene(Text::NichtImVertrauensbereich),
            .grenzlinie = texte(Meldung::Grenzlinie),
            .flügel = texte(Text::Flügel),
            .außerhalbDerAchse = texte(Meldung::AußerhalbDerAchse),
            .keineMessung = texte(Meldung::NochKeineMessung),
            .keineKorrelation = texte(Meldung::NochKeineKorrelation),
            .ausgelassen = {}};
}

QString flügelzahl(std::size_t n, int ausgelassen, const Diagrammworte& worte) {
    QString text = QStringLiteral("n = %1").arg(n);
    if (ausgelassen > 0 && !worte.ausgelassen.isEmpty()) {
        text += QStringLiteral(" (%1)").arg(worte.ausgelassen.arg(ausgelassen));
    }
    return text;
}

float chartwert(const Messreihe& reihe, int nummer, float Chartwerte::*größe,
                const QString& zeilenwert) {
    if (nummer >= 0 && nummer <= Messreihe::HöchsteFlügelzahl) {
        const float wert = reihe.chartwerte(nummer).*größe;
        if (wert != Chartwerte::KeinWert) {
            return wert;
        }
    }
    return static_cast<float>(
        getippteZahl(zeilenwert).value_or(static_cast<double>(Chartwerte::KeinWert)));
}

std::vector<int> flügelAn(QPointF ort, std::span<const Diagrammstelle> stellen) {
    std::vector<int> nummern;
    for (const Diagrammstelle& stelle : stellen) {
        if (stelle.fläche.contains(ort)) {
            nummern.insert(nummern.end(), stelle.flügel.begin(), stelle.flügel.end());
        }
    }
    std::sort(nummern.begin(), nummern.end());
    nummern.erase(std::unique(nummern.begin(), nummern.end()), nummern.end());
    return nummern;
}

QString flügelliste(std::span<const int> flügel, const QString& wort, QChar umbruch) {
    constexpr int JeZeile = 12;
    QString text = flügel.empty() ? QString() : wort;
    int stelle = 0;
    for (const int nummer : flügel) {
        if (stelle > 0) {
            text += u',';
        }
        text += stelle > 0 && stelle % JeZeile == 0 ? umbruch : QChar(u' ');
        text += dreistellig(nummer);
        ++stelle;
    }
    return text;
}

} // namespace tarvel
