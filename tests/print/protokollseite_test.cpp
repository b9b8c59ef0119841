// How the pages of the report are laid out, whatever stands on them.

#include "print/protokollseite.h"

#include "print/seitenprobe.h"
#include "print/serie.h"
#include "support/testordner.h"

#include <QImage>
#include <QRegularExpression>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST_F(ProtokollTest, extremes_neverOverlap) {
    const QString lang =
        u"Maximiliane von und zu Donaudampfschifffahrtselektrizitäten"_s.repeated(3);
    for (const bool extrem : {false, true}) {
        for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
            for (const Geschlecht tiere : {Geschlecht::Arbeiterinnen, Geschlecht::Drohnen}) {
                Protokollprobe p;
                p.texte.SpracheEinstellen(sprache);
                p.setzeTiere(tiere);
                p.einstellungen.Anhang = true;
                for (int i = 0; i < (extrem ? 200 : 1); ++i) {
                    p.miss(10 + i % 12);
                }
                if (extrem) {
                    p.merkmale(200, 70);
                    Kolonieangaben a = p.untersuchung.angaben();
                    a.Name = a.Besitzer = a.Begattung = a.Volk = a.UNr = a.KNr = a.Rassenname =
                        lang;
                    p.untersuchung.setzeAngaben(a);
                    p.einstellungen.rassen[0] = lang;
                    p.einstellungen.briefkopf.TextOben = 90;
                    p.einstellungen.briefkopf.SchriftGröße = 72;
                    p.einstellungen.briefkopf.Name = lang;
                }
                for (const Protokollart art : alleArten) {
                    p.einstellungen.art = art;
                    const Protokolldaten daten = p.daten();
                    for (int seite = 1; seite <= seitenzahl(daten); ++seite) {
                        EXPECT_THAT(fehler(protokollseite(daten, Briefkopfgrafik(), seite)),
                                    IsEmpty())
                            << sprache << static_cast<int>(art) << seite << extrem;
                    }
                }
            }
        }
    }
}

TEST_F(ProtokollTest, appendix_showsEveryWingAndBee) {
    miss25();
    merkmale(40, 20);
    EXPECT_EQ(seitenzahl(daten()), 2);
    einstellungen.Anhang = true;
    ändere([](Messreihe& reihe) {
        Flügelmessung messung;
        messung.aufnahme.Zoomfaktor = 2;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            messung.punkte.setze(Messart::AlleMessungen, i, 200.F + 20.F * static_cast<float>(i),
                                 i % 2 != 0 ? 100.F : 160.F);
        }
        reihe.trageEin(26, {.CI = 9.9F, .HI = 1.0F, .DV = 12.0F, .fehler = {}}, messung, {});
        (void)reihe.lassAus(3, true);
    });
    QRect gefragt;
    const Anhang a = anhang(untersuchung, texte, {.dezimal = u',', .tausender = u'.'},
                            [&gefragt](const Flügelmessung&, const QRect& r) {
                                gefragt = r;
                                QImage bild(r.size(), QImage::Format_RGB32);
                                bild.fill(Qt::gray);
                                return bild;
                            });
    ASSERT_EQ(a.flügel.size(), 26U);
    EXPECT_TRUE(a.flügel[2].ausgelassen);
    EXPECT_THAT(a.flügel[25].kopf.toStdString(), StartsWith("026 !  CI 9,90  Klasse 30,5"));
    EXPECT_TRUE(a.flügel[0].größe.isEmpty());              // only its indices are known
    EXPECT_TRUE(gefragt.contains(QRect(110, 50, 70, 30))); // pixels of the scan, with some margin
    EXPECT_EQ(a.flügel[25].punkte.front() + gefragt.topLeft(), QPointF(110, 50));
    EXPECT_EQ(a.bienen.size(), 40);
    // Points that a file puts anywhere ask for no picture, however large.
    ändere([](Messreihe& reihe) {
        Flügelmessung messung;
        messung.punkte.setze(Messart::AlleMessungen, 1, 3e9F, 0);
        messung.punkte.setze(Messart::AlleMessungen, 2, 0, -3e9F);
        reihe.trageEin(27, {.CI = 2.5F, .HI = {}, .DV = {}, .fehler = {}}, messung, {});
    });
    const Anhang fern = anhang(untersuchung, texte, {}, [](const Flügelmessung& f, const QRect&) {
        EXPECT_EQ(f.aufnahme.Zoomfaktor, 2);
        return QImage();
    });
    EXPECT_TRUE(fern.flügel[26].größe.isEmpty());
    ändere([](Messreihe& reihe) { (void)reihe.löscheLetzte(); });

    const Protokolldaten d = daten();
    ASSERT_EQ(seitenzahl(d), 3);
    const QStringList texteDerSeite = zeilen(d, 3);
    EXPECT_EQ(texteDerSeite.filter(QRegularExpression(u"^0\\d\\d( !)?  CI "_s)).size(), 26);
    EXPECT_EQ(texteDerSeite.filter(QRegularExpression(u"^0\\d\\d [OE], k, F$"_s)).size(), 40);
    EXPECT_THAT(texteDerSeite, Contains(u"Anhang, Seite 1 von 1"_s));
    EXPECT_THAT(zeilen(d, 1), Not(Contains(u"Anhang, Seite 1 von 1"_s)));
    // Only the row with the wing that has points leaves room for a picture.
    const auto rahmen = protokollseite(d, Briefkopfgrafik(Briefkopf{}), 3).flügel;
    EXPECT_GT(rahmen.back().zelle.height(), 2 * rahmen.front().zelle.height());
}

