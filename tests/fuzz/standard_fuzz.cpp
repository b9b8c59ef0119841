// Standards that travel. Input: the file.

#include "evaluation/standarddatei.h"
#include "fuzz/fuzz.h"

using namespace tarvel;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const Texte texte(u"/"_s);
    const QByteArrayView bytes = eingabe(daten, größe);
    const auto gelesen = liesStandarddatei(bytes);
    if (const auto* fehler = std::get_if<Standardfehler>(&gelesen)) {
        verlange(!fehlertext(*fehler, texte).isEmpty(), "what is refused has a reason");
        return 0;
    }
    const auto& datei = std::get<Standarddatei>(gelesen);
    verlange(!standardmangel(datei.standard), "the race page takes what is read");
    const QString text = standardtext(datei);
    const auto wieder = liesStandarddatei(text.toUtf8());
    verlange(std::holds_alternative<Standarddatei>(wieder), "what is written is read");
    const auto& zweite = std::get<Standarddatei>(wieder);
    verlange(abweichungen(datei.standard, zweite.standard).empty(), "every value comes back");
    verlangeGleich(text.toUtf8(), standardtext(zweite).toUtf8(), "writing again changes nothing");
    return 0;
}
