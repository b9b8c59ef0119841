#include "results/browserprobe.h"
#include "results/zusammenfuehrung.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Pair;

namespace {

constexpr auto weiter = [](int /*schritt*/, int /*alle*/) { return true; };

/// Two results files: that of pfad_ and another one.
class Zusammenführungstest : public Browserprobe {
protected:
    QString andere_ = ordner_.filePath(u"Ändere.tdb"_s);

    void SetUp() override {
        Browserprobe::SetUp();
        NeueDatenbank(andere_);
    }
    static Ergebnissatz gemessen(const QString& nummer, const QString& züchter) {
        Ergebnissatz satz = vollerSatz(nummer);
        satz.Z_NAME = züchter;
        satz.CI = u"#001;2,31;12,3; "_s + züchter;
        satz.Grafik[0] = u"1234 dpi;001/2.31/0;"_s;
        return satz;
    }
    void dort(const Ergebnissatz& satz) const { Ergebnistabelle(andere_).speichere(satz); }
    /// SQL on the other file.
    QString fremdDort(const QString& sql) {
        const QString meine = std::exchange(pfad_, andere_);
        QString ergebnis = fremd(sql);
        pfad_ = meine;
        return ergebnis;
    }
    [[nodiscard]] QString inhalt() const {
        return fremd(u"SELECT U_NR, Z_NAME FROM Ergebnisse ORDER BY U_NR"_s);
    }
    struct Ergebnis {
        int neu, gleich, verschieden;
        std::optional<Zusammenführungsbericht> bericht;
    };
    Ergebnis führeZusammen(Entscheidung beiVerschiedenen,
                           Sprache sprache = Sprache::Deutsch) const {
        const Dateiquelle quelle(andere_, pfad_);
        Zusammenführung z(pfad_, quelle);
        EXPECT_TRUE(z.vergleiche(weiter));
        z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
        z.entscheide(Zeilenstand::Verschieden, beiVerschiedenen);
        return {z.anzahl(Zeilenstand::Neu), z.anzahl(Zeilenstand::Gleich),
                z.anzahl(Zeilenstand::Verschieden), z.übernimm(sprache, weiter)};
    }
};

} // namespace

