// Stored examinations judged again: what is shown before, what is written, what stays.

#include "evaluation/standarddatei.h"
#include "results/dbprobe.h"
#include "results/fluegelsatz.h"

#include <QProgressDialog>
#include <QTimer>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct Neubeurteilungstest : DBTest {
    Rassestandard heute;
    Urteilsregeln regeln;

    void SetUp() override {
        DBTest::SetUp();
        neubeurteilung = [this] {
            return Neubeurteilungsregeln{
                satzumgebung(), {heute, heute, Rassestandard(), Rassestandard()}, regeln};
        };
    }
    [[nodiscard]] Satzumgebung satzumgebung() const {
        return {texte, {}, {u"Carnica"_s, u"Mellifera"_s, u"Ligustica"_s, u"Carpatica"_s}, false};
    }
    /// An examination of bees of colour @p panzer that was judged by @p grenzen, empty for none.
    void lege(const QString& nummer, int panzer, bool urteil, const QString& grenzen,
              const QString& rasse = u"Carnica"_s) const {
        Untersuchung u;
        Kolonieangaben angaben;
        angaben.UNr = nummer;
        angaben.Volk = u"Volk 7"_s;
        angaben.Jahr = u"2024"_s;
        u.setzeAngaben(angaben);
        Merkmale merkmale;
        ASSERT_TRUE(MerkmalÜbernehmen(merkmale, {panzer, 0, 0}, false));
        u.setzeMerkmale(merkmale);
        Untersuchungszusatz zusatz;
        zusatz.Grenzen = grenzen;
        zusatz.weitere = {{u"Neues"_s, u"bleibt"_s}};
        u.setzeZusatz(zusatz);
        Ergebnissatz satz = satzAus(u, urteil, 1200, QDate(2024, 5, 1), satzumgebung());
        satz.RASSE = rasse;
        tabelle().speichere(satz);
    }
    void beurteile() const { wähle(u"men_Tabelle_5"_s); }
    void beurteileAlle() const {
        grid().selectAll();
        beurteile();
    }
    [[nodiscard]] QStringList gezeigteWorte() const {
        const int spalte = static_cast<int>(Ergebnisspalte::Entspricht);
        QStringList worte;
        for (int i = 0; i < grid().model()->rowCount(); ++i) {
            worte << zelle(i, spalte);
        }
        return worte;
    }
    [[nodiscard]] Ergebnissatz zeile(const QString& nummer) const {
        return tabelle().lade(nummer).value();
    }
    [[nodiscard]] Beiangaben angaben(const QString& nummer) const {
        return beiangabenAusSatz(zeile(nummer).Grafik[3]).inhalt.angaben;
    }
};

TEST_F(Neubeurteilungstest, ListsWhatChangesAndWritesItOnlyThen) {
    const QString damals = standardtext({u"Carnica"_s, heute});
    lege(u"1"_s, 0, true, damals);
    lege(u"2"_s, 1, true, {});  // E: fails today
    lege(u"3"_s, 1, false, {}); // and did already
    lege(u"4"_s, 0, true, {}, u"Sicula"_s);
    lege(u"5"_s, 0, false, {});    // another program's word
    speichere(vollerSatz(u"6"_s)); // nothing measured
    Ergebnissatz unlesbar = zeile(u"1"_s);
    unlesbar.U_NR = u"7"_s;
    unlesbar.MERKMAL = u"L#?"_s;
    speichere(unlesbar);
    heute.arbeiterinnen.Panzer[1] = u"20%"_s;
    öffne();
    const QByteArray vorher = bytes(pfad_);
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    beurteileAlle();
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    const Frage frage = dialoge.fragen.front();
    EXPECT_TRUE(frage.verwirft);
    EXPECT_EQ(frage.text,
              u"Urteile, die sich nach dem jetzigen Standard ändern: 2; die bleiben: 2; "
              "Untersuchungen ohne Urteil: 3. Wollen Sie die Urteile speichern?"_s);
    EXPECT_EQ(frage.zeilen.join(u'\n').toStdString(),
              "2: Ja → Nein (E: 100 %, erlaubt 20 %)\n5: Nein → Ja\n"
              "1: bleibt 'Ja', jetzt nach anderen Grenzen\n"
              "4: Nicht beurteilt: Für die Rasse 'Sicula' ist kein Standard eingerichtet.\n"
              "7: Von der Untersuchung '7' war nicht alles lesbar. Was fehlt: Körpermerkmale.\n"
              "6: Noch kein Flügel gemessen.");
    EXPECT_EQ(bytes(pfad_), vorher);
    const Ergebnissatz alt = zeile(u"2"_s);
    beurteileAlle();
    EXPECT_EQ(dialoge.meldungen.last(), u"Neu beurteilen: Gespeicherte Urteile: 3 von 3."_s);
    EXPECT_EQ(zeile(u"5"_s).ERGEBNIS, u"Ja"_s);
    Ergebnissatz neu = zeile(u"2"_s);
    EXPECT_EQ(std::exchange(neu.ERGEBNIS, alt.ERGEBNIS), u"Nein"_s);
    neu.Grafik[3] = alt.Grafik[3];
    EXPECT_EQ(neu, alt); // all else stays
    for (const QString& nummer : {u"1"_s, u"2"_s, u"5"_s}) {
        EXPECT_EQ(angaben(nummer).zusatz.Grenzen, standardtext({u"Carnica"_s, heute}));
        EXPECT_EQ(angaben(nummer).Jahr, u"2024"_s);
        EXPECT_THAT(angaben(nummer).zusatz.weitere, SizeIs(1));
    }
    EXPECT_TRUE(gezeigteWorte().contains(u"Nein"_s)); // the grid shows what was written
    beurteileAlle();                                  // once more: nothing is left to be done
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("Kein Urteil ändert sich."));
    regeln.BewertungAktiv = false;
    beurteileAlle();
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
}

