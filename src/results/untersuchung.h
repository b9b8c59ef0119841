#pragma once

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

    /// True since the colony data were last changed by the user.
    [[nodiscard]] bool angabenGeändert() const { return angabenGeändert_; }
    [[nodiscard]] bool geändert() const { return angabenGeändert_ || reihe_.geändert(); }
    void alsUnverändertMerken() {
        angabenGeändert_ = false;
        reihe_.alsUnverändertMerken();
    }

private:
    Kolonieangaben angaben_;
    Messreihe reihe_;
    bool angabenGeändert_ = false;
};

} // namespace tarvel
