#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "print/druckerwahl.h"
#include "print/protokolldruck.h"

#include <QDialog>

#include <future>
#include <vector>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTimer;

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
    /// What a CSV file beside the PDF holds; empty when there is nothing to be written.
    QByteArray tabelle = {};
    bool mitTabelle = false; ///< whether it is proposed
};

/// The print dialog `Drucken_`: printer, pages and copies, or a PDF file. Closes when the report
/// was printed or written.
class Drucken_ : public QDialog {
public:
    Drucken_(const Druckumgebung& umgebung, const Druckvorlage& vorlage, QWidget* parent = nullptr);

    /// Full path of the PDF file that was written; empty when there is none.
    [[nodiscard]] const QString& geschrieben() const { return geschrieben_; }
    [[nodiscard]] bool mitTabelle() const;

private:
    QString geschrieben_;
    void baue();
    void Form_Activate();
    /// Fills in the printers as soon as the system has told of them.
    void nimmDrucker();
    void zeigeDrucker(const Druckerauskunft& auskunft);
    /// Writes the table beside @p pdf. False, with a message, when it could not be.
    [[nodiscard]] bool schreibeTabelle(const QString& pdf);
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
    QCheckBox* chk_Tabelle_;
    std::vector<Seitenauswahl> auswahlen_; ///< of cbo_Seiten
    std::future<Druckerauskunft> frage_;
    QTimer* wecker_;
    bool serverSchweigt_ = false;
    QLabel* lab_Fortschritt_;
    QPushButton* bef_Drucken_;
    QPushButton* bef_PDF_;
    QPushButton* bef_Abbrechen_;
};

} // namespace tarvel
