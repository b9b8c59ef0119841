#include "collection/vergleichsbild.h"

#include "results/zeileneingabe.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using Blatt = Übersichtsblatt;
using Art = Kolonievergleichszeile::Art;

constexpr double Lücke = 8;
constexpr double VolleZeilenhöhe = 21; ///< where there is room for it

QStringList hinweise(const Vergleichsbild& bild, const Texte& t) {
    QStringList liste;
    if (bild.a == nullptr) {
        return liste;
    }
    if (bild.vergleich.tiereVerschieden) {
        liste << t(Meldung::ÜbersichtTiereVerschieden);
    }
    if (bild.vergleich.dpiVerschieden) {
        liste << t(Meldung::ÜbersichtDpiVerschieden)
                     .arg(dpitext(bild.a->dpi, t), dpitext(bild.b->dpi, t));
    }
    if (bild.vergleich.grenzenVerschieden) {
        liste << t(Meldung::ÜbersichtGrenzenVerschieden);
    }
    int wenige = 0;
    for (const Koloniewerte* k : {bild.a, bild.b}) {
        wenige += k->flügel() < WenigeFlügel ? 1 : 0;
    }
    if (wenige > 0) {
        liste << t(Meldung::ÜbersichtWenigeFlügel).arg(wenige);
    }
    return liste << t(Meldung::ÜbersichtVergleichErklärung);
}

class Vergleichszeichner : Blattmaler {
public:
    Vergleichszeichner(QPainter& painter, const Blatt& blatt, const Vergleichsbild& bild,
                       const Übersichtsworte& worte, const Diagrammstil& stil)
        : Blattmaler(painter, blatt, worte, stil)
        , bild_(bild) {}

    void zeichne() {
        blatt_.male(z_);
        const QRectF& m = blatt_.mitte;
        if (bild_.a == nullptr) {
            sage(worte_.texte(Meldung::ÜbersichtWähleZwei));
            return;
        }
        // Name, first, second, difference, interval, outcome.
        const double breite = m.width() - 2 * Blatt::Rand;
        double x = Blatt::Rand;
        const std::array anteile{0.18, 0.20, 0.20, 0.10, 0.17, 0.15};
        for (std::size_t i = 0; i < anteile.size(); ++i) {
            spalten_.at(i) = {x, x + breite * anteile.at(i) - 8};
            x += breite * anteile.at(i);
        }
        // Eight rows of what they are, a heading and the figures.
        const double zeilen = 9 + static_cast<double>(bild_.vergleich.zeilen.size());
        höhe_ = std::min(VolleZeilenhöhe, (m.height() - Lücke) / zeilen);
        y_ = m.top();
        angaben();
        kopf();
        for (const Kolonievergleichszeile& zeile : bild_.vergleich.zeilen) {
            if (zeile.art == Art::Mittelwert) {
                trennlinie();
            }
            zeigeZeile(zeile);
        }
    }

private:
    struct Spalte {
        double links = 0;
        double rechts = 0;
        [[nodiscard]] double breite() const { return rechts - links; }
    };

    void zelle(std::size_t spalte, const QString& text, const QFont& schrift, const QColor& farbe) {
        const Spalte& s = spalten_.at(spalte);
        const QFont passend = verkleinert(schrift, text, s.breite());
        z_.text({s.links, y_ + höhe_ / 2}, Qt::AlignLeft, gekürzt(text, passend, s.breite()),
                passend, farbe);
    }
    void zeile(const std::array<QString, 3>& texte, const QFont& schrift) {
        for (std::size_t i = 0; i < texte.size(); ++i) {
            zelle(i, texte.at(i), i == 0 ? klein_ : schrift, i == 0 ? stil_.blass : stil_.schrift);
        }
        y_ += höhe_;
    }
    void trennlinie() {
        z_.linie({Blatt::Rand, y_}, {blatt_.mitte.right() - Blatt::Rand, y_}, stil_.gitter, 1);
    }

    /// What the two colonies are.
    void angaben() {
        const Texte& t = worte_.texte;
        const auto beide = [&](auto name, auto text) {
            zeile({t(name), text(*bild_.a), text(*bild_.b)}, klein_);
        };
        zeile({t(Text::UntersuchungNr), bild_.a->UNr, bild_.b->UNr}, fett_);
        beide(Text::Volk, [](const Koloniewerte& k) { return k.Volk; });
        beide(Text::SpalteKönigin, [](const Koloniewerte& k) { return k.Königin; });
        beide(Text::Züchter, [](const Koloniewerte& k) { return k.Züchter; });
        beide(Text::Rasse, [](const Koloniewerte& k) { return k.Rasse; });
        beide(Text::SpalteDatum, [&](const Koloniewerte& k) { return kurzesDatum(t, k.datum); });
        beide(Meldung::ÜbersichtAuflösung,
              [&](const Koloniewerte& k) { return dpitext(k.dpi, t); });
        beide(Text::EntsprichtDerRasse, [&](const Koloniewerte& k) { return urteilstext(k, t); });
        y_ += Lücke;
    }

