#include "measure/fluegelfunde.h"

#include "detect/bildpixel.h"
#include "measure/aufloesung.h"
#include "measure/fluegelort.h"

#include <QEvent>
#include <QLineF>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <new>
#include <utility>

namespace tarvel {

namespace {

constexpr int Fäden = 2;
constexpr int Takt = 150; // milliseconds from one look at the progress to the next
/// Decoding is about this share of the work, in percent.
constexpr int AnteilPixel = 40;

/// Zoomed pixels name their corner, as those under a pointer do; a proposal is a place.
constexpr double Ecke = 0.5;
/// Two places of a point that are the same one, in pixels of the picture: stored points are
/// rounded.
constexpr double Rundung = 0.1;

/// The usual resolution that fits wings found at @p dpi, when they are much larger or smaller than
/// usual there.
std::optional<int> auflösungNachGröße(const std::vector<Flügelfund>& funde, int dpi) {
    constexpr double Spielraum = 0.1;
    constexpr std::array Übliche{300, 400, 600, 800, 1200, 1600, 2400, 3200, 4800};
    std::vector<double> größen;
    größen.reserve(funde.size());
    for (const Flügelfund& f : funde) {
        if (f.stand == Flügelfund::Stand::Sicher) {
            größen.push_back(f.größe);
        }
    }
    if (größen.empty()) {
        return std::nullopt;
    }
    const auto mitte = größen.begin() + std::ssize(größen) / 2;
    std::nth_element(größen.begin(), mitte, größen.end());
    const double größe = *mitte;
    if (std::abs(größe - 1) <= Spielraum) {
        return std::nullopt;
    }
    const auto abweichung = [&](int anderes) { return std::abs(std::log(dpi * größe / anderes)); };
    const int beste = *std::min_element(Übliche.begin(), Übliche.end(), [&](int a, int b) {
        return abweichung(a) < abweichung(b);
    });
    return abweichung(beste) < abweichung(dpi) ? std::optional(beste) : std::nullopt;
}

} // namespace

/// What all searches share. Only the other thread looks into it.
struct Flügelfunde::Werkbank {
    Modellquelle quelle;
    std::optional<Modellfehler> fehler;
    std::unique_ptr<Flügelerkennung> erkennung;

    void richteEin() {
        if (erkennung || fehler) {
            return;
        }
        const Modellergebnis ergebnis = quelle();
        if (const auto* warum = std::get_if<Modellfehler>(&ergebnis)) {
            fehler = *warum;
        } else {
            erkennung = std::make_unique<Flügelerkennung>(
                std::get<std::shared_ptr<const Erkennungsmodell>>(ergebnis));
        }
    }
};

/// One search, and what came of it. Lives as long as either thread needs it.
struct Flügelfunde::Auftrag {
    Suchziel ziel;
    Suchverlauf verlauf;

    std::optional<Modellfehler> modellfehler;
    bool gelesen = false;
    std::vector<Flügelfund> funde;
    std::optional<int> passend;

    void erledige(Werkbank& werkbank) {
        werkbank.richteEin();
        modellfehler = werkbank.fehler;
        if (modellfehler || verlauf.halt) {
            return;
        }
        const QImage pixel = ziel.ladung->hole(
            nullptr, [this](qint64, qint64) { return !verlauf.halt; }, false);
        gelesen = !pixel.isNull();
        if (!gelesen || verlauf.halt) {
            return;
        }
        const Bildpixel quelle(pixel);
        funde = werkbank.erkennung->finde(quelle, ziel.dpi, verlauf, Fäden);
        passend = funde.empty()
                      ? werkbank.erkennung->andereAuflösung(quelle, ziel.dpi, verlauf, Fäden)
                      : auflösungNachGröße(funde, ziel.dpi);
    }
};

QRectF punktfeld(const Messpunkte& punkte) {
    QPolygonF orte;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (punkte.gemessen(i)) {
            const auto stelle = static_cast<std::size_t>(i);
            orte << QPointF(punkte.PunktX.at(stelle), punkte.PunktY.at(stelle));
        }
    }
    return orte.boundingRect();
}

