#include "results/arbeitsplatz.h"

#include "support/testdialoge.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

struct Arbeitsplatztest : testing::Test {
    QTemporaryDir ordner;
    Einstellungen einstellungen{ordner.filePath(u"Index.ini"_s)};
    Texte texte{ordner.path()};
    TestDialoge dialoge;
    TestClock uhr;
    Benutzerspeicher speicher{ordner.filePath(u"benutzer.ini"_s)};
    Arbeitsplatz platz = neuer();
    std::vector<Änderung> meldungen;

    /// What a start finds.
    Arbeitsplatz neuer() {
        return {{.einstellungen = einstellungen,
                 .texte = texte,
                 .dialoge = dialoge,
                 .uhr = uhr,
                 .format = {},
                 .dokumente = ordner.path()},
                einstellungen,
                speicher,
                ordner.filePath(u"Sitzung.journal"_s)};
    }
    Arbeitsplatz::Beobachtung beobachtung =
        platz.beobachte([this](const Änderung& ä) { meldungen.push_back(ä); });

    void SetUp() override {
        texte.SpracheEinstellen(0);
        platz.richteAblageEin();
        platz.richteEin();
        platz.beginneNeue();
        platz.beginneSitzung();
        platz.setzeBild(u"/a.png"_s);
        meldungen.clear();
    }
    void klick(float x, float y) {
        platz.Bild_MouseDown(Maustaste::Links, umschaltung::Keine, x, y);
    }
    void klicke(int punkte, float dx = 0) {
        const std::pair<float, float> alle[] = {{400, 50},  {92, 75},   {360, 56},  {288, 62},
                                                {286, 116}, {237, 147}, {216, 143}, {292, 201}};
        for (int i = 0; i < punkte; ++i) {
            klick(alle[i].first + dx, alle[i].second);
        }
    }
    void übernimm() { platz.Bild_MouseDown(Maustaste::Rechts, umschaltung::Keine, 0, 0); }
    void miss(float dx = 0) {
        klicke(8, dx);
        übernimm();
    }
    void tippe(QString Kolonieangaben::*feld, const QString& text) {
        Kolonieangaben angaben = platz.untersuchung().angaben();
        for (const QChar zeichen : text) {
            angaben.*feld += zeichen;
            platz.setzeAngaben(angaben);
        }
    }
    void merke(int panzer) {
        Merkmale merkmale = platz.untersuchung().merkmale();
        ASSERT_TRUE(MerkmalÜbernehmen(merkmale, {panzer, 0, 0}, false));
        platz.setzeMerkmale(merkmale);
    }
    QString name(const Schritt* schritt) const {
        return schritt == nullptr ? QString() : schrittname(*schritt, texte);
    }
    QString rückgängig() const { return name(platz.rückgängig()); }

    /// Everything that undo brings back.
    struct Bild {
        Kolonieangaben angaben;
        Messreihe reihe;
        Merkmale merkmale;
        Messstand messung;
        bool geändert;

        bool operator==(const Bild&) const = default;
    };
    Bild bild() const {
        const Untersuchung& u = platz.untersuchung();
        return {u.angaben(), u.reihe(), u.merkmale(), platz.messung().stand(), u.geändert()};
    }
};

} // namespace

