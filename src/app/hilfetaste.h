#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "platform/shell.h"

#include <QObject>

namespace tarvel {

/// F1 in the windows that have no command of their own for it: opens the page of the guide about
/// the window that has the keyboard.
class Hilfetaste : public QObject {
public:
    /// All outlive it.
    Hilfetaste(const Texte& texte, Shell& shell, Dialoge& dialoge);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const Texte& texte_;
    Shell& shell_;
    Dialoge& dialoge_;
};

} // namespace tarvel
