#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>

namespace tarvel {

/// Whether a file that begins with @p anfang, at least its first 20 bytes, is a database of the
/// kind that results were kept in formerly.
[[nodiscard]] bool istJetDatei(QByteArrayView anfang);
/// The same of the file @p pfad; false when it cannot be read.
[[nodiscard]] bool istJetDatei(const QString& pfad);

/// What became of reading such a database.
struct Jetinhalt {
    enum class Ausgang {
        Gelesen,
        OhneProgramm, ///< mdb-export is not installed
        Gescheitert,
        Abgebrochen,
    };
    Ausgang ausgang = Ausgang::OhneProgramm;
    QByteArray tabelle; ///< for liesTabelle()
    QString meldung;    ///< what the program says
};

/// The table `Ergebnisse` of such a database, read by the program mdb-export, which only reads.
/// @p weiter is asked several times a second; false stops it.
[[nodiscard]] Jetinhalt liesJetDatei(const QString& pfad, const std::function<bool()>& weiter);

} // namespace tarvel
