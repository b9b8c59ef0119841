#include "results/papierkorb.h"

#include "results/ergebnisdatei.h"
#include "results/herkunft.h"
#include "results/nummernvergabe.h"
#include "results/satzzugriff.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const std::string Korbtabelle = "Tarvel_Papierkorb"; // NOLINT(cert-err58-cpp)
constexpr QStringView Eigene = u"Korb_";

struct Anlasszeile {
    QStringView wort; ///< as the file holds it, whatever the language
    Meldung text;
};
constexpr std::array<Anlasszeile, 6> anlässe{
    {{u"geloescht", Meldung::KorbGelöscht},
     {u"geaendert", Meldung::KorbGeändert},
     {u"umbenannt", Meldung::KorbUmbenannt},
     {u"ueberschrieben", Meldung::KorbÜberschrieben},
     {u"zusammengefuehrt", Meldung::KorbZusammengeführt},
     {u"wiederhergestellt", Meldung::KorbWiederhergestellt}}};

std::optional<Korbanlass> anlassAus(const QString& wort) {
    for (std::size_t i = 0; i < anlässe.size(); ++i) {
        if (anlässe.at(i).wort == wort) {
            return static_cast<Korbanlass>(i);
        }
    }
    return std::nullopt;
}

std::string zeitpunkt(const QDateTime& zeit) {
    return zeit.toUTC().toString(Qt::ISODate).toStdString();
}

bool enthält(const std::vector<std::string>& spalten, const std::string& name) {
    return std::any_of(spalten.begin(), spalten.end(), [&](const std::string& spalte) {
        return QString::fromStdString(spalte).compare(QString::fromStdString(name),
                                                      Qt::CaseInsensitive) == 0;
    });
}

bool vorhanden(Ergebnisdatei& datei) {
    return datei.verbindung().tableExists(Korbtabelle);
}

/// The columns of the table, those of other programs too, that the bin can hold.
std::vector<std::string> aufgehobene(Ergebnisdatei& datei) {
    std::vector<std::string> spalten = spaltennamen(datei, "Ergebnisse");
    std::erase_if(spalten, [](const std::string& name) {
        return QString::fromStdString(name).startsWith(Eigene, Qt::CaseInsensitive);
    });
    return spalten;
}

/// Makes the bin, with a column for each of the table.
void richteEin(Ergebnisdatei& datei, const std::vector<std::string>& spalten) {
    // Of the table the types alone: values are taken over as they are.
    datei.verbindung().exec(
        "CREATE TABLE IF NOT EXISTS " + Korbtabelle +
        "(Korb_Nr INTEGER PRIMARY KEY AUTOINCREMENT, Korb_Zeit TEXT, Korb_Anlass TEXT"
        ", Korb_Danach TEXT, Korb_Marke TEXT"
        ", U_NR TEXT(10), ZB_NR TEXT(30), Z_NAME TEXT(30), A_D TEXT(9), RASSE TEXT(30)"
        ", B_NAME TEXT(30), ERGEBNIS TEXT(4), DATUM DATETIME, VATER TEXT(30), VOLK TEXT(30)"
        ", CI LONGTEXT, HI_DV LONGTEXT, PROZENT TEXT(70), MERKMAL LONGTEXT"
        ", Grafik1 LONGTEXT, Grafik2 LONGTEXT, Grafik3 LONGTEXT, Grafik4 LONGTEXT)");
    // So that counting them and finding old ones reads none of the rows.
    datei.verbindung().exec("CREATE INDEX IF NOT EXISTS " + Korbtabelle + "_Zeit ON " +
                            Korbtabelle + "(Korb_Zeit)");
    const std::vector<std::string> bisher = spaltennamen(datei, Korbtabelle);
    for (const std::string& spalte : spalten) {
        if (!enthält(bisher, spalte)) {
            datei.verbindung().exec("ALTER TABLE " + Korbtabelle + " ADD COLUMN " +
                                    bezeichner(spalte));
        }
    }
}

std::string liste(const std::vector<std::string>& spalten) {
    std::string text;
    for (const std::string& spalte : spalten) {
        text += ", " + bezeichner(spalte);
    }
    return text;
}

