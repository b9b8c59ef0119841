#pragma once

#include "evaluation/achsen.h"
#include "print/protokolldaten.h"
#include "results/untersuchung.h"

#include <QDate>

#include <functional>
#include <vector>

namespace tarvel {

/// Examinations and what a report of them needs.
struct Protokollprobe {
    Untersuchung untersuchung;
    Rassestandard standard;
    Protokolleinstellungen einstellungen;
    Texte texte{QString()};
    QDate heute{2026, 3, 5};

    Protokollprobe() {
        texte.SpracheDeutsch();
        einstellungen.rassen = {QStringLiteral("Carnica"), QStringLiteral("Mellifera"),
                                QStringLiteral("Ligustica"), QStringLiteral("Carpatica")};
        einstellungen.briefkopf.Name = QStringLiteral("Imkerverband");
        einstellungen.briefkopf.Ort = QStringLiteral("Graz");
        einstellungen.briefkopf.Ikone = Verband::Andere;
        einstellungen.SchriftArt = QStringLiteral("DejaVu Sans");
        Kolonieangaben a;
        a.LV = QStringLiteral("06");
        a.ZNr = QStringLiteral("012");
        a.KNr = QStringLiteral("007");
        a.Jahr = QStringLiteral("2024");
        a.UNr = QStringLiteral("001AB2026");
        a.Volk = QStringLiteral("Lindenvolk");
        a.Name = QStringLiteral("Huber");
        a.Besitzer = QStringLiteral("Steiner");
        a.Begattung = QStringLiteral("Hochtal");
        untersuchung.setzeAngaben(a);
    }

    void setzeTiere(Geschlecht tiere) {
        Kolonieangaben a = untersuchung.angaben();
        a.Tiere = tiere;
        untersuchung.setzeAngaben(a);
        Merkmale m;
        tarvel::setzeTiere(m, tiere);
        untersuchung.setzeMerkmale(m);
    }

    void ändere(const std::function<void(Messreihe&)>& tu) {
        Messreihe reihe = untersuchung.reihe();
        tu(reihe);
        untersuchung.setzeReihe(reihe);
    }

    /// A wing in the middle of a class of the cubital index, with or without the other indices.
    void miss(int klasse, bool alles = true) {
        Indizes indizes;
        indizes.CI = static_cast<float>(CIBeiKlassenlage(klasse + 0.5));
        if (alles) {
            indizes.HI = 1.052F;
            indizes.DV = 0.8F;
        }
        ändere([&](Messreihe& reihe) { reihe.trageEin(reihe.nächsteNummer(), indizes, {}, {}); });
    }

    /// Bees of the first code of each group, some of them of the second.
    void merkmale(int bienen, int zweite, bool ohneHaar = false) {
        Merkmale m = untersuchung.merkmale();
        for (int i = 0; i < bienen; ++i) {
            const Merkmalwahl wahl{i < zweite ? 1 : 0, 0, 0};
            (void)MerkmalÜbernehmen(m, wahl, ohneHaar);
        }
        untersuchung.setzeMerkmale(m);
    }

    [[nodiscard]] Protokolldaten daten() const { return daten(ProtokolltexteStandard(texte)); }
    [[nodiscard]] Protokolldaten daten(const Protokolltexte& wortlaut) const {
        return protokolldaten({.untersuchung = untersuchung,
                               .standard = standard,
                               .einstellungen = einstellungen,
                               .texte = texte,
                               .protokolltexte = wortlaut,
                               .format = {.dezimal = u',', .tausender = u'.'},
                               .heute = heute});
    }
};

inline constexpr Protokollart alleArten[] = {Protokollart::Cubitalindex,
                                             Protokollart::CubitalindexUndKorrelation,
                                             Protokollart::CubitalindexUndDV};

} // namespace tarvel
