#include "results/schritte.h"

#include "lang/meldungen.h"

#include <algorithm>
#include <array>
#include <variant>

namespace tarvel {

namespace {

struct Feld {
    QString Kolonieangaben::*wert;
    std::variant<Text, Meldung> name;
};

const std::array<Feld, 9>& felder() {
    static const std::array<Feld, 9> alle{{{&Kolonieangaben::Jahr, Meldung::FeldJahr},
                                           {&Kolonieangaben::KNr, Meldung::FeldKöniginnummer},
                                           {&Kolonieangaben::LV, Meldung::FeldRegion},
                                           {&Kolonieangaben::ZNr, Meldung::FeldZüchternummer},
                                           {&Kolonieangaben::UNr, Text::UntersuchungNr},
                                           {&Kolonieangaben::Volk, Text::Volk},
                                           {&Kolonieangaben::Name, Text::Züchter},
                                           {&Kolonieangaben::Besitzer, Text::Besitzer},
                                           {&Kolonieangaben::Begattung, Text::Begattung}}};
    return alle;
}

QString feldname(QString Kolonieangaben::*feld, const Texte& texte) {
    for (const Feld& f : felder()) {
        if (f.wert == feld) {
            return std::visit([&](auto name) { return texte(name); }, f.name);
        }
    }
    return {};
}

} // namespace

QString Kolonieangaben::*geändertesFeld(const Kolonieangaben& a, const Kolonieangaben& b) {
    const auto* const stelle = std::find_if(felder().begin(), felder().end(),
                                            [&](const Feld& f) { return a.*f.wert != b.*f.wert; });
    return stelle == felder().end() ? nullptr : stelle->wert;
}

int getippteSumme(const Merkmale& alt, const Merkmale& neu) {
    int stelle = 0;
    Merkmale probe = alt;
    for (std::size_t i = 0; i < probe.Summen.size(); ++i) {
        if (alt.Summen.at(i) != neu.Summen.at(i)) {
            stelle = stelle == 0 ? static_cast<int>(i) + 1 : -1;
            probe.Summen.at(i) = neu.Summen.at(i);
        }
    }
    return stelle > 0 && probe == neu ? stelle : 0;
}

QString schrittname(const Schritt& schritt, const Texte& t) {
    const auto flügel = [&](Meldung text) { return t(text).arg(dreistellig(schritt.nummer)); };
    const auto einOderMehr = [&](Meldung einer, Meldung mehrere) {
        return schritt.nummer == 0 ? t(mehrere) : flügel(einer);
    };
    switch (schritt.art) {
    case Schrittart::Punkt:
        return t(Meldung::SchrittPunkt).arg(schritt.nummer);
    case Schrittart::PunkteLöschen:
        return t(Meldung::SchrittPunkteLöschen);
    case Schrittart::Übernehmen:
        return flügel(Meldung::SchrittÜbernehmen);
    case Schrittart::FlügelLöschen:
        return einOderMehr(Meldung::SchrittFlügelLöschen, Meldung::SchrittMehrereLöschen);
    case Schrittart::AlleLöschen:
        return t(Text::MenüAlleMessungenLöschen);
    case Schrittart::Wiederholen:
        return flügel(Meldung::SchrittWiederholen);
    case Schrittart::WiederholungAufgeben:
        return flügel(Meldung::SchrittAufgeben);
    case Schrittart::Bild:
        return t(Text::MenüBildLaden);
    case Schrittart::Zoom:
        return t(Meldung::NameZoom);
    case Schrittart::Messart:
        return t(Text::Betriebsart);
    case Schrittart::Auflösung:
        return t(Text::AuflösungDesScanners);
    case Schrittart::Vorschlag:
        return t(Meldung::SchrittVorschlag);
    case Schrittart::Feld:
        return feldname(schritt.feld, t);
    case Schrittart::Rasse:
        return t(Text::Rasse);
    case Schrittart::Tiere:
        return t(Text::SpalteGeschlecht);
    case Schrittart::Merkmale:
        return t(Text::KörperMerkmale);
    case Schrittart::Auslassen:
        return einOderMehr(Meldung::SchrittAuslassen, Meldung::SchrittMehrereAuslassen);
    case Schrittart::Wiederaufnehmen:
        return einOderMehr(Meldung::SchrittWiederaufnehmen, Meldung::SchrittMehrereWiederaufnehmen);
    case Schrittart::Flügelauflösung:
        return t(Meldung::FlügelauflösungTitel);
    case Schrittart::Beurteilung:
        return t(Meldung::NeuBeurteilen);
    }
    return {};
}

} // namespace tarvel
