#include "measure/messreihe.h"
#include "measure/messung.h"
#include "measure/reihenmodelle.h"
#include "measure/statistik.h"
#include "measure/verteiler.h"

#include <QAbstractItemModelTester>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

const Zahlenformat komma{.dezimal = u',', .tausender = u'.'};

void trageEin(Messreihe& reihe, qint16 nummer, float CI, std::optional<float> HI = {},
              std::optional<float> DV = {}, const Zahlenformat& format = {}) {
    reihe.trageEin(nummer, {.CI = CI, .HI = HI, .DV = DV, .fehler = {}}, {}, format);
}

} // namespace

TEST(Messreihe, lines_followTheirLayoutInEveryLanguageAndSeparator) {
    Texte texte{QString()};
    Messreihe reihe;
    trageEin(reihe, 7, 1.0F, 1.0F, -0.25F, komma);
    trageEin(reihe, 8, 12.0F, 2.0F, 0.0F, komma); // both classes out of range
    struct Zeile {
        int sprache;
        const char16_t *ci7, *hi7, *ci8, *hi8;
    };
    for (const Zeile& zeile :
         {Zeile{0, u"007  CI=1,00  Klasse 6,0", u"007  HI=1,000  Klasse 25,0   DV=-0,3",
                u"008  CI=12,00  Klasse 0,0", u"008  HI=2,000  Klasse 0,0   DV=+0,0"},
          {1, u"007  CI=1,00  Class 6,0", u"007  HI=1,000  Class 25,0   DS=-0,3",
           u"008  CI=12,00  Class 0,0", u"008  HI=2,000  Class 0,0   DS=+0,0"},
          {2, u"007  IC=1,00  Classe 6,0", u"007  IH=1,000  Classe 25,0   DD=-0,3",
           u"008  IC=12,00  Classe 0,0", u"008  IH=2,000  Classe 0,0   DD=+0,0"}}) {
        texte.SpracheEinstellen(zeile.sprache);
        EXPECT_THAT(reihe.ciTexte(zeilenwörter(texte)),
                    ElementsAre(QStringView(zeile.ci7), QStringView(zeile.ci8)));
        EXPECT_THAT(reihe.hiDvTexte(zeilenwörter(texte)),
                    ElementsAre(QStringView(zeile.hi7), QStringView(zeile.hi8)));
    }
}

TEST(Messreihe, newWings_takeTheDecimalSignOfTheSeries) {
    for (const auto& [wert, neu] : {std::pair{u"3,07"_s, u"2,50"_s}, {u"3.07"_s, u"2.50"_s}}) {
        for (const bool nurHi : {false, true}) {
            Messreihe reihe;
            std::vector<CiZeile> ci{{1, wert, wert}};
            std::vector<HiDvZeile> hi{{1, wert, wert, wert}};
            (nurHi ? ci.clear() : hi.clear());
            reihe.stelleHer(ci, hi, {}, {});
            trageEin(reihe, 2, 2.5F, {}, {}, wert.contains(u',') ? Zahlenformat{} : komma);
            EXPECT_EQ(reihe.ciZeilen().back().wert, neu);
            EXPECT_EQ(nurHi ? reihe.hiDvZeilen()[0].hi : reihe.ciZeilen()[0].wert, wert);
        }
    }
}

TEST(Messreihe, deletingTheLastWing_removesAllItsLinesAndItsNumberIsUsedAgain) {
    Messreihe reihe;
    trageEin(reihe, 1, 2.0F, 1.0F, 1.0F);
    trageEin(reihe, 2, 2.1F);
    trageEin(reihe, 3, 2.2F, 1.0F, 1.0F);
    reihe.alsUnverändertMerken();
    EXPECT_TRUE(reihe.löscheLetzte());
    EXPECT_TRUE(reihe.geändert());
    EXPECT_EQ(reihe.nächsteNummer(), 3);
    EXPECT_EQ(reihe.chartwerte(3), Chartwerte{});
    EXPECT_EQ(reihe.messung(3), nullptr);
    EXPECT_TRUE(reihe.löscheLetzte());
    EXPECT_THAT(reihe.nummern(), ElementsAre(1));
    EXPECT_EQ(reihe.hiDvZeilen().size(), 1U);
    EXPECT_TRUE(reihe.löscheLetzte());
    EXPECT_FALSE(reihe.löscheLetzte());
    EXPECT_EQ(reihe.nächsteNummer(), 1);
}

