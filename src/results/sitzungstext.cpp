#include "results/sitzungstext.h"

#include "evaluation/rassen.h"
#include "results/fluegelsatz.h"
#include "results/satztext.h"

#include <QCryptographicHash>

#include <array>
#include <map>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;
using namespace satztext;

namespace {

constexpr QByteArrayView Kopf = "Sitzung 1\n";
constexpr QByteArrayView Summenfeld = "\nSumme=";
constexpr qsizetype Summenlänge = 40;

/// Calls @p fn with name and place of every text of the examination.
template <typename Stand, typename Funktion>
void jederText(Stand& stand, Funktion fn) {
    fn("Datenbank", stand.DatenbankPfad);
    fn("Nummer", stand.gespeicherteNummer);
    fn("Marke", stand.gespeicherteMarke);
    fn("Jahr", stand.angaben.Jahr);
    fn("KNr", stand.angaben.KNr);
    fn("LV", stand.angaben.LV);
    fn("ZNr", stand.angaben.ZNr);
    fn("UNr", stand.angaben.UNr);
    fn("Volk", stand.angaben.Volk);
    fn("Name", stand.angaben.Name);
    fn("Besitzer", stand.angaben.Besitzer);
    fn("Begattung", stand.angaben.Begattung);
    fn("Rassenname", stand.angaben.Rassenname);
}

void füge(QByteArray& zeilen, const char* name, const QString& wert) {
    zeilen += QByteArray(name) + '=' + wert.toUtf8() + '\n';
}

QString zahl(float wert) {
    return QString::number(static_cast<double>(wert), 'g', 9);
}

/// Unlike the results file a session keeps the lines of a cubital index 0 too.
QString ciText(const Messreihe& reihe) {
    QString text;
    for (const CiZeile& z : reihe.ciZeilen()) {
        text += u'#' + dreistellig(z.nummer) + u';' + z.wert + u';' + z.klasse + u"; "_s;
    }
    return text;
}

QString wertetext(const Messreihe& reihe) {
    QString text;
    for (const int nummer : reihe.nummern()) {
        const Chartwerte& w = reihe.chartwerte(nummer);
        text +=
            dreistellig(nummer) + u'/' + zahl(w.CI) + u'/' + zahl(w.HI) + u'/' + zahl(w.DV) + u';';
    }
    return text;
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
        jederText(stand, [this](const char* name, QString& wert) { wert = text(name); });
        const QByteArray datum = feld("Datum");
        stand.datum = QDate::fromString(QString::fromLatin1(datum), Qt::ISODate);
        prüfe(stand.datum.isValid() || datum.isEmpty());
        const int geändert = ganze("Geaendert", 3);
        stand.angabenGeändert = (geändert & 1) != 0;
        stand.messungenGeändert = (geändert & 2) != 0;
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
    QString text(const char* name) { return dekodiert(zeichen(name)); }
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

    std::map<int, Chartwerte> werte() {
        constexpr qsizetype Feldzahl = 4;
        std::map<int, Chartwerte> werte;
        const QList<QByteArray> stücke = feld("Werte").split(';');
        for (const QByteArray& stück : stücke) {
            const QList<QByteArray> felder = stück.split('/');
            std::array<bool, Feldzahl> gut{};
            if (felder.size() == Feldzahl) {
                werte[felder[0].toInt(gut.data())] = {felder[1].toFloat(&gut[1]),
                                                      felder[2].toFloat(&gut[2]),
                                                      felder[3].toFloat(&gut[3])};
            }
            prüfe(stück.isEmpty() || gut == std::array{true, true, true, true});
        }
        return werte;
    }

    void liesReihe(Messreihe& reihe, const std::map<int, Flügelmessung>& aufnahmen,
                   const std::map<int, Flügelangaben>& angaben) {
        reihe.stelleHer(inhalt(ciAusSatz(zeichen("CI"))), inhalt(hiDvAusSatz(zeichen("HIDV"))),
                        werte(), messungen("Punkte", aufnahmen), angaben);
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
    jederText(stand, [&zeilen](const char* name, const QString& wert) {
        füge(zeilen, name, kodiert(wert));
    });
    füge(zeilen, "Datum", stand.datum.toString(Qt::ISODate));
    füge(zeilen, "Geaendert",
         QString::number((stand.angabenGeändert ? 1 : 0) + (stand.messungenGeändert ? 2 : 0)));
    füge(zeilen, "Rasse", QString::number(stand.angaben.Rasse));
    füge(zeilen, "Tiere", stand.angaben.Tiere == Geschlecht::Drohnen ? u"1"_s : u"0"_s);
    füge(zeilen, "CI", ciText(stand.reihe));
    füge(zeilen, "HIDV", hiDvSatz(stand.reihe.hiDvZeilen()));
    füge(zeilen, "Werte", wertetext(stand.reihe));
    füge(zeilen, "Punkte", punktesatz(stand.reihe.messungen()));
    füge(zeilen, "Angaben",
         beisatz({{}, {}, {}, stand.merkmale, stand.zusatz}, stand.reihe.messungen(),
                 stand.reihe.flügelangaben()));
    return zeilen;
}

QByteArray flügelzeilen(const Sitzungsstand& stand) {
    const std::map<int, Flügelmessung> flügel{{1, stand.flügel}};
    QByteArray zeilen;
    füge(zeilen, "Fluegel", punktesatz(flügel));
    füge(zeilen, "Aufnahme", beisatz({}, flügel));
    füge(zeilen, "Wiederholt", QString::number(stand.wiederholt));
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
