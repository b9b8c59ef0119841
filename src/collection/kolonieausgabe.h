#pragma once

#include "collection/kolonieauswahl.h"
#include "collection/kolonievergleich.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonValue>
#include <QList>

#include <vector>

namespace tarvel {

/// Figures of a collection for other programs. Names are English, numbers have a point, whatever
/// the language; a null is a value that there is none of.
struct Wertetabelle {
    QList<QByteArray> spalten;
    std::vector<QJsonArray> zeilen;

    /// UTF-8, a header, a row a line; nulls are empty.
    [[nodiscard]] QByteArray csv() const;
    /// An object whose list @p name has an object a row.
    [[nodiscard]] QByteArray json(const QString& name) const;
};

/// A row an examination, in the order of @p auswahl.
[[nodiscard]] Wertetabelle kolonientabelle(const Kolonieauswahl& auswahl);
/// A row an index and season of each group; discoidal shifts of each resolution by themselves.
[[nodiscard]] Wertetabelle jahrestabelle(const std::vector<Koloniegruppe>& gruppen);
/// Two colonies, a row a figure.
[[nodiscard]] Wertetabelle vergleichstabelle(const Koloniewerte& a, const Koloniewerte& b,
                                             const Kolonievergleich& vergleich);

} // namespace tarvel
