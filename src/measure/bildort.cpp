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
    const Bildort ort{name.left(stelle), seite};
    // Only what name() writes: no sign, no blank, no zero in front.
    if (!zahl || seite < 2 || ort.name() != name || QFileInfo::exists(name))
        return {name, 1};
    return ort;
}

} // namespace tarvel
