// Pictures that were made to take time, memory or calls of the system without end, and drawings
// that do so in a letterhead.

#include "measure/bilddatei.h"
#include "measure/bilderproben.h"
#include "print/briefkopfbild.h"
#include "support/testordner.h"

#include <QPainter>

#include <gmock/gmock.h>

#include <functional>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#if !defined(__has_feature)
#define __has_feature(x) 0
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;
using Art = Bildfehler::Art;

namespace {

const bool lang = qEnvironmentVariableIsSet("TARVEL_LONG");

class Bildertest : public testing::Test {
protected:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(u"flügel.jpg"_s);

    void schreibe(const QByteArray& bytes) const { lege(pfad_, bytes); }
    Lesung lies(const QByteArray& bytes) const { return liesBild(lege(pfad_, bytes)); }
    [[nodiscard]] Briefkopfgrafik grafik() const {
        Briefkopf briefkopf;
        briefkopf.Ikone = Verband::Andere;
        briefkopf.Datei = pfad_;
        return Briefkopfgrafik(briefkopf);
    }
};

} // namespace

TEST_F(Bildertest, lyingHeader_isReadOrRefused) {
    for (const Bildprobe& probe : bildproben({40, 30})) {
        const qsizetype ende = std::min<qsizetype>(lang ? 1024 : 96, probe.bytes.size());
        for (qsizetype stelle = 0; stelle < ende; ++stelle) {
            for (const int wert : {0x00, 0x7F, 0xFF}) {
                QByteArray bytes = probe.bytes;
                bytes[stelle] = static_cast<char>(wert);
                SCOPED_TRACE(probe.was + std::to_string(stelle) + '=' + std::to_string(wert));
                (void)lies(mitPrüfsummen(bytes));
            }
        }
    }
}

TEST_F(Bildertest, damageAnywhere_isReadOrRefused) {
    std::mt19937 zufall{7}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    for (const Bildprobe& probe : bildproben({40, 30})) {
        for (int i = 0; i < (lang ? 3000 : 60); ++i) {
            SCOPED_TRACE(probe.was + std::to_string(i));
            QByteArray bytes = probe.bytes;
            for (int anzahl = 1 << zufall() % 6; anzahl > 0; --anzahl) {
                bytes[static_cast<qsizetype>(zufall() % bytes.size())] =
                    static_cast<char>(zufall());
            }
            (void)lies(mitPrüfsummen(bytes));
        }
    }
}

TEST_F(Bildertest, fewBytesThatBecomeMany_areRefusedInTime) {
    const qsizetype viel = (lang ? 1024 : 32) * qsizetype{1024} * 1024;
    const QByteArray nullen = qCompress(QByteArray(viel, '\0'), 1).mid(4);
    const QByteArray bild = png({40, 30}, 8, 0, QByteArray(41 * 30, '\0'));
    const struct {
        const char* was;
        QByteArray bytes;
    } fälle[] = {
        {"text that unpacks to megabytes",
         mitAbschnitt(bild, "zTXt", QByteArray("Comment\0\0", 9) + nullen)},
        {"colour profile that unpacks to megabytes",
         mitAbschnitt(bild, "iCCP", QByteArray("profile\0\0", 9) + nullen)},
        {"pixels for more rows than there are", mitPixeln({40, 30}, nullen)},
    };
    for (const auto& [was, bytes] : fälle) {
        const Lesung lesung = lies(bytes);
        EXPECT_TRUE(lesung.fehler || lesung.bild.size() == QSize(40, 30)) << was;
    }
    // Hardly any bytes for all the pixels that are promised.
    EXPECT_EQ(lies(mitPixeln({19000, 19000}, nullen.left(1000))).art(), Art::Abgeschnitten);
    EXPECT_EQ(lies(tiff({19000, 19000}, 1, QByteArray(100, 'x'))).art(), Art::Abgeschnitten);
}

/// How often the system was asked for bytes; -1 where it does not count.
qint64 leserufe() {
    QFile angaben(u"/proc/self/io"_s);
    const QByteArray text = angaben.open(QIODevice::ReadOnly) ? angaben.readAll() : QByteArray();
    const qsizetype ort = text.indexOf("syscr: ");
    return ort < 0 ? -1 : text.mid(ort + 7, text.indexOf('\n', ort) - ort - 7).toLongLong();
}

