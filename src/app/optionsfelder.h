#pragma once

#include "lang/texte.h"
#include "settings/einstellungen.h"

#include <QString>

#include <functional>
#include <initializer_list>
#include <variant>
#include <vector>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QWidget;

namespace tarvel {

class Profil;

/// Which controls of the options dialog show which settings. They are read and written in the order
/// in which they were tied.
class Optionsfelder {
public:
    /// Texts are cut to what the setting's buffer holds. What the file cannot hold is replaced when
    /// the field is left, so that nothing changes unseen.
    void text(Einstellung id, QLineEdit* feld);
    /// An editable list whose entries are only suggestions.
    void text(Einstellung id, QComboBox* feld);
    void schalter(Einstellung id, QCheckBox* feld);
    /// The number is the id of the button; a number without one chooses the nearest.
    void auswahl(Einstellung id, QButtonGroup* gruppe);
    /// The number is the position; a number beyond the list chooses its nearest end.
    void auswahl(Einstellung id, QComboBox* liste);
    void zahl(Einstellung id, QSpinBox* feld);
    /// A value that follows from others and is never read.
    void nurSchreiben(Einstellung id, std::function<int()> wert);

    /// Shows what the file holds. A text key that is missing or empty leaves in its field what was
    /// there at the last reading or saving; what was typed since is gone.
    void lade(const Einstellungen& einstellungen);
    void speichere(Profil& profil) const;
    /// Only numbers that differ from what @p einstellungen gives now.
    void speichernGeänderte(Profil& profil, const Einstellungen& einstellungen) const;
    /// To be called when what speichern put into the profile has reached the file.
    void gespeichert();
    /// Whether the control says something else now than after the last reading. A default that it
    /// showed for a missing key is no change. False for a setting that is not tied.
    [[nodiscard]] bool geändert(Einstellung id) const;

private:
    struct Feld {
        Einstellung id;
        std::function<void(const Einstellungen&)> lade;
        std::function<QString()> wert;
        std::function<void()> gespeichert = {};
        QString gezeigt = {}; ///< value after the last reading
    };
    void textfeld(Einstellung id, QLineEdit* zeile,
                  const std::function<void(const QString&)>& zeige);

    std::vector<Feld> felder_;
};

/// The words on the controls of a page, in the program's language.
class Beschriftungen {
public:
    using Wort = std::variant<Text, Meldung>;

    explicit Beschriftungen(const Texte& texte)
        : texte_(texte) {}

    /// A label for @p feld, which a screen reader knows by the same words.
    [[nodiscard]] QLabel* label(Wort wort, QWidget* feld);
    [[nodiscard]] QGroupBox* gruppe(Wort wort, const QString& name);
    void knopf(Wort wort, QAbstractButton* knopf);
    /// Anything else that takes its words anew after a change of language.
    void nimm(std::function<void()> beschrifte);
    void wendeAn() const;

    [[nodiscard]] const QString& operator()(Wort wort) const;

private:
    const Texte& texte_;
    std::vector<std::function<void()>> alle_;
};

/// Option buttons below each other, named @p name with their number, as children of @p gruppe's
/// layout; the numbers are their ids.
[[nodiscard]] QButtonGroup* optionsknöpfe(Beschriftungen& beschriftungen, QGroupBox* gruppe,
                                          const QString& name,
                                          std::initializer_list<Beschriftungen::Wort> worte);

} // namespace tarvel
