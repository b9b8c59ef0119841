#include "measure/messdatei.h"

#include "measure/indexmuster.h"
#include "measure/textdatei.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// Places in a line, counted from 0.
constexpr qsizetype nummerLänge = 3;
constexpr qsizetype wertBeginn = 4;
constexpr qsizetype ciRest = 9;
constexpr qsizetype hiRest = 10;
constexpr qsizetype dvLänge = 4;
constexpr qsizetype klassenLänge = 4;

constexpr QStringView endeCI = u"EndeCI";
constexpr QStringView endeHI = u"EndeHI";

/// A number in plain digits. The few places of a value leave no room for an exponent to mean well.
std::optional<float> dezimalzahl(QStringView text) {
    const auto erlaubt = [](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'.' || c == u',' || c == u'+' || c == u'-';
    };
    if (!std::all_of(text.begin(), text.end(), erlaubt)) {
        return std::nullopt;
    }
    const std::optional<double> zahl = getippteZahl(text);
    return zahl ? einfachGenau(*zahl) : std::nullopt;
}

/// A ratio of two lengths.
std::optional<float> index(QStringView text) {
    const std::optional<float> wert = dezimalzahl(text);
    return wert && *wert >= 0 ? wert : std::nullopt;
}

/// The class position, up to @p höchste, that stands somewhere in @p text, perhaps after its word;
/// else @p berechnet, written like @p wert.
QString klassenposition(QStringView text, float höchste, float berechnet, QStringView wert) {
    for (const QStringView wort : text.tokenize(u' ', Qt::SkipEmptyParts)) {
        const std::optional<float> klasse = index(wort);
        if (wort.size() <= klassenLänge && klasse && *klasse <= höchste) {
            return wort.toString();
        }
    }
    return Format(berechnet, muster::Klasse, {.dezimal = wert.contains(u',') ? u',' : u'.'});
}

/// The shift in the last places. A number with one more digit pushes its sign out of them.
QStringView verschiebung(QStringView zeile) {
    const QStringView text = zeile.last(dvLänge);
    const qsizetype davor = zeile.size() - dvLänge - 1;
    const bool abgeschnitten =
        text.front().isDigit() && davor >= hiRest && (zeile[davor] == u'-' || zeile[davor] == u'+');
    return abgeschnitten ? zeile.sliced(davor) : text.trimmed();
}

class Messdateileser {
public:
    explicit Messdateileser(QStringView text)
        : zeilen_(text) {}

    Messdatei lies() {
        liesKopf();
        liesAbschnitt(endeCI, [this](QStringView zeile) { liesCi(zeile); });
        if (endmarken_ == 1) {
            (void)nächste(); // heading
            liesAbschnitt(endeHI, [this](QStringView zeile) { liesHiDv(zeile); });
        }
        if (endmarken_ == 2) {
            liesMerkmale();
        }
        schließeAb();
        return std::move(datei_);
    }

    void melde(Lesegrund grund, QStringList texte = {}) {
        if (datei_.probleme.size() >= Messdatei::HöchsteProblemzahl) {
            ++datei_.weitereProbleme;
            return;
        }
        datei_.probleme.push_back({std::max(1, zeilen_.nummer()), grund, std::move(texte)});
    }

private:
    /// The next line; at the end of the file that is said once and all further lines are missing.
    std::optional<QStringView> nächste() {
        const auto zeile = zeilen_.nächste();
        if (!zeile && !beendet_) {
            beendet_ = true;
            melde(Lesegrund::DateiEndet);
        }
        return zeile;
    }

    void liesKopf() {
        if (const auto art = nächste()) {
            liesArt(*art);
        }
        QString verworfen;
        for (QString* feld : {&datei_.Jahr, &datei_.KNr, &datei_.LV, &datei_.ZNr, &datei_.UNr,
                              &datei_.Name, &verworfen, &verworfen, &datei_.Besitzer, &datei_.Volk,
                              &datei_.Begattung, &verworfen, &verworfen}) {
            if (const auto zeile = nächste()) {
                *feld = zeile->toString();
            }
        }
    }

    void liesArt(QStringView zeile) {
        datei_.Drohnen = zeile.startsWith(u'D');
        const int ziffer = zeile.isEmpty() ? -1 : zeile.back().unicode() - u'0';
        if (ziffer < static_cast<int>(Messart::NurCubitalindex) ||
            ziffer > static_cast<int>(Messart::Korrelation)) {
            melde(Lesegrund::Unerwartet, {zitat(zeile)});
            return;
        }
        datei_.messart = static_cast<Messart>(ziffer);
    }

    template <typename Lies>
    void liesAbschnitt(QStringView marke, Lies lies) {
        if (beendet_) {
            return;
        }
        while (const auto zeile = zeilen_.nächste()) {
            if (*zeile == marke) {
                ++endmarken_;
                return;
            }
            if (*zeile == endeHI) { // of the section after this one
                endmarken_ = 2;
                return;
            }
            if (marke == endeHI) {
                datei_.GrößteLänge = std::max(datei_.GrößteLänge, static_cast<int>(zeile->size()));
            }
            if (!zeile->trimmed().isEmpty()) {
                lies(*zeile);
            }
        }
        beendet_ = true; // without its end marker a section goes to the end of the file
    }

    using Vergeben = std::array<int, Messreihe::HöchsteFlügelzahl + 1>;

