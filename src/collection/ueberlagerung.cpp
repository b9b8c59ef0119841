#include "collection/ueberlagerung.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using Blatt = Übersichtsblatt;

constexpr double Hundert = 100;
constexpr double Legendenzeile = 20;

double lage(Größe g, double wert) {
    return g == Größe::CI   ? klassenlageCI(wert)
           : g == Größe::HI ? klassenlageHI(wert)
                            : klassenlageDV(wert);
}

int außerhalb(const Koloniewerte& k, Größe g) {
    return k[g].klassen[0];
}

double anteil(const Koloniewerte& k, Größe g, int klasse) {
    const int n = k[g].kennzahlen.anzahl;
    return n == 0 ? 0 : Hundert * k[g].klassen.at(static_cast<std::size_t>(klasse)) / n;
}

/// Each colony has a line and a sign of its own, so that it is told apart without colour, too.
struct Strich {
    QColor farbe;
    Qt::PenStyle art;
    double breite;
};

Strich strich(const Diagrammstil& stil, std::size_t i) {
    const Strich alle[HöchsteÜberlagerung] = {
        {stil.probe, Qt::SolidLine, 2.6},      {stil.verfehlt, Qt::DashLine, 2.2},
        {stil.schrift, Qt::DotLine, 2.2},      {stil.rasse, Qt::DashDotLine, 2.2},
        {stil.blass, Qt::DashDotDotLine, 2.2}, {stil.probe, Qt::SolidLine, 1.1}};
    return alle[i];
}

QStringList hinweise(const Überlagerungsbild& bild, const Texte& t) {
    QStringList liste;
    if (bild.kolonien.empty()) {
        return liste;
    }
    if (!bild.andereDpi.empty()) {
        QStringList namen;
        for (const Koloniewerte* k : bild.andereDpi) {
            namen << k->UNr;
        }
        liste << t(Meldung::ÜbersichtAndereDpi)
                     .arg(dpitext(bild.kolonien.front()->dpi, t), namen.join(u", "_s));
    }
    if (bild.gewählt > HöchsteÜberlagerung) {
        liste << t(Meldung::ÜbersichtErsteSechs).arg(bild.gewählt);
    }
    QStringList draußen;
    for (const Koloniewerte* k : bild.kolonien) {
        if (außerhalb(*k, bild.größe) > 0) {
            draußen << u"%1 (%2)"_s.arg(k->UNr).arg(außerhalb(*k, bild.größe));
        }
    }
    if (!draußen.isEmpty()) {
        liste << t(Meldung::ÜbersichtAußerhalb).arg(draußen.join(u", "_s));
    }
    const auto wenige =
        std::count_if(bild.kolonien.begin(), bild.kolonien.end(), [&](const Koloniewerte* k) {
            return (*k)[bild.größe].kennzahlen.anzahl < WenigeFlügel;
        });
    if (wenige > 0) {
        liste << t(Meldung::ÜbersichtWenigeFlügel).arg(wenige);
    }
    return liste << t(Meldung::ÜbersichtHistErklärung);
}

class Überlagerungszeichner : Blattmaler {
public:
    Überlagerungszeichner(QPainter& painter, const Blatt& blatt, const Überlagerungsbild& bild,
                          const Übersichtsworte& worte, const Diagrammstil& stil)
        : Blattmaler(painter, blatt, worte, stil)
        , bild_(bild) {}

