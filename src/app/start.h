#pragma once

#include "lang/texte.h"
#include "settings/einstellungen.h"

#include <QDialog>
#include <QLocale>

#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tarvel {

/// The first-run window: asks for the language and for the data that the letterhead and the
/// numbering of examinations need, and writes them to the settings file.
class Start : public QDialog {
public:
    /// @p benutzersprache language of the user's system; it preselects the program's language.
    Start(Einstellungen& einstellungen, Texte& texte, QLocale::Language benutzersprache,
          QWidget* parent = nullptr);

private:
    QWidget* sprachwahl();
    void Form_Load(QLocale::Language benutzersprache);
    void opt_Sprache_Click(int index);
    void beschrifte();
    void lab_OK_Click();

    Einstellungen& einstellungen_;
    Texte& texte_;
    std::array<QRadioButton*, 3> opt_Sprache_{};
    QLabel* überschrift_;
    QLabel* fußzeile_;
    std::array<QLabel*, 5> beschriftungen_{};
    QLineEdit* txt_Name_;
    QLineEdit* txt_Kurzzeichen_;
    QLineEdit* txt_Straße_;
    QLineEdit* txt_Ort_;
    QComboBox* cbo_Organisation_;
    QPushButton* lab_OK_;
};

} // namespace tarvel
