#include "measure/koordinatenleser.h"
#include "platform/csv.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar anführung = u'"';
/// Columns beyond are counted only, so that a line of nothing but commas fills no memory.
constexpr qsizetype größteSpaltenzahl = 4096;

/// The fields of one record.
struct Felder {
    QStringList werte;
    int anzahl = 0;  ///< also of those that are not kept
    int belegte = 0; ///< up to the last one that is not empty

    [[nodiscard]] QString wert(int spalte) const { return werte.value(spalte); }
};

/// Splits records into fields.
class Feldleser {
public:
    Feldleser(Zeilenleser& zeilen, QChar trenner)
        : zeilen_(zeilen)
        , trenner_(trenner) {}

    /// The fields of the record that begins with @p zeile; a quoted field may go on over the lines
    /// after it. Throws Lesefehler when quotation marks do not match.
    Felder lies(QStringView zeile) {
        felder_ = {};
        beginn_ = zeilen_.nummer();
        while (true) {
            const QString feld = istAngeführt(zeile) ? angeführt(zeile) : einfach(zeile);
            nimm(feld);
            if (zeile.isEmpty()) {
                return std::move(felder_);
            }
            zeile = zeile.sliced(1); // the delimiter
            if (zeile.isEmpty()) {
                nimm({});
                return std::move(felder_);
            }
        }
    }

private:
    void nimm(const QString& feld) {
        ++felder_.anzahl;
        if (!feld.isEmpty()) {
            felder_.belegte = felder_.anzahl;
        }
        if (felder_.werte.size() < größteSpaltenzahl) {
            felder_.werte.append(feld);
        }
    }

    /// Looks no further than the field: neither over a tab that ends it nor to the end of the line.
    static bool istAngeführt(QStringView zeile) {
        const auto keinBlank = [](QChar c) { return c != u' '; };
        const auto* const erstes = std::find_if(zeile.begin(), zeile.end(), keinBlank);
        return erstes != zeile.end() && *erstes == anführung;
    }

    QString einfach(QStringView& zeile) const {
        const qsizetype ende = zeile.indexOf(trenner_);
        const QStringView feld = ende < 0 ? zeile : zeile.first(ende);
        zeile = zeile.sliced(feld.size());
        return feld.trimmed().toString();
    }

    /// A quoted field; two quotation marks in it stand for one.
    QString angeführt(QStringView& zeile) {
        zeile = zeile.sliced(zeile.indexOf(anführung) + 1);
        QString feld;
        while (true) {
            const qsizetype ende = zeile.indexOf(anführung);
            if (ende < 0) {
                feld += zeile;
                feld += u'\n';
                const auto nächste = zeilen_.nächste();
                if (!nächste) {
                    throw unerwartet(u"\"");
                }
                zeile = *nächste;
                continue;
            }
            feld += zeile.first(ende);
            zeile = zeile.sliced(ende + 1);
            if (!zeile.startsWith(anführung)) {
                break;
            }
            feld += anführung;
            zeile = zeile.sliced(1);
        }
        const qsizetype bisTrenner = zeile.indexOf(trenner_);
        const QStringView danach = bisTrenner < 0 ? zeile : zeile.first(bisTrenner);
        if (!danach.trimmed().isEmpty()) {
            throw unerwartet(danach);
        }
        zeile = zeile.sliced(danach.size());
        return feld.trimmed();
    }

    [[nodiscard]] Lesefehler unerwartet(QStringView text) const {
        return {{.zeile = beginn_, .grund = Lesegrund::Unerwartet, .texte = {zitat(text)}}};
    }

    Zeilenleser& zeilen_;
    QChar trenner_;
    Felder felder_;
    int beginn_ = 0;
};

/// Where the columns that count stand; -1 for a column that is not there.
struct Spalten {
    static constexpr int Koordinatenzahl = 2 * Messpunkte::Anzahl;

    std::array<int, Koordinatenzahl> koordinaten; ///< x1, y1, x2, …
    int wing = -1;
    int file = -1;
    int dpi = -1;
    int zoom = -1;
    int ausgelassen = -1;
    int geprüft = -1;
    int stand = -1;
    int anzahl = 0;
    int belegte = 0;
    QString doppelt; ///< a coordinate that has two columns

