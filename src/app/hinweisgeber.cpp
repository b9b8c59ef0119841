#include "app/hinweisgeber.h"

#include "app/hinweiszeile.h"
#include "measure/aufloesung.h"
#include "results/arbeitsplatz.h"

#include <QDir>

#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int EigenerHinweis = -1;

} // namespace

Hinweisgeber::Hinweisgeber(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , lab_H_(new Hinweiszeile) {}

void Hinweisgeber::ZeigeHinweis(int nummer) {
    nummer_ = nummer;
    lab_H_->zeige(hinweistext(umgebung_.texte, nummer, arbeitsplatz_.messung().nummer()));
    if (nummer == HinweisBildWirdGeladen) {
        lab_H_->repaint(); // nothing is painted while a picture is read
    }
}

void Hinweisgeber::zeige(const QString& satz) {
    nummer_ = EigenerHinweis;
    lab_H_->zeige(satz);
}

void Hinweisgeber::TexteAnwenden() {
    lab_H_->setAccessibleName(umgebung_.texte(Meldung::NameHinweiszeile));
    if (nummer_ != EigenerHinweis) {
        lab_H_->übersetze(hinweistext(umgebung_.texte, nummer_, arbeitsplatz_.messung().nummer()));
    }
}

void Hinweisgeber::warneVorGeringerAuflösung(bool neu) {
    auflösungGemeldet_ = auflösungGemeldet_ && !neu;
    const int dpi = arbeitsplatz_.messung().aufnahme().dpi;
    if (dpi < EmpfohleneAuflösung && !std::exchange(auflösungGemeldet_, true)) {
        zeige(umgebung_.texte(Meldung::AuflösungZuGering).arg(dpi));
    }
}

void Hinweisgeber::warneVorSchreibfehlern() {
    const Texte& t = umgebung_.texte;
    if (!arbeitsplatz_.gesichert() && !std::exchange(sitzungsfehlerGemeldet_, true)) {
        zeige(t(Meldung::SitzungNichtGesichert).arg(QDir::toNativeSeparators(umgebung_.ordner)));
    }
    if (begonnen_ && umgebung_.einstellungen.schreibenMisslungen() &&
        !std::exchange(schreibfehlerGemeldet_, true)) {
        zeige(t(Meldung::EinstellungenNichtGeschrieben)
                  .arg(QDir::toNativeSeparators(umgebung_.einstellungen.IniPfad())));
    }
}

void Hinweisgeber::sage(const Änderung& änderung) {
    const Texte& t = umgebung_.texte;
    if (änderung.hinweis != HinweisKeiner) {
        ZeigeHinweis(änderung.hinweis);
    }
    if (änderung.übernommen && !änderung.übernommen->ohne.empty()) {
        QStringList ohne;
        for (const int punkt : änderung.übernommen->ohne) {
            ohne << QString::number(punkt);
        }
        zeige(t(ohne.size() == 1 ? Meldung::PunktNichtGesetzt : Meldung::PunkteNichtGesetzt)
                  .arg(ohne.join(u", "_s)));
    }
    if (änderung.fehler) {
        umgebung_.dialoge.meldung(t(Text::Fehler),
                                  t(*änderung.fehler == Rechenfehler::DivisionDurchNull
                                        ? Meldung::PunkteFallenZusammen
                                        : Meldung::WurzelNegativ),
                                  Meldungsart::Ausruf);
    }
    if (änderung.reiheVoll) {
        umgebung_.dialoge.meldung(t(Text::Fehler), t(Meldung::ReiheVoll), Meldungsart::Ausruf);
    }
}

void Hinweisgeber::sageAuflösung() {
    const Messung& messung = arbeitsplatz_.messung();
    if (const auto& wiederholung = messung.stand().wiederholung) {
        zeige(umgebung_.texte(Meldung::AuflösungDesFlügels)
                  .arg(messung.aufnahme().dpi)
                  .arg(dreistellig(wiederholung->nummer))
                  .arg(wiederholung->aufnahme.dpi));
    } else {
        warneVorGeringerAuflösung(true);
    }
}

} // namespace tarvel
