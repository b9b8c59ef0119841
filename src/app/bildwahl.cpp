#include "app/bildwahl.h"

#include "measure/bildordner.h"
#include "measure/bildort.h"

#include <QDir>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

QString wähleBild(const Umgebung& umgebung, const QString& bisher) {
    const Texte& t = umgebung.texte;
    const QString filter = t(Text::AlleBilddateien) + u" ("_s + bildmuster().join(u' ') + u");;"_s +
                           t(Text::BitmapDateien) + u" (*.BMP);;"_s + t(Text::GifDateien) +
                           u" (*.GIF);;"_s +
                           u"JPEG (*.JPG *.JPEG);;PNG (*.PNG);;TIFF (*.TIF *.TIFF);;"_s +
                           t(Text::AlleDateien) + u" (*)"_s;
    QString ordner = QFileInfo(bisher).path();
    if (bisher.isEmpty()) {
        ordner = umgebung.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    }
    return umgebung.dialoge.wähleDatei(t(Text::MenüBildLaden), ordner, filter);
}

void öffneImGrafikprogramm(const Umgebung& umgebung, const QString& bild) {
    const Texte& t = umgebung.texte;
    const QString programm = umgebung.einstellungen.text(Einstellung::Grafikprogramm);
    if (!programm.isEmpty() && umgebung.shell.runProgram(programm, Bildort::aus(bild).datei)) {
        return;
    }
    umgebung.dialoge.meldung(t(Text::Fehler),
                             t(Text::ProgrammNichtGefunden) + u'\n' + t(Text::PfadGrafikprogramm) +
                                 u": "_s + QDir::toNativeSeparators(programm),
                             Meldungsart::Ausruf);
}

} // namespace tarvel
