#include "lernen.h"

#include "detect/dunkelkarte.h"
#include "detect/faeden.h"
#include "detect/punktkaskade.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>

namespace tarvel {
namespace {

using Matrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

struct Stufenart {
    int fenster, zelle;
    bool gemeinsam;
};
constexpr std::array Stufenarten{Stufenart{48, 8, true},  Stufenart{40, 8, true},
                                 Stufenart{40, 8, false}, Stufenart{32, 4, false},
                                 Stufenart{24, 4, false}, Stufenart{24, 4, false}};
/// Windows by which a proposal is compared with good ones.
constexpr std::array Raumarten{Stufenart{48, 8, false}, Stufenart{24, 4, false}};
constexpr double Zügel = 2;     ///< of the ridge regression, per thousand crops
constexpr float Stauchung = 24; ///< of a crop's values to a byte

struct Stück {
    std::vector<std::int8_t> werte;
    Punktsatz wahr;
    Punktsatz jetzt;

    [[nodiscard]] Gradientenfeld feld() const {
        Flügelausschnitt a;
        std::transform(werte.begin(), werte.end(), a.werte.begin(),
                       [](std::int8_t w) { return float(w) / Stauchung; });
        return Gradientenfeld(a);
    }
};

std::vector<Stück> schneideStücke(const std::vector<const Übungsflügel*>& flügel,
                                  const Mittelflügel& mittel, const Lernumfang& umfang) {
    std::vector<Stück> alle(std::size_t(umfang.ausschnitte));
    verteile(umfang.ausschnitte, umfang.fäden, [&](int i) {
        Zufall zufall(umfang.saat, std::uint64_t(i));
        const auto a = abgewandelt(*flügel[std::size_t(i) % flügel.size()], zufall);
        Stück& s = alle[std::size_t(i)];
        s.wahr = a.punkte;
        s.werte.resize(a.ausschnitt.werte.size());
        std::transform(
            a.ausschnitt.werte.begin(), a.ausschnitt.werte.end(), s.werte.begin(),
            [](float w) { return std::int8_t(std::clamp(w * Stauchung, -127.0F, 127.0F)); });
        const QPointF schub(zufall.normal(0, 1.5), zufall.normal(0, 1.5));
        for (std::size_t k = 0; k < 8; ++k)
            s.jetzt[k] = Flügelausschnitt::ausRahmen(mittel.punkte[k]) + schub;
    });
    return alle;
}

/// Weights W that bring |A W - B|² + zügel |W|² to its least, A with a column of ones appended.
Matrix löse(const Matrix& a, const Matrix& b, double zügel) {
    Eigen::MatrixXf quadrat(a.cols(), a.cols());
    quadrat.setZero();
    quadrat.selfadjointView<Eigen::Lower>().rankUpdate(a.transpose());
    Eigen::MatrixXd g = quadrat.selfadjointView<Eigen::Lower>().toDenseMatrix().cast<double>();
    g.diagonal().array() += zügel;
    const Eigen::MatrixXf rechts = a.transpose() * b;
    return g.llt().solve(rechts.cast<double>()).cast<float>();
}

Kaskadenstufe lerneStufe(std::vector<Stück>& stücke, const Stufenart& art, int fäden) {
    Kaskadenstufe stufe{art.fenster, art.zelle, art.gemeinsam, {}};
    const auto f = std::size_t(stufe.merkmale());
    const auto n = Eigen::Index(stücke.size());
    Matrix merkmale(n, Eigen::Index(8 * f));
    verteile(int(stücke.size()), fäden, [&](int i) {
        const Stück& s = stücke[std::size_t(i)];
        const Gradientenfeld feld = s.feld();
        for (std::size_t k = 0; k < 8; ++k)
            feld.beschreibe(s.jetzt[k], art.fenster, art.zelle, merkmale.row(i).data() + k * f);
    });
    const double zügel = Zügel * double(n) / 1000;
    const auto abweichung = [&](std::size_t k) {
        Matrix b(n, 2);
        for (Eigen::Index i = 0; i < n; ++i) {
            const QPointF d = stücke[std::size_t(i)].wahr[k] - stücke[std::size_t(i)].jetzt[k];
            b(i, 0) = float(d.x());
            b(i, 1) = float(d.y());
        }
        return b;
    };
    if (art.gemeinsam) {
        Matrix a(n, merkmale.cols() + 1);
        a << merkmale, Eigen::VectorXf::Ones(n);
        Matrix b(n, 16);
        for (std::size_t k = 0; k < 8; ++k)
            b.middleCols(Eigen::Index(2 * k), 2) = abweichung(k);
        const Matrix w = löse(a, b, zügel);
        stufe.gewichte.assign(w.data(), w.data() + w.size());
    } else {
        std::array<Matrix, 8> einzeln;
        verteile(8, fäden, [&](int k) {
            Matrix a(n, Eigen::Index(f) + 1);
            a << merkmale.middleCols(Eigen::Index(f) * k, Eigen::Index(f)),
                Eigen::VectorXf::Ones(n);
            einzeln[std::size_t(k)] = löse(a, abweichung(std::size_t(k)), zügel / 3);
        });
        for (const Matrix& w : einzeln)
            stufe.gewichte.insert(stufe.gewichte.end(), w.data(), w.data() + w.size());
    }
    verteile(int(stücke.size()), fäden, [&](int i) {
        Stück& s = stücke[std::size_t(i)];
        Punktkaskade::schritt(stufe, s.feld(), s.jetzt);
    });
    return stufe;
}

Merkmalsraum lerneRaum(const std::vector<Stück>& stücke, const Stufenart& art, int fäden) {
    Merkmalsraum raum{art.fenster, art.zelle, {}, {}};
    const auto f = Eigen::Index(raum.merkmale());
    const auto n = Eigen::Index(std::min<std::size_t>(2500, stücke.size()));
    Matrix merkmale(n, 8 * f);
    verteile(int(n), fäden, [&](int i) {
        const Stück& s = stücke[std::size_t(i)];
        const Gradientenfeld feld = s.feld();
        for (Eigen::Index k = 0; k < 8; ++k)
            feld.beschreibe(s.wahr[std::size_t(k)], art.fenster, art.zelle,
                            merkmale.row(i).data() + k * f);
    });
    for (Eigen::Index k = 0; k < 8; ++k) {
        const Matrix teil = merkmale.middleCols(k * f, f);
        const Eigen::RowVectorXf mitte = teil.colwise().mean();
        const Eigen::MatrixXf streuung =
            (teil.rowwise() - mitte).transpose() * (teil.rowwise() - mitte);
        const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen(streuung.cast<double>());
        raum.mitte.insert(raum.mitte.end(), mitte.data(), mitte.data() + f);
        for (int r = 0; r < Merkmalsraum::Richtungen; ++r) {
            const Eigen::VectorXf richtung = eigen.eigenvectors().col(f - 1 - r).cast<float>();
            raum.richtungen.insert(raum.richtungen.end(), richtung.data(), richtung.data() + f);
        }
    }
    return raum;
}

/// Mean darkness of the wings in the frame at 300 dpi.
Graubild lerneMuster(const std::vector<const Übungsflügel*>& flügel) {
    constexpr int Breite = 114 + 2 * Erkennungsmodell::Musterrand;
    constexpr int Höhe = 41 + 2 * Erkennungsmodell::Musterrand;
    constexpr int Saum = 100;
    constexpr double Rahmen = 2400.0 / Dunkelkarte::Dpi;
    std::vector<float> summe(std::size_t(Breite) * Höhe);
    for (const Übungsflügel* f : flügel) {
        // The picture ends close to the wing: paper around it.
        Graubild weit(f->bild.breite + 2 * Saum, f->bild.höhe + 2 * Saum,
                      std::uint8_t(235 * 255 / 255));
        std::vector<std::uint8_t> werte = f->bild.werte;
        std::nth_element(werte.begin(), werte.begin() + std::ptrdiff_t(werte.size() * 95 / 100),
                         werte.end());
        std::fill(weit.werte.begin(), weit.werte.end(), werte[werte.size() * 95 / 100]);
        for (int y = 0; y < f->bild.höhe; ++y)
            std::copy_n(f->bild.zeile(y), f->bild.breite, weit.zeile(y + Saum) + Saum);
        const double teiler = f->ausMittel.maßstab() * Rahmen;
        const Graubild dunkel =
            dunkelheit(verkleinert(Grauquelle(weit), {0, 0, weit.breite, weit.höhe}, teiler));
        for (int v = 0; v < Höhe; ++v)
            for (int u = 0; u < Breite; ++u) {
                const QPointF p =
                    f->ausMittel({(u + 0.5 - Erkennungsmodell::Musterrand) * Rahmen,
                                  (v + 0.5 - Erkennungsmodell::Musterrand) * Rahmen}) +
                    QPointF(Saum, Saum);
                summe[std::size_t(v * Breite + u)] += std::clamp(
                    kubisch(dunkel, float(p.x() / teiler), float(p.y() / teiler)), 0.0F, 255.0F);
            }
    }
    Graubild muster(Breite, Höhe);
    std::transform(summe.begin(), summe.end(), muster.werte.begin(),
                   [&](float s) { return std::uint8_t(std::lround(s / float(flügel.size()))); });
    return muster;
}

} // namespace

Erkennungsmodell lerneKaskade(const std::vector<const Übungsflügel*>& flügel,
                              const Mittelflügel& mittel, const Lernumfang& umfang,
                              const Meldung& melde) {
    Erkennungsmodell modell;
    modell.muster = lerneMuster(flügel);
    modell.punkte = mittel.punkte;
    modell.umriss = {{15, 150}, {60, 80},   {200, 15},  {420, 20}, {890, 60},
                     {890, 95}, {480, 215}, {300, 305}, {180, 280}};
    auto stücke = schneideStücke(flügel, mittel, umfang);
    melde(QStringLiteral("%1 crops").arg(stücke.size()));
    for (const Stufenart& art : Stufenarten) {
        modell.stufen.push_back(lerneStufe(stücke, art, umfang.fäden));
        double summe = 0;
        for (const Stück& s : stücke)
            for (std::size_t k = 0; k < 8; ++k) {
                const QPointF d = s.wahr[k] - s.jetzt[k];
                summe += std::hypot(d.x(), d.y()) * Flügelausschnitt::Maßstab;
            }
        melde(QStringLiteral("step %1 of %2: mean distance %3 px on the training crops")
                  .arg(modell.stufen.size())
                  .arg(Stufenarten.size())
                  .arg(summe / double(8 * stücke.size()), 0, 'f', 2));
    }
    for (std::size_t i = 0; i < Raumarten.size(); ++i)
        modell.fehler.räume[i] = lerneRaum(stücke, Raumarten[i], umfang.fäden);
    // What goes into the file goes into the checks: half precision.
    return modell;
}

std::vector<Vorschlagsprobe> probiere(const Erkennungsmodell& modell,
                                      const std::vector<const Übungsflügel*>& flügel,
                                      const Lernumfang& umfang, Zufall& zufall) {
    const Punktsucher sucher(modell);
    const auto eines = [&](auto... werte) {
        const std::array wahl{double(werte)...};
        return wahl[std::size_t(zufall.ganz(int(wahl.size())))];
    };
    struct Auftrag {
        const Übungsflügel* flügel;
        Aufnahmeart art;
        std::uint64_t saat;
    };
    std::vector<Auftrag> aufträge;
    for (const Übungsflügel* f : flügel)
        for (int i = 0; i < umfang.aufnahmen; ++i) {
            Aufnahmeart art;
            art.unschärfe = eines(0, 0, 1, 3, 6, 9);
            art.kontrast = eines(1, 1, 0.6, 0.3);
            art.rauschen = eines(2, 2, 8, 20);
            art.verdeckt = int(eines(0, 0, 0, 1, 2, 3));
            art.haare = int(eines(0, 0, 0, 0, 1, 2));
            art.staub = int(eines(0, 0, 60, 150));
            art.dpi = eines(2400, 1200, 1200, 600, 400);
            art.größe = eines(1, 1, 0.95, 1.05);
            aufträge.push_back({f, art, std::uint64_t(zufall.gleich() * 1e15)});
        }
    std::vector<Vorschlagsprobe> proben(aufträge.size());
    verteile(int(aufträge.size()), umfang.fäden, [&](int i) {
        const Auftrag& a = aufträge[std::size_t(i)];
        Zufall z(a.saat);
        const auto aufnahme = nimmAuf(*a.flügel, a.art, z);
        const double jePixel = a.art.dpi / 2400;
        // As far off as the search for the pose leaves it.
        const Affin lage = Affin::verschiebung({z.normal(0, 3) * jePixel, z.normal(0, 3) * jePixel})
                               .nach(aufnahme.lage);
        const auto [vorschlag, zeichen] = sucher.sucheMitZeichen(Grauquelle(aufnahme.bild), lage);
        Vorschlagsprobe& probe = proben[std::size_t(i)];
        probe.zeichen = zeichen;
        for (std::size_t k = 0; k < 8; ++k) {
            const QPointF d = vorschlag.punkte[k] - aufnahme.punkte[k];
            probe.fehler[k] = std::hypot(d.x(), d.y()) / jePixel / a.art.größe;
        }
    });
    return proben;
}

void lerneFehler(Fehlermodell& modell, const std::vector<Vorschlagsprobe>& proben) {
    constexpr int Z = Fehlermodell::Zeichen;
    constexpr int Glieder = 2 * Z + 1;
    std::vector<std::pair<std::array<float, Z>, double>> alle;
    for (const auto& p : proben)
        for (std::size_t k = 0; k < 8; ++k)
            alle.emplace_back(p.zeichen[k], p.fehler[k]);
    const double n = double(alle.size());
    for (std::size_t i = 0; i < Z; ++i) {
        double summe = 0;
        double quadrate = 0;
        for (const auto& [z, e] : alle) {
            summe += double(z[i]);
            quadrate += double(z[i]) * double(z[i]);
        }
        modell.mitte[i] = float(summe / n);
        modell.streuung[i] = float(std::sqrt(std::max(1e-6, quadrate / n - summe / n * summe / n)));
    }
    const auto glieder = [&](const std::array<float, Z>& z) {
        Eigen::Matrix<double, Glieder, 1> g;
        g(0) = 1;
        for (std::size_t i = 0; i < Z; ++i) {
            const double t = double((z[i] - modell.mitte[i]) / modell.streuung[i]);
            g(Eigen::Index(1 + i)) = t;
            g(Eigen::Index(1 + Z + i)) = t * t;
        }
        return g;
    };
    Eigen::Matrix<double, Glieder, Glieder> quadrat =
        5 * Eigen::Matrix<double, Glieder, Glieder>::Identity();
    Eigen::Matrix<double, Glieder, 1> rechts = Eigen::Matrix<double, Glieder, 1>::Zero();
    for (const auto& [z, e] : alle) {
        const auto g = glieder(z);
        quadrat += g * g.transpose();
        rechts += g * std::log(e + 0.3);
    }
    const Eigen::Matrix<double, Glieder, 1> w = quadrat.llt().solve(rechts);
    for (std::size_t i = 0; i < Glieder; ++i)
        modell.gewichte[i] = float(w(Eigen::Index(i)));

    // What the sum means is read off: root mean square errors of equal shares, made rising.
    std::vector<std::pair<double, double>> paare;
    for (const auto& [z, e] : alle)
        paare.emplace_back(glieder(z).dot(w), e);
    std::sort(paare.begin(), paare.end());
    constexpr std::size_t Teile = 24;
    modell.eichung.clear();
    double zuvor = 0.1;
    for (std::size_t t = 0; t < Teile; ++t) {
        const std::size_t von = paare.size() * t / Teile;
        const std::size_t bis = paare.size() * (t + 1) / Teile;
        double summe = 0;
        double quadrate = 0;
        for (std::size_t i = von; i < bis; ++i) {
            summe += paare[i].first;
            quadrate += paare[i].second * paare[i].second;
        }
        const double anzahl = double(bis - von);
        zuvor = std::max(zuvor, std::sqrt(quadrate / anzahl));
        const auto stelle = float(summe / anzahl);
        if (modell.eichung.empty() || stelle > modell.eichung.back().first)
            modell.eichung.emplace_back(stelle, float(zuvor));
    }
}

} // namespace tarvel
