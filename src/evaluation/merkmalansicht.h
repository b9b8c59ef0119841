#pragma once

#include "evaluation/merkmale.h"
#include "lang/texte.h"
#include "platform/dialoge.h"

#include <QWidget>

#include <array>
#include <functional>
#include <vector>

class QButtonGroup;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QValidator;
class QStringListModel;

namespace tarvel {

/// The view "Merkmal": takes the body marks of the bees bee by bee or as numbers of bees, and shows
/// the list, the counts and the summary. Which caste it asks for is what the marks say.
class Merkmalansicht : public QWidget {
public:
    /// Called with the marks as they now stand after every change of the user.
    using Änderung = std::function<void(const Merkmale&)>;

    Merkmalansicht(const Texte& texte, Dialoge& dialoge, QWidget* parent = nullptr);
    ~Merkmalansicht() override;

    void beiÄnderung(Änderung änderung) { änderung_ = std::move(änderung); }
    /// Shows @p merkmale without reporting a change.
    void zeige(const Merkmale& merkmale);
    [[nodiscard]] const Merkmale& merkmale() const { return merkmale_; }
    [[nodiscard]] const Merkmalauswertung& auswertung() const { return auswertung_; }

    /// Chooses bees by their places from 0 in the list.
    void wähle(const std::vector<int>& bienen);

    /// To be called for another examination: the choice for the last bee goes.
    void beginneNeu();
    /// How many wings the sample has; the bees are counted against them.
    void setzeFlügelzahl(int flügel);

    /// Whether the hair length of workers is left out.
    void setzeOhneHaarlänge(bool ohne);

    /// Puts the words of the program's language on the controls.
    void TexteAnwenden();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

private:
    /// A group of marks of one caste.
    struct Gruppe {
        Geschlecht tiere;
        Merkmalgruppe art;
        QGroupBox* rahmen;
        QButtonGroup* optionen;
        std::vector<QLabel*> codes; ///< in place of the option buttons in sums mode
        std::vector<QLineEdit*> zahlen;
        QLabel* summe;
        bool mitTaste = false; ///< got a key for the bee that is being entered
    };

    QWidget* seite(Geschlecht tiere);
    Gruppe gruppe(Geschlecht tiere, Merkmalgruppe art);
    QLineEdit* zahlfeld(Geschlecht tiere, int platz);
    QWidget* modusleiste();
    QWidget* listenleiste();
    void vergibTasten();

    void bef_Übernehmen_Click();
    void bef_Entfernen_Click();
    void opt_Modus_Click(Merkmalmodus modus);
    void txt_Anzahl_Change(int platz, const QString& text);
    void nimmListenzeile();
    void taste_Enter();

    [[nodiscard]] bool nimmTaste(const QKeyEvent& ereignis);
    void beginneBiene();
    void beschrifteTasten();
    void zeigeFortschritt();
    [[nodiscard]] std::vector<Gruppe*> gezeigteGruppen();
    [[nodiscard]] bool wirdErfasst(const Gruppe& gruppe) const;

    void geändert();
    void zeigeAuswertung();
    void zeigeZusammenfassung();
    void zeigeListe();
    void zeigeModus();
    void meldeFehler();
    [[nodiscard]] QString fehlertext(Anteilfehler fehler) const;
    [[nodiscard]] Merkmalwahl wahl() const;

    const Texte& texte_;
    Dialoge& dialoge_;
    QValidator* ziffern_; ///< what a field for a number takes
    Änderung änderung_;
    Merkmale merkmale_;
    Merkmalauswertung auswertung_;
    bool OhneHaarlänge_ = false;
    int flügelzahl_ = 0;

    QLabel* lab_Hinweis_;
    std::array<QRadioButton*, 2> opt_Modus_{};
    QStackedWidget* seiten_;
    std::vector<Gruppe> gruppen_;
    QLabel* lab_Bienen_;
    QLabel* lab_Fortschritt_;
    QLabel* lab_Biene_;
    QLabel* lab_Fehler_;
    QListView* Liste_;
    QStringListModel* zeilen_;
    QPushButton* bef_Übernehmen_;
    QPushButton* bef_Entfernen_;
};

} // namespace tarvel
