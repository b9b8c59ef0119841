// Results files that are damaged, foreign or hostile. Whatever they hold: an operation is done or
// is refused for a reason that can be told, a refused one leaves the file as it was, and no row
// that could be read before is different or gone afterwards.

#include "results/ergebnisdateien.h"

#include <QDir>

#include <map>
#include <random>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

const bool lang = qEnvironmentVariableIsSet("TARVEL_LONG");
const qsizetype viel = (lang ? 64 : 2) * qsizetype{1024} * 1024;

const QString spaltenliste =
    u"U_NR, ZB_NR, Z_NAME, A_D, RASSE, B_NAME, ERGEBNIS, DATUM, VATER, VOLK, CI, HI_DV, PROZENT, "
    u"MERKMAL, Grafik1, Grafik2, Grafik3, Grafik4"_s;

class Muelltest : public Dateitest {
protected:
    std::mt19937 zufall_{2025}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run

    void SetUp() override {
        Dateitest::SetUp();
        fülle();
        ganz_ = bytes(pfad_);
    }

    /// Rows on pages of their own and on several.
    void fülle() const {
        fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 16) "
              u"INSERT INTO Ergebnisse(U_NR, Z_NAME, DATUM, ERGEBNIS, CI) SELECT i, 'Z' || i, "
              u"date('2025-01-01', i || ' days'), 'x', hex(zeroblob(700 * (i % 5))) FROM z"_s);
    }

    /// The rows that the plain engine reads from the table, by their places. Indexes may be damaged
    /// as well, but nothing is lost by that.
    std::map<int, QString> gespeichert() const {
        const QString lies =
            u"SELECT rowid, U_NR, quote(Z_NAME), quote(DATUM), hex(CI), length(Grafik4) FROM "
            u"Ergebnisse NOT INDEXED WHERE U_NR IS NOT 'neu' AND "_s;
        std::map<int, QString> zeilen;
        if (fremd(u"SELECT sql FROM sqlite_master WHERE name = 'Ergebnisse' AND type = 'view'"_s)
                .startsWith(u"CREATE"_s)) {
            return zeilen; // it may have no end
        }
        const auto nimm = [&](const QString& gelesen) {
            const QStringList einzelne = gelesen.split(u';');
            for (const QString& zeile : einzelne) {
                if (zeile.contains(u'|')) {
                    zeilen.emplace(zeile.section(u'|', 0, 0).toInt(), zeile);
                }
            }
        };
        nimm(fremd(lies + u"1"_s));
        for (int id = 1; zeilen.size() < 16 && id <= 16; ++id) { // behind what cannot be read
            nimm(fremd(lies + u"rowid = %1"_s.arg(id)));
        }
        return zeilen;
    }

    /// Whether rows of a file lie where a page says that there is room. Only reading all of it
    /// before every change would notice that.
    bool liegtFalsch(const QByteArray& inhalt) {
        const QString original = std::exchange(pfad_, ordner_.filePath(u"vorher.tdb"_s));
        schreibe(pfad_, inhalt);
        const QString befund = fremd(u"PRAGMA quick_check"_s);
        QFile::remove(std::exchange(pfad_, original));
        return befund.contains(u"On tree page"_s);
    }

    static std::optional<Ergebnistabelle::Zeile> neue(const Ergebnistabelle& t) {
        const auto zeilen = t.zeilen(u"SELECT * FROM Ergebnisse"_s, u"neu"_s, 1);
        return zeilen.empty() ? std::nullopt : std::optional(zeilen[0]);
    }

    /// Does everything that is done with a file, and looks after each whether all is still there.
    /// How many of the operations were refused.
    int machAlles() {
        auto t = tabelle();
        int abgelehnt = 0;
        auto da = gespeichert();
        const QString kopie = ordner_.filePath(u"kopie.tdb"_s);
        const std::pair<const char*, std::function<void()>> arbeiten[] = {
            {"try", [&] { t.öffneProbeweise(); }},
            {"count", [&] { (void)t.anzahl(); }},
            {"last", [&] { (void)t.letzteNummer(); }},
            {"next", [&] { (void)t.NächsteNummer(QDate(2025, 1, 1), {}); }},
            {"load", [&] { (void)t.lade(u"7"_s); }},
            {"browse",
             [&] { (void)t.zeilen(u"SELECT * FROM Ergebnisse ORDER BY Z_NAME"_s, u"Z"_s, 9); }},
            {"places", [&] { (void)t.zeilenfolge(u"SELECT * FROM Ergebnisse"_s, {}); }},
            {"save", [&] { t.speichere(satz(u"neu"_s)); }},
            {"save again", [&] { (void)t.ersetze(satz(u"neu"_s), satz(u"neu"_s)); }},
            {"language", [&] { t.SpracheDB(Sprache::Englisch); }},
            {"edit",
             [&] {
                 if (auto zeile = neue(t)) {
                     const auto vorher = *zeile;
                     zeile->werte[2] = u"anders"_s;
                     t.ändere(vorher, *zeile);
                 }
             }},
            {"delete",
             [&] {
                 if (const auto zeile = neue(t)) {
                     t.lösche(*zeile);
                 }
             }},
            {"backup", [&] { t.sichere(kopie); }},
        };
        for (const auto& [was, arbeit] : arbeiten) {
            SCOPED_TRACE(was);
            const QByteArray vorher = bytes(pfad_);
            const auto fehler = fehlerVon(arbeit);
            if (fehler) {
                ++abgelehnt;
                EXPECT_TRUE(bytes(pfad_) == vorher) << "refused, but the file is another";
                erwarteMeldung(*fehler);
            }
            auto jetzt = gespeichert();
            for (const auto& [id, zeile] : da) {
                EXPECT_TRUE(jetzt[id] == zeile || liegtFalsch(vorher)) << id << " lost or changed";
            }
            da = std::move(jetzt);
        }
        QFile::remove(kopie);
        return abgelehnt;
    }

    /// How many rows an export gets, and which it is told to do without.
    std::string ausgeführt() const {
        const auto ids = tabelle().zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {});
        int anzahl = 0;
        QString ohne;
        tabelle().sätze(
            ids, [&](const Ergebnissatz&) { return ++anzahl > 0; },
            [&](const QString& nummer) { ohne += u", without "_s + nummer; });
        return std::to_string(anzahl) + " of " + std::to_string(ids.size()) + ohne.toStdString();
    }

    void erwarteMeldung(const Datenbankfehler& fehler) const {
        Texte texte{QString()};
        QStringList alle;
        for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
            texte.SpracheEinstellen(sprache);
            alle << meldungstext(texte, fehler);
            EXPECT_TRUE(alle.last().contains(u".tdb"_s)) << alle.last().toStdString();
        }
        EXPECT_EQ(alle.removeDuplicates(), 0);
    }

    QByteArray rauschen(qsizetype anzahl) {
        QByteArray bytes(anzahl, '\0');
        std::generate(bytes.begin(), bytes.end(), [this] { return static_cast<char>(zufall_()); });
        return bytes;
    }

    QByteArray ganz_;
};

} // namespace

