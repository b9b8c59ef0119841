#pragma once

#include "app/umgebung.h"
#include "measure/messbefehle.h"
#include "measure/reihenmodelle.h"

#include <QList>
#include <QStringView>

#include <functional>
#include <utility>
#include <vector>

class QAction;
class QMainWindow;
class QSplitter;
class QStackedWidget;
class QWidget;

namespace tarvel {

class Auswertung;
class Kolonieformular;
class Kriterienansicht;
class Merkmalansicht;
class Messleiste;
class Messplatz;
class Reihenansicht;
class Statuszeile;
class Tabellenansicht;

/// The views of the main window and how they are laid out: colony data and verdict on the left, the
/// view in the middle, the criteria below it, the panel of measuring on the right, hint line and
/// status below.
class Fensterfläche {
public:
    /// Builds everything into @p fenster, which owns it. @p vorschau and @p hinweiszeile, and the
    /// views of @p auswertung, find their places in it.
    Fensterfläche(QMainWindow& fenster, const Umgebung& umgebung, Messbefehle& befehle,
                  Reihenmodelle& modelle, Auswertung& auswertung, QWidget& vorschau,
                  QWidget& hinweiszeile);

    [[nodiscard]] QWidget* gezeigte() const;
    void zeige(QWidget* ansicht);
    /// Called when another view is seen.
    void beiAnsicht(std::function<void()> handlung) { beiAnsicht_ = std::move(handlung); }
    [[nodiscard]] bool amMessplatz() const;
    /// Command word of the view that is shown; empty for one that shows no results.
    [[nodiscard]] QStringView ansichtswort() const;
    /// Page of the guide about the view that is shown.
    [[nodiscard]] QString hilfethema() const;

    /// Wings of the series that are chosen in the view that is shown, ascending. In the overview
    /// the one below the pointer goes before those chosen in the panel.
    [[nodiscard]] std::vector<int> gewählteFlügel() const;
    /// Wing that a command about a single one means: the one chosen in the view, else the last.
    [[nodiscard]] int gewählterFlügel() const;
    /// Shows or hides the table of criteria below the view. A preview of the report has it on it.
    void zeigeKriterien(bool zeigen);
    /// Height of that table in pixels; 0 for the usual one.
    [[nodiscard]] int kriterienhöhe() const;
    void setzeKriterienhöhe(int höhe) { kriterienhöhe_ = höhe; }

    /// What the context menus of lists, table, charts and overview offer for wings.
    void setzeFlügelbefehle(const QList<QAction*>& befehle);
    /// Chooses wings in the lists, and points them out in the charts.
    void wähle(const std::vector<int>& flügel);

    QSplitter* teiler;
    QWidget* linkeLeiste;
    Kolonieformular* kolonie;
    Messplatz* messplatz;
    Messleiste* messleiste;
    Statuszeile* status;

    /// Views that are made when they are asked for the first time, or by baueRest().
    [[nodiscard]] Reihenansicht& alle();
    [[nodiscard]] Tabellenansicht& tabelle();
    [[nodiscard]] Merkmalansicht& merkmal();
    /// Makes what was not asked for yet.
    void baueRest();

private:
    /// Brings a choice made in @p von, null for none, to the other views.
    void übertrageWahl(const std::vector<int>& flügel, const QWidget* von);
    std::function<void()> beiAnsicht_;
    Umgebung umgebung_;
    const Messreihe& reihe_;
    Reihenmodelle& modelle_;
    Auswertung& auswertung_;
    QWidget& vorschau_;
    QSplitter* mitte_;
    QStackedWidget* ansichten_;
    QList<QAction*> flügelbefehle_;
    bool überträgt_ = false; ///< a choice is on its way to the other views
    Reihenansicht* alle_ = nullptr;
    Tabellenansicht* tabelle_ = nullptr;
    Merkmalansicht* merkmal_ = nullptr;
    Kriterienansicht* kriterien_ = nullptr;
    int kriterienhöhe_ = 0; ///< that it gets when it is shown for the first time
};

} // namespace tarvel
