#include "app/symbol.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString dateiname(const QString& name) {
    return u":/tarvel/icons/%1.svg"_s.arg(name);
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
    QFile datei(dateiname(name));
    if (!datei.open(QIODevice::ReadOnly)) {
        return bild;
    }
    QByteArray svg = datei.readAll();
    svg.replace("currentColor", farbe.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&bild);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(farbe.alphaF());
    QRectF feld(bild.rect());
    if (std::min(size.width(), size.height()) == 16) {
        // The strokes are about one pixel wide here and their axes fall between two pixels.
        feld.translate(0.5, 0.5);
    }
    renderer.render(&painter, feld);
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
    return !QFile::exists(dateiname(name_));
}

QIcon symbol(const QString& name) {
    return QFile::exists(dateiname(name)) ? QIcon(new SymbolEngine(name)) : QIcon();
}

} // namespace tarvel
