#include "platform/dateiausgabe.h"

#include "support/testordner.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Dateiausgabe : public testing::Test {
protected:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(u"Völker 1.csv"_s);
#ifdef Q_OS_UNIX
    static unsigned rechte(const QString& pfad) {
        struct stat stand {};
        return ::stat(QFile::encodeName(pfad).constData(), &stand) == 0 ? stand.st_mode & 0777U : 0;
    }
#endif
    [[nodiscard]] QStringList dateien() const {
        return QDir(ordner_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
};

} // namespace

#ifdef Q_OS_UNIX
TEST_F(Dateiausgabe, rights_areThoseOfTheFormerFileOrTheHabit) {
    const mode_t gewohnt = ::umask(027);
    EXPECT_EQ(schreibeDatei(pfad_, "1"), std::nullopt);
    EXPECT_EQ(rechte(pfad_), 0640U);
    for (const unsigned bisher : {0600U, 0664U, 0444U}) {
        ASSERT_EQ(::chmod(QFile::encodeName(pfad_).constData(), bisher), 0);
        const bool darf = ::access(QFile::encodeName(pfad_).constData(), W_OK) == 0;
        EXPECT_EQ(schreibeDatei(pfad_, "2").has_value(), !darf);
        EXPECT_EQ(rechte(pfad_), bisher);
    }
    const QString eigen = ordner_.filePath(u"eigen"_s);
    EXPECT_EQ(schreibeDatei(eigen, "1", Dateirecht::NurEigner), std::nullopt);
    EXPECT_EQ(rechte(eigen), 0600U);
    ::umask(gewohnt);
}

TEST_F(Dateiausgabe, link_isFollowedAndStays) {
    QDir(ordner_.path()).mkdir(u"tief"_s);
    const QString zweiter = ordner_.filePath(u"zweiter"_s);
    ASSERT_TRUE(QFile::link(u"zweiter"_s, pfad_));
    ASSERT_TRUE(QFile::link(u"tief/ziel"_s, zweiter));
    for (const QByteArray& inhalt : {QByteArray("new"), QByteArray("newer")}) {
        EXPECT_EQ(schreibeDatei(pfad_, inhalt), std::nullopt);
        EXPECT_EQ(liesGanz(ordner_.filePath(u"tief/ziel"_s)), inhalt);
        EXPECT_TRUE(QFileInfo(pfad_).isSymLink() && QFileInfo(zweiter).isSymLink());
    }
    EXPECT_EQ(QDir(ordner_.filePath(u"tief"_s)).entryList(QDir::Files).size(), 1);
    // A second name of the file itself keeps what it had.
    const QByteArray ziel = QFile::encodeName(ordner_.filePath(u"tief/ziel"_s));
    ASSERT_EQ(::link(ziel.constData(), (ziel + ".alt").constData()), 0);
    EXPECT_EQ(schreibeDatei(pfad_, "newest"), std::nullopt);
    EXPECT_EQ(liesGanz(QFile::decodeName(ziel + ".alt")), "newer");
}

TEST_F(Dateiausgabe, whatIsNoFile_isRefusedAndStays) {
    const QString kreis = ordner_.filePath(u"Kreis"_s);
    const QString ordner = ordner_.filePath(u"Ordner"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pfad_).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(u"Kreis"_s, kreis));
    ASSERT_TRUE(QDir().mkdir(ordner));
    const QStringList vorher = dateien();
    for (const QString& ziel : {pfad_, kreis, ordner, u"/dev/null"_s, pfad_ + u"/darin"_s,
                                ordner_.filePath(QString(256, u'x'))}) {
        const auto grund = schreibeDatei(ziel, "x");
        EXPECT_TRUE(grund && !grund->isEmpty()) << qPrintable(ziel);
    }
    EXPECT_EQ(dateien(), vorher);
    EXPECT_EQ(schreibeHinein(u"/dev/null"_s, "x"), std::nullopt);
    EXPECT_TRUE(schreibeHinein(u"/dev/full"_s, "x"));
}

#endif

TEST_F(Dateiausgabe, longestName_isWritten) {
#ifdef Q_OS_WIN
    constexpr int Umlaute = 100; // below Wine a name has at most 255 bytes of UTF-8
#else
    constexpr int Umlaute = 127;
#endif
    for (const QString& name : {QString(255, u'x'), QString(Umlaute, u'ü')}) {
        EXPECT_EQ(schreibeDatei(ordner_.filePath(name), "1"), std::nullopt);
        EXPECT_EQ(schreibeDatei(ordner_.filePath(name), "2"), std::nullopt);
        EXPECT_EQ(liesGanz(ordner_.filePath(name)), "2");
    }
    EXPECT_EQ(dateien().size(), 2);
}

TEST_F(Dateiausgabe, draft_takesOnlyAPlaceThatIsFree) {
    {
        Rohfassung erste(pfad_);
        Rohfassung zweite(pfad_);
        ASSERT_TRUE(erste.angelegt() && zweite.angelegt());
        ASSERT_TRUE(erste.schreibe("first") && zweite.schreibe("second"));
        EXPECT_TRUE(erste.benenne());
        EXPECT_FALSE(zweite.benenne());
    }
    EXPECT_EQ(liesGanz(pfad_), "first");
    EXPECT_EQ(dateien().size(), 1);
}
