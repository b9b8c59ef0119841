#include "print/cups_druckersystem.h"

#include "platform/cupsdrucker.h"
#include "platform/dateiausgabe.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTemporaryDir>

namespace tarvel {

using namespace Qt::StringLiterals;

QStringList CupsDruckersystem::liste() {
    return cupsDrucker();
}

QString CupsDruckersystem::standard() {
    return cupsStandarddrucker();
}

std::future<std::optional<QString>> CupsDruckersystem::frageStandard() {
    return std::async(std::launch::async, []() -> std::optional<QString> {
        const QString standard = cupsStandarddrucker();
        // None at all may also mean that nobody was there to say so.
        return standard.isEmpty() ? std::nullopt : std::optional(standard);
    });
}

std::future<Druckerauskunft> CupsDruckersystem::frage() {
    return std::async(std::launch::async, [] {
        return cupsAntwortet() ? Druckerauskunft{cupsDrucker(), cupsStandarddrucker()}
                               : Druckerauskunft{{}, {}, false};
    });
}

bool CupsDruckersystem::setzeStandard(const QString& drucker) {
    return setzeCupsStandarddrucker(drucker);
}

bool CupsDruckersystem::drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) {
    QBuffer inhalt; // the writer does not tell when its target is full
    inhalt.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&inhalt);
        pdf.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()});
        pdf.setTitle(auftrag.titel);
        if (!maler(pdf)) {
            return false;
        }
    }
    const QTemporaryDir ordner; // of this person alone, and away again afterwards
    const QString datei = ordner.filePath(u"tarvel.pdf"_s);
    return ordner.isValid() && !schreibeDatei(datei, inhalt.data(), Dateirecht::NurEigner) &&
           sendeAnCups(auftrag.drucker, datei, auftrag.titel, auftrag.exemplare);
}

} // namespace tarvel
