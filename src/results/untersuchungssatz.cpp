#include "results/untersuchungssatz.h"

#include "evaluation/rassen.h"
#include "measure/indizes.h"
#include "results/fluegelsatz.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// A text field of the main window and its column.
struct Textfeld {
    QString Ergebnissatz::*spalte;
    QString Kolonieangaben::*wert;
};

constexpr std::array Textfelder{Textfeld{&Ergebnissatz::U_NR, &Kolonieangaben::UNr},
                                Textfeld{&Ergebnissatz::ZB_NR, &Kolonieangaben::KNr},
                                Textfeld{&Ergebnissatz::Z_NAME, &Kolonieangaben::Name},
                                Textfeld{&Ergebnissatz::B_NAME, &Kolonieangaben::Besitzer},
                                Textfeld{&Ergebnissatz::VATER, &Kolonieangaben::Begattung},
                                Textfeld{&Ergebnissatz::VOLK, &Kolonieangaben::Volk}};

bool gleichesWort(QStringView a, QStringView b) {
    return a.trimmed().compare(b.trimmed(), Qt::CaseInsensitive) == 0;
}

void ersetzeLeere(QString& text) {
    if (text.isEmpty()) {
        text = u" "_s;
    }
}

int breite(QString Ergebnissatz::*spalte) {
    const auto spalten = textspalten();
    const auto stelle = std::find_if(spalten.begin(), spalten.end(),
                                     [spalte](const Textspalte& s) { return s.wert == spalte; });
    return stelle == spalten.end() ? 0 : stelle->breite;
}

/// The summary for its column. Typed numbers whose groups contradict each other can make shares of
/// thousands of percent; such a summary gives way to the number of bees, since nobody could find
/// the field that is too long.
QString prozentspalte(const Merkmalauswertung& marken) {
    const QString feld = prozentfeld(marken);
    return feld.size() <= breite(&Ergebnissatz::PROZENT) ? feld : QString::number(marken.Bienen);
}

// --- Reading

struct Rassenwahl {
    int position = 0;
    QString fremderName;
};

Rassenwahl rasseAus(const QString& name, const QStringList& rassen) {
    const auto stelle = std::find_if(rassen.begin(), rassen.end(),
                                     [&name](const QString& r) { return gleichesWort(r, name); });
    if (stelle != rassen.end()) {
        return {static_cast<int>(stelle - rassen.begin()), {}};
    }
    Rassenwahl fremd{Rassenzahl - 1, name};
    ersetzeLeere(fremd.fremderName);
    return fremd;
}

/// Whether @p wert shows as @p text, a number of a line with its decimals.
bool zeigtAls(float wert, QStringView text) {
    const std::optional<double> zahl = getippteZahl(text);
    if (!zahl || !std::isfinite(wert)) {
        return false;
    }
    const qsizetype trenner = std::max(text.lastIndexOf(u'.'), text.lastIndexOf(u','));
    const auto stellen = trenner < 0 ? 0.0 : static_cast<double>(text.size() - 1 - trenner);
    // The value itself has seven digits.
    const double spielraum = 0.5 * std::pow(10.0, -stellen) + std::abs(*zahl) * 1e-6;
    return std::abs(static_cast<double>(wert) - *zahl) <= spielraum;
}

/// The most exact value that goes with the rest of the row. Lines decide, as people see them; the
/// chart record has seven digits of the value, and computing it from the points has them all.
float besterWert(QStringView zeilenwert, float gespeichert, std::optional<float> gerechnet) {
    const bool gespeichertGilt =
        gespeichert != Chartwerte::KeinWert && zeigtAls(gespeichert, zeilenwert);
    const bool gerechnetGilt = gerechnet && zeigtAls(*gerechnet, zeilenwert);
    if (!gespeichertGilt) {
        return gerechnetGilt ? *gerechnet : Chartwerte::KeinWert;
    }
    const Zahlenformat format;
    return gerechnetGilt && zahltext(*gerechnet, format) == zahltext(gespeichert, format)
               ? *gerechnet
               : gespeichert;
}