TEST_F(Muelltest, soundFile_refusesNothing) {
    EXPECT_EQ(machAlles(), 0);
    EXPECT_EQ(gespeichert().size(), 16U);
    EXPECT_EQ(tabelle().zeilenfolge(u"SELECT * FROM Ergebnisse"_s, {}).size(), 16U);
#ifdef Q_OS_LINUX
    for (const QFileInfo& offen : QDir(u"/proc/self/fd"_s).entryInfoList(QDir::Files)) {
        EXPECT_FALSE(offen.symLinkTarget().startsWith(ordner_.path())) << "still open";
    }
#endif
}

TEST_F(Muelltest, damagedList_isMendedByReindexing) {
    fremd(
        u"CREATE INDEX leer ON Ergebnisse(DATUM) WHERE 0; PRAGMA writable_schema = ON; "
        u"UPDATE sqlite_master SET rootpage = (SELECT rootpage FROM sqlite_master WHERE name = "
        u"'leer') WHERE name = 'Ergebnisse_DATUM'; DELETE FROM sqlite_master WHERE name = 'leer'"_s);
    const auto gelistet = [this] {
        return tabelle().zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s, {}).size();
    };
    EXPECT_LT(gelistet(), 16U);
    fremd(u"REINDEX"_s);
    EXPECT_EQ(gelistet(), 16U);
}

