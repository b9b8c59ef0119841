#include "measure/messhilfe.h"

#include "lang/texte.h"
#include "measure/messhilfebild.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

class Hilfebild : public QWidget {
public:
    Hilfebild(const Texte& texte, QWidget* parent)
        : QWidget(parent)
        , texte_(texte) {
        setMinimumSize((MessHilfeFormat * 50).toSize());
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        maleMessHilfe(painter, rect(), palette(), texte_);
    }

private:
    const Texte& texte_;
};

} // namespace

MessHilfe::MessHilfe(const Texte& texte, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , bild_(new Hilfebild(texte, this))
    , schließen_(new QPushButton(this)) {
    setObjectName(u"MessHilfe"_s);
    setModal(false);
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(bild_, 2);
    // Wrapped lines grow as the window gets narrower; they scroll rather than cover the drawing.
    auto* rolle = new QScrollArea(this);
    rolle->setFrameShape(QFrame::NoFrame);
    rolle->setWidgetResizable(true);
    rolle->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* liste = new QWidget(rolle);
    auto* zeilen = new QVBoxLayout(liste);
    for (std::size_t i = 0; i < beschreibungen_.size(); ++i) {
        auto* zeile = new QLabel(liste);
        zeile->setObjectName(u"lab_Messpunkt_%1"_s.arg(i + 1));
        zeile->setWordWrap(true);
        zeile->setTextInteractionFlags(Qt::TextSelectableByMouse);
        zeilen->addWidget(zeile);
        beschreibungen_[i] = zeile;
    }
    zeilen->addStretch();
    rolle->setWidget(liste);
    anordnung->addWidget(rolle, 1);
    auto* knöpfe = new QDialogButtonBox(this);
    knöpfe->addButton(schließen_, QDialogButtonBox::RejectRole);
    anordnung->addWidget(knöpfe);
    connect(knöpfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
    resize(880, 660);
}

void MessHilfe::beschrifte() {
    setWindowTitle(texte_(Meldung::MesshilfeTitel));
    bild_->setAccessibleName(texte_(Meldung::MesshilfeTitel));
    for (std::size_t i = 0; i < beschreibungen_.size(); ++i) {
        beschreibungen_[i]->setText(texte_(messpunktbeschreibung(static_cast<int>(i) + 1)));
    }
    schließen_->setText(texte_(Text::Schließen));
    bild_->update();
}

} // namespace tarvel
