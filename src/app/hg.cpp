#include "app/hg.h"

#include "app/bildwahl.h"
#include "app/fensterlage.h"
#include "app/hinweiszeile.h"
#include "app/info.h"
#include "app/optionen.h"
#include "app/programmsymbol.h"
#include "app/textbefehle.h"
#include "evaluation/diagrammansicht.h"
#include "evaluation/merkmalansicht.h"
#include "lang/hilfe.h"
#include "measure/aufloesung.h"
#include "measure/bildordner.h"
#include "measure/messhilfe.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"
#include "measure/reihenansicht.h"
#include "results/kolonieformular.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// How the marks are entered in their mode.
int merkmalhinweis(const Merkmale& merkmale) {
    return merkmale.Modus == Merkmalmodus::Liste ? HinweisMerkmaleJeBiene : HinweisMerkmaleSummen;
}

} // namespace

HG::HG(const Umgebung& umgebung, Benutzerspeicher& speicher, Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , speicher_(speicher)
    , arbeitsplatz_(arbeitsplatz)
    , messung_(arbeitsplatz.messung())
    , modelle_(arbeitsplatz.reihe(), umgebung.texte, umgebung.format)
    , befehle_(*this, umgebung.texte, verteiler_)
    , auswertung_(umgebung, arbeitsplatz)
    , protokoll_(umgebung, arbeitsplatz)
    , hinweise_(umgebung, arbeitsplatz)
    , fläche_(*this, umgebung, arbeitsplatz, modelle_, auswertung_, protokoll_.vorschau(),
              hinweise_.zeile())
    , flügelbefehle_(umgebung_, arbeitsplatz, modelle_, fläche_, auswertung_, hinweise_, befehle_)
    , bilder_(umgebung, arbeitsplatz, fläche_, hinweise_, *this)
    , dienste_{.fenster = this,
               .verteiler = verteiler_,
               .hinweise = hinweise_,
               .vervollständige = [this] { fläche_.kolonie->vervollständige(); },
               .beginneMessen =
                   [this] {
                       if (fläche_.messplatz->zustand() == Messplatz::Zustand::OhneBild) {
                           messmodus(HinweisBildLaden);
                       } else {
                           zeigeMessplatz(true);
                       }
                   },
               .ladeBild = [this](const QString& pfad) { return ladeBild(pfad); }}
    , gang_(umgebung, arbeitsplatz, dienste_)
    , eingang_(umgebung, arbeitsplatz, gang_, dienste_) {
    setObjectName(u"HG"_s);
    setAcceptDrops(true);
    verbindeMessplatz();
    verbindeFelder();
    meldeAnsichtenAn();
    verbindeAuswertung();
    beobachtung_ = arbeitsplatz_.beobachte([this](const Änderung& änderung) { folge(änderung); });
    connect(qApp, &QApplication::focusChanged, this, [this] {
        arbeitsplatz_.beendeEingabe();
        befehle_.zeigeTextbefehle(textfeldMitFokus() != nullptr);
    });
    connect(&umgebung_.texte, &Texte::languageChanged, this, [this] { TexteAnwenden(); });
    Form_Load();
    const Leistenwahl leisten =
        stelleFensterlageHer(umgebung_.einstellungen, *this, *fläche_.teiler);
    fläche_.linkeLeiste->setVisible(leisten.links);
    rechteLeisteGewünscht_ = leisten.rechts;
    zeigeZustand();
}

HG::~HG() {
    // Fields that lose the focus while they go still report to what is declared here, and the
    // toolkit tells of the last change of focus when this window is only a widget any more.
    disconnect(qApp, nullptr, this, nullptr);
    beobachtung_.reset();
    delete messHilfe_;
    delete takeCentralWidget();
}

void HG::verbindeMessplatz() {
    fläche_.messplatz->ZeigeHinweis = [this](const Hinweis& h) { hinweise_.zeige(h); };
    fläche_.messplatz->zustandGeändert = [this] { zeigeZustand(); };
    fläche_.messplatz->bildLadenGewünscht = [this] { verteiler_.ausführen(befehl::BildLaden); };
    fläche_.messleiste->beiPunktwahl([this](int nummer) {
        arbeitsplatz_.opt_Fein_Click(nummer);
        fläche_.messplatz->nimmTastatur();
    });
    fläche_.messleiste->beiAuflösung([this](int dpi) { bilder_.wähleAuflösung(dpi); });
}

void HG::verbindeFelder() {
    fläche_.kolonie->beiÄnderung(
        [this](const Kolonieangaben& angaben) { arbeitsplatz_.setzeAngaben(angaben); });
    fläche_.kolonie->beiVorschlägen(
        [this](QString Kolonieangaben::*wert) { return arbeitsplatz_.ablage().bekannte(wert); });
    fläche_.kolonie->beiGeschlechtswahl(
        [this](Geschlecht tiere) { return gang_.wechsleGeschlecht(tiere); });
    fläche_.kolonie->beiRassenwahl([this](int index) { arbeitsplatz_.wähleRasse(index); });
    using Handler = void (HG::*)(int);
    for (const auto& [menü, handler] :
         {std::pair<Menue, Handler>{Menue::Datei, &HG::men_Datei_Click},
          {Menue::Bearbeiten, &HG::men_Bearbeiten_Click},
          {Menue::Ansicht, &HG::men_Ansicht_Click},
          {Menue::Zoom, &HG::men_Zoom_Click},
          {Menue::Extras, &HG::men_Extras_Click},
          {Menue::Betriebsart, &HG::men_Betriebsart_Click},
          {Menue::Sprache, &HG::men_Sprache_Click},
          {Menue::Hilfe, &HG::men_Hilfe_Click}}) {
        befehle_.beiKlick(menü, [this, ziel = handler](int index) { (this->*ziel)(index); });
    }
}

void HG::meldeAnsichtenAn() {
    const auto wenn = [](bool etwas, int hinweis) { return etwas ? hinweis : HinweisKeiner; };
    const Messreihe& reihe = arbeitsplatz_.reihe();
    verteiler_.anmelden(befehl::Öffnen, [this] { gang_.öffne(); });
    verteiler_.anmelden(befehl::BildLaden, [this] {
        if (const QString pfad = wähleBild(umgebung_, fläche_.messplatz->bilddatei());
            !pfad.isEmpty()) {
            ladeBild(pfad);
        }
    });
    verteiler_.anmelden(befehl::Grafik, [this] {
        öffneImGrafikprogramm(umgebung_, fläche_.messplatz->bilddatei());
    });
    verteiler_.anmelden(befehl::Alle, [=, this, &reihe] {
        zeige(&fläche_.alle(), wenn(!reihe.leer(), HinweisWiederholen));
    });
    verteiler_.anmelden(befehl::Tabelle, [=, this, &reihe] {
        zeige(&fläche_.tabelle(), wenn(!reihe.leer(), HinweisWiederholen));
    });
    verteiler_.anmelden(befehl::Kurven, [this] { zeige(&auswertung_.kurven(), HinweisKeiner); });
    verteiler_.anmelden(befehl::Korrel, [=, this, &reihe] {
        zeige(&auswertung_.korrel(), wenn(!reihe.hiDvZeilen().empty(), HinweisKreuzZeigen));
    });
    verteiler_.anmelden(befehl::Merkmal, [this] {
        zeige(&fläche_.merkmal(), merkmalhinweis(untersuchung().merkmale()));
    });
    verteiler_.anmelden(befehl::Messen, [this] { zeigeMessplatz(false); });
    for (const auto& [wort, seite] :
         {std::pair{befehl::Vorschau1, 1}, std::pair{befehl::Vorschau2, 2}}) {
        verteiler_.anmelden(wort, [this, seite = seite] {
            zeige(&protokoll_.vorschau(), HinweisKeiner);
            protokoll_.zeigeSeite(seite);
        });
    }
    protokoll_.seiteGewünscht = [this](int seite) {
        verteiler_.ausführen(seite == 2 ? befehl::Vorschau2 : befehl::Vorschau1);
    };
    verteiler_.nachJedemBefehl([this](QStringView) { zeigeZustand(); });
}

void HG::verbindeAuswertung() {
    auswertung_.flügelGewählt = [this](const std::vector<int>& flügel) { fläche_.wähle(flügel); };
    auswertung_.merkmaleGewählt = [this](const std::vector<int>& bienen) {
        verteiler_.ausführen(befehl::Merkmal);
        fläche_.merkmal().wähle(bienen);
    };
}

void HG::Form_Load() {
    arbeitsplatz_.richteEin();
    befehle_.zeigeWerkzeugtexte(
        umgebung_.einstellungen.schalter(Einstellung::FensterWerkzeugtexte));
    fläche_.messplatz->setzeLupeAmZeiger(
        umgebung_.einstellungen.schalter(Einstellung::FensterLupeAmZeiger));
    fläche_.messleiste->setzeZiel(umgebung_.einstellungen.zahl(Einstellung::Zielzahl));
    TexteAnwenden();
}

void HG::TexteAnwenden() {
    befehle_.werkzeugleiste().setWindowTitle(umgebung_.texte(Meldung::NameWerkzeugleiste));
    fläche_.linkeLeiste->setAccessibleName(umgebung_.texte(Meldung::LeisteVolksdaten));
    flügelbefehle_.aktualisiere();
    auswertung_.aktualisiere();
    protokoll_.aktualisiere();
    hinweise_.TexteAnwenden();
    zeigeZustand();
}

// What the workplace tells

void HG::folge(const Änderung& änderung) {
    if (änderung.Einstellungen) {
        fläche_.kolonie->setzeRassen(arbeitsplatz_.einstellungen().rassen);
    }
    if (fläche_.kolonie->angaben() != untersuchung().angaben()) {
        fläche_.kolonie->zeige(untersuchung().angaben());
    }
    if (änderung.Reihe || änderung.Untersuchung) {
        flügelbefehle_.aktualisiere();
    }
    auswertung_.folge(änderung);
    if (änderung.Punkte || änderung.Aufnahme || änderung.Reihe) {
        fläche_.messplatz->folge();
    }
    if (änderung.Angaben || änderung.Urteil || änderung.Ablage) {
        protokoll_.aktualisiere();
    }
    const Hinweis& hinweis = hinweise_.gezeigter();
    if (const int neu = merkmalhinweis(untersuchung().merkmale());
        änderung.Merkmale && hinweis != Hinweis(neu) &&
        (hinweis == Hinweis(HinweisMerkmaleJeBiene) || hinweis == Hinweis(HinweisMerkmaleSummen))) {
        ZeigeHinweis(neu);
    }
    if (änderung.übernommen) {
        fläche_.messleiste->reihe().wähle({änderung.übernommen->nummer});
        fläche_.messplatz->nächsterFlügel();
    }
    bilder_.folge(änderung);
    hinweise_.sage(änderung);
    if (änderung.fehler) {
        fläche_.messplatz->nimmTastatur();
    }
    zeigeZustand();
}

Befehlslage HG::befehlslage() const {
    Befehlslage lage{.verteiler = verteiler_, .ansicht = fläche_.ansichtswort()};
    const Texte& t = umgebung_.texte;
    lage.mitBild = fläche_.messplatz->zustand() != Messplatz::Zustand::OhneBild;
    lage.amMessplatz = fläche_.amMessplatz();
    lage.inÜbersicht = fläche_.messplatz->zustand() == Messplatz::Zustand::Übersicht;
    lage.mitFlügeln = !arbeitsplatz_.reihe().leer();
    lage.zuSpeichern = untersuchung().geändert();
    lage.rückgängig = arbeitsplatz_.rückgängig() != nullptr;
    lage.wiederherstellbar = arbeitsplatz_.wiederherstellbar() != nullptr;
    lage.inTextfeld = textfeldMitFokus() != nullptr;
    lage.zweiseitig = protokoll_.seitenzahl() == 2;
    lage.mitHilfe = hilfeVorhanden(t);
    lage.leisteLinks = !fläche_.linkeLeiste->isHidden();
    lage.leisteRechts = rechteLeisteGewünscht_;
    lage.lupeAmZeiger = fläche_.messplatz->lupeAmZeiger();
    lage.werkzeugtexte = befehle_.mitWerkzeugtexten();
    lage.Zoomfaktor = messung_.aufnahme().Zoomfaktor;
    lage.messart = static_cast<int>(messung_.messart());
    lage.sprache = t.sprache() ? static_cast<int>(*t.sprache()) : -1;
    return lage;
}

void HG::zeigeZustand() {
    const Texte& t = umgebung_.texte;
    const Befehlslage lage = befehlslage();
    befehle_.zeige(lage);
    const auto name = [&t](const Schritt* schritt, Meldung ohne, Meldung mit) {
        return schritt == nullptr ? t(ohne) : t(mit).arg(schrittname(*schritt, t));
    };
    befehle_.benenne(
        Menue::Bearbeiten, BearbeitenRückgängig,
        name(arbeitsplatz_.rückgängig(), Meldung::Rückgängig, Meldung::RückgängigSchritt));
    befehle_.benenne(Menue::Bearbeiten, BearbeitenWiederherstellen,
                     name(arbeitsplatz_.wiederherstellbar(), Meldung::Wiederherstellen,
                          Meldung::WiederherstellenSchritt));

    fläche_.messleiste->setVisible(rechteLeisteGewünscht_ && lage.amMessplatz);
    fläche_.messleiste->zeigeFlügel(messung_.nummer(), messung_.wiederholt());
    fläche_.messleiste->zeigePunkte(messung_.punkte(), messung_.messart(), messung_.aufnahme());
    bilder_.zeige();
    zeigeStatuszeile();
    arbeitsplatz_.merkeAnsicht(lage.amMessplatz ? befehl::Messen : befehl::Alle);
    hinweise_.warneVorSchreibfehlern();
}

void HG::zeigeStatuszeile() {
    const Texte& t = umgebung_.texte;
    QStringList teile;
    if (!fläche_.messplatz->bilddatei().isEmpty()) {
        const QSize größe = fläche_.messplatz->bildgröße();
        teile
            << QFileInfo(fläche_.messplatz->bilddatei()).fileName()
            << u"%1 × %2 %3"_s.arg(größe.width()).arg(größe.height()).arg(t(Meldung::EinheitPixel));
    }
    teile << t(Meldung::NameZoom) + u' ' + QString::number(messung_.aufnahme().Zoomfaktor)
          << u"%1 %2"_s.arg(messung_.aufnahme().dpi).arg(t(Meldung::EinheitDpi))
          << t(Meldung::FlügelNummer).arg(dreistellig(messung_.nummer()));
    if (const QString& pfad = arbeitsplatz_.ablage().DatenbankPfad(); !pfad.isEmpty()) {
        teile << t(Meldung::DatenbankStatus).arg(QFileInfo(pfad).fileName());
        fläche_.status->setToolTip(Qt::convertFromPlainText(QDir::toNativeSeparators(pfad)));
    }
    fläche_.status->setText(teile.join(u"   ·   "_s));

    const QString nummer = untersuchung().angaben().UNr.trimmed();
    setWindowTitle(
        (nummer.isEmpty() ? t(Meldung::Programmname) : t(Meldung::Fenstertitel).arg(nummer)) +
        u"[*]"_s);
    setWindowModified(untersuchung().geändert());
}

// Views

void HG::zeige(QWidget* ansicht, int hinweisnummer) {
    fläche_.zeige(ansicht);
    ansicht->setFocus();
    ZeigeHinweis(hinweisnummer);
}

void HG::zeigeMessplatz(bool übersicht) {
    fläche_.zeige(fläche_.messplatz);
    if (übersicht) {
        fläche_.messplatz->zeigeÜbersicht();
    } else {
        fläche_.messplatz->zeigeMessen();
    }
    zeigeZustand();
}

void HG::messmodus(int hinweisnummer) {
    fläche_.zeige(fläche_.messplatz);
    ZeigeHinweis(hinweisnummer);
    zeigeZustand();
}

bool HG::ladeBild(const QString& pfad) {
    QWidget* vorher = fläche_.gezeigte();
    fläche_.zeige(fläche_.messplatz);
    const bool geladen = bilder_.lade(pfad);
    if (!geladen) {
        fläche_.zeige(vorher);
    }
    zeigeZustand();
    return geladen;
}

void HG::übernimmDateien(const QStringList& pfade) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    öffneDateien(pfade);
    hinweise_.zeige(Text::BereitsGestartet);
}