TEST(Messreihe, deletingAll_leavesNothingOfAnyWing) {
    Messreihe reihe;
    trageEin(reihe, 1, 2.0F, 1.0F, 1.0F);
    trageEin(reihe, 200, 2.0F, 1.0F, 1.0F);
    reihe.löscheAlle();
    EXPECT_TRUE(reihe.leer());
    EXPECT_EQ(reihe.chartwerte(200), Chartwerte{});
    EXPECT_TRUE(reihe.messungen().empty());
    EXPECT_EQ(reihe.nächsteNummer(), 1);
}

TEST(Messreihe, repeatedWingWithoutHantelindex_losesItsOldLine) {
    Messreihe reihe;
    trageEin(reihe, 1, 2.0F, 1.0F, 1.0F);
    trageEin(reihe, 2, 2.0F, 1.0F, 1.0F);
    trageEin(reihe, 1, 2.5F);
    EXPECT_EQ(reihe.hiDvZeilen().size(), 1U);
    EXPECT_EQ(reihe.ciZeilen().front().wert, u"2.50"_s);
    EXPECT_EQ(reihe.chartwerte(1).HI, Chartwerte::KeinWert);
    trageEin(reihe, 1, 2.5F, 0.9F, 0.5F);
    EXPECT_EQ(reihe.hiDvZeilen().front().nummer, 1); // back at its place in the order
}

TEST(Messreihe, rebuiltFromAnyLines_isASeriesOfNumbers1To200InOrder) {
    Messreihe reihe;
    trageEin(reihe, 5, 2.0F, 1.0F, 1.0F);
    const auto ci = [](qint16 nummer, const QString& wert) {
        return CiZeile{nummer, wert, u"6,0"_s};
    };
    reihe.stelleHer({ci(9, u"2,90"_s), ci(0, u"1"_s), ci(2, u"2.20"_s), ci(9, u"9"_s),
                     ci(201, u"1"_s), ci(3, u"unlesbar"_s)},
                    {{4, u"0,990"_s, u"24,5"_s, u"-0,3"_s}},
                    {{9, {.CI = 2.9042F, .HI = 1.0F}}, {7, {.CI = 2.0F}}}, {{2, {}}, {7, {}}});
    EXPECT_TRUE(reihe.geändert());
    EXPECT_THAT(reihe.nummern(), ElementsAre(2, 3, 4, 9));
    EXPECT_EQ(reihe.ciZeilen().back().wert, u"2,90"_s);
    EXPECT_EQ(reihe.nächsteNummer(), 10);
    EXPECT_EQ(reihe.chartwerte(9), (Chartwerte{.CI = 2.9042F})); // no line, no hantel index
    EXPECT_EQ(reihe.chartwerte(2).CI, 2.2F);                     // from its line
    EXPECT_EQ(reihe.chartwerte(3), Chartwerte{});
    EXPECT_EQ(reihe.chartwerte(4), (Chartwerte{.HI = 0.99F, .DV = -0.3F}));
    EXPECT_EQ(reihe.chartwerte(5), Chartwerte{});
    EXPECT_EQ(reihe.chartwerte(7), Chartwerte{});
    EXPECT_EQ(reihe.messungen().size(), 1U);
}

