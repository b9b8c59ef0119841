#pragma once

#include "lang/texte.h"
#include "measure/bildmarke.h"
#include "measure/indizes.h"
#include "platform/zahlen.h"

#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace tarvel {

/// Cubital-index line of one wing. Value and class keep the decimal separator they were made with.
struct CiZeile {
    qint16 nummer = 0;
    QString wert;   ///< "0.00"
    QString klasse; ///< class position "0.0"; "0.0" when out of range

    bool operator==(const CiZeile&) const = default;
};

/// Hantel-index and discoidal-shift line of one wing.
struct HiDvZeile {
    qint16 nummer = 0;
    QString hi;     ///< "0.000"
    QString klasse; ///< class position "0.0"; "0.0" when out of range
    QString dv;     ///< "+0.0;-0.0"

    bool operator==(const HiDvZeile&) const = default;
};

/// The words that stand in the lines of the lists, in one language.
struct Zeilenwörter {
    QString CI;
    QString HI;
    QString DV;
    QString Klasse; ///< followed by one blank it marks the class in a line
};

[[nodiscard]] Zeilenwörter zeilenwörter(const Texte& texte);

/// "001  CI=3.07  Klasse 21.3"
[[nodiscard]] QString zeilentext(const CiZeile& zeile, const Zeilenwörter& wörter);
/// "001  HI=0.993  Klasse 24.7   DV=+0.4"
[[nodiscard]] QString zeilentext(const HiDvZeile& zeile, const Zeilenwörter& wörter);

/// The indices of a wing as the lists write them; empty where there is none.
struct Indextexte {
    QString CI; ///< "0.00"
    QString HI; ///< "0.000"
    QString DV; ///< "+0.0;-0.0"
};

[[nodiscard]] Indextexte indextexte(const Indizes& indizes, const Zahlenformat& format);

/// Chart values of one wing in full precision; KeinWert where there is none.
struct Chartwerte {
    static constexpr float KeinWert = -1000.0F;

    float CI = KeinWert;
    float HI = KeinWert;
    float DV = KeinWert;

    bool operator==(const Chartwerte&) const = default;
};

/// What a taken-over wing was measured from, kept so that it can be checked and measured again.
struct Flügelmessung {
    Messpunkte punkte{Messart::AlleMessungen};
    Messart messart = Messart::AlleMessungen;
    Aufnahme aufnahme;
    QString bilddatei; ///< full path of the picture
    Bildkennung bild = {};
    /// y came counted from the lower edge of a picture whose height was not known, and was turned
    /// over about the wing's own middle: the shape is right, the place on the picture is not.
    bool ohneBildhöhe = false;
    /// The program measured it alone; nobody has looked at its points since.
    bool ungeprüft = false;

    bool operator==(const Flügelmessung&) const = default;
};

/// True when a wing was measured on the picture @p bilddatei. Where both contents are known they
/// have to be the same: a later scan may have taken the name. Never so for a wing whose place on
/// its picture is not known.
[[nodiscard]] bool liegtAuf(const Flügelmessung& flügel, const QString& bilddatei,
                            const Bildkennung& bild = {});

/// What is kept of a wing beside its lines and points.
struct Flügelangaben {
    /// Not part of the sample: it stays in the series and counts nowhere.
    bool ausgelassen = false;
    /// Fields of a stored row that this version does not know, name and text as they stand.
    std::vector<std::pair<QString, QString>> weitere = {};

    bool operator==(const Flügelangaben&) const = default;
};

/// What another resolution does to a wing.
struct Auflösungswechsel {
    int nummer = 0;
    int dpiVorher = 0;
    float DVVorher = Chartwerte::KeinWert;
    float DVNachher = Chartwerte::KeinWert;
};

/// The measurement series of one examination: the lines of the two lists, the chart values and
/// the points of every wing, all told apart by the wing number 1 to 200.
class Messreihe {
public:
    static constexpr int HöchsteFlügelzahl = 200;

    [[nodiscard]] const std::vector<CiZeile>& ciZeilen() const { return ciZeilen_; }
    [[nodiscard]] const std::vector<HiDvZeile>& hiDvZeilen() const { return hiDvZeilen_; }
    [[nodiscard]] QStringList ciTexte(const Zeilenwörter& wörter) const;
    [[nodiscard]] QStringList hiDvTexte(const Zeilenwörter& wörter) const;

    /// Chart values of wing @p nummer, 0 to 200.
    [[nodiscard]] const Chartwerte& chartwerte(int nummer) const { return chartwerte_.at(nummer); }

