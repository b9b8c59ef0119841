#include "app/hauptstart.h"

#include "app/dateiannahme.h"
#include "app/hg.h"
#include "app/sprachpaketgang.h"
#include "app/start.h"

#include <QApplication>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 NieEingerichtet = -1;

} // namespace

Programm::Programm(const QString& ordner, const Dienste& dienste)
    : ordner_(ordner)
    , dienste_(dienste)
    , einstellungen_(ordner + u"/Index.ini"_s)
    , texte_(ordner)
    , qtÜbersetzung_(texte_, ordner)
    , hilfetaste_(texte_, dienste.shell, dienste.dialoge)
    , arbeitsplatz_({.einstellungen = einstellungen_,
                     .texte = texte_,
                     .dialoge = dienste.dialoge,
                     .uhr = dienste.uhr,
                     .format = dienste.format,
                     .dokumente = dienste.dokumente},
                    einstellungen_, dienste.speicher, ordner + u"/Sitzung.journal"_s) {}

Programm::~Programm() = default;

bool Programm::Hauptstart(const QStringList& dateien) {
    if (einstellungen_.zahl(Einstellung::Neu) == NieEingerichtet) {
        Start start(einstellungen_, texte_, dienste_.benutzersprache);
        dienste_.ersterLauf(start);
    }
    texte_.SpracheEinstellen(einstellungen_.zahl(Einstellung::Sprache));
    Sprachpaketgang::bringeZurück(einstellungen_, texte_, dienste_.dialoge);

    arbeitsplatz_.richteAblageEin();

    if (einstellungen_.schalter(Einstellung::Übersetzen)) {
        übersetzung_ = ProtokolltexteStandard(texte_).felder;
        ÜbersetzungLaden(einstellungen_.IniPfad(), übersetzung_);
    }

    instanz_ = std::make_unique<Instanz>(ordner_);
    if (!instanz_->erste()) {
        if (Dateiannahme::übergib(ordner_, dateien)) {
            return false;
        }
        dienste_.dialoge.meldung(texte_(Meldung::Programmname), texte_(Text::BereitsGestartet),
                                 Meldungsart::Stopp);
        return false;
    }

    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    hg_ = std::make_unique<HG>(Umgebung{einstellungen_, texte_, dienste_.dialoge, dienste_.shell,
                                        dienste_.uhr, dienste_.drucker, dienste_.format, ordner_,
                                        dienste_.modell},
                               dienste_.speicher, arbeitsplatz_);
    eingabefilter_.setzeFenster(hg_.get());
    hg_->beginne();
    QGuiApplication::restoreOverrideCursor();
    hg_->show();
    annahme_ = std::make_unique<Dateiannahme>(
        ordner_, [] { return QApplication::activeModalWidget() == nullptr; },
        [this](const QStringList& übergebene) { hg_->übernimmDateien(übergebene); });
    return true;
}

} // namespace tarvel
