#include "print/protokolldruck.h"

#include "platform/dateiausgabe.h"
#include "print/protokollseite.h"
#include "print/serie.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <utility>

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

// Stands in the metadata until the toolkit has written when the file was made.
const QByteArray OhneZeit = QByteArrayLiteral("0000-00-00T00:00:00+00:00");

/// Who and what the report is about, as a PDF/A file says it.
struct Metadaten {
    QString titel;
    QString ersteller;
    QStringList gegenstand;
};

QByteArray xmp(const Metadaten& d) {
    const auto element = [](const char* name, const char* art, const QString& text) {
        const QByteArray sprache = qstrcmp(art, "Alt") == 0 ? " xml:lang=\"x-default\"" : "";
        return text.isEmpty() ? QByteArray()
                              : QByteArray("<dc:") + name + "><rdf:" + art + "><rdf:li" + sprache +
                                    '>' + text.toHtmlEscaped().toUtf8() + "</rdf:li></rdf:" + art +
                                    "></dc:" + name + ">\n";
    };
    return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
           "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
           "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" "
           "xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" "
           "xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n" +
           element("title", "Alt", d.titel) + element("creator", "Seq", d.ersteller) +
           element("description", "Alt", d.gegenstand.join(QStringLiteral(", "))) +
           "<xmp:CreatorTool>Tarvel " TARVEL_VERSION "</xmp:CreatorTool>\n<xmp:CreateDate>" +
           OhneZeit + "</xmp:CreateDate>\n<pdf:Producer>Qt " + qVersion() +
           "</pdf:Producer>\n"
           "<pdfaid:part>1</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>\n"
           "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>\n";
}

/// Both places that tell when a file was made have to say the same. The length stays.
void gleicheZeitAn(QByteArray& pdf) {
    static const QRegularExpression muster(QStringLiteral(
        "/CreationDate "
        "\\(D:(\\d{4})(\\d\\d)(\\d\\d)(\\d\\d)(\\d\\d)(\\d\\d)(Z|([+-]\\d\\d)'(\\d\\d)')"));
    const qsizetype info = pdf.lastIndexOf("/CreationDate (");
    const qsizetype ort = pdf.indexOf(OhneZeit);
    const auto m = muster.match(QString::fromLatin1(pdf.mid(std::max<qsizetype>(info, 0), 50)));
    if (ort < 0 || !m.hasMatch()) {
        return;
    }
    const QString zone =
        m.captured(7) == u'Z' ? QStringLiteral("+00:00") : m.captured(8) + u':' + m.captured(9);
    const QString zeit = m.captured(1) + u'-' + m.captured(2) + u'-' + m.captured(3) + u'T' +
                         m.captured(4) + u':' + m.captured(5) + u':' + m.captured(6) + zone;
    pdf.replace(ort, OhneZeit.size(), zeit.toLatin1());
}

QByteArray alsPdf(const Metadaten& metadaten, const std::function<bool(QPdfWriter&)>& maler) {
    // The writer does not tell when its target is full; it gets one that never is.
    QBuffer inhalt;
    inhalt.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&inhalt);
        pdf.setTitle(metadaten.titel);
        pdf.setCreator(QStringLiteral("Tarvel " TARVEL_VERSION));
        // Nothing on the report is transparent, so the form for archives costs nothing.
        pdf.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
        pdf.setDocumentXmpMetadata(xmp(metadaten));
        pdf.setResolution(PdfAuflösung);
        pdf.setPageMargins({});
        if (!maler(pdf)) {
            return {};
        }
    }
    QByteArray bytes = inhalt.data();
    gleicheZeitAn(bytes);
    return bytes;
}

} // namespace

bool Druckstart(QPagedPaintDevice& gerät, const Protokolldaten& daten,
                const Briefkopfgrafik& grafik, Seitenauswahl seiten,
                const std::function<bool(int seite)>& fortschritt) {
    const int letzte = std::min(seiten.bis, seitenzahl(daten));
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
    QStringList gegenstand;
    for (const Protokollwert& w : daten.volk) {
        gegenstand << w.wert;
    }
    gegenstand << daten.untersucht;
    gegenstand.removeAll(QString());
    return alsPdf({daten.titel, daten.einstellungen.briefkopf.Name.trimmed(), gegenstand},
                  [&](QPdfWriter& pdf) { return Druckstart(pdf, daten, grafik, seiten); });
}

QByteArray serieAlsPdf(const std::vector<Serienzeile>& zeilen,
                       const std::function<std::optional<Protokolldaten>(std::size_t)>& protokoll,
                       const Protokolleinstellungen& aussehen, const Briefkopfgrafik& grafik,
                       const Texte& texte) {
    const auto maleAlle = [&](QPdfWriter& pdf) {
        pdf.setPageSize(QPageSize(QPageSize::A4));
        QPainter painter;
        if (!painter.begin(&pdf)) {
            return false;
        }
        bool erste = true;
        const auto seite = [&](const auto& male) {
            const bool neue = std::exchange(erste, false) || pdf.newPage();
            aufMillimeter(painter, pdf.pageLayout());
            male();
            return neue;
        };
        Protokolldaten schrift;
        schrift.einstellungen = aussehen;
        for (const Protokollseite& s : serienübersicht(zeilen, texte, aussehen)) {
            if (!seite([&] { maleSeite(painter, s, schrift, grafik); })) {
                return false;
            }
        }
        for (std::size_t i = 0; i < zeilen.size(); ++i) {
            const std::optional<Protokolldaten> d = protokoll(i);
            for (int nummer = 1; d && nummer <= seitenzahl(*d); ++nummer) {
                if (!seite([&] { maleProtokoll(painter, *d, grafik, nummer); })) {
                    return false;
                }
            }
            if (!d) {
                return false;
            }
        }
        return painter.end();
    };
    return zeilen.empty()
               ? QByteArray()
               : alsPdf({texte(Meldung::SerieTitel), aussehen.briefkopf.Name.trimmed(), {}},
                        maleAlle);
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
