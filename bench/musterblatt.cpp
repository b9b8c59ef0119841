#include "musterblatt.h"

#include "measure/fluegelzeichnung.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
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

/// A wing as it lies on the sheet.
struct Musterflügel {
    std::array<QPointF, 9> punkte; ///< where the measuring points of the drawing lie on this wing
    QTransform lage;               ///< from this wing, still straight, to the sheet
};

/// A wing as it may occur beside others of one colony: cubital index 2.2 to 3.6, hantel index 0.9
/// to 1.25, discoidal shift 0 to +2.2. The same state of @p zufall gives the same wing.
Musterflügel mitStreuung(QRandomGenerator& zufall) {
    // Standard deviations as among wings of one region, in millimetres; the short segments of the
    // cubital vein vary least.
    constexpr struct {
        double x, y;
    } Abweichung[9] = {{0, 0},         {0.03, 0.017},  {0.034, 0.028},
                       {0.03, 0.014},  {0.028, 0.015}, {0.024, 0.024},
                       {0.018, 0.012}, {0.016, 0.012}, {0.026, 0.028}};
    Musterflügel flügel;
    do {
        for (std::size_t i = 1; i < flügel.punkte.size(); ++i) {
            const double dx = streuung(zufall) * Abweichung[i].x;
            const double dy = streuung(zufall) * Abweichung[i].y;
            flügel.punkte[i] = Zeichnungspunkte[i] + QPointF(dx, dy);
        }
    } while (!natürlich(flügel.punkte));
    const double größe = 1 + 0.012 * streuung(zufall);
    const double winkel = HöchsteDrehung * (2 * zufall.generateDouble() - 1);
    flügel.lage.rotate(winkel);
    flügel.lage.scale(größe, größe);
    return flügel;
}

/// Where a place of the wing lies on the drawing: the shifts of the measuring points around it,
/// weighted with the inverse square of the distance, against a pull to stay.
QPointF aufZeichnung(QPointF ort, const std::array<QPointF, 9>& punkte) {
    constexpr double Beharrung = 1; // as much as a point 1 mm away
    QPointF summe;
    double gewichte = Beharrung;
    for (std::size_t i = 1; i < punkte.size(); ++i) {
        const QPointF weg = ort - punkte[i];
        const double gewicht = 1 / std::max(QPointF::dotProduct(weg, weg), 1e-12);
        summe += (Zeichnungspunkte[i] - punkte[i]) * gewicht;
        gewichte += gewicht;
    }
    return ort + summe / gewichte;
}

