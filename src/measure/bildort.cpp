#include "measure/bildort.h"

#include <QFileInfo>

namespace tarvel {

QString Bildort::name() const {
    return seite <= 1 ? datei : datei + u'#' + QString::number(seite);
}

Bildort Bildort::aus(const QString& name) {
    const qsizetype stelle = name.lastIndexOf(u'#');
    bool zahl = false;
    const int seite = stelle < 0 ? 0 : QStringView(name).sliced(stelle + 1).toInt(&zahl);
    Bildort ort{name.left(stelle), seite};
    // Only what name() writes: no sign, no blank, no zero in front.
    if (!zahl || seite < 2 || ort.name() != name || QFileInfo::exists(name)) {
        return {name, 1};
    }
    return ort;
}

QString netzrechner(const QString& pfad) {
    const auto trennt = [](QChar z) { return z == u'/' || z == u'\\'; };
    if (pfad.size() < 3 || !trennt(pfad[0]) || !trennt(pfad[1])) {
        return {};
    }
    QStringList teile{QString()};
    for (const QChar z : QStringView(pfad).sliced(2)) {
        if (trennt(z)) {
            teile << QString();
        } else {
            teile.last() += z.toLower();
        }
    }
    if (teile.first() == u"?" || teile.first() == u".") {
        // The long form of a path; most of them are of this computer.
        return teile.value(1) == u"unc" ? teile.value(2) : QString();
    }
    return teile.first();
}

} // namespace tarvel