TEST_F(Arbeitsplatztest, everyCommand_endsInOneNoticeThatSaysWhatChanged) {
    miss();
    miss(5);
    merke(0);
    struct Fall {
        const char* name;
        std::function<void()> tun;
        bool Änderung::*teil;
    };
    const Fall fälle[] = {
        {"click", [&] { klick(1, 2); }, &Änderung::Punkte},
        {"key", [&] { platz.Bild_KeyDown(taste::Rechts, 0); }, &Änderung::Punkte},
        {"choice of a point", [&] { platz.opt_Fein_Click(3); }, &Änderung::Punkte},
        {"clearing", [&] { platz.NeuerFlügel(); }, &Änderung::Punkte},
        {"taking over",
         [&] {
             klicke(8, 9);
             meldungen.clear();
             übernimm();
         },
         &Änderung::Urteil},
        {"deleting", [&] { platz.löscheFlügel(3); }, &Änderung::Reihe},
        {"undo", [&] { platz.macheRückgängig(); }, &Änderung::Reihe},
        {"redo", [&] { platz.stelleWiederHer(); }, &Änderung::Urteil},
        {"repeating", [&] { platz.wiederhole(1); }, &Änderung::Aufnahme},
        {"giving up", [&] { platz.gibWiederholungAuf(); }, &Änderung::Aufnahme},
        {"zoom", [&] { platz.setzeZoom(3); }, &Änderung::Aufnahme},
        {"picture", [&] { platz.setzeBild(u"/b.png"_s); }, &Änderung::Aufnahme},
        {"resolution", [&] { platz.setzeAuflösung(2400); }, &Änderung::Aufnahme},
        {"marks", [&] { merke(1); }, &Änderung::Merkmale},
        {"caste", [&] { platz.wähleTiere(Geschlecht::Drohnen); }, &Änderung::Urteil},
        {"race", [&] { platz.wähleRasse(2); }, &Änderung::Urteil},
        {"typing",
         [&] {
             Kolonieangaben angaben = platz.untersuchung().angaben();
             angaben.UNr = u"7"_s;
             platz.setzeAngaben(angaben);
         },
         &Änderung::Angaben},
        {"settings", [&] { platz.übernimmEinstellungen(); }, &Änderung::Urteil},
        {"saving", [&] { platz.speichere(Speicheranlass::Wunsch); }, &Änderung::Ablage},
        {"new", [&] { platz.beginneNeue(); }, &Änderung::Untersuchung},
        {"loading", [&] { platz.lade(u"7"_s); }, &Änderung::Urteil},
    };
    for (const Fall& fall : fälle) {
        meldungen.clear();
        fall.tun();
        ASSERT_THAT(meldungen, SizeIs(1))
            << fall.name << qPrintable(dialoge.meldungen.join(u" / "_s));
        EXPECT_TRUE(meldungen.front().*fall.teil) << fall.name;
    }
    EXPECT_THAT(platz.reihe().nummern(), ElementsAre(1, 2)); // the row that was loaded
    meldungen.clear();
    platz.Bild_MouseMove(Maustaste::Links, 0, 5, 5);
    tippe(&Kolonieangaben::Volk, {});
    EXPECT_THAT(meldungen, SizeIs(0)); // nothing changed
}

TEST_F(Arbeitsplatztest, undoAndRedo_walkThroughEveryStateOfASession) {
    const std::function<void()> schritte[] = {
        [&] { klick(1, 2); },
        [&] { klick(3, 4); },
        [&] { platz.Bild_KeyDown(taste::Eins + 4, 0); },
        [&] { platz.Bild_KeyDown(taste::Ab, 0); },
        [&] { platz.NeuerFlügel(); },
        [&] { tippe(&Kolonieangaben::Volk, u"9"_s); },
        [&] { merke(2); },
        [&] { platz.setzeAuflösung(2400); },
        [&] { klick(5, 6); },
        [&] { platz.setzeZoom(2); }, // discards the point
        [&] { platz.setzeMessart(Messart::NurCubitalindex); },
        [&] { klick(286, 116); },
        [&] { klick(237, 147); },
        [&] { klick(216, 143); },
        [&] { übernimm(); },
        [&] { platz.wiederhole(1); },
        [&] { platz.zieh(6, 230, 140, true); },
        [&] { übernimm(); },
        [&] { platz.wiederhole(1); },
        [&] { platz.gibWiederholungAuf(); },
        [&] { platz.wähleRasse(1); },
        [&] { platz.wähleTiere(Geschlecht::Drohnen); }, // clears the marks
        [&] { platz.löscheLetzte(); },
        [&] { klick(7, 7); },
        [&] { platz.setzeBild(u"/b.png"_s); }, // discards the point
    };
    std::vector<Bild> stände{bild()};
    for (const auto& schritt : schritte) {
        schritt();
        stände.push_back(bild());
    }
    const std::size_t zahl = std::size(schritte);
    for (int runde = 0; runde < 2; ++runde) {
        for (std::size_t i = zahl; i > 0; --i) {
            EXPECT_TRUE(bild() == stände[i]) << i;
            ASSERT_TRUE(platz.macheRückgängig()) << i;
        }
        EXPECT_FALSE(platz.macheRückgängig());
        EXPECT_TRUE(bild() == stände[0]);
        for (std::size_t i = 1; i <= zahl; ++i) {
            ASSERT_TRUE(platz.stelleWiederHer()) << i;
        }
        EXPECT_FALSE(platz.stelleWiederHer());
    }
    platz.macheRückgängig();
    klick(8, 8);
    EXPECT_EQ(platz.wiederherstellbar(), nullptr); // another way was taken
    platz.beginneNeue();
    EXPECT_EQ(platz.rückgängig(), nullptr);
}

