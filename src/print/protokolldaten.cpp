#include "print/protokolldaten.h"

#include "evaluation/beurteilung.h"
#include "evaluation/standarddatei.h"
#include "evaluation/urteilstext.h"
#include "measure/indexmuster.h"
#include "measure/reihenmodelle.h"
#include "results/untersuchung.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Whether the date of a report is that of its printing.
bool istHeute(Datumsform form) {
    return form == Datumsform::HeuteLang || form == Datumsform::HeuteKurz;
}

class Zusammenstellung {
public:
    explicit Zusammenstellung(const Protokollquelle& quelle)
        : q_(quelle)
        , p_(quelle.protokolltexte)
        , angaben_(quelle.untersuchung.angaben())
        , urteil_(urteile(prüfling(quelle.untersuchung), quelle.standard,
                          quelle.einstellungen.regeln)) {}

    Protokolldaten daten() {
        d_.einstellungen = q_.einstellungen;
        d_.texte = p_;
        d_.nummer = angaben_.UNr.trimmed();
        d_.titel = p_(Text::MerkmalsuntersuchungNr) + u' ' + d_.nummer;
        diagramme();
        angaben();
        indizes();
        korrelation();
        merkmale();
        urteil();
        kriterien();
        datum();
        fußnoten();
        if (q_.einstellungen.Anhang) {
            const Texte& t = q_.texte;
            d_.anhang = anhang(q_.untersuchung, t, q_.format, q_.bild);
            d_.anhangworte = {t(Meldung::AnhangFlügel), t(Meldung::AnhangBienen),
                              t(Meldung::AnhangSeite), t(Meldung::AnhangErklärung)};
        }
        return std::move(d_);
    }

private:
    /// The race whose standard is judged by. A stored examination may name another.
    [[nodiscard]] QString rasse() const { return q_.einstellungen.rassen.value(angaben_.Rasse); }
    [[nodiscard]] Protokollart art() const { return q_.einstellungen.art; }
    [[nodiscard]] bool fremdeRasse() const {
        return beurteilung_.unbeurteilt == Unbeurteilt::FremdeRasse;
    }

    void diagramme() {
        const Messreihe& reihe = q_.untersuchung.reihe();
        Diagrammworte worte = Diagrammworte::protokoll(q_.texte, p_);
        // The heading above the chart names the index; the charts say what they count.
        worte.cubitalindex = p_(Text::CI) + u": "_s + p_(Text::BienenJeKlasse);
        worte.keineMessung = worte.keineKorrelation = p_(Text::NichtGemessen);
        worte.dvKlassen = p_(Text::DV) + u": "_s + p_(Text::BienenJeKlasse);
        d_.kurven =
            kurvenbild(reihe, q_.standard, angaben_.Tiere, beurteilung_,
                       kurvenform(q_.einstellungen.Kurvenform),
                       art() == Protokollart::CubitalindexUndDV ? ZweiteKurve::Discoidalverschiebung
                                                                : ZweiteKurve::Keine);
        d_.kurven.rasse = rasse();
        d_.kurven.format = q_.format;
        d_.kurven.worte = worte;
        d_.korrel = korrelbild(reihe, q_.standard.linien, angaben_.Tiere, !fremdeRasse());
        d_.korrel.format = q_.format;
        d_.korrel.worte = std::move(worte);
        d_.korrel.worte.cubitalindex = p_(Text::Cubitalindex);
        d_.kurven.mitKennzahlen = d_.korrel.mitKennzahlen = false;
    }

    void angaben() {
        const qsizetype flügel = flügelzahl();
        d_.ausgelassen = ausgelassen(q_.untersuchung.reihe(), q_.texte);
        d_.entstehung = entstehungstext(q_.untersuchung.reihe(), q_.texte);
        const QString bienen =
            QString::number(flügel > 0 ? flügel : static_cast<qsizetype>(merkmale_.Bienen));
        d_.untersucht = bienen + u' ' +
                        (angaben_.Tiere == Geschlecht::Drohnen ? p_(Text::DrohnenUntersucht)
                                                               : p_(Text::ArbeiterinnenUntersucht));
        d_.gemessen = flügel > 0 ? d_.untersucht : QString();
        d_.drohnen = angaben_.Tiere == Geschlecht::Drohnen ? q_.texte(Text::Drohnen) : QString();
        d_.königin = {{p_(Text::Zuchtbuch), zuchtbuchnummer(angaben_), {}},
                      {p_(Text::Züchter), angaben_.Name.trimmed(), {}},
                      {p_(Text::Begattung), angaben_.Begattung.trimmed(), {}}};
        d_.volk = {
            {p_(Text::Volk), angaben_.Volk.trimmed(), {}},
            {p_(Text::BesitzerDesVolkes), angaben_.Besitzer.trimmed(), {}},
            {p_(Text::Rasse), angaben_.Rassenname.isEmpty() ? rasse() : angaben_.Rassenname, {}}};
    }

