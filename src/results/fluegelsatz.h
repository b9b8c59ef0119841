#pragma once

#include "evaluation/merkmale.h"
#include "measure/messreihe.h"
#include "platform/zahlen.h"
#include "results/untersuchungszusatz.h"

#include <QString>
#include <QStringView>

#include <map>
#include <optional>
#include <vector>

namespace tarvel {

// The long texts of a row of the results table. Numbers of wings have three digits. Values stand
// with the decimal separator of whoever wrote them; readers take point and comma. Every item is
// closed by its separator, so that a text cut short is noticed.
//
// CI      "#007;2,31;12,3; "         a wing each: cubital index; class position. A wing whose
//                                    cubital index is 0 is left out.
// HI_DV   "#007;0,993;24,7;+0,4; "   a wing each: hantel index; class position; discoidal shift
// Grafik1 "CI-HI 1200dpi;007/2,314159/0,9930112;"
//                                    resolution, then the chart values of every wing whose first
//                                    one is above 0; -1000 is no value
// Grafik2 "HI-DV 1200dpi;007/0,9930112/0,4213562;"
//                                    the same with hantel index and discoidal shift
// Grafik3 "Punkte 1;007/8/5/x1/y1/…/x8/y8;"
//                                    a wing each: number of the point set last, number of the point
//                                    chosen for moving, the eight points in pixels of the zoomed
//                                    picture. Numbers have a point and nine digits, which is all
//                                    of a single; a point that is not set has empty places.
// Grafik4 "Angaben 1;Jahr=2025;LV=07;ZNr=003;Modus=L;Summen=0/…;Bienen=001   O, k,  F/…;Felder;
//          001/1/1200/1/C%3A%5CScans%5C1.bmp;001=Bild:3507x2480/Marke:…/Punkte:kkkkkkkt;002;003;
//          003=Ausgelassen:1;"   (on one line)
//                                    what the other columns have no place for: fields "name=text;"
//                                    of the examination, then a wing each: zoom, resolution, kind
//                                    of examination and picture file that its points belong to,
//                                    and its own fields "number=name:text/name:text;". A wing with
//                                    its number alone has zoom to picture file, Bild and Marke of
//                                    the item before. Texts are percent-encoded. The fields:
//
//          Jahr LV ZNr               year, region, breeder number
//          Modus Summen Bienen       body marks as they were entered: mode (L list, A sums),
//                                    counts, lines; the column MERKMAL does not keep all of them
//          Grenzen                   standard that the verdict was given by, see standardtext()
//          Herkunft                  file or program that it came from
//          Untersucher               who measured it
//          Urteil                    -: nothing was judged, although the column says no. The
//                                    journal has ja and nein, too
//          Merkmale                  unlesbar: the row has body marks that are not understood
//                                    (journal only)
//          Felder                    stands alone, when any field follows that the first version
//                                    of this layout did not have. It does not understand this
//                                    item and says so, before it would store the row without them
//     of a wing
//          Bild                      width and height of the picture in pixels
//          Marke                     mark of the picture's content, see inhaltsmarke()
//          Punkte                    a letter for how each of points 1 to 8 came about: k clicked,
//                                    t by key, v moved afterwards, p proposed, e from a file,
//                                    - unknown or not set
//          Lage                      "eigene": the points do not lie in their place on the picture,
//                                    see Flügelmessung::ohneBildhöhe
//          Ungeprueft                1: measured by the program alone, nobody looked at it
//          Ausgelassen               1: the wing is left out of the sample
//
//                                    Fields of other names are kept and stored again.
//
// Grafik3 and Grafik4 begin with the version of their layout. Another version is not read.

/// What could be read of a column.
template <typename Inhalt>
struct Gelesen {
    Inhalt inhalt{};
    bool vollständig = true; ///< false: something was not understood and is left out
};

[[nodiscard]] QString ciSatz(const std::vector<CiZeile>& zeilen);
[[nodiscard]] QString hiDvSatz(const std::vector<HiDvZeile>& zeilen);
/// Lines of wings 1 to 200; of several with one number the first.
[[nodiscard]] Gelesen<std::vector<CiZeile>> ciAusSatz(QStringView satz);
[[nodiscard]] Gelesen<std::vector<HiDvZeile>> hiDvAusSatz(QStringView satz);

/// Chart values of one wing in one record; KeinWert where there is none.
struct Wertepaar {
    float erster = Chartwerte::KeinWert;
    float zweiter = Chartwerte::KeinWert;
};

/// The column Grafik1 or Grafik2.
struct Chartsatz {
    std::optional<int> auflösung; ///< in dots per inch
    std::map<int, Wertepaar> werte;
};

/// Grafik1: cubital index and hantel index.
[[nodiscard]] QString chartsatzCiHi(const Messreihe& reihe, int auflösung,
                                    const Zahlenformat& format);
/// Grafik2: hantel index and discoidal shift.
[[nodiscard]] QString chartsatzHiDv(const Messreihe& reihe, int auflösung,
                                    const Zahlenformat& format);
[[nodiscard]] Gelesen<Chartsatz> chartAusSatz(QStringView satz);

/// Grafik3.
[[nodiscard]] QString punktesatz(const std::map<int, Flügelmessung>& messungen);
[[nodiscard]] Gelesen<std::map<int, Messpunkte>> punkteAusSatz(QStringView satz);

/// What the column Grafik4 keeps of the examination itself.
struct Beiangaben {
    QString Jahr;
    QString LV;
    QString ZNr;
    /// Body marks as they stand in the record, not checked; nullopt when the record has none. Their
    /// caste is not part of it.
    std::optional<Merkmale> merkmale;
    Untersuchungszusatz zusatz;
};

/// The column Grafik4.
struct Beisatz {
    Beiangaben angaben;
    std::map<int, Flügelmessung> aufnahmen; ///< without the points, but with their origin
    std::map<int, Flügelangaben> flügelangaben;
};

[[nodiscard]] QString beisatz(const Beiangaben& angaben,
                              const std::map<int, Flügelmessung>& messungen,
                              const std::map<int, Flügelangaben>& flügelangaben = {});
[[nodiscard]] Gelesen<Beisatz> beiangabenAusSatz(QStringView satz);

/// Brings points of Grafik3 into what Grafik4 says of their wings. Wings without points go. False
/// when one of the two knows a wing that the other does not.
bool ergänzePunkte(std::map<int, Flügelmessung>& aufnahmen,
                   const std::map<int, Messpunkte>& punkte);

} // namespace tarvel