/// A row of the bin.
struct Aufgehoben {
    Rohsatz satz;
    std::optional<Korbanlass> anlass;
    std::optional<QString> danach; ///< number that its row had afterwards; empty for a deleted one
    QString marke;
};

Aufgehoben lies(Ergebnisdatei& datei, qint64 nr) {
    const auto fehlt = [&] {
        return Datenbankfehler(Datenbankgrund::KorbEintragFehlt, datei.pfad());
    };
    if (!vorhanden(datei)) {
        throw fehlt();
    }
    SQLite::Statement abfrage(datei.verbindung(),
                              "SELECT Korb_Danach, Korb_Marke, Korb_Anlass FROM " + Korbtabelle +
                                  " WHERE Korb_Nr = ?");
    abfrage.bind(1, static_cast<std::int64_t>(nr));
    if (!abfrage.executeStep()) {
        throw fehlt();
    }
    Aufgehoben eintrag;
    if (!abfrage.getColumn(0).isNull()) {
        eintrag.danach = spaltentext(abfrage.getColumn(0)).text;
    }
    eintrag.marke = spaltentext(abfrage.getColumn(1)).text;
    eintrag.anlass = anlassAus(spaltentext(abfrage.getColumn(2)).text);
    std::vector<std::string> weitere = aufgehobene(datei);
    const std::vector<std::string> imKorb = spaltennamen(datei, Korbtabelle);
    std::erase_if(weitere, [&](const std::string& name) {
        return tabellenspalten().contains(QString::fromStdString(name), Qt::CaseInsensitive) ||
               !enthält(imKorb, name);
    });
    const std::array ids{nr};
    bool gelesen = false;
    liesRoh(datei, {Korbtabelle, "Korb_Nr", weitere}, ids,
            [&](const Rohsatz& satz) {
                eintrag.satz = satz;
                return gelesen = true;
            },
            {});
    if (!gelesen) {
        throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
    }
    return eintrag;
}

void entferneEintrag(Ergebnisdatei& datei, qint64 nr) {
    SQLite::Statement löschen(datei.verbindung(),
                              "DELETE FROM " + Korbtabelle + " WHERE Korb_Nr = ?");
    löschen.bind(1, static_cast<std::int64_t>(nr));
    löschen.exec();
}

/// The row of that number as @p marke says, to be taken away; throws when it is another by now.
qint64 unveränderte(Ergebnisdatei& datei, const QString& nummer, const QString& marke) {
    const std::vector<qint64> ids = zielstellen(datei, nummer);
    if (ids.size() == 1) {
        const GeleseneSätze gelesen = lies(datei, ids);
        if (gelesen.sätze.size() == 1 && satzmarke(gelesen.sätze.front()) == marke) {
            return ids.front();
        }
    }
    throw Datenbankfehler(Datenbankgrund::SeitherGeändert, datei.pfad(), nummer);
}

/// Place of the row that came back.
qint64 bringeZurück(Ergebnisdatei& datei, qint64 nr, Sprache sprache) {
    Aufgehoben eintrag = lies(datei, nr);
    const QString nummer = eintrag.satz.satz.U_NR;
    if (eintrag.danach) {
        const qint64 id = unveränderte(datei, *eintrag.danach, eintrag.marke);
        hebeAuf(datei, id, Korbanlass::Wiederhergestellt);
        entferneZeile(datei, id);
        if (eintrag.anlass == Korbanlass::Zusammengeführt) {
            entferneHerkunft(datei, *eintrag.danach);
        } else {
            benenneHerkunftUm(datei, *eintrag.danach, nummer);
        }
    }
    if (!nummer.trimmed().isEmpty() && !datei.finde(geschrieben(nummer)).empty()) {
        throw Datenbankfehler(Datenbankgrund::NummerDoppelt, datei.pfad(), nummer);
    }
    setzeWörter(eintrag.satz, sprache);
    füge(datei, eintrag.satz.roh);
    const qint64 id = datei.verbindung().getLastInsertRowid();
    entferneEintrag(datei, nr);
    return id;
}

} // namespace

QString anlasstext(const Texte& texte, std::optional<Korbanlass> anlass) {
    return anlass ? texte(anlässe.at(static_cast<std::size_t>(*anlass)).text) : QString();
}

