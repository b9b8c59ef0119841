#include "evaluation/rassestandard.h"

#include "platform/benutzerspeicher.h"
#include "platform/codepage.h"
#include "platform/profil.h"
#include "settings/einstellungen.h"
#include "support/testordner.h"

#include <QCryptographicHash>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

const Zahlenformat Komma{u',', u'.'};
const Zahlenformat Punkt;

struct RassestandardTest : testing::Test {
    void schreibe(const QString& inhalt) const { lege(pfad, nachCodepage1252(inhalt)); }
    bool speichere(const Rassestandard& standard, int rasse) {
        Profil ini(pfad);
        SpeichernKarte5Arbeiterinnen(standard, rasse, ini);
        SpeichernKarte5Drohnen(standard, rasse, ini);
        const bool linien = SpeichernKarte5Linien(standard, rasse, ini, speicher);
        return ini.sichere() && linien;
    }

    Testordner ordner;
    QString pfad = ordner.filePath(u"Index.ini"_s);
    Einstellungen einstellungen{pfad};
    Benutzerspeicher speicher{ordner.filePath(u"benutzer.ini"_s)};
};

/// A standard in which no value is its default.
Rassestandard anderer() {
    Rassestandard standard;
    int n = 0;
    for (const Standardzeile& zeile : standardtabelle()) {
        ++n;
        switch (zeile.art) {
        case Werteart::Prozent:
            zeile.text(standard) = u"%1%"_s.arg(n + 50);
            break;
        case Werteart::Bereich:
            zeile.text(standard) = u"%1-%2"_s.arg(n, 2, 10, QChar(u'0')).arg(n + 5, 2);
            break;
        case Werteart::Option:
            zeile.zahl(standard) = 0;
            break;
        case Werteart::Schalter:
        case Werteart::Listenplatz:
            zeile.zahl(standard) = 1;
            break;
        case Werteart::InZehnteln:
        case Werteart::InHundertsteln:
        case Werteart::InTausendsteln:
            zeile.zahl(standard) = static_cast<qint16>(-300 - n);
            break;
        }
    }
    return standard;
}

} // namespace

TEST_F(RassestandardTest, raceWithoutEntries_hasTheDefaults) {
    schreibe(u"[Merkmale Arbeiterinnen]\r\nPanzer OC-=7%\r\n"_s);
    for (const int rasse : {2, 3, 4}) {
        Rassestandard standard = anderer();
        LadenMerkmaleArbeiterinnen(standard, rasse, einstellungen);
        LadenMerkmaleDrohnen(standard, rasse, einstellungen);
        LadenGrenzlinien(standard, rasse, einstellungen);
        EXPECT_EQ(standard, Rassestandard());
    }
    EXPECT_TRUE(Rassestandard().linien.nachKruber());
    EXPECT_FALSE(Rassestandard().linien.darunter());
}

TEST_F(RassestandardTest, savedStandard_comesBackForItsRaceOnly) {
    for (const int rasse : {1, 2, 3, 4}) {
        ASSERT_TRUE(speichere(anderer(), rasse));
        EXPECT_EQ(ladeRassestandard(rasse, einstellungen), anderer());
        if (rasse < 4) {
            EXPECT_EQ(ladeRassestandard(rasse + 1, einstellungen), Rassestandard());
        }
    }
}

TEST_F(RassestandardTest, saving_writesEveryKeyInOrderAndTheLinesTwice) {
    Rassestandard standard;
    standard.linien.Arbeit.CI = {195};
    standard.linien.Korrelation = 5;
    ASSERT_TRUE(speichere(standard, 2));
    const QByteArray inhalt = liesGanz(pfad);
    EXPECT_TRUE(inhalt.startsWith("[Merkmale Arbeiterinnen]\r\nFilzbinden F_M-=100%\r\n"));
    EXPECT_EQ(QCryptographicHash::hash(inhalt, QCryptographicHash::Md5).toHex().toStdString(),
              "4b980741466dbdfb6c954a046384db0a")
        << inhalt.toStdString();
    for (const Standardzeile& zeile : standardtabelle()) {
        const QString sektion = abschnitt(zeile.gruppe).toString();
        const QString key = zeile.schlüssel.toString() + u"M-"_s;
        const std::optional<QByteArray> inDatei =
            Profil(pfad).wert(nachCodepage1252(sektion), nachCodepage1252(key));
        ASSERT_TRUE(inDatei.has_value()) << qPrintable(key);
        EXPECT_EQ(speicher.GetSetting(u"Index"_s, sektion, key, u"-"_s),
                  zeile.gruppe == Standardgruppe::Grenzlinien ? ausCodepage1252(*inDatei) : u"-"_s);
    }
}

