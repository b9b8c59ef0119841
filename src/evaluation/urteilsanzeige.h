#pragma once

#include "evaluation/beurteilung.h"
#include "evaluation/standarddatei.h"
#include "lang/texte.h"

#include <QWidget>

#include <functional>
#include <utility>

class QLabel;

namespace tarvel {

/// The verdict on the sample as it stands now, with what it rests on and its reasons.
class Urteilsanzeige : public QWidget {
public:
    explicit Urteilsanzeige(const Texte& texte, QWidget* parent = nullptr);

    /// @p rasse name of the race of the sample, @p format of the limits. @p gespeichertes the
    /// verdict that is kept for storing, empty when that is the one of @p beurteilung; @p beleg
    /// what it was given by, as far as that is known. @p nachVorgaben the standard is none that
    /// anybody set.
    void zeige(const Beurteilung& beurteilung, const QString& rasse, const Zahlenformat& format,
               std::optional<bool> gespeichertes = {},
               const std::optional<Urteilsbeleg>& beleg = {}, bool nachVorgaben = false);

    /// Asked for a sentence that is to be said beside any verdict; empty for none.
    void setzeBemerkung(std::function<QString()> bemerkung) { bemerkung_ = std::move(bemerkung); }
    /// Called with the reason whose bees the user wants to see.
    void beiMangelwahl(std::function<void(const Prüfwert&)> wahl) {
        beiMangelwahl_ = std::move(wahl);
    }
    /// Called when the stored verdict is to give way to the present one.
    void beiNeubeurteilung(std::function<void()> tun) { beiNeubeurteilung_ = std::move(tun); }

    /// Called when the table of all criteria is asked for.
    void beiKriterienwunsch(std::function<void()> tun) { beiKriterienwunsch_ = std::move(tun); }

private:
    void beschrifte();
    void folge(const QString& ziel) const;
    [[nodiscard]] QString gespeichertes() const;

    const Texte& texte_;
    std::function<QString()> bemerkung_;
    std::function<void(const Prüfwert&)> beiMangelwahl_;
    std::function<void()> beiNeubeurteilung_;
    std::function<void()> beiKriterienwunsch_;
    Beurteilung beurteilung_;
    std::optional<bool> gespeichertes_;
    bool nachVorgaben_ = false;
    std::optional<Urteilsbeleg> beleg_;
    QString rasse_;
    Zahlenformat format_;
    QLabel* überschrift_;
    QLabel* lab_Urteil_;
    QLabel* lab_Grundlage_;
    QLabel* lab_Mängel_;
    QLabel* lab_Gespeichert_;
    QLabel* lab_Kriterien_;
};

} // namespace tarvel