TEST_F(Bildertest, everyKind_isReadInBlocks) {
    if (leserufe() < 0) {
        GTEST_SKIP() << "the system does not count calls";
    }
    std::vector<Bildprobe> proben = bildproben({400, 300});
    proben.push_back({"bmp in runs", bmpInLäufen({400, 300})});
    proben.push_back({"pgm as text", pgmAlsText({400, 300})});
    for (const Bildprobe& probe : proben) {
        schreibe(probe.bytes);
        const qint64 vorher = leserufe();
        const Lesung lesung = liesBild(pfad_);
        // Plain bitmaps are read row by row.
        EXPECT_LT(leserufe() - vorher, 400 + probe.bytes.size() / 4096) << probe.was;
        EXPECT_EQ(lesung.bild.size(), QSize(400, 300)) << probe.was;
    }
}

/// By how many bytes a process of its own grows at most that reads the picture; 0 if it cannot.
qint64 speicherbedarf(const std::function<bool()>& lies) {
    int rohr[2];
    if (pipe(rohr) != 0) {
        return 0;
    }
    const pid_t kind = fork();
    if (kind == 0) {
        const auto höchststand = [] {
            rusage stand{};
            getrusage(RUSAGE_SELF, &stand);
            return qint64{stand.ru_maxrss} * 1024;
        };
        const qint64 vorher = höchststand();
        const qint64 bytes = lies() ? höchststand() - vorher : 0;
        _exit(write(rohr[1], &bytes, sizeof bytes) == sizeof bytes ? 0 : 1);
    }
    close(rohr[1]);
    qint64 bytes = 0;
    const bool ganz = read(rohr[0], &bytes, sizeof bytes) == sizeof bytes;
    close(rohr[0]);
    waitpid(kind, nullptr, 0);
    return ganz ? bytes : 0;
}

TEST_F(Bildertest, memoryOfASmallFile_isCountedBeforeItIsTaken) {
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
    GTEST_SKIP() << "what is given back is kept for later checks";
#endif
    const QSize größe(3000, 3000);
    const auto gepackt = [&](int bytes, int vorZeile) {
        const qsizetype zeile = qsizetype{größe.width()} * bytes + vorZeile;
        return qCompress(QByteArray(zeile * größe.height(), '\0'), 1).mid(4);
    };
    const QByteArray einByte = gepackt(1, 1);
    const QByteArray zweiBytes = gepackt(2, 1);
    const QByteArray achtBytes = gepackt(8, 1);
    const QByteArray streifen1 = gepackt(1, 0);
    const QByteArray streifen4 = gepackt(4, 0);
    const QByteArray streifen8 = gepackt(8, 0);
    const struct {
        const char* was;
        std::function<QByteArray(QSize)> datei;
    } fälle[] = {
        {"png grey", [&](QSize s) { return pngAus(s, 8, 0, einByte, false); }},
        {"png grey, 16 bits", [&](QSize s) { return pngAus(s, 16, 0, zweiBytes, false); }},
        {"png of colours and alpha, 16 bits",
         [&](QSize s) { return pngAus(s, 16, 6, achtBytes, false); }},
        {"tiff grey", [&](QSize s) { return tiff(s, 8, streifen1, 1, true); }},
        {"tiff of colours and alpha", [&](QSize s) { return tiff(s, 8, streifen4, 4, true); }},
        {"tiff of colours and alpha, 16 bits",
         [&](QSize s) { return tiff(s, 16, streifen8, 4, true); }},
    };
    for (const auto& [was, datei] : fälle) {
        const auto zuGroß = lies(datei({60000, 60000})).fehler;
        ASSERT_TRUE(zuGroß && zuGroß->art == Art::ZuGross) << was;
        const qint64 gezählt =
            qint64{größe.width()} * größe.height() * Bilddatei::HöchstensBytes / zuGroß->höchstens;
        schreibe(datei(größe));
        const qint64 genommen =
            speicherbedarf([&] { return liesBild(pfad_).bild.size() == größe; });
        EXPECT_GT(genommen, 0) << was;
        constexpr qint64 Beiwerk = qint64{12} * 1024 * 1024;
        EXPECT_LT(genommen, gezählt + Beiwerk) << was;
    }
}

