#include "evaluation/korrel.h"

#include "evaluation/klassen.h"
#include "evaluation/zeichenflaeche.h"
#include "measure/indexmuster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// Units of the chart.
constexpr double RandLinks = 74;
constexpr double RandRechts = 22;
constexpr double Kopfhöhe = 94;
constexpr double Achshöhe = 50;
constexpr double Fußzeile = 20;
constexpr double Kreuzarm = 5.5;
constexpr double Kreisradius = 7.5;
constexpr double Legendenhöhe = 74; ///< middle of its line
constexpr double Zeichenbreite = 24;
constexpr double Randzeichenbreite = 20;
constexpr double Eintragsabstand = 20;
constexpr double Zeigeradius = 9; ///< how near a pointer must come to a cross

constexpr Bereich ÜblicherDV{-4, 4};
constexpr Bereich ÄußersterDV{-10, 10};
constexpr Bereich ÜblicherHI{0.8, 1.3};
constexpr Bereich ÄußersterHI{0.5, 1.5};

constexpr QStringView MarkeDV = u"+0.0;-0.0;0.0";      // of the axis, where 0 has no sign
constexpr QStringView FormatFlügelDV = u"+0.0#;-0.0#"; // as fine as a boundary line
constexpr QStringView FormatGrenzeDV = u"+0.00;-0.00;0.00";

struct Layout {
    Diagrammmaß maß;
    QRectF fläche;
    Achse DV;
    Achse HI;
    QString fuß;       ///< names the wings beyond the axes; empty without any
    QString kurzerFuß; ///< says how many

    /// Place of a wing, drawn at the edge where it lies beyond.
    [[nodiscard]] QPointF ort(const Korrelpunkt& p) const {
        return {std::clamp(DV.ort(p.DV), fläche.left(), fläche.right()),
                std::clamp(HI.ort(p.HI), fläche.top(), fläche.bottom())};
    }
    [[nodiscard]] bool jenseits(const Korrelpunkt& p) const {
        return !DV.enthält(p.DV) || !HI.enthält(p.HI);
    }
};

Bereich achsbereich(const Korrelbild& bild, double Korrelpunkt::*größe, double grenze,
                    Bereich üblicher, double schritt, Bereich äußerster) {
    std::vector<float> werte;
    if (bild.begrenzt) {
        werte.push_back(static_cast<float>(grenze));
    }
    for (const Korrelpunkt& p : bild.flügel) {
        werte.push_back(static_cast<float>(p.*größe));
    }
    return erweitert(üblicher, werte, schritt, äußerster);
}

Layout layout(const QRectF& rahmen, const Korrelbild& bild) {
    Layout l;
    l.maß = Diagrammmaß::für(rahmen);
    const Bereich DV =
        achsbereich(bild, &Korrelpunkt::DV, bild.bereich.DV, ÜblicherDV, 1, ÄußersterDV);
    const Bereich HI =
        achsbereich(bild, &Korrelpunkt::HI, bild.bereich.HI, ÜblicherHI, 0.05, ÄußersterHI);
    l.DV = {DV.von, DV.bis, 0, 1};
    l.HI = {HI.von, HI.bis, 0, 1};
    std::vector<int> jenseits;
    for (const Korrelpunkt& p : bild.flügel) {
        if (l.jenseits(p)) {
            jenseits.push_back(p.nummer);
        }
    }
    if (!jenseits.empty()) {
        l.fuß = bild.worte.außerhalbDerAchse.arg(flügelliste(jenseits, bild.worte.flügel, u' '));
        l.kurzerFuß = bild.worte.außerhalbDerAchse.arg(u"n = %1"_s.arg(jenseits.size()));
    }
    l.fläche = QRectF(QPointF(RandLinks, Kopfhöhe),
                      QPointF(std::max(RandLinks + 1, l.maß.größe.width() - RandRechts),
                              l.maß.größe.height() - Achshöhe - (l.fuß.isEmpty() ? 0 : Fußzeile)));
    l.DV = {DV.von, DV.bis, l.fläche.left(), l.fläche.right()};
    l.HI = {HI.von, HI.bis, l.fläche.bottom(), l.fläche.top()};
    return l;
}

