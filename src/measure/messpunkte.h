#pragma once

#include <QtGlobal>

#include <array>
#include <limits>

namespace tarvel {

/// Kind of examination. Everything distinguishes only "cubital index alone" from the other two,
/// which measure alike.
enum class Messart : qint16 { NurCubitalindex = 0, AlleMessungen = 1, Korrelation = 2 };

/// True when the kind measures all eight points, false when it needs points 5 to 7 only.
[[nodiscard]] constexpr bool misstAchtPunkte(Messart messart) {
    return messart != Messart::NurCubitalindex;
}

/// How a point came to its place.
enum class Punktherkunft : quint8 {
    Unbekannt,
    Geklickt,
    PerTaste,
    Verschoben,    ///< moved after it was set, by dragging or arrow keys
    Vorgeschlagen, ///< by the program, not touched since
    Eingelesen     ///< from a coordinate file
};

/// Size of the zoomed picture, in its pixels; as long as there is none, only its upper and left
/// edge are known.
struct Bildgrenze {
    float breite = std::numeric_limits<float>::infinity();
    float höhe = std::numeric_limits<float>::infinity();

    [[nodiscard]] bool enthält(float x, float y) const {
        return x >= 0 && y >= 0 && x < breite && y < höhe;
    }
};

/// The eight vein points of the wing being measured.
///
/// Coordinates are pixels of the zoomed picture: origin at the picture's top left corner, y down,
/// fractions kept. Points are numbered 1 to 8 as on the measuring-help drawing; index 0 is unused.
struct Messpunkte {
    static constexpr int Anzahl = 8;
    /// Coordinate of a point that is not set.
    static constexpr float NichtGemessen = -100.0F;

    std::array<float, Anzahl + 1> PunktX;
    std::array<float, Anzahl + 1> PunktY;
    /// Unbekannt for points that are not set.
    std::array<Punktherkunft, Anzahl + 1> Herkunft;
    /// Number of the point set last; before the first point 0, or 4 when only 5 to 7 are measured.
    qint16 AktuellerPunkt = 0;
    /// Number of the point that the arrow keys move; 0 for none.
    qint16 GewählterPunkt = 0;

    explicit Messpunkte(Messart messart) { NeuerFlügel(messart); }

    /// Discards all points.
    void NeuerFlügel(Messart messart);

    /// Sets the next point of the cycle (1 to 8, or 5 to 7) and selects it. After the last point
    /// the cycle starts again, so this never fails. Returns the number of the point.
    qint16 setzeNächsten(Messart messart, float x, float y);

    /// Sets point @p nummer out of turn and selects it. False, and nothing changed, when the kind
    /// does not use that point.
    bool setze(Messart messart, int nummer, float x, float y,
               Punktherkunft herkunft = Punktherkunft::Unbekannt);

    /// Puts all points of the kind where they are proposed, as a full cycle would, and selects the
    /// last. The places of points that the kind does not use are passed over.
    void schlageVor(Messart messart, const std::array<float, Anzahl + 1>& x,
                    const std::array<float, Anzahl + 1>& y);

    /// Selects a point for moving. False when the kind does not use it.
    bool wähle(Messart messart, int nummer);

    /// Moves a set point of the kind to a place and selects it, as dragging its mark does. False,
    /// and nothing changed, for other points.
    bool ziehe(Messart messart, int nummer, float x, float y);

    /// Moves the selected point. False when none is selected, when it is not set yet, and at the
    /// edges of the picture.
    bool verschiebe(float dx, float dy, const Bildgrenze& grenze);

    [[nodiscard]] bool gemessen(int nummer) const { return PunktX[nummer] != NichtGemessen; }

    /// True when the last point of the kind was the last one set: the wing can be taken over.
    [[nodiscard]] bool fertig(Messart messart) const;

    /// True when every point of the kind is set, in whatever order.
    [[nodiscard]] bool vollständig(Messart messart) const;

    /// Number of the point that the next click sets.
    [[nodiscard]] qint16 nächster(Messart messart) const;

    /// True when a point is still where the program proposed it.
    [[nodiscard]] bool vorgeschlagen() const;

    /// True when a point is set that is not, or not any more, where the program proposed it.
    [[nodiscard]] bool eigene() const;

    /// True when at least one point is set.
    [[nodiscard]] bool begonnen() const;

    bool operator==(const Messpunkte&) const = default;
};

/// The points that begin and end the cycle of a kind.
[[nodiscard]] constexpr qint16 ersterPunkt(Messart messart) {
    return misstAchtPunkte(messart) ? 1 : 5;
}
[[nodiscard]] constexpr qint16 letzterPunkt(Messart messart) {
    return misstAchtPunkte(messart) ? 8 : 7;
}

/// True when an examination of kind @p messart uses point @p nummer.
[[nodiscard]] constexpr bool benutzt(Messart messart, int nummer) {
    return misstAchtPunkte(messart) ? nummer >= 1 && nummer <= Messpunkte::Anzahl
                                    : nummer >= 5 && nummer <= 7;
}

} // namespace tarvel
