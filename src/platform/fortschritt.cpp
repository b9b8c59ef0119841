#include "platform/fortschritt.h"

#include <QCoreApplication>
#include <QPushButton>

namespace tarvel {

Fortschritt::Fortschritt(QWidget* parent, const QString& titel, const QString& abbrechen,
                         int schritte)
    : fenster_(parent) {
    fenster_.setObjectName(QStringLiteral("Fortschritt"));
    fenster_.setWindowTitle(titel);
    auto* knopf = new QPushButton(abbrechen);
    knopf->setObjectName(QStringLiteral("bef_Abbrechen"));
    fenster_.setCancelButton(knopf);
    fenster_.setRange(0, schritte);
    fenster_.setWindowModality(Qt::ApplicationModal);
    fenster_.setAutoClose(false);
    fenster_.setAutoReset(false);
    // The toolkit guesses how long work will take; counting its steps gives the same every time.
    fenster_.setMinimumDuration(0);
    constexpr int nie = 24 * 60 * 60 * 1000;
    if (schritte < Sichtbar) {
        fenster_.setMinimumDuration(nie);
    }
}

bool Fortschritt::weiter(int schritt, const QString& text) {
    if (!fenster_.wasCanceled()) {
        fenster_.setLabelText(text);
        fenster_.setValue(schritt);
    }
    return !fenster_.wasCanceled();
}

} // namespace tarvel
