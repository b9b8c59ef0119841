#include "batch/uebersicht.h"

#include "collection/jahresbild.h"
#include "collection/kolonieausgabe.h"
#include "collection/kolonietabelle.h"
#include "collection/kreuzbild.h"
#include "collection/ueberlagerung.h"
#include "collection/vergleichsbild.h"
#include "evaluation/diagrammdatei.h"
#include "evaluation/rassen.h"
#include "platform/vektorbild.h"
#include "results/datenbankfehler.h"

#include <QGuiApplication>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

class Übersichtslauf {
public:
    Übersichtslauf(const Übersichtsbefehl& befehl, const Batchumgebung& umgebung,
                   const Einstellungen& einstellungen)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , regeln_(
              kolonieregeln({.texte = umgebung.texte,
                             .format = umgebung.format,
                             .rassen = rassenliste(einstellungen),
                             .OhneHaarlänge = einstellungen.schalter(Einstellung::OhneHaarlänge)},
                            einstellungen)) {}

    Status führeAus() {
        sammlung_ = *liesKolonien(befehl_.datenbank, {}, regeln_, [](int, int) { return true; });
        berichteUnlesbare();
        auswahl_ = wähle(sammlung_, befehl_.filter);
        if (!wähleNummern()) {
            return Status::NichtLesbar;
        }
        Status status = sammlung_.unlesbar.isEmpty() ? Status::Gut : Status::NichtLesbar;
        const Status geschrieben = schreibeTabelle();
        if (geschrieben != Status::Gut) {
            return geschrieben;
        }
        if (!befehl_.bild.isEmpty()) {
            warneVorLeeremBild();
            const Status gemalt = schreibeBild();
            status = gemalt == Status::Gut ? status : gemalt;
        }
        return status;
    }

private:
    void berichteUnlesbare() {
        const Texte& t = umgebung_.texte;
        for (const QString& nummer : sammlung_.unlesbar) {
            melde(umgebung_, befehl_.datenbank, t(Meldung::UntersuchungZuGroß).arg(nummer));
        }
        if (const int teilweise = sammlung_.teilweise(); teilweise > 0) {
            melde(umgebung_, befehl_.datenbank, t(Meldung::ÜbersichtTeilweise).arg(teilweise));
        }
    }

    /// The examinations that the call names, in its order. False when one is missing.
    bool wähleNummern() {
        bool alleDa = true;
        for (const QString& nummer : befehl_.nummern) {
            const auto ort =
                std::find_if(auswahl_.begin(), auswahl_.end(), [&](const Koloniewerte* k) {
                    return k->UNr.compare(nummer, Qt::CaseInsensitive) == 0;
                });
            if (ort != auswahl_.end()) {
                gewählt_.push_back(*ort);
            } else {
                melde(
                    umgebung_, befehl_.datenbank,
                    meldungstext(umgebung_.texte, Datenbankfehler(Datenbankgrund::UntersuchungFehlt,
                                                                  befehl_.datenbank, nummer)));
                alleDa = false;
            }
        }
        return alleDa;
    }

    [[nodiscard]] Wertetabelle tabelle() const {
        if (befehl_.ansicht == Übersichtsansicht::Vergleich) {
            return vergleichstabelle(*gewählt_[0], *gewählt_[1],
                                     vergleiche(*gewählt_[0], *gewählt_[1], regeln_));
        }
        if (befehl_.nach) {
            return jahrestabelle(gruppen(auswahl_, *befehl_.nach));
        }
        return kolonientabelle(gewählt_.empty() ? auswahl_ : gewählt_);
    }

    [[nodiscard]] Status schreibeTabelle() const {
        const Wertetabelle werte = tabelle();
        const QString name = befehl_.ansicht == Übersichtsansicht::Vergleich ? u"figures"_s
                             : befehl_.nach                                  ? u"seasons"_s
                                                                             : u"examinations"_s;
        return schreibe(
            umgebung_, befehl_.ziel,
            ausgabetext(umgebung_, befehl_.ziel,
                        befehl_.format == Ausgabeformat::Json ? werte.json(name) : werte.csv()));
    }

    /// The picture says so itself, but a script does not look at it.
    void warneVorLeeremBild() const {
        const Texte& t = umgebung_.texte;
        if (auswahl_.empty()) {
            melde(umgebung_, befehl_.bild, t(Meldung::ÜbersichtLeer));
        } else if (befehl_.ansicht == Übersichtsansicht::Jahre) {
            if (const QStringList rassen = rassenVon(auswahl_); rassen.size() > 1) {
                melde(umgebung_, befehl_.bild,
                      t(Meldung::ÜbersichtBildRassen).arg(rassen.join(u", "_s), rassen.front()));
            }
        }
    }

    [[nodiscard]] Status schreibeBild() const {
        const Übersichtsworte worte{umgebung_.texte, umgebung_.format};
        const Diagrammstil stil = Diagrammstil::farbdruck(QGuiApplication::font());
        QSizeF größe(1100, 700);
        if (befehl_.ansicht == Übersichtsansicht::Tabelle) {
            größe = tabellengröße(auswahl_.size());
        }
        const Diagrammmaler maler = [&](QPainter& painter, const QRectF& rahmen) {
            switch (befehl_.ansicht) {
            case Übersichtsansicht::Tabelle:
                maleTabelle(painter, rahmen, auswahl_, worte, stil);
                break;
            case Übersichtsansicht::Kreuze:
                maleKreuze(painter, rahmen, kreuzbild(auswahl_, gewählt_, regeln_), worte, stil);
                break;
            case Übersichtsansicht::Histogramme:
                maleÜberlagerung(painter, rahmen,
                                 überlagerungsbild(gewählt_, befehl_.index, regeln_), worte, stil);
                break;
            case Übersichtsansicht::Jahre:
                maleJahre(painter, rahmen, jahresbild(auswahl_, filtername(), regeln_), worte,
                          stil);
                break;
            case Übersichtsansicht::Vergleich:
                maleVergleich(painter, rahmen, vergleichsbild(gewählt_, regeln_), worte, stil);
                break;
            }
        };
        const QString grund = speichereDiagramm(befehl_.bild, formatNach(befehl_.bild), größe,
                                                umgebung_.texte(Meldung::Zuchtübersicht), maler);
        if (grund.isEmpty()) {
            return Status::Gut;
        }
        melde(umgebung_, befehl_.bild,
              umgebung_.texte(Meldung::DiagrammNichtGespeichert)
                  .arg(befehl_.bild, grund)
                  .replace(u'\n', u' '));
        return Status::NichtLesbar;
    }

    [[nodiscard]] QString filtername() const {
        QStringList teile;
        for (const Merkmalsfeld f : Merkmalsfelder) {
            teile << befehl_.filter[f];
        }
        teile.removeAll(QString());
        return teile.join(u", "_s);
    }

    const Übersichtsbefehl& befehl_;
    const Batchumgebung& umgebung_;
    Kolonieregeln regeln_;
    Koloniesammlung sammlung_;
    Kolonieauswahl auswahl_;
    Kolonieauswahl gewählt_;
};

} // namespace

Status schreibeÜbersicht(const Übersichtsbefehl& befehl, const Batchumgebung& umgebung) {
    if (befehl.bild.endsWith(u".svg"_s, Qt::CaseInsensitive) && !kannSvg()) {
        melde(umgebung, befehl.bild, u"this program writes no SVG, take *.png or *.pdf"_s);
        return Status::FalscherAufruf;
    }
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    try {
        return Übersichtslauf(befehl, umgebung, *einstellungen).führeAus();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