class Zeichner {
public:
    Zeichner(QPainter& painter, const Layout& layout, const Korrelbild& bild,
             const Diagrammstil& stil)
        : z_(painter, layout.maß, stil)
        , l_(layout)
        , bild_(bild)
        , stil_(stil)
        , klein_(diagrammschrift(stil, Schriftgrad::Klein))
        , normal_(diagrammschrift(stil, Schriftgrad::Normal))
        , fett_(diagrammschrift(stil, Schriftgrad::Normal, true)) {}

    void zeichne() {
        kopf();
        legende();
        if (bild_.begrenzt) {
            z_.fülle(vertrauensfläche(), stil_.bereich);
        }
        achsen();
        if (bild_.begrenzt) {
            grenzlinien();
        }
        for (const Korrelpunkt& p : bild_.flügel) {
            flügel(p);
        }
        if (bild_.flügel.empty()) {
            z_.schild(l_.fläche.center(), Qt::AlignHCenter,
                      gekürzt(bild_.worte.keineKorrelation, normal_, l_.fläche.width() - 20),
                      normal_, stil_.schrift);
        } else {
            mittelwert(mittelort());
        }
        // Above the crosses, so that no cross strikes a word out; the words hide no cross either.
        if (bild_.begrenzt) {
            grenzschilder();
        }
        hervorhebungen();
        if (!l_.fuß.isEmpty()) {
            z_.text({RandLinks, l_.maß.größe.height() - Fußzeile / 2 - 2}, Qt::AlignLeft,
                    textbreite(l_.fuß, klein_) > l_.fläche.width() ? l_.kurzerFuß : l_.fuß, klein_,
                    stil_.verfehlt);
        }
    }

private:
    void kopf() {
        const QFont titel = diagrammschrift(stil_, Schriftgrad::Titel, true);
        z_.text({RandLinks, 19}, Qt::AlignLeft,
                gekürzt(bild_.worte.korrelation, titel, l_.fläche.width()), titel, stil_.schrift);
        if (!bild_.mitKennzahlen) {
            return;
        }
        const QString zahlen = eingepasst(l_.fläche.width(), normal_, [this](double breite) {
            return flügelzahl(bild_.flügel.size(), bild_.ausgelassen, bild_.worte) +
                   kennzahlen(bild_.worte.HI, bild_.HI, muster::HI, muster::HI, breite) +
                   kennzahlen(bild_.worte.DV, bild_.DV, muster::DV, muster::StreuungDV, breite);
        });
        z_.text({RandLinks, 46}, Qt::AlignLeft, zahlen, normal_, stil_.schrift);
    }

    /// "     Mittelwert HI = 1.052 (s = 0.041)", its words no wider than @p breite.
    [[nodiscard]] QString kennzahlen(const QString& name, const std::optional<Kennzahlen>& k,
                                     QStringView muster, QStringView streuung,
                                     double breite) const {
        if (!k) {
            return {};
        }
        QString text = u"     "_s + gekürzt(bild_.worte.mittelwert, normal_, breite) + u' ' +
                       gekürzt(name, normal_, breite) + u" = "_s +
                       Format(k->mittelwert, muster, bild_.format);
        if (k->standardabweichung) {
            text += u" (s = "_s + Format(*k->standardabweichung, streuung, bild_.format) + u')';
        }
        return text;
    }

    /// The signs, each with its meaning: those of wings inside, of wings outside, of the mean.
    void legende() {
        if (!bild_.begrenzt) {
            mittelwert({RandLinks + Zeichenbreite / 2, Legendenhöhe});
            z_.text({RandLinks + Zeichenbreite, Legendenhöhe}, Qt::AlignLeft,
                    gekürzt(bild_.worte.mittelwert, normal_, l_.fläche.width() / 2), normal_,
                    stil_.schrift);
            return;
        }
        const auto jenseits = [this](bool imBereich) {
            return std::any_of(bild_.flügel.begin(), bild_.flügel.end(),
                               [this, imBereich](const Korrelpunkt& p) {
                                   return p.imBereich == imBereich && l_.jenseits(p);
                               });
        };
        const auto alle = static_cast<int>(bild_.flügel.size());
        const int innen = bild_.anzahlImBereich();
        QString anzahl;
        QString außen;
        if (bild_.mitKennzahlen) {
            anzahl = u": %1"_s.arg(innen);
            if (alle > 0) {
                anzahl += u" (%1 %)"_s.arg(bild_.anteilImBereich());
            }
            außen = u": %1"_s.arg(alle - innen);
        }
        // The words share the room that signs and numbers leave.
        const double zeichen = 3 * Zeichenbreite + 2 * Eintragsabstand +
                               (jenseits(true) + jenseits(false)) * Randzeichenbreite;
        double frei =
            l_.fläche.width() - zeichen - textbreite(anzahl, normal_) - textbreite(außen, normal_);
        const Diagrammworte& w = bild_.worte;
        const auto wort = [&frei](const QString& text, const QFont& schrift, int teilen) {
            QString kurz = gekürzt(text, schrift, frei / teilen);
            frei -= textbreite(kurz, schrift);
            return kurz;
        };
        const QString mittel = wort(w.mittelwert, normal_, 3);
        const QString wortInnen = wort(w.imVertrauensbereich, normal_, 2);
        const QString wortAußen = wort(w.nichtImVertrauensbereich, normal_, 1);

        double x = RandLinks;
        x = eintrag(x, true, jenseits(true), wortInnen + anzahl);
        x = eintrag(x, false, jenseits(false), wortAußen + außen);
        mittelwert({x + Zeichenbreite / 2, Legendenhöhe});
        z_.text({x + Zeichenbreite, Legendenhöhe}, Qt::AlignLeft, mittel, normal_, stil_.schrift);
    }