TEST_F(Zusammenführungstest, eachDecision_isDone_andDoingItTwiceChangesNothing) {
    struct Fall {
        Entscheidung entscheidung;
        QString danach;
    };
    for (const Fall& fall :
         {Fall{Entscheidung::Lassen, u"001AB2025|gleich;002AB2025|meiner;003AB2025|neuer"_s},
          Fall{Entscheidung::Nehmen, u"001AB2025|gleich;002AB2025|anderer;003AB2025|neuer"_s},
          Fall{Entscheidung::Beide,
               u"001AB2025|gleich;002AB2025|meiner;003AB2025|neuer;004AB2025|anderer"_s}}) {
        fremd(u"DELETE FROM Ergebnisse; DROP TABLE IF EXISTS Tarvel_Herkunft"_s);
        fremdDort(u"DELETE FROM Ergebnisse"_s);
        speichere(gemessen(u"001AB2025"_s, u"gleich"_s));
        speichere(gemessen(u"002AB2025"_s, u"meiner"_s));
        dort(gemessen(u"001AB2025"_s, u"gleich"_s));
        dort(gemessen(u"002ab2025"_s, u"anderer"_s));
        dort(gemessen(u"003AB2025"_s, u"neuer"_s));
        const QByteArray andere = bytes(andere_);

        const Ergebnis ergebnis = führeZusammen(fall.entscheidung);
        EXPECT_EQ(ergebnis.neu, 1);
        EXPECT_EQ(ergebnis.gleich, 1);
        EXPECT_EQ(ergebnis.verschieden, 1);
        EXPECT_EQ(inhalt().replace(u"ab"_s, u"AB"_s), fall.danach);
        EXPECT_EQ(ergebnis.bericht->ersetzt.size(),
                  fall.entscheidung == Entscheidung::Nehmen ? 1 : 0);
        if (fall.entscheidung == Entscheidung::Beide) {
            EXPECT_THAT(ergebnis.bericht->umbenannt,
                        ElementsAre(Pair(u"002ab2025"_s, u"004ab2025"_s)));
        }
        const QString einmal = inhalt();
        const Ergebnis zweitesMal = führeZusammen(fall.entscheidung);
        EXPECT_EQ(zweitesMal.bericht->übernommen, 0);
        EXPECT_EQ(zweitesMal.neu, 0);
        EXPECT_EQ(inhalt(), einmal);
        EXPECT_EQ(bytes(andere_), andere) << "the other file is only read";
    }
    EXPECT_EQ(fremd(u"SELECT Korb_Anlass, Z_NAME FROM Tarvel_Papierkorb"_s),
              u"zusammengefuehrt|meiner"_s);
    EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Zusammenführungstest, takenRow_isKnownAgain_afterItWasEditedRenumberedOrCameBack) {
    speichere(gemessen(u"005"_s, u"meiner"_s));
    dort(gemessen(u"005"_s, u"anderer"_s));
    ASSERT_EQ(führeZusammen(Entscheidung::Beide).bericht->übernommen, 1);
    ASSERT_EQ(inhalt(), u"005|meiner;006|anderer"_s);
    auto zeilen = tabelle().zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 9);
    auto neu = zeilen.back();
    neu.werte[0] = u"106"_s;
    neu.werte[2] = u"berichtigt"_s;
    const Rücknahme umbenannt = tabelle().ändere(zeilen.back(), neu);
    EXPECT_EQ(führeZusammen(Entscheidung::Beide).gleich, 1);
    Papierkorb(pfad_).nimmZurück(umbenannt, Sprache::Deutsch);
    EXPECT_EQ(führeZusammen(Entscheidung::Beide).gleich, 1);
    EXPECT_EQ(inhalt(), u"005|meiner;006|anderer"_s);

    // The other way round their own row is none that is new to them.
    std::swap(pfad_, andere_);
    const Ergebnis zurück = führeZusammen(Entscheidung::Beide);
    EXPECT_EQ(zurück.gleich, 1);
    EXPECT_EQ(inhalt(), u"005|anderer;007|meiner"_s);
    std::swap(pfad_, andere_);
    EXPECT_EQ(führeZusammen(Entscheidung::Beide).gleich, 2);

    // Another examination under the number of one that was taken over is not it.
    speichere(gemessen(u"006"_s, u"ganz anderer"_s));
    EXPECT_EQ(führeZusammen(Entscheidung::Lassen).verschieden, 1);
}

TEST_F(Zusammenführungstest, rowsOfOtherPrograms_comeInAsTheyStand_noneIsLost) {
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN Meins TEXT"_s);
    speichere(gemessen(u"7"_s, u"meiner"_s));
    fremd(u"UPDATE Ergebnisse SET Meins = 'bleibt'"_s);
    fremdDort(u"INSERT INTO Ergebnisse(U_NR, Z_NAME, A_D, DATUM, CI, Grafik1) VALUES"
              u"('7', 'a', 'Drones', '03/12/15', CAST(x'FFFE' AS TEXT), '2400 dpi;'), "
              u"('7 ', 'b', ' ', ' ', ' ', ' '), (NULL, 'c', ' ', ' ', ' ', ' '), "
              u"(' ', 'd', ' ', ' ', ' ', ' '), ('ZEHNZEICHEN', 'e', ' ', ' ', ' ', ' '), "
              u"('ABCDEFGHIJ', 'f', ' ', ' ', ' ', ' ')"_s);
    speichere(gemessen(u"ABCDEFGHIJ"_s, u"g"_s));
    ASSERT_EQ(führeZusammen(Entscheidung::Beide, Sprache::Englisch).bericht->übernommen, 6);
    EXPECT_EQ(fremd(u"SELECT group_concat(Z_NAME, '') FROM (SELECT Z_NAME FROM Ergebnisse "
                    u"ORDER BY Z_NAME)"_s),
              u"abcdefgmeiner"_s);
    EXPECT_EQ(fremd(u"SELECT A_D, DATUM, hex(CI), Grafik1 FROM Ergebnisse WHERE Z_NAME = 'a'"_s),
              u"Drones|03/12/15|FFFE|2400 dpi;"_s);
    EXPECT_EQ(fremd(u"SELECT max(length(U_NR)) FROM Ergebnisse WHERE Z_NAME <> 'e'"_s), u"10"_s);
    EXPECT_EQ(führeZusammen(Entscheidung::Beide).bericht->übernommen, 0);
    // A date that nobody understands is content all the same.
    fremdDort(u"UPDATE Ergebnisse SET DATUM = '04/12/15' WHERE Z_NAME = 'a'"_s);
    const auto bericht = führeZusammen(Entscheidung::Nehmen).bericht;
    EXPECT_THAT(bericht->ersetzt, ElementsAre(u"7"_s));
    const QString wer = u"SELECT Z_NAME, Meins FROM Ergebnisse WHERE U_NR = '7'"_s;
    EXPECT_EQ(fremd(wer), u"a|bleibt"_s);
    Papierkorb(pfad_).nimmZurück(bericht->rücknahme, Sprache::Deutsch);
    EXPECT_EQ(fremd(wer), u"meiner|bleibt"_s) << "also what nobody can read is told again";
}

