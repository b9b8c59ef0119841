#pragma once

#include "detect/punktvorschlag.h"

#include <QRectF>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace tarvel {

/// A wing that was found on a picture.
struct Flügelfund {
    enum class Stand {
        Sicher,
        Zweifelhaft ///< something like a wing: under another one, torn, half covered
    };

    QPointF mitte; ///< pixels of the picture, origin its corner
    /// Degrees, 0 to 360, by which it is turned clockwise: a left wing at 0 has its tip on the left
    /// and its front edge up, a mirrored one its tip on the right.
    double winkel = 0;
    bool gespiegelt = false; ///< a right wing, or a left one from below
    double größe = 1;        ///< times the mean wing at the resolution that was set
    float güte = 0;          ///< likeness to the mean wing, up to 1
    Stand stand = Stand::Sicher;
    /// Outline of the mean wing on it, pixels of the picture; convex.
    std::vector<QPointF> umriss;
    Punktvorschlag vorschlag;

    [[nodiscard]] QRectF rahmen() const;
};

/// How far a search is, and whether it shall go on. Written and read on different threads.
struct Suchverlauf {
    std::atomic<bool> halt = false;
    std::atomic<int> prozent = 0;
};

/// The finder of wings. Knows nothing of windows and files; the same picture gives the same wings,
/// whatever the number of threads. To be used by several threads at once.
class Flügelerkennung {
public:
    /// Wings this like the mean wing, whose points are expected to be found, are sure.
    static constexpr float Sichergrenze = 0.7F;
    static constexpr float SichererFehler =
        2.5F; ///< mean of the expected errors, see Punktvorschlag
    /// What is less like it is no wing, and neither is what is no more than this with points that
    /// make no sense. What is more like it may make half as much sense.
    static constexpr float Zweifelsgrenze = 0.56F;
    static constexpr float UnglaubhafterFehler = 6;
    /// Scans coarser than this show veins too badly.
    static constexpr double GröbsteAuflösung = 300;

    explicit Flügelerkennung(std::shared_ptr<const Erkennungsmodell> modell);
    ~Flügelerkennung();
    Flügelerkennung(const Flügelerkennung&) = delete;
    Flügelerkennung& operator=(const Flügelerkennung&) = delete;

    /// The wings of a picture scanned at @p dpi, in rows from the top left, with their points.
    /// Empty when there is none, when the picture is too coarse, and when @p verlauf was told to
    /// stop. Takes up to 60 MiB for an A4 sheet beside the picture.
    [[nodiscard]] std::vector<Flügelfund> finde(const Pixelquelle& quelle, double dpi,
                                                Suchverlauf& verlauf, int fäden = 2) const;

    /// The usual resolution at which wings are found on the picture, when there are none at @p dpi:
    /// what to set instead. nullopt where there is none either way.
    [[nodiscard]] std::optional<int> andereAuflösung(const Pixelquelle& quelle, double dpi,
                                                     Suchverlauf& verlauf, int fäden = 2) const;

private:
    struct Werkzeug;
    std::unique_ptr<Werkzeug> werkzeug_;
};

/// Sorts places into rows from the top left, as one reads: places whose heights differ by less than
/// half of @p höhe stand in one row. Returns their numbers in that order.
[[nodiscard]] std::vector<int> leserichtung(const std::vector<QPointF>& orte, double höhe);

} // namespace tarvel
