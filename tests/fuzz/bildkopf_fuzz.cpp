// The resolution that a picture file names. Input: the file.

#include "fuzz/fuzz.h"
#include "measure/bildaufloesung.h"

#include <QBuffer>

using namespace tarvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    QByteArray inhalt = eingabe(daten, größe).toByteArray();
    QBuffer datei(&inhalt);
    datei.open(QIODevice::ReadOnly);
    const std::optional<int> dpi = bildauflösung(datei);
    verlange(!dpi || (*dpi >= GeringsteBildauflösung && *dpi <= HöchsteBildauflösung),
             "a resolution that a scan can have, or none");
    verlange(dpi == bildauflösung(datei), "the same every time");
    return 0;
}
