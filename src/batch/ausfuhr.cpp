#include "batch/ausfuhr.h"

#include "collection/tabellenausfuhr.h"
#include "evaluation/rassen.h"
#include "results/ausfuhr.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"

#include <functional>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Gives all examinations to @p nimm, which returns what could not be read of one. False when one
/// was left out.
bool gehDurch(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung,
              const std::function<QStringList(const Ergebnissatz&)>& nimm) {
    const Texte& t = umgebung.texte;
    const Ergebnistabelle tabelle(befehl.datenbank);
    bool vollständig = true;
    tabelle.sätze(
        tabelle.zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}),
        [&](const Ergebnissatz& satz) {
            const QStringList offen = nimm(satz);
            if (!offen.isEmpty()) {
                melde(umgebung, befehl.datenbank,
                      t(Meldung::UntersuchungTeilweise)
                          .arg(satz.U_NR.trimmed(), spaltennamen(t, offen)));
            }
            return true;
        },
        [&](const QString& nummer) {
            vollständig = false;
            melde(umgebung, befehl.datenbank, t(Meldung::UntersuchungZuGroß).arg(nummer));
        });
    return vollständig;
}

Status schreibeTabellen(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung,
                        const Satzumgebung& satzumgebung) {
    try {
        Ergebnistabelle(befehl.datenbank).öffneProbeweise();
        const bool sqlite = befehl.tabellen.endsWith(u".sqlite"_s, Qt::CaseInsensitive);
        if (sqlite && wäreErgebnisdatei(umgebung, befehl.tabellen)) {
            return Status::NichtLesbar;
        }
        const auto ziel = sqlite ? sqliteziel(befehl.tabellen) : csvziel(befehl.tabellen);
        Tabellenausfuhr ausfuhr(*ziel);
        const bool vollständig = gehDurch(befehl, umgebung, [&](const Ergebnissatz& satz) {
            return ausfuhr.nimm(satz, satzumgebung);
        });
        ziel->schließeAb();
        return vollständig ? Status::Gut : Status::NichtLesbar;
    } catch (const Ausfuhrfehler& fehler) {
        melde(umgebung, fehler.pfad, fehler.grund);
        return Status::NichtLesbar;
    }
}

} // namespace

Status exportiere(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    const Satzumgebung satzumgebung{
        .texte = t, .format = umgebung.format, .rassen = rassenliste(Einstellungen(QString()))};
    try {
        if (!befehl.tabellen.isEmpty()) {
            return schreibeTabellen(befehl, umgebung, satzumgebung);
        }
        Ausfuhr ausfuhr(befehl.art, [&](const QString& bild) {
            return umgebung.bildhöhe(bild, befehl.datenbank);
        });
        const bool vollständig = gehDurch(befehl, umgebung, [&](const Ergebnissatz& satz) {
            return ausfuhr.nimm(satz, satzumgebung);
        });
        for (const QString& flügel : ausfuhr.ohneBildhöhe()) {
            melde(umgebung, befehl.datenbank, t(Meldung::BildhöheUnbekannt).arg(flügel));
        }
        if (!ausfuhr.ohneBildhöhe().isEmpty()) {
            melde(umgebung, befehl.datenbank, t(Meldung::ExportOhneBildhöhe));
            return Status::NichtLesbar;
        }
        const Status geschrieben =
            schreibe(umgebung, befehl.ziel, ausgabetext(umgebung, befehl.ziel, ausfuhr.inhalt()));
        return vollständig ? geschrieben : Status::NichtLesbar;
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(t, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
