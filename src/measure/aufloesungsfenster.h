#pragma once

#include "lang/texte.h"
#include "measure/messreihe.h"

#include <QDialog>

#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace tarvel {

/// Asks which resolution the wings of a picture, or of all, were really scanned with, and shows
/// what that does to them before anything changes. Where the wings cannot have the size that they
/// would have at theirs, the one that fits is proposed.
class Auflösungsfenster : public QDialog {
public:
    /// @p bild is preselected when wings lie on it. @p dpiDesBildes is what its file says.
    Auflösungsfenster(const Texte& texte, const Messreihe& reihe, Zahlenformat format,
                      const QString& bild, std::optional<int> dpiDesBildes, QWidget* parent);

    /// The wings of the chosen picture, or of all.
    [[nodiscard]] const std::vector<int>& nummern() const;
    /// The chosen resolution in dots per inch.
    [[nodiscard]] int dpi() const;

private:
    /// Fills the box of pictures; gives the position of the open one.
    [[nodiscard]] int fülleBilder();
    /// Proposes a resolution for the wings that are chosen, and says why.
    void schlageVor();
    void zeige();

    const Texte& texte_;
    const Messreihe& reihe_;
    Zahlenformat format_;
    QString bild_; ///< the open one
    std::optional<int> dpiDesBildes_;
    bool selbstGewählt_ = false;           ///< no proposal takes its place any more
    std::vector<std::vector<int>> flügel_; ///< by position of the box of pictures
    QComboBox* cbo_Bild_;
    QComboBox* cbo_Auflösung_;
    QLabel* lab_Vorschlag_;
    QTableWidget* tab_Wechsel_;
    QLabel* lab_Mittel_;
    QPushButton* bef_OK_;
};

} // namespace tarvel