    void zeichne() {
        blatt_.male(z_);
        const QRectF& m = blatt_.mitte;
        if (bild_.kolonien.empty()) {
            sage(worte_.texte(Meldung::ÜbersichtWähle));
            return;
        }
        const double zeilen = std::ceil(static_cast<double>(bild_.kolonien.size()) / 2);
        richteFeldEin(m.top() + zeilen * Legendenzeile + 8);
        legende(m.top());
        feld();
        const std::optional<double> grenze = grenzort();
        if (grenze) {
            z_.linie({*grenze, feld_.fläche.top()}, {*grenze, feld_.fläche.bottom()}, stil_.rasse,
                     1.8, Qt::DashLine);
        }
        for (std::size_t i = 0; i < bild_.kolonien.size(); ++i) {
            kurve(i);
        }
        if (grenze) {
            nenneGrenze(*grenze);
        }
    }

private:
    void richteFeldEin(double oben) {
        const QRectF& m = blatt_.mitte;
        double höchster = 10;
        const int klassen = klassenzahl(bild_.größe);
        int von = klassen;
        int bis = 1;
        for (const Koloniewerte* k : bild_.kolonien) {
            for (int klasse = 1; klasse <= klassen; ++klasse) {
                const double a = anteil(*k, bild_.größe, klasse);
                höchster = std::max(höchster, a);
                if (a > 0) {
                    von = std::min(von, klasse);
                    bis = std::max(bis, klasse);
                }
            }
        }
        // A class of air at either side, and room for the boundary line.
        if (bild_.grenzen) {
            const int klasse =
                static_cast<int>(std::floor(lage(bild_.größe, (*bild_.grenzen)[bild_.größe])));
            if (klasse >= 1 && klasse <= klassen) {
                von = std::min(von, klasse);
                bis = std::max(bis, klasse);
            }
        }
        von_ = std::max(1, std::min(von, bis) - 1);
        bis_ = std::min(klassen, std::max(von, bis) + 1);
        feld_.fläche = QRectF(QPointF(66, oben), QPointF(m.right() - Blatt::Rand, m.bottom() - 50));
        feld_.x = {static_cast<double>(von_), bis_ + 1.0, feld_.fläche.left(),
                   feld_.fläche.right()};
        feld_.y = {0, höchster * 1.06, feld_.fläche.bottom(), feld_.fläche.top()};
    }

    void legende(double oben) {
        const double breite = (blatt_.mitte.width() - 2 * Blatt::Rand) / 2;
        for (std::size_t i = 0; i < bild_.kolonien.size(); ++i) {
            const Koloniewerte& k = *bild_.kolonien[i];
            const QPointF ort(Blatt::Rand + static_cast<double>(i % 2) * breite,
                              oben + (static_cast<double>(i - i % 2) / 2 + 0.5) * Legendenzeile);
            const Strich s = strich(stil_, i);
            z_.linie(ort, ort + QPointF(44, 0), s.farbe, s.breite, s.art);
            maleZeichen(z_, ort + QPointF(22, 0), static_cast<int>(i), s.farbe, 4.5, false);
            const Indexwerte& w = k[bild_.größe];
            const QString text = eingepasst(breite - 66, klein_, [&](double wortbreite) {
                QString zeile = k.UNr + u"   n = "_s + QString::number(w.kennzahlen.anzahl);
                if (!k.Volk.isEmpty()) {
                    zeile = k.UNr + u" · "_s + gekürzt(k.Volk, klein_, wortbreite) + u"   n = "_s +
                            QString::number(w.kennzahlen.anzahl);
                }
                return bild_.größe == Größe::DV ? zeile + u"   "_s + dpitext(k.dpi, worte_.texte)
                                                : zeile;
            });
            z_.text(ort + QPointF(52, 0), Qt::AlignLeft, text, klein_, stil_.schrift);
        }
    }

    void feld() {
        const QRectF& f = feld_.fläche;
        maleSenkrechteTeilung(z_, feld_, worte_.format, false,
                              std::max(2, static_cast<int>(f.height() / 36)));
        z_.rahmen(f, stil_.blass, 1);
        const double breite = f.width() / (bis_ - von_ + 1);
        const int jede = std::max(1, static_cast<int>(std::ceil(24 / breite)));
        for (int klasse = von_; klasse <= bis_; ++klasse) {
            const double x = feld_.x.ort(klasse);
            z_.linie({x, f.bottom()}, {x, f.bottom() + 5}, stil_.blass, 1);
            if ((klasse - von_) % jede == 0) {
                z_.text({x + breite / 2, f.bottom() + 15}, Qt::AlignHCenter, klassentext(klasse),
                        klein_, stil_.blass);
            }
        }
        z_.text({f.center().x(), f.bottom() + 38}, Qt::AlignHCenter,
                gekürzt(achsentitel(), normal_, f.width()), normal_, stil_.schrift);
        z_.textHochkant({14, f.center().y()},
                        gekürzt(worte_.texte(Meldung::ÜbersichtProzent), normal_, f.height()),
                        normal_, stil_.schrift);
    }

