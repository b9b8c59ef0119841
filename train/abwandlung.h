#pragma once

#include "uebungsfluegel.h"

namespace tarvel {

/// A crop to learn from.
struct Übungsausschnitt {
    Flügelausschnitt ausschnitt;
    Punktsatz punkte; ///< pixels of the crop
};

/// A crop of @p flügel as another wing, lying a little differently and scanned worse, would look:
/// turned, stretched and bent, points moved on their own, dust, hairs, haze, blur, noise.
[[nodiscard]] Übungsausschnitt abgewandelt(const Übungsflügel& flügel, Zufall& zufall);

/// How a wing is put on a picture of its own.
struct Aufnahmeart {
    double dpi = 2400;
    std::optional<double> winkel; ///< radians; any angle without it
    std::optional<bool> gespiegelt;
    double unschärfe = 0; ///< pixels at 2400 dpi
    double helligkeit = 1;
    double kontrast = 1;
    double gamma = 1;
    double rauschen = 2;
    int jpeg = 0; ///< quality; 0 for none
    int staub = 0;
    int verdeckt = 0; ///< spots over points
    int haare = 0;    ///< hairs across points
    double größe = 1;
};

/// A picture of one wing with its true points.
struct Flügelaufnahme {
    Graubild bild;
    Punktsatz punkte;
    Affin lage; ///< from the frame of the mean wing, as it was laid
    std::array<bool, 8> verdeckt{};
};
[[nodiscard]] Flügelaufnahme nimmAuf(const Übungsflügel& flügel, const Aufnahmeart& art,
                                     Zufall& zufall);

/// A sheet of wings as a flatbed scanner delivers it.
struct Blattart {
    int anzahl = 22;
    double breite = 100; ///< millimetres
    double höhe = 80;
    double dpi = 1200;
    std::optional<double> schwankung; ///< degrees around upright; any angle without it
    bool spiegeln = true;
    double abstand = 1.5; ///< millimetres between outlines; negative lets wings lie on each other
    int staub = 60;
    int haare = 6;
    bool schrift = true;
    bool klebeband = true;
    double rauschen = 3;
    double helligkeit = 1;
    double unschärfe = 0; ///< pixels at 2400 dpi
    bool farbstich = false;
    int jpeg = 85;
    int fremde = 0; ///< things among the wings that are none of a bee
};
struct Kunstblatt {
    QImage bild;
    struct Flügel {
        QString name;
        Punktsatz punkte;
        QPointF mitte;
    };
    std::vector<Flügel> flügel;
};
[[nodiscard]] Kunstblatt legeBlatt(const std::vector<const Übungsflügel*>& vorrat,
                                   const Blattart& art, Zufall& zufall);

} // namespace tarvel
