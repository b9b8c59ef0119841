#include "app/hg.h"

#include "app/fensterlage.h"
#include "app/hinweiszeile.h"
#include "evaluation/diagrammansicht.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/rassen.h"
#include "evaluation/urteilsanzeige.h"
#include "lang/hilfe.h"
#include "lang/hinweise.h"
#include "measure/aufloesung.h"
#include "measure/lupe.h"
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
#include <QLineEdit>
#include <QMimeData>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int HinweisKeiner = 0;
constexpr int HinweisWiederholen = 7;
constexpr int HinweisKreuzZeigen = 9;
constexpr int HinweisMerkmaleJeBiene = 10;
constexpr int HinweisMerkmaleSummen = 11;

constexpr int Rand = 8;

/// How the marks are entered in their mode.
int merkmalhinweis(const Merkmale& merkmale) {
    return merkmale.Modus == Merkmalmodus::Liste ? HinweisMerkmaleJeBiene : HinweisMerkmaleSummen;
}

} // namespace

HG::HG(const Umgebung& umgebung, Benutzerspeicher& speicher, Untersuchung& untersuchung,
       Ablage& ablage, Sitzung& sitzung)
    : umgebung_(umgebung)
    , speicher_(speicher)
    , untersuchung_(untersuchung)
    , ablage_(ablage)
    , sitzung_(sitzung)
    , messung_(untersuchung_.reihe(), umgebung.format)
    , modelle_(untersuchung_.reihe(), umgebung.texte, umgebung.format)
    , befehle_(*this, umgebung.texte)
    , auswertung_(umgebung, untersuchung_)
    , protokoll_(umgebung, untersuchung_, auswertung_)
    , austausch_(umgebung_, ablage_, untersuchung_) {
    setObjectName(u"HG"_s);
    setAcceptDrops(true);
    baueFläche();
    baueStatuszeile();
    verbindeMessung();
    verbindeFelder();
    meldeAnsichtenAn();
    verbindeAuswertung();
    connect(qApp, &QApplication::focusChanged, this, [this] { erlaubeTextbefehle(); });
    connect(&umgebung_.texte, &Texte::languageChanged, this, [this] { TexteAnwenden(); });
    Form_Load();
    const Leistenwahl leisten = stelleFensterlageHer(umgebung_.einstellungen, *this, *teiler_);
    linkeLeiste_->setVisible(leisten.links);
    rechteLeisteGewünscht_ = leisten.rechts;
    zeigeZustand();
}

HG::~HG() {
    // Fields that lose the focus while they go still report to what is declared here, and the
    // toolkit tells of the last change of focus when this window is only a widget any more.
    disconnect(qApp, nullptr, this, nullptr);
    delete messHilfe_;
    delete takeCentralWidget();
}

