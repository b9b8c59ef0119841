// Judging stored examinations again: the rows that are chosen.

#include "results/db.h"

#include "platform/fortschritt.h"

#include <algorithm>
#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

/// nullopt when the user stopped it.
std::optional<std::vector<Neuurteil>> DB::prüfeNeu(const Neubeurteilung& neubeurteilung,
                                                   QStringList& übergangen) {
    const Texte& texte = umgebung_.texte;
    const std::vector<qint64> ids = gewählteIds();
    const QString zahl = QString::number(ids.size());
    Fortschritt fortschritt(this, texte(Meldung::MenüNeuBeurteilen), texte(Text::Abbrechen),
                            static_cast<int>(ids.size()));
    std::vector<Neuurteil> urteile;
    int schritt = 0;
    bool abgebrochen = false;
    Ergebnistabelle(umgebung_.DatenbankPfad)
        .sätze(
            ids,
            [&](const Ergebnissatz& satz) {
                const QString stand = texte(Meldung::NeuBeurteilenFortschritt)
                                          .arg(QString::number(schritt + 1), zahl);
                abgebrochen = !fortschritt.weiter(schritt++, stand);
                if (!abgebrochen) {
                    urteile.push_back(neubeurteilung.prüfe(satz));
                }
                return !abgebrochen;
            },
            [&](const QString& nummer) {
                ++schritt;
                übergangen << texte(Meldung::UntersuchungZuGroß).arg(nummer);
            });
    return abgebrochen ? std::nullopt : std::optional(urteile);
}

/// The row that the user stops at, and those behind it, stay as they are.
void DB::speichereNeue(const Neubeurteilung& neubeurteilung,
                       const std::vector<Neuurteil>& urteile) {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Meldung::MenüNeuBeurteilen);
    const QString zahl = QString::number(urteile.size());
    auto fortschritt = std::make_unique<Fortschritt>(this, titel, texte(Text::Abbrechen),
                                                     static_cast<int>(urteile.size()));
    Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    QStringList gescheitert;
    int gespeichert = 0;
    for (std::size_t i = 0; i < urteile.size(); ++i) {
        const QString stand =
            texte(Meldung::NeuSpeichernFortschritt).arg(QString::number(i + 1), zahl);
        if (!fortschritt->weiter(static_cast<int>(i), stand)) {
            break;
        }
        if (const QString grund = neubeurteilung.speichere(urteile[i], tabelle); grund.isEmpty()) {
            ++gespeichert;
        } else {
            gescheitert << urteile[i].nummer + u": "_s + grund;
        }
    }
    fortschritt.reset();
    const QString fertig =
        texte(Meldung::NeuBeurteiltFertig).arg(QString::number(gespeichert), zahl);
    if (gescheitert.isEmpty()) {
        umgebung_.dialoge.meldung(titel, fertig, Meldungsart::Hinweis);
    } else {
        umgebung_.dialoge.bericht(titel, fertig + u'\n' + texte(Meldung::ImportHinweise),
                                  gescheitert);
    }
}

void DB::beurteileNeu() {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Meldung::MenüNeuBeurteilen);
    const Neubeurteilung neubeurteilung(umgebung_.neubeurteilung());
    QStringList zeilen;
    std::vector<Neuurteil> zuSpeichern;
    qsizetype geändert = 0;
    try {
        QStringList unbeurteilte;
        const auto urteile = prüfeNeu(neubeurteilung, unbeurteilte);
        if (!urteile) {
            return;
        }
        QStringList bleibende;
        for (const Neuurteil& urteil : *urteile) {
            if (!urteil.neu) {
                unbeurteilte << urteilszeile(urteil, texte);
            } else if (urteil.zuSpeichern()) {
                (urteil.geändert() ? zeilen : bleibende) << urteilszeile(urteil, texte);
                zuSpeichern.push_back(urteil);
            }
        }
        geändert = zeilen.size();
        zeilen << bleibende << unbeurteilte;
        const auto bleiben = static_cast<qsizetype>(urteile->size()) - geändert -
                             std::count_if(urteile->begin(), urteile->end(),
                                           [](const Neuurteil& u) { return !u.neu; });
        if (zuSpeichern.empty()) {
            if (zeilen.isEmpty()) {
                umgebung_.dialoge.meldung(titel, texte(Meldung::NeuBeurteilenNichts),
                                          Meldungsart::Hinweis);
            } else {
                umgebung_.dialoge.bericht(titel,
                                          texte(Meldung::NeuBeurteilenNichts) + u'\n' +
                                              texte(Meldung::ImportHinweise),
                                          zeilen);
            }
            return;
        }
        const Frage frage{.titel = titel,
                          .text = texte(Meldung::NeuBeurteilenFrage)
                                      .arg(QString::number(geändert), QString::number(bleiben),
                                           QString::number(unbeurteilte.size())),
                          .verwirft = true,
                          .ja = texte(Text::MenüSpeichern),
                          .nein = texte(Text::Abbrechen),
                          .zeilen = zeilen};
        if (umgebung_.dialoge.frage(frage) != Antwort::Ja) {
            return;
        }
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return;
    }
    gemerkt_.reset();
    merkeWahl(Nummern::VonAllen); // each of them gets another place
    speichereNeue(neubeurteilung, zuSpeichern);
    zeigeNeu();
}

} // namespace tarvel
