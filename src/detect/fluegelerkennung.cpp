#include "detect/fluegelerkennung.h"

#include "detect/faeden.h"
#include "detect/grobsuche.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace tarvel {
namespace {

/// Wings that share more than this of the smaller one's area are one wing seen twice.
constexpr double HöchstensGemeinsam = 0.15;
/// A candidate this near to a sure wing needs no search of its own; pixels at 300 dpi. Wings are
/// higher than that.
constexpr double Nachbarschaft = 38;
/// Share of the whole work that the map, and the map with the first look, take.
constexpr int NachKarte = 20;
constexpr int NachGrobsuche = 50;

double fläche(const std::vector<QPointF>& ecken) {
    double doppelt = 0;
    for (std::size_t i = 0; i < ecken.size(); ++i) {
        const QPointF& a = ecken[i];
        const QPointF& b = ecken[(i + 1) % ecken.size()];
        doppelt += a.x() * b.y() - b.x() * a.y();
    }
    return doppelt / 2;
}

/// Area that two convex outlines share (Sutherland and Hodgman's clipping).
double gemeinsameFläche(std::vector<QPointF> was, const std::vector<QPointF>& grenze) {
    const double sinn = fläche(grenze) < 0 ? -1 : 1;
    for (std::size_t i = 0; i < grenze.size() && !was.empty(); ++i) {
        const QPointF a = grenze[i];
        const QPointF kante = grenze[(i + 1) % grenze.size()] - a;
        const auto innen = [&](QPointF p) {
            const QPointF q = p - a;
            return sinn * (kante.x() * q.y() - kante.y() * q.x());
        };
        std::vector<QPointF> rest;
        for (std::size_t k = 0; k < was.size(); ++k) {
            const QPointF p = was[k];
            const QPointF q = was[(k + 1) % was.size()];
            const double dp = innen(p);
            const double dq = innen(q);
            if (dp >= 0)
                rest.push_back(p);
            if ((dp >= 0) != (dq >= 0))
                rest.push_back(p + (q - p) * (dp / (dp - dq)));
        }
        was = std::move(rest);
    }
    return std::abs(fläche(was));
}

std::vector<QPointF> abgebildet(const Affin& lage, const std::vector<QPointF>& orte) {
    std::vector<QPointF> bild;
    bild.reserve(orte.size());
    std::transform(orte.begin(), orte.end(), std::back_inserter(bild), lage);
    return bild;
}

} // namespace

QRectF Flügelfund::rahmen() const {
    double l = umriss[0].x();
    double r = l;
    double o = umriss[0].y();
    double u = o;
    for (const QPointF& p : umriss) {
        l = std::min(l, p.x());
        r = std::max(r, p.x());
        o = std::min(o, p.y());
        u = std::max(u, p.y());
    }
    return {l, o, r - l, u - o};
}

struct Flügelerkennung::Werkzeug {
    std::shared_ptr<const Erkennungsmodell> modell;
    Flügelmuster muster;
    Grobmuster grob;
    Punktsucher punkte;

    explicit Werkzeug(std::shared_ptr<const Erkennungsmodell> m)
        : modell(std::move(m))
        , muster(*modell)
        , grob(muster)
        , punkte(*modell) {}

    /// A pose with the points found from it.
    struct Gefunden {
        Flügellage lage;
        Punktvorschlag vorschlag;
    };
    /// Of poses that the pattern cannot tell apart the one at which the points look most like
    /// points of a wing; nullopt where nothing does.
    [[nodiscard]] std::optional<Gefunden> wähle(const Pixelquelle& quelle, double dpi,
                                                const std::vector<Flügellage>& lagen) const;
    [[nodiscard]] std::vector<Gefunden> suche(const Pixelquelle& quelle, double dpi,
                                              Suchverlauf& verlauf, int fäden) const;

    [[nodiscard]] static bool sicher(const Gefunden& g) {
        return g.lage.güte >= Sichergrenze && g.vorschlag.mittlererFehler() <= SichererFehler;
    }
};

Flügelerkennung::Flügelerkennung(std::shared_ptr<const Erkennungsmodell> modell)
    : werkzeug_(std::make_unique<Werkzeug>(std::move(modell))) {}

Flügelerkennung::~Flügelerkennung() = default;

std::optional<Flügelerkennung::Werkzeug::Gefunden>
Flügelerkennung::Werkzeug::wähle(const Pixelquelle& quelle, double dpi,
                                 const std::vector<Flügellage>& lagen) const {
    std::optional<Gefunden> best;
    for (const Flügellage& lage : lagen) {
        if (lage.güte < Zweifelsgrenze)
            continue;
        Gefunden neu{lage, punkte.suche(quelle, muster.abbildung(lage, dpi))};
        const float fehler = neu.vorschlag.mittlererFehler();
        const float höchstens =
            lage.güte < Sichergrenze ? UnglaubhafterFehler : 2 * UnglaubhafterFehler;
        if (fehler < höchstens && (!best || fehler < best->vorschlag.mittlererFehler()))
            best = neu;
    }
    return best;
}

