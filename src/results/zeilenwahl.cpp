// Which rows of a results file the browser shows, in which order.

#include "results/zeilenwahl.h"

#include "results/ergebnisdatei.h"
#include "results/ergebnistabelle.h"
#include "results/satzzugriff.h"
#include "results/sqlfunktionen.h"

#include <QSet>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Ordnung = u" ORDER BY ";
constexpr int alle = std::numeric_limits<int>::max();

std::string spaltenliste() {
    QString liste;
    for (const QStringView spalte : Ergebnistabelle::spalten()) {
        liste += u", "_s;
        liste += spalte;
    }
    return liste.toStdString();
}

/// The column that the rows are in the order of; empty when in none.
QString ordnungsspalte(const Zeilenwahl& wahl) {
    if (wahl.spalte) {
        return Ergebnistabelle::spalten().at(static_cast<std::size_t>(*wahl.spalte)).toString();
    }
    const qsizetype stelle = wahl.datenquelle.indexOf(Ordnung);
    return stelle < 0 ? QString() : wahl.datenquelle.mid(stelle + Ordnung.size()).trimmed();
}

bool hatIndex(const QString& spalte) {
    return spalte == u"DATUM" || spalte == u"U_NR" || spalte == u"ZB_NR" || spalte == u"Z_NAME" ||
           spalte == u"B_NAME";
}

/// Orders rows exactly as an index of the file is sorted.
QString indexordnung(const QString& spalte, bool absteigend) {
    const QString richtung = absteigend ? u" DESC"_s : QString();
    QString sql = Ordnung.toString() + spalte;
    if (spalte != u"DATUM") {
        sql += u" COLLATE NOCASE"_s;
    }
    sql += richtung;
    if (spalte != u"U_NR") {
        sql += u", U_NR COLLATE NOCASE"_s + richtung;
    }
    return sql;
}

/// The record source with the place of each row, in an order that is the same every time.
QString mitId(const Zeilenwahl& wahl, const std::string& platz) {
    constexpr QStringView alles = u"SELECT * FROM Ergebnisse";
    if (!wahl.datenquelle.startsWith(alles)) {
        throw std::invalid_argument("no record source of the table");
    }
    QString rest = wahl.datenquelle.mid(alles.size());
    if (const qsizetype stelle = rest.indexOf(Ordnung); stelle >= 0) {
        rest.truncate(stelle);
    }
    const QString spalte = ordnungsspalte(wahl);
    if (!spalte.isEmpty()) {
        const bool sortiertWird = wahl.brauchtAlle();
        rest +=
            indexordnung(hatIndex(spalte) ? spalte : u"U_NR"_s, wahl.absteigend && !sortiertWird);
    }
    return u"SELECT "_s + QString::fromStdString(platz) + u" AS id, * FROM Ergebnisse"_s + rest;
}

QString filterbedingung(const Zeilenfilter& filter) {
    QStringList teile;
    if (filter.saison == Zeilenfilter::OhneSaison) {
        teile << u"Year(DATUM) IS NULL"_s;
    } else if (!filter.saison.isEmpty()) {
        teile << u"substr(DATUM, 1, 5) = :saison"_s;
    }
    if (!filter.züchter.isEmpty()) {
        teile << u"trim(Z_NAME) LIKE :zuechter ESCAPE '\\'"_s;
    }
    if (!filter.rasse.isEmpty()) {
        teile << u"trim(RASSE) LIKE :rasse ESCAPE '\\'"_s;
    }
    if (filter.tiere != Geschlechtsfilter::Alle) {
        teile << u'(' + bedingung(filter.tiere) + u')';
    }
    if (filter.ergebnis != Ergebnisfilter::Alle) {
        teile << u'(' + bedingung(filter.ergebnis) + u')';
    }
    return teile.join(u" AND "_s);
}

/// The words that are searched for, each with what stands for it in the file.
std::vector<std::vector<std::string>> suchworte(const Zeilenwahl& wahl) {
    std::vector<std::vector<std::string>> worte;
    for (const QString& wort : wahl.suchtext.split(u' ', Qt::SkipEmptyParts)) {
        std::vector<std::string> formen{wort.toStdString()};
        if (wahl.datumsworte) {
            for (const QString& datum : wahl.datumsworte(wort)) {
                formen.push_back(datum.toStdString());
            }
        }
        worte.push_back(std::move(formen));
    }
    return worte;
}

