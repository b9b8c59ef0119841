#pragma once

#include "evaluation/beurteilung.h"
#include "measure/messreihe.h"
#include "measure/statistik.h"
#include "results/kolonieangaben.h"
#include "results/untersuchungszusatz.h"

#include <QDate>

namespace tarvel {

/// One examination: a sample of one colony. This is the program's document; the windows show it
/// and send it changes.
class Untersuchung {
public:
    /// Puts a stored examination in place of this one; it counts as unchanged.
    void lade(const Kolonieangaben& angaben, const Messreihe& reihe, const Merkmale& merkmale,
              const QDate& datum, const Untersuchungszusatz& zusatz = {}) {
        angaben_ = angaben;
        reihe_ = reihe;
        merkmale_ = merkmale;
        datum_ = datum;
        zusatz_ = zusatz;
        alsUnverändertMerken();
    }
    /// Begins another examination, without wings and body marks; it counts as unchanged. Whether
    /// marks are taken as list or sums stays.
    void beginneNeu(const Kolonieangaben& angaben) {
        Merkmale keine;
        keine.Tiere = angaben.Tiere;
        keine.Modus = merkmale_.Modus;
        lade(angaben, {}, keine, {});
    }

    [[nodiscard]] const Kolonieangaben& angaben() const { return angaben_; }
    void setzeAngaben(const Kolonieangaben& angaben) {
        angabenGeändert_ = angabenGeändert_ || angaben != angaben_;
        if (angaben.Tiere != angaben_.Tiere || angaben.Rasse != angaben_.Rasse ||
            angaben.Rassenname != angaben_.Rassenname) {
            zusatz_.Urteil = Ablageurteil::Keines;
        }
        angaben_ = angaben;
    }

    /// Stays where it is, whatever series it becomes.
    [[nodiscard]] const Messreihe& reihe() const { return reihe_; }
    void setzeReihe(const Messreihe& reihe) {
        // A picture that was found elsewhere, for example, changes nothing that was judged.
        if (klassenCI(reihe) != klassenCI(reihe_) ||
            werte(reihe, &Chartwerte::CI) != werte(reihe_, &Chartwerte::CI)) {
            zusatz_.Urteil = Ablageurteil::Keines;
        }
        reihe_ = reihe;
        reihe_.alsUnverändertMerken();
        messungenGeändert_ = true;
    }

    [[nodiscard]] const Merkmale& merkmale() const { return merkmale_; }
    void setzeMerkmale(const Merkmale& merkmale) {
        if (merkmale == merkmale_) {
            return;
        }
        messungenGeändert_ = true;
        merkmale_ = merkmale;
        zusatz_.Urteil = Ablageurteil::Keines;
        zusatz_.merkmaleUnlesbar = zusatz_.merkmaleUnlesbar && merkmale.leer();
    }

    /// What is stored with the examination beside its data; setting it is no change of its own.
    [[nodiscard]] const Untersuchungszusatz& zusatz() const { return zusatz_; }
    void setzeZusatz(const Untersuchungszusatz& zusatz) { zusatz_ = zusatz; }

    /// Date that the examination is stored with; invalid for one that was never stored.
    [[nodiscard]] const QDate& datum() const { return datum_; }

    /// True since the colony data were last changed by the user.
    [[nodiscard]] bool angabenGeändert() const { return angabenGeändert_; }
    /// True since wings or body marks were last changed.
    [[nodiscard]] bool messungenGeändert() const { return messungenGeändert_; }
    [[nodiscard]] bool geändert() const { return angabenGeändert_ || messungenGeändert(); }
    void alsUnverändertMerken() {
        angabenGeändert_ = false;
        messungenGeändert_ = false;
        reihe_.alsUnverändertMerken();
    }
    /// To be called when an examination comes back with what was or was not stored of it.
    void alsGeändertMerken(bool angaben, bool messungen) {
        angabenGeändert_ = angaben;
        messungenGeändert_ = messungen;
    }
    /// To be called when the examination was stored with that date and addition.
    void alsGespeichertMerken(const QDate& datum, const Untersuchungszusatz& zusatz) {
        datum_ = datum;
        zusatz_ = zusatz;
        alsUnverändertMerken();
    }

private:
    Kolonieangaben angaben_;
    Messreihe reihe_;
    Merkmale merkmale_;
    QDate datum_;
    Untersuchungszusatz zusatz_;
    bool angabenGeändert_ = false;
    bool messungenGeändert_ = false;
};

/// What the judgement looks at; valid as long as @p untersuchung stays as it is.
[[nodiscard]] inline Prüfling prüfling(const Untersuchung& untersuchung) {
    return {.tiere = untersuchung.angaben().Tiere,
            .reihe = untersuchung.reihe(),
            .merkmale = untersuchung.merkmale(),
            .fremdeRasse = !untersuchung.angaben().Rassenname.isEmpty(),
            .merkmaleUnlesbar = untersuchung.zusatz().merkmaleUnlesbar};
}

/// Who measured it, empty when that is not known: @p hier, the user of this program, as long as it
/// is stored nowhere and nothing of it comes from elsewhere.
[[nodiscard]] QString untersucher(const Untersuchung& untersuchung, const QString& hier);

} // namespace tarvel
