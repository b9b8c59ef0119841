#pragma once

#include "measure/bildarbeiter.h"

#include <QByteArray>
#include <QSize>

#include <memory>

class QIODevice;

namespace tarvel {

/// Decodes one JPEG stream: first the header, then the rows, whole or reduced to some eighths.
///
/// Stricter than viewers are: data that end early or do not decode are an error and not a grey
/// area in the picture, because a vein may lie a few pixels off before a fault becomes visible.
class Jpegleser {
public:
    enum class Fehler { Keiner, Abgeschnitten, Beschädigt };

    /// Reads from the current place of @p quelle; asks @p weiter, which may not throw, after every
    /// few rows. Both must outlive the reader.
    Jpegleser(QIODevice& quelle, const Weiter& weiter);
    ~Jpegleser();
    Jpegleser(const Jpegleser&) = delete;
    Jpegleser& operator=(const Jpegleser&) = delete;

    /// Reads up to the first scan. False: see fehler().
    [[nodiscard]] bool liesKopf();
    /// Size of the whole picture in pixels; valid after liesKopf().
    [[nodiscard]] QSize größe() const;
    /// One byte a pixel (grey), else three (red, green, blue; other colour models are converted).
    [[nodiscard]] bool grau() const;
    /// Smallest number of bytes in which a picture of this size can be coded; 0 when unknown.
    [[nodiscard]] qint64 mindestBytes() const;
    /// Bytes that decoding takes besides the picture: of one in several scans all of them are kept.
    [[nodiscard]] qint64 zwischenspeicher() const;

    /// Chooses a reduction to @p achtel eighths (1 to 8) and returns the size that results, empty
    /// after an error. Reduced pictures need only part of the inverse transform.
    [[nodiscard]] QSize verkleinere(int achtel);
    /// Decodes all rows to @p ziel, one every @p schritt bytes. False: see fehler(), and what
    /// stands in the memory is of no use.
    [[nodiscard]] bool liesZeilen(unsigned char* ziel, qsizetype schritt);

    [[nodiscard]] Fehler fehler() const;
    /// The decoder's own words about the fault.
    [[nodiscard]] QByteArray meldung() const;

private:
    struct Zustand;
    std::unique_ptr<Zustand> z_;
};

} // namespace tarvel
