#pragma once

#include "evaluation/rassen.h"
#include "evaluation/rassestandard.h"
#include "lang/texte.h"
#include "platform/dialoge.h"

#include <QDate>
#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabBar;

namespace tarvel {

struct Standarddatei;

/// What giving standards on takes from outside. Everything outlives the page.
struct Standardumgebung {
    Dialoge* dialoge = nullptr;
    std::function<QDate()> heute;
    QString ordner; ///< that file choosers start in
};

/// The race page of the options: shows and edits the standards of the four races, each on its tab.
/// One set of fields moves to the tab that is chosen.
class Rassenseite : public QWidget {
public:
    Rassenseite(const Texte& texte, Zahlenformat format, QWidget* parent = nullptr);
    ~Rassenseite() override;

    /// What happens when a field refuses a key; the system's beep unless set.
    void beiFalscherTaste(std::function<void()> piepston) { piepston_ = std::move(piepston); }

    /// Captions of the tabs, in the order of the race list.
    void setzeRassen(const QStringList& namen);

    /// Loads the standards of all races and chooses the tab of race @p rasse, 1 to 4. With 0, no
    /// race, everything stays as it is.
    void lade(const Einstellungen& einstellungen, int rasse);
    /// The same without the changes made since the last lade or gespeichert.
    void verwirf(const Einstellungen& einstellungen, int rasse);

    /// The first field whose text is no range of classes, its race brought to the front; null when
    /// there is none. Nothing may be saved before it is mended.
    [[nodiscard]] QLineEdit* mangelhaftesFeld();
    /// Takes the fields over as they stand and puts race @p rasse into @p ini, then the other races
    /// that were changed. Boundary lines go to @p speicher too; false when it did not take them.
    [[nodiscard]] bool speichere(Profil& ini, Benutzerspeicher& speicher, int rasse);
    /// To be called when what speichern put into the profile has reached the file.
    void gespeichert();
    /// To be called when it has not: gives @p speicher the lines of before again.
    void nichtGespeichert(const Einstellungen& einstellungen, Benutzerspeicher& speicher,
                          int rasse);

    /// Standard of race 1 to 4 with the changes made so far.
    [[nodiscard]] const Rassestandard& standard(int rasse) const;
    void setzeUmgebung(Standardumgebung umgebung) { umgebung_ = std::move(umgebung); }
    /// What bef_TestReset loads from.
    void setzeQuelle(const Einstellungen* einstellungen) { quelle_ = einstellungen; }

protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

private:
    struct Feld {
        const Standardzeile* zeile;
        QLineEdit* eingabe;
        Text wort;
        QString code; ///< code of the mark, or number of the range, beside it; else empty
        QLabel* geltend = nullptr; ///< of a boundary line: the value in force
    };
    using Standards = std::array<Rassestandard, Rassenzahl>;

    void tbs_Rasse_Click();
    void bef_TestReset_Click();
    void cbo_DV_Click(int position);
    void bef_StandardExport_Click();
    void bef_StandardImport_Click();
    void nimm(const Standarddatei& datei);
    /// Takes over what was typed as the name of the standard that is shown.
    void benenne();
    /// The name belongs to the values as they are now.
    void besiegle(std::size_t rasse);
    void zeigeKennung();

    QLineEdit* feld(QStringView schlüssel, Standardgruppe gruppe, const QString& name, Text wort,
                    const QString& code = {});
    QWidget* merkmalzeile(Standardgruppe gruppe, const QString& name, Text wort,
                          const std::vector<QStringView>& schlüssel);
    QWidget* mittelwert(Standardgruppe gruppe, QStringView schlüssel);
    QWidget* klassenzeile(Standardgruppe gruppe, QStringView bereich, QStringView anteil);
    QGroupBox* gruppeArbeiterinnen();
    QGroupBox* gruppeDrohnen();
    QGroupBox* gruppeLinien();
    QGroupBox* gruppeStandard();
    QLabel* label(Text wort);
    QLabel* zeilenkopf(Text wort, const QString& nummer = {});
    void beschrifte();
    QWidget* hinweiszeilen(std::size_t index);

    void zeige();
    void zeigeHinweise();
    void zeigeGeltende();
    void verlasse(const Feld& feld);
    void vervollständige();
    [[nodiscard]] Rassestandard& gezeigt() { return standards_.at(gezeigte_); }
    void setze(Standardgruppe gruppe, QStringView schlüssel, int wert);

    const Texte& texte_;
    Zahlenformat format_;
    std::function<void()> piepston_;
    const Einstellungen* quelle_ = nullptr;
    Standards standards_;
    Standards geladene_;
    std::size_t gezeigte_ = 0;
    std::array<bool, Rassenzahl> neuBenannt_{}; ///< got a name here, not stored yet
    Standardumgebung umgebung_;

    QTabBar* tbs_Rasse_;
    std::array<QWidget*, Rassenzahl> karten_{};
    QWidget* blatt_;
    std::vector<Feld> felder_;
    std::array<QCheckBox*, 2> chk_CIMittel_{};
    std::array<QComboBox*, 2> cbo_CIMittel_{};
    std::array<QLabel*, 2> lab_Mangel_{};
    std::array<QLabel*, 2> lab_Hinweis_{};
    std::array<QRadioButton*, 2> opt_Korrelation_{};
    std::array<QComboBox*, 2> cbo_DV_{};
    QLineEdit* txt_Standardname_;
    QLineEdit* txt_Standardversion_;
    QLabel* lab_Standardstand_;
    QPushButton* bef_StandardImport_;
    QPushButton* bef_StandardExport_;
    QPushButton* bef_TestReset_;
    QPushButton* bef_Standardwerte_;
    std::vector<QLabel*> zeilenköpfe_;
    std::vector<std::function<void()>> beschriftungen_;
};

} // namespace tarvel
