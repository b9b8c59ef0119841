#include "measure/koordinatenleser.h"
#include "platform/zahlen.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Letters first, then letters and digits.
bool istSchlüsselname(QStringView text) {
    const auto istBuchstabe = [](QChar c) {
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
    };
    return !text.isEmpty() && istBuchstabe(text.front()) &&
           std::all_of(text.begin(), text.end(), [&](QChar c) {
               return istBuchstabe(c) || (c >= u'0' && c <= u'9') || c == u'_';
           });
}

/// The two numbers of a line of coordinates.
struct Wertepaar {
    QStringView x, y;
};

class Tpsleser {
public:
    explicit Tpsleser(QStringView text)
        : zeilen_(text) {}

    std::vector<Koordinatensatz> lies() {
        while (const auto zeile = zeilen_.nächste()) {
            if (zeile->trimmed().isEmpty() || istTpsKommentar(*zeile)) {
                continue;
            }
            if (const auto schlüssel = tpsSchlüssel(*zeile)) {
                liesSchlüssel(*schlüssel, *zeile);
            } else {
                liesWerte(*zeile);
            }
        }
        schließeAb();
        return std::move(sammlung_).alle();
    }

private:
    void liesSchlüssel(const TpsSchlüssel& schlüssel, QStringView zeile) {
        prüfeVollständig();
        überlesen_ = false;
        const QString& name = schlüssel.name;
        if (name == u"LM") {
            beginne(schlüssel.wert);
        } else if (name == u"LM3") {
            throw fehler(Lesegrund::Unerwartet, {zitat(zeile)});
        } else if (name == u"IMAGE") {
            flügel(zeile).bilddatei = schlüssel.wert.toString();
        } else if (name == u"ID") {
            flügel(zeile).name = schlüssel.wert.toString();
        } else if (name == u"SCALE") {
            flügel(zeile).maßstab = liesMaßstab(schlüssel.wert);
        } else {
            überlesen_ = name != u"COMMENT";
        }
    }

    void beginne(QStringView anzahl) {
        schließeAb();
        bool lesbar = false;
        const int punkte = anzahl.toInt(&lesbar);
        if (!lesbar) {
            throw fehler(Lesegrund::FeldKeineZahl, {u"LM"_s, zitat(anzahl)});
        }
        if (punkte != Messpunkte::Anzahl) {
            throw falschePunktzahl(punkte);
        }
        flügel_.emplace();
        flügel_->zeile = zeilen_.nummer();
        gelesen_ = 0;
    }

    Koordinatensatz& flügel(QStringView zeile) {
        if (!flügel_) {
            throw fehler(Lesegrund::Unerwartet, {zitat(zeile)});
        }
        return *flügel_;
    }

    [[nodiscard]] std::optional<float> liesMaßstab(QStringView text) const {
        if (text.isEmpty() || istFehlwert(text)) {
            return std::nullopt;
        }
        const auto zahl = koordinate(text);
        if (!zahl || *zahl == 0) {
            throw fehler(Lesegrund::FeldKeineZahl, {u"SCALE"_s, zitat(text)});
        }
        return zahl;
    }

    void liesWerte(QStringView zeile) {
        if (!flügel_ || gelesen_ == Messpunkte::Anzahl) {
            if (!überlesen_) {
                throw fehler(Lesegrund::Unerwartet, {zitat(zeile)});
            }
            return;
        }
        const auto [xText, yText] = wertepaar(zeile);
        const auto x = liesKoordinate(xText);
        const auto y = liesKoordinate(yText);
        ++gelesen_;
        if (x && y) {
            flügel_->punkte.setze(Messart::AlleMessungen, gelesen_, *x, *y);
        }
    }

    [[nodiscard]] Wertepaar wertepaar(QStringView zeile) const {
        const QStringView text = zeile.trimmed();
        const auto istLücke = [](QChar c) { return c.isSpace(); };
        const auto ende = std::find_if(text.begin(), text.end(), istLücke) - text.begin();
        const QStringView rest = text.sliced(ende).trimmed();
        if (rest.isEmpty()) {
            throw fehler(Lesegrund::ZeileZuKurz, {zitat(zeile)});
        }
        if (std::any_of(rest.begin(), rest.end(), istLücke)) {
            throw fehler(Lesegrund::Unerwartet, {zitat(zeile)});
        }
        return {text.first(ende), rest};
    }

    /// Nothing for a missing point.
    [[nodiscard]] std::optional<float> liesKoordinate(QStringView text) const {
        const auto zahl = koordinate(text);
        if (!zahl && !istFehlwert(text) && getippteZahl(text).value_or(0) >= 0) {
            throw fehler(Lesegrund::KeineZahl, {zitat(text)});
        }
        return zahl;
    }

    void prüfeVollständig() const {
        if (flügel_ && gelesen_ < Messpunkte::Anzahl) {
            throw falschePunktzahl(gelesen_);
        }
    }

    void schließeAb() {
        prüfeVollständig();
        if (flügel_) {
            sammlung_.nimm(*std::exchange(flügel_, std::nullopt));
        }
    }

    [[nodiscard]] Lesefehler falschePunktzahl(int punkte) const {
        return fehler(Lesegrund::Punktzahl,
                      {QString::number(punkte), QString::number(Messpunkte::Anzahl)});
    }

    [[nodiscard]] Lesefehler fehler(Lesegrund grund, QStringList texte) const {
        return {{.zeile = zeilen_.nummer(), .grund = grund, .texte = std::move(texte)}};
    }

    Zeilenleser zeilen_;
    std::optional<Koordinatensatz> flügel_; ///< the wing being read
    int gelesen_ = 0;                       ///< how many of its points
    bool überlesen_ = false; ///< lines without a key belong to a key that is passed over
    Flügelsammlung sammlung_;
};

} // namespace

std::optional<TpsSchlüssel> tpsSchlüssel(QStringView zeile) {
    const qsizetype gleich = zeile.indexOf(u'=');
    if (gleich < 0) {
        return std::nullopt;
    }
    const QStringView name = zeile.first(gleich).trimmed();
    if (!istSchlüsselname(name)) {
        return std::nullopt;
    }
    return TpsSchlüssel{name.toString().toUpper(), zeile.sliced(gleich + 1).trimmed()};
}

bool istTpsKommentar(QStringView zeile) {
    const QStringView text = zeile.trimmed();
    return text.startsWith(u'#') || text.startsWith(u'"');
}

std::vector<Koordinatensatz> liesTps(QStringView text) {
    return Tpsleser(text).lies();
}

} // namespace tarvel