/// Reads one row. Each step names the columns that it could not understand.
class Satzleser {
public:
    Satzleser(const Ergebnissatz& satz, const Satzumgebung& umgebung)
        : satz_(satz)
        , umgebung_(umgebung) {}

    GeleseneUntersuchung lies() {
        liesAngaben();
        const Gelesen<Beisatz> bei = beiangabenAusSatz(satz_.Grafik[3]);
        prüfe(u"Grafik4", bei.vollständig);
        gelesen_.angaben.Jahr = bei.inhalt.angaben.Jahr;
        gelesen_.angaben.LV = bei.inhalt.angaben.LV;
        gelesen_.angaben.ZNr = bei.inhalt.angaben.ZNr;
        gelesen_.zusatz = bei.inhalt.angaben.zusatz;
        liesReihe(bei.inhalt.aufnahmen, bei.inhalt.flügelangaben);
        liesMerkmale(bei.inhalt.angaben.merkmale);
        liesUrteil();
        return std::move(gelesen_);
    }

private:
    void prüfe(QStringView spalte, bool verstanden) {
        if (!verstanden) {
            gelesen_.nichtGelesen += spalte.toString();
        }
    }

    void liesAngaben() {
        for (const Textfeld& feld : Textfelder) {
            gelesen_.angaben.*feld.wert = satz_.*feld.spalte;
        }
        const bool drohnen = bedeutet(satz_.A_D, Text::Drohnen);
        prüfe(u"A_D", drohnen || bedeutet(satz_.A_D, Text::Arbeiter));
        gelesen_.angaben.Tiere = drohnen ? Geschlecht::Drohnen : Geschlecht::Arbeiterinnen;
        gelesen_.datum = satz_.DATUM;
        gelesen_.nichtGelesen += satz_.unlesbar;
        const Rassenwahl rasse = rasseAus(satz_.RASSE, umgebung_.rassen);
        gelesen_.angaben.Rasse = rasse.position;
        gelesen_.angaben.Rassenname = rasse.fremderName;
        if (!rasse.fremderName.isEmpty()) {
            gelesen_.rasse = rasse.fremderName;
        }
    }

    void liesUrteil() {
        Ablageurteil& urteil = gelesen_.zusatz.Urteil;
        if (unbeurteilt(satz_)) {
            urteil = Ablageurteil::Unbeurteilt;
        } else {
            gelesen_.urteil = bedeutet(satz_.ERGEBNIS, Text::Ja);
            urteil = *gelesen_.urteil ? Ablageurteil::Ja : Ablageurteil::Nein;
        }
    }

    void liesReihe(std::map<int, Flügelmessung> messungen, std::map<int, Flügelangaben> angaben) {
        const auto ci = ciAusSatz(satz_.CI);
        prüfe(u"CI", ci.vollständig);
        const auto hiDv = hiDvAusSatz(satz_.HI_DV);
        prüfe(u"HI_DV", hiDv.vollständig);
        const auto ciHi = chartAusSatz(satz_.Grafik[0]);
        prüfe(u"Grafik1", ciHi.vollständig);
        const auto hiUndDv = chartAusSatz(satz_.Grafik[1]);
        prüfe(u"Grafik2", hiUndDv.vollständig);
        // Points without a picture size, and the reverse, mean nothing.
        const auto punkte = punkteAusSatz(satz_.Grafik[2]);
        prüfe(u"Grafik3", punkte.vollständig);
        (void)ergänzePunkte(messungen, punkte.inhalt);

        std::map<int, Chartwerte> werte;
        for (const auto& [nummer, paar] : ciHi.inhalt.werte) {
            werte[nummer].CI = paar.erster;
            werte[nummer].HI = paar.zweiter;
        }
        for (const auto& [nummer, paar] : hiUndDv.inhalt.werte) {
            werte[nummer].HI = paar.erster;
            werte[nummer].DV = paar.zweiter;
        }
        const auto gerechnet = [&messungen](qint16 nummer) {
            const auto stelle = messungen.find(nummer);
            return stelle == messungen.end()
                       ? Indizes{}
                       : berechneIndizes(stelle->second.punkte, stelle->second.messart,
                                         stelle->second.aufnahme);
        };
        for (const CiZeile& zeile : ci.inhalt) {
            Chartwerte& w = werte[zeile.nummer];
            w.CI = besterWert(zeile.wert, w.CI, gerechnet(zeile.nummer).CI);
        }
        for (const HiDvZeile& zeile : hiDv.inhalt) {
            Chartwerte& w = werte[zeile.nummer];
            const Indizes indizes = gerechnet(zeile.nummer);
            w.HI = besterWert(zeile.hi, w.HI, indizes.HI);
            w.DV = besterWert(zeile.dv, w.DV, indizes.DV);
        }
        gelesen_.reihe.stelleHer(ci.inhalt, hiDv.inhalt, werte, std::move(messungen),
                                 std::move(angaben));
        // The header of a row may be that of another scan.
        gelesen_.auflösung = gelesen_.reihe.auflösung();
        if (!gelesen_.auflösung) {
            gelesen_.auflösung =
                ciHi.inhalt.auflösung ? ciHi.inhalt.auflösung : hiUndDv.inhalt.auflösung;
        }
        gelesen_.reihe.alsUnverändertMerken();
    }

