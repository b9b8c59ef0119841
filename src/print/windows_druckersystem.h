#pragma once

#include "print/druckdef.h"
#include "print/druckersystem.h"

namespace tarvel {

/// The printers of Windows: chosen through DruckDef, painted on directly.
class WindowsDruckersystem final : public Druckersystem {
public:
    /// Everything handed over outlives this.
    WindowsDruckersystem(Druckertabelle& tabelle, Dialoge& dialoge, const Texte& texte);

    [[nodiscard]] QStringList liste() override;
    [[nodiscard]] QString standard() override;
    bool setzeStandard(const QString& drucker) override;
    /// Prints on the printer of the job, or on the current one when the job names none.
    [[nodiscard]] bool drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) override;

private:
    class Sammlung final : public Druckersammlung {
    public:
        [[nodiscard]] QStringList gerätenamen() const override;
        [[nodiscard]] QString aktueller() const override { return aktueller_; }
        void wähle(const QString& gerätename) override { aktueller_ = gerätename; }

    private:
        QString aktueller_;
    };

    Sammlung sammlung_;
    DruckDef druckdef_;
};

} // namespace tarvel
