#include "collection/kolonieausgabe.h"

#include "platform/csv.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<const char*, 3> Namen{"ci", "hi", "dv"};

const char* name(Größe g) {
    return Namen.at(static_cast<std::size_t>(g));
}

QJsonValue wert(std::optional<double> zahl) {
    return zahl ? QJsonValue(*zahl) : QJsonValue();
}

QJsonValue dpi(int dpi) {
    return dpi > 0                         ? QJsonValue(dpi)
           : dpi == Koloniewerte::Gemischt ? QJsonValue(u"mixed"_s)
                                           : QJsonValue();
}

QJsonValue tiere(Geschlecht tiere) {
    return tiere == Geschlecht::Drohnen ? u"drones"_s : u"workers"_s;
}

QByteArray zahltext(double zahl) {
    constexpr int Stellen = 7; // all that the mean of singles has
    return QByteArray::number(zahl, 'g', Stellen);
}

} // namespace

QByteArray Wertetabelle::csv() const {
    CsvTabelle tabelle(spalten.join(','));
    for (const QJsonArray& zeile : zeilen) {
        for (const auto& zelle : zeile) {
            if (zelle.isString()) {
                tabelle.text(zelle.toString());
            } else {
                tabelle.zelle(zelle.isDouble() ? zahltext(zelle.toDouble()) : QByteArray());
            }
        }
        tabelle.zeilenende();
    }
    return tabelle.csv();
}

QByteArray Wertetabelle::json(const QString& name) const {
    QJsonArray liste;
    for (const QJsonArray& zeile : zeilen) {
        QJsonObject objekt;
        for (qsizetype i = 0; i < spalten.size(); ++i) {
            const QJsonValue wert = zeile.at(i);
            objekt[QString::fromLatin1(spalten[i])] =
                wert.isDouble() ? QJsonValue(zahltext(wert.toDouble()).toDouble()) : wert;
        }
        liste.append(objekt);
    }
    return QJsonDocument(QJsonObject{{name, liste}}).toJson();
}

Wertetabelle kolonientabelle(const Kolonieauswahl& auswahl) {
    Wertetabelle t;
    t.spalten = {"examination", "date",  "season",         "breeder",    "owner",
                 "colony",      "queen", "mating",         "race",       "caste",
                 "conforms",    "dpi",   "wings_left_out", "partly_read"};
    for (const Größe g : Größen) {
        for (const char* figur : {"n", "mean", "sd", "percent_below", "percent_above"}) {
            t.spalten << QByteArray(name(g)) + '_' + figur;
        }
    }
    t.spalten << "ci_classes";
    for (const Koloniewerte* k : auswahl) {
        QJsonArray zeile{k->UNr,
                         k->datum.toString(Qt::ISODate),
                         k->saison() ? QJsonValue(*k->saison()) : QJsonValue(),
                         k->Züchter,
                         k->Besitzer,
                         k->Volk,
                         k->Königin,
                         k->Begattung,
                         k->Rasse,
                         tiere(k->tiere),
                         k->urteil ? *k->urteil ? u"yes"_s : u"no"_s : u"not judged"_s,
                         dpi(k->dpi),
                         k->ausgelassen,
                         k->teilweise ? u"yes"_s : u"no"_s};
        for (int i = 0; i < 3 * SpaltenJeIndex; ++i) {
            zeile.append(wert(indexzahl(*k, static_cast<int>(Kolonienspalte::Index) + i)));
        }
        // "17:2 18:5": class and wings; 0 holds those outside the classes.
        QStringList klassen;
        const auto& zahlen = (*k)[Größe::CI].klassen;
        for (std::size_t i = 0; i < zahlen.size(); ++i) {
            if (zahlen.at(i) > 0) {
                klassen << u"%1:%2"_s.arg(i).arg(zahlen.at(i));
            }
        }
        zeile.append(klassen.join(u' '));
        t.zeilen.push_back(zeile);
    }
    return t;
}

Wertetabelle jahrestabelle(const std::vector<Koloniegruppe>& gruppen) {
    Wertetabelle t;
    t.spalten = {"name",       "race", "caste", "season", "index", "dpi",        "colonies",
                 "with_index", "mean", "sd",    "low",    "high",  "conforming", "judged"};
    for (const Koloniegruppe& gruppe : gruppen) {
        const Jahresverlauf verlauf = jahresverlauf(gruppe.kolonien);
        for (const Jahresreihe& reihe : verlauf.reihen) {
            for (const Jahresmittel& jahr : reihe.jahre) {
                const Jahresstand& stand = verlauf.jahre.at(jahr.jahr);
                const Kennzahlen& z = jahr.kennzahlen;
                t.zeilen.push_back(
                    {gruppe.name, gruppe.rasse, tiere(gruppe.kolonien.front()->tiere), jahr.jahr,
                     QString::fromLatin1(name(reihe.größe)), dpi(reihe.dpi), stand.kolonien,
                     z.anzahl, z.mittelwert, wert(z.standardabweichung),
                     jahr.bereich ? QJsonValue(jahr.bereich->von) : QJsonValue(),
                     jahr.bereich ? QJsonValue(jahr.bereich->bis) : QJsonValue(), stand.konform,
                     stand.beurteilt});
            }
        }
    }
    return t;
}

Wertetabelle vergleichstabelle(const Koloniewerte& a, const Koloniewerte& b,
                               const Kolonievergleich& vergleich) {
    using Art = Kolonievergleichszeile::Art;
    Wertetabelle t;
    t.spalten = {"index",        "figure",     "first", "second", "first_value",
                 "second_value", "difference", "low",   "high"};
    for (const Kolonievergleichszeile& z : vergleich.zeilen) {
        const auto& u = z.unterschied;
        const bool mitBereich = u && u->bereich;
        t.zeilen.push_back({QString::fromLatin1(name(z.größe)),
                            z.art == Art::Mittelwert    ? u"mean"_s
                            : z.art == Art::AnteilUnter ? u"percent_below"_s
                                                        : u"percent_above"_s,
                            a.UNr, b.UNr, wert(z.a), wert(z.b),
                            u ? QJsonValue(u->differenz) : QJsonValue(),
                            mitBereich ? QJsonValue(u->bereich->von) : QJsonValue(),
                            mitBereich ? QJsonValue(u->bereich->bis) : QJsonValue()});
    }
    return t;
}

} // namespace tarvel
