// What the menus and the tool bar of the main window do.

#include "app/hg.h"

#include "app/info.h"
#include "app/optionen.h"
#include "evaluation/diagrammansicht.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/rassen.h"
#include "lang/hilfe.h"
#include "measure/aufloesung.h"
#include "measure/bildordner.h"
#include "measure/messhilfe.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"
#include "measure/reihenansicht.h"
#include "results/kolonieformular.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStackedWidget>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

void HG::men_Datei_Click(int index) {
    switch (index) {
    case 0:
        neueUntersuchung();
        break;
    case 1:
        verteiler_.ausführen(befehl::Öffnen);
        break;
    case 2:
        kolonie_->vervollständige();
        speichere(Speicheranlass::Wunsch);
        break;
    case 3:
        LadenBee();
        break;
    case DateiOrdnerImportieren:
        importiereOrdner();
        break;
    case DateiNächstesVolk:
        nächstesVolk();
        break;
    case DateiExportieren:
        exportiere();
        break;
    case 5:
        verteiler_.ausführen(befehl::BildLaden);
        break;
    case 6:
        verteiler_.ausführen(befehl::Grafik);
        break;
    case 8:
        drucke();
        break;
    case 9:
        verteiler_.ausführen(befehl::Vorschau1);
        break;
    case 10:
        verteiler_.ausführen(befehl::Vorschau2);
        break;
    case 14:
        close();
        break;
    default:
        break;
    }
}

void HG::men_Bearbeiten_Click(int index) {
    switch (index) {
    case 0:
        letzteMessungLöschen();
        break;
    case 1:
        messungWiederholen();
        break;
    case 2:
        messung_.NeuerFlügel();
        messplatz_->zeigeErledigte();
        zeigeMessplatz(false);
        break;
    case 3:
        messung_.macheRückgängig();
        break;
    case 11:
        alleMessungenLöschen();
        break;
    default:
        bearbeiteText(index);
        break;
    }
}

void HG::men_Ansicht_Click(int index) {
    switch (index) {
    case 0:
        verteiler_.ausführen(befehl::Alle);
        break;
    case 2:
        verteiler_.ausführen(befehl::Merkmal);
        break;
    case 3:
        verteiler_.ausführen(befehl::Kurven);
        break;
    case 4:
        verteiler_.ausführen(befehl::Korrel);
        break;
    case 6:
        zeigeMessplatz(true);
        break;
    case 7:
        verteiler_.ausführen(befehl::Messen);
        break;
    case 8:
    case 9:
        if (const QString nachbar = nachbarbild(messplatz_->bilddatei(), index == 8 ? 1 : -1);
            !nachbar.isEmpty()) {
            ladeBild(nachbar);
        }
        break;
    case 11:
        verteiler_.ausführen(befehl::Tabelle);
        break;
    case AnsichtLeisteLinks:
        leisteSichtbar(linkeLeiste_, linkeLeiste_->isHidden());
        break;
    case AnsichtLeisteRechts:
        rechteLeisteGewünscht_ = !rechteLeisteGewünscht_;
        zeigeZustand();
        break;
    case AnsichtLupeAmZeiger: {
        const bool amZeiger = befehle_.aktion(Menue::Ansicht, index).isChecked();
        messplatz_->setzeLupeAmZeiger(amZeiger);
        umgebung_.einstellungen.schreibe(Einstellung::FensterLupeAmZeiger, amZeiger ? 1 : 0);
        break;
    }
    case AnsichtWerkzeugtexte: {
        const bool zeigen = befehle_.aktion(Menue::Ansicht, AnsichtWerkzeugtexte).isChecked();
        befehle_.zeigeWerkzeugtexte(zeigen);
        umgebung_.einstellungen.schreibe(Einstellung::FensterWerkzeugtexte, zeigen ? 1 : 0);
        break;
    }
    default:
        break;
    }
}

void HG::men_Zoom_Click(int index) {
    messplatz_->wünscheZoom(index);
    zeigeZustand();
}

void HG::men_Extras_Click(int index) {
    if (index == 8) {
        protokoll_.übersetze(this);
    } else if (index == 9) {
        optionen();
    }
}

