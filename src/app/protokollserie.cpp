#include "app/protokollserie.h"

#include "print/protokolldruck.h"
#include "print/serie.h"
#include "print/serienquelle.h"
#include "results/datenbankfehler.h"

#include <vector>

namespace tarvel {

namespace {

class Serie final : public Protokollserie {
public:
    Serie(const Umgebung& umgebung, const QString& DatenbankPfad)
        : texte_(umgebung.texte)
        , quelle_(umgebung.einstellungen, umgebung.texte, umgebung.format,
                  umgebung.uhr.now().date(), DatenbankPfad) {}

    QString nimm(const Ergebnissatz& satz) override {
        const GeleseneUntersuchung gelesen = quelle_.lies(satz);
        if (!gelesen.nichtGelesen.isEmpty()) {
            // On paper it would look as if it were all there is.
            return texte_(Meldung::UntersuchungTeilweise)
                .arg(satz.U_NR.trimmed(), spaltennamen(texte_, gelesen.nichtGelesen));
        }
        if (gelesen.reihe.leer() && gelesen.merkmale.leer()) {
            return texte_(Meldung::ProtokollOhneFlügel);
        }
        zeilen_.push_back(serienzeile(quelle_.protokoll(gelesen, false)));
        sätze_.push_back(satz);
        return {};
    }

    QByteArray einzeln() override {
        QByteArray pdf = protokollAlsPdf(protokoll(sätze_.size() - 1), quelle_.grafik());
        zeilen_.clear();
        sätze_.clear();
        return pdf;
    }

    QByteArray alle() override {
        return serieAlsPdf(
            zeilen_, [this](std::size_t i) { return protokoll(i); }, quelle_.aussehen(),
            quelle_.grafik(), texte_);
    }

private:
    /// Made when its turn comes: the pictures of many appendices would fill the memory.
    [[nodiscard]] Protokolldaten protokoll(std::size_t i) {
        return quelle_.protokoll(quelle_.lies(sätze_.at(i)), true);
    }

    const Texte& texte_;
    Serienquelle quelle_;
    std::vector<Serienzeile> zeilen_;
    std::vector<Ergebnissatz> sätze_;
};

} // namespace

std::unique_ptr<Protokollserie> neueProtokollserie(const Umgebung& umgebung,
                                                   const QString& DatenbankPfad) {
    return std::make_unique<Serie>(umgebung, DatenbankPfad);
}

} // namespace tarvel
