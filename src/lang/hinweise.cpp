#include "lang/hinweise.h"

#include "platform/zahlen.h"

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
    case HinweisBildLaden:
        return texte(Text::HinweisBildLaden);
    case HinweisRechteck:
        return texte(Text::HinweisRechteckSchieben);
    case HinweisPunkteFehlen:
        return texte(Text::HinweisPunkteFehlen);
    case HinweisPunkteSetzen:
        return texte(Text::HinweisPunkteKlicken);
    case HinweisÜbernehmen:
        return texte(Text::HinweisÜbernehmen);
    case HinweisRechteckAufFlügel:
        return texte(Text::HinweisRechteckAufFlügel) + dreistellig(flügel);
    case HinweisWiederholen:
        return texte(Text::HinweisMessungWiederholen);
    case HinweisErneutSpeichern:
        return texte(Text::HinweisSpeichern);
    case HinweisKreuzZeigen:
        return texte(Text::HinweisKreuzZeigen);
    case HinweisMerkmaleJeBiene:
        return texte(Text::HinweisMerkmaleJeBiene);
    case HinweisMerkmaleSummen:
        return texte(Text::HinweisMerkmaleSummen);
    case HinweisÖffnen:
        return texte(Text::HinweisUntersuchungÖffnen);
    case HinweisDruckt:
        return texte(Text::ProtokollWirdGedruckt);
    case HinweisAngabenFehlen:
        return texte(Text::HinweisAngabenEintragen);
    case HinweisBildWirdGeladen:
        return texte(Text::BildWirdGeladen);
    default:
        return {};
    }
}

namespace {

QString ersterSatz(const Texte& texte, const Hinweis& hinweis) {
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

} // namespace

QString hinweistext(const Texte& texte, const Hinweis& hinweis) {
    QString text = ersterSatz(texte, hinweis);
    for (const Hinweis& weiterer : hinweis.weitere) {
        text += u' ' + hinweistext(texte, weiterer);
    }
    return text;
}

} // namespace tarvel
