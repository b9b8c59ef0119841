#include "app/hg.h"

#include "app/bildwahl.h"
#include "app/fensterlage.h"
#include "app/hinweiszeile.h"
#include "app/info.h"
#include "app/statuszeile.h"
#include "app/symbol.h"
#include "app/textbefehle.h"
#include "evaluation/kriterienansicht.h"
#include "evaluation/urteilsanzeige.h"
#include "lang/hilfe.h"
#include "measure/bildordner.h"
#include "measure/messhilfe.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"
#include "results/kolonieformular.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QToolBar>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

HG::HG(const Umgebung& umgebung, Benutzerspeicher& speicher, Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , messung_(arbeitsplatz.messung())
    , modelle_(arbeitsplatz.reihe(), umgebung.texte, umgebung.format)
    , befehle_(*this, umgebung.texte, verteiler_)
    , auswertung_(umgebung, arbeitsplatz)
    , protokoll_(umgebung, arbeitsplatz)
    , hinweise_(umgebung, arbeitsplatz)
    , fläche_(*this, umgebung, arbeitsplatz, modelle_, auswertung_, protokoll_.vorschau(),
              hinweise_.zeile())
    , ansichten_(verteiler_, arbeitsplatz, fläche_, auswertung_, protokoll_, hinweise_)
    , flügelbefehle_(umgebung_, arbeitsplatz, modelle_, fläche_, auswertung_, hinweise_, ansichten_,
                     befehle_)
    , einstellungen_(umgebung, speicher, arbeitsplatz, fläche_, hinweise_, befehle_)
    , bilder_(umgebung, arbeitsplatz, fläche_, hinweise_, *this)
    , funde_(arbeitsplatz, fläche_, hinweise_)
    , dienste_{.fenster = this,
               .verteiler = verteiler_,
               .hinweise = hinweise_,
               .vervollständige = [this] { fläche_.kolonie->vervollständige(); },
               .beginneMessen =
                   [this] {
                       if (fläche_.messplatz->zustand() == Messplatz::Zustand::OhneBild) {
                           ansichten_.messmodus(HinweisBildLaden);
                       } else {
                           ansichten_.zeigeMessplatz(true);
                       }
                   },
               .ladeBild = [this](const QString& pfad) { return ladeBild(pfad); }}
    , gang_(umgebung, arbeitsplatz, dienste_)
    , eingang_(umgebung, arbeitsplatz, gang_, dienste_) {
    setObjectName(u"HG"_s);
    setAcceptDrops(true);
    verbindeMessplatz();
    verbindeFelder();
    verbindeBefehle();
    beobachtung_ = arbeitsplatz_.beobachte([this](const Änderung& änderung) { folge(änderung); });
    connect(qApp, &QApplication::focusChanged, this, [this] {
        arbeitsplatz_.beendeEingabe();
        befehle_.zeigeTextbefehle(textfeldMitFokus() != nullptr);
    });
    connect(&umgebung_.texte, &Texte::languageChanged, this, [this] { TexteAnwenden(); });
    fläche_.beiAnsicht([this] { zeigeZustand(); });
    Form_Load();
    const Leistenwahl leisten =
        stelleFensterlageHer(umgebung_.einstellungen, *this, *fläche_.teiler);
    fläche_.linkeLeiste->setVisible(leisten.links);
    rechteLeisteGewünscht_ = leisten.rechts;
    fläche_.setzeKriterienhöhe(umgebung_.einstellungen.zahl(Einstellung::FensterKriterienhöhe));
    kriterienGewünscht_ = umgebung_.einstellungen.schalter(Einstellung::FensterKriterien);
    zeigeZustand();
}

HG::~HG() {
    // Fields that lose the focus while they go still report to what is declared here, and the
    // toolkit tells of the last change of focus when this window is only a widget any more.
    disconnect(qApp, nullptr, this, nullptr);
    beobachtung_.reset();
    fläche_.beiAnsicht({});
    delete messHilfe_;
    delete takeCentralWidget();
}

void HG::verbindeMessplatz() {
    hinweise_.beiErsatz([this] { ansichten_.zeigeStandhinweis(); });
    fläche_.messplatz->beiHinweis([this](const Hinweis& h) { hinweise_.zeige(h); });
    protokoll_.beiHinweis([this](const Hinweis& h) { hinweise_.zeige(h); });
    protokoll_.setzeMessplatz(*fläche_.messplatz);
    auswertung_.urteil().beiKriterienwunsch([this] {
        schalteKriterien(true);
        auswertung_.kriterien().nimmTastatur();
    });
    fläche_.messplatz->beiFunden([this](bool fertig) {
        if (fertig) {
            funde_.sage();
            zeigeZustand();
        } else {
            zeigeStatus();
        }
    });
    fläche_.messplatz->beiZustand([this] { zeigeZustand(); });
    fläche_.messplatz->beiBildwunsch([this] { verteiler_.führeAus(befehl::BildLaden); });
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
}

void HG::verbindeBefehle() {
    verteiler_.meldeAn(befehl::Öffnen, [this] { gang_.öffne(); });
    verteiler_.meldeAn(befehl::BildLaden, [this] {
        if (const QString pfad = wähleBild(umgebung_, fläche_.messplatz->bild().pfad());
            !pfad.isEmpty()) {
            ladeBild(pfad);
        }
    });
    verteiler_.meldeAn(befehl::Grafik, [this] {
        öffneImGrafikprogramm(umgebung_, fläche_.messplatz->bild().pfad());
    });
    verteiler_.nachJedemBefehl([this](QStringView) { zeigeZustand(); });
    using Handler = void (HG::*)(int);
    for (const auto& [menü, handler] : {std::pair<Menü, Handler>{Menü::Datei, &HG::men_Datei_Click},
                                        {Menü::Bearbeiten, &HG::men_Bearbeiten_Click},
                                        {Menü::Ansicht, &HG::men_Ansicht_Click},
                                        {Menü::Zoom, &HG::men_Zoom_Click},
                                        {Menü::Extras, &HG::men_Extras_Click},
                                        {Menü::Betriebsart, &HG::men_Betriebsart_Click},
                                        {Menü::Sprache, &HG::men_Sprache_Click},
                                        {Menü::Hilfe, &HG::men_Hilfe_Click}}) {
        befehle_.beiKlick(menü, [this, ziel = handler](int index) { (this->*ziel)(index); });
    }
}

void HG::Form_Load() {
    einstellungen_.richteEin();
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
    if (änderung.Untersuchung) {
        fläche_.wähle({}); // a wing of that number is another one now
    }
    if (änderung.Reihe || änderung.Untersuchung) {
        flügelbefehle_.aktualisiere();
    }
    auswertung_.folge(änderung);
    funde_.folge(änderung);
    if (änderung.Punkte || änderung.Aufnahme || änderung.Reihe) {
        fläche_.messplatz->folge();
    }
    if (änderung.Untersuchung) {
        fläche_.messplatz->folgeUntersuchung();
    }
    if (änderung.Angaben || änderung.Urteil || änderung.Ablage) {
        protokoll_.aktualisiere();
    }
    if (änderung.übernommen) {
        fläche_.wähle({änderung.übernommen->nummer});
        if (!änderung.übernommen->wiederholt) {
            fläche_.messplatz->nächsterFlügel();
        }
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
    const Flügelfunde& funde = fläche_.messplatz->funde();
    lage.erkennung = funde.brauchbar();
    lage.mitFunden = funde.offene() > 0;
    lage.suchtFlügel = funde.stand() == Flügelfunde::Stand::Sucht;
    lage.mitFraglichen = !fläche_.messplatz->fragliche().empty();
    lage.zuSpeichern = untersuchung().geändert();
    lage.rückgängig = arbeitsplatz_.rückgängig() != nullptr;
    lage.wiederherstellbar = arbeitsplatz_.wiederherstellbar() != nullptr;
    lage.inTextfeld = textfeldMitFokus() != nullptr;
    lage.zweiseitig = protokoll_.seitenzahl() == 2;
    lage.mitHilfe = hilfeVorhanden(t);
    lage.leisteLinks = !fläche_.linkeLeiste->isHidden();
    lage.leisteRechts = rechteLeisteGewünscht_;
    lage.kriterien = kriterienGewünscht_;
    lage.lupeAmZeiger = fläche_.messplatz->lupen().amZeiger();
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
        Menü::Bearbeiten, BearbeitenRückgängig,
        name(arbeitsplatz_.rückgängig(), Meldung::Rückgängig, Meldung::RückgängigSchritt));
    befehle_.benenne(Menü::Bearbeiten, BearbeitenWiederherstellen,
                     name(arbeitsplatz_.wiederherstellbar(), Meldung::Wiederherstellen,
                          Meldung::WiederherstellenSchritt));

    fläche_.zeigeKriterien(kriterienGewünscht_);
    fläche_.messleiste->setVisible(rechteLeisteGewünscht_ && lage.amMessplatz);
    fläche_.messleiste->zeigeFlügel(messung_.nummer(), messung_.wiederholt());
    fläche_.messleiste->zeigePunkte(messung_.punkte(), messung_.messart(), messung_.aufnahme());
    bilder_.zeige();
    zeigeStatus();
    zeigeTitel();
    arbeitsplatz_.merkeAnsicht(lage.amMessplatz ? befehl::Messen : befehl::Alle);
    hinweise_.warneVorSchreibfehlern();
}

void HG::zeigeStatus() {
    fläche_.status->zeige(umgebung_.texte, fläche_.messplatz->bild(), fläche_.messplatz->funde(),
                          messung_, arbeitsplatz_.ablage().DatenbankPfad());
}

void HG::zeigeTitel() {
    const Texte& t = umgebung_.texte;
    const QString nummer = untersuchung().angaben().UNr.trimmed();
    setWindowTitle(
        (nummer.isEmpty() ? t(Meldung::Programmname) : t(Meldung::Fenstertitel).arg(nummer)) +
        u"[*]"_s);
    setWindowModified(untersuchung().geändert());
}

bool HG::ladeBild(const QString& pfad) {
    return ansichten_.zumMessplatz([&] { return bilder_.lade(pfad); });
}

void HG::übernimmDateien(const QStringList& pfade) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    const Hinweis vorher = hinweise_.gezeigter();
    öffneDateien(pfade);
    // What a file brought is worth more than that the program had been started; the hints by number
    // only say what to do next.
    Hinweis hinweis = hinweise_.gezeigter();
    if (hinweis == vorher || std::holds_alternative<int>(hinweis.was)) {
        hinweise_.zeige(Text::BereitsGestartet);
    } else {
        Hinweis beides(Text::BereitsGestartet);
        beides.weitere.push_back(std::move(hinweis));
        hinweise_.zeige(beides);
    }
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
    case DateiZuchtübersicht:
        gang_.zeigeZuchtübersicht();
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
        flügelbefehle_.löscheLetzte();
        break;
    case 1:
        flügelbefehle_.wiederhole();
        break;
    case 2:
        flügelbefehle_.beginneNeuen();
        break;
    case BearbeitenRückgängig:
    case BearbeitenWiederherstellen:
        flügelbefehle_.geheZurück(index == BearbeitenWiederherstellen);
        break;
    case BearbeitenAuslassen:
        flügelbefehle_.lassAusOderNimmAuf();
        break;
    case BearbeitenVorschlagen:
        fläche_.messplatz->schlageVor();
        break;
    case BearbeitenNächsterFraglicher:
        fläche_.messplatz->wähleFraglichen();
        break;
    case BearbeitenFlügelLöschen:
        flügelbefehle_.lösche();
        break;
    case BearbeitenAuflösung:
        bilder_.berichtigeAuflösung();
        break;
    case BearbeitenNachmessen:
        flügelbefehle_.missNach();
        break;
    case 11:
        flügelbefehle_.löscheAlle();
        break;
    default:
        bearbeiteText(index);
        break;
    }
}

