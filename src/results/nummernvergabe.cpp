#include "results/nummernvergabe.h"

#include "results/ergebnisdatei.h"
#include "results/ergebnissatz.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype Jahreszahl = 4;

struct Nummernteile {
    int laufend = 0; ///< 0 where there is none
    QString rest;
};

bool istZiffer(QChar zeichen) {
    return zeichen >= u'0' && zeichen <= u'9';
}

/// Without a short sign the year stands right behind the running part.
Nummernteile nummernteile(const QString& nummer) {
    const auto* const ende = std::find_if_not(nummer.begin(), nummer.end(), istZiffer);
    qsizetype ziffern = ende - nummer.begin();
    if (ziffern == nummer.size() && ziffern > Jahreszahl) {
        const int jahr = nummer.last(Jahreszahl).toInt();
        ziffern -= jahr >= 1900 && jahr <= 2100 ? Jahreszahl : 0;
    }
    return {nummer.first(ziffern).toInt(), nummer.sliced(ziffern)};
}

} // namespace

QString Nummernvergabe::schlüssel(const QString& nummer) {
    return nummer.trimmed().toCaseFolded();
}

void Nummernvergabe::kenne(const QString& nummer) {
    const QString name = schlüssel(nummer);
    if (name.size() > LängsteNummer) {
        return; // no number of ours can meet it
    }
    vergeben_.insert(name);
    const auto [laufend, rest] = nummernteile(name);
    int& höchste = höchste_[rest];
    höchste = std::max(höchste, laufend);
}

void Nummernvergabe::kenneAlle(Ergebnisdatei& datei) {
    SQLite::Statement abfrage(datei.verbindung(), "SELECT U_NR FROM Ergebnisse");
    while (abfrage.executeStep()) {
        kenne(spaltentext(abfrage.getColumn(0)).text);
    }
}

QString Nummernvergabe::neue(const QString& alt) {
    const QString nummer = alt.trimmed();
    const auto [laufend, rest] = nummernteile(nummer);
    QString neu;
    if (laufend > 0 || nummer.isEmpty()) {
        neu = u"%1"_s.arg(höchste_.value(rest.toCaseFolded()) + 1, 3, 10, QChar(u'0')) + rest;
    }
    for (int i = 2;
         neu.isEmpty() || neu.size() > LängsteNummer || vergeben_.contains(schlüssel(neu)); ++i) {
        const QString anhang = u'-' + QString::number(i);
        neu = nummer.left(LängsteNummer - anhang.size()) + anhang;
    }
    kenne(neu);
    return neu;
}

} // namespace tarvel
