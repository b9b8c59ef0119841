#include "print/protokollseite.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using namespace satzspiegel;
using Grad = Protokollgrad;

// Millimetres.
constexpr double Anhangbeginn = 15;
constexpr std::size_t FlügelJeZeile = 4;
constexpr std::size_t BienenJeZeile = 5;
constexpr int Erklärungszeilen = 3;
constexpr double Bildhöhe = 17;

/// What stands side by side on a line of its own.
struct Streifen {
    enum class Art { Kopf, Kriterium, Kriterienerklärung, Flügel, FlügelOhnePunkte, Bienen };
    Art art = Art::Kopf;
    std::size_t erster = 0;
    QString kopf = {};

    [[nodiscard]] double höhe() const {
        switch (art) {
        case Art::Flügel:
            return Bildhöhe + 2 * Protokollsatz::zeilenhöhe(Grad::Klein) + 3 * Zellenluft;
        case Art::FlügelOhnePunkte:
            return 2 * Protokollsatz::zeilenhöhe(Grad::Klein) + 3 * Zellenluft;
        case Art::Kriterium:
            return Protokollsatz::zeilenhöhe(Grad::Klein) + Zellenluft;
        case Art::Kriterienerklärung:
            return Erklärungszeilen * Protokollsatz::zeilenhöhe(Grad::Klein) + 2 * Zellenluft;
        case Art::Bienen:
            return Protokollsatz::zeilenhöhe(Grad::Text);
        case Art::Kopf:
            break;
        }
        return Protokollsatz::zeilenhöhe(Grad::Abschnitt) + 4 * Zellenluft;
    }
};

/// Reports of one page have no room for the criteria there.
bool mitKriterien(const Protokolldaten& d) {
    return d.einstellungen.Anhang && seitenzahl(d.einstellungen.art) == 1 && !d.kriterien.empty();
}

std::vector<Streifen> streifen(const Protokolldaten& d) {
    using Art = Streifen::Art;
    std::vector<Streifen> alle;
    const auto kopf = [&alle](const QString& text, bool mit) {
        if (mit) {
            alle.push_back({Art::Kopf, 0, text});
        }
    };
    if (mitKriterien(d)) {
        kopf(d.kriterienüberschrift, true);
        for (std::size_t i = 0; i < d.kriterien.size(); ++i) {
            alle.push_back({Art::Kriterium, i});
        }
        alle.push_back({Art::Kriterienerklärung, 0});
    }
    const std::vector<Anhangflügel>& flügel = d.anhang.flügel;
    kopf(d.anhangworte.flügel, !flügel.empty());
    for (std::size_t i = 0; i < flügel.size(); i += FlügelJeZeile) {
        const std::size_t ende = std::min(flügel.size(), i + FlügelJeZeile);
        const bool punkte = std::any_of(&flügel[i], flügel.data() + ende,
                                        [](const Anhangflügel& f) { return !f.punkte.empty(); });
        alle.push_back({punkte ? Art::Flügel : Art::FlügelOhnePunkte, i});
    }
    const auto bienen = static_cast<std::size_t>(d.anhang.bienen.size());
    kopf(d.anhangworte.bienen, bienen > 0);
    for (std::size_t i = 0; i < bienen; i += BienenJeZeile) {
        alle.push_back({Art::Bienen, i});
    }
    return alle;
}

double kopfhöhe() {
    return Protokollsatz::zeilenhöhe(Grad::Titel) + 2 * Protokollsatz::zeilenhöhe(Grad::Klein) +
           2 * Zellenluft;
}

double fußhöhe() {
    return 2 * Protokollsatz::zeilenhöhe(Grad::Klein) + 2 * Zellenluft;
}

/// The strips of each page. A heading stays with what follows it.
std::vector<std::vector<Streifen>> seiten(const Protokolldaten& d) {
    const double platz = Unten - fußhöhe() - Anhangbeginn - kopfhöhe();
    std::vector<std::vector<Streifen>> blätter;
    double frei = 0;
    const std::vector<Streifen> alle = streifen(d);
    for (std::size_t i = 0; i < alle.size(); ++i) {
        const bool istKopf = alle[i].art == Streifen::Art::Kopf;
        const double nötig = alle[i].höhe() + (istKopf ? alle[i + 1].höhe() : 0);
        if (nötig > frei) {
            blätter.emplace_back();
            frei = platz;
        }
        blätter.back().push_back(alle[i]);
        frei -= alle[i].höhe();
    }
    return blätter;
}

class Anhangsetzer {
public:
    explicit Anhangsetzer(const Protokolldaten& daten)
        : d_(daten)
        , satz_(daten.einstellungen.SchriftArt, daten.einstellungen.SchriftKursiv) {}

    /// Which examination it is, so that the page stands alone.
    void kopf() {
        schreibe({Links, y_}, d_.titel, Grad::Titel, Breite);
        y_ += Protokollsatz::zeilenhöhe(Grad::Titel);
        QStringList wer;
        for (const auto& werte : {d_.volk, d_.königin}) {
            for (const Protokollwert& w : werte) {
                if (!w.wert.isEmpty()) {
                    wer << w.name + u": "_s + w.wert;
                }
            }
        }
        wer << d_.untersucht;
        y_ += absatz(wer.join(u"  ·  "_s), 2);
        y_ = Anhangbeginn + kopfhöhe();
    }