TEST_F(Neubeurteilungstest, TakesTheChosenRowsAndOneThatFailsStopsNoOther) {
    for (const QString& nummer : {u"1"_s, u"2"_s, u"3"_s, u"4"_s}) {
        lege(nummer, 3, true, {}); // 2R: none is allowed
    }
    öffne();
    grid().setFocus();
    gehe(1, 0);
    taste(Qt::Key_Down, Qt::ShiftModifier);
    taste(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(aktion(u"men_Tabelle_5"_s).text(), u"3 Untersuchungen neu beurteilen"_s);
    // Wider than its column, as another program may leave it: such a row is not stored.
    fremd(u"UPDATE Ergebnisse SET VOLK = hex(zeroblob(40)) WHERE U_NR = '3'"_s);
    dialoge.antworten = {Antwort::Ja};
    beurteile();
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_THAT(dialoge.fragen.front().zeilen, SizeIs(3));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Gespeicherte Urteile: 2 von 3."));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("\n3: "));
    QStringList worte;
    for (const QString& nummer : {u"1"_s, u"2"_s, u"3"_s, u"4"_s}) {
        worte << zeile(nummer).ERGEBNIS;
    }
    EXPECT_THAT(worte, ElementsAre(u"Ja"_s, u"Nein"_s, u"Ja"_s, u"Nein"_s));
}

TEST_F(Neubeurteilungstest, OfOneChosenRowOnlyThatOneIsJudged) {
    lege(u"1"_s, 3, true, {});
    lege(u"2"_s, 3, true, {});
    öffne();
    gehe(0, 0);
    EXPECT_EQ(aktion(u"men_Tabelle_5"_s).text(), u"1 Untersuchung neu beurteilen"_s);
    dialoge.antworten = {Antwort::Ja};
    beurteile();
    EXPECT_EQ(zeile(u"1"_s).ERGEBNIS + zeile(u"2"_s).ERGEBNIS, u"NeinJa"_s);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 0), u"001"_s) << "stored anew, still selected";
}

TEST_F(Neubeurteilungstest, RowsStayChosen_howeverMany) {
    constexpr int Viele = 203; // beyond those whose numbers are kept with every selection
    for (int i = 1; i <= Viele; ++i) {
        lege(QString::number(i), 3, true, {});
    }
    öffne();
    grid().selectAll();
    gehe(2, 0);
    for (int i = 1; i < Viele - 1; ++i) {
        QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    }
    ASSERT_EQ(grid().selectionModel()->selectedRows().size(), Viele - 2);
    dialoge.antworten = {Antwort::Ja};
    beurteile();
    EXPECT_EQ(gezeigteWorte().count(u"Nein"_s), Viele - 2);
    EXPECT_EQ(grid().selectionModel()->selectedRows().size(), Viele - 2);
}

TEST_F(Neubeurteilungstest, EscapeAndChangesMeanwhile_leaveRowsAsTheyAre) {
    for (int i = 1; i <= 30; ++i) {
        lege(QString::number(i), 3, true, {});
    }
    öffne();
    // Stopped while looking: nothing is asked.
    QTimer::singleShot(0, db.get(), [this] {
        for (auto* fenster : db->findChildren<QProgressDialog*>()) {
            fenster->cancel();
        }
    });
    beurteileAlle();
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    // Another program is quicker while the list is read.
    dialoge.antworten = {Antwort::Ja};
    dialoge.beiFrage = [this] { fremd(u"UPDATE Ergebnisse SET ERGEBNIS='Nein' WHERE U_NR='5'"_s); };
    beurteileAlle();
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Gespeicherte Urteile: 29 von 30."));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("5: Sie ist inzwischen"));
}

} // namespace
} // namespace tarvel
