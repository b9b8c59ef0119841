// Body marks by one key a code: a bee is complete when each of its groups got a key.

#include "evaluation/merkmalansicht.h"
#include "evaluation/merkmaltasten.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QRadioButton>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

std::vector<Merkmalansicht::Gruppe*> Merkmalansicht::gezeigteGruppen() {
    std::vector<Gruppe*> gezeigte;
    for (Gruppe& g : gruppen_) {
        if (g.tiere == merkmale_.Tiere) {
            gezeigte.push_back(&g);
        }
    }
    return gezeigte;
}

bool Merkmalansicht::wirdErfasst(const Gruppe& gruppe) const {
    return !(OhneHaarlänge_ && gruppe.art == Merkmalgruppe::HaarLänge);
}

void Merkmalansicht::beginneNeu() {
    for (Gruppe& g : gruppen_) {
        g.optionen->button(0)->setChecked(true);
    }
    beginneBiene();
}

void Merkmalansicht::setzeFlügelzahl(int flügel) {
    if (std::exchange(flügelzahl_, flügel) != flügel) {
        zeigeFortschritt();
    }
}

void Merkmalansicht::beginneBiene() {
    for (Gruppe& g : gruppen_) {
        g.mitTaste = false;
    }
    zeigeFortschritt();
}

/// Escape begins the bee once more; where nothing was begun the key belongs to others.
bool Merkmalansicht::nimmTaste(const QKeyEvent& ereignis) {
    if (merkmale_.Modus != Merkmalmodus::Liste ||
        (ereignis.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        return false;
    }
    const std::vector<Gruppe*> gezeigte = gezeigteGruppen();
    if (ereignis.key() == Qt::Key_Escape) {
        const bool begonnen = std::any_of(gezeigte.begin(), gezeigte.end(),
                                          [](const Gruppe* g) { return g->mitTaste; });
        beginneBiene();
        return begonnen;
    }
    const auto taste = merkmaltaste(ereignis, texte_.sprache().value_or(Sprache::Deutsch));
    if (!taste || taste->gruppe >= std::ssize(gezeigte)) {
        return false;
    }
    Gruppe& gruppe = *gezeigte[static_cast<std::size_t>(taste->gruppe)];
    QAbstractButton* option = gruppe.optionen->button(taste->index);
    if (option == nullptr || !wirdErfasst(gruppe)) {
        return false;
    }
    if (ereignis.isAutoRepeat()) {
        return true; // a finger that rests on the key means one bee
    }
    option->setChecked(true);
    gruppe.mitTaste = true;
    if (std::all_of(gezeigte.begin(), gezeigte.end(),
                    [this](const Gruppe* g) { return g->mitTaste || !wirdErfasst(*g); })) {
        beginneBiene();
        nimmListenzeile();
    }
    zeigeFortschritt();
    return true;
}

void Merkmalansicht::keyPressEvent(QKeyEvent* event) {
    if (!nimmTaste(*event)) {
        QWidget::keyPressEvent(event);
    }
}

bool Merkmalansicht::eventFilter(QObject* objekt, QEvent* ereignis) {
    // The list would search for what is typed.
    return (objekt == Liste_ && ereignis->type() == QEvent::KeyPress &&
            nimmTaste(static_cast<const QKeyEvent&>(*ereignis))) ||
           QWidget::eventFilter(objekt, ereignis);
}

/// The keys beside the codes.
void Merkmalansicht::beschrifteTasten() {
    const Sprache sprache = texte_.sprache().value_or(Sprache::Deutsch);
    for (const Geschlecht tiere : {Geschlecht::Arbeiterinnen, Geschlecht::Drohnen}) {
        int nummer = 0;
        for (const Gruppe& g : gruppen_) {
            if (g.tiere != tiere) {
                continue;
            }
            for (int i = 0; i < static_cast<int>(g.codes.size()); ++i) {
                g.optionen->button(i)->setText(g.codes[static_cast<std::size_t>(i)]->text() +
                                               u" ["_s + tastenname({nummer, i}, sprache) + u']');
                g.optionen->button(i)->setToolTip(texte_(Meldung::TippMerkmaltasten));
            }
            ++nummer;
        }
    }
}

/// "12 von 50", and what is still to be said of the next bee.
void Merkmalansicht::zeigeFortschritt() {
    const bool liste = merkmale_.Modus == Merkmalmodus::Liste;
    lab_Fortschritt_->setText(
        flügelzahl_ > 0 ? texte_(Meldung::Fortschritt).arg(auswertung_.Bienen).arg(flügelzahl_)
                        : QString());
    lab_Fortschritt_->setToolTip(texte_(Meldung::TippMerkmalFortschritt));
    QStringList offene;
    for (const Gruppe* g : gezeigteGruppen()) {
        if (!g->mitTaste && wirdErfasst(*g)) {
            offene << g->rahmen->title();
        }
    }
    constexpr int Stellen = 3;
    const QString biene = u"%1"_s.arg(nächsteBiene(merkmale_), Stellen, 10, QChar(u'0'));
    lab_Biene_->setText(liste ? texte_(Meldung::MerkmaleNochOffen).arg(biene, offene.join(u", "_s))
                              : QString());
    lab_Biene_->setToolTip(texte_(Meldung::TippMerkmaltasten));
}

} // namespace tarvel
