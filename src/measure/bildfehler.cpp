#include "measure/bilddatei.h"

#include <QDir>

namespace tarvel {

using namespace Qt::StringLiterals;

QString text(const Bildfehler& fehler, const QString& pfad, const Texte& texte) {
    const QString name = QDir::toNativeSeparators(pfad);
    QString text;
    switch (fehler.art) {
    case Bildfehler::Art::Abgebrochen:
        return {};
    case Bildfehler::Art::NichtGefunden:
        text = texte(Text::BilddateiNichtGefunden) + u'\n' +
               texte(Meldung::DateiVerschwunden).arg(name);
        break;
    case Bildfehler::Art::KeinRecht:
        text = texte(Meldung::DateiKeineRechte).arg(name);
        break;
    case Bildfehler::Art::Leer:
        text = texte(Meldung::BildLeer).arg(name);
        break;
    case Bildfehler::Art::Unlesbar:
        text = texte(Meldung::BildKeinBild).arg(name);
        break;
    case Bildfehler::Art::Abgeschnitten:
        text = texte(Meldung::BildAbgeschnitten).arg(name);
        break;
    case Bildfehler::Art::KeinSpeicher:
        text = texte(Meldung::BildSpeicherReichtNicht).arg(name);
        break;
    case Bildfehler::Art::ZuGross: {
        const QString einheit = u' ' + texte(Meldung::EinheitPixel);
        const QString megapixel =
            QString::number(fehler.höchstens / 1'000'000) + u" 000 000"_s + einheit;
        text = texte(Text::BildZuGroß) + u'\n' +
               texte(Meldung::BildGrößerAlsErlaubt).arg(name, fehler.grund + einheit, megapixel);
        break;
    }
    }
    if (!fehler.grund.isEmpty() && fehler.art != Bildfehler::Art::ZuGross) {
        text += u"\n\n("_s + fehler.grund + u')';
    }
    return text;
}

} // namespace tarvel
