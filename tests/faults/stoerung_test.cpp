// Whatever call of the system fails while something is written: the old state is there as a whole
// or the new one, and the user is told. An interrupted call is made again and nobody told.

#include "faults/fassungen.h"
#include "faults/opferprozess.h"
#include "platform/benutzerspeicher.h"
#include "platform/profil.h"
#include "results/ergebnisdateien.h"
#include "results/sitzung.h"
#include "results/tagessicherung.h"

#include <QDir>

#include <array>
#include <cerrno>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

const bool ausführlich = qEnvironmentVariableIsSet("TARVEL_LONG");

constexpr std::array rufe{"open",  "write",  "fsync", "truncate",
                          "close", "rename", "link",  "unlink"};
constexpr std::array fehlerarten{EACCES, ENOSPC, EIO, EDQUOT, EINTR};

/// Whether that is what a person may be told of the system's error.
bool trifftZu(Datenbankgrund grund, int fehler) {
    const bool voll = fehler == ENOSPC || fehler == EDQUOT;
    return grund == (voll ? Datenbankgrund::Voll : Datenbankgrund::Laufwerk) ||
           (fehler == EACCES && grund == Datenbankgrund::NichtAnlegbar);
}

class Störungstest : public Dateitest {
protected:
    static constexpr int Vorher = 3;
    static constexpr int Nachher = 4;

    /// Lets @p arbeit do one step, once for each call that may fail. @p anfang makes the state of
    /// the step before, @p stand reads which it is; 0 for none that is whole.
    void störe(const std::string& arbeit, const std::function<void()>& anfang,
               const std::function<int()>& stand) {
        int getroffen = 0;
        for (const char* ruf : rufe) {
            for (int nummer = 1; nummer < (ausführlich ? 500 : 4); ++nummer) {
                bool irgendeiner = !ausführlich;
                for (std::size_t i = 0; i < fehlerarten.size(); ++i) {
                    if (!ausführlich && i != nummer % fehlerarten.size()) { // a sample of each call
                        continue;
                    }
                    const bool einer =
                        versuche(arbeit, ruf, nummer, fehlerarten.at(i), anfang, stand);
                    irgendeiner = irgendeiner || einer;
                    getroffen += einer ? 1 : 0;
                }
                if (!irgendeiner || HasFailure()) {
                    break;
                }
            }
        }
        EXPECT_GT(getroffen, 0);
        RecordProperty(arbeit + " faults", getroffen);
    }

private:
    /// False when the work makes fewer such calls.
    bool versuche(const std::string& arbeit, const char* ruf, int nummer, int fehler,
                  const std::function<void()>& anfang, const std::function<int()>& stand) {
        const bool unterbrochen = fehler == EINTR;
        const char* art = unterbrochen || nummer % 3 == 0                        ? "einmal"
                          : std::string_view(ruf) == "write" && fehler == ENOSPC ? "halb"
                                                                                 : "fortan";
        const std::string störung = std::string(ruf) + ' ' + std::to_string(nummer) + ' ' +
                                    std::to_string(fehler) + ' ' + art + ' ' +
                                    ordner_.path().toStdString();
        SCOPED_TRACE(arbeit + ": " + störung);
        anfang();
        const QStringList dateien = QDir(ordner_.path()).entryList(QDir::Files | QDir::Hidden);
        Opferprozess opfer(arbeit, ordner_.path(), Nachher, 1, störung);
        const bool gelungen = opfer.entlasse();
        const int jetzt = stand();
        EXPECT_TRUE(jetzt == Vorher || jetzt == Nachher) << "neither old nor new: " << jetzt;
        EXPECT_TRUE(!gelungen || jetzt == Nachher) << "told as written, but is not";
        const bool getroffen = opfer.gemeldet() > 1;
        EXPECT_TRUE(gelungen || (getroffen && !unterbrochen)) << "told without a reason";
        EXPECT_TRUE(gelungen || std::string_view(ruf) != "link") << "some drives know no links";
        if (const auto grund = opfer.grund(); grund != Datenbankgrund::Schreibgeschützt) {
            EXPECT_TRUE(!grund || trifftZu(*grund, fehler));
        } else { // the engine then reads only
            EXPECT_EQ(ruf, std::string_view("open"));
        }
        if (!gelungen && jetzt == Vorher) {
            EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files | QDir::Hidden), dateien);
        }
        return getroffen;
    }
};

