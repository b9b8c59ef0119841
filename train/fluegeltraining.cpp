// Learns the finder of wings from pictures with known points, and reports how good it is at wings
// of colonies that it was not learnt from.

#include "lernen.h"

#include "detect/bildpixel.h"
#include "detect/faeden.h"
#include "detect/fluegelerkennung.h"
#include "measure/indizes.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <set>

namespace {

using namespace tarvel;

QTextStream& aus() {
    static QTextStream strom(stdout);
    return strom;
}

void sage(const QString& text) {
    QTextStream(stderr) << text << Qt::endl;
}

Indizes indizes(const Punktsatz& punkte, double dpi) {
    Messpunkte p(Messart::AlleMessungen);
    for (int k = 0; k < 8; ++k)
        (void)p.setze(Messart::AlleMessungen, k + 1, float(punkte[std::size_t(k)].x()),
                      float(punkte[std::size_t(k)].y()));
    return berechneIndizes(p, Messart::AlleMessungen, {1, int(std::lround(dpi))});
}

/// Figures of many wings.
class Tafel {
public:
    /// @p faktor brings pixels to 2400 dpi.
    void nimm(const Flügelfund& fund, const Punktsatz& wahr, double faktor, double dpi,
              const std::array<bool, 8>& verdeckt = {}) {
        ++flügel_;
        for (std::size_t k = 0; k < 8; ++k) {
            const QPointF d = fund.vorschlag.punkte[k] - wahr[k];
            const double e = std::hypot(d.x(), d.y()) * faktor;
            if (!verdeckt[k])
                fehler_.push_back(e);
            const bool zweifel = fund.vorschlag.fehler[k] > Punktvorschlag::Zweifelhaft;
            ++punkte_;
            bezweifelt_ += zweifel;
            weit_ += e > 4;
            gewarnt_ += e > 4 && zweifel;
        }
        const Indizes v = indizes(fund.vorschlag.punkte, dpi);
        const Indizes w = indizes(wahr, dpi);
        if (v.CI && w.CI)
            ci_.push_back(double(*v.CI - *w.CI));
        if (v.HI && w.HI)
            hi_.push_back(double(*v.HI - *w.HI));
        if (v.DV && w.DV)
            dv_.push_back(double(*v.DV - *w.DV));
        schlechteste_ = std::min(schlechteste_, double(fund.güte));
    }
    void verfehlt() { ++verfehlt_; }

    void zeile(const QString& name) {
        std::sort(fehler_.begin(), fehler_.end());
        double summe = 0;
        for (double e : fehler_)
            summe += e;
        const auto n = fehler_.size();
        aus() << "| " << name << " | " << flügel_ << " | " << verfehlt_ << " | ";
        if (n)
            aus() << zahl(summe / double(n), 2) << " / " << zahl(fehler_[n * 95 / 100], 2) << " / "
                  << zahl(fehler_.back(), 2) << " | " << maß(ci_, 3) << " | " << maß(hi_, 4)
                  << " | " << maß(dv_, 3) << " | "
                  << zahl(100.0 * bezweifelt_ / std::max(1, punkte_), 1) << " % | " << gewarnt_
                  << " of " << weit_ << " | " << zahl(schlechteste_, 2) << " |";
        aus() << Qt::endl;
    }
    static void kopf() {
        aus() << "\n| set | wings | not found | mean / p95 / worst px | CI mean, sd | HI mean, sd "
                 "| DV "
                 "mean, sd | flagged | flagged of those off > 4 px | least score |\n"
                 "|---|---|---|---|---|---|---|---|---|---|\n";
    }

private:
    static QString zahl(double z, int stellen) { return QString::number(z, 'f', stellen); }
    static QString maß(const std::vector<double>& w, int stellen) {
        double s = 0;
        double q = 0;
        for (double e : w) {
            s += e;
            q += e * e;
        }
        const double n = double(std::max<std::size_t>(1, w.size()));
        return zahl(s / n, stellen) + QStringLiteral(", ") +
               zahl(std::sqrt(std::max(0.0, q / n - s / n * s / n)), stellen);
    }