    /// The sign of wings inside or outside at @p x with a text; returns where the next one stands.
    double eintrag(double x, bool imBereich, bool amRand, const QString& text) {
        const double y = Legendenhöhe;
        if (imBereich) {
            z_.fülle(
                QRectF(x - 1, y - 10, Zeichenbreite + (amRand ? Randzeichenbreite : 0) - 2, 20),
                stil_.bereich);
        }
        kreuz({x + Zeichenbreite / 2 - 2, y}, imBereich);
        if (amRand) {
            x += Randzeichenbreite;
            randzeichen({x + Zeichenbreite - 6, y}, {1, 0}, imBereich);
        }
        x += Zeichenbreite;
        z_.text({x, y}, Qt::AlignLeft, text, normal_, stil_.schrift);
        return x + textbreite(text, normal_) + Eintragsabstand;
    }

    [[nodiscard]] QRectF vertrauensfläche() const {
        const QPointF ecke(
            std::clamp(l_.DV.ort(bild_.bereich.DV), l_.fläche.left(), l_.fläche.right()),
            std::clamp(l_.HI.ort(bild_.bereich.HI), l_.fläche.top(), l_.fläche.bottom()));
        return bild_.bereich.darunter ? QRectF(l_.fläche.bottomLeft(), ecke).normalized()
                                      : QRectF(ecke, l_.fläche.topRight()).normalized();
    }

    void achsen() {
        const Teilung x =
            teilung(l_.DV.wertAnfang, l_.DV.wertEnde, static_cast<int>(l_.fläche.width() / 55));
        const Teilung y =
            teilung(l_.HI.wertAnfang, l_.HI.wertEnde, static_cast<int>(l_.fläche.height() / 34));
        const QStringView musterDV = x.nachkommastellen > 0 ? MarkeDV : u"+0;-0;0";
        const QStringView musterHI = y.nachkommastellen > 1 ? u"0.00" : u"0.0";
        for (const double marke : x.marken) {
            const double ort = l_.DV.ort(marke);
            z_.linie({ort, l_.fläche.top()}, {ort, l_.fläche.bottom()}, stil_.gitter, 1);
            z_.text({ort, l_.fläche.bottom() + 14}, Qt::AlignHCenter,
                    Format(marke, musterDV, bild_.format), klein_, stil_.blass);
        }
        for (const double marke : y.marken) {
            const double ort = l_.HI.ort(marke);
            z_.linie({l_.fläche.left(), ort}, {l_.fläche.right(), ort}, stil_.gitter, 1);
            z_.text({l_.fläche.left() - 8, ort}, Qt::AlignRight,
                    Format(marke, musterHI, bild_.format), klein_, stil_.blass);
        }
        z_.rahmen(l_.fläche, stil_.blass, 1.2);
        z_.text({l_.fläche.center().x(), l_.fläche.bottom() + 36}, Qt::AlignHCenter,
                achsname(bild_.worte.discoidalverschiebung, bild_.worte.DV + u", 1/20 mm"_s,
                         l_.fläche.width()),
                normal_, stil_.schrift);
        z_.textHochkant({16, l_.fläche.center().y()},
                        achsname(bild_.worte.hantelindex, bild_.worte.HI, l_.fläche.height() - 20),
                        normal_, stil_.schrift);
    }

