#include "app/hinweiszeile.h"

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Blinkabstand = 400; // ms: seen from the corner of the eye, not yet a nuisance
constexpr int Blinkzahl = 4;

} // namespace

Hinweiszeile::Hinweiszeile(const Texte& texte, QWidget* parent)
    : QLabel(parent)
    , texte_(texte)
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
    connect(&texte_, &Texte::languageChanged, this,
            [this] { setText(hinweistext(texte_, hinweis_)); });
}

void Hinweiszeile::zeige(const Hinweis& hinweis) {
    hinweis_ = hinweis;
    setText(hinweistext(texte_, hinweis));
    setVisible(true);
    blinkzähler_ = 0;
    if (text().isEmpty()) {
        Timer1_.stop();
    } else {
        Timer1_.start();
    }
    if (const int* nummer = std::get_if<int>(&hinweis_.was);
        nummer != nullptr && *nummer == HinweisBildWirdGeladen) {
        repaint(); // nothing is painted while a picture is read
    }
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
