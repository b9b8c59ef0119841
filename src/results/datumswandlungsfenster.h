#pragma once

#include "lang/texte.h"
#include "results/datumswandlung.h"

#include <QDialog>

class QComboBox;
class QPushButton;
class QTableWidget;

namespace tarvel {

/// Shows the dates of a results file that stand in another form, each with what would become of
/// it, and lets the user say what comes first where the dates do not. Accepted when they are to be
/// converted.
class Datumswandlungsfenster : public QDialog {
public:
    /// @p daten at least one.
    Datumswandlungsfenster(const Texte& texte, std::vector<AltesDatum> daten, const QDate& heute,
                           QWidget* parent = nullptr);

    [[nodiscard]] Tagesfolge folge() const;
    [[nodiscard]] const std::vector<AltesDatum>& daten() const { return daten_; }

private:
    void zeige();

    const Texte& texte_;
    std::vector<AltesDatum> daten_;
    QDate heute_;
    QTableWidget* tabelle_;
    QComboBox* box_Folge_;
    QPushButton* bef_Umwandeln_;
};

} // namespace tarvel
