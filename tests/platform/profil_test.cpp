#include "platform/profil.h"

#include "platform/codepage.h"
#include "support/testordner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <gtest/gtest.h>

#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QByteArray bytes(const QString& text) {
    return nachCodepage1252(text);
}

class ProfilTest : public testing::Test {
protected:
    QString pfad(const QString& name = u"Index.ini"_s) const { return ordner_.filePath(name); }

    void schreibe(const QByteArray& inhalt, const QString& name = u"Index.ini"_s) const {
        ordner_.schreibe(name, inhalt);
    }
    QByteArray lies(const QString& name = u"Index.ini"_s) const { return ordner_.lies(name); }
    QByteArray text(QByteArrayView section, QByteArrayView key, int size = 256) const {
        return GetPrivateProfileStringA(section, key, "DEF", size, pfad());
    }

    Testordner ordner_;
};

struct Lesefall {
    QStringView datei;
    QStringView sektion;
    QStringView schlüssel;
    QStringView wert;
};

TEST_F(ProfilTest, readString_followsTheRulesOfProfileFiles) {
    const Lesefall faelle[] = {
        // names
        {u"[Briefkopf]\r\nStraße=Weg 1\r\n", u"BRIEFKOPF", u"STRAßE", u"Weg 1"},
        {u"[ÄÖÜ]\r\nŠ=1\r\n[Ÿ]\r\na=3\r\n", u"äöü", u"š", u"1"},
        {u"[Ÿ]\r\na=3\r\n", u"ÿ", u"a", u"3"},
        {u"[a]\r\nÄrmel=1\r\n", u"a", u"Armel", u"DEF"},
        {u"[a]\r\nDefault Zoom=100\r\n", u"a", u"DefaultZoom", u"DEF"},
        {u"[a]\r\nDV ><M-=-1000\r\n", u"a", u"dv ><m-", u"-1000"},
        // blanks
        {u"  [ a ]  \r\n\tk\t=\tv  w\t\r\n", u" a ", u"k", u"v  w"},
        {u"[a]\r\nk=\u00A0v\u00A0\r\n", u"a", u"k", u"\u00A0v\u00A0"},
        {u"[a]\r\nk=v\r\n", u"a", u"\tk", u"DEF"},
        // quotes
        {u"[a]\r\nk=\" v \"\r\n", u"a", u"k", u" v "},
        {u"[a]\r\nk=\"\"v\"\"\r\n", u"a", u"k", u"\"v\""},
        {u"[a]\r\nk='v\"\r\n", u"a", u"k", u"'v\""},
        {u"[a]\r\nk=\"a\"b\r\n", u"a", u"k", u"\"a\"b"},
        {u"[a]\r\nk='\r\n", u"a", u"k", u"'"},
        // empty, missing, repeated
        {u"[a]\r\nk=\r\nk=v\r\n", u"a", u"k", u""},
        {u"[a]\r\nk\r\n", u"a", u"k", u"DEF"},
        {u"[a]\r\nk=a=b\r\n", u"a", u"k", u"a=b"},
        {u"[a]\r\n=v\r\n", u"a", u"", u"v"},
        {u"[a]\r\nk=1\r\nK=2\r\n", u"a", u"k", u"1"},
        {u"[a]\r\nx=1\r\n[a]\r\nk=v\r\n", u"a", u"k", u"DEF"},
        {u"k=v\r\n[a]\r\n", u"a", u"k", u"DEF"},
        // comments
        {u"[a]\r\n ;k=v\r\n", u"a", u";k", u"DEF"},
        {u"[a]\r\nk=v ; w\r\n", u"a", u"k", u"v ; w"},
        {u"[a]\r\n;[b]\r\nk=v\r\n", u"a", u"k", u"v"},
        // headers
        {u"[a\r\nk=v\r\n", u"a", u"k", u"v"},
        {u"[a]b]\r\nk=v\r\n", u"a", u"k", u"v"},
        {u"[[a]]\r\nk=v\r\n", u"[a]", u"k", u"DEF"},
        {u"[a];c\r\nk=v\r\n", u"a", u"k", u"v"},
        // line ends
        {u"[a]\nk=v\n", u"a", u"k", u"v"},
        {u"[a]\rk=v\r", u"a", u"k", u"v"},
        {u"[a]\n\rx=1\n\r\n\rk=v", u"a", u"k", u"v"},
    };
    for (const Lesefall& fall : faelle) {
        schreibe(bytes(fall.datei.toString()));
        const QByteArray sektion = bytes(fall.sektion.toString());
        const QByteArray schlüssel = bytes(fall.schlüssel.toString());
        EXPECT_EQ(text(sektion, schlüssel), bytes(fall.wert.toString()))
            << fall.datei.toString().toStdString();
    }
}

