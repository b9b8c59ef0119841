#include "evaluation/standarddatei.h"
#include "print/seitenprobe.h"
#include "support/testordner.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace {

/// A share as it stands in a sentence: never broken before its sign.
QString ungetrennt(QString text) {
    return text.replace(u" %"_s, u"\u00a0%"_s);
}

QStringList fettes(const Protokolldaten& daten, int nummer = 1) {
    QStringList liste;
    for (const Protokolltext& t : protokollseite(daten, Briefkopfgrafik(), nummer).texte) {
        if (t.fett) {
            liste << t.text;
        }
    }
    return liste;
}

} // namespace

TEST_F(ProtokollTest, firstPage_holdsWhatABreederAsksFor) {
    miss25();
    merkmale(25, 5);
    EXPECT_THAT(zeilen(daten()),
                IsSupersetOf({u"Merkmalsuntersuchung Nr. 001AB2026"_s, u"06-012-007-2024"_s,
                              u"Huber"_s, u"Steiner"_s, u"Lindenvolk"_s, u"Hochtal"_s, u"Carnica"_s,
                              u"25 Arbeiterinnen wurden untersucht"_s, u"Mittelwert CI"_s,
                              u"80 %"_s, u"Datum des Ausdrucks"_s, u"O80 E20  ·  k100  ·  F100"_s,
                              u"5. März 2026"_s, u"Unterschrift"_s, u"Seite 1 von 2"_s,
                              u"Entspricht den Merkmalen der Rasse Carnica"_s}));
    EXPECT_EQ(zeilen(daten()).count(u"n = 25"_s),
              1); // of the marks; that of the wings stands above
    EXPECT_THAT(zeilen(daten(), 2), IsSupersetOf({u"Hantelindex und DV"_s, u"1,052 ± 0,000"_s,
                                                  u"+0,8 ± 0,0"_s, u"100 %"_s, u"Seite 2"_s}));
}

TEST_F(ProtokollTest, wingsOutsideTheTrustArea_areCounted) {
    miss25();
    ändere([](Messreihe& reihe) {
        for (qint16 nummer = 26; nummer <= 30; ++nummer) {
            reihe.trageEin(nummer, {.CI = 2.5F, .HI = 0.8F, .DV = -2.F, .fehler = {}}, {}, {});
        }
    });
    EXPECT_THAT(zeilen(daten(), 2), IsSupersetOf({u"83 %"_s, u"n = 25"_s, u"17 %"_s, u"n = 5"_s}));
}

TEST_F(ProtokollTest, discoidalShiftOfZero_hasItsSignAsInTheTable) {
    for (const float DV : {0.5F, -0.5F}) {
        const Indizes indizes{.CI = 2.5F, .HI = 1.0F, .DV = DV, .fehler = {}};
        ändere([&](Messreihe& reihe) { reihe.trageEin(reihe.nächsteNummer(), indizes, {}, {}); });
    }
    EXPECT_THAT(zeilen(daten(), 2), IsSupersetOf({u"+0,0 ± 0,7"_s}));
}

TEST_F(ProtokollTest, wingsLeftOut_areNamedAndCountNowhere) {
    miss25();
    const Protokolldaten ohne = daten();
    for (const qint16 nummer : {qint16{26}, qint16{27}}) {
        const Indizes fremd{.CI = 1.1F, .HI = 1.3F, .DV = -5, .fehler = {}};
        ändere([&](Messreihe& reihe) { reihe.trageEin(nummer, fremd, {}, {}); });
    }
    EXPECT_NE(zeilen(daten()), zeilen(ohne));
    const auto lassAus = [this](int nummer) {
        ändere([nummer](Messreihe& reihe) { reihe.lassAus(nummer, true); });
    };
    lassAus(26);
    lassAus(27);
    for (const int seite : {1, 2}) {
        QStringList gesagt = zeilen(daten(), seite);
        EXPECT_EQ(gesagt.removeAll(u"2 Flügel ausgelassen: 026, 027"_s), 1);
        EXPECT_EQ(gesagt, zeilen(ohne, seite));
    }
    EXPECT_EQ(daten().kurven.CI.flügel.size(), 25U);
    EXPECT_EQ(daten().kurven.zweite.flügel.size(), ohne.kurven.zweite.flügel.size());
    EXPECT_EQ(daten().korrel.flügel.size(), 25U);
    for (int i = 1; i <= 24; ++i) { // as many as there can be still leave a page
        lassAus(i);
    }
    EXPECT_THAT(fehler(protokollseite(daten(), Briefkopfgrafik(), 1)), testing::IsEmpty());
}

