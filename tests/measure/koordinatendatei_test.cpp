#include "measure/koordinatenausgabe.h"
#include "measure/koordinatendatei.h"
#include "measure/koordinatenreihe.h"
#include "measure/textdatei.h"

#include <QStringEncoder>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::SizeIs;

namespace {

const QByteArray kopf = "wing,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\n";
const QByteArray punkte = "395,44,89,73,356,55,285,63,284,118,236,146,218,144,294,198";
const QByteArray tpsPunkte = "395 44\n89 73\n356 55\n285 63\n284 118\n236 146\n218 144\n294 198\n";

Koordinaten gelesen(const QByteArray& bytes) {
    const auto ergebnis = liesKoordinaten(bytes);
    if (const auto* problem = std::get_if<Leseproblem>(&ergebnis)) {
        ADD_FAILURE() << textMitZeile(*problem, Texte(QString())).toStdString();
        return {.flügel = {{}}};
    }
    return std::get<Koordinaten>(ergebnis);
}

Leseproblem problem(const QByteArray& bytes) {
    const auto ergebnis = liesKoordinaten(bytes);
    EXPECT_TRUE(std::holds_alternative<Leseproblem>(ergebnis)) << bytes.left(300).toStdString();
    const auto* gefunden = std::get_if<Leseproblem>(&ergebnis);
    return gefunden != nullptr ? *gefunden : Leseproblem{};
}

Messpunkte erwartete() {
    constexpr float xy[8][2] = {{395, 44},  {89, 73},   {356, 55},  {285, 63},
                                {284, 118}, {236, 146}, {218, 144}, {294, 198}};
    Messpunkte p(Messart::AlleMessungen);
    for (int i = 0; i < 8; ++i) {
        p.setze(Messart::AlleMessungen, i + 1, xy[i][0], xy[i][1]);
    }
    return p;
}

QByteArray semikolon(QByteArray text) {
    return text.replace('.', "\x01").replace(',', ';').replace('\x01', ',');
}

Ausgabeflügel ausgabe(int nummer, const QString& name, const Messpunkte& p, qint16 zoom = 1) {
    return {.nummer = nummer,
            .name = name,
            .messung = {.punkte = p,
                        .messart = Messart::AlleMessungen,
                        .aufnahme = {.Zoomfaktor = zoom, .dpi = 2400},
                        .bilddatei = u"C:\\Scans\\a, \"b\" ü.png"_s},
            .bildhöhe = 20000};
}

QByteArray punktetabelle(std::span<const Ausgabeflügel> flügel) {
    CsvTabelle tabelle("wing,file," + punktspalten());
    for (const Ausgabeflügel& f : flügel) {
        tabelle.text(f.name.isEmpty() ? QString::number(f.nummer) : f.name);
        tabelle.text(bildname(f.messung.bilddatei));
        schreibePunkte(tabelle, f.messung);
        tabelle.zeilenende();
    }
    return tabelle.csv();
}

} // namespace

TEST(KoordinatenCsv, formsOfOneTable_giveTheSameWing) {
    const QByteArray zeile = "7," + punkte + "\n";
    const QByteArray gebrochen = QByteArray(zeile).replace("395", "395.0");
    const QByteArray umgestellt =
        "Y8,X8,Y7,X7,Y6,X6,Y5,X5,Y4,X4,Y3,X3,Y2,X2,Y1,X1,dpi,Wing\n"
        "198,294,144,218,146,236,118,284,63,285,55,356,73,89,44,395,abc,7\n";
    QStringEncoder utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    for (const QByteArray& bytes : {
             kopf + zeile,
             QByteArray(kopf + zeile).replace("\n", "\r\n"),
             QByteArray(kopf + zeile).replace("\n", "\r").chopped(1),
             "\xEF\xBB\xBF\n" + kopf + "\n" + zeile + ",,,,,,,,,,,,,,,,\n\n",
             semikolon(kopf + gebrochen),
             semikolon(kopf) + QByteArray(gebrochen).replace(',', ';'),
             "sep=;\n" + semikolon(kopf + gebrochen),
             semikolon(kopf + gebrochen).replace(';', "\t"),
             QByteArray(utf16(QString::fromLatin1(semikolon(kopf + zeile).replace(';', "\t")))),
             "note\t" + QByteArray(kopf).replace(',', '\t') + "\t\"7\"\t" +
                 QByteArray(punkte).replace(',', '\t'),
             umgestellt,
             "\"" + QByteArray(kopf + zeile).replace(",", "\", \"").replace("\n", "\"\n\"") + "\"",
         }) {
        const Koordinaten k = gelesen(bytes);
        ASSERT_EQ(k.flügel.size(), 1U);
        EXPECT_EQ(k.flügel[0].name, u"7"_s);
        EXPECT_EQ(k.flügel[0].punkte, erwartete());
        EXPECT_FALSE(k.yNachOben);
    }
}

