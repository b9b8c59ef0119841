#include "app/fensterflaeche.h"

#include "app/auswertung.h"
#include "app/statuszeile.h"
#include "evaluation/diagrammansicht.h"
#include "evaluation/kriterienansicht.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/urteilsanzeige.h"
#include "measure/lupe.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"
#include "measure/reihenansicht.h"
#include "measure/verteiler.h"
#include "results/kolonieformular.h"

#include <QAction>
#include <QMainWindow>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Rand = 8;

} // namespace

Fensterfläche::Fensterfläche(QMainWindow& fenster, const Umgebung& umgebung, Messbefehle& befehle,
                             Reihenmodelle& modelle, Auswertung& auswertung, QWidget& vorschau,
                             QWidget& hinweiszeile)
    : teiler(new QSplitter(Qt::Horizontal))
    , kolonie(new Kolonieformular(umgebung.texte, umgebung.format))
    , messplatz(new Messplatz(umgebung.texte, umgebung.dialoge, befehle, umgebung.modell))
    , messleiste(new Messleiste(umgebung.texte, modelle, &messplatz->lupen().feste()))
    , status(new Statuszeile)
    , umgebung_(umgebung)
    , reihe_(befehle.reihe())
    , modelle_(modelle)
    , auswertung_(auswertung)
    , vorschau_(vorschau)
    , mitte_(new QSplitter(Qt::Vertical))
    , ansichten_(new QStackedWidget) {
    auto* links = new QScrollArea;
    links->setObjectName(u"Leiste_Links"_s);
    auto* angaben = new QWidget;
    auto* untereinander = new QVBoxLayout(angaben);
    untereinander->setContentsMargins(0, 0, 0, 0);
    untereinander->addWidget(kolonie);
    untereinander->addWidget(&auswertung.urteil());
    untereinander->addStretch(1);
    links->setWidget(angaben);
    links->setWidgetResizable(true);
    links->setFocusPolicy(Qt::NoFocus); // its fields scroll it; Tab need not stop between
    links->setFrameShape(QFrame::NoFrame);
    links->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    links->setMinimumWidth(kolonie->minimumSizeHint().width() + Rand);
    linkeLeiste = links;

    messleiste->reihe().beiWahl(
        [this](const std::vector<int>& flügel) { übertrageWahl(flügel, &messleiste->reihe()); });

    ansichten_->setObjectName(u"Ansichten"_s);
    for (QWidget* ansicht :
         {static_cast<QWidget*>(messplatz), static_cast<QWidget*>(&auswertung.kurven()),
          static_cast<QWidget*>(&auswertung.korrel()), &vorschau}) {
        ansichten_->addWidget(ansicht);
    }
    messplatz->lupen().feste().setObjectName(u"pic_Lupe"_s);
    messleiste->setObjectName(u"Leiste_Rechts"_s);

    mitte_->setObjectName(u"Teiler_Mitte"_s);
    mitte_->setChildrenCollapsible(false);
    mitte_->addWidget(ansichten_);
    mitte_->setStretchFactor(0, 1);

    teiler->setObjectName(u"Teiler"_s);
    teiler->setChildrenCollapsible(false);
    for (QWidget* teil :
         {linkeLeiste, static_cast<QWidget*>(mitte_), static_cast<QWidget*>(messleiste)}) {
        teiler->addWidget(teil);
    }
    teiler->setStretchFactor(1, 1); // the picture gets the room
    teiler->setSizes({220, 770, 270});

    auto* fläche = new QWidget;
    auto* layout = new QVBoxLayout(fläche);
    layout->setContentsMargins(Rand, Rand, Rand, 0);
    layout->addWidget(teiler, 1);
    layout->addWidget(&hinweiszeile);
    fenster.setCentralWidget(fläche);

    status->setIndent(Rand);
    fenster.statusBar()->addPermanentWidget(status, 1);
    fenster.statusBar()->setSizeGripEnabled(false);
}

Reihenansicht& Fensterfläche::alle() {
    if (alle_ == nullptr) {
        alle_ = new Reihenansicht(umgebung_.texte, modelle_, u"Liste"_s, Qt::Horizontal);
        alle_->beiWahl([this](const std::vector<int>& flügel) { übertrageWahl(flügel, alle_); });
        alle_->setzeBefehle(flügelbefehle_);
        ansichten_->addWidget(alle_);
    }
    return *alle_;
}

Tabellenansicht& Fensterfläche::tabelle() {
    if (tabelle_ == nullptr) {
        tabelle_ = new Tabellenansicht(umgebung_.texte, modelle_);
        tabelle_->setzeBefehle(flügelbefehle_);
        tabelle_->beiWahl(
            [this](const std::vector<int>& flügel) { übertrageWahl(flügel, tabelle_); });
        ansichten_->addWidget(tabelle_);
    }
    return *tabelle_;
}

Merkmalansicht& Fensterfläche::merkmal() {
    if (merkmal_ == nullptr) {
        merkmal_ = &auswertung_.merkmal();
        ansichten_->addWidget(merkmal_);
    }
    return *merkmal_;
}

void Fensterfläche::baueRest() {
    (void)alle();
    (void)tabelle();
    (void)merkmal();
}

