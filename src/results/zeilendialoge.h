#pragma once

#include "lang/texte.h"
#include "results/schreibweisen.h"
#include "results/zeileneingabe.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace tarvel {

/// Asks what all chosen rows get, and in which column.
class Feldänderung : public QDialog {
public:
    /// @p bisher tells what stands in a column of the chosen rows; empty when that is several
    /// texts.
    Feldänderung(const Texte& texte, int anzahl, const QStringList& rassen,
                 const std::function<std::optional<QString>(Ergebnisspalte)>& bisher,
                 QWidget* parent);

    [[nodiscard]] Ergebnisspalte spalte() const;
    /// As it is stored.
    [[nodiscard]] QString wert() const { return wert_; }

    void accept() override;

private:
    void zeigeSpalte();

    const Texte& texte_;
    QStringList rassen_;
    std::function<std::optional<QString>(Ergebnisspalte)> bisher_;
    QComboBox* spalten_;
    QComboBox* inhalt_;
    QLabel* jetzt_;
    QLabel* einwand_;
    QString wert_;
};

/// Asks which spellings of a column are to become one, and which one.
class Schreibweisenwahl : public QDialog {
public:
    /// What becomes of texts of a column.
    struct Zusammenführung {
        QStringList von;
        QString nach;
    };
    using Gruppen = std::function<std::vector<Schreibweisen>(Ergebnisspalte)>;
    Schreibweisenwahl(const Texte& texte, Gruppen gruppen, QWidget* parent);

    [[nodiscard]] Ergebnisspalte spalte() const;
    [[nodiscard]] std::vector<Zusammenführung> gewählte() const;

private:
    void zeigeSpalte();
    void zeigeStand();

    const Texte& texte_;
    Gruppen quelle_;
    std::vector<Schreibweisen> gruppen_;
    QComboBox* spalten_;
    QTreeWidget* liste_;
    QLabel* keine_;
    QPushButton* zusammen_;
};

} // namespace tarvel
