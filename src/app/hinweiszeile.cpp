#include "app/hinweiszeile.h"

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Blinkabstand = 400; // ms: seen from the corner of the eye, not yet a nuisance
constexpr int Blinkzahl = 4;

} // namespace

Hinweiszeile::Hinweiszeile(QWidget* parent)
    : QLabel(parent)
    , Timer1_(this) {
    setObjectName(u"lab_H"_s);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    QSizePolicy platz(QSizePolicy::Expanding, QSizePolicy::Preferred);
    platz.setRetainSizeWhenHidden(true); // the views must not jump while it blinks
    platz.setHeightForWidth(true);
    setSizePolicy(platz);
    Timer1_.setObjectName(u"Timer1"_s);
    Timer1_.setInterval(Blinkabstand);
    connect(&Timer1_, &QTimer::timeout, this, [this] { Timer1_Timer(); });
}

void Hinweiszeile::zeige(const QString& hinweis) {
    setText(hinweis);
    setVisible(true);
    blinkzähler_ = 0;
    if (hinweis.isEmpty()) {
        Timer1_.stop();
    } else {
        Timer1_.start();
    }
}

void Hinweiszeile::übersetze(const QString& hinweis) {
    setText(hinweis);
}

void Hinweiszeile::Timer1_Timer() {
    if (!isHidden() && blinkzähler_ < Blinkzahl) {
        hide();
        ++blinkzähler_;
        return;
    }
    show();
    if (blinkzähler_ >= Blinkzahl) {
        Timer1_.stop(); // nothing left to blink: an idle program uses no processor time
    }
}

} // namespace tarvel
