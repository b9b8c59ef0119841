#pragma once

#include "lang/texte.h"

#include <QByteArray>
#include <QString>

#include <array>

namespace tarvel {

/// A text of the printed report: the number its translation is stored under, and the entry it
/// comes from.
struct Protokollzeile {
    int nummer; ///< key "Item" and three digits in section "Translate" of the settings file
    Text text;
};

/// The report texts in their fixed order, which is also that of the translation editor's rows.
/// The numbers have gaps; translations in use are stored under them.
inline constexpr std::array<Protokollzeile, 36> protokolltabelle{{
    {505, Text::Cubitalindex},
    {5, Text::CI},
    {534, Text::Hantelindex},
    {626, Text::HI},
    {523, Text::KörperMerkmale},
    {526, Text::PanzerzeichenProtokoll},
    {528, Text::FilzbindenProtokoll},
    {527, Text::HaarlängeProtokoll},
    {529, Text::Haarfarbe},
    {514, Text::AngabenZurKönigin},
    {519, Text::Züchter},
    {518, Text::Zuchtbuch},
    {520, Text::Begattung},
    {521, Text::Rasse},
    {517, Text::BesitzerDesVolkes},
    {516, Text::Volk},
    {4, Text::Klasse},
    {3, Text::BienenJeKlasse},
    {23, Text::CubitalindexUndDiscoidalverschiebung},
    {532, Text::HantelindexUndDV},
    {535, Text::KorrelationHantelindexDiscoidalverschiebung},
    {533, Text::DV},
    {513, Text::MerkmalsuntersuchungNr},
    {16, Text::Mittelwert},
    {524, Text::ArbeiterinnenUntersucht},
    {525, Text::DrohnenUntersucht},
    {285, Text::NichtGemessen},
    {536, Text::NichtImVertrauensbereich},
    {530, Text::Seite1Von2},
    {531, Text::Seite2},
    {522, Text::Beurteilung},
    {546, Text::EntsprichtNichtDenMerkmalen},
    {550, Text::EntsprichtDenMerkmalen},
    {545, Text::Merkmalsformel},
    {512, Text::Unterschrift},
    {33, Text::Nebengipfel},
}};

/// Place of an entry among the report texts. An entry that is not among them does not compile.
class Protokollfeld {
public:
    // Implicit, so that a report text is asked for by its entry.
    consteval Protokollfeld(Text text)
        : index_(suche(text)) {}
    [[nodiscard]] constexpr std::size_t index() const { return index_; }

private:
    static consteval std::size_t suche(Text text) {
        std::size_t i = 0;
        while (protokolltabelle.at(i).text != text) {
            ++i;
        }
        return i;
    }
    std::size_t index_;
};

/// One text for each row of protokolltabelle, in its order.
using Protokollfelder = std::array<QString, protokolltabelle.size()>;

/// The texts that a report is printed with.
struct Protokolltexte {
    Protokollfelder felder;

    [[nodiscard]] const QString& operator()(Protokollfeld feld) const {
        return felder[feld.index()];
    }
};

/// Key of a report text in section "Translate", for example "Item005".
[[nodiscard]] QByteArray protokollschlüssel(int nummer);

/// The report texts in the current language.
[[nodiscard]] Protokolltexte ProtokolltexteStandard(const Texte& texte);

/// The report texts as the fields of the translation editor hold them.
[[nodiscard]] Protokolltexte ProtokolltexteÜbersetzt(const Protokollfelder& felder);

/// Reads the user's translation from the settings file @p IniPfad. A key that is missing or empty
/// leaves its field unchanged, so fields filled from ProtokolltexteStandard() keep the current
/// language where nothing was translated. At most 127 characters are read.
void ÜbersetzungLaden(const QString& IniPfad, Protokollfelder& felder);

} // namespace tarvel
