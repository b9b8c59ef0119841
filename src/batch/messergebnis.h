#pragma once

#include "batch/befehle.h"
#include "detect/fluegelerkennung.h"
#include "measure/bilddatei.h"
#include "measure/messreihe.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace tarvel {

/// What measuring one picture gave.
struct Bildmessergebnis {
    QString bild; ///< as the call names it, with the page of a file of several
    std::optional<Bildfehler> fehler;
    std::optional<int> dpi; ///< nullopt when neither call nor picture says it
    QSize größe;
    std::vector<Flügelfund> funde; ///< those that count, numbered from 1
    int unterGüte = 0;             ///< others
    std::optional<int> andere;     ///< resolution at which wings would be found
    std::optional<QByteArray> zeichnung;
};

/// The proposed points of a wing as a measurement that nobody has checked.
[[nodiscard]] Flügelmessung messung(const Flügelfund& fund, const Bildmessergebnis& ergebnis,
                                    Messart messart);

/// All wings of all pictures that could be read.
[[nodiscard]] QByteArray messausgabe(const std::vector<Bildmessergebnis>& ergebnisse,
                                     const Bildmessbefehl& befehl);

} // namespace tarvel
