#include "app/austausch.h"

#include "evaluation/rassen.h"
#include "lang/zielwahl.h"
#include "measure/aufloesung.h"
#include "measure/bildhoehe.h"
#include "platform/dateiausgabe.h"
#include "platform/fortschritt.h"
#include "results/ausfuhr.h"
#include "results/datenbankfehler.h"
#include "results/einfuhr.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// "alt/7.Bee – nicht gespeichert. Zeile 16: …"
QString zeile(const QString& datei, const Einfuhrbericht& bericht, const Texte& texte) {
    QString zeile =
        QDir::toNativeSeparators(datei) + u" – "_s +
        (bericht.nummer.isEmpty() ? texte(Meldung::ImportAbgelehnt)
                                  : texte(Meldung::ImportGespeichertAls).arg(bericht.nummer)) +
        u'.';
    for (const Einfuhrbericht::Hinweis& hinweis : bericht.hinweise) {
        zeile += u' ' +
                 (hinweis.zeile
                      ? texte(Meldung::LeseZeile).arg(QString::number(*hinweis.zeile), hinweis.text)
                      : hinweis.text);
    }
    return zeile;
}

Satzumgebung satzumgebung(const Umgebung& umgebung) {
    return {.texte = umgebung.texte,
            .format = umgebung.format,
            .rassen = rassenliste(umgebung.einstellungen),
            .OhneHaarlänge = umgebung.einstellungen.schalter(Einstellung::OhneHaarlänge)};
}

/// The open examination, as it would be stored.
Ausfuhr ausfuhr(Ausfuhrart art, const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz) {
    Ausfuhr ausfuhr(art, [&arbeitsplatz](const QString& bild) {
        return bildhöhe(bild, arbeitsplatz.ablage().DatenbankPfad());
    });
    const Satzumgebung satz = satzumgebung(umgebung);
    const Ablagestand stand = arbeitsplatz.ablagestand();
    (void)ausfuhr.nimm(satzAus(arbeitsplatz.untersuchung(), stand.urteil, stand.auflösung,
                               umgebung.uhr.now().date(), satz),
                       satz);
    return ausfuhr;
}

} // namespace

Austausch::Austausch(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz) {}

QString Austausch::ordner() const {
    const QString ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    return ordner.isEmpty() ? arbeitsplatz_.ablage().dokumente() : ordner;
}

Satzumgebung Austausch::satzumgebung() const {
    return tarvel::satzumgebung(umgebung_);
}

QByteArray flügeltabelle(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz) {
    return ausfuhr(Ausfuhrart::Flügel, umgebung, arbeitsplatz).inhalt();
}

void Austausch::melde(const QString& titel, const QString& text) const {
    umgebung_.dialoge.meldung(titel, text, Meldungsart::Ausruf);
}

