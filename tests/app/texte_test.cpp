// The window in every language: nothing of another language is left, nothing is cut.

#include "app/fenster.h"
#include "app/info.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCryptographicHash>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QToolBar>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

struct Textetest : Fenstertest {
    /// Every text that the window shows or tells a screen reader.
    QStringList sichtbareTexte() const {
        QStringList texte;
        const QList<QAction*> aktionen = hg().findChildren<QAction*>();
        for (const QAction* aktion : aktionen) {
            texte << aktion->text().remove(u'&') << aktion->toolTip();
        }
        const QList<QWidget*> widgets = hg().findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            texte << widget->toolTip() << widget->accessibleName();
            if (const auto* label = qobject_cast<const QLabel*>(widget)) {
                texte << label->text();
            } else if (const auto* gruppe = qobject_cast<const QGroupBox*>(widget)) {
                texte << gruppe->title();
            }
        }
        texte.removeDuplicates();
        return texte;
    }
};

/// Words that only German texts hold.
bool istDeutsch(const QString& text) {
    for (const QString& wort : {u"ü"_s, u"ä"_s, u"ö"_s, u"ß"_s, u" der "_s, u" die "_s, u" das "_s,
                                u" und "_s, u"zeigen"_s, u"Bild "_s, u"Klicken"_s}) {
        if (text.contains(wort)) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST_F(Textetest, languageSwitch_leavesNoGermanBehind) {
    ASSERT_TRUE(starte());
    ASSERT_TRUE(hg().ladeBild(maleBild({900, 320}, u"bild.png"_s)));
    for (const int sprache : {1, 2}) {
        wähle(u"men_Sprache_%1"_s.arg(sprache));
        for (const QString& text : sichtbareTexte()) {
            EXPECT_FALSE(istDeutsch(text)) << qPrintable(text);
        }
    }
}

TEST_F(Textetest, everyFieldAndButton_hasOneNameInEveryLanguage) {
    ASSERT_TRUE(starte());
    missFlügel();
    const auto prüfe = [](const QWidget& fenster, bool deutsch) {
        const QList<QWidget*> alle = fenster.findChildren<QWidget*>();
        for (QWidget* feld : alle) {
            const bool gefragt = qobject_cast<QLineEdit*>(feld) != nullptr ||
                                 qobject_cast<QComboBox*>(feld) != nullptr ||
                                 qobject_cast<QAbstractButton*>(feld) != nullptr ||
                                 qobject_cast<QAbstractSpinBox*>(feld) != nullptr ||
                                 qobject_cast<QAbstractItemView*>(feld) != nullptr;
            // Parts of a field belong to it.
            const bool teil =
                feld->objectName().isEmpty() || feld->objectName().startsWith(u"qt_"_s);
            if (!gefragt || teil || feld->isHidden()) {
                continue;
            }
            // A short caption may have a longer name behind it, but there are never two captions.
            QStringList schilder;
            const QList<QLabel*> labels = fenster.findChildren<QLabel*>();
            for (const QLabel* label : labels) {
                if (label->buddy() == feld) {
                    schilder << label->text();
                }
            }
            if (const auto* knopf = qobject_cast<const QAbstractButton*>(feld)) {
                schilder << knopf->text();
            }
            schilder.removeAll(QString());
            EXPECT_LE(schilder.size(), 1) << qPrintable(feld->objectName());
            const QString name =
                feld->accessibleName().isEmpty() ? schilder.join(u' ') : feld->accessibleName();
            EXPECT_FALSE(name.isEmpty()) << qPrintable(feld->objectName());
            EXPECT_TRUE(deutsch || !istDeutsch(name)) << qPrintable(name);
        }
    };
    for (const int sprache : {1, 2, 0}) {
        wähle(u"men_Sprache_%1"_s.arg(sprache));
        for (const QString& ansicht :
             {u"men_Ansicht_0"_s, u"men_Ansicht_11"_s, u"men_Ansicht_2"_s}) {
            wähle(ansicht);
        }
        prüfe(hg(), sprache == 0);
        for (const QString& befehl :
             {u"men_Bearbeiten_20"_s, u"men_Datei_1"_s, u"men_Datei_23"_s, u"men_Extras_9"_s}) {
            QTimer::singleShot(0, [&] {
                QWidget& fenster = *QApplication::activeModalWidget();
                prüfe(fenster, sprache == 0);
                fenster.close();
            });
            wähle(befehl);
        }
    }
}

TEST_F(Textetest, everyCommand_hasAToolTipAndEveryShortcutOnce) {
    ASSERT_TRUE(starte());
    QMap<QString, QString> vergeben;
    const QList<QAction*> aktionen = hg().findChildren<QAction*>();
    for (const QAction* aktion : aktionen) {
        if (!aktion->objectName().startsWith(u"men_"_s) || aktion->menu() != nullptr) {
            continue;
        }
        EXPECT_FALSE(aktion->toolTip().isEmpty()) << qPrintable(aktion->objectName());
        const QString kürzel = aktion->shortcut().toString();
        if (!kürzel.isEmpty()) {
            EXPECT_EQ(vergeben.value(kürzel), QString()) << qPrintable(aktion->objectName());
            vergeben[kürzel] = aktion->objectName();
        }
    }
}

// Whoever changes a caption says so here.
TEST_F(Textetest, menus_keepTheirSpelling) {
    ASSERT_TRUE(starte());
    QByteArray alle;
    for (const int sprache : {1, 2, 0}) {
        wähle(u"men_Sprache_%1"_s.arg(sprache));
        const QList<QAction*> aktionen = hg().findChildren<QAction*>();
        for (const QAction* aktion : aktionen) {
            // Not every build writes drawings; the other formats are offered in the same words.
            if (aktion->objectName().startsWith(u"men_"_s) && !aktion->text().contains(u"SVG"_s)) {
                alle += aktion->text().remove(u'&').toUtf8() + '\n';
            }
        }
    }
    EXPECT_EQ(QCryptographicHash::hash(alle, QCryptographicHash::Md5).toHex().toStdString(),
              "c2383958ccaa99bc4c1e5298882cd342")
        << alle.data();
}

TEST_F(Textetest, window_fitsIntoSmallScreensInEveryLanguage) {
    ASSERT_TRUE(starte());
    ASSERT_TRUE(hg().ladeBild(maleBild({900, 320}, u"bild.png"_s)));
    for (const int sprache : {0, 1, 2}) {
        wähle(u"men_Sprache_%1"_s.arg(sprache));
        hg().resize(1280, 720);
        QApplication::processEvents();
        EXPECT_LE(hg().minimumSizeHint().width(), 1280);
        EXPECT_LE(hg().minimumSizeHint().height(), 720);
        const QList<QLabel*> labels = hg().findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            if (label->isVisible() && !label->wordWrap()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
            }
        }
        const QList<QAbstractButton*> knöpfe = hg().findChildren<QAbstractButton*>();
        for (const QAbstractButton* knopf : knöpfe) {
            if (knopf->isVisible() && !knopf->text().isEmpty() &&
                knopf->objectName().startsWith(u"opt_"_s)) {
                EXPECT_GE(knopf->width(), knopf->sizeHint().width()) << qPrintable(knopf->text());
            }
        }
    }
}
