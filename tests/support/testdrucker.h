#pragma once

#include "print/druckersystem.h"

#include <vector>

namespace tarvel {

/// Printers without paper: keeps what was chosen and what would have been printed.
class TestDrucker final : public Druckersystem {
public:
    QStringList namen = {QStringLiteral("Imkerei"), QStringLiteral("Lager")};
    QString vorgabe = QStringLiteral("Imkerei");
    QStringList gesetzt; ///< every default that was set, in order
    std::vector<Druckauftrag> aufträge;
    QPagedPaintDevice* papier = nullptr; ///< painted on when there is one
    bool nimmtAn = true;
    bool antwortet = true; ///< to the question for the default printer

    QStringList liste() override { return namen; }
    QString standard() override { return vorgabe; }
    std::future<std::optional<QString>> frageStandard() override {
        std::promise<std::optional<QString>> antwort;
        antwort.set_value(antwortet ? std::optional(vorgabe) : std::nullopt);
        return antwort.get_future();
    }
    bool setzeStandard(const QString& drucker) override {
        if (!drucker.isEmpty() && !namen.contains(drucker)) {
            return false;
        }
        gesetzt << drucker;
        vorgabe = drucker;
        return true;
    }
    bool drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) override {
        aufträge.push_back(auftrag);
        return nimmtAn && (papier == nullptr || maler(*papier));
    }
};

} // namespace tarvel
