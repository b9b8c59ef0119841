#pragma once

#include "app/optionsfelder.h"
#include "app/umgebung.h"
#include "platform/benutzerspeicher.h"

#include <QDialog>

class QTabWidget;

namespace tarvel {

class Rassenseite;

/// The options dialog: edits the settings and the standards of the races. What it shows reaches the
/// settings file all at once when it is confirmed; cancelled, it leaves the file as it was.
class Optionen : public QDialog {
public:
    /// @p rasse the main window's current race, 1 to 4, or 0 for none. @p dokumente folder that
    /// choosers start in without a working folder.
    Optionen(const Umgebung& umgebung, Benutzerspeicher& speicher, int rasse,
             QWidget* parent = nullptr, const QString& dokumente = {});
    ~Optionen() override;

    /// The general page, in the order in which the keys are read and written.
    void LadenKarte1_2();
    void SpeichernKarte1_2(Profil& ini) const;
    /// Letterhead and report.
    void LadenKarte3_4();
    void SpeichernKarte3_4(Profil& ini) const;

    /// Saves all pages: general, letterhead and report, then the standards. False, with a message
    /// shown, when the file could not be written, or with the field in front that has to be mended
    /// first; the file is unchanged then.
    bool OKStart();

    /// Whether a control of the general page says something else than when the dialog was opened;
    /// a cancelled dialog has changed nothing.
    [[nodiscard]] bool geändert(Einstellung id) const { return karte1_2_.geändert(id); }

    /// Loads everything again, which discards what was changed.
    void reject() override;

private:
    void Form_Load();
    void bef_OK_Click();
    void bef_Abbrechen_Click();
    void beschrifte();

    Umgebung umgebung_;
    Benutzerspeicher& speicher_;
    int rasse_;
    Beschriftungen worte_;
    Optionsfelder karte1_2_;
    Optionsfelder karte3_4_;
    Optionsfelder eigene_;
    Rassenseite* rassen_;
    QTabWidget* karten_;
};

} // namespace tarvel
