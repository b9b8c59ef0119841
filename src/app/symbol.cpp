#include "app/symbol.h"

#include "platform/vektorbild.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString dateiname(const QString& name) {
    return u":/tarvel/icons/%1.svg"_s.arg(name);
}

// Those of the pictures that stand in for the drawings in a build that cannot draw them.
constexpr std::array Bildgrößen{16, 20, 24, 32, 48, 64, 96, 128, 256};

QString dateiname(const QString& name, int größe) {
    return u":/tarvel/icons/%1-%2.png"_s.arg(name).arg(größe);
}

bool vorhanden(const QString& name) {
    return QFile::exists(kannSvg() ? dateiname(name) : dateiname(name, Bildgrößen.front()));
}

/// The black picture that is just large enough.
QPixmap bildMindestens(const QString& name, int größe) {
    const auto* passend = std::lower_bound(Bildgrößen.begin(), Bildgrößen.end() - 1, größe);
    return QPixmap(dateiname(name, *passend));
}

QColor strichfarbe(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const QColor normal = palette.color(QPalette::Active, QPalette::ButtonText);
    switch (mode) {
    case QIcon::Disabled: {
        QColor farbe = palette.color(QPalette::Disabled, QPalette::ButtonText);
        if (farbe == normal) {
            // Some desktops hand out one colour for all groups.
            farbe.setAlphaF(0.4F);
        }
        return farbe;
    }
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return normal;
}

QPixmap zeichne(const QString& name, const QSize& size, const QColor& farbe) {
    QPixmap bild(size);
    bild.fill(Qt::transparent);
    QPainter painter(&bild);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setOpacity(farbe.alphaF());
    const int kante = std::min(size.width(), size.height());
    if (!kannSvg()) {
        QRect feld(0, 0, kante, kante);
        feld.moveCenter(bild.rect().center());
        painter.drawPixmap(feld, bildMindestens(name, kante));
        painter.setOpacity(1);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(bild.rect(), QColor(farbe.rgb()));
        return bild;
    }
    QFile datei(dateiname(name));
    if (!datei.open(QIODevice::ReadOnly)) {
        return bild;
    }
    QByteArray svg = datei.readAll();
    svg.replace("currentColor", farbe.name(QColor::HexRgb).toLatin1());
    QRectF feld(bild.rect());
    if (kante == 16) {
        // The strokes are about one pixel wide here and their axes fall between two pixels.
        feld.translate(0.5, 0.5);
    }
    Vektorbild(svg).male(painter, feld);
    return bild;
}

} // namespace

SymbolEngine::SymbolEngine(QString name)
    : name_(std::move(name)) {}

void SymbolEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
                         QIcon::State state) {
    const qreal dichte = painter->device()->devicePixelRatioF();
    const QSize größe = (QSizeF(rect.size()) * dichte).toSize();
    const QPixmap bild = pixmap(größe, mode, state);
    painter->drawPixmap(QRectF(rect), bild, QRectF(bild.rect()));
}

QPixmap SymbolEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) {
    if (size.isEmpty()) {
        return {};
    }
    const QColor farbe = strichfarbe(mode);
    const QString schlüssel = u"tarvel/%1/%2x%3/%4"_s.arg(name_)
                                  .arg(size.width())
                                  .arg(size.height())
                                  .arg(farbe.name(QColor::HexArgb));
    QPixmap bild;
    if (!QPixmapCache::find(schlüssel, &bild)) {
        bild = zeichne(name_, size, farbe);
        QPixmapCache::insert(schlüssel, bild);
    }
    return bild;
}

QIconEngine* SymbolEngine::clone() const {
    return new SymbolEngine(name_);
}

QString SymbolEngine::key() const {
    return u"tarvel-symbol"_s;
}

QString SymbolEngine::iconName() {
    return name_;
}

bool SymbolEngine::isNull() {
    return !vorhanden(name_);
}

QIcon symbol(const QString& name) {
    return vorhanden(name) ? QIcon(new SymbolEngine(name)) : QIcon();
}

QIcon programmsymbol() {
    if (kannSvg()) {
        return QIcon(dateiname(u"tarvel"_s));
    }
    QIcon icon;
    for (const int größe : Bildgrößen) {
        icon.addFile(dateiname(u"tarvel"_s, größe));
    }
    return icon;
}

} // namespace tarvel
