// A program that is killed at any moment of its work leaves the former state behind or the new one.

#include "faults/fassungen.h"
#include "faults/opferprozess.h"
#include "platform/benutzerspeicher.h"
#include "platform/profil.h"
#include "results/ergebnisdateien.h"
#include "results/tagessicherung.h"
#include "settings/einstellungen.h"

#include <QDir>

#include <random>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// Steps of the program that was killed: the last one finished for sure and the last one begun.
struct Stand {
    int fertig;
    int begonnen;
};

class Abbruchtest : public Dateitest {
protected:
    int schritt_ = 1;           ///< the state that the files are in
    std::mt19937 zufall_{2025}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run

    /// Kills @p arbeit time and again. @p prüfe looks at the files and returns the step whose work
    /// they hold.
    void töteOft(const char* arbeit, const std::function<int(const Stand&)>& prüfe) {
        const int oft = qEnvironmentVariableIsSet("TARVEL_LONG") ? 200 : 20;
        qint64 schrittdauer = 2'000'000; // in nanoseconds; measured while it works
        for (int i = 0; i < oft && !HasFailure(); ++i) {
            SCOPED_TRACE(arbeit + std::string(", kill ") + std::to_string(i));
            Opferprozess opfer(arbeit, ordner_.path(), schritt_ + 1, 0);
            QElapsedTimer uhr;
            ASSERT_TRUE(opfer.warteAuf(1));
            uhr.start();
            ASSERT_TRUE(opfer.warteAuf(1 + static_cast<int>(zufall_() % 5)));
            if (opfer.gemeldet() > 1) {
                schrittdauer = uhr.nsecsElapsed() / (opfer.gemeldet() - 1);
            }
            const qint64 noch = schrittdauer * static_cast<qint64>(zufall_() % 1300) / 1000;
            for (uhr.start(); uhr.nsecsElapsed() < noch;) {
            }
            ASSERT_TRUE(opfer.töte()) << "ended by itself";
            schritt_ = prüfe({schritt_ + opfer.gemeldet() - 1, schritt_ + opfer.gemeldet()});
        }
    }

    void erwarteHeil() const {
        EXPECT_NO_THROW(tabelle().öffneProbeweise());
        EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
    }

    static void erwarteEinesVon(int gefunden, const Stand& stand) {
        EXPECT_TRUE(gefunden == stand.fertig || gefunden == stand.begonnen)
            << gefunden << " of " << stand.fertig << ", " << stand.begonnen;
    }
};

} // namespace

TEST_F(Abbruchtest, save_leavesTheOldRowOrTheNewOne) {
    tabelle().speichere(satz(u"davor"_s));
    tabelle().speichere(fassung::satz(schritt_));
    tabelle().speichere(satz(u"danach"_s));
    töteOft("speichern", [this](const Stand& stand) {
        erwarteHeil();
        const auto gelesen = tabelle().lade(u"A"_s);
        if (!gelesen) {
            ADD_FAILURE() << "the row is gone";
            return stand.begonnen;
        }
        const int gefunden = gelesen->Z_NAME.toInt();
        erwarteEinesVon(gefunden, stand);
        EXPECT_TRUE(gelesen == fassung::satz(gefunden));
        EXPECT_EQ(nummern(), u"A;danach;davor"_s);
        return gefunden;
    });
}

TEST_F(Abbruchtest, editInTheList_leavesTheOldRowOrTheNewOne) {
    tabelle().speichere(fassung::satz(schritt_));
    töteOft("ändern", [this](const Stand& stand) {
        erwarteHeil();
        Ergebnissatz erwartet = fassung::satz(1);
        const auto gelesen = tabelle().lade(u"A"_s);
        if (!gelesen) {
            ADD_FAILURE() << "the row is gone";
            return stand.begonnen;
        }
        erwarteEinesVon(gelesen->Z_NAME.toInt(), stand);
        erwartet.Z_NAME = gelesen->Z_NAME;
        EXPECT_TRUE(*gelesen == erwartet);
        return gelesen->Z_NAME.toInt();
    });
}

TEST_F(Abbruchtest, pdf_isTheOldOneOrTheNewOne) {
    const QString pdf = ordner_.filePath(u"aus.pdf"_s);
    schreibe(pdf, "%PDF- old %%EOF\n");
    töteOft("pdf", [&](const Stand& stand) {
        const QByteArray inhalt = bytes(pdf);
        EXPECT_TRUE(inhalt.startsWith("%PDF-") && inhalt.endsWith("%%EOF\n"));
        return stand.begonnen;
    });
}