TEST_F(ProtokollTest, wingsThatNobodyChecked_areToldWithTheVerdict) {
    miss25();
    Flügelmessung m;
    m.ungeprüft = true;
    m.punkte.setze(m.messart, 1, 1, 1, Punktherkunft::Vorgeschlagen);
    const Indizes indizes{.CI = 2.5F, .HI = 1.0F, .DV = 1.0F, .fehler = {}};
    ändere([&](Messreihe& reihe) {
        reihe.trageEin(26, indizes, m, {});
        m.ungeprüft = false;
        reihe.trageEin(27, indizes, m, {});
    });
    const QString satz = u"1 von 27 Flügeln vom Programm gemessen, von keinem Menschen geprüft"_s;
    EXPECT_TRUE(daten().grundlage.startsWith(satz + u". "_s));
    for (const int seite : {1, 2}) {
        EXPECT_THAT(zeilen(daten(), seite),
                    IsSupersetOf({satz + u"; 1 Flügel vorgeschlagen und geprüft"_s}));
        EXPECT_THAT(fehler(protokollseite(daten(), Briefkopfgrafik(), seite)), testing::IsEmpty());
    }
}

TEST_F(ProtokollTest, kind_decidesOnChartsAndPages) {
    miss25();
    struct Fall {
        Protokollart art;
        QString überschrift;
        ZweiteKurve zweite;
        bool zweiSeiten;
    };
    for (const Fall& f :
         {Fall{Protokollart::Cubitalindex, u"Cubitalindex"_s, ZweiteKurve::Keine, false},
          {Protokollart::CubitalindexUndKorrelation, u"Cubitalindex"_s, ZweiteKurve::Keine, true},
          {Protokollart::CubitalindexUndDV, u"Cubitalindex und Discoidalverschiebung"_s,
           ZweiteKurve::Discoidalverschiebung, false}}) {
        einstellungen.art = f.art;
        const Protokolldaten d = daten();
        EXPECT_EQ(d.kurven.art, f.zweite);
        EXPECT_THAT(zeilen(d), Contains(f.überschrift));
        const Protokollseite zweite = protokollseite(d, Briefkopfgrafik(), 2);
        EXPECT_EQ(zweite.diagramme.at(0).art,
                  f.zweiSeiten ? Protokolldiagramm::Korrel : Protokolldiagramm::Kurven);
        EXPECT_EQ(zeilen(d).contains(u"Seite 1 von 2"_s), f.zweiSeiten);
    }
}

