#include "results/kolonieangaben.h"

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString alsNummer(const QString& text, QStringView muster, const Zahlenformat& format) {
    return istNumerisch(text, format) ? Format(text, muster, format) : text;
}

} // namespace

Kolonieangaben fürNächstesVolk(Kolonieangaben neu, const Kolonieangaben& vorige) {
    for (const auto wert :
         {&Kolonieangaben::Name, &Kolonieangaben::Besitzer, &Kolonieangaben::Begattung}) {
        neu.*wert = (vorige.*wert).trimmed();
    }
    return neu;
}

QString jahrErgänzt(const QString& text) {
    constexpr int LetztesJahrhundertAb = 90;
    if (text.size() != 2) {
        return text;
    }
    return (Val(text) > LetztesJahrhundertAb ? u"19"_s : u"20"_s) + text;
}

QString nummerDreistellig(const QString& text, const Zahlenformat& format) {
    return alsNummer(text, u"000", format);
}

QString nummerZweistellig(const QString& text, const Zahlenformat& format) {
    return alsNummer(text, u"00", format);
}

} // namespace tarvel
