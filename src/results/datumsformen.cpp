#include "results/datumsformen.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Monate = 12;

/// Numbers of a date in their order, without the time behind it.
struct Datumsteile {
    std::array<int, 3> zahlen{};
    std::array<qsizetype, 3> stellen{};
    QChar trenner;
};

std::optional<Datumsteile> datumsteile(QStringView text) {
    static const QRegularExpression muster(
        u"^(\\d{1,4})([-./])(\\d{1,2})\\2(\\d{1,4})\\.?(?:[T ]+\\d{1,2}:\\d{2}.*)?$"_s);
    const auto m = muster.match(text);
    if (!m.hasMatch()) {
        return std::nullopt;
    }
    Datumsteile t;
    t.trenner = m.capturedView(2).front();
    for (std::size_t i = 0; i < t.zahlen.size(); ++i) {
        const QStringView zahl = m.capturedView(i == 0 ? 1 : static_cast<int>(i) + 2);
        t.zahlen.at(i) = zahl.toInt();
        t.stellen.at(i) = zahl.size();
    }
    return t;
}

bool jahrZuerst(const Datumsteile& t) {
    return t.stellen[0] > 2;
}

/// Dates with points have the day first everywhere, dates with the year first the month second.
bool folgtJemandem(const Datumsteile& t) {
    return !jahrZuerst(t) && t.trenner != u'.';
}

std::optional<QDate> möglich(const QDate& datum, const QDate& heute) {
    constexpr int ErstesJahr = 1900;
    return datum.isValid() && datum.year() >= ErstesJahr && datum.year() <= heute.year() + 1
               ? std::optional(datum)
               : std::nullopt;
}

int vollesJahr(int jahr, qsizetype stellen, const QDate& heute) {
    constexpr int Jahrhundert = 100;
    if (stellen > 2) {
        return jahr;
    }
    const int letztes = heute.year() + 1;
    const int volles = letztes / Jahrhundert * Jahrhundert + jahr;
    return volles > letztes ? volles - Jahrhundert : volles;
}

/// Spreadsheets count days.
std::optional<QDate> ausTageszahl(QStringView text, const QDate& heute) {
    static const QRegularExpression muster(u"^(\\d{5})(?:[.,]\\d+)?$"_s);
    const auto m = muster.match(text);
    return m.hasMatch() ? möglich(QDate(1899, 12, 30).addDays(m.capturedView(1).toInt()), heute)
                        : std::nullopt;
}

} // namespace

std::optional<QDate> datumAusForm(QStringView text, Tagesfolge folge, const QDate& heute) {
    const QStringView knapp = text.trimmed();
    const auto t = datumsteile(knapp);
    if (!t) {
        return ausTageszahl(knapp, heute);
    }
    const auto [erste, mitte, letzte] = t->zahlen;
    if (jahrZuerst(*t)) {
        return t->stellen[0] == 4 && t->stellen[2] <= 2
                   ? möglich(QDate(erste, mitte, letzte), heute)
                   : std::nullopt;
    }
    if (t->stellen[2] == 1 || t->stellen[2] == 3) {
        return std::nullopt;
    }
    const int jahr = vollesJahr(letzte, t->stellen[2], heute);
    const bool monatZuerst = folgtJemandem(*t) && folge == Tagesfolge::MonatZuerst;
    return möglich(monatZuerst ? QDate(jahr, erste, mitte) : QDate(jahr, mitte, erste), heute);
}

std::optional<Tagesfolge> tagesfolge(const QStringList& daten) {
    bool tag = false;
    bool monat = false;
    for (const QString& text : daten) {
        const auto t = datumsteile(QStringView(text).trimmed());
        if (t && folgtJemandem(*t)) {
            tag = tag || t->zahlen[0] > Monate;
            monat = monat || t->zahlen[1] > Monate;
        }
    }
    return tag == monat ? std::nullopt
                        : std::optional(tag ? Tagesfolge::TagZuerst : Tagesfolge::MonatZuerst);
}

bool istMehrdeutig(QStringView text, const QDate& heute) {
    const auto tag = datumAusForm(text, Tagesfolge::TagZuerst, heute);
    const auto monat = datumAusForm(text, Tagesfolge::MonatZuerst, heute);
    return tag && monat && tag != monat;
}

} // namespace tarvel
