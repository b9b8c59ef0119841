#pragma once

#include "app/hauptstart.h"
#include "app/hg.h"
#include "app/start.h"
#include "measure/bild.h"
#include "measure/uebersicht.h"
#include "support/kinder.h"
#include "support/testdialoge.h"
#include "support/testdrucker.h"
#include "support/testordner.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <gmock/gmock.h>

namespace tarvel {

/// The real program in a folder of its own, with everything that would wait for a person answered
/// by the test.
struct Fenstertest : testing::Test {
    Testordner ordner;
    TestDialoge dialoge;
    TestShell shell;
    TestClock uhr;
    TestDrucker drucker;
    Benutzerspeicher speicher{ordner.filePath(QStringLiteral("benutzer.ini"))};
    std::function<void(Start&)> ersterLauf = [](Start&) {};
    QLocale::Language benutzersprache = QLocale::German;
    std::function<Modellergebnis()> modell; ///< wings are looked for only by tests that set it
    std::unique_ptr<Programm> programm;

    QString inipfad() const { return ordner.filePath(QStringLiteral("Index.ini")); }

    void schreibeIni(const QByteArray& inhalt) const { lege(inipfad(), inhalt); }
    QByteArray ini() const { return liesGanz(inipfad()); }

    Dienste dienste(Dialoge& antworten, const Zahlenformat& format = {}) {
        return {.dialoge = antworten,
                .shell = shell,
                .speicher = speicher,
                .uhr = uhr,
                .drucker = drucker,
                .format = format,
                .dokumente = ordner.path(),
                .benutzersprache = benutzersprache,
                .ersterLauf = ersterLauf,
                .modell = modell};
    }

    /// Starts the program, already set up in German unless the test wrote a settings file.
    bool starte(const Zahlenformat& format = {}) {
        if (!QFile::exists(inipfad())) {
            schreibeIni("[Start]\r\nNeu=False\r\nSprache=0\r\n");
        }
        return starteUnvorbereitet(format);
    }
    bool starteUnvorbereitet(const Zahlenformat& format = {}) {
        programm.reset();
        programm = std::make_unique<Programm>(ordner.path(), dienste(dialoge, format));
        if (!programm->Hauptstart()) {
            return false;
        }
        hg().beendeStart(); // no test waits for what comes after the first paint
        hg().activateWindow();
        return QTest::qWaitForWindowActive(&hg());
    }

    HG& hg() const { return *programm->hauptfenster(); }
    template <typename T>
    T& kind(const QString& name) const {
        return tarvel::kind<T>(hg(), name);
    }
    void wähle(const QString& aktion) const { kind<QAction>(aktion).trigger(); }
    QString hinweis() const { return kind<QLabel>(QStringLiteral("lab_H")).text(); }
    const Messreihe& reihe() const { return hg().untersuchung().reihe(); }

    Bild& bild() const { return kind<Bild>(QStringLiteral("Bild")); }
    Übersicht& übersicht() const { return kind<Übersicht>(QStringLiteral("Übersicht")); }

    /// A press and release at a place of the zoomed picture, fractions kept.
    void klick(QPointF imBild, Qt::MouseButton taste = Qt::LeftButton,
               Qt::KeyboardModifiers umschalt = Qt::NoModifier) const {
        bild().macheSichtbar(imBild);
        maus(QEvent::MouseMove, imBild, Qt::NoButton, umschalt);
        maus(QEvent::MouseButtonPress, imBild, taste, umschalt);
        maus(QEvent::MouseButtonRelease, imBild, taste, umschalt);
    }
    void maus(QEvent::Type art, QPointF imBild, Qt::MouseButton taste,
              Qt::KeyboardModifiers umschalt = Qt::NoModifier,
              Qt::MouseButtons gehalten = Qt::NoButton) const {
        QWidget& ziel = *bild().viewport();
        const QPointF ort = bild().zuFenster(imBild);
        if (art == QEvent::MouseButtonPress) {
            gehalten |= taste;
        }
        QMouseEvent ereignis(art, ort, ziel.mapToGlobal(ort), taste, gehalten, umschalt);
        QApplication::sendEvent(&ziel, &ereignis);
    }

    /// Clicks a plausible wing on the picture that is shown and takes it over.
    void klickeFlügel() const {
        for (const QPointF& punkt : {QPointF{400, 50},
                                     {92, 75},
                                     {360, 56},
                                     {288, 62},
                                     {286, 116},
                                     {237, 147},
                                     {216, 143},
                                     {292, 201}}) {
            klick(punkt);
        }
        klick({500, 250}, Qt::RightButton);
    }
    /// The same on a picture of its own.
    void missFlügel() {
        hg().resize(1280, 800);
        ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
        klickeFlügel();
    }

    /// A light grey picture with a dark frame, in the test's folder.
    QString maleBild(QSize größe, const QString& name = QStringLiteral("flügel 100%.png")) {
        QImage flügelbild(größe, QImage::Format_Grayscale8);
        flügelbild.fill(220);
        const QString pfad = ordner.filePath(name);
        EXPECT_TRUE(flügelbild.save(pfad));
        return pfad;
    }
};

} // namespace tarvel
