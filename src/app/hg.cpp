#include "app/hg.h"

#include "app/hinweiszeile.h"
#include "app/info.h"
#include "evaluation/rassen.h"
#include "lang/hinweise.h"
#include "measure/aufloesung.h"
#include "measure/bildordner.h"
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
constexpr int EigenerHinweis = -1;

constexpr int Rand = 8;

// Items of the view menu that are no command words.
constexpr int AnsichtLeisteLinks = 20;
constexpr int AnsichtLeisteRechts = 21;
constexpr int AnsichtWerkzeugtexte = 22;

} // namespace

HG::HG(const Umgebung& umgebung)
    : umgebung_(umgebung)
    , messung_(untersuchung_.reihe(), umgebung.format)
    , modelle_(untersuchung_.reihe(), umgebung.texte, umgebung.format)
    , befehle_(*this, umgebung.texte) {
    setObjectName(u"HG"_s);
    setAcceptDrops(true);
    baueFläche();
    baueStatuszeile();
    verbindeMessung();
    verbindeFelder();
    meldeAnsichtenAn();
    connect(&umgebung_.texte, &Texte::languageChanged, this, [this] { wendeSpracheAn(); });
    Form_Load();
    stelleFensterlageHer();
    start_ = false;
}

HG::~HG() {
    delete messHilfe_;
}

