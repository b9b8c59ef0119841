#pragma once

#include "lang/texte.h"
#include "measure/messreihe.h"
#include "measure/statistik.h"

#include <QAbstractTableModel>
#include <QStringListModel>

#include <array>
#include <optional>

namespace tarvel {

/// The series as a table: one row a wing with values and classes as they stand in the lists.
class Flügeltabelle : public QAbstractTableModel {
public:
    enum Spalte { Nummer, CI, KlasseCI, HI, KlasseHI, DV, Spaltenzahl };

    Flügeltabelle(const Messreihe& reihe, const Texte& texte);

    /// Takes over the present state of the series.
    void aktualisiere();

    /// Wing number of a row, 0 for a row that does not exist.
    [[nodiscard]] int nummer(int zeile) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    using Zeile = std::array<QString, Spaltenzahl>;

    const Messreihe& reihe_;
    const Texte& texte_;
    std::vector<Zeile> zeilen_;
};

/// Count, mean, minimum, maximum and standard deviation of the series, under the columns of
/// Flügeltabelle.
class Kennzahlentabelle : public QAbstractTableModel {
public:
    enum Zeile { Anzahl, Mittelwert, Minimum, Maximum, Standardabweichung, Zeilenzahl };

    Kennzahlentabelle(const Messreihe& reihe, const Texte& texte, Zahlenformat format);

    void aktualisiere();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] QString kennzahl(int zeile, int spalte) const;

    const Messreihe& reihe_;
    const Texte& texte_;
    Zahlenformat format_;
    std::array<std::optional<Kennzahlen>, Flügeltabelle::Spaltenzahl> kennzahlen_;
};

/// Everything that shows the series reads it from here; one call brings all of it up to date.
class Reihenmodelle {
public:
    Reihenmodelle(const Messreihe& reihe, const Texte& texte, Zahlenformat format);

    /// To be called after every change of the series and of the language.
    void aktualisiere();

    [[nodiscard]] QStringListModel& ci() { return ci_; }
    [[nodiscard]] QStringListModel& hiDv() { return hiDv_; }
    [[nodiscard]] Flügeltabelle& flügel() { return flügel_; }
    [[nodiscard]] const Zahlenformat& format() const { return format_; }
    [[nodiscard]] int flügelzahl() const { return static_cast<int>(reihe_.nummern().size()); }
    [[nodiscard]] Kennzahlentabelle& kennzahlen() { return kennzahlen_; }

private:
    const Messreihe& reihe_;
    const Texte& texte_;
    Zahlenformat format_;
    QStringListModel ci_;
    QStringListModel hiDv_;
    Flügeltabelle flügel_;
    Kennzahlentabelle kennzahlen_;
};

} // namespace tarvel
