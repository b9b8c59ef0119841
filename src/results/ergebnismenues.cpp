#include "results/ergebnismenues.h"

#include "platform/kuerzel.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

Ergebnismenüs::Ergebnismenüs(const Texte& texte, QWidget* parent)
    : QMenuBar(parent)
    , texte_(texte) {
    using enum Ergebnismenü;
    constexpr Meldung Filtertipp = Meldung::TippFiltern;
    constexpr int alle = std::numeric_limits<int>::max();
    constexpr int keine = 0;
    baue(Tabelle, u"men_Tabelle"_s, Text::Tabelle,
         {{Text::TabelleÖffnen, Meldung::TippTabelleÖffnen, {QKeySequence::Open}},
          {Text::NeueTabelle, Meldung::TippNeueTabelle, {QKeySequence::New}},
          {Text::Sicherungskopie, Meldung::TippSicherungskopie, {Qt::CTRL | Qt::Key_B}},
          {Text::ZeileLöschen, {}, {QKeySequence::Delete}},
          {Meldung::Exportieren, Meldung::TippExportTabelle, {Qt::CTRL | Qt::Key_E}},
          {Meldung::MenüNeuBeurteilen, Meldung::TippNeuBeurteilen, {Qt::CTRL | Qt::Key_J}},
          {Meldung::NeuLesen, Meldung::TippNeuLesen, {QKeySequence(Qt::Key_F5)}},
          {Meldung::Rückgängig, Meldung::TippRückgängigTabelle, {QKeySequence::Undo}},
          {Meldung::MenüPapierkorb, Meldung::TippPapierkorb},
          {Meldung::MenüZusammenführen, Meldung::TippZusammenführen},
          {Meldung::MenüAusSicherung, Meldung::TippAusSicherung},
          {Meldung::AlteDatenBefehl, Meldung::AlteDatenText}},
         keine);
    baue(Ergebnis, u"men_Ergebnis"_s, Text::Ergebnis,
         {{Text::Alle, Filtertipp},
          {Text::EntsprichtDerRasse, Filtertipp},
          {Text::EntsprichtNicht, Filtertipp}},
         alle);
    baue(Rasse, u"men_Rasse"_s, Text::SpalteRasse,
         {{Text::Alle, Filtertipp},
          {u"Carnica"_s, Filtertipp},
          {u"Mellifera"_s, Filtertipp},
          {u"Ligustica"_s, Filtertipp},
          {u"Carpatica"_s, Filtertipp}},
         alle);
    baue(Geschlecht, u"men_Geschlecht"_s, Text::SpalteGeschlecht,
         {{Text::Alle, Filtertipp}, {Text::Arbeiter, Filtertipp}, {Text::Drohnen, Filtertipp}},
         alle);
    baue(Sort, u"men_Sort"_s, Text::Sortieren,
         {{Text::SpalteDatum},
          {Text::SpalteNummer},
          {Text::SpalteKönigin},
          {Text::Züchter},
          {Text::SpalteBesitzer},
          {Meldung::SortierenSpalte, Meldung::TippSortierenSpalte, {QKeySequence(Qt::Key_F3)}},
          {Meldung::SortierenUmkehren, {}, {Qt::SHIFT | Qt::Key_F3}}},
         NachSpalte);
    baue(Filter, u"men_Filter"_s, Text::Filtern,
         {{Text::Filtern, Filtertipp, {Qt::CTRL | Qt::SHIFT | Qt::Key_F}},
          {Text::Alle},
          {Meldung::Suchen, Meldung::TippSuchen, {QKeySequence::Find}},
          {Meldung::AllesZeigen, Meldung::TippAllesZeigen, {Qt::CTRL | Qt::Key_R}}},
         keine);
    aktion(Filter, Filtern).setCheckable(true);
    aktion(Sort, Umkehren).setCheckable(true);
    baue(Zeilen, u"men_Zeilen"_s, Meldung::MenüZeilen,
         {{Meldung::ZelleÄndern, Meldung::TippZelleÄndern, {QKeySequence(Qt::Key_F2)}},
          {Meldung::ProtokolleEinPdf, Meldung::TippProtokolleEinPdf, {QKeySequence::Print}},
          {Meldung::ProtokolleEinzeln,
           Meldung::TippProtokolleEinzeln,
           {Qt::CTRL | Qt::SHIFT | Qt::Key_P}},
          {Meldung::GewählteExportieren,
           Meldung::TippGewählteExportieren,
           {Qt::CTRL | Qt::SHIFT | Qt::Key_E}},
          {Meldung::FeldÄndern, Meldung::TippFeldÄndern, {Qt::CTRL | Qt::Key_H}},
          {Meldung::SchreibweisenMenü,
           Meldung::TippSchreibweisen,
           {Qt::CTRL | Qt::SHIFT | Qt::Key_H}}},
         keine);
    // The grid knows the key itself; both would take it from each other.
    aktion(Zeilen, ZelleÄndern).setShortcutContext(Qt::WidgetShortcut);
    std::vector<Menüzeile> spalten;
    for (int spalte = ErsteZusatzspalte; spalte < AnzahlErgebnisspalten; ++spalte) {
        spalten.push_back(
            {spaltentitel(texte_, static_cast<Ergebnisspalte>(spalte)), Meldung::TippSpalten});
    }
    spalten.push_back({Meldung::ÜblicheBreiten});
    baue(Spalten, u"men_Spalten"_s, Meldung::MenüSpalten, spalten, keine);
    for (int i = 0; i < AnzahlZusatzspalten; ++i) {
        aktion(Spalten, i).setCheckable(true);
    }
    // The key belongs to the grid alone: in a text field it deletes a letter.
    aktion(Tabelle, Löschen).setShortcutContext(Qt::WidgetShortcut);
    vergibKürzelbuchstaben(actions());
}

