#pragma once

#include "lang/hinweise.h"

#include <QLabel>
#include <QTimer>

namespace tarvel {

/// The hint line `lab_H` of the main window. Each new hint blinks four times and then stays; it
/// follows the language without blinking again.
class Hinweiszeile : public QLabel {
public:
    explicit Hinweiszeile(const Texte& texte, QWidget* parent = nullptr);

    void zeige(const Hinweis& hinweis);
    [[nodiscard]] const Hinweis& hinweis() const { return hinweis_; }

    /// One tick of the blinking.
    void Timer1_Timer();

private:
    const Texte& texte_;
    Hinweis hinweis_;
    QTimer Timer1_;
    int blinkzähler_ = 0;
};

} // namespace tarvel