    /// @p genau the marks as they were entered. They count when the record says the same, so that a
    /// record changed elsewhere is not undone.
    void liesMerkmale(std::optional<Merkmale> genau) {
        const Geschlecht tiere = gelesen_.angaben.Tiere;
        if (genau) {
            genau->Tiere = tiere;
            const QString satz = MerkmaleAuswerten(*genau, umgebung_.OhneHaarlänge).Satz;
            if (satz.trimmed() == satz_.MERKMAL.trimmed() && zeilenGültig(*genau)) {
                gelesen_.merkmale = *genau;
                return;
            }
        }
        constexpr qsizetype LängsterSatz = 100'000; // of 999 bees, with much to spare
        std::optional<Merkmale> merkmale;
        if (satz_.MERKMAL.size() <= LängsterSatz) {
            merkmale = merkmaleAusSatz(satz_.MERKMAL, satz_.PROZENT, tiere);
        }
        prüfe(u"MERKMAL", merkmale.has_value());
        gelesen_.zusatz.merkmaleUnlesbar = !merkmale;
        if (merkmale) {
            gelesen_.merkmale = *merkmale;
        } else {
            gelesen_.merkmale.Tiere = tiere;
        }
    }

    /// Whether every line is one that taking bees over makes.
    static bool zeilenGültig(const Merkmale& merkmale) {
        constexpr qsizetype Nummernbreite = 3;
        const QSet<QString> enden = zeilenenden(merkmale.Tiere);
        return std::all_of(merkmale.Liste.begin(), merkmale.Liste.end(), [&](QStringView zeile) {
            const QStringView nummer = zeile.first(std::min(Nummernbreite, zeile.size()));
            return nummer.size() == Nummernbreite &&
                   std::all_of(nummer.begin(), nummer.end(),
                               [](QChar c) { return c >= u'0' && c <= u'9'; }) &&
                   enden.contains(zeile.sliced(Nummernbreite).toString());
        });
    }

    /// What can stand behind the number of a bee.
    static QSet<QString> zeilenenden(Geschlecht tiere) {
        constexpr int Knöpfe = 4;
        constexpr qsizetype Nummernbreite = 3;
        QSet<QString> enden;
        for (int i = 0; i < Knöpfe * Knöpfe * Knöpfe; ++i) {
            const Merkmalwahl wahl{i % Knöpfe, i / Knöpfe % Knöpfe, i / (Knöpfe * Knöpfe)};
            for (const bool ohneHaar : {false, true}) {
                Merkmale biene;
                biene.Tiere = tiere;
                if (MerkmalÜbernehmen(biene, wahl, ohneHaar)) {
                    enden += biene.Liste.front().sliced(Nummernbreite);
                }
            }
        }
        return enden;
    }