Flügelfunde::Flügelfunde(Modellquelle quelle, const OffenesBild& offen, const Messbefehle& befehle)
    : quelle_(std::move(quelle))
    , offen_(offen)
    , messung_(befehle.messung())
    , reihe_(befehle.reihe())
    , takt_(this)
    , werkbank_(std::make_shared<Werkbank>()) {
    werkbank_->quelle = quelle_;
    faden_.setMaxThreadCount(1);
    takt_.setInterval(Takt);
    connect(&takt_, &QTimer::timeout, this, [this] { geändert_(false); });
}

Flügelfunde::~Flügelfunde() {
    if (auftrag_) {
        auftrag_->verlauf.halt = true;
    }
    faden_.waitForDone(); // it reports to this object
}

void Flügelfunde::beobachte(QWidget& ansicht) {
    ansichten_.emplace_back(&ansicht);
    ansicht.installEventFilter(this);
}

bool Flügelfunde::eventFilter(QObject* watched, QEvent* event) {
    if (fällig_ && event->type() == QEvent::Paint) {
        // Not in the round of events that brings the picture to the screen.
        QTimer::singleShot(0, this, [this] { beginne(); });
    }
    return QObject::eventFilter(watched, event);
}

int Flügelfunde::prozent() const {
    return auftrag_ ? (AnteilPixel * auftrag_->ziel.ladung->prozent() +
                       (100 - AnteilPixel) * auftrag_->verlauf.prozent) /
                          100
                    : 100;
}

/// The resolution of the picture that is open; a wing that is repeated on it may have another.
Flügelfunde::Suchziel Flügelfunde::ziel() const {
    const auto& wiederholung = messung_.stand().wiederholung;
    const bool sonst = wiederholung && wiederholung->bilddatei == offen_.pfad();
    return {offen_.ladung(), sonst ? wiederholung->aufnahme.dpi : messung_.aufnahme().dpi};
}

void Flügelfunde::folge() {
    if (!brauchbar()) {
        return;
    }
    if (ziel() != ziel_) {
        suche();
    } else {
        nummeriere();
    }
}

void Flügelfunde::suche() {
    if (!brauchbar()) {
        return;
    }
    const bool leer = funde_.empty() && stand_ == Stand::Ohne;
    vergiss();
    ziel_ = ziel();
    fällig_ = ziel_.ladung != nullptr;
    for (const QPointer<QWidget>& ansicht : ansichten_) {
        if (fällig_ && ansicht) {
            ansicht->update();
        }
    }
    if (!leer) {
        geändert_(true);
    }
}

void Flügelfunde::vergiss() {
    if (auftrag_) {
        auftrag_->verlauf.halt = true;
        auftrag_.reset();
    }
    takt_.stop();
    fällig_ = false;
    stand_ = Stand::Ohne;
    funde_.clear();
    nummeriere();
    passend_.reset();
}

void Flügelfunde::halte() {
    if (stand_ == Stand::Sucht) {
        vergiss();
        stand_ = Stand::Angehalten;
        geändert_(true);
    }
}

void Flügelfunde::beginne() {
    if (!std::exchange(fällig_, false)) {
        return; // painted more than once
    }
    if (!ziel_.ladung || ziel_ != ziel() || auftrag_) {
        return;
    }
    auftrag_ = std::make_shared<Auftrag>();
    auftrag_->ziel = ziel_;
    stand_ = Stand::Sucht;
    faden_.start([this, auftrag = auftrag_, werkbank = werkbank_] {
        try {
            auftrag->erledige(*werkbank);
        } catch (const std::bad_alloc&) {
            auftrag->gelesen = false; // not searched is not "none found"
            auftrag->funde.clear();
        }
        QMetaObject::invokeMethod(
            this, [this, auftrag] { nimm(auftrag); }, Qt::QueuedConnection);
    });
    takt_.start();
    geändert_(false);
}

