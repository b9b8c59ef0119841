#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tarvel {

/// The picture beside a message; it also decides how urgent the message sounds to a screen reader.
/// Schlicht has none.
enum class Meldungsart { Hinweis, Frage, Ausruf, Stopp, Schlicht };

/// What the user answered to a question.
enum class Antwort { Ja, Nein, Abbrechen };

/// A question with two or three answers. Empty captions take the words of the program's language
/// for Yes, No and Cancel; a question of our own names its answers with verbs.
struct Frage {
    QString titel;
    QString text;
    Meldungsart art = Meldungsart::Frage;
    bool verwirft = false; ///< Ja gives something up, so Enter must not mean it
    /// Nein gives something up, so neither Enter nor Escape may mean it.
    bool neinVerwirft = false;
    bool mitAbbrechen = false;
    QString ja = {};
    QString nein = {};
    /// What it is about, where that may be too long for a message box. Such a question has two
    /// answers, and Escape means Nein.
    QStringList zeilen = {};
};

/// Everything that stops and waits for the user: messages, questions and file choosers. Comes in
/// from outside, so a test answers instead of blocking on a box.
class Dialoge {
public:
    virtual ~Dialoge() = default;

    virtual void meldung(const QString& titel, const QString& text, Meldungsart art) = 0;
    /// A message with a list that may be too long for a message box, such as what failed and why.
    virtual void bericht(const QString& titel, const QString& text, const QStringList& zeilen) = 0;
    [[nodiscard]] virtual Antwort frage(const Frage& frage) = 0;
    /// Lets the user choose one of @p worte. Position of the choice, at first @p vorgabe; nullopt
    /// when the user cancelled.
    [[nodiscard]] virtual std::optional<int> auswahl(const QString& titel, const QString& text,
                                                     const QStringList& worte, int vorgabe) = 0;

    /// Asks for an existing file. @p filter in the toolkit's form ("Bilder (*.png *.jpg);;…").
    /// Returns an empty text when the user cancelled.
    [[nodiscard]] virtual QString wähleDatei(const QString& titel, const QString& ordner,
                                             const QString& filter) = 0;
    /// Asks for existing files, one or several; none when the user cancelled.
    [[nodiscard]] virtual QStringList wähleDateien(const QString& titel, const QString& ordner,
                                                   const QString& filter) = 0;
    /// Asks for an existing folder. Returns an empty text when the user cancelled.
    [[nodiscard]] virtual QString wähleOrdner(const QString& titel, const QString& ordner) = 0;
    /// Asks for a place to write to; asks before it returns an existing file.
    [[nodiscard]] virtual QString wähleZieldatei(const QString& titel, const QString& vorschlag,
                                                 const QString& filter) = 0;
};

} // namespace tarvel
