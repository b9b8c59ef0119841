#pragma once

#include "app/optionsfelder.h"
#include "app/umgebung.h"

class QLineEdit;
class QWidget;

namespace tarvel {

/// What a page of the options dialog is built from. Everything outlives the page.
struct Seitenbau {
    const Umgebung& umgebung;
    Beschriftungen& worte;
    Optionsfelder& karte;  ///< takes the fields in the order in which they are to be written
    Optionsfelder& eigene; ///< settings that are written only when they changed
};

/// General settings, picture folder and graphics program.
[[nodiscard]] QWidget* seiteAllgemeines(const Seitenbau& bau);
/// The letterhead, with a preview that follows every change.
[[nodiscard]] QWidget* seiteBriefkopf(const Seitenbau& bau);
/// Kind, date and font of the report.
[[nodiscard]] QWidget* seiteProtokoll(const Seitenbau& bau);

/// A button @p name that lets the user choose a file. @p nimm gets its path in the system's
/// spelling; it is not called when the user cancels.
[[nodiscard]] QWidget* durchsuchen(const Seitenbau& bau, const QString& name, Text titel,
                                   Beschriftungen::Wort dateiart, const QString& muster,
                                   QLineEdit* feld, std::function<void(const QString&)> nimm);

} // namespace tarvel