void HG::baueFläche() {
    kolonie_ = new Kolonieformular(umgebung_.texte, umgebung_.format);
    auto* links = new QScrollArea;
    links->setObjectName(u"Leiste_Links"_s);
    links->setWidget(kolonie_);
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
    for (QWidget* ansicht : {static_cast<QWidget*>(messplatz_), static_cast<QWidget*>(alle_),
                             static_cast<QWidget*>(tabelle_)}) {
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

    lab_H_ = new Hinweiszeile;
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
                messleiste_->zeigePunkte(messung_.punkte(), messung_.messart());
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
    messplatz_->ZeigeHinweis = [this](int nummer) { ZeigeHinweis(nummer); };
    messplatz_->zustandGeändert = [this] { zeigeZustand(); };
    messplatz_->bildLadenGewünscht = [this] { verteiler_.ausführen(befehl::BildLaden); };
    messleiste_->beiPunktwahl([this](int nummer) {
        messung_.opt_Fein_Click(nummer);
        messplatz_->nimmTastatur();
    });
    messleiste_->beiAuflösung([this](int position) {
        messung_.setzeAuflösung(scannerauflösung(position));
        umgebung_.einstellungen.schreibe(Einstellung::ScannMessung, position);
        zeigeStatuszeile();
        auflösungGemeldet_ = false;
        warneVorGeringerAuflösung();
        messplatz_->nimmTastatur();
    });
}

void HG::verbindeFelder() {
    kolonie_->beiÄnderung([this](const Kolonieangaben& angaben) {
        untersuchung_.setzeAngaben(angaben);
        zeigeStatuszeile();
    });
    kolonie_->beiRassenwahl(
        [this](int index) { umgebung_.einstellungen.schreibe(Einstellung::GewählteRasse, index); });
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
    verteiler_.anmelden(befehl::BildLaden, [this] { bildLaden(); });
    verteiler_.anmelden(befehl::Grafik, [this] { grafik(); });
    verteiler_.anmelden(befehl::Alle, [this] {
        zeige(alle_, untersuchung_.reihe().leer() ? HinweisKeiner : HinweisWiederholen);
    });
    verteiler_.anmelden(befehl::Tabelle, [this] {
        zeige(tabelle_, untersuchung_.reihe().leer() ? HinweisKeiner : HinweisWiederholen);
    });
    verteiler_.anmelden(befehl::Messen, [this] { zeigeMessplatz(false); });
    verteiler_.nachJedemBefehl([this](QStringView) { zeigeZustand(); });
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
    reiheGeändert();
    wendeSpracheAn();
}

void HG::men_Datei_Click(int index) {
    switch (index) {
    case 5:
        verteiler_.ausführen(befehl::BildLaden);
        break;
    case 6:
        verteiler_.ausführen(befehl::Grafik);
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
        if (auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
            feld->undo();
        } else {
            messung_.macheRückgängig();
        }
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

void HG::men_Extras_Click(int /*index*/) {}

void HG::men_Betriebsart_Click(int index) {
    if (messplatz_->wünscheMessart(static_cast<Messart>(index))) {
        umgebung_.einstellungen.schreibe(Einstellung::Betriebsart, index);
    }
    zeigeZustand();
}

void HG::men_Sprache_Click(int index) {
    umgebung_.einstellungen.schreibe(Einstellung::Sprache, index);
    umgebung_.texte.SpracheEinstellen(index);
}

void HG::men_Hilfe_Click(int index) {
    switch (index) {
    case 0:
        if (!umgebung_.shell.openDocument(umgebung_.texte.HilfeDatei())) {
            umgebung_.dialoge.meldung(umgebung_.texte(Text::MenüHilfe),
                                      umgebung_.texte(Text::DateiNichtGefunden) + u'\n' +
                                          QDir::toNativeSeparators(umgebung_.texte.HilfeDatei()),
                                      Meldungsart::Ausruf);
        }
        break;
    case 1:
        Info(umgebung_.texte, this).exec();
        break;
    case 4:
        if (messplatz_->zustand() != Messplatz::Zustand::OhneBild) {
            zeigeMessplatz(false);
        }
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

void HG::bearbeiteText(int index) {
    auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
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
        feld->del();
        break;
    default:
        break;
    }
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

bool HG::ladeBild(const QString& pfad) {
    ansichten_->setCurrentWidget(messplatz_);
    const bool geladen = messplatz_->ladeBild(pfad);
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
    ZeigeEigenenHinweis(umgebung_.texte(Meldung::AuflösungZuGering).arg(dpi));
}

void HG::warneVorSchreibfehler() {
    if (schreibfehlerGemeldet_ || !umgebung_.einstellungen.schreibenMisslungen()) {
        return;
    }
    schreibfehlerGemeldet_ = true;
    ZeigeEigenenHinweis(umgebung_.texte(Meldung::EinstellungenNichtGeschrieben)
                            .arg(QDir::toNativeSeparators(umgebung_.einstellungen.IniPfad())));
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
    hinweisnummer_ = nummer;
    lab_H_->zeige(hinweistext(umgebung_.texte, nummer, messung_.nummer()));
}

void HG::ZeigeEigenenHinweis(const QString& text) {
    hinweisnummer_ = EigenerHinweis;
    lab_H_->zeige(text);
}

void HG::flügelÜbernommen(qint16 nummer, const std::vector<int>& ohne) {
    reiheGeändert();
    messleiste_->reihe().wähle(nummer);
    messplatz_->nächsterFlügel();
    if (!ohne.empty()) {
        QStringList nummern;
        for (const int punkt : ohne) {
            nummern << QString::number(punkt);
        }
        const Meldung text =
            ohne.size() == 1 ? Meldung::PunktNichtGesetzt : Meldung::PunkteNichtGesetzt;
        ZeigeEigenenHinweis(umgebung_.texte(text).arg(nummern.join(u", "_s)));
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
                                 .art = Meldungsart::Frage});
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
    int nummer = 0;
    if (ansichten_->currentWidget() == tabelle_) {
        nummer = tabelle_->gewählteNummer();
    } else {
        const Reihenansicht& liste =
            ansichten_->currentWidget() == alle_ ? *alle_ : messleiste_->reihe();
        const std::vector<int> gewählt = liste.gewählteNummern();
        nummer = gewählt.empty() ? 0 : gewählt.front();
    }
    return nummer != 0 ? nummer : untersuchung_.reihe().letzteNummer();
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

void HG::reiheGeändert() {
    modelle_.aktualisiere();
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
    for (const auto& [menü, index] :
         {std::pair{Menue::Datei, 0}, {Menue::Datei, 3}, {Menue::Datei, 8}, {Menue::Extras, 9}}) {
        erlaube(menü, index, false);
    }
    erlaube(Menue::Datei, 6, mitBild);
    erlaube(Menue::Ansicht, 6, mitBild);
    erlaube(Menue::Ansicht, 7, mitBild);
    erlaube(Menue::Ansicht, 8, mitBild);
    erlaube(Menue::Ansicht, 9, mitBild);
    erlaube(Menue::Bearbeiten, 0, !reihe.leer());
    erlaube(Menue::Bearbeiten, 1, !reihe.leer());
    erlaube(Menue::Bearbeiten, 2, amMessplatz && mitBild);
    erlaube(Menue::Bearbeiten, 11, !reihe.leer());

    // The view that is shown is the one that is checked.
    QStringView gezeigt;
    if (ansichten_->currentWidget() == alle_) {
        gezeigt = befehl::Alle;
    } else if (ansichten_->currentWidget() == tabelle_) {
        gezeigt = befehl::Tabelle;
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
    messleiste_->zeigePunkte(messung_.punkte(), messung_.messart());
    messleiste_->zeigeAuflösung(messung_.aufnahme().dpi);
    zeigeStatuszeile();
    warneVorSchreibfehler();
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
    status_->setText(teile.join(u"   ·   "_s));

    const QString nummer = untersuchung_.angaben().UNr.trimmed();
    setWindowTitle(
        (nummer.isEmpty() ? t(Meldung::Programmname) : t(Meldung::Fenstertitel).arg(nummer)) +
        u"[*]"_s);
    setWindowModified(untersuchung_.geändert());
}

void HG::wendeSpracheAn() {
    if (const std::optional<Sprache> sprache = umgebung_.texte.sprache()) {
        befehle_.aktion(Menue::Sprache, static_cast<int>(*sprache)).setChecked(true);
    }
    befehle_.werkzeugleiste().setWindowTitle(umgebung_.texte(Meldung::NameWerkzeugleiste));
    linkeLeiste_->setAccessibleName(umgebung_.texte(Meldung::LeisteVolksdaten));
    lab_H_->setAccessibleName(umgebung_.texte(Meldung::NameHinweiszeile));
    modelle_.aktualisiere();
    if (hinweisnummer_ != EigenerHinweis) {
        lab_H_->übersetze(hinweistext(umgebung_.texte, hinweisnummer_, messung_.nummer()));
    }
    zeigeZustand();
}

void HG::leisteSichtbar(QWidget* leiste, bool sichtbar) {
    leiste->setVisible(sichtbar);
    zeigeZustand();
}

void HG::merkeFensterlage() {
    umgebung_.einstellungen.schreibe(Einstellung::FensterHG,
                                     QString::fromLatin1(saveGeometry().toBase64()));
    QStringList leisten;
    const QList<int> größen = teiler_->sizes();
    for (const int größe : größen) {
        leisten << QString::number(größe);
    }
    leisten << QString::number(linkeLeiste_->isHidden() ? 0 : 1)
            << QString::number(rechteLeisteGewünscht_ ? 1 : 0);
    umgebung_.einstellungen.schreibe(Einstellung::FensterLeisten, leisten.join(u','));
}

void HG::stelleFensterlageHer() {
    const QByteArray lage =
        QByteArray::fromBase64(umgebung_.einstellungen.text(Einstellung::FensterHG).toLatin1());
    if (lage.isEmpty() || !restoreGeometry(lage)) {
        resize(1280, 720);
    }
    const QStringList leisten =
        umgebung_.einstellungen.text(Einstellung::FensterLeisten).split(u',');
    constexpr qsizetype AnzahlAngaben = 5;
    if (leisten.size() == AnzahlAngaben) {
        teiler_->setSizes({leisten[0].toInt(), leisten[1].toInt(), leisten[2].toInt()});
        linkeLeiste_->setVisible(leisten[3] != u'0');
        rechteLeisteGewünscht_ = leisten[4] != u'0';
    }
    zeigeZustand();
}

void HG::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); })) {
        event->acceptProposedAction();
    }
}

void HG::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile()) {
            event->acceptProposedAction();
            ladeBild(url.toLocalFile());
            return;
        }
    }
}

bool HG::Form_Unload() {
    kolonie_->vervollständige();
    if (!untersuchung_.reihe().geändert() && !messung_.punkte().begonnen()) {
        return true;
    }
    const Texte& t = umgebung_.texte;
    const Meldung text = untersuchung_.reihe().geändert() ? Meldung::SchließenUngespeichert
                                                          : Meldung::SchließenPunkteGesetzt;
    return umgebung_.dialoge.frage({.titel = t(Meldung::SchließenTitel),
                                    .text = t(text),
                                    .art = Meldungsart::Ausruf,
                                    .mitAbbrechen = false,
                                    .ja = t(Meldung::Schließen),
                                    .nein = t(Meldung::WeiterMessen)}) == Antwort::Ja;
}

void HG::closeEvent(QCloseEvent* event) {
    // Cancelled until everything that could be lost is dealt with.
    event->ignore();
    if (Form_Unload()) {
        merkeFensterlage();
        event->accept();
    }
}

} // namespace tarvel
