// The views of a collection, painted for real and noted down: thousands of collections as they may
// come, in three languages and all sizes.
#include "collection/jahresbild.h"
#include "collection/kolonietabelle.h"
#include "collection/kreuzbild.h"
#include "collection/ueberlagerung.h"
#include "collection/vergleichsbild.h"
#include "evaluation/rassen.h"
#include "evaluation/textprobe.h"

#include <gmock/gmock.h>

#include <random>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::IsEmpty;

class Würfel {
public:
    explicit Würfel(unsigned saat)
        : zufall_(saat) {}

    int bis(int größte) {
        return static_cast<int>(zufall_() % (static_cast<unsigned>(größte) + 1));
    }
    template <typename T>
    T aus(std::initializer_list<T> liste) {
        return std::data(liste)[bis(static_cast<int>(liste.size()) - 1)];
    }
    double zwischen(double von, double nach) { return von + (nach - von) * bis(10000) / 10000; }

    Koloniewerte kolonie(int nummer, bool eineRasse) {
        Koloniewerte k;
        k.UNr = aus({QString::number(nummer), u"%1ABC2026"_s.arg(nummer), u"WWWWWWWWWW"_s});
        k.Volk = aus({u""_s, u"Volk 3"_s, u"Ein Volk mit sehr langem Namen"_s});
        k.Züchter = k.Königin = aus({u""_s, u"A"_s, u"Freiherr von und zu Hohenwaldeck-Sölden"_s});
        k.rasse = eineRasse ? 0 : bis(4) - 1;
        k.Rasse = u"Rasse %1"_s.arg(k.rasse);
        k.datum = bis(9) == 0 ? QDate() : QDate(2000 + bis(30), 5, 5);
        k.dpi = aus({600, 1200, 2400, 3200, 4800, Koloniewerte::Gemischt, Koloniewerte::Unbekannt});
        k.urteil = aus({std::optional<bool>(), std::optional(true), std::optional(false)});
        const double weit = aus({0.01, 0.1, 1.0});
        const int n = aus({0, 1, 2, 24, 50, 200});
        für(k, Größe::CI, n, zwischen(1, 5), weit, 0.3);
        if (bis(5) > 0) {
            für(k, Größe::HI, n, zwischen(0.7, 1.3), weit * 0.2, 0.05);
            für(k, Größe::DV, n, zwischen(-9, 9), weit * 3, 0.8);
        }
        return k;
    }

private:
    void für(Koloniewerte& k, Größe g, int n, double mitte, double weit, double s) {
        Indexwerte& w = k[g];
        w.kennzahlen = {n, mitte + zwischen(-weit, weit), 0, 0, std::nullopt};
        if (n > 1) {
            w.kennzahlen.standardabweichung = s * zwischen(0, 3);
        }
        w.unter = n > 0 ? bis(n) : 0;
        w.über = n - w.unter;
        for (int i = 0; i < n; ++i) {
            ++w.klassen.at(static_cast<std::size_t>(bis(klassenzahl(g))));
        }
    }

    std::mt19937 zufall_;
};

TEST(Zuchtbilder, texts_neverMeetNorLeaveTheSheet) {
    const int würfe = qEnvironmentVariableIntValue("TARVEL_LONG") > 0 ? 4000 : 400;
    for (int wurf = 0; wurf < würfe; ++wurf) {
        Würfel w(static_cast<unsigned>(wurf));
        Texte texte{QString()};
        texte.SpracheEinstellen(w.bis(2));
        const Zahlenformat format{.dezimal = u',', .tausender = u'.'};
        const Kolonieregeln regeln{
            .satz = {.texte = texte, .format = format, .rassen = {}},
            .linien = std::vector<Grenzlinien>(Rassenzahl, Rassestandard().linien)};
        Koloniesammlung sammlung;
        const bool eineRasse = w.bis(1) == 0;
        for (int i = w.aus({0, 1, 2, 7, 60, 300}); i > 0; --i) {
            sammlung.kolonien.push_back(w.kolonie(i, eineRasse));
        }
        const Kolonieauswahl alle = wähle(sammlung, {});
        Kolonieauswahl gewählt = alle;
        gewählt.resize(std::min<std::size_t>(alle.size(),
                                             static_cast<std::size_t>(w.aus({0, 1, 2, 2, 6, 9}))));
        const Übersichtsworte worte{texte, format};
        QFont schrift(w.aus({u"DejaVu Sans"_s, u"DejaVu Serif"_s, u"DejaVu Sans Mono"_s}));
        const Diagrammstil stil =
            w.bis(1) == 0 ? Diagrammstil::farbdruck(schrift) : Diagrammstil::schwarzweiß(schrift);
        QSizeF größe = w.aus({QSizeF(480, 320), QSizeF(820, 520), QSizeF(1100, 700),
                              QSizeF(1900, 950), QSizeF(700, 900)});
        const int ansicht = wurf % 5;
        if (ansicht == 4) {
            größe = tabellengröße(alle.size());
        }
        Mitschreiber blatt(größe.toSize());
        const QRectF rahmen(QPointF(), QSizeF(größe.toSize()));
        {
            QPainter painter(&blatt);
            switch (ansicht) {
            case 0:
                maleKreuze(painter, rahmen, kreuzbild(alle, gewählt, regeln), worte, stil);
                break;
            case 1:
                maleÜberlagerung(
                    painter, rahmen,
                    überlagerungsbild(gewählt, w.aus({Größe::CI, Größe::HI, Größe::DV}), regeln),
                    worte, stil);
                break;
            case 2:
                maleJahre(painter, rahmen, jahresbild(alle, u"Züchter, Belegstelle"_s, regeln),
                          worte, stil);
                break;
            case 3:
                maleVergleich(painter, rahmen, vergleichsbild(gewählt, regeln), worte, stil);
                break;
            default:
                maleTabelle(painter, rahmen, alle, worte, stil);
                break;
            }
        }
        EXPECT_THAT(textfehler(blatt.mitschrift, rahmen, stil, false), IsEmpty())
            << "throw " << wurf;
    }
}

