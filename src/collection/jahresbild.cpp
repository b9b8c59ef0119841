#include "collection/jahresbild.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using Blatt = Übersichtsblatt;

constexpr double Zeilenhöhe = 20;

std::vector<int> gezeigteJahre(const Jahresbild& bild) {
    std::vector<int> jahre;
    for (const auto& [jahr, stand] : bild.verlauf.jahre) {
        jahre.push_back(jahr);
    }
    if (std::ssize(jahre) > HöchsteJahre) {
        jahre.erase(jahre.begin(), jahre.end() - HöchsteJahre);
    }
    return jahre;
}

std::vector<int> auflösungen(const Jahresbild& bild) {
    std::vector<int> dpi;
    for (const Jahresreihe& r : bild.verlauf.reihen) {
        if (r.größe == Größe::DV) {
            dpi.push_back(r.dpi);
        }
    }
    return dpi;
}

QStringList hinweise(const Jahresbild& bild, const Texte& t) {
    QStringList liste;
    const Jahresverlauf& v = bild.verlauf;
    if (bild.rassen.size() > 1 || v.jahre.empty()) {
        if (v.ohneDatum > 0) {
            liste << t(Meldung::ÜbersichtOhneDatum).arg(v.ohneDatum);
        }
        return liste;
    }
    if (auflösungen(bild).size() > 1 || v.ohneDpi > 0) {
        liste << t(Meldung::ÜbersichtDpiGetrennt).arg(v.ohneDpi);
    }
    if (std::ssize(v.jahre) > HöchsteJahre) {
        liste << t(Meldung::ÜbersichtLetzteJahre).arg(HöchsteJahre).arg(v.jahre.size());
    }
    if (v.ohneDatum > 0) {
        liste << t(Meldung::ÜbersichtOhneDatum).arg(v.ohneDatum);
    }
    if (v.mehrmals > 0) {
        liste << t(Meldung::ÜbersichtMehrmals).arg(v.mehrmals);
    }
    if (bild.wenige > 0) {
        liste << t(Meldung::ÜbersichtWenigeFlügel).arg(bild.wenige);
    }
    return liste << t(Meldung::ÜbersichtJahreErklärung) << t(Meldung::ÜbersichtKonformErklärung);
}

class Jahreszeichner : Blattmaler {
public:
    Jahreszeichner(QPainter& painter, const Blatt& blatt, const Jahresbild& bild,
                   const Übersichtsworte& worte, const Diagrammstil& stil)
        : Blattmaler(painter, blatt, worte, stil)
        , bild_(bild)
        , jahre_(gezeigteJahre(bild))
        , dpi_(auflösungen(bild)) {}

    void zeichne() {
        blatt_.male(z_);
        const Texte& t = worte_.texte;
        if (jahre_.empty()) {
            sage(t(Meldung::ÜbersichtLeer));
            return;
        }
        if (bild_.rassen.size() > 1) {
            sage(t(Meldung::ÜbersichtMehrereRassen).arg(bild_.rassen.join(u", "_s)));
            return;
        }
        std::vector<Zeichenerklärung::Eintrag> einträge;
        for (std::size_t i = 0; dpi_.size() > 1 && i < dpi_.size(); ++i) {
            einträge.push_back({std::min(static_cast<int>(i), Zeichenzahl - 1),
                                kurzname(Größe::DV, t) + u' ' + dpitext(dpi_[i], t)});
        }
        if (bild_.grenzen) {
            einträge.push_back({Zeichenerklärung::Grenzlinie, t(Meldung::Grenzlinie)});
        }
        const QRectF& m = blatt_.mitte;
        const Zeichenerklärung erklärung(std::move(einträge), stil_, m.top(), Blatt::Rand,
                                         m.right() - Blatt::Rand);
        erklärung.male(z_);
        const double unten = m.bottom() - 3 * Zeilenhöhe - 4;
        const double oben = erklärung.unten() + 4;
        constexpr double Abstand = 14;
        const double höhe = (unten - oben - 2 * Abstand) / 3;
        for (std::size_t i = 0; i < Größen.size(); ++i) {
            const double y = oben + static_cast<double>(i) * (höhe + Abstand);
            feld(Größen.at(i),
                 QRectF(QPointF(Links, y), QPointF(m.right() - Blatt::Rand, y + höhe)));
        }
        jahreszeilen(unten);
    }

private:
    static constexpr double Links = 130; ///< room for the words of the rows below