void HG::men_Ansicht_Click(int index) {
    switch (index) {
    case 6:
        ansichten_.zeigeMessplatz(true);
        break;
    case 8:
    case 9:
        if (const QString nachbar =
                nachbarbild(fläche_.messplatz->bild().pfad(), index == 8 ? 1 : -1);
            !nachbar.isEmpty()) {
            ladeBild(nachbar);
        }
        break;
    case AnsichtNächsterFund:
    case AnsichtVorigerFund:
        fläche_.messplatz->geheZuFund(index == AnsichtNächsterFund ? 1 : -1);
        break;
    case AnsichtFlügelSuchen:
        fläche_.messplatz->sucheFlügel();
        break;
    case AnsichtLeisteLinks:
        fläche_.linkeLeiste->setVisible(fläche_.linkeLeiste->isHidden());
        zeigeZustand();
        break;
    case AnsichtLeisteRechts:
        rechteLeisteGewünscht_ = !rechteLeisteGewünscht_;
        zeigeZustand();
        break;
    case AnsichtKriterien:
        schalteKriterien(!kriterienGewünscht_);
        break;
    case AnsichtLupeAmZeiger:
        einstellungen_.schalteLupe();
        zeigeZustand();
        break;
    case AnsichtWerkzeugtexte:
        einstellungen_.schalteWerkzeugtexte();
        zeigeZustand();
        break;
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
        einstellungen_.optionen(this);
        zeigeZustand();
    }
}

void HG::men_Betriebsart_Click(int index) {
    fläche_.messplatz->wünscheMessart(static_cast<Messart>(index));
    zeigeZustand();
}

void HG::men_Sprache_Click(int index) {
    einstellungen_.wähleSprache(index);
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
        ansichten_.zeigeMessplatz(false);
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

void HG::schalteKriterien(bool zeigen) {
    kriterienGewünscht_ = zeigen;
    umgebung_.einstellungen.schreibe(Einstellung::FensterKriterien, zeigen ? 1 : 0);
    zeigeZustand();
}

void HG::drucke() {
    fläche_.kolonie->vervollständige();
    const QString ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    protokoll_.drucke(this, ordner.isEmpty() ? arbeitsplatz_.ablage().dokumente() : ordner);
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
    QApplication::setWindowIcon(programmsymbol());
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
        if (const int höhe = fläche_.kriterienhöhe(); höhe > 0) {
            umgebung_.einstellungen.schreibe(Einstellung::FensterKriterienhöhe, höhe);
        }
        bilder_.merke();
        arbeitsplatz_.beendeSitzung();
        event->accept();
    }
}

} // namespace tarvel
