#include "collection/kreuzbild.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr double Radius = 4.5;
constexpr std::size_t HöchsteHervorhebung = 30;
constexpr std::array Hochgrößen{Größe::CI, Größe::HI};

/// Beyond these a value is drawn at the edge.
Bereich äußerster(Größe g) {
    return g == Größe::CI ? Bereich{0, 8} : g == Größe::HI ? Bereich{0.3, 1.8} : Bereich{-15, 15};
}

double mittel(const Koloniewerte& k, Größe g) {
    return k[g].kennzahlen.mittelwert;
}
double streuung(const Koloniewerte& k, Größe g) {
    return k[g].kennzahlen.standardabweichung.value_or(0);
}
bool hat(const Koloniewerte& k, Größe g) {
    return k[g].kennzahlen.anzahl > 0;
}

struct Layout {
    Übersichtsblatt blatt;
    Zeichenerklärung erklärung;
    std::array<Wertefeld, 2> felder;
    std::vector<int> dpi; ///< the sign of a resolution is its place here
    bool mitBalken = false;

    [[nodiscard]] int zeichen(const Koloniewerte& k) const {
        const auto ort = std::find(dpi.begin(), dpi.end(), k.dpi);
        return std::min(static_cast<int>(ort - dpi.begin()), Zeichenzahl - 1);
    }
    /// Within the field, whatever the values are.
    [[nodiscard]] QPointF ort(const Koloniewerte& k, std::size_t feld) const {
        const Wertefeld& f = felder.at(feld);
        const auto auf = [](const Achse& a, double wert) {
            return a.ort(std::clamp(wert, a.wertAnfang, a.wertEnde));
        };
        return {auf(f.x, mittel(k, Größe::DV)), auf(f.y, mittel(k, Hochgrößen.at(feld)))};
    }
};

QStringList hinweise(const Kreuzbild& bild, std::size_t dpi, int ohne, const Texte& t) {
    QStringList liste{t(Meldung::ÜbersichtKreuzErklärung)};
    if (dpi > 1) {
        liste.prepend(t(Meldung::ÜbersichtMehrereDpi));
    }
    if (bild.mehrereRassen) {
        liste << t(Meldung::ÜbersichtKeineGrenzen);
    }
    if (static_cast<int>(bild.kolonien.size()) > HöchsteKreuzzahl) {
        liste << t(Meldung::ÜbersichtOhneBalken).arg(HöchsteKreuzzahl);
    }
    if (const int wenige = mitWenigenFlügeln(bild.kolonien); wenige > 0) {
        liste << t(Meldung::ÜbersichtOffeneZeichen).arg(wenige);
    }
    if (ohne > 0) {
        liste << t(Meldung::ÜbersichtOhneWerte).arg(ohne);
    }
    return liste;
}

std::vector<Zeichenerklärung::Eintrag> einträge(const Kreuzbild& bild, const std::vector<int>& dpi,
                                                const Texte& t) {
    std::vector<Zeichenerklärung::Eintrag> liste;
    for (std::size_t i = 0; i < dpi.size(); ++i) {
        const auto zahl =
            std::count_if(bild.kolonien.begin(), bild.kolonien.end(), [&](const Koloniewerte* k) {
                return k->dpi == dpi[i] && hat(*k, Größe::DV);
            });
        liste.push_back({std::min(static_cast<int>(i), Zeichenzahl - 1),
                         u"%1: %2"_s.arg(dpitext(dpi[i], t)).arg(zahl)});
    }
    if (bild.grenzen) {
        liste.push_back({Zeichenerklärung::Grenzlinie, t(Meldung::Grenzlinie)});
    }
    return liste;
}

Achse achse(const Kreuzbild& bild, Größe g, bool mitBalken, double anfang, double ende) {
    double von = std::numeric_limits<double>::max();
    double bis = std::numeric_limits<double>::lowest();
    const auto nimm = [&](double wert) {
        const double w = std::clamp(wert, äußerster(g).von, äußerster(g).bis);
        von = std::min(von, w);
        bis = std::max(bis, w);
    };
    for (const Koloniewerte* k : bild.kolonien) {
        if (hat(*k, g) && hat(*k, Größe::DV)) {
            const double s = mitBalken ? streuung(*k, g) : 0;
            nimm(mittel(*k, g) - s);
            nimm(mittel(*k, g) + s);
        }
    }
    if (bild.grenzen) {
        nimm((*bild.grenzen)[g]);
    }
    if (von > bis) {
        von = g == Größe::DV ? -2 : g == Größe::CI ? 1.5 : 0.8;
        bis = g == Größe::DV ? 4 : g == Größe::CI ? 3.5 : 1.1;
    }
    return luftigeAchse(von, bis, anfang, ende);
}