TEST_F(Muelltest, cutOffFile_isRefusedOrKeepsWhatItHas) {
    for (qsizetype rest = 0; rest < ganz_.size(); rest += lang ? 512 : 4096 * 2 + 512 * 3) {
        SCOPED_TRACE(rest);
        schreibe(pfad_, ganz_.left(rest));
        (void)machAlles();
    }
}

TEST_F(Muelltest, damageAnywhere_losesNothingThatWasThere) {
    for (int i = 0; i < (lang ? 4000 : 20); ++i) {
        SCOPED_TRACE(i);
        QByteArray bytes = ganz_;
        // Every second time in the header, in the list of tables or where a page begins.
        for (int anzahl = 1 << zufall_() % 6; anzahl > 0; --anzahl) {
            const auto irgendwo = static_cast<qsizetype>(zufall_() % bytes.size());
            const bool vorn = i % 2 == 0;
            bytes[vorn ? (irgendwo % 4 == 0 ? irgendwo % 100
                                            : irgendwo / 4096 * 4096 + irgendwo % 64)
                       : irgendwo] = static_cast<char>(zufall_());
        }
        schreibe(pfad_, bytes);
        (void)machAlles();
    }
    for (qsizetype seite = 0; seite < ganz_.size() / 4096; seite += lang ? 1 : 11) {
        for (const QByteArray& inhalt :
             {QByteArray(4096, '\0'), rauschen(4096), ganz_.mid(4096, 4096)}) {
            SCOPED_TRACE(seite);
            schreibe(pfad_, QByteArray(ganz_).replace(seite * 4096, 4096, inhalt));
            (void)machAlles();
        }
    }
}

TEST_F(Muelltest, backupOfADamagedFile_doesNotReplaceASoundOne) {
    const QString kopie = ordner_.filePath(u"kopie.tdb"_s);
    tabelle().sichere(kopie);
    const QByteArray gut = bytes(kopie);
    schreibe(pfad_, QByteArray(ganz_).replace(ganz_.size() - 4096, 4096, rauschen(4096)));
    ASSERT_NE(fremd(u"PRAGMA quick_check"_s), u"ok"_s);
    EXPECT_EQ(grundVon([&] { tabelle().sichere(kopie); }), Datenbankgrund::Beschädigt);
    EXPECT_EQ(bytes(kopie), gut);
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files).size(), 2); // nothing is left over
}

TEST_F(Muelltest, otherFiles_areRefusedAndLeftAlone) {
    const QByteArray kopf = ganz_.left(100);
    const struct {
        const char* was;
        QByteArray bytes;
    } fälle[] = {
        {"nothing", {}},
        {"one byte", "S"},
        {"noise", rauschen(viel)},
        {"zeros", QByteArray(viel, '\0')},
        {"noise behind a good header", kopf + rauschen(viel)},
        {"a header alone", kopf},
        {"text", QByteArray("Lieber Imker!\r\n").repeated(1000)},
        {"text of two bytes a character", QByteArray("\xFF\xFE[\0S\0t\0a\0r\0t\0]\0", 16)},
        {"another database", QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + rauschen(9000)},
        {"an archive", "PK\3\4" + rauschen(9000)},
    };
    for (const auto& [was, bytes] : fälle) {
        SCOPED_TRACE(was);
        schreibe(pfad_, bytes);
        EXPECT_EQ(machAlles(), 13);
    }
}

TEST_F(Muelltest, foreignJournalBesideTheFile_doesNotHarmIt) {
    for (const char* begleiter : {"-journal", "-wal", "-shm"}) {
        for (const QByteArray& inhalt :
             {QByteArray(), QByteArray("x"), rauschen(9000),
              QByteArray::fromHex("d9d505f920a163d7") + rauschen(9000),
              QByteArray::fromHex("377f0682002de218") + rauschen(9000)}) {
            SCOPED_TRACE(begleiter);
            schreibe(pfad_, ganz_);
            schreibe(pfad_ + QString::fromLatin1(begleiter), inhalt);
            EXPECT_EQ(machAlles(), 0);
            EXPECT_EQ(gespeichert().size(), 16U);
            QFile::remove(pfad_ + QString::fromLatin1(begleiter));
        }
    }
}

