#include "platform/fortschritt.h"

#include <QCoreApplication>
#include <QPushButton>

namespace tarvel {

Fortschritt::Fortschritt(QWidget* parent, const QString& titel, const QString& abbrechen,
                         int schritte)
    : fenster_(parent) {
    fenster_.setObjectName(QStringLiteral("Fortschritt"));
    fenster_.setWindowTitle(titel);
    // The toolkit's own button: a second one would share its Escape key with it, so that neither
    // gets it.
    fenster_.setCancelButtonText(abbrechen);
    fenster_.findChild<QPushButton*>()->setObjectName(QStringLiteral("bef_Abbrechen"));
    // Escape that reaches the window itself would only hide it.
    QObject::connect(&fenster_, &QDialog::rejected, &fenster_, &QProgressDialog::cancel);
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
