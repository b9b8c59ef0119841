// make_scan writes a sample scan of wings and, when asked, the true measuring points on it.

#include "musterblatt.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QImageWriter>

#include <cstdio>
#include <optional>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr int Jpegqualität = 90;

int fehler(const QString& text) {
    std::fprintf(stderr, "make_scan: %s\n", qPrintable(text));
    return 1;
}

/// "A4" or width x height in millimetres.
std::optional<QSizeF> blattgröße(const QString& text) {
    if (text.compare(u"A4"_s, Qt::CaseInsensitive) == 0)
        return QSizeF(210, 297);
    const QStringList teile = text.split(u'x');
    bool gut = teile.size() == 2;
    const double breite = gut ? teile[0].toDouble(&gut) : 0;
    const double höhe = gut ? teile[1].toDouble(&gut) : 0;
    if (!gut || !(breite > 0) || !(höhe > 0))
        return std::nullopt;
    return QSizeF(breite, höhe);
}

bool schreibePunkte(const QString& pfad, const Musterblatt& muster) {
    QByteArray zeilen("wing");
    for (int i = 1; i <= 8; ++i)
        zeilen += ",x" + QByteArray::number(i) + ",y" + QByteArray::number(i);
    zeilen += '\n';
    for (std::size_t nummer = 0; nummer < muster.punkte.size(); ++nummer) {
        zeilen += QByteArray::number(static_cast<int>(nummer) + 1);
        for (std::size_t i = 1; i <= 8; ++i) {
            const QPointF punkt = muster.punkte[nummer][i];
            zeilen += ',' + QByteArray::number(punkt.x(), 'f', 2) + ',' +
                      QByteArray::number(punkt.y(), 'f', 2);
        }
        zeilen += '\n';
    }
    QFile datei(pfad);
    return datei.open(QIODevice::WriteOnly) && datei.write(zeilen) == zeilen.size() &&
           datei.flush();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    QCommandLineParser zeile;
    zeile.setApplicationDescription(u"Writes a sample scan of fore wings."_s);
    zeile.addHelpOption();
    const QCommandLineOption flügel(u"wings"_s, u"Number of wings."_s, u"N"_s, u"8"_s);
    const QCommandLineOption spalten(u"columns"_s, u"Wings side by side."_s, u"N"_s, u"0"_s);
    const QCommandLineOption dpi(u"dpi"_s, u"Resolution."_s, u"D"_s, u"1200"_s);
    const QCommandLineOption größe(u"size"_s, u"A4 or WIDTHxHEIGHT in mm; else as needed."_s,
                                   u"size"_s);
    const QCommandLineOption saat(u"seed"_s, u"Same seed, same scan."_s, u"S"_s, u"1"_s);
    const QCommandLineOption rauschen(u"noise"_s, u"Noise in grey levels, 0 to 20."_s, u"R"_s,
                                      u"1.5"_s);
    const QCommandLineOption grau(u"grey"_s, u"Grey in place of colour."_s);
    const QCommandLineOption punkte(u"points"_s, u"Write the true points there."_s, u"FILE.csv"_s);
    zeile.addOptions({flügel, spalten, dpi, größe, saat, rauschen, grau, punkte});
    zeile.addPositionalArgument(u"OUT"_s, u"Picture: .jpg, .png or .bmp."_s);
    zeile.process(app);

    const QStringList ziele = zeile.positionalArguments();
    if (ziele.size() != 1)
        return fehler(u"one picture to write is wanted, see --help"_s);
    Musterblattwahl wahl;
    bool gut[5] = {};
    wahl.flügel = zeile.value(flügel).toInt(&gut[0]);
    wahl.spalten = zeile.value(spalten).toInt(&gut[1]);
    wahl.dpi = zeile.value(dpi).toInt(&gut[2]);
    wahl.saat = zeile.value(saat).toUInt(&gut[3]);
    wahl.rauschen = zeile.value(rauschen).toDouble(&gut[4]);
    wahl.grau = zeile.isSet(grau);
    for (const bool zahl : gut) {
        if (!zahl)
            return fehler(u"a number cannot be read, see --help"_s);
    }
    if (zeile.isSet(größe)) {
        const std::optional<QSizeF> blatt = blattgröße(zeile.value(größe));
        if (!blatt)
            return fehler(u"the size is neither A4 nor WIDTHxHEIGHT"_s);
        wahl.blatt = *blatt;
    }

    const Musterblatt muster = male(wahl);
    if (muster.bild.isNull())
        return fehler(u"the wings do not fit on the sheet, or a number is out of range"_s);
    QImageWriter schreiber(ziele.first());
    schreiber.setQuality(
        schreiber.format() == "png" || ziele.first().endsWith(u".png"_s) ? 0 : Jpegqualität);
    if (!schreiber.write(muster.bild))
        return fehler(ziele.first() + u": "_s + schreiber.errorString());
    if (zeile.isSet(punkte) && !schreibePunkte(zeile.value(punkte), muster))
        return fehler(zeile.value(punkte) + u" cannot be written"_s);
    std::printf("%d x %d, %zu wings\n", muster.bild.width(), muster.bild.height(),
                muster.punkte.size());
    return 0;
}
