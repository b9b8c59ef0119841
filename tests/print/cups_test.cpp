// The program's way to a printer, against a print server that runs for this test alone.

#include "platform/cupsdrucker.h"
#include "print/cups_druckersystem.h"
#include "print/druckerwahl.h"
#include "print/protokolldruck.h"
#include "print/protokollprobe.h"
#include "print/windows_druckersystem.h"
#include "settings/einstellungen.h"

#include "support/druckserver.h"
#include "support/testdialoge.h"
#include "support/testdruckertabelle.h"

#include <QElapsedTimer>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

bool maleZweiSeiten(QPagedPaintDevice& papier) {
    QPainter painter(&papier);
    painter.fillRect(QRect(0, 0, 100, 100), Qt::black);
    papier.newPage();
    painter.fillRect(QRect(0, 0, 100, 100), Qt::black);
    return true;
}

void erwarteZweiSeitenA4(const QByteArray& pdf) {
    EXPECT_THAT(pdf.toStdString(), StartsWith("%PDF-"));
    EXPECT_THAT(pdf.trimmed().toStdString(), EndsWith("%%EOF"));
    EXPECT_EQ(pdf.count("/Type /Page\n"), 2);
    EXPECT_EQ(pdf.count("/MediaBox [0 0 595.000000 842.000000]"), 2);
}

struct CupsTest : testing::Test {
    inline static std::unique_ptr<Druckserver> server;
    CupsDruckersystem drucker;
    QTemporaryDir einstellungsordner;
    Einstellungen einstellungen{einstellungsordner.filePath(u"Index.ini"_s)};

    static void SetUpTestSuite() {
        if (!Druckserver::programm().isEmpty()) {
            server = std::make_unique<Druckserver>();
        }
    }
    static void TearDownTestSuite() { server.reset(); }

    void SetUp() override {
        if (!server) {
            GTEST_SKIP() << "cupsd is not installed (package cups-daemon): nothing was printed";
        }
        server->setzeWahl({});
        ASSERT_TRUE(server->bereit()) << server->protokoll().constData();
    }

    void TearDown() override {
        if (HasFailure() && server) {
            std::fputs(server->protokoll().constData(), stderr);
        }
    }
};

} // namespace

TEST_F(CupsTest, list_hasPrintersAndTheirSavedSets) {
    EXPECT_THAT(drucker.liste(), ElementsAre(u"Gesperrt"_s, u"Imkerei"_s, u"Lager"_s));
    EXPECT_EQ(drucker.standard(), u"Imkerei"_s);

    server->setzeWahl("Dest Lager/Duplex sides=two-sided-long-edge\n");
    EXPECT_THAT(drucker.liste(),
                ElementsAre(u"Gesperrt"_s, u"Imkerei"_s, u"Lager"_s, u"Lager/Duplex"_s));
}

TEST_F(CupsTest, default_isChangedForThePersonAndGivenBackToTheServer) {
    Druckerwahl wahl(drucker, einstellungen);
    EXPECT_TRUE(wahl.wähle(u"Lager"_s));
    EXPECT_EQ(drucker.standard(), u"Lager"_s);
    EXPECT_EQ(server->wahl(), "Default Lager\n");
    wahl.stelleHer();
    EXPECT_EQ(drucker.standard(), u"Imkerei"_s);
    EXPECT_THAT(server->wahl().toStdString(), Not(HasSubstr("Default")));
}

TEST_F(CupsTest, default_thatThePersonHadChosenComesBackWithItsOptions) {
    const QByteArray eigene = "Dest Imkerei sides=one-sided\n"
                              "Default Lager/Duplex sides=two-sided-long-edge\n";
    server->setzeWahl(eigene);
    Druckerwahl wahl(drucker, einstellungen);
    EXPECT_EQ(drucker.standard(), u"Lager/Duplex"_s);
    EXPECT_TRUE(wahl.wähle(u"Imkerei"_s));
    EXPECT_EQ(drucker.standard(), u"Imkerei"_s);
    wahl.stelleHer();
    EXPECT_EQ(server->wahl(), eigene);
}