/// All that a view writes.
template <typename Maler>
QString geschrieben(QSize größe, const Maler& maler) {
    Mitschreiber blatt(größe);
    {
        QPainter painter(&blatt);
        maler(painter, QRectF(QPointF(), größe));
    }
    QString text;
    for (const Mitschrift::Schrift& s : blatt.mitschrift.texte) {
        text += s.text + u' ';
    }
    return text;
}

TEST(Zuchtbilder, whatDoesNotCompare_isKeptApartAndSaid) {
    Texte texte{QString()};
    texte.SpracheEnglisch();
    const Kolonieregeln regeln{.satz = {.texte = texte, .format = {}, .rassen = {}},
                               .linien = std::vector<Grenzlinien>(Rassenzahl)};
    Würfel w(1);
    Koloniesammlung sammlung;
    for (int i = 0; i < 3; ++i) {
        Koloniewerte& k = sammlung.kolonien.emplace_back(w.kolonie(i, true));
        k.dpi = i == 1 ? 600 : 1200;
        k.rasse = i == 2 ? 1 : 0;
        k.Rasse = i == 2 ? u"Mellifera"_s : u"Carnica"_s;
    }
    const Kolonieauswahl alle = wähle(sammlung, {});
    const Überlagerungsbild dv = überlagerungsbild(alle, Größe::DV, regeln);
    EXPECT_EQ(dv.kolonien.size(), 2U);
    EXPECT_EQ(dv.andereDpi.size(), 1U);
    EXPECT_EQ(überlagerungsbild(alle, Größe::CI, regeln).kolonien.size(), 3U);
    // Several races have no boundary lines in common, and no course.
    EXPECT_FALSE(kreuzbild(alle, {}, regeln).grenzen);
    const Diagrammstil stil = Diagrammstil::farbdruck(QFont());
    const QString jahre =
        geschrieben(QSize(900, 600), [&](QPainter& painter, const QRectF& rahmen) {
            maleJahre(painter, rahmen, jahresbild(alle, {}, regeln), {texte, {}}, stil);
        });
    EXPECT_TRUE(jahre.contains(u"several races"_s)) << jahre.toStdString();
    EXPECT_FALSE(jahre.contains(u"conforming"_s));

    sammlung.kolonien[0].dpi = Koloniewerte::Gemischt;
    sammlung.kolonien[0].datum = QDate(2022, 6, 5);
    sammlung.kolonien[1] = sammlung.kolonien[2];
    sammlung.kolonien[1].dpi = 600;
    const QString tabelle =
        geschrieben(tabellengröße(3).toSize(), [&](QPainter& painter, const QRectF& rahmen) {
            maleTabelle(painter, rahmen, alle, {texte, {}}, stil);
        });
    EXPECT_TRUE(tabelle.contains(u"compares only at one resolution"_s)) << tabelle.toStdString();
    EXPECT_TRUE(tabelle.contains(u"mixed or unknown: 1"_s)) << tabelle.toStdString();
    const QString vergleich =
        geschrieben(QSize(900, 600), [&](QPainter& painter, const QRectF& rahmen) {
            maleVergleich(painter, rahmen, vergleichsbild({alle[0], alle[1]}, regeln), {texte, {}},
                          stil);
        });
    EXPECT_TRUE(vergleich.contains(u"05/06/22"_s)) << vergleich.toStdString();
}

} // namespace
} // namespace tarvel
