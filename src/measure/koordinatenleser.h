#pragma once

#include "measure/koordinatendatei.h"
#include "measure/textdatei.h"

#include <QHash>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

// What the readers of both kinds of coordinate file share. Each is one of the two readers'
// business only; everyone else reads through koordinatendatei.h.

/// A number that can be a coordinate: 0 to a million, with point or comma.
[[nodiscard]] std::optional<float> koordinate(QStringView text);
/// True for the text that statistics programs write for a missing number.
[[nodiscard]] bool istFehlwert(QStringView text);

/// Thrown inside the readers only; liesKoordinaten turns it into its result.
struct Lesefehler {
    Leseproblem problem;
};

/// The wings read so far.
class Flügelsammlung {
public:
    /// Throws Lesefehler when there are too many wings, and when one of the same name and picture
    /// is there already.
    void nimm(Koordinatensatz flügel);
    /// Throws Lesefehler when there is no wing.
    [[nodiscard]] std::vector<Koordinatensatz> alle() &&;

private:
    std::vector<Koordinatensatz> flügel_;
    QHash<std::pair<QString, QString>, int> zeilen_;
};

/// Throw Lesefehler.
[[nodiscard]] std::vector<Koordinatensatz> liesCsv(QStringView text, Messart messart);
[[nodiscard]] std::vector<Koordinatensatz> liesTps(QStringView text);

/// A line "KEY=value" of TPS.
struct TpsSchlüssel {
    QString name; ///< in upper case
    QStringView wert;
};
[[nodiscard]] std::optional<TpsSchlüssel> tpsSchlüssel(QStringView zeile);
[[nodiscard]] bool istTpsKommentar(QStringView zeile);

} // namespace tarvel
