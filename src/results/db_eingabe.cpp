// What is asked about a cell before it is written: rows that others changed, body marks that
// another caste does not have.

#include "results/db.h"

#include "results/ergebnisgitter.h"
#include "results/untersuchungssatz.h"

#include <QTimer>

namespace tarvel {

using namespace Qt::StringLiterals;

/// True when the matter is settled and the text is written.
bool DB::frageErsetzen(const QString& text) {
    const Texte& texte = umgebung_.texte;
    if (umgebung_.dialoge.frage({.titel = texte(Text::Ergebnisse),
                                 .text = text,
                                 .verwirft = true,
                                 .ja = texte(Meldung::TrotzdemEintragen),
                                 .nein = texte(Meldung::FremdesLassen)}) != Antwort::Ja) {
        grid_->verwirfEingabe();
        zeigeNeu();
        return false;
    }
    grid_->beendeEingabe();
    return true;
}

/// Only an examination without body marks changes its caste without a question.
Ergebnismodell::Wortwechsel DB::prüfeTierwechsel(const QString& nummer, const QString& wort) {
    using enum Ergebnismodell::Wortwechsel;
    std::optional<Ergebnissatz> satz;
    try {
        satz = Ergebnistabelle(umgebung_.DatenbankPfad).lade(nummer);
    } catch (const Datenbankfehler&) {
        return Schreiben; // which tells why it cannot be
    }
    if (!satz || bedeutet(satz->A_D.trimmed(), Text::Drohnen) == bedeutet(wort, Text::Drohnen)) {
        return Schreiben;
    }
    const GeleseneUntersuchung gelesen = untersuchungAus(
        *satz, {.texte = umgebung_.texte, .format = umgebung_.format, .rassen = umgebung_.rassen});
    if (!gelesen.merkmale.etwasEingetragen() && !gelesen.zusatz.merkmaleUnlesbar) {
        return Schreiben;
    }
    tierwechsel_ = {nummer, wort};
    grid_->lehneAb();
    if (meldungen_.empty() || meldungen_.back().first != Tierwechsel) {
        meldungen_.emplace_back(Tierwechsel, QString());
        QTimer::singleShot(0, this, [this] { zeigeMeldungen(); });
    }
    return Ablehnen;
}

/// True when the matter is settled: the other caste is written, without marks.
bool DB::frageTierwechsel() {
    const Texte& t = umgebung_.texte;
    const auto [nummer, wort] = tierwechsel_;
    if (umgebung_.dialoge.frage({.titel = t(Text::KörperMerkmale),
                                 .text = t(Text::UmschaltenWarnung1) + t(Text::UmschaltenWarnung2) +
                                         u'\n' + t(Text::UmschaltenFrage),
                                 .verwirft = true}) != Antwort::Ja) {
        grid_->verwirfEingabe();
        return false;
    }
    try {
        Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
        if (const auto alt = tabelle.lade(nummer)) {
            const Satzumgebung umgebung{
                .texte = t, .format = umgebung_.format, .rassen = umgebung_.rassen};
            Merkmale keine;
            setzeTiere(keine, bedeutet(wort, Text::Drohnen) ? Geschlecht::Drohnen
                                                            : Geschlecht::Arbeiterinnen);
            Untersuchung leere;
            leere.setzeMerkmale(keine);
            const Ergebnissatz ohneMarken = satzAus(leere, std::nullopt, 0, alt->DATUM, umgebung);
            Ergebnissatz neu = *alt;
            neu.A_D = wort;
            neu.MERKMAL = ohneMarken.MERKMAL;
            neu.PROZENT = ohneMarken.PROZENT;
            grid_->verwirfEingabe();
            if (!tabelle.ersetze(neu, *alt)) {
                Grid_Error(Ergebnismodell::Einwand, t(Meldung::ZeileInzwischenGeändert));
                zeigeNeu();
                return false;
            }
        }
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return false;
    }
    zeigeNeu();
    return true;
}

} // namespace tarvel
