#include "platform/instanz.h"

#include "support/testordner.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

class InstanzTest : public testing::Test {
protected:
    Testordner ordner_;
};

TEST_F(InstanzTest, secondWhileFirstLives_isNotFirst) {
    {
        const Instanz eine(ordner_.path());
        EXPECT_TRUE(eine.erste());
        EXPECT_FALSE(Instanz(ordner_.path()).erste());
        EXPECT_FALSE(Instanz(ordner_.path()).erste());
        const QTemporaryDir anderer;
        EXPECT_TRUE(Instanz(anderer.path()).erste());
    }
    EXPECT_TRUE(Instanz(ordner_.path()).erste());
}

TEST_F(InstanzTest, lockOfCrashedProgram_doesNotCount) {
    QProcess prozess;
    prozess.start(QCoreApplication::applicationFilePath(), {u"--gtest_list_tests"_s});
    ASSERT_TRUE(prozess.waitForStarted());
    const QByteArray pid = QByteArray::number(prozess.processId());
    ASSERT_TRUE(prozess.waitForFinished());
    ordner_.schreibe(u"Index.lock"_s,
                     pid + "\nplatform_tests\n" + QSysInfo::machineHostName().toUtf8() + '\n');
    EXPECT_TRUE(Instanz(ordner_.path()).erste());
}

TEST_F(InstanzTest, lockFileWithoutContents_doesNotCount) {
    ordner_.schreibe(u"Index.lock"_s);
    EXPECT_TRUE(Instanz(ordner_.path()).erste());
}

TEST_F(InstanzTest, folderThatCannotBeWritten_isLockedElsewhere) {
    const QString ordner = ordner_.filePath(u"none"_s);
    const Instanz eine(ordner);
    EXPECT_TRUE(eine.erste());
    EXPECT_FALSE(QDir(ordner).exists());
    EXPECT_FALSE(Instanz(ordner).erste());
}

} // namespace
} // namespace tarvel
