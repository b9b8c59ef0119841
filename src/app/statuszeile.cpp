#include "app/statuszeile.h"

#include "measure/offenesbild.h"

#include <QDir>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

Statuszeile::Statuszeile() {
    setObjectName(u"lab_Status"_s);
    setTextFormat(Qt::PlainText); // names of files are no pages
}

void Statuszeile::zeige(const Texte& texte, const OffenesBild& bild, const Messung& messung,
                        const QString& DatenbankPfad) {
    QStringList teile;
    if (!bild.leer()) {
        const QSize größe = bild.größe();
        teile << QFileInfo(bild.pfad()).fileName()
              << u"%1 × %2 %3"_s.arg(größe.width())
                     .arg(größe.height())
                     .arg(texte(Meldung::EinheitPixel));
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
