#include "batch/ausfuhr.h"

#include "evaluation/rassen.h"
#include "measure/koordinatenausgabe.h"
#include "measure/statistik.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <array>
#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// An examination of the database.
struct Fund {
    QString nummer;
    QString rasse;
    QString prozent; ///< shares of the body marks
    GeleseneUntersuchung gelesen;
};

struct Größe {
    const char* name;
    float Chartwerte::*wert;
};
constexpr std::array Größen{Größe{"ci", &Chartwerte::CI}, Größe{"hi", &Chartwerte::HI},
                            Größe{"dv", &Chartwerte::DV}};

class Tabelle {
public:
    explicit Tabelle(QByteArray kopf)
        : csv_(std::move(kopf)) {}

    void zelle(const QByteArray& inhalt) {
        csv_ += (zeilenbeginn_ ? "" : ",") + inhalt;
        zeilenbeginn_ = false;
    }
    void text(const QString& text) { zelle(tarvel::zelle(text.trimmed())); }
    void zahl(qsizetype zahl) { zelle(QByteArray::number(zahl)); }
    void zahl(std::optional<double> zahl) {
        constexpr int stellen = 7; // all that the mean of singles has
        zelle(zahl ? QByteArray::number(*zahl, 'g', stellen) : QByteArray());
    }
    void wert(float wert) { zelle(wert == Chartwerte::KeinWert ? QByteArray() : vollerWert(wert)); }
    void zeilenende() {
        csv_ += '\n';
        zeilenbeginn_ = true;
    }
    [[nodiscard]] const QByteArray& csv() const { return csv_; }

private:
    QByteArray csv_;
    bool zeilenbeginn_ = true;
};

QString tiere(const Kolonieangaben& angaben) {
    return angaben.Tiere == Geschlecht::Drohnen ? u"drones"_s : u"workers"_s;
}

/// Collects the examinations one after the other.
class Ausfuhr {
public:
    explicit Ausfuhr(Ausfuhrart art)
        : art_(art)
        , tabelle_(kopf(art)) {}

    void nimm(const Fund& fund) {
        switch (art_) {
        case Ausfuhrart::Untersuchungen:
            nimmUntersuchung(fund);
            break;
        case Ausfuhrart::Flügel:
            nimmFlügel(fund);
            break;
        case Ausfuhrart::Tps:
            tps_ += alsTps(punkte(fund));
            break;
        }
    }

    [[nodiscard]] const QByteArray& inhalt() const {
        return art_ == Ausfuhrart::Tps ? tps_ : tabelle_.csv();
    }

private:
    static QByteArray kopf(Ausfuhrart art) {
        if (art == Ausfuhrart::Flügel) {
            return "examination,date,race,caste,wing,ci,ci_class,hi,hi_class,dv,file,dpi,zoom\n";
        }
        QByteArray kopf = "examination,date,year,queen,region,breeder_number,breeder,owner,colony,"
                          "mating,race,caste,conforms,dpi,wings";
        for (const Größe& g : Größen) {
            for (const char* figur : {"n", "mean", "sd", "min", "max"}) {
                kopf += QByteArray(",") + g.name + '_' + figur;
            }
        }
        return kopf + ",marks_bees,marks\n";
    }

    void nimmUntersuchung(const Fund& fund) {
        const Kolonieangaben& a = fund.gelesen.angaben;
        const Messreihe& reihe = fund.gelesen.reihe;
        for (const QString& text :
             {fund.nummer, fund.gelesen.datum.toString(Qt::ISODate), a.Jahr, a.KNr, a.LV, a.ZNr,
              a.Name, a.Besitzer, a.Volk, a.Begattung, fund.rasse, tiere(a),
              fund.gelesen.EntsprichtRasse ? u"yes"_s : u"no"_s}) {
            tabelle_.text(text);
        }
        tabelle_.zelle(fund.gelesen.auflösung ? QByteArray::number(*fund.gelesen.auflösung)
                                              : QByteArray());
        tabelle_.zahl(std::ssize(reihe.nummern()));
        for (const Größe& g : Größen) {
            const auto k = kennzahlen(werte(reihe, g.wert));
            tabelle_.zahl(static_cast<qsizetype>(k ? k->anzahl : 0));
            tabelle_.zahl(k ? std::optional(k->mittelwert) : std::nullopt);
            tabelle_.zahl(k ? k->standardabweichung : std::nullopt);
            tabelle_.zahl(k ? std::optional(k->minimum) : std::nullopt);
            tabelle_.zahl(k ? std::optional(k->maximum) : std::nullopt);
        }
        const qsizetype anteile = fund.prozent.lastIndexOf(u';');
        tabelle_.text(fund.prozent.sliced(anteile + 1));
        tabelle_.text(fund.prozent.left(std::max<qsizetype>(anteile, 0)));
        tabelle_.zeilenende();
    }

