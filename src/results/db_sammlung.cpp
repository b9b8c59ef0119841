// The commands of the browser that concern the collection: its bin, undo, others, its backups.

#include "results/db.h"

#include "results/ergebnismenues.h"
#include "results/sammlungsbefehle.h"

namespace tarvel {

Satzumgebung DB::satzumgebung() const {
    return umgebung_.neubeurteilung
               ? umgebung_.neubeurteilung().satz
               : Satzumgebung{.texte = umgebung_.texte, .format = {}, .rassen = {}};
}

void DB::sammlungsbefehl(int index) {
    const Sammlungsbefehle sammlung(umgebung_.DatenbankPfad, satzumgebung(), umgebung_.dialoge,
                                    this);
    std::vector<Rücknahme>& rücknahmen = modell_.rücknahmen();
    bool geändert = true;
    switch (index) {
    case Ergebnismenüs::Rückgängig:
        if (!rücknahmen.empty()) {
            // One that cannot be taken back now never can.
            const Rücknahme letzte = rücknahmen.back();
            rücknahmen.pop_back();
            (void)sammlung.nimmZurück(letzte);
        }
        break;
    case Ergebnismenüs::Papierkorb: {
        const auto neue = sammlung.zeigePapierkorb();
        rücknahmen.insert(rücknahmen.end(), neue.begin(), neue.end());
        geändert = !neue.empty();
        break;
    }
    case Ergebnismenüs::Zusammenführen:
        geändert = sammlung.führeZusammen();
        break;
    case Ergebnismenüs::AusSicherung:
        geändert = sammlung.holeAusSicherung();
        break;
    default:
        return;
    }
    if (geändert) {
        zeigeNeu();
    }
}

} // namespace tarvel
