// The whole program over settings and results files that are damaged, foreign or gone: it starts,
// says what is wrong in its language, keeps what is open and leaves the file alone.

#include "app/fenster.h"
#include "results/ergebnistabelle.h"
#include "settings/einstellungen.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QStringDecoder>

#include <random>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const bool lang = qEnvironmentVariableIsSet("TARVEL_LONG");
constexpr qsizetype MB = qsizetype{1024} * 1024;

QByteArray rauschen(qsizetype anzahl) {
    std::mt19937 zufall{3}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    QByteArray bytes(anzahl, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(zufall()); });
    return bytes;
}

/// The bytes of a literal, those of value zero too.
template <std::size_t N>
QByteArray mitNullen(const char (&text)[N]) {
    return {text, N - 1};
}

struct Fenstermuell : Fenstertest {
    QString tabelle() const { return ordner.filePath(u"Völker.tdb"_s); }

    /// Shows every view there is.
    void gehHerum() {
        for (const int ansicht : {0, 2, 3, 4, 6, 7, 11}) {
            wähle(u"men_Ansicht_%1"_s.arg(ansicht));
            hg().grab();
        }
        wähle(u"men_Datei_9"_s);
        hg().grab();
    }
};

/// What a settings file says beyond the language.
QByteArrayList übriges(const QByteArray& inhalt) {
    const bool utf16 = inhalt.startsWith("\xFF\xFE");
    QByteArrayList zeilen =
        (utf16 ? QString(QStringDecoder(QStringDecoder::Utf16)(inhalt)).toUtf8() : inhalt)
            .split('\n');
    zeilen.removeIf([](const QByteArray& zeile) {
        return zeile.trimmed().isEmpty() || zeile.startsWith("[Start") ||
               zeile.startsWith("Sprache=");
    });
    for (QByteArray& zeile : zeilen) {
        zeile = zeile.trimmed(); // an end of line more behind the last one
    }
    return zeilen;
}

} // namespace