TEST_F(ProtokollTest, bold_isExactlyWhatTheStandardForbids) {
    standard.arbeiterinnen.Klasse = {u"01-05"_s, u"06-10"_s, u"16-17"_s};
    standard.arbeiterinnen.max = {u"20%"_s, u"20%"_s};
    standard.arbeiterinnen.Panzer = {u"100%"_s, u"20%"_s, u"0%"_s, u"0%"_s};
    for (const int klasse : {3, 8, 8, 15, 16, 16, 17, 18, 20, 21}) {
        miss(klasse);
    }
    merkmale(10, 2); // 20 % E, which is just allowed
    const QString nein = u"Entspricht nicht den Merkmalen der Rasse Carnica"_s;
    // 10 % in the first range pass, 20 % in the second too; 2 wings in class 16 beside 1 and 1.
    EXPECT_THAT(fettes(daten()), ElementsAre(nein, u"Nebengipfel 16-17"_s));
    EXPECT_THAT(fettes(daten(), 2), ElementsAre(u"2"_s));

    miss(8);
    miss(18); // 3 of 12 are 25 %, and there is no peak beside class 18 any more
    merkmale(1, 1);
    EXPECT_THAT(
        fettes(daten()),
        ElementsAre(nein,
                    ungetrennt(u"E: 27 %, erlaubt 20 %  ·  Klassen 06-10: 25 %, erlaubt 20 %"_s),
                    u"27 %"_s));
    EXPECT_THAT(fettes(daten(), 2), ElementsAre(u"3 von 11"_s, u"25 %"_s));

    einstellungen.regeln.BewertungAktiv = false;
    EXPECT_THAT(fettes(daten()) + fettes(daten(), 2), IsEmpty());
    for (const QString& text : zeilen(daten()) + zeilen(daten(), 2)) {
        EXPECT_FALSE(text.contains(u'≤') || text.contains(u"Entspricht"_s) ||
                     text == u"Beurteilung"_s || text == u"Kriterien"_s ||
                     text.contains(u"Standards"_s))
            << qPrintable(text);
    }
}

TEST_F(ProtokollTest, verdict_standsFirstWithSignReasonsAndBasis) {
    miss25();
    const auto verdict = [this] {
        const Protokollseite seite = protokollseite(daten(), Briefkopfgrafik(), 1);
        EXPECT_EQ(seite.texte[1].text, u"Beurteilung"_s);
        QStringList gesagt;
        for (std::size_t i = 2; seite.texte[i].text != u"Angaben zur Königin"_s; ++i) {
            gesagt << seite.texte[i].text;
        }
        const double unten = seite.texte[2].rahmen.bottom();
        const auto striche =
            std::count_if(seite.linien.begin(), seite.linien.end(), [&](const Protokolllinie& l) {
                return l.linie.y2() < unten && l.breite > 0.5;
            });
        return std::pair(gesagt, striche);
    };
    const QString basis = u"25 von 50 Flügeln, Körpermerkmale fehlen: vorläufig"_s;
    EXPECT_EQ(verdict().first,
              (QStringList{u"Entspricht den Merkmalen der Rasse Carnica"_s, basis}));
    EXPECT_EQ(verdict().second, 2); // a tick
    for (int i = 0; i < 5; ++i) {
        miss(3);
    }
    standard.arbeiterinnen.Klasse[0] = u"01-05"_s;
    standard.arbeiterinnen.max[0] = u"5%"_s;
    const QStringList nein = verdict().first;
    EXPECT_EQ(nein.front(), u"Entspricht nicht den Merkmalen der Rasse Carnica"_s);
    EXPECT_TRUE(nein.at(1).startsWith(ungetrennt(u"Klassen 01-05: 17 %, erlaubt 5 %"_s)));
}

TEST_F(ProtokollTest, raceOutsideTheList_isNotJudgedAndHasNoLimitsAnywhere) {
    miss25();
    Kolonieangaben a = untersuchung.angaben();
    a.Rassenname = u"Anatolica"_s;
    untersuchung.setzeAngaben(a);
    standard.arbeiterinnen.mittel = {1, {25}, 0};
    for (const bool an : {true, false}) {
        einstellungen.regeln.BewertungAktiv = an;
        const Protokolldaten d = daten();
        EXPECT_EQ(
            d.urteil,
            an ? u"Nicht beurteilt: Für die Rasse 'Anatolica' ist kein Standard eingerichtet."_s
               : QString());
        EXPECT_FALSE(d.entspricht.has_value());
        EXPECT_FALSE(d.kurven.beurteilt || d.kurven.rassemittel || d.kurven.CI.grenzlinie ||
                     d.korrel.begrenzt);
        EXPECT_TRUE(d.kurven.bereiche.empty() && d.kriterien.empty());
        const QString alles = (zeilen(d) + zeilen(d, 2)).join(u'\n');
        for (const QString& wort :
             {u"Carnica"_s, u"≤"_s, u"≥"_s, u"Vertrauensbereich"_s, u"Kruber"_s}) {
            EXPECT_FALSE(alles.contains(wort)) << qPrintable(wort);
        }
        EXPECT_TRUE(alles.contains(u"Anatolica"_s));
    }
}