    void kopf() {
        const Texte& t = worte_.texte;
        zelle(1, bild_.a->UNr, fett_, stil_.schrift);
        zelle(2, bild_.b->UNr, fett_, stil_.schrift);
        zelle(3, t(Meldung::ÜbersichtDifferenz), fett_, stil_.schrift);
        zelle(4, t(Meldung::SpalteBereich), fett_, stil_.schrift);
        zelle(5, t(Meldung::SpalteErgebnis), fett_, stil_.schrift);
        y_ += höhe_;
    }

    [[nodiscard]] QString figur(const Kolonievergleichszeile& z, const Koloniewerte& k,
                                std::optional<double> wert) const {
        if (!wert) {
            return u"–"_s;
        }
        if (z.art != Art::Mittelwert) {
            return Format(*wert, u"0"_s, worte_.format) + u" %"_s;
        }
        const Kennzahlen& zahlen = k[z.größe].kennzahlen;
        QString text = werttext(z.größe, *wert, worte_.format);
        if (zahlen.standardabweichung) {
            text += u" ± "_s + streuungstext(z.größe, *zahlen.standardabweichung, worte_.format);
        }
        return text + u" (n "_s + QString::number(zahlen.anzahl) + u')';
    }
    [[nodiscard]] QString differenztext(const Kolonievergleichszeile& z, double wert) const {
        const QStringView muster = z.art != Art::Mittelwert ? u"+0;-0;0"
                                   : z.größe == Größe::HI   ? u"+0.000;-0.000;0.000"
                                                            : u"+0.00;-0.00;0.00";
        return Format(wert, muster, worte_.format);
    }

    void zeigeZeile(const Kolonievergleichszeile& z) {
        const Texte& t = worte_.texte;
        const QString index = kurzname(z.größe, t);
        const bool mittel = z.art == Art::Mittelwert;
        zelle(0,
              mittel ? t(Text::Mittelwert) + u' ' + index
                     : t(z.art == Art::AnteilUnter ? Meldung::ÜbersichtUnterGrenze
                                                   : Meldung::ÜbersichtÜberGrenze)
                           .arg(grenztext(z.größe)),
              mittel ? fett_ : klein_, stil_.schrift);
        zelle(1, figur(z, *bild_.a, z.a), klein_, stil_.schrift);
        zelle(2, figur(z, *bild_.b, z.b), klein_, stil_.schrift);
        if (!z.unterschied) {
            zelle(5, z.a && z.b ? t(Meldung::ÜbersichtUnvergleichbar) : u"–"_s, klein_,
                  stil_.blass);
            y_ += höhe_;
            return;
        }
        zelle(3, differenztext(z, z.unterschied->differenz), klein_, stil_.schrift);
        const auto& bereich = z.unterschied->bereich;
        zelle(4,
              bereich ? differenztext(z, bereich->von) + u" … "_s + differenztext(z, bereich->bis)
                      : u"–"_s,
              klein_, stil_.schrift);
        const bool gesichert = z.unterschied->gesichert();
        zelle(5, t(gesichert ? Meldung::ÜbersichtVerschieden : Meldung::ÜbersichtUngewiss),
              gesichert ? fett_ : klein_, gesichert ? stil_.schrift : stil_.blass);
        y_ += höhe_;
    }

    /// "CI 1.90", where both colonies have that boundary line.
    [[nodiscard]] QString grenztext(Größe g) const {
        const QString name = kurzname(g, worte_.texte);
        return bild_.grenzen ? name + u' ' + werttext(g, (*bild_.grenzen)[g], worte_.format) : name;
    }

    const Vergleichsbild& bild_;
    std::array<Spalte, 6> spalten_;
    double y_ = 0;
    double höhe_ = VolleZeilenhöhe;
};

} // namespace

Vergleichsbild vergleichsbild(const Kolonieauswahl& gewählt, const Kolonieregeln& regeln) {
    Vergleichsbild bild;
    if (gewählt.size() == 2) {
        bild.a = gewählt[0];
        bild.b = gewählt[1];
        bild.vergleich = vergleiche(*bild.a, *bild.b, regeln);
        if (!bild.vergleich.grenzenVerschieden) {
            bild.grenzen = regeln.grenzen(bild.a->rasse, bild.a->tiere);
        }
    }
    return bild;
}

void maleVergleich(QPainter& painter, const QRectF& rahmen, const Vergleichsbild& bild,
                   const Übersichtsworte& worte, const Diagrammstil& stil) {
    const Blatt blatt(rahmen, stil, worte.texte(Meldung::ÜbersichtVergleichTitel),
                      hinweise(bild, worte.texte));
    if (blatt.maß.faktor > 0) {
        Vergleichszeichner(painter, blatt, bild, worte, stil).zeichne();
    }
}

} // namespace tarvel
