#pragma once

#include "lang/texte.h"

#include <QWidget>

#include <functional>

class QLabel;
class QPainter;
class QRadioButton;

namespace tarvel {

class Vorschaublatt;

/// The preview of one page of the report: the paper as a whole, as large as in reality, or in steps
/// between and beyond (Ctrl and the wheel, + and -). Every step paints the page anew.
class Vorschau : public QWidget {
public:
    /// Paints the page; its units are millimetres of the paper, (0, 0) its upper left corner.
    using Seite = std::function<void(QPainter&)>;

    explicit Vorschau(const Texte& texte, QWidget* parent = nullptr);

    /// Shows another page, or the same one after what it shows has changed. An empty function
    /// leaves the paper blank. Zoom and place stay.
    void zeige(Seite seite);
    /// Called with +1 or -1 when PageDown or PageUp has nothing left to scroll.
    void beiBlättern(std::function<void(int)> blättern);

    void zeigeGanzeSeite();
    void zeigeOriginalgröße();
    /// One step larger or smaller than the page is now.
    void vergrößere();
    void verkleinere();
    /// Size on the screen compared with the paper; 1 is real size.
    [[nodiscard]] double zoom() const;

private:
    void beschrifte();
    void zeigeZoom();

    const Texte& texte_;
    Vorschaublatt* blatt_;
    QRadioButton* opt_GanzeSeite_;
    QRadioButton* opt_Originalgröße_;
    QLabel* lab_Zoom_;
};

} // namespace tarvel
