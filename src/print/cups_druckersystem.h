#pragma once

#include "print/druckersystem.h"

namespace tarvel {

/// The printers of CUPS. A job is painted into a PDF file first and handed over whole, because the
/// answer of the server tells then whether the printer took it.
class CupsDruckersystem final : public Druckersystem {
public:
    [[nodiscard]] QStringList liste() override;
    [[nodiscard]] QString standard() override;
    [[nodiscard]] std::future<std::optional<QString>> frageStandard() override;
    [[nodiscard]] std::future<Druckerauskunft> frage() override;
    bool setzeStandard(const QString& drucker) override;
    [[nodiscard]] bool drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) override;
};

} // namespace tarvel
