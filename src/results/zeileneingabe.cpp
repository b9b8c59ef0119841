#include "results/zeileneingabe.h"

#include <QLocale>
#include <QRegularExpression>

#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QLocale locale(const Texte& texte) {
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

/// The short form of the language with a year of @p jahr ("yy" or "yyyy").
QString datumsmuster(const Texte& texte, const QString& jahr) {
    static const QRegularExpression jahresstelle(u"y+"_s);
    return locale(texte).dateFormat(QLocale::ShortFormat).replace(jahresstelle, jahr);
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
    return locale(texte).toString(datum, datumsmuster(texte, u"yy"_s));
}

QString vollesDatum(const Texte& texte, const QDate& datum) {
    return locale(texte).toString(datum, datumsmuster(texte, u"yyyy"_s));
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