    [[nodiscard]] int flügelzahl() const {
        return static_cast<int>(std::ssize(q_.untersuchung.reihe().gewertete()));
    }

    /// "3.02 ± 0.31"
    [[nodiscard]] Protokollwert mittelwert(const QString& index, const std::optional<Kennzahlen>& k,
                                           QStringView muster, QStringView streuung) const {
        Protokollwert w{p_(Text::Mittelwert) + u' ' + index, p_(Text::NichtGemessen), {}};
        if (k) {
            w.wert = Format(k->mittelwert, muster, q_.format);
            if (k->standardabweichung) {
                w.wert += u" ± "_s + Format(*k->standardabweichung, streuung, q_.format);
            }
            if (k->anzahl != flügelzahl()) { // else it stands above
                w.zusatz = u"n = %1"_s.arg(k->anzahl);
            }
        }
        return w;
    }

    /// A share with the highest allowed one, which only the judgement asks for.
    [[nodiscard]] Protokollwert anteil(const QString& name, const Prüfwert& prüfwert) const {
        Protokollwert w{name, u"–"_s, {}, prüfwert.fett};
        if (prüfwert.gemessen) {
            w.wert = u"%1 %"_s.arg(*prüfwert.gemessen);
        }
        if (beurteilung_.BewertungAktiv) {
            w.zusatz = u"≤ "_s + zahltext(prüfwert.erlaubt, q_.format) + u" %"_s;
        }
        return w;
    }

    void indizes() {
        d_.indizes = {mittelwert(p_(Text::CI), d_.kurven.CI.kennzahlen, muster::CI, muster::CI)};
        if (art() == Protokollart::CubitalindexUndDV) {
            d_.indizes.push_back(mittelwert(p_(Text::DV), d_.kurven.zweite.kennzahlen, muster::DV,
                                            muster::StreuungDV));
        }
        for (const Prüfwert& w : beurteilung_.werte) {
            if (w.art == Prüfung::Mittelwert && beurteilung_.BewertungAktiv) {
                Protokollwert& mittel = d_.indizes.front();
                mittel.fett = w.fett;
                mittel.zusatz += (mittel.zusatz.isEmpty() ? QString() : u", "_s) +
                                 (w.höchstens ? u"≤ "_s : u"≥ "_s) + zahltext(w.erlaubt, q_.format);
            }
        }
    }

    void korrelation() {
        const Korrelbild& k = d_.korrel;
        d_.korrelation = {mittelwert(p_(Text::HI), k.HI, muster::HI, muster::HI),
                          mittelwert(p_(Text::DV), k.DV, muster::DV, muster::StreuungDV)};
        const auto alle = static_cast<int>(k.flügel.size());
        if (alle > 0 && k.begrenzt) {
            const int innen = k.anteilImBereich();
            const int anzahl = k.anzahlImBereich();
            d_.korrelation.push_back({q_.texte(Meldung::ImVertrauensbereich), u"%1 %"_s.arg(innen),
                                      u"n = %1"_s.arg(anzahl)});
            d_.korrelation.push_back({p_(Text::NichtImVertrauensbereich),
                                      u"%1 %"_s.arg(100 - innen), u"n = %1"_s.arg(alle - anzahl)});
        }
    }

    [[nodiscard]] const QString& gruppenname(Merkmalgruppe gruppe) const {
        switch (gruppe) {
        case Merkmalgruppe::HaarLänge:
            return p_(Text::HaarlängeProtokoll);
        case Merkmalgruppe::Filz:
            return p_(Text::FilzbindenProtokoll);
        case Merkmalgruppe::Haarfarbe:
            return p_(Text::Haarfarbe);
        case Merkmalgruppe::Panzer:
            break;
        }
        return p_(Text::PanzerzeichenProtokoll);
    }

