#include "results/ergebnismenues.h"

#include "platform/kuerzel.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace tarvel {

using namespace Qt::StringLiterals;

Ergebnismenüs::Ergebnismenüs(const Texte& texte, QWidget* parent)
    : QMenuBar(parent)
    , texte_(texte) {
    using enum Ergebnismenü;
    constexpr Meldung Filtertipp = Meldung::TippFiltern;
    baue(Tabelle, u"men_Tabelle"_s, Text::Tabelle,
         {{Text::TabelleÖffnen, Meldung::TippTabelleÖffnen, {QKeySequence::Open}},
          {Text::NeueTabelle, Meldung::TippNeueTabelle, {QKeySequence::New}},
          {Text::Sicherungskopie, Meldung::TippSicherungskopie, {Qt::CTRL | Qt::Key_B}},
          {Text::ZeileLöschen, {}, {QKeySequence::Delete}},
          {Meldung::Exportieren, Meldung::TippExportTabelle, {Qt::CTRL | Qt::Key_E}},
          {Meldung::MenüNeuBeurteilen, Meldung::TippNeuBeurteilen, {Qt::CTRL | Qt::Key_J}},
          {Meldung::Rückgängig, Meldung::TippRückgängigTabelle, {QKeySequence::Undo}},
          {Meldung::MenüPapierkorb, Meldung::TippPapierkorb},
          {Meldung::MenüZusammenführen, Meldung::TippZusammenführen},
          {Meldung::MenüAusSicherung, Meldung::TippAusSicherung}},
         false);
    baue(Ergebnis, u"men_Ergebnis"_s, Text::Ergebnis,
         {{Text::Alle, Filtertipp},
          {Text::EntsprichtDerRasse, Filtertipp},
          {Text::EntsprichtNicht, Filtertipp}},
         true);
    baue(Rasse, u"men_Rasse"_s, Text::SpalteRasse,
         {{Text::Alle, Filtertipp},
          {u"Carnica"_s, Filtertipp},
          {u"Mellifera"_s, Filtertipp},
          {u"Ligustica"_s, Filtertipp},
          {u"Carpatica"_s, Filtertipp}},
         true);
    baue(Geschlecht, u"men_Geschlecht"_s, Text::SpalteGeschlecht,
         {{Text::Alle, Filtertipp}, {Text::Arbeiter, Filtertipp}, {Text::Drohnen, Filtertipp}},
         true);
    baue(Sort, u"men_Sort"_s, Text::Sortieren,
         {{Text::SpalteDatum},
          {Text::SpalteNummer},
          {Text::SpalteKönigin},
          {Text::Züchter},
          {Text::SpalteBesitzer}},
         true);
    baue(Filter, u"men_Filter"_s, Text::Filtern,
         {{Text::Filtern, Filtertipp, {Qt::CTRL | Qt::SHIFT | Qt::Key_F}},
          {Text::Alle},
          {Meldung::Suchen, Meldung::TippSuchen, {QKeySequence::Find}}},
         false);
    aktion(Filter, Filtern).setCheckable(true);
    aktion(Filter, Suchen).setCheckable(true);
    // The key belongs to the grid alone: in a text field it deletes a letter.
    aktion(Tabelle, Löschen).setShortcutContext(Qt::WidgetShortcut);
    vergibKürzelbuchstaben(actions());
}

void Ergebnismenüs::baue(Ergebnismenü menü, const QString& name, Text titel,
                         const std::vector<Menüzeile>& einträge, bool auswahl) {
    QMenu* neu = addMenu(texte_(titel));
    benenneMenü(*neu, name);
    auto* gruppe = auswahl ? new QActionGroup(this) : nullptr;
    for (const Menüzeile& eintrag : einträge) {
        const int index = static_cast<int>(aktionen_[menü].size());
        QAction* aktion = fügeHinzu(*neu, index, eintrag, [this, menü](int gewählt) {
            if (const auto stelle = handlungen_.find(menü); stelle != handlungen_.end()) {
                stelle->second(gewählt);
            }
        });
        beschrifte(*aktion, eintrag, texte_);
        if (gruppe != nullptr) {
            aktion->setCheckable(true);
            gruppe->addAction(aktion);
        }
        aktionen_[menü].push_back(aktion);
    }
    vergibKürzelbuchstaben(neu->actions());
}

void Ergebnismenüs::beiKlick(Ergebnismenü menü, std::function<void(int)> handlung) {
    handlungen_[menü] = std::move(handlung);
}

void Ergebnismenüs::zeige(const Filterwahl& wahl) {
    const auto hake = [this](Ergebnismenü menü, auto wert) {
        aktion(menü, static_cast<int>(wert)).setChecked(true);
    };
    hake(Ergebnismenü::Ergebnis, wahl.ergebnis());
    hake(Ergebnismenü::Rasse, wahl.rasse());
    hake(Ergebnismenü::Geschlecht, wahl.geschlecht());
    hake(Ergebnismenü::Sort, wahl.sortierung());
    aktion(Ergebnismenü::Filter, Filtern).setChecked(wahl.filtert());
}

QAction& Ergebnismenüs::aktion(Ergebnismenü menü, int index) const {
    return *aktionen_.at(menü).at(static_cast<std::size_t>(index));
}

} // namespace tarvel
