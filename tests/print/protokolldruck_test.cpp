#include "print/protokolldruck.h"
#include "print/protokollprobe.h"
#include "print/protokollseite.h"
#include "support/testordner.h"

#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double MillimeterJePunktPdf = 25.4 / 72;

/// A word of a page with its place in millimetres.
struct Wort {
    QString text;
    QRectF ort;
};

/// Prints reports into a folder and reads the files back with poppler's programs.
struct ProtokolldruckTest : testing::Test, Protokollprobe {
    Testordner ordner;
    QString pdf = ordner.filePath(u"protokoll.pdf"_s);

    void SetUp() override {
        if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty()) {
            GTEST_SKIP() << "needs package poppler-utils";
        }
        for (int i = 0; i < 25; ++i) {
            miss(18 + i % 5);
        }
        merkmale(25, 9); // 36 % E where 30 % are allowed
    }

    static QString lies(const QString& programm, const QStringList& worte) {
        QProcess prozess;
        prozess.start(programm, worte);
        EXPECT_TRUE(prozess.waitForFinished()) << qPrintable(programm);
        return QString::fromUtf8(prozess.readAllStandardOutput());
    }

    QString text(int seite) const {
        const QString n = QString::number(seite);
        return lies(u"pdftotext"_s, {u"-layout"_s, u"-f"_s, n, u"-l"_s, n, pdf, u"-"_s});
    }
    int seiten() const {
        static const QRegularExpression zahl(u"Pages:\\s+(\\d+)"_s);
        return zahl.match(lies(u"pdfinfo"_s, {pdf})).captured(1).toInt();
    }
    std::vector<Wort> worte() const {
        static const QRegularExpression muster(
            u"<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" yMax=\"([\\d.]+)\">"
            "([^<]*)</word>"_s);
        std::vector<Wort> liste;
        auto treffer = muster.globalMatch(lies(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s}));
        while (treffer.hasNext()) {
            const auto m = treffer.next();
            const auto mm = [&m](int i) { return m.captured(i).toDouble() * MillimeterJePunktPdf; };
            liste.push_back({m.captured(5).replace(u"&apos;"_s, u"'"_s),
                             QRectF(QPointF(mm(1), mm(2)), QPointF(mm(3), mm(4)))});
        }
        return liste;
    }
    /// Bold text outside the chart, from the top.
    QStringList fettes(const QRectF& diagramm) const {
        static const QRegularExpression muster(u"<text top=\"(\\d+)\"[^>]*><b>(.*)</b></text>"_s);
        const QString xml =
            lies(u"pdftohtml"_s, {u"-xml"_s, u"-i"_s, u"-zoom"_s, u"1"_s, u"-stdout"_s, pdf});
        QStringList liste;
        auto treffer = muster.globalMatch(xml);
        while (treffer.hasNext()) {
            const auto m = treffer.next();
            const double y = m.captured(1).toDouble() * MillimeterJePunktPdf;
            if (y < diagramm.top() - 1 || y > diagramm.bottom()) {
                liste << m.captured(2).trimmed();
            }
        }
        return liste;
    }
};

} // namespace

TEST_F(ProtokolldruckTest, everyKindAndLanguage_readsBackFromThePdf) {
    struct Sprachworte {
        QString titel, untersucht, urteil, körper, korrelation, datum;
    };
    const Sprachworte erwartet[] = {
        {u"Merkmalsuntersuchung Nr. 001AB2026"_s, u"25 Arbeiterinnen wurden untersucht"_s,
         u"Entspricht nicht den Merkmalen der Rasse Carnica"_s, u"Körper-Merkmale"_s,
         u"Korrelation Hantelindex - Discoidalverschiebung"_s, u"5. März 2026"_s},
        {u"Number of Test 001AB2026"_s, u"25 workers have been tested"_s,
         u"The characteristics are not in accordance with the race Carnica"_s, u"Body marks"_s,
         u"Correlation Hantelindex - Discoidalshift"_s, u"5 March 2026"_s},
        {u"Examen des caractéristiques N° 001AB2026"_s, u"25 Ouvrières ont été examinées."_s,
         u"Pas conforme aux caractéristiques des races Carnica"_s, u"Autres caractéristiques"_s,
         u"Corrélation Indice Hantel/Décalage Discoïdal"_s, u"5 mars 2026"_s}};
    for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
        texte.SpracheEinstellen(sprache);
        const Sprachworte& e = erwartet[sprache];
        for (const Protokollart art : alleArten) {
            einstellungen.art = art;
            ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
            ASSERT_EQ(seiten(), seitenzahl(art));
            const QString erste = text(1);
            for (const QString& wort : {e.titel, e.untersucht, e.urteil, e.körper, e.datum,
                                        u"06-012-007-2024"_s, u"Imkerverband"_s}) {
                EXPECT_TRUE(erste.contains(wort)) << qPrintable(wort) << qPrintable(erste);
            }
            if (seitenzahl(art) == 2) {
                EXPECT_TRUE(text(2).contains(e.korrelation)) << qPrintable(text(2));
            }
        }
    }
}