void Flügelfunde::sucheAuf(std::vector<Nebenbild> bilder, std::shared_ptr<Suchverlauf> verlauf,
                           std::function<void(const Nebenfunde&)> fertig) {
    if (!brauchbar()) {
        fertig(Nebenfunde(bilder.size()));
        return;
    }
    faden_.start([this, bilder = std::move(bilder), verlauf = std::move(verlauf),
                  fertig = std::move(fertig), werkbank = werkbank_] {
        Nebenfunde funde(bilder.size());
        try {
            werkbank->richteEin();
            for (std::size_t i = 0; werkbank->erkennung && i < bilder.size(); ++i) {
                funde[i] = werkbank->erkennung->finde(Bildpixel(bilder[i].pixel), bilder[i].dpi,
                                                      *verlauf, Fäden);
            }
        } catch (const std::bad_alloc&) {
            funde.assign(bilder.size(), {});
        }
        QMetaObject::invokeMethod(
            this,
            [verlauf, fertig, funde = std::move(funde)] {
                if (!verlauf->halt) {
                    fertig(funde);
                }
            },
            Qt::QueuedConnection);
    });
}

void Flügelfunde::nimm(const std::shared_ptr<Auftrag>& auftrag) {
    if (auftrag != auftrag_) {
        return; // stopped, or of another picture
    }
    auftrag_.reset();
    takt_.stop();
    modellfehler_ = auftrag->modellfehler;
    stand_ = modellfehler_ ? Stand::Unbrauchbar : auftrag->gelesen ? Stand::Fertig : Stand::Ohne;
    funde_ = std::move(auftrag->funde);
    passend_ = auftrag->passend;
    nummeriere();
    geändert_(true);
}

void Flügelfunde::nummeriere() {
    gemessen_.assign(funde_.size(), 0);
    nummern_.assign(funde_.size(), 0);
    int nächste = messung_.wiederholt() ? reihe_.nächsteNummer() : messung_.nummer();
    for (std::size_t i = 0; i < funde_.size(); ++i) {
        gemessen_[i] =
            gemessenerFlügel(reihe_, offen_.pfad(), messung_.bild(), funde_[i].vorschlag.punkte);
    }
    // From the one on that is being measured, or shows by itself after the last one that was.
    const std::optional<std::size_t> letzter = gemessener(reihe_.letzteNummer());
    const std::size_t erster = begonnener().value_or(letzter ? *letzter + 1 : 0);
    for (std::size_t n = 0; n < funde_.size(); ++n) {
        const std::size_t i = (erster + n) % funde_.size();
        if (gemessen_[i] == 0) {
            nummern_[i] = nächste <= Messreihe::HöchsteFlügelzahl ? nächste++ : -1;
        }
    }
}

std::optional<std::size_t> Flügelfunde::begonnener() const {
    const Messpunkte& punkte = messung_.punkte();
    return punkte.begonnen() && !messung_.wiederholt() ? an(punktfeld(punkte).center() / zoom())
                                                       : std::nullopt;
}

int Flügelfunde::offene() const {
    return static_cast<int>(
        std::count_if(nummern_.begin(), nummern_.end(), [](int n) { return n != 0; }));
}

std::vector<Fundrahmen> Flügelfunde::rahmen() const {
    std::vector<Fundrahmen> alle;
    for (std::size_t i = 0; i < funde_.size(); ++i) {
        if (nummern_[i] != 0) {
            const Flügelfund& fund = funde_[i];
            alle.push_back(
                {.umriss = QPolygonF(QList<QPointF>(fund.umriss.begin(), fund.umriss.end())),
                 .nummer = nummern_[i] > 0 ? dreistellig(nummern_[i]) : QString(),
                 .zweifelhaft = fund.stand == Flügelfund::Stand::Zweifelhaft});
        }
    }
    return alle;
}

