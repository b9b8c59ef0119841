#include "print/vorschau.h"

#include "print/vorschaublatt.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

// Option buttons show in every style and colour which one is on; between the two, none is.
QRadioButton* schalter(const QString& name) {
    auto* knopf = new QRadioButton;
    knopf->setObjectName(name);
    knopf->setAutoExclusive(false);
    return knopf;
}

} // namespace

Vorschau::Vorschau(const Texte& texte, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , blatt_(new Vorschaublatt)
    , opt_GanzeSeite_(schalter(u"opt_GanzeSeite"_s))
    , opt_Originalgröße_(schalter(u"opt_Originalgröße"_s))
    , lab_Zoom_(new QLabel) {
    setObjectName(u"Vorschau"_s);
    setFocusProxy(blatt_);
    lab_Zoom_->setObjectName(u"lab_Zoom"_s);
    auto* leiste = new QHBoxLayout;
    leiste->setContentsMargins(8, 4, 8, 0);
    leiste->setSpacing(16);
    leiste->addWidget(opt_GanzeSeite_);
    leiste->addWidget(opt_Originalgröße_);
    leiste->addStretch();
    leiste->addWidget(lab_Zoom_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(leiste);
    layout->addWidget(blatt_, 1);

    connect(opt_GanzeSeite_, &QRadioButton::clicked, this, [this] { zeigeGanzeSeite(); });
    connect(opt_Originalgröße_, &QRadioButton::clicked, this, [this] { zeigeOriginalgröße(); });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    blatt_->beiZoom([this] { zeigeZoom(); });
    beschrifte();
    zeigeZoom();
}

void Vorschau::beschrifte() {
    opt_GanzeSeite_->setText(texte_(Meldung::GanzeSeite));
    opt_GanzeSeite_->setToolTip(texte_(Meldung::TippGanzeSeite));
    opt_Originalgröße_->setText(texte_(Text::MenüOriginalgröße));
    opt_Originalgröße_->setToolTip(texte_(Meldung::TippOriginalgröße));
    lab_Zoom_->setAccessibleName(texte_(Meldung::NameZoom));
    blatt_->setAccessibleName(texte_(Meldung::NameVorschau));
}

void Vorschau::zeigeZoom() {
    constexpr double Spiel = 0.005;
    opt_GanzeSeite_->setChecked(blatt_->ganz());
    opt_Originalgröße_->setChecked(!blatt_->ganz() && std::abs(zoom() - 1) < Spiel);
    lab_Zoom_->setText(u"%1 %"_s.arg(qRound(zoom() * 100)));
}

void Vorschau::zeige(Seite seite) {
    blatt_->setzeSeite(std::move(seite));
    blatt_->viewport()->update();
}

void Vorschau::beiBlättern(std::function<void(int)> blättern) {
    blatt_->beiBlättern(std::move(blättern));
}

void Vorschau::zeigeGanzeSeite() {
    blatt_->setzeZoom(std::nullopt);
}

void Vorschau::zeigeOriginalgröße() {
    blatt_->setzeZoom(1);
}

void Vorschau::vergrößere() {
    blatt_->stufe(1);
}

void Vorschau::verkleinere() {
    blatt_->stufe(-1);
}

double Vorschau::zoom() const {
    return blatt_->zoom();
}

} // namespace tarvel