TEST_F(CupsTest, default_ofAnUnknownPrinterChangesNothing) {
    EXPECT_TRUE(drucker.setzeStandard(u"Lager"_s));
    EXPECT_FALSE(drucker.setzeStandard(u"Keller"_s));
    EXPECT_EQ(drucker.standard(), u"Lager"_s);
}

TEST_F(CupsTest, job_arrivesAtThePrinterAsItWasPainted) {
    server->setzeWahl("Dest Lager/Duplex sides=two-sided-long-edge copies=9\n");
    ASSERT_TRUE(
        drucker.drucke({u"Lager/Duplex"_s, u"Protokoll 7: Königin 12 'A'"_s, 3}, maleZweiSeiten));
    const auto ausdruck = server->hole("Lager");
    ASSERT_TRUE(ausdruck);
    erwarteZweiSeitenA4(ausdruck->pdf);
    EXPECT_EQ(ausdruck->titel, u"Protokoll 7: Königin 12 'A'"_s);
    EXPECT_THAT(ausdruck->optionen.toStdString(), HasSubstr("copies=3"));
    EXPECT_THAT(ausdruck->optionen.toStdString(), Not(HasSubstr("copies=9")));
    EXPECT_THAT(ausdruck->optionen.toStdString(), HasSubstr("media=A4"));
    EXPECT_THAT(ausdruck->optionen.toStdString(), HasSubstr("sides=two-sided-long-edge"));
}

TEST_F(CupsTest, report_arrivesWithBothPagesAndItsText) {
    Protokollprobe probe;
    for (const int klasse : {18, 19, 21}) {
        probe.miss(klasse);
    }
    probe.einstellungen.art = Protokollart::CubitalindexUndKorrelation;
    const Protokolldaten daten = probe.daten();
    ASSERT_TRUE(drucker.drucke({u"Imkerei"_s, daten.titel}, [&](QPagedPaintDevice& papier) {
        return Druckstart(papier, daten, Briefkopfgrafik());
    }));
    const auto ausdruck = server->hole("Imkerei");
    ASSERT_TRUE(ausdruck);
    erwarteZweiSeitenA4(ausdruck->pdf);
    EXPECT_EQ(ausdruck->titel, daten.titel);
    const QString leser = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (leser.isEmpty()) {
        GTEST_SKIP() << "pdftotext is not installed (package poppler-utils): no text was read";
    }
    QProcess lesen;
    lesen.start(leser, {u"-layout"_s, u"-"_s, u"-"_s});
    lesen.write(ausdruck->pdf);
    lesen.closeWriteChannel();
    ASSERT_TRUE(lesen.waitForFinished());
    const QString text = QString::fromUtf8(lesen.readAllStandardOutput());
    for (const QString& erwartet : {daten.titel, u"Huber"_s, u"Lindenvolk"_s, u"Unterschrift"_s}) {
        EXPECT_TRUE(text.contains(erwartet)) << qPrintable(erwartet);
    }
}

TEST_F(CupsTest, job_thatNoPrinterTakesIsReported) {
    EXPECT_FALSE(drucker.drucke({u"Gesperrt"_s, u"P"_s}, maleZweiSeiten));
    EXPECT_FALSE(drucker.drucke({u"Keller"_s, u"P"_s}, maleZweiSeiten));
    EXPECT_FALSE(drucker.drucke({u"Imkerei"_s, u"halb"_s}, [](QPagedPaintDevice& papier) {
        maleZweiSeiten(papier);
        return false;
    }));
    // The half painted job must not have gone out: the next sheet is that of the next job.
    ASSERT_TRUE(drucker.drucke({u"Imkerei"_s, u"ganz"_s}, maleZweiSeiten));
    const auto ausdruck = server->hole("Imkerei");
    ASSERT_TRUE(ausdruck);
    EXPECT_EQ(ausdruck->titel, u"ganz"_s);
}