TEST_F(Muelltest, filesMadeInAnotherWay_serveAsTheyAre) {
    for (const QString& wie :
         {u"PRAGMA journal_mode = WAL"_s, u"PRAGMA user_version = 99"_s,
          u"PRAGMA application_id = 7"_s, u"PRAGMA page_size = 512; VACUUM"_s,
          u"PRAGMA page_size = 65536; VACUUM"_s, u"PRAGMA auto_vacuum = 2; VACUUM"_s,
          u"ALTER TABLE Ergebnisse RENAME TO E; ALTER TABLE E RENAME TO ergebnisse"_s,
          u"CREATE TABLE sonst(a); INSERT INTO sonst VALUES(1)"_s,
          u"CREATE VIEW alle AS SELECT * FROM Ergebnisse"_s, u"ANALYZE"_s,
          u"CREATE VIRTUAL TABLE suche USING fts5(text)"_s}) {
        SCOPED_TRACE(wie.toStdString());
        schreibe(pfad_, ganz_);
        fremd(wie);
        EXPECT_EQ(machAlles(), 0);
        EXPECT_EQ(gespeichert().size(), 16U);
        EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
    }
}

TEST_F(Muelltest, tablesOfAnotherMake_workOrAreRefused) {
    const auto spalten = [](const QString& art) {
        return QString(spaltenliste).replace(u","_s, u' ' + art + u',') + u' ' + art;
    };
    const QString füllung =
        u"INSERT INTO Ergebnisse(U_NR, CI) VALUES(7, 'a'), (8.5, x'00ff'), ('9', 3)"_s;
    const struct {
        const char* was;
        QString sql;
        int abgelehnt; ///< of the operations; -1 for any number
    } fälle[] = {
        {"no types, no key", u"CREATE TABLE Ergebnisse(%1);"_s.arg(spaltenliste) + füllung, 0},
        {"whole numbers", u"CREATE TABLE Ergebnisse(%1);"_s.arg(spalten(u"INTEGER"_s)) + füllung,
         0},
        {"bytes", u"CREATE TABLE Ergebnisse(%1);"_s.arg(spalten(u"BLOB"_s)) + füllung, 0},
        {"another order",
         u"CREATE TABLE Ergebnisse(Grafik4, Grafik3, Grafik2, Grafik1, MERKMAL, PROZENT, HI_DV, "
         u"CI, "
         u"VOLK, VATER, DATUM, ERGEBNIS, B_NAME, RASSE, A_D, Z_NAME, ZB_NR, U_NR);"_s +
             füllung,
         0},
        {"nothing but NULL",
         u"CREATE TABLE Ergebnisse(%1);INSERT INTO Ergebnisse DEFAULT VALUES"_s.arg(spaltenliste),
         0},
        {"two rows of one number",
         u"CREATE TABLE Ergebnisse(%1);INSERT INTO Ergebnisse(U_NR, CI) VALUES('7', 'a'), "
         u"('7', 'b')"_s.arg(spaltenliste),
         0},
        {"texts far longer than their columns",
         u"CREATE TABLE Ergebnisse(%1);INSERT INTO Ergebnisse(U_NR, Z_NAME, CI) VALUES(7, "
         u"hex(zeroblob(50000)), hex(zeroblob(300000)))"_s.arg(spaltenliste),
         0},
        {"texts in UTF-16",
         u"PRAGMA encoding = 'UTF-16le'; CREATE TABLE Ergebnisse(%1);"_s.arg(spaltenliste) +
             füllung,
         0},
        {"a strict table",
         u"CREATE TABLE Ergebnisse(%1) STRICT;"_s.arg(spalten(u"TEXT"_s)) +
             u"INSERT INTO Ergebnisse(U_NR) VALUES('7')"_s,
         0},
        {"a column that must be filled",
         u"CREATE TABLE Ergebnisse(%1, Pflicht NOT NULL DEFAULT (NULL));"_s.arg(spaltenliste), 2},
        {"a rule that nothing meets",
         u"CREATE TABLE Ergebnisse(%1, CHECK(CI = 'never'));"_s.arg(spaltenliste), 2},
        {"no place of a row",
         u"CREATE TABLE Ergebnisse(%1, PRIMARY KEY(U_NR)) WITHOUT ROWID;"_s.arg(spaltenliste), -1},
        {"an order that nobody knows",
         u"CREATE TABLE Ergebnisse(%1);"_s.arg(spaltenliste) +
             u"PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, 'Z_NAME', "
             u"'Z_NAME COLLATE FREMD')"_s,
         -1},
        {"a key into another table",
         u"CREATE TABLE Ergebnisse(%1);CREATE TABLE sonst(U REFERENCES Ergebnisse(U_NR) ON DELETE "
         u"CASCADE);"_s.arg(spaltenliste) +
             füllung,
         0},
        {"a query in its place",
         u"CREATE TABLE t(%1);CREATE VIEW Ergebnisse AS SELECT * FROM t"_s.arg(spaltenliste), 13},
        {"a query without an end",
         u"CREATE VIEW Ergebnisse(%1) AS WITH RECURSIVE z(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
         u"FROM z) SELECT i, i, i, i, i, i, i, i, i, i, i, i, i, i, i, i, i, i FROM z"_s.arg(
             spaltenliste),
         13},
        {"a search index in its place",
         u"CREATE VIRTUAL TABLE Ergebnisse USING fts5(%1)"_s.arg(spaltenliste), -1},
    };
    for (const auto& [was, sql, abgelehnt] : fälle) {
        SCOPED_TRACE(was);
        QFile::remove(pfad_);
        ASSERT_EQ(fremd(sql), QString());
        const int gefunden = machAlles();
        EXPECT_TRUE(abgelehnt < 0 || gefunden == abgelehnt) << gefunden << " refused";
    }
}