TEST_F(Abbruchtest, import_leavesEveryRowThatWasReadIn) {
    tabelle().speichere(fassung::eingelesen(schritt_));
    töteOft("einlesen", [this](const Stand& stand) {
        erwarteHeil();
        const int gefunden = tabelle().anzahl();
        erwarteEinesVon(gefunden, stand);
        for (int i = std::max(1, gefunden - 8); i <= gefunden; ++i) {
            EXPECT_TRUE(tabelle().lade(QString::number(i)) == fassung::eingelesen(i)) << i;
        }
        return gefunden;
    });
}

TEST_F(Abbruchtest, changeOfLanguage_convertsEveryRowOrNone) {
    static constexpr int Zeilen = 400;
    fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < %1) "
          u"INSERT INTO Ergebnisse(U_NR, Z_NAME, ERGEBNIS, A_D, CI) SELECT i, i, "
          u"iif(i % 3, 'Yes', 'No'), iif(i % 2, 'Workers', 'Drones'), hex(zeroblob(500)) FROM z"_s
              .arg(Zeilen));
    ASSERT_EQ(fassung::sprache(schritt_), Sprache::Englisch);
    töteOft("sprache", [this](const Stand& stand) {
        erwarteHeil();
        const QStringList wörter{u"Arbeiter|Ja;Arbeiter|Nein;Drohnen|Ja;Drohnen|Nein"_s,
                                 u"Drones|No;Drones|Yes;Workers|No;Workers|Yes"_s,
                                 u"Mâles|Non;Mâles|Oui;Ouvrières|Non;Ouvrières|Oui"_s};
        const auto sprache =
            wörter.indexOf(fremd(u"SELECT DISTINCT A_D, ERGEBNIS FROM Ergebnisse ORDER BY 1, 2"_s));
        const bool neu = sprache == static_cast<int>(fassung::sprache(stand.begonnen));
        const int gefunden = neu ? stand.begonnen : stand.fertig;
        EXPECT_EQ(sprache, static_cast<int>(fassung::sprache(gefunden)));
        EXPECT_EQ(tabelle().anzahl(), Zeilen);
        EXPECT_EQ(fremd(u"SELECT count(*) FROM sqlite_master WHERE name LIKE 'Ergebnisse_%'"_s),
                  u"6"_s);
        return gefunden;
    });
}

TEST_F(Abbruchtest, backup_isWholeOrNotThere) {
    fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 200) "
          u"INSERT INTO Ergebnisse(U_NR, CI) SELECT i, hex(zeroblob(5000)) FROM z"_s);
    const QString kopie = ordner_.filePath(u"kopie.tdb"_s);
    const QByteArray vorher = bytes(pfad_);
    töteOft("sichern", [&](const Stand& stand) {
        EXPECT_EQ(bytes(pfad_), vorher);
        if (QFileInfo::exists(kopie)) {
            EXPECT_EQ(Ergebnistabelle(kopie).anzahl(), 200);
            const QString original = std::exchange(pfad_, kopie);
            erwarteHeil();
            pfad_ = original;
            if (zufall_() % 2 == 0) { // to be replaced or made anew
                QFile::remove(kopie);
            }
        } else {
            EXPECT_EQ(stand.fertig, schritt_) << "a finished copy is gone";
        }
        return stand.begonnen;
    });
}

TEST_F(Abbruchtest, bin_andTable_haveTheRowBetweenThem) {
    tabelle().speichere(fassung::satz(1));
    töteOft("papierkorb", [this](const Stand& stand) {
        erwarteHeil();
        const int inTabelle = tabelle().anzahl();
        const auto imKorb = static_cast<int>(Papierkorb(pfad_).einträge().size());
        EXPECT_EQ(inTabelle + imKorb, 1);
        if (inTabelle == 1) {
            EXPECT_TRUE(tabelle().lade(u"A"_s) == fassung::satz(1));
        }
        return stand.begonnen;
    });
}

TEST_F(Abbruchtest, merge_takesAllRowsOrNone) {
    for (int i = 0; i < 2; ++i) {
        const QString andere = ordner_.filePath(u"%1.tdb"_s.arg(i));
        NeueDatenbank(andere);
        const QString eigene = std::exchange(pfad_, andere);
        fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 40) "
              u"INSERT INTO Ergebnisse(U_NR, Z_NAME, CI) SELECT i, %1, hex(zeroblob(500)) FROM z"_s
                  .arg(i));
        pfad_ = eigene;
    }
    töteOft("zusammenführen", [this](const Stand& stand) {
        erwarteHeil();
        const QString stände = fremd(u"SELECT Z_NAME, count(*) FROM Ergebnisse GROUP BY Z_NAME"_s);
        EXPECT_TRUE(stände == u"0|40" || stände == u"1|40" ||
                    (stände.isEmpty() && stand.fertig == 1))
            << stände.toStdString();
        return stand.begonnen;
    });
}

