#pragma once

#include "detect/affin.h"
#include "detect/graubild.h"
#include "zufall.h"

#include <QImage>

#include <vector>

namespace tarvel {

/// A picture of numbers, 1 as bright as the paper.
struct Feld {
    int breite = 0;
    int höhe = 0;
    std::vector<float> werte;

    Feld() = default;
    Feld(int b, int h, float wert = 0)
        : breite(b)
        , höhe(h)
        , werte(std::size_t(b) * std::size_t(h), wert) {}

    [[nodiscard]] float& bei(int x, int y) {
        return werte[std::size_t(y) * std::size_t(breite) + std::size_t(x)];
    }
    [[nodiscard]] float bei(int x, int y) const {
        return werte[std::size_t(y) * std::size_t(breite) + std::size_t(x)];
    }
    [[nodiscard]] const float* zeile(int y) const {
        return werte.data() + std::size_t(y) * std::size_t(breite);
    }
};

[[nodiscard]] Feld unscharf(const Feld& feld, double breite);
/// The mean of the area that each pixel of the smaller field stands for.
[[nodiscard]] Feld verkleinert(const Feld& feld, double teiler);
/// @p feld stretched to another size.
[[nodiscard]] Feld gestreckt(const Feld& feld, int breite, int höhe);
/// A field of @p spalten x @p zeilen numbers between @p von and @p bis, stretched smoothly.
[[nodiscard]] Feld wolken(Zufall& zufall, int spalten, int zeilen, double von, double bis,
                          int breite, int höhe);

void maleScheibe(Feld& feld, QPointF mitte, double radius, float wert);
void maleLinie(Feld& feld, QPointF von, QPointF bis, double dicke, float wert);
/// A hair: a line that wanders from @p anfang, eight steps of about @p schritt pixels.
void maleHaar(Feld& feld, Zufall& zufall, QPointF anfang, double schritt, double dicke, float wert);

/// Values times @p weiß with noise of the standard deviation @p rauschen, 0 to 255.
[[nodiscard]] Graubild alsGrau(const Feld& feld, double weiß, double rauschen, Zufall& zufall);
[[nodiscard]] QImage alsBild(const Graubild& bild);

/// Grey values in memory as a source.
class Grauquelle final : public Pixelquelle {
public:
    explicit Grauquelle(const Graubild& bild)
        : bild_(bild) {}
    [[nodiscard]] QSize größe() const override { return {bild_.breite, bild_.höhe}; }
    void lies(int x, int y, int anzahl, std::uint8_t* ziel) const override {
        std::copy_n(bild_.zeile(y) + x, anzahl, ziel);
    }

private:
    const Graubild& bild_;
};

} // namespace tarvel