QString Austausch::importiere(QWidget* fenster, const QStringList& dateien) const {
    const Texte& t = umgebung_.texte;
    const QString titel = t(Text::Importieren);
    if (arbeitsplatz_.ablage().DatenbankPfad().isEmpty()) {
        melde(titel, t(Meldung::DatenbankNichtGewählt));
        return {};
    }
    const Einstellungen& e = umgebung_.einstellungen;
    const Satzumgebung satz = satzumgebung();
    const int rasse =
        std::clamp<int>(e.zahl(Einstellung::Rasse), 0, static_cast<int>(satz.rassen.size()) - 1);
    const qsizetype zahl = dateien.size();
    qsizetype gespeichert = 0;
    QStringList hinweise;
    try {
        // One that has gone meanwhile is not made anew behind the user's back.
        Ergebnistabelle(arbeitsplatz_.ablage().DatenbankPfad()).öffneProbeweise();
        Einfuhr einfuhr(arbeitsplatz_.ablage().DatenbankPfad(),
                        {.satz = satz,
                         .heute = umgebung_.uhr.now().date(),
                         .kurzzeichen = e.text(Einstellung::Kurzzeichen),
                         .auflösung = scannerauflösung(e.zahl(Einstellung::ScannMessung)),
                         .rasse = rasse,
                         .standard = ladeRassestandard(rasse + 1, e),
                         .regeln = ladeUrteilsregeln(e)});
        Fortschritt fortschritt(fenster, titel, t(Text::Abbrechen), static_cast<int>(zahl));
        for (qsizetype i = 0; i < zahl; ++i) {
            const QString stand =
                t(Meldung::ImportFortschritt).arg(QString::number(i + 1), QString::number(zahl));
            if (!fortschritt.weiter(static_cast<int>(i), stand)) {
                break;
            }
            const Einfuhrbericht bericht = einfuhr.nimm(dateien[i]);
            gespeichert += bericht.nummer.isEmpty() ? 0 : 1;
            if (!bericht.hinweise.empty()) {
                hinweise << zeile(dateien[i], bericht, t);
            }
        }
    } catch (const Datenbankfehler& fehler) {
        melde(titel, meldungstext(t, fehler));
        return {};
    }
    QString fertig =
        t(Meldung::ImportFertig).arg(QString::number(gespeichert), QString::number(zahl));
    if (!hinweise.isEmpty()) {
        umgebung_.dialoge.bericht(titel, fertig + u'\n' + t(Meldung::ImportHinweise), hinweise);
    }
    return fertig;
}

QString Austausch::importiereOrdner(QWidget* fenster, const QString& ordner) const {
    const QDir verzeichnis(ordner);
    QStringList dateien;
    for (const QString& name : verzeichnis.entryList({u"*.bee"_s}, QDir::Files, QDir::Name)) {
        dateien << verzeichnis.filePath(name);
    }
    if (dateien.isEmpty()) {
        const Texte& t = umgebung_.texte;
        melde(t(Meldung::ImportOrdner),
              t(Meldung::ImportOrdnerLeer).arg(QDir::toNativeSeparators(ordner)));
        return {};
    }
    return importiere(fenster, dateien);
}

QString Austausch::exportiere() const {
    const Texte& t = umgebung_.texte;
    const QString titel = t(Meldung::Exportieren);
    const QString name = alsDateiname(arbeitsplatz_.untersuchung().angaben().UNr);
    const QString tps = u".tps"_s;
    const QString ziel = wähleZiel(
        t, umgebung_.dialoge,
        {.titel = titel,
         .vorschlag =
             QDir(ordner()).filePath((name.isEmpty() ? t(Text::Untersuchung) : name) + u".csv"_s),
         .muster =
             t(Meldung::CsvDateien) + u" (*.csv);;"_s + t(Meldung::TpsDateien) + u" (*.tps)"_s,
         .endungen = {u".csv"_s, tps}});
    if (ziel.isEmpty()) {
        return {};
    }
    const bool alsTps = ziel.endsWith(tps, Qt::CaseInsensitive);
    const Ausfuhr ausfuhr =
        tarvel::ausfuhr(alsTps ? Ausfuhrart::Tps : Ausfuhrart::Flügel, umgebung_, arbeitsplatz_);
    if (const QStringList& flügel = ausfuhr.ohneBildhöhe(); !flügel.isEmpty()) {
        umgebung_.dialoge.bericht(titel, t(Meldung::ExportOhneBildhöhe), flügel);
        return {};
    }
    if (ausfuhr.inhalt().isEmpty()) {
        melde(titel, t(Meldung::ExportOhnePunkte));
        return {};
    }
    const QString pfad = QDir::toNativeSeparators(ziel);
    if (const std::optional<QString> grund = schreibeDatei(ziel, ausfuhr.inhalt())) {
        melde(titel, nichtGeschrieben(t, ziel, *grund));
        return {};
    }
    return t(Meldung::DateiGeschrieben).arg(pfad);
}

} // namespace tarvel
