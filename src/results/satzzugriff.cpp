#include "results/satzzugriff.h"

#include <QCryptographicHash>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using Textstelle = std::pair<const char*, QString Ergebnissatz::*>;

constexpr Textstelle textstellen[] = {
    {"ZB_NR", &Ergebnissatz::ZB_NR},     {"Z_NAME", &Ergebnissatz::Z_NAME},
    {"B_NAME", &Ergebnissatz::B_NAME},   {"A_D", &Ergebnissatz::A_D},
    {"VATER", &Ergebnissatz::VATER},     {"VOLK", &Ergebnissatz::VOLK},
    {"CI", &Ergebnissatz::CI},           {"HI_DV", &Ergebnissatz::HI_DV},
    {"MERKMAL", &Ergebnissatz::MERKMAL}, {"PROZENT", &Ergebnissatz::PROZENT},
    {"RASSE", &Ergebnissatz::RASSE},     {"ERGEBNIS", &Ergebnissatz::ERGEBNIS}};

std::string grafikspalte(std::size_t i) {
    return "Grafik" + std::to_string(i + 1);
}

/// The columns that other programs have added.
std::vector<std::string> fremdspalten(Ergebnisdatei& datei) {
    const QStringList eigene = tabellenspalten();
    std::vector<std::string> fremde = spaltennamen(datei, "Ergebnisse");
    std::erase_if(fremde, [&](const std::string& name) {
        return eigene.contains(QString::fromStdString(name), Qt::CaseInsensitive);
    });
    return fremde;
}

/// To be called before the value is read as text, which would make it one.
Rohwert rohwert(const SQLite::Column& wert) {
    if ((wert.isText() || wert.isBlob()) && wert.getBytes() > LängsterWert) {
        throw SQLite::Exception("value too long", SQLITE_TOOBIG);
    }
    if (wert.isInteger()) {
        return static_cast<std::int64_t>(wert.getInt64());
    }
    if (wert.isFloat()) {
        return wert.getDouble();
    }
    if (wert.isText()) {
        return wert.getString();
    }
    if (wert.isBlob()) {
        const auto* bytes = static_cast<const char*>(wert.getBlob());
        return std::vector<char>(bytes, bytes + wert.getBytes());
    }
    return std::monostate();
}

void binde(SQLite::Statement& anweisung, int stelle, const Rohwert& wert) {
    if (const auto* ganz = std::get_if<std::int64_t>(&wert)) {
        anweisung.bind(stelle, *ganz);
    } else if (const auto* bruch = std::get_if<double>(&wert)) {
        anweisung.bind(stelle, *bruch);
    } else if (const auto* text = std::get_if<std::string>(&wert)) {
        anweisung.bind(stelle, *text);
    } else if (const auto* bytes = std::get_if<std::vector<char>>(&wert)) {
        // Without bytes there is no address, which would bind NULL.
        anweisung.bind(stelle, bytes->empty() ? "" : static_cast<const void*>(bytes->data()),
                       static_cast<int>(bytes->size()));
    } else {
        anweisung.bind(stelle);
    }
}

void setzeWert(Rohzeile& zeile, const std::string& spalte, const QString& wert) {
    for (Rohspalte& s : zeile) {
        if (s.name == spalte) {
            s.wert = wert.toStdString();
        }
    }
}

/// A row whose columns @p spalte gives by their names, always in the same order.
template <typename Spalte>
Ergebnissatz baueSatz(Spalte&& spalte) {
    Ergebnissatz satz;
    const auto text = [&](const std::string& name) {
        Spaltentext wert = spalte(name);
        if (wert.istZuGroß) {
            throw SQLite::Exception("value too long", SQLITE_TOOBIG);
        }
        if (!wert.istLesbar) {
            satz.unlesbar << QString::fromStdString(name);
        }
        return std::move(wert.text);
    };
    satz.U_NR = text("U_NR");
    for (const auto& [name, wert] : textstellen) {
        satz.*wert = text(name);
    }
    for (std::size_t i = 0; i < satz.Grafik.size(); ++i) {
        satz.Grafik.at(i) = text(grafikspalte(i));
    }
    const QString datum = text("DATUM");
    satz.DATUM = QDate::fromString(datum.left(10), Qt::ISODate);
    if (!satz.DATUM.isValid() && !datum.trimmed().isEmpty() &&
        !satz.unlesbar.contains(u"DATUM"_s)) {
        satz.unlesbar << u"DATUM"_s;
    }
    return satz;
}

