#pragma once

#include "lang/texte.h"
#include "measure/bildarbeiter.h"
#include "platform/fortschritt.h"

#include <QElapsedTimer>

#include <optional>

class QWidget;

namespace tarvel {

/// The hourglass for as long as it lives, and after a while a window that tells how far a picture
/// is and lets the user stop it. Until that is there nothing of the user is listened to.
class Ladefortschritt {
public:
    /// @p geduld in milliseconds.
    Ladefortschritt(QWidget* fenster, const Texte& texte, const QString& pfad, int geduld);
    ~Ladefortschritt();
    Ladefortschritt(const Ladefortschritt&) = delete;
    Ladefortschritt& operator=(const Ladefortschritt&) = delete;

    /// What asks it; may be asked as often as one likes.
    [[nodiscard]] Weiter weiter();

private:
    bool zeige(qint64 getan, qint64 gesamt);

    QWidget* fenster_;
    const Texte& texte_;
    QString pfad_;
    int geduld_;
    QElapsedTimer uhr_;
    qint64 nächstes_;
    std::optional<Fortschritt> fortschritt_;
};

} // namespace tarvel
