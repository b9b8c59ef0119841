#include "app/protokollserie.h"

#include "lang/protokolltexte.h"
#include "print/protokolldaten.h"
#include "print/protokolldruck.h"
#include "print/serie.h"
#include "results/untersuchungssatz.h"

#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Protokolltexte protokolltexte(const Umgebung& umgebung) {
    Protokolltexte worte = ProtokolltexteStandard(umgebung.texte);
    if (umgebung.einstellungen.schalter(Einstellung::Übersetzen)) {
        ÜbersetzungLaden(umgebung.einstellungen.IniPfad(), worte.felder);
    }
    return worte;
}

class Serie final : public Protokollserie {
public:
    explicit Serie(const Umgebung& umgebung)
        : umgebung_(umgebung)
        , aussehen_(ladeProtokolleinstellungen(umgebung.einstellungen))
        , worte_(protokolltexte(umgebung))
        , grafik_(aussehen_.briefkopf) {}

    QString nimm(const Ergebnissatz& satz) override {
        const Texte& t = umgebung_.texte;
        const GeleseneUntersuchung gelesen =
            untersuchungAus(satz, {.texte = t,
                                   .format = umgebung_.format,
                                   .rassen = aussehen_.rassen,
                                   .OhneHaarlänge = aussehen_.regeln.OhneHaarlänge});
        if (!gelesen.nichtGelesen.isEmpty()) {
            // On paper it would look as if it were all there is.
            return t(Meldung::UntersuchungTeilweise)
                .arg(satz.U_NR.trimmed(), gelesen.nichtGelesen.join(u", "_s));
        }
        Untersuchung untersuchung;
        untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                          gelesen.zusatz);
        if (untersuchung.reihe().leer() && untersuchung.merkmale().leer()) {
            return t(Meldung::ProtokollOhneFlügel);
        }
        daten_.push_back(
            protokolldaten({.untersuchung = untersuchung,
                            .standard = ladeRassestandard(untersuchung.angaben().Rasse + 1,
                                                          umgebung_.einstellungen),
                            .einstellungen = aussehen_,
                            .texte = t,
                            .protokolltexte = worte_,
                            .format = umgebung_.format,
                            .heute = umgebung_.uhr.now().date()}));
        return {};
    }

    QByteArray einzeln() override {
        QByteArray pdf = protokollAlsPdf(daten_.back(), grafik_);
        daten_.clear(); // of a thousand reports one is enough in memory
        return pdf;
    }

    QByteArray alle() override { return serieAlsPdf(daten_, grafik_, umgebung_.texte); }

private:
    const Umgebung& umgebung_;
    Protokolleinstellungen aussehen_;
    Protokolltexte worte_;
    Briefkopfgrafik grafik_;
    std::vector<Protokolldaten> daten_;
};

} // namespace

std::unique_ptr<Protokollserie> neueProtokollserie(const Umgebung& umgebung) {
    return std::make_unique<Serie>(umgebung);
}

} // namespace tarvel