TEST_F(Fenstermuell, settingsOfAnyKind_areKeptToTheLastByte) {
    const QByteArray anfang = "[Start]\r\nNeu=False\r\n";
    const struct {
        const char* was;
        QByteArray inhalt;
    } fälle[] = {
        {"nothing", {}},
        {"noise", rauschen(5000)},
        {"64 MB of noise", rauschen(64 * MB)},
        {"64 MB of zeros", QByteArray(64 * MB, '\0')},
        {"zeros between", mitNullen("[Start]\0\r\nNeu=\0False\r\nx=\0y\r\n")},
        {"two bytes a character", mitNullen("\xFF\xFE[\0S\0t\0a\0r\0t\0]\0\r\0\n\0")},
        {"halves of characters",
         mitNullen("\xFF\xFE[\0S\0t\0a\0r\0t\0]\0\r\0\n\0N\0e\0u\0=\0F\0a\0l\0s\0e\0\r\0\n\0"
                   "x\0=\0\x00\xD8y\0\xFF\xDF\r\0\n\0")},
        {"UTF-8 with a mark", "\xEF\xBB\xBF[Start]\r\nNeu=False\r\nName=K\xC3\xB6nig\r\n"},
        {"no line ends", "[Start]Neu=False" + QByteArray("x=y ").repeated(100'000)},
        {"a long line", anfang + "x=" + QByteArray(900'000, 'y')},
        {"a long name", anfang + "[" + QByteArray(900'000, 'n')},
        {"many sections", anfang + QByteArray("[[Abschnitt\r\n").repeated(70'000)},
        {"many keys", anfang + QByteArray("k=v\r\n").repeated(150'000)},
        {"15 MB of comments", anfang + QByteArray("; x\r\n").repeated(3 * MB)},
    };
    for (const auto& [was, inhalt] : fälle) {
        SCOPED_TRACE(was);
        lege(inipfad(), inhalt);
        dialoge.meldungen.clear();
        ASSERT_TRUE(starteUnvorbereitet());
        wähle(u"men_Sprache_1"_s);
        EXPECT_EQ(kind<QAction>(u"men_Datei_5"_s).iconText(), u"Load\npicture"_s);
        if (ini() == inhalt) {
            EXPECT_TRUE(hinweis().contains(u"Index.ini"_s)) << qPrintable(hinweis());
        } else {
            EXPECT_TRUE(übriges(ini()) == übriges(inhalt));
            EXPECT_EQ(programm->einstellungen().zahl(Einstellung::Sprache), 1);
        }
        EXPECT_THAT(dialoge.meldungen, IsEmpty());
    }
}

TEST_F(Fenstermuell, everySettingAtAbsurdValues_startsAndPaints) {
    for (const QByteArray& wert :
         {QByteArray("-1"), QByteArray("32767"), QByteArray("-32768"), QByteArray("99999999999"),
          QByteArray("1e999"), QByteArray("nan"), QByteArray("%s%n%1%2"), QByteArray("\"'[];="),
          QByteArray("2147483647,2147483647,2147483647,1,1"), QByteArray("1,1,2000000000,9,-9"),
          QByteArray("../../../dev/zero"), QByteArray(10'000, 'x'), rauschen(60)}) {
        SCOPED_TRACE(wert.left(20).toStdString());
        QByteArray inhalt;
        for (const Einstellungszeile& zeile : einstellungstabelle()) {
            if (zeile.id != Einstellung::Neu && zeile.id != Einstellung::Sprache) {
                inhalt += '[' + zeile.abschnitt.toLatin1() + "]\r\n" + zeile.schlüssel.toLatin1() +
                          '=' + wert + "\r\n";
            }
        }
        lege(inipfad(), "[Start]\r\nNeu=False\r\n" + inhalt);
        ASSERT_TRUE(starteUnvorbereitet());
        missFlügel();
        gehHerum();
        wähle(u"men_Ansicht_0"_s);
        EXPECT_TRUE(hg().screen()->geometry().contains(hg().geometry().center()));
        EXPECT_GT(bild().width(), 100);
        dialoge.antworten = {Antwort::Nein, Antwort::Nein};
        hg().close();
    }
}

TEST_F(Fenstermuell, userStoreOfAnyKind_startsWithAFileThatIsFree) {
    for (const QByteArray& inhalt :
         {QByteArray(), rauschen(5000), rauschen((lang ? 64 : 1) * MB), QByteArray(MB, '\0'),
          mitNullen("[Index]\n0ptionen\\Tabelle=@Variant(\0\0\0\x7f\xff\xff\xff\xff)\n"),
          QByteArray("[Index]\n0ptionen\\Tabelle=a, b, c\n")}) {
        lege(ordner.filePath(u"benutzer.ini"_s), inhalt);
        dialoge.meldungen.clear();
        ASSERT_TRUE(starte());
        EXPECT_TRUE(QFile::exists(ordner.filePath(u"Meine Tabelle.tdb"_s)));
        ASSERT_THAT(dialoge.meldungen, SizeIs(1));
        EXPECT_TRUE(dialoge.meldungen[0].contains(u"benutzer.ini"_s));
    }
}

TEST_F(Fenstermuell, resultsFileOfAnyKind_isNamedOnceInTheLanguageAndLeftAlone) {
    NeueDatenbank(tabelle());
    const QByteArray gut = liesGanz(tabelle());
    const QByteArray inhalte[] = {QByteArray(),
                                  "Lieber Imker!",
                                  gut.left(gut.size() / 2),
                                  rauschen((lang ? 64 : 4) * MB),
                                  gut.left(100) + rauschen(MB),
                                  QByteArray(gut).replace(100, 300, QByteArray(300, '\xFF'))};
    const QString speichern[] = {u"Speichern ist nicht möglich"_s, u"not possible"_s,
                                 u"pas possible"_s};
    ASSERT_TRUE(speicher.SaveSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s, tabelle()));
    for (int sprache = 0; sprache < 3; ++sprache) {
        schreibeIni("[Start]\r\nNeu=False\r\nSprache=" + QByteArray::number(sprache) + "\r\n");
        for (const QByteArray& inhalt : inhalte) {
            SCOPED_TRACE(inhalt.left(20).toStdString() + ' ' + std::to_string(sprache));
            lege(tabelle(), inhalt);
            dialoge.meldungen.clear();
            ASSERT_TRUE(starte());
            ASSERT_THAT(dialoge.meldungen, SizeIs(1));
            EXPECT_TRUE(dialoge.meldungen[0].contains(u"Völker.tdb"_s));
            missFlügel();
            kind<QComboBox>(u"cbo_Name"_s).lineEdit()->setText(u"A"_s);
            kind<QLineEdit>(u"txt_UNr"_s).setText(u"7"_s);
            wähle(u"men_Datei_2"_s);
            ASSERT_THAT(dialoge.meldungen, SizeIs(2));
            EXPECT_NE(dialoge.meldungen[0], dialoge.meldungen[1]);
            EXPECT_TRUE(dialoge.meldungen[1].contains(speichern[sprache]))
                << qPrintable(dialoge.meldungen[1]);
            EXPECT_TRUE(liesGanz(tabelle()) == inhalt);
            EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
            EXPECT_TRUE(hg().isWindowModified());
        }
        // The wing that could not be stored goes into the file that is there again.
        lege(tabelle(), gut);
        wähle(u"men_Datei_2"_s);
        EXPECT_EQ(Ergebnistabelle(tabelle()).anzahl(), 1);
        EXPECT_FALSE(hg().isWindowModified());
    }
}

TEST_F(Fenstermuell, folderThatVanishes_isSaidAndNothingOfTheWorkIsLost) {
    ASSERT_TRUE(starte());
    missFlügel();
    kind<QComboBox>(u"cbo_Name"_s).lineEdit()->setText(u"A"_s);
    ASSERT_TRUE(QDir(ordner.path()).removeRecursively());
    kind<QLineEdit>(u"txt_Volk"_s).setText(u"9"_s); // the journal has no place any more
    EXPECT_TRUE(hinweis().contains(ordner.path())) << qPrintable(hinweis());
    wähle(u"men_Datei_2"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_FALSE(hg().ladeBild(ordner.filePath(u"flügel 100%.png"_s)));
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    wähle(u"men_Sprache_1"_s);
    gehHerum();
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
    EXPECT_TRUE(hg().isWindowModified());

    ASSERT_TRUE(QDir().mkpath(ordner.path()));
    NeueDatenbank(ordner.filePath(u"Meine Tabelle.tdb"_s));
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(Ergebnistabelle(ordner.filePath(u"Meine Tabelle.tdb"_s)).anzahl(), 1);
}
