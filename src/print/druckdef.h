#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "platform/druckertabelle.h"

#include <QString>
#include <QStringList>

namespace tarvel {

/// The printers the program can draw on, and the one it draws on now.
class Druckersammlung {
public:
    virtual ~Druckersammlung() = default;

    [[nodiscard]] virtual QStringList gerätenamen() const = 0;
    /// Device name of the current printer object; empty when there is none.
    [[nodiscard]] virtual QString aktueller() const = 0;
    virtual void wähle(const QString& gerätename) = 0;
};

/// Selection of the printer on Windows: makes a printer the system's default and the one the
/// program draws on.
class DruckDef {
public:
    /// Everything handed over outlives this.
    DruckDef(Druckertabelle& tabelle, Druckersammlung& sammlung, Dialoge& dialoge,
             const Texte& texte)
        : tabelle_(tabelle)
        , sammlung_(sammlung)
        , dialoge_(dialoge)
        , texte_(texte) {}

    /// Replaces @p liste by the printers of the user's profile, in its order.
    void DruckerListeFüllen(QStringList& liste) const;

    /// Makes @p drucker the default printer and the current printer object, by the method of this
    /// system. A printer that cannot be opened, or whose entry in the profile names no driver or
    /// no port, changes nothing; when the system refuses the change, the user is told. True when
    /// the default was set.
    bool StandardDruckerSetzen(const QString& drucker);

    /// Makes the printer with exactly this device name the current printer object; without one
    /// the current stays.
    void DruckerObjektWählen(const QString& drucker);

    /// The default printer as the profile names it; empty when there is none.
    [[nodiscard]] QString standarddrucker() const;

private:
    bool setzeAttribut(const QString& drucker);
    bool setzeProfil(const QString& drucker);
    void wechsleObjekt(const QString& drucker);
    [[nodiscard]] QByteArray profiltext(const char* section, const char* key) const;

    Druckertabelle& tabelle_;
    Druckersammlung& sammlung_;
    Dialoge& dialoge_;
    const Texte& texte_;
};

} // namespace tarvel
