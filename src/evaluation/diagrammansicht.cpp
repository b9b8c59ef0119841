#include "evaluation/diagrammansicht.h"

#include "evaluation/stellenwahl.h"
#include "evaluation/zeichenflaeche.h"
#include "lang/texte.h"
#include "lang/zielwahl.h"
#include "measure/marken.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr double ZahlÜberBalken = 18; ///< units of the chart

void male(QPainter& painter, const QRectF& rahmen, const std::variant<Kurvenbild, Korrelbild>& bild,
          const Diagrammstil& stil) {
    if (const auto* kurven = std::get_if<Kurvenbild>(&bild)) {
        maleKurven(painter, rahmen, *kurven, stil);
    } else {
        maleKorrel(painter, rahmen, std::get<Korrelbild>(bild), stil);
    }
}

QString probe(const Kurvenbild& bild) {
    return flügelzahl(bild.CI.flügel.size(), bild.CI.ausgelassen, bild.worte);
}

QString probe(const Korrelbild& bild) {
    return flügelzahl(bild.flügel.size(), bild.ausgelassen, bild.worte);
}

} // namespace

Diagrammansicht::Diagrammansicht(Art art, const Texte& texte, Dialoge& dialoge, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , dialoge_(dialoge) {
    setObjectName(art == Art::Kurven ? u"pic_Kurven"_s : u"pic_Korrel"_s);
    if (art == Art::Korrel) {
        bild_ = Korrelbild();
    }
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    befehle_.resize(diagrammformate().size() + 1);
    for (std::size_t i = 0; i < befehle_.size(); ++i) {
        auto* befehl = new QAction(this);
        befehl->setObjectName(u"men_Diagramm_%1"_s.arg(i));
        addAction(befehl);
        if (i < diagrammformate().size()) {
            connect(befehl, &QAction::triggered, this,
                    [this, format = diagrammformate().at(i)] { frageUndSpeichere(format); });
        } else {
            connect(befehl, &QAction::triggered, this, [this] { kopiere(); });
        }
        befehle_.at(i) = befehl;
    }
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Diagrammansicht::zeige(Kurvenbild bild) {
    bild.hervorgehoben = hervorgehoben();
    bild_ = std::move(bild);
    beschrifte();
}

void Diagrammansicht::zeige(Korrelbild bild) {
    bild.hervorgehoben = hervorgehoben();
    bild_ = std::move(bild);
    beschrifte();
}

void Diagrammansicht::hebeHervor(std::vector<int> flügel) {
    std::visit([&](auto& bild) { bild.hervorgehoben = std::move(flügel); }, bild_);
    update();
}

const std::vector<int>& Diagrammansicht::hervorgehoben() const {
    return std::visit(
        [](const auto& bild) -> const std::vector<int>& { return bild.hervorgehoben; }, bild_);
}

const std::vector<Diagrammstelle>& Diagrammansicht::stellen() {
    if (!stellenAktuell_) {
        if (const auto* kurven = std::get_if<Kurvenbild>(&bild_)) {
            stellen_ = kurvenstellen(rect(), *kurven, bildschirmstil());
        } else {
            stellen_ = korrelstellen(rect(), std::get<Korrelbild>(bild_));
        }
        stellenAktuell_ = true;
    }
    return stellen_;
}

bool Diagrammansicht::speichere(const QString& pfad, Diagrammformat format) {
    QStringList namen{unterschrift_ ? unterschrift_().untersuchung : QString(), titel()};
    namen.removeAll(QString());
    const QString grund =
        speichereDiagramm(pfad, format, size(), namen.join(u" – "_s), druckmaler());
    if (grund.isEmpty()) {
        return true;
    }
    dialoge_.meldung(
        texte_(Text::Fehler),
        texte_(Meldung::DiagrammNichtGespeichert).arg(QDir::toNativeSeparators(pfad), grund),
        Meldungsart::Stopp);
    return false;
}

void Diagrammansicht::kopiere() {
    QGuiApplication::clipboard()->setImage(diagrammbild(size(), druckmaler()));
}

bool Diagrammansicht::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        auto* hilfe = static_cast<QHelpEvent*>(event);
        zeigeTipp(*hilfe, tippAn(hilfe->pos()), *this);
        return true;
    }
    // The window's own command for copying must not take the key away from the chart.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void Diagrammansicht::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    male(painter, rect(), bild_, bildschirmstil());
    maleZweifelsmarken(painter);
    if (!hasFocus()) {
        return;
    }
    maleTastenrahmen(painter, *this);
    if (stelle_ >= 0 && stelle_ < static_cast<int>(stellen().size())) {
        painter.drawRoundedRect(
            stellen_[static_cast<std::size_t>(stelle_)].fläche.adjusted(-2, -2, 2, 2), 3, 3);
    }
}