QWidget* Fensterfläche::gezeigte() const {
    return ansichten_->currentWidget();
}

void Fensterfläche::zeige(QWidget* ansicht) {
    if (ansicht != gezeigte()) {
        ansichten_->setCurrentWidget(ansicht);
        if (beiAnsicht_) {
            beiAnsicht_();
        }
    }
}

void Fensterfläche::zeigeKriterien(bool zeigen) {
    if (zeigen && kriterien_ == nullptr) {
        kriterien_ = &auswertung_.kriterien();
        mitte_->addWidget(kriterien_);
        mitte_->setStretchFactor(1, 0);
        const int höhe = kriterienhöhe_ > 0 ? kriterienhöhe_ : kriterien_->sizeHint().height();
        mitte_->setSizes({std::max(1, mitte_->height() - höhe), höhe});
    }
    if (kriterien_ != nullptr) {
        kriterien_->setVisible(zeigen && gezeigte() != &vorschau_);
    }
}

int Fensterfläche::kriterienhöhe() const {
    return kriterien_ != nullptr && kriterien_->isVisible() ? kriterien_->height() : kriterienhöhe_;
}

bool Fensterfläche::amMessplatz() const {
    return gezeigte() == messplatz;
}

QStringView Fensterfläche::ansichtswort() const {
    const std::pair<const QWidget*, QStringView> worte[] = {{alle_, befehl::Alle},
                                                            {tabelle_, befehl::Tabelle},
                                                            {&auswertung_.kurven(), befehl::Kurven},
                                                            {&auswertung_.korrel(), befehl::Korrel},
                                                            {merkmal_, befehl::Merkmal}};
    const auto* const wort =
        std::find_if(std::begin(worte), std::end(worte),
                     [ansicht = gezeigte()](const auto& w) { return w.first == ansicht; });
    return wort == std::end(worte) ? QStringView() : wort->second;
}

QString Fensterfläche::hilfethema() const {
    const QWidget* ansicht = gezeigte();
    const std::pair<const QWidget*, QString> themen[] = {{messplatz, u"messen"_s},
                                                         {&auswertung_.kurven(), u"beurteilung"_s},
                                                         {&auswertung_.korrel(), u"indizes"_s},
                                                         {merkmal_, u"merkmale"_s},
                                                         {&vorschau_, u"protokoll"_s}};
    const auto* const thema = std::find_if(std::begin(themen), std::end(themen),
                                           [ansicht](const auto& t) { return t.first == ansicht; });
    return thema == std::end(themen) ? u"index"_s : thema->second;
}

std::vector<int> Fensterfläche::gewählteFlügel() const {
    const QWidget* ansicht = gezeigte();
    std::vector<int> gewählt;
    if (tabelle_ != nullptr && ansicht == tabelle_) {
        gewählt = tabelle_->gewählteNummern();
    } else if (const auto* diagramm = dynamic_cast<const Diagrammansicht*>(ansicht)) {
        gewählt = diagramm->hervorgehoben();
    } else if (alle_ != nullptr && ansicht == alle_) {
        gewählt = alle_->gewählteNummern();
    } else if (amMessplatz()) {
        const int nummer = messplatz->flügelAmZeiger();
        gewählt = nummer > 0 ? std::vector{nummer} : messleiste->reihe().gewählteNummern();
    }
    // A chart may still point out a wing that is gone.
    std::erase_if(gewählt, [this](int nummer) { return !reihe_.enthält(nummer); });
    return gewählt;
}

int Fensterfläche::gewählterFlügel() const {
    const std::vector<int> gewählt = gewählteFlügel();
    return gewählt.empty() ? reihe_.letzteNummer() : gewählt.front();
}

void Fensterfläche::setzeFlügelbefehle(const QList<QAction*>& befehle) {
    flügelbefehle_ = befehle;
    for (Reihenansicht* liste : {alle_, &messleiste->reihe()}) {
        if (liste != nullptr) {
            liste->setzeBefehle(befehle);
        }
    }
    if (tabelle_ != nullptr) {
        tabelle_->setzeBefehle(befehle);
    }
    messplatz->setzeBefehle(befehle);
    for (Diagrammansicht* diagramm : {&auswertung_.kurven(), &auswertung_.korrel()}) {
        auto* strich = new QAction(diagramm);
        strich->setSeparator(true);
        diagramm->addAction(strich);
        diagramm->addActions(befehle);
    }
}

void Fensterfläche::wähle(const std::vector<int>& flügel) {
    übertrageWahl(flügel, nullptr);
}

void Fensterfläche::übertrageWahl(const std::vector<int>& flügel, const QWidget* von) {
    if (std::exchange(überträgt_, true)) {
        return; // a view that follows
    }
    for (Reihenansicht* liste : {alle_, &messleiste->reihe()}) {
        if (liste != nullptr && liste != von) {
            liste->wähle(flügel);
        }
    }
    if (tabelle_ != nullptr && tabelle_ != von) {
        tabelle_->wähle(flügel);
    }
    auswertung_.hebeHervor(flügel);
    überträgt_ = false;
}

} // namespace tarvel
