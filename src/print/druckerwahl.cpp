#include "print/druckerwahl.h"

#include "settings/einstellungen.h"

#include <chrono>

namespace tarvel {

void Druckerwahl::merkeVorher() {
    if (!vorher_ && !frage_.valid()) {
        frage_ = system_.frageStandard();
    }
}

bool Druckerwahl::hatAltes() const {
    return !einstellungen_.text(Einstellung::DruckerGesetzt).isEmpty();
}

bool Druckerwahl::hatAntwort() const {
    return vorher_ || (frage_.valid() &&
                       frage_.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
}

std::optional<QString> Druckerwahl::stelleAltesHer() {
    if (verändert_) {
        return std::nullopt; // printed meanwhile: the end of this run brings it back
    }
    const QString altes = einstellungen_.text(Einstellung::DruckerVorher);
    const std::optional<QString> jetzt = vorher_ ? vorher_ : frage_.get();
    if (!jetzt) {
        return std::nullopt;
    }
    if (*jetzt != einstellungen_.text(Einstellung::DruckerGesetzt)) {
        vorher_ = jetzt;
        merke({}, {});
        return std::nullopt;
    }
    vorher_ = altes;
    verändert_ = !system_.setzeStandard(altes); // then the end of this run tries again
    if (verändert_) {
        return std::nullopt;
    }
    merke({}, {});
    return altes;
}

bool Druckerwahl::wähle(const QString& drucker) {
    const QString& erster = vorher();
    const bool altes = hatAltes();
    // First what would be lost with a crash.
    if (!altes && drucker != erster) {
        merke(erster, drucker);
    }
    const bool gesetzt = system_.setzeStandard(drucker);
    verändert_ = verändert_ || gesetzt;
    if (gesetzt) {
        merke(erster, drucker);
    } else if (!altes) {
        merke({}, {});
    }
    return gesetzt;
}

void Druckerwahl::stelleHer() {
    if (verändert_ && (system_.standard() == *vorher_ || system_.setzeStandard(*vorher_))) {
        verändert_ = false;
        merke({}, {});
    }
}

const QString& Druckerwahl::vorher() {
    if (!vorher_) {
        vorher_ = frage_.valid() ? frage_.get() : std::nullopt;
        if (hatAltes()) {
            vorher_ = einstellungen_.text(Einstellung::DruckerVorher);
        } else if (!vorher_) {
            vorher_ = system_.standard();
        }
    }
    return *vorher_;
}

void Druckerwahl::merke(const QString& vorher, const QString& gesetzt) {
    if (einstellungen_.text(Einstellung::DruckerGesetzt) != gesetzt) {
        einstellungen_.schreibe(Einstellung::DruckerVorher, vorher);
        einstellungen_.schreibe(Einstellung::DruckerGesetzt, gesetzt);
    }
}

} // namespace tarvel
