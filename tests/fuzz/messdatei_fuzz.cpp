// Measurement files, and the way of one into the results file and back. The input is the file.

#include "fuzz/fuzz.h"
#include "measure/messdatei.h"
#include "measure/textdatei.h"
#include "results/einlesen.h"
#include "results/sitzungstext.h"
#include "results/untersuchungssatz.h"

#include <algorithm>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

void prüfeProbleme(const Messdatei& datei, QByteArrayView bytes) {
    const QString text = dateitext(bytes).text;
    Zeilenleser zeilen(text);
    while (zeilen.nächste()) {
    }
    verlange(datei.probleme.size() <= Messdatei::HöchsteProblemzahl, "problems are bounded");
    verlange(datei.weitereProbleme <= zeilen.nummer(), "no more problems than lines");
    int zeile = 1;
    for (const Leseproblem& problem : datei.probleme) {
        verlange(problem.zeile >= zeile && problem.zeile <= std::max(1, zeilen.nummer()),
                 "problems lie in the file, in its order");
        zeile = problem.zeile;
    }
}

template <typename Zeile>
void prüfeNummern(const std::vector<Zeile>& zeilen) {
    int letzte = 0;
    for (const Zeile& zeile : zeilen) {
        verlange(zeile.nummer > letzte && zeile.nummer <= Messreihe::HöchsteFlügelzahl,
                 "wings 1 to 200 in their order, each once");
        letzte = zeile.nummer;
    }
}

/// The series as a results file keeps it: without cubital indices of 0.
Messreihe gespeicherteReihe(const Messdatei& datei) {
    std::vector<CiZeile> ci = datei.ciZeilen;
    std::erase_if(ci, [](const CiZeile& z) { return getippteZahl(z.wert) == 0.0; });
    Messreihe reihe;
    reihe.stelleHer(ci, datei.hiDvZeilen, {}, {});
    return reihe;
}

QByteArray abbild(const Messreihe& reihe, const Merkmale& merkmale) {
    Sitzungsstand stand;
    stand.reihe = reihe;
    stand.merkmale = merkmale;
    return untersuchungszeilen(stand);
}

void prüfeSpeichern(const Messdatei& datei, const Zahlenformat& format) {
    static const Texte texte{QString()};
    const Satzumgebung umgebung{texte, format, {u"Carnica"_s, u"Mellifera"_s}, false};
    const auto eingelesen = untersuchungAusMessdatei(datei, 1, format);
    const Untersuchung& u = eingelesen.untersuchung;
    verlange(u.geändert(), "what is stored nowhere counts as changed");
    const auto gelesen =
        untersuchungAus(satzAus(u, false, 1200, QDate(2025, 5, 17), umgebung), umgebung);
    verlange(gelesen.nichtGelesen.isEmpty() && !gelesen.rasse, "what is stored can be read");
    verlangeGleich(abbild(gespeicherteReihe(datei), u.merkmale()),
                   abbild(gelesen.reihe, gelesen.merkmale), "wings and marks come back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    const QByteArrayView bytes = eingabe(daten, größe);
    const Messdatei datei = liesMessdatei(bytes);
    prüfeProbleme(datei, bytes);
    verlange(datei.istMessdatei || datei.probleme.size() == 1, "another file has one problem");
    if (!datei.istMessdatei) {
        return 0;
    }
    prüfeNummern(datei.ciZeilen);
    prüfeNummern(datei.hiDvZeilen);
    verlange(datei.merkmalzeilen.size() <= 3, "at most three lines of marks");
    prüfeSpeichern(datei, {});
    prüfeSpeichern(datei, {.dezimal = u',', .tausender = u'.'});
    return 0;
}
