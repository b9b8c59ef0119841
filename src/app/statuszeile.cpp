#include "app/statuszeile.h"

#include "measure/fluegelfunde.h"
#include "measure/offenesbild.h"

#include <QDir>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString fundtext(const Texte& texte, const Flügelfunde& funde) {
    if (funde.stand() == Flügelfunde::Stand::Sucht) {
        return texte(Meldung::FlügelWerdenGesucht).arg(funde.prozent());
    }
    if (funde.stand() != Flügelfunde::Stand::Fertig) {
        return {};
    }
    return funde.alle().empty()
               ? texte(Meldung::KeineFlügelGefunden)
               : texte(Meldung::FlügelGefunden).arg(funde.alle().size()).arg(funde.offene());
}

} // namespace

Statuszeile::Statuszeile() {
    setObjectName(u"lab_Status"_s);
    setTextFormat(Qt::PlainText); // names of files are no pages
}

void Statuszeile::zeige(const Texte& texte, const OffenesBild& bild, const Flügelfunde& funde,
                        const Messung& messung, const QString& DatenbankPfad) {
    QStringList teile;
    if (!bild.leer()) {
        const QSize größe = bild.größe();
        teile << QFileInfo(bild.pfad()).fileName()
              << u"%1 × %2 %3"_s.arg(größe.width())
                     .arg(größe.height())
                     .arg(texte(Meldung::EinheitPixel));
    }
    if (const QString gefunden = fundtext(texte, funde); !gefunden.isEmpty()) {
        teile << gefunden;
    }
    teile << texte(Meldung::NameZoom) + u' ' + QString::number(messung.aufnahme().Zoomfaktor)
          << u"%1 %2"_s.arg(messung.aufnahme().dpi).arg(texte(Meldung::EinheitDpi))
          << texte(Meldung::FlügelNummer).arg(dreistellig(messung.nummer()));
    if (!DatenbankPfad.isEmpty()) {
        teile << texte(Meldung::DatenbankStatus).arg(QFileInfo(DatenbankPfad).fileName());
        setToolTip(Qt::convertFromPlainText(QDir::toNativeSeparators(DatenbankPfad)));
    }
    setText(teile.join(u"   ·   "_s));
}

} // namespace tarvel
