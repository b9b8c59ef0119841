#include "print/serienquelle.h"

#include <utility>
#include <variant>

namespace tarvel {

namespace {

Protokolltexte protokolltexte(const Einstellungen& einstellungen, const Texte& texte) {
    Protokolltexte worte = ProtokolltexteStandard(texte);
    if (!einstellungen.schalter(Einstellung::Übersetzen)) {
        return worte;
    }
    ÜbersetzungLaden(einstellungen.IniPfad(), worte.felder);
    return ProtokolltexteÜbersetzt(worte.felder);
}

std::optional<Bilddatei> öffneScan(const QString& pfad) {
    auto offen = Bilddatei::öffne(pfad);
    auto* datei = std::get_if<Bilddatei>(&offen);
    return datei != nullptr && datei->pixel(nullptr) != nullptr ? std::optional(std::move(*datei))
                                                                : std::nullopt;
}

} // namespace

Serienquelle::Serienquelle(const Einstellungen& einstellungen, const Texte& texte,
                           const Zahlenformat& format, const QDate& heute,
                           const QString& DatenbankPfad)
    : einstellungen_(einstellungen)
    , texte_(texte)
    , format_(format)
    , heute_(heute)
    , aussehen_(ladeProtokolleinstellungen(einstellungen))
    , worte_(protokolltexte(einstellungen, texte))
    , grafik_(aussehen_.briefkopf)
    , suche_([](const QString& pfad) { return Bilddatei::liesGröße(pfad).value_or(QSize()); }) {
    suche_.setzeErgebnisdatei(DatenbankPfad);
    suche_.vertraue(DatenbankPfad);
}

GeleseneUntersuchung Serienquelle::lies(const Ergebnissatz& satz) const {
    return untersuchungAus(satz, {.texte = texte_,
                                  .format = format_,
                                  .rassen = aussehen_.rassen,
                                  .OhneHaarlänge = aussehen_.regeln.OhneHaarlänge});
}

Protokolldaten Serienquelle::protokoll(const GeleseneUntersuchung& gelesen, bool mitAnhang) {
    Untersuchung untersuchung;
    untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                      gelesen.zusatz);
    Protokolleinstellungen aussehen = aussehen_;
    aussehen.Anhang = aussehen_.Anhang && mitAnhang;
    Flügelbilder bilder({.suche = suche_, .öffne = öffneScan}, untersuchung.reihe());
    return protokolldaten(
        {.untersuchung = untersuchung,
         .standard = ladeRassestandard(untersuchung.angaben().Rasse + 1, einstellungen_),
         .einstellungen = aussehen,
         .texte = texte_,
         .protokolltexte = worte_,
         .format = format_,
         .heute = heute_,
         .bild = [&bilder](const Flügelmessung& flügel, const QRect& ausschnitt) {
             return bilder.hole(flügel, ausschnitt);
         }});
}

} // namespace tarvel
