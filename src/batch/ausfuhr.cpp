#include "batch/ausfuhr.h"

#include "evaluation/rassen.h"
#include "results/ausfuhr.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"

namespace tarvel {

using namespace Qt::StringLiterals;

Status exportiere(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    const Satzumgebung satzumgebung{
        .texte = t, .format = umgebung.format, .rassen = rassenliste(Einstellungen(QString()))};
    try {
        const Ergebnistabelle tabelle(befehl.datenbank);
        Ausfuhr ausfuhr(befehl.art, [&](const QString& bild) {
            return umgebung.bildhöhe(bild, befehl.datenbank);
        });
        bool vollständig = true;
        tabelle.sätze(
            tabelle.zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}),
            [&](const Ergebnissatz& satz) {
                const QStringList offen = ausfuhr.nimm(satz, satzumgebung);
                if (!offen.isEmpty()) {
                    melde(umgebung, befehl.datenbank,
                          t(Meldung::UntersuchungTeilweise)
                              .arg(satz.U_NR.trimmed(), offen.join(u", "_s)));
                }
                return true;
            },
            [&](const QString& nummer) {
                vollständig = false;
                melde(umgebung, befehl.datenbank, t(Meldung::UntersuchungZuGroß).arg(nummer));
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
