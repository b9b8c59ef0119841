#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "print/druckersystem.h"
#include "print/protokolldruck.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace tarvel {

/// What the print dialog takes from outside. Everything outlives it.
struct Druckumgebung {
    const Texte& texte;
    Dialoge& dialoge;
    Druckersystem& drucker;
    Druckerwahl& wahl;
};

/// The report that is to be printed.
struct Druckvorlage {
    const Protokolldaten& daten;
    const Briefkopfgrafik& grafik;
    QString titel; ///< of the job in the printer's queue
    QString pdf;   ///< full path that is proposed for a PDF file
};

/// The print dialog `Drucken_`: printer, pages and copies, or a PDF file. Closes when the report
/// was printed or written.
class Drucken_ : public QDialog {
public:
    Drucken_(const Druckumgebung& umgebung, const Druckvorlage& vorlage, QWidget* parent = nullptr);

    /// Full path of the PDF file that was written; empty when there is none.
    [[nodiscard]] const QString& geschrieben() const { return geschrieben_; }

private:
    QString geschrieben_;
    void baue();
    void Form_Activate();
    void bef_Drucken_Click();
    void bef_PDF_Click();
    [[nodiscard]] Seitenauswahl seiten() const;
    /// Tells that printing goes on and locks the dialog, or unlocks it.
    void zeigeFortschritt(bool läuft);

    Druckumgebung umgebung_;
    Druckvorlage vorlage_;
    QComboBox* cbo_Drucker_;
    QComboBox* cbo_Seiten_;
    QSpinBox* txt_Kopien_;
    QLabel* lab_Fortschritt_;
    QPushButton* bef_Drucken_;
    QPushButton* bef_PDF_;
    QPushButton* bef_Abbrechen_;
};

} // namespace tarvel
