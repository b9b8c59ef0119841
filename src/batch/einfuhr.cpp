#include "batch/einfuhr.h"

#include "evaluation/rassen.h"
#include "measure/aufloesung.h"
#include "results/datenbankfehler.h"
#include "results/einfuhr.h"

#include <QFileInfo>
#include <QIODevice>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Stores one file and tells what became of it. False when it is not stored.
bool nimm(const QString& datei, Einfuhr& einfuhr, const Batchumgebung& umgebung) {
    const std::optional<QByteArray> bytes = liesOderMelde(umgebung, datei);
    if (!bytes) {
        return false;
    }
    const Einfuhrbericht bericht = einfuhr.nimmInhalt(*bytes, QFileInfo(datei).fileName());
    for (const Einfuhrbericht::Hinweis& hinweis : bericht.hinweise) {
        melde(umgebung, datei, hinweis.text, hinweis.zeile);
    }
    if (bericht.nummer.isEmpty()) {
        return false;
    }
    umgebung.ausgabe.write(
        (sichtbar(datei + u": "_s +
                  umgebung.texte(Meldung::UntersuchungGespeichert).arg(bericht.nummer)) +
         u'\n')
            .toUtf8());
    return true;
}

} // namespace

Status importiere(const Einfuhrbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    const auto rasse = wähleRasse(umgebung, *einstellungen, befehl.rasse);
    if (!rasse) {
        return Status::FalscherAufruf;
    }
    try {
        Einfuhr einfuhr(
            befehl.datenbank,
            {.satz = {.texte = umgebung.texte,
                      .format = umgebung.format,
                      .rassen = rassenliste(*einstellungen),
                      .OhneHaarlänge = einstellungen->schalter(Einstellung::OhneHaarlänge)},
             .heute = umgebung.heute,
             .kurzzeichen = einstellungen->text(Einstellung::Kurzzeichen),
             .auflösung = scannerauflösung(einstellungen->zahl(Einstellung::ScannMessung)),
             .rasse = rasse->position,
             .standard = rasse->standard,
             .regeln = ladeUrteilsregeln(*einstellungen),
             .teilweise = befehl.teilweise});
        qsizetype gespeichert = 0;
        for (const QString& datei : befehl.dateien) {
            gespeichert += nimm(datei, einfuhr, umgebung) ? 1 : 0;
        }
        if (gespeichert > 0) {
            sichereTäglich(umgebung, *einstellungen, befehl.datenbank);
        }
        const qsizetype alle = befehl.dateien.size();
        if (alle > 1) {
            umgebung.ausgabe.write((umgebung.texte(Meldung::ImportFertig)
                                        .arg(QString::number(gespeichert), QString::number(alle)) +
                                    u'\n')
                                       .toUtf8());
        }
        return gespeichert == alle ? Status::Gut : Status::NichtLesbar;
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
