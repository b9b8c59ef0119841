#include "results/satzzugriff.h"

#include <QCryptographicHash>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <variant>

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

/// A value of a column that is not ours, as the engine holds it.
struct Fremdwert {
    std::string spalte;
    std::variant<std::monostate, std::int64_t, double, std::string, std::vector<char>> wert;
};

std::string bezeichner(std::string name) {
    for (std::size_t i = 0; (i = name.find('"', i)) != std::string::npos; i += 2) {
        name.insert(i, 1, '"');
    }
    return '"' + name + '"';
}

/// The columns that other programs have added.
std::vector<std::string> fremdspalten(Ergebnisdatei& datei) {
    const QStringList eigene = tabellenspalten();
    std::vector<std::string> fremde;
    SQLite::Statement vorhanden(datei.verbindung(), "PRAGMA table_info(Ergebnisse)");
    while (vorhanden.executeStep()) {
        const std::string name = vorhanden.getColumn(1).getString();
        if (!eigene.contains(QString::fromStdString(name), Qt::CaseInsensitive)) {
            fremde.push_back(name);
        }
    }
    return fremde;
}

std::vector<Fremdwert> fremdwerte(Ergebnisdatei& datei, const std::string& ziel) {
    std::vector<Fremdwert> werte;
    for (const std::string& spalte : fremdspalten(datei)) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + bezeichner(spalte) + ziel);
        if (!abfrage.executeStep()) {
            continue;
        }
        const SQLite::Column wert = abfrage.getColumn(0);
        Fremdwert& neu = werte.emplace_back(Fremdwert{spalte, {}});
        if (wert.isInteger()) {
            neu.wert = static_cast<std::int64_t>(wert.getInt64());
        } else if (wert.isFloat()) {
            neu.wert = wert.getDouble();
        } else if (wert.isText()) {
            neu.wert = wert.getString();
        } else if (wert.isBlob()) {
            const auto* bytes = static_cast<const char*>(wert.getBlob());
            neu.wert = std::vector<char>(bytes, bytes + wert.getBytes());
        }
    }
    return werte;
}

void binde(SQLite::Statement& anweisung, int stelle, const Fremdwert& fremd) {
    if (const auto* ganz = std::get_if<std::int64_t>(&fremd.wert)) {
        anweisung.bind(stelle, *ganz);
    } else if (const auto* bruch = std::get_if<double>(&fremd.wert)) {
        anweisung.bind(stelle, *bruch);
    } else if (const auto* text = std::get_if<std::string>(&fremd.wert)) {
        anweisung.bind(stelle, *text);
    } else if (const auto* bytes = std::get_if<std::vector<char>>(&fremd.wert)) {
        // Without bytes there is no address, which would bind NULL.
        anweisung.bind(stelle, bytes->empty() ? "" : static_cast<const void*>(bytes->data()),
                       static_cast<int>(bytes->size()));
    } else {
        anweisung.bind(stelle);
    }
}

void füge(Ergebnisdatei& datei, const Ergebnissatz& satz, const std::vector<Fremdwert>& fremde) {
    std::string spalten = "U_NR, DATUM";
    std::string plätze = "?, ?";
    const auto nenne = [&](const std::string& name) {
        spalten += ", " + name;
        plätze += ", ?";
    };
    for (const Textstelle& stelle : textstellen) {
        nenne(stelle.first);
    }
    for (std::size_t i = 0; i < satz.Grafik.size(); ++i) {
        nenne(grafikspalte(i));
    }
    for (const Fremdwert& fremd : fremde) {
        nenne(bezeichner(fremd.spalte));
    }
    SQLite::Statement einfügen(datei.verbindung(),
                               "INSERT INTO Ergebnisse(" + spalten + ") VALUES(" + plätze + ")");
    int platz = 0;
    const auto setze = [&](const QString& wert) {
        einfügen.bind(++platz, geschrieben(wert).toStdString());
    };
    setze(satz.U_NR);
    ++platz; // an invalid date stays NULL
    if (satz.DATUM.isValid()) {
        einfügen.bind(platz, satz.DATUM.toString(Qt::ISODate).toStdString());
    }
    for (const Textstelle& stelle : textstellen) {
        setze(satz.*stelle.second);
    }
    for (const QString& grafik : satz.Grafik) {
        setze(grafik);
    }
    for (const Fremdwert& fremd : fremde) {
        binde(einfügen, ++platz, fremd);
    }
    einfügen.exec();
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

} // namespace

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
            SQLite::Statement nummer(datei.verbindung(), "SELECT U_NR" + woher);
            nummer.bind(1, static_cast<std::int64_t>(id));
            const Spaltentext text = nummer.tryExecuteStep() == SQLITE_ROW
                                         ? spaltentext(nummer.getColumn(0))
                                         : Spaltentext{{}, true, false, true};
            gelesen.zuGroß << (text.istZuGroß ? u'#' + QString::number(id) : text.text.trimmed());
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
                   const Ergebnissatz& satz) {
    const std::vector<Fremdwert> fremde =
        ziele.empty() ? std::vector<Fremdwert>() : fremdwerte(datei, ziele.front());
    for (const std::string& ziel : ziele) {
        datei.verbindung().exec("DELETE" + ziel);
    }
    füge(datei, satz, fremde);
}

} // namespace tarvel
