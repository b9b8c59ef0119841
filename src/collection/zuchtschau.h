#pragma once

#include "collection/kolonienmodell.h"
#include "collection/zuchtansicht.h"
#include "platform/dialoge.h"
#include "results/datenbankfehler.h"

#include <QDialog>

#include <functional>
#include <map>

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;
class QTabWidget;

namespace tarvel {

/// What the overview of a collection takes from outside. References and functions outlive it.
struct ZuchtschauUmgebung {
    const Texte& texte;
    Dialoge& dialoge;
    QString DatenbankPfad; ///< the results file in use; empty when there is none
    QString speicher;      ///< folder that figures are kept in
    QString dokumente;     ///< folder that file choosers start in
    Kolonieregeln regeln;
    /// Opens an examination in the main window; true when the overview has done its work.
    std::function<bool(const QString& nummer)> LadenDB;
};

/// What a results file says of the bees: its examinations as a table, as crosses with their spread,
/// some of them as histograms over each other, over the years, and two side by side.
class Zuchtschau : public QDialog {
public:
    explicit Zuchtschau(ZuchtschauUmgebung umgebung, QWidget* parent = nullptr);

    /// Reads the results file and shows it. False when it was stopped, or refused, which the user
    /// has been told.
    [[nodiscard]] bool lies();

    /// Writes the view that is shown. False, and the user was told why, when that failed.
    bool speichereAnsicht(const QString& pfad);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Ansicht { Tabelle, Kreuze, Histogramme, Jahre, Vergleich };

    QWidget* baueFilter();
    QWidget* baueAnsichten();
    QLayout* baueFuß();
    QComboBox* neuerFilter(const QString& name, const QString& wort, QWidget& beschriftet);
    void zeigeFilterwerte();
    [[nodiscard]] Koloniefilter filter() const;
    void filtere();
    void zeigeAnsicht();
    void zeigeStand();
    void nimmTabellenwahl();
    void wechsleWahl(const Koloniewerte& kolonie);
    void zeigeWahlInTabelle();
    void öffne(const Koloniewerte& kolonie);
    void frageUndSpeichere();
    void speichereCsv();
    [[nodiscard]] QString filtername() const;
    [[nodiscard]] QString vorschlag(const QString& endung) const;
    [[nodiscard]] Ansicht ansicht() const;

    ZuchtschauUmgebung umgebung_;
    Übersichtsworte worte_;
    Koloniesammlung sammlung_;
    Kolonieauswahl gewählt_; ///< in the order of choosing
    Kolonienmodell modell_;
    bool zeigtWahl_ = false; ///< the table follows the choice, not the other way round

    QComboBox* cbo_Tiere_ = nullptr;
    std::map<Merkmalsfeld, QComboBox*> textfilter_;
    QComboBox* cbo_Saison_ = nullptr;
    QComboBox* cbo_Dpi_ = nullptr;
    QComboBox* cbo_Index_ = nullptr;
    QTabWidget* ansichten_ = nullptr;
    QTableView* tabelle_ = nullptr;
    Kreuzansicht* kreuze_ = nullptr;
    Zuchtansicht* histogramme_ = nullptr;
    Zuchtansicht* jahre_ = nullptr;
    Zuchtansicht* vergleich_ = nullptr;
    QLabel* lab_Stand_ = nullptr;
    QPushButton* bef_Öffnen_ = nullptr;
};

} // namespace tarvel
