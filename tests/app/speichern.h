#pragma once

#include "app/fenster.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>

#include <optional>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

/// Examinations on their way between the main window and the results file.
struct Speicherntest : Fenstertest {
    void SetUp() override {
        schreibeIni("[Start]\r\nNeu=False\r\nSprache=0\r\n[Allgemeines]\r\nKurzzeichen=AB\r\n");
        ASSERT_TRUE(starte());
    }

    QString pfad(const QString& name = u"Meine Tabelle.tdb"_s) const {
        return ordner.filePath(name);
    }
    QLineEdit& feld(const QString& name) const { return kind<QLineEdit>(name); }
    QString nummer() const { return feld(u"txt_UNr"_s).text(); }
    QLineEdit& züchter() const { return *kind<QComboBox>(u"cbo_Name"_s).lineEdit(); }

    QStringList liste(const QString& name) const {
        QStringList texte;
        const QAbstractItemModel& alle = *kind<QListView>(name).model();
        for (int i = 0; i < alle.rowCount(); ++i) {
            texte << alle.index(i, 0).data().toString();
        }
        return texte;
    }
    std::vector<QString> fragetexte() const {
        std::vector<QString> texte;
        for (const Frage& frage : dialoge.fragen) {
            texte.push_back(frage.text);
        }
        return texte;
    }
    std::optional<Ergebnissatz> zeile(const QString& unr) const {
        return Ergebnistabelle(pfad()).lade(unr);
    }
};

} // namespace tarvel