TEST_F(ProfilTest, readString_isCutToTheBuffer) {
    schreibe("[a]\r\nk=\"abcdef\"\r\n");
    EXPECT_EQ(text("a", "k", 8), "abcdef");
    EXPECT_EQ(text("a", "k", 6), "abcde");
    EXPECT_EQ(text("a", "k", 1), "");
    EXPECT_EQ(text("a", "k", 0), "");
    EXPECT_EQ(text("a", "k", -1), "");
    EXPECT_EQ(GetPrivateProfileStringA("a", "none", "default", 3, pfad()), "de");
}

TEST_F(ProfilTest, default_losesTrailingBlanksOnly) {
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "  DEF  ", 256, pfad()), "  DEF");
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "DEF\t", 256, pfad()), "DEF\t");
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", std::nullopt, 256, pfad()), "");
}

TEST_F(ProfilTest, enumeration_listsNamesInFileOrder) {
    schreibe("[s1]\r\nn1=v\r\n;rem\r\nname3\r\nn2=w\r\n[s2]\r\n[s1]\r\nz=1\r\n");
    const auto liste = [this](std::optional<QByteArrayView> sektion, int size) {
        return GetPrivateProfileStringA(sektion, std::nullopt, "DEF", size, pfad());
    };
    EXPECT_EQ(liste(std::nullopt, 10), QByteArray("s1\0s2\0s1\0", 9));
    EXPECT_EQ(liste(std::nullopt, 9), QByteArray("s1\0s2\0s", 7));
    EXPECT_EQ(liste("S1", 256), QByteArray("n1\0n2\0", 6));
    EXPECT_EQ(liste("s1", 1), "");
    EXPECT_EQ(liste("s2", 256), "DEF");
    EXPECT_EQ(liste("none", 256), "DEF");
}

TEST_F(ProfilTest, readInt_takesTheLeadingDecimalNumber) {
    const std::pair<const char*, int> faelle[] = {
        {"12", 12},
        {"-1", -1},
        {"+5", 5},
        {"7abc", 7},
        {"3.9", 3},
        {"-3.9", -3},
        {"1e3", 1},
        {"1 2", 1},
        {"00012", 12},
        {"\"12\"", 12},
        {"abc", 0},
        {"False", 0},
        {"True", 0},
        {"", 0},
        {"- 5", 0},
        {"--5", 0},
        {"\xB2", 0},
        {"70000", 70000},
        {"2147483648", std::numeric_limits<int>::min()},
        {"4294967297", 1},
    };
    for (const auto& [wert, zahl] : faelle) {
        schreibe("[i]\r\nk=" + QByteArray(wert) + "\r\n");
        EXPECT_EQ(GetPrivateProfileIntA("i", "k", 25, pfad()), zahl) << wert;
    }
    schreibe("[i]\r\nnoeq\r\n");
    EXPECT_EQ(GetPrivateProfileIntA("i", "noeq", 25, pfad()), 25);
    EXPECT_EQ(GetPrivateProfileIntA("zz", "k", -1, pfad()), -1);
    EXPECT_EQ(GetPrivateProfileIntA("i", "k", 25, pfad(u"none.ini"_s)), 25);
}

struct Schreibfall {
    const char* vorher;
    const char* sektion;
    const char* schlüssel; // nullptr removes the section
    const char* wert;      // nullptr removes the key
    const char* nachher;
};