    /// The trade knows no class numbers of the discoidal shift: its classes are named by values.
    [[nodiscard]] QString klassentext(int klasse) const {
        return bild_.größe == Größe::DV
                   ? Format(DVBeiKlassenlage(klasse), u"+0.0;-0.0;0.0", worte_.format)
                   : QString::number(klasse);
    }
    [[nodiscard]] QString achsentitel() const {
        const QString name = vollerName(bild_.größe, worte_.texte);
        return bild_.größe == Größe::DV ? name : worte_.texte(Text::Klasse) + u" – "_s + name;
    }

    [[nodiscard]] std::optional<double> grenzort() const {
        if (!bild_.grenzen) {
            return std::nullopt;
        }
        const double stelle = lage(bild_.größe, (*bild_.grenzen)[bild_.größe]);
        return feld_.x.enthält(stelle) ? std::optional(feld_.x.ort(stelle)) : std::nullopt;
    }

    /// Above the curves, whose signs would cover it.
    void nenneGrenze(double x) {
        const QString text = worte_.texte(Meldung::Grenzlinie) + u' ' +
                             werttext(bild_.größe, (*bild_.grenzen)[bild_.größe], worte_.format);
        const QRectF& f = feld_.fläche;
        const bool rechts = x + 6 + textbreite(text, klein_) < f.right();
        z_.textMitHof({rechts ? x + 4 : x - 4, f.top() + 10},
                      rechts ? Qt::AlignLeft : Qt::AlignRight, text, klein_, stil_.rasse);
    }

    void kurve(std::size_t i) {
        const Koloniewerte& k = *bild_.kolonien[i];
        const Strich s = strich(stil_, i);
        QPainterPath linie(QPointF(feld_.fläche.left(), feld_.fläche.bottom()));
        for (int klasse = von_; klasse <= bis_; ++klasse) {
            const double y = feld_.y.ort(anteil(k, bild_.größe, klasse));
            linie.lineTo(feld_.x.ort(klasse), y);
            linie.lineTo(feld_.x.ort(klasse + 1), y);
        }
        linie.lineTo(feld_.fläche.bottomRight());
        z_.painter().strokePath(linie, QPen(s.farbe, s.breite, s.art, Qt::FlatCap, Qt::MiterJoin));
        // Signs of several colonies in one class stand beside each other.
        const double platz =
            (static_cast<double>(i) + 1) / (static_cast<double>(bild_.kolonien.size()) + 1);
        for (int klasse = von_; klasse <= bis_; ++klasse) {
            if (anteil(k, bild_.größe, klasse) > 0) {
                maleZeichen(
                    z_, {feld_.x.ort(klasse + platz), feld_.y.ort(anteil(k, bild_.größe, klasse))},
                    static_cast<int>(i), s.farbe, 3.6, false);
            }
        }
    }

    const Überlagerungsbild& bild_;
    Wertefeld feld_;
    int von_ = 1;
    int bis_ = 1;
};

} // namespace

Überlagerungsbild überlagerungsbild(const Kolonieauswahl& gewählt, Größe größe,
                                    const Kolonieregeln& regeln) {
    Überlagerungsbild bild{größe, {}, {}, gewählt.size(), {}};
    for (const Koloniewerte* k : gewählt) {
        const bool andere = größe == Größe::DV && !bild.kolonien.empty() &&
                            (k->dpi != bild.kolonien.front()->dpi || !k->dpiEindeutig());
        if (andere) {
            bild.andereDpi.push_back(k);
        } else if (bild.kolonien.size() < HöchsteÜberlagerung) {
            bild.kolonien.push_back(k);
        }
    }
    bild.grenzen = gemeinsameGrenzen(bild.kolonien, regeln);
    return bild;
}

void maleÜberlagerung(QPainter& painter, const QRectF& rahmen, const Überlagerungsbild& bild,
                      const Übersichtsworte& worte, const Diagrammstil& stil) {
    const Blatt blatt(
        rahmen, stil,
        worte.texte(Meldung::ÜbersichtHistTitel).arg(vollerName(bild.größe, worte.texte)),
        hinweise(bild, worte.texte));
    if (blatt.maß.faktor > 0) {
        Überlagerungszeichner(painter, blatt, bild, worte, stil).zeichne();
    }
}

} // namespace tarvel
