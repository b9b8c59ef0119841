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

namespace {

constexpr QChar textzeichen = u'\'';

/// What stands behind the apostrophes at each beginning of a cell that @p zelle may fall into: how
/// many they are, when a character that makes a formula follows them.
template <typename Änderung>
QString beiFormeln(const QString& zelle, Änderung&& ändere) {
    QString ergebnis;
    ergebnis.reserve(zelle.size() + 1);
    bool anfang = true;
    for (qsizetype i = 0; i < zelle.size(); ++i) {
        if (anfang) {
            qsizetype formel = i;
            while (formel < zelle.size() && zelle[formel] == textzeichen) {
                ++formel;
            }
            if (formel < zelle.size() && QStringView(u"=+-@").contains(zelle[formel])) {
                ergebnis += QString(ändere(formel - i), textzeichen);
                i = formel;
            }
        }
        ergebnis += zelle[i];
        anfang = QStringView(u",;\t\n\r").contains(zelle[i]);
    }
    return ergebnis;
}

} // namespace

QString alsTextzelle(const QString& text) {
    return beiFormeln(text, [](qsizetype anzahl) { return anzahl + 1; });
}

QString ausTextzelle(const QString& zelle) {
    return beiFormeln(zelle, [](qsizetype anzahl) { return std::max<qsizetype>(anzahl - 1, 0); });
}

void CsvTabelle::zelle(const QByteArray& inhalt) {
    csv_ += (zeilenbeginn_ ? "" : ",") + inhalt;
    zeilenbeginn_ = false;
}

void CsvTabelle::text(const QString& text) {
    QByteArray inhalt = alsTextzelle(text.trimmed()).toUtf8();
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