void HG::optionen() {
    const Einstellungen& e = umgebung_.einstellungen;
    const auto auflösung = [&e] { return scannerauflösung(e.zahl(Einstellung::ScannMessung)); };
    const int vorher = auflösung();
    Optionen dialog(umgebung_, speicher_, untersuchung_.angaben().Rasse + 1, this);
    dialog.exec();
    // The standard follows the file, whether the dialog was confirmed or cancelled; what is being
    // measured changes only where the user changed it. For a missing key the dialog shows, and
    // writes, another default than the one that is being measured with.
    if (dialog.geändert(Einstellung::ScannOptionen)) {
        messung_.setzeAuflösung(auflösung());
        auflösungGemeldet_ = false;
    }
    if (dialog.geändert(Einstellung::DefaultZoomOptionen)) {
        messplatz_->wünscheZoom(e.zahl(Einstellung::DefaultZoomHauptfenster) + 1);
    }
    if (dialog.geändert(Einstellung::Betriebsart)) {
        messplatz_->wünscheMessart(eigeneMessart());
    }
    messleiste_->setzeZiel(e.zahl(Einstellung::Zielzahl));
    kolonie_->setzeRassen(rassenliste(e));
    auswertung_.ladeStandard();
    auswertung_.zeigeMerkmale();
    zeigeZustand();
    if (const int dpi = messung_.aufnahme().dpi; auflösung() != vorher && auflösung() != dpi) {
        ZeigeEigenenHinweis({Meldung::AuflösungBeimNächstenStart,
                             {QString::number(dpi), QString::number(auflösung())}});
    }
    warneVorGeringerAuflösung();
}

bool HG::wechsleGeschlecht(Geschlecht tiere) {
    Merkmale merkmale = untersuchung_.merkmale();
    if (merkmale.etwasEingetragen()) {
        const Texte& t = umgebung_.texte;
        const Antwort antwort = umgebung_.dialoge.frage({.titel = t(Text::KörperMerkmale),
                                                         .text = t(Text::UmschaltenWarnung1) +
                                                                 t(Text::UmschaltenWarnung2) +
                                                                 u'\n' + t(Text::UmschaltenFrage),
                                                         .art = Meldungsart::Frage,
                                                         .verwirft = true});
        if (antwort != Antwort::Ja) {
            return false;
        }
    }
    Kolonieangaben angaben = untersuchung_.angaben();
    angaben.Tiere = tiere;
    untersuchung_.setzeAngaben(angaben);
    setzeTiere(merkmale, tiere);
    untersuchung_.setzeMerkmale(merkmale);
    auswertung_.zeigeMerkmale();
    zeigeZustand();
    return true;
}

void HG::men_Betriebsart_Click(int index) {
    if (messplatz_->wünscheMessart(static_cast<Messart>(index))) {
        umgebung_.einstellungen.schreibe(Einstellung::Betriebsart, index);
    }
    zeigeZustand();
}

void HG::men_Sprache_Click(int index) {
    umgebung_.einstellungen.schreibe(Einstellung::Sprache, index);
    umgebung_.texte.SpracheEinstellen(index);
    // A large results file takes some seconds.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    ablage_.SpracheDB();
    QGuiApplication::restoreOverrideCursor();
}

QString HG::hilfethema() const {
    const QWidget* ansicht = ansichten_->currentWidget();
    const std::pair<const QWidget*, QString> themen[] = {{messplatz_, u"messen"_s},
                                                         {&auswertung_.kurven(), u"beurteilung"_s},
                                                         {&auswertung_.korrel(), u"indizes"_s},
                                                         {&auswertung_.merkmal(), u"merkmale"_s},
                                                         {&protokoll_.vorschau(), u"protokoll"_s}};
    for (const auto& [fläche, thema] : themen) {
        if (ansicht == fläche) {
            return thema;
        }
    }
    return u"index"_s;
}

void HG::men_Hilfe_Click(int index) {
    switch (index) {
    case 0:
        zeigeHilfe(umgebung_.texte, umgebung_.shell, umgebung_.dialoge, hilfethema());
        break;
    case 1:
        Info(umgebung_.texte, this).exec();
        break;
    case 4:
        zeigeMessplatz(false);
        if (messHilfe_.isNull()) {
            messHilfe_ = new MessHilfe(umgebung_.texte, this);
        }
        messHilfe_->show();
        messHilfe_->raise();
        messHilfe_->activateWindow();
        break;
    default:
        break;
    }
}

QLineEdit* HG::textfeldMitFokus() {
    QWidget* fokus = QApplication::focusWidget();
    if (auto* liste = qobject_cast<QComboBox*>(fokus)) {
        return liste->lineEdit();
    }
    return qobject_cast<QLineEdit*>(fokus);
}