    int flügel_ = 0, verfehlt_ = 0, punkte_ = 0, bezweifelt_ = 0, weit_ = 0, gewarnt_ = 0;
    double schlechteste_ = 1;
    std::vector<double> fehler_, ci_, hi_, dv_;
};

using Wahl = std::vector<const Übungsflügel*>;

/// The program as learnt, half precision and all.
std::shared_ptr<const Erkennungsmodell> wieGespeichert(const Erkennungsmodell& modell) {
    auto gelesen = liesErkennungsmodell(modell.alsDatei());
    if (auto* m = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&gelesen))
        return *m;
    qFatal("a model that was written cannot be read");
}

Mittelflügel mittelVon(const Wahl& wahl) {
    Wahl maßgebend;
    std::copy_if(wahl.begin(), wahl.end(), std::back_inserter(maßgebend),
                 [](const auto* f) { return f->dpi == 2400; });
    return mittle(maßgebend.empty() ? wahl : maßgebend);
}

/// Colonies that a model is not learnt from.
struct Falte {
    Wahl gelernt;
    Wahl draußen;
    std::shared_ptr<const Erkennungsmodell> modell;
    std::unique_ptr<Flügelerkennung> erkennung;
};

Graubild mitSaum(const Graubild& bild) {
    constexpr int Saum = 120;
    std::vector<std::uint8_t> werte = bild.werte;
    std::nth_element(werte.begin(), werte.begin() + std::ptrdiff_t(werte.size() * 9 / 10),
                     werte.end());
    Graubild weit(bild.breite + 2 * Saum, bild.höhe + 2 * Saum, werte[werte.size() * 9 / 10]);
    for (int y = 0; y < bild.höhe; ++y)
        std::copy_n(bild.zeile(y), bild.breite, weit.zeile(y + Saum) + Saum);
    return weit;
}

void wieSieSind(const std::vector<Falte>& falten) {
    Tafel eigene;
    Tafel fremde;
    for (const Falte& falte : falten)
        for (const Übungsflügel* f : falte.draußen) {
            const bool maßgebend = f->dpi == 2400;
            Tafel& tafel = maßgebend ? eigene : fremde;
            const Graubild bild = mitSaum(f->bild);
            Suchverlauf verlauf;
            const auto funde = falte.erkennung->finde(Grauquelle(bild), f->dpi, verlauf);
            Punktsatz wahr = f->punkte;
            for (QPointF& p : wahr)
                p += QPointF(120, 120);
            if (funde.size() != 1)
                tafel.verfehlt();
            else
                tafel.nimm(funde[0], wahr, maßgebend ? 1 : 1 / f->ausMittel.maßstab(),
                           maßgebend ? f->dpi : 2400 * f->ausMittel.maßstab());
        }
    eigene.zeile(QStringLiteral("as scanned, 2400 dpi"));
    fremde.zeile(QStringLiteral("as scanned, another scanner and race"));
}

