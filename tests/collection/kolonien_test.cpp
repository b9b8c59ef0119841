#include "collection/inhaltsmarke.h"
#include "collection/kolonieausgabe.h"
#include "collection/kolonieauswahl.h"
#include "collection/kolonieleser.h"
#include "collection/koloniespeicher.h"
#include "evaluation/rassen.h"
#include "results/browserprobe.h"

#include <QDir>

#include <cmath>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

struct Kolonientest : Browserprobe {
    Texte texte{QString()};
    Kolonieregeln regeln = kolonieregeln(
        {.texte = texte, .format = {}, .rassen = rassenliste(Einstellungen(QString()))},
        Einstellungen(QString()));
    QString speicher_ = ordner_.filePath(u"Overview"_s);
    int ausgewertet_ = 0;

    Kolonientest() { texte.SpracheDeutsch(); }

    /// A row with these cubital indices, all in class 17, and a discoidal shift of 1.
    static Ergebnissatz mit(const QString& nummer, const std::vector<double>& CI, int dpi = 1200) {
        Ergebnissatz s = vollerSatz(nummer);
        s.Grafik[0] = u"CI-HI %1dpi;"_s.arg(dpi);
        for (std::size_t i = 0; i < CI.size(); ++i) {
            const QString flügel = dreistellig(static_cast<int>(i) + 1);
            s.CI += u"#%1;%2;17,3; "_s.arg(flügel, QString::number(CI[i], 'f', 2));
            s.HI_DV += u"#%1;0,950;22,0;+1,0; "_s.arg(flügel);
        }
        return s;
    }
    std::optional<Koloniesammlung> lies(int höchstens = 1'000'000) {
        ausgewertet_ = 0;
        return liesKolonien(pfad_, speicher_, regeln,
                            [&](int, int) { return ausgewertet_++ < höchstens; });
    }
    [[nodiscard]] QString speicherdatei() const {
        const QStringList da = QDir(speicher_).entryList({u"*.cache"_s});
        return da.isEmpty() ? QString() : QDir(speicher_).filePath(da.front());
    }
    /// Reads until the file has been left alone for so long that its state can be relied on.
    void liesBisRuhig() {
        QByteArray vorher;
        do {
            vorher = bytes(speicherdatei());
            (void)lies();
        } while (bytes(speicherdatei()) != vorher);
    }
    static QByteArray alles(const Koloniesammlung& sammlung) {
        Kolonieauswahl auswahl;
        for (const Koloniewerte& k : sammlung.kolonien) {
            auswahl.push_back(&k);
        }
        return kolonientabelle(auswahl).csv();
    }
};

TEST_F(Kolonientest, figures_leaveOutWhatDoesNotCount) {
    Ergebnissatz s = mit(u"7"_s, {1.90, 2.00, 2.004, 2.30, 5.00});
    s.Grafik[3] = u"Angaben 1;Felder;001/1/1200/1/a.bmp;002/1/600/1/a.bmp;005=Ausgelassen:1;"_s;
    s.Grafik[2] = u"Punkte 1;001/8/5/1/1/2/2/3/3/4/4/5/5/6/6/7/7/8/8;"
                  "002/8/5/1/1/2/2/3/3/4/4/5/5/6/6/7/7/8/8;"_s;
    Koloniewerte k = koloniewerte(s, regeln);
    const Indexwerte& ci = k[Größe::CI];
    EXPECT_EQ(ci.kennzahlen.anzahl, 4);
    EXPECT_NEAR(ci.kennzahlen.mittelwert, 2.05, 1e-6);
    EXPECT_NEAR(*ci.kennzahlen.standardabweichung, std::sqrt(0.09 / 3), 1e-6);
    EXPECT_EQ(ci.unter, 1); // the line is 2.00, and a wing on it is neither
    EXPECT_EQ(ci.über, 1);
    EXPECT_EQ(ci.klassen[17], 4);
    EXPECT_EQ(k[Größe::DV].klassen[15], 4);
    EXPECT_EQ(k.ausgelassen, 1);
    EXPECT_EQ(k.dpi, Koloniewerte::Gemischt);
    EXPECT_EQ(k.urteil, true);

    s.RASSE = u"Anatolica"_s; // no standard, so no share
    s.CI += u"#0";
    k = koloniewerte(s, regeln);
    EXPECT_EQ(k[Größe::CI].unter, 0);
    EXPECT_EQ(indexzahl(k, static_cast<int>(Kolonienspalte::Index) + 3), std::nullopt);
    EXPECT_TRUE(k.teilweise);
}