    void nimmFlügel(const Fund& fund) {
        const Messreihe& reihe = fund.gelesen.reihe;
        for (const int nummer : reihe.nummern()) {
            tabelle_.text(fund.nummer);
            tabelle_.text(fund.gelesen.datum.toString(Qt::ISODate));
            tabelle_.text(fund.rasse);
            tabelle_.text(tiere(fund.gelesen.angaben));
            tabelle_.zahl(static_cast<qsizetype>(nummer));
            const Chartwerte& w = reihe.chartwerte(nummer);
            const auto klasse = [](float index, float (*position)(float)) {
                return index == Chartwerte::KeinWert ? index : position(index);
            };
            for (const float wert : {w.CI, klasse(w.CI, klassenpositionCI), w.HI,
                                     klasse(w.HI, klassenpositionHI), w.DV}) {
                tabelle_.wert(wert);
            }
            const Flügelmessung* messung = reihe.messung(nummer);
            tabelle_.text(messung == nullptr ? QString() : messung->bilddatei);
            tabelle_.text(messung == nullptr ? QString() : QString::number(messung->aufnahme.dpi));
            tabelle_.text(messung == nullptr ? QString()
                                             : QString::number(messung->aufnahme.Zoomfaktor));
            tabelle_.zeilenende();
        }
    }

    static std::vector<Ausgabeflügel> punkte(const Fund& fund) {
        std::vector<Ausgabeflügel> flügel;
        for (const auto& [nummer, messung] : fund.gelesen.reihe.messungen()) {
            flügel.push_back({.nummer = nummer,
                              .name = fund.nummer + u'/' + QString::number(nummer),
                              .messung = messung,
                              .bildhöhe = std::nullopt});
        }
        return flügel;
    }

    Ausfuhrart art_;
    Tabelle tabelle_;
    QByteArray tps_;
};

QStringList nummern(const Ergebnistabelle& tabelle) {
    const auto zeilen = tabelle.zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {},
                                       std::numeric_limits<int>::max());
    QStringList alle;
    for (const Ergebnistabelle::Zeile& zeile : zeilen) {
        alle << zeile.werte.front();
    }
    alle.removeDuplicates();
    return alle;
}

} // namespace

Status exportiere(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    try {
        const Ergebnistabelle tabelle(befehl.datenbank);
        const Satzumgebung satzumgebung{
            .texte = t, .format = umgebung.format, .rassen = rassenliste(Einstellungen(QString()))};
        Ausfuhr ausfuhr(befehl.art);
        const QStringList alle = nummern(tabelle);
        for (const QString& nummer : alle) {
            const std::optional<Ergebnissatz> satz = tabelle.lade(nummer);
            if (!satz) {
                continue; // removed meanwhile
            }
            const Fund fund{.nummer = satz->U_NR.trimmed(),
                            .rasse = satz->RASSE,
                            .prozent = satz->PROZENT.trimmed(),
                            .gelesen = untersuchungAus(*satz, satzumgebung)};
            if (!fund.gelesen.nichtGelesen.isEmpty()) {
                melde(umgebung, befehl.datenbank,
                      t(Meldung::UntersuchungNichtLesbar)
                          .arg(fund.nummer, fund.gelesen.nichtGelesen.join(u", "_s)));
            }
            ausfuhr.nimm(fund);
        }
        return schreibe(umgebung, befehl.ziel, ausfuhr.inhalt());
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(t, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
