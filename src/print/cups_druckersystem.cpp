#include "print/cups_druckersystem.h"

#include "platform/cupsdrucker.h"

#include <QDir>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTemporaryFile>

namespace tarvel {

using namespace Qt::StringLiterals;

QStringList CupsDruckersystem::liste() {
    return cupsDrucker();
}

QString CupsDruckersystem::standard() {
    return cupsStandarddrucker();
}

bool CupsDruckersystem::setzeStandard(const QString& drucker) {
    return setzeCupsStandarddrucker(drucker);
}

bool CupsDruckersystem::drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) {
    QTemporaryFile datei(QDir::temp().filePath(u"tarvel-XXXXXX.pdf"_s));
    if (!datei.open()) {
        return false;
    }
    {
        QPdfWriter pdf(&datei);
        pdf.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()});
        pdf.setTitle(auftrag.titel);
        if (!maler(pdf)) {
            return false;
        }
    }
    return datei.flush() &&
           sendeAnCups(auftrag.drucker, datei.fileName(), auftrag.titel, auftrag.exemplare);
}

} // namespace tarvel
