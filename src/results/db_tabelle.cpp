// The commands of the browser that concern the results file as a whole, and the deletion of a row.

#include "results/db.h"

#include "lang/zielwahl.h"
#include "platform/dateiausgabe.h"
#include "platform/fortschritt.h"
#include "results/ausfuhr.h"
#include "results/ergebnisgitter.h"
#include "results/ergebnismenues.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>
#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

bool istDieselbe(const QString& a, const QString& b) {
    const QString echt = QFileInfo(a).canonicalFilePath();
    return !echt.isEmpty() && echt == QFileInfo(b).canonicalFilePath();
}

constexpr QStringView Endung = u".tdb";

/// A name may hold a point of its own, such as that of a year and month.
QString mitEndung(const QString& pfad) {
    return pfad.endsWith(Endung, Qt::CaseInsensitive) ? pfad : pfad + Endung.toString();
}

} // namespace

void DB::tabellenbefehl(int index) {
    switch (index) {
    case Ergebnismenüs::Öffnen:
        öffneTabelle();
        break;
    case Ergebnismenüs::Neu:
        neueTabelle();
        break;
    case Ergebnismenüs::Sichern:
        sichereTabelle();
        break;
    case Ergebnismenüs::Löschen:
        löscheZeile();
        break;
    case Ergebnismenüs::Exportieren:
        ladeRest();
        exportiere(modell_.ids());
        break;
    case Ergebnismenüs::NeuBeurteilen:
        beurteileNeu();
        break;
    case Ergebnismenüs::NeuLesen:
        zeigeNeu();
        break;
    default:
        sammlungsbefehl(index);
        break;
    }
}

QString DB::dateimuster() const {
    return umgebung_.texte(Text::TarvelErgebnisse) + u" (*.tdb)"_s;
}

QString DB::ordner() const {
    return umgebung_.DatenbankPfad.isEmpty() ? umgebung_.dokumente
                                             : QFileInfo(umgebung_.DatenbankPfad).absolutePath();
}

void DB::öffneTabelle() {
    const QString pfad =
        umgebung_.dialoge.wähleDatei(umgebung_.texte(Text::TabelleÖffnen), ordner(), dateimuster());
    if (!pfad.isEmpty()) {
        nimmTabelle(pfad);
    }
}

void DB::nimmTabelle(const QString& pfad) {
    if (umgebung_.DatenbankWählen(pfad)) {
        umgebung_.DatenbankPfad = pfad;
        DB_Open();
    }
}

void DB::neueTabelle() {
    const Texte& texte = umgebung_.texte;
    const QString gewählt = umgebung_.dialoge.wähleZieldatei(texte(Text::NeueTabelleSpeichern),
                                                             ordner(), dateimuster());
    if (gewählt.isEmpty()) {
        return;
    }
    const QString pfad = mitEndung(gewählt);
    if (QFileInfo::exists(pfad)) {
        umgebung_.dialoge.meldung(texte(Text::NeueTabelle),
                                  texte(Text::DieDatenbank) + u" '"_s + QFileInfo(pfad).fileName() +
                                      u"' "_s + texte(Text::IstBereitsVorhanden),
                                  Meldungsart::Ausruf);
        return;
    }
    try {
        NeueDatenbank(pfad);
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return;
    }
    nimmTabelle(pfad);
}

void DB::sichereTabelle() {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Text::Sicherungskopie);
    const QFileInfo quelle(umgebung_.DatenbankPfad);
    const QString vorschlag =
        quelle.absoluteDir().filePath(quelle.completeBaseName() + u" - "_s + titel + u".tdb"_s);
    const QString ziel = wähleZiel(texte, umgebung_.dialoge,
                                   {.titel = titel,
                                    .vorschlag = vorschlag,
                                    .muster = dateimuster(),
                                    .endungen = {Endung.toString()}});
    if (ziel.isEmpty()) {
        return;
    }
    if (istDieselbe(ziel, umgebung_.DatenbankPfad)) {
        umgebung_.dialoge.meldung(titel, texte(Meldung::SicherungGleicheDatei),
                                  Meldungsart::Ausruf);
        return;
    }
    // A large file takes some seconds; boxes have a pointer of their own.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    std::optional<Datenbankfehler> gescheitert;
    try {
        Ergebnistabelle(umgebung_.DatenbankPfad).sichere(ziel);
    } catch (const Datenbankfehler& fehler) {
        gescheitert = fehler;
    }
    QGuiApplication::restoreOverrideCursor();
    if (gescheitert) {
        meldeFehler(*gescheitert);
        return;
    }
    umgebung_.dialoge.meldung(titel,
                              texte(Meldung::SicherungFertig).arg(QDir::toNativeSeparators(ziel)),
                              Meldungsart::Hinweis);
}