/// The number of a row that cannot be read as a whole; its place where that is beyond all measure.
QString nummerVon(Ergebnisdatei& datei, const std::string& woher, qint64 id) {
    SQLite::Statement nummer(datei.verbindung(), "SELECT U_NR" + woher);
    nummer.bind(1, static_cast<std::int64_t>(id));
    const Spaltentext text = nummer.tryExecuteStep() == SQLITE_ROW
                                 ? spaltentext(nummer.getColumn(0))
                                 : Spaltentext{{}, true, false, true};
    return text.istZuGroß ? u'#' + QString::number(id) : text.text.trimmed();
}

} // namespace

std::string bezeichner(std::string name) {
    for (std::size_t i = 0; (i = name.find('"', i)) != std::string::npos; i += 2) {
        name.insert(i, 1, '"');
    }
    return '"' + name + '"';
}

std::vector<std::string> spaltennamen(Ergebnisdatei& datei, const std::string& tabelle) {
    std::vector<std::string> namen;
    SQLite::Statement vorhanden(datei.verbindung(),
                                "PRAGMA table_info(" + bezeichner(tabelle) + ")");
    while (vorhanden.executeStep()) {
        namen.push_back(vorhanden.getColumn(1).getString());
    }
    return namen;
}

Rohzeile rohzeile(const Ergebnissatz& satz) {
    const auto text = [](const QString& wert) { return geschrieben(wert).toStdString(); };
    Rohzeile zeile{{"U_NR", text(satz.U_NR)}, {"DATUM", std::monostate()}};
    if (satz.DATUM.isValid()) { // an invalid date stays NULL
        zeile.back().wert = satz.DATUM.toString(Qt::ISODate).toStdString();
    }
    for (const Textstelle& stelle : textstellen) {
        zeile.push_back({stelle.first, text(satz.*stelle.second)});
    }
    for (std::size_t i = 0; i < satz.Grafik.size(); ++i) {
        zeile.push_back({grafikspalte(i), text(satz.Grafik.at(i))});
    }
    return zeile;
}

QByteArray rohbytes(const Rohwert& wert) {
    if (const auto* ganz = std::get_if<std::int64_t>(&wert)) {
        return QByteArray::number(static_cast<qlonglong>(*ganz));
    }
    if (const auto* bruch = std::get_if<double>(&wert)) {
        constexpr int Genau = 17;
        return QByteArray::number(*bruch, 'g', Genau);
    }
    if (const auto* text = std::get_if<std::string>(&wert)) {
        return QByteArray::fromStdString(*text);
    }
    if (const auto* bytes = std::get_if<std::vector<char>>(&wert)) {
        return {bytes->data(), static_cast<qsizetype>(bytes->size())};
    }
    return {};
}

void setzeNummer(Rohsatz& zeile, const QString& nummer) {
    zeile.satz.U_NR = nummer;
    setzeWert(zeile.roh, "U_NR", nummer);
}

void setzeWörter(Rohsatz& zeile, Sprache sprache) {
    const std::pair<const char*, QString Ergebnissatz::*> spalten[] = {
        {"A_D", &Ergebnissatz::A_D}, {"ERGEBNIS", &Ergebnissatz::ERGEBNIS}};
    for (const auto& [name, stelle] : spalten) {
        for (const Text text : {Text::Arbeiter, Text::Drohnen, Text::Ja, Text::Nein}) {
            const QString wort = Texte::eintrag(text, sprache);
            if (bedeutet(zeile.satz.*stelle, text) && zeile.satz.*stelle != wort) {
                zeile.satz.*stelle = wort;
                setzeWert(zeile.roh, name, wort);
            }
        }
    }
}

void füge(Ergebnisdatei& datei, const Rohzeile& zeile) {
    std::string spalten;
    std::string plätze;
    for (const Rohspalte& spalte : zeile) {
        const char* trenner = spalten.empty() ? "" : ", ";
        spalten += trenner + bezeichner(spalte.name);
        plätze += std::string(trenner) + '?';
    }
    SQLite::Statement einfügen(datei.verbindung(),
                               "INSERT INTO Ergebnisse(" + spalten + ") VALUES(" + plätze + ")");
    int platz = 0;
    for (const Rohspalte& spalte : zeile) {
        binde(einfügen, ++platz, spalte.wert);
    }
    einfügen.exec();
}

