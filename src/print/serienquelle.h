#pragma once

#include "measure/fluegelbilder.h"
#include "print/briefkopfbild.h"
#include "print/protokolldaten.h"
#include "results/untersuchungssatz.h"

#include <QDate>

namespace tarvel {

/// Makes the reports of stored examinations, one after the other, as the settings want them.
class Serienquelle {
public:
    /// References outlive it. @p DatenbankPfad the results file, beside which scans may lie.
    Serienquelle(const Einstellungen& einstellungen, const Texte& texte, const Zahlenformat& format,
                 const QDate& heute, const QString& DatenbankPfad);

    [[nodiscard]] const Protokolleinstellungen& aussehen() const { return aussehen_; }
    [[nodiscard]] const Briefkopfgrafik& grafik() const { return grafik_; }

    [[nodiscard]] GeleseneUntersuchung lies(const Ergebnissatz& satz) const;
    /// With @p mitAnhang also its appendix, when the settings ask for it, with the pictures of
    /// wings whose scans are there.
    [[nodiscard]] Protokolldaten protokoll(const GeleseneUntersuchung& gelesen, bool mitAnhang);

private:
    const Einstellungen& einstellungen_;
    const Texte& texte_;
    Zahlenformat format_;
    QDate heute_;
    Protokolleinstellungen aussehen_;
    Protokolltexte worte_;
    Briefkopfgrafik grafik_;
    Bildsuche suche_;
};

} // namespace tarvel
