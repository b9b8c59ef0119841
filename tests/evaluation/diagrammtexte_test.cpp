#include "diagrammprobe.h"
#include "evaluation/diagrammdatei.h"
#include "evaluation/korrel.h"
#include "evaluation/kurven.h"
#include "lang/protokolltexte.h"
#include "lang/texte.h"
#include "textprobe.h"

#include <QPalette>
#include <gmock/gmock.h>

#include <array>
#include <map>
#include <random>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

/// Samples, standards and targets as they may come, the extremes more often than in life.
class Würfel {
public:
    explicit Würfel(unsigned saat)
        : zufall_(saat) {}

    int bis(int größte) {
        return static_cast<int>(zufall_() % (static_cast<unsigned>(größte) + 1));
    }
    template <typename T, std::size_t N>
    T aus(const std::array<T, N>& liste) {
        return liste.at(static_cast<std::size_t>(bis(static_cast<int>(N) - 1)));
    }
    float zwischen(double von, double nach) {
        return static_cast<float>(von + (nach - von) * bis(10000) / 10000);
    }

    Messreihe reihe() {
        Messreihe reihe;
        const int anzahl = aus(std::array{0, 1, 3, 12, 25, 60, 120, 200});
        const bool alles = bis(3) > 0;
        const double CI = zwischen(1, 3.4);
        const double HI = zwischen(0.75, 1.2);
        const double DV = zwischen(-5, 5);
        // A narrow sample stands in few classes, high; a wild wing lies beyond the axes.
        const double breite = aus(std::array{0.02, 0.1, 0.4, 1.0});
        for (int i = 0; i < anzahl; ++i) {
            Chartwerte w{.CI = streue(CI, breite, 1.3, 20)};
            if (alles) {
                w.HI = streue(HI, breite * 0.25, 0.4, 3);
                w.DV = streue(DV, breite * 3, -20, 20);
            }
            misst(reihe, w);
        }
        return reihe;
    }

    Rassestandard standard() {
        Rassestandard s;
        if (bis(2) == 0) {
            return s;
        }
        for (QString* bereich : {&s.arbeiterinnen.Klasse[0], &s.arbeiterinnen.Klasse[1],
                                 &s.arbeiterinnen.Klasse[2], &s.drohnen.Klasse}) {
            const int von = bis(31);
            *bereich = klassenbereichtext({von, aus(std::array{von, von + 2, von + 9, 30, 99})});
        }
        s.arbeiterinnen.mittel.Mittelwert.gespeichert = s.drohnen.mittel.Mittelwert.gespeichert =
            static_cast<qint16>(aus(std::array{0, 5, 12, 20, 25, 31, 90, 32767}));
        for (Mittelgrenze* grenze : {&s.arbeiterinnen.mittel, &s.drohnen.mittel}) {
            grenze->CIMittel = static_cast<qint16>(bis(1));
            grenze->Richtung = static_cast<qint16>(bis(1));
        }
        s.linien.Korrelation = 0;
        s.linien.DVRichtung = static_cast<qint16>(bis(1));
        for (Linienwerte* linien : {&s.linien.Arbeit, &s.linien.Drohn}) {
            linien->CI.gespeichert =
                static_cast<qint16>(aus(std::array{-300, 0, 71, 140, 200, 240, 880, 5000}));
            linien->HI.gespeichert = static_cast<qint16>(
                aus(std::array{-500, 0, 501, 800, 880, 920, 1299, 1499, 1501, 32000}));
            linien->DV.gespeichert = static_cast<qint16>(
                aus(std::array{-32000, -1001, -999, -400, -250, 0, 50, 390, 600, 999, 1500}));
        }
        return s;
    }

    QSizeF größe() {
        return aus(std::array{QSizeF(480, 320), QSizeF(820, 520), QSizeF(900, 640),
                              QSizeF(1900, 1000), QSizeF(2500, 700), QSizeF(600, 1000),
                              QSizeF(180, 72), QSizeF(180, 84), QSizeF(180, 170)});
    }

