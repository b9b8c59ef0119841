#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tarvel {
namespace {

// The page differs from Latin-1 in these 32 places only.
constexpr uchar ersterBesonderer = 0x80;
constexpr std::array<char16_t, 32> besondere = {
    u'€', u'\x81', u'‚',    u'ƒ', u'„',    u'…',    u'†', u'‡',    u'ˆ', u'‰', u'Š',
    u'‹', u'Œ',    u'\x8D', u'Ž', u'\x8F', u'\x90', u'‘', u'’',    u'“', u'”', u'•',
    u'–', u'—',    u'˜',    u'™', u'š',    u'›',    u'œ', u'\x9D', u'ž', u'Ÿ'};

char byteVon(char32_t zeichen) {
    const bool wieLatin1 = zeichen < ersterBesonderer || (zeichen >= 0xA0 && zeichen <= 0xFF);
    if (wieLatin1) {
        return static_cast<char>(static_cast<uchar>(zeichen));
    }
    const auto* treffer = std::find(besondere.begin(), besondere.end(), zeichen);
    if (treffer == besondere.end()) {
        return '?';
    }
    const auto platz = std::distance(besondere.begin(), treffer);
    return static_cast<char>(static_cast<uchar>(ersterBesonderer + platz));
}

} // namespace

QByteArray nachCodepage1252(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar zeichen = text[i];
        const bool paar =
            zeichen.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        bytes += byteVon(zeichen.unicode());
        if (paar) {
            ++i;
        }
    }
    return bytes;
}

QString ausCodepage1252(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto wert = static_cast<uchar>(byte);
        const bool besonders = wert >= ersterBesonderer && wert < 0xA0;
        text += besonders ? QChar(besondere[wert - ersterBesonderer]) : QChar(ushort{wert});
    }
    return text;
}

} // namespace tarvel