int zahlOder0(bool ganz, int zahl) {
    return ganz ? zahl : 0;
}

} // namespace

TEST_F(Störungstest, resultsFile_keepsItsRowsOrTakesTheNewOnes) {
    tabelle().speichere(fassung::satz(Vorher));
    tabelle().speichere(fassung::eingelesen(Vorher));
    const QByteArray ausgang = bytes(pfad_);
    const auto anfang = [&] {
        QFile::remove(pfad_ + u"-journal"_s);
        schreibe(pfad_, ausgang);
    };
    const auto heil = [this] { return fremd(u"PRAGMA integrity_check"_s) == u"ok"; };
    const auto zeile = [&] {
        const bool ganz = heil();
        const auto satz = tabelle().lade(u"A"_s);
        const int zahl = satz ? satz->Z_NAME.toInt() : 0;
        return zahlOder0(ganz && satz == fassung::satz(zahl), zahl);
    };
    störe("speichern", anfang, zeile);
    störe("ändern", anfang, [&] {
        const bool ganz = heil() && tabelle().anzahl() == 2;
        const QString name = fremd(u"SELECT Z_NAME FROM Ergebnisse ORDER BY U_NR LIMIT 1"_s);
        return zahlOder0(ganz, name == QString::number(Nachher) ? Nachher : Vorher);
    });
    störe("einlesen", anfang, [&] {
        return zahlOder0(heil(), tabelle().lade(QString::number(Nachher)) ? Nachher : Vorher);
    });
    störe("sprache", anfang, [&] {
        const QString wörter = fremd(u"SELECT DISTINCT A_D FROM Ergebnisse ORDER BY 1"_s);
        const bool neu = wörter.contains(u"Workers"_s);
        return zahlOder0(heil() && !(neu && wörter.contains(u"Arbeiter"_s)),
                         neu ? Nachher : Vorher);
    });
}

TEST_F(Störungstest, binAndMerge_areDoneOrNot) {
    const QString andere = ordner_.filePath(u"%1.tdb"_s.arg(Nachher % 2));
    NeueDatenbank(andere);
    Ergebnistabelle(andere).speichere(fassung::satz(Nachher));
    Ergebnistabelle(andere).speichere(fassung::eingelesen(Nachher));
    const QByteArray quelle = bytes(andere);
    tabelle().speichere(fassung::satz(Vorher));
    const QByteArray ausgang = bytes(pfad_);
    const auto anfang = [&] {
        QFile::remove(pfad_ + u"-journal"_s);
        schreibe(pfad_, ausgang);
    };
    const auto korbzahl = [this] { return Papierkorb(pfad_).einträge().size(); };
    const auto heil = [this] { return fremd(u"PRAGMA integrity_check"_s) == u"ok"; };
    störe("papierkorb", anfang, [&] {
        const bool da = tabelle().anzahl() == 1;
        return zahlOder0(heil() && korbzahl() == (da ? 0U : 1U), da ? Vorher : Nachher);
    });
    störe("zusammenführen", anfang, [&] {
        EXPECT_EQ(bytes(andere), quelle);
        const bool neu = tabelle().anzahl() == 2;
        const auto satz = tabelle().lade(u"A"_s);
        const int stand = neu ? Nachher : Vorher;
        return zahlOder0(heil() && satz == fassung::satz(stand) && korbzahl() == (neu ? 1U : 0U),
                         stand);
    });
}

TEST_F(Störungstest, dailyBackup_isWholeOrNotThere) {
    tabelle().speichere(fassung::satz(Vorher));
    const QString original = pfad_;
    ASSERT_TRUE(QDir().mkpath(sicherungsordner(pfad_)));
    störe(
        "tagessichern",
        [&] {
            for (const Sicherung& sicherung : sicherungen(original)) {
                QFile::remove(sicherung.pfad);
            }
        },
        [&] {
            const auto alle = sicherungen(original);
            EXPECT_EQ(QDir(sicherungsordner(original)).entryList(QDir::Files | QDir::Hidden).size(),
                      alle.size());
            if (alle.empty()) {
                return Vorher;
            }
            pfad_ = alle.front().pfad;
            const bool ganz =
                fremd(u"PRAGMA integrity_check"_s) == u"ok" && tabelle().anzahl() == 1;
            pfad_ = original;
            return zahlOder0(ganz, Nachher);
        });
}

