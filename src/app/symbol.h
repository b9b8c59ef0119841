#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QString>

namespace tarvel {

/// Draws one of the program's line symbols in the text colour of the palette that holds at the
/// moment of painting, so that a change from light to dark needs no new icon.
class SymbolEngine : public QIconEngine {
public:
    /// @p name without folder and suffix: "drucken". A name without a picture draws nothing.
    explicit SymbolEngine(QString name);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    /// @p size in device pixels.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine* clone() const override;
    [[nodiscard]] QString key() const override;
    QString iconName() override;
    bool isNull() override;

private:
    QString name_;
};

/// The symbol @p name of data/icons, sharp at every size and pixel ratio. A null icon when there is
/// none of that name, so that a button shows its text instead.
[[nodiscard]] QIcon symbol(const QString& name);

/// The program's own picture, in its colours. Windows get it after the first of them was painted,
/// or with a dialog that a person answers anyway: drawing it in all its sizes takes a tenth of the
/// start.
[[nodiscard]] QIcon programmsymbol();

} // namespace tarvel