    Diagrammstil stil() {
        QFont schrift(aus(std::array{u"DejaVu Sans"_s, u"DejaVu Serif"_s, u"DejaVu Sans Mono"_s,
                                     u"Nimbus Sans"_s}));
        schrift.setItalic(bis(3) == 0);
        QPalette dunkel;
        dunkel.setColor(QPalette::Base, QColor(20, 20, 20));
        dunkel.setColor(QPalette::Text, Qt::white);
        return aus(std::array{
            Diagrammstil::bildschirm({}, schrift), Diagrammstil::bildschirm(dunkel, schrift),
            Diagrammstil::farbdruck(schrift), Diagrammstil::schwarzweiß(schrift)});
    }

    Diagrammworte worte() {
        Texte texte(u"/"_s);
        texte.SpracheEinstellen(bis(2));
        Diagrammworte w = Diagrammworte::bildschirm(texte);
        const int eigene = bis(5);
        if (eigene == 0) {
            // As the report heads its charts.
            w.cubitalindex = w.CI + u": "_s + w.bienenJeKlasse;
            w.dvKlassen = w.DV + u": "_s + w.bienenJeKlasse;
        } else if (eigene == 1) {
            for (QString* wort :
                 {&w.cubitalindex, &w.hantelindex, &w.klasse, &w.bienenJeKlasse, &w.mittelwert,
                  &w.nebengipfel, &w.korrelation, &w.imVertrauensbereich,
                  &w.nichtImVertrauensbereich, &w.CI, &w.HI, &w.DV}) {
                wort->append(u" in eigenem Wortlaut"_s.repeated(bis(2)));
            }
        }
        return w;
    }

    QString rasse() {
        return aus(std::array{u"Carnica"_s, u"Carpatica"_s,
                              u"Dunkle Biene aus dem Hochtal, alte Linie Nr. 12"_s, QString()});
    }

    std::vector<int> gewählte(int anzahl) {
        std::vector<int> flügel;
        for (int i = bis(3) == 0 ? bis(9) : 0; i > 0 && anzahl > 0; --i) {
            flügel.push_back(1 + bis(anzahl - 1));
        }
        return flügel;
    }

private:
    float streue(double mitte, double breite, double von, double nach) {
        return bis(60) == 0 ? zwischen(von, nach) : zwischen(mitte - breite, mitte + breite);
    }

    std::mt19937 zufall_;
};

/// The figures that the verdict rests on, with what they are written behind.
QStringList nötigIn(const Kurvenbild& bild) {
    QStringList nötig;
    const auto anzahlen = [&nötig](const Klassenverteilung& v, int klassen) {
        std::map<int, int> bienen;
        for (const Flügelklasse& f : v.flügel) {
            ++bienen[f.klasse];
        }
        for (const auto& [klasse, anzahl] : bienen) {
            if (klasse >= 1 && klasse <= klassen) {
                nötig << QString::number(anzahl);
            }
        }
    };
    anzahlen(bild.CI, KlassenzahlCI);
    if (bild.art != ZweiteKurve::Keine) {
        anzahlen(bild.zweite, bild.art == ZweiteKurve::Hantelindex ? KlassenzahlHI : KlassenzahlDV);
    }
    for (const Bereichsangabe& b : bild.bereiche) {
        QString text = u" %1 (%2-%3)"_s.arg(b.nummer).arg(b.klassen.von).arg(b.klassen.bis);
        if (b.anteil) {
            text += u": %1 %"_s.arg(*b.anteil);
        }
        nötig << text;
    }
    nötig << Format(*bild.rassemittel, u"0.0", {}) << Format(*bild.CI.grenzlinie, u"0.00", {});
    if (bild.CI.kennzahlen) {
        nötig << Format(bild.CI.kennzahlen->mittelwert, u"0.00", {});
    }
    return nötig;
}

QStringList nötigIn(const Korrelbild& bild) {
    return {Format(bild.bereich.HI, u"0.000", {}), Format(bild.bereich.DV, u"+0.00;-0.00;0.00", {}),
            u": %1"_s.arg(bild.anzahlImBereich())};
}

