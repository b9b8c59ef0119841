#include "results/zeileneingabe.h"

#include "results/ergebnistabelle.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The short form of the language with a year of @p jahr ("yy" or "yyyy").
QString datumsmuster(const Texte& texte, const QString& jahr) {
    static const QRegularExpression jahresstelle(u"y+"_s);
    return sprachraum(texte).dateFormat(QLocale::ShortFormat).replace(jahresstelle, jahr);
}

/// Leading zeros of day and month need not be typed.
QString ohneFührendeNullen(QString muster) {
    return muster.replace(u"dd"_s, u"d"_s).replace(u"MM"_s, u"M"_s);
}

std::vector<Text> worte(Ergebnisspalte spalte) {
    if (spalte == Ergebnisspalte::Geschlecht) {
        return {Text::Arbeiter, Text::Drohnen};
    }
    if (spalte == Ergebnisspalte::Entspricht) {
        return {Text::Ja, Text::Nein};
    }
    return {};
}

Zelleneingabe prüfeWort(const Texte& texte, Ergebnisspalte spalte, const QString& text) {
    for (const Text wort : worte(spalte)) {
        for (const Sprache sprache : {Sprache::Deutsch, Sprache::Englisch, Sprache::Französisch}) {
            const QString eintrag = Texte::eintrag(wort, sprache);
            if (eintrag.compare(text, Qt::CaseInsensitive) == 0) {
                return {.wert = eintrag, .einwand = {}};
            }
        }
    }
    return {.wert = {},
            .einwand = texte(Meldung::WertNichtInListe)
                           .arg(text, spaltentitel(texte, spalte),
                                spaltenworte(texte, spalte).join(u", "_s))};
}

Zelleneingabe prüfeDatum(const Texte& texte, const QString& text) {
    const QDate datum = datumAusText(texte, text);
    if (!datum.isValid()) {
        const QDate beispiel(2025, 6, 15);
        return {.wert = {},
                .einwand =
                    texte(Meldung::DatumNichtLesbar).arg(text, vollesDatum(texte, beispiel))};
    }
    return {.wert = datum.toString(Qt::ISODate), .einwand = {}};
}

} // namespace

QLocale sprachraum(const Texte& texte) {
    switch (texte.sprache().value_or(Sprache::Deutsch)) {
    case Sprache::Englisch:
        return {QLocale::English, QLocale::UnitedKingdom};
    case Sprache::Französisch:
        return {QLocale::French, QLocale::France};
    case Sprache::Deutsch:
        break;
    }
    return {QLocale::German, QLocale::Germany};
}

int spaltenbreite(Ergebnisspalte spalte) {
    const auto platz = static_cast<std::size_t>(spalte);
    const auto breiten = textspalten();
    const auto stelle = std::find_if(breiten.begin(), breiten.end(), [&](const Textspalte& s) {
        return platz < Ergebnistabelle::Spaltenzahl &&
               s.name == Ergebnistabelle::spalten().at(platz);
    });
    return stelle == breiten.end() ? std::numeric_limits<int>::max() : stelle->breite;
}

QString spaltentitel(const Texte& texte, Ergebnisspalte spalte) {
    switch (spalte) {
    case Ergebnisspalte::Nummer:
        return texte(Text::SpalteNummer);
    case Ergebnisspalte::Königin:
        return texte(Text::SpalteKönigin);
    case Ergebnisspalte::Züchter:
        return texte(Text::Züchter);
    case Ergebnisspalte::Besitzer:
        return texte(Text::SpalteBesitzer);
    case Ergebnisspalte::Geschlecht:
        return texte(Text::SpalteGeschlecht);
    case Ergebnisspalte::Entspricht:
        return texte(Text::SpalteEntspricht);
    case Ergebnisspalte::Rasse:
        return texte(Text::SpalteRasse);
    case Ergebnisspalte::Begattung:
        return texte(Text::Begattung);
    case Ergebnisspalte::Datum:
        return texte(Text::SpalteDatum);
    case Ergebnisspalte::Volk:
        return texte(Text::Volk);
    case Ergebnisspalte::Flügel:
        return texte(Meldung::SpalteFlügelzahl);
    case Ergebnisspalte::MittelCI:
        return texte(Meldung::SpalteMittel).arg(u"CI"_s);
    case Ergebnisspalte::MittelHI:
        return texte(Meldung::SpalteMittel).arg(u"HI"_s);
    case Ergebnisspalte::MittelDV:
        return texte(Meldung::SpalteMittel).arg(u"DV"_s);
    case Ergebnisspalte::Anteile:
        return texte(Meldung::SpalteAnteile);
    case Ergebnisspalte::Auflösung:
        return texte(Meldung::SpalteAuflösung);
    }
    return {};
}

QStringList spaltenworte(const Texte& texte, Ergebnisspalte spalte) {
    QStringList liste;
    for (const Text wort : worte(spalte)) {
        liste << texte(wort);
    }
    return liste;
}

QString kurzesDatum(const Texte& texte, const QDate& datum) {
    return sprachraum(texte).toString(datum, datumsmuster(texte, u"yy"_s));
}

QString vollesDatum(const Texte& texte, const QDate& datum) {
    return sprachraum(texte).toString(datum, datumsmuster(texte, u"yyyy"_s));
}

QDate datumAusText(const Texte& texte, const QString& text) {
    const QString knapp = text.trimmed();
    for (const QString& muster :
         {u"yyyy-M-d"_s, ohneFührendeNullen(datumsmuster(texte, u"yyyy"_s))}) {
        if (const QDate datum = QDate::fromString(knapp, muster); datum.isValid()) {
            return datum;
        }
    }
    const QDate kurz = QDate::fromString(knapp, ohneFührendeNullen(datumsmuster(texte, u"yy"_s)));
    constexpr int ErstesJahr = 1970; // the toolkit takes two digits for the twentieth century
    return kurz.isValid() && kurz.year() < ErstesJahr ? kurz.addYears(100) : kurz;
}

QStringList gesuchteDaten(const Texte& texte, const QString& wort) {
    if (const QDate datum = datumAusText(texte, wort); datum.isValid()) {
        return {datum.toString(Qt::ISODate)};
    }
    static const QRegularExpression monatUndJahr(u"^(\\d{1,2})[./](\\d{4})$"_s);
    if (const auto treffer = monatUndJahr.match(wort); treffer.hasMatch()) {
        return {treffer.captured(2) + u'-' + treffer.captured(1).rightJustified(2, u'0') + u'-'};
    }
    return {};
}

Zelleneingabe prüfeEingabe(const Texte& texte, Ergebnisspalte spalte, const QString& text) {
    switch (spalte) {
    case Ergebnisspalte::Nummer:
        return {.wert = text,
                .einwand = text.trimmed().isEmpty() ? texte(Text::UntersuchungNrFehlt) : QString()};
    case Ergebnisspalte::Geschlecht:
    case Ergebnisspalte::Entspricht:
        return prüfeWort(texte, spalte, text);
    case Ergebnisspalte::Datum:
        return prüfeDatum(texte, text);
    default:
        return {.wert = text, .einwand = {}};
    }
}

} // namespace tarvel
