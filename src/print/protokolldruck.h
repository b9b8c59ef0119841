#pragma once

#include "print/briefkopfbild.h"
#include "print/protokolldaten.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>
#include <limits>

class QPagedPaintDevice;

namespace tarvel {

/// Pages to print, both included; they are limited to those that the report has.
struct Seitenauswahl {
    int von = 1;
    int bis = std::numeric_limits<int>::max();
};

/// Prints the report on A4 in portrait; a printer with smaller paper gets it reduced. Copies are
/// the device's business. @p fortschritt is called before each page with its number and may print
/// no more by returning false. False when the device takes no job or was told to stop; a printer's
/// job is aborted then as far as it can.
[[nodiscard]] bool Druckstart(QPagedPaintDevice& gerät, const Protokolldaten& daten,
                              const Briefkopfgrafik& grafik, Seitenauswahl seiten = {},
                              const std::function<bool(int seite)>& fortschritt = {});

/// The report as the content of a PDF/A-1b file, with its title, author and subject; empty when
/// there is no page of it.
[[nodiscard]] QByteArray protokollAlsPdf(const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                                         Seitenauswahl seiten = {});

/// Writes the report to the PDF file @p pfad; an existing file is replaced only when all was
/// written. Returns the reason when that failed, else an empty text.
[[nodiscard]] QString speichereProtokoll(const QString& pfad, const Protokolldaten& daten,
                                         const Briefkopfgrafik& grafik, Seitenauswahl seiten = {});

/// A page as a picture of white paper.
[[nodiscard]] QImage protokollbild(const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                                   int nummer, double dpi = 150);

} // namespace tarvel