TEST(Messreihe, anyWing_canBeDeleted_andTheOthersKeepTheirNumbers) {
    Messreihe reihe;
    for (qint16 i = 1; i <= 4; ++i) {
        trageEin(reihe, i, 2.0F, 1.0F, 1.0F);
    }
    reihe.lassAus(2, true);
    reihe.alsUnverändertMerken();
    EXPECT_TRUE(reihe.löscheFlügel(2));
    EXPECT_TRUE(reihe.geändert());
    EXPECT_FALSE(reihe.löscheFlügel(2));
    EXPECT_FALSE(reihe.löscheFlügel(0));
    EXPECT_THAT(reihe.nummern(), ElementsAre(1, 3, 4));
    EXPECT_EQ(reihe.hiDvZeilen().size(), 3U);
    EXPECT_EQ(reihe.nächsteNummer(), 5);
    EXPECT_TRUE(reihe.löscheFlügel(4));
    EXPECT_EQ(reihe.nächsteNummer(), 4);
    trageEin(reihe, 2, 2.0F); // a wing entered anew is not left out
    EXPECT_FALSE(reihe.ausgelassen(2));
}

TEST(Messreihe, wingLeftOut_staysWithItsNumberAndCountsNowhere) {
    Texte texte{QString()};
    Messreihe reihe;
    trageEin(reihe, 1, 2.0F, 1.0F, 1.0F);
    trageEin(reihe, 2, 9.0F, 1.2F, 9.0F);
    reihe.alsUnverändertMerken();
    EXPECT_FALSE(reihe.lassAus(3, true)); // no such wing
    EXPECT_FALSE(reihe.lassAus(2, false));
    EXPECT_FALSE(reihe.geändert());
    EXPECT_TRUE(reihe.lassAus(2, true));
    EXPECT_TRUE(reihe.geändert());
    EXPECT_THAT(reihe.gewertete(), ElementsAre(1));
    EXPECT_THAT(werte(reihe, &Chartwerte::CI), ElementsAre(2.0F));
    EXPECT_EQ(reihe.ciZeilen().size(), 2U);
    EXPECT_EQ(reihe.nächsteNummer(), 3);
    trageEin(reihe, 2, 3.0F, 1.2F, 9.0F); // measured again it stays left out
    EXPECT_TRUE(reihe.ausgelassen(2));
    EXPECT_EQ(ausgelassen(reihe, texte), u"1 Flügel ausgelassen: 002"_s);
    reihe.lassAus(1, true);
    texte.SpracheEinstellen(1);
    EXPECT_EQ(ausgelassen(reihe, texte), u"2 wings left out: 001, 002"_s);

    Reihenmodelle modelle(reihe, texte, {});
    modelle.aktualisiere();
    reihe.lassAus(1, false);
    for (const QModelIndex& index : {modelle.ci().index(1), modelle.hiDv().index(1),
                                     modelle.flügel().index(1, Flügeltabelle::CI)}) {
        EXPECT_EQ(index.data(zeilenrolle::Nummer), 2);
        EXPECT_EQ(index.data(zeilenrolle::Ausgelassen), true);
        EXPECT_EQ(index.siblingAtRow(0).data(zeilenrolle::Ausgelassen), false);
        EXPECT_EQ(index.data(Qt::ToolTipRole).toString(), texte(Meldung::Ausgelassen));
        EXPECT_FALSE(index.siblingAtRow(0).data(Qt::ToolTipRole).isValid());
    }
    EXPECT_TRUE(reihe.lassAus(2, false));
    EXPECT_EQ(ausgelassen(reihe, texte), QString());
}