TEST_F(Bildertest, jpegOfEndlessScans_isRefused) {
    // Of a large picture each scan takes its time.
    const QSize größe = lang ? QSize(10'000, 10'000) : QSize(400, 400);
    const Lesung lesung = lies(vielstufig(größe, lang ? 100 : 1000));
    EXPECT_EQ(lesung.art(), Art::Unlesbar);
}

TEST_F(Bildertest, whatIsNoFileOrEndless_isRefusedWithoutWaiting) {
    QFile::remove(pfad_);
    ASSERT_EQ(mkfifo(pfad_.toUtf8().constData(), 0600), 0); // nobody will ever write into it
    EXPECT_EQ(liesBild(pfad_).art(), Art::Unlesbar);
    QFile::remove(pfad_);
    ASSERT_TRUE(QFile::link(pfad_, pfad_)); // leads to itself
    EXPECT_EQ(liesBild(pfad_).art(), Art::NichtGefunden);
    QFile::remove(pfad_);
    EXPECT_EQ(liesBild(u"/dev/zero"_s).art(), Art::Unlesbar);

    constexpr qint64 MB = qint64{1024} * 1024;
    for (const Bildprobe& probe : bildproben({40, 30})) {
        for (const int behalten : {2, 8, 26}) { // the rest is nothing but zeros
            schreibe(probe.bytes.left(behalten));
            ASSERT_TRUE(QFile::resize(pfad_, 64 * MB));
            const Lesung lesung = liesBild(pfad_);
            EXPECT_TRUE(lesung.fehler || !lesung.bild.isNull()) << probe.was << behalten;
        }
    }
}

TEST_F(Bildertest, sizeAskedForByAnotherFile_comesFromPicturesAlone) {
    const QByteArray kopf = "<svg xmlns='http://www.w3.org/2000/svg' "
                            "xmlns:xlink='http://www.w3.org/1999/xlink'>";
    QByteArray verdoppelt = kopf + "<g id='g0'><rect width='1' height='1'/></g>";
    for (int i = 1; i < 40; ++i) {
        const QByteArray ruf = "<use xlink:href='#g" + QByteArray::number(i - 1) + "'/>";
        verdoppelt += "<g id='g" + QByteArray::number(i) + "'>" + ruf + ruf + "</g>";
    }
    for (const QByteArray& bytes :
         {kopf + "<image width='9' height='9' xlink:href='fl\xC3\xBCgel.jpg'/></svg>",
          verdoppelt + "</svg>", QByteArray("\x1F\x8B\x08\0\0\0\0\0\0\3", 10),
          "P5\n#" + QByteArray(1000, 'x'), png({60000, 60000}, 1, 0, QByteArray(1000, '\0'))}) {
        schreibe(bytes);
        EXPECT_EQ(Bilddatei::liesGröße(pfad_), std::nullopt) << bytes.left(200).toStdString();
    }
    QFile::remove(pfad_);
    ASSERT_EQ(mkfifo(pfad_.toUtf8().constData(), 0600), 0);
    for (const QString& pfad : {pfad_, ordner_.path(), u"/dev/zero"_s, ordner_.filePath(u"x"_s)}) {
        EXPECT_EQ(Bilddatei::liesGröße(pfad), std::nullopt) << pfad.toStdString();
    }
    QFile::remove(pfad_);
    for (const Bildprobe& probe : bildproben({40, 30})) {
        schreibe(probe.bytes);
        EXPECT_EQ(Bilddatei::liesGröße(pfad_), QSize(40, 30)) << probe.was;
    }
}

