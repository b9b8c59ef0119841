#include "results/ergebnistabelle.h"

#include "platform/zahlen.h"
#include "results/ergebnisdatei.h"
#include "results/herkunft.h"
#include "results/satzzugriff.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <iterator>
#include <span>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using Spalten = std::array<QStringView, Ergebnistabelle::Spaltenzahl>;
constexpr Spalten gezeigt = {u"U_NR",     u"ZB_NR", u"Z_NAME", u"B_NAME", u"A_D",
                             u"ERGEBNIS", u"RASSE", u"VATER",  u"DATUM"};
constexpr size_t spalteNummer = 0;

QString text(const SQLite::Column& wert) {
    return spaltentext(wert).text;
}

void binde(SQLite::Statement& anweisung, int stelle, const QString& wert) {
    anweisung.bind(stelle, wert.toStdString());
}

void prüfeBreite(const QString& pfad, QStringView spalte, const QString& wert) {
    for (const Textspalte& s : textspalten()) {
        if (s.name == spalte && zeichenzahl(wert) > s.breite) {
            throw Datenbankfehler::zuLang(pfad, spalte.toString(), zeichenzahl(wert), s.breite);
        }
    }
}

void prüfeBreiten(const QString& pfad, const Ergebnissatz& satz) {
    for (const Textspalte& spalte : textspalten()) {
        prüfeBreite(pfad, spalte.name, satz.*spalte.wert);
    }
}

/// The two words of a column in the other languages and the one that takes their place.
struct Umstellung {
    const char* setzt;
    const char* trifft;
};

constexpr std::array<std::array<Umstellung, 4>, anzahlSprachen> umstellungen = {{
    {{{"ERGEBNIS = 'Ja'", " ERGEBNIS LIKE 'Yes' OR ERGEBNIS LIKE 'Oui'"},
      {"ERGEBNIS = 'Nein'", " ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE 'Non'"},
      {"A_D = 'Arbeiter'", "A_D LIKE 'Workers' OR A_D LIKE 'Ouvrières'"},
      {"A_D = 'Drohnen'", "A_D LIKE 'Drones' OR A_D LIKE 'Mâles'"}}},
    {{{"ERGEBNIS = 'Yes'", " ERGEBNIS LIKE 'Ja' OR ERGEBNIS LIKE 'Oui'"},
      {"ERGEBNIS = 'No'", " ERGEBNIS LIKE 'Nein' OR ERGEBNIS LIKE 'Non'"},
      {"A_D = 'Workers'", "A_D LIKE 'Arbeiter' OR A_D LIKE 'Ouvrières'"},
      {"A_D = 'Drones'", "A_D LIKE 'Drohnen' OR A_D LIKE 'Mâles'"}}},
    {{{"ERGEBNIS = 'Oui'", " ERGEBNIS LIKE 'Yes' OR ERGEBNIS LIKE 'Ja'"},
      {"ERGEBNIS = 'Non'", " ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE 'Nein'"},
      {"A_D = 'Ouvrières'", "A_D LIKE 'Workers' OR A_D LIKE 'Arbeiter'"},
      {"A_D = 'Mâles'", "A_D LIKE 'Drones' OR A_D LIKE 'Drohnen'"}}},
}};

/// Whether any row meets @p bedingung on ERGEBNIS and A_D. Only a handful of values is compared:
/// the limit keeps the engine from comparing row by row.
bool trifft(Ergebnisdatei& datei, const std::string& bedingung) {
    return datei.verbindung()
               .execAndGet("SELECT EXISTS(SELECT 1 FROM (SELECT DISTINCT ERGEBNIS, A_D FROM "
                           "Ergebnisse LIMIT -1) WHERE " +
                           bedingung + ")")
               .getInt() != 0;
}

Ergebnistabelle::Zeile liesZeile(Ergebnisdatei& datei, qint64 id) {
    std::string liste;
    for (const QStringView spalte : gezeigt) {
        liste += (liste.empty() ? "" : ", ") + spalte.toString().toStdString();
    }
    SQLite::Statement abfrage(datei.verbindung(), "SELECT " + liste + " FROM Ergebnisse WHERE " +
                                                      datei.platz() + " = ?");
    abfrage.bind(1, static_cast<int64_t>(id));
    Ergebnistabelle::Zeile zeile{.id = id, .werte = {}};
    if (abfrage.executeStep()) {
        for (size_t i = 0; i < gezeigt.size(); ++i) {
            zeile.werte.at(i) = text(abfrage.getColumn(static_cast<int>(i)));
        }
    }
    return zeile;
}

/// The place of a row is given to another one when it has gone, or another file took its name.
void prüfeZeile(Ergebnisdatei& datei, const Ergebnistabelle::Zeile& zeile) {
    SQLite::Statement abfrage(datei.verbindung(),
                              "SELECT U_NR FROM Ergebnisse WHERE " + datei.platz() + " = ?");
    abfrage.bind(1, static_cast<int64_t>(zeile.id));
    const QString& nummer = zeile.werte.at(spalteNummer);
    if (!abfrage.executeStep() || text(abfrage.getColumn(0)) != nummer) {
        throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, datei.pfad(), nummer);
    }
}

