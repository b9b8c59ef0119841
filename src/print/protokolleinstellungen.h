#pragma once

#include "evaluation/beurteilung.h"
#include "lang/texte.h"
#include "print/briefkopf.h"
#include "print/protokolloptionen.h"

#include <QDate>
#include <QString>
#include <QStringList>

namespace tarvel {

class Einstellungen;
struct Kolonieangaben;

/// What the settings say about the report.
struct Protokolleinstellungen {
    Briefkopf briefkopf;
    QString SchriftArt = QStringLiteral("Arial");
    bool SchriftKursiv = false;
    Protokollart art = Protokollart::CubitalindexUndKorrelation;
    Datumsform datum = Datumsform::HeuteLang;
    Urteilsregeln regeln;
    bool Anhang = false; ///< whether pages with every wing and bee follow
    int Kurvenform = 1;  ///< position of `opt_Kurvenform`
    QStringList rassen;  ///< names in the order of the race list

    bool operator==(const Protokolleinstellungen&) const = default;
};

/// The kind of report alone, for whoever asks often.
[[nodiscard]] Protokollart ladeProtokollart(const Einstellungen& einstellungen);

/// The settings as the file holds them. A kind or date form that there is not gives the default.
[[nodiscard]] Protokolleinstellungen ladeProtokolleinstellungen(const Einstellungen& einstellungen);

/// The date that the report carries, in @p sprache: "5. Januar 2026" or "05.01.2026".
/// @p änderung day on which the examination was last stored; one that never was changes today.
/// @p gebiet ("sl"), when it is not empty, gives the names of the months instead.
[[nodiscard]] QString datumstext(Datumsform form, QDate heute, QDate änderung, Sprache sprache,
                                 const QString& gebiet = {});

/// The queen's number in the stud book: region, breeder, queen and year, "06-012-007-2024". What is
/// missing stays a gap to be filled in by hand, "06-___-007-2024"; empty when all of it is missing.
[[nodiscard]] QString zuchtbuchnummer(const Kolonieangaben& angaben);

} // namespace tarvel