    [[nodiscard]] double x(int jahr) const {
        const auto ort = std::find(jahre_.begin(), jahre_.end(), jahr);
        const double breite = blatt_.mitte.right() - Blatt::Rand - Links;
        return Links + breite * (static_cast<double>(ort - jahre_.begin()) + 0.5) /
                           static_cast<double>(jahre_.size());
    }
    [[nodiscard]] bool gezeigt(int jahr) const {
        return std::find(jahre_.begin(), jahre_.end(), jahr) != jahre_.end();
    }

    void feld(Größe g, const QRectF& fläche) {
        std::vector<const Jahresreihe*> reihen;
        double von = std::numeric_limits<double>::max();
        double bis = std::numeric_limits<double>::lowest();
        for (const Jahresreihe& r : bild_.verlauf.reihen) {
            if (r.größe != g) {
                continue;
            }
            reihen.push_back(&r);
            for (const Jahresmittel& j : r.jahre) {
                if (gezeigt(j.jahr)) {
                    // An interval of two colonies can be wider than anything; it is cut then.
                    const double s = 3 * j.kennzahlen.standardabweichung.value_or(0);
                    const double m = j.kennzahlen.mittelwert;
                    von = std::min({von, j.kennzahlen.minimum,
                                    j.bereich ? std::max(j.bereich->von, m - s) : m});
                    bis = std::max({bis, j.kennzahlen.maximum,
                                    j.bereich ? std::min(j.bereich->bis, m + s) : m});
                }
            }
        }
        if (bild_.grenzen && !reihen.empty()) {
            von = std::min(von, (*bild_.grenzen)[g]);
            bis = std::max(bis, (*bild_.grenzen)[g]);
        }
        Wertefeld f{fläche, {}, {}};
        f.x = {0, 1, fläche.left(), fläche.right()};
        z_.rahmen(fläche, stil_.blass, 1);
        z_.textHochkant({24, fläche.center().y()},
                        gekürzt(kurzname(g, worte_.texte), normal_, fläche.height()), normal_,
                        stil_.schrift);
        if (reihen.empty() || von > bis) {
            z_.text(fläche.center(), Qt::AlignHCenter, u"–"_s, normal_, stil_.blass);
            return;
        }
        f.y = luftigeAchse(von, bis, fläche.bottom(), fläche.top());
        maleSenkrechteTeilung(z_, f, worte_.format, g == Größe::DV,
                              std::max(2, static_cast<int>(fläche.height() / 22)));
        if (bild_.grenzen) {
            const double y = f.y.ort((*bild_.grenzen)[g]);
            z_.linie({fläche.left(), y}, {fläche.right(), y}, stil_.rasse, 1.6, Qt::DashLine);
        }
        for (std::size_t i = 0; i < reihen.size(); ++i) {
            reihe(f, *reihen[i], i, reihen.size());
        }
    }

