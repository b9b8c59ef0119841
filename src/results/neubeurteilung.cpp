#include "results/neubeurteilung.h"

#include "evaluation/standarddatei.h"
#include "evaluation/urteilstext.h"
#include "results/datenbankfehler.h"
#include "results/fluegelsatz.h"

#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString urteilstext(std::optional<bool> urteil, const Texte& texte) {
    return urteil ? texte(urteilswort(*urteil)) : texte(Meldung::NichtBeurteilt);
}

} // namespace

QString urteilszeile(const Neuurteil& urteil, const Texte& texte) {
    QString zeile = urteil.nummer + u": "_s;
    if (!urteil.neu) {
        return zeile + urteil.gründe.join(u"; "_s);
    }
    if (urteil.geändert()) {
        zeile += urteilstext(urteil.bisher, texte) + u" → "_s + urteilstext(urteil.neu, texte);
    } else {
        zeile += texte(Meldung::UrteilBleibt).arg(urteilstext(urteil.neu, texte));
    }
    return urteil.gründe.isEmpty() ? zeile : zeile + u" ("_s + urteil.gründe.join(u"; "_s) + u')';
}

Neubeurteilung::Neubeurteilung(Neubeurteilungsregeln regeln)
    : regeln_(std::move(regeln)) {}

QString Neubeurteilung::grenzen(int rasse) const {
    return standardtext(
        {regeln_.satz.rassen.value(rasse), regeln_.standards.at(static_cast<std::size_t>(rasse))});
}

Neuurteil Neubeurteilung::prüfe(const Ergebnissatz& satz) const {
    const Texte& texte = regeln_.satz.texte;
    const GeleseneUntersuchung gelesen = untersuchungAus(satz, regeln_.satz);
    Neuurteil urteil{
        .nummer = satz.U_NR.trimmed(), .bisher = gelesen.urteil, .neu = {}, .gründe = {}};
    if (!gelesen.nichtGelesen.isEmpty()) {
        // What was not understood could not be stored again.
        urteil.gründe << texte(Meldung::UntersuchungTeilweise)
                             .arg(urteil.nummer, spaltennamen(texte, gelesen.nichtGelesen));
        return urteil;
    }
    Untersuchung untersuchung;
    untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                      gelesen.zusatz);
    const Rassestandard& standard =
        regeln_.standards.at(static_cast<std::size_t>(gelesen.angaben.Rasse));
    const Beurteilung b = urteile(prüfling(untersuchung), standard, regeln_.regeln).beurteilung;
    urteil.neu = b.urteil();
    if (!urteil.neu) {
        urteil.gründe << unbeurteilttext(b, gelesen.angaben.Rassenname, texte);
        return urteil;
    }
    for (const Prüfwert& mangel : b.mängel()) {
        urteil.gründe << mangeltext(mangel, texte, regeln_.satz.format);
    }
    const auto beleg = urteilsbeleg(gelesen.zusatz.Grenzen, standard, gelesen.angaben.Tiere, texte,
                                    regeln_.satz.format);
    urteil.andereGrenzen = beleg && !beleg->abweichungen.isEmpty();
    return urteil;
}

std::optional<Ergebnissatz> Neubeurteilung::neuerSatz(const Ergebnissatz& satz,
                                                      const Neuurteil& urteil) const {
    Gelesen<Beisatz> bei = beiangabenAusSatz(satz.Grafik[3]);
    if (!bei.vollständig || !urteil.neu) {
        return std::nullopt;
    }
    Ergebnissatz neu = satz;
    neu.ERGEBNIS = regeln_.satz.texte(urteilswort(*urteil.neu));
    Untersuchungszusatz& zusatz = bei.inhalt.angaben.zusatz;
    zusatz.Urteil = Ablageurteil::Keines; // the column says it
    zusatz.Grenzen = grenzen(untersuchungAus(satz, regeln_.satz).angaben.Rasse);
    neu.Grafik[3] = beisatz(bei.inhalt.angaben, bei.inhalt.aufnahmen, bei.inhalt.flügelangaben);
    return neu;
}

QString Neubeurteilung::speichere(const Neuurteil& urteil, Ergebnistabelle& tabelle) const {
    const Texte& texte = regeln_.satz.texte;
    if (urteil.nummer.isEmpty()) {
        return texte(Meldung::ZeileOhneNummer);
    }
    try {
        const std::optional<Ergebnissatz> jetzt = tabelle.lade(urteil.nummer);
        const auto neu =
            jetzt && prüfe(*jetzt) == urteil ? neuerSatz(*jetzt, urteil) : std::nullopt;
        return neu && tabelle.ersetze(*neu, *jetzt, std::nullopt)
                   ? QString()
                   : texte(Meldung::ZeileInzwischenGeändert);
    } catch (const Datenbankfehler& fehler) {
        return meldungstext(texte, fehler);
    }
}

} // namespace tarvel
