#include "results/filterzeile.h"

#include "results/zeileneingabe.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The entries of a list behind the first, which means all; the choice stays, also when the file
/// has no such row any more.
void setze(QComboBox& liste, const QStringList& worte, const QStringList& werte) {
    const QSignalBlocker still(liste);
    const QString gewählt = liste.currentData().toString();
    const QString wort = liste.currentText();
    while (liste.count() > 1) {
        liste.removeItem(1);
    }
    for (qsizetype i = 0; i < worte.size(); ++i) {
        liste.addItem(worte.at(i), werte.at(i));
    }
    if (!gewählt.isEmpty() && liste.findData(gewählt) < 0) {
        liste.addItem(wort, gewählt);
    }
    liste.setCurrentIndex(std::max(0, gewählt.isEmpty() ? 0 : liste.findData(gewählt)));
}

} // namespace

Filterzeile::Filterzeile(const Texte& texte, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , raster_(new QGridLayout(this))
    , flügel_(new QSpinBox) {
    setObjectName(u"Filterzeile"_s);
    raster_->setContentsMargins(0, 0, 0, 0);
    saison_ = baueListe(u"cbo_Saison"_s, texte(Meldung::Saison), texte(Meldung::AlleSaisons));
    züchter_ = baueListe(u"cbo_Züchter"_s, spaltentitel(texte, Ergebnisspalte::Züchter),
                         texte(Meldung::AlleZüchter));
    rasse_ = baueListe(u"cbo_Rasse"_s, spaltentitel(texte, Ergebnisspalte::Rasse),
                       texte(Meldung::AlleRassen));
    tiere_ = baueListe(u"cbo_Geschlecht"_s, spaltentitel(texte, Ergebnisspalte::Geschlecht),
                       texte(Meldung::AlleGeschlechter));
    ergebnis_ = baueListe(u"cbo_Ergebnis"_s, spaltentitel(texte, Ergebnisspalte::Entspricht),
                          texte(Meldung::AlleUrteile));
    // The places of the items are the values of their enumerations.
    tiere_->addItems({texte(Text::Arbeiter), texte(Text::Drohnen)});
    ergebnis_->addItems({texte(Text::EntsprichtDerRasse), texte(Text::EntsprichtNicht)});

    constexpr int meiste = 200;
    const QStringList teile = texte(Meldung::MindestensFlügel).split(u"%1"_s);
    flügel_->setObjectName(u"spn_Flügel"_s);
    flügel_->setAccessibleName(texte(Meldung::SpalteFlügelzahl));
    flügel_->setToolTip(texte(Meldung::TippFilterzeile));
    flügel_->setRange(0, meiste);
    flügel_->setSpecialValueText(texte(Meldung::BeliebigVieleFlügel));
    flügel_->setPrefix(teile.value(0));
    flügel_->setSuffix(teile.value(1));
    flügel_->setKeyboardTracking(false); // every digit would be a number of its own
    felder_.push_back(flügel_);
    connect(flügel_, &QSpinBox::valueChanged, this, [this] {
        if (gewählt_) {
            gewählt_();
        }
    });
    ordne();
}

QComboBox* Filterzeile::baueListe(const QString& name, const QString& bedeutung,
                                  const QString& alle) {
    auto* liste = new QComboBox;
    liste->setObjectName(name);
    liste->setAccessibleName(bedeutung);
    liste->setToolTip(bedeutung + u": "_s + texte_(Meldung::TippFilterzeile));
    liste->addItem(alle);
    // As wide as the line gives it, not as its longest entry.
    liste->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    constexpr int Buchstaben = 9;
    liste->setMinimumContentsLength(Buchstaben);
    constexpr int Zeilen = 20;
    liste->setMaxVisibleItems(Zeilen);
    liste->installEventFilter(this);
    connect(liste, &QComboBox::currentIndexChanged, this, [this] {
        if (gewählt_) {
            gewählt_();
        }
    });
    felder_.push_back(liste);
    return liste;
}

Zeilenfilter Filterzeile::filter() const {
    return {.saison = saison_->currentData().toString(),
            .züchter = züchter_->currentData().toString(),
            .rasse = rasse_->currentData().toString(),
            .tiere = static_cast<Geschlechtsfilter>(tiere_->currentIndex()),
            .ergebnis = static_cast<Ergebnisfilter>(ergebnis_->currentIndex())};
}

int Filterzeile::flügel() const {
    return flügel_->value();
}

void Filterzeile::leere() {
    for (QComboBox* liste : {saison_, züchter_, rasse_, tiere_, ergebnis_}) {
        const QSignalBlocker still(liste);
        liste->setCurrentIndex(0);
    }
    leereFlügel();
}

void Filterzeile::leereFlügel() {
    const QSignalBlocker still(flügel_);
    flügel_->setValue(0);
}

/// Reading what a large file offers takes a moment, so it is done when somebody wants to choose.
void Filterzeile::fülle() {
    if (!veraltet_ || !quelle_) {
        return;
    }
    veraltet_ = false;
    const Listen listen = quelle_();
    QStringList worte = listen.saisons;
    worte.replaceInStrings(Zeilenfilter::OhneSaison.toString(), texte_(Meldung::OhneSaison));
    setze(*saison_, worte, listen.saisons);
    setze(*züchter_, listen.züchter, listen.züchter);
    setze(*rasse_, listen.rassen, listen.rassen);
}

bool Filterzeile::eventFilter(QObject* watched, QEvent* event) {
    // Before the list opens, whichever way.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress) {
        fülle();
    }
    return QWidget::eventFilter(watched, event);
}

void Filterzeile::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ordne();
}

/// In one row where there is room for their words, else in two.
void Filterzeile::ordne() {
    int breite = 0;
    for (const QWidget* feld : felder_) {
        int inhalt = feld->sizeHint().width();
        if (const auto* liste = qobject_cast<const QComboBox*>(feld)) {
            constexpr int Pfeil = 40;
            inhalt = liste->fontMetrics().horizontalAdvance(liste->itemText(0)) + Pfeil;
        }
        breite = std::max(breite, inhalt);
    }
    const int anzahl = static_cast<int>(felder_.size());
    const int jeZeile =
        anzahl * (breite + raster_->horizontalSpacing()) <= width() ? anzahl : (anzahl + 1) / 2;
    for (int i = 0; i < anzahl; ++i) {
        raster_->addWidget(felder_[static_cast<std::size_t>(i)], i / jeZeile, i % jeZeile);
        raster_->setColumnStretch(i, i < jeZeile ? 1 : 0);
    }
}

} // namespace tarvel
