#include "results/sitzungstext.h"

#include "evaluation/rassen.h"
#include "results/fluegelsatz.h"

#include <QCryptographicHash>
#include <QUrl>

#include <array>
#include <map>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView Kopf = "Sitzung 1\n";
constexpr QByteArrayView Summenfeld = "\nSumme=";
constexpr qsizetype Summenlänge = 40;

struct Textfeld {
    const char* name;
    QString Kolonieangaben::*wert;
};

constexpr std::array Textfelder{Textfeld{"Jahr", &Kolonieangaben::Jahr},
                                Textfeld{"KNr", &Kolonieangaben::KNr},
                                Textfeld{"LV", &Kolonieangaben::LV},
                                Textfeld{"ZNr", &Kolonieangaben::ZNr},
                                Textfeld{"UNr", &Kolonieangaben::UNr},
                                Textfeld{"Volk", &Kolonieangaben::Volk},
                                Textfeld{"Name", &Kolonieangaben::Name},
                                Textfeld{"Besitzer", &Kolonieangaben::Besitzer},
                                Textfeld{"Begattung", &Kolonieangaben::Begattung},
                                Textfeld{"Rassenname", &Kolonieangaben::Rassenname}};

QByteArray kodiert(const QString& text) {
    return QUrl::toPercentEncoding(text, " ,");
}

void füge(QByteArray& zeilen, const char* name, const QByteArray& wert) {
    zeilen += QByteArray(name) + '=' + wert + '\n';
}

QByteArray zahl(float wert) {
    return QByteArray::number(static_cast<double>(wert), 'g', 9);
}

/// Unlike the results file a session keeps the lines of a cubital index 0 too.
QByteArray ciText(const Messreihe& reihe) {
    QByteArray text;
    for (const CiZeile& z : reihe.ciZeilen()) {
        text += '#' + dreistellig(z.nummer).toLatin1() + ';' + z.wert.toUtf8() + ';' +
                z.klasse.toUtf8() + "; ";
    }
    return text;
}

QByteArray wertetext(const Messreihe& reihe) {
    QByteArray text;
    for (const int nummer : reihe.nummern()) {
        const Chartwerte& w = reihe.chartwerte(nummer);
        text += dreistellig(nummer).toLatin1() + '/' + zahl(w.CI) + '/' + zahl(w.HI) + '/' +
                zahl(w.DV) + ';';
    }
    return text;
}

std::optional<std::map<int, Chartwerte>> werteAus(QByteArrayView text) {
    constexpr qsizetype Feldzahl = 4;
    std::map<int, Chartwerte> werte;
    const QList<QByteArray> stücke = text.toByteArray().split(';');
    for (const QByteArray& stück : stücke) {
        if (stück.isEmpty()) {
            continue;
        }
        const QList<QByteArray> felder = stück.split('/');
        if (felder.size() != Feldzahl) {
            return std::nullopt;
        }
        std::array<bool, Feldzahl> gut{};
        const int nummer = felder[0].toInt(&gut[0]);
        werte[nummer] = {felder[1].toFloat(&gut[1]), felder[2].toFloat(&gut[2]),
                         felder[3].toFloat(&gut[3])};
        if (gut != std::array{true, true, true, true}) {
            return std::nullopt;
        }
    }
    return werte;
}

/// Reads the fields of one block. Whether all of them were there and made sense is kept until the
/// end, as a block counts as a whole or not at all.
class Blockleser {
public:
    explicit Blockleser(QByteArrayView zeilen) {
        for (qsizetype ende = zeilen.indexOf('\n'); ende >= 0; ende = zeilen.indexOf('\n')) {
            const QByteArrayView zeile = zeilen.first(ende);
            const qsizetype gleich = zeile.indexOf('=');
            gut_ = gut_ && gleich >= 0;
            if (gleich >= 0) {
                felder_[zeile.first(gleich).toByteArray()] = zeile.sliced(gleich + 1).toByteArray();
            }
            zeilen = zeilen.sliced(ende + 1);
        }
    }

    [[nodiscard]] bool mitUntersuchung() const { return felder_.contains("Angaben"); }
    [[nodiscard]] bool gut() const { return gut_; }

