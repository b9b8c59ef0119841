#pragma once

#include "measure/messreihe.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// Mouse button of an event on the wing picture.
enum class Maustaste { Links, Rechts, Mitte };

/// Shift keys held during an event on the wing picture; values add up.
namespace umschaltung {
inline constexpr int Keine = 0;
inline constexpr int Umschalt = 1;
inline constexpr int Strg = 2;
inline constexpr int Alt = 4;
} // namespace umschaltung

/// Key codes that measuring understands, besides 49 to 56 and 97 to 104: the digits 1 to 8 of the
/// main keyboard and of the numeric keypad.
namespace taste {
inline constexpr int Rücktaste = 8;
inline constexpr int Eingabe = 13;
inline constexpr int Links = 37;
inline constexpr int Auf = 38;
inline constexpr int Rechts = 39;
inline constexpr int Ab = 40;
inline constexpr int Eins = 49;
inline constexpr int ZiffernblockEins = 97;
} // namespace taste

/// The measuring of wings: takes the events on the wing picture, keeps the points of the current
/// wing, and enters a wing that is taken over into the series.
class Messung {
public:
    /// What measuring tells its surroundings. Members that are not set are not called.
    struct Empfänger {
        std::function<void(int hinweisnummer)> ZeigeHinweis;
        std::function<void()> punkteGeändert;
        /// @p ohne points that were not set, so that an index is missing
        std::function<void(qint16 nummer, std::vector<int> ohne)> flügelÜbernommen;
        std::function<void(Rechenfehler)> rechenfehler;
        std::function<void()> reiheVoll;
    };

    Messung(Messreihe& reihe, Zahlenformat format);

    void setzeEmpfänger(Empfänger empfänger) { an_ = std::move(empfänger); }

    /// @name Events of the picture; coordinates in pixels of the zoomed picture
    /// @{
    void Bild_MouseDown(Maustaste taste, int umschalt, float X, float Y);
    void Bild_MouseMove(Maustaste taste, int umschalt, float X, float Y);
    /// True when the key meant something here.
    bool Bild_KeyDown(int keyCode, int umschalt);
    void opt_Fein_Click(int index);
    /// @}

    /// Discards the points of the current wing.
    void NeuerFlügel();

    /// Takes the current wing over, as the right mouse button does: the last point of the kind must
    /// be the one set last.
    void übernimm();
    /// The same whenever all points are set, as Enter does.
    void übernimmFertige();

    /// Takes the last change of the current wing's points back. False when there is none.
    bool macheRückgängig();
    [[nodiscard]] bool rückgängigMöglich() const { return !verlauf_.empty(); }

    /// Moves a point that is already set, as dragging its mark does. The first move of a drag
    /// (@p neuerZug) can be taken back as a whole.
    void zieh(int nummer, float x, float y, bool neuerZug);

    /// Brings the points of a wing of the series back for correction; taking over replaces its
    /// lines. Kind, zoom and resolution become those it was measured with; kind and resolution
    /// go back afterwards. False when the series holds no points of that wing.
    bool wiederhole(int nummer);

    /// Puts the wing that was being measured back, as it was with its picture, zoom and resolution.
    /// @p wiederholt number of the wing of the series that it replaces; 0 for a new one.
    void stelleHer(const Flügelmessung& flügel, qint16 wiederholt);

    /// Changes of kind, zoom, picture and resolution. All but the last discard the current points:
    /// these are pixels of the zoomed picture, and their number depends on the kind.
    void setzeMessart(Messart messart);
    void setzeZoomfaktor(int zoomfaktor);
    void setzeBilddatei(const QString& pfad);
    void setzeAuflösung(int dpi);

    [[nodiscard]] const Messpunkte& punkte() const { return punkte_; }
    [[nodiscard]] Messart messart() const { return messart_; }
    [[nodiscard]] const Aufnahme& aufnahme() const { return aufnahme_; }
    [[nodiscard]] const QString& bilddatei() const { return bilddatei_; }
    /// Number that the current wing gets when it is taken over.
    [[nodiscard]] qint16 nummer() const;
    /// True while a wing of the series is measured again.
    [[nodiscard]] bool wiederholt() const { return vorWiederholung_.has_value(); }

private:
    void trageEin();
    void BerechneIndizes(qint16 nummer);
    void Fußzeile_MessungFertig();
    void ZeigeHinweis(int hinweisnummer);
    void merkeStand();
    void punkteGeändert();
    bool setzePerTaste(int nummer);
    void beendeWiederholung();
    void verwirf();

    Messreihe& reihe_;
    Zahlenformat format_;
    Empfänger an_;
    Messart messart_ = Messart::AlleMessungen;
    Aufnahme aufnahme_;
    QString bilddatei_;
    Messpunkte punkte_{messart_};
    /// A wing that already has lines: repeated, or entered in part before a fault stopped it.
    std::optional<qint16> nummerInArbeit_;
    /// Kind and resolution to go on with after a wing measured with others was repeated.
    struct Vorher {
        Messart messart;
        int dpi;
    };
    std::optional<Vorher> vorWiederholung_;
    float LetzteMausX_ = 0;
    float LetzteMausY_ = 0;
    std::vector<Messpunkte> verlauf_;
};

} // namespace tarvel
