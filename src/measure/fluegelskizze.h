#pragma once

#include "measure/messpunkte.h"

#include <QPixmap>
#include <QWidget>

namespace tarvel {

/// A small drawing of the wing that shows which point is to be set next, and which are set.
class Flügelskizze : public QWidget {
public:
    explicit Flügelskizze(QWidget* parent = nullptr);

    /// @p nächster number of the point that stands out; 0 for none.
    void zeige(const Messpunkte& punkte, Messart messart, int nächster);
    [[nodiscard]] int nächster() const { return nächster_; }

    [[nodiscard]] QSize sizeHint() const override { return {220, 92}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 64}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QTransform lage() const;

    Messpunkte punkte_{Messart::AlleMessungen};
    Messart messart_ = Messart::AlleMessungen;
    int nächster_ = 0;
    QPixmap flügel_; ///< the wing without points, painted once for a size
};

} // namespace tarvel
