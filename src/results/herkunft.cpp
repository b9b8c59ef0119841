#include "results/herkunft.h"

#include "results/ergebnisdatei.h"

#include <QDateTime>
#include <SQLiteCpp/Statement.h>

namespace tarvel {

namespace {

const std::string Tabelle = "Tarvel_Herkunft"; // NOLINT(cert-err58-cpp)

} // namespace

QHash<QString, Herkunft> liesHerkunft(Ergebnisdatei& datei) {
    QHash<QString, Herkunft> alle;
    if (!datei.verbindung().tableExists(Tabelle)) {
        return alle;
    }
    SQLite::Statement abfrage(datei.verbindung(), "SELECT U_NR, Nummer, Marke FROM " + Tabelle);
    const auto text = [&](int spalte) { return spaltentext(abfrage.getColumn(spalte)).text; };
    while (abfrage.executeStep()) {
        alle.insert(text(0), {text(1), text(2)});
    }
    return alle;
}

void vermerkeHerkunft(Ergebnisdatei& datei, const QString& nummer, const Herkunft& herkunft,
                      const QString& woher) {
    datei.verbindung().exec("CREATE TABLE IF NOT EXISTS " + Tabelle +
                            "(U_NR TEXT(10) PRIMARY KEY, Nummer TEXT, Marke TEXT, Datei TEXT"
                            ", Zeit TEXT)");
    SQLite::Statement einfügen(datei.verbindung(),
                               "INSERT OR REPLACE INTO " + Tabelle + " VALUES(?, ?, ?, ?, ?)");
    einfügen.bind(1, nummer.toStdString());
    einfügen.bind(2, herkunft.nummer.toStdString());
    einfügen.bind(3, herkunft.marke.toStdString());
    einfügen.bind(4, woher.toStdString());
    einfügen.bind(5, QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toStdString());
    einfügen.exec();
}

void entferneHerkunft(Ergebnisdatei& datei, const QString& nummer) {
    if (datei.verbindung().tableExists(Tabelle)) {
        SQLite::Statement löschen(datei.verbindung(), "DELETE FROM " + Tabelle + " WHERE U_NR = ?");
        löschen.bind(1, nummer.toStdString());
        löschen.exec();
    }
}

void benenneHerkunftUm(Ergebnisdatei& datei, const QString& alt, const QString& neu) {
    if (alt == neu || !datei.verbindung().tableExists(Tabelle)) {
        return;
    }
    SQLite::Statement ändern(datei.verbindung(),
                             "UPDATE OR REPLACE " + Tabelle + " SET U_NR = ? WHERE U_NR = ?");
    ändern.bind(1, neu.toStdString());
    ändern.bind(2, alt.toStdString());
    ändern.exec();
}

} // namespace tarvel