TEST_F(ProtokollTest, marksThatCannotBeRead_leaveNothingThatLooksJudged) {
    miss25();
    Untersuchungszusatz zusatz;
    zusatz.merkmaleUnlesbar = true;
    untersuchung.setzeZusatz(zusatz);
    const Protokolldaten d = daten();
    EXPECT_FALSE(d.kurven.beurteilt);
    EXPECT_THAT(d.kriterien, IsEmpty());
    EXPECT_EQ(zeilen(d).count(u"nicht lesbar"_s), 4); // three groups and the formula
    EXPECT_TRUE(zeilen(d).filter(u"Beurteilt nach"_s).isEmpty());
    EXPECT_THAT(d.fußnoten[0], Contains(u"Grenzlinien nach Kruber."_s)); // they are drawn
}

TEST_F(ProtokollTest, defaultsOfTheProgram_areNoStandardOfAnotherRace) {
    miss25();
    const auto gesagt = [this] {
        return daten().fußnoten[0].filter(u"kein Standard eingerichtet"_s).size();
    };
    EXPECT_EQ(gesagt(), 0);
    Kolonieangaben a = untersuchung.angaben();
    a.Rasse = 1;
    untersuchung.setzeAngaben(a);
    EXPECT_EQ(gesagt(), 1);
    standard.arbeiterinnen.Klasse[0] = u"01-05"_s;
    EXPECT_EQ(gesagt(), 0);
}

TEST_F(ProtokollTest, criteria_sayMarginBeesIntervalAndWhatMakesThemFirm) {
    standard.arbeiterinnen.mittel = {1, {25}, 0};
    standard.arbeiterinnen.Klasse = {u"01-05"_s, u"06-10"_s, u"16-17"_s};
    standard.arbeiterinnen.max = {u"20%"_s, u"100%"_s};
    miss25();
    merkmale(25, 9);
    const auto zeile = [this](const QString& name) {
        for (const Kriterienzeile& z : daten().kriterien) {
            if (z.spalten[0] == name) {
                return QStringList(z.spalten.begin() + 1, z.spalten.end()).join(u'|');
            }
        }
        return QString();
    };
    EXPECT_EQ(zeile(u"Kriterium"_s), u"gemessen|erlaubt|Abstand|Bienen|95-%-Bereich|Ergebnis"_s);
    // Wilson of 9 among 25 is 20.2 to 55.5.
    EXPECT_TRUE(zeile(u"Panzerzeichen E"_s)
                    .startsWith(u"9 von 25|≤ 30 %|−6|25|20–55 %|offen, sicher ab "_s))
        << qPrintable(zeile(u"Panzerzeichen E"_s));
    EXPECT_EQ(zeile(u"Klasse 01-05"_s), u"0 %|≤ 20 %|+20|0 von 25|0–13 %|sicher"_s);
    EXPECT_EQ(zeile(u"Klasse 06-10"_s), u"0 %|≤ 100 %|+100|0 von 25|0–13 %|immer erfüllt"_s);
    EXPECT_TRUE(zeile(u"Mittelwert CI"_s).contains(u"|≥ 2,5|+"_s));
    EXPECT_TRUE(zeile(u"Nebengipfel 16-17"_s).endsWith(u"|–|–"_s));
    EXPECT_EQ(zeile(u"Mittelwert HI"_s), u"1,052|–|–|25|1,052–1,052|–"_s);
    EXPECT_THAT(zeilen(daten(), 2), Contains(u"9 von 25"_s));
    // A page alone has no room for them; the appendix has.
    einstellungen.art = Protokollart::CubitalindexUndDV;
    EXPECT_EQ(seitenzahl(daten()), 1);
    einstellungen.Anhang = true;
    EXPECT_THAT(zeilen(daten(), 2), Contains(u"Klasse 06-10"_s));
    einstellungen.art = Protokollart::CubitalindexUndKorrelation;
    EXPECT_THAT(zeilen(daten(), 3), Not(Contains(u"Klasse 06-10"_s)));
    untersuchung.setzeMerkmale({});
    EXPECT_EQ(zeile(u"Filzbinden"_s), u"nicht gemessen|–|–|–|–|–"_s);
}

