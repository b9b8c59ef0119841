#pragma once

#include "evaluation/merkmale.h"
#include "measure/messreihe.h"
#include "results/kolonieangaben.h"
#include "results/untersuchungszusatz.h"

#include <QDate>

namespace tarvel {

/// One examination: a sample of one colony. This is the program's document; the windows show it
/// and send it changes.
class Untersuchung {
public:
    /// Puts a stored examination in place of this one; it counts as unchanged. What refers to
    /// reihe() goes on doing so.
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
        angaben_ = angaben;
    }

    [[nodiscard]] Messreihe& reihe() { return reihe_; }
    [[nodiscard]] const Messreihe& reihe() const { return reihe_; }

    [[nodiscard]] const Merkmale& merkmale() const { return merkmale_; }
    void setzeMerkmale(const Merkmale& merkmale) {
        merkmaleGeändert_ = merkmaleGeändert_ || merkmale != merkmale_;
        merkmale_ = merkmale;
    }

    /// What is stored with the examination beside its data; setting it is no change of its own.
    [[nodiscard]] const Untersuchungszusatz& zusatz() const { return zusatz_; }
    void setzeZusatz(const Untersuchungszusatz& zusatz) { zusatz_ = zusatz; }

    /// Date that the examination is stored with; invalid for one that was never stored.
    [[nodiscard]] const QDate& datum() const { return datum_; }

    /// True since the colony data were last changed by the user.
    [[nodiscard]] bool angabenGeändert() const { return angabenGeändert_; }
    /// True since wings or body marks were last changed.
    [[nodiscard]] bool messungenGeändert() const { return merkmaleGeändert_ || reihe_.geändert(); }
    [[nodiscard]] bool geändert() const { return angabenGeändert_ || messungenGeändert(); }
    void alsUnverändertMerken() {
        angabenGeändert_ = false;
        merkmaleGeändert_ = false;
        reihe_.alsUnverändertMerken();
    }
    /// To be called when an examination comes back whose changes were never stored.
    void alsGeändertMerken(bool angaben, bool messungen) {
        angabenGeändert_ = angaben;
        merkmaleGeändert_ = messungen;
    }
    /// To be called when the examination was stored with the date @p datum.
    void alsGespeichertMerken(const QDate& datum) {
        datum_ = datum;
        alsUnverändertMerken();
    }

private:
    Kolonieangaben angaben_;
    Messreihe reihe_;
    Merkmale merkmale_;
    QDate datum_;
    Untersuchungszusatz zusatz_;
    bool angabenGeändert_ = false;
    bool merkmaleGeändert_ = false;
};

} // namespace tarvel
