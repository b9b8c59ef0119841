#pragma once

#include "evaluation/diagrammdatei.h"
#include "evaluation/korrel.h"
#include "evaluation/kurven.h"
#include "measure/reihenmodelle.h"
#include "platform/dialoge.h"

#include <QWidget>

#include <functional>
#include <utility>
#include <variant>
#include <vector>

class QAction;
class QPainter;

namespace tarvel {

/// A view with one chart: "Kurven" or "Korrel". Pointing at a bar or cross names its wings, a click
/// chooses them, a click beside them chooses none. By keyboard: arrow keys, Home and End go from
/// bar to bar or wing to wing, Enter and blank choose, the menu key opens the context menu. The
/// right button chooses the wings below it, for what the context menu offers besides.
class Diagrammansicht : public QWidget {
public:
    enum class Art { Kurven, Korrel };

    /// Object name "pic_Kurven" or "pic_Korrel"; its commands are men_Diagramm_0 onwards: save in
    /// each format that this build writes, and copy.
    Diagrammansicht(Art art, const Texte& texte, Dialoge& dialoge, QWidget* parent = nullptr);

    /// What the chart shows from now on. Its words are those of the program's language, its
    /// highlighted wings those of the view; a view of the other kind of chart takes it over, too.
    void zeige(Kurvenbild bild);
    void zeige(Korrelbild bild);
    [[nodiscard]] const std::variant<Kurvenbild, Korrelbild>& bild() const { return bild_; }

    /// Points out wings, such as those selected in the lists.
    void hebeHervor(std::vector<int> flügel);
    [[nodiscard]] const std::vector<int>& hervorgehoben() const;

    /// Marks wings in doubt on the screen, and tells why in the tool tip.
    void zeigeZweifel(Zweifelsfälle zweifel);

    /// Path and base name, without extension, that saving proposes.
    void setzeVorschlag(const QString& vorschlag) { vorschlag_ = vorschlag; }

    /// The bars or crosses, in pixels of the view.
    [[nodiscard]] const std::vector<Diagrammstelle>& stellen();

    /// Writes the chart to a file, in colour on white and without highlighted wings. False, and the
    /// user was told why, when that failed.
    bool speichere(const QString& pfad, Diagrammformat format);
    void kopiere();

    /// Called with the chosen wings, ascending; with none when the choice was taken back.
    void beiWahl(std::function<void(const std::vector<int>& flügel)> wahl) {
        beiWahl_ = std::move(wahl);
    }

    /// @p frage is asked what stands below the chart in a file or copy; without it nothing does.
    void setzeUnterschrift(std::function<Bildunterschrift()> frage) {
        unterschrift_ = std::move(frage);
    }

    [[nodiscard]] QSize sizeHint() const override { return {900, 640}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {480, 320}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void beschrifte();
    void erneuere();
    [[nodiscard]] Diagrammmaler druckmaler() const;
    [[nodiscard]] Diagrammstil bildschirmstil() const;
    [[nodiscard]] const Diagrammworte& worte() const;
    [[nodiscard]] QString titel() const;
    void maleZweifelsmarken(QPainter& painter);
    [[nodiscard]] QString beschreibung(const Diagrammstelle& stelle) const;
    [[nodiscard]] QString tippAn(QPointF ort);
    void geheZu(int stelle);
    void wähle(const std::vector<int>& flügel);
    void frageUndSpeichere(Diagrammformat format);

    const Texte& texte_;
    Dialoge& dialoge_;
    std::function<void(const std::vector<int>& flügel)> beiWahl_;
    std::variant<Kurvenbild, Korrelbild> bild_;
    std::vector<Diagrammstelle> stellen_;
    bool stellenAktuell_ = false;
    Zweifelsfälle zweifel_;
    int stelle_ = -1; ///< where the keyboard is; -1 before it was used
    QString vorschlag_;
    std::function<Bildunterschrift()> unterschrift_;
    std::vector<QAction*> befehle_;
};

} // namespace tarvel
