#pragma once

#include "lang/texte.h"
#include "results/zeilenwahl.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QGridLayout;
class QSpinBox;

namespace tarvel {

/// The line of filters above the grid: season, breeder, race, caste, verdict, number of wings.
class Filterzeile : public QWidget {
public:
    /// What a results file offers to choose from.
    struct Listen {
        QStringList saisons; ///< see Ergebnistabelle::saisons
        QStringList züchter;
        QStringList rassen;
    };

    explicit Filterzeile(const Texte& texte, QWidget* parent = nullptr);

    /// Asked when a list is opened for the first time since the file changed.
    void beiListen(std::function<Listen()> quelle) { quelle_ = std::move(quelle); }
    void beiWahl(std::function<void()> handlung) { gewählt_ = std::move(handlung); }
    /// The lists may be others now.
    void veralte() { veraltet_ = true; }

    [[nodiscard]] Zeilenfilter filter() const;
    /// Wings that a row has at least; 0 for any number.
    [[nodiscard]] int flügel() const;
    [[nodiscard]] bool engtEin() const { return flügel() > 0 || filter() != Zeilenfilter(); }
    /// Takes every choice back without telling.
    void leere();
    /// Takes the choice of wings back without telling.
    void leereFlügel();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QComboBox* baueListe(const QString& name, const QString& bedeutung, const QString& alle);
    void fülle();
    void ordne();

    const Texte& texte_;
    std::function<Listen()> quelle_;
    std::function<void()> gewählt_;
    bool veraltet_ = true;
    QGridLayout* raster_;
    QComboBox* saison_;
    QComboBox* züchter_;
    QComboBox* rasse_;
    QComboBox* tiere_;
    QComboBox* ergebnis_;
    QSpinBox* flügel_;
    std::vector<QWidget*> felder_;
};

} // namespace tarvel
