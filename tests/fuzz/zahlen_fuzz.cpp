// Number texts. Input: a line that chooses separators and currency, a line with a pattern, the
// text.

#include "fuzz/fuzz.h"
#include "platform/zahlen.h"

#include <array>
#include <cmath>
#include <limits>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr double Größte = std::numeric_limits<double>::max();

/// One of those in use, by the first character of @p zeile.
Zahlenformat zahlenformat(QByteArrayView zeile) {
    static const std::array formate{
        Zahlenformat{u'.', u',', u"$"_s}, Zahlenformat{u',', u'.', u"€"_s},
        Zahlenformat{u',', u'\u202F', u"€"_s}, Zahlenformat{u'.', u'\u2019', u"CHF"_s}};
    return formate.at(zeile.isEmpty() ? 0 : uchar(zeile.front()) % formate.size());
}

void prüfeRundung(double wert) {
    const auto gleich = [wert](auto ganze, double von, double bis) {
        const double erwartet = std::nearbyint(wert); // halves to the even number
        const bool passt = erwartet >= von && erwartet <= bis;
        verlange(ganze.has_value() == passt, "a number fits or does not");
        verlange(!ganze || static_cast<double>(*ganze) == erwartet, "rounds halves to the even");
    };
    gleich(ganzzahl16(wert), -32768.0, 32767.0);
    gleich(ganzzahl32(wert), -2147483648.0, 2147483647.0);
    if (const auto einfach = einfachGenau(wert)) {
        verlange((*einfach == 0) == (wert == 0), "nothing but zero becomes zero");
        verlange(std::isfinite(*einfach), "a single is finite");
    }
}

void prüfeAusgabe(double wert, const QString& muster, const Zahlenformat& format) {
    constexpr qsizetype LängsteZahl = 400;
    verlange(Format(wert, muster, format).size() <= 2 * muster.size() + LängsteZahl,
             "a formatted number is no longer than its digits and the pattern");
    // 15 digits of the largest numbers may round up to one that there is not.
    if (std::abs(wert) > Größte * (1 - 1e-14)) {
        return;
    }
    const QString text = zahltext(wert, format);
    const auto zurück = zahlAusText(text, format);
    verlange(zurück && std::abs(*zurück - wert) <= std::abs(wert) * 1e-14,
             "the default text is the number");
    verlange(zahltext(*zurück, format) == text, "the default text comes back");

    const auto gerundet = zahlAusText(Format(wert, u"0.00", format), format);
    verlange(gerundet && std::abs(*gerundet - wert) <= 0.005000001 + std::abs(wert) * 1e-14,
             "two decimals are the number rounded");
}

void prüfeText(const QString& text, const QString& muster, const Zahlenformat& format) {
    const auto ganzer = zahlAusText(text, format);
    verlange(istNumerisch(text, format) == ganzer.has_value(), "numeric is what has a number");
    verlange(!ganzer || std::isfinite(*ganzer), "a number is finite");
    if (!ganzer) {
        verlange(Format(text, muster, format) == text, "other text comes back unchanged");
    } else {
        prüfeRundung(*ganzer);
        prüfeAusgabe(*ganzer, muster, format);
    }
    if (const auto getippt = getippteZahl(text)) {
        QString mitPunkt = text;
        mitPunkt.replace(u',', u'.').remove(u'\u00A0');
        mitPunkt.remove(u'\v').remove(u'\f').remove(u'\r');
        verlange(std::isfinite(*getippt) && Val(mitPunkt) == *getippt,
                 "a typed number is the one the text begins with");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    QByteArrayView rest = eingabe(daten, größe);
    const Zahlenformat format = zahlenformat(nimmZeile(rest));
    const QString muster = QString::fromUtf8(nimmZeile(rest));
    const QString text = QString::fromUtf8(rest);

    const double wert = Val(text);
    verlange(std::isfinite(wert), "Val is finite");
    QString ohneBlanks = text;
    ohneBlanks.remove(u' ').remove(u'\t').remove(u'\n');
    verlange(Val(ohneBlanks) == wert, "blanks do not count for Val");
    prüfeRundung(wert);
    prüfeAusgabe(wert, muster, format);
    prüfeText(text, muster, format);
    return 0;
}