TEST_F(Arbeitsplatztest, undo_namesItsStep) {
    const std::pair<std::function<void()>, QString> schritte[] = {
        {[&] { klicke(5); }, u"Punkt 5"_s},
        {[&] { platz.NeuerFlügel(); }, u"Messpunkte löschen"_s},
        {[&] { miss(); }, u"Flügel 001 übernehmen"_s},
        {[&] { platz.wiederhole(1); }, u"Flügel 001 wiederholen"_s},
        {[&] { platz.gibWiederholungAuf(); }, u"Wiederholung von Flügel 001 aufgeben"_s},
        {[&] { platz.lassAus({1}, true); }, u"Flügel 001 auslassen"_s},
        {[&] {
             platz.lassAus({1, 9}, false);
         },
         u"Mehrere Flügel wieder aufnehmen"_s},
        {[&] { platz.löscheFlügel(1); }, u"Flügel 001 löschen"_s},
        {[&] { tippe(&Kolonieangaben::Volk, u"9"_s); }, texte(Text::Volk)},
        {[&] { platz.wähleRasse(1); }, texte(Text::Rasse)},
        {[&] { merke(1); }, texte(Text::KörperMerkmale)},
    };
    for (const auto& [tun, erwartet] : schritte) {
        tun();
        EXPECT_EQ(rückgängig(), erwartet);
    }
}

TEST_F(Arbeitsplatztest, typing_isOneStepUntilTheFieldIsLeft) {
    tippe(&Kolonieangaben::Volk, u"Volk 12"_s);
    platz.beendeEingabe();
    tippe(&Kolonieangaben::Volk, u"b"_s);
    tippe(&Kolonieangaben::Name, u"Huber"_s);
    const auto angaben = [&] { return platz.untersuchung().angaben(); };
    platz.macheRückgängig();
    EXPECT_EQ(angaben().Name, QString());
    platz.macheRückgängig();
    EXPECT_EQ(angaben().Volk, u"Volk 12"_s);
    platz.macheRückgängig();
    EXPECT_EQ(angaben().Volk, QString());
    EXPECT_FALSE(platz.untersuchung().geändert());

    Kolonieangaben ohne = angaben();
    tippe(&Kolonieangaben::Name, u"x"_s);
    platz.setzeAngaben(ohne);
    platz.beendeEingabe();
    EXPECT_EQ(platz.rückgängig(), nullptr); // typed and taken away again
}

TEST_F(Arbeitsplatztest, drag_isOneStep_andBackspaceTakesBackOnlyPoints) {
    klicke(2);
    platz.zieh(1, 50, 50, true);
    platz.zieh(1, 60, 60, false);
    platz.zieh(1, 70, 70, false);
    EXPECT_TRUE(platz.Bild_KeyDown(taste::Rücktaste, 0));
    EXPECT_EQ(platz.messung().punkte().PunktX[1], 400.F);
    platz.NeuerFlügel();
    EXPECT_TRUE(platz.Bild_KeyDown(taste::Rücktaste, 0)); // an unwanted reset is no lost work
    EXPECT_TRUE(platz.messung().punkte().gemessen(2));
    platz.NeuerFlügel();
    miss();
    EXPECT_FALSE(platz.Bild_KeyDown(taste::Rücktaste, 0)); // taking over is no change of points
    EXPECT_FALSE(platz.reihe().leer());
}

