#include "print/briefkopfbild.h"

#include "measure/bilddatei.h"
#include "print/briefkopfzeichnung.h"
#include "print/protokollsatz.h"

#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace tarvel {

namespace {

// A picture of this width fills the paper's width at 600 dpi; more would only cost time.
constexpr int GrößteBreite = 5000;
// All of these are decoded before they are reduced, while the window waits.
constexpr qint64 HöchstensBildpunkte = 100'000'000;
// Millimetres.
constexpr double Papierrand = 5;  ///< that many printers leave white
constexpr double Seitenrand = 20; ///< where a long line is broken
constexpr double KleinsteTextbreite = 30;

QImage leseBild(const QString& datei) {
    const std::optional<QSize> gesamt = Bilddatei::liesGröße(datei);
    if (!gesamt || qint64{gesamt->width()} * gesamt->height() > HöchstensBildpunkte) {
        return {};
    }
    QImageReader leser(datei);
    leser.setAutoTransform(true);
    leser.setDecideFormatFromContent(true);
    const QSize größe = leser.size();
    if (größe.isValid() && std::max(größe.width(), größe.height()) > GrößteBreite) {
        leser.setScaledSize(größe.scaled(GrößteBreite, GrößteBreite, Qt::KeepAspectRatio));
    }
    QImage bild = leser.read();
    if (!bild.hasAlphaChannel()) {
        return bild;
    }
    // The paper is white, and a file for archives knows no transparency.
    QImage deckend(bild.size(), QImage::Format_RGB32);
    deckend.fill(Qt::white);
    QPainter(&deckend).drawImage(0, 0, bild);
    return deckend;
}

/// The text of a letterhead in its lines.
struct Kopfsatz {
    QFont schrift;
    QStringList zeilen;
    QRectF rahmen; ///< on the paper, in millimetres
};

Kopfsatz kopfsatz(const Briefkopf& kopf, const Briefkopfgrafik& grafik) {
    constexpr int HöchsteZeilenzahl = 4; // of name, street and city each
    Kopfsatz satz;
    satz.schrift =
        druckschrift(kopf.SchriftArt, kopf.SchriftGröße, kopf.SchriftFett, kopf.SchriftKursiv);
    const QFontMetricsF maße(satz.schrift);
    const QRectF bild = grafik.rahmen(kopf);
    const bool bildDaneben =
        bild.left() >= kopf.TextLinks + KleinsteTextbreite && bild.bottom() > kopf.TextOben;
    const double rechts = bildDaneben ? bild.left() - Papierrand : PapierA4.width() - Seitenrand;
    const double breite = std::max(KleinsteTextbreite, rechts - kopf.TextLinks) * Schriftfeinheit;
    const QStringList teile = briefkopfzeilen(kopf);
    double breiteste = 0;
    for (const QString& teil : teile) {
        const QStringList zeilen = umbrochen(teil, satz.schrift, breite, HöchsteZeilenzahl);
        for (const QString& zeile : zeilen) {
            breiteste = std::max(breiteste, maße.horizontalAdvance(zeile));
            satz.zeilen << zeile;
        }
    }
    const double höhe = maße.lineSpacing() * static_cast<double>(satz.zeilen.size());
    satz.rahmen =
        QRectF(kopf.TextLinks, kopf.TextOben, breiteste / Schriftfeinheit, höhe / Schriftfeinheit);
    return satz;
}

/// Moves the text off the graphic: to its right where a line of some length fits there, else below
/// it, for which the graphic moves up as far as @p unten asks.
void weicheAus(Briefkopf& kopf, const Briefkopfgrafik& grafik, double unten) {
    constexpr double Zeilenbreite = 60;
    constexpr double Luft = 1;
    const QRectF bild = grafik.rahmen(kopf);
    if (!briefkopftext(kopf, grafik).intersects(bild)) {
        return;
    }
    const double rechts = bild.right() + Papierrand;
    if (rechts + Zeilenbreite <= PapierA4.width() - Seitenrand) {
        kopf.TextLinks = static_cast<int>(std::ceil(rechts));
        return;
    }
    const auto darunter = [&kopf, &grafik] {
        kopf.TextOben = static_cast<int>(std::ceil(grafik.rahmen(kopf).bottom() + Luft));
    };
    darunter();
    const double zuTief = briefkopftext(kopf, grafik).bottom() - unten;
    if (zuTief > 0) {
        kopf.GrafikOben = std::max(std::min(kopf.GrafikOben, static_cast<int>(Papierrand)),
                                   kopf.GrafikOben - static_cast<int>(std::ceil(zuTief)));
        darunter();
    }
}

} // namespace