TEST_F(Zusammenführungstest, whatChangedSinceItWasCompared_isPassedOver) {
    using Grund = Zusammenführungsbericht::Übergangen::Grund;
    for (const QString& nummer : {u"1"_s, u"5"_s}) {
        speichere(gemessen(nummer, u"meiner"_s));
    }
    for (const QString& nummer : {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s}) {
        dort(gemessen(nummer, u"anderer"_s));
    }
    const Dateiquelle quelle(andere_, pfad_);
    Zusammenführung z(pfad_, quelle);
    ASSERT_TRUE(z.vergleiche(weiter));
    z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
    z.entscheide(Zeilenstand::Verschieden, Entscheidung::Nehmen);
    speichere(gemessen(u"1"_s, u"inzwischen"_s));
    speichere(gemessen(u"2"_s, u"inzwischen"_s));
    dort(gemessen(u"3"_s, u"inzwischen"_s));
    fremdDort(u"DELETE FROM Ergebnisse WHERE U_NR = '4'"_s);
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR = '5'"_s);
    const auto bericht = z.übernimm(Sprache::Deutsch, weiter);
    EXPECT_EQ(bericht->übernommen, 0);
    EXPECT_TRUE(bericht->rücknahme.leer());
    using Übergangen = Zusammenführungsbericht::Übergangen;
    EXPECT_THAT(bericht->übergangen,
                testing::UnorderedElementsAre(
                    Übergangen{u"1"_s, Grund::Geändert}, Übergangen{u"2"_s, Grund::Geändert},
                    Übergangen{u"3"_s, Grund::Geändert}, Übergangen{u"4"_s, Grund::DortGelöscht},
                    Übergangen{u"5"_s, Grund::HierGelöscht}));
    EXPECT_EQ(inhalt(), u"1|inzwischen;2|inzwischen"_s);
}