TEST_F(RassestandardTest, unwritableUserStore_isReportedAndTheFileIsSavedAllTheSame) {
    speicher = Benutzerspeicher(ordner.path());
    Profil ini(pfad);
    EXPECT_FALSE(SpeichernKarte5Linien(anderer(), 1, ini, speicher));
    ASSERT_TRUE(ini.sichere());
    Rassestandard standard;
    LadenGrenzlinien(standard, 1, einstellungen);
    EXPECT_EQ(standard.linien, anderer().linien);
}

TEST_F(RassestandardTest, noRace_changesNothing) {
    schreibe(u"[Merkmale Arbeiterinnen]\r\nPanzer O=7%\r\n"_s);
    for (const int rasse : {0, -1, 5}) {
        Rassestandard standard = anderer();
        LadenMerkmaleArbeiterinnen(standard, rasse, einstellungen);
        LadenMerkmaleDrohnen(standard, rasse, einstellungen);
        LadenGrenzlinien(standard, rasse, einstellungen);
        EXPECT_EQ(standard, anderer());
        EXPECT_TRUE(speichere(standard, rasse));
    }
    EXPECT_EQ(liesGanz(pfad), "[Merkmale Arbeiterinnen]\r\nPanzer O=7%\r\n");
}

TEST_F(RassestandardTest, valuesOfAForeignHand_areReadSafely) {
    schreibe(u"[Merkmale Arbeiterinnen]\r\nPanzer OC-=\r\nPanzer EC-="_s + QString(200, u'9') +
             u"\r\nKlasse 0C-=\r\nKlasse 1C-=1-15\r\nKlasse 2C-=quer\r\nMittelwertC-=abc\r\n"
             "CI Mittel AC-=65537\r\n[Grenzlinien]\r\nKorrelationC-=3\r\nDV ><C-=9\r\n"_s);
    Rassestandard standard;
    standard.arbeiterinnen.Panzer[0] = u"12%"_s;
    standard.arbeiterinnen.Klasse[0] = u"03-04"_s;
    LadenMerkmaleArbeiterinnen(standard, 1, einstellungen);
    LadenGrenzlinien(standard, 1, einstellungen);
    EXPECT_EQ(standard.arbeiterinnen.Panzer[0], u"12%"_s);
    EXPECT_EQ(standard.arbeiterinnen.Panzer[1].size(), 127);
    EXPECT_EQ(standard.arbeiterinnen.Klasse[0], u"03-04"_s);
    EXPECT_EQ(standard.arbeiterinnen.Klasse[1], u"01-15"_s);
    EXPECT_EQ(standard.arbeiterinnen.Klasse[2], u"00-00"_s);
    EXPECT_EQ(standard.arbeiterinnen.mittel.Mittelwert.gespeichert, 0);
    EXPECT_EQ(standard.arbeiterinnen.mittel.CIMittel, 1);
    EXPECT_FALSE(standard.linien.nachKruber());
    EXPECT_EQ(standard.linien.DVRichtung, 0);
}

TEST(Rassestandard, linesAfterKruber_areTheDefaultsWhateverWasDefined) {
    Grenzlinien linien = anderer().linien;
    EXPECT_EQ(linien.geltende(Geschlecht::Arbeiterinnen), linien.Arbeit);
    EXPECT_EQ(linien.geltende(Geschlecht::Drohnen), linien.Drohn);
    linien.Korrelation = -1;
    EXPECT_EQ(linien.geltende(Geschlecht::Arbeiterinnen), (Linienwerte{{200}, {920}, {0}}));
    EXPECT_EQ(linien.geltende(Geschlecht::Drohnen), (Linienwerte{{140}, {880}, {50}}));
}