    [[nodiscard]] QString achsname(const QString& name, const QString& kurz, double breite) const {
        return eingepasst(breite, normal_, [&](double wortbreite) {
            return gekürzt(name, normal_, wortbreite) + u" ("_s +
                   gekürzt(kurz, normal_, std::max(wortbreite, 130.0)) + u')';
        });
    }

    void grenzlinien() {
        const Vertrauensbereich& b = bild_.bereich;
        if (l_.DV.enthält(b.DV)) {
            const double x = l_.DV.ort(b.DV);
            z_.linie({x, l_.fläche.top()}, {x, l_.fläche.bottom()}, stil_.rasse, 2.2, Qt::DashLine);
        }
        if (l_.HI.enthält(b.HI)) {
            const double y = l_.HI.ort(b.HI);
            z_.linie({l_.fläche.left(), y}, {l_.fläche.right(), y}, stil_.rasse, 2.2, Qt::DashLine);
        }
    }

    /// "Grenzlinie DV +0.50"
    [[nodiscard]] QString grenztext(const QString& name, double wert, QStringView muster) const {
        return eingepasst(l_.fläche.width() / 2 - 40, klein_, [&](double breite) {
            return gekürzt(bild_.worte.grenzlinie, klein_, breite) + u' ' +
                   gekürzt(name, klein_, breite) + u' ' + Format(wert, muster, bild_.format);
        });
    }

    void grenzschilder() {
        const Vertrauensbereich& b = bild_.bereich;
        // This one first: the other has a free end of its line wherever this one stands.
        schildHI(b, grenztext(bild_.worte.HI, b.HI, muster::HI));
        schildDV(b, grenztext(bild_.worte.DV, b.DV, FormatGrenzeDV));
    }

    void schildDV(const Vertrauensbereich& b, const QString& text) {
        const bool drin = l_.DV.enthält(b.DV);
        const double richtung = b.DV < l_.DV.wertAnfang ? -1 : 1;
        const double x = drin           ? l_.DV.ort(b.DV)
                         : richtung < 0 ? l_.fläche.left() + 4
                                        : l_.fläche.right() - 4;
        // The label stands at the end where no wing of the race is expected.
        std::array höhen{l_.fläche.bottom() - 14, l_.fläche.top() + 14};
        if (b.darunter) {
            std::swap(höhen[0], höhen[1]);
        }
        std::vector<Textort> orte;
        for (const double höhe : höhen) {
            if (!drin) {
                orte.push_back(
                    {{x - richtung * 14, höhe}, richtung < 0 ? Qt::AlignLeft : Qt::AlignRight});
                continue;
            }
            for (const bool links : {!b.darunter, b.darunter}) {
                orte.push_back(
                    {{x + (links ? -7 : 7), höhe}, links ? Qt::AlignRight : Qt::AlignLeft});
            }
        }
        const auto ort = plätze_.belege(orte, text, klein_);
        if (!ort) {
            return;
        }
        z_.textMitHof(ort->anker, ort->bündig, text, klein_, stil_.rasse);
        if (!drin) {
            z_.keil({x, ort->anker.y()}, {richtung, 0}, stil_.rasse);
        }
    }

    void schildHI(const Vertrauensbereich& b, const QString& text) {
        const bool drin = l_.HI.enthält(b.HI);
        const double richtung = b.HI > l_.HI.wertEnde ? -1 : 1; // upwards is -1
        const double y = richtung < 0 ? l_.fläche.top() + 14 : l_.fläche.bottom() - 14;
        const double linie = l_.HI.ort(b.HI);
        const double darunter = b.darunter ? -13 : 13;
        const std::array höhen{drin ? linie + darunter : y, drin ? linie - darunter : y};
        const double einzug = drin ? 8 : 24;
        std::vector<Textort> orte;
        for (const double höhe : höhen) {
            for (const bool links : {!b.darunter, b.darunter}) {
                orte.push_back(
                    {{links ? l_.fläche.left() + einzug : l_.fläche.right() - einzug, höhe},
                     links ? Qt::AlignLeft : Qt::AlignRight});
            }
        }
        const auto ort = plätze_.belege(orte, text, klein_);
        if (!ort) {
            return;
        }
        z_.textMitHof(ort->anker, ort->bündig, text, klein_, stil_.rasse);
        if (!drin) {
            const double x = ort->bündig == Qt::AlignLeft ? -10 : 10;
            z_.keil(ort->anker + QPointF(x, richtung * 6), {0, richtung}, stil_.rasse);
        }
    }