TEST_F(ProfilTest, write_changesOnlyItsOwnLine) {
    const char* kommentiert = "; head\r\n\r\n[a]\r\n; about k\r\nk=1\r\nm=2\r\n\r\n; tail\r\n\r\n"
                              "[b]\r\n\r\nx = 5 \r\n  y=6\r\nnoeq\r\n; end\r\n";
    const Schreibfall faelle[] = {
        {"", "A", "z", "1", "[A]\r\nz=1\r\n"},
        {"[\xC4]\r\nStra\xDF"
         "e=1\r\n",
         "\xE4",
         "STRA\xDF"
         "E",
         "2",
         "[\xC4]\r\nStra\xDF"
         "e=2\r\n"},
        {"[a]\r\nk=1\r\n\r\n[b]\r\n", "a", "n", "9", "[a]\r\nk=1\r\nn=9\r\n\r\n[b]\r\n"},
        {"[a]\r\nk=1\r\n", " b ", "x", "2", "[a]\r\nk=1\r\n[b]\r\nx=2\r\n"},
        {"[a]\r\nk=1", "a", "K", "2", "[a]\r\nk=2\r\n"},
        {"[a]\r\nk=1", "a", "x", "2", "[a]\r\nk=1\r\nx=2\r\n"},
        {"[a]\nk=1\n", "a", "k", "2", "[a]\nk=2\n"},
        {"[a]\nk=1\n", "b", "x", "2", "[a]\nk=1\n[b]\r\nx=2\r\n"},
        {"[a]\r\nx=1\r\n[b]\r\n[a]\r\nk=3\r\n", "a", "k", "9",
         "[a]\r\nx=1\r\nk=9\r\n[b]\r\n[a]\r\nk=3\r\n"},
        {kommentiert, "b", "x", "9",
         "; head\r\n\r\n[a]\r\n; about k\r\nk=1\r\nm=2\r\n\r\n; tail\r\n\r\n"
         "[b]\r\n\r\nx=9\r\n  y=6\r\nnoeq\r\n; end\r\n"},
        {kommentiert, "b", "noeq", "9",
         "; head\r\n\r\n[a]\r\n; about k\r\nk=1\r\nm=2\r\n\r\n; tail\r\n\r\n"
         "[b]\r\n\r\nx = 5 \r\n  y=6\r\nnoeq\r\nnoeq=9\r\n; end\r\n"},
        {kommentiert, "a", "m", nullptr,
         "; head\r\n\r\n[a]\r\n; about k\r\nk=1\r\n\r\n; tail\r\n\r\n"
         "[b]\r\n\r\nx = 5 \r\n  y=6\r\nnoeq\r\n; end\r\n"},
        {kommentiert, "A", nullptr, nullptr,
         "; head\r\n\r\n; about k\r\n; tail\r\n[b]\r\n\r\nx = 5 \r\n  y=6\r\nnoeq\r\n; end\r\n"},
        {"[a]\r\nk=1\r\nk=2\r\n", "a", "k", nullptr, "[a]\r\nk=2\r\n"},
        {"[a]\r\n;k=1\r\n", "a", ";k", nullptr, "[a]\r\n;k=1\r\n"},
        {"[a]\r\nk=1\r\n", "a", "k", " a ; [b] ", "[a]\r\nk= a ; [b] \r\n"},
        {"\xEF\xBB\xBF[a]\r\nk=1\r\n", "a", "k", "2", "\xEF\xBB\xBF[a]\r\nk=1\r\n[a]\r\nk=2\r\n"},
        {"[a]\rk=1\r", "b", "x", "2", "[a]\rk=1\r[b]\r\nx=2\r\n"},
        {"[a]\r\nk=1\r\n", "a", " k ", "2", "[a]\r\nk=2\r\n"},
        // nothing to remove
        {"[a]\r\nk=1\r\n", "b", "k", nullptr, "[a]\r\nk=1\r\n"},
        {"[a]\r\nk=1\r\n", "b", nullptr, nullptr, "[a]\r\nk=1\r\n"},
        // a value cannot bring lines of its own
        {"[a]\r\nk=1\r\n", "a", "k", "v\r\n[b]\r\nw=1", "[a]\r\nk=v\r\n"},
    };
    for (const Schreibfall& fall : faelle) {
        schreibe(fall.vorher);
        const auto oder = [](const char* text) {
            return text != nullptr ? std::optional(QByteArrayView(text)) : std::nullopt;
        };
        EXPECT_TRUE(WritePrivateProfileStringA(fall.sektion, oder(fall.schlüssel), oder(fall.wert),
                                               pfad()));
        EXPECT_EQ(lies(), QByteArray(fall.nachher));
    }
}