    [[nodiscard]] static QString name(int koordinate) {
        return (koordinate % 2 == 0 ? u"x"_s : u"y"_s) + QString::number(koordinate / 2 + 1);
    }

    explicit Spalten(const Felder& kopf)
        : anzahl(kopf.anzahl)
        , belegte(kopf.belegte) {
        koordinaten.fill(-1);
        for (int spalte = 0; spalte < kopf.werte.size(); ++spalte) {
            ordneZu(kopf.werte[spalte].toLower(), spalte);
        }
    }

    [[nodiscard]] int gefunden() const {
        return static_cast<int>(koordinaten.size() -
                                std::count(koordinaten.begin(), koordinaten.end(), -1));
    }

private:
    void ordneZu(const QString& titel, int spalte) {
        if (titel == u"wing" && wing < 0) {
            wing = spalte;
        } else if (titel == u"file" && file < 0) {
            file = spalte;
        } else if (titel == u"dpi" && dpi < 0) {
            dpi = spalte;
        } else if (titel == u"zoom" && zoom < 0) {
            zoom = spalte;
        } else if (titel == u"left_out" && ausgelassen < 0) {
            ausgelassen = spalte;
        } else if (titel == u"checked" && geprüft < 0) {
            geprüft = spalte;
        } else if (titel == u"state" && stand < 0) {
            stand = spalte;
        }
        if (titel.size() != 2 || (titel[0] != u'x' && titel[0] != u'y') || titel[1] < u'1' ||
            titel[1] > u'8') {
            return;
        }
        const int punkt = titel[1].unicode() - u'1';
        int& stelle = koordinaten.at(2 * punkt + (titel[0] == u'y' ? 1 : 0));
        if (stelle >= 0) {
            doppelt = titel;
        }
        stelle = spalte;
    }
};

class Csvleser {
public:
    Csvleser(QStringView text, Messart messart)
        : zeilen_(text)
        , messart_(messart) {}

    std::vector<Koordinatensatz> lies() {
        const Spalten spalten = liesKopf();
        Feldleser felder(zeilen_, trenner_);
        while (const auto zeile = zeilen_.nächste()) {
            if (zeile->trimmed().isEmpty()) {
                continue;
            }
            zeile_ = zeilen_.nummer();
            const Felder werte = felder.lies(*zeile);
            if (werte.belegte > 0) {
                sammlung_.nimm(liesFlügel(werte, spalten));
            }
        }
        return std::move(sammlung_).alle();
    }

private:
    /// The delimiter is the one that finds most columns.
    Spalten liesKopf() {
        QStringView kopf;
        std::optional<QChar> vorgabe;
        while (const auto zeile = zeilen_.nächste()) {
            kopf = zeile->trimmed();
            if (kopf.size() == 5 && kopf.startsWith(u"sep=", Qt::CaseInsensitive)) {
                vorgabe = kopf.back();
            } else if (!kopf.isEmpty()) {
                kopf = *zeile;
                break;
            }
        }
        zeile_ = zeilen_.nummer();
        const Zeilenleser nachKopf = zeilen_;
        Zeilenleser nachBestem = zeilen_;
        std::optional<Spalten> beste;
        std::optional<Lesefehler> unlesbar;
        for (const QChar trenner : {QChar(u';'), QChar(u'\t'), QChar(u',')}) {
            if (vorgabe && trenner != *vorgabe) {
                continue;
            }
            zeilen_ = nachKopf;
            try {
                const Spalten spalten(Feldleser(zeilen_, trenner).lies(kopf));
                if (!beste || spalten.gefunden() > beste->gefunden()) {
                    beste = spalten;
                    trenner_ = trenner;
                    nachBestem = zeilen_;
                }
            } catch (const Lesefehler& grund) { // quoted fields end at another delimiter
                unlesbar = grund;
            }
        }
        if (!beste && unlesbar) {
            throw Lesefehler(*unlesbar);
        }
        zeilen_ = nachBestem;
        return geprüft(beste);
    }