void entferneZeile(Ergebnisdatei& datei, qint64 id) {
    SQLite::Statement löschen(datei.verbindung(),
                              "DELETE FROM Ergebnisse WHERE " + datei.platz() + " = ?");
    löschen.bind(1, static_cast<std::int64_t>(id));
    löschen.exec();
}

Rohzeile fremdwerte(Ergebnisdatei& datei, qint64 id) {
    Rohzeile werte;
    for (const std::string& spalte : fremdspalten(datei)) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + bezeichner(spalte) +
                                                          " FROM Ergebnisse WHERE " +
                                                          datei.platz() + " = ?");
        abfrage.bind(1, static_cast<std::int64_t>(id));
        if (abfrage.executeStep()) {
            werte.push_back({spalte, rohwert(abfrage.getColumn(0))});
        }
    }
    return werte;
}

std::vector<qint64> zielstellen(Ergebnisdatei& datei, const QString& nummer) {
    std::vector<Fundstelle> gefunden = datei.finde(nummer);
    const auto genau = [&](const Fundstelle& stelle) { return stelle.U_NR.text == nummer; };
    if (std::any_of(gefunden.begin(), gefunden.end(), genau)) {
        std::erase_if(gefunden, [&](const Fundstelle& stelle) { return !genau(stelle); });
    }
    std::vector<qint64> ids;
    ids.reserve(gefunden.size());
    std::transform(gefunden.begin(), gefunden.end(), std::back_inserter(ids),
                   [](const Fundstelle& stelle) { return stelle.id; });
    return ids;
}

void liesRoh(Ergebnisdatei& datei, const Rohort& ort, std::span<const qint64> ids,
             const std::function<bool(const Rohsatz&)>& nimm,
             const std::function<void(const QString&)>& übergehe) {
    std::vector<std::string> namen;
    (void)baueSatz([&](const std::string& name) {
        namen.push_back(name);
        return Spaltentext();
    });
    namen.insert(namen.end(), ort.weitere.begin(), ort.weitere.end());
    std::string spalten;
    for (const std::string& name : namen) {
        spalten += (spalten.empty() ? "" : ", ") + bezeichner(name);
    }
    const std::string woher = " FROM " + ort.tabelle + " WHERE " + ort.platz + " = ?";
    SQLite::Statement abfrage(datei.verbindung(), "SELECT " + spalten + woher);
    for (const qint64 id : ids) {
        abfrage.bind(1, static_cast<std::int64_t>(id));
        try {
            if (abfrage.executeStep()) {
                Rohsatz zeile;
                zeile.id = id;
                zeile.roh.reserve(namen.size());
                for (const std::string& name : namen) {
                    const int platz = static_cast<int>(zeile.roh.size());
                    zeile.roh.push_back({name, rohwert(abfrage.getColumn(platz))});
                }
                int platz = 0;
                zeile.satz = baueSatz([&](const std::string& /*name*/) {
                    return spaltentext(abfrage.getColumn(platz++));
                });
                if (!nimm(zeile)) {
                    return;
                }
            }
        } catch (const SQLite::Exception& fehler) {
            if (fehler.getErrorCode() != SQLITE_TOOBIG) {
                throw;
            }
            if (übergehe) {
                übergehe(nummerVon(datei, woher, id));
            }
        }
        abfrage.tryReset();
    }
}

QString geschrieben(const QString& wert) {
    return wert.isEmpty() ? u" "_s : wert;
}

std::vector<std::string> zielzeilen(Ergebnisdatei& datei, const QString& nummer) {
    std::vector<Fundstelle> gefunden = datei.finde(nummer);
    const auto genau = [&](const Fundstelle& stelle) { return stelle.U_NR.text == nummer; };
    if (std::any_of(gefunden.begin(), gefunden.end(), genau)) {
        std::erase_if(gefunden, [&](const Fundstelle& stelle) { return !genau(stelle); });
    }
    std::vector<std::string> ziele;
    ziele.reserve(gefunden.size());
    for (const Fundstelle& stelle : gefunden) {
        ziele.push_back(" FROM Ergebnisse WHERE " +
                        (stelle.allein && stelle.U_NR.istUtf8
                             ? "U_NR LIKE " + likeWörtlich(stelle.U_NR.text)
                             : datei.platz() + " = " + std::to_string(stelle.id)) +
                        ";");
    }
    return ziele;
}

