#include "measure/fluegelzeichnung.h"

#include <QPalette>

#include <cmath>

namespace tarvel {

Flügelstil Flügelstil::zeichnung(const QPalette& palette) {
    const QColor vorn = palette.color(QPalette::WindowText);
    const QColor hinten = palette.color(QPalette::Window);
    const auto gemischt = [&](double anteil) {
        const auto kanal = [anteil](int a, int b) {
            return static_cast<int>(
                std::lerp(static_cast<double>(b), static_cast<double>(a), anteil));
        };
        return QColor(kanal(vorn.red(), hinten.red()), kanal(vorn.green(), hinten.green()),
                      kanal(vorn.blue(), hinten.blue()));
    };
    Flügelstil stil;
    stil.häutchen = gemischt(0.06);
    stil.rand = gemischt(0.45);
    stil.adern = gemischt(0.72);
    stil.costa = gemischt(0.72);
    return stil;
}

} // namespace tarvel