TEST_F(ProtokolldruckTest, boldInThePdf_isWhatExceedsTheStandard) {
    const QRectF diagramm = protokollseite(daten(), Briefkopfgrafik(), 1).diagramme.front().rahmen;
    einstellungen.art = Protokollart::Cubitalindex;
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
    EXPECT_THAT(fettes(diagramm), ElementsAre(u"Entspricht nicht den Merkmalen der Rasse Carnica"_s,
                                              u"E: 36\u00a0%, erlaubt 30\u00a0%"_s, u"36 %"_s));
    einstellungen.regeln.BewertungAktiv = false;
    const Protokolldaten ohne = daten();
    ASSERT_EQ(speichereProtokoll(pdf, ohne, Briefkopfgrafik()), QString());
    EXPECT_THAT(fettes(protokollseite(ohne, Briefkopfgrafik(), 1).diagramme.front().rahmen),
                IsEmpty());
}

TEST_F(ProtokolldruckTest, pdf_hasTheWordsWhereTheLayoutPutsThem) {
    einstellungen.art = Protokollart::CubitalindexUndDV;
    const Protokollseite seite = protokollseite(daten(), Briefkopfgrafik(), 1);
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
    int gefunden = 0;
    for (const Wort& w : worte()) {
        const QPointF mitte = w.ort.center();
        if (mitte.y() < seite.briefkopfrahmen.bottom() ||
            seite.diagramme.front().rahmen.contains(mitte)) {
            continue;
        }
        const bool passt =
            std::any_of(seite.texte.begin(), seite.texte.end(), [&](const Protokolltext& t) {
                return t.text.contains(w.text) &&
                       t.rahmen.adjusted(-0.5, -1, 0.5, 1).contains(mitte) &&
                       w.ort.right() < t.rahmen.right() + 0.5;
            });
        EXPECT_TRUE(passt) << qPrintable(w.text) << ' ' << mitte.x() << ' ' << mitte.y();
        ++gefunden;
    }
    EXPECT_GT(gefunden, 80);
}

TEST_F(ProtokolldruckTest, pdf_isWrittenInTheOrderOfReading) {
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
    const QString gelesen = lies(u"pdftotext"_s, {u"-raw"_s, pdf, u"-"_s});
    qsizetype stelle = -1;
    for (const QString& wort :
         {u"Graz"_s, u"Merkmalsuntersuchung"_s, u"Entspricht nicht"_s, u"E: 36 %"_s, u"vorläufig"_s,
          u"Zuchtbuch"_s, u"06-012"_s, u"Mittelwert CI"_s, u"Klasse 0"_s, u"Panzerzeichen"_s,
          u"März"_s, u"Unterschrift"_s, u"Strecke"_s, u"Seite 1"_s, u"Merkmalsuntersuchung"_s,
          u"Hantelindex und DV"_s, u"Kriterien"_s, u"Seite 2"_s}) {
        const qsizetype ort = gelesen.indexOf(wort, stelle + 1);
        EXPECT_GT(ort, stelle) << qPrintable(wort) << qPrintable(gelesen);
        stelle = std::max(ort, stelle);
    }
}

