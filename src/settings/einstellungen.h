#pragma once

#include <QString>

#include <span>

namespace tarvel {

class Profil;

/// One entry of the settings file Index.ini. Where two places read the same key with different
/// defaults, each place has a row of its own.
enum class Einstellung {
    Neu,
    Sprache,
    AutoNummer,
    Kurzzeichen,
    Betriebsart,
    ScannOptionen,
    ScannMessung,
    DefaultZoomOptionen,
    DefaultZoomHauptfenster,
    Kurvenform,
    ZweiteKurve,
    VierteRasse,
    Rasse,
    GewählteRasse,
    Arbeitsverzeichnis,
    Grafikprogramm,
    TextLinks,
    TextOben,
    Name,
    Straße,
    Ort,
    SchriftArt,
    SchriftGröße,
    SchriftFett,
    SchriftKursiv,
    Zeilenwechsel,
    GrafikLinks,
    GrafikOben,
    Ikone,
    Datei,
    ProtokollSchriftArt,
    ProtokollSchriftKursiv,
    Datum,
    Übersetzen,
    Beurteilung,
    Art,
    Seiten,
    OhneHaarlänge,
    WarnungCubitalindex,
    WarnungHantelindex,
    WarnungMerkmale,
    WarnungKönigin,
    FensterHG,
    FensterLeisten,
    FensterWerkzeugtexte,
    FensterLupeAmZeiger,
    Zielzahl,
    LetztesBild,
    SollFlügel,
    SollBienen,
    Anhang,
    GrafikHöhe,
    DruckerVorher,
    DruckerGesetzt,
    DatenDaneben,
    Sprachpaket,
    FensterKriterien,
    FensterKriterienhöhe,
    FensterErgebnisse,
    FensterErgebnisspalten,
    Tagessicherung,
    VorschlagJeFlügel,
    PunkteEinrasten,
};

/// Of the user's short sign, in characters.
inline constexpr int LängeKurzzeichen = 3;

/// How a key is stored: whole numbers are read as 16-bit integers, texts through a buffer of fixed
/// length, and some keys are only ever written.
enum class Einstellungsart { Zahl, Text, NurGeschrieben };

struct Einstellungszeile {
    Einstellung id;
    QStringView abschnitt;
    QStringView schlüssel;
    Einstellungsart art;
    int zahl;         ///< default of a number
    QStringView text; ///< default of a text
    int puffer;       ///< buffer length of a text: at most one character less is read
};

/// All keys of the settings file, in the order of the enumeration.
[[nodiscard]] std::span<const Einstellungszeile> einstellungstabelle();

/// Puts a value under the key of @p id, for several values that shall reach the file together. What
/// the reading would take off, quotes and blanks around a text, is kept by a pair of quotes.
void setze(Profil& profil, Einstellung id, const QString& wert);

/// Typed access to the settings file. Every read looks whether the file changed, every write goes
/// at once into it: there is no state here that could differ from the file.
class Einstellungen {
public:
    /// @p IniPfad full path of Index.ini; the file need not exist.
    explicit Einstellungen(QString IniPfad);

    [[nodiscard]] const QString& IniPfad() const { return IniPfad_; }

    /// Value of a number key, or its default when the key is missing. Text that is no number
    /// reads as 0; larger values are narrowed to 16 bits.
    [[nodiscard]] qint16 zahl(Einstellung id) const;
    [[nodiscard]] bool schalter(Einstellung id) const { return zahl(id) == 1; }

    /// Value of a text key. A missing or empty key gives @p bisher, what the field showed before.
    [[nodiscard]] QString text(Einstellung id, const QString& bisher) const;
    /// The same with the table's default as what was shown before.
    [[nodiscard]] QString text(Einstellung id) const;

    void schreibe(Einstellung id, const QString& wert);
    void schreibe(Einstellung id, int wert);

    /// True once a write did not reach the file. The program goes on with what it has; whoever
    /// asks can tell the user that the change will be gone at the next start.
    [[nodiscard]] bool schreibenMisslungen() const { return schreibenMisslungen_; }

private:
    QString IniPfad_;
    bool schreibenMisslungen_ = false;
};

} // namespace tarvel