TEST_F(ProtokollTest, footnotes_sayHowValuesCameAbout) {
    miss25();
    const auto noten = [this](int seite) {
        return daten().fußnoten.at(static_cast<std::size_t>(seite - 1)).join(u' ');
    };
    for (const auto& [wort, erste, zweite] : {std::tuple{u"5–6 : Strecke 6–7"_s, true, false},
                                              {u"2,5 : (1,5 + h)"_s, false, true},
                                              {u"n − 1"_s, true, true},
                                              {u"jenseits des Standards"_s, true, true},
                                              {u"Standard 'Carnica'"_s, true, true},
                                              {u"Scan: 1200 dpi"_s, true, true},
                                              {u"Untersucht von: Imkerverband"_s, true, true},
                                              {u"Tarvel " TARVEL_VERSION ""_s, true, true}}) {
        EXPECT_EQ(noten(1).contains(wort), erste) << qPrintable(wort + noten(1));
        EXPECT_EQ(noten(2).contains(wort), zweite) << qPrintable(wort + noten(2));
    }
    standard.kennung = {u"Landesverband Nord"_s, u"2"_s, u"2026-03-01"_s, standardmarke(standard)};
    EXPECT_TRUE(noten(1).contains(u"nach dem Standard 'Landesverband Nord, Fassung 2'."_s));
    standard.arbeiterinnen.Panzer[1] = u"1%"_s;
    EXPECT_TRUE(noten(2).contains(u"Fassung 2, danach geändert'."_s));
    einstellungen.art = Protokollart::CubitalindexUndDV;
    EXPECT_TRUE(noten(1).contains(u"2,5 : (1,5 + h)"_s));
    einstellungen.briefkopf.Name.clear();
    EXPECT_FALSE(noten(1).contains(u"Untersucht"_s));
    einstellungen.datum = Datumsform::ÄnderungLang;
    EXPECT_EQ(daten().datumswort, u"Datum der Untersuchung"_s);
}

TEST_F(ProtokollTest, whoMeasuredAndWhoPrints_areNotMixedUp) {
    miss25();
    const auto sagt = [this](const QString& wort) {
        return daten().fußnoten[0].join(u' ').contains(wort);
    };
    const auto speichere = [this](const Untersuchungszusatz& zusatz) {
        untersuchung.lade(untersuchung.angaben(), untersuchung.reihe(), {}, {2026, 2, 1}, zusatz);
    };
    const QString hier = u": Imkerverband"_s;
    EXPECT_TRUE(sagt(u"Untersucht von"_s + hier) && !sagt(u"Ausgestellt"_s));
    speichere({}); // by a version that did not note it
    EXPECT_TRUE(!sagt(u"Untersucht von"_s) && sagt(u"Ausgestellt von"_s + hier));
    speichere({.Grenzen = {}, .Herkunft = {}, .Untersucher = u"Maier"_s});
    EXPECT_TRUE(sagt(u"Untersucht von: Maier"_s) && sagt(u"Ausgestellt von"_s + hier));
    speichere({.Grenzen = {}, .Herkunft = u"Volk 5.Bee"_s});
    EXPECT_TRUE(!sagt(u"Untersucht von"_s) && sagt(u"Übernommen aus Volk 5.Bee. "_s));
    EXPECT_TRUE(!sagt(u"Untersuchung vom"_s) && sagt(u"Übernommen am 1. Februar 2026"_s));
    einstellungen.datum = Datumsform::ÄnderungKurz;
    EXPECT_EQ(daten().datumswort, u"Datum der Übernahme"_s);
}