void unterUmständen(const std::vector<Falte>& falten, const QString& name, const Aufnahmeart& art,
                    int jeFlügel, int fäden) {
    struct Aufgabe {
        const Falte* falte;
        const Übungsflügel* flügel;
        std::uint64_t saat;
        Flügelaufnahme aufnahme;
        std::vector<Flügelfund> funde;
    };
    std::vector<Aufgabe> aufgaben;
    std::uint64_t saat = 5;
    for (const Falte& falte : falten)
        for (const Übungsflügel* f : falte.draußen)
            if (f->dpi == 2400)
                for (int i = 0; i < jeFlügel; ++i)
                    aufgaben.push_back({&falte, f, ++saat, {}, {}});
    verteile(int(aufgaben.size()), fäden, [&](int i) {
        Aufgabe& a = aufgaben[std::size_t(i)];
        Zufall z(a.saat, 77);
        a.aufnahme = nimmAuf(*a.flügel, art, z);
        Suchverlauf verlauf;
        a.funde = a.falte->erkennung->finde(Grauquelle(a.aufnahme.bild), art.dpi, verlauf, 1);
    });
    Tafel tafel;
    for (const Aufgabe& a : aufgaben) {
        if (a.funde.empty()) {
            tafel.verfehlt();
            continue;
        }
        const auto& best =
            *std::max_element(a.funde.begin(), a.funde.end(),
                              [](const auto& x, const auto& y) { return x.güte < y.güte; });
        tafel.nimm(best, a.aufnahme.punkte, 2400 / art.dpi / art.größe, art.dpi * art.größe,
                   a.aufnahme.verdeckt);
    }
    tafel.zeile(name);
}

struct Blattsumme {
    int flügel = 0, gefunden = 0, falsch = 0;
};

void prüfeBlatt(const Flügelerkennung& erkennung, const Wahl& vorrat, const QString& name,
                const Blattart& art, std::uint64_t saat, int fäden, Blattsumme& summe) {
    Zufall z(saat, 9);
    const Kunstblatt blatt = legeBlatt(vorrat, art, z);
    const Bildpixel quelle(blatt.bild);
    Suchverlauf verlauf;
    const auto vorher = std::clock();
    QElapsedTimer uhr;
    uhr.start();
    const auto funde = erkennung.finde(quelle, art.dpi, verlauf, fäden);
    const auto dauer = uhr.elapsed();
    const auto rechenzeit = (std::clock() - vorher) * 1000 / CLOCKS_PER_SEC;
    std::set<std::size_t> benutzt;
    int gefunden = 0;
    int weit = 0, gewarnt = 0, bezweifelt = 0, sicher = 0;
    double fehler = 0;
    double schlechteste = 1;
    for (const auto& f : blatt.flügel) {
        double nächste = 1e9;
        std::size_t welcher = 0;
        for (std::size_t i = 0; i < funde.size(); ++i) {
            double e = 0;
            for (std::size_t k = 0; k < 8; ++k) {
                const QPointF d = funde[i].vorschlag.punkte[k] - f.punkte[k];
                e += std::hypot(d.x(), d.y()) / 8 * 2400 / art.dpi;
            }
            if (e < nächste) {
                nächste = e;
                welcher = i;
            }
        }
        if (nächste > 40) {
            sage(QStringLiteral("%1: %2 at %3, %4 is not found")
                     .arg(name, f.name)
                     .arg(f.mitte.x())
                     .arg(f.mitte.y()));
            continue;
        }
        ++gefunden;
        benutzt.insert(welcher);
        const Flügelfund& fund = funde[welcher];
        sicher += fund.stand == Flügelfund::Stand::Sicher;
        schlechteste = std::min(schlechteste, double(fund.güte));
        for (std::size_t k = 0; k < 8; ++k) {
            const QPointF d = fund.vorschlag.punkte[k] - f.punkte[k];
            const double e = std::hypot(d.x(), d.y()) * 2400 / art.dpi;
            fehler += e;
            const bool zweifel = fund.vorschlag.fehler[k] > Punktvorschlag::Zweifelhaft;
            bezweifelt += zweifel;
            weit += e > 4;
            gewarnt += e > 4 && zweifel;
        }
    }
    const int falsch = int(funde.size() - benutzt.size());
    summe.flügel += int(blatt.flügel.size());
    summe.gefunden += gefunden;
    summe.falsch += falsch;
    double falscheGüte = 0;
    for (std::size_t i = 0; i < funde.size(); ++i) {
        if (benutzt.contains(i))
            continue;
        sage(QStringLiteral("%1: nothing lies at %2, %3")
                 .arg(name)
                 .arg(funde[i].mitte.x())
                 .arg(funde[i].mitte.y()));
        falscheGüte = std::max(falscheGüte, double(funde[i].güte));
    }
    aus() << "| " << name << " | " << blatt.flügel.size() << " | " << gefunden << " | " << sicher
          << " | " << falsch
          << (falsch ? QStringLiteral(" (%1)").arg(falscheGüte, 0, 'f', 2) : QString()) << " | "
          << QString::number(fehler / std::max(1, 8 * gefunden), 'f', 2) << " | " << gewarnt
          << " of " << weit << " | "
          << QString::number(100.0 * bezweifelt / std::max(1, 8 * gefunden), 'f', 1) << " % | "
          << QString::number(schlechteste, 'f', 2) << " | " << rechenzeit << " ms, " << dauer
          << " ms |" << Qt::endl;
}