TEST(KoordinatenCsv, emptyCells_leavePointsUnset) {
    const Koordinaten k = gelesen(kopf + "1,,,,,,,NA,NA,284.5,118,236,146,218,144,,\n");
    const Messpunkte& p = k.flügel[0].punkte;
    EXPECT_FALSE(p.gemessen(1) || p.gemessen(4) || p.gemessen(8));
    EXPECT_EQ(p.PunktX[5], 284.5F);
    EXPECT_TRUE(p.fertig(Messart::NurCubitalindex));
}

TEST(KoordinatenCsv, namesInQuotes_keepDelimitersQuotationMarksAndLineBreaks) {
    const QByteArray k2 = QByteArray(kopf).replace("wing", "file,note");
    const Koordinaten k = gelesen(k2 + "\"a, \"\"b\"\".png\",\"one\ntwo\"," + punkte +
                                  "\n\xFC.png,," + punkte + "\n");
    EXPECT_EQ(k.flügel[0].bezeichnung(), u"a, \"b\".png"_s);
    EXPECT_EQ(k.flügel[1].bezeichnung(), u"ü.png"_s);
    EXPECT_EQ(k.flügel[1].zeile, 4);
}

TEST(KoordinatenTps, keysCommentsAndGaps_giveTheSameWing) {
    const QByteArray mitKomma = QByteArray(tpsPunkte).replace("395 ", "395,0\t ");
    for (const QByteArray& bytes : {
             "LM=8\n" + tpsPunkte + "IMAGE=a.png\nID=7\nSCALE=0.0106\n",
             QByteArray("lm = 8\n" + tpsPunkte + "scale=0,0106\nid=7\nimage=a.png")
                 .replace("\n", "\r\n"),
             "# made by hand\n\nLM=8\n" + mitKomma +
                 "\nCOMMENT=x\nIMAGE=a.png\nID=7\nCURVES=1\nPOINTS=2\n1 2\n3 4\nSCALE=0.0106\n"
                 "RADII=1\n5.5\nVARIABLES=a=b\n",
         }) {
        const Koordinaten k = gelesen(bytes);
        ASSERT_EQ(k.flügel.size(), 1U);
        EXPECT_EQ(k.flügel[0].name, u"7"_s);
        EXPECT_EQ(k.flügel[0].bilddatei, u"a.png"_s);
        EXPECT_EQ(k.flügel[0].maßstab, 0.0106F);
        EXPECT_EQ(k.flügel[0].punkte, erwartete());
        EXPECT_TRUE(k.yNachOben);
    }
}

TEST(KoordinatenTps, missingPointsAndEmptyScale_areNotSet) {
    const QByteArray lücken = QByteArray(tpsPunkte)
                                  .replace("395 44", "-1 -1")
                                  .replace("89 73", "NA NA")
                                  .replace("285 63", "285 NaN");
    const Koordinaten k = gelesen("LM=8\n" + lücken + "SCALE=\nLM=8\n" + tpsPunkte + "SCALE=na\n");
    EXPECT_FALSE(k.flügel[0].punkte.gemessen(1) || k.flügel[0].punkte.gemessen(2));
    EXPECT_TRUE(k.flügel[0].punkte.gemessen(3));
    EXPECT_FALSE(k.flügel[0].punkte.gemessen(4)); // half a point is none
    EXPECT_EQ(k.flügel[0].maßstab, std::nullopt);
    EXPECT_EQ(k.flügel[1].maßstab, std::nullopt);
    EXPECT_EQ(k.flügel[1].zeile, 11);
}