    [[nodiscard]] Spalten geprüft(const std::optional<Spalten>& spalten) const {
        for (int k = 0; k < Spalten::Koordinatenzahl; ++k) {
            const bool nötig = benutzt(messart_, k / 2 + 1) ||
                               (spalten && spalten->koordinaten.at(k ^ 1) >= 0); // half a point
            if (nötig && (!spalten || spalten->koordinaten.at(k) < 0)) {
                throw fehler(Lesegrund::SpalteFehlt, {Spalten::name(k)});
            }
        }
        if (!spalten->doppelt.isEmpty()) {
            throw fehler(Lesegrund::Unerwartet, {spalten->doppelt});
        }
        return *spalten;
    }

    [[nodiscard]] Koordinatensatz liesFlügel(const Felder& werte, const Spalten& spalten) const {
        if (werte.belegte > spalten.anzahl || werte.anzahl < spalten.belegte) {
            throw fehler(Lesegrund::Feldzahl,
                         {QString::number(werte.anzahl), QString::number(spalten.anzahl)});
        }
        Koordinatensatz flügel{.name = ausTextzelle(werte.wert(spalten.wing)).simplified(),
                               .bilddatei = ausTextzelle(werte.wert(spalten.file)).simplified(),
                               .zeile = zeile_};
        bool istZahl = false;
        if (const int dpi = werte.wert(spalten.dpi).toInt(&istZahl); istZahl) {
            flügel.auflösung = dpi;
        }
        flügel.inBildpunkten = !werte.wert(spalten.zoom).isEmpty();
        flügel.ausgelassen = liesAusgelassen(werte.wert(spalten.ausgelassen));
        flügel.ungeprüft = istUngeprüft(werte.wert(spalten.geprüft), werte.wert(spalten.stand));
        for (int punkt = 1; punkt <= Messpunkte::Anzahl; ++punkt) {
            const auto x = liesZelle(werte, spalten, 2 * (punkt - 1));
            const auto y = liesZelle(werte, spalten, 2 * (punkt - 1) + 1);
            if (x.has_value() != y.has_value()) {
                throw fehler(Lesegrund::HalberPunkt, {QString::number(punkt)});
            }
            if (x) {
                flügel.punkte.setze(Messart::AlleMessungen, punkt, *x, *y);
            }
        }
        return flügel;
    }

    [[nodiscard]] bool liesAusgelassen(const QString& text) const {
        const bool ja = text.compare(u"yes"_s, Qt::CaseInsensitive) == 0;
        if (!ja && !text.isEmpty() && text.compare(u"no"_s, Qt::CaseInsensitive) != 0) {
            throw fehler(Lesegrund::Unerwartet, {zitat(text)});
        }
        return ja;
    }

    /// Other programs may have columns of these names that mean something else.
    [[nodiscard]] static bool istUngeprüft(const QString& geprüft, const QString& stand) {
        const auto ist = [](const QString& text, QStringView wort) {
            return text.compare(wort, Qt::CaseInsensitive) == 0;
        };
        return ist(geprüft, u"no") ||
               (!ist(geprüft, u"yes") && (ist(stand, u"sure") || ist(stand, u"doubtful")));
    }

    [[nodiscard]] std::optional<float> liesZelle(const Felder& werte, const Spalten& spalten,
                                                 int nummer) const {
        const int spalte = spalten.koordinaten.at(nummer);
        const QString text = spalte < 0 ? QString() : werte.wert(spalte);
        if (text.isEmpty() || istFehlwert(text)) {
            return std::nullopt;
        }
        // With comma as the delimiter a comma in a quoted field may as well group thousands.
        const bool mehrdeutig = trenner_ == u',' && text.contains(u',');
        const auto zahl = mehrdeutig ? std::nullopt : koordinate(text);
        if (!zahl) {
            throw fehler(Lesegrund::FeldKeineZahl, {Spalten::name(nummer), zitat(text)});
        }
        return zahl;
    }

    [[nodiscard]] Lesefehler fehler(Lesegrund grund, QStringList texte) const {
        return {{.zeile = zeile_, .grund = grund, .texte = std::move(texte)}};
    }

    Zeilenleser zeilen_;
    Messart messart_;
    QChar trenner_;
    int zeile_ = 1; ///< where the record that is being read begins
    Flügelsammlung sammlung_;
};

} // namespace

std::vector<Koordinatensatz> liesCsv(QStringView text, Messart messart) {
    return Csvleser(text, messart).lies();
}

} // namespace tarvel