TEST_F(Muelltest, columnsNamedLikeThePlaceOfARow_areNotTakenForIt) {
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN rowid TEXT DEFAULT 'x'"_s);
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN id TEXT DEFAULT 'y'"_s);
    EXPECT_EQ(ausgeführt(), "16 of 16");
    auto zeile = tabelle().zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 1).at(0);
    const auto vorher = zeile;
    zeile.werte[2] = u"anders"_s;
    tabelle().ändere(vorher, zeile);
    EXPECT_EQ(fremd(u"SELECT U_NR, rowid, id FROM Ergebnisse WHERE Z_NAME = 'anders'"_s),
              zeile.werte[0] + u"|x|y"_s);
    tabelle().lösche(zeile);
    tabelle().speichere(satz(u"7"_s));
    EXPECT_EQ(fremd(u"SELECT count(*) FROM Ergebnisse WHERE rowid = 'x' AND id = 'y'"_s), u"15"_s);
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN oid"_s);
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN _rowid_"_s);
    EXPECT_EQ(grundVon([&] { (void)tabelle().lade(u"7"_s); }), Datenbankgrund::SpalteFehlt);
}

TEST_F(Muelltest, statementsThatAFileBringsAlong_areNotCarriedOut) {
    for (const QString& falle :
         {u"AFTER INSERT ON Ergebnisse BEGIN DELETE FROM Ergebnisse WHERE U_NR <> NEW.U_NR; END"_s,
          u"AFTER INSERT ON Ergebnisse BEGIN UPDATE Ergebnisse SET Z_NAME = 'x'; END"_s,
          u"AFTER UPDATE ON Ergebnisse BEGIN DELETE FROM Ergebnisse; END"_s,
          u"BEFORE DELETE ON Ergebnisse BEGIN SELECT RAISE(IGNORE); END"_s,
          u"BEFORE DELETE ON Ergebnisse BEGIN SELECT RAISE(ABORT, 'no'); END"_s,
          u"AFTER INSERT ON Ergebnisse BEGIN INSERT INTO Ergebnisse(CI) WITH RECURSIVE z(i) AS "
          u"(SELECT 1 UNION ALL SELECT i + 1 FROM z) SELECT max(i) FROM z; END"_s}) {
        SCOPED_TRACE(falle.toStdString());
        schreibe(pfad_, ganz_);
        ASSERT_EQ(fremd(u"CREATE TRIGGER falle "_s + falle), QString());
        EXPECT_EQ(machAlles(), 0);
        EXPECT_EQ(gespeichert().size(), 16U);
    }
}

