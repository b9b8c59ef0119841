#pragma once

#include "lang/texte.h"
#include "results/kolonieangaben.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;

namespace tarvel {

/// The colony data fields of the main window. Shows an examination's data and reports every change
/// of the user; on leaving a field its text is brought into the usual form.
class Kolonieformular : public QWidget {
public:
    /// Called with the data as they now stand.
    using Änderung = std::function<void(const Kolonieangaben&)>;
    /// Called with the position in the race list that the user picked.
    using Rassenwahl = std::function<void(int)>;

    Kolonieformular(const Texte& texte, Zahlenformat format, QWidget* parent = nullptr);

    /// Called before the caste changes; false keeps the one that was shown.
    using Geschlechtswahl = std::function<bool(Geschlecht)>;

    void beiÄnderung(Änderung änderung) { änderung_ = std::move(änderung); }
    void beiRassenwahl(Rassenwahl wahl) { rassenwahl_ = std::move(wahl); }
    void beiGeschlechtswahl(Geschlechtswahl wahl) { geschlechtswahl_ = std::move(wahl); }

    /// Gives what is known for a field of names. Asked when such a field gets the keyboard or its
    /// list is opened, once until the next examination is shown.
    using Vorschläge = std::function<QStringList(QString Kolonieangaben::*)>;
    void beiVorschlägen(Vorschläge vorschläge) { vorschläge_ = std::move(vorschläge); }

    void setzeRassen(const QStringList& namen);
    /// Shows @p angaben without reporting a change.
    void zeige(const Kolonieangaben& angaben);
    [[nodiscard]] const Kolonieangaben& angaben() const { return angaben_; }

    /// Brings the year, and the field that the keyboard is in, into the usual form, as leaving them
    /// does. Stored texts of the other fields stay as they are.
    void vervollständige();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// One field of text: where it is typed and which text of the data it is.
    struct Feld {
        QWidget* eingabe;
        QLineEdit* zeile; ///< the field itself, or the line edit inside a combo box
        QString Kolonieangaben::*wert;
        std::function<QString(const QString&)> normalisiert; ///< empty: left as typed
    };

    QLineEdit* textfeld(const QString& name, QString Kolonieangaben::*wert,
                        std::function<QString(const QString&)> normalisiert = {});
    QComboBox* namensfeld(const QString& name, QString Kolonieangaben::*wert);
    void nimmAuf(QWidget* eingabe, QLineEdit* zeile, QString Kolonieangaben::*wert,
                 std::function<QString(const QString&)> normalisiert);
    QLabel* beschriftung(Text text, QWidget* feld);
    QWidget* königin();
    void beschrifte();
    void normalisiere(const Feld& feld);
    void zeigeRasse();
    void melde();
    void fülleListe(QComboBox& liste);

    const Texte& texte_;
    Zahlenformat format_;
    Kolonieangaben angaben_;
    Änderung änderung_;
    Rassenwahl rassenwahl_;
    Geschlechtswahl geschlechtswahl_;
    Vorschläge vorschläge_;
    std::vector<std::pair<QComboBox*, QString Kolonieangaben::*>> ungefüllte_;
    std::vector<Feld> felder_;
    std::vector<std::pair<QLabel*, Text>> beschriftungen_;
    QComboBox* cbo_Rasse_;
    QComboBox* cbo_Geschlecht_;
};

} // namespace tarvel
