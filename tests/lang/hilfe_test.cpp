#include "lang/hilfe.h"

#include "support/testdialoge.h"
#include "support/testordner.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

/// A program's folder with a page of the guide in French.
struct Hilfetest : testing::Test {
    Testordner ordner;
    QString seite = ordner.filePath(u"guide/fr/messen.html"_s);

    void SetUp() override {
        ASSERT_TRUE(QDir(ordner.path()).mkpath(u"guide/fr"_s));
        lege(seite);
    }
};

/// Shows pages, but has no viewer for the help file.
class OhneBetrachter final : public Shell {
public:
    QStringList geöffnet;
    bool openDocument(const QString& path) override {
        geöffnet << path;
        return path.endsWith(u".html"_s);
    }
    bool runProgram(const QString&, const QString&) override { return false; }
};

} // namespace

TEST_F(Hilfetest, page_isFoundInTheFirstFolderThatHasItInTheLanguage) {
    const QStringList folders{u"/fehlt"_s, ordner.path()};
    EXPECT_EQ(hilfeseite(folders, Sprache::Französisch, u"messen"_s),
              QFileInfo(seite).canonicalFilePath());
    EXPECT_EQ(hilfeseite(folders, Sprache::Deutsch, u"messen"_s), QString());
    EXPECT_EQ(hilfeseite(folders, Sprache::Französisch, u"fehlt"_s), QString());
}

TEST_F(Hilfetest, presence_isAskedOfTheDriveOnceInEachLanguage) {
    ASSERT_TRUE(QFile::rename(seite, ordner.filePath(u"guide/fr/index.html"_s)));
    Texte texte(ordner.path());
    texte.SpracheFranzösisch();
    EXPECT_TRUE(hilfeVorhanden(texte));
    ASSERT_TRUE(QDir(ordner.filePath(u"guide"_s)).removeRecursively());
    EXPECT_TRUE(hilfeVorhanden(texte)); // not looked for again
    texte.SpracheDeutsch();
    EXPECT_FALSE(hilfeVorhanden(texte));
}

TEST_F(Hilfetest, withoutAViewerForTheHelpFile_thePageOpens) {
    Texte texte(ordner.path());
    texte.SpracheFranzösisch();
    OhneBetrachter shell;
    EXPECT_TRUE(öffneHilfe(texte, shell, u"messen"_s));
    EXPECT_THAT(shell.geöffnet,
                ElementsAre(texte.HilfeDatei(), QFileInfo(seite).canonicalFilePath()));
    EXPECT_FALSE(öffneHilfe(texte, shell, u"fehlt"_s));
}

TEST_F(Hilfetest, helpFileThatIsShown_isAll) {
    Texte texte(ordner.path());
    texte.SpracheFranzösisch();
    TestShell shell;
    EXPECT_TRUE(öffneHilfe(texte, shell, u"messen"_s));
    EXPECT_THAT(shell.geöffnet, ElementsAre(texte.HilfeDatei()));
}