void DB::exportiere(const std::vector<qint64>& ids) {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Meldung::Exportieren);
    const QFileInfo quelle(umgebung_.DatenbankPfad);
    const QString ziel = wähleZiel(
        texte, umgebung_.dialoge,
        {.titel = titel,
         .vorschlag = quelle.absoluteDir().filePath(quelle.completeBaseName() + u".csv"_s),
         .muster = texte(Meldung::CsvDateien) + u" (*.csv)"_s,
         .endungen = {u".csv"_s}});
    if (ziel.isEmpty()) {
        return;
    }
    std::optional<QByteArray> csv;
    try {
        csv = alsCsv(ids);
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
    }
    if (!csv) {
        return;
    }
    const QString pfad = QDir::toNativeSeparators(ziel);
    if (const std::optional<QString> grund = schreibeDatei(ziel, *csv)) {
        umgebung_.dialoge.meldung(titel, nichtGeschrieben(texte, ziel, *grund),
                                  Meldungsart::Ausruf);
    } else {
        umgebung_.dialoge.meldung(titel, texte(Meldung::DateiGeschrieben).arg(pfad),
                                  Meldungsart::Hinweis);
    }
}

/// nullopt when the user stopped it.
std::optional<QByteArray> DB::alsCsv(const std::vector<qint64>& ids) {
    const Texte& texte = umgebung_.texte;
    const Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    const QString zahl = QString::number(ids.size());
    auto fortschritt = std::make_unique<Fortschritt>(
        this, texte(Meldung::Exportieren), texte(Text::Abbrechen), static_cast<int>(ids.size()));
    Ausfuhr ausfuhr(Ausfuhrart::Untersuchungen);
    QStringList unverstanden;
    int schritt = 0;
    bool abgebrochen = false;
    tabelle.sätze(
        ids,
        [&](const Ergebnissatz& satz) {
            const QString stand =
                texte(Meldung::ExportFortschritt).arg(QString::number(schritt + 1), zahl);
            abgebrochen = !fortschritt->weiter(schritt++, stand);
            if (const QStringList spalten =
                    ausfuhr.nimm(satz, {.texte = texte, .format = {}, .rassen = {}});
                !spalten.isEmpty()) {
                unverstanden << texte(Meldung::UntersuchungTeilweise)
                                    .arg(satz.U_NR.trimmed(), spalten.join(u", "_s));
            }
            return !abgebrochen;
        },
        [&](const QString& nummer) {
            ++schritt;
            unverstanden << texte(Meldung::UntersuchungZuGroß).arg(nummer);
        });
    fortschritt.reset();
    if (abgebrochen) {
        return std::nullopt;
    }
    if (!unverstanden.isEmpty()) {
        umgebung_.dialoge.bericht(texte(Meldung::Exportieren), texte(Meldung::ImportHinweise),
                                  unverstanden);
    }
    return ausfuhr.inhalt();
}

void DB::löscheZeile() {
    const QList<int> gewählte = gewählteZeilen();
    if (gewählte.size() > 1) {
        löscheMehrere(gewählte);
        return;
    }
    const int zeile = gewählte.value(0, grid_->currentIndex().row());
    if (zeile < 0) {
        return;
    }
    if (!Grid_BeforeDelete()) {
        Grid_Error(Abgebrochen, {});
        return;
    }
    try {
        modell_.lösche(zeile);
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return;
    }
    stand_ = dateistände();
    gesamt_.reset();
    grid_->wähleZeile(std::min(zeile, modell_.rowCount() - 1));
    ladeRest();
}

} // namespace tarvel