TEST(Koordinatendatei, whatCannotBeRead_isNamedWithItsLine) {
    const auto mit = [](const char* alt, const char* neu) {
        return QByteArray(kopf + "1," + punkte + "\n2," + punkte + "\n").replace(alt, neu);
    };
    const auto tpsMit = [](const char* alt, const char* neu) {
        return QByteArray("LM=8\n" + tpsPunkte + "ID=1\n").replace(alt, neu);
    };
    QByteArray zuViele = kopf;
    for (int n = 1; n <= 201; ++n) {
        zuViele += QByteArray::number(n) + ',' + punkte + '\n';
    }
    struct Fall {
        QByteArray bytes;
        int zeile;
        Lesegrund grund;
        QStringList texte;
    };
    for (const Fall& fall : {
             Fall{"", 1, Lesegrund::Leer, {}},
             {"\xEF\xBB\xBF", 1, Lesegrund::Leer, {}},
             {QByteArray("GIF89a\0\0\xFF", 9), 1, Lesegrund::KeinText, {}},
             {QByteArray(GrößteTextdatei + 1, ','), 1, Lesegrund::ZuGroß, {u"16"_s}},
             {QByteArray(1 << 19, ',') + QByteArray(1 << 19, ' '), // hangs unless in one pass
              1,
              Lesegrund::SpalteFehlt,
              {u"x1"_s}},
             {"\n\n7 Bienen\n", 3, Lesegrund::SpalteFehlt, {u"x1"_s}},
             {mit("y4", "y44"), 1, Lesegrund::SpalteFehlt, {u"y4"_s}},
             {mit("wing", "X1"), 1, Lesegrund::Unerwartet, {u"x1"_s}},
             {mit("wing", "x9,z1,xx"), 2, Lesegrund::Feldzahl, {u"17"_s, u"19"_s}},
             {"sep=,\n\"wing\"x,y", 2, Lesegrund::Unerwartet, {u"x"_s}},
             {kopf, 1, Lesegrund::KeinFlügel, {}},
             {mit("\n2,395", "\n2,abc"), 3, Lesegrund::FeldKeineZahl, {u"x1"_s, u"abc"_s}},
             {mit("2,395", "2,-395"), 3, Lesegrund::FeldKeineZahl, {u"x1"_s, u"-395"_s}},
             {mit("2,395", "2,1e300"), 3, Lesegrund::FeldKeineZahl, {u"x1"_s, u"1e300"_s}},
             {mit("2,395", "2,\"1,5\""), 3, Lesegrund::FeldKeineZahl, {u"x1"_s, u"1,5"_s}},
             {mit("2,395", "2,1,5"), 3, Lesegrund::Feldzahl, {u"18"_s, u"17"_s}},
             {mit("\n2,395", "\n2"), 3, Lesegrund::Feldzahl, {u"16"_s, u"17"_s}},
             {mit("2,395", "2,"), 3, Lesegrund::HalberPunkt, {u"1"_s}},
             {mit("\n2,", "\n\"2,"), 3, Lesegrund::Unerwartet, {u"\""_s}},
             {mit("\n2,", "\n\"2\"x,"), 3, Lesegrund::Unerwartet, {u"x"_s}},
             {mit("\n2,", "\n01,"), 3, Lesegrund::FlügelDoppelt, {u"01"_s, u"2"_s}},
             {zuViele, 202, Lesegrund::ZuVieleFlügel, {u"200"_s}},
             {tpsMit("=8", "=9"), 1, Lesegrund::Punktzahl, {u"9"_s, u"8"_s}},
             {tpsMit("LM=8", "LM="), 1, Lesegrund::FeldKeineZahl, {u"LM"_s, QString()}},
             {tpsMit("LM", "LM3"), 1, Lesegrund::Unerwartet, {u"LM3=8"_s}},
             {tpsMit("LM=8", "ID=8"), 1, Lesegrund::Unerwartet, {u"ID=8"_s}},
             {tpsMit("LM=8", "COMMENT=8"), 2, Lesegrund::Unerwartet, {u"395 44"_s}},
             {tpsMit("89 73\n", ""), 9, Lesegrund::Punktzahl, {u"7"_s, u"8"_s}},
             {tpsMit("294 198\nID=1\n", ""), 8, Lesegrund::Punktzahl, {u"7"_s, u"8"_s}},
             {tpsMit("89 73", "89"), 3, Lesegrund::ZeileZuKurz, {u"89"_s}},
             {tpsMit("89 73", "89 73 1"), 3, Lesegrund::Unerwartet, {u"89 73 1"_s}},
             {tpsMit("89 73", "89 7b"), 3, Lesegrund::KeineZahl, {u"7b"_s}},
             {tpsMit("ID=1", "1 2"), 10, Lesegrund::Unerwartet, {u"1 2"_s}},
             {tpsMit("ID=1", "SCALE=x"), 10, Lesegrund::FeldKeineZahl, {u"SCALE"_s, u"x"_s}},
             {tpsMit("ID=1", "I D=1"), 10, Lesegrund::Unerwartet, {u"I D=1"_s}},
             {tpsMit("ID=1", "=1"), 10, Lesegrund::Unerwartet, {u"=1"_s}},
             {tpsMit("ID=1", "SCALE=0"), 10, Lesegrund::FeldKeineZahl, {u"SCALE"_s, u"0"_s}},
             {tpsMit("", "") + tpsMit("", ""), 11, Lesegrund::FlügelDoppelt, {u"1"_s, u"1"_s}},
             {"COMMENT=nothing\n", 1, Lesegrund::KeinFlügel, {}},
         }) {
        EXPECT_THAT(problem(fall.bytes), FieldsAre(fall.zeile, fall.grund, fall.texte))
            << fall.bytes.left(300).toStdString();
    }
}

