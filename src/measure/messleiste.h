#pragma once

#include "lang/texte.h"
#include "measure/messung.h"
#include "measure/reihenansicht.h"

#include <QWidget>

#include <array>
#include <functional>
#include <optional>

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace tarvel {

class Flügelskizze;

/// The panel beside the wing picture: which point comes next, magnifier, micro-adjustment,
/// resolution of the scan, the series so far and its mean values.
class Messleiste : public QWidget {
public:
    /// @p lupe becomes a part of the panel.
    Messleiste(const Texte& texte, Reihenmodelle& modelle, QWidget* lupe,
               QWidget* parent = nullptr);

    /// Called with the number of the point whose button was clicked.
    void beiPunktwahl(std::function<void(int)> wahl) { opt_Fein_Click_ = std::move(wahl); }
    /// Called with the resolution that the user picked, in the box or as that of the picture.
    void beiAuflösung(std::function<void(int)> wahl) { cbo_dpi_Click_ = std::move(wahl); }

    /// Shows which point comes next, which is selected, which are set and which the kind of
    /// examination uses, and the values of what is set.
    void zeigePunkte(const Messpunkte& punkte, Messart messart, const Aufnahme& aufnahme);
    /// How many wings the examination shall have, at least 1.
    void setzeZiel(int flügelzahl);
    /// @p bild the resolution that the picture itself says, @p flügel that which the wings on it
    /// look like; they are offered when they differ. What is not in the list of the box joins it.
    void zeigeAuflösung(int dpi, std::optional<int> bild, std::optional<int> flügel = {});
    void zeigeFlügel(int nummer, bool wiederholt);

    [[nodiscard]] Reihenansicht& reihe() { return *reihe_; }

private:
    QWidget* feineinstellung();
    void beschrifte();
    void zeigeFlügeltext();
    void zeigeNächsten();
    void zeigeWerte();
    void zeigeMittelwerte();

    const Texte& texte_;
    Reihenmodelle& modelle_;
    std::function<void(int)> opt_Fein_Click_;
    std::function<void(int)> cbo_dpi_Click_;
    std::array<QRadioButton*, Messpunkte::Anzahl + 1> opt_Fein_{};
    QGroupBox* fra_Fein_;
    QLabel* lab_Flügel_;
    QLabel* lab_Fortschritt_;
    Flügelskizze* skizze_;
    QLabel* lab_Nächster_;
    QLabel* lab_Werte_;
    QLabel* lab_dpi_;
    QComboBox* cbo_dpi_;
    QPushButton* bef_Bildauflösung_;
    QPushButton* bef_Flügelauflösung_;
    std::optional<int> bildauflösung_;
    std::optional<int> flügelauflösung_;
    Reihenansicht* reihe_;
    QLabel* lab_Statistik_;
    int flügel_ = 1;
    bool wiederholt_ = false;
    int ziel_ = 50;
    Messpunkte punkte_{Messart::AlleMessungen};
    Messart messart_ = Messart::AlleMessungen;
    Aufnahme aufnahme_;
};

} // namespace tarvel
