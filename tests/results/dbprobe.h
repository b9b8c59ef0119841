#pragma once

#include "results/browserprobe.h"
#include "results/db.h"
#include "results/ergebnisgitter.h"
#include "settings/einstellungen.h"
#include "support/kinder.h"
#include "support/testdialoge.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

/// The browser on a file of its own.
struct DBTest : Browserprobe {
    Texte texte{QString()};
    TestDialoge dialoge;
    QStringList gewählt;
    QStringList geladen;
    bool lädt = true;
    std::function<Neubeurteilungsregeln()> neubeurteilung;
    std::function<std::unique_ptr<Protokollserie>()> protokolle;
    std::function<bool()> zuchtübersicht;
    QString offene; ///< open in the main window
    QDate heute;    ///< later dates are asked about; of no day unless a test wants it
    std::unique_ptr<Einstellungen> einstellungen; ///< none unless a test wants them kept
    std::unique_ptr<DB> db;

    DBTest() { texte.SpracheDeutsch(); }

    void öffne(const QString& datei) {
        db = std::make_unique<DB>(DbUmgebung{
            .texte = texte,
            .dialoge = dialoge,
            .DatenbankPfad = datei,
            .dokumente = ordner_.path(),
            .DatenbankWählen =
                [this](const QString& neu) {
                    try {
                        Ergebnistabelle(neu).öffneProbeweise();
                    } catch (const Datenbankfehler& fehler) {
                        dialoge.meldung({}, meldungstext(texte, fehler), Meldungsart::Ausruf);
                        return false;
                    }
                    gewählt << neu;
                    return true;
                },
            .LadenDB =
                [this](const QString& nummer) {
                    geladen << nummer;
                    return lädt;
                },
            .offene = [this] { return offene; },
            .neubeurteilung = neubeurteilung,
            .protokolle = protokolle,
            .heute = heute,
            .einstellungen = einstellungen.get(),
            .zuchtübersicht = zuchtübersicht});
        db->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(db.get()));
        QApplication::processEvents(); // what waits for the first painting
    }
    void öffne() { öffne(pfad_); }

    template <typename T>
    T& kind(const QString& name) const {
        return tarvel::kind<T>(*db, name);
    }
    Ergebnisgitter& grid() const {
        return static_cast<Ergebnisgitter&>(kind<QTableView>(u"Grid"_s));
    }
    QAction& aktion(const QString& name) const { return kind<QAction>(name); }
    void wähle(const QString& name) const { aktion(name).trigger(); }
    QString zelle(int zeile, int spalte) const {
        return grid().model()->index(zeile, spalte).data().toString();
    }
    /// Examination numbers that are shown, in their order.
    QString gezeigt() const {
        QStringList nummern;
        for (int zeile = 0; zeile < grid().model()->rowCount(); ++zeile) {
            nummern << zelle(zeile, 0);
        }
        return nummern.join(u' ');
    }
    QString anzahl() const { return kind<QLabel>(u"lab_Anzahl"_s).text(); }

    void taste(Qt::Key key, Qt::KeyboardModifiers umschalt = Qt::NoModifier) const {
        QTest::keyClick(QApplication::focusWidget(), key, umschalt);
        QApplication::processEvents();
    }
    void gehe(int zeile, int spalte) const {
        grid().setFocus();
        // Whatever modifier the key before had.
        grid().selectionModel()->setCurrentIndex(grid().model()->index(zeile, spalte),
                                                 QItemSelectionModel::ClearAndSelect |
                                                     QItemSelectionModel::Rows);
    }
    /// Types into a cell as a person does and ends with Enter.
    void tippe(int zeile, int spalte, const QString& text) const {
        gehe(zeile, spalte);
        taste(Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        if (auto* auswahl = qobject_cast<QComboBox*>(editor)) {
            auswahl->setCurrentText(text); // a word that is not offered changes nothing
        } else if (auto* feld = qobject_cast<QLineEdit*>(editor)) {
            feld->setText(text);
        } else {
            ADD_FAILURE() << "no editor";
        }
        taste(Qt::Key_Return);
    }
    void doppelklick(int zeile) const {
        const QPoint ort = grid().visualRect(grid().model()->index(zeile, 2)).center();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, ort);
        QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, ort);
    }
};

/// The same on a file of six rows that differ in everything that is filtered and sorted.
struct DBFiltertest : DBTest {
    struct Fall {
        QString nummer, ergebnis, rasse, tiere, züchter;
    };
    void SetUp() override {
        DBTest::SetUp();
        const Fall fälle[] = {{u"001"_s, u"Ja"_s, u"Carnica"_s, u"Arbeiter"_s, u"d"_s},
                              {u"002"_s, u"No"_s, u"carnica"_s, u"Drones"_s, u"c"_s},
                              {u"003"_s, u"Oui"_s, u"Mellifera"_s, u"Mâles"_s, u"b"_s},
                              {u"004"_s, u" "_s, u"Ligustica"_s, u"Workers"_s, u"a"_s},
                              {u"005"_s, u"Yes"_s, u"Buckfast"_s, u"OUVRIÈRES"_s, u"e"_s},
                              {u"006"_s, u"nein"_s, u"Carpatica"_s, u"Workers"_s, u"f"_s}};
        int tag = 10;
        for (const Fall& fall : fälle) {
            Ergebnissatz neu = vollerSatz(fall.nummer);
            neu.ERGEBNIS = fall.ergebnis;
            neu.RASSE = fall.rasse;
            neu.A_D = fall.tiere;
            neu.Z_NAME = fall.züchter;
            neu.B_NAME = fall.tiere + fall.nummer;
            neu.ZB_NR = QString(u'9').repeated(tag);
            neu.DATUM = QDate(2025, 1, tag--);
            speichere(neu);
        }
        öffne();
    }
    bool filtert() const { return aktion(u"men_Filter_0"_s).isChecked(); }
};

} // namespace tarvel
