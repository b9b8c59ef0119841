#pragma once

#include "lang/meldungen.h"
#include "lang/sprachpaket.h"

#include <QObject>
#include <QString>

#include <array>
#include <optional>

namespace tarvel {

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

/// Language of the program; the values are the numbers in the settings file.
enum class Sprache { Deutsch = 0, Englisch = 1, Französisch = 2 };

inline constexpr int anzahlSprachen = 3;

/// Name of a language in that language.
[[nodiscard]] Meldung sprachname(Sprache sprache);

/// One of the program's texts. Each belongs to one place of use, so several may hold the same
/// words. Their number is fixed; what the
/// program needs beyond them is a Meldung.
enum class Text : int {
#define TARVEL_TEXT(id, de, en, fr) id,
#include "lang/texttabelle.inc"
#undef TARVEL_TEXT
};

#endif

inline constexpr int anzahlTexte = 258;

/// All texts that the program shows or prints, in the current language. They are German until a
/// loader has run.
class Texte : public QObject {
    Q_OBJECT

public:
    /// @p programmordner the folder of the program, which also holds the help file
    explicit Texte(QString programmordner, QObject* parent = nullptr);

    void SpracheDeutsch();
    void SpracheEnglisch();
    void SpracheFranzösisch();

    /// Runs the loader of a language number as the settings file holds it. Any number other than
    /// 0, 1 and 2 changes nothing and returns false.
    bool SpracheEinstellen(int nummer);

    /// Lays a language pack over the texts, of this language and of every one loaded afterwards;
    /// nullopt takes it away. What readers of files look for stays; see eintrag().
    void setzePaket(std::optional<Sprachpaket> paket);
    [[nodiscard]] const std::optional<Sprachpaket>& paket() const { return paket_; }

    /// Language that was loaded last; empty before the first.
    [[nodiscard]] std::optional<Sprache> sprache() const { return sprache_; }
    /// Full path of the help file; empty before a language is loaded.
    [[nodiscard]] const QString& HilfeDatei() const { return HilfeDatei_; }

    [[nodiscard]] const QString& operator()(Text id) const;
    /// The message as it stands in the table: its arguments %1, %2, … are not yet filled in.
    [[nodiscard]] const QString& operator()(Meldung id) const;

    /// A text in a given language, for readers of files that may be in any of the three.
    [[nodiscard]] static QString eintrag(Text id, Sprache sprache);
    [[nodiscard]] static QString eintrag(Meldung id, Sprache sprache);

Q_SIGNALS:
    /// All texts, the help file and sprache() are those of the new language.
    void languageChanged();

private:
    void kopiereSpalte(Sprache sprache);
    void lade(Sprache sprache);

    QString programmordner_;
    QString HilfeDatei_;
    std::optional<Sprache> sprache_;
    std::optional<Sprachpaket> paket_;
    std::array<QString, anzahlTexte> texte_;
    std::array<QString, anzahlMeldungen> meldungen_;
};

} // namespace tarvel