Layout layout(const QRectF& rahmen, const Kreuzbild& bild, const Übersichtsworte& worte,
              const Diagrammstil& stil) {
    constexpr double links = 78;
    constexpr double rechts = 34; // half of a number at the end of the axis
    constexpr double unten = 50;  // numbers and name of the axis
    const Texte& t = worte.texte;
    const std::vector<int> dpi = auflösungenVon(bild.kolonien);
    const auto ohne = static_cast<int>(
        std::count_if(bild.kolonien.begin(), bild.kolonien.end(), [](const Koloniewerte* k) {
            return !hat(*k, Größe::DV) || (!hat(*k, Größe::CI) && !hat(*k, Größe::HI));
        }));
    Übersichtsblatt blatt(rahmen, stil, t(Meldung::ÜbersichtKreuzTitel),
                          hinweise(bild, dpi.size(), ohne, t));
    const QRectF m = blatt.mitte;
    Zeichenerklärung erklärung(einträge(bild, dpi, t), stil, m.top(), Übersichtsblatt::Rand,
                               m.right() - Übersichtsblatt::Rand);
    Layout l{blatt, erklärung, {}, dpi, static_cast<int>(bild.kolonien.size()) <= HöchsteKreuzzahl};
    for (std::size_t i = 0; i < l.felder.size(); ++i) {
        Wertefeld& f = l.felder.at(i);
        const double anfang = static_cast<double>(i) * m.width() / 2 + links;
        f.fläche = QRectF(
            QPointF(anfang, erklärung.unten() + 10),
            QPointF(static_cast<double>(i + 1) * m.width() / 2 - rechts, m.bottom() - unten));
        f.x = achse(bild, Größe::DV, l.mitBalken, f.fläche.left(), f.fläche.right());
        f.y = achse(bild, Hochgrößen.at(i), l.mitBalken, f.fläche.bottom(), f.fläche.top());
    }
    return l;
}

class Kreuzzeichner : Blattmaler {
public:
    Kreuzzeichner(QPainter& painter, const Layout& layout, const Kreuzbild& bild,
                  const Übersichtsworte& worte, const Diagrammstil& stil)
        : Blattmaler(painter, layout.blatt, worte, stil)
        , l_(layout)
        , bild_(bild) {}

    void zeichne() {
        blatt_.male(z_);
        l_.erklärung.male(z_);
        for (std::size_t i = 0; i < l_.felder.size(); ++i) {
            feld(i);
        }
    }

private:
    void feld(std::size_t i) {
        const Wertefeld& f = l_.felder.at(i);
        const Größe hoch = Hochgrößen.at(i);
        const int zahlen = std::max(2, static_cast<int>(f.fläche.height() / 40));
        maleWaagrechteTeilung(z_, f, worte_.format, true);
        maleSenkrechteTeilung(z_, f, worte_.format, false, zahlen);
        z_.rahmen(f.fläche, stil_.blass, 1);
        const QString waagrecht = vollerName(Größe::DV, worte_.texte);
        const QString senkrecht = vollerName(hoch, worte_.texte);
        z_.text({f.fläche.center().x(), f.fläche.bottom() + 38}, Qt::AlignHCenter,
                gekürzt(waagrecht, normal_, f.fläche.width()), normal_, stil_.schrift);
        z_.textHochkant({f.fläche.left() - 62, f.fläche.center().y()},
                        gekürzt(senkrecht, normal_, f.fläche.height()), normal_, stil_.schrift);
        Textplätze plätze(f.fläche);
        grenzlinien(f, hoch);
        if (bild_.kolonien.empty()) {
            const QString leer = worte_.texte(Meldung::ÜbersichtLeer);
            z_.schild(f.fläche.center(), Qt::AlignHCenter,
                      gekürzt(leer, normal_, f.fläche.width() - 20), normal_, stil_.schrift);
        }
        kreuze(i);
        nenneGrenzen(f, hoch, plätze); // open signs would cover them
        gewählte(i, plätze);
    }

    void grenzlinien(const Wertefeld& f, Größe hoch) {
        if (!bild_.grenzen) {
            return;
        }
        const QRectF& feld = f.fläche;
        if (const double wert = (*bild_.grenzen)[Größe::DV]; f.x.enthält(wert)) {
            const double x = f.x.ort(wert);
            z_.linie({x, feld.top()}, {x, feld.bottom()}, stil_.rasse, 1.8, Qt::DashLine);
        }
        if (const double wert = (*bild_.grenzen)[hoch]; f.y.enthält(wert)) {
            const double y = f.y.ort(wert);
            z_.linie({feld.left(), y}, {feld.right(), y}, stil_.rasse, 1.8, Qt::DashLine);
        }
    }

    void nenneGrenzen(const Wertefeld& f, Größe hoch, Textplätze& plätze) {
        if (!bild_.grenzen) {
            return;
        }
        const QRectF& feld = f.fläche;
        if (const double wert = (*bild_.grenzen)[Größe::DV]; f.x.enthält(wert)) {
            const double x = f.x.ort(wert);
            beschrifte(werttext(Größe::DV, wert, worte_.format), plätze,
                       {Textort{{x + 4, feld.top() + 10}, Qt::AlignLeft},
                        Textort{{x - 4, feld.top() + 10}, Qt::AlignRight}});
        }
        if (const double wert = (*bild_.grenzen)[hoch]; f.y.enthält(wert)) {
            const double y = f.y.ort(wert);
            beschrifte(werttext(hoch, wert, worte_.format), plätze,
                       {Textort{{feld.right() - 4, y - 10}, Qt::AlignRight},
                        Textort{{feld.right() - 4, y + 10}, Qt::AlignRight},
                        Textort{{feld.left() + 4, y - 10}, Qt::AlignLeft},
                        Textort{{feld.left() + 4, y + 10}, Qt::AlignLeft}});
        }
    }

