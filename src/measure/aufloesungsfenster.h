#pragma once

#include "lang/texte.h"
#include "measure/messreihe.h"

#include <QDialog>

#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace tarvel {

/// Asks which resolution the wings of a picture were really scanned with, and shows what that does
/// to them before anything changes.
class Auflösungsfenster : public QDialog {
public:
    /// @p bild is preselected when wings lie on it. @p weitere resolutions are offered beside those
    /// of the box and of the wings.
    Auflösungsfenster(const Texte& texte, const Messreihe& reihe, Zahlenformat format,
                      const QString& bild, const std::vector<int>& weitere, QWidget* parent);

    /// The wings of the chosen picture.
    [[nodiscard]] const std::vector<int>& nummern() const;
    /// The chosen resolution in dots per inch.
    [[nodiscard]] int dpi() const;

private:
    void zeige();

    const Texte& texte_;
    const Messreihe& reihe_;
    Zahlenformat format_;
    std::vector<std::vector<int>> flügel_; ///< by position of the box of pictures
    QComboBox* cbo_Bild_;
    QComboBox* cbo_Auflösung_;
    QTableWidget* tab_Wechsel_;
    QLabel* lab_Mittel_;
    QPushButton* bef_OK_;
};

} // namespace tarvel
