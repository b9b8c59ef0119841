#pragma once

#include <QProgressDialog>
#include <QString>

namespace tarvel {

/// Tells how far long work has come, and lets the user stop it. Short work shows no window. While
/// one is shown nothing else can be clicked.
class Fortschritt {
public:
    /// From this number of steps on a window is shown.
    static constexpr int Sichtbar = 10;

    Fortschritt(QWidget* parent, const QString& titel, const QString& abbrechen, int schritte);

    /// Before step @p schritt, from 0. @p text says what is done now. False when the user wants to
    /// stop.
    [[nodiscard]] bool weiter(int schritt, const QString& text);

private:
    QProgressDialog fenster_;
};

} // namespace tarvel
