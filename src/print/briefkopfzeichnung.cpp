#include "print/briefkopfzeichnung.h"

#include "print/malaufwand.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {
namespace {

// Far more than an emblem takes.
constexpr qint64 GrößteZeichnung = qint64{4} * 1024 * 1024;
// A drawing keeps its pictures as they are, however small they were packed.
constexpr qint64 HöchstensMitgebracht = 25'000'000; // pixels
// In places where the toolkit compares each with each.
constexpr qsizetype HöchstensAngaben = 1000;
constexpr qsizetype HöchstensNamensräume = 200;
constexpr qsizetype HöchstensErsetzungen = 1000;

// The largest place of the graphic on the paper at 300 dots an inch, and what painting it there may
// take: a second where all of it overlaps.
constexpr QSizeF Blatt{2480, 709};
constexpr Malaufwand Höchstens{.fläche = 100e6, .umriss = 1e6, .teile = 50e3};

/// How many pixels the picture has that an image element brings along; nothing when it names
/// anything else. A drawing within a drawing is none: the toolkit follows it without end when it
/// names itself.
std::optional<qint64> mitgebrachteBildpunkte(const QString& verweis) {
    const qsizetype bytes = verweis.lastIndexOf(QStringLiteral("base64,"));
    if (!verweis.startsWith(QStringLiteral("data:")) || bytes < 0) {
        return std::nullopt;
    }
    QByteArray inhalt = QByteArray::fromBase64(verweis.mid(bytes + 7).toLatin1());
    QBuffer puffer(&inhalt);
    const QImageReader leser(&puffer);
    const QSize größe = leser.size();
    return leser.canRead() && !leser.format().startsWith("svg") && größe.isValid()
               ? std::optional(qint64{größe.width()} * größe.height())
               : std::nullopt;
}

/// Counts what a drawing becomes when everything that it uses is put in its place. A few elements
/// that use each other become more than can ever be drawn.
class Verwendungen {
public:
    /// At the start of an element of @p gewicht that is called @p name and uses @p verweis
    /// ("#name"); both may be empty. False when that becomes too much, or when what it uses does
    /// not stand before it, as nothing does that uses itself.
    bool öffne(qint64 gewicht, const QString& name, const QString& verweis) {
        if (!verweis.isEmpty()) {
            const auto stelle = fertige_.constFind(verweis.mid(1));
            if (stelle == fertige_.constEnd()) {
                return false;
            }
            gewicht += *stelle;
        }
        offene_.emplace_back(name, 0);
        return trage(gewicht);
    }
    /// What the open element holds besides elements.
    bool trage(qint64 gewicht) {
        constexpr qint64 Schwerste = 100'000;
        gesamt_ += gewicht;
        if (!offene_.empty()) {
            offene_.back().second += gewicht;
        }
        return gesamt_ <= Schwerste;
    }
    void schließe() {
        const auto [name, gewicht] = offene_.back();
        offene_.pop_back();
        if (!name.isEmpty()) {
            fertige_[name] = gewicht;
        }
        if (!offene_.empty()) {
            offene_.back().second += gewicht;
        }
    }

private:
    std::vector<std::pair<QString, qint64>> offene_;
    QHash<QString, qint64> fertige_;
    qint64 gesamt_ = 0;
};

/// Whether reading the bytes as XML takes no longer than their number lets expect.
bool istSchlicht(const QByteArray& bytes) {
    qsizetype angaben = 0;
    for (const char zeichen : bytes) {
        angaben = zeichen == '<' ? 0 : angaben + (zeichen == '=' ? 1 : 0);
        if (angaben > HöchstensAngaben || zeichen == '\0') { // in UTF-16 nothing here is found
            return false;
        }
    }
    return bytes.count("xmlns") <= HöchstensNamensräume &&
           (!bytes.contains("<!ENTITY") || bytes.count('&') <= HöchstensErsetzungen);
}

bool istText(QStringView element) {
    return element == u"text" || element == u"tspan" || element == u"textArea";
}

/// Whether a drawing needs nothing but itself and does not become too much. True also for what is
/// none.
bool istGenügsam(const QByteArray& bytes) {
    // Text is laid out anew whenever it is painted.
    constexpr qint64 GewichtJeText = 50;
    constexpr qint64 GewichtJeZeichen = 5;
    QXmlStreamReader leser(bytes);
    Verwendungen verwendungen;
    qint64 bildpunkte = 0;
    int imText = 0; // elements
    while (!leser.atEnd()) {
        const QXmlStreamReader::TokenType art = leser.readNext();
        if (art == QXmlStreamReader::EndElement) {
            verwendungen.schließe();
            imText = std::max(0, imText - 1);
        }
        if (art == QXmlStreamReader::Characters && imText > 0 &&
            !verwendungen.trage(leser.text().size() * GewichtJeZeichen)) {
            return false;
        }
        if (art == QXmlStreamReader::ProcessingInstruction &&
            leser.processingInstructionTarget() == u"xml-stylesheet") {
            return false;
        }
        if (art != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes angaben = leser.attributes();
        const bool bild = leser.name() == u"image";
        QString verweis;
        for (const QXmlStreamAttribute& angabe : angaben) {
            if (angabe.name() != u"href") {
                continue;
            }
            verweis = angabe.value().trimmed().toString();
            if (!bild) {
                continue;
            }
            const auto mitgebracht = mitgebrachteBildpunkte(verweis);
            bildpunkte += mitgebracht.value_or(0);
            if (!mitgebracht || bildpunkte > HöchstensMitgebracht) {
                return false;
            }
        }
        imText += imText > 0 || istText(leser.name()) ? 1 : 0;
        if (!verwendungen.öffne(imText > 0 ? GewichtJeText : 1,
                                angaben.value(QStringLiteral("id")).toString(),
                                leser.name() == u"use" ? verweis : QString())) {
            return false;
        }
    }
    return true;
}

} // namespace

Zeichnung leseZeichnung(const QString& datei) {
    QFile quelle(datei);
    if (!QFileInfo(datei).isFile() || !quelle.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = quelle.read(GrößteZeichnung + 1);
    if (bytes.size() > GrößteZeichnung || !istSchlicht(bytes) || !istGenügsam(bytes)) {
        return {.bild = {}, .zuAufwendig = true};
    }
    Vektorbild bild(bytes);
    if (!bild.gültig()) {
        return {.bild = {}, .zuAufwendig = !kannSvg()}; // another format helps there as well
    }
    const Malaufwand nötig = malaufwand(Blatt, [&bild](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        bild.male(painter, QRectF(QPointF(), Blatt));
    });
    if (nötig.fläche > Höchstens.fläche || nötig.umriss > Höchstens.umriss ||
        nötig.teile > Höchstens.teile) {
        return {.bild = {}, .zuAufwendig = true};
    }
    return {.bild = std::move(bild)};
}

} // namespace tarvel
