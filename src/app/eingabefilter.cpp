#include "app/eingabefilter.h"

#include "app/hg.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QWheelEvent>

namespace tarvel {

namespace {

/// Boxes that a notch of the wheel would set to another value. An open list is a window of its own.
bool istBox(const QWidget& widget) {
    return qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr;
}

} // namespace

Eingabefilter::Eingabefilter() {
    qApp->installEventFilter(this);
}

void Eingabefilter::setzeFenster(HG* fenster) {
    hg_ = fenster;
    fenster_ = fenster;
}

bool Eingabefilter::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) {
        return false;
    }
    auto& widget = static_cast<QWidget&>(*watched);
    switch (event->type()) {
    case QEvent::Polish:
        // The wheel would also take the keyboard along.
        if (widget.focusPolicy() == Qt::WheelFocus && istBox(widget)) {
            widget.setFocusPolicy(Qt::StrongFocus);
        }
        return false;
    case QEvent::Wheel:
        if (!istBox(widget)) {
            return false;
        }
        event->ignore(); // so that it goes on to what lies around
        return true;
    case QEvent::KeyPress:
        // Whatever takes text keeps its digits.
        return hg_ && widget.window() == fenster_ && !QApplication::activePopupWidget() &&
               !widget.testAttribute(Qt::WA_InputMethodEnabled) &&
               fenster_->gibZifferAnsBild(static_cast<QKeyEvent&>(*event), widget);
    default:
        return false;
    }
}

} // namespace tarvel
