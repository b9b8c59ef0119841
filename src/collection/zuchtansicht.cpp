#include "collection/zuchtansicht.h"

#include "evaluation/stellenwahl.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Zuchtansicht::Zuchtansicht(const QString& name, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Zuchtansicht::zeige(Übersichtsmaler maler) {
    maler_ = std::move(maler);
    verwirf();
}

Diagrammmaler Zuchtansicht::druckmaler() const {
    return [maler = maler_, stil = Diagrammstil::farbdruck(font())](QPainter& painter,
                                                                    const QRectF& rahmen) {
        if (maler) {
            maler(painter, rahmen, stil);
        }
    };
}

Diagrammstil Zuchtansicht::bildschirmstil() const {
    return Diagrammstil::bildschirm(palette(), font());
}

void Zuchtansicht::verwirf() {
    bild_ = {};
    update();
}

void Zuchtansicht::paintEvent(QPaintEvent* /*event*/) {
    if (bild_.isNull()) {
        bild_ = QPixmap(size() * devicePixelRatioF());
        bild_.setDevicePixelRatio(devicePixelRatioF());
        bild_.fill(palette().color(QPalette::Base));
        QPainter painter(&bild_);
        if (maler_) {
            maler_(painter, rect(), bildschirmstil());
        }
    }
    QPainter(this).drawPixmap(0, 0, bild_);
}

void Zuchtansicht::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    verwirf();
}

void Zuchtansicht::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        verwirf();
    }
}

Kreuzansicht::Kreuzansicht(const Übersichtsworte& worte, QWidget* parent)
    : Zuchtansicht(u"pic_Kreuze"_s, parent)
    , worte_(worte) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(worte_.texte(Meldung::ÜbersichtKreuze));
}

void Kreuzansicht::zeige(const Kreuzbild& bild) {
    kreuze_ = bild;
    stelle_ = -1;
    Zuchtansicht::zeige([this](QPainter& painter, const QRectF& rahmen, const Diagrammstil& stil) {
        maleKreuze(painter, rahmen, kreuze_, worte_, stil);
    });
}

void Kreuzansicht::verwirf() {
    stellenAktuell_ = false;
    Zuchtansicht::verwirf();
}

const std::vector<Kreuzstelle>& Kreuzansicht::stellen() {
    if (!stellenAktuell_) {
        stellen_ = kreuzstellen(rect(), kreuze_, worte_, bildschirmstil());
        stellenAktuell_ = true;
    }
    return stellen_;
}

/// The nearest cross within reach; -1 for none.
int Kreuzansicht::stelleAn(QPointF ort) {
    constexpr double Reichweite = 9;
    int nächste = -1;
    double abstand = Reichweite;
    for (std::size_t i = 0; i < stellen().size(); ++i) {
        const QPointF d = stellen_[i].ort - ort;
        if (const double weg = std::hypot(d.x(), d.y()); weg < abstand) {
            abstand = weg;
            nächste = static_cast<int>(i);
        }
    }
    return nächste;
}

QString Kreuzansicht::beschreibung(const Koloniewerte& k) const {
    QStringList zeilen{kolonietitel(k)};
    if (!k.Züchter.isEmpty()) {
        zeilen << k.Züchter;
    }
    for (const Größe g : Größen) {
        const Kennzahlen& z = k[g].kennzahlen;
        if (z.anzahl == 0) {
            continue;
        }
        QString zeile = kurzname(g, worte_.texte) + u' ' + werttext(g, z.mittelwert, worte_.format);
        if (z.standardabweichung) {
            zeile += u" ± "_s + streuungstext(g, *z.standardabweichung, worte_.format);
        }
        zeilen << zeile + u", n = "_s + QString::number(z.anzahl);
    }
    return (zeilen << dpitext(k.dpi, worte_.texte) + u", "_s + urteilstext(k, worte_.texte))
        .join(u'\n');
}

bool Kreuzansicht::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        auto* hilfe = static_cast<QHelpEvent*>(event);
        const int stelle = stelleAn(hilfe->pos());
        zeigeTipp(*hilfe,
                  stelle < 0 ? QString()
                             : beschreibung(*stellen_[static_cast<std::size_t>(stelle)].kolonie),
                  *this);
        return true;
    }
    return Zuchtansicht::event(event);
}

void Kreuzansicht::paintEvent(QPaintEvent* event) {
    Zuchtansicht::paintEvent(event);
    if (!hasFocus()) {
        return;
    }
    QPainter painter(this);
    maleTastenrahmen(painter, *this);
    if (stelle_ >= 0 && stelle_ < static_cast<int>(stellen().size())) {
        // The same colony stands in both fields.
        const Koloniewerte* kolonie = stellen_[static_cast<std::size_t>(stelle_)].kolonie;
        for (const Kreuzstelle& s : stellen_) {
            if (s.kolonie == kolonie) {
                painter.drawEllipse(s.ort, 12, 12);
            }
        }
    }
}

void Kreuzansicht::mousePressEvent(QMouseEvent* event) {
    const int stelle = stelleAn(event->position());
    if (event->button() != Qt::LeftButton || stelle < 0) {
        Zuchtansicht::mousePressEvent(event);
        return;
    }
    stelle_ = stelle;
    const Koloniewerte& kolonie = *stellen_[static_cast<std::size_t>(stelle)].kolonie;
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        wähle_(kolonie);
    } else {
        öffne_(kolonie);
    }
}

void Kreuzansicht::mouseMoveEvent(QMouseEvent* event) {
    setCursor(stelleAn(event->position()) >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void Kreuzansicht::keyPressEvent(QKeyEvent* event) {
    const int letzte = static_cast<int>(stellen().size()) - 1;
    const bool da = stelle_ >= 0 && stelle_ <= letzte;
    if (const auto stelle = stelleNach(event->key(), stelle_, letzte)) {
        geheZu(*stelle);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (da) {
            öffne_(*stellen_[static_cast<std::size_t>(stelle_)].kolonie);
        }
        return;
    case Qt::Key_Space:
        if (da) {
            const int hier = stelle_;
            wähle_(*stellen_[static_cast<std::size_t>(stelle_)].kolonie);
            geheZu(hier);
        }
        return;
    default:
        Zuchtansicht::keyPressEvent(event);
    }
}

void Kreuzansicht::geheZu(int stelle) {
    if (stellen().empty()) {
        return;
    }
    stelle_ = stelle;
    const Kreuzstelle& s = stellen_[static_cast<std::size_t>(stelle)];
    const QString text = beschreibung(*s.kolonie);
    setAccessibleDescription(text);
    QToolTip::showText(mapToGlobal(s.ort.toPoint()), tipptext(text), this);
    update();
}

} // namespace tarvel
