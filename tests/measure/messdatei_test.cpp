#include "measure/messdatei.h"
#include "measure/textdatei.h"
#include "support/testordner.h"

#include <QSet>
#include <QStringEncoder>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A file of one colony, in pieces that tests exchange.
struct Beispiel {
    QByteArray art = "A1";
    QByteArray ci = "001 3.07 21.3\n002 2.31 17.5\n";
    QByteArray endeCI = "EndeCI\nHI/DV\n";
    QByteArray hi = "001 0.993 24.7 +0.4\n002 1.050 27.0 -0.2\n";
    QByteArray endeHI = "EndeHI\n";
    QByteArray merkmale = "O 20\nf 18\nk 20\n20\n";

    [[nodiscard]] QByteArray bytes() const {
        return art +
               "\n2019\n017\n07\n003\nU5\nJ\xFCrgen Gr\xFC"
               "n\n8\n9\nBesitzer\nVolk 4\nBelegstelle\n13\n14\n" +
               ci + endeCI + hi + endeHI + merkmale;
    }
};

Messdatei lies(const Beispiel& beispiel) {
    return liesMessdatei(beispiel.bytes());
}

std::vector<std::pair<int, Lesegrund>> befunde(const Messdatei& datei) {
    std::vector<std::pair<int, Lesegrund>> alle;
    for (const Leseproblem& p : datei.probleme) {
        alle.emplace_back(p.zeile, p.grund);
    }
    return alle;
}

} // namespace

TEST(Messdatei, completeFile_isReadToTheLastLineWithAnyLineEnds) {
    for (const char* ende : {"\n", "\r\n", "\r"}) {
        const Messdatei d = liesMessdatei(Beispiel().bytes().replace("\n", ende));
        EXPECT_TRUE(d.istMessdatei);
        EXPECT_THAT(d.probleme, IsEmpty());
        EXPECT_EQ(d.messart, Messart::AlleMessungen);
        EXPECT_EQ(QStringList({d.Jahr, d.KNr, d.LV, d.ZNr, d.UNr, d.Name}),
                  QStringList({u"2019"_s, u"017"_s, u"07"_s, u"003"_s, u"U5"_s, u"Jürgen Grün"_s}));
        EXPECT_EQ(QStringList({d.Besitzer, d.Volk, d.Begattung}),
                  QStringList({u"Besitzer"_s, u"Volk 4"_s, u"Belegstelle"_s}));
        EXPECT_THAT(d.ciZeilen, ElementsAre(CiZeile{1, u"3.07"_s, u"21.3"_s},
                                            CiZeile{2, u"2.31"_s, u"17.5"_s}));
        EXPECT_THAT(d.hiDvZeilen, ElementsAre(HiDvZeile{1, u"0.993"_s, u"24.7"_s, u"+0.4"_s},
                                              HiDvZeile{2, u"1.050"_s, u"27.0"_s, u"-0.2"_s}));
        EXPECT_EQ(d.merkmaltext, u"AO 20;f 18;k 20;20"_s);
        EXPECT_EQ(d.merkmalzeilen.size(), 3);
        EXPECT_EQ(d.Bienenanzahl, 20);
    }
}

TEST(Messdatei, firstLine_tellsCasteAndKind) {
    struct Fall {
        const char* zeile;
        bool drohnen;
        std::optional<Messart> messart;
    };
    for (const Fall& fall : {Fall{"D0", true, Messart::NurCubitalindex},
                             {"Drohnen 2", true, Messart::Korrelation},
                             {"d1", false, Messart::AlleMessungen},
                             {"2", false, Messart::Korrelation},
                             {"D", true, std::nullopt},
                             {"A3", false, std::nullopt},
                             {"", false, std::nullopt}}) {
        const Messdatei d = lies({.art = fall.zeile});
        EXPECT_EQ(d.Drohnen, fall.drohnen) << fall.zeile;
        EXPECT_EQ(d.messart, fall.messart) << fall.zeile;
        EXPECT_EQ(d.probleme.empty(), fall.messart.has_value()) << fall.zeile;
        EXPECT_EQ(d.ciZeilen.size(), 2U) << fall.zeile;
    }
}

TEST(Messdatei, longestHantelLine_decidesOnTheCorrelationKind) {
    struct Fall {
        const char* hi;
        bool korrelation;
    };
    for (const Fall& fall : {Fall{"", false},
                             {"001 \n", false},
                             {"001 1\n", true},
                             {"001\n001 1.050 27.0 +0.4\n2\n", true}}) {
        EXPECT_EQ(lies({.hi = fall.hi}).korrelation(), fall.korrelation) << fall.hi;
    }
}