TEST_F(ProtokollTest, footnotesAndWords_areNeverCutWithOrdinaryNames) {
    standard.kennung = {u"Landesverband der Bienenzüchter 2026"_s, u"3.1"_s, {}, {}};
    einstellungen.briefkopf.Name = u"Landesverband der Bienenzüchter, Untersuchungsstelle Graz"_s;
    miss25();
    for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
        texte.SpracheEinstellen(sprache);
        for (const int seite : {1, 2}) {
            EXPECT_TRUE(zeilen(daten(), seite).filter(u"…"_s).isEmpty()) << sprache << seite;
            EXPECT_FALSE(zeilen(daten(), seite).filter(u"Tarvel"_s).isEmpty());
        }
    }
}

TEST_F(ProtokollTest, sharesOfTheMarks_areNeverCut_andKeepTheirLimits) {
    miss25();
    merkmale(25, 0);
    for (const QString& erlaubt : {u"100%"_s, u"12,5%"_s}) {
        standard.arbeiterinnen.Panzer = {erlaubt, erlaubt, erlaubt, erlaubt};
        for (const QString& schrift : {u"DejaVu Sans"_s, u"DejaVu Serif"_s, u"Nimbus Sans"_s}) {
            einstellungen.SchriftArt = schrift;
            for (const bool kursiv : {false, true}) {
                einstellungen.SchriftKursiv = kursiv;
                const Protokollseite seite = protokollseite(daten(), Briefkopfgrafik(), 1);
                const QStringList texte = zeilen(seite);
                EXPECT_EQ(texte.filter(u"…"_s), QStringList()) << qPrintable(schrift + erlaubt);
                EXPECT_EQ(texte.count(u"100 %"_s), 3) << qPrintable(schrift + erlaubt);
                EXPECT_EQ(texte.filter(u"≤"_s).size(), 10);
                EXPECT_THAT(fehler(seite), IsEmpty());
            }
        }
    }
}

TEST_F(ProtokollTest, storedVerdictThatIsAnotherToday_isSaidOnThePaper) {
    miss25();
    EXPECT_TRUE(zeilen(daten()).filter(u"Gespeichert"_s).isEmpty());
    Untersuchungszusatz zusatz = untersuchung.zusatz();
    zusatz.Urteil = *daten().entspricht ? Ablageurteil::Nein : Ablageurteil::Ja;
    untersuchung.setzeZusatz(zusatz);
    EXPECT_EQ(zeilen(daten()).filter(u"Gespeichert ist das Urteil"_s).size(), 1);
}

TEST_F(ProtokollTest, whatWasNotMeasured_isSaid) {
    miss(18, false);
    EXPECT_EQ(zeilen(daten()).count(u"nicht gemessen"_s), 4);    // three groups and the formula
    EXPECT_EQ(zeilen(daten(), 2).count(u"nicht gemessen"_s), 5); // both means, three groups

    einstellungen.regeln.OhneHaarlänge = true;
    merkmale(4, 1, true);
    EXPECT_EQ(zeilen(daten()).count(u"nicht gemessen"_s), 1); // the hair
    EXPECT_THAT(zeilen(daten()), Contains(u"O75 E25  ·  F100"_s));
    EXPECT_THAT(zeilen(daten()), Contains(u"n = 4"_s));

    // Without wings, the bees whose marks were taken were examined.
    untersuchung.setzeReihe({});
    EXPECT_THAT(zeilen(daten()), Contains(u"4 Arbeiterinnen wurden untersucht"_s));
}

