#include "print/protokolldruck.h"

#include "platform/dateiausgabe.h"
#include "print/protokollseite.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace tarvel {

namespace {

constexpr double MillimeterJeZoll = 25.4;
constexpr int PdfAuflösung = 1200;

/// Makes a unit of the painter a millimetre from the paper's corner, also where the device counts
/// from the corner of what it can print on. Paper smaller than A4 gets a reduced page.
void aufMillimeter(QPainter& painter, const QPageLayout& blatt) {
    const double x = painter.device()->logicalDpiX() / MillimeterJeZoll;
    const double y = painter.device()->logicalDpiY() / MillimeterJeZoll;
    const QSizeF papier = blatt.fullRect(QPageLayout::Millimeter).size();
    double maßstab =
        std::min(papier.width() / PapierA4.width(), papier.height() / PapierA4.height());
    constexpr double Rundung = 0.99; // sizes in points are A4 but for a fraction
    maßstab = maßstab <= 0 || maßstab > Rundung ? 1 : maßstab;
    painter.resetTransform();
    painter.scale(x, y);
    if (blatt.mode() == QPageLayout::StandardMode) {
        painter.translate(-blatt.paintRect(QPageLayout::Millimeter).topLeft());
    }
    painter.scale(maßstab, maßstab);
}

} // namespace

bool Druckstart(QPagedPaintDevice& gerät, const Protokolldaten& daten,
                const Briefkopfgrafik& grafik, Seitenauswahl seiten,
                const std::function<bool(int seite)>& fortschritt) {
    const int letzte = std::min(seiten.bis, seitenzahl(daten.einstellungen.art));
    const int erste = std::max(1, seiten.von);
    gerät.setPageSize(QPageSize(QPageSize::A4));
    gerät.setPageOrientation(QPageLayout::Portrait);
    if (erste > letzte) {
        return false;
    }
    QPainter painter;
    if (!painter.begin(&gerät)) {
        return false;
    }
    for (int seite = erste; seite <= letzte; ++seite) {
        if ((fortschritt && !fortschritt(seite)) || (seite > erste && !gerät.newPage())) {
            return false;
        }
        aufMillimeter(painter, gerät.pageLayout());
        maleProtokoll(painter, daten, grafik, seite);
    }
    return painter.end();
}

QByteArray protokollAlsPdf(const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                           Seitenauswahl seiten) {
    // The writer does not tell when its target is full; it gets one that never is.
    QBuffer inhalt;
    inhalt.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&inhalt);
        pdf.setTitle(daten.titel);
        pdf.setCreator(QStringLiteral("Tarvel"));
        pdf.setResolution(PdfAuflösung);
        pdf.setPageMargins({});
        if (!Druckstart(pdf, daten, grafik, seiten)) {
            return {};
        }
    }
    return inhalt.data();
}

QString speichereProtokoll(const QString& pfad, const Protokolldaten& daten,
                           const Briefkopfgrafik& grafik, Seitenauswahl seiten) {
    const QByteArray pdf = protokollAlsPdf(daten, grafik, seiten);
    return pdf.isEmpty() ? QStringLiteral("PDF") : schreibeDatei(pfad, pdf).value_or(QString());
}

QImage protokollbild(const Protokolldaten& daten, const Briefkopfgrafik& grafik, int nummer,
                     double dpi) {
    const double faktor = dpi / MillimeterJeZoll;
    QImage bild((PapierA4 * faktor).toSize(), QImage::Format_RGB32);
    if (bild.isNull()) {
        return bild;
    }
    bild.fill(Qt::white);
    bild.setDotsPerMeterX(qRound(faktor * 1000));
    bild.setDotsPerMeterY(qRound(faktor * 1000));
    QPainter painter(&bild);
    painter.scale(faktor, faktor);
    maleProtokoll(painter, daten, grafik, nummer);
    return bild;
}

} // namespace tarvel