TEST(Messdatei, entries_areCutAtTheirPlaces) {
    const Messdatei d = lies({.ci = "003 12,00 0,0\n001 2,75 Klasse 19,4\n 2  3,07\n",
                              .hi = "001 0,993 Klasse 24,7 -10,3\n002 0,993      0,4\n"
                                    "003 0,993 24,7 +10,3\n"});
    EXPECT_THAT(d.probleme, IsEmpty());
    EXPECT_THAT(d.ciZeilen, ElementsAre(CiZeile{1, u"2,75"_s, u"19,4"_s},
                                        CiZeile{2, u"3,07"_s, u"21,3"_s}, // class computed
                                        CiZeile{3, u"12,00"_s, u"0,0"_s}));
    EXPECT_THAT(d.hiDvZeilen, ElementsAre(HiDvZeile{1, u"0,993"_s, u"24,7"_s, u"-10,3"_s},
                                          HiDvZeile{2, u"0,993"_s, u"24,7"_s, u"+0,4"_s},
                                          HiDvZeile{3, u"0,993"_s, u"24,7"_s, u"+10,3"_s}));
}

TEST(Messdatei, numberBeyondTheClasses_isNoClass) {
    const Messdatei d = lies({.ci = "001 3.07 224\n002 3.07 32\n003 9.29 31\n",
                              .hi = "001 0.993 38.1 +0.4\n002 0.993 38 +0.4\n"});
    EXPECT_THAT(d.probleme, IsEmpty());
    EXPECT_THAT(d.ciZeilen,
                ElementsAre(CiZeile{1, u"3.07"_s, u"21.3"_s}, // class computed
                            CiZeile{2, u"3.07"_s, u"21.3"_s}, CiZeile{3, u"9.29"_s, u"31"_s}));
    EXPECT_THAT(d.hiDvZeilen, ElementsAre(HiDvZeile{1, u"0.993"_s, u"24.7"_s, u"+0.4"_s},
                                          HiDvZeile{2, u"0.993"_s, u"38"_s, u"+0.4"_s}));
}

TEST(Messdatei, unreadableEntries_areNamedWithTheirLineAndTheRestIsKept) {
    struct Fall {
        Beispiel beispiel;
        std::vector<std::pair<int, Lesegrund>> befunde;
        std::size_t ci, hi;
    };
    for (const Fall& fall :
         {Fall{{.ci = "001\n002 2.31\n"}, {{15, Lesegrund::ZeileZuKurz}}, 1, 2},
          {{.ci = "001 abc\n\n002 -2.3\n"},
           {{15, Lesegrund::KeineZahl}, {17, Lesegrund::KeineZahl}},
           0,
           2},
          {{.ci = "000 2.31\n201 2.31\n1x1 2.31\n200 2.31\n"},
           {{15, Lesegrund::Flügelnummer},
            {16, Lesegrund::Flügelnummer},
            {17, Lesegrund::Flügelnummer}},
           1,
           2},
          {{.ci = "001 2.31\n001 9.99\n"}, {{16, Lesegrund::FlügelDoppelt}}, 1, 2},
          {{.hi = "001 0.993 24\n002 0.993 24.7 gut\n003 1E+30 24.7 +0.4\n004 0.99  24.7 +0.4\n"},
           {{19, Lesegrund::ZeileZuKurz}, {20, Lesegrund::KeineZahl}, {21, Lesegrund::KeineZahl}},
           2,
           1},
          {{.hi = "201 0.993 24.7 +0.4\n\n002 0.993 24.7 +0.4\n002 0.993 24.7 +0.4\n"},
           {{19, Lesegrund::Flügelnummer}, {22, Lesegrund::FlügelDoppelt}},
           2,
           1},
          {{.merkmale = "O\nf\nk\n-1\n"}, {{25, Lesegrund::KeineZahl}}, 2, 2},
          {{.endeCI = ""}, {{17, Lesegrund::FlügelDoppelt}, {18, Lesegrund::FlügelDoppelt}}, 2, 0},
          {{.endeHI = "", .merkmale = "O 20\n"}, {{21, Lesegrund::ZeileZuKurz}}, 2, 2},
          {{.merkmale = "O\nf\n"}, {{23, Lesegrund::DateiEndet}}, 2, 2},
          {{.merkmale = "O\nf\nk\nviele\n"}, {{25, Lesegrund::KeineZahl}}, 2, 2},
          {{.merkmale = "O\nf\nk\n40000\n"}, {{25, Lesegrund::KeineZahl}}, 2, 2}}) {
        const Messdatei d = lies(fall.beispiel);
        EXPECT_TRUE(d.istMessdatei);
        EXPECT_EQ(befunde(d), fall.befunde) << fall.beispiel.bytes().toStdString();
        EXPECT_EQ(d.ciZeilen.size(), fall.ci);
        EXPECT_EQ(d.hiDvZeilen.size(), fall.hi);
    }
}

TEST(Messdatei, tooManyWings_fillTheSeriesAndNameTheRest) {
    Beispiel b{.ci = "", .hi = ""};
    for (int n = 1; n <= 400; ++n) {
        b.ci += QByteArray::number(n).rightJustified(3, '0') + " 2.31 17.5\n";
    }
    const Messdatei d = lies(b);
    EXPECT_EQ(d.ciZeilen.size(), 200U);
    EXPECT_EQ(d.probleme.front().zeile, 215);
    EXPECT_EQ(d.probleme.size(), 100U);
    EXPECT_EQ(d.weitereProbleme, 100);
}

