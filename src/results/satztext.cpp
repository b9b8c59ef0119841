#include "results/satztext.h"

#include "measure/messreihe.h"

#include <QUrl>

#include <algorithm>

namespace tarvel::satztext {

std::vector<QStringView> teile(QStringView text, QChar trenner, std::size_t höchstens) {
    std::vector<QStringView> stücke;
    for (const QStringView stück : text.tokenize(trenner)) {
        stücke.push_back(stück);
        if (stücke.size() > höchstens) {
            break;
        }
    }
    return stücke;
}

std::optional<int> ganzeZahl(QStringView text, int von, int bis) {
    constexpr qsizetype MeisteZiffern = 9;
    const bool ziffern =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (text.isEmpty() || text.size() > MeisteZiffern || !ziffern) {
        return std::nullopt;
    }
    const int zahl = text.toInt();
    return zahl >= von && zahl <= bis ? std::optional(zahl) : std::nullopt;
}

std::optional<int> flügelnummer(QStringView text) {
    return ganzeZahl(text, 1, Messreihe::HöchsteFlügelzahl);
}

QString kodiert(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text, " ,"));
}

QString dekodiert(QStringView text) {
    return QUrl::fromPercentEncoding(text.toUtf8());
}

} // namespace tarvel::satztext