void HG::bearbeiteText(int index) {
    QLineEdit* feld = textfeldMitFokus();
    if (feld == nullptr) {
        return;
    }
    switch (index) {
    case 5:
        feld->cut();
        break;
    case 6:
        feld->copy();
        break;
    case 7:
        feld->paste();
        break;
    case 8:
        if (feld->hasSelectedText()) {
            feld->del();
        }
        break;
    default:
        break;
    }
}

bool HG::gibZifferAnsBild(QKeyEvent& taste, const QWidget& ziel) {
    return !messplatz_->isAncestorOf(&ziel) && messplatz_->nimmZiffer(taste);
}

void HG::bildLaden() {
    const Texte& t = umgebung_.texte;
    const QString filter = t(Text::AlleBilddateien) + u" ("_s + bildmuster().join(u' ') + u");;"_s +
                           t(Text::BitmapDateien) + u" (*.BMP);;"_s + t(Text::GifDateien) +
                           u" (*.GIF);;"_s +
                           u"JPEG (*.JPG *.JPEG);;PNG (*.PNG);;TIFF (*.TIF *.TIFF);;"_s +
                           t(Text::AlleDateien) + u" (*)"_s;
    QString ordner = QFileInfo(messplatz_->bilddatei()).path();
    if (messplatz_->bilddatei().isEmpty()) {
        ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    }
    const QString pfad = umgebung_.dialoge.dateiOeffnen(t(Text::MenüBildLaden), ordner, filter);
    if (!pfad.isEmpty()) {
        ladeBild(pfad);
    }
}

void HG::drucke() {
    kolonie_->vervollständige();
    const QString ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    protokoll_.drucke(this, ordner.isEmpty() ? ablage_.dokumente() : ordner);
}

void HG::grafik() {
    const Texte& t = umgebung_.texte;
    const QString programm = umgebung_.einstellungen.text(Einstellung::Grafikprogramm);
    if (!programm.isEmpty() && umgebung_.shell.runProgram(programm, messplatz_->bilddatei())) {
        return;
    }
    umgebung_.dialoge.meldung(t(Text::Fehler),
                              t(Text::ProgrammNichtGefunden) + u'\n' + t(Text::PfadGrafikprogramm) +
                                  u": "_s + QDir::toNativeSeparators(programm),
                              Meldungsart::Ausruf);
}

void HG::letzteMessungLöschen() {
    if (messung_.wiederholt() && messung_.nummer() == untersuchung_.reihe().letzteNummer()) {
        messung_.NeuerFlügel();
    }
    untersuchung_.reihe().löscheLetzte();
    reiheGeändert();
    verteiler_.ausführen(befehl::Alle);
}

void HG::alleMessungenLöschen() {
    verteiler_.ausführen(befehl::Alle);
    const Antwort antwort =
        umgebung_.dialoge.frage({.titel = umgebung_.texte(Text::MenüAlleMessungenLöschen),
                                 .text = umgebung_.texte(Text::FrageAlleMessungenLöschen),
                                 .art = Meldungsart::Frage,
                                 .verwirft = true});
    if (antwort != Antwort::Ja) {
        return;
    }
    if (messung_.wiederholt()) {
        messung_.NeuerFlügel();
    }
    untersuchung_.reihe().löscheAlle();
    reiheGeändert();
    zeigeZustand();
}

int HG::gewählterFlügel() const {
    const QWidget* ansicht = ansichten_->currentWidget();
    std::vector<int> gewählt;
    if (ansicht == tabelle_) {
        gewählt = {tabelle_->gewählteNummer()};
    } else if (const auto* diagramm = dynamic_cast<const Diagrammansicht*>(ansicht)) {
        gewählt = diagramm->hervorgehoben();
    } else if (const auto* liste = dynamic_cast<const Reihenansicht*>(ansicht)) {
        gewählt = liste->gewählteNummern();
    } else {
        gewählt = messleiste_->reihe().gewählteNummern();
    }
    // A chart may still point out a wing that is gone.
    const Messreihe& reihe = untersuchung_.reihe();
    const auto nummer =
        std::find_if(gewählt.begin(), gewählt.end(), [&reihe](int n) { return reihe.enthält(n); });
    return nummer != gewählt.end() ? *nummer : reihe.letzteNummer();
}

void HG::messungWiederholen() {
    const int nummer = gewählterFlügel();
    QWidget* vorher = ansichten_->currentWidget();
    ansichten_->setCurrentWidget(messplatz_);
    if (!messplatz_->wiederhole(nummer)) {
        ansichten_->setCurrentWidget(vorher);
    }
    zeigeZustand();
}

} // namespace tarvel