TEST_F(ProtokollTest, drones_haveTheirOwnMarksInTheOrderOfTheReport) {
    setzeTiere(Geschlecht::Drohnen);
    miss(12);
    merkmale(4, 2);
    const Protokolldaten d = daten();
    ASSERT_EQ(d.merkmale.size(), 2U);
    QStringList codes;
    for (const Protokollwert& w : d.merkmale[1].werte) {
        codes << w.name;
    }
    EXPECT_THAT(codes, ElementsAre(u"gr"_s, u"br"_s, u"ge"_s, u"sch"_s));
    EXPECT_THAT(zeilen(d), IsSupersetOf({u"Haarfarbe"_s, u"1 Drohnen wurden untersucht"_s}));
    EXPECT_THAT(zeilen(d), Not(Contains(u"Filzbinden"_s)));
}

TEST_F(ProtokollTest, ownWords_standForAllThirtySixTexts) {
    Protokolltexte eigene;
    for (std::size_t i = 0; i < eigene.felder.size(); ++i) {
        eigene.felder[i] = u"<%1>"_s.arg(i);
    }
    QString alles;
    const auto sammle = [&] {
        for (const Protokollart art : alleArten) {
            einstellungen.art = art;
            const Protokolldaten d = daten(eigene);
            alles += (zeilen(d) + zeilen(d, 2)).join(u' ');
            for (const Diagrammworte& w : {d.kurven.worte, d.korrel.worte}) {
                alles += w.hantelindex + w.korrelation + w.bienenJeKlasse;
            }
        }
    };
    miss(16);
    sammle();
    untersuchung.setzeReihe({});
    setzeTiere(Geschlecht::Drohnen);
    miss(20);
    sammle();
    for (std::size_t i = 0; i < eigene.felder.size(); ++i) {
        EXPECT_TRUE(alles.contains(eigene.felder[i])) << i;
    }
}

TEST(Protokolldatum, standsInTheChosenForm) {
    const QDate heute(2026, 3, 5);
    const QDate damals(2025, 12, 31);
    using D = Datumsform;
    const auto text = [&](D form, Sprache sprache) {
        return datumstext(form, heute, damals, sprache);
    };
    EXPECT_EQ(text(D::HeuteLang, Sprache::Deutsch), u"5. März 2026"_s);
    EXPECT_EQ(text(D::HeuteKurz, Sprache::Deutsch), u"05.03.2026"_s);
    EXPECT_EQ(text(D::ÄnderungLang, Sprache::Englisch), u"31 December 2025"_s);
    EXPECT_EQ(text(D::ÄnderungKurz, Sprache::Französisch), u"31/12/2025"_s);
    EXPECT_EQ(datumstext(D::ÄnderungLang, heute, {}, Sprache::Französisch), u"5 mars 2026"_s);
}

TEST(Protokolleinstellungen, unknownPositions_giveTheDefaults) {
    const Testordner ordner;
    const QString ini = ordner.filePath(u"Index.ini"_s);
    EXPECT_EQ(ladeProtokolleinstellungen(Einstellungen(ini)).art,
              Protokollart::CubitalindexUndKorrelation);
    lege(ini, "[Protokoll]\r\nArt=7\r\nDatum=-1\r\nBeurteilung=0\r\nSchriftKursiv=1\r\n");
    const Protokolleinstellungen p = ladeProtokolleinstellungen(Einstellungen(ini));
    EXPECT_EQ(p.art, Protokollart::CubitalindexUndKorrelation);
    EXPECT_EQ(p.datum, Datumsform::HeuteLang);
    EXPECT_FALSE(p.regeln.BewertungAktiv);
    EXPECT_TRUE(p.SchriftKursiv);
}

TEST(Zuchtbuchnummer, leavesGapsForWhatIsMissing) {
    Kolonieangaben a;
    EXPECT_EQ(zuchtbuchnummer(a), QString());
    a.LV = u"06"_s;
    a.Jahr = u"2024"_s;
    EXPECT_EQ(zuchtbuchnummer(a), u"06-___-___-2024"_s);
}
