#include "print/serie.h"

#include "measure/indexmuster.h"

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using namespace satzspiegel;
using Grad = Protokollgrad;

// Millimetres.
constexpr double Listenbeginn = 20;
/// Number, queen, colony, race, wings, CI, HI, DV, verdict.
constexpr std::array Spalten{24.0, 30.0, 32.0, 22.0, 8.0, 12.0, 13.0, 11.0, 18.0};
constexpr double Linienbreite = 0.12;

using Zellen = std::array<QString, Spalten.size()>;

template <typename Kennzahl>
QString mittel(const Kennzahl& kennzahlen, QStringView muster, const Zahlenformat& format) {
    return kennzahlen ? Format(kennzahlen->mittelwert, muster, format) : QString();
}

class Übersichtssetzer {
public:
    Übersichtssetzer(const Protokolleinstellungen& aussehen, QString titel, QString zahlen,
                     QString erklärung, Zellen kopf)
        : satz_(aussehen.SchriftArt, aussehen.SchriftKursiv)
        , titel_(std::move(titel))
        , zahlen_(std::move(zahlen))
        , erklärung_(std::move(erklärung))
        , kopf_(std::move(kopf)) {}

    void zeile(const Zellen& zellen) {
        if (seiten_.empty() || y_ + zeilenhöhe() > Unten) {
            beginneSeite();
        }
        setze(zellen);
    }

    [[nodiscard]] std::vector<Protokollseite> seiten() && { return std::move(seiten_); }

private:
    static double zeilenhöhe() { return Protokollsatz::zeilenhöhe(Grad::Klein) + 2 * Zellenluft; }

    void beginneSeite() {
        seiten_.emplace_back();
        y_ = Listenbeginn;
        schreibe(Links, titel_, Grad::Titel, Breite);
        y_ += Protokollsatz::zeilenhöhe(Grad::Titel) + Zellenluft;
        schreibe(Links, zahlen_, Grad::Text, Breite);
        y_ += Protokollsatz::zeilenhöhe(Grad::Text) + Zellenluft;
        if (!erklärung_.isEmpty()) {
            schreibe(Links, erklärung_, Grad::Klein, Breite);
            y_ += Protokollsatz::zeilenhöhe(Grad::Klein);
        }
        y_ += 3 * Zellenluft;
        setze(kopf_);
    }

    void setze(const Zellen& zellen) {
        double x = Links;
        for (std::size_t i = 0; i < zellen.size(); ++i) {
            y_ += Zellenluft;
            schreibe(x, zellen[i], Grad::Klein, Spalten[i] - 2 * Zellenluft);
            y_ -= Zellenluft;
            x += Spalten[i];
        }
        y_ += zeilenhöhe();
        seiten_.back().linien.push_back({{Links, y_, x, y_}, Linienbreite});
    }

    void schreibe(double x, const QString& text, Grad grad, double breite) {
        const QString passend = satz_.umbrochen(text, grad, false, breite, 1).constFirst();
        const QSizeF größe(satz_.breite(passend, grad, false), Protokollsatz::zeilenhöhe(grad));
        seiten_.back().texte.push_back({QRectF(QPointF(x, y_), größe), passend, grad});
    }

    Protokollsatz satz_;
    QString titel_;
    QString zahlen_;
    QString erklärung_;
    Zellen kopf_;
    std::vector<Protokollseite> seiten_;
    double y_ = 0;
};

QString urteilswort(std::optional<bool> entspricht, const Texte& t) {
    return !entspricht ? t(Meldung::NichtBeurteilt) : t(*entspricht ? Text::Ja : Text::Nein);
}

} // namespace

Serienzeile serienzeile(const Protokolldaten& d) {
    const Zahlenformat& format = d.kurven.format;
    const auto& ci = d.kurven.CI.kennzahlen;
    return {.nummer = d.nummer,
            .königin = d.königin[0].wert,
            .volk = d.volk[0].wert,
            .rasse = d.volk[2].wert + (d.drohnen.isEmpty() ? QString() : u", "_s + d.drohnen),
            .flügel = ci ? QString::number(ci->anzahl) : QString(),
            .CI = mittel(ci, muster::CI, format),
            .HI = mittel(d.korrel.HI, muster::HI, format),
            .DV = mittel(d.korrel.DV, muster::DV, format),
            .entspricht = d.entspricht,
            .vorläufig = d.vorläufig};
}

std::vector<Protokollseite> serienübersicht(const std::vector<Serienzeile>& zeilen, const Texte& t,
                                            const Protokolleinstellungen& aussehen) {
    const auto zahl = [&zeilen](std::optional<bool> urteil) {
        return QString::number(
            std::count_if(zeilen.begin(), zeilen.end(), [urteil](const Serienzeile& zeile) {
                return zeile.entspricht == urteil;
            }));
    };
    const bool vorläufig =
        std::any_of(zeilen.begin(), zeilen.end(), [](const Serienzeile& z) { return z.vorläufig; });
    Übersichtssetzer setzer(
        aussehen, t(Meldung::SerieTitel),
        t(Meldung::SerieZahlen)
            .arg(QString::number(zeilen.size()), zahl(true), zahl(false), zahl(std::nullopt)),
        vorläufig ? t(Meldung::SerieVorläufig) : QString(),
        {t(Text::UntersuchungNr), t(Text::Zuchtbuch), t(Text::Volk), t(Text::Rasse), u"n"_s,
         t(Text::CI), t(Text::HI), t(Text::DV), t(Text::Beurteilung)});
    for (const Serienzeile& z : zeilen) {
        setzer.zeile({z.nummer, z.königin, z.volk, z.rasse, z.flügel, z.CI, z.HI, z.DV,
                      urteilswort(z.entspricht, t) + (z.vorläufig ? u"*"_s : QString())});
    }
    return std::move(setzer).seiten();
}

} // namespace tarvel