TEST_F(Muelltest, textBeyondAllMeasure_isNotReadAndKeepsNothingElseFromIt) {
    const QString alle = u"SELECT * FROM Ergebnisse ORDER BY Z_NAME"_s;
    std::vector<std::pair<QString, const char*>> fälle = {{u"U_NR"_s, "#7"}};
    if (lang) {
        fälle.insert(fälle.end(), {{u"CI"_s, "7"}, {u"Z_NAME"_s, "7"}, {u"DATUM"_s, "7"}});
    }
    for (const auto& [spalte, genannt] : fälle) {
        SCOPED_TRACE(spalte.toStdString());
        schreibe(pfad_, ganz_);
        fremd(u"UPDATE Ergebnisse SET %1 = CAST(zeroblob(70000000) AS TEXT) WHERE rowid = 7"_s.arg(
            spalte));
        if (spalte != u"U_NR") {
            const auto fehler = fehlerVon([&] { (void)tabelle().lade(u"7"_s); });
            ASSERT_TRUE(fehler);
            erwarteMeldung(*fehler);
        }
        const auto t = tabelle();
        EXPECT_EQ(t.zeilen(alle, {}, 99).size(), 16U);
        EXPECT_EQ(t.zeilen(alle, u"Z1"_s, 99).size(), 8U);
        EXPECT_EQ(t.zeilen(t.zeilenfolge(alle, {})).size(), 16U);
        EXPECT_EQ(ausgeführt(), std::string("15 of 16, without ") + genannt);
        EXPECT_TRUE(t.lade(u"8"_s));
        EXPECT_TRUE(t.letzteNummer());
        EXPECT_EQ(t.NächsteNummer(QDate(2025, 1, 1), {}), u"0172025"_s);
        EXPECT_FALSE(t.bekannte(&Ergebnissatz::Z_NAME, 100).isEmpty());
        tabelle().speichere(satz(u"neu"_s));
        tabelle().SpracheDB(Sprache::Französisch);
        EXPECT_EQ(
            fremd(u"SELECT length(CAST(%1 AS BLOB)) FROM Ergebnisse WHERE rowid = 7"_s.arg(spalte)),
            u"70000000"_s);
    }
}

TEST_F(Muelltest, numberWithAZeroInIt_isARowLikeAnyOther) {
    fremd(u"UPDATE Ergebnisse SET U_NR = '7' || char(0) || 'x', Z_NAME = 'a' || char(0) || 'b' "
          u"WHERE rowid = 7"_s);
    EXPECT_EQ(machAlles(), 0);
    const QString nummer = u"7"_s + QChar(0) + u"x"_s;
    EXPECT_EQ(ausgeführt(), "16 of 16");
    auto zeile = tabelle().zeilen({7}).at(0);
    EXPECT_EQ(zeile.werte[0], nummer);
    EXPECT_TRUE(tabelle().lade(nummer));
    EXPECT_FALSE(tabelle().lade(u"7"_s));
    const auto vorher = zeile;
    zeile.werte[3] = u"anders"_s;
    tabelle().ändere(vorher, zeile);
    auto satz = *tabelle().lade(nummer);
    EXPECT_TRUE(tabelle().ersetze(satz, satz));
    EXPECT_EQ(fremd(u"SELECT count(*) FROM Ergebnisse"_s), u"16"_s);
    tabelle().speichere(this->satz(u"7"_s));
    EXPECT_EQ(fremd(u"SELECT count(*) FROM Ergebnisse"_s), u"17"_s);
}
