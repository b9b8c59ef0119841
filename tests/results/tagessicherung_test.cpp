#include "results/browserprobe.h"
#include "results/tagessicherung.h"

#include <QCoreApplication>
#include <QDir>

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

const QDate Heute(2026, 11, 22);

class Sicherungstest : public Browserprobe {
protected:
    std::atomic<bool> aufhören_ = false;

    void sichere(const QDate& tag) const { sichereTag(pfad_, tag, aufhören_); }
    [[nodiscard]] QString name(const QDate& tag) const {
        return sicherungsordner(pfad_) + u"/Völker 100% 'neu' "_s + tag.toString(Qt::ISODate) +
               u".tdb"_s;
    }
    [[nodiscard]] QStringList ordnerinhalt() const {
        return QDir(sicherungsordner(pfad_))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
    /// A file that says it was changed later than every other.
    static void setzeZeit(const QString& pfad, const QDateTime& zeit) {
        QFile datei(pfad);
        ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
        ASSERT_TRUE(datei.setFileTime(zeit, QFileDevice::FileModificationTime));
    }
};

} // namespace

TEST_F(Sicherungstest, oneADay_afterAChange_neverReplaced) {
    sichere(Heute);
    EXPECT_EQ(ordnerinhalt(), QStringList()) << "an empty file is not worth a copy";
    speichere(vollerSatz(u"A"_s));
    sichere(Heute);
    EXPECT_EQ(ordnerinhalt(), QStringList(u"Völker 100% 'neu' 2026-11-22.tdb"_s));
    EXPECT_TRUE(*Ergebnistabelle(name(Heute)).lade(u"A"_s) == *tabelle().lade(u"A"_s));
    const QByteArray kopie = bytes(name(Heute));

    speichere(vollerSatz(u"B"_s));
    setzeZeit(pfad_, QDateTime::currentDateTime().addSecs(60));
    sichere(Heute);
    EXPECT_EQ(bytes(name(Heute)), kopie);
    sichere(Heute.addDays(1));
    EXPECT_EQ(sicherungen(pfad_).size(), 2U);
    EXPECT_EQ(sicherungen(pfad_).front().datum, Heute.addDays(1));
    setzeZeit(pfad_, QDateTime::currentDateTime().addSecs(-60));
    sichere(Heute.addDays(2));
    EXPECT_EQ(sicherungen(pfad_).size(), 2U) << "nothing was changed since";
}

TEST_F(Sicherungstest, keepsTheLastTen_andOneAMonth_andWhatIsNotItsOwn) {
    speichere(vollerSatz(u"A"_s));
    QDir().mkpath(sicherungsordner(pfad_));
    const QStringList fremde{u"Völker 100% 'neu' 2020-02-30.tdb"_s,
                             u"Völker 100% 'neu' 2020-02-03 alt.tdb"_s, u"anderer 2020-02-03.tdb"_s,
                             u"Völker 100% 'neu' 2020-2-03.tdb"_s};
    for (const QString& fremd : fremde) {
        schreibe(sicherungsordner(pfad_) + u'/' + fremd, "not ours");
    }
    for (int i = 1; i < 100; ++i) {
        schreibe(name(Heute.addDays(-i)), "older");
        setzeZeit(name(Heute.addDays(-i)), QDateTime(Heute.addDays(-i), QTime(12, 0)).addYears(-5));
    }
    sichere(Heute);
    QStringList tage;
    for (const Sicherung& s : sicherungen(pfad_)) {
        tage << s.datum.toString(u"MMdd"_s);
    }
    EXPECT_EQ(tage.join(u' '),
              u"1122 1121 1120 1119 1118 1117 1116 1115 1114 1113 1031 0930 0831"_s);
    const QString bearbeitet = name(QDate(2026, 11, 5));
    schreibe(bearbeitet, "somebody works in it");
    setzeZeit(bearbeitet, QDateTime(Heute, QTime(12, 0)).addYears(-2).addDays(720));
    setzeZeit(pfad_, QDateTime::currentDateTime().addYears(1));
    sichere(Heute.addDays(1));
    EXPECT_TRUE(QFileInfo::exists(bearbeitet));
    for (const QString& fremd : fremde) {
        EXPECT_TRUE(ordnerinhalt().contains(fremd)) << fremd.toStdString();
    }
}

TEST_F(Sicherungstest, givenUp_orRefused_itLeavesNothingBehind) {
    speichere(vollerSatz(u"A"_s));
    aufhören_ = true;
    sichere(Heute);
    EXPECT_EQ(ordnerinhalt(), QStringList());
    aufhören_ = false;
    {
        QFile groß(pfad_); // as sparse as it is, it counts
        ASSERT_TRUE(groß.open(QIODevice::ReadWrite));
        const qint64 bisher = groß.size();
        ASSERT_TRUE(groß.resize(GrößteGesicherte + 1));
        EXPECT_EQ(grundVon([this] { sichere(Heute); }), Datenbankgrund::ZuGroßZumSichern);
        ASSERT_TRUE(groß.resize(bisher));
    }
    EXPECT_EQ(ordnerinhalt(), QStringList());
    QDir().rmdir(sicherungsordner(pfad_));
    schreibe(sicherungsordner(pfad_), "a file in place of the folder");
    EXPECT_EQ(grundVon([this] { sichere(Heute); }), Datenbankgrund::NichtAnlegbar);
}

TEST_F(Sicherungstest, failureIsToldOnce_andTheOwnerMayGoAtAnyTime) {
    speichere(vollerSatz(u"A"_s));
    schreibe(sicherungsordner(pfad_), "a file in place of the folder");
    int gemeldet = 0;
    {
        Tagessicherung sicherung([&](const Datenbankfehler& fehler) {
            EXPECT_EQ(fehler.grund(), Datenbankgrund::NichtAnlegbar);
            ++gemeldet;
        });
        for (int i = 0; i < 3; ++i) {
            sicherung.prüfe(pfad_, Heute);
            sicherung.warte();
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(gemeldet, 1);
        sicherung.prüfe(pfad_, Heute);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(gemeldet, 1);
}

TEST_F(Sicherungstest, savesGoOnWhileItIsMade) {
    fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 2000) "
          u"INSERT INTO Ergebnisse(U_NR, CI) SELECT i, hex(zeroblob(5000)) FROM z"_s);
    Tagessicherung sicherung([](const Datenbankfehler& fehler) { FAIL() << fehler.what(); });
    sicherung.prüfe(pfad_, Heute);
    for (int i = 0; i < 20; ++i) {
        Ergebnistabelle(pfad_).speichere(vollerSatz(u"neu%1"_s.arg(i)));
    }
    sicherung.warte();
    ASSERT_EQ(sicherungen(pfad_).size(), 1U);
    EXPECT_GE(Ergebnistabelle(name(Heute)).anzahl(), 2000);
    EXPECT_EQ(tabelle().anzahl(), 2020);
}