Ergebnissatz lies(Ergebnisdatei& datei, const std::string& ziel) {
    return baueSatz([&](const std::string& name) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + name + ziel);
        return abfrage.executeStep() ? spaltentext(abfrage.getColumn(0)) : Spaltentext();
    });
}

GeleseneSätze lies(Ergebnisdatei& datei, std::span<const qint64> ids) {
    std::string spalten;
    (void)baueSatz([&](const std::string& name) {
        spalten += (spalten.empty() ? "" : ", ") + name;
        return Spaltentext();
    });
    const std::string woher = " FROM Ergebnisse WHERE " + datei.platz() + " = ?";
    SQLite::Statement abfrage(datei.verbindung(), "SELECT " + spalten + woher);
    GeleseneSätze gelesen;
    for (const qint64 id : ids) {
        abfrage.bind(1, static_cast<std::int64_t>(id));
        try {
            if (abfrage.executeStep()) {
                int platz = 0;
                gelesen.sätze.push_back(baueSatz([&](const std::string& /*name*/) {
                    return spaltentext(abfrage.getColumn(platz++));
                }));
            }
        } catch (const SQLite::Exception& fehler) {
            if (fehler.getErrorCode() != SQLITE_TOOBIG) {
                throw;
            }
            gelesen.zuGroß << nummerVon(datei, woher, id);
        }
        abfrage.tryReset();
    }
    return gelesen;
}

namespace {

/// @p satz as it stands in the file, in words of one language.
Ergebnissatz vereinheitlicht(Ergebnissatz satz) {
    for (const Textstelle& stelle : textstellen) {
        satz.*stelle.second = geschrieben(satz.*stelle.second);
    }
    for (QString& grafik : satz.Grafik) {
        grafik = geschrieben(grafik);
    }
    for (QString* wort : {&satz.A_D, &satz.ERGEBNIS}) {
        for (const Text text : {Text::Arbeiter, Text::Drohnen, Text::Ja, Text::Nein}) {
            if (bedeutet(*wort, text)) {
                *wort = Texte::eintrag(text, Sprache::Deutsch);
            }
        }
    }
    return satz;
}

} // namespace

bool stehenGleich(const Ergebnissatz& a, const Ergebnissatz& b) {
    return vereinheitlicht(a) == vereinheitlicht(b);
}

QString satzmarke(const Ergebnissatz& satz) {
    const Ergebnissatz einer = vereinheitlicht(satz);
    QCryptographicHash marke(QCryptographicHash::Sha1);
    const auto füge = [&marke](const QString& text) { marke.addData(text.toUtf8() + '\0'); };
    for (const Textstelle& stelle : textstellen) {
        füge(einer.*stelle.second);
    }
    for (const QString& grafik : einer.Grafik) {
        füge(grafik);
    }
    füge(einer.DATUM.toString(Qt::ISODate));
    return QString::fromLatin1(marke.result().toHex());
}

void setzeAnStelle(Ergebnisdatei& datei, const std::vector<std::string>& ziele,
                   const Ergebnissatz& satz, std::optional<Korbanlass> anlass) {
    Rohzeile zeile = rohzeile(satz);
    std::vector<qint64> einträge;
    bool erste = true;
    for (const std::string& ziel : ziele) {
        const qint64 id =
            datei.verbindung().execAndGet("SELECT " + datei.platz() + ziel).getInt64();
        if (std::exchange(erste, false)) {
            const Rohzeile fremde = fremdwerte(datei, id);
            zeile.insert(zeile.end(), fremde.begin(), fremde.end());
        }
        const std::array ids{id};
        const GeleseneSätze alte = lies(datei, ids);
        if (anlass && (alte.sätze.empty() || !alte.sätze.front().unlesbar.isEmpty() ||
                       !stehenGleich(alte.sätze.front(), satz))) {
            einträge.push_back(hebeAuf(datei, id, *anlass));
        }
        datei.verbindung().exec("DELETE" + ziel);
    }
    füge(datei, zeile);
    if (!einträge.empty()) {
        const QString marke = satzmarke(satz);
        for (const qint64 eintrag : einträge) {
            vermerkeNachfolger(datei, eintrag, satz.U_NR, marke);
        }
        räumeKorbAuf(datei);
    }
}

} // namespace tarvel
