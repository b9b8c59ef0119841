#pragma once

#include "lang/texte.h"

#include <QPersistentModelIndex>
#include <QTableView>

#include <functional>

namespace tarvel {

/// The grid of the browser: rows of one height, columns of the widths it is given, keys and clicks
/// that select, open and edit. Enter and a double click open; F2, typing and a second click on the
/// same cell edit.
class Ergebnisgitter : public QTableView {
public:
    explicit Ergebnisgitter(const Texte& texte, QWidget* parent = nullptr);

    /// Sets widths in 1/1440 inch and chooses a letter size at which @p worte, texts that stand in
    /// the columns of their position, fit. To be called once there is a model.
    void richteSpaltenEin(const QList<int>& breiten, const QList<QStringList>& worte);

    void beiÖffnen(std::function<void()> handlung) { öffnen_ = std::move(handlung); }
    void beiEnde(std::function<void()> handlung) { ende_ = std::move(handlung); }
    /// Runs @p handlung once, after the grid was painted.
    void nachMalen(std::function<void()> handlung);

    /// Text shown in place of rows.
    void setzeLeertext(const QString& text);
    [[nodiscard]] const QString& leertext() const { return leertext_; }

    /// Selects a row and brings it into view.
    void wähleZeile(int zeile);

    /// Writes the cell that is being edited, if any, as Enter would do.
    void beendeEingabe();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    std::function<void()> öffnen_;
    std::function<void()> ende_;
    std::function<void()> nachMalen_;
    QString leertext_;
    QPersistentModelIndex geklickt_; ///< cell of the last click
    bool nochmalGeklickt_ = false;   ///< that click hit the same cell as the one before
};

} // namespace tarvel