    void flügel(const Korrelpunkt& p) {
        const bool außen = bild_.begrenzt && !p.imBereich;
        const QPointF ort = l_.ort(p);
        if (l_.jenseits(p)) {
            QPointF richtung(l_.DV.ort(p.DV) - ort.x(), l_.HI.ort(p.HI) - ort.y());
            richtung /= std::hypot(richtung.x(), richtung.y());
            randzeichen(ort, richtung, !außen);
            return;
        }
        kreuz(ort, !außen);
    }

    void kreuz(QPointF ort, bool imBereich) {
        const QColor& farbe = imBereich ? stil_.probe : stil_.verfehlt;
        if (imBereich) {
            z_.linie(ort - QPointF(Kreuzarm, 0), ort + QPointF(Kreuzarm, 0), farbe, 1.8);
            z_.linie(ort - QPointF(0, Kreuzarm), ort + QPointF(0, Kreuzarm), farbe, 1.8);
            return;
        }
        const double arm = Kreuzarm * 0.72;
        z_.linie(ort - QPointF(arm, arm), ort + QPointF(arm, arm), farbe, 1.6);
        z_.linie(ort - QPointF(arm, -arm), ort + QPointF(arm, -arm), farbe, 1.6);
        kreis(ort, Kreisradius, farbe, 1.6);
    }

    void kreis(QPointF mitte, double radius, const QColor& farbe, double breite) {
        z_.painter().setPen(QPen(farbe, breite));
        z_.painter().setBrush(Qt::NoBrush);
        z_.painter().drawEllipse(mitte, radius, radius);
    }

    /// A wedge at the edge that points to where the wing lies; outside the trust area it has the
    /// ring that a cross has there.
    void randzeichen(QPointF spitze, QPointF richtung, bool imBereich) {
        const QColor& farbe = imBereich ? stil_.probe : stil_.verfehlt;
        z_.keil(spitze, richtung, farbe);
        if (!imBereich) {
            kreis(spitze - richtung * Kreisradius, Kreisradius, farbe, 1.6);
        }
    }

    [[nodiscard]] QPointF mittelort() const {
        const Korrelpunkt mittel{.HI = bild_.HI ? bild_.HI->mittelwert : 0,
                                 .DV = bild_.DV ? bild_.DV->mittelwert : 0};
        return l_.ort(mittel);
    }

