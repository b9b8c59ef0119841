#pragma once

#include "lang/texte.h"

#include <QAbstractItemDelegate>
#include <QPersistentModelIndex>
#include <QTableView>

#include <functional>

namespace tarvel {

/// The grid of the browser: rows of one height, columns of the widths it is given, keys and clicks
/// that select, open, search and edit. Enter and a double click open, letters search; F2 and a
/// second click on the same cell edit. What is refused stays open with what was typed.
class Ergebnisgitter : public QTableView {
public:
    explicit Ergebnisgitter(const Texte& texte, QWidget* parent = nullptr);

    /// Sets widths in 1/1440 inch and chooses a letter size at which @p worte, texts that stand in
    /// the columns of their position, fit. To be called once there is a model. A grid that is wider
    /// than its columns gives the rest to those of names.
    void richteSpaltenEin(const QList<int>& breiten, const QList<QStringList>& worte);
    /// The widths that the user gave to columns, in pixels; 0 for the usual one, -1 for a column
    /// that is not shown.
    [[nodiscard]] QList<int> eigeneBreiten() const;
    void setzeEigeneBreiten(const QList<int>& breiten);
    void zeigeSpalte(int spalte, bool zeigen);

    /// The races that a row may be given.
    void setzeRassen(const QStringList& rassen);

    void beiÖffnen(std::function<void()> handlung) { öffnen_ = std::move(handlung); }
    void beiEnde(std::function<void()> handlung) { ende_ = std::move(handlung); }
    /// Letters that were typed.
    void beiSuche(std::function<void(const QString& text)> handlung) {
        suche_ = std::move(handlung);
    }
    /// Runs @p handlung once, after the grid was painted.
    void nachMalen(std::function<void()> handlung);

    /// Text shown in place of rows.
    void setzeLeertext(const QString& text);
    [[nodiscard]] const QString& leertext() const { return leertext_; }

    /// Selects a row and brings it into view. The mark goes to @p spalte, or stays in its column.
    void wähleZeile(int zeile, int spalte = -1);
    /// Selects several, the first of them being the current one.
    void wähleZeilen(const QList<int>& zeilen, int spalte);

    /// All rows, also those whose places are not known yet.
    void selectAll() override;

    /// Writes the cell that is being edited, if any, as Enter would do.
    void beendeEingabe();
    /// Edits the current cell.
    void beginneEingabe();
    [[nodiscard]] bool bearbeitet() const;
    /// The text that is being written is refused: its editor stays open.
    void lehneAb() { abgelehnt_ = true; }
    /// Goes back to the cell whose text was refused.
    void kehreZurEingabe();
    /// Gives up what was typed.
    void verwirfEingabe();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void verteileBreiten();

    std::function<void()> öffnen_;
    std::function<void()> ende_;
    std::function<void(const QString&)> suche_;
    std::function<void()> nachMalen_;
    QList<int> übliche_;    ///< widths in pixels
    QList<int> eigene_;     ///< 0 where the usual one holds
    bool verteilt_ = false; ///< widths change by themselves, not by the user
    QPersistentModelIndex bearbeitet_;
    bool abgelehnt_ = false;
    QString leertext_;
    QPersistentModelIndex geklickt_; ///< cell of the last click
    bool nochmalGeklickt_ = false;   ///< that click hit the same cell as the one before
};

} // namespace tarvel
