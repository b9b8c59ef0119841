#pragma once

#include "collection/kreuzbild.h"
#include "evaluation/diagrammdatei.h"

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

namespace tarvel {

/// Paints a view of the collection in a style.
using Übersichtsmaler = std::function<void(QPainter&, const QRectF&, const Diagrammstil&)>;

/// A picture of the collection on the screen. It is painted anew only when it changes, since there
/// may be a hundred thousand colonies on it.
class Zuchtansicht : public QWidget {
public:
    explicit Zuchtansicht(const QString& name, QWidget* parent = nullptr);

    void zeige(Übersichtsmaler maler);
    /// Paints it as it goes to a file, in colour on white.
    [[nodiscard]] Diagrammmaler druckmaler() const;

    [[nodiscard]] QSize sizeHint() const override { return {900, 560}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {480, 320}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    [[nodiscard]] Diagrammstil bildschirmstil() const;
    /// What the picture was painted from is another one now.
    virtual void verwirf();

private:
    Übersichtsmaler maler_;
    QPixmap bild_;
};

/// The colonies as crosses. A click opens a colony, with Ctrl it chooses it or takes the choice
/// back. By keyboard: arrow keys, Home and End go from cross to cross, blank chooses, Enter opens.
class Kreuzansicht : public Zuchtansicht {
public:
    Kreuzansicht(const Übersichtsworte& worte, QWidget* parent = nullptr);

    void zeige(const Kreuzbild& bild);
    void beiÖffnen(std::function<void(const Koloniewerte&)> handlung) {
        öffne_ = std::move(handlung);
    }
    void beiWahl(std::function<void(const Koloniewerte&)> handlung) {
        wähle_ = std::move(handlung);
    }
    /// The crosses of both fields, in pixels of the view.
    [[nodiscard]] const std::vector<Kreuzstelle>& stellen();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void verwirf() override;

private:
    [[nodiscard]] int stelleAn(QPointF ort);
    [[nodiscard]] QString beschreibung(const Koloniewerte& kolonie) const;
    void geheZu(int stelle);

    Übersichtsworte worte_;
    Kreuzbild kreuze_;
    std::vector<Kreuzstelle> stellen_;
    bool stellenAktuell_ = false;
    int stelle_ = -1; ///< where the keyboard is; -1 before it was used
    std::function<void(const Koloniewerte&)> öffne_;
    std::function<void(const Koloniewerte&)> wähle_;
};

} // namespace tarvel
