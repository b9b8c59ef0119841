// The commands of the browser that concern the results file as a whole, and the deletion of a row.

#include "results/db.h"
#include "results/ergebnisgitter.h"
#include "results/ergebnismenues.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

bool istDieselbe(const QString& a, const QString& b) {
    const QString echt = QFileInfo(a).canonicalFilePath();
    return !echt.isEmpty() && echt == QFileInfo(b).canonicalFilePath();
}

/// A name may hold a point of its own, such as that of a year and month.
QString mitEndung(const QString& pfad) {
    return pfad.endsWith(u".tdb"_s, Qt::CaseInsensitive) ? pfad : pfad + u".tdb"_s;
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
    default:
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
    const QString pfad = umgebung_.dialoge.dateiOeffnen(umgebung_.texte(Text::TabelleÖffnen),
                                                        ordner(), dateimuster());
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
    const QString gewählt = umgebung_.dialoge.dateiSpeichern(texte(Text::NeueTabelleSpeichern),
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
    const QString gewählt = umgebung_.dialoge.dateiSpeichern(titel, vorschlag, dateimuster());
    if (gewählt.isEmpty()) {
        return;
    }
    const QString ziel = mitEndung(gewählt);
    if (istDieselbe(ziel, umgebung_.DatenbankPfad)) {
        umgebung_.dialoge.meldung(titel, texte(Meldung::SicherungGleicheDatei),
                                  Meldungsart::Ausruf);
        return;
    }
    // The file chooser asked about the name as it was typed.
    if (ziel != gewählt && QFileInfo::exists(ziel) &&
        umgebung_.dialoge.frage(
            {.titel = titel,
             .text = texte(Meldung::DateiErsetzenFrage).arg(QDir::toNativeSeparators(ziel)),
             .verwirft = true,
             .ja = texte(Meldung::Ersetzen),
             .nein = texte(Meldung::NichtErsetzen)}) != Antwort::Ja) {
        return;
    }
    try {
        Ergebnistabelle(umgebung_.DatenbankPfad).sichere(ziel);
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return;
    }
    umgebung_.dialoge.meldung(titel,
                              texte(Meldung::SicherungFertig).arg(QDir::toNativeSeparators(ziel)),
                              Meldungsart::Hinweis);
}

void DB::löscheZeile() {
    const int zeile = grid_->currentIndex().row();
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
    grid_->wähleZeile(std::min(zeile, modell_.rowCount() - 1));
    zeigeStand();
}

} // namespace tarvel