TEST(Messdatei, missingEndMarkers_areNoError) {
    struct Fall {
        Beispiel beispiel;
        std::size_t hi;
        bool merkmale;
    };
    for (const Fall& fall : {Fall{{.endeCI = "", .hi = "", .endeHI = "", .merkmale = ""}, 0, false},
                             {{.endeCI = "", .hi = ""}, 0, true},
                             {{.endeHI = "", .merkmale = ""}, 2, false}}) {
        const Messdatei d = lies(fall.beispiel);
        EXPECT_THAT(befunde(d), IsEmpty());
        EXPECT_EQ(d.ciZeilen.size(), 2U);
        EXPECT_EQ(d.hiDvZeilen.size(), fall.hi);
        EXPECT_EQ(d.Bienenanzahl.has_value(), fall.merkmale);
    }
}

TEST(Messdatei, everyPrefixOfAFile_keepsWhatItHolds) {
    const QByteArray ganz = Beispiel().bytes();
    for (qsizetype länge = 0; länge < ganz.size(); ++länge) {
        const QByteArray teil = ganz.first(länge);
        const Messdatei d = liesMessdatei(teil);
        EXPECT_LE(d.ciZeilen.size(), 2U);
        EXPECT_EQ(d.istMessdatei, teil.count('\n') > 1 || teil.contains("\n2")) << länge;
        EXPECT_EQ(d.KNr == u"017", teil.contains("\n017")) << länge;
        EXPECT_EQ(d.Volk == u"Volk 4", teil.contains("Volk 4")) << länge;
        if (teil.count('\n') < 13) {
            EXPECT_FALSE(d.probleme.empty()) << länge; // colony data that are missing
        }
    }
}

TEST(Messdatei, otherFiles_areNotTakenForOne) {
    struct Fall {
        QByteArray bytes;
        Lesegrund grund;
    };
    const QByteArray prosa = QByteArray("Es war einmal eine Biene, die flog 1\n").repeated(30);
    for (const Fall& fall : {Fall{"", Lesegrund::Leer},
                             {" \r\n \r\n", Lesegrund::Leer},
                             {QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), Lesegrund::KeinText},
                             {"\xFF\xFE\x31", Lesegrund::KeinText}, // half a UTF-16 character
                             {prosa, Lesegrund::KeineMessdatei},
                             {"file,x1,y1\na.png,1,2\n", Lesegrund::KeineMessdatei},
                             {QByteArray(GrößteTextdatei + 1, '1'), Lesegrund::ZuGroß}}) {
        const Messdatei d = liesMessdatei(fall.bytes);
        EXPECT_FALSE(d.istMessdatei);
        EXPECT_THAT(befunde(d), ElementsAre(std::pair(1, fall.grund)));
    }
}

TEST(Messdatei, otherCharacterSets_areReadAndSaid) {
    const QString text = QString::fromLatin1(Beispiel().bytes());
    for (const char* name : {"UTF-8", "UTF-16LE"}) {
        QStringEncoder kodierer(name, QStringConverter::Flag::WriteBom);
        const Messdatei d = liesMessdatei(QByteArray(kodierer(text)));
        EXPECT_EQ(d.Name, u"Jürgen Grün"_s);
        EXPECT_THAT(befunde(d), ElementsAre(std::pair(1, Lesegrund::AndererZeichensatz)));
    }
    EXPECT_EQ(liesMessdatei(text.toUtf8()).Name, u"Jürgen Grün"_s);
    // The mark of a set that the bytes are not in, and the end-of-file character of old systems.
    const Messdatei d = liesMessdatei("\xEF\xBB\xBF" + Beispiel().bytes() + '\x1A');
    EXPECT_EQ(d.Name, u"Jürgen Grün"_s);
    EXPECT_THAT(d.probleme, IsEmpty());
}

TEST(Leseproblem, texts_quoteWhatTheFileSaysToTheLetter) {
    Texte texte{QString()};
    texte.SpracheEnglisch();
    const Leseproblem doppelt{12, Lesegrund::FlügelDoppelt, {u"%2"_s, u"3"_s}};
    EXPECT_EQ(textMitZeile(doppelt, texte), u"Line 12: The wing '%2' is already in line 3."_s);
    QSet<QString> sätze;
    for (int g = 0; g <= static_cast<int>(Lesegrund::Unerwartet); ++g) {
        sätze.insert(text({1, static_cast<Lesegrund>(g)}, texte));
    }
    EXPECT_EQ(sätze.size(), static_cast<int>(Lesegrund::Unerwartet) + 1);
    EXPECT_EQ(zitat(QString(u"x\t "_s).repeated(500)).size(), 40);
}

TEST(Dateiinhalt, hugeFile_isNotReadWhole) {
    const Testordner ordner;
    const QString pfad = ordner.schreibe(u"groß.Bee"_s);
    ASSERT_TRUE(QFile::resize(pfad, qint64{100} * 1024 * 1024));
    EXPECT_EQ(dateiinhalt(pfad).value().size(), GrößteTextdatei + 1);
    EXPECT_FALSE(dateiinhalt(ordner.filePath(u"keine.Bee"_s)));
    EXPECT_FALSE(dateiinhalt(ordner.path()));
}