void Diagrammansicht::zeigeZweifel(Zweifelsfälle zweifel) {
    zweifel_ = std::move(zweifel);
    update();
}

void Diagrammansicht::maleZweifelsmarken(QPainter& painter) {
    if (zweifel_.empty()) {
        return;
    }
    const double kante = fontMetrics().height();
    for (const Diagrammstelle& stelle : stellen()) {
        Zweifelsgrad grad = Zweifelsgrad::Keiner;
        for (const int nummer : stelle.flügel) {
            grad = std::max(grad, zweifelsgrad(zweifel_, nummer));
        }
        // Beside a cross, and at the foot of a bar, whose top is the number's. On a low bar it
        // stands above the number.
        QRectF feld(stelle.fläche.topRight() - QPointF(kante / 2, kante), QSizeF(kante, kante));
        if (std::holds_alternative<Kurvenbild>(bild_)) {
            feld.moveCenter({stelle.fläche.center().x(), feld.center().y()});
            if (stelle.fläche.height() > kante + 2) {
                feld.moveBottom(stelle.fläche.bottom() - 1);
            } else {
                feld.translate(0, -ZahlÜberBalken * Diagrammmaß::für(rect()).faktor);
            }
        }
        feld.moveTop(std::max(feld.top(), 0.0));
        feld.moveRight(std::min(feld.right(), width() - 1.0));
        maleZweifel(painter, feld, grad);
    }
}

void Diagrammansicht::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    erneuere();
}

void Diagrammansicht::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        erneuere();
    }
}

void Diagrammansicht::mousePressEvent(QMouseEvent* event) {
    const std::vector<int> flügel = flügelAn(event->position(), stellen());
    if (event->button() == Qt::RightButton) {
        // As in the lists: wings that are chosen already stay so together.
        if (!std::includes(hervorgehoben().begin(), hervorgehoben().end(), flügel.begin(),
                           flügel.end())) {
            wähle(flügel);
        }
        return;
    }
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (flügel.empty()) {
        if (!hervorgehoben().empty()) {
            wähle({});
        }
        return;
    }
    const auto ort = std::find_if(stellen_.begin(), stellen_.end(), [&](const Diagrammstelle& s) {
        return s.fläche.contains(event->position());
    });
    stelle_ = static_cast<int>(ort - stellen_.begin());
    wähle(flügel);
}

