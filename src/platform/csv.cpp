#include "platform/csv.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tarvel {

QByteArray vollerWert(float wert) {
    std::array<char, 128> ziffern{};
    const auto ende = std::to_chars(ziffern.data(), ziffern.data() + ziffern.size(), wert,
                                    std::chars_format::fixed);
    return {ziffern.data(), ende.ptr - ziffern.data()};
}

void CsvTabelle::zelle(const QByteArray& inhalt) {
    csv_ += (zeilenbeginn_ ? "" : ",") + inhalt;
    zeilenbeginn_ = false;
}

void CsvTabelle::text(const QString& text) {
    QByteArray inhalt = text.trimmed().toUtf8();
    const auto braucht = [](char c) { return c == ',' || c == '"' || c == '\n' || c == '\r'; };
    if (std::any_of(inhalt.begin(), inhalt.end(), braucht)) {
        inhalt = '"' + inhalt.replace('"', "\"\"") + '"';
    }
    zelle(inhalt);
}

void CsvTabelle::zeilenende() {
    csv_ += '\n';
    zeilenbeginn_ = true;
}

} // namespace tarvel
