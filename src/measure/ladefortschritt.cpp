#include "measure/ladefortschritt.h"

#include "measure/bildort.h"

#include <QApplication>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

namespace {

constexpr int Schritte = 1000;
constexpr int Blicktakt = 30; // milliseconds from one look at the user to the next

} // namespace

Ladefortschritt::Ladefortschritt(QWidget* fenster, const Texte& texte, const QString& pfad,
                                 int geduld)
    : fenster_(fenster)
    , texte_(texte)
    , pfad_(pfad)
    , geduld_(geduld)
    , nächstes_(geduld) {
    uhr_.start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

Ladefortschritt::~Ladefortschritt() {
    QApplication::restoreOverrideCursor();
}

Weiter Ladefortschritt::weiter() {
    return [this](qint64 getan, qint64 gesamt) {
        if (uhr_.elapsed() < nächstes_) {
            return true;
        }
        const bool weiter = zeige(getan, gesamt);
        nächstes_ = geduld_ == 0 ? 0 : uhr_.elapsed() + Blicktakt;
        return weiter;
    };
}

bool Ladefortschritt::zeige(qint64 getan, qint64 gesamt) {
    if (!fortschritt_) {
        fortschritt_.emplace(fenster_, texte_(Text::KnopfBildLaden), texte_(Text::Abbrechen),
                             Schritte);
    }
    const double anteil =
        static_cast<double>(getan) / static_cast<double>(std::max<qint64>(1, gesamt));
    return fortschritt_->weiter(
        1 + static_cast<int>(std::clamp(anteil, 0.0, 1.0) * (Schritte - 2)),
        texte_(Meldung::BildLadeFortschritt).arg(QFileInfo(pfad_).fileName()));
}

} // namespace tarvel
