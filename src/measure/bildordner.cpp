#include "measure/bildordner.h"

#include "measure/bildort.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

QStringList bildmuster() {
    return {u"*.BMP"_s, u"*.GIF"_s, u"*.JPG"_s, u"*.JPEG"_s, u"*.PNG"_s, u"*.TIF"_s, u"*.TIFF"_s};
}

QString nachbarbild(const QString& pfad, int schritt) {
    const QFileInfo datei(Bildort::aus(pfad).datei);
    QStringList namen = datei.dir().entryList(bildmuster(), QDir::Files, QDir::Unsorted);
    QCollator ordnung{QLocale(QLocale::English)}; // the same order on every machine
    ordnung.setNumericMode(true);                 // "wing 9" before "wing 10"
    std::sort(namen.begin(), namen.end(), ordnung);
    const qsizetype stelle = namen.indexOf(datei.fileName());
    if (stelle < 0 || stelle + schritt < 0 || stelle + schritt >= namen.size()) {
        return {};
    }
    return datei.dir().filePath(namen.at(stelle + schritt));
}

} // namespace tarvel