    void liesUntersuchung(Sitzungsstand& stand) {
        stand.DatenbankPfad = text("Datenbank");
        stand.gespeicherteNummer = text("Nummer");
        stand.gespeicherteMarke = text("Marke");
        const QByteArray datum = feld("Datum");
        stand.datum = QDate::fromString(QString::fromLatin1(datum), Qt::ISODate);
        prüfe(stand.datum.isValid() || datum.isEmpty());
        const int geändert = ganze("Geaendert", 3);
        stand.angabenGeändert = (geändert & 1) != 0;
        stand.messungenGeändert = (geändert & 2) != 0;
        for (const Textfeld& f : Textfelder) {
            stand.angaben.*f.wert = text(f.name);
        }
        stand.angaben.Rasse = ganze("Rasse", Rassenzahl - 1);
        stand.angaben.Tiere =
            ganze("Tiere", 1) == 1 ? Geschlecht::Drohnen : Geschlecht::Arbeiterinnen;
        const Beisatz bei = inhalt(beiangabenAusSatz(zeichen("Angaben")));
        prüfe(bei.angaben.merkmale.has_value());
        stand.merkmale = bei.angaben.merkmale.value_or(Merkmale());
        stand.merkmale.Tiere = stand.angaben.Tiere;
        stand.zusatz = bei.angaben.zusatz;
        liesReihe(stand.reihe, bei.aufnahmen, bei.flügelangaben);
    }

    void liesFlügel(Sitzungsstand& stand) {
        const std::map<int, Flügelmessung> flügel =
            messungen("Fluegel", inhalt(beiangabenAusSatz(zeichen("Aufnahme"))).aufnahmen);
        prüfe(flügel.size() == 1);
        if (!flügel.empty()) {
            stand.flügel = flügel.begin()->second;
        }
        stand.wiederholt = static_cast<qint16>(ganze("Wiederholt", Messreihe::HöchsteFlügelzahl));
        stand.ansicht = text("Ansicht");
    }

private:
    void prüfe(bool gut) { gut_ = gut_ && gut; }

    QByteArray feld(const char* name) {
        const auto stelle = felder_.find(name);
        prüfe(stelle != felder_.end());
        return stelle == felder_.end() ? QByteArray() : stelle->second;
    }
    QString zeichen(const char* name) { return QString::fromUtf8(feld(name)); }
    QString text(const char* name) { return QUrl::fromPercentEncoding(feld(name)); }
    int ganze(const char* name, int höchste) {
        bool verstanden = false;
        const int wert = feld(name).toInt(&verstanden);
        prüfe(verstanden && wert >= 0 && wert <= höchste);
        return wert;
    }
    template <typename Inhalt>
    Inhalt inhalt(Gelesen<Inhalt> gelesen) {
        prüfe(gelesen.vollständig);
        return std::move(gelesen.inhalt);
    }

    std::map<int, Flügelmessung> messungen(const char* name,
                                           std::map<int, Flügelmessung> aufnahmen) {
        prüfe(ergänzePunkte(aufnahmen, inhalt(punkteAusSatz(zeichen(name)))));
        return aufnahmen;
    }

    void liesReihe(Messreihe& reihe, const std::map<int, Flügelmessung>& aufnahmen,
                   const std::map<int, Flügelangaben>& angaben) {
        const auto werte = werteAus(feld("Werte"));
        prüfe(werte.has_value());
        reihe.stelleHer(inhalt(ciAusSatz(zeichen("CI"))), inhalt(hiDvAusSatz(zeichen("HIDV"))),
                        werte.value_or(std::map<int, Chartwerte>()), messungen("Punkte", aufnahmen),
                        angaben);
        reihe.alsUnverändertMerken();
    }

    std::map<QByteArray, QByteArray> felder_;
    bool gut_ = true;
};

QByteArray summe(QByteArrayView text) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(text);
    return hash.result().toHex();
}

/// Brings @p stand to what the block of @p zeilen says; without @p anschluss only an examination
/// can. False, and nothing changed, when the block does not fit.
bool setzeFort(std::optional<Sitzungsstand>& stand, bool anschluss, QByteArrayView zeilen) {
    Blockleser leser(zeilen);
    if (!leser.mitUntersuchung() && !(anschluss && stand)) {
        return false;
    }
    Sitzungsstand neu;
    leser.liesFlügel(neu);
    if (leser.mitUntersuchung()) {
        leser.liesUntersuchung(neu);
    }
    if (!leser.gut()) {
        return false;
    }
    if (leser.mitUntersuchung()) {
        stand = std::move(neu);
    } else {
        stand->flügel = std::move(neu.flügel);
        stand->wiederholt = neu.wiederholt;
        stand->ansicht = std::move(neu.ansicht);
    }
    return true;
}

} // namespace

