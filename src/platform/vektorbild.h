#pragma once

#include <QByteArray>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>
#include <memory>

class QIODevice;
class QPainter;

namespace tarvel {

/// Whether this build reads and writes SVG, which takes a module of the toolkit that not every
/// system's build has. Without it no drawing is valid and nothing is written.
[[nodiscard]] bool kannSvg();

/// A drawing in SVG, read once and painted often.
class Vektorbild {
public:
    Vektorbild();
    explicit Vektorbild(const QByteArray& svg);
    Vektorbild(Vektorbild&&) noexcept;
    Vektorbild& operator=(Vektorbild&&) noexcept;
    ~Vektorbild();

    /// False when it is none.
    [[nodiscard]] bool gültig() const { return zeichner_ != nullptr; }
    /// In the drawing's own units; only the proportions matter.
    [[nodiscard]] QSizeF format() const;
    /// Fills @p rahmen as far as the drawing's proportions let it.
    void male(QPainter& painter, const QRectF& rahmen) const;

private:
    struct Zeichner;
    std::unique_ptr<Zeichner> zeichner_;
};

/// Writes what @p maler paints into the given rectangle.
void schreibeSvg(QIODevice& ziel, const QSizeF& größe, const QString& titel,
                 const std::function<void(QPainter&, const QRectF&)>& maler);

} // namespace tarvel