TEST_F(Abbruchtest, dailyBackup_isWholeOrNotThere) {
    fremd(u"WITH RECURSIVE z(i) AS (SELECT 1 UNION SELECT i + 1 FROM z WHERE i < 200) "
          u"INSERT INTO Ergebnisse(U_NR, CI) SELECT i, hex(zeroblob(5000)) FROM z"_s);
    QFile datei(pfad_); // changed again and again, as it were
    ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
    ASSERT_TRUE(datei.setFileTime(QDateTime::currentDateTime().addYears(1),
                                  QFileDevice::FileModificationTime));
    datei.close();
    const QByteArray vorher = bytes(pfad_);
    const QString original = pfad_;
    töteOft("tagessichern", [&](const Stand& stand) {
        EXPECT_EQ(bytes(original), vorher);
        const auto alle = sicherungen(original);
        EXPECT_EQ(alle.empty(), stand.fertig == 1 && alle.empty());
        for (const Sicherung& sicherung : alle) {
            pfad_ = sicherung.pfad;
            EXPECT_EQ(tabelle().anzahl(), 200);
            erwarteHeil();
        }
        pfad_ = original;
        return stand.begonnen;
    });
}

TEST_F(Abbruchtest, newFile_isWholeOrNotThere) {
    NeueDatenbank(ordner_.filePath(u"1.tdb"_s));
    töteOft("anlegen", [this](const Stand& stand) {
        const QString neueste = ordner_.filePath(u"%1.tdb"_s.arg(stand.begonnen));
        const int gefunden = QFileInfo::exists(neueste) ? stand.begonnen : stand.fertig;
        for (const int i : {stand.fertig, gefunden}) {
            pfad_ = ordner_.filePath(u"%1.tdb"_s.arg(i));
            erwarteHeil();
        }
        return gefunden;
    });
}

TEST_F(Abbruchtest, settings_areWhole) {
    const QString ini = ordner_.filePath(u"Index.ini"_s);
    const QString benutzer = ordner_.filePath(u"benutzer.ini"_s);
    QByteArray anfang = "; mine\r\n[Fremd]\r\nx=1\r\n[Probe]\r\n";
    for (int i = 0; i < fassung::Schlüsselzahl; ++i) {
        anfang += fassung::schlüssel(i) + "=1\r\n";
    }
    schreibe(ini, anfang);
    Einstellungen(ini).schreibe(Einstellung::Name, 1);
    ASSERT_TRUE(
        Benutzerspeicher(benutzer).SaveSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s, u"1"_s));
    töteOft("einstellungen", [&](const Stand& stand) {
        const Profil profil(ini);
        const int erster = profil.wert("Probe", fassung::schlüssel(0)).value_or("").toInt();
        erwarteEinesVon(erster, stand);
        QByteArray erwartet = anfang;
        erwartet.replace("=1\r\n", "=" + QByteArray::number(erster) + "\r\n");
        erwartet.replace("x=" + QByteArray::number(erster), "x=1");
        EXPECT_TRUE(bytes(ini).startsWith(erwartet)) << bytes(ini).toStdString();
        const int name = Einstellungen(ini).text(Einstellung::Name).toInt();
        erwarteEinesVon(name, {stand.fertig, erster});
        const int tabelle =
            Benutzerspeicher(benutzer).GetSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s).toInt();
        erwarteEinesVon(tabelle, {stand.fertig, name});
        return tabelle;
    });
}

TEST_F(Abbruchtest, session_isTheFormerStateOrTheNewOne) {
    const QString journal = ordner_.filePath(u"Sitzung.journal"_s);
    ASSERT_TRUE(Sitzung(journal).merke(fassung::sitzung(schritt_)));
    töteOft("sitzung", [&](const Stand& stand) {
        Sitzung sitzung(journal);
        const auto gelesen = sitzung.lies();
        EXPECT_TRUE(sitzung.beiseite().isEmpty());
        if (!gelesen) {
            EXPECT_TRUE(fassung::beginntNeu(stand.begonnen));
            return stand.fertig;
        }
        const int gefunden = gelesen->ansicht.toInt();
        erwarteEinesVon(gefunden, stand);
        EXPECT_EQ(abbild(*gelesen), abbild(fassung::sitzung(gefunden)));
        return gefunden;
    });
}
