#pragma once

#include "lang/hinweise.h"
#include "measure/messreihe.h"

#include <QString>

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

/// The state of measuring: the wing in work and what it is measured from. Undo brings it back as a
/// whole, so that points never meet another picture or zoom than theirs.
struct Messstand {
    Messart messart = Messart::AlleMessungen;
    Aufnahme aufnahme;
    QString bilddatei;
    Bildkennung bild = {}; ///< what it was told by; another file may have its name later
    Messpunkte punkte{messart};
    /// Number of a new wing that was entered in part before a fault stopped it; else 0.
    qint16 angefangen = 0;
    /// A wing of the series that is measured again, and what the series goes on with afterwards.
    struct Wiederholung {
        qint16 nummer;
        Messart messart;
        Aufnahme aufnahme;
        QString bilddatei;
        Bildkennung bild = {};

        bool operator==(const Wiederholung&) const = default;
    };
    std::optional<Wiederholung> wiederholung;

    bool operator==(const Messstand&) const = default;
};

/// A wing that was taken over.
struct Übernahme {
    qint16 nummer = 0;
    std::vector<int> ohne;   ///< points that were not set, so that an index is missing
    bool wiederholt = false; ///< in place of the wing of that number
};

/// What an event on the picture led to, besides changed points.
struct Messergebnis {
    bool verstanden = true; ///< the event meant something here
    Hinweisnummer hinweis = HinweisKeiner;
    std::optional<Messreihe> reihe; ///< the series with what was entered
    std::optional<Übernahme> übernommen;
    std::optional<Rechenfehler> fehler;
    bool reiheVoll = false;
};

/// The measuring of wings: takes the events on the wing picture, keeps the points of the current
/// wing, and says how the series looks with a wing that is taken over.
class Messung {
public:
    /// @p reihe is only read. It outlives the measuring.
    Messung(const Messreihe& reihe, Zahlenformat format);

    /// @name Events of the picture; coordinates in pixels of the zoomed picture
    /// @{
    Messergebnis Bild_MouseDown(Maustaste taste, int umschalt, float X, float Y);
    void Bild_MouseMove(Maustaste taste, int umschalt, float X, float Y);
    Messergebnis Bild_KeyDown(int keyCode, int umschalt);
    void opt_Fein_Click(int index);
    /// @}

    /// Discards the points of the current wing. A wing that is repeated keeps its number.
    void NeuerFlügel();

    /// Takes the current wing over, as the right mouse button does: the last point of the kind must
    /// be the one set last.
    [[nodiscard]] Messergebnis übernimm();
    /// The same whenever all points are set, as Enter does.
    [[nodiscard]] Messergebnis übernimmFertige();

    /// Moves a point that is already set, as dragging its mark does. False when it is not.
    bool zieh(int nummer, float x, float y);

    /// Puts proposed points, a full cycle of the kind, in place of those of the current wing.
    void schlageVor(const Messpunkte& punkte) { stand_.punkte = punkte; }

    /// Brings the points of a wing of the series back for correction; taking over replaces its
    /// lines. Kind, zoom, resolution and picture become those it was measured with, and go back
    /// afterwards. Another repeat is given up. False when the series holds no points of that wing.
    bool wiederhole(int nummer);
    /// Ends a repeat; the wing of the series stays as it was. A series without a picture keeps that
    /// of the wing. False when there is none.
    bool gibWiederholungAuf();

    /// Puts the wing that was being measured back, as it was with its picture, zoom and resolution.
    /// @p wiederholt number of the wing of the series that it replaces; 0 for a new one.
    void stelleHer(const Flügelmessung& flügel, qint16 wiederholt);

    /// Changes of kind and zoom discard the current points: these are pixels of the zoomed picture,
    /// and their number depends on the kind. A repeat goes on. Another picture ends it.
    void setzeMessart(Messart messart);
    void setzeZoomfaktor(int zoomfaktor);
    void setzeBilddatei(const QString& pfad);
    /// While a wing is repeated the resolution is that of this wing alone.
    void setzeAuflösung(int dpi);
    /// The picture that is shown. No key and no drag puts a point outside it, and a wing that is
    /// taken over keeps what it is told by.
    void zeigtBild(Bildkennung bild) { bild_ = std::move(bild); }
    [[nodiscard]] const Bildkennung& bild() const { return bild_; }

    [[nodiscard]] const Messstand& stand() const { return stand_; }
    void setzeStand(Messstand stand) { stand_ = std::move(stand); }

    /// The current wing as the series would keep it.
    [[nodiscard]] Flügelmessung flügel() const;
    [[nodiscard]] const Messpunkte& punkte() const { return stand_.punkte; }
    [[nodiscard]] Messart messart() const { return stand_.messart; }
    [[nodiscard]] const Aufnahme& aufnahme() const { return stand_.aufnahme; }
    [[nodiscard]] const QString& bilddatei() const { return stand_.bilddatei; }
    /// Number that the current wing gets when it is taken over.
    [[nodiscard]] qint16 nummer() const;
    /// True while a wing of the series is measured again.
    [[nodiscard]] bool wiederholt() const { return stand_.wiederholung.has_value(); }
    /// True when leaving the current wing loses work: points of a new one that a person set or
    /// moved, changes of a repeated.
    [[nodiscard]] bool etwasZuVerlieren() const;
    /// Hint that fits the points as they stand.
    [[nodiscard]] Hinweis standhinweis() const;

private:
    [[nodiscard]] Messergebnis trageEin();
    [[nodiscard]] Messergebnis BerechneIndizes(qint16 nummer);
    [[nodiscard]] Hinweisnummer Fußzeile_MessungFertig() const;
    [[nodiscard]] Messergebnis setzePerTaste(int nummer);
    [[nodiscard]] Bildgrenze grenze() const;

    const Messreihe& reihe_;
    Zahlenformat format_;
    Messstand stand_;
    Bildkennung bild_; ///< of the picture that is shown
    float LetzteMausX_ = 0;
    float LetzteMausY_ = 0;
};

} // namespace tarvel
