#include "results/browserprobe.h"
#include "results/papierkorb.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using BeiVergebener = Papierkorb::BeiVergebener;

namespace {

class Korbtest : public Browserprobe {
protected:
    [[nodiscard]] Papierkorb korb() const {
        return Papierkorb(pfad_, std::chrono::milliseconds(20));
    }
    [[nodiscard]] Ergebnistabelle::Zeile zeile(const QString& nummer) const {
        for (const auto& z :
             tabelle().zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 999)) {
            if (z.werte[0] == nummer) {
                return z;
            }
        }
        ADD_FAILURE() << "no row " << nummer.toStdString();
        return {};
    }
    Rücknahme lösche(const QString& nummer) const { return tabelle().lösche(zeile(nummer)); }
    Rücknahme ändere(const QString& nummer, std::size_t spalte, const QString& wert) const {
        const auto alt = zeile(nummer);
        auto neu = alt;
        neu.werte.at(spalte) = wert;
        return tabelle().ändere(alt, neu);
    }
    /// "number cause" of each entry, the latest first.
    [[nodiscard]] QString inhalt() const {
        Texte texte{QString()};
        texte.SpracheDeutsch();
        QStringList zeilen;
        for (const Korbeintrag& e : korb().einträge()) {
            EXPECT_TRUE(e.zeit.isValid());
            zeilen << e.U_NR + u' ' + anlasstext(texte, e.anlass);
        }
        return zeilen.join(u'|');
    }
    [[nodiscard]] std::vector<qint64> alle() const {
        std::vector<qint64> nummern;
        for (const Korbeintrag& e : korb().einträge()) {
            nummern.insert(nummern.begin(), e.nr);
        }
        return nummern;
    }
};

} // namespace

TEST_F(Korbtest, everyWayThatARowIsLost_leadsThere_withItsCause) {
    speichere(vollerSatz(u"A"_s));
    const QByteArray vorher = bytes(pfad_);
    EXPECT_EQ(inhalt(), QString());
    EXPECT_EQ(bytes(pfad_), vorher) << "looking changes nothing";
    speichere(vollerSatz(u"A"_s));
    EXPECT_EQ(fremd(u"SELECT name FROM sqlite_master WHERE name LIKE 'Tarvel%'"_s), QString())
        << "the same again loses nothing";

    Ergebnissatz anderer = vollerSatz(u"A"_s);
    anderer.VOLK = u"Volk 8"_s;
    ASSERT_TRUE(tabelle().ersetze(anderer, vollerSatz(u"A"_s)));
    ändere(u"A"_s, 2, u"Müller"_s);
    ändere(u"A"_s, 0, u"B"_s);
    lösche(u"B"_s);
    EXPECT_EQ(inhalt(),
              u"B gelöscht|A umbenannt|A in der Liste geändert|A durch Speichern ersetzt"_s);
    EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
    EXPECT_EQ(fremd(u"SELECT sql FROM sqlite_master WHERE name = 'Ergebnisse'"_s).count(u"Korb"_s),
              0);

    const auto gelöschter = korb().vergleiche(alle().back());
    EXPECT_EQ(gelöschter.damals.Z_NAME, u"Müller"_s);
    EXPECT_FALSE(gelöschter.heute);
    korb().leere();
    EXPECT_EQ(inhalt(), QString());
}

TEST_F(Korbtest, refusedChange_leavesNothingThere) {
    speichere(vollerSatz(u"A"_s));
    speichere(vollerSatz(u"B"_s));
    EXPECT_EQ(grundVon([this] { ändere(u"A"_s, 0, u"B"_s); }), Datenbankgrund::NummerDoppelt);
    EXPECT_EQ(inhalt(), QString());
    EXPECT_EQ(fremd(u"SELECT name FROM sqlite_master WHERE name LIKE 'Tarvel%'"_s), QString());
}

TEST_F(Korbtest, rowsComeBackToTheByte_alsoThoseOfOtherPrograms_withTheWordsOfToday) {
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN \"Mein \"\"Korb\" TEXT; "
          u"INSERT INTO Ergebnisse(U_NR, Z_NAME, A_D, ERGEBNIS, DATUM, CI, Grafik2, \"Mein "
          u"\"\"Korb\") "
          u"VALUES('X', CAST(x'4DFC6C6C6572' AS TEXT), 'Workers', 'Vielleicht', '03/12/15', "
          u"x'00FF', 4.5, 'eigenes')"_s);
    const QString lies = u"SELECT hex(Z_NAME), A_D, ERGEBNIS, DATUM, typeof(CI), hex(CI), "
                         u"typeof(Grafik2), Grafik4 IS NULL, \"Mein \"\"Korb\" FROM Ergebnisse"_s;
    QString erwartet = fremd(lies);
    ASSERT_EQ(erwartet, u"4DFC6C6C6572|Workers|Vielleicht|03/12/15|blob|00FF|text|1|eigenes"_s);
    const Rücknahme rücknahme = lösche(u"X"_s);
    EXPECT_EQ(korb().stelleWiederHer(alle(), BeiVergebener::Auslassen, Sprache::Französisch).zahl,
              1);
    EXPECT_EQ(fremd(lies).toStdString(),
              erwartet.replace(u"Workers"_s, u"Ouvrières"_s).toStdString());
    EXPECT_EQ(inhalt(), QString()) << "what came back has left the bin";
    EXPECT_EQ(grundVon([&] { korb().nimmZurück(rücknahme, Sprache::Deutsch); }),
              Datenbankgrund::KorbEintragFehlt);
}