TEST_F(Bildertest, letterheadDrawing_neverHangsOrReachesForOtherFiles) {
    pfad_ = ordner_.filePath(u"kopf.svg"_s);
    const QString fremdes = ordner_.filePath(u"fremd.png"_s);
    QImage rot(20, 20, QImage::Format_RGB32);
    rot.fill(Qt::red);
    ASSERT_TRUE(rot.save(fremdes));
    const QByteArray kopf = "<svg xmlns='http://www.w3.org/2000/svg' "
                            "xmlns:xlink='http://www.w3.org/1999/xlink' viewBox='0 0 20 20'>";
    const auto bild = [&](const QByteArray& ziel) {
        return kopf + "<image x='0' y='0' width='20' height='20' xlink:href='" + ziel + "'/></svg>";
    };
    QByteArray verdoppelt = kopf + "<defs><g id='g0'><rect width='1' height='1'/></g>";
    QByteArray entitäten = "<!DOCTYPE svg [<!ENTITY e0 'xxxxxxxxxx'>";
    for (int i = 1; i < 30; ++i) {
        const QByteArray vorher = QByteArray::number(i - 1);
        const QByteArray nummer = QByteArray::number(i);
        const QByteArray ruf = "<use xlink:href='#g" + vorher + "'/>";
        verdoppelt += "<g id='g" + nummer + "'>" + ruf + ruf + "</g>";
        entitäten += "<!ENTITY e" + nummer + " '&e" + vorher + ";&e" + vorher + ";'>";
    }
    verdoppelt += "</defs><use xlink:href='#g29'/></svg>";
    entitäten += "]>" + kopf + "<text>&e29;</text></svg>";
    const int tief = lang ? 250'000 : 20'000;
    const struct {
        const char* was;
        QByteArray bytes;
    } fälle[] = {
        {"itself as a picture", bild("kopf.svg")},
        {"another file", bild("fremd.png")},
        {"another file by its full name", bild(QUrl::fromLocalFile(fremdes).toEncoded())},
        {"a device that never ends", bild("file:///dev/zero")},
        {"use of itself", kopf + "<g id='a'><use xlink:href='#a'/></g></svg>"},
        {"use in a circle", kopf + "<g id='a'><use xlink:href='#b'/></g>"
                                   "<g id='b'><use xlink:href='#a'/></g></svg>"},
        {"use that doubles itself", verdoppelt},
        {"entities that double themselves", entitäten},
        {"deep",
         kopf + QByteArray("<g>").repeated(tief) + QByteArray("</g>").repeated(tief) + "</svg>"},
        {"huge", "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 1e30 1e30'>"
                 "<rect width='1e30' height='1e-30'/></svg>"},
        {"blur", kopf + "<defs><filter id='f'><feGaussianBlur stdDeviation='1e9'/></filter></defs>"
                        "<rect filter='url(#f)' width='20' height='20'/></svg>"},
        {"doubles itself and says no size",
         QByteArray(verdoppelt).replace(" viewBox='0 0 20 20'", "")},
        {"cut", bild("fremd.png").left(120)},
        {"pattern of pictures", kopf + QByteArray("<circle r='9'/>").repeated(tief) + "</svg>"},
    };
    for (const auto& [was, bytes] : fälle) {
        SCOPED_TRACE(was);
        schreibe(bytes);
        QImage blatt(100, 100, QImage::Format_RGB32);
        blatt.fill(Qt::white);
        QPainter painter(&blatt);
        grafik().paint(painter, QRectF(0, 0, 100, 100));
        EXPECT_NE(blatt.pixel(50, 50), rot.pixel(0, 0)) << "shows a file that it was not given";
    }
}