TEST(Messreihe, proposedWings_areUncheckedUntilAPersonTakesThemOver) {
    Texte texte{QString()};
    Messreihe reihe;
    EXPECT_EQ(entstehungstext(reihe, texte), QString());
    for (const qint16 nummer : {qint16{1}, qint16{2}}) {
        Flügelmessung m;
        m.ungeprüft = true;
        for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
            const auto x = static_cast<float>(30 * p);
            m.punkte.setze(m.messart, p, x, x * x / 40, Punktherkunft::Vorgeschlagen);
        }
        reihe.trageEin(nummer, berechneIndizes(m.punkte, m.messart, m.aufnahme), m, {});
    }
    EXPECT_EQ(entstehungstext(reihe, texte),
              u"2 von 2 Flügeln vom Programm gemessen, von keinem Menschen geprüft"_s);
    EXPECT_EQ(flügeltipp(reihe, {}, 1, texte), texte(Meldung::Ungeprüft));
    Messung messung(reihe, {});
    ASSERT_TRUE(messung.wiederhole(1));
    messung.zieh(3, 91, 57);
    reihe = messung.übernimmFertige().reihe.value();
    texte.SpracheEinstellen(1);
    EXPECT_EQ(entstehungstext(reihe, texte),
              u"1 of 2 wings measured by the program, not checked by a person; "
              "1 wing proposed and checked, 1 point corrected"_s);
    EXPECT_EQ(flügeltipp(reihe, {}, 1, texte), texte(Meldung::VorgeschlagenGeprüft));
}

TEST(Messreihe, resolutionOfWings_changesTheirDiscoidalShiftAlone) {
    Messreihe reihe;
    const auto misst = [&reihe](qint16 nummer, int dpi, const QString& bild) {
        Flügelmessung m{.aufnahme = {2, dpi}, .bilddatei = bild};
        constexpr int X[] = {0, 100, 900, 420, 560, 600, 700, 742, 520};
        constexpr int Y[] = {0, 500, 430, 420, 380, 560, 610, 640, 700};
        for (int i = 1; i <= 8; ++i) {
            m.punkte.setze(m.messart, i, static_cast<float>(X[i] + nummer),
                           static_cast<float>(Y[i]));
        }
        reihe.trageEin(nummer, berechneIndizes(m.punkte, m.messart, m.aufnahme), m, komma);
        return m;
    };
    EXPECT_EQ(reihe.auflösung(), std::nullopt);
    const Flügelmessung eins = misst(1, 2400, u"a"_s);
    misst(2, 1200, u"a"_s);
    misst(3, 600, u"b"_s);
    Flügelmessung vierter; // whose points do not give its values
    vierter.punkte.setze(vierter.messart, 1, 5, 5);
    reihe.trageEin(4, {.CI = 2.0F, .HI = 1.0F, .DV = 1.0F, .fehler = {}}, vierter, {});
    trageEin(reihe, 5, 2.0F, 1.0F, 1.0F); // without points
    EXPECT_EQ(reihe.auflösung(), 1200);
    reihe.alsUnverändertMerken();
    const Messreihe vorher = reihe;
    const std::vector<int> aufA = reihe.flügelAufBild(u"a"_s);

    const auto wechsel = reihe.auflösungswechsel(aufA, 1200);
    ASSERT_EQ(wechsel.size(), 1U); // the other one has it already
    EXPECT_EQ(wechsel[0].nummer, 1);
    EXPECT_EQ(wechsel[0].dpiVorher, 2400);
    EXPECT_EQ(wechsel[0].DVVorher, vorher.chartwerte(1).DV);
    EXPECT_FALSE(reihe.geändert());
    EXPECT_TRUE(reihe.setzeAuflösung(aufA, 1200));
    EXPECT_TRUE(reihe.geändert());
    EXPECT_EQ(reihe.chartwerte(1).DV, wechsel[0].DVNachher);
    EXPECT_EQ(reihe.chartwerte(1).DV, berechneIndizes(eins.punkte, eins.messart, {2, 1200}).DV);
    EXPECT_EQ(reihe.hiDvZeilen()[0].dv, Format(reihe.chartwerte(1).DV, u"+0.0;-0.0", komma));
    EXPECT_EQ(reihe.hiDvZeilen()[0].hi, vorher.hiDvZeilen()[0].hi);
    EXPECT_EQ(reihe.ciZeilen(), vorher.ciZeilen());
    EXPECT_EQ(reihe.messung(1)->punkte, eins.punkte);
    EXPECT_EQ(reihe.messung(3)->aufnahme.dpi, 600);
    EXPECT_FALSE(reihe.setzeAuflösung(aufA, 1200));

    const std::vector<int> vier{4, 5};
    EXPECT_TRUE(reihe.setzeAuflösung(vier, 2400));
    EXPECT_EQ(reihe.chartwerte(4).DV, 0.5F);
    EXPECT_EQ(reihe.hiDvZeilen()[3].dv, u"+0,5"_s); // the sign of the series
}

