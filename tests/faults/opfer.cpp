// The program that the tests kill: does one kind of work on the files of a folder, step by step,
// and tells by a byte that the next step begins.
//
//   faults_opfer <work> <folder> <number of the first step> <steps, 0 for no end>

#include "faults/fassungen.h"
#include "platform/benutzerspeicher.h"
#include "platform/dateiausgabe.h"
#include "platform/profil.h"
#include "print/protokolldruck.h"
#include "results/datenbankfehler.h"
#include "results/sitzung.h"
#include "results/tagessicherung.h"
#include "results/zusammenfuehrung.h"
#include "settings/einstellungen.h"

#include <QGuiApplication>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <poll.h>
#include <unistd.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

using Arbeit = std::function<void(int schritt)>;

void verlange(bool gelungen) {
    if (!gelungen) {
        throw std::runtime_error("could not write");
    }
}

void schreibeEinstellungen(const QString& ordner, int schritt) {
    const QByteArray zahl = QByteArray::number(schritt);
    Profil profil(ordner + u"/Index.ini"_s);
    for (int i = 0; i < fassung::Schlüsselzahl; ++i) {
        verlange(profil.setze("Probe", fassung::schlüssel(i), zahl));
    }
    verlange(profil.sichere());
    Einstellungen einstellungen(ordner + u"/Index.ini"_s);
    einstellungen.schreibe(Einstellung::Name, QString::number(schritt));
    verlange(!einstellungen.schreibenMisslungen());
    verlange(Benutzerspeicher(ordner + u"/benutzer.ini"_s)
                 .SaveSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s, QString::number(schritt)));
}

/// Keeps the file to itself for a second, or until the test closes its end of the pipe.
void sperre(const QString& pfad, int millisekunden) {
    sqlite3* db = nullptr;
    sqlite3_open(pfad.toUtf8().constData(), &db);
    sqlite3_exec(db, "BEGIN EXCLUSIVE; DELETE FROM Ergebnisse", nullptr, nullptr, nullptr);
    verlange(write(STDOUT_FILENO, "!", 1) == 1);
    pollfd ende{STDIN_FILENO, POLLIN, 0};
    (void)poll(&ende, 1, millisekunden);
    sqlite3_close(db);
}

/// Deletes the only row, or brings it back out of the bin where it is gone.
void werfeHinUndHer(const Ergebnistabelle& tabelle) {
    Ergebnistabelle t = tabelle;
    const auto zeilen = t.zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 1);
    if (!zeilen.empty()) {
        t.lösche(zeilen.front());
        return;
    }
    const Papierkorb korb(t.pfad(), std::chrono::seconds(60));
    verlange(korb.stelleWiederHer({korb.einträge().front().nr},
                                  Papierkorb::BeiVergebener::Auslassen, Sprache::Deutsch)
                 .zahl == 1);
}

/// Takes all rows of another file in place of those here.
void führeZusammen(const QString& pfad, const QString& andere) {
    const auto weiter = [](int /*schritt*/, int /*alle*/) { return true; };
    const Dateiquelle quelle(andere, pfad);
    Zusammenführung zusammenführung(pfad, quelle, std::chrono::seconds(60));
    verlange(zusammenführung.vergleiche(weiter));
    zusammenführung.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
    zusammenführung.entscheide(Zeilenstand::Verschieden, Entscheidung::Nehmen);
    verlange(zusammenführung.übernimm(Sprache::Deutsch, weiter).has_value());
}

