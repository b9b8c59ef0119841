#include "app/symbol.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>

#include <cstdlib>
#include <gtest/gtest.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

/// Number of pixels at least half covered, and whether they all have the colour @p farbe.
struct Deckung {
    int pixel = 0;
    bool einfarbig = true;
};

Deckung deckung(const QPixmap& bild, const QColor& farbe) {
    const QImage image = bild.toImage().convertToFormat(QImage::Format_ARGB32);
    Deckung ergebnis;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor punkt = image.pixelColor(x, y);
            if (punkt.alpha() < 128) {
                continue;
            }
            ++ergebnis.pixel;
            ergebnis.einfarbig = ergebnis.einfarbig && std::abs(punkt.red() - farbe.red()) < 6 &&
                                 std::abs(punkt.blue() - farbe.blue()) < 6;
        }
    }
    return ergebnis;
}

class SymbolTest : public testing::Test {
protected:
    ~SymbolTest() override { QGuiApplication::setPalette(vorher_); }

    static void färbe(const QColor& normal, const QColor& gesperrt) {
        QPalette palette;
        palette.setColor(QPalette::ButtonText, normal);
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, gesperrt);
        QGuiApplication::setPalette(palette);
    }

private:
    QPalette vorher_ = QGuiApplication::palette();
};

TEST_F(SymbolTest, everyFile_drawsInTextColourOnly) {
    const QColor blau(10, 20, 200);
    färbe(blau, Qt::gray);
    const QStringList dateien = QDir(u":/tarvel/icons"_s).entryList();
    ASSERT_FALSE(dateien.isEmpty());
    for (const QString& datei : dateien) {
        // A build that cannot read drawings has them painted in several sizes.
        QString name = datei;
        name.remove(QRegularExpression(u"(-\\d+\\.png|\\.svg)$"_s));
        if (name == u"tarvel") {
            continue;
        }
        const Deckung bild = deckung(symbol(name).pixmap(QSize(48, 48)), blau);
        EXPECT_GT(bild.pixel, 100) << name.toStdString();
        EXPECT_TRUE(bild.einfarbig) << name.toStdString();
    }
}

TEST_F(SymbolTest, changedPalette_recoloursExistingIcon) {
    färbe(Qt::black, Qt::gray);
    const QIcon icon = symbol(u"drucken"_s);
    EXPECT_TRUE(deckung(icon.pixmap(QSize(32, 32)), Qt::black).einfarbig);
    färbe(Qt::white, Qt::red);
    EXPECT_TRUE(deckung(icon.pixmap(QSize(32, 32)), Qt::white).einfarbig);
    EXPECT_TRUE(deckung(icon.pixmap(QSize(32, 32), QIcon::Disabled), Qt::red).einfarbig);
}

TEST_F(SymbolTest, doublePixelRatio_drawsWithTwiceThePixels) {
    färbe(Qt::black, Qt::gray);
    QImage leinwand(48, 48, QImage::Format_ARGB32_Premultiplied);
    leinwand.setDevicePixelRatio(2);
    leinwand.fill(Qt::transparent);
    QPainter painter(&leinwand);
    symbol(u"tabelle"_s).paint(&painter, QRect(0, 0, 24, 24));
    painter.end();
    leinwand.setDevicePixelRatio(1);
    const QImage scharf =
        symbol(u"tabelle"_s).pixmap(QSize(48, 48)).toImage().convertToFormat(leinwand.format());
    EXPECT_EQ(leinwand, scharf);
}

TEST_F(SymbolTest, unknownName_givesNullIcon) {
    EXPECT_TRUE(symbol(u"gibtsnicht"_s).isNull());
    EXPECT_TRUE(SymbolEngine(u"gibtsnicht"_s).isNull());
}

} // namespace
} // namespace tarvel
