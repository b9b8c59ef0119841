#include "batch/aufruf.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QDir>
#include <QImage>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class Protokoll : public Batchtest {
protected:
    void SetUp() override {
        const QByteArray kopf = "\n2019\n17\n7\n3\n";
        const QByteArray angaben = "\nName\n\n\nOwner\nHive\nMating\nCI\nCI\n";
        const QByteArray ende = "EndeHI\n\n\n\n0\n";
        schreibe(u"a.Bee"_s, "A1" + kopf + "U5" + angaben + "001 3.07 21.3\nEndeCI\nHI\n" + ende);
        schreibe(u"b.Bee"_s, "A1" + kopf + "U6" + angaben + "EndeCI\nHI\n" + ende);
        ASSERT_EQ(rufe(u"import-bee a.Bee b.Bee --into a.tdb"_s).status, 0);
    }

    /// Pages of a PDF file, by the size that each is given.
    [[nodiscard]] qsizetype seiten(const QString& name) const {
        return lies(name).count("/Type /Page\n");
    }
};

} // namespace

TEST_F(Protokoll, report_isAPdfWithoutADisplay) {
    const Lauf lauf = rufe(u"report a.tdb u5 --pdf a.pdf --language fr"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_EQ(lauf.fehler, "");
    EXPECT_THAT(text(u"a.pdf"_s), StartsWith("%PDF-"));
    EXPECT_EQ(seiten(u"a.pdf"_s), 2);
}

TEST_F(Protokoll, settings_decideOnThePages) {
    schreibe(u"Index.ini"_s, "[Protokoll]\nArt=0\n[Briefkopf]\nName=Example\n");
    EXPECT_EQ(rufe(u"report a.tdb U5 --pdf a.pdf --ini Index.ini"_s).status, 0);
    EXPECT_EQ(seiten(u"a.pdf"_s), 1);
}

TEST_F(Protokoll, letterheadWithoutItsGraphic_isToldOf) {
    schreibe(u"b.svg"_s, "<svg><image href='a.png'/></svg>");
    for (const auto& [datei, meldung] :
         {std::pair{u"fehlt.png"_s, "fehlt.png"}, {u"a.Bee"_s, "a.Bee"}, {u"b.svg"_s, "PNG"}}) {
        schreibe(u"Index.ini"_s, "[Briefkopf]\nIkone=3\nDatei=" + pfad(datei).toUtf8() + '\n');
        const Lauf lauf = rufe(u"report a.tdb U5 --pdf a.pdf --ini Index.ini"_s);
        EXPECT_EQ(lauf.status, 0);
        EXPECT_THAT(lauf.fehler, HasSubstr(meldung));
        EXPECT_EQ(lauf.fehlerzahl(), 1);
        EXPECT_EQ(seiten(u"a.pdf"_s), 2);
    }
}

TEST_F(Protokoll, whatCannotBePrinted_leavesNoFile) {
    const Lauf fehlt = rufe(u"report a.tdb U7 --pdf a.pdf"_s);
    EXPECT_EQ(fehlt.status, 1);
    EXPECT_THAT(fehlt.fehler, HasSubstr("U7"));
    const Lauf ohneFlügel = rufe(u"report a.tdb U6 --pdf a.pdf"_s);
    EXPECT_EQ(ohneFlügel.status, 1);
    EXPECT_FALSE(QFile::exists(pfad(u"a.pdf"_s)));
    EXPECT_EQ(rufe(u"report a.tdb U5 --pdf nowhere/a.pdf"_s).status, 1);
}

TEST_F(Protokoll, several_standBehindASummaryOrInFilesOfTheirOwn) {
    schreibe(u"c.Bee"_s, lies(u"a.Bee"_s).replace("U5", "U/7"));
    ASSERT_EQ(rufe(u"import-bee c.Bee --into a.tdb"_s).status, 0);
    const Lauf alle = rufe(u"report a.tdb --all --pdf alle.pdf"_s);
    EXPECT_EQ(alle.status, 1); // one of them has nothing to print, which is said
    EXPECT_THAT(alle.fehler, AllOf(HasSubstr("U6"), Not(HasSubstr("U5"))));
    EXPECT_EQ(seiten(u"alle.pdf"_s), 1 + 2 + 2);
    EXPECT_EQ(rufe(u"report a.tdb U/7 U5 --pdf zwei.pdf"_s).status, 0);
    EXPECT_EQ(seiten(u"zwei.pdf"_s), 5);
    ASSERT_TRUE(QDir(pfad(u"."_s)).mkdir(u"einzeln"_s));
    EXPECT_EQ(rufe(u"report a.tdb U/7 U5 --each einzeln"_s).status, 0);
    EXPECT_EQ(seiten(u"einzeln/U_7.pdf"_s), 2);
    EXPECT_EQ(seiten(u"einzeln/U5.pdf"_s), 2);
}

TEST_F(Protokoll, languagePackOfTheSettings_givesTheWords) {
    schreibe(u"wends.txt"_s, "Tarvel language pack\nText.MerkmalsuntersuchungNr = Pruwowanje\n");
    for (const auto& [paket, meldet] : {std::pair{"wends.txt", false}, {"fehlt.txt", true}}) {
        schreibe(u"Index.ini"_s, "[Start]\nSprachpaket=" + pfad(QString::fromUtf8(paket)).toUtf8());
        const Lauf lauf = rufe(u"report a.tdb U5 --pdf a.pdf --ini Index.ini"_s);
        EXPECT_EQ(lauf.status, 0);
        EXPECT_EQ(lauf.fehler.find("fehlt.txt") != std::string::npos, meldet);
        EXPECT_EQ(text(u"a.pdf"_s).find("Pruwowanje U5") != std::string::npos, !meldet);
    }
}

TEST_F(Protokoll, appendix_hasThePicturesThatAreAtHand) {
    Texte texte{QString()};
    texte.SpracheDeutsch();
    Messreihe reihe;
    Flügelmessung messung;
    messung.bilddatei = pfad(u"scan.png"_s);
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        messung.punkte.setze(Messart::AlleMessungen, i, 40.F * static_cast<float>(i),
                             i % 2 != 0 ? 100.F : 160.F);
    }
    reihe.trageEin(1, {.CI = 2.5F, .HI = 1.0F, .DV = 0, .fehler = {}}, messung, {});
    Untersuchung untersuchung;
    untersuchung.setzeReihe(reihe);
    Kolonieangaben angaben;
    angaben.UNr = u"B1"_s;
    untersuchung.setzeAngaben(angaben);
    Ergebnistabelle(pfad(u"a.tdb"_s))
        .speichere(satzAus(untersuchung, {}, 1200, {2026, 1, 1},
                           {.texte = texte, .format = {}, .rassen = {u"Carnica"_s}}));
    schreibe(u"Index.ini"_s, "[Protokoll]\nAnhang=1\n");
    const auto bilder = [this] {
        EXPECT_EQ(rufe(u"report a.tdb B1 --pdf b.pdf --ini Index.ini"_s).status, 0);
        EXPECT_EQ(seiten(u"b.pdf"_s), 3);
        return lies(u"b.pdf"_s).count("/Subtype /Image");
    };
    const qsizetype ohne = bilder();
    QImage scan(400, 300, QImage::Format_Grayscale8);
    scan.fill(200);
    ASSERT_TRUE(scan.save(messung.bilddatei));
    EXPECT_EQ(bilder(), ohne + 1);
}
