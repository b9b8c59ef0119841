#pragma once

#include "measure/marken.h"

#include <QImage>
#include <QObject>

#include <vector>

namespace tarvel {

class Bild;
class Lupe;

/// The two magnifiers of the measuring view, of which one is seen: that of the panel, or one that
/// lies over the picture beside the pointer.
class Lupenpaar : public QObject {
public:
    /// @p bild is what they magnify. It outlives this and owns the one that lies over it.
    explicit Lupenpaar(Bild& bild);

    /// The one of the panel; it belongs to the window that it is put into.
    [[nodiscard]] Lupe& feste() { return *feste_; }
    /// Which one is seen.
    void setzeAmZeiger(bool amZeiger);
    [[nodiscard]] bool amZeiger() const { return amZeiger_; }

    /// See Lupe.
    void setzeBild(const QImage& bild, int zoomfaktor);
    void setzeMarken(const std::vector<Marke>& marken);
    void setzeName(const QString& name);
    /// Magnifies the surroundings of a place of the zoomed picture.
    void zeige(QPointF ort);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Bild& bild_;
    Lupe* feste_;
    Lupe* zeigerlupe_;
    bool amZeiger_ = false;
};

} // namespace tarvel
