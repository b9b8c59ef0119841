// The commands of the browser that concern the collection: its bin, undo, others, its backups.

#include "results/db.h"

#include "results/datumswandlung.h"
#include "results/datumswandlungsfenster.h"
#include "results/ergebnismenues.h"
#include "results/sammlungsbefehle.h"

#include <QPushButton>

namespace tarvel {

Satzumgebung DB::satzumgebung() const {
    return umgebung_.neubeurteilung
               ? umgebung_.neubeurteilung().satz
               : Satzumgebung{.texte = umgebung_.texte, .format = {}, .rassen = {}};
}

/// A notice with a button, as long as there are dates in another form.
void DB::zeigeAlteDaten() {
    bool gibtEs = false;
    try {
        gibtEs =
            !umgebung_.DatenbankPfad.isEmpty() && Datumswandlung(umgebung_.DatenbankPfad).gibtEs();
    } catch (const Datenbankfehler&) {
        gibtEs = false; // reading the rows has told what is wrong
    }
    bef_Daten_->setVisible(gibtEs);
}

bool DB::wandleDaten() {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Meldung::AlteDaten);
    const QDate heute = umgebung_.heute.isValid() ? umgebung_.heute : QDate::currentDate();
    try {
        const Datumswandlung wandlung(umgebung_.DatenbankPfad);
        std::vector<AltesDatum> daten = wandlung.finde();
        if (daten.empty()) {
            umgebung_.dialoge.meldung(titel, texte(Meldung::AlteDatenKeine), Meldungsart::Hinweis);
            return false;
        }
        Datumswandlungsfenster fenster(texte, std::move(daten), heute, this);
        if (fenster.exec() != QDialog::Accepted) {
            return false;
        }
        const int zahl = wandlung.wandle(fenster.daten(), fenster.folge(), heute);
        umgebung_.dialoge.meldung(titel, texte(Meldung::DatenUmgewandelt).arg(zahl),
                                  Meldungsart::Hinweis);
        zeigeAlteDaten();
        return zahl > 0;
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return false;
    }
}

void DB::sammlungsbefehl(int index) {
    const Sammlungsbefehle sammlung(umgebung_.DatenbankPfad, satzumgebung(), umgebung_.dialoge,
                                    this);
    std::vector<Rücknahme>& rücknahmen = modell_.rücknahmen();
    bool geändert = true;
    const auto nimm = [&](const Sammlungsänderung& änderung) {
        rücknahmen.insert(rücknahmen.end(), änderung.rücknahmen.begin(), änderung.rücknahmen.end());
        ersetzte_ << änderung.ersetzt;
        geändert = !änderung.rücknahmen.empty();
    };
    switch (index) {
    case Ergebnismenüs::Rückgängig:
        if (!rücknahmen.empty()) {
            std::vector<qint64> ids;
            if (sammlung.nimmZurück(rücknahmen.back(), ids) !=
                Sammlungsbefehle::Rückweg::NichtJetzt) {
                rücknahmen.pop_back();
            }
            wähleNachher(ids);
        }
        break;
    case Ergebnismenüs::Papierkorb:
        nimm(sammlung.zeigePapierkorb());
        break;
    case Ergebnismenüs::Zusammenführen:
        nimm(sammlung.führeZusammen());
        break;
    case Ergebnismenüs::AusSicherung:
        nimm(sammlung.holeAusSicherung());
        break;
    case Ergebnismenüs::DatenUmwandeln:
        geändert = wandleDaten();
        break;
    default:
        return;
    }
    if (geändert) {
        zeigeNeu();
    }
}

} // namespace tarvel