TEST_F(Kolonientest, reading_changesNothingAndEvaluatesARowOnce) {
    for (const QString& nummer : {u"1"_s, u"2"_s, u"3"_s}) {
        speichere(mit(nummer, {2.1, 2.3}));
    }
    const QByteArray datei = bytes(pfad_);
    const QByteArray erste = alles(*lies());
    EXPECT_EQ(ausgewertet_, 3);
    liesBisRuhig();
    EXPECT_EQ(alles(*lies()), erste);
    EXPECT_EQ(ausgewertet_, 0);
    EXPECT_EQ(bytes(pfad_), datei);

    // Only what another program changed is looked at again, however it did so.
    fremd(u"UPDATE Ergebnisse SET CI = replace(CI, '2.30', '2.50') WHERE U_NR = '2'"_s);
    EXPECT_NEAR(lies()->kolonien[1][Größe::CI].kennzahlen.mittelwert, 2.3, 1e-6);
    EXPECT_EQ(ausgewertet_, 1);
    // A change of language rewrites two words in every row.
    tabelle().SpracheDB(Sprache::Französisch);
    (void)lies();
    EXPECT_EQ(ausgewertet_, 0);
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR = '1'"_s);
    EXPECT_EQ(lies()->kolonien.size(), 2U);
    EXPECT_EQ(ausgewertet_, 0);
    // Other boundary lines are other shares.
    regeln.linien[0].Korrelation = 0;
    regeln.linien[0].Arbeit.CI.gespeichert = 240;
    EXPECT_EQ(lies()->kolonien[0][Größe::CI].unter, 1);
}

TEST_F(Kolonientest, whatIsKept_mayBeDamagedMissingOrOutOfReach) {
    speichere(mit(u"1"_s, {2.1, 2.3}));
    speichere(mit(u"2"_s, {1.7}));
    const QByteArray gut = alles(*lies());
    const QString datei = speicherdatei();
    const QByteArray inhalt = bytes(datei);
    const auto prüfe = [&](const QByteArray& schaden) {
        schreibe(datei, schaden);
        const auto gelesen = lies();
        ASSERT_TRUE(gelesen);
        EXPECT_EQ(alles(*gelesen), gut);
        EXPECT_EQ(ausgewertet_, 2);
    };
    for (qsizetype i = 0; i < inhalt.size(); i += 3) {
        prüfe(inhalt.first(i));
        QByteArray verdreht = inhalt;
        verdreht[i] = static_cast<char>(verdreht[i] ^ 0x41);
        prüfe(verdreht);
    }
    EXPECT_EQ(QDir(speicher_).entryList(QDir::Files).size(), 1);
    QDir(speicher_).removeRecursively();
    schreibe(speicher_, "no folder"); // nothing can be kept there
    EXPECT_EQ(alles(*lies()), gut);
}

