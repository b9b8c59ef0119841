#include "lang/hinweise.h"

#include <QStringList>

namespace tarvel {

namespace {

QString wort(const Texte& texte, const Hinweis::Argument& argument) {
    if (const auto* text = std::get_if<Text>(&argument)) {
        return texte(*text);
    }
    if (const auto* meldung = std::get_if<Meldung>(&argument)) {
        return texte(*meldung);
    }
    return std::get<QString>(argument);
}

/// All at once, for an argument may contain what looks like a place of the next one.
QString eingesetzt(const QString& muster, const QStringList& worte) {
    QString ergebnis;
    for (qsizetype i = 0; i < muster.size(); ++i) {
        const int stelle = muster.at(i) == u'%' ? muster.mid(i + 1, 1).toInt() : 0;
        if (stelle >= 1 && stelle <= worte.size()) {
            ergebnis += worte.at(stelle - 1);
            ++i;
        } else {
            ergebnis += muster.at(i);
        }
    }
    return ergebnis;
}

} // namespace

QString hinweistext(const Texte& texte, int nummer, int flügel) {
    switch (nummer) {
    case 1:
        return texte(Text::HinweisBildLaden);
    case 2:
        return texte(Text::HinweisRechteckSchieben);
    case 3:
        return texte(Text::HinweisPunkteFehlen);
    case 4:
        return texte(Text::HinweisPunkteKlicken);
    case 5:
        return texte(Text::HinweisÜbernehmen);
    case 6:
        return texte(Text::HinweisRechteckAufFlügel) +
               QString::number(flügel).rightJustified(3, u'0');
    case 7:
        return texte(Text::HinweisMessungWiederholen);
    case 8:
        return texte(Text::HinweisSpeichern);
    case 9:
        return texte(Text::HinweisKreuzZeigen);
    case 10:
        return texte(Text::HinweisMerkmaleJeBiene);
    case 11:
        return texte(Text::HinweisMerkmaleSummen);
    case 12:
        return texte(Text::HinweisUntersuchungÖffnen);
    case 13:
        return texte(Text::ProtokollWirdGedruckt);
    case 14:
        return texte(Text::HinweisAngabenEintragen);
    case 15:
        return texte(Text::BildWirdGeladen);
    default:
        return {};
    }
}

QString hinweistext(const Texte& texte, const Hinweis& hinweis) {
    if (const int* nummer = std::get_if<int>(&hinweis.was)) {
        return hinweistext(texte, *nummer, hinweis.flügel);
    }
    if (const auto* text = std::get_if<Text>(&hinweis.was)) {
        return texte(*text);
    }
    if (const auto* meldung = std::get_if<Meldung>(&hinweis.was)) {
        QStringList worte;
        for (const Hinweis::Argument& argument : hinweis.argumente) {
            worte << wort(texte, argument);
        }
        return eingesetzt(texte(*meldung), worte);
    }
    return std::get<QString>(hinweis.was);
}

} // namespace tarvel