/// Only what the statement names is read, never the long texts.
SQLite::Statement auswahl(Ergebnisdatei& datei, const std::string& spalten, const Zeilenwahl& wahl,
                          int höchstens) {
    datei.vergleicheMitUmlauten();
    const auto worte = suchworte(wahl);
    QStringList bedingungen;
    if (const QString filter = filterbedingung(wahl.filter); !filter.isEmpty()) {
        bedingungen << filter;
    }
    if (!worte.empty()) {
        registriereSuche(datei.verbindung(), worte);
        bedingungen << u"findet(VOLK"_s + QString::fromStdString(spaltenliste()) + u')';
    }
    QString sql = u"SELECT id"_s + QString::fromStdString(spalten) + u" FROM ("_s +
                  mitId(wahl, datei.platz()) + u')';
    if (!bedingungen.isEmpty()) {
        sql += u" WHERE "_s + bedingungen.join(u" AND "_s);
    }
    SQLite::Statement anweisung(datei.verbindung(),
                                sql.toStdString() + " LIMIT " + std::to_string(höchstens));
    const auto binde = [&anweisung](const char* stelle, const QString& wert) {
        if (!wert.isEmpty()) {
            anweisung.bind(stelle, wert.toStdString());
        }
    };
    if (wahl.filter.saison != Zeilenfilter::OhneSaison && !wahl.filter.saison.isEmpty()) {
        binde(":saison", wahl.filter.saison + u'-');
    }
    binde(":zuechter", ohnePlatzhalter(wahl.filter.züchter));
    binde(":rasse", ohnePlatzhalter(wahl.filter.rasse));
    return anweisung;
}

Ergebnistabelle::Zeile zeile(SQLite::Statement& anweisung) {
    Ergebnistabelle::Zeile zeile;
    zeile.id = anweisung.getColumn(0).getInt64();
    for (int i = 0; i < Ergebnistabelle::Spaltenzahl; ++i) {
        zeile.werte.at(static_cast<std::size_t>(i)) = spaltentext(anweisung.getColumn(i + 1)).text;
    }
    return zeile;
}

/// Rows of one spelling, in the order of their numbers.
struct Gruppe {
    QString schlüssel;
    QString text;
    std::vector<qint64> ids;
};

/// Whether an index sorts a text as people do.
bool istSchlicht(std::string_view bytes) {
    return (!bytes.starts_with(' ') || bytes == " ") &&
           std::all_of(bytes.begin(), bytes.end(), [](unsigned char c) { return c < 0x80; });
}

std::string_view bytes(const SQLite::Column& wert) {
    return {wert.getText(), static_cast<std::size_t>(wert.getBytes())};
}

/// The rows as an index gives them; nullopt when it sorts one of their texts otherwise than people.
std::optional<std::vector<qint64>> schlichte(SQLite::Statement& anweisung) {
    std::vector<qint64> folge;
    while (anweisung.executeStep()) {
        if (!istSchlicht(bytes(anweisung.getColumn(1)))) {
            anweisung.reset();
            return std::nullopt;
        }
        folge.push_back(anweisung.getColumn(0).getInt64());
    }
    return folge;
}

/// Rows come in any order; those of one spelling stay in theirs.
std::vector<qint64> nachSchreibweise(SQLite::Statement& anweisung) {
    std::vector<Gruppe> gruppen;
    std::unordered_map<std::string, std::size_t> bekannte;
    std::string bisher;
    std::size_t jetzt = 0;
    while (anweisung.executeStep()) {
        const SQLite::Column wert = anweisung.getColumn(1);
        if (gruppen.empty() || bytes(wert) != bisher) {
            bisher = bytes(wert);
            const auto [stelle, neu] = bekannte.try_emplace(bisher, gruppen.size());
            jetzt = stelle->second;
            if (neu) {
                QString text = spaltentext(wert).text;
                gruppen.push_back({sortierschlüssel(text), std::move(text), {}});
            }
        }
        gruppen[jetzt].ids.push_back(anweisung.getColumn(0).getInt64());
    }
    std::sort(gruppen.begin(), gruppen.end(), [](const Gruppe& a, const Gruppe& b) {
        return std::tie(a.schlüssel, a.text) < std::tie(b.schlüssel, b.text);
    });
    std::vector<qint64> folge;
    for (const Gruppe& gruppe : gruppen) {
        folge.insert(folge.end(), gruppe.ids.begin(), gruppe.ids.end());
    }
    return folge;
}