// Commands

void HG::men_Datei_Click(int index) {
    switch (index) {
    case 0:
        gang_.neueUntersuchung();
        break;
    case DateiNächstesVolk:
        gang_.neueUntersuchung(Personen::Dieselben);
        break;
    case 2:
        fläche_.kolonie->vervollständige();
        gang_.speichere(Speicheranlass::Wunsch);
        break;
    case 3:
        eingang_.LadenBee();
        break;
    case DateiOrdnerImportieren:
        eingang_.importiereOrdner();
        break;
    case DateiExportieren:
        eingang_.exportiere();
        break;
    case 8:
        drucke();
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
        arbeitsplatz_.löscheLetzte();
        verteiler_.ausführen(befehl::Alle);
        break;
    case 1:
        messungWiederholen();
        break;
    case 2:
        arbeitsplatz_.NeuerFlügel();
        zeigeMessplatz(false);
        break;
    case BearbeitenRückgängig:
    case BearbeitenWiederherstellen:
        geheZurück(index == BearbeitenWiederherstellen);
        break;
    case BearbeitenAuslassen:
        flügelbefehle_.lassAusOderNimmAuf();
        break;
    case BearbeitenFlügelLöschen:
        flügelbefehle_.lösche();
        break;
    case BearbeitenAuflösung:
        bilder_.berichtigeAuflösung();
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
    case 6:
        zeigeMessplatz(true);
        break;
    case 8:
    case 9:
        if (const QString nachbar =
                nachbarbild(fläche_.messplatz->bilddatei(), index == 8 ? 1 : -1);
            !nachbar.isEmpty()) {
            ladeBild(nachbar);
        }
        break;
    case AnsichtLeisteLinks:
        fläche_.linkeLeiste->setVisible(fläche_.linkeLeiste->isHidden());
        zeigeZustand();
        break;
    case AnsichtLeisteRechts:
        rechteLeisteGewünscht_ = !rechteLeisteGewünscht_;
        zeigeZustand();
        break;
    case AnsichtLupeAmZeiger: {
        const bool amZeiger = !fläche_.messplatz->lupeAmZeiger();
        fläche_.messplatz->setzeLupeAmZeiger(amZeiger);
        umgebung_.einstellungen.schreibe(Einstellung::FensterLupeAmZeiger, amZeiger ? 1 : 0);
        zeigeZustand();
        break;
    }
    case AnsichtWerkzeugtexte: {
        const bool zeigen = !befehle_.mitWerkzeugtexten();
        befehle_.zeigeWerkzeugtexte(zeigen);
        umgebung_.einstellungen.schreibe(Einstellung::FensterWerkzeugtexte, zeigen ? 1 : 0);
        break;
    }
    default:
        break;
    }
}