TEST_F(Störungstest, copyAndNewFile_areWholeOrNotThere) {
    tabelle().speichere(fassung::satz(Vorher));
    const QString original = pfad_;
    const QString kopie = ordner_.filePath(u"kopie.tdb"_s);
    const auto prüfe = [&](const QString& pfad, int zeilen) {
        pfad_ = pfad;
        const bool ganz =
            fremd(u"PRAGMA integrity_check"_s) == u"ok" && tabelle().anzahl() == zeilen;
        pfad_ = original;
        return zahlOder0(ganz, Nachher);
    };
    störe(
        "sichern", [&] { schreibe(kopie, "an older copy"); },
        [&] { return bytes(kopie) == "an older copy" ? Vorher : prüfe(kopie, 1); });
    const QString neu = ordner_.filePath(u"%1.tdb"_s.arg(Nachher));
    störe(
        "anlegen", [&] { QFile::remove(neu); },
        [&] { return QFileInfo::exists(neu) ? prüfe(neu, 0) : Vorher; });
}

TEST_F(Störungstest, settingsAndJournal_areOldOrNew) {
    const QString ini = ordner_.filePath(u"Index.ini"_s);
    const auto datei = [](int schritt) {
        return QByteArray("; mine\r\n[Probe]\r\nx=") + QByteArray::number(schritt) + "\r\n";
    };
    störe(
        "index", [&] { schreibe(ini, datei(Vorher)); },
        [&] {
            const int x = Profil(ini).wert("Probe", "x").value_or("").toInt();
            return zahlOder0(bytes(ini) == datei(x), x);
        });
    const QString benutzer = ordner_.filePath(u"benutzer.ini"_s);
    const auto speicher = [&] { return Benutzerspeicher(benutzer); };
    störe(
        "speicher",
        [&] {
            for (const QString& was : {u"Tabelle"_s, u"Anderes"_s}) {
                ASSERT_TRUE(speicher().SaveSetting(u"Index"_s, u"0ptionen"_s, was,
                                                   QString::number(Vorher)));
            }
        },
        [&] {
            const bool ganz = speicher().GetSetting(u"Index"_s, u"0ptionen"_s, u"Anderes"_s) ==
                              QString::number(Vorher);
            return zahlOder0(
                ganz, speicher().GetSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s).toInt());
        });
    const QString journal = ordner_.filePath(u"Sitzung.journal"_s);
    störe(
        "sitzung",
        [&] {
            QFile::remove(journal);
            ASSERT_TRUE(Sitzung(journal).merke(fassung::sitzung(Vorher)));
        },
        [&] {
            Sitzung sitzung(journal);
            const auto stand = sitzung.lies();
            const int zahl = stand ? stand->ansicht.toInt() : 0;
            const bool ganz = sitzung.beiseite().isEmpty() && stand &&
                              abbild(*stand) == abbild(fassung::sitzung(zahl));
            return zahlOder0(ganz, zahl);
        });
}

TEST_F(Störungstest, csvAndPdf_areOldOrNew) {
    for (const auto& [arbeit, name] : {std::pair{"csv", u"aus.csv"_s}, {"pdf", u"aus.pdf"_s}}) {
        const QString pfad = ordner_.filePath(name);
        const bool csv = name == u"aus.csv";
        störe(
            arbeit, [&] { schreibe(pfad, "old"); },
            [&] {
                const QByteArray jetzt = bytes(pfad);
                const bool neu = csv ? jetzt == fassung::ausfuhr(Nachher)
                                     : jetzt.startsWith("%PDF-") && jetzt.endsWith("%%EOF\n");
                return jetzt == "old" ? Vorher : zahlOder0(neu, Nachher);
            });
    }
}