TEST_F(Zusammenführungstest, whatCameIn_isTakenBackWhole_unlessSomebodyChangedIt) {
    // More are replaced than the bin keeps for long.
    constexpr int Viele = Papierkorb::Höchstens + 20;
    const QString füllen = u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < "
                           u"%1) INSERT INTO Ergebnisse(U_NR, Z_NAME) SELECT i, '%2' FROM z"_s;
    fremd(füllen.arg(QString::number(Viele), u"meiner"_s));
    fremdDort(füllen.arg(QString::number(Viele + 3), u"anderer"_s));
    const QString vorher = inhalt();
    for (const Entscheidung entscheidung : {Entscheidung::Nehmen, Entscheidung::Beide}) {
        const Ergebnis ergebnis = führeZusammen(entscheidung);
        EXPECT_EQ(ergebnis.bericht->übernommen, Viele + 3);
        const Rücknahme& rücknahme = ergebnis.bericht->rücknahme;
        const Papierkorb korb(pfad_);
        const QString nachher = inhalt();
        fremd(u"UPDATE Ergebnisse SET VOLK = 'von anderen' WHERE U_NR = '7'"_s);
        fremd(u"UPDATE Ergebnisse SET VOLK = 'von anderen' WHERE U_NR = '%1'"_s.arg(Viele + 1));
        EXPECT_EQ(grundVon([&] { korb.nimmZurück(rücknahme, Sprache::Deutsch); }),
                  Datenbankgrund::SeitherGeändert);
        EXPECT_EQ(inhalt(), nachher);
        fremd(u"UPDATE Ergebnisse SET VOLK = NULL"_s);
        EXPECT_EQ(korb.nimmZurück(rücknahme, Sprache::Deutsch).size(),
                  static_cast<std::size_t>(ergebnis.bericht->ersetzt.size()));
        EXPECT_EQ(inhalt(), vorher);
        EXPECT_EQ(führeZusammen(Entscheidung::Lassen).neu, 3) << "it can be done again";
        fremd(u"DELETE FROM Ergebnisse WHERE CAST(U_NR AS INTEGER) > %1"_s.arg(Viele));
    }
}

TEST_F(Zusammenführungstest, aFileThatAnotherProgramKeeps_isNamed_andNothingIsAltered) {
    speichere(gemessen(u"1"_s, u"meiner"_s));
    dort(gemessen(u"1"_s, u"anderer"_s));
    dort(gemessen(u"2"_s, u"neuer"_s));
    const QByteArray meine = bytes(pfad_);
    const QByteArray andere = bytes(andere_);
    constexpr std::chrono::milliseconds Kurz(20);
    for (const QString& gesperrt : {pfad_, andere_}) {
        for (const bool beimVergleichen : {true, false}) {
            sqlite3* fremde = nullptr;
            sqlite3_open(gesperrt.toUtf8().constData(), &fremde);
            const auto sperre = [&] {
                return sqlite3_exec(fremde, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
            };
            const auto fehler = fehlerVon([&] {
                if (beimVergleichen) {
                    ASSERT_EQ(sperre(), SQLITE_OK);
                }
                const Dateiquelle quelle(andere_, pfad_, Kurz);
                Zusammenführung z(pfad_, quelle, Kurz);
                ASSERT_TRUE(z.vergleiche(weiter));
                ASSERT_EQ(sperre(), SQLITE_OK);
                z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
                z.entscheide(Zeilenstand::Verschieden, Entscheidung::Nehmen);
                (void)z.übernimm(Sprache::Deutsch, weiter);
            });
            sqlite3_close(fremde);
            ASSERT_TRUE(fehler);
            EXPECT_EQ(fehler->grund(), Datenbankgrund::Gesperrt);
            EXPECT_EQ(fehler->datei(), gesperrt);
            EXPECT_EQ(bytes(pfad_), meine);
            EXPECT_EQ(bytes(andere_), andere);
        }
    }
    EXPECT_EQ(führeZusammen(Entscheidung::Nehmen).bericht->übernommen, 2);
}

TEST_F(Zusammenführungstest, stopped_itLeavesTheFileAsItWas) {
    speichere(gemessen(u"1"_s, u"meiner"_s));
    fremdDort(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 199) "
              u"INSERT INTO Ergebnisse(U_NR, Z_NAME) SELECT i, 'anderer' FROM z"_s);
    const QByteArray vorher = bytes(pfad_);
    const Dateiquelle quelle(andere_, pfad_);
    Zusammenführung z(pfad_, quelle);
    EXPECT_FALSE(z.vergleiche([](int schritt, int /*alle*/) { return schritt < 70; }));
    ASSERT_TRUE(z.vergleiche(weiter));
    EXPECT_EQ(bytes(pfad_), vorher) << "comparing changes nothing";
    z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
    z.entscheide(Zeilenstand::Verschieden, Entscheidung::Nehmen);
    EXPECT_FALSE(z.übernimm(Sprache::Deutsch, [](int schritt, int alle) {
        EXPECT_EQ(alle, 199);
        return schritt < 150;
    }));
    EXPECT_EQ(bytes(pfad_), vorher);
}