TEST_F(Bildertest, letterheadDrawingThatTakesTooLong_isRefused) {
    pfad_ = ordner_.filePath(u"kopf.svg"_s);
    const auto oft = [](int anzahl, const QByteArray& teil) { return teil.repeated(anzahl); };
    const QByteArray fläche = "<rect width='20' height='20' fill-opacity='.1'/>";
    const auto linie = [](int ecken, const QByteArray& stift, int breite) {
        return "<polyline fill='none' stroke='#000' " + stift + " stroke-width='" +
               QByteArray::number(breite) + "' points='" +
               QByteArray("0,0 20,20 ").repeated(ecken) + "'/>";
    };
    QByteArray namen = "<g";
    QByteArray räume = "<g";
    for (int i = 0; i < 100'000; ++i) {
        namen += " a" + QByteArray::number(i) + "=''";
        räume += " xmlns:a" + QByteArray::number(i) + "='a'";
    }
    const struct {
        const char* was;
        QByteArray inhalt;
        Grafikfehler fehler;
    } fälle[] = {
        {"areas", oft(50'000, fläche), Grafikfehler::ZuAufwendig},
        {"areas, used again and again",
         "<g id='a'>" + oft(300, fläche) + "</g>" + oft(300, "<use xlink:href='#a'/>"),
         Grafikfehler::ZuAufwendig},
        {"circles far beyond", oft(40'000, "<circle r='1e5'/>"), Grafikfehler::ZuAufwendig},
        {"one line, crossing itself", linie(30'000, "", 1), Grafikfehler::ZuAufwendig},
        {"round corners", linie(30'000, "stroke-linejoin='round'", 19), Grafikfehler::ZuAufwendig},
        {"dashes", oft(2000, linie(1, "stroke-dasharray='1e-9'", 19)), Grafikfehler::ZuAufwendig},
        {"texts", oft(20'000, "<text>x</text>"), Grafikfehler::ZuAufwendig},
        {"much text", "<textArea width='1' height='1e9'>" + oft(100'000, "x ") + "</textArea>",
         Grafikfehler::ZuAufwendig},
        {"pictures painted again",
         "<image id='a' width='9' height='9' xlink:href='data:image/png;base64," +
             mitPixeln({4000, 4000}, qCompress(QByteArray(4001 * 4000, '\0')).mid(4)).toBase64() +
             "'/>" + oft(100, "<use xlink:href='#a'/>"),
         Grafikfehler::ZuAufwendig},
        {"names", namen + "/>", Grafikfehler::ZuAufwendig},
        {"name spaces", räume + "/>", Grafikfehler::ZuAufwendig},
        {"many small parts", oft(9000, "<circle r='.1'/>"), Grafikfehler::Keiner},
        {"some large areas", oft(100, fläche), Grafikfehler::Keiner},
        {"some lines", linie(30, "stroke-dasharray='1 2'", 1), Grafikfehler::Keiner},
        {"style and notes",
         "<style>" + oft(2000, "a{fill:red} ") + "</style><metadata>" + oft(100'000, "x") +
             "</metadata>" + fläche,
         Grafikfehler::Keiner},
        {"damaged", "<rect", Grafikfehler::KeinBild},
    };
    for (const auto& [was, inhalt, fehler] : fälle) {
        schreibe("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 20' "
                 "xmlns:xlink='http://www.w3.org/1999/xlink'>" +
                 inhalt + "</svg>");
        EXPECT_EQ(grafik().fehler(), fehler) << was;
    }
    // The toolkit would read all of that file, however long it is.
    schreibe("<?xml-stylesheet type=\"text/css\" href=\"" + pfad_.toUtf8() +
             "\"?><svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'/>");
    EXPECT_EQ(grafik().fehler(), Grafikfehler::ZuAufwendig);
    schreibe("<!DOCTYPE svg [<!ENTITY e '" + oft(4000, "x") + "'>]><svg a='" + oft(500'000, "&e;") +
             "'/>");
    EXPECT_EQ(grafik().fehler(), Grafikfehler::ZuAufwendig);
}

TEST_F(Bildertest, letterheadPicture_isShownOrLeftOut) {
    for (const Bildprobe& probe : bildproben({40, 30})) {
        SCOPED_TRACE(probe.was);
        schreibe(probe.bytes);
        EXPECT_TRUE(grafik().vorhanden());
        for (const qsizetype rest : {probe.bytes.size() / 2, qsizetype{20}, qsizetype{0}}) {
            ASSERT_TRUE(QFile::resize(pfad_, rest));
            (void)grafik();
        }
    }
    schreibe(png({60000, 60000}, 1, 0, QByteArray(1000, '\0')));
    EXPECT_FALSE(grafik().vorhanden());
    schreibe(tiff({60000, 60000}, 8, QByteArray(100, 'x')));
    EXPECT_FALSE(grafik().vorhanden());
    // Far more pixels than paper has, of which few bytes would be made.
    schreibe(mitPixeln({11000, 11000}, qCompress(QByteArray(11001 * 11000, '\0')).mid(4)));
    EXPECT_FALSE(grafik().vorhanden());
    QFile::remove(pfad_);
    ASSERT_EQ(mkfifo(pfad_.toUtf8().constData(), 0600), 0);
    EXPECT_FALSE(grafik().vorhanden());
    // A drawing keeps every picture that it brings along as it is.
    pfad_ = ordner_.filePath(u"kopf.svg"_s);
    const QByteArray bild =
        "<image width='9' height='9' xlink:href='data:image/png;base64," +
        mitPixeln({4000, 4000}, qCompress(QByteArray(4001 * 4000, '\0')).mid(4)).toBase64() + "'/>";
    for (const int anzahl : {1, 2}) {
        schreibe("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9' "
                 "xmlns:xlink='http://www.w3.org/1999/xlink'>" +
                 bild.repeated(anzahl) + "</svg>");
        EXPECT_EQ(grafik().vorhanden(), anzahl == 1);
    }
}