    /// The measured points of a wing, or null when it was not measured in this program.
    [[nodiscard]] const Flügelmessung* messung(int nummer) const;
    [[nodiscard]] const std::map<int, Flügelmessung>& messungen() const { return messungen_; }

    [[nodiscard]] bool leer() const { return ciZeilen_.empty() && hiDvZeilen_.empty(); }
    /// Number of the last wing of the series; 0 for an empty one.
    [[nodiscard]] qint16 letzteNummer() const;
    /// Number that the next wing receives. Above 200 the series is full.
    [[nodiscard]] qint16 nächsteNummer() const { return static_cast<qint16>(letzteNummer() + 1); }
    [[nodiscard]] bool enthält(int nummer) const;
    /// Wing numbers in the order of the lists.
    [[nodiscard]] std::vector<int> nummern() const;

    /// Enters the indices of a wing: new lines at the end, or in place of the lines that already
    /// carry its number. @p nummer 1 to 200. Only what was computed makes a line; the line of
    /// hantel index and discoidal shift needs both.
    /// Numbers are written with the decimal sign that the series has, else with that of @p format.
    /// Returns false, and changes nothing, when not one index was computed.
    bool trageEin(qint16 nummer, const Indizes& indizes, const Flügelmessung& messung,
                  const Zahlenformat& format);

    /// Puts stored wings in place of the series. Lines are brought into the order of their numbers;
    /// numbers outside 1 to 200 are dropped, and of several lines with one number the first counts.
    /// Chart values and points count only for wings with the lines they belong to; a line without a
    /// chart value in @p werte gets the one that stands in it.
    void stelleHer(std::vector<CiZeile> ciZeilen, std::vector<HiDvZeile> hiDvZeilen,
                   const std::map<int, Chartwerte>& werte, std::map<int, Flügelmessung> messungen,
                   std::map<int, Flügelangaben> angaben = {});

    /// Removes a wing with all its lines; the others keep their numbers. False when there is none
    /// of that number.
    bool löscheFlügel(int nummer);
    /// Removes the last wing. False when the series is empty.
    bool löscheLetzte() { return löscheFlügel(letzteNummer()); }
    void löscheAlle();

    /// @name Wings left out of the sample
    /// They keep number, lines and points. Whatever counts, shares, averages or judges goes by
    /// gewertete().
    /// @{
    /// Leaves a wing out or takes it back. False when that changes nothing.
    bool lassAus(int nummer, bool aus);
    [[nodiscard]] bool ausgelassen(int nummer) const;
    [[nodiscard]] std::vector<int> gewertete() const;
    [[nodiscard]] std::vector<int> ausgelassene() const;
    [[nodiscard]] const std::map<int, Flügelangaben>& flügelangaben() const {
        return flügelangaben_;
    }
    /// @}

    /// @name Resolution, which belongs to each wing
    /// @{
    /// That of the last wing with points; empty when there is none.
    [[nodiscard]] std::optional<int> auflösung() const;
    /// What setzeAuflösung() would change, in the order of @p nummern.
    [[nodiscard]] std::vector<Auflösungswechsel> auflösungswechsel(std::span<const int> nummern,
                                                                   int dpi) const;
    /// Says that wings were scanned with @p dpi, above 0. Points stay, the discoidal shift is
    /// computed anew and written with the separator of its line; the other indices do not depend on
    /// it. Wings without points are passed over. False when nothing changes.
    bool setzeAuflösung(std::span<const int> nummern, int dpi);
    /// Wings measured on a picture, as liegtAuf() says.
    [[nodiscard]] std::vector<int> flügelAufBild(const QString& bilddatei,
                                                 const Bildkennung& bild = {}) const;
    /// Notes where the picture of wings is now, @p größe in pixels; wings whose place on it was not
    /// known come to it. That is no change of what was measured. False when there are none of it.
    bool verlegeBild(const QString& bilddatei, const Bildkennung& bild, const QString& jetzt,
                     QSize größe);
    /// @}

    /// True since the last change that was not yet stored.
    [[nodiscard]] bool geändert() const { return geändert_; }
    void alsUnverändertMerken() { geändert_ = false; }

    bool operator==(const Messreihe&) const = default;

private:
    /// That of the lines; nullopt when there are none.
    [[nodiscard]] std::optional<QChar> dezimalzeichen() const;

    std::vector<CiZeile> ciZeilen_;
    std::vector<HiDvZeile> hiDvZeilen_;
    std::vector<Chartwerte> chartwerte_ = std::vector<Chartwerte>(HöchsteFlügelzahl + 1);
    std::map<int, Flügelmessung> messungen_;
    std::map<int, Flügelangaben> flügelangaben_;
    bool geändert_ = false;
};

} // namespace tarvel