void prüfeNummerFrei(Ergebnisdatei& datei, const Ergebnistabelle::Zeile& zeile) {
    const QString& nummer = zeile.werte.at(spalteNummer);
    for (const Fundstelle& stelle : datei.finde(geschrieben(nummer))) {
        if (stelle.id != zeile.id) {
            throw Datenbankfehler(Datenbankgrund::NummerDoppelt, datei.pfad(), nummer);
        }
    }
}

void schreibeSpalte(Ergebnisdatei& datei, const Ergebnistabelle::Zeile& zeile, size_t spalte) {
    const QStringView name = gezeigt.at(spalte);
    const QString& wert = zeile.werte.at(spalte);
    SQLite::Statement ändern(datei.verbindung(), "UPDATE Ergebnisse SET " +
                                                     name.toString().toStdString() + " = ? WHERE " +
                                                     datei.platz() + " = ?");
    if (name != u"DATUM" || !wert.isEmpty()) {
        binde(ändern, 1, geschrieben(wert));
    }
    ändern.bind(2, static_cast<int64_t>(zeile.id));
    ändern.exec();
}

} // namespace

Ergebnistabelle::Ergebnistabelle(QString DatenbankPfad, std::chrono::milliseconds wartezeit)
    : pfad_(std::move(DatenbankPfad))
    , wartezeit_(wartezeit) {}

void Ergebnistabelle::öffneProbeweise() const {
    mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) { datei.prüfeAufbau(); });
}

int Ergebnistabelle::anzahl() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        return datei.verbindung().execAndGet("SELECT COUNT(*) FROM Ergebnisse").getInt();
    });
}

QStringList Ergebnistabelle::bekannte(QString Ergebnissatz::*spalte, int höchstens) const {
    const auto spalten = textspalten();
    const auto stelle = std::find_if(spalten.begin(), spalten.end(),
                                     [spalte](const Textspalte& s) { return s.wert == spalte; });
    Q_ASSERT(stelle != spalten.end());
    QStringList texte = mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        const std::string name = stelle->name.toString().toStdString();
        SQLite::Statement abfrage(
            datei.verbindung(),
            "SELECT TRIM(" + name +
                ") AS wort FROM Ergebnisse WHERE wort <> '' "
                "GROUP BY wort COLLATE NOCASE ORDER BY COUNT(*) DESC, wort LIMIT " +
                std::to_string(höchstens));
        QStringList gefunden;
        while (abfrage.executeStep()) {
            gefunden << text(abfrage.getColumn(0));
        }
        return gefunden;
    });
    texte.sort(Qt::CaseInsensitive);
    return texte;
}

std::optional<QString> Ergebnistabelle::letzteNummer() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        SQLite::Statement letzte(datei.verbindung(),
                                 "SELECT U_NR FROM Ergebnisse WHERE DATUM IS "
                                 "(SELECT MAX(DATUM) FROM Ergebnisse) ORDER BY " +
                                     datei.platz() + " DESC LIMIT 1");
        return letzte.executeStep() ? std::optional(text(letzte.getColumn(0))) : std::nullopt;
    });
}

QString Ergebnistabelle::NächsteNummer(const QDate& heute, const QString& kurzzeichen) const {
    const QString jahr = heute.toString(u"yyyy"_s);
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Statement höchste(datei.verbindung(),
                                  "SELECT MAX(VAL(U_NR)) FROM Ergebnisse WHERE Year(Datum) = " +
                                      jahr.toStdString());
        höchste.executeStep();
        const SQLite::Column wert = höchste.getColumn(0);
        double n = wert.isNull() ? 1 : wert.getDouble() + 1;
        QString nummer;
        constexpr double Größte = 1e9; // beyond, the numbers are not ours
        // An examination of another year, or without a date, may have it.
        do {
            nummer = Format(n, u"000", {}) + kurzzeichen.left(3) + jahr;
            n += 1;
        } while (n < Größte && !datei.finde(nummer).empty());
        return nummer;
    });
}

void Ergebnistabelle::speichere(const Ergebnissatz& satz) {
    prüfeBreiten(pfad_, satz);
    mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei);
        setzeAnStelle(datei, zielzeilen(datei, geschrieben(satz.U_NR)), satz,
                      Korbanlass::Überschrieben);
        vorgang.commit();
    });
}

bool Ergebnistabelle::ersetze(const Ergebnissatz& satz, const std::optional<Ergebnissatz>& erwartet,
                              std::optional<Korbanlass> anlass) {
    prüfeBreiten(pfad_, satz);
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei);
        const auto ziele = zielzeilen(datei, geschrieben(satz.U_NR));
        for (const std::string& ziel : ziele) {
            if (!erwartet || !stehenGleich(lies(datei, ziel), *erwartet)) {
                return false;
            }
        }
        setzeAnStelle(datei, ziele, satz, anlass);
        vorgang.commit();
        return true;
    });
}