/// Fine hairs in rows along the wing, within what is painted already.
void maleBorsten(QPainter& painter, const QColor& farbe) {
    constexpr double Abstand = 0.05;
    QRandomGenerator zufall(0x5eed);
    const int reihen = static_cast<int>(Zeichnungsrahmen.height() / Abstand);
    const int spalten = static_cast<int>(Zeichnungsrahmen.width() / Abstand);
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    for (int reihe = 0; reihe < reihen; ++reihe) {
        for (int spalte = 0; spalte < spalten; ++spalte) {
            const double links = zufall.generateDouble();
            const double tief = zufall.generateDouble();
            const double kräftig = zufall.generateDouble();
            const QPointF ort((spalte + links) * Abstand, (reihe + tief) * Abstand);
            QColor ton = farbe;
            ton.setAlphaF(static_cast<float>(0.1 + 0.4 * kräftig * kräftig));
            painter.setPen(QPen(ton, 0.011 + 0.01 * kräftig, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(ort, ort + QPointF(-0.012, 0.006 * (links - 0.5)));
        }
    }
    painter.restore();
}

/// The drawn wing as on a scan in transmitted light, softened by the optics.
QImage vorlage(double maßstab, bool grau) {
    const Zeichnungsfarben farben =
        grau ? Zeichnungsfarben{QColor(214, 214, 214), QColor(140, 140, 140), QColor(44, 44, 44)}
             : Zeichnungsfarben{QColor(219, 214, 202), QColor(146, 132, 112), QColor(58, 42, 30)};
    QImage bild((Zeichnungsrahmen.size() * maßstab).toSize(), QImage::Format_ARGB32_Premultiplied);
    bild.fill(Qt::transparent);
    QPainter painter(&bild);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(maßstab, maßstab);
    maleFlügel(painter, farben);
    maleBorsten(painter, farben.adern);
    painter.end();
    zeichneWeich(bild);
    return bild;
}

/// The colour at a place between pixels, whose middles lie at .5; nothing beside the picture.
QRgb zwischen(const QImage& bild, QPointF ort) {
    const double x = ort.x() - 0.5;
    const double y = ort.y() - 0.5;
    const int links = static_cast<int>(std::floor(x));
    const int oben = static_cast<int>(std::floor(y));
    if (links < 0 || oben < 0 || links + 1 >= bild.width() || oben + 1 >= bild.height()) {
        return 0;
    }
    const auto quer = static_cast<uint>((x - links) * 256);
    const auto längs = static_cast<uint>((y - oben) * 256);
    const auto* a = reinterpret_cast<const QRgb*>(bild.constScanLine(oben)) + links;
    const auto* b = reinterpret_cast<const QRgb*>(bild.constScanLine(oben + 1)) + links;
    const auto kanal = [&](int (*von)(QRgb)) {
        const uint erste = uint(von(a[0])) * (256 - quer) + uint(von(a[1])) * quer;
        const uint zweite = uint(von(b[0])) * (256 - quer) + uint(von(b[1])) * quer;
        return static_cast<int>((erste * (256 - längs) + zweite * längs) >> 16U);
    };
    return qRgba(kanal(qRed), kanal(qGreen), kanal(qBlue), kanal(qAlpha));
}

/// The wing by itself on a picture of @p größe, where @p lage in millimetres puts it.
QImage kachel(const QImage& vorlage, const Musterflügel& flügel, const QTransform& lage,
              QSize größe, double maßstab) {
    QImage bild(größe, QImage::Format_ARGB32_Premultiplied);
    const QTransform zurück = lage.inverted();
    for (int y = 0; y < größe.height(); ++y) {
        auto* zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < größe.width(); ++x) {
            const QPointF ort = zurück.map(QPointF(x + 0.5, y + 0.5) / maßstab);
            zeile[x] = zwischen(vorlage, aufZeichnung(ort, flügel.punkte) * maßstab);
        }
    }
    return bild;
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
    const QImage zeichnung = vorlage(maßstab, wahl.grau);
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
            const Musterflügel flügel = mitStreuung(zufall);
            const QRectF rahmen = flügel.lage.mapRect(Zeichnungsrahmen);
            const int spalte = nummer % feld.spalten;
            const int zeile = nummer / feld.spalten;
            // A wing lies somewhere within its place.
            const double quer = zufall.generateDouble();
            const double längs = zufall.generateDouble();
            const QPointF ecke(Randbreite + platz.width() * spalte +
                                   (platz.width() - rahmen.width()) * (0.25 + 0.5 * quer),
                               Randbreite + platz.height() * zeile +
                                   (platz.height() - rahmen.height()) * (0.25 + 0.5 * längs));
            const QTransform lage = flügel.lage * QTransform::fromTranslate(ecke.x() - rahmen.x(),
                                                                            ecke.y() - rahmen.y());
            const QPoint kachelort(static_cast<int>(ecke.x() * maßstab),
                                   static_cast<int>(ecke.y() * maßstab));
            blatt.drawImage(kachelort,
                            kachel(zeichnung, flügel,
                                   lage * QTransform::fromTranslate(-kachelort.x() / maßstab,
                                                                    -kachelort.y() / maßstab),
                                   (rahmen.size() * maßstab).toSize() + QSize(2, 2), maßstab));

            std::array<QPointF, 9> punkte;
            for (std::size_t i = 1; i < punkte.size(); ++i) {
                punkte[i] = lage.map(flügel.punkte[i]) * maßstab;
            }
            muster.punkte.push_back(punkte);
        }
    }
    verrausche(bild, wahl);
    muster.bild = std::move(bild);
    return muster;
}

} // namespace tarvel