/// A finder and the wings that sheets are laid from.
struct Prüfstand {
    const Flügelerkennung* erkennung;
    Wahl vorrat;
};

/// Sheet by sheet with one after the other of @p stände.
void prüfeBlätter(std::vector<Prüfstand> stände, std::uint64_t saat, int fäden) {
    // Pictures of other resolutions show more than a wing.
    for (Prüfstand& stand : stände)
        std::erase_if(stand.vorrat, [](const auto* f) { return f->dpi != 2400; });
    std::erase_if(stände, [](const Prüfstand& stand) { return stand.vorrat.empty(); });
    aus() << "\n| sheet | wings | found | sure | false | mean px | flagged of those off > 4 px | "
             "flagged | "
             "least score | processors, clock |\n|---|---|---|---|---|---|---|---|---|---|\n";
    struct Fall {
        const char* name;
        Blattart art;
    };
    std::vector<Fall> fälle;
    const auto fall = [&](const char* name, auto&& ändere) {
        Blattart art;
        ändere(art);
        fälle.push_back({name, art});
    };
    fall("1200 dpi, any angle, mirrored", [](Blattart&) {});
    fall("close together", [](Blattart& a) { a.abstand = 0.4, a.anzahl = 30; });
    fall("touching", [](Blattart& a) { a.abstand = -0.25, a.anzahl = 36; });
    fall("600 dpi", [](Blattart& a) { a.dpi = 600; });
    fall("blur of 4 px", [](Blattart& a) { a.unschärfe = 4; });
    fall("dark", [](Blattart& a) { a.helligkeit = 0.55; });
    fall("colour cast", [](Blattart& a) { a.farbstich = true; });
    fall("JPEG 50", [](Blattart& a) { a.jpeg = 50; });
    fall("noise 10, much dust and hair",
         [](Blattart& a) { a.rauschen = 10, a.staub = 400, a.haare = 40; });
    fall("upright", [](Blattart& a) { a.schwankung = 6, a.spiegeln = false; });
    fall("2400 dpi", [](Blattart& a) { a.dpi = 2400, a.anzahl = 10, a.breite = 60, a.höhe = 50; });
    fall("clean, 1200 dpi", [](Blattart& a) {
        a.staub = a.haare = 0, a.schrift = a.klebeband = false, a.schwankung = 8;
    });
    fall("things that are no fore wing", [](Blattart& a) { a.anzahl = 10, a.fremde = 14; });
    fall("A4, 60 wings, 1200 dpi", [](Blattart& a) {
        a.anzahl = 60, a.breite = 210, a.höhe = 297, a.abstand = 2, a.staub = 500, a.haare = 40;
    });
    Blattsumme summe;
    for (std::size_t i = 0; i < fälle.size(); ++i) {
        const Prüfstand& stand = stände[i % stände.size()];
        prüfeBlatt(*stand.erkennung, stand.vorrat, QString::fromLatin1(fälle[i].name), fälle[i].art,
                   ++saat, fäden, summe);
    }
    aus() << "\nAll sheets: " << summe.gefunden << " of " << summe.flügel << " wings found, "
          << summe.falsch << " false." << Qt::endl;
}

