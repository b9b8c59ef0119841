#pragma once

#include "results/herkunft.h"
#include "results/satzzugriff.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <functional>
#include <span>
#include <vector>

namespace tarvel {

/// Where examinations come from that are to be compared with those of a results file and taken
/// over. Reading throws Datenbankfehler; nothing is ever written there.
class Satzquelle {
public:
    virtual ~Satzquelle() = default;

    /// What it is called where its rows are told to come from.
    [[nodiscard]] virtual QString name() const = 0;
    /// The places of its rows, in their order.
    [[nodiscard]] virtual std::vector<qint64> stellen() const = 0;
    /// Gives the rows at @p stellen until @p nimm returns false; one that has gone is left out.
    /// @p übergehe gets the number of one with a value beyond all measure. Rohsatz::roh is empty
    /// where the row is not that of a table.
    virtual void lies(std::span<const qint64> stellen,
                      const std::function<bool(const Rohsatz&)>& nimm,
                      const std::function<void(const QString&)>& übergehe) const = 0;
    /// What it took over itself, by the number that it has there.
    [[nodiscard]] virtual QHash<QString, Herkunft> herkunft() const { return {}; }
};

/// Another results file, only read.
class Dateiquelle : public Satzquelle {
public:
    /// Throws when @p pfad is no results file, is damaged, is locked, is @p DatenbankPfad itself,
    /// or a crash left it in the middle of a save.
    /// @p wartezeit how long to wait for another program that writes there.
    Dateiquelle(const QString& pfad, const QString& DatenbankPfad,
                std::chrono::milliseconds wartezeit = std::chrono::seconds(2));

    [[nodiscard]] QString name() const override;
    [[nodiscard]] std::vector<qint64> stellen() const override;
    void lies(std::span<const qint64> stellen, const std::function<bool(const Rohsatz&)>& nimm,
              const std::function<void(const QString&)>& übergehe) const override;
    [[nodiscard]] QHash<QString, Herkunft> herkunft() const override;

private:
    QString pfad_;
    std::chrono::milliseconds wartezeit_;
};

/// Rows that were made from something else than a results file. The place of a row is its position.
class Satzliste : public Satzquelle {
public:
    Satzliste(QString name, std::vector<Ergebnissatz> sätze);

    [[nodiscard]] QString name() const override { return name_; }
    [[nodiscard]] std::vector<qint64> stellen() const override;
    void lies(std::span<const qint64> stellen, const std::function<bool(const Rohsatz&)>& nimm,
              const std::function<void(const QString&)>& übergehe) const override;

private:
    QString name_;
    std::vector<Ergebnissatz> sätze_;
};

} // namespace tarvel