std::vector<qint64> sortiert(SQLite::Statement& anweisung, bool ausIndex, bool absteigend) {
    std::optional<std::vector<qint64>> folge;
    if (ausIndex) {
        folge = schlichte(anweisung);
    }
    if (!folge) {
        folge = nachSchreibweise(anweisung);
    }
    if (absteigend) {
        std::reverse(folge->begin(), folge->end());
    }
    return std::move(*folge);
}

} // namespace

bool Zeilenwahl::brauchtAlle() const {
    const QString ordnung = ordnungsspalte(*this);
    return !ordnung.isEmpty() && ordnung != u"DATUM" && ordnung != u"U_NR";
}

QString sortierschlüssel(const QString& text) {
    QString schlüssel;
    schlüssel.reserve(text.size());
    const QString zerlegt = text.trimmed().toCaseFolded().normalized(QString::NormalizationForm_KD);
    for (const QChar c : zerlegt) {
        switch (c.unicode()) {
        case u'ß':
            schlüssel += u"ss"_s;
            break;
        case u'æ':
            schlüssel += u"ae"_s;
            break;
        case u'œ':
            schlüssel += u"oe"_s;
            break;
        case u'ø':
            schlüssel += u'o';
            break;
        case u'ł':
            schlüssel += u'l';
            break;
        default:
            if (!c.isMark()) {
                schlüssel += c;
            }
        }
    }
    return schlüssel;
}

std::vector<Ergebnistabelle::Zeile> Ergebnistabelle::zeilen(const Zeilenwahl& wahl,
                                                            int höchstens) const {
    if (wahl.brauchtAlle()) {
        std::vector<qint64> folge = zeilenfolge(wahl);
        folge.resize(std::min(folge.size(), static_cast<std::size_t>(höchstens)));
        return zeilen(folge);
    }
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        auto anweisung = auswahl(datei, spaltenliste(), wahl, höchstens);
        std::vector<Zeile> ergebnis;
        while (anweisung.executeStep()) {
            ergebnis.push_back(zeile(anweisung));
        }
        return ergebnis;
    });
}

std::vector<qint64> Ergebnistabelle::zeilenfolge(const Zeilenwahl& wahl) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        if (wahl.brauchtAlle()) {
            auto anweisung = auswahl(datei, ", " + ordnungsspalte(wahl).toStdString(), wahl, alle);
            return sortiert(anweisung, hatIndex(ordnungsspalte(wahl)), wahl.absteigend);
        }
        auto anweisung = auswahl(datei, {}, wahl, alle);
        std::vector<qint64> ergebnis;
        while (anweisung.executeStep()) {
            ergebnis.push_back(anweisung.getColumn(0).getInt64());
        }
        return ergebnis;
    });
}

std::vector<Ergebnistabelle::Zeile> Ergebnistabelle::zeilen(const std::vector<qint64>& ids) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Transaction lesen(datei.verbindung());
        SQLite::Statement anweisung(datei.verbindung(), "SELECT " + datei.platz() + spaltenliste() +
                                                            " FROM Ergebnisse WHERE " +
                                                            datei.platz() + " = ?");
        std::vector<Zeile> ergebnis;
        ergebnis.reserve(ids.size());
        for (const qint64 id : ids) {
            anweisung.bind(1, static_cast<int64_t>(id));
            if (anweisung.executeStep()) {
                ergebnis.push_back(zeile(anweisung));
            }
            anweisung.reset();
        }
        return ergebnis;
    });
}