Meldung meldung(Grafikfehler fehler) {
    return fehler == Grafikfehler::NichtGefunden ? Meldung::DateiVerschwunden
           : fehler == Grafikfehler::ZuAufwendig ? Meldung::BriefkopfZeichnungZuAufwendig
                                                 : Meldung::BildKeinBild;
}

Briefkopfgrafik::Briefkopfgrafik(const Briefkopf& kopf) {
    const QString datei = kopf.Ikone == Verband::Andere ? kopf.Datei : emblem(kopf.Ikone);
    if (datei.isEmpty()) {
        return;
    }
    if (!QFileInfo(datei).isFile()) {
        fehler_ = Grafikfehler::NichtGefunden;
    } else if (datei.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        Zeichnung zeichnung = leseZeichnung(datei);
        zeichnung_ = std::move(zeichnung.bild);
        format_ = zeichnung_.format();
        fehler_ = zeichnung.zuAufwendig ? Grafikfehler::ZuAufwendig : Grafikfehler::KeinBild;
    } else {
        bild_ = leseBild(datei);
        format_ = bild_.size();
        fehler_ = Grafikfehler::KeinBild;
    }
    if (vorhanden()) {
        fehler_ = Grafikfehler::Keiner;
    }
}

void Briefkopfgrafik::paint(QPainter& painter, const QRectF& rahmen) const {
    if (!vorhanden()) {
        return;
    }
    if (zeichnung_.gültig()) {
        zeichnung_.male(painter, rahmen);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rahmen, bild_);
    }
}

QRectF Briefkopfgrafik::rahmen(const Briefkopf& kopf) const {
    if (!vorhanden()) {
        return {};
    }
    const double breite = std::max(1.0, PapierA4.width() - kopf.GrafikLinks);
    return {QPointF(kopf.GrafikLinks, kopf.GrafikOben),
            format_.scaled(breite, kopf.GrafikHöhe, Qt::KeepAspectRatio)};
}

QRectF briefkopftext(const Briefkopf& kopf, const Briefkopfgrafik& grafik) {
    return kopfsatz(kopf, grafik).rahmen;
}

Briefkopf eingepasst(const Briefkopf& kopf, const Briefkopfgrafik& grafik, double unten) {
    constexpr int KleinsteSchrift = 6;
    const auto oben = [unten](int gewünscht, double höhe) {
        const auto höchstens = static_cast<int>(std::floor(unten - höhe));
        return std::max(0, std::min(gewünscht, std::max(höchstens, static_cast<int>(Papierrand))));
    };
    Briefkopf neu = kopf;
    neu.GrafikLinks = std::max(0, kopf.GrafikLinks);
    neu.GrafikHöhe = std::clamp(kopf.GrafikHöhe, KleinsteGrafikhöhe,
                                std::max(KleinsteGrafikhöhe, static_cast<int>(unten - Papierrand)));
    neu.GrafikOben = oben(kopf.GrafikOben, grafik.rahmen(neu).height());
    neu.TextLinks = std::clamp(
        kopf.TextLinks, 0, static_cast<int>(PapierA4.width() - Papierrand - KleinsteTextbreite));
    QRectF text = briefkopftext(neu, grafik);
    const double platz = std::max(1.0, unten - Papierrand);
    while (text.height() > platz && neu.SchriftGröße > KleinsteSchrift) {
        // Of a smaller font more fits into a line as well.
        const auto passend = static_cast<int>(neu.SchriftGröße * std::sqrt(platz / text.height()));
        neu.SchriftGröße = std::clamp(passend, KleinsteSchrift, neu.SchriftGröße - 1);
        text = briefkopftext(neu, grafik);
    }
    neu.TextOben = oben(kopf.TextOben, text.height());
    weicheAus(neu, grafik, unten);
    return neu;
}

void maleBriefkopf(QPainter& painter, const Briefkopf& kopf, const Briefkopfgrafik& grafik) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    grafik.paint(painter, grafik.rahmen(kopf));

    const Kopfsatz satz = kopfsatz(kopf, grafik);
    painter.translate(satz.rahmen.topLeft());
    painter.scale(1 / Schriftfeinheit, 1 / Schriftfeinheit);
    painter.setPen(Qt::black);
    painter.setFont(satz.schrift);
    const QFontMetricsF maße(satz.schrift);
    double grundlinie = maße.ascent();
    for (const QString& zeile : satz.zeilen) {
        painter.drawText(QPointF(0, grundlinie), zeile);
        grundlinie += maße.lineSpacing();
    }
    painter.restore();
}

} // namespace tarvel
