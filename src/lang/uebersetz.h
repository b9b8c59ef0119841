#pragma once

#include "lang/protokolltexte.h"
#include "platform/dialoge.h"
#include "platform/shell.h"

#include <QDialog>

#include <functional>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace tarvel {

/// What shall be done with a language pack.
enum class Paketwunsch { Laden, Vorlage, Ablegen };

/// The translation editor: beside each text of the printed report a field for the user's own. All
/// of them reach the settings file at once; cancelled, it stays as it was. A field without a
/// translation is empty and shows the wording of the current language as its placeholder. Works
/// modal and beside the main window.
class Übersetz : public QDialog {
public:
    /// Shows the report printed with these texts; page 1 or 2 is the one being worked on.
    using Testen = std::function<void(const Protokollfelder&, int seite)>;

    /// @p texte, @p dialoge and @p shell must outlive this. @p IniPfad full path of the settings
    /// file.
    Übersetz(const Texte& texte, QString IniPfad, Dialoge& dialoge, Shell& shell, Testen testen,
             QWidget* parent = nullptr);

    /// Called when the user wants something of a language pack.
    void beiSprachpaket(std::function<void(Paketwunsch)> wunsch) { paket_ = std::move(wunsch); }

    /// Captions and fields as the current language and the settings file give them; what was edited
    /// is gone.
    void Form_Load();
    /// Writes the 36 texts in the order of the rows. False, with a message shown, when the file
    /// could not be written; it is unchanged then.
    bool SpeichernInINI();

    /// True while a field holds what was typed and not stored yet.
    [[nodiscard]] bool geändert() const;
    /// How many fields hold a text of the user's.
    [[nodiscard]] int eigene() const;
    /// What the report prints: the fields' texts, for an empty one the wording of the current
    /// language.
    [[nodiscard]] Protokollfelder felder() const;

    void accept() override;
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// The rows of one page of the report.
    struct Seite {
        std::vector<int> zeilen;
        QWidget* fläche = nullptr;
        QGridLayout* raster = nullptr;
        std::array<QLabel*, 2> sprachen{};
        std::array<QLabel*, 2> eigene{};
        int blöcke = 0; ///< how often the two columns stand side by side
    };

    void bef_OK_Click();
    void bef_Abbrechen_Click();
    void pic_Cancel_Click();
    void bef_Test_Click();
    void Form_KeyDown(QKeyEvent& taste);
    void Form_Resize();

    void baueSeite(Seite& seite);
    void baueKnöpfe();
    void baueTasten();
    void ordneAn(Seite& seite, int blöcke);
    [[nodiscard]] int blockbreite() const;
    [[nodiscard]] QString text(std::size_t zeile) const;
    void beschrifte();
    void zeigeÜbersetzung(bool auchBearbeitete);
    void zeigeAnzahl();
    void blättere(int um);
    void hilfe();

    const Texte& texte_;
    QString IniPfad_;
    Dialoge& dialoge_;
    Shell& shell_;
    Testen testen_;
    std::array<Seite, 2> seiten_;
    std::array<QLabel*, protokolltabelle.size()> lab_Text_{};
    std::array<QLineEdit*, protokolltabelle.size()> txt_Text_{};
    QTabWidget* tbs_Seiten_;
    QLabel* lab_Hinweis_;
    QPushButton* bef_OK_;
    QPushButton* bef_Abbrechen_;
    QPushButton* bef_Test_;
    QPushButton* bef_Sprachpaket_;
    std::array<QAction*, 3> men_Sprachpaket_{};
    std::function<void(Paketwunsch)> paket_;
};

} // namespace tarvel