    /// Series of several resolutions stand beside each other in a year.
    void reihe(const Wertefeld& f, const Jahresreihe& r, std::size_t nummer, std::size_t reihen) {
        const double schritt =
            std::min(12.0, f.fläche.width() / static_cast<double>(jahre_.size() * (reihen + 1)));
        const double seite =
            (static_cast<double>(nummer) - (static_cast<double>(reihen) - 1) / 2) * schritt;
        std::optional<QPointF> voriger;
        int vorjahr = 0;
        for (const Jahresmittel& j : r.jahre) {
            if (!gezeigt(j.jahr)) {
                continue;
            }
            const double x = this->x(j.jahr) + seite;
            const QPointF ort(x, f.y.ort(j.kennzahlen.mittelwert));
            // A line joins years that follow each other; a gap stays one.
            if (voriger && j.jahr == vorjahr + 1) {
                z_.linie(*voriger, ort, stil_.fläche, 1.4);
            }
            voriger = ort;
            vorjahr = j.jahr;
        }
        for (const Jahresmittel& j : r.jahre) {
            if (!gezeigt(j.jahr)) {
                continue;
            }
            const QPointF ort(this->x(j.jahr) + seite, f.y.ort(j.kennzahlen.mittelwert));
            if (j.bereich) {
                const auto y = [&](double wert) {
                    return std::clamp(f.y.ort(wert), f.fläche.top(), f.fläche.bottom());
                };
                const double oben = y(j.bereich->bis);
                const double unten = y(j.bereich->von);
                z_.linie({ort.x(), unten}, {ort.x(), oben}, stil_.probe, 1.8);
                // Without its stroke an end lies beyond the field.
                if (oben > f.fläche.top()) {
                    z_.linie({ort.x() - 4, oben}, {ort.x() + 4, oben}, stil_.probe, 1.8);
                }
                if (unten < f.fläche.bottom()) {
                    z_.linie({ort.x() - 4, unten}, {ort.x() + 4, unten}, stil_.probe, 1.8);
                }
            }
            const bool mehrere = r.größe == Größe::DV && reihen > 1;
            maleZeichen(z_, ort, mehrere ? std::min(static_cast<int>(nummer), Zeichenzahl - 1) : 0,
                        stil_.probe, 4.5, j.bereich.has_value());
        }
    }

    /// Below the fields: the year, its colonies, how many of them conform.
    void jahreszeilen(double oben) {
        const Texte& t = worte_.texte;
        const double breite =
            (blatt_.mitte.right() - Blatt::Rand - Links) / static_cast<double>(jahre_.size());
        const std::array<QString, 3> namen{t(Meldung::ÜbersichtSaison), t(Meldung::ÜbersichtVölker),
                                           t(Meldung::ÜbersichtKonform)};
        for (std::size_t i = 0; i < namen.size(); ++i) {
            const double y = oben + 6 + (static_cast<double>(i) + 0.5) * Zeilenhöhe;
            z_.text({Blatt::Rand, y}, Qt::AlignLeft,
                    gekürzt(namen.at(i), klein_, Links - Blatt::Rand - 24), klein_, stil_.schrift);
            for (const int jahr : jahre_) {
                const Jahresstand& stand = bild_.verlauf.jahre.at(jahr);
                const QString text = i == 0   ? QString::number(jahr)
                                     : i == 1 ? QString::number(stand.kolonien)
                                     : stand.beurteilt == 0
                                         ? u"–"_s
                                         : u"%1/%2"_s.arg(stand.konform).arg(stand.beurteilt);
                const QFont schrift = verkleinert(klein_, text, breite - 3);
                z_.text({x(jahr), y}, Qt::AlignHCenter, text, schrift, stil_.schrift);
            }
        }
    }

    const Jahresbild& bild_;
    std::vector<int> jahre_;
    std::vector<int> dpi_;
};

} // namespace

Jahresbild jahresbild(const Kolonieauswahl& auswahl, const QString& name,
                      const Kolonieregeln& regeln) {
    return {name, rassenVon(auswahl), jahresverlauf(auswahl), gemeinsameGrenzen(auswahl, regeln),
            mitWenigenFlügeln(auswahl)};
}

void maleJahre(QPainter& painter, const QRectF& rahmen, const Jahresbild& bild,
               const Übersichtsworte& worte, const Diagrammstil& stil) {
    const Texte& t = worte.texte;
    const QString name = bild.name.isEmpty() ? t(Meldung::ÜbersichtGanzeAuswahl) : bild.name;
    const Blatt blatt(rahmen, stil, t(Meldung::ÜbersichtJahreTitel).arg(name), hinweise(bild, t));
    if (blatt.maß.faktor > 0) {
        Jahreszeichner(painter, blatt, bild, worte, stil).zeichne();
    }
}

} // namespace tarvel