    /// The checks of a group keep the order of the judgement, which is that of the report.
    [[nodiscard]] Merkmalreihe reihe(Merkmalgruppe gruppe) const {
        const auto codes = merkmalcodes(angaben_.Tiere, gruppe);
        Merkmalreihe reihe{gruppenname(gruppe), {}};
        for (const Prüfwert& w : beurteilung_.werte) {
            const bool dabei = w.art == Prüfung::Merkmal &&
                               std::any_of(codes.begin(), codes.end(),
                                           [&w](const Merkmalcode& c) { return c.code == w.name; });
            if (dabei) {
                reihe.werte.push_back(anteil(w.name, w));
                // A group in which no code occurs was left out, such as the hair length.
                reihe.gemessen = reihe.gemessen || merkmale_.Fehler || w.gemessen.value_or(0) > 0;
            }
        }
        return reihe;
    }

    /// "O67 E33": the codes that occur with their shares.
    [[nodiscard]] static QString formel(const Merkmalreihe& reihe) {
        QStringList teile;
        for (const Protokollwert& w : reihe.werte) {
            if (w.wert.front().isDigit() && !w.wert.startsWith(u"0 ")) {
                teile << w.name + w.wert.chopped(2);
            }
        }
        return teile.join(u' ');
    }

    void merkmale() {
        QStringList formeln;
        for (const Merkmalgruppe gruppe : merkmalgruppen(angaben_.Tiere)) {
            d_.merkmale.push_back(reihe(gruppe));
            if (const QString teil = formel(d_.merkmale.back()); !teil.isEmpty()) {
                formeln << teil;
            }
        }
        if (merkmale_.Bienen > 0) {
            d_.merkmalszahl =
                d_.gemessen.isEmpty() ? d_.untersucht : u"n = %1"_s.arg(merkmale_.Bienen);
        }
        d_.nichtGemessen = q_.untersuchung.zusatz().merkmaleUnlesbar
                               ? q_.texte(Meldung::MerkmaleNichtLesbar)
                               : p_(Text::NichtGemessen);
        d_.merkmalsformel = formeln.isEmpty() ? d_.nichtGemessen : formeln.join(u"  ·  "_s);
    }

    void urteil() {
        d_.entspricht = beurteilung_.urteil();
        if (d_.entspricht) {
            d_.urteil = (*d_.entspricht ? p_(Text::EntsprichtDenMerkmalen)
                                        : p_(Text::EntsprichtNichtDenMerkmalen)) +
                        u' ' + rasse();
            d_.vorläufig = beurteilung_.umfang.vorläufig();
            d_.grundlage = grundlagentext(beurteilung_.umfang, q_.texte);
            if (const QString ungeprüft = ungeprüfttext(q_.untersuchung.reihe(), q_.texte);
                !ungeprüft.isEmpty()) {
                d_.grundlage.prepend(ungeprüft + u".  "_s);
            }
            const Untersuchungszusatz& zusatz = q_.untersuchung.zusatz();
            if (zusatz.Urteil == Ablageurteil::Ja || zusatz.Urteil == Ablageurteil::Nein) {
                const Urteilsvergleich v = urteilsvergleich(
                    zusatz.Urteil == Ablageurteil::Ja, d_.entspricht,
                    urteilsbeleg(zusatz.Grenzen, q_.standard, angaben_.Tiere, q_.texte, q_.format),
                    q_.texte);
                d_.grundlage += v.anders ? u".  "_s + v.text : QString();
            }
            for (const Prüfwert& mangel : beurteilung_.mängel()) {
                // A share and its sign stay on one line.
                d_.gründe << mangeltext(mangel, q_.texte, q_.format).replace(u" %"_s, u"\u00a0%"_s);
            }
        } else if (q_.einstellungen.regeln.BewertungAktiv &&
                   beurteilung_.unbeurteilt != Unbeurteilt::NichtsGemessen) {
            d_.urteil = unbeurteilttext(beurteilung_, angaben_.Rassenname, q_.texte);
        }
    }

    void kriterien() {
        if (!beurteilung_.wirdBeurteilt()) {
            return;
        }
        d_.kriterien = {{kriterienspalten(q_.texte)}};
        Kriterienworte worte = kriterienworte(p_, q_.texte, q_.format);
        worte.merkmaleAlsZahl = true; // the shares stand beside their codes
        const auto zeilen = kriterientabelle(prüfling(q_.untersuchung), urteil_, worte);
        d_.kriterien.insert(d_.kriterien.end(), zeilen.begin(), zeilen.end());
        d_.kriterienüberschrift = q_.texte(Meldung::Kriterien);
        d_.kriterienerklärung = q_.texte(Meldung::ErklärungKriterien);
    }

