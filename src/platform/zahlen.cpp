#include "platform/zahlen.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int stellenDouble = 15;
constexpr int stellenFloat = 7;

bool istZiffer(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool istLeerzeichen(QChar c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u00A0';
}

QStringView getrimmt(QStringView text) {
    while (!text.isEmpty() && istLeerzeichen(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && istLeerzeichen(text.back())) {
        text.chop(1);
    }
    return text;
}

// French and some other systems group by a no-break blank, which nobody types.
bool istTausender(QChar c, const Zahlenformat& format) {
    const bool blank = format.tausender == u'\u00A0' || format.tausender == u'\u202F';
    return c == format.tausender || (blank && (c == u' ' || c == u'\u00A0' || c == u'\u202F'));
}

// A number in pure ASCII: sign, digits with at most one point, exponent. from_chars does not tell
// too large from too small, so the place of the first digit decides.
std::optional<double> zahlVon(const std::string& ascii) {
    const char* ende = ascii.data() + ascii.size();
    double wert = 0;
    const auto ergebnis = std::from_chars(ascii.data(), ende, wert);
    if (ergebnis.ec == std::errc()) {
        return ergebnis.ptr == ende ? std::optional(wert) : std::nullopt;
    }
    if (ergebnis.ec != std::errc::result_out_of_range || ergebnis.ptr != ende) {
        return std::nullopt;
    }

    const size_t exponentzeichen = std::min(ascii.find('e'), ascii.size());
    const size_t punkt = std::min(ascii.find('.'), exponentzeichen);
    const size_t erste = ascii.find_first_of("123456789");
    const auto ort = static_cast<double>(punkt) - static_cast<double>(erste);
    double exponent = 0;
    for (size_t i = exponentzeichen + 1; i < ascii.size(); ++i) {
        if (ascii[i] >= '0' && ascii[i] <= '9') {
            exponent = exponent * 10 + (ascii[i] - '0');
        }
    }
    if (exponentzeichen + 1 < ascii.size() && ascii[exponentzeichen + 1] == '-') {
        exponent = -exponent;
    }
    if (ort + exponent > 0) {
        return std::nullopt;
    }
    return ascii.front() == '-' ? -0.0 : 0.0;
}

// Reads a number from left to right and notes it in ASCII.
class Ziffernleser {
public:
    explicit Ziffernleser(QStringView rest)
        : rest_(rest) {}

    [[nodiscard]] QStringView rest() const { return rest_; }
    [[nodiscard]] bool hatZiffern() const { return hatZiffern_; }
    [[nodiscard]] const std::string& ascii() const { return ascii_; }

    void vorzeichen() {
        if (rest_.startsWith(u'-')) {
            ascii_ += '-';
        }
        if (rest_.startsWith(u'-') || rest_.startsWith(u'+')) {
            rest_ = rest_.sliced(1);
        }
    }

    template <typename IstDezimal, typename IstTausender>
    void mantisse(IstDezimal istDezimal, IstTausender tausender) {
        bool punkt = false;
        while (!rest_.isEmpty()) {
            const QChar c = rest_.front();
            if (istZiffer(c)) {
                ascii_ += static_cast<char>(c.unicode());
                hatZiffern_ = true;
            } else if (istDezimal(c) && !punkt) {
                // from_chars wants a digit before the point
                ascii_ += hatZiffern_ ? "." : "0.";
                punkt = true;
            } else if (!tausender(c) || !hatZiffern_) {
                return;
            }
            rest_ = rest_.sliced(1);
        }
    }

    // Takes nothing unless a digit follows.
    void exponent(QStringView buchstaben) {
        if (rest_.isEmpty() || !buchstaben.contains(rest_.front())) {
            return;
        }
        QStringView weiter = rest_.sliced(1);
        std::string zeichen = "e";
        if (weiter.startsWith(u'-') || weiter.startsWith(u'+')) {
            zeichen += static_cast<char>(weiter.front().unicode());
            weiter = weiter.sliced(1);
        }
        if (weiter.isEmpty() || !istZiffer(weiter.front())) {
            return;
        }
        ascii_ += zeichen;
        while (!weiter.isEmpty() && istZiffer(weiter.front())) {
            ascii_ += static_cast<char>(weiter.front().unicode());
            weiter = weiter.sliced(1);
        }
        rest_ = weiter;
    }

private:
    QStringView rest_;
    std::string ascii_;
    bool hatZiffern_ = false;
};

struct Basiszahl {
    double wert = 0;
    QStringView rest;
};

// "&H1F" and "&O17": up to four hexadecimal digits are a 16-bit number, up to eight a 32-bit one,
// so &HFFFF is -1.
std::optional<Basiszahl> basiszahl(QStringView text) {
    const bool hex = text.startsWith("&h"_L1, Qt::CaseInsensitive);
    if (!hex && !text.startsWith("&o"_L1, Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    constexpr quint64 größte = 0xFFFFFFFF;
    quint64 wert = 0;
    QStringView rest = text.sliced(2);
    const qsizetype länge = rest.size();
    while (!rest.isEmpty() && rest.front().unicode() < 0x80) {
        const std::string zeichen(1, static_cast<char>(rest.front().unicode()));
        unsigned ziffer = 0;
        const auto gelesen =
            std::from_chars(zeichen.data(), zeichen.data() + 1, ziffer, hex ? 16 : 8);
        if (gelesen.ec != std::errc()) {
            break;
        }
        wert = wert * (hex ? 16 : 8) + ziffer;
        if (wert > größte) {
            return std::nullopt;
        }
        rest = rest.sliced(1);
    }
    if (rest.size() == länge) {
        return std::nullopt;
    }
    const double zahl = wert <= 0xFFFF ? static_cast<qint16>(wert) : static_cast<qint32>(wert);
    return Basiszahl{zahl, rest};
}

bool nie(QChar /*zeichen*/) {
    return false;
}

std::optional<double> ganzeZahl(QStringView text, const Zahlenformat& format,
                                QStringView exponentbuchstaben) {
    text = getrimmt(text);
    if (const auto basis = basiszahl(text)) {
        return basis->rest.isEmpty() ? std::optional(basis->wert) : std::nullopt;
    }

    const bool geklammert = text.size() >= 2 && text.front() == u'(' && text.back() == u')';
    if (geklammert) {
        text = text.sliced(1, text.size() - 2);
    }
    if (!format.währung.isEmpty() && text.startsWith(format.währung)) {
        text = getrimmt(text.sliced(format.währung.size()));
    } else if (!format.währung.isEmpty() && text.endsWith(format.währung)) {
        text = getrimmt(text.chopped(format.währung.size()));
    }

    Ziffernleser leser(text);
    leser.vorzeichen();
    Ziffernleser ziffern(getrimmt(leser.rest()));
    ziffern.mantisse([&](QChar c) { return c == format.dezimal; },
                     [&](QChar c) { return istTausender(c, format); });
    if (!ziffern.hatZiffern()) {
        return std::nullopt;
    }
    ziffern.exponent(exponentbuchstaben);
    if (!ziffern.rest().isEmpty()) {
        return std::nullopt;
    }
    const auto wert = zahlVon(leser.ascii() + ziffern.ascii());
    return geklammert && wert ? std::optional(-*wert) : wert;
}

// |number| as decimal digits: 0.d1d2d3… times ten to the power of punkt.
struct Dezimal {
    bool negativ = false;
    std::string ziffern;
    int punkt = 0;

    [[nodiscard]] bool istNull() const {
        return ziffern.find_first_not_of('0') == std::string::npos;
    }
    [[nodiscard]] char ziffer(int stelle) const {
        const bool drin = stelle >= 0 && stelle < static_cast<int>(ziffern.size());
        return drin ? ziffern[static_cast<size_t>(stelle)] : '0';
    }
    // Half away from zero.
    void rundeAuf(int nachkommastellen) {
        const int behalten = punkt + nachkommastellen;
        if (behalten >= static_cast<int>(ziffern.size())) {
            return;
        }
        const bool aufwaerts = ziffer(behalten) >= '5';
        ziffern.resize(static_cast<size_t>(std::max(behalten, 0)));
        if (!aufwaerts) {
            return;
        }
        auto stelle = ziffern.rbegin();
        for (; stelle != ziffern.rend() && *stelle == '9'; ++stelle) {
            *stelle = '0';
        }
        if (stelle != ziffern.rend()) {
            ++*stelle;
        } else {
            ziffern.insert(ziffern.begin(), '1');
            ++punkt;
        }
    }
};

template <typename Gleitzahl>
Dezimal dezimalVon(Gleitzahl wert, int stellen) {
    std::array<char, 64> puffer{}; // d.ddde+ddd
    const auto ergebnis = std::to_chars(puffer.data(), puffer.data() + puffer.size(),
                                        std::abs(wert), std::chars_format::scientific, stellen - 1);
    const std::string text(puffer.data(), ergebnis.ptr);
    const size_t e = text.find('e');
    Dezimal dezimal;
    dezimal.negativ = wert < 0;
    dezimal.ziffern = text.substr(0, 1) + text.substr(2, e - 2);
    dezimal.punkt = std::stoi(text.substr(e + 1)) + 1;
    return dezimal;
}

Dezimal dezimalVon(int wert) {
    Dezimal dezimal;
    dezimal.negativ = wert < 0;
    dezimal.ziffern = std::to_string(std::abs(qint64{wert}));
    dezimal.punkt = static_cast<int>(dezimal.ziffern.size());
    return dezimal;
}

struct Muster {
    QStringView davor;
    QStringView ganze;
    QStringView nachkomma;
    bool punkt = false;
    QStringView danach;

    explicit Muster(QStringView abschnitt) {
        const auto platz = [](QChar c) { return c == u'0' || c == u'#'; };
        const auto nimm = [&abschnitt](auto passt) {
            const auto* ende = std::find_if_not(abschnitt.begin(), abschnitt.end(), passt);
            const QStringView teil = abschnitt.first(ende - abschnitt.begin());
            abschnitt = abschnitt.sliced(teil.size());
            return teil;
        };
        davor = nimm([&platz](QChar c) { return !platz(c) && c != u'.'; });
        ganze = nimm(platz);
        punkt = abschnitt.startsWith(u'.');
        if (punkt) {
            abschnitt = abschnitt.sliced(1);
        }
        if (punkt) {
            nachkomma = nimm(platz);
        }
        danach = abschnitt;
    }
};

QString nachMuster(Dezimal zahl, QStringView pattern, const Zahlenformat& format) {
    const QList<QStringView> abschnitte = pattern.split(u';');
    const bool null = zahl.istNull();
    QStringView abschnitt = abschnitte.front();
    bool vorzeichen = zahl.negativ;
    if (zahl.negativ && abschnitte.size() > 1 && !abschnitte[1].isEmpty()) {
        abschnitt = abschnitte[1];
        vorzeichen = false;
    } else if (null && abschnitte.size() > 2 && !abschnitte[2].isEmpty()) {
        abschnitt = abschnitte[2];
    }
    const Muster muster(abschnitt);

    const auto nachkommastellen = static_cast<int>(muster.nachkomma.size());
    zahl.rundeAuf(nachkommastellen);
    if (zahl.istNull()) {
        zahl.punkt = 0;
    }

    QString text = vorzeichen ? u"-"_s : QString();
    text += muster.davor;
    const qsizetype erste = muster.ganze.indexOf(u'0');
    const auto mindestens = static_cast<int>(erste < 0 ? 0 : muster.ganze.size() - erste);
    for (int stelle = std::max(zahl.punkt, mindestens); stelle > 0; --stelle) {
        text += QLatin1Char(zahl.ziffer(zahl.punkt - stelle));
    }
    if (muster.punkt) {
        text += format.dezimal;
    }
    QString nachkomma;
    for (int stelle = 0; stelle < nachkommastellen; ++stelle) {
        nachkomma += QLatin1Char(zahl.ziffer(zahl.punkt + stelle));
    }
    while (nachkomma.endsWith(u'0') && muster.nachkomma[nachkomma.size() - 1] == u'#') {
        nachkomma.chop(1);
    }
    text += nachkomma;
    text += muster.danach;
    return text;
}

template <typename Gleitzahl>
QString gleitzahlNachMuster(Gleitzahl wert, int stellen, QStringView pattern,
                            const Zahlenformat& format) {
    if (pattern.isEmpty() || !std::isfinite(wert)) {
        return zahltext(wert, format);
    }
    return nachMuster(dezimalVon(wert, stellen), pattern, format);
}

template <typename Gleitzahl>
QString kuerzesterText(Gleitzahl wert, int stellen, const Zahlenformat& format) {
    if (wert == 0) {
        return u"0"_s;
    }
    std::array<char, 64> puffer{};
    const auto ergebnis = std::to_chars(puffer.data(), puffer.data() + puffer.size(), wert,
                                        std::chars_format::general, stellen);
    QString text = QString::fromLatin1(puffer.data(), ergebnis.ptr - puffer.data());
    if (!std::isfinite(wert)) {
        return text;
    }
    return text.replace(u'e', u'E').replace(u'.', format.dezimal);
}

template <typename Ganzzahl>
std::optional<Ganzzahl> gerundet(double wert) {
    const double nach = std::floor(wert);
    const double rest = wert - nach;
    const bool aufwaerts = rest > 0.5 || (rest == 0.5 && std::fmod(nach, 2.0) != 0.0);
    const double ganz = aufwaerts ? nach + 1 : nach;
    if (!(ganz >= std::numeric_limits<Ganzzahl>::min() &&
          ganz <= std::numeric_limits<Ganzzahl>::max())) {
        return std::nullopt;
    }
    return static_cast<Ganzzahl>(ganz);
}

} // namespace

Zahlenformat Zahlenformat::system() {
    const QLocale locale = QLocale::system();
    const QString dezimal = locale.decimalPoint();
    const QString tausender = locale.groupSeparator();
    Zahlenformat format;
    if (!dezimal.isEmpty()) {
        format.dezimal = dezimal.front();
    }
    if (!tausender.isEmpty()) {
        format.tausender = tausender.front();
    }
    format.währung = locale.currencySymbol();
    return format;
}

QString Format(double wert, QStringView pattern, const Zahlenformat& format) {
    return gleitzahlNachMuster(wert, stellenDouble, pattern, format);
}

QString Format(float wert, QStringView pattern, const Zahlenformat& format) {
    return gleitzahlNachMuster(wert, stellenFloat, pattern, format);
}

QString Format(int wert, QStringView pattern, const Zahlenformat& format) {
    return pattern.isEmpty() ? QString::number(wert)
                             : nachMuster(dezimalVon(wert), pattern, format);
}

QString Format(qint16 wert, QStringView pattern, const Zahlenformat& format) {
    return Format(int{wert}, pattern, format);
}

QString Format(const QString& text, QStringView pattern, const Zahlenformat& format) {
    // Unlike elsewhere a D is no exponent here: "1d3" is text.
    const auto wert = ganzeZahl(text, format, u"eE");
    return wert && !pattern.isEmpty() ? Format(*wert, pattern, format) : text;
}

QString zahltext(double wert, const Zahlenformat& format) {
    return kuerzesterText(wert, stellenDouble, format);
}

QString zahltext(float wert, const Zahlenformat& format) {
    return kuerzesterText(wert, stellenFloat, format);
}

double Val(QStringView text) {
    QString ohneBlanks;
    for (const QChar c : text) {
        if (c != u' ' && c != u'\t' && c != u'\n') {
            ohneBlanks += c;
        }
    }
    if (const auto basis = basiszahl(ohneBlanks)) {
        return basis->wert;
    }
    Ziffernleser leser(ohneBlanks);
    leser.vorzeichen();
    leser.mantisse([](QChar c) { return c == u'.'; }, nie);
    if (!leser.hatZiffern()) {
        return 0;
    }
    leser.exponent(u"eEdD");
    constexpr double größte = std::numeric_limits<double>::max();
    return zahlVon(leser.ascii()).value_or(leser.ascii().front() == '-' ? -größte : größte);
}

std::optional<double> zahlAusText(QStringView text, const Zahlenformat& format) {
    return ganzeZahl(text, format, u"eEdD");
}

bool istNumerisch(QStringView text, const Zahlenformat& format) {
    return zahlAusText(text, format).has_value();
}

std::optional<double> getippteZahl(QStringView text) {
    Ziffernleser leser(getrimmt(text));
    leser.vorzeichen();
    leser.mantisse([](QChar c) { return c == u'.' || c == u','; }, nie);
    if (!leser.hatZiffern()) {
        return std::nullopt;
    }
    leser.exponent(u"eE");
    return leser.rest().isEmpty() ? zahlVon(leser.ascii()) : std::nullopt;
}

std::optional<float> einfachGenau(double wert) {
    if (std::abs(wert) > double{std::numeric_limits<float>::max()}) {
        return std::nullopt;
    }
    const auto einfach = static_cast<float>(wert);
    if (einfach == 0 && wert != 0) {
        return std::nullopt;
    }
    return einfach;
}

std::optional<qint16> ganzzahl16(double wert) {
    return gerundet<qint16>(wert);
}

std::optional<qint32> ganzzahl32(double wert) {
    return gerundet<qint32>(wert);
}

QString dreistellig(int nummer) {
    return QString::number(nummer).rightJustified(3, u'0');
}

} // namespace tarvel
