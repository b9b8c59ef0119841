#pragma once

#include "evaluation/merkmale.h"
#include "measure/messreihe.h"
#include "results/kolonieangaben.h"

namespace tarvel {

/// One examination: a sample of one colony. This is the program's document; the windows show it
/// and send it changes.
class Untersuchung {
public:
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

private:
    Kolonieangaben angaben_;
    Messreihe reihe_;
    Merkmale merkmale_;
    bool angabenGeändert_ = false;
    bool merkmaleGeändert_ = false;
};

} // namespace tarvel
