#include "musterblatt.h"

#include "measure/fluegelzeichnung.h"

#include <QLineF>
#include <QPainter>
#include <QRandomGenerator>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tarvel {

namespace {

constexpr double MillimeterJeZoll = 25.4;
constexpr QSizeF Platz(10.8, 4.4); ///< what one wing takes up, millimetres
constexpr double Randbreite = 0.4;
constexpr double HöchsteDrehung = 4;
constexpr double HöchsteLänge = 2000;
constexpr int HöchsteFlügelzahl = 10000;
constexpr double HöchstePixelzahl = 4e8;

struct Raster {
    int spalten = 0;
    int zeilen = 0;
    QSizeF blatt;
};

/// Where the wings stand; no columns when they do not fit.
Raster raster(const Musterblattwahl& wahl) {
    Raster r;
    r.spalten = wahl.spalten;
    if (r.spalten <= 0) {
        r.spalten = wahl.blatt.isEmpty()
                        ? std::max(1, static_cast<int>(std::sqrt(wahl.flügel * 0.6)))
                        : static_cast<int>((wahl.blatt.width() - 2 * Randbreite) / Platz.width());
    }
    if (r.spalten == 0) {
        return {};
    }
    r.spalten = std::min(r.spalten, wahl.flügel);
    r.zeilen = (wahl.flügel + r.spalten - 1) / r.spalten;
    const QSizeF nötig(r.spalten * Platz.width() + 2 * Randbreite,
                       r.zeilen * Platz.height() + 2 * Randbreite);
    r.blatt = wahl.blatt.isEmpty() ? nötig : wahl.blatt;
    if (nötig.width() > r.blatt.width() || nötig.height() > r.blatt.height()) {
        return {};
    }
    return r;
}

/// A fast generator (xorshift64*): one number makes the noise of eight pixels.
class Schnellzufall {
public:
    explicit Schnellzufall(quint64 saat)
        : zustand_(saat * 0x9e3779b97f4a7c15U | 1U) {}