void HG::baueFläche() {
    kolonie_ = new Kolonieformular(umgebung_.texte, umgebung_.format);
    auto* links = new QScrollArea;
    links->setObjectName(u"Leiste_Links"_s);
    auto* angaben = new QWidget;
    auto* untereinander = new QVBoxLayout(angaben);
    untereinander->setContentsMargins(0, 0, 0, 0);
    untereinander->addWidget(kolonie_);
    untereinander->addWidget(&auswertung_.urteil());
    untereinander->addStretch(1);
    links->setWidget(angaben);
    links->setWidgetResizable(true);
    links->setFrameShape(QFrame::NoFrame);
    links->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    links->setMinimumWidth(kolonie_->minimumSizeHint().width() + Rand);
    linkeLeiste_ = links;

    messplatz_ = new Messplatz(umgebung_.texte, umgebung_.dialoge, messung_, untersuchung_.reihe());
    alle_ = new Reihenansicht(umgebung_.texte, modelle_, u"Liste"_s, Qt::Horizontal);
    tabelle_ = new Tabellenansicht(umgebung_.texte, modelle_);
    ansichten_ = new QStackedWidget;
    ansichten_->setObjectName(u"Ansichten"_s);
    for (QWidget* ansicht :
         {static_cast<QWidget*>(messplatz_), static_cast<QWidget*>(alle_),
          static_cast<QWidget*>(tabelle_), static_cast<QWidget*>(&auswertung_.kurven()),
          static_cast<QWidget*>(&auswertung_.korrel()),
          static_cast<QWidget*>(&auswertung_.merkmal()), &protokoll_.vorschau()}) {
        ansichten_->addWidget(ansicht);
    }

    messplatz_->lupe().setObjectName(u"pic_Lupe"_s);
    messleiste_ = new Messleiste(umgebung_.texte, modelle_, &messplatz_->lupe());
    messleiste_->setObjectName(u"Leiste_Rechts"_s);

    teiler_ = new QSplitter(Qt::Horizontal);
    teiler_->setObjectName(u"Teiler"_s);
    teiler_->setChildrenCollapsible(false);
    for (QWidget* teil :
         {linkeLeiste_, static_cast<QWidget*>(ansichten_), static_cast<QWidget*>(messleiste_)}) {
        teiler_->addWidget(teil);
    }
    teiler_->setStretchFactor(1, 1); // the picture gets the room
    teiler_->setSizes({220, 770, 270});

    lab_H_ = new Hinweiszeile(umgebung_.texte);
    auto* fläche = new QWidget;
    auto* layout = new QVBoxLayout(fläche);
    layout->setContentsMargins(Rand, Rand, Rand, 0);
    layout->addWidget(teiler_, 1);
    layout->addWidget(lab_H_);
    setCentralWidget(fläche);
}

void HG::baueStatuszeile() {
    status_ = new QLabel;
    status_->setObjectName(u"lab_Status"_s);
    status_->setTextFormat(Qt::PlainText); // names of files are no pages
    status_->setIndent(Rand);
    statusBar()->addPermanentWidget(status_, 1);
    statusBar()->setSizeGripEnabled(false);
}

void HG::verbindeMessung() {
    messung_.setzeEmpfänger({
        .ZeigeHinweis = [this](int nummer) { ZeigeHinweis(nummer); },
        .punkteGeändert =
            [this] {
                messplatz_->zeigePunkte();
                messleiste_->zeigePunkte(messung_.punkte(), messung_.messart(),
                                         messung_.aufnahme());
                zeigeZustand();
            },
        .flügelÜbernommen =
            [this](qint16 nummer, const std::vector<int>& ohne) { flügelÜbernommen(nummer, ohne); },
        .rechenfehler = [this](Rechenfehler fehler) { rechenfehler(fehler); },
        .reiheVoll =
            [this] {
                umgebung_.dialoge.meldung(umgebung_.texte(Text::Fehler),
                                          umgebung_.texte(Meldung::ReiheVoll), Meldungsart::Ausruf);
            },
    });
    messplatz_->ZeigeHinweis = [this](const Hinweis& h) { ZeigeEigenenHinweis(h); };
    messplatz_->zustandGeändert = [this] { zeigeZustand(); };
    messplatz_->bildLadenGewünscht = [this] { verteiler_.ausführen(befehl::BildLaden); };
    messleiste_->beiPunktwahl([this](int nummer) {
        messung_.opt_Fein_Click(nummer);
        messplatz_->nimmTastatur();
    });
    messleiste_->beiAuflösung([this](int position) {
        messung_.setzeAuflösung(scannerauflösung(position));
        umgebung_.einstellungen.schreibe(Einstellung::ScannMessung, position);
        zeigeZustand();
        auflösungGemeldet_ = false;
        warneVorGeringerAuflösung();
        messplatz_->nimmTastatur();
    });
}

