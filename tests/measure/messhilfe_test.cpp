#include "measure/messhilfe.h"

#include "lang/texte.h"
#include "measure/messhilfebild.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QTest>

#include <gtest/gtest.h>

#include <utility>

using namespace tarvel;
using namespace Qt::StringLiterals;

TEST(MessHilfe, languageChange_relabelsTitleAndPoints) {
    Texte texte(u"/"_s);
    const MessHilfe hilfe(texte);
    EXPECT_EQ(hilfe.objectName(), u"MessHilfe"_s);
    EXPECT_FALSE(hilfe.isModal());
    for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch, Sprache::Deutsch}) {
        ASSERT_TRUE(texte.SpracheEinstellen(static_cast<int>(sprache)));
        EXPECT_EQ(hilfe.windowTitle(), Texte::eintrag(Meldung::MesshilfeTitel, sprache));
        for (int nummer = 1; nummer <= 8; ++nummer) {
            const auto* zeile = hilfe.findChild<QLabel*>(u"lab_Messpunkt_%1"_s.arg(nummer));
            ASSERT_NE(zeile, nullptr);
            EXPECT_EQ(zeile->text(), Texte::eintrag(messpunktbeschreibung(nummer), sprache));
            EXPECT_TRUE(zeile->text().startsWith(QString::number(nummer)));
        }
    }
}

TEST(MessHilfe, escape_closes) {
    const Texte texte(u"/"_s);
    MessHilfe hilfe(texte);
    hilfe.show();
    QTest::keyClick(&hilfe, Qt::Key_Escape);
    EXPECT_FALSE(hilfe.isVisible());
}

TEST(MessHilfe, drawing_staysInItsFrameAndFollowsThePalette) {
    const Texte texte(u"/"_s);
    const std::pair<QColor, QColor> fälle[] = {{Qt::white, Qt::black},
                                               {QColor(30, 30, 30), QColor(230, 230, 230)}};
    for (const auto& [grund, schrift] : fälle) {
        QPalette palette;
        palette.setColor(QPalette::Window, grund);
        palette.setColor(QPalette::WindowText, schrift);
        // Empty frames paint nothing; others nothing outside, whatever their proportions.
        for (const QRect rahmen :
             {QRect(50, 50, 500, 300), QRect(50, 50, 200, 400), QRect(50, 50, 0, 0)}) {
            QImage bild(600, 500, QImage::Format_RGB32);
            bild.fill(grund);
            QPainter painter(&bild);
            maleMessHilfe(painter, rahmen, palette, texte);
            painter.end();
            qint64 bemalt = 0;
            qint64 daneben = 0;
            for (int y = 0; y < bild.height(); ++y) {
                for (int x = 0; x < bild.width(); ++x) {
                    const bool farbig = bild.pixel(x, y) != grund.rgb();
                    bemalt += farbig ? 1 : 0;
                    daneben += farbig && !rahmen.contains(x, y) ? 1 : 0;
                }
            }
            EXPECT_EQ(bemalt > 5000, !rahmen.isEmpty()) << bemalt;
            EXPECT_EQ(daneben, 0);
        }
    }
}