    void setze(const Streifen& s) {
        switch (s.art) {
        case Streifen::Art::Kopf:
            schreibe({Links, y_ + 2 * Zellenluft}, s.kopf, Grad::Abschnitt, Breite);
            break;
        case Streifen::Art::Kriterium:
            kriterium(d_.kriterien[s.erster], s.höhe());
            break;
        case Streifen::Art::Kriterienerklärung:
            absatz(d_.kriterienerklärung, Erklärungszeilen);
            break;
        case Streifen::Art::Flügel:
        case Streifen::Art::FlügelOhnePunkte:
            flügel(s);
            break;
        case Streifen::Art::Bienen:
            bienen(s.erster);
            break;
        }
        y_ += s.höhe();
    }

    void fuß(const QString& seitenzahl, bool mitFlügeln) {
        y_ = Unten - fußhöhe();
        seite_.linien.push_back({{Links, y_, Rechts, y_}, 0.12});
        y_ += Zellenluft;
        const double länge = satz_.breite(seitenzahl, Grad::Klein, false);
        schreibe({Rechts - länge, y_}, seitenzahl, Grad::Klein, länge + Zellenluft);
        if (mitFlügeln) {
            absatz(d_.anhangworte.erklärung, 2, Breite - länge - 4);
        }
    }

    [[nodiscard]] Protokollseite seite() && { return std::move(seite_); }

private:
    void schreibe(QPointF ort, const QString& text, Grad grad, double breite, bool fett = false) {
        const QString passend = satz_.umbrochen(text, grad, fett, breite, 1).constFirst();
        seite_.texte.push_back({QRectF(ort, QSizeF(satz_.breite(passend, grad, fett),
                                                   Protokollsatz::zeilenhöhe(grad))),
                                passend, grad, fett});
    }

    double absatz(const QString& text, int höchstens, double breite = Breite) {
        double y = y_;
        for (const QString& z : satz_.umbrochen(text, Grad::Klein, false, breite, höchstens)) {
            schreibe({Links, y}, z, Grad::Klein, breite + Zellenluft);
            y += Protokollsatz::zeilenhöhe(Grad::Klein);
        }
        return y - y_;
    }

    void kriterium(const Kriterienzeile& kriterium, double höhe) {
        double x = Links;
        for (std::size_t i = 0; i < kriterium.spalten.size(); ++i) {
            schreibe({x, y_}, kriterium.spalten[i], Grad::Klein, Kriterienspalten[i] - Zellenluft,
                     kriterium.fett && i == 1);
            x += Kriterienspalten[i];
        }
        seite_.linien.push_back(
            {{Links, y_ + höhe - Zellenluft / 2, x, y_ + höhe - Zellenluft / 2}, 0.12});
    }

    void flügel(const Streifen& streifen) {
        constexpr double Zelle = 42.5;
        const std::size_t ende = std::min(d_.anhang.flügel.size(), streifen.erster + FlügelJeZeile);
        double x = Links;
        for (std::size_t i = streifen.erster; i < ende; ++i) {
            const Anhangflügel& f = d_.anhang.flügel[i];
            const double innen = Zelle - 2 * Zellenluft;
            QPointF ort(x + Zellenluft, y_ + Zellenluft);
            schreibe(ort, f.kopf, Grad::Klein, innen);
            ort.ry() += Protokollsatz::zeilenhöhe(Grad::Klein);
            if (!f.werte.isEmpty()) {
                schreibe(ort, f.werte, Grad::Klein, innen);
            }
            ort.ry() += Protokollsatz::zeilenhöhe(Grad::Klein);
            const bool mitBild = streifen.art == Streifen::Art::Flügel;
            seite_.flügel.push_back({i, QRectF(x, y_, Zelle, streifen.höhe()),
                                     mitBild ? QRectF(ort, QSizeF(innen, Bildhöhe)) : QRectF()});
            x += Zelle;
        }
    }

    void bienen(std::size_t erste) {
        const double spalte = Breite / BienenJeZeile;
        const auto ende =
            std::min(d_.anhang.bienen.size(), static_cast<qsizetype>(erste + BienenJeZeile));
        double x = Links;
        for (auto i = static_cast<qsizetype>(erste); i < ende; ++i) {
            schreibe({x, y_}, d_.anhang.bienen[i].simplified(), Grad::Text, spalte - Zellenluft);
            x += spalte;
        }
    }

    const Protokolldaten& d_;
    Protokollsatz satz_;
    Protokollseite seite_;
    double y_ = Anhangbeginn;
};

} // namespace

int anhangseiten(const Protokolldaten& daten) {
    return static_cast<int>(seiten(daten).size());
}

Protokollseite anhangseite(const Protokolldaten& daten, int nummer) {
    const auto blätter = seiten(daten);
    const auto& blatt = blätter.at(static_cast<std::size_t>(nummer - 1));
    Anhangsetzer setzer(daten);
    setzer.kopf();
    for (const Streifen& s : blatt) {
        setzer.setze(s);
    }
    setzer.fuß(daten.anhangworte.seite.arg(nummer).arg(blätter.size()),
               std::any_of(blatt.begin(), blatt.end(), [](const Streifen& s) {
                   return s.art == Streifen::Art::Flügel ||
                          s.art == Streifen::Art::FlügelOhnePunkte;
               }));
    return std::move(setzer).seite();
}

} // namespace tarvel
