#pragma once

#include "lang/texte.h"
#include "measure/bilddatei.h"
#include "measure/bildsuche.h"
#include "platform/dialoge.h"

#include <optional>

class QWidget;

namespace tarvel {

/// The ways to picture files: opening them with progress and messages, choosing a page, and asking
/// where one is that was moved.
class Bildzugang {
public:
    /// @p fenster is what progress is shown over. Everything outlives it.
    Bildzugang(const Texte& texte, Dialoge& dialoge, QWidget& fenster);

    /// Milliseconds after which loading is told about in a window, where Escape stops it.
    int zeigeLadenNach = 700;

    [[nodiscard]] Bildsuche& suche() { return suche_; }

    /// @p pfad, or the page of it that the user chose; empty when they chose none.
    [[nodiscard]] QString wähleSeite(const QString& pfad);
    /// With @p ganz all pixels are there when it returns. nullopt, with a message, when it cannot
    /// be had; without one when the user stopped it.
    [[nodiscard]] std::optional<Bilddatei> öffne(const QString& pfad, bool ganz);
    /// The same without a word.
    [[nodiscard]] std::optional<Bilddatei> öffneStill(const QString& pfad, bool ganz = false);
    /// All pixels; null, with a message, when they cannot be had.
    [[nodiscard]] const QImage* pixel(Bilddatei& datei);

    /// Where the picture of measured wings is now. The user is asked when it is nowhere; what they
    /// show serves for all pictures of that folder. Empty when they gave up, or, with a message,
    /// when they chose another picture.
    [[nodiscard]] QString finde(const GesuchtesBild& bild);

private:
    void meldeBildfehler(const Bildfehler& fehler, const QString& pfad);

    const Texte& texte_;
    Dialoge& dialoge_;
    QWidget& fenster_;
    Bildsuche suche_;
};

} // namespace tarvel