TEST(Koordinatendatei, sameNameInAnotherPicture_isAnotherWing) {
    const QByteArray k2 = QByteArray(kopf).replace("wing", "file,wing");
    const QByteArray zeilen = "a.png,1," + punkte + "\nb.png,1," + punkte + "\nb.png,," + punkte +
                              "\nb.png,," + punkte + "\n";
    EXPECT_EQ(gelesen(k2 + zeilen).flügel.size(), 4U);
}

TEST(Koordinatendatei, reflection_changesNoIndex) {
    const Aufnahme aufnahme{.Zoomfaktor = 1, .dpi = 2400};
    const Indizes vorher = berechneIndizes(erwartete(), Messart::AlleMessungen, aufnahme);
    const Messpunkte gedreht = gespiegelt(erwartete(), 320).value();
    const Indizes nachher = berechneIndizes(gedreht, Messart::AlleMessungen, aufnahme);
    EXPECT_EQ(gedreht.PunktY[1], 276.0F);
    EXPECT_GT(vorher.DV.value(), 0);
    EXPECT_EQ(nachher.DV, vorher.DV);
    EXPECT_EQ(nachher.CI, vorher.CI);
    EXPECT_EQ(nachher.HI, vorher.HI);
}

TEST(Koordinatenreihe, wingsThatNobodyChecked_stayUnchecked) {
    for (const auto& [spalte, wert, ungeprüft] : {std::tuple{"checked", "no", true},
                                                  {"checked", "yes", false},
                                                  {"state", "sure", true},
                                                  {"state", "doubtful", true},
                                                  {"state", "Styria", false},
                                                  {"checked,state", "yes,sure", false}}) {
        const Koordinaten datei = gelesen(QByteArray(spalte) + ',' + kopf + wert + ",1," + punkte);
        EXPECT_EQ(reiheAus(datei, {}).reihe.messung(1)->ungeprüft, ungeprüft) << spalte << wert;
    }
}

TEST(Koordinatenreihe, wingsThatLackAnIndex_areNamedAndTheOthersKeepTheirNumbers) {
    const QByteArray lücke = QByteArray(punkte).replace("395,44", ",");
    const QByteArray gleich = QByteArray(punkte).replace("218,144", "236,146"); // points 6 and 7
    const Koordinaten k = gelesen(kopf + "a," + gleich + "\nb," + lücke + "\nc," + punkte + '\n');
    const Koordinatenreihe r = reiheAus(k, {.aufnahme = {1, 2400}});
    EXPECT_THAT(r.reihe.nummern(), ElementsAre(2, 3));
    EXPECT_EQ(r.reihe.hiDvZeilen().size(), 1U);
    EXPECT_EQ(r.messungen.size(), 3U);
    EXPECT_THAT(r.mängel, ElementsAre(FieldsAre(2, u"a"_s, Rechenfehler::DivisionDurchNull),
                                      FieldsAre(3, u"b"_s, std::nullopt)));
    const Texte texte{QString()};
    EXPECT_NE(text(r.mängel[0], texte), text(r.mängel[1], texte));
    EXPECT_THAT(reiheAus(k, {.messart = Messart::NurCubitalindex}).mängel, SizeIs(1));
}