void Diagrammansicht::mouseMoveEvent(QMouseEvent* event) {
    const bool getroffen = !flügelAn(event->position(), stellen()).empty();
    setCursor(getroffen ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void Diagrammansicht::keyPressEvent(QKeyEvent* event) {
    const int letzte = static_cast<int>(stellen().size()) - 1;
    if (event->matches(QKeySequence::Copy)) {
        kopiere();
        return;
    }
    if (const auto stelle = stelleNach(event->key(), stelle_, letzte)) {
        geheZu(*stelle);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (stelle_ >= 0 && stelle_ <= letzte) {
            wähle(stellen_[static_cast<std::size_t>(stelle_)].flügel);
        }
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Diagrammansicht::beschrifte() {
    std::visit([this](auto& bild) { bild.worte = Diagrammworte::bildschirm(texte_); }, bild_);
    setAccessibleName(titel());
    setAccessibleDescription(std::visit([](const auto& bild) { return probe(bild); }, bild_) +
                             u'\n' + texte_(Text::HinweisKreuzZeigen));
    for (std::size_t i = 0; i < diagrammformate().size(); ++i) {
        befehle_.at(i)->setText(
            texte_(Meldung::DiagrammSpeichern).arg(formatname(diagrammformate().at(i))) + u" …"_s);
    }
    befehle_.back()->setText(texte_(Meldung::DiagrammKopieren) + u'\t' +
                             QKeySequence(QKeySequence::Copy).toString(QKeySequence::NativeText));
    stelle_ = -1;
    erneuere();
}

void Diagrammansicht::erneuere() {
    stellenAktuell_ = false;
    update();
}

Diagrammmaler Diagrammansicht::druckmaler() const {
    auto bild = bild_;
    std::visit([](auto& b) { b.hervorgehoben.clear(); }, bild);
    const Diagrammstil stil = Diagrammstil::farbdruck(font());
    return mitUnterschrift(
        [bild, stil](QPainter& painter, const QRectF& rahmen) {
            male(painter, rahmen, bild, stil);
        },
        unterschrift_ ? unterschrift_() : Bildunterschrift(), stil);
}

Diagrammstil Diagrammansicht::bildschirmstil() const {
    return Diagrammstil::bildschirm(palette(), font());
}

const Diagrammworte& Diagrammansicht::worte() const {
    return std::visit([](const auto& bild) -> const Diagrammworte& { return bild.worte; }, bild_);
}

QString Diagrammansicht::titel() const {
    return std::holds_alternative<Kurvenbild>(bild_)
               ? worte().cubitalindex + u" – "_s + worte().bienenJeKlasse
               : worte().korrelation;
}

QString Diagrammansicht::beschreibung(const Diagrammstelle& stelle) const {
    QString text = flügelliste(stelle.flügel, worte().flügel) + u'\n' + stelle.beschreibung;
    for (const int nummer : stelle.flügel) {
        if (const QString grund = zweifelstext(zweifel_, nummer, texte_); !grund.isEmpty()) {
            text += u'\n' + dreistellig(nummer) + u": "_s + grund;
        }
    }
    return text;
}

QString Diagrammansicht::tippAn(QPointF ort) {
    const std::vector<int> flügel = flügelAn(ort, stellen());
    for (const Diagrammstelle& stelle : stellen_) {
        if (stelle.fläche.contains(ort) && stelle.flügel == flügel) {
            return beschreibung(stelle);
        }
    }
    return flügelliste(flügel, worte().flügel);
}

void Diagrammansicht::geheZu(int stelle) {
    if (stellen().empty()) {
        return;
    }
    stelle_ = stelle;
    const Diagrammstelle& ziel = stellen_[static_cast<std::size_t>(stelle)];
    const QString text = beschreibung(ziel);
    setAccessibleDescription(text);
    QToolTip::showText(mapToGlobal(ziel.fläche.bottomRight().toPoint()), tipptext(text), this);
    update();
}

void Diagrammansicht::wähle(const std::vector<int>& flügel) {
    hebeHervor(flügel);
    if (beiWahl_) {
        beiWahl_(flügel);
    }
}

void Diagrammansicht::frageUndSpeichere(Diagrammformat format) {
    const QString name = formatname(format);
    const QString endung = dateiendung(format);
    const QString vorschlag =
        vorschlag_.isEmpty()
            ? texte_(std::holds_alternative<Kurvenbild>(bild_) ? Text::MenüKurven
                                                               : Text::MenüKorrelation)
            : vorschlag_;
    const QString pfad =
        wähleZiel(texte_, dialoge_,
                  {.titel = texte_(Meldung::DiagrammSpeichern).arg(name),
                   .vorschlag = vorschlag + endung,
                   .muster = texte_(Meldung::DiagrammDateien).arg(name) + u" (*"_s + endung + u')',
                   .endungen = {endung}});
    if (!pfad.isEmpty()) {
        speichere(pfad, format);
    }
}

} // namespace tarvel
