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

QChar csvTrenner(QStringView text) {
    const qsizetype ende = text.indexOf(u'\n');
    const QStringView kopf = ende < 0 ? text : text.first(ende);
    QChar bester = u',';
    for (const QChar trenner : {QChar(u';'), QChar(u'\t')}) {
        bester = kopf.count(trenner) > kopf.count(bester) ? trenner : bester;
    }
    return bester;
}

std::optional<QStringList> CsvLeser::nächster() {
    constexpr qsizetype MeisteFelder = 2000;
    while (!rest_.isEmpty()) {
        QStringList felder;
        zeile_ = nächste_;
        bool weiter = true;
        while (weiter) {
            QString eines = feld();
            if (felder.size() < MeisteFelder) {
                felder << std::move(eines);
            }
            weiter = !rest_.isEmpty() && rest_.front() == trenner_;
            rest_ = weiter ? rest_.sliced(1) : rest_;
        }
        (void)nimmZeilenende();
        if (felder.size() > 1 || !felder.front().trimmed().isEmpty()) {
            return felder;
        }
    }
    return std::nullopt;
}

bool CsvLeser::nimmZeilenende() {
    if (rest_.isEmpty() || (rest_.front() != u'\n' && rest_.front() != u'\r')) {
        return false;
    }
    rest_ = rest_.sliced(rest_.startsWith(u"\r\n") ? 2 : 1);
    ++nächste_;
    return true;
}

QString CsvLeser::feld() {
    constexpr QChar Anführung = u'"';
    QString text;
    bool angeführt = false;
    while (!rest_.isEmpty()) {
        const QChar c = rest_.front();
        if (angeführt) {
            const bool doppelt = rest_.startsWith(u"\"\"");
            if (c != Anführung || doppelt) {
                text += c;
                nächste_ += c == u'\n' ? 1 : 0;
            } else {
                angeführt = false;
            }
            rest_ = rest_.sliced(doppelt ? 2 : 1);
        } else if (c == trenner_ || c == u'\n' || c == u'\r') {
            break;
        } else {
            if (c == Anführung && text.isEmpty()) {
                angeführt = true;
            } else {
                text += c;
            }
            rest_ = rest_.sliced(1);
        }
    }
    offen_ = offen_ || angeführt;
    return text;
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
