#include "print/verband.h"

#include "lang/meldungen.h"

#include <QFile>

namespace tarvel {

using namespace Qt::StringLiterals;

Verband verband(int position) {
    return position >= 0 && position < Verbandzahl ? static_cast<Verband>(position)
                                                   : Verband::Flügel;
}

QStringList verbandsnamen(const Texte& texte) {
    return {texte(Meldung::EmblemBiene), texte(Meldung::EmblemWabe), texte(Meldung::EmblemFlügel),
            texte(Text::AndereOrganisation)};
}

QString emblem(Verband verband) {
    // A build that cannot draw brings pictures of the drawings.
    const auto datei = [](const QString& name) {
        const QString zeichnung = u":/tarvel/emblems/"_s + name + u".svg"_s;
        return QFile::exists(zeichnung) ? zeichnung
                                        : u":/tarvel/emblems/"_s + name + u"-1200.png"_s;
    };
    switch (verband) {
    case Verband::Biene:
        return datei(u"biene"_s);
    case Verband::Wabe:
        return datei(u"wabe"_s);
    case Verband::Flügel:
        return datei(u"fluegel"_s);
    case Verband::Andere:
        return {};
    }
    return {};
}

} // namespace tarvel