    quint64 operator()() {
        zustand_ ^= zustand_ >> 12U;
        zustand_ ^= zustand_ << 25U;
        zustand_ ^= zustand_ >> 27U;
        return zustand_ * 0x2545f4914f6cdd1dU;
    }

private:
    quint64 zustand_;
};

/// Noise for one byte of chance: the normal distribution cut into 256 equally likely steps, in
/// sixteenths of a grey level.
std::array<int, 256> rauschtafel(double abweichung) {
    // Sum of the binomial distribution of 64 throws, whose standard deviation is 4.
    std::array<int, 256> tafel{};
    double wahrscheinlichkeit = std::pow(0.5, 64);
    double summe = 0;
    std::size_t stelle = 0;
    for (int treffer = 0; treffer <= 64; ++treffer) {
        summe += wahrscheinlichkeit;
        while (stelle < tafel.size() && (static_cast<double>(stelle) + 0.5) / 256 < summe) {
            tafel[stelle] = static_cast<int>(std::lround((treffer - 32) / 4.0 * abweichung * 16));
            ++stelle;
        }
        wahrscheinlichkeit = wahrscheinlichkeit * (64 - treffer) / (treffer + 1);
    }
    while (stelle < tafel.size()) {
        tafel[stelle++] = static_cast<int>(std::lround(2.5 * abweichung * 16));
    }
    return tafel;
}

/// Optics: every line spreads into its neighbours (1-2-1 in both directions). Four equal bytes a
/// pixel, premultiplied, so all of them may be treated alike.
void zeichneWeich(QImage& bild) {
    const int breite = bild.width();
    const int höhe = bild.height();
    std::vector<uchar> vorige(static_cast<std::size_t>(bild.bytesPerLine()));
    std::vector<uchar> diese(vorige.size());
    for (int y = 0; y < höhe; ++y) {
        uchar* zeile = bild.scanLine(y);
        uchar links[4];
        std::copy_n(zeile, 4, links);
        for (int i = 0; i < 4 * breite; ++i) {
            const uchar mitte = zeile[i];
            const int rechts = i + 4 < 4 * breite ? zeile[i + 4] : mitte;
            zeile[i] = static_cast<uchar>((links[i % 4] + 2 * mitte + rechts + 2) / 4);
            links[i % 4] = mitte;
        }
    }
    std::copy_n(bild.constScanLine(0), vorige.size(), vorige.begin());
    for (int y = 0; y + 1 < höhe; ++y) {
        uchar* zeile = bild.scanLine(y);
        const uchar* nächste = bild.constScanLine(y + 1);
        std::copy_n(zeile, diese.size(), diese.begin());
        for (std::size_t i = 0; i < diese.size(); ++i) {
            zeile[i] = static_cast<uchar>((vorige[i] + 2 * diese[i] + nächste[i] + 2) / 4);
        }
        vorige.swap(diese);
    }
}

/// Ground, noise and the lamp's fall of brightness towards the sides, added to what is painted.
void verrausche(QImage& bild, const Musterblattwahl& wahl) {
    const std::array<int, 256> tafel = rauschtafel(wahl.rauschen);
    Schnellzufall zufall(wahl.saat);
    const int breite = bild.width();
    std::vector<int> lampe(static_cast<std::size_t>(breite));
    for (int x = 0; x < breite; ++x) {
        const double weit = 2.0 * x / breite - 1;
        lampe[static_cast<std::size_t>(x)] = static_cast<int>(-40 * weit * weit) + 8;
    }
    const auto heller = [](int wert, int sechzehntel) {
        return static_cast<uchar>(std::clamp(wert + (sechzehntel >> 4), 0, 255));
    };
    quint64 vorrat = 0;
    int übrig = 0;
    const auto nächstes = [&]() {
        if (übrig == 0) {
            vorrat = zufall();
            übrig = 8;
        }
        const int wert = tafel[vorrat & 255U];
        vorrat >>= 8U;
        --übrig;
        return wert;
    };
    for (int y = 0; y < bild.height(); ++y) {
        uchar* zeile = bild.scanLine(y);
        for (int x = 0; x < breite; ++x) {
            const int grund = lampe[static_cast<std::size_t>(x)];
            if (wahl.grau) {
                zeile[x] = heller(zeile[x], grund + nächstes());
                continue;
            }
            auto* pixel = reinterpret_cast<QRgb*>(zeile) + x;
            const int gemeinsam = grund + nächstes();
            // The channels of a scanner differ less among themselves than the pixels do.
            const int unterschied = nächstes() / 2;
            *pixel = qRgb(heller(qRed(*pixel), gemeinsam + unterschied),
                          heller(qGreen(*pixel), gemeinsam),
                          heller(qBlue(*pixel), gemeinsam - unterschied));
        }
    }
}

QPointF irgendwo(QRandomGenerator& zufall, const QSizeF& fläche) {
    const double x = zufall.generateDouble() * fläche.width();
    return {x, zufall.generateDouble() * fläche.height()};
}

/// Specks, rings of dried mounting medium and a few fibres. The painter's unit is the millimetre.
void maleStaub(QPainter& painter, QRandomGenerator& zufall, const QSizeF& blatt) {
    const int körner = static_cast<int>(blatt.width() * blatt.height() * 0.12);
    for (int i = 0; i < körner; ++i) {
        const QPointF ort = irgendwo(zufall, blatt);
        const double art = zufall.generateDouble();
        const double größe = zufall.generateDouble();
        if (art < 0.75) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(60, 60, 60, static_cast<int>(30 + 110 * größe)));
            painter.drawEllipse(ort, 0.008 + 0.014 * größe, 0.008 + 0.01 * größe);
        } else if (art < 0.99) {
            painter.setPen(QPen(QColor(120, 120, 120, 60), 0.02));
            painter.setBrush(QColor(255, 255, 255, 120));
            painter.drawEllipse(ort, 0.02 + 0.04 * größe, 0.02 + 0.03 * größe);
        } else {
            QPainterPath faser(ort);
            const QPointF bogen = irgendwo(zufall, {0.4, 0.4});
            const QPointF ende = irgendwo(zufall, {0.8, 0.8});
            faser.quadTo(ort + bogen, ort + ende - QPointF(0.4, 0.4));
            painter.setPen(QPen(QColor(90, 90, 90, 130), 0.018));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(faser);
        }
    }
}