TEST_F(ProtokolldruckTest, pdf_isForTheArchiveAndSaysWhatItIs) {
    einstellungen.briefkopf.Ikone = Verband::Biene;
    for (const Protokollart art : alleArten) {
        einstellungen.art = art;
        const QByteArray inhalt =
            protokollAlsPdf(daten(), Briefkopfgrafik(einstellungen.briefkopf));
        EXPECT_TRUE(inhalt.startsWith("%PDF-1.4"));
        for (const char* wort :
             {"/OutputIntents", "/GTS_PDFA1", "<pdfaid:part>1</pdfaid:part>",
              "<pdfaid:conformance>B</pdfaid:conformance>", "/Metadata", "/ID"}) {
            EXPECT_TRUE(inhalt.contains(wort)) << wort;
        }
        for (const char* wort : {"/SMask 0", "/SMask 1", "/S /Transparency", "/Encrypt",
                                 "/JavaScript", "/EmbeddedFile"}) {
            EXPECT_FALSE(inhalt.contains(wort)) << wort;
        }
        for (const QByteArray& stufe : {QByteArray("/ca "), QByteArray("/CA ")}) {
            for (qsizetype i = inhalt.indexOf(stufe); i >= 0; i = inhalt.indexOf(stufe, i + 1)) {
                EXPECT_EQ(inhalt.mid(i + 4, 1), "1");
            }
        }
        lege(pdf, inhalt);
        const QString angaben = lies(u"pdfinfo"_s, {pdf});
        const QString xmp = lies(u"pdfinfo"_s, {u"-meta"_s, pdf});
        EXPECT_TRUE(angaben.contains(u"Merkmalsuntersuchung Nr. 001AB2026"_s));
        for (const QString& wort : {u"Merkmalsuntersuchung Nr. 001AB2026"_s, u"Imkerverband"_s,
                                    u"Lindenvolk, Steiner, Carnica"_s}) {
            EXPECT_TRUE(xmp.contains(wort)) << qPrintable(xmp);
        }
        const QString schriften = lies(u"pdffonts"_s, {pdf});
        static const QRegularExpression eingebettet(u"Identity-H +yes "_s);
        EXPECT_EQ(schriften.count(eingebettet), schriften.count(u'\n') - 2)
            << qPrintable(schriften);
    }
}

TEST_F(ProtokolldruckTest, pictureAndPdf_lookAlike) {
    constexpr int dpi = 60;
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
    for (int nummer = 1; nummer <= 2; ++nummer) {
        const QString n = QString::number(nummer);
        const QString png = ordner.filePath(u"seite"_s);
        lies(u"pdftoppm"_s, {u"-r"_s, QString::number(dpi), u"-f"_s, n, u"-l"_s, n,
                             u"-singlefile"_s, u"-png"_s, pdf, png});
        const QImage gedruckt(png + u".png"_s);
        const QImage bild = protokollbild(daten(), Briefkopfgrafik(), nummer, dpi);
        ASSERT_FALSE(gedruckt.isNull());
        ASSERT_NEAR(bild.width(), gedruckt.width(), 1);
        // Blocks even out how the two smooth the edges of letters.
        const QSize raster(62, 87);
        const auto grob = [&raster](const QImage& b) {
            return b.scaled(raster, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        };
        const QImage a = grob(bild);
        const QImage b = grob(gedruckt);
        int größter = 0;
        for (int y = 0; y < raster.height(); ++y) {
            for (int x = 0; x < raster.width(); ++x) {
                größter = std::max(größter, std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))));
            }
        }
        EXPECT_LT(größter, 70) << nummer;
    }
}

TEST_F(ProtokolldruckTest, devicesWithMargins_putThePageAtTheSamePlace) {
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik()), QString());
    const QPointF soll = worte().front().ort.topLeft();
    {
        QPdfWriter gerät(pdf);
        gerät.setPageMargins({12, 17, 12, 17}, QPageLayout::Millimeter);
        ASSERT_TRUE(Druckstart(gerät, daten(), Briefkopfgrafik()));
    }
    const QPointF ist = worte().front().ort.topLeft();
    EXPECT_NEAR(ist.x(), soll.x(), 0.2);
    EXPECT_NEAR(ist.y(), soll.y(), 0.2);
}

TEST_F(ProtokolldruckTest, chosenPages_arePrintedUntilToldToStop) {
    ASSERT_EQ(speichereProtokoll(pdf, daten(), Briefkopfgrafik(), {.von = 2, .bis = 2}), QString());
    EXPECT_EQ(seiten(), 1);
    EXPECT_TRUE(text(1).contains(u"Seite 2"_s));

    std::vector<int> gefragt;
    QPdfWriter gerät(pdf);
    EXPECT_FALSE(Druckstart(gerät, daten(), Briefkopfgrafik(), {}, [&gefragt](int seite) {
        gefragt.push_back(seite);
        return seite < 2;
    }));
    EXPECT_THAT(gefragt, ElementsAre(1, 2));

    einstellungen.art = Protokollart::Cubitalindex; // has no page 2
    EXPECT_FALSE(Druckstart(gerät, daten(), Briefkopfgrafik(), {.von = 2, .bis = 2}));
}

TEST_F(ProtokolldruckTest, fileThatCannotBeWritten_givesTheReason) {
    EXPECT_NE(
        speichereProtokoll(ordner.filePath(u"fehlt/protokoll.pdf"_s), daten(), Briefkopfgrafik()),
        QString());
    EXPECT_NE(speichereProtokoll(ordner.path(), daten(), Briefkopfgrafik()), QString());
}