void Ergebnismenüs::baue(Ergebnismenü menü, const QString& name, const Beschriftung& titel,
                         const std::vector<Menüzeile>& einträge, int auswahl) {
    QMenu* neu = addMenu(wortlaut(titel, texte_));
    benenneMenü(*neu, name);
    menüs_[menü] = neu;
    auto* gruppe = auswahl > 0 ? new QActionGroup(this) : nullptr;
    if (gruppe != nullptr) {
        gruppe->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    }
    for (const Menüzeile& eintrag : einträge) {
        const int index = static_cast<int>(aktionen_[menü].size());
        QAction* aktion = fügeHinzu(*neu, index, eintrag, [this, menü](int gewählt) {
            if (const auto stelle = handlungen_.find(menü); stelle != handlungen_.end()) {
                stelle->second(gewählt);
            }
        });
        beschrifte(*aktion, eintrag, texte_);
        if (index < auswahl) {
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

void Ergebnismenüs::zeige(const Filterwahl& wahl, bool sortiert, bool absteigend) {
    const auto hake = [this](Ergebnismenü menü, auto wert) {
        aktion(menü, static_cast<int>(wert)).setChecked(true);
    };
    hake(Ergebnismenü::Ergebnis, wahl.ergebnis());
    hake(Ergebnismenü::Rasse, wahl.rasse());
    hake(Ergebnismenü::Geschlecht, wahl.geschlecht());
    for (int i = 0; i < NachSpalte; ++i) {
        aktion(Ergebnismenü::Sort, i)
            .setChecked(sortiert && i == static_cast<int>(wahl.sortierung()));
    }
    aktion(Ergebnismenü::Sort, Umkehren).setChecked(absteigend);
    aktion(Ergebnismenü::Filter, Filtern).setChecked(wahl.filtert());
}

QAction& Ergebnismenüs::aktion(Ergebnismenü menü, int index) const {
    return *aktionen_.at(menü).at(static_cast<std::size_t>(index));
}

} // namespace tarvel