TEST_F(CupsTest, job_thatDoesNotFitOnTheDriveIsReportedAndLeavesNothing) {
    const QTemporaryDir ordner;
    const QByteArray bisher = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(ordner.path()));
    (void)std::signal(SIGXFSZ, SIG_IGN);
    rlimit frei{};
    getrlimit(RLIMIT_FSIZE, &frei);
    const rlimit voll{300, frei.rlim_max};
    setrlimit(RLIMIT_FSIZE, &voll);
    EXPECT_FALSE(drucker.drucke({u"Imkerei"_s, u"halb"_s}, maleZweiSeiten));
    setrlimit(RLIMIT_FSIZE, &frei);
    EXPECT_TRUE(drucker.drucke({u"Imkerei"_s, u"ganz"_s}, maleZweiSeiten));
    EXPECT_TRUE(QDir(ordner.path()).isEmpty());
    qputenv("TMPDIR", bisher);
    const auto ausdruck = server->hole("Imkerei");
    ASSERT_TRUE(ausdruck);
    EXPECT_EQ(ausdruck->titel, u"ganz"_s);
}

// The way Windows prints, through the toolkit's own printer, with the table's Windows beneath.
TEST_F(CupsTest, printerObject_paintsOnThePrinterThatWasChosen) {
    TestDruckertabelle tabelle;
    tabelle.profil["windows"] = {{"Device", "Imkerei,winspool,LPT1:"}};
    tabelle.profil["PrinterPorts"] = {{"Imkerei", "winspool,LPT1:"}, {"Lager", "winspool,Ne01:"}};
    TestDialoge dialoge;
    const Texte texte{QString()};
    WindowsDruckersystem windows(tabelle, dialoge, texte);
    EXPECT_THAT(windows.liste(), ElementsAre(u"Imkerei"_s, u"Lager"_s));
    EXPECT_EQ(windows.standard(), u"Imkerei"_s);

    Druckerwahl wahl(windows, einstellungen);
    ASSERT_TRUE(wahl.wähle(u"Lager"_s));
    ASSERT_TRUE(windows.drucke({QString(), u"Protokoll 8"_s, 2}, maleZweiSeiten));
    const auto ausdruck = server->hole("Lager");
    ASSERT_TRUE(ausdruck);
    erwarteZweiSeitenA4(ausdruck->pdf);
    EXPECT_EQ(ausdruck->titel, u"Protokoll 8"_s);
    EXPECT_THAT(ausdruck->optionen.toStdString(), HasSubstr("copies=2"));

    wahl.stelleHer();
    EXPECT_EQ(windows.standard(), u"Imkerei"_s);
    EXPECT_FALSE(windows.drucke({u"Keller"_s, u"P"_s}, maleZweiSeiten));
}

TEST(CupsOhneAntwort, server_thatKeepsSilentIsNotWaitedForLong) {
    QTcpServer stumm; // takes connections and never says a word
    ASSERT_TRUE(stumm.listen(QHostAddress::LocalHost));
    const QByteArray vorher = qgetenv("CUPS_SERVER");
    qputenv("CUPS_SERVER", "127.0.0.1:" + QByteArray::number(stumm.serverPort()));
    setzeCupsFrist(200);
    CupsDruckersystem drucker;
    QElapsedTimer uhr;
    uhr.start();
    std::future<Druckerauskunft> frage = drucker.frage();
    const Druckerauskunft auskunft = frage.get();
    EXPECT_FALSE(auskunft.antwortet);
    EXPECT_TRUE(auskunft.liste.isEmpty());
    EXPECT_EQ(drucker.frageStandard().get(), std::nullopt);
    EXPECT_LT(uhr.elapsed(), 20'000); // the library's own limit is a minute a question
    stumm.close();
    setzeCupsFrist(3000);
    EXPECT_TRUE(drucker.frage().get().antwortet); // nobody there is no silence
    qputenv("CUPS_SERVER", vorher);
}