/// As if the store itself had written nonsense: its own mark stands below it.
TEST_F(Kolonientest, nonsenseUnderARightMark_isRefusedOrCanBeShown) {
    Koloniespeicher speicher;
    for (const double CI : {2.1, 1.9}) {
        speicher.sätze.push_back(
            {1, false, koloniewerte(mit(QString::number(CI), {CI, 2.5}), regeln)});
    }
    const QByteArray gut = alsDatei(speicher, 5);
    EXPECT_TRUE(speicherAus(gut, 5));
    EXPECT_FALSE(speicherAus(gut, 6));
    int angenommen = 0;
    for (qsizetype ort = 26; ort + 16 <= gut.size(); ++ort) { // behind name and rules
        for (const char byte : {'\xff', '\x7f', '\0', '\x80'}) {
            QByteArray bytes = gut.chopped(8);
            bytes.replace(ort, 8, QByteArray(8, byte));
            Inhaltsmarke marke;
            marke.füge(bytes);
            const quint64 wert = marke.wert();
            bytes.append(reinterpret_cast<const char*>(&wert), sizeof wert);
            const auto gelesen = speicherAus(bytes, 5);
            if (!gelesen) {
                continue;
            }
            ++angenommen;
            for (const Koloniesatz& satz : gelesen->sätze) {
                const Koloniewerte& w = satz.werte;
                EXPECT_GE(w.dpi, Koloniewerte::Gemischt) << ort;
                EXPECT_TRUE(!w.datum.isValid() || w.datum.year() <= 9999) << ort;
                for (const Indexwerte& index : w.index) {
                    const Kennzahlen& z = index.kennzahlen;
                    EXPECT_TRUE(std::isfinite(z.mittelwert + z.minimum + z.maximum +
                                              z.standardabweichung.value_or(0)))
                        << ort;
                    EXPECT_LE(index.unter + index.über, z.anzahl) << ort;
                }
            }
        }
    }
    EXPECT_GT(angenommen, 0);
}

TEST_F(Kolonientest, stopping_keepsWhatWasEvaluated) {
    for (int i = 1; i <= 5; ++i) {
        speichere(mit(QString::number(i), {2.0}));
    }
    EXPECT_FALSE(lies(3));
    EXPECT_EQ(lies()->kolonien.size(), 5U);
    EXPECT_EQ(ausgewertet_, 2);
    EXPECT_TRUE(fehlerVon([&] {
        (void)liesKolonien(ordner_.filePath(u"fehlt.tdb"_s), speicher_, regeln,
                           [](int, int) { return true; });
    }));
}

Koloniewerte kolonie(const QString& nummer, int jahr, double CI, double DV = 1, int dpi = 1200) {
    Koloniewerte k;
    k.UNr = nummer;
    k.Züchter = u"Öller"_s;
    k.Rasse = u"Carnica"_s;
    k.rasse = 0;
    k.datum = jahr > 0 ? QDate(jahr, 6, 1) : QDate();
    k.dpi = dpi;
    k[Größe::CI].kennzahlen = {50, CI, CI, CI, 0.3};
    k[Größe::DV].kennzahlen = {50, DV, DV, DV, 0.5};
    return k;
}

QStringList nummern(const Kolonieauswahl& auswahl) {
    QStringList liste;
    for (const Koloniewerte* k : auswahl) {
        liste << k->UNr;
    }
    return liste;
}

TEST(Kolonieauswahl, filterAndOrder_doAsAReaderExpects) {
    Koloniesammlung sammlung;
    sammlung.kolonien = {kolonie(u"1"_s, 2020, 2.3), kolonie(u"2"_s, 0, 2.1),
                         kolonie(u"3"_s, 2021, 2.5), kolonie(u"4"_s, 2020, 1.5)};
    sammlung.kolonien[0].Züchter = u"Zander"_s;
    sammlung.kolonien[2].Züchter = u"ÖLLER"_s;
    sammlung.kolonien[1].Züchter = u"Olm"_s;
    sammlung.kolonien[3].tiere = Geschlecht::Drohnen;
    Kolonieauswahl alle = wähle(sammlung, {});
    EXPECT_THAT(nummern(alle), ElementsAre(u"1"_s, u"2"_s, u"3"_s)); // castes never mix
    sortiere(alle, static_cast<int>(Kolonienspalte::Züchter), false);
    EXPECT_THAT(nummern(alle), ElementsAre(u"3"_s, u"2"_s, u"1"_s)); // Ö beside O
    for (const bool absteigend : {false, true}) { // without a date at the end both ways
        sortiere(alle, static_cast<int>(Kolonienspalte::Datum), absteigend);
        EXPECT_EQ(alle.back()->UNr, u"2");
    }
    EXPECT_EQ(alle.front()->UNr, u"3");
    Koloniefilter filter;
    filter[Merkmalsfeld::Züchter] = u"öller"_s;
    filter.saison = 2021;
    EXPECT_THAT(nummern(wähle(sammlung, filter)), ElementsAre(u"3"_s));
    EXPECT_THAT(filterwerte(sammlung, Geschlecht::Arbeiterinnen).saisons, ElementsAre(2021, 2020));
}

