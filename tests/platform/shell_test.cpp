#include "platform/system_shell.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

TEST(SystemShell, missingFileOrProgram_isReported) {
    const QTemporaryDir ordner;
    SystemShell shell;
    EXPECT_FALSE(shell.openDocument(ordner.filePath(u"none.png"_s)));
    EXPECT_FALSE(shell.runProgram({}, ordner.path()));
    EXPECT_FALSE(shell.runProgram(ordner.filePath(u"none"_s), ordner.path()));
}

} // namespace
} // namespace tarvel