    void beschrifte(const QString& text, Textplätze& plätze, const std::vector<Textort>& orte) {
        if (const auto platz = plätze.belege(orte, text, klein_)) {
            z_.textMitHof(platz->anker, platz->bündig, text, klein_, stil_.rasse);
        }
    }

    void kreuze(std::size_t i) {
        const Wertefeld& f = l_.felder.at(i);
        const Größe hoch = Hochgrößen.at(i);
        const auto balken = [&](const Achse& a, double wert, double s) {
            const auto ort = [&a](double w) {
                return a.ort(std::clamp(w, a.wertAnfang, a.wertEnde));
            };
            return std::pair(ort(wert - s), ort(wert + s));
        };
        if (l_.mitBalken) {
            for (const Koloniewerte* k : bild_.kolonien) {
                if (!hat(*k, hoch) || !hat(*k, Größe::DV)) {
                    continue;
                }
                const QPointF mitte = l_.ort(*k, i);
                const auto [x1, x2] = balken(f.x, mittel(*k, Größe::DV), streuung(*k, Größe::DV));
                const auto [y1, y2] = balken(f.y, mittel(*k, hoch), streuung(*k, hoch));
                z_.linie({x1, mitte.y()}, {x2, mitte.y()}, stil_.fläche, 1.4);
                z_.linie({mitte.x(), y1}, {mitte.x(), y2}, stil_.fläche, 1.4);
            }
        }
        for (const Koloniewerte* k : bild_.kolonien) {
            if (hat(*k, hoch) && hat(*k, Größe::DV)) {
                maleZeichen(z_, l_.ort(*k, i), l_.zeichen(*k), stil_.probe,
                            l_.mitBalken ? Radius : Radius - 1.5, k->flügel() >= WenigeFlügel);
            }
        }
    }

    void gewählte(std::size_t i, Textplätze& plätze) {
        for (const Koloniewerte* k : bild_.gewählt) {
            if (!hat(*k, Hochgrößen.at(i)) || !hat(*k, Größe::DV)) {
                continue;
            }
            const QPointF ort = l_.ort(*k, i);
            z_.rahmen(QRectF(ort - QPointF(9, 9), QSizeF(18, 18)), stil_.gewählt, 2);
            const QString name = k->UNr;
            const Textort orte[] = {{ort + QPointF(13, 0), Qt::AlignLeft},
                                    {ort - QPointF(13, 0), Qt::AlignRight},
                                    {ort - QPointF(0, 19), Qt::AlignHCenter},
                                    {ort + QPointF(0, 19), Qt::AlignHCenter}};
            if (const auto platz = plätze.belege(orte, name, fett_)) {
                z_.textMitHof(platz->anker, platz->bündig, name, fett_, stil_.gewählt);
            }
        }
    }

    const Layout& l_;
    const Kreuzbild& bild_;
};

} // namespace

Kreuzbild kreuzbild(const Kolonieauswahl& kolonien, const Kolonieauswahl& gewählt,
                    const Kolonieregeln& regeln) {
    Kolonieauswahl gezeigt = gewählt;
    gezeigt.resize(std::min<std::size_t>(gezeigt.size(), HöchsteHervorhebung));
    return {kolonien, std::move(gezeigt), gemeinsameGrenzen(kolonien, regeln),
            rassenVon(kolonien).size() > 1};
}

std::vector<Kreuzstelle> kreuzstellen(const QRectF& rahmen, const Kreuzbild& bild,
                                      const Übersichtsworte& worte, const Diagrammstil& stil) {
    std::vector<Kreuzstelle> stellen;
    const Layout l = layout(rahmen, bild, worte, stil);
    if (l.blatt.maß.faktor <= 0) {
        return stellen;
    }
    for (std::size_t i = 0; i < l.felder.size(); ++i) {
        for (const Koloniewerte* k : bild.kolonien) {
            if (hat(*k, Hochgrößen.at(i)) && hat(*k, Größe::DV)) {
                stellen.push_back({l.blatt.maß.außen(l.ort(*k, i)), k});
            }
        }
    }
    return stellen;
}

void maleKreuze(QPainter& painter, const QRectF& rahmen, const Kreuzbild& bild,
                const Übersichtsworte& worte, const Diagrammstil& stil) {
    const Layout l = layout(rahmen, bild, worte, stil);
    if (l.blatt.maß.faktor > 0) {
        Kreuzzeichner(painter, l, bild, worte, stil).zeichne();
    }
}

} // namespace tarvel