void HG::verbindeFelder() {
    kolonie_->beiÄnderung([this](const Kolonieangaben& angaben) {
        untersuchung_.setzeAngaben(angaben);
        zeigeStatuszeile();
        protokoll_.aktualisiere();
        merkeSitzung();
    });
    kolonie_->beiVorschlägen(
        [this](QString Kolonieangaben::*wert) { return ablage_.bekannte(wert); });
    kolonie_->beiGeschlechtswahl([this](Geschlecht tiere) { return wechsleGeschlecht(tiere); });
    kolonie_->beiRassenwahl([this](int index) {
        umgebung_.einstellungen.schreibe(Einstellung::GewählteRasse, index);
        auswertung_.ladeStandard();
        zeigeZustand();
    });
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
    verteiler_.anmelden(befehl::Öffnen, [this] { öffnen(); });
    verteiler_.anmelden(befehl::BildLaden, [this] { bildLaden(); });
    verteiler_.anmelden(befehl::Grafik, [this] { grafik(); });
    verteiler_.anmelden(befehl::Alle, [this] {
        zeige(alle_, untersuchung_.reihe().leer() ? HinweisKeiner : HinweisWiederholen);
    });
    verteiler_.anmelden(befehl::Tabelle, [this] {
        zeige(tabelle_, untersuchung_.reihe().leer() ? HinweisKeiner : HinweisWiederholen);
    });
    verteiler_.anmelden(befehl::Kurven, [this] { zeige(&auswertung_.kurven(), HinweisKeiner); });
    verteiler_.anmelden(befehl::Korrel, [this] {
        zeige(&auswertung_.korrel(),
              untersuchung_.reihe().hiDvZeilen().empty() ? HinweisKeiner : HinweisKreuzZeigen);
    });
    verteiler_.anmelden(befehl::Merkmal, [this] {
        zeige(&auswertung_.merkmal(), merkmalhinweis(untersuchung_.merkmale()));
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
    auswertung_.flügelGewählt = [this](const std::vector<int>& flügel) {
        alle_->wähle(flügel);
        messleiste_->reihe().wähle(flügel);
        tabelle_->wähle(flügel);
        auswertung_.hebeHervor(flügel);
    };
    auswertung_.merkmaleGeändert = [this] {
        const Hinweis neu = merkmalhinweis(untersuchung_.merkmale());
        const Hinweis& gezeigt = lab_H_->hinweis();
        if (gezeigt != neu && (gezeigt == Hinweis(HinweisMerkmaleJeBiene) ||
                               gezeigt == Hinweis(HinweisMerkmaleSummen))) {
            ZeigeEigenenHinweis(neu);
        }
        zeigeZustand();
    };
    alle_->beiWahl([this](const std::vector<int>& flügel) { auswertung_.hebeHervor(flügel); });
}

void HG::Form_Load() {
    const Einstellungen& e = umgebung_.einstellungen;
    const QStringList rassen = rassenliste(e);
    Kolonieangaben angaben;
    angaben.Rasse =
        std::clamp<int>(e.zahl(Einstellung::Rasse), 0, static_cast<int>(rassen.size()) - 1);
    untersuchung_.setzeAngaben(angaben);
    untersuchung_.alsUnverändertMerken();
    kolonie_->setzeRassen(rassen);
    kolonie_->zeige(angaben);

    messung_.setzeAuflösung(scannerauflösung(e.zahl(Einstellung::ScannMessung)));
    messung_.setzeZoomfaktor(e.zahl(Einstellung::DefaultZoomHauptfenster) + 1);
    messung_.setzeMessart(
        static_cast<Messart>(std::clamp<int>(e.zahl(Einstellung::Betriebsart), 0, 2)));
    befehle_.zeigeWerkzeugtexte(e.schalter(Einstellung::FensterWerkzeugtexte));
    befehle_.aktion(Menue::Ansicht, AnsichtWerkzeugtexte)
        .setChecked(e.schalter(Einstellung::FensterWerkzeugtexte));
    const bool lupeAmZeiger = e.schalter(Einstellung::FensterLupeAmZeiger);
    messplatz_->setzeLupeAmZeiger(lupeAmZeiger);
    befehle_.aktion(Menue::Ansicht, AnsichtLupeAmZeiger).setChecked(lupeAmZeiger);
    messleiste_->setzeZiel(e.zahl(Einstellung::Zielzahl));
    auswertung_.ladeStandard();
    auswertung_.zeigeMerkmale();
    reiheGeändert();
    TexteAnwenden();
}

bool HG::ladeBild(const QString& pfad) {
    QWidget* vorher = ansichten_->currentWidget();
    ansichten_->setCurrentWidget(messplatz_);
    const bool geladen = messplatz_->ladeBild(pfad);
    if (!geladen) {
        ansichten_->setCurrentWidget(vorher);
    }
    zeigeZustand();
    if (geladen) {
        warneVorGeringerAuflösung();
    }
    return geladen;
}

void HG::warneVorGeringerAuflösung() {
    const int dpi = messung_.aufnahme().dpi;
    if (dpi >= EmpfohleneAuflösung || auflösungGemeldet_) {
        return;
    }
    auflösungGemeldet_ = true;
    ZeigeEigenenHinweis({Meldung::AuflösungZuGering, {QString::number(dpi)}});
}

void HG::warneVorSchreibfehler() {
    // While the program starts, another hint would take its place at once.
    if (!sitzungLäuft_ || schreibfehlerGemeldet_ ||
        !umgebung_.einstellungen.schreibenMisslungen()) {
        return;
    }
    schreibfehlerGemeldet_ = true;
    ZeigeEigenenHinweis({Meldung::EinstellungenNichtGeschrieben,
                         {QDir::toNativeSeparators(umgebung_.einstellungen.IniPfad())}});
}

void HG::zeige(QWidget* ansicht, int hinweisnummer) {
    ansichten_->setCurrentWidget(ansicht);
    ansicht->setFocus();
    ZeigeHinweis(hinweisnummer);
}

void HG::zeigeMessplatz(bool übersicht) {
    ansichten_->setCurrentWidget(messplatz_);
    if (übersicht) {
        messplatz_->zeigeÜbersicht();
    } else {
        messplatz_->zeigeMessen();
    }
    zeigeZustand();
}

void HG::messmodus(int hinweisnummer) {
    ansichten_->setCurrentWidget(messplatz_);
    ZeigeHinweis(hinweisnummer);
    zeigeZustand();
}

void HG::ZeigeHinweis(int nummer) {
    constexpr int HinweisRechteckAufFlügel = 6;
    ZeigeEigenenHinweis({nummer, nummer == HinweisRechteckAufFlügel ? messung_.nummer() : 0});
}

void HG::ZeigeEigenenHinweis(const Hinweis& hinweis) {
    lab_H_->zeige(hinweis);
}

void HG::flügelÜbernommen(qint16 nummer, const std::vector<int>& ohne) {
    reiheGeändert();
    messleiste_->reihe().wähle({nummer});
    messplatz_->nächsterFlügel();
    if (!ohne.empty()) {
        QStringList nummern;
        for (const int punkt : ohne) {
            nummern << QString::number(punkt);
        }
        const Meldung text =
            ohne.size() == 1 ? Meldung::PunktNichtGesetzt : Meldung::PunkteNichtGesetzt;
        ZeigeEigenenHinweis({text, {nummern.join(u", "_s)}});
    }
}

void HG::rechenfehler(Rechenfehler fehler) {
    reiheGeändert();
    const Meldung text = fehler == Rechenfehler::DivisionDurchNull ? Meldung::PunkteFallenZusammen
                                                                   : Meldung::WurzelNegativ;
    umgebung_.dialoge.meldung(umgebung_.texte(Text::Fehler), umgebung_.texte(text),
                              Meldungsart::Ausruf);
    messplatz_->nimmTastatur();
}

void HG::reiheGeändert() {
    modelle_.aktualisiere();
    auswertung_.aktualisiere();
    messplatz_->zeigeErledigte();
    zeigeZustand();
}

void HG::zeigeZustand() {
    const Messreihe& reihe = untersuchung_.reihe();
    const bool amMessplatz = ansichten_->currentWidget() == messplatz_;
    const bool mitBild = messplatz_->zustand() != Messplatz::Zustand::OhneBild;
    const auto erlaube = [this](Menue menü, int index, bool erlaubt) {
        befehle_.aktion(menü, index).setEnabled(erlaubt);
    };
    // Views that have registered can be shown, from everywhere.
    const std::tuple<Menue, int, QStringView> nachWort[] = {
        {Menue::Datei, 1, befehl::Öffnen},     {Menue::Datei, 9, befehl::Vorschau1},
        {Menue::Datei, 10, befehl::Vorschau2}, {Menue::Ansicht, 0, befehl::Alle},
        {Menue::Ansicht, 2, befehl::Merkmal},  {Menue::Ansicht, 3, befehl::Kurven},
        {Menue::Ansicht, 4, befehl::Korrel},   {Menue::Ansicht, 11, befehl::Tabelle}};
    for (const auto& [menü, index, wort] : nachWort) {
        erlaube(menü, index, verteiler_.kennt(wort));
    }
    erlaube(Menue::Datei, 10, protokoll_.seitenzahl() == 2);
    erlaube(Menue::Datei, DateiExportieren, !reihe.leer());
    erlaube(Menue::Datei, 6, mitBild);
    erlaube(Menue::Ansicht, 6, mitBild);
    erlaube(Menue::Ansicht, 7, mitBild);
    erlaube(Menue::Ansicht, 8, mitBild);
    erlaube(Menue::Ansicht, 9, mitBild);
    erlaube(Menue::Bearbeiten, 0, !reihe.leer());
    erlaube(Menue::Bearbeiten, 1, !reihe.leer());
    erlaube(Menue::Bearbeiten, 2, amMessplatz && mitBild);
    erlaube(Menue::Bearbeiten, 11, !reihe.leer());
    erlaube(Menue::Bearbeiten, 3, amMessplatz && messung_.rückgängigMöglich());
    erlaube(Menue::Hilfe, 0,
            QFileInfo::exists(umgebung_.texte.HilfeDatei()) ||
                !hilfeseite(umgebung_.texte).isEmpty());
    erlaubeTextbefehle();

    // The view that is shown is the one that is checked.
    QStringView gezeigt;
    const std::pair<const QWidget*, QStringView> ansichten[] = {
        {alle_, befehl::Alle},
        {tabelle_, befehl::Tabelle},
        {&auswertung_.kurven(), befehl::Kurven},
        {&auswertung_.korrel(), befehl::Korrel},
        {&auswertung_.merkmal(), befehl::Merkmal}};
    for (const auto& [ansicht, wort] : ansichten) {
        if (ansichten_->currentWidget() == ansicht) {
            gezeigt = wort;
        }
    }
    for (const auto& [menü, index, wort] : nachWort) {
        if (menü == Menue::Ansicht) {
            befehle_.aktion(menü, index).setChecked(wort == gezeigt);
        }
    }
    befehle_.aktion(Menue::Ansicht, 6)
        .setChecked(amMessplatz && messplatz_->zustand() == Messplatz::Zustand::Übersicht);
    befehle_.aktion(Menue::Ansicht, 7)
        .setChecked(amMessplatz && messplatz_->zustand() == Messplatz::Zustand::Messen);

    befehle_.aktion(Menue::Zoom, messung_.aufnahme().Zoomfaktor).setChecked(true);
    befehle_.aktion(Menue::Betriebsart, static_cast<int>(messung_.messart())).setChecked(true);
    befehle_.aktion(Menue::Ansicht, AnsichtLeisteLinks).setChecked(!linkeLeiste_->isHidden());
    befehle_.aktion(Menue::Ansicht, AnsichtLeisteRechts).setChecked(rechteLeisteGewünscht_);
    messleiste_->setVisible(rechteLeisteGewünscht_ && amMessplatz);
    messleiste_->zeigeFlügel(messung_.nummer(), messung_.wiederholt());
    messleiste_->zeigePunkte(messung_.punkte(), messung_.messart(), messung_.aufnahme());
    messleiste_->zeigeAuflösung(messung_.aufnahme().dpi);
    zeigeStatuszeile();
    protokoll_.aktualisiere();
    merkeSitzung();
    warneVorSchreibfehler();
}

/// The commands of the edit menu that act on the selected text of a field.
void HG::erlaubeTextbefehle() {
    const bool inFeld = textfeldMitFokus() != nullptr;
    for (int index = 5; index <= 8; ++index) {
        befehle_.aktion(Menue::Bearbeiten, index).setEnabled(inFeld);
    }
}

void HG::zeigeStatuszeile() {
    const Texte& t = umgebung_.texte;
    QStringList teile;
    if (!messplatz_->bilddatei().isEmpty()) {
        const QSize größe = messplatz_->bildgröße();
        teile
            << QFileInfo(messplatz_->bilddatei()).fileName()
            << u"%1 × %2 %3"_s.arg(größe.width()).arg(größe.height()).arg(t(Meldung::EinheitPixel));
    }
    teile << t(Meldung::NameZoom) + u' ' + QString::number(messung_.aufnahme().Zoomfaktor)
          << u"%1 %2"_s.arg(messung_.aufnahme().dpi).arg(t(Meldung::EinheitDpi))
          << t(Meldung::FlügelNummer).arg(messung_.nummer(), 3, 10, QChar(u'0'));
    if (const QString& pfad = ablage_.DatenbankPfad(); !pfad.isEmpty()) {
        teile << t(Meldung::DatenbankStatus).arg(QFileInfo(pfad).fileName());
        status_->setToolTip(Qt::convertFromPlainText(QDir::toNativeSeparators(pfad)));
    }
    status_->setText(teile.join(u"   ·   "_s));

    const QString nummer = untersuchung_.angaben().UNr.trimmed();
    setWindowTitle(
        (nummer.isEmpty() ? t(Meldung::Programmname) : t(Meldung::Fenstertitel).arg(nummer)) +
        u"[*]"_s);
    setWindowModified(untersuchung_.geändert());
    befehle_.aktion(Menue::Datei, 2).setEnabled(untersuchung_.geändert());
}

void HG::TexteAnwenden() {
    if (const std::optional<Sprache> sprache = umgebung_.texte.sprache()) {
        befehle_.aktion(Menue::Sprache, static_cast<int>(*sprache)).setChecked(true);
    }
    befehle_.werkzeugleiste().setWindowTitle(umgebung_.texte(Meldung::NameWerkzeugleiste));
    linkeLeiste_->setAccessibleName(umgebung_.texte(Meldung::LeisteVolksdaten));
    lab_H_->setAccessibleName(umgebung_.texte(Meldung::NameHinweiszeile));
    modelle_.aktualisiere();
    auswertung_.merkmal().TexteAnwenden();
    auswertung_.aktualisiere();
    zeigeZustand();
}

void HG::leisteSichtbar(QWidget* leiste, bool sichtbar) {
    leiste->setVisible(sichtbar);
    zeigeZustand();
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
    kolonie_->vervollständige();
    return protokoll_.verlasseÜbersetzung() && verlasseUntersuchung();
}

void HG::closeEvent(QCloseEvent* event) {
    // Cancelled until everything that could be lost is dealt with.
    event->ignore();
    if (Form_Unload()) {
        merkeFensterlage(umgebung_.einstellungen, *this, *teiler_,
                         {.links = !linkeLeiste_->isHidden(), .rechts = rechteLeisteGewünscht_});
        sitzungLäuft_ = false;
        sitzung_.lösche(); // what is given up here shall not come back
        event->accept();
    }
}

} // namespace tarvel