/// Sum of twelve equal distributions less six: a normal distribution that is the same on every
/// machine.
double streuung(QRandomGenerator& zufall) {
    double summe = 0;
    for (int i = 0; i < 12; ++i) {
        summe += zufall.generateDouble();
    }
    return summe - 6;
}

bool natürlich(const std::array<QPointF, 9>& p) {
    const auto abstand = [&](std::size_t a, std::size_t b) { return QLineF(p[a], p[b]).length(); };
    const double ci = abstand(5, 6) / abstand(6, 7);
    const double hi = abstand(5, 7) / abstand(3, 4);
    // Foot of a point on the base line, and height above it, in millimetres from point 1 on.
    const QPointF basis = (p[2] - p[1]) / abstand(1, 2);
    const auto fuß = [&](std::size_t i) { return QPointF::dotProduct(p[i] - p[1], basis); };
    const double höhe = std::abs(basis.x() * (p[8] - p[1]).y() - basis.y() * (p[8] - p[1]).x());
    const double dv = (fuß(8) - fuß(4)) * 20 * 2.5 / (1.5 + höhe);
    return ci > 2.2 && ci < 3.6 && hi > 0.9 && hi < 1.25 && dv > 0 && dv < 2.2;
}

/// A wing as it may occur beside others of one colony: cubital index 2.2 to 3.6, hantel index 0.9
/// to 1.25, discoidal shift 0 to +2.2. The same state of @p zufall gives the same wing.
Flügelform mitStreuung(QRandomGenerator& zufall) {
    const Flügelform mittel = Flügelform::normal();
    // Standard deviations as among wings of one region, in millimetres; the short segments of the
    // cubital vein vary least.
    constexpr struct {
        double x, y;
    } Abweichung[9] = {{0, 0},         {0.03, 0.017},  {0.034, 0.028},
                       {0.03, 0.014},  {0.028, 0.015}, {0.024, 0.024},
                       {0.018, 0.012}, {0.016, 0.012}, {0.026, 0.028}};
    std::array<QPointF, 9> punkte = mittel.punkte;
    do {
        for (std::size_t i = 1; i < punkte.size(); ++i) {
            const double dx = streuung(zufall) * Abweichung[i].x;
            const double dy = streuung(zufall) * Abweichung[i].y;
            punkte[i] = mittel.punkte[i] + QPointF(dx, dy);
        }
    } while (!natürlich(punkte));
    Flügelform form = Flügelform::ausPunkten(punkte);
    const double größe = 1 + 0.012 * streuung(zufall);
    const auto wachse = [größe](QPointF& ort) { ort *= größe; };
    std::for_each(form.punkte.begin(), form.punkte.end(), wachse);
    std::for_each(form.umriss.begin(), form.umriss.end(), wachse);
    std::for_each(form.wurzel.begin(), form.wurzel.end(), wachse);
    for (Ader& ader : form.adern) {
        for (Ader::Stelle& stelle : ader.verlauf) {
            wachse(stelle.ort);
        }
    }
    return form;
}

/// The wing turned clockwise about its middle by @p grad degrees.
Flügelform gedreht(Flügelform form, double grad) {
    const QPointF mitte = form.rahmen().center();
    QTransform drehung;
    drehung.translate(mitte.x(), mitte.y());
    drehung.rotate(grad);
    drehung.translate(-mitte.x(), -mitte.y());
    const auto drehe = [&drehung](QPointF& ort) { ort = drehung.map(ort); };
    std::for_each(form.punkte.begin() + 1, form.punkte.end(), drehe);
    std::for_each(form.umriss.begin(), form.umriss.end(), drehe);
    std::for_each(form.wurzel.begin(), form.wurzel.end(), drehe);
    for (Ader& ader : form.adern) {
        for (Ader::Stelle& stelle : ader.verlauf) {
            drehe(stelle.ort);
        }
    }
    return form;
}