TEST_F(Arbeitsplatztest, undoneAndRedone_countAsChangedByWhatIsStored) {
    platz.setzeAngaben([&] {
        Kolonieangaben a = platz.untersuchung().angaben();
        a.UNr = u"7"_s;
        a.Name = u"Huber"_s;
        return a;
    }());
    miss();
    miss(5);
    ASSERT_TRUE(platz.speichere(Speicheranlass::Wunsch));
    const auto geändert = [&] { return platz.untersuchung().geändert(); };
    EXPECT_FALSE(geändert());
    platz.löscheLetzte();
    EXPECT_TRUE(geändert());
    platz.macheRückgängig();
    EXPECT_FALSE(geändert()); // as it was stored
    platz.macheRückgängig();  // the wing that was taken over before saving
    EXPECT_TRUE(geändert());
    EXPECT_THAT(platz.reihe().nummern(), ElementsAre(1));
    platz.stelleWiederHer();
    EXPECT_FALSE(geändert());
}

TEST_F(Arbeitsplatztest, undo_bringsPointsBackOnlyWithTheirPictureAndZoom) {
    platz.setzeZoom(2);
    miss();
    platz.setzeBild(u"/b.png"_s);
    platz.setzeZoom(4);
    tippe(&Kolonieangaben::Volk, u"9"_s);
    platz.setzeBild(u"/c.png"_s);

    platz.macheRückgängig(); // a text leaves the picture alone
    EXPECT_EQ(platz.messung().bilddatei(), u"/c.png"_s);
    platz.macheRückgängig();
    EXPECT_EQ(platz.messung().bilddatei(), u"/a.png"_s);
    EXPECT_EQ(platz.messung().aufnahme().Zoomfaktor, 2);
    EXPECT_EQ(platz.messung().punkte().PunktX[1], 400.F);
    EXPECT_TRUE(meldungen.back().hinweis == HinweisÜbernehmen);
    platz.stelleWiederHer();
    EXPECT_EQ(platz.messung().bilddatei(), u"/c.png"_s);
    EXPECT_FALSE(platz.messung().punkte().begonnen());
}

TEST_F(Arbeitsplatztest, deletingTheRepeatedWing_endsTheRepeat) {
    miss();
    miss(5);
    platz.wiederhole(2);
    platz.löscheFlügel(1);
    EXPECT_TRUE(platz.messung().wiederholt());
    platz.löscheFlügel(2);
    EXPECT_FALSE(platz.messung().wiederholt());
    EXPECT_FALSE(platz.messung().punkte().begonnen());
    platz.macheRückgängig();
    EXPECT_EQ(platz.messung().nummer(), 2);
    EXPECT_TRUE(platz.messung().wiederholt());
}