void prüfeUmstände(const std::vector<Falte>& falten, int jeFlügel, int fäden) {
    Tafel::kopf();
    wieSieSind(falten);
    const auto fall = [&](const char* name, auto&& ändere) {
        Aufnahmeart art;
        ändere(art);
        unterUmständen(falten, QString::fromLatin1(name), art, jeFlügel, fäden);
    };
    fall("any angle, mirrored, 2400 dpi", [](Aufnahmeart&) {});
    fall("1200 dpi", [](Aufnahmeart& a) { a.dpi = 1200; });
    fall("600 dpi", [](Aufnahmeart& a) { a.dpi = 600; });
    fall("blur of 6 px", [](Aufnahmeart& a) { a.unschärfe = 6; });
    fall("a quarter of the contrast", [](Aufnahmeart& a) { a.kontrast = 0.25, a.rauschen = 5; });
    fall("gamma 2.2", [](Aufnahmeart& a) { a.gamma = 2.2; });
    fall("1200 dpi, JPEG 30", [](Aufnahmeart& a) { a.dpi = 1200, a.jpeg = 30; });
    fall("noise 15", [](Aufnahmeart& a) { a.rauschen = 15; });
    fall("dust", [](Aufnahmeart& a) { a.staub = 80; });
    fall("10 % smaller", [](Aufnahmeart& a) { a.größe = 0.9; });
    fall("12 % larger", [](Aufnahmeart& a) { a.größe = 1.12; });
    fall("spots over two points", [](Aufnahmeart& a) { a.verdeckt = 2; });
    fall("a hair across a point", [](Aufnahmeart& a) { a.haare = 1; });
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    QImageReader::setAllocationLimit(0);
    QCommandLineParser leser;
    leser.setApplicationDescription(QStringLiteral(
        "Learns the finder of wings from the pictures and landmarks.csv of a folder."));
    leser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("pictures and points"));
    leser.addOptions(
        {{QStringLiteral("out"), QStringLiteral("Write the model there."), QStringLiteral("file")},
         {QStringLiteral("model"), QStringLiteral("Check this model's sheets instead of learning."),
          QStringLiteral("file")},
         {QStringLiteral("crops"), QStringLiteral("Crops to learn from."), QStringLiteral("n"),
          QStringLiteral("8500")},
         {QStringLiteral("each"), QStringLiteral("Pictures of each wing to check."),
          QStringLiteral("n"), QStringLiteral("3")},
         {QStringLiteral("groups"),
          QStringLiteral("Groups of colonies that are left out in turn; each colony by itself "
                         "without it."),
          QStringLiteral("n"), QStringLiteral("0")},
         {QStringLiteral("threads"), QStringLiteral("Threads."), QStringLiteral("n"),
          QStringLiteral("2")},
         {QStringLiteral("sheets-seed"), QStringLiteral("Seed of the sheets."), QStringLiteral("n"),
          QStringLiteral("500")},
         {QStringLiteral("no-check"),
          QStringLiteral("Learn only the errors' folds, report nothing.")}});
    leser.addHelpOption();
    leser.process(app);
    if (leser.positionalArguments().size() != 1)
        leser.showHelp(2);

    QString grund;
    auto flügel = liesÜbungsflügel(leser.positionalArguments().first(), grund);
    if (!flügel) {
        sage(grund);
        return 1;
    }
    Wahl alle;
    for (const auto& f : *flügel)
        alle.push_back(&f);
    const Mittelflügel mittel = mittelVon(alle);
    richteAus(*flügel, mittel);
    Lernumfang umfang;
    umfang.ausschnitte = leser.value(QStringLiteral("crops")).toInt();
    umfang.fäden = leser.value(QStringLiteral("threads")).toInt();
    const auto saat = leser.value(QStringLiteral("sheets-seed")).toULongLong();

    if (leser.isSet(QStringLiteral("model"))) {
        QFile datei(leser.value(QStringLiteral("model")));
        if (!datei.open(QIODevice::ReadOnly))
            return sage(datei.errorString()), 1;
        auto gelesen = liesErkennungsmodell(datei.readAll());
        auto* modell = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&gelesen);
        if (!modell)
            return sage(QStringLiteral("no model")), 1;
        const Flügelerkennung erkennung(*modell);
        prüfeBlätter({{&erkennung, alle}}, saat, umfang.fäden);
        return 0;
    }

    std::vector<QString> völker;
    for (const auto* f : alle)
        if (std::find(völker.begin(), völker.end(), f->volk) == völker.end())
            völker.push_back(f->volk);
    const auto gruppen = leser.value(QStringLiteral("groups")).toULongLong();
    const std::size_t Faltenzahl =
        gruppen ? std::min<std::size_t>(gruppen, völker.size()) : völker.size();
    std::vector<Falte> falten(Faltenzahl);
    std::vector<Vorschlagsprobe> proben;
    for (std::size_t i = 0; i < Faltenzahl; ++i) {
        Falte& falte = falten[i];
        for (const auto* f : alle) {
            const auto volk =
                std::size_t(std::find(völker.begin(), völker.end(), f->volk) - völker.begin());
            (volk * Faltenzahl / völker.size() == i ? falte.draußen : falte.gelernt).push_back(f);
        }
        sage(QStringLiteral("group %1: learning from %2 wings, leaving out %3")
                 .arg(i + 1)
                 .arg(falte.gelernt.size())
                 .arg(falte.draußen.size()));
        Lernumfang kleiner = umfang;
        kleiner.ausschnitte = umfang.ausschnitte * 6 / 10;
        const Mittelflügel m = mittelVon(falte.gelernt);
        // Wings are cut out by the mean of those learnt from.
        richteAus(*flügel, m);
        falte.modell =
            std::make_shared<Erkennungsmodell>(lerneKaskade(falte.gelernt, m, kleiner, sage));
        Zufall zufall(11, i);
        Wahl draußen;
        std::copy_if(falte.draußen.begin(), falte.draußen.end(), std::back_inserter(draußen),
                     [](const auto* f) { return f->dpi == 2400; });
        const auto neue = probiere(*falte.modell, draußen, umfang, zufall);
        proben.insert(proben.end(), neue.begin(), neue.end());
    }
    richteAus(*flügel, mittel);
    sage(QStringLiteral("learning from all"));
    Erkennungsmodell modell = lerneKaskade(alle, mittel, umfang, sage);
    lerneFehler(modell.fehler, proben);
    modell.herkunft = QStringLiteral("%1 wings of %2 colonies").arg(alle.size()).arg(völker.size());
    if (leser.isSet(QStringLiteral("out"))) {
        QFile datei(leser.value(QStringLiteral("out")));
        if (!datei.open(QIODevice::WriteOnly) || datei.write(modell.alsDatei()) < 0)
            return sage(datei.errorString()), 1;
        sage(QStringLiteral("%1: %2 bytes").arg(datei.fileName()).arg(datei.size()));
    }
    if (leser.isSet(QStringLiteral("no-check")))
        return 0;
    for (Falte& falte : falten) {
        auto m = *falte.modell;
        const auto räume = m.fehler.räume;
        m.fehler = modell.fehler;
        m.fehler.räume = räume;
        falte.modell = wieGespeichert(m);
        falte.erkennung = std::make_unique<Flügelerkennung>(falte.modell);
    }
    prüfeUmstände(falten, leser.value(QStringLiteral("each")).toInt(), umfang.fäden);
    std::vector<Prüfstand> stände;
    for (const Falte& falte : falten)
        stände.push_back({falte.erkennung.get(), falte.draußen});
    prüfeBlätter(std::move(stände), saat, umfang.fäden);
    return 0;
}