TEST(Kennzahlen, knownValues_andTooFewOfThem) {
    const float werte[] = {2.0F, Chartwerte::KeinWert, 4.0F, 4.0F, 6.0F};
    const auto k = kennzahlen(werte);
    ASSERT_TRUE(k);
    EXPECT_EQ(k->anzahl, 4);
    EXPECT_DOUBLE_EQ(k->mittelwert, 4.0);
    EXPECT_DOUBLE_EQ(k->minimum, 2.0);
    EXPECT_DOUBLE_EQ(k->maximum, 6.0);
    EXPECT_NEAR(k->standardabweichung.value(), 1.632993, 1e-6);
    EXPECT_FALSE(kennzahlen(std::span<const float>(werte, 1))->standardabweichung);
    EXPECT_FALSE(kennzahlen(std::span<const float>(werte + 1, 1)));
}

TEST(Reihenmodelle, showSeriesAndFigures_andKeepTheModelContract) {
    Texte texte{QString()};
    Messreihe reihe;
    Reihenmodelle modelle(reihe, texte, komma);
    const QAbstractItemModelTester prüfer1(&modelle.flügel(),
                                           QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester prüfer2(&modelle.kennzahlen(),
                                           QAbstractItemModelTester::FailureReportingMode::Fatal);
    trageEin(reihe, 1, 2.0F, 1.0F, -1.0F, komma);
    trageEin(reihe, 2, 3.0F, {}, {}, komma);
    modelle.aktualisiere();
    const auto text = [](QAbstractItemModel& modell, int zeile, int spalte) {
        return modell.index(zeile, spalte).data().toString();
    };
    EXPECT_EQ(modelle.flügel().rowCount(), 2);
    EXPECT_EQ(text(modelle.flügel(), 0, Flügeltabelle::HI), u"1,000"_s);
    EXPECT_EQ(text(modelle.flügel(), 1, Flügeltabelle::HI), QString());
    EXPECT_EQ(modelle.flügel().nummer(1), 2);
    EXPECT_EQ(modelle.flügel().nummer(2), 0);
    EXPECT_EQ(text(modelle.kennzahlen(), Kennzahlentabelle::Mittelwert, Flügeltabelle::CI),
              u"2,50"_s);
    EXPECT_EQ(text(modelle.kennzahlen(), Kennzahlentabelle::Standardabweichung, Flügeltabelle::CI),
              u"0,71"_s);
    EXPECT_EQ(text(modelle.kennzahlen(), Kennzahlentabelle::Anzahl, Flügeltabelle::HI), u"1"_s);
    EXPECT_EQ(text(modelle.kennzahlen(), Kennzahlentabelle::Standardabweichung, Flügeltabelle::HI),
              QString());
    EXPECT_EQ(text(modelle.kennzahlen(), Kennzahlentabelle::Minimum, Flügeltabelle::DV), u"-1,0"_s);
    EXPECT_EQ(modelle.ci().stringList().size(), 2);
}

TEST(Verteiler, commands_reachTheirHandlerThenTheListeners) {
    Verteiler verteiler;
    QStringList spur;
    verteiler.meldeAn(befehl::Alle, [&] { spur << u"alle"_s; });
    verteiler.nachJedemBefehl([&](QStringView wort) { spur << u"nach "_s + wort.toString(); });
    EXPECT_TRUE(verteiler.führeAus(u"Alle"));
    EXPECT_FALSE(verteiler.führeAus(befehl::Kurven));
    EXPECT_FALSE(verteiler.kennt(u"alle")); // internal words, to the letter
    EXPECT_THAT(spur, ElementsAre(u"alle"_s, u"nach Alle"_s));
}