std::map<std::string, Arbeit> arbeiten(const QString& ordner) {
    const QString pfad = ordner + u"/Völker 100% 'neu'.tdb"_s;
    const Ergebnistabelle tabelle(pfad, std::chrono::seconds(60)); // the tests run beside others
    const auto sitzung = std::make_shared<Sitzung>(ordner + u"/Sitzung.journal"_s);
    const auto speichere = [tabelle](const Ergebnissatz& satz) {
        Ergebnistabelle t = tabelle;
        t.speichere(satz);
    };
    return {
        {"speichern", [=](int schritt) { speichere(fassung::satz(schritt)); }},
        {"einlesen", [=](int schritt) { speichere(fassung::eingelesen(schritt)); }},
        {"sprache",
         [=](int schritt) {
             Ergebnistabelle t = tabelle;
             t.SpracheDB(fassung::sprache(schritt));
         }},
        {"sichern", [=](int) { tabelle.sichere(ordner + u"/kopie.tdb"_s); }},
        {"anlegen", [=](int schritt) { NeueDatenbank(ordner + u"/%1.tdb"_s.arg(schritt)); }},
        {"ändern",
         [=](int schritt) {
             Ergebnistabelle t = tabelle;
             auto zeilen = t.zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 1);
             verlange(!zeilen.empty());
             const auto vorher = zeilen.front();
             zeilen.front().werte[2] = QString::number(schritt);
             t.ändere(vorher, zeilen.front());
         }},
        {"papierkorb", [=](int) { werfeHinUndHer(tabelle); }},
        {"zusammenführen",
         [=](int schritt) { führeZusammen(pfad, ordner + u"/%1.tdb"_s.arg(schritt % 2)); }},
        {"tagessichern",
         [=](int schritt) {
             const std::atomic<bool> aufhören = false;
             sichereTag(pfad, QDate(2026, 1, 1).addDays(schritt), aufhören);
         }},
        {"csv",
         [=](int schritt) {
             verlange(!schreibeDatei(ordner + u"/aus.csv"_s, fassung::ausfuhr(schritt)));
         }},
        {"pdf",
         [=](int schritt) {
             Protokolldaten daten;
             daten.titel = QString::number(schritt);
             verlange(speichereProtokoll(ordner + u"/aus.pdf"_s, daten, {}, {1, 1}).isEmpty());
         }},
        {"index",
         [=](int schritt) {
             verlange(WritePrivateProfileStringA("Probe", "x", QByteArray::number(schritt),
                                                 ordner + u"/Index.ini"_s));
         }},
        {"speicher",
         [=](int schritt) {
             verlange(Benutzerspeicher(ordner + u"/benutzer.ini"_s)
                          .SaveSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s,
                                       QString::number(schritt)));
         }},
        {"einstellungen", [=](int schritt) { schreibeEinstellungen(ordner, schritt); }},
        {"sitzung",
         [=](int schritt) {
             verlange(!fassung::beginntNeu(schritt) || sitzung->lösche());
             verlange(sitzung->merke(fassung::sitzung(schritt)));
         }},
        {"nummern",
         [=](int schritt) {
             Ergebnissatz satz = fassung::satz(schritt);
             satz.U_NR = QString::number(schritt);
             speichere(satz);
         }},
        {"sperren", [=](int millisekunden) { sperre(pfad, millisekunden); }},
    };
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        return EXIT_FAILURE;
    }
    std::optional<QGuiApplication> app;
    if (argv[1] == std::string_view("pdf")) {
        app.emplace(argc, argv); // painting needs fonts
    }
    try {
        const Arbeit arbeit = arbeiten(QString::fromUtf8(argv[2])).at(argv[1]);
        const int erster = std::atoi(argv[3]);
        const int anzahl = std::atoi(argv[4]);
        for (int i = 0; anzahl == 0 || i < anzahl; ++i) {
            verlange(write(STDOUT_FILENO, ".", 1) == 1);
            arbeit(erster + i);
        }
        return EXIT_SUCCESS;
    } catch (const Datenbankfehler& fehler) {
        (void)std::fprintf(stderr, "%s %s: %s\n", argv[1], argv[3], fehler.what());
        return fassung::ErsterGrund + static_cast<int>(fehler.grund());
    } catch (const std::exception& fehler) {
        (void)std::fprintf(stderr, "%s %s: %s\n", argv[1], argv[3], fehler.what());
        return EXIT_FAILURE;
    }
}