/// What of @p nötig no text ends with or, as the ranges, contains; each text counts once.
QStringList fehlende(const Mitschrift& m, const QStringList& nötig) {
    QStringList texte;
    for (const auto& t : m.texte) {
        texte << t.text;
    }
    QStringList fehlt;
    for (const QString& n : nötig) {
        const bool bereich = n.startsWith(u' ') || n.startsWith(u':');
        const auto ort = std::find_if(texte.begin(), texte.end(), [&](const QString& t) {
            return bereich ? t.contains(n) : t == n || t.endsWith(u' ' + n);
        });
        if (ort == texte.end()) {
            fehlt << u"fehlt: "_s + n;
        } else {
            *ort = QString();
        }
    }
    return fehlt;
}

TEST(Diagrammtexte, ofAnyChart_neverMeetEachOtherOrBars) {
    const unsigned läufe = qEnvironmentVariableIsSet("TARVEL_LONG") ? 20000 : 1000;
    std::map<QString, int> fehler;
    std::map<QString, int> diagramme;
    for (unsigned saat = 0; saat < läufe; ++saat) {
        Würfel würfel(saat);
        const Messreihe reihe = würfel.reihe();
        const Rassestandard standard = würfel.standard();
        const auto tiere = würfel.aus(std::array{Geschlecht::Arbeiterinnen, Geschlecht::Drohnen});
        const QRectF rahmen(QPointF(30, 10), würfel.größe());
        const Diagrammstil stil = würfel.stil();
        const Diagrammworte worte = würfel.worte();
        const auto form =
            würfel.aus(std::array{Kurvenform::Balken, Kurvenform::Stufen, Kurvenform::Linie});

        Kurvenbild kurven =
            kurvenbild(reihe, standard, tiere,
                       beurteile({.Tiere = tiere, .Klassen = klassenCI(reihe), .Merkmale = {}},
                                 standard, würfel.bis(4) > 0),
                       form,
                       würfel.aus(std::array{ZweiteKurve::Keine, ZweiteKurve::Hantelindex,
                                             ZweiteKurve::Discoidalverschiebung}));
        kurven.rasse = würfel.rasse();
        Korrelbild korrel = korrelbild(reihe, standard.linien, tiere);
        kurven.worte = korrel.worte = worte;
        kurven.hervorgehoben = korrel.hervorgehoben =
            würfel.gewählte(static_cast<int>(reihe.ciZeilen().size()));

        const auto prüfe = [&](const QString& art, bool aufBalken, const QStringList& nötig,
                               const Diagrammmaler& maler) {
            Mitschreiber ziel(rahmen.toAlignedRect().size());
            QPainter painter(&ziel);
            maler(painter, rahmen);
            painter.end();
            const QStringList gefunden = textfehler(ziel.mitschrift, rahmen, stil, aufBalken) +
                                         fehlende(ziel.mitschrift, nötig);
            for (const QString& was : gefunden) {
                if (++fehler[art + u": "_s + was] == 1 && fehler.size() < 40) {
                    ADD_FAILURE() << saat << ": " << qPrintable(art + u": "_s + was);
                }
            }
            diagramme[art] += gefunden.isEmpty() ? 0 : 1;
        };
        const Diagrammmaler alsKurven = [&](QPainter& p, const QRectF& r) {
            maleKurven(p, r, kurven, stil);
        };
        const Diagrammmaler alsKorrel = [&](QPainter& p, const QRectF& r) {
            maleKorrel(p, r, korrel, stil);
        };
        const Bildunterschrift unterschrift{
            u"Untersuchung Nr. 001AB2026"_s, kurven.rasse, u"Arbeiterinnen"_s, u"5. März 2026"_s,
            u"200 Flügel ausgelassen: "_s + u"003, "_s.repeated(200)};
        const bool gespeichert = würfel.bis(3) == 0;
        const auto malerVon = [&](const Diagrammmaler& maler) {
            return gespeichert ? mitUnterschrift(maler, unterschrift, stil) : maler;
        };
        // The smooth line runs between the classes, and numbers with a rim stand on it.
        prüfe(u"Kurven"_s, form != Kurvenform::Linie, nötigIn(kurven), malerVon(alsKurven));
        prüfe(u"Korrel"_s, false, nötigIn(korrel), malerVon(alsKorrel));
    }
    for (const auto& [art, anzahl] : diagramme) {
        EXPECT_EQ(anzahl, 0) << qPrintable(art) << " of " << läufe;
    }
}

} // namespace
} // namespace tarvel