std::optional<Ergebnissatz> Ergebnistabelle::lade(const QString& nummer) const {
    return mitErgebnisdatei(
        pfad_, wartezeit_, [&](Ergebnisdatei& datei) -> std::optional<Ergebnissatz> {
            // One view of the file, so that no column comes from a row stored meanwhile.
            SQLite::Transaction lesen(datei.verbindung());
            const auto ziele = zielzeilen(datei, nummer);
            return ziele.empty() ? std::nullopt : std::optional(lies(datei, ziele.front()));
        });
}

void Ergebnistabelle::SpracheDB(Sprache sprache) {
    const auto& liste = umstellungen.at(static_cast<size_t>(sprache));
    std::string irgendeine = "0";
    for (const Umstellung& u : liste) {
        irgendeine += std::string(" OR ") + u.trifft;
    }
    mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        datei.vergleicheMitUmlauten();
        if (!trifft(datei, irgendeine)) {
            return;
        }
        Schreibvorgang vorgang(datei);
        std::vector<Umstellung> fällig;
        std::copy_if(liste.begin(), liste.end(), std::back_inserter(fällig),
                     [&](const Umstellung& u) { return trifft(datei, u.trifft); });
        entferneIndizes(datei.verbindung()); // as good as every row changes
        for (const Umstellung& u : fällig) {
            datei.verbindung().exec(std::string("UPDATE Ergebnisse SET ") + u.setzt + " WHERE " +
                                    u.trifft);
        }
        ergänzeIndizes(datei.verbindung());
        vorgang.commit();
    });
}

const std::array<QStringView, Ergebnistabelle::Spaltenzahl>& Ergebnistabelle::spalten() {
    return gezeigt;
}

void Ergebnistabelle::sätze(const std::vector<qint64>& ids,
                            const std::function<bool(const Ergebnissatz&)>& nimm,
                            const std::function<void(const QString&)>& übergehe) const {
    constexpr std::size_t gruppe = 64;
    const std::span alle(ids);
    for (std::size_t erste = 0; erste < alle.size(); erste += gruppe) {
        const auto teil = alle.subspan(erste, std::min(gruppe, alle.size() - erste));
        const auto gelesen = mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
            SQLite::Transaction lesen(datei.verbindung());
            return lies(datei, teil);
        });
        std::for_each(gelesen.zuGroß.begin(), gelesen.zuGroß.end(), übergehe);
        if (!std::all_of(gelesen.sätze.begin(), gelesen.sätze.end(), nimm)) {
            return;
        }
    }
}

Rücknahme Ergebnistabelle::ändere(const Zeile& alt, const Zeile& neu) {
    std::vector<size_t> geändert;
    for (size_t i = 0; i < gezeigt.size(); ++i) {
        const QString altKnapp = alt.werte.at(i).trimmed();
        const QString neuKnapp = neu.werte.at(i).trimmed();
        if (alt.werte.at(i) == neu.werte.at(i) || (altKnapp.isEmpty() && neuKnapp.isEmpty())) {
            continue;
        }
        geändert.push_back(i);
        if (altKnapp != neuKnapp) {
            prüfeBreite(pfad_, gezeigt.at(i), neu.werte.at(i));
        }
    }
    const bool umbenannt =
        std::find(geändert.begin(), geändert.end(), spalteNummer) != geändert.end();
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei);
        prüfeZeile(datei, alt);
        if (Zeile jetzt = liesZeile(datei, alt.id); jetzt.werte != alt.werte) {
            throw Zeilenkonflikt(std::move(jetzt));
        }
        Rücknahme rücknahme;
        if (geändert.empty()) {
            return rücknahme;
        }
        rücknahme.einträge = {
            hebeAuf(datei, alt.id, umbenannt ? Korbanlass::Umbenannt : Korbanlass::Geändert)};
        for (const size_t i : geändert) {
            if (i == spalteNummer) {
                prüfeNummerFrei(datei, neu);
                benenneHerkunftUm(datei, alt.werte.at(i), geschrieben(neu.werte.at(i)));
            }
            schreibeSpalte(datei, neu, i);
        }
        const std::array ids{alt.id};
        for (const Ergebnissatz& jetzt : lies(datei, ids).sätze) {
            vermerkeNachfolger(datei, rücknahme.einträge.front(), jetzt.U_NR, satzmarke(jetzt));
        }
        räumeKorbAuf(datei);
        vorgang.commit();
        return rücknahme;
    });
}

Rücknahme Ergebnistabelle::lösche(const Zeile& zeile) {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei);
        prüfeZeile(datei, zeile);
        Rücknahme rücknahme;
        rücknahme.einträge = {hebeAuf(datei, zeile.id, Korbanlass::Gelöscht)};
        entferneZeile(datei, zeile.id);
        räumeKorbAuf(datei);
        vorgang.commit();
        return rücknahme;
    });
}

} // namespace tarvel
