// The texts of a row. Input, a line each: options, race, CI, HI_DV, PROZENT, MERKMAL, Grafik1 to 4.
// Options are letters: D drones, h without hair length, "," decimal comma.

#include "evaluation/merkmale.h"
#include "fuzz/fuzz.h"
#include "results/sitzungstext.h"
#include "results/untersuchungssatz.h"

#include <cmath>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

Ergebnissatz satzVon(QByteArrayView rest, bool drohnen, const Texte& texte) {
    Ergebnissatz satz;
    satz.A_D = texte(drohnen ? Text::Drohnen : Text::Arbeiter);
    satz.DATUM = QDate(2025, 5, 17);
    for (QString* text : {&satz.RASSE, &satz.CI, &satz.HI_DV, &satz.PROZENT, &satz.MERKMAL,
                          &satz.Grafik[0], &satz.Grafik[1], &satz.Grafik[2], &satz.Grafik[3]}) {
        *text = QString::fromUtf8(nimmZeile(rest));
    }
    for (const Textspalte& spalte : textspalten()) {
        if ((satz.*spalte.wert).isEmpty()) {
            satz.*spalte.wert = u" "_s; // as the results file gives it
        }
    }
    return satz;
}

Untersuchung untersuchung(const GeleseneUntersuchung& gelesen) {
    Untersuchung u;
    u.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum, gelesen.zusatz);
    return u;
}

void prüfeGrenzen(const GeleseneUntersuchung& gelesen) {
    const Messreihe& reihe = gelesen.reihe;
    verlange(reihe.nummern().size() <= Messreihe::HöchsteFlügelzahl, "at most 200 wings");
    verlange(reihe.messungen().size() <= reihe.nummern().size(), "no points without a line");
    verlange(!gelesen.auflösung || *gelesen.auflösung > 0, "a resolution is above 0");
    for (const int zahl : gelesen.merkmale.Summen) {
        verlange(zahl >= 0 && zahl <= 32767, "numbers of bees are bounded");
    }
}

/// Without what a row does not keep: cubital indices of 0, that body marks were not understood,
/// which storing takes out of it, and the verdict on nothing that could be read.
QByteArray abbildOhneChartwerte(const GeleseneUntersuchung& gelesen, bool beurteilt) {
    Sitzungsstand stand = sitzungsstand(untersuchung(gelesen));
    stand.zusatz.merkmaleUnlesbar = false;
    const Messreihe& reihe = gelesen.reihe;
    if (!beurteilt) {
        stand.zusatz.Urteil = Ablageurteil::Keines;
    }
    std::vector<CiZeile> ci = reihe.ciZeilen();
    std::erase_if(ci, [](const CiZeile& z) { return getippteZahl(z.wert) == 0.0; });
    stand.reihe.stelleHer(ci, reihe.hiDvZeilen(), {}, reihe.messungen(), reihe.flügelangaben());
    return untersuchungszeilen(stand);
}

/// A row keeps seven digits of them, no cubital index of 0 and no shift beside a hantel index of 0.
void prüfeChartwerte(const Messreihe& vorher, const Messreihe& nachher) {
    const auto prüfe = [](float v, float n) {
        verlange(std::abs(v - n) <= std::abs(v) * 1e-6F, "chart values are kept by storing");
    };
    for (const int nummer : vorher.nummern()) {
        const Chartwerte& v = vorher.chartwerte(nummer);
        const Chartwerte& n = nachher.chartwerte(nummer);
        prüfe(v.HI, n.HI);
        if (v.CI != 0) {
            prüfe(v.CI, n.CI);
        }
        if (v.HI != 0) {
            prüfe(v.DV, n.DV);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const Texte texte{QString()};
    QByteArrayView rest = eingabe(daten, größe);
    const QByteArrayView wahl = nimmZeile(rest);
    const Zahlenformat komma{.dezimal = u',', .tausender = u'.'};
    const Satzumgebung umgebung{texte,
                                wahl.contains(',') ? komma : Zahlenformat{},
                                {u"Carnica"_s, u"Mellifera"_s, u"Ligustica"_s, u"Vierte"_s},
                                wahl.contains('h')};
    const auto speichere = [&umgebung](const GeleseneUntersuchung& gelesen) {
        return satzAus(untersuchung(gelesen), gelesen.urteil, gelesen.auflösung.value_or(1200),
                       QDate(2025, 6, 1), umgebung);
    };

    const auto gelesen = untersuchungAus(satzVon(rest, wahl.contains('D'), texte), umgebung);
    prüfeGrenzen(gelesen);
    const Ergebnissatz gespeichert = speichere(gelesen);
    const auto wieder = untersuchungAus(gespeichert, umgebung);
    verlange(gespeichert.PROZENT.size() <= 70, "the summary fits its column");
    verlange(wieder.nichtGelesen.isEmpty(), "what is stored can be read");
    const bool beurteilt = !unbeurteilt(gespeichert);
    verlangeGleich(abbildOhneChartwerte(gelesen, beurteilt),
                   abbildOhneChartwerte(wieder, beurteilt), "what was read is kept by storing");
    prüfeChartwerte(gelesen.reihe, wieder.reihe);
    verlange(!beurteilt || speichere(wieder) == gespeichert, "storing again changes nothing");
    return 0;
}