TEST(Rassestandard, fieldsLeft_areNormalised) {
    const struct {
        Werteart art;
        QStringView getippt;
        QStringView gezeigt;
    } fälle[] = {
        {Werteart::Prozent, u"15", u"15%"},
        {Werteart::Prozent, u"15%", u"15%"},
        {Werteart::Prozent, u"", u"0%"},
        {Werteart::Prozent, u"%", u"0%"},
        {Werteart::Prozent, u"007%%", u"7%"},
        {Werteart::Prozent, u"30 Prozent", u"30%"},
        {Werteart::Prozent, u"quer\r\nfeldein", u"0%"},
        {Werteart::Bereich, u"1-15", u"01-15"},
        {Werteart::Bereich, u"15-17", u"15-17"},
        {Werteart::Bereich, u"1-5", u"01-05"},
        {Werteart::Bereich, u"9", u"09-09"},
        {Werteart::Bereich, u"", u"00-00"},
        {Werteart::Bereich, u"-", u"00-00"},
        {Werteart::Bereich, u" 3-7 ", u"03-07"},
        {Werteart::Bereich, u"99999999-12", u"00-12"},
        {Werteart::Bereich, u"ab-cd", u"00-00"},
        {Werteart::InZehnteln, u"2,5", u"2.5"},
        {Werteart::InZehnteln, u"2", u"2.0"},
        {Werteart::InZehnteln, u"2.65", u"2.7"},
        {Werteart::InZehnteln, u"2.25", u"2.2"},
        {Werteart::InZehnteln, u"0,25", u".2"},
        {Werteart::InHundertsteln, u"1,95", u"1.95"},
        {Werteart::InHundertsteln, u"1.95 mm", u"1.95"},
        {Werteart::InHundertsteln, u"-0,5", u"-0.50"},
        {Werteart::InHundertsteln, u"abc", u"0.00"},
        {Werteart::InHundertsteln, u"1e300", u"0.00"},
        {Werteart::InHundertsteln, u"1e-300", u"0.00"},
        {Werteart::InTausendsteln, u"0,92", u"0.920"},
        {Werteart::Listenplatz, u"1", u"1"},
    };
    for (const auto& fall : fälle) {
        EXPECT_EQ(normalisiert(fall.art, fall.getippt.toString(), Punkt), fall.gezeigt.toString())
            << qPrintable(fall.getippt.toString());
    }
    EXPECT_EQ(normalisiert(Werteart::InTausendsteln, u"0.92"_s, Komma), u"0,920"_s);
}

TEST(Rassestandard, typedDecimals_areTakenAsSinglesAndRoundHalfToEven) {
    const struct {
        Werteart art;
        QStringView getippt;
        qint16 gespeichert;
    } fälle[] = {
        {Werteart::InHundertsteln, u"1.95", 195},
        {Werteart::InHundertsteln, u"1,95", 195},
        {Werteart::InHundertsteln, u"0.125", 12},
        {Werteart::InHundertsteln, u"0.375", 38},
        // Halves of the decimal text that the single lies above (1.945) or below (1.005).
        {Werteart::InHundertsteln, u"1.945", 195},
        {Werteart::InHundertsteln, u"1.005", 100},
        {Werteart::InTausendsteln, u"0.8805", 881},
        {Werteart::InZehnteln, u"3276.7", 32767},
        {Werteart::InZehnteln, u"3276.8", 7},
        {Werteart::InHundertsteln, u"99999", 7},
        {Werteart::Schalter, u"1", 1},
    };
    for (const auto& fall : fälle) {
        EXPECT_EQ(gespeicherteZahl(fall.art, fall.getippt, 7), fall.gespeichert)
            << qPrintable(fall.getippt.toString());
    }
}

TEST(Rassestandard, shownTexts_takenOverAgainChangeNothing) {
    for (const Rassestandard& quelle : {Rassestandard(), anderer()}) {
        for (const Zahlenformat& format : {Punkt, Komma}) {
            Rassestandard ziel;
            for (const Standardzeile& zeile : standardtabelle()) {
                übernehme(zeile, ziel,
                          normalisiert(zeile.art, anzeigetext(zeile, quelle, format), format));
            }
            EXPECT_EQ(ziel, quelle);
        }
    }
}