std::vector<Ergebnistabelle::Anzahl> Ergebnistabelle::schreibweisen(int spalte) const {
    const std::string name =
        spalten().at(static_cast<std::size_t>(spalte)).toString().toStdString();
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + name +
                                                          " AS wort, COUNT(*) FROM Ergebnisse "
                                                          "WHERE trim(wort) <> '' GROUP BY wort");
        std::vector<Anzahl> gefunden;
        while (abfrage.executeStep()) {
            gefunden.push_back(
                {spaltentext(abfrage.getColumn(0)).text, abfrage.getColumn(1).getInt()});
        }
        return gefunden;
    });
}

std::optional<qint64> Ergebnistabelle::platz(const QString& nummer) const {
    const QHash<QString, qint64> gefunden = plätze({nummer});
    return gefunden.isEmpty() ? std::nullopt : std::optional(*gefunden.cbegin());
}

QHash<QString, qint64> Ergebnistabelle::plätze(const QStringList& nummern) const {
    constexpr qsizetype Einzeln = 20; // more are quicker found by going through all rows once
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Transaction lesen(datei.verbindung());
        QHash<QString, qint64> gefunden;
        if (nummern.size() > Einzeln) {
            const QSet<QString> gesucht(nummern.begin(), nummern.end());
            SQLite::Statement zeilen(datei.verbindung(),
                                     "SELECT " + datei.platz() + ", U_NR FROM Ergebnisse");
            while (zeilen.executeStep()) {
                const QString nummer = spaltentext(zeilen.getColumn(1)).text;
                if (gesucht.contains(nummer)) {
                    gefunden.insert(nummer, zeilen.getColumn(0).getInt64());
                }
            }
            return gefunden;
        }
        for (const QString& nummer : nummern) {
            const auto stellen = datei.finde(geschrieben(nummer));
            const auto genau = std::find_if(stellen.begin(), stellen.end(),
                                            [&](const auto& s) { return s.U_NR.text == nummer; });
            if (!stellen.empty()) {
                gefunden.insert(nummer, (genau != stellen.end() ? *genau : stellen.front()).id);
            }
        }
        return gefunden;
    });
}

QStringList Ergebnistabelle::saisons() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(),
                                  "SELECT DISTINCT Year(DATUM) AS jahr FROM Ergebnisse "
                                  "ORDER BY jahr DESC");
        QStringList gefunden;
        while (abfrage.executeStep()) {
            const SQLite::Column jahr = abfrage.getColumn(0);
            gefunden << (jahr.isNull() ? Zeilenfilter::OhneSaison.toString()
                                       : u"%1"_s.arg(jahr.getInt(), 4, 10, QChar(u'0')));
        }
        return gefunden;
    });
}

std::vector<qint64> Ergebnistabelle::zeilenMit(int spalte, const QStringList& texte) const {
    const std::string name =
        spalten().at(static_cast<std::size_t>(spalte)).toString().toStdString();
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(),
                                  "SELECT " + datei.platz() + ", " + name + " FROM Ergebnisse");
        std::vector<qint64> ids;
        while (abfrage.executeStep()) {
            if (texte.contains(spaltentext(abfrage.getColumn(1)).text)) {
                ids.push_back(abfrage.getColumn(0).getInt64());
            }
        }
        return ids;
    });
}

void Ergebnistabelle::flügelzahlen(const std::vector<qint64>& ids,
                                   const std::function<bool(qint64 id, int zahl)>& nimm) const {
    constexpr std::size_t gruppe = 256;
    for (std::size_t erste = 0; erste < ids.size(); erste += gruppe) {
        const std::size_t ende = std::min(erste + gruppe, ids.size());
        const bool weiter = mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
            SQLite::Transaction lesen(datei.verbindung());
            SQLite::Statement abfrage(datei.verbindung(),
                                      "SELECT length(CI) - length(replace(CI, '#', '')) "
                                      "FROM Ergebnisse WHERE " +
                                          datei.platz() + " = ?");
            for (std::size_t i = erste; i < ende; ++i) {
                abfrage.bind(1, static_cast<int64_t>(ids[i]));
                const int zahl = abfrage.executeStep() ? abfrage.getColumn(0).getInt() : 0;
                abfrage.reset();
                if (!nimm(ids[i], zahl)) {
                    return false;
                }
            }
            return true;
        });
        if (!weiter) {
            return;
        }
    }
}

} // namespace tarvel
