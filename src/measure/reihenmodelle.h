#pragma once

#include "lang/texte.h"
#include "measure/fluegelprobe.h"
#include "measure/messreihe.h"
#include "measure/statistik.h"

#include <QAbstractTableModel>
#include <QStringListModel>

#include <array>
#include <optional>

namespace tarvel {

/// What the models of the series say of a wing beside its values, so that views can mark it.
namespace zeilenrolle {
inline constexpr int Nummer = Qt::UserRole;          ///< wing number
inline constexpr int Ausgelassen = Qt::UserRole + 1; ///< true when it is left out of the sample
inline constexpr int Zweifel = Qt::UserRole + 2;     ///< Zweifelsgrad as int
} // namespace zeilenrolle

/// How a wing in doubt is marked.
enum class Zweifelsgrad {
    Keiner,
    Abseits, ///< can be measured right, but lies far from the others
    Fraglich ///< can hardly be measured right
};
/// The wings in doubt with their reasons, as flügelzweifel() gives them.
using Zweifelsfälle = std::map<int, std::vector<Flügelzweifel>>;

[[nodiscard]] Zweifelsgrad zweifelsgrad(const Zweifelsfälle& fälle, int nummer);
/// The reasons, one a line; empty for a wing that is not in doubt.
[[nodiscard]] QString zweifelstext(const Zweifelsfälle& fälle, int nummer, const Texte& texte);
/// What a tool tip says of a wing beside its values: that it is left out, and the doubts.
[[nodiscard]] QString flügeltipp(const Messreihe& reihe, const Zweifelsfälle& fälle, int nummer,
                                 const Texte& texte);

/// "2 wings left out: 003, 017"; empty when every wing of the series counts.
[[nodiscard]] QString ausgelassen(const Messreihe& reihe, const Texte& texte);

/// @name How the points of a series came about
/// @{
struct Entstehung {
    int ungeprüft = 0;     ///< wings that the program measured and nobody looked at
    int vorgeschlagen = 0; ///< other wings with at least one point as the program proposed it
    int berichtigt = 0;    ///< points of these that a person set or moved
};
[[nodiscard]] Entstehung entstehung(const Messreihe& reihe);
/// "3 of 25 wings … not checked by a person; 22 wings proposed and checked, 4 points corrected";
/// empty where the program proposed nothing.
[[nodiscard]] QString entstehungstext(const Messreihe& reihe, const Texte& texte);
/// The first part of it alone; empty where everything was checked.
[[nodiscard]] QString ungeprüfttext(const Messreihe& reihe, const Texte& texte);
/// @}

/// The lines of one list, each of one wing.
class Zeilenliste : public QStringListModel {
public:
    Zeilenliste(const Messreihe& reihe, const Zweifelsfälle& zweifel, const Texte& texte);

    void setze(const QStringList& zeilen, std::vector<int> nummern);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    const Messreihe& reihe_;
    const Zweifelsfälle& zweifel_;
    const Texte& texte_;
    std::vector<int> nummern_;
};

/// The series as a table: one row a wing with values and classes as they stand in the lists.
class Flügeltabelle : public QAbstractTableModel {
public:
    enum Spalte { Nummer, CI, KlasseCI, HI, KlasseHI, DV, Spaltenzahl };

    Flügeltabelle(const Messreihe& reihe, const Zweifelsfälle& zweifel, const Texte& texte);

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
    const Zweifelsfälle& zweifel_;
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
    /// Wings that count, and those that are left out.
    [[nodiscard]] int flügelzahl() const { return static_cast<int>(reihe_.gewertete().size()); }
    [[nodiscard]] int ausgelassene() const {
        return static_cast<int>(reihe_.ausgelassene().size());
    }
    [[nodiscard]] const Zweifelsfälle& zweifel() const { return zweifel_; }
    [[nodiscard]] Kennzahlentabelle& kennzahlen() { return kennzahlen_; }

private:
    const Messreihe& reihe_;
    const Texte& texte_;
    Zahlenformat format_;
    Flügelprüfer prüfer_;
    Zweifelsfälle zweifel_;
    Zeilenliste ci_;
    Zeilenliste hiDv_;
    Flügeltabelle flügel_;
    Kennzahlentabelle kennzahlen_;
};

} // namespace tarvel