qint64 hebeAuf(Ergebnisdatei& datei, qint64 id, Korbanlass anlass) {
    const std::vector<std::string> spalten = aufgehobene(datei);
    richteEin(datei, spalten);
    const std::string namen = liste(spalten);
    SQLite::Statement kopieren(datei.verbindung(),
                               "INSERT INTO " + Korbtabelle + "(Korb_Zeit, Korb_Anlass" + namen +
                                   ") SELECT ?, ?" + namen + " FROM Ergebnisse WHERE " +
                                   datei.platz() + " = ?");
    kopieren.bind(1, zeitpunkt(QDateTime::currentDateTimeUtc()));
    kopieren.bind(2, anlässe.at(static_cast<std::size_t>(anlass)).wort.toString().toStdString());
    kopieren.bind(3, static_cast<std::int64_t>(id));
    kopieren.exec();
    return datei.verbindung().getLastInsertRowid();
}

void vermerkeNachfolger(Ergebnisdatei& datei, qint64 eintrag, const QString& nummer,
                        const QString& marke) {
    SQLite::Statement vermerk(datei.verbindung(),
                              "UPDATE " + Korbtabelle +
                                  " SET Korb_Danach = ?, Korb_Marke = ? WHERE Korb_Nr = ?");
    vermerk.bind(1, nummer.toStdString());
    vermerk.bind(2, marke.toStdString());
    vermerk.bind(3, static_cast<std::int64_t>(eintrag));
    vermerk.exec();
}

void räumeKorbAuf(Ergebnisdatei& datei) {
    if (!vorhanden(datei)) {
        return;
    }
    // What one deletion or merging took away may be many; it stays until somebody had the time to
    // notice. While all of it is that young, its rows are not gone through with every save.
    const std::string gestern = zeitpunkt(QDateTime::currentDateTimeUtc().addDays(-1));
    SQLite::Statement ältere(datei.verbindung(), "SELECT EXISTS(SELECT 1 FROM " + Korbtabelle +
                                                     " WHERE Korb_Zeit < ?)");
    ältere.bind(1, gestern);
    ältere.executeStep();
    const int zuViele =
        datei.verbindung().execAndGet("SELECT COUNT(*) FROM " + Korbtabelle).getInt() -
        Papierkorb::Höchstens;
    if (zuViele > 0 && ältere.getColumn(0).getInt() != 0) {
        ältere.reset();
        SQLite::Statement älteste(
            datei.verbindung(),
            "DELETE FROM " + Korbtabelle + " WHERE Korb_Nr IN (SELECT Korb_Nr FROM " + Korbtabelle +
                " ORDER BY Korb_Nr LIMIT " + std::to_string(zuViele) + ") AND Korb_Zeit < ?");
        älteste.bind(1, gestern);
        älteste.exec();
    }
    SQLite::Statement alte(datei.verbindung(),
                           "DELETE FROM " + Korbtabelle + " WHERE Korb_Zeit < ?");
    alte.bind(1, zeitpunkt(QDateTime::currentDateTimeUtc().addDays(-Papierkorb::Tage)));
    alte.exec();
}

Papierkorb::Papierkorb(QString DatenbankPfad, std::chrono::milliseconds wartezeit)
    : pfad_(std::move(DatenbankPfad))
    , wartezeit_(wartezeit) {}

std::vector<Korbeintrag> Papierkorb::einträge() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        std::vector<Korbeintrag> gefunden;
        if (!vorhanden(datei)) {
            return gefunden;
        }
        SQLite::Statement abfrage(datei.verbindung(),
                                  "SELECT Korb_Nr, Korb_Zeit, Korb_Anlass, U_NR, Z_NAME FROM " +
                                      Korbtabelle + " ORDER BY Korb_Nr DESC");
        const auto text = [&](int spalte) { return spaltentext(abfrage.getColumn(spalte)).text; };
        while (abfrage.executeStep()) {
            gefunden.push_back({abfrage.getColumn(0).getInt64(),
                                QDateTime::fromString(text(1), Qt::ISODate), anlassAus(text(2)),
                                text(3), text(4)});
        }
        return gefunden;
    });
}