TEST_F(ProfilTest, writeNameThatIsNoName_leavesFileAlone) {
    schreibe("[a]\r\nk=1\r\n");
    const std::pair<QByteArray, QByteArray> namen[] = {
        {"a", "x=y"},
        {"a", "[x"},
        {"a", "x\ny"},
        {"a", "\tx"},
        {"x]y", "k"},
        {"x\ry", "k"},
        {"a", QByteArray("x\0y", 3)},
    };
    for (const auto& [sektion, schlüssel] : namen)
        EXPECT_FALSE(WritePrivateProfileStringA(sektion, schlüssel, "2", pfad()));
    EXPECT_EQ(lies(), "[a]\r\nk=1\r\n");
}

TEST_F(ProfilTest, linesWithNul_stayAsTheyAre) {
    const QByteArray inhalt("Data \0 before\r\n[a]\r\nk=1\0;2\r\n\0", 29);
    schreibe(inhalt);
    EXPECT_EQ(text("a", "k"), "1");
    EXPECT_TRUE(WritePrivateProfileStringA("b", "x", "2", pfad()));
    EXPECT_EQ(lies(), inhalt + "\r\n[b]\r\nx=2\r\n");
}

TEST_F(ProfilTest, severalChanges_reachTheFileTogether) {
    schreibe("[a]\r\nk=1\r\n");
    Profil profil(pfad());
    EXPECT_TRUE(profil.setze("a", "k", "2"));
    EXPECT_TRUE(profil.setze("a", "l", "3"));
    EXPECT_EQ(profil.wert("a", "l"), "3");
    EXPECT_EQ(lies(), "[a]\r\nk=1\r\n");
    EXPECT_TRUE(profil.sichere());
    EXPECT_EQ(lies(), "[a]\r\nk=2\r\nl=3\r\n");
}

TEST_F(ProfilTest, writeNowhere_failsAndLeavesNothingBehind) {
    schreibe("file", u"Datei"_s);
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", pfad(u"Datei/Index.ini"_s)));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", pfad(u"none/Index.ini"_s)));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", QString()));
    ASSERT_TRUE(QDir(ordner_.path()).mkdir(u"Ordner"_s));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", pfad(u"Ordner"_s)));
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);
}

TEST_F(ProfilTest, fileThatCannotBeRead_isNeverReplaced) {
    for (const QByteArray& utf16 :
         {QByteArray("\xFF\xFE[\0a\0]\0\r", 9), QByteArray("\xFE\xFF\0[\0a\0]", 8)}) {
        schreibe(utf16);
        EXPECT_EQ(text("a", "k"), "DEF");
        EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", pfad()));
        EXPECT_EQ(lies(), utf16);
    }

    QFile gross(pfad());
    ASSERT_TRUE(gross.resize(Profil::GrößteDatei + 1));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "1", pfad()));
    EXPECT_EQ(gross.size(), Profil::GrößteDatei + 1);
}