std::optional<std::size_t> Flügelfunde::nächster(QPointF ort, int richtung,
                                                 bool nurMitNummer) const {
    if (funde_.empty()) {
        return std::nullopt;
    }
    const auto abstand = [&](const Flügelfund& f) { return QLineF(f.mitte, ort).length(); };
    const auto hier = std::min_element(
        funde_.begin(), funde_.end(),
        [&](const Flügelfund& a, const Flügelfund& b) { return abstand(a) < abstand(b); });
    const auto anzahl = static_cast<int>(funde_.size());
    const int von = static_cast<int>(hier - funde_.begin());
    for (int schritt = 1; schritt <= anzahl; ++schritt) {
        const auto i =
            static_cast<std::size_t>(((von + richtung * schritt) % anzahl + anzahl) % anzahl);
        if (nurMitNummer ? nummern_[i] > 0 : nummern_[i] != 0) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Flügelfunde::nächsterBei(QPointF ort) const {
    std::optional<std::size_t> bester;
    for (std::size_t i = 0; i < funde_.size(); ++i) {
        if (gemessen_[i] == 0 && (!bester || QLineF(funde_[i].mitte, ort).length() <
                                                 QLineF(funde_[*bester].mitte, ort).length())) {
            bester = i;
        }
    }
    return bester;
}

std::optional<std::size_t> Flügelfunde::an(QPointF ort) const {
    const std::optional<std::size_t> bester = nächsterBei(ort);
    return bester && funde_[*bester].rahmen().contains(ort) ? bester : std::nullopt;
}

std::optional<std::size_t> Flügelfunde::gemessener(int nummer) const {
    const auto stelle = std::find(gemessen_.begin(), gemessen_.end(), nummer);
    return nummer == 0 || stelle == gemessen_.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(stelle - gemessen_.begin()));
}

std::optional<QPointF> Flügelfunde::punktBei(int nummer, QPointF ort, double weite) const {
    for (const Flügelfund& fund : funde_) {
        const QPointF punkt = fund.vorschlag.punkte[static_cast<std::size_t>(nummer - 1)];
        if (QLineF(punkt, ort).length() <= weite) {
            return punkt;
        }
    }
    return std::nullopt;
}

Flügelfunde::Ort Flügelfunde::ort(const Flügelfund& fund, int nummer) const {
    const auto k = static_cast<std::size_t>(nummer - 1);
    const QPointF genau = fund.vorschlag.punkte[k] * zoom() - QPointF(Ecke, Ecke);
    const QSizeF größe = QSizeF(offen_.größe()) * zoom();
    const QPointF imBild(std::clamp(genau.x(), 0.0, std::max(0.0, größe.width() - 1)),
                         std::clamp(genau.y(), 0.0, std::max(0.0, größe.height() - 1)));
    // Beside the picture there is nothing that the point could lie on.
    return {imBild, imBild != genau || fund.vorschlag.fehler[k] > Punktvorschlag::Zweifelhaft};
}

Messpunkte Flügelfunde::vorschlag(std::size_t fund) const {
    std::array<float, Messpunkte::Anzahl + 1> x{};
    std::array<float, Messpunkte::Anzahl + 1> y{};
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const QPointF imBild = ort(funde_[fund], i).imBild;
        x.at(i) = static_cast<float>(imBild.x());
        y.at(i) = static_cast<float>(imBild.y());
    }
    Messpunkte punkte(messung_.messart());
    punkte.schlageVor(messung_.messart(), x, y);
    if (const std::vector<int> zweifel = fragliche(punkte); !zweifel.empty()) {
        punkte.wähle(messung_.messart(), zweifel.front());
    }
    return punkte;
}

std::vector<int> Flügelfunde::fragliche(const Messpunkte& punkte) const {
    std::vector<int> nummern;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (!punkte.gemessen(i) || punkte.Herkunft.at(i) != Punktherkunft::Vorgeschlagen) {
            continue;
        }
        if (fraglich(i, {punkte.PunktX.at(i), punkte.PunktY.at(i)})) {
            nummern.push_back(i);
        }
    }
    return nummern;
}

bool Flügelfunde::fraglich(int nummer, QPointF imBild) const {
    bool bekannt = false;
    for (const Flügelfund& fund : funde_) {
        const Ort seiner = ort(fund, nummer);
        if (QLineF(seiner.imBild, imBild).length() < Rundung * zoom()) {
            if (seiner.fraglich) {
                return true;
            }
            bekannt = true;
        }
    }
    // Those of a wing of the series were checked; a search that goes on may still say it.
    return !bekannt && !messung_.wiederholt() && stand_ != Stand::Ohne && stand_ != Stand::Sucht;
}

} // namespace tarvel
