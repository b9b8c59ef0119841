// Tables of text with examinations, and the dates in them. Input: the file; its first byte says
// what is known of the order of day and month.

#include "fuzz/fuzz.h"
#include "results/tabelleneinfuhr.h"

using namespace tarvel;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const Texte texte(u"/"_s);
    static const QDate heute(2026, 3, 1);
    QByteArrayView bytes = eingabe(daten, größe);
    std::optional<Tagesfolge> folge;
    if (!bytes.isEmpty()) {
        const int wahl = static_cast<unsigned char>(bytes.front()) % 3;
        folge = wahl == 0   ? std::nullopt
                : wahl == 1 ? std::optional(Tagesfolge::TagZuerst)
                            : std::optional(Tagesfolge::MonatZuerst);
        bytes = bytes.sliced(1);
    }
    const Tabelleninhalt inhalt = liesTabelle(bytes, folge, heute);
    verlange(inhalt.istTabelle || inhalt.sätze.empty(), "what is no table has no rows");
    verlange(!folge || !inhalt.datum, "what is known is not asked for");
    int zeile = 1;
    for (const Zeilenproblem& problem : inhalt.probleme) {
        verlange(!problemtext(problem, texte).isEmpty(), "what is left out has a reason");
        verlange(problem.zeile > 1 || problem.grund == Meldung::TabelleOffen,
                 "the names of the columns are no row");
        zeile = std::max(zeile, problem.zeile);
    }
    verlange(zeile <= bytes.count('\n') + bytes.count('\r') + 1, "a line that there is");
    for (const Ergebnissatz& satz : inhalt.sätze) {
        for (const Textspalte& spalte : textspalten()) {
            verlange(zeichenzahl((satz.*spalte.wert).trimmed()) <= spalte.breite,
                     "a text fits its column");
        }
        verlange(!satz.DATUM.isValid() ||
                     (satz.DATUM.year() >= 1900 && satz.DATUM.year() <= heute.year() + 1),
                 "a day that an examination can be of");
        if (satz.DATUM.isValid()) {
            verlange(datumAusForm(satz.DATUM.toString(Qt::ISODate), Tagesfolge::TagZuerst, heute) ==
                         satz.DATUM,
                     "our own form is read");
        }
    }
    return 0;
}
