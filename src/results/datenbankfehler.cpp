#include "results/datenbankfehler.h"

#include "lang/texte.h"

#include <QDir>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// For logs and test output; people read meldungstext.
std::string technisch(Datenbankgrund grund, const QString& datei, const QString& einzelheit) {
    return u"%1: reason %2 %3"_s.arg(datei, QString::number(static_cast<int>(grund)), einzelheit)
        .toStdString();
}

} // namespace

QString spaltenname(const Texte& texte, const QString& spalte) {
    struct Überschrift {
        QStringView name;
        Text text;
    };
    static constexpr Überschrift namen[] = {
        {u"U_NR", Text::UntersuchungNr}, {u"ZB_NR", Text::SpalteKönigin},
        {u"Z_NAME", Text::Züchter},      {u"A_D", Text::SpalteGeschlecht},
        {u"RASSE", Text::Rasse},         {u"B_NAME", Text::Besitzer},
        {u"DATUM", Text::SpalteDatum},   {u"ERGEBNIS", Text::SpalteEntspricht},
        {u"VATER", Text::Begattung},     {u"VOLK", Text::Volk},
    };
    for (const auto& [name, text] : namen) {
        if (name == spalte) {
            return texte(text);
        }
    }
    struct Inhalt {
        QStringView name;
        Meldung text;
    };
    static constexpr Inhalt inhalte[] = {
        {u"CI", Meldung::InhaltCI},
        {u"HI_DV", Meldung::InhaltHIDV},
        {u"MERKMAL", Meldung::InhaltMerkmale},
        {u"PROZENT", Meldung::InhaltMerkmale},
        {u"Grafik1", Meldung::InhaltDiagrammwerte},
        {u"Grafik2", Meldung::InhaltDiagrammwerte},
        {u"Grafik3", Meldung::InhaltPunkte},
        {u"Grafik4", Meldung::InhaltWeiteres},
    };
    for (const auto& [name, text] : inhalte) {
        if (name == spalte) {
            return texte(text);
        }
    }
    return spalte;
}

QString spaltennamen(const Texte& texte, const QStringList& spalten) {
    QStringList namen;
    for (const QString& spalte : spalten) {
        namen << spaltenname(texte, spalte);
    }
    namen.removeDuplicates();
    return namen.join(u", "_s);
}

Datenbankfehler::Datenbankfehler(Datenbankgrund grund, QString datei, QString einzelheit)
    : std::runtime_error(technisch(grund, datei, einzelheit))
    , grund_(grund)
    , datei_(std::move(datei))
    , einzelheit_(std::move(einzelheit)) {}

Datenbankfehler Datenbankfehler::zuLang(QString datei, QString spalte, int länge, int breite) {
    Datenbankfehler fehler(Datenbankgrund::TextZuLang, std::move(datei), std::move(spalte));
    fehler.länge_ = länge;
    fehler.breite_ = breite;
    return fehler;
}

QString meldungstext(const Texte& texte, const Datenbankfehler& fehler) {
    // Arguments are filled in together: a file name may hold a "%1" of its own.
    const QString datei = QDir::toNativeSeparators(fehler.datei());
    const auto mitDatei = [&](Meldung id) { return texte(id).arg(datei); };
    switch (fehler.grund()) {
    case Datenbankgrund::Keine:
        return mitDatei(Meldung::DatenbankKeine);
    case Datenbankgrund::Früher:
        return mitDatei(Meldung::JetDatei);
    case Datenbankgrund::OhneTabelle:
        return mitDatei(Meldung::DatenbankOhneTabelle);
    case Datenbankgrund::SpalteFehlt:
        return texte(Meldung::DatenbankSpalteFehlt).arg(datei, fehler.einzelheit());
    case Datenbankgrund::Beschädigt:
        return mitDatei(Meldung::DatenbankBeschädigt);
    case Datenbankgrund::Verschwunden:
        return mitDatei(Meldung::DatenbankVerschwunden);
    case Datenbankgrund::Gesperrt:
        return mitDatei(Meldung::DatenbankGesperrt);
    case Datenbankgrund::Schreibgeschützt:
        return mitDatei(Meldung::DatenbankSchreibgeschützt);
    case Datenbankgrund::Voll:
        return mitDatei(Meldung::DatenbankVoll);
    case Datenbankgrund::NichtAnlegbar:
        return mitDatei(Meldung::DatenbankNichtAnlegbar);
    case Datenbankgrund::SchonVorhanden:
        return texte(Text::DieDatenbank) + u" '"_s + datei + u"' "_s +
               texte(Text::IstBereitsVorhanden);
    case Datenbankgrund::GleicheDatei:
        return texte(Meldung::SicherungGleicheDatei);
    case Datenbankgrund::TextZuLang:
        return texte(Meldung::FeldZuLang)
            .arg(spaltenname(texte, fehler.einzelheit()), QString::number(fehler.breite()),
                 QString::number(fehler.länge()));
    case Datenbankgrund::NummerDoppelt:
        return texte(Meldung::NummerDoppelt).arg(fehler.einzelheit());
    case Datenbankgrund::UntersuchungFehlt:
        return texte(Meldung::UntersuchungFehlt).arg(fehler.einzelheit(), datei);
    case Datenbankgrund::NichtGewählt:
        return texte(Meldung::DatenbankNichtGewählt);
    case Datenbankgrund::FremdesJournal:
        return texte(Meldung::DatenbankFremdesJournal)
            .arg(datei, QDir::toNativeSeparators(fehler.einzelheit()));
    case Datenbankgrund::OhneSperren:
        return mitDatei(Meldung::DatenbankOhneSperren);
    case Datenbankgrund::ZuGroßZumSichern:
        return mitDatei(Meldung::TagessicherungZuGroß);
    case Datenbankgrund::QuelleDieselbe:
        return mitDatei(Meldung::QuelleDieselbe);
    case Datenbankgrund::QuelleUnterbrochen:
        return mitDatei(Meldung::QuelleUnterbrochen);
    case Datenbankgrund::KorbEintragFehlt:
        return mitDatei(Meldung::KorbEintragFehlt);
    case Datenbankgrund::SeitherGeändert:
        return texte(Meldung::SeitherGeändert).arg(fehler.einzelheit());
    case Datenbankgrund::Laufwerk:
        return texte(Meldung::DatenbankLaufwerk).arg(datei, fehler.einzelheit());
    case Datenbankgrund::Sonstiges:
        break;
    }
    return texte(Meldung::DatenbankSonstiges).arg(datei, fehler.einzelheit());
}

} // namespace tarvel