TEST(Koordinatenreihe, resolution_isThatOfAllScalesOrNone) {
    const auto auflösung = [](std::initializer_list<std::optional<float>> maßstäbe) {
        Koordinaten k;
        for (const auto maßstab : maßstäbe) {
            k.flügel.emplace_back().maßstab = maßstab;
        }
        return auflösungAus(k);
    };
    EXPECT_EQ(auflösung({0.0105833F, 0.010583F}), 2400);
    EXPECT_EQ(auflösung({0.0105833F, 0.0211667F}), std::nullopt);
    EXPECT_EQ(auflösung({0.0105833F, {}}), std::nullopt);
    EXPECT_EQ(auflösung({1.0F}), std::nullopt); // no scanner's
    EXPECT_EQ(auflösung({0.0001F}), std::nullopt);
}

TEST(Koordinatenausgabe, writtenPoints_areReadBackTheSame) {
    Messpunkte krumm(Messart::AlleMessungen);
    for (int p = 1; p <= 8; ++p) {
        const auto x = static_cast<float>(p);
        krumm.setze(Messart::AlleMessungen, p, 1000.0F / (3 * x), 100000.1F / (7 * x));
    }
    Messpunkte halb(Messart::AlleMessungen);
    halb.setze(Messart::AlleMessungen, 5, 10, 20);
    const Ausgabeflügel flügel[] = {ausgabe(1, u"Königin, \"links\""_s, krumm),
                                    ausgabe(2, {}, halb)};

    const Koordinaten csv = gelesen(punktetabelle(flügel));
    const Koordinaten tps = gelesen(alsTps(flügel).inhalt);
    EXPECT_EQ(csv.flügel[0].punkte, krumm);
    EXPECT_EQ(gespiegelt(tps.flügel[1].punkte, 20000), halb);
    EXPECT_EQ(tps.flügel[0].punkte.PunktX, krumm.PunktX);
    EXPECT_EQ(tps.flügel[0].maßstab, static_cast<float>(25.4 / 2400));
    for (const Koordinaten& k : {csv, tps}) {
        ASSERT_EQ(k.flügel.size(), 2U);
        EXPECT_EQ(k.flügel[0].name, u"Königin, \"links\""_s);
        EXPECT_EQ(k.flügel[0].bilddatei, u"a, \"b\" ü.png"_s);
        EXPECT_EQ(k.flügel[1].name, u"2"_s);
        EXPECT_FALSE(k.flügel[1].punkte.gemessen(4));
    }
}

TEST(Koordinatenausgabe, tps_isInPicturePixelsWithYUpwards) {
    Ausgabeflügel flügel = ausgabe(1, u"1"_s, erwartete(), 2);
    const auto erstePunktzeile = [&flügel] {
        return alsTps(std::span(&flügel, 1)).inhalt.split('\n').value(1);
    };
    flügel.bildhöhe = 320;
    EXPECT_EQ(erstePunktzeile(), "197.5 298");
    for (const std::optional<float> höhe : {std::optional<float>(), {50.F}}) { // another picture's
        flügel.bildhöhe = höhe;
        const Tps tps = alsTps(std::span(&flügel, 1));
        EXPECT_TRUE(tps.inhalt.isEmpty());
        EXPECT_THAT(tps.ohneBildhöhe, ElementsAre(u"1 (a, \"b\" ü.png)"_s));
    }
}

TEST(Koordinatenausgabe, indexTable_hasFullPrecisionAndEmptyCells) {
    Messpunkte p(Messart::AlleMessungen);
    p.setze(Messart::AlleMessungen, 5, 0, 0);
    p.setze(Messart::AlleMessungen, 6, 7, 0);
    p.setze(Messart::AlleMessungen, 7, 10, 0);
    Messpunkte weit = p;
    weit.setze(Messart::AlleMessungen, 6, 9.9F, 0);
    const Ausgabeflügel flügel[] = {ausgabe(1, u"a,b"_s, p), ausgabe(2, {}, weit)};
    EXPECT_EQ(alsIndextabelle(flügel).toStdString(), "wing,ci,ci_class,hi,hi_class,dv,left_out\n"
                                                     "\"a,b\",2.3333333,18.0048,,,,no\n"
                                                     "2,98.99962,0,,,,no\n");
}
