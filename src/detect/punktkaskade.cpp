#include "detect/punktkaskade.h"

namespace tarvel {

void Punktkaskade::schritt(const Kaskadenstufe& stufe, const Gradientenfeld& feld,
                           Punktsatz& punkte) {
    const auto f = std::size_t(stufe.merkmale());
    std::vector<float> merkmale(f * punkte.size());
    for (std::size_t k = 0; k < punkte.size(); ++k)
        feld.beschreibe(punkte[k], stufe.fenster, stufe.zelle, merkmale.data() + k * f);
    if (stufe.gemeinsam) {
        constexpr std::size_t Ziele = 16;
        const float* g = stufe.gewichte.data();
        std::array<float, Ziele> summe{};
        for (float m : merkmale)
            for (float& s : summe)
                s += m * *g++;
        for (std::size_t k = 0; k < punkte.size(); ++k)
            punkte[k] += QPointF(double(summe[2 * k]) + double(g[2 * k]),
                                 double(summe[2 * k + 1]) + double(g[2 * k + 1]));
        return;
    }
    for (std::size_t k = 0; k < punkte.size(); ++k) {
        const float* g = stufe.gewichte.data() + k * (f + 1) * 2;
        float x = g[2 * f];
        float y = g[2 * f + 1];
        for (std::size_t i = 0; i < f; ++i) {
            x += merkmale[k * f + i] * g[2 * i];
            y += merkmale[k * f + i] * g[2 * i + 1];
        }
        punkte[k] += QPointF(double(x), double(y));
    }
}

void Punktkaskade::führe(const Gradientenfeld& feld, Punktsatz& punkte) const {
    for (const Kaskadenstufe& stufe : stufen_)
        schritt(stufe, feld, punkte);
}

void Punktkaskade::führeEinzeln(const Gradientenfeld& feld, Punktsatz& punkte) const {
    for (const Kaskadenstufe& stufe : stufen_)
        if (!stufe.gemeinsam)
            schritt(stufe, feld, punkte);
}

} // namespace tarvel