Papierkorb::Vergleich Papierkorb::vergleiche(qint64 nr) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [nr](Ergebnisdatei& datei) {
        SQLite::Transaction lesen(datei.verbindung());
        const Aufgehoben eintrag = lies(datei, nr);
        Vergleich vergleich{eintrag.satz.satz, std::nullopt};
        const auto sieheNach = [&](const QString& nummer) {
            const std::vector<qint64> ids = zielstellen(datei, nummer);
            const auto gelesen = lies(datei, ids);
            if (!vergleich.heute && !gelesen.sätze.empty()) {
                vergleich.heute = gelesen.sätze.front();
            }
        };
        if (eintrag.danach) {
            sieheNach(*eintrag.danach);
        }
        sieheNach(eintrag.satz.satz.U_NR);
        return vergleich;
    });
}

QStringList Papierkorb::vergebene(const std::vector<qint64>& nummern) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        QStringList gefunden;
        for (const qint64 nr : nummern) {
            const QString nummer = lies(datei, nr).satz.satz.U_NR;
            if (!datei.finde(geschrieben(nummer)).empty()) {
                gefunden << nummer.trimmed();
            }
        }
        return gefunden;
    });
}

Papierkorb::Bericht Papierkorb::stelleWiederHer(const std::vector<qint64>& nummern,
                                                BeiVergebener weise, Sprache sprache) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei, Schreibvorgang::Indizes::Zuvor);
        Bericht bericht;
        std::optional<Nummernvergabe> vergabe;
        for (const qint64 nr : nummern) {
            Aufgehoben eintrag = lies(datei, nr);
            const QString alt = eintrag.satz.satz.U_NR;
            std::vector<qint64> besetzt = zielstellen(datei, geschrieben(alt));
            if (!besetzt.empty() && weise == BeiVergebener::Auslassen) {
                continue;
            }
            std::vector<qint64> ersetzte;
            if (!besetzt.empty() && weise == BeiVergebener::NeueNummer) {
                if (!vergabe) {
                    vergabe.emplace();
                    vergabe->kenneAlle(datei);
                }
                const QString neu = vergabe->neue(alt);
                setzeNummer(eintrag.satz, neu);
                bericht.umbenannt.emplace_back(alt.trimmed(), neu);
            } else {
                if (!besetzt.empty()) {
                    bericht.ersetzt << alt;
                }
                for (const qint64 id : besetzt) {
                    ersetzte.push_back(hebeAuf(datei, id, Korbanlass::Wiederhergestellt));
                    entferneZeile(datei, id);
                }
            }
            setzeWörter(eintrag.satz, sprache);
            füge(datei, eintrag.satz.roh);
            entferneEintrag(datei, nr);
            ++bericht.zahl;
            const QString marke = satzmarke(eintrag.satz.satz);
            for (const qint64 ersetzt : ersetzte) {
                vermerkeNachfolger(datei, ersetzt, eintrag.satz.satz.U_NR, marke);
                bericht.rücknahme.einträge.push_back(ersetzt);
            }
            if (ersetzte.empty()) {
                bericht.rücknahme.neue.push_back({eintrag.satz.satz.U_NR, marke});
            }
        }
        räumeKorbAuf(datei);
        vorgang.commit();
        return bericht;
    });
}

std::vector<qint64> Papierkorb::nimmZurück(const Rücknahme& rücknahme, Sprache sprache) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei, Schreibvorgang::Indizes::Zuvor);
        std::vector<qint64> zurück;
        for (const Rücknahme::Neue& neue : rücknahme.neue) {
            const qint64 id = unveränderte(datei, neue.nummer, neue.marke);
            hebeAuf(datei, id, Korbanlass::Wiederhergestellt);
            entferneZeile(datei, id);
            if (neue.ausAnderer) {
                entferneHerkunft(datei, neue.nummer);
            }
        }
        std::for_each(rücknahme.einträge.rbegin(), rücknahme.einträge.rend(),
                      [&](qint64 nr) { zurück.push_back(bringeZurück(datei, nr, sprache)); });
        räumeKorbAuf(datei);
        vorgang.commit();
        return zurück;
    });
}

void Papierkorb::leere() const {
    mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        if (!vorhanden(datei)) {
            return;
        }
        Schreibvorgang vorgang(datei);
        datei.verbindung().exec("DELETE FROM " + Korbtabelle);
        vorgang.commit();
    });
}

} // namespace tarvel