void HG::men_Zoom_Click(int index) {
    fläche_.messplatz->wünscheZoom(index);
    zeigeZustand();
}

void HG::men_Extras_Click(int index) {
    if (index == 8) {
        protokoll_.übersetze(this);
    } else if (index == 9) {
        optionen();
    }
}

void HG::men_Betriebsart_Click(int index) {
    fläche_.messplatz->wünscheMessart(static_cast<Messart>(index));
    zeigeZustand();
}

void HG::men_Sprache_Click(int index) {
    umgebung_.einstellungen.schreibe(Einstellung::Sprache, index);
    umgebung_.texte.SpracheEinstellen(index);
    // A large results file takes some seconds.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    arbeitsplatz_.SpracheDB();
    QGuiApplication::restoreOverrideCursor();
}

void HG::men_Hilfe_Click(int index) {
    switch (index) {
    case 0:
        zeigeHilfe(umgebung_.texte, umgebung_.shell, umgebung_.dialoge, fläche_.hilfethema());
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

void HG::geheZurück(bool wiederherstellen) {
    const std::optional<Schritt> schritt =
        wiederherstellen ? arbeitsplatz_.stelleWiederHer() : arbeitsplatz_.macheRückgängig();
    // Points that come back are shown; whoever undoes must see what it did.
    if (schritt && istMessschritt(schritt->art) && messung_.punkte().begonnen()) {
        fläche_.zeige(fläche_.messplatz);
        fläche_.messplatz->zeigeFlügel();
        zeigeZustand();
    }
}

void HG::messungWiederholen() {
    const int nummer = fläche_.gewählterFlügel();
    QWidget* vorher = fläche_.gezeigte();
    fläche_.zeige(fläche_.messplatz);
    if (!fläche_.messplatz->wiederhole(nummer)) {
        fläche_.zeige(vorher);
    }
    zeigeZustand();
}

void HG::alleMessungenLöschen() {
    verteiler_.ausführen(befehl::Alle);
    if (umgebung_.dialoge.frage({.titel = umgebung_.texte(Text::MenüAlleMessungenLöschen),
                                 .text = umgebung_.texte(Text::FrageAlleMessungenLöschen),
                                 .art = Meldungsart::Frage,
                                 .verwirft = true}) == Antwort::Ja) {
        arbeitsplatz_.löscheAlle();
    }
}

void HG::drucke() {
    fläche_.kolonie->vervollständige();
    const QString ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    protokoll_.drucke(this, ordner.isEmpty() ? arbeitsplatz_.ablage().dokumente() : ordner);
}

void HG::optionen() {
    const auto gespeicherteAuflösung = [this] {
        return scannerauflösung(umgebung_.einstellungen.zahl(Einstellung::ScannMessung));
    };
    const int vorher = gespeicherteAuflösung();
    Optionen dialog(umgebung_, speicher_, untersuchung().angaben().Rasse + 1, this);
    dialog.exec();
    // The standard follows the file, whether the dialog was confirmed or cancelled; what is being
    // measured changes only where the user changed it. For a missing key the dialog shows, and
    // writes, another default than the one that is being measured with.
    const bool andereAuflösung = dialog.geändert(Einstellung::ScannOptionen);
    arbeitsplatz_.übernimmEinstellungen(andereAuflösung);
    const Arbeitseinstellungen e = arbeitsplatz_.einstellungen();
    if (andereAuflösung) {
        arbeitsplatz_.setzeAuflösung(e.auflösung);
    }
    if (dialog.geändert(Einstellung::DefaultZoomOptionen)) {
        fläche_.messplatz->wünscheZoom(e.Zoomfaktor);
    }
    if (dialog.geändert(Einstellung::Betriebsart)) {
        fläche_.messplatz->wünscheMessart(e.messart);
    }
    zeigeZustand();
    if (const int neue = gespeicherteAuflösung(); !andereAuflösung && neue != vorher) {
        hinweise_.zeige({Meldung::AuflösungBeimNächstenStart,
                         {QString::number(messung_.aufnahme().dpi), QString::number(neue)}});
    }
    hinweise_.warneVorGeringerAuflösung(andereAuflösung);
}

bool HG::gibZifferAnsBild(QKeyEvent& taste, const QWidget& ziel) {
    return !fläche_.messplatz->isAncestorOf(&ziel) && fläche_.messplatz->nimmZiffer(taste);
}

void HG::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    if (!std::exchange(restAngefordert_, true)) {
        // Not in the round of events that brings the picture to the screen.
        QTimer::singleShot(0, this,
                           [this] { QTimer::singleShot(0, this, [this] { beendeStart(); }); });
    }
}

void HG::beendeStart() {
    zeigeProgrammsymbol();
    fläche_.baueRest();
    // Settled at once: nothing moves under the pointer of somebody who is already clicking.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    protokoll_.merkeDrucker();
}

void HG::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); })) {
        event->acceptProposedAction();
    }
}

void HG::dropEvent(QDropEvent* event) {
    QStringList dateien;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            dateien << url.toLocalFile();
        }
    }
    if (!dateien.isEmpty()) {
        event->acceptProposedAction();
        öffneDateien(dateien);
    }
}

bool HG::Form_Unload() {
    protokoll_.stelleDruckerHer();
    fläche_.kolonie->vervollständige();
    return protokoll_.verlasseÜbersetzung() && gang_.verlasse();
}

void HG::closeEvent(QCloseEvent* event) {
    // Cancelled until everything that could be lost is dealt with.
    event->ignore();
    if (Form_Unload()) {
        merkeFensterlage(
            umgebung_.einstellungen, *this, *fläche_.teiler,
            {.links = !fläche_.linkeLeiste->isHidden(), .rechts = rechteLeisteGewünscht_});
        bilder_.merke();
        arbeitsplatz_.beendeSitzung();
        event->accept();
    }
}

} // namespace tarvel
