#include "evaluation/kriterientabelle.h"

#include "evaluation/urteilstext.h"
#include "measure/indexmuster.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const QString Strich = u"–"_s;

class Tabelle {
public:
    Tabelle(const Prüfling& prüfling, const Urteil& urteil, const Kriterienworte& worte)
        : prüfling_(prüfling)
        , urteil_(urteil)
        , w_(worte) {}

    std::vector<Kriterienzeile> zeilen() {
        std::optional<Merkmalgruppe> fehlende;
        for (const Kriterium& k : kriterien(prüfling_, urteil_)) {
            const auto gruppe = gruppeVon(k.prüfwert);
            mitMittelCI_ = mitMittelCI_ || k.prüfwert.art == Prüfung::Mittelwert;
            if (!gruppe || gemessen(*gruppe)) {
                zeilen_.push_back(zeile(k, gruppe));
            } else if (fehlende != gruppe) {
                fehlende = gruppe;
                Kriterienzeile keine;
                keine.spalten.fill(Strich);
                keine.spalten[0] = gruppenname(*gruppe);
                keine.spalten[1] = w_.nichtGemessen;
                keine.blass = true;
                zeilen_.push_back(std::move(keine));
            }
        }
        if (!mitMittelCI_) {
            mittel(w_.CI, &Chartwerte::CI, muster::CI);
        }
        mittel(w_.HI, &Chartwerte::HI, muster::HI);
        mittel(w_.DV, &Chartwerte::DV, muster::DV);
        return std::move(zeilen_);
    }

private:
    /// A mean that nothing limits, with where that of the colony lies.
    void mittel(const QString& index, float Chartwerte::*wert, QStringView muster) {
        const auto angabe = mittelangabe(prüfling_.reihe, wert);
        if (!angabe) {
            return;
        }
        Kriterienzeile zeile;
        zeile.spalten.fill(Strich);
        auto& [name, gemessen, _, abstand, bienen, bereich, sicher] = zeile.spalten;
        name = w_.mittelwert + u' ' + index;
        gemessen = Format(angabe->kennzahlen.mittelwert, muster, w_.format);
        bienen = QString::number(angabe->kennzahlen.anzahl);
        bereich = bereichstext(angabe->bereich, muster, {});
        zeilen_.push_back(std::move(zeile));
    }

    [[nodiscard]] QString bereichstext(const std::optional<Vertrauensintervall>& bereich,
                                       QStringView muster, const QString& einheit) const {
        // A dash beside a minus could not be read.
        return bereich ? Format(bereich->von, muster, w_.format) +
                             (bereich->von < 0 ? u" … "_s : u"–"_s) +
                             Format(bereich->bis, muster, w_.format) + einheit
                       : Strich;
    }

