#include "batch/protokoll.h"

#include "lang/protokolltexte.h"
#include "print/protokolldaten.h"
#include "print/protokolldruck.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

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

/// Throws Datenbankfehler when there is no such examination.
GeleseneUntersuchung lade(const Protokollbefehl& befehl, const Satzumgebung& umgebung) {
    const auto satz = Ergebnistabelle(befehl.datenbank).lade(befehl.nummer);
    if (!satz) {
        throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, befehl.datenbank, befehl.nummer);
    }
    return untersuchungAus(*satz, umgebung);
}

Status schreibe(const GeleseneUntersuchung& gelesen, const Protokollbefehl& befehl,
                const Einstellungen& einstellungen, const Batchumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    Untersuchung untersuchung;
    untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                      gelesen.zusatz);
    if (untersuchung.reihe().leer() && untersuchung.merkmale().leer()) {
        melde(umgebung, befehl.datenbank, t(Meldung::ProtokollOhneFlügel));
        return Status::NichtLesbar;
    }
    const Protokolleinstellungen aussehen = ladeProtokolleinstellungen(einstellungen);
    const Protokolltexte worte = protokolltexte(einstellungen, t);
    const Protokolldaten daten = protokolldaten(
        {.untersuchung = untersuchung,
         .standard = ladeRassestandard(untersuchung.angaben().Rasse + 1, einstellungen),
         .einstellungen = aussehen,
         .texte = t,
         .protokolltexte = worte,
         .format = umgebung.format,
         .heute = umgebung.heute});
    const Briefkopfgrafik grafik(aussehen.briefkopf);
    if (grafik.fehler() != Grafikfehler::Keiner) {
        const QString& datei = aussehen.briefkopf.Datei;
        melde(umgebung, datei, t(meldung(grafik.fehler())).arg(datei));
    }
    return schreibe(umgebung, befehl.pdf, protokollAlsPdf(daten, grafik));
}

} // namespace

Status schreibeProtokoll(const Protokollbefehl& befehl, const Batchumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    try {
        const Protokolleinstellungen aussehen = ladeProtokolleinstellungen(*einstellungen);
        const GeleseneUntersuchung gelesen =
            lade(befehl, {.texte = t,
                          .format = umgebung.format,
                          .rassen = aussehen.rassen,
                          .OhneHaarlänge = aussehen.regeln.OhneHaarlänge});
        if (!gelesen.nichtGelesen.isEmpty()) {
            melde(umgebung, befehl.datenbank,
                  t(Meldung::UntersuchungTeilweise)
                      .arg(befehl.nummer, gelesen.nichtGelesen.join(u", "_s)));
        }
        return schreibe(gelesen, befehl, *einstellungen, umgebung);
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(t, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
