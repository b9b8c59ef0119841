#include "evaluation/merkmaltasten.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <array>

namespace tarvel {

namespace {

constexpr int Tastenreihen = 3;
constexpr int TastenJeReihe = 4;
using Tastatur = std::array<QStringView, Tastenreihen>;

const Tastatur& tastatur(Sprache sprache) {
    static constexpr Tastatur Deutsch{u"1234", u"QWER", u"YXCV"};
    static constexpr Tastatur Englisch{u"1234", u"QWER", u"ZXCV"};
    static constexpr Tastatur Französisch{u"1234", u"AZER", u"WXCV"};
    return sprache == Sprache::Englisch      ? Englisch
           : sprache == Sprache::Französisch ? Französisch
                                             : Deutsch;
}

} // namespace

std::optional<Merkmaltaste> tasteAmPlatz(quint32 scancode, QStringView plattform) {
    // The first key of each row. X and Wayland count from 8 what the kernel counts from 0.
    constexpr std::array<quint32, Tastenreihen> Unix{10, 24, 52};
    constexpr std::array<quint32, Tastenreihen> Windows{0x02, 0x10, 0x2C};
    const bool unix = plattform == u"xcb" || plattform.startsWith(u"wayland");
    if (!unix && plattform != u"windows") {
        return std::nullopt;
    }
    const auto& reihen = unix ? Unix : Windows;
    for (int reihe = 0; reihe < Tastenreihen; ++reihe) {
        const quint32 erste = reihen.at(static_cast<std::size_t>(reihe));
        if (scancode >= erste && scancode < erste + TastenJeReihe) {
            return Merkmaltaste{reihe, static_cast<int>(scancode - erste)};
        }
    }
    return std::nullopt;
}

std::optional<Merkmaltaste> merkmaltaste(const QKeyEvent& ereignis, Sprache sprache) {
    if (const auto taste =
            tasteAmPlatz(ereignis.nativeScanCode(), QGuiApplication::platformName())) {
        return taste;
    }
    if (ereignis.key() < Qt::Key_0 || ereignis.key() > Qt::Key_Z) {
        return std::nullopt;
    }
    const Tastatur& reihen = tastatur(sprache);
    QChar zeichen(ereignis.key());
    // German and English keyboards have changed places with each other, and neither letter means
    // anything else.
    if (sprache != Sprache::Französisch && (zeichen == u'Y' || zeichen == u'Z')) {
        zeichen = reihen.back().front();
    }
    for (int reihe = 0; reihe < Tastenreihen; ++reihe) {
        const qsizetype index = reihen.at(static_cast<std::size_t>(reihe)).indexOf(zeichen);
        if (index >= 0) {
            return Merkmaltaste{reihe, static_cast<int>(index)};
        }
    }
    return std::nullopt;
}

QString tastenname(Merkmaltaste taste, Sprache sprache) {
    return tastatur(sprache).at(static_cast<std::size_t>(taste.gruppe)).at(taste.index);
}

} // namespace tarvel
