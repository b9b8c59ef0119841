#pragma once

#include "print/briefkopfbild.h"

#include <QWidget>

namespace tarvel {

/// The upper part of the report's first page to scale, with its letterhead.
class Briefkopfvorschau : public QWidget {
public:
    explicit Briefkopfvorschau(QWidget* parent = nullptr);

    void zeige(const Briefkopf& kopf);
    /// Why the graphic that the letterhead asks for is not shown.
    [[nodiscard]] Grafikfehler grafikfehler() const { return grafik_.fehler(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int breite) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Briefkopf kopf_;
    Briefkopfgrafik grafik_;
};

} // namespace tarvel