    [[nodiscard]] std::optional<Merkmalgruppe> gruppeVon(const Prüfwert& wert) const {
        if (wert.art == Prüfung::Merkmal) {
            for (const Merkmalgruppe gruppe : merkmalgruppen(prüfling_.tiere)) {
                if (enthält(gruppe, wert.name)) {
                    return gruppe;
                }
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] bool enthält(Merkmalgruppe gruppe, const QString& code) const {
        const auto codes = merkmalcodes(prüfling_.tiere, gruppe);
        return std::any_of(codes.begin(), codes.end(),
                           [&code](const Merkmalcode& c) { return c.code == code; });
    }

    /// A group in which no code occurs was left out, such as the hair length.
    [[nodiscard]] bool gemessen(Merkmalgruppe gruppe) const {
        const auto& werte = urteil_.beurteilung.werte;
        return urteil_.merkmale.Fehler ||
               std::any_of(werte.begin(), werte.end(), [&](const Prüfwert& wert) {
                   return wert.art == Prüfung::Merkmal && wert.gemessen.value_or(0) > 0 &&
                          enthält(gruppe, wert.name);
               });
    }

    [[nodiscard]] QString gruppenname(Merkmalgruppe gruppe) const {
        switch (gruppe) {
        case Merkmalgruppe::HaarLänge:
            return w_.haarlänge;
        case Merkmalgruppe::Filz:
            return w_.filz;
        case Merkmalgruppe::Haarfarbe:
            return w_.haarfarbe;
        case Merkmalgruppe::Panzer:
            break;
        }
        return w_.panzer;
    }

    [[nodiscard]] QString name(const Prüfwert& wert, std::optional<Merkmalgruppe> gruppe) const {
        switch (wert.art) {
        case Prüfung::Mittelwert:
            return w_.mittelwert + u' ' + w_.CI;
        case Prüfung::Klassen:
            return w_.klasse + u' ' + klassenbereichtext(wert.bereich);
        case Prüfung::Nebengipfel:
            return w_.nebengipfel + u' ' + klassenbereichtext(wert.bereich);
        case Prüfung::Merkmal:
            break;
        }
        return gruppe ? gruppenname(*gruppe) + u' ' + wert.name : wert.name;
    }

    [[nodiscard]] QString ergebnis(const Kriterium& k) const {
        const Texte& t = w_.texte;
        switch (k.gewissheit) {
        case Gewissheit::NichtGemessen:
        case Gewissheit::OhneStreuung:
            break;
        case Gewissheit::ImmerErfüllt:
            return t(Meldung::ErgebnisImmer);
        case Gewissheit::Sicher:
            return t(Meldung::ErgebnisSicher);
        case Gewissheit::Offen:
            return !k.festAb    ? t(Meldung::ErgebnisOffen)
                   : w_.weitere ? t(Meldung::ErgebnisSicherMit).arg(*k.festAb - k.gesamt)
                                : t(Meldung::ErgebnisSicherAb).arg(*k.festAb);
        }
        return Strich;
    }

    [[nodiscard]] Kriterienzeile zeile(const Kriterium& k,
                                       std::optional<Merkmalgruppe> gruppe) const {
        const Prüfwert& w = k.prüfwert;
        const bool mittel = w.art == Prüfung::Mittelwert;
        const QString einheit =
            w.art == Prüfung::Merkmal || w.art == Prüfung::Klassen ? u" %"_s : QString();
        const QStringView muster = mittel ? muster::CI : u"0";
        Kriterienzeile zeile{
            {name(w, gruppe)}, w.fett, k.gewissheit == Gewissheit::ImmerErfüllt, k.prüfwert};
        auto& [_, gemessen, erlaubt, abstand, bienen, bereich, sicher] = zeile.spalten;
        erlaubt = (w.höchstens ? u"≤ "_s : u"≥ "_s) + zahltext(w.erlaubt, w_.format) + einheit;
        const std::optional<double> rest = k.abstand();
        if (!rest) {
            gemessen = w_.nichtGemessen;
            abstand = bienen = bereich = sicher = Strich;
            if (w.art == Prüfung::Nebengipfel) {
                erlaubt = Strich; // its limit are the classes beside it
            }
            return zeile;
        }
        constexpr double Rundung = 0.005;
        gemessen =
            mittel ? mitteltext(w, w_.format) : Format(*w.gemessen, muster, w_.format) + einheit;
        abstand =
            (*rest > 0   ? u"+"_s
             : *rest < 0 ? u"−"_s
                         : QString()) +
            // As exactly as what was measured: a failed one is not short of nothing.
            (mittel ? Format(std::abs(*rest),
                             w.fett && std::abs(*rest) <= Rundung ? QStringView(u"0.0000") : muster,
                             w_.format)
                    : zahltext(std::abs(*rest), w_.format));
        bienen = mittel ? QString::number(k.anzahl)
                        : w_.texte(Meldung::AnzahlVon).arg(k.anzahl).arg(k.gesamt);
        if (w_.merkmaleAlsZahl && w.art == Prüfung::Merkmal) {
            gemessen = std::exchange(bienen, QString::number(k.gesamt));
        }
        bereich = bereichstext(k.bereich, muster, einheit);
        sicher = ergebnis(k);
        return zeile;
    }

    const Prüfling& prüfling_;
    const Urteil& urteil_;
    const Kriterienworte& w_;
    std::vector<Kriterienzeile> zeilen_;
    bool mitMittelCI_ = false; ///< the standard limits it
};

} // namespace

std::array<QString, Kriterienspaltenzahl> kriterienspalten(const Texte& texte) {
    return {texte(Meldung::SpalteKriterium), texte(Meldung::SpalteGemessen),
            texte(Meldung::SpalteErlaubt),   texte(Meldung::SpalteAbstand),
            texte(Meldung::SpalteBienen),    texte(Meldung::SpalteBereich),
            texte(Meldung::SpalteErgebnis)};
}

std::vector<Kriterienzeile> kriterientabelle(const Prüfling& prüfling, const Urteil& urteil,
                                             const Kriterienworte& worte) {
    return urteil.beurteilung.wirdBeurteilt() ? Tabelle(prüfling, urteil, worte).zeilen()
                                              : std::vector<Kriterienzeile>();
}

} // namespace tarvel
