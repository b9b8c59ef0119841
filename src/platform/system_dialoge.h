#pragma once

#include "platform/dialoge.h"

namespace tarvel {

/// The captions of answers in the program's language. An empty one takes the toolkit's own word.
struct Antwortworte {
    QString ok = {};
    QString ja = {};
    QString nein = {};
    QString abbrechen = {};
};

/// Message boxes and file choosers of the computer, over the program's active window. Texts are
/// shown as they are, never read as markup. Escape answers Abbrechen where that is an answer, else
/// Nein, or Ja where Nein would give something up. Enter answers Ja, but what Escape does where Ja
/// would give something up. How urgent a question looks does not matter. Answers get a letter to
/// press with Alt.
class SystemDialoge final : public Dialoge {
public:
    /// The captions of all later messages; to be set again when the language changes.
    void setzeWorte(const Antwortworte& worte) { worte_ = worte; }

    void meldung(const QString& titel, const QString& text, Meldungsart art) override;
    void bericht(const QString& titel, const QString& text, const QStringList& zeilen) override;
    [[nodiscard]] Antwort frage(const Frage& frage) override;
    [[nodiscard]] std::optional<int> auswahl(const QString& titel, const QString& text,
                                             const QStringList& worte, int vorgabe) override;
    [[nodiscard]] QString wähleDatei(const QString& titel, const QString& ordner,
                                     const QString& filter) override;
    [[nodiscard]] QStringList wähleDateien(const QString& titel, const QString& ordner,
                                           const QString& filter) override;
    [[nodiscard]] QString wähleOrdner(const QString& titel, const QString& ordner) override;
    [[nodiscard]] QString wähleZieldatei(const QString& titel, const QString& vorschlag,
                                         const QString& filter) override;

private:
    [[nodiscard]] Antwort frageMitListe(const Frage& frage);

    Antwortworte worte_;
};

} // namespace tarvel