    /// The wing number of an entry; nullopt when it is none or belongs to an entry before. Marks it
    /// as given only when the entry is kept.
    std::optional<qint16> flügelnummer(QStringView zeile, const Vergeben& vergeben) {
        const QStringView text = zeile.first(nummerLänge);
        bool lesbar = false;
        const int nummer = text.trimmed().toInt(&lesbar);
        if (!lesbar || nummer < 1 || nummer > Messreihe::HöchsteFlügelzahl) {
            melde(Lesegrund::Flügelnummer,
                  {zitat(text), QString::number(Messreihe::HöchsteFlügelzahl)});
            return std::nullopt;
        }
        if (const int bisher = vergeben.at(nummer); bisher > 0) {
            melde(Lesegrund::FlügelDoppelt, {zitat(text), QString::number(bisher)});
            return std::nullopt;
        }
        return static_cast<qint16>(nummer);
    }

    void liesCi(QStringView zeile) {
        if (zeile.size() <= wertBeginn) {
            melde(Lesegrund::ZeileZuKurz, {zitat(zeile)});
            return;
        }
        const auto nummer = flügelnummer(zeile, ciVergeben_);
        if (!nummer) {
            return;
        }
        const QStringView wert = zeile.sliced(wertBeginn).left(ciRest - wertBeginn).trimmed();
        const auto CI = index(wert);
        if (!CI) {
            melde(Lesegrund::KeineZahl, {zitat(wert)});
            return;
        }
        ciVergeben_.at(*nummer) = zeilen_.nummer();
        datei_.ciZeilen.push_back(
            {*nummer, wert.toString(),
             klassenposition(zeile.mid(ciRest), HöchsteKlasseCI, klassenpositionCI(*CI), wert)});
    }

    void liesHiDv(QStringView zeile) {
        if (zeile.size() < hiRest + dvLänge) {
            melde(Lesegrund::ZeileZuKurz, {zitat(zeile)});
            return;
        }
        const auto nummer = flügelnummer(zeile, hiVergeben_);
        if (!nummer) {
            return;
        }
        const QStringView wert = zeile.sliced(wertBeginn, hiRest - wertBeginn).trimmed();
        const QStringView dv = verschiebung(zeile);
        const auto HI = index(wert);
        const auto DV = dezimalzahl(dv);
        if (!HI || !DV) {
            melde(Lesegrund::KeineZahl, {zitat(HI ? dv : wert)});
            return;
        }
        hiVergeben_.at(*nummer) = zeilen_.nummer();
        const QStringView klasse = zeile.first(zeile.size() - dvLänge).sliced(hiRest);
        const bool mitVorzeichen = dv.startsWith(u'-') || dv.startsWith(u'+');
        datei_.hiDvZeilen.push_back(
            {*nummer, wert.toString(),
             klassenposition(klasse, HöchsteKlasseHI, klassenpositionHI(*HI), wert),
             (mitVorzeichen ? u""_s : u"+"_s) + dv.toString()});
    }

    void liesMerkmale() {
        constexpr int zeilenzahl = 3;
        for (int i = 0; i <= zeilenzahl; ++i) {
            const auto zeile = nächste();
            if (!zeile) {
                return;
            }
            datei_.merkmaltext += (i == 0 ? u'A' : u';') + zeile->toString();
            if (i < zeilenzahl) {
                datei_.merkmalzeilen.append(zeile->toString());
            } else {
                liesBienenanzahl(*zeile);
            }
        }
    }

    void liesBienenanzahl(QStringView zeile) {
        const std::optional<double> zahl = getippteZahl(zeile);
        datei_.Bienenanzahl = zahl && *zahl >= 0 ? ganzzahl16(*zahl) : std::nullopt;
        if (!datei_.Bienenanzahl) {
            melde(Lesegrund::KeineZahl, {zitat(zeile)});
        }
    }

    void schließeAb() {
        const auto nachNummer = [](const auto& a, const auto& b) { return a.nummer < b.nummer; };
        std::sort(datei_.ciZeilen.begin(), datei_.ciZeilen.end(), nachNummer);
        std::sort(datei_.hiDvZeilen.begin(), datei_.hiDvZeilen.end(), nachNummer);
        datei_.istMessdatei = endmarken_ > 0 || !datei_.ciZeilen.empty() || kopfGlaubhaft();
    }

    /// Colony data that the file was cut short behind: a kind of examination and a year.
    [[nodiscard]] bool kopfGlaubhaft() const {
        constexpr qsizetype jahreslänge = 4;
        const QString jahr = datei_.Jahr.trimmed();
        return datei_.messart && zeilen_.nummer() > 1 && jahr.size() <= jahreslänge &&
               std::all_of(jahr.begin(), jahr.end(), [](QChar c) { return c.isDigit(); });
    }

    Zeilenleser zeilen_;
    Messdatei datei_;
    int endmarken_ = 0;     ///< end markers that lie behind
    bool beendet_ = false;  ///< nothing more can be read
    Vergeben ciVergeben_{}; ///< line of the entry of each wing; 0 without one
    Vergeben hiVergeben_{};
};

Messdatei keineMessdatei(Leseproblem problem) {
    Messdatei datei;
    datei.probleme.push_back(std::move(problem));
    return datei;
}

} // namespace

Messdatei liesMessdatei(QByteArrayView bytes) {
    const Dateitext inhalt = dateitext(bytes);
    if (inhalt.problem) {
        return keineMessdatei(*inhalt.problem);
    }
    Messdateileser leser(inhalt.text);
    if (!inhalt.zeichensatz.isEmpty()) {
        leser.melde(Lesegrund::AndererZeichensatz, {inhalt.zeichensatz});
    }
    Messdatei datei = leser.lies();
    return datei.istMessdatei ? datei : keineMessdatei({.grund = Lesegrund::KeineMessdatei});
}

} // namespace tarvel
