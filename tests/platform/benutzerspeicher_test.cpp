#include "platform/benutzerspeicher.h"

#include "support/testordner.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

TEST(Benutzerspeicher, savedValues_comeBackInANewStoreOfTheSameFile) {
    const Testordner ordner;
    const QString pfad = ordner.filePath(u"neu/tief/benutzer.ini"_s);
    const struct {
        QString app, section, key, value;
    } werte[] = {
        {u"Index"_s, u"Grenzlinien"_s, u"CI ArbeitC-"_s, u"195"_s},
        {u"Index"_s, u"Grenzlinien"_s, u"DV ><C-"_s, u"0"_s},
        {u"Index"_s, u"0ptionen"_s, u"Tabelle"_s, u"/home/Jürgen/Imkerei, Łódź/北 \"1\".tdb"_s},
        {u"Index"_s, u"0ptionen"_s, u"Ordner"_s, uR"(C:\Apis\@Neu;=%20)"_s},
        {u"Index"_s, u"0ptionen"_s, u"Zeile"_s,
         u"Zeile\n\x01"
         "f %ü"_s},
        {u"Index"_s, u"Grüße"_s, u"leer"_s, QString()},
        {u"Andere"_s, u"Grenzlinien"_s, u"CI ArbeitC-"_s, u" mit Rand "_s},
    };
    {
        Benutzerspeicher speicher(pfad);
        for (const auto& w : werte) {
            EXPECT_TRUE(speicher.SaveSetting(w.app, w.section, w.key, w.value))
                << qPrintable(w.key);
        }
    }
    const Benutzerspeicher speicher(pfad);
    for (const auto& w : werte) {
        EXPECT_EQ(speicher.GetSetting(w.app, w.section, w.key, u"fehlt"_s), w.value);
    }
    EXPECT_TRUE(QFile::exists(pfad));
}

TEST(Benutzerspeicher, fileOfAnEarlierVersion_isRead) {
    const Testordner ordner;
    const QString pfad = ordner.filePath(u"benutzer.ini"_s);
    const QStringList werte{u"/home/Jürgen/Imkerei, Łódź; x=y.tdb"_s, u"195"_s, u" 1 "_s,
                            QString()};
    {
        QSettings früher(pfad, QSettings::IniFormat);
        for (qsizetype i = 0; i < werte.size(); ++i) {
            früher.setValue(u"Index/0ptionen/DV ><%1"_s.arg(i), werte[i]);
        }
    }
    for (qsizetype i = 0; i < werte.size(); ++i) {
        EXPECT_EQ(Benutzerspeicher(pfad).GetSetting(u"Index"_s, u"0ptionen"_s, u"DV ><%1"_s.arg(i),
                                                    u"fehlt"_s),
                  werte[i]);
    }
}

TEST(Benutzerspeicher, missingOrOverwritten_givesDefaultOrLastValue) {
    const Testordner ordner;
    Benutzerspeicher speicher(ordner.filePath(u"benutzer.ini"_s));
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"S"_s, u"K"_s), QString());
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"S"_s, u"K"_s, u"vorgabe"_s), u"vorgabe"_s);
    EXPECT_TRUE(speicher.SaveSetting(u"Index"_s, u"S"_s, u"K"_s, u"1"_s));
    EXPECT_TRUE(speicher.SaveSetting(u"Index"_s, u"S"_s, u"K"_s, u"2"_s));
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"S"_s, u"K"_s, u"vorgabe"_s), u"2"_s);
}

TEST(Benutzerspeicher, unwritableFile_failsAndKeepsWhatIsThere) {
    const Testordner ordner;
    const QString imWeg = ordner.schreibe(u"datei"_s);
    ASSERT_TRUE(QDir(ordner.path()).mkdir(u"ordner.ini"_s));
    for (const QString& pfad : {imWeg + u"/benutzer.ini"_s, ordner.filePath(u"ordner.ini"_s)}) {
        Benutzerspeicher speicher(pfad);
        EXPECT_FALSE(speicher.SaveSetting(u"Index"_s, u"S"_s, u"K"_s, u"1"_s)) << qPrintable(pfad);
        EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"S"_s, u"K"_s, u"vorgabe"_s), u"vorgabe"_s);
    }
    EXPECT_TRUE(QFile::exists(imWeg));
}

TEST(Benutzerspeicher, namesThatWouldReachAnotherSetting_areRefused) {
    const Testordner ordner;
    const QString pfad = ordner.filePath(u"benutzer.ini"_s);
    Benutzerspeicher speicher(pfad);
    for (const QString& name : {u""_s, u"a/b"_s, uR"(a\b)"_s}) {
        EXPECT_FALSE(speicher.SaveSetting(name, u"S"_s, u"K"_s, u"1"_s));
        EXPECT_FALSE(speicher.SaveSetting(u"A"_s, name, u"K"_s, u"1"_s));
        EXPECT_FALSE(speicher.SaveSetting(u"A"_s, u"S"_s, name, u"1"_s));
        EXPECT_EQ(speicher.GetSetting(u"A"_s, u"S"_s, name, u"vorgabe"_s), u"vorgabe"_s);
    }
    EXPECT_FALSE(QFile::exists(pfad));
}
