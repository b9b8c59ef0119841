#include "measure/textdatei.h"

#include "platform/codepage.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace tarvel {

namespace {

constexpr QByteArrayView utf8Marke("\xEF\xBB\xBF");

/// Nothing for bytes that the encoding does not allow.
std::optional<QString> dekodiert(QByteArrayView bytes, QStringConverter::Encoding kodierung) {
    QStringDecoder dekoder(kodierung, QStringConverter::Flag::Stateless);
    QString text = dekoder(bytes);
    // An incomplete character at the very end is replaced without being counted as an error.
    return dekoder.hasError() || text.endsWith(QChar::ReplacementCharacter) ? std::nullopt
                                                                            : std::optional(text);
}

bool istAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<uchar>(c) < 0x80; });
}

bool istSteuerzeichen(QChar c) {
    return c < u' ' && c != u'\t' && c != u'\n' && c != u'\r' && c != u'\f' && c != u'\v';
}

/// Empty text and a problem when a byte order mark promises what the bytes do not keep.
Dateitext dekodiert(QByteArrayView bytes) {
    const auto marke = QStringConverter::encodingForData(bytes);
    if (!marke && istAscii(bytes)) {
        return {QString::fromLatin1(bytes), {}, {}};
    }
    const auto kodierung = marke.value_or(QStringConverter::Utf8);
    if (auto text = dekodiert(bytes, kodierung)) {
        return {*std::move(text),
                QString::fromLatin1(QStringConverter::nameForEncoding(kodierung)),
                {}};
    }
    if (marke && *marke != QStringConverter::Utf8) {
        return {{}, {}, Leseproblem{.grund = Lesegrund::KeinText}};
    }
    return {ausCodepage1252(marke ? bytes.sliced(utf8Marke.size()) : bytes), {}, {}};
}

} // namespace

std::optional<QByteArray> dateiinhalt(const QString& pfad, qsizetype höchstens) {
    return QFileInfo(pfad).isFile() ? strominhalt(pfad, höchstens) : std::nullopt;
}

std::optional<QByteArray> strominhalt(const QString& pfad, qsizetype höchstens) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray inhalt = datei.read(höchstens + 1);
    return datei.error() == QFileDevice::NoError ? std::optional(std::move(inhalt)) : std::nullopt;
}

Dateitext dateitext(QByteArrayView bytes, qsizetype höchstens) {
    if (bytes.size() > höchstens) {
        const QString megabytes = QString::number(höchstens / (1024 * 1024));
        return {{}, {}, Leseproblem{.grund = Lesegrund::ZuGroß, .texte = {megabytes}}};
    }
    Dateitext datei = dekodiert(bytes);
    if (datei.text.endsWith(u'\x1A')) {
        datei.text.chop(1);
    }
    if (datei.problem) {
        return datei;
    }
    if (std::any_of(datei.text.cbegin(), datei.text.cend(), istSteuerzeichen)) {
        return {{}, {}, Leseproblem{.grund = Lesegrund::KeinText}};
    }
    if (QStringView(datei.text).trimmed().isEmpty()) {
        datei.problem = Leseproblem{.grund = Lesegrund::Leer};
    }
    return datei;
}

std::optional<QStringView> Zeilenleser::nächste() {
    if (rest_.isEmpty()) {
        return std::nullopt;
    }
    ++nummer_;
    const auto istEnde = [](QChar c) { return c == u'\n' || c == u'\r'; };
    const auto länge = std::find_if(rest_.begin(), rest_.end(), istEnde) - rest_.begin();
    const QStringView zeile = rest_.first(länge);
    rest_ = rest_.sliced(länge);
    if (!rest_.isEmpty()) {
        rest_ = rest_.sliced(rest_.startsWith(u"\r\n") ? 2 : 1);
    }
    return zeile;
}

} // namespace tarvel