std::vector<Flügelerkennung::Werkzeug::Gefunden>
Flügelerkennung::Werkzeug::suche(const Pixelquelle& quelle, double dpi, Suchverlauf& verlauf,
                                 int fäden) const {
    if (dpi < GröbsteAuflösung)
        return {};
    const Dunkelkarte karte = dunkelkarte(quelle, dpi, fäden);
    if (karte.leer() || verlauf.halt)
        return {};
    verlauf.prozent = NachKarte;
    const auto stellen = grob.suche(karte, fäden, verlauf.halt);
    verlauf.prozent = NachGrobsuche;

    // In rounds, so that places beside a wing found are left out the same way on every machine.
    constexpr int Runde = 16;
    std::vector<Gefunden> gefunden;
    for (std::size_t von = 0; von < stellen.size() && !verlauf.halt;) {
        std::vector<Flügellage> dran;
        for (; von < stellen.size() && dran.size() < Runde; ++von) {
            const Flügellage& s = stellen[von];
            const bool erledigt = std::any_of(gefunden.begin(), gefunden.end(), [&](const auto& f) {
                return sicher(f) && std::hypot(f.lage.x - s.x, f.lage.y - s.y) < Nachbarschaft;
            });
            if (!erledigt)
                dran.push_back(s);
        }
        std::vector<std::optional<Gefunden>> ergebnis(dran.size());
        verteile(int(dran.size()), fäden, [&](int i) {
            if (!verlauf.halt)
                ergebnis[std::size_t(i)] =
                    wähle(quelle, dpi, muster.suche(karte, dran[std::size_t(i)]));
        });
        for (auto& e : ergebnis)
            if (e)
                gefunden.push_back(*e);
        verlauf.prozent = NachGrobsuche + int((100 - NachGrobsuche) * von / stellen.size());
    }
    std::stable_sort(gefunden.begin(), gefunden.end(),
                     [](const auto& a, const auto& b) { return a.lage.güte > b.lage.güte; });
    std::vector<Gefunden> bleiben;
    std::vector<std::vector<QPointF>> umrisse;
    for (Gefunden& f : gefunden) {
        // The points know the pose better than the pattern.
        auto umriss = abgebildet(f.vorschlag.lage, modell->umriss);
        const bool doppelt = std::any_of(umrisse.begin(), umrisse.end(), [&](const auto& u) {
            return gemeinsameFläche(umriss, u) >
                   HöchstensGemeinsam * std::min(std::abs(fläche(umriss)), std::abs(fläche(u)));
        });
        if (doppelt)
            continue;
        bleiben.push_back(f);
        umrisse.push_back(std::move(umriss));
    }
    return bleiben;
}

std::vector<Flügelfund> Flügelerkennung::finde(const Pixelquelle& quelle, double dpi,
                                               Suchverlauf& verlauf, int fäden) const {
    auto gefunden = werkzeug_->suche(quelle, dpi, verlauf, fäden);
    if (verlauf.halt)
        return {};
    std::vector<Flügelfund> funde;
    for (auto& g : gefunden) {
        Flügelfund& fund = funde.emplace_back();
        const Affin& lage = g.vorschlag.lage;
        fund.umriss = abgebildet(lage, werkzeug_->modell->umriss);
        fund.mitte = QPointF(g.lage.x, g.lage.y) * (dpi / Dunkelkarte::Dpi);
        fund.gespiegelt = g.lage.gespiegelt;
        const double m = fund.gespiegelt ? -1 : 1;
        const double grad = std::atan2(m * lage.yx, m * lage.xx) * 180 / std::numbers::pi;
        fund.winkel = grad < 0 ? grad + 360 : grad;
        fund.größe = lage.maßstab() * 2400 / dpi;
        fund.güte = g.lage.güte;
        fund.stand =
            Werkzeug::sicher(g) ? Flügelfund::Stand::Sicher : Flügelfund::Stand::Zweifelhaft;
        fund.vorschlag = g.vorschlag;
    }
    std::vector<QPointF> orte;
    double höhe = 0;
    for (const Flügelfund& f : funde) {
        orte.push_back(f.mitte);
        höhe += f.rahmen().height() / double(funde.size());
    }
    std::vector<Flügelfund> gereiht;
    gereiht.reserve(funde.size());
    for (int i : leserichtung(orte, höhe))
        gereiht.push_back(std::move(funde[std::size_t(i)]));
    verlauf.prozent = 100;
    return gereiht;
}

std::optional<int> Flügelerkennung::andereAuflösung(const Pixelquelle& quelle, double dpi,
                                                    Suchverlauf& verlauf, int fäden) const {
    struct Ergebnis {
        int dpi;
        float güte;
    };
    std::optional<Ergebnis> best;
    for (int versuch : {600, 1200, 2400, 4800, 300, 800, 1600, 3200}) {
        // What lies near the one that was set has been looked for with it.
        if (versuch > 0.85 * dpi && versuch < 1.2 * dpi)
            continue;
        if (verlauf.halt)
            return std::nullopt;
        const auto gefunden = werkzeug_->suche(quelle, versuch, verlauf, fäden);
        if (gefunden.empty() || gefunden[0].lage.güte < Sichergrenze)
            continue;
        // Nearest to the size of the mean wing.
        const double größe = std::abs(std::log(gefunden[0].lage.größe));
        const auto güte = gefunden[0].lage.güte - float(größe);
        if (!best || güte > best->güte)
            best = Ergebnis{versuch, güte};
        if (größe < 0.1)
            break;
    }
    return best ? std::optional(best->dpi) : std::nullopt;
}

std::vector<int> leserichtung(const std::vector<QPointF>& orte, double höhe) {
    std::vector<int> folge(orte.size());
    std::iota(folge.begin(), folge.end(), 0);
    const auto bei = [&](int i) { return orte[std::size_t(i)]; };
    std::stable_sort(folge.begin(), folge.end(),
                     [&](int a, int b) { return bei(a).y() < bei(b).y(); });
    for (auto von = folge.begin(); von != folge.end();) {
        double summe = bei(*von).y();
        auto bis = von + 1;
        // Against the mean of the row so far, so that a row that climbs stays one.
        while (bis != folge.end() && bei(*bis).y() - summe / double(bis - von) < höhe / 2)
            summe += bei(*bis++).y();
        std::stable_sort(von, bis, [&](int a, int b) { return bei(a).x() < bei(b).x(); });
        von = bis;
    }
    return folge;
}

} // namespace tarvel