TEST_F(Korbtest, takenNumber_isReplaced_givenAnew_orLeftOut) {
    const auto bereite = [this] {
        fremd(u"DELETE FROM Ergebnisse"_s);
        korb().leere();
        Ergebnissatz früher = vollerSatz(u"005AB2025"_s);
        früher.Z_NAME = u"früher"_s;
        speichere(früher);
        lösche(u"005AB2025"_s);
        speichere(vollerSatz(u"005ab2025"_s)); // the same number
        speichere(vollerSatz(u"012AB2025"_s));
        EXPECT_EQ(korb().vergebene(alle()), QStringList(u"005AB2025"_s));
    };
    speichere(vollerSatz(u"0"_s));
    lösche(u"0"_s);
    struct Fall {
        BeiVergebener weise;
        QString nummern, korb;
    };
    for (const Fall& fall :
         {Fall{BeiVergebener::Auslassen, u"005ab2025;012AB2025"_s, u"005AB2025 gelöscht"_s},
          Fall{BeiVergebener::NeueNummer, u"005ab2025;012AB2025;013AB2025"_s, {}},
          Fall{BeiVergebener::Ersetzen, u"005AB2025;012AB2025"_s,
               u"005ab2025 beim Wiederherstellen ersetzt"_s}}) {
        bereite();
        const QString vorher = fremd(u"SELECT U_NR, Z_NAME FROM Ergebnisse ORDER BY 1"_s);
        const auto bericht = korb().stelleWiederHer(alle(), fall.weise, Sprache::Deutsch);
        EXPECT_EQ(fremd(u"SELECT U_NR FROM Ergebnisse ORDER BY U_NR COLLATE NOCASE"_s),
                  fall.nummern);
        EXPECT_EQ(inhalt(), fall.korb);
        korb().nimmZurück(bericht.rücknahme, Sprache::Deutsch);
        EXPECT_EQ(fremd(u"SELECT U_NR, Z_NAME FROM Ergebnisse ORDER BY 1"_s), vorher);
    }
}

TEST_F(Korbtest, undo_takesEditRenumberingAndDeletionBack_unlessChangedSince) {
    speichere(vollerSatz(u"A"_s));
    const auto erster = *tabelle().lade(u"A"_s);
    std::vector<Rücknahme> schritte{ändere(u"A"_s, 2, u"Müller"_s), ändere(u"A"_s, 0, u"B"_s),
                                    lösche(u"B"_s)};
    tabelle().SpracheDB(Sprache::Englisch); // meanwhile; words are no difference
    while (!schritte.empty()) {
        korb().nimmZurück(schritte.back(), Sprache::Deutsch);
        schritte.pop_back();
    }
    EXPECT_TRUE(*tabelle().lade(u"A"_s) == erster);
    EXPECT_EQ(nummern(), u"A"_s);

    const Rücknahme änderung = ändere(u"A"_s, 2, u"Maier"_s);
    fremd(u"UPDATE Ergebnisse SET VOLK = 'von anderen'"_s);
    const QString jetzt = fremd(u"SELECT * FROM Ergebnisse"_s);
    EXPECT_EQ(grundVon([&] { korb().nimmZurück(änderung, Sprache::Deutsch); }),
              Datenbankgrund::SeitherGeändert);
    EXPECT_EQ(fremd(u"SELECT * FROM Ergebnisse"_s), jetzt);

    Rücknahme beide = lösche(u"A"_s); // several rows at once come back all or none
    speichere(vollerSatz(u"C"_s));
    beide += lösche(u"C"_s);
    speichere(vollerSatz(u"C"_s));
    EXPECT_EQ(grundVon([&] { korb().nimmZurück(beide, Sprache::Deutsch); }),
              Datenbankgrund::NummerDoppelt);
    EXPECT_EQ(nummern(), u"C"_s);
}

TEST_F(Korbtest, keepsTheLast500_ofTheLast90Days) {
    fülle(510);
    lösche(u"0001"_s);
    fremd(u"INSERT INTO Tarvel_Papierkorb(Korb_Zeit, U_NR) SELECT "
          u"strftime('%Y-%m-%dT%H:%M:%SZ', 'now', '-2 hours'), U_NR FROM Ergebnisse WHERE U_NR < "
          u"'0505' "
          u"ORDER BY U_NR; DELETE FROM Ergebnisse WHERE U_NR < '0505'"_s);
    lösche(u"0505"_s);
    EXPECT_EQ(korb().einträge().size(), 505U); // what went today stays, however many
    fremd(u"UPDATE Tarvel_Papierkorb SET Korb_Zeit = "
          u"strftime('%Y-%m-%dT%H:%M:%SZ', 'now', '-2 days')"_s);
    lösche(u"0506"_s);
    EXPECT_EQ(korb().einträge().size(), 500U);
    EXPECT_EQ(korb().einträge().back().U_NR, u"0007"_s);
    fremd(u"UPDATE Tarvel_Papierkorb SET Korb_Zeit = "
          u"strftime('%Y-%m-%dT%H:%M:%SZ', 'now', '-91 days') WHERE U_NR < '0300'; "
          u"UPDATE Tarvel_Papierkorb SET Korb_Zeit = "
          u"strftime('%Y-%m-%dT%H:%M:%SZ', 'now', '-89 days') WHERE U_NR >= '0300'"_s);
    lösche(u"0510"_s);
    EXPECT_EQ(korb().einträge().size(), 208U);
    EXPECT_EQ(korb().einträge().back().U_NR, u"0300"_s);
}

TEST_F(Korbtest, binThatIsNone_isTold_andNothingIsLost) {
    speichere(vollerSatz(u"A"_s));
    fremd(u"CREATE VIEW Tarvel_Papierkorb AS SELECT 1 AS Korb_Nr"_s);
    EXPECT_TRUE(grundVon([this] { lösche(u"A"_s); }));
    EXPECT_EQ(nummern(), u"A"_s);
}