TEST_F(ProtokollTest, summaryOfASeries_countsVerdictsAndFitsItsPages) {
    miss25();
    std::vector<Serienzeile> alle(90, serienzeile(daten()));
    EXPECT_EQ(alle[0].nummer, u"001AB2026"_s);
    EXPECT_EQ(alle[0].flügel, u"25"_s);
    EXPECT_EQ(alle[0].HI, u"1,052"_s);
    alle[0].entspricht = std::nullopt;
    alle[1].entspricht = !alle[2].entspricht.value_or(false);
    EXPECT_TRUE(alle[1].vorläufig);
    alle[3].volk = alle[3].königin = alle[3].rasse = u"Donaudampfschifffahrt"_s.repeated(4);
    const auto seiten = serienübersicht(alle, texte, einstellungen);
    ASSERT_EQ(seiten.size(), 2U);
    int zeilenzahl = 0;
    for (const Protokollseite& seite : seiten) {
        EXPECT_THAT(fehler(seite), IsEmpty());
        zeilenzahl += static_cast<int>(zeilen(seite).count(u"001AB2026"_s));
    }
    EXPECT_EQ(zeilenzahl, 90);
    EXPECT_FALSE(zeilen(seiten[0]).filter(u"* vorläufig"_s).isEmpty());
    const bool gut = *alle[2].entspricht;
    EXPECT_THAT(
        zeilen(seiten[0]),
        Contains(
            u"Untersuchungen: 90 · entsprechen: %1 · entsprechen nicht: %2 · nicht beurteilt: 1"_s
                .arg(gut ? 88 : 1)
                .arg(gut ? 1 : 88)));
}

TEST_F(ProtokollTest, ownWordsOfFullLength_neverOverlap) {
    Protokolltexte eigene;
    for (QString& feld : eigene.felder) {
        feld = u"Sehr langes eigenes Wort "_s.repeated(6).left(127);
    }
    miss25();
    merkmale(25, 20);
    for (const Protokollart art : alleArten) {
        einstellungen.art = art;
        for (int seite = 1; seite <= seitenzahl(art); ++seite) {
            EXPECT_THAT(fehler(protokollseite(daten(eigene), Briefkopfgrafik(), seite)), IsEmpty());
        }
    }
}

TEST_F(ProtokollTest, body_beginsBelowTheLetterhead) {
    miss25();
    const auto titel = [this] {
        const Protokollseite s = protokollseite(daten(), Briefkopfgrafik(), 1);
        return s.texte.front().rahmen.top();
    };
    const double üblich = titel();
    einstellungen.briefkopf.TextOben = 5; // no higher than usual
    EXPECT_DOUBLE_EQ(titel(), üblich);
    einstellungen.briefkopf.TextOben = 45;
    EXPECT_GT(titel(), 49);
    // As far down as the report leaves room; it is moved up then, not printed over.
    einstellungen.briefkopf.TextOben = 250;
    const Protokollseite seite = protokollseite(daten(), Briefkopfgrafik(), 1);
    EXPECT_LT(seite.briefkopf.TextOben, 120);
    EXPECT_LT(seite.briefkopfrahmen.bottom(), seite.texte.front().rahmen.top());
    // The graphic too.
    const Testordner ordner;
    einstellungen.briefkopf.Datei = ordner.filePath(u"wappen.png"_s);
    einstellungen.briefkopf.GrafikOben = 250;
    ASSERT_TRUE(QImage(100, 100, QImage::Format_RGB32).save(einstellungen.briefkopf.Datei));
    const Briefkopfgrafik wappen(einstellungen.briefkopf);
    const Protokollseite mitWappen = protokollseite(daten(), wappen, 1);
    EXPECT_LT(mitWappen.briefkopf.GrafikOben, 120);
    EXPECT_THAT(fehler(mitWappen), IsEmpty());
    // Both pages carry it at the same place.
    EXPECT_EQ(protokollseite(daten(), wappen, 2).briefkopf, mitWappen.briefkopf);
}
