#pragma once

#include "detect/graubild.h"

#include <QImage>

namespace tarvel {

/// The grey values of a picture of any format. The picture is shared, not copied.
class Bildpixel final : public Pixelquelle {
public:
    explicit Bildpixel(QImage bild);

    [[nodiscard]] QSize größe() const override { return bild_.size(); }
    void lies(int x, int y, int anzahl, std::uint8_t* ziel) const override;

private:
    QImage bild_;
};

} // namespace tarvel
