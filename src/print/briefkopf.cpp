#include "print/briefkopf.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

Briefkopf ladeBriefkopf(const Einstellungen& einstellungen) {
    using E = Einstellung;
    Briefkopf kopf;
    kopf.TextLinks = einstellungen.zahl(E::TextLinks);
    kopf.TextOben = einstellungen.zahl(E::TextOben);
    kopf.Name = einstellungen.text(E::Name);
    kopf.Straße = einstellungen.text(E::Straße);
    kopf.Ort = einstellungen.text(E::Ort);
    kopf.SchriftArt = einstellungen.text(E::SchriftArt);
    kopf.SchriftGröße = einstellungen.zahl(E::SchriftGröße);
    kopf.SchriftFett = einstellungen.schalter(E::SchriftFett);
    kopf.SchriftKursiv = einstellungen.schalter(E::SchriftKursiv);
    kopf.Zeilenwechsel = einstellungen.schalter(E::Zeilenwechsel);
    kopf.GrafikLinks = einstellungen.zahl(E::GrafikLinks);
    kopf.GrafikOben = einstellungen.zahl(E::GrafikOben);
    kopf.GrafikHöhe =
        std::clamp<int>(einstellungen.zahl(E::GrafikHöhe), KleinsteGrafikhöhe, GrößteGrafikhöhe);
    kopf.Ikone = verband(einstellungen.zahl(E::Ikone));
    kopf.Datei = einstellungen.text(E::Datei);
    return kopf;
}

QStringList briefkopfzeilen(const Briefkopf& kopf) {
    QStringList teile;
    for (const QString& teil : {kopf.Name.trimmed(), kopf.Straße.trimmed(), kopf.Ort.trimmed()}) {
        if (!teil.isEmpty()) {
            teile << teil;
        }
    }
    return kopf.Zeilenwechsel || teile.isEmpty() ? teile : QStringList{teile.join(u", "_s)};
}

} // namespace tarvel