TEST_F(Arbeitsplatztest, crash_goesOnWithTheRepeatedWingAndTheStoredRow) {
    tippe(&Kolonieangaben::Name, u"Huber"_s);
    platz.setzeZoom(2);
    miss();
    ASSERT_TRUE(platz.speichere(Speicheranlass::Wunsch));
    const QString nummer = platz.untersuchung().angaben().UNr;
    platz.setzeBild(u"/b.png"_s);
    platz.wiederhole(1);
    platz.zieh(1, 50, 50, true);
    tippe(&Kolonieangaben::UNr, u"x"_s); // not what the row has

    Arbeitsplatz danach = neuer();
    danach.richteAblageEin();
    danach.richteEin();
    danach.setzeFort(danach.liesSitzung().value());
    EXPECT_EQ(danach.untersuchung().angaben().UNr, nummer + u'x');
    EXPECT_EQ(danach.ablage().gespeicherteNummer(), nummer);
    EXPECT_TRUE(danach.messung().wiederholt());
    EXPECT_EQ(danach.messung().nummer(), 1);
    EXPECT_EQ(danach.messung().punkte(), platz.messung().punkte());
    danach.gibWiederholungAuf(); // goes on with the picture that is there
    EXPECT_EQ(danach.messung().bilddatei(), u"/a.png"_s);
    EXPECT_EQ(danach.messung().aufnahme().Zoomfaktor, 2);

    const QString andere = ordner.filePath(u"b.tdb"_s);
    ASSERT_TRUE(QFile::copy(platz.ablage().DatenbankPfad(), andere));
    ASSERT_TRUE(danach.DatenbankWählen(andere));
    danach.setzeFort(danach.liesSitzung().value());
    EXPECT_EQ(danach.ablage().gespeicherteNummer(), QString()) << "its row is in the other file";
}

TEST_F(Arbeitsplatztest, examinationFromAFile_keepsItsNumberOrHasTheNext) {
    Untersuchung gelesen;
    for (const auto& [hat, bekommt] : {std::pair{u""_s, u"0012025"_s}, {u"B7"_s, u"B7"_s}}) {
        Kolonieangaben angaben;
        angaben.UNr = hat;
        gelesen.setzeAngaben(angaben);
        platz.nimmEin(gelesen, {}, {});
        EXPECT_EQ(platz.untersuchung().angaben().UNr, bekommt);
    }
}

TEST_F(Arbeitsplatztest, otherResultsFile_hasNoRowOfTheOpenExaminationUntilItIsStored) {
    tippe(&Kolonieangaben::Name, u"Huber"_s);
    ASSERT_TRUE(platz.speichere(Speicheranlass::Wunsch));
    const QString andere = ordner.filePath(u"b.tdb"_s);
    ASSERT_TRUE(QFile::copy(platz.ablage().DatenbankPfad(), andere));
    ASSERT_TRUE(platz.DatenbankWählen(andere));
    miss();
    EXPECT_FALSE(platz.speichere(Speicheranlass::Wunsch)); // asks for the row of that number
    EXPECT_THAT(dialoge.fragen, SizeIs(1));
}

TEST_F(Arbeitsplatztest, choicesWhileRepeating_areOfTheWingAlone) {
    miss();
    platz.wiederhole(1);
    platz.setzeAuflösung(2400);
    platz.setzeMessart(Messart::Korrelation);
    EXPECT_EQ(platz.ablagestand().auflösung, 1200);
    platz.gibWiederholungAuf();
    EXPECT_EQ(platz.messung().aufnahme().dpi, 1200);
    EXPECT_FALSE(QFile::exists(einstellungen.IniPfad()));
    platz.setzeAuflösung(600);
    EXPECT_EQ(einstellungen.zahl(Einstellung::ScannMessung), 1);
    platz.macheRückgängig();
    EXPECT_EQ(einstellungen.zahl(Einstellung::ScannMessung), 2); // or the next start measures so
}

TEST_F(Arbeitsplatztest, commandOfAnObserver_isToldAfterThePresentNotice) {
    std::vector<QString> reihenfolge;
    const auto erster = platz.beobachte([&](const Änderung& ä) {
        reihenfolge.push_back(ä.Punkte ? u"Punkte"_s : u"Bild"_s);
        if (ä.Punkte) {
            platz.setzeAuflösung(2400);
        }
    });
    const auto zweiter = platz.beobachte(
        [&](const Änderung& ä) { reihenfolge.push_back(ä.Punkte ? u"Punkte"_s : u"Bild"_s); });
    platz.opt_Fein_Click(1);
    EXPECT_EQ(reihenfolge.size(), 4U);
    EXPECT_THAT(reihenfolge, ElementsAre(u"Punkte"_s, u"Punkte"_s, u"Bild"_s, u"Bild"_s));
}
