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
    const QString gesetzt = einstellungen_.text(Einstellung::DruckerGesetzt);
    const QString altes = einstellungen_.text(Einstellung::DruckerVorher);
    const bool nochSo = !gesetzt.isEmpty() && vorher() == gesetzt;
    const bool hergestellt = nochSo && system_.setzeStandard(altes);
    if (hergestellt) {
        vorher_ = altes;
    }
    if (hergestellt || !nochSo) {
        merke({}, {});
    }
    return hergestellt ? std::optional(altes) : std::nullopt;
}

bool Druckerwahl::wähle(const QString& drucker) {
    const QString& erster = vorher();
    // First what would be lost with a crash.
    if (!verändert_ && drucker != erster) {
        merke(erster, drucker);
    }
    const bool gesetzt = system_.setzeStandard(drucker);
    verändert_ = verändert_ || gesetzt;
    if (!verändert_) {
        merke({}, {});
    } else if (gesetzt) {
        merke(erster, drucker);
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
        vorher_ = frage_.valid() ? frage_.get() : system_.standard();
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