    [[nodiscard]] QString datumAls(Datumsform form) const {
        return datumstext(form, q_.heute, q_.untersuchung.datum(),
                          q_.texte.sprache().value_or(Sprache::Deutsch),
                          q_.texte.paket().value_or(Sprachpaket()).gebiet);
    }

    void datum() {
        const Datumsform form = q_.einstellungen.datum;
        d_.datum = datumAls(form);
        d_.datumswort = q_.texte(istHeute(form)         ? Meldung::DatumAusdruck
                                 : herkunft().isEmpty() ? Meldung::DatumUntersuchung
                                                        : Meldung::DatumÜbernahme);
    }

    /// The resolutions of the wings that count, "1200, 2400"; empty when none is known.
    [[nodiscard]] QString auflösungen() const {
        std::set<int> dpi;
        const Messreihe& reihe = q_.untersuchung.reihe();
        for (const int nummer : reihe.gewertete()) {
            if (const Flügelmessung* messung = reihe.messung(nummer)) {
                dpi.insert(messung->aufnahme.dpi);
            }
        }
        QStringList texte;
        for (const int eine : dpi) {
            texte << QString::number(eine);
        }
        return texte.join(u", "_s);
    }

    [[nodiscard]] const QString& herkunft() const { return q_.untersuchung.zusatz().Herkunft; }

    /// Who measured, as far as that is known, and who prints where it is somebody else.
    [[nodiscard]] QStringList personen() const {
        const QString aussteller = q_.einstellungen.briefkopf.Name.trimmed();
        const QString untersucher = tarvel::untersucher(q_.untersuchung, aussteller);
        QStringList texte;
        if (!untersucher.isEmpty()) {
            texte << q_.texte(Meldung::FußUntersucher).arg(untersucher);
        }
        if (!aussteller.isEmpty() && aussteller != untersucher) {
            texte << q_.texte(Meldung::FußAussteller).arg(aussteller);
        }
        return texte;
    }

    void fußnoten() {
        using M = Meldung;
        const Texte& t = q_.texte;
        auto& [erste, zweite] = d_.fußnoten;
        erste << t(M::DefinitionCI);
        if (art() == Protokollart::CubitalindexUndDV) {
            erste << t(M::DefinitionDV);
        }
        zweite << t(M::DefinitionHI) << t(M::DefinitionDV);
        QStringList gemeinsam{t(M::ErklärungWerte)};
        if (beurteilung_.BewertungAktiv && !beurteilung_.unbeurteilt) {
            gemeinsam << t(M::ErklärungFett)
                      << t(M::FußStandard).arg(standardname(q_.standard, rasse(), t));
            // The defaults are the standard of the first race.
            if (q_.standard.istVorgabe() && angaben_.Rasse != 0) {
                gemeinsam << t(M::FußVorgaben).arg(rasse());
            }
        }
        // The charts show the lines also where nothing is judged by them.
        if (q_.standard.linien.nachKruber() && !fremdeRasse()) {
            gemeinsam << t(M::FußKruber);
        }
        if (const QString dpi = auflösungen(); !dpi.isEmpty()) {
            gemeinsam << t(M::FußAuflösung).arg(dpi);
        }
        gemeinsam << personen();
        const bool übernommen = !herkunft().isEmpty();
        if (übernommen) {
            gemeinsam << t(M::FußHerkunft).arg(herkunft());
        }
        if (istHeute(q_.einstellungen.datum) && q_.untersuchung.datum().isValid()) {
            gemeinsam << t(übernommen ? M::FußÜbernahme : M::FußUntersuchung)
                             .arg(datumAls(Datumsform::ÄnderungLang));
        }
        gemeinsam << u"Tarvel " TARVEL_VERSION "."_s;
        erste << gemeinsam;
        zweite << gemeinsam;
    }

    const Protokollquelle& q_;
    const Protokolltexte& p_;
    const Kolonieangaben& angaben_;
    Urteil urteil_;
    const Merkmalauswertung& merkmale_ = urteil_.merkmale;
    const Beurteilung& beurteilung_ = urteil_.beurteilung;
    Protokolldaten d_;
};

} // namespace

Protokolldaten protokolldaten(const Protokollquelle& quelle) {
    return Zusammenstellung(quelle).daten();
}

} // namespace tarvel