TEST_F(Zusammenführungstest, sourceThatCannotBeTrusted_isRefused_andLeftAlone) {
    const auto grund = [this](const QString& pfad) {
        return grundVon([&] { const Dateiquelle quelle(pfad, pfad_); });
    };
    EXPECT_EQ(grund(pfad_), Datenbankgrund::QuelleDieselbe);
    EXPECT_EQ(grund(ordner_.filePath(u"keine.tdb"_s)), Datenbankgrund::Verschwunden);
    schreibe(andere_, "no results file, but long enough to be looked at");
    EXPECT_EQ(grund(andere_), Datenbankgrund::Keine);
    QFile::remove(andere_);
    NeueDatenbank(andere_);
    fremdDort(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 300) "
              u"INSERT INTO Ergebnisse(U_NR, CI) SELECT i, hex(zeroblob(200)) FROM z"_s);
    QFile::resize(andere_, QFileInfo(andere_).size() * 2 / 3 / 4096 * 4096);
    const QByteArray gekürzt = bytes(andere_);
    EXPECT_EQ(grund(andere_), Datenbankgrund::Beschädigt);
    EXPECT_EQ(bytes(andere_), gekürzt);
}

TEST_F(Zusammenführungstest, sourceInTheMiddleOfASave_isRefused_andNotTouched) {
    dort(gemessen(u"1"_s, u"a"_s));
    // A crash leaves the journal of a save behind.
    sqlite3* db = nullptr;
    sqlite3_open(andere_.toUtf8().constData(), &db);
    sqlite3_exec(db, "PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN", nullptr, nullptr,
                 nullptr);
    for (int i = 0; i < 50; ++i) {
        sqlite3_exec(db,
                     "INSERT INTO Ergebnisse(U_NR, CI) VALUES(hex(randomblob(4)), "
                     "hex(zeroblob(9000)))",
                     nullptr, nullptr, nullptr);
    }
    const QByteArray datei = bytes(andere_);
    const QByteArray journal = bytes(andere_ + u"-journal"_s);
    sqlite3_close(db);
    const QString kopie = ordner_.filePath(u"Absturz.tdb"_s);
    schreibe(kopie, datei);
    schreibe(kopie + u"-journal"_s, journal);
    EXPECT_EQ(grundVon([&] { const Dateiquelle quelle(kopie, pfad_); }),
              Datenbankgrund::QuelleUnterbrochen);
    EXPECT_EQ(bytes(kopie), datei);
    EXPECT_EQ(bytes(kopie + u"-journal"_s), journal);
}

TEST_F(Zusammenführungstest, rowsFromElsewhere_goTheSameWay) {
    speichere(gemessen(u"1"_s, u"meiner"_s));
    const Satzliste liste(u"Liste.csv"_s,
                          {gemessen(u"1"_s, u"anderer"_s), gemessen(u"2"_s, u"neuer"_s),
                           gemessen(u"2"_s, u"noch einer"_s), gemessen(u"2"_s, u"neuer"_s)});
    Zusammenführung z(pfad_, liste);
    ASSERT_TRUE(z.vergleiche(weiter));
    EXPECT_EQ(z.anzahl(Zeilenstand::Verschieden), 2);
    EXPECT_EQ(z.anzahl(Zeilenstand::Gleich), 1);
    z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
    z.entscheide(Zeilenstand::Verschieden, Entscheidung::Beide);
    EXPECT_EQ(z.übernimm(Sprache::Deutsch, weiter)->übernommen, 3);
    EXPECT_EQ(inhalt(), u"003|anderer;004|noch einer;1|meiner;2|neuer"_s);
    EXPECT_EQ(fremd(u"SELECT DISTINCT Datei FROM Tarvel_Herkunft"_s), u"Liste.csv"_s);
}