    const Ergebnissatz& satz_;
    const Satzumgebung& umgebung_;
    GeleseneUntersuchung gelesen_;
};

} // namespace

QString Ergebnissatz::*textspalte(QString Kolonieangaben::*wert) {
    const auto stelle = std::find_if(Textfelder.begin(), Textfelder.end(),
                                     [wert](const Textfeld& f) { return f.wert == wert; });
    return stelle == Textfelder.end() ? &Ergebnissatz::ZB_NR : stelle->spalte;
}

Ergebnissatz satzAus(const Untersuchung& untersuchung, std::optional<bool> urteil, int auflösung,
                     const QDate& heute, const Satzumgebung& umgebung) {
    const Kolonieangaben& angaben = untersuchung.angaben();
    const Messreihe& reihe = untersuchung.reihe();
    const Texte& texte = umgebung.texte;
    const bool drohnen = angaben.Tiere == Geschlecht::Drohnen;
    const Merkmalauswertung marken =
        MerkmaleAuswerten(untersuchung.merkmale(), umgebung.OhneHaarlänge);

    Ergebnissatz satz;
    for (const Textfeld& feld : Textfelder) {
        satz.*feld.spalte = angaben.*feld.wert;
    }
    while (satz.U_NR.endsWith(u' ')) { // nobody sees them, and they would be another number
        satz.U_NR.chop(1);
    }
    satz.A_D = texte(drohnen ? Text::Drohnen : Text::Arbeiter);
    satz.RASSE =
        angaben.Rassenname.isEmpty() ? umgebung.rassen.value(angaben.Rasse) : angaben.Rassenname;
    satz.ERGEBNIS = texte(urteil.value_or(false) ? Text::Ja : Text::Nein);
    const bool neuesDatum = untersuchung.angabenGeändert() || !untersuchung.datum().isValid();
    satz.DATUM = neuesDatum ? heute : untersuchung.datum();
    satz.CI = ciSatz(reihe.ciZeilen());
    satz.HI_DV = hiDvSatz(reihe.hiDvZeilen());
    satz.PROZENT = prozentspalte(marken);
    satz.MERKMAL = marken.Satz;
    Untersuchungszusatz zusatz = untersuchung.zusatz();
    zusatz.Urteil =
        urteil ? Ablageurteil::Keines : Ablageurteil::Unbeurteilt; // else the column says it
    zusatz.merkmaleUnlesbar = false;
    const int dpi = reihe.auflösung().value_or(auflösung);
    satz.Grafik = {
        chartsatzCiHi(reihe, dpi, umgebung.format),
        chartsatzHiDv(reihe, dpi, umgebung.format),
        punktesatz(reihe.messungen()),
        beisatz({angaben.Jahr, angaben.LV, angaben.ZNr, untersuchung.merkmale(), zusatz},
                reihe.messungen(), reihe.flügelangaben()),
    };
    for (const Textspalte& spalte : textspalten()) {
        ersetzeLeere(satz.*spalte.wert);
    }
    for (QString* text : {&satz.CI, &satz.HI_DV, &satz.MERKMAL}) {
        ersetzeLeere(*text);
    }
    return satz;
}

bool unbeurteilt(const Ergebnissatz& satz) {
    const bool leer = satz.CI.trimmed().isEmpty() && satz.HI_DV.trimmed().isEmpty() &&
                      satz.MERKMAL.trimmed().isEmpty();
    // Another program may have changed the word since.
    return leer || (!bedeutet(satz.ERGEBNIS, Text::Ja) &&
                    beiangabenAusSatz(satz.Grafik[3]).inhalt.angaben.zusatz.Urteil ==
                        Ablageurteil::Unbeurteilt);
}

GeleseneUntersuchung untersuchungAus(const Ergebnissatz& satz, const Satzumgebung& umgebung) {
    return Satzleser(satz, umgebung).lies();
}

} // namespace tarvel
