#pragma once

#include <QObject>
#include <QPointer>

namespace tarvel {

class HG;

/// What wheel and digit keys mean, in all windows of the program: the wheel never changes a box
/// that is not open but scrolls what lies around it, and a digit typed anywhere but into a text
/// goes to the picture while a wing is being measured.
class Eingabefilter : public QObject {
public:
    /// Works from here on for as long as it lives.
    Eingabefilter();

    /// The window whose picture gets the digits.
    void setzeFenster(HG* fenster);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QObject> hg_;
    HG* fenster_ = nullptr;
};

} // namespace tarvel
