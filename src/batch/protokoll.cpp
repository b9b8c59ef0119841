#include "batch/protokoll.h"

#include "lang/protokolltexte.h"
#include "lang/zielwahl.h"
#include "print/protokolldaten.h"
#include "print/protokolldruck.h"
#include "print/serie.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QDir>

#include <set>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Protokolltexte protokolltexte(const Einstellungen& einstellungen, const Texte& texte) {
    Protokolltexte worte = ProtokolltexteStandard(texte);
    if (einstellungen.schalter(Einstellung::Übersetzen)) {
        ÜbersetzungLaden(einstellungen.IniPfad(), worte.felder);
    }
    return worte;
}

/// Puts reports together and writes them.
class Ausgabe {
public:
    Ausgabe(const Protokollbefehl& befehl, const Batchumgebung& umgebung,
            const Einstellungen& einstellungen)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , einstellungen_(einstellungen)
        , aussehen_(ladeProtokolleinstellungen(einstellungen))
        , worte_(protokolltexte(einstellungen, umgebung.texte))
        , grafik_(aussehen_.briefkopf) {
        if (grafik_.fehler() != Grafikfehler::Keiner) {
            const QString& datei = aussehen_.briefkopf.Datei;
            tarvel::melde(umgebung, datei, umgebung.texte(meldung(grafik_.fehler())).arg(datei));
        }
    }

    Status führeAus() {
        const Ergebnistabelle tabelle(befehl_.datenbank);
        if (befehl_.nummern.isEmpty()) {
            tabelle.sätze(
                tabelle.zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}),
                [this](const Ergebnissatz& satz) {
                    nimm(satz);
                    return true;
                },
                [this](const QString& nummer) {
                    melde(umgebung_.texte(Meldung::UntersuchungZuGroß).arg(nummer));
                });
        }
        for (const QString& nummer : befehl_.nummern) {
            if (const auto satz = tabelle.lade(nummer)) {
                nimm(*satz);
            } else {
                melde(
                    meldungstext(umgebung_.texte, Datenbankfehler(Datenbankgrund::UntersuchungFehlt,
                                                                  befehl_.datenbank, nummer)));
            }
        }
        const Status geschrieben = befehl_.ordner.isEmpty() ? schreibeEine() : schreibeJede();
        return status_ == Status::Gut ? geschrieben : status_;
    }

private:
    void melde(const QString& text) {
        tarvel::melde(umgebung_, befehl_.datenbank, text);
        status_ = Status::NichtLesbar;
    }

    void nimm(const Ergebnissatz& satz) {
        const Texte& t = umgebung_.texte;
        const GeleseneUntersuchung gelesen =
            untersuchungAus(satz, {.texte = t,
                                   .format = umgebung_.format,
                                   .rassen = aussehen_.rassen,
                                   .OhneHaarlänge = aussehen_.regeln.OhneHaarlänge});
        const QString nummer = satz.U_NR.trimmed();
        if (!gelesen.nichtGelesen.isEmpty()) {
            tarvel::melde(
                umgebung_, befehl_.datenbank,
                t(Meldung::UntersuchungTeilweise).arg(nummer, gelesen.nichtGelesen.join(u", "_s)));
        }
        Untersuchung untersuchung;
        untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                          gelesen.zusatz);
        if (untersuchung.reihe().leer() && untersuchung.merkmale().leer()) {
            melde(nummer + u": "_s + t(Meldung::ProtokollOhneFlügel));
            return;
        }
        daten_.push_back(protokolldaten(
            {.untersuchung = untersuchung,
             .standard = ladeRassestandard(untersuchung.angaben().Rasse + 1, einstellungen_),
             .einstellungen = aussehen_,
             .texte = t,
             .protokolltexte = worte_,
             .format = umgebung_.format,
             .heute = umgebung_.heute}));
    }

    [[nodiscard]] Status schreibeEine() const {
        if (daten_.empty()) {
            return Status::NichtLesbar;
        }
        const bool eines = daten_.size() == 1 && befehl_.nummern.size() == 1;
        return schreibe(umgebung_, befehl_.pdf,
                        eines ? protokollAlsPdf(daten_.front(), grafik_)
                              : serieAlsPdf(daten_, grafik_, umgebung_.texte));
    }

    [[nodiscard]] Status schreibeJede() const {
        Status status = Status::Gut;
        std::set<QString> vergeben;
        for (const Protokolldaten& d : daten_) {
            QString name = alsDateiname(d.nummer) + u".pdf"_s;
            for (int i = 2; !vergeben.insert(name.toLower()).second; ++i) {
                name = alsDateiname(d.nummer) + u'-' + QString::number(i) + u".pdf"_s;
            }
            const Status geschrieben = schreibe(umgebung_, QDir(befehl_.ordner).filePath(name),
                                                protokollAlsPdf(d, grafik_));
            status = geschrieben == Status::Gut ? status : geschrieben;
        }
        return status;
    }

    const Protokollbefehl& befehl_;
    const Batchumgebung& umgebung_;
    const Einstellungen& einstellungen_;
    Protokolleinstellungen aussehen_;
    Protokolltexte worte_;
    Briefkopfgrafik grafik_;
    std::vector<Protokolldaten> daten_;
    Status status_ = Status::Gut;
};

} // namespace

Status schreibeProtokoll(const Protokollbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    try {
        return Ausgabe(befehl, umgebung, *einstellungen).führeAus();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