TEST_F(ProfilTest, utf16_isReadAndWrittenBackWithEveryCharacter) {
    const auto datei = [](QStringView text) {
        QStringEncoder kodierer(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        return QByteArray(kodierer(text));
    };
    schreibe(datei(u"[Straße]\r\nÖrt=Łódź \x81 €\r\n; 𝄞 bleibt\r\nk=1\r\n"));
    EXPECT_EQ(text("STRA\xDF"
                   "E",
                   "\xF6rt"),
              "?\xF3"
              "d? ? \x80");
    EXPECT_EQ(GetPrivateProfileIntA("Stra\xDF"
                                    "e",
                                    "k", -1, pfad()),
              1);
    EXPECT_TRUE(WritePrivateProfileStringA("Stra\xDF"
                                           "e",
                                           "k", "\x81 \x80", pfad()));
    EXPECT_EQ(lies(), datei(u"[Straße]\r\nÖrt=Łódź \x81 €\r\n; 𝄞 bleibt\r\nk=\x81 €\r\n"));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k\x81", "1", pfad()));
}

TEST_F(ProfilTest, letterBeyondTheCodePage_turnsTheFileIntoUtf16) {
    schreibe("; \x81 gr\xFC\xDF\r\n[a]\r\nk=\x80\r\n");
    Profil profil(pfad());
    ASSERT_TRUE(profil.setzeText("a", "k2", u"größer €"_s));
    ASSERT_TRUE(profil.sichere());
    EXPECT_FALSE(lies().startsWith("\xFF\xFE")); // the code page serves as long as it can
    ASSERT_TRUE(profil.setzeText("a", "name", u"Łódź 𝄞"_s));
    EXPECT_FALSE(profil.setzeText("a", "[", u"ł"_s));
    ASSERT_TRUE(profil.sichere());
    QStringEncoder kodierer(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    EXPECT_EQ(lies(), QByteArray(kodierer(
                          u"; \x81 grüß\r\n[a]\r\nk=€\r\nk2=größer €\r\nname=Łódź 𝄞\r\n"_s)));
    EXPECT_EQ(profiltext("A", "NAME", 128, pfad()), u"Łódź 𝄞"_s);
    EXPECT_EQ(profiltext("a", "name", 7, pfad()), u"Łódź "_s); // not half of a letter
    EXPECT_EQ(text("a", "name"), "?\xF3"
                                 "d? ??");
}

TEST_F(ProfilTest, file_isReadAgainOnlyWhenItChanged) {
    schreibe("[a]\r\nk=1\r\n");
    const auto liest = [this] {
        const int vorher = Profil::lesungen();
        (void)text("a", "k");
        return Profil::lesungen() != vorher;
    };
    while (liest()) { // as long as a change could leave its times as they are
    }
    EXPECT_FALSE(liest());
    EXPECT_EQ(text("a", "k"), "1");
    schreibe("[a]\r\nk=2\r\n"); // of the same size
    EXPECT_EQ(text("a", "k"), "2");
    schreibe("[a]\r\nk=3\r\n");
    EXPECT_EQ(text("a", "k"), "3");
    EXPECT_TRUE(WritePrivateProfileStringA("a", "k", "4", pfad()));
    EXPECT_EQ(text("a", "k"), "4");
    schreibe("[a]\r\nk=5\r\n", u"andere.ini"_s);
    ASSERT_TRUE(QFile::remove(pfad()));
    EXPECT_EQ(text("a", "k"), "DEF");
    ASSERT_TRUE(QFile::rename(pfad(u"andere.ini"_s), pfad()));
    EXPECT_EQ(text("a", "k"), "5");
}

TEST_F(ProfilTest, readOnlyFolder_keepsTheOldFile) {
    schreibe("[a]\r\nk=1\r\n");
    const auto rechte = QFile::permissions(ordner_.path());
    QFile::setPermissions(ordner_.path(), QFile::ReadOwner | QFile::ExeOwner);
    QFile probe(pfad(u"probe"_s));
    const bool schreibbar = probe.open(QIODevice::WriteOnly);
    const bool geschrieben = schreibbar || WritePrivateProfileStringA("a", "k", "2", pfad());
    QFile::setPermissions(ordner_.path(), rechte);
    if (schreibbar)
        GTEST_SKIP() << "this user may write everywhere";
    EXPECT_FALSE(geschrieben);
    EXPECT_EQ(lies(), "[a]\r\nk=1\r\n");
}

#ifndef Q_OS_WIN
TEST_F(ProfilTest, writeThroughLink_changesTheTargetAndKeepsItsPermissions) {
    schreibe("[a]\r\nk=1\r\n", u"echt.ini"_s);
    const QFile::Permissions rechte = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser |
                                      QFile::WriteUser | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(pfad(u"echt.ini"_s), rechte));
    ASSERT_TRUE(QFile::link(u"echt.ini"_s, pfad()));
    EXPECT_TRUE(WritePrivateProfileStringA("a", "k", "2", pfad()));
    EXPECT_EQ(lies(u"echt.ini"_s), "[a]\r\nk=2\r\n");
    EXPECT_TRUE(QFileInfo(pfad()).isSymLink());
    EXPECT_EQ(QFile::permissions(pfad(u"echt.ini"_s)), rechte);
}
#endif

} // namespace
} // namespace tarvel
