#include "print/windows_druckersystem.h"

#include <QPageLayout>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace tarvel {

QStringList WindowsDruckersystem::Sammlung::gerätenamen() const {
    return QPrinterInfo::availablePrinterNames();
}

WindowsDruckersystem::WindowsDruckersystem(Druckertabelle& tabelle, Dialoge& dialoge,
                                           const Texte& texte)
    : druckdef_(tabelle, sammlung_, dialoge, texte) {
    sammlung_.wähle(druckdef_.standarddrucker());
}

QStringList WindowsDruckersystem::liste() {
    QStringList namen;
    druckdef_.DruckerListeFüllen(namen);
    return namen;
}

QString WindowsDruckersystem::standard() {
    return druckdef_.standarddrucker();
}

bool WindowsDruckersystem::setzeStandard(const QString& drucker) {
    return druckdef_.StandardDruckerSetzen(drucker);
}

bool WindowsDruckersystem::drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) {
    const QString name = auftrag.drucker.isEmpty() ? sammlung_.aktueller() : auftrag.drucker;
    // A printer object does not take an unknown name and would print on the default printer.
    if (QPrinterInfo::printerInfo(name).isNull()) {
        return false;
    }
    QPrinter drucker(QPrinter::HighResolution);
    drucker.setPrinterName(name);
    drucker.setFullPage(true);
    drucker.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()});
    drucker.setDocName(auftrag.titel);
    drucker.setCopyCount(std::max(auftrag.exemplare, 1));
    return maler(drucker) && drucker.printerState() != QPrinter::Error;
}

} // namespace tarvel