QByteArray untersuchungszeilen(const Sitzungsstand& stand) {
    QByteArray zeilen;
    füge(zeilen, "Datenbank", kodiert(stand.DatenbankPfad));
    füge(zeilen, "Nummer", kodiert(stand.gespeicherteNummer));
    füge(zeilen, "Marke", kodiert(stand.gespeicherteMarke));
    füge(zeilen, "Datum", stand.datum.toString(Qt::ISODate).toLatin1());
    füge(zeilen, "Geaendert",
         QByteArray::number((stand.angabenGeändert ? 1 : 0) + (stand.messungenGeändert ? 2 : 0)));
    for (const Textfeld& f : Textfelder) {
        füge(zeilen, f.name, kodiert(stand.angaben.*f.wert));
    }
    füge(zeilen, "Rasse", QByteArray::number(stand.angaben.Rasse));
    füge(zeilen, "Tiere", stand.angaben.Tiere == Geschlecht::Drohnen ? "1" : "0");
    füge(zeilen, "CI", ciText(stand.reihe));
    füge(zeilen, "HIDV", hiDvSatz(stand.reihe.hiDvZeilen()).toUtf8());
    füge(zeilen, "Werte", wertetext(stand.reihe));
    füge(zeilen, "Punkte", punktesatz(stand.reihe.messungen()).toUtf8());
    füge(zeilen, "Angaben",
         beisatz({{}, {}, {}, stand.merkmale, stand.zusatz}, stand.reihe.messungen(),
                 stand.reihe.flügelangaben())
             .toUtf8());
    return zeilen;
}

QByteArray flügelzeilen(const Sitzungsstand& stand) {
    const std::map<int, Flügelmessung> flügel{{1, stand.flügel}};
    QByteArray zeilen;
    füge(zeilen, "Fluegel", punktesatz(flügel).toUtf8());
    füge(zeilen, "Aufnahme", beisatz({}, flügel).toUtf8());
    füge(zeilen, "Wiederholt", QByteArray::number(stand.wiederholt));
    füge(zeilen, "Ansicht", kodiert(stand.ansicht));
    return zeilen;
}

QByteArray sitzungsblock(const QByteArray& zeilen) {
    QByteArray block = Kopf.toByteArray() + zeilen;
    const QByteArray gesamt = summe(block);
    block.chop(1);
    return block.append(Summenfeld).append(gesamt).append('\n');
}

Sitzungslesung sitzungAus(QByteArrayView inhalt) {
    Sitzungslesung lesung;
    bool lücke = false; // in the row of blocks since the last examination
    for (qsizetype anfang = 0; anfang < inhalt.size();) {
        const qsizetype zeilenende = inhalt.indexOf(Summenfeld, anfang);
        const qsizetype ende = zeilenende + Summenfeld.size() + Summenlänge + 1;
        if (zeilenende < 0 || ende > inhalt.size()) {
            lesung.beschädigt = lesung.beschädigt || !lesung.stand;
            break; // cut off while it was written
        }
        const QByteArrayView stück = inhalt.sliced(anfang, zeilenende + 1 - anfang);
        // A damaged end of the block before may have swallowed this one's beginning.
        const qsizetype kopf = stück.lastIndexOf(Kopf);
        const bool gilt =
            kopf >= 0 && inhalt[ende - 1] == '\n' &&
            summe(stück.sliced(kopf)) == inhalt.sliced(ende - 1 - Summenlänge, Summenlänge) &&
            setzeFort(lesung.stand, !lücke && kopf == 0, stück.sliced(kopf + Kopf.size()));
        lesung.beschädigt = lesung.beschädigt || !gilt || kopf > 0;
        lücke = !gilt;
        if (gilt) {
            lesung.ende = ende;
        }
        anfang = ende;
    }
    return lesung;
}

} // namespace tarvel