TEST(Kolonieauswahl, years_haveAnIntervalBetweenColoniesAndKeepResolutionsApart) {
    Koloniesammlung sammlung;
    sammlung.kolonien = {
        kolonie(u"1"_s, 2020, 2.2, 1.0, 1200), kolonie(u"2"_s, 2020, 2.4, 2.0, 600),
        kolonie(u"3"_s, 2021, 2.5, 1.0, Koloniewerte::Gemischt), kolonie(u"4"_s, 0, 9.9)};
    sammlung.kolonien[0].urteil = true;
    sammlung.kolonien[2].urteil = false;
    const Jahresverlauf v = jahresverlauf(wähle(sammlung, {}));
    EXPECT_EQ(v.ohneDatum, 1);
    EXPECT_EQ(v.ohneDpi, 1);
    EXPECT_EQ(v.jahre.at(2020).kolonien, 2);
    EXPECT_EQ(v.jahre.at(2020).beurteilt, 1);
    EXPECT_EQ(v.jahre.at(2021).konform, 0);
    ASSERT_EQ(v.reihen.size(), 3U); // CI, DV at 600 and at 1200 dpi; nobody has a hantel index
    const Jahresmittel& jahr = v.reihen[0].jahre[0];
    EXPECT_NEAR(jahr.kennzahlen.mittelwert, 2.3, 1e-9);
    ASSERT_TRUE(jahr.bereich);
    EXPECT_NEAR(jahr.bereich->bis, 2.3 + 12.7062 * 0.1, 1e-4); // t · s / √2
    EXPECT_FALSE(v.reihen[0].jahre[1].bereich);
    EXPECT_EQ(v.reihen[1].dpi, 600);
    EXPECT_EQ(v.reihen[2].jahre.size(), 1U);
}

TEST(Kolonievergleich, differences_haveWelchsAndNewcombesInterval) {
    const Texte texte{QString()};
    const Kolonieregeln regeln{.satz = {.texte = texte, .format = {}, .rassen = {}},
                               .linien = std::vector<Grenzlinien>(4)};
    Koloniewerte a = kolonie(u"1"_s, 2020, 20.6);
    Koloniewerte b = kolonie(u"2"_s, 2020, 22.1);
    a[Größe::CI].kennzahlen = {10, 20.6, 0, 0, std::sqrt(9.0)};
    b[Größe::CI].kennzahlen = {20, 22.1, 0, 0, std::sqrt(0.9)};
    a[Größe::CI].unter = 3;
    b[Größe::CI].unter = 16;
    const Kolonievergleich v = vergleiche(a, b, regeln);
    // 9.9 degrees of freedom count as nine.
    ASSERT_TRUE(v.zeilen[0].unterschied && v.zeilen[0].unterschied->bereich);
    EXPECT_NEAR(v.zeilen[0].unterschied->bereich->von, -1.5 - 2.2622 * std::sqrt(0.945), 1e-3);
    EXPECT_FALSE(v.zeilen[0].unterschied->gesichert());
    EXPECT_NEAR(v.zeilen[1].unterschied->differenz, -50, 1e-9);
    EXPECT_TRUE(v.zeilen[1].unterschied->gesichert());
    EXPECT_FALSE(v.dpiVerschieden);

    b.dpi = 600;
    EXPECT_FALSE(vergleiche(a, b, regeln).zeilen[6].unterschied);
    b.tiere = Geschlecht::Drohnen;
    EXPECT_FALSE(vergleiche(a, b, regeln).zeilen[0].unterschied);
}

} // namespace
} // namespace tarvel