/// As on a scan in transmitted light.
Flügelstil scanstil(bool grau) {
    Flügelstil stil;
    stil.häutchen = grau ? QColor(214, 214, 214) : QColor(219, 214, 202);
    stil.rand = grau ? QColor(140, 140, 140) : QColor(146, 132, 112);
    stil.adern = grau ? QColor(62, 62, 62) : QColor(76, 58, 42);
    stil.costa = grau ? QColor(24, 24, 24) : QColor(34, 22, 14);
    stil.borsten = true;
    return stil;
}

} // namespace

Musterblatt male(const Musterblattwahl& wahl) {
    Musterblatt muster;
    const bool gültig = wahl.flügel >= 1 && wahl.flügel <= HöchsteFlügelzahl && wahl.spalten >= 0 &&
                        wahl.dpi >= 50 && wahl.dpi <= 9600 && wahl.rauschen >= 0 &&
                        wahl.rauschen <= 20 && wahl.blatt.width() <= HöchsteLänge &&
                        wahl.blatt.height() <= HöchsteLänge;
    if (!gültig) {
        return muster;
    }
    const Raster feld = raster(wahl);
    if (feld.spalten == 0) {
        return muster;
    }
    const double maßstab = wahl.dpi / MillimeterJeZoll;
    const QSizeF pixel = feld.blatt * maßstab;
    if (pixel.width() * pixel.height() > HöchstePixelzahl) {
        return muster;
    }
    QImage bild(pixel.toSize(), wahl.grau ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (bild.isNull()) {
        return muster;
    }
    bild.fill(wahl.grau ? QColor(239, 239, 239) : QColor(239, 240, 241));
    const int punkteJeMeter = static_cast<int>(std::lround(maßstab * 1000));
    bild.setDotsPerMeterX(punkteJeMeter);
    bild.setDotsPerMeterY(punkteJeMeter);

    QRandomGenerator zufall(wahl.saat);
    const Flügelstil stil = scanstil(wahl.grau);
    const QSizeF platz((feld.blatt.width() - 2 * Randbreite) / feld.spalten,
                       (feld.blatt.height() - 2 * Randbreite) / feld.zeilen);
    {
        QPainter blatt(&bild);
        blatt.setRenderHint(QPainter::Antialiasing);
        blatt.save();
        blatt.scale(maßstab, maßstab);
        maleStaub(blatt, zufall, feld.blatt);
        blatt.restore();
        for (int nummer = 0; nummer < wahl.flügel; ++nummer) {
            const Flügelform gerade = mitStreuung(zufall);
            const Flügelform form =
                gedreht(gerade, HöchsteDrehung * (2 * zufall.generateDouble() - 1));
            const QRectF rahmen = form.rahmen();
            const int spalte = nummer % feld.spalten;
            const int zeile = nummer / feld.spalten;
            // A wing lies somewhere within its place.
            const double quer = zufall.generateDouble();
            const double längs = zufall.generateDouble();
            const QPointF ecke(Randbreite + platz.width() * spalte +
                                   (platz.width() - rahmen.width()) * (0.25 + 0.5 * quer),
                               Randbreite + platz.height() * zeile +
                                   (platz.height() - rahmen.height()) * (0.25 + 0.5 * längs));
            const QPointF ort = (ecke - rahmen.topLeft()) * maßstab;

            // Painted by itself, so that only the wing is softened and not the whole sheet.
            const QPointF kachelort(std::floor(ecke.x() * maßstab) - 2,
                                    std::floor(ecke.y() * maßstab) - 2);
            QImage kachel((rahmen.size() * maßstab).toSize() + QSize(6, 6),
                          QImage::Format_ARGB32_Premultiplied);
            kachel.fill(Qt::transparent);
            {
                QPainter painter(&kachel);
                painter.translate(ort - kachelort);
                painter.scale(maßstab, maßstab);
                maleFlügel(painter, form, stil);
            }
            zeichneWeich(kachel);
            blatt.drawImage(kachelort, kachel);

            std::array<QPointF, 9> punkte;
            for (std::size_t i = 1; i < punkte.size(); ++i) {
                punkte[i] = form.punkte[i] * maßstab + ort;
            }
            muster.punkte.push_back(punkte);
        }
    }
    verrausche(bild, wahl);
    muster.bild = std::move(bild);
    return muster;
}

} // namespace tarvel