    void mittelwert(QPointF ort) {
        const double r = 8;
        const QPointF raute[] = {ort + QPointF(0, -r), ort + QPointF(r, 0), ort + QPointF(0, r),
                                 ort + QPointF(-r, 0)};
        z_.painter().setBrush(Qt::NoBrush);
        // A rim keeps it visible among many crosses.
        for (const auto& [farbe, breite] :
             {std::pair(stil_.grund, 6.0), std::pair(stil_.schrift, 2.4)}) {
            if (farbe.isValid()) {
                z_.painter().setPen(QPen(farbe, breite, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
                z_.painter().drawPolygon(raute, 4);
            }
        }
    }

    /// Rings around the wings that are pointed out, with their numbers while those are few.
    void hervorhebungen() {
        constexpr std::size_t VieleNummern = 8;
        for (const Korrelpunkt& p : bild_.flügel) {
            if (std::find(bild_.hervorgehoben.begin(), bild_.hervorgehoben.end(), p.nummer) ==
                bild_.hervorgehoben.end()) {
                continue;
            }
            const QPointF ort = l_.ort(p);
            z_.rahmen(QRectF(ort - QPointF(10, 10), QSizeF(20, 20)), stil_.gewählt, 2);
            if (bild_.hervorgehoben.size() > VieleNummern) {
                continue;
            }
            // Among many crosses a number may find no place; the ring says it all the same.
            const Textort orte[] = {{ort + QPointF(14, 0), Qt::AlignLeft},
                                    {ort - QPointF(14, 0), Qt::AlignRight},
                                    {ort - QPointF(0, 20), Qt::AlignHCenter},
                                    {ort + QPointF(0, 20), Qt::AlignHCenter}};
            const QString nummer = dreistellig(p.nummer);
            if (const auto platz = plätze_.belege(orte, nummer, fett_)) {
                z_.textMitHof(platz->anker, platz->bündig, nummer, fett_, stil_.gewählt);
            }
        }
    }

    Zeichenfläche z_;
    const Layout& l_;
    const Korrelbild& bild_;
    const Diagrammstil& stil_;
    QFont klein_;
    QFont normal_;
    QFont fett_;
    Textplätze plätze_{l_.fläche};
};

} // namespace

Vertrauensbereich Vertrauensbereich::für(const Grenzlinien& linien, Geschlecht tiere) {
    const Linienwerte werte = linien.geltende(tiere);
    return {werte.HI.wert(), werte.DV.wert(), linien.darunter()};
}

bool Vertrauensbereich::enthält(double wertHI, double wertDV) const {
    const auto jenseits = [this](double wert, double grenze, double einheit) {
        const double abstand = std::round(wert * einheit) - std::round(grenze * einheit);
        return darunter ? abstand <= 0 : abstand >= 0;
    };
    return jenseits(wertHI, HI, 1000) && jenseits(wertDV, DV, 100);
}

int Korrelbild::anzahlImBereich() const {
    return static_cast<int>(std::count_if(flügel.begin(), flügel.end(),
                                          [](const Korrelpunkt& p) { return p.imBereich; }));
}

int Korrelbild::anteilImBereich() const {
    return klassenanteil(anzahlImBereich(), static_cast<int>(flügel.size())).prozent;
}

Korrelbild korrelbild(const Messreihe& reihe, const Grenzlinien& linien, Geschlecht tiere,
                      bool begrenzt) {
    Korrelbild bild;
    bild.begrenzt = begrenzt;
    bild.bereich = Vertrauensbereich::für(linien, tiere);
    std::vector<float> HI;
    std::vector<float> DV;
    for (const HiDvZeile& zeile : reihe.hiDvZeilen()) {
        if (!getippteZahl(zeile.hi) || !getippteZahl(zeile.dv)) {
            continue;
        }
        if (reihe.ausgelassen(zeile.nummer)) {
            ++bild.ausgelassen;
            continue;
        }
        HI.push_back(chartwert(reihe, zeile.nummer, &Chartwerte::HI, zeile.hi));
        DV.push_back(chartwert(reihe, zeile.nummer, &Chartwerte::DV, zeile.dv));
        const double hi = HI.back();
        const double dv = DV.back();
        bild.flügel.push_back({zeile.nummer, hi, dv, begrenzt && bild.bereich.enthält(hi, dv)});
    }
    bild.HI = kennzahlen(HI);
    bild.DV = kennzahlen(DV);
    return bild;
}

Korrelanordnung korrelanordnung(const QRectF& rahmen, const Korrelbild& bild) {
    const Layout l = layout(rahmen, bild);
    const QRectF fläche = l.maß.außen(l.fläche);
    return {fläche,
            {l.DV.wertAnfang, l.DV.wertEnde, fläche.left(), fläche.right()},
            {l.HI.wertAnfang, l.HI.wertEnde, fläche.bottom(), fläche.top()}};
}

std::vector<Diagrammstelle> korrelstellen(const QRectF& rahmen, const Korrelbild& bild) {
    std::vector<Diagrammstelle> stellen;
    const Layout l = layout(rahmen, bild);
    if (l.maß.faktor <= 0) {
        return stellen;
    }
    for (const Korrelpunkt& p : bild.flügel) {
        const QRectF innen(l.ort(p) - QPointF(Zeigeradius, Zeigeradius),
                           QSizeF(2 * Zeigeradius, 2 * Zeigeradius));
        QString text = bild.worte.HI + u' ' + Format(p.HI, muster::HI, bild.format) + u", "_s +
                       bild.worte.DV + u' ' + Format(p.DV, FormatFlügelDV, bild.format);
        if (bild.begrenzt && !p.imBereich) {
            text += u", "_s + bild.worte.nichtImVertrauensbereich;
        }
        stellen.push_back({l.maß.außen(innen), {p.nummer}, text});
    }
    return stellen;
}

void maleKorrel(QPainter& painter, const QRectF& rahmen, const Korrelbild& bild,
                const Diagrammstil& stil) {
    const Layout l = layout(rahmen, bild);
    if (l.maß.faktor > 0) {
        Zeichner(painter, l, bild, stil).zeichne();
    }
}

} // namespace tarvel
