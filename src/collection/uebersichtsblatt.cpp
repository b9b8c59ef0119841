#include "collection/uebersichtsblatt.h"

#include "evaluation/beurteilung.h"
#include "measure/indexmuster.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr double Titelhöhe = 19;
constexpr double Erklärungszeile = 20;
constexpr double Zeichenbreite = 20;
constexpr double Eintragsabstand = 22;

QString teilungsmuster(int nachkommastellen, bool mitVorzeichen) {
    const QString zahl = nachkommastellen > 0 ? u"0."_s + QString(nachkommastellen, u'0') : u"0"_s;
    return mitVorzeichen ? u'+' + zahl + u";-"_s + zahl + u';' + zahl : zahl;
}

QStringList zeilenVon(const QStringList& absätze, const QFont& schrift, double breite) {
    QStringList zeilen;
    for (const QString& absatz : absätze) {
        zeilen += umbruch(absatz, schrift, breite);
    }
    return zeilen;
}

} // namespace

QString kurzname(Größe größe, const Texte& texte) {
    return texte(größe == Größe::CI ? Text::CI : größe == Größe::HI ? Text::HI : Text::DV);
}

QString vollerName(Größe größe, const Texte& texte) {
    return texte(größe == Größe::CI   ? Text::Cubitalindex
                 : größe == Größe::HI ? Text::Hantelindex
                                      : Text::Discoidalverschiebung);
}

QString werttext(Größe größe, double wert, const Zahlenformat& format) {
    // Means say a digit more of the discoidal shift than a single wing does.
    return Format(wert,
                  größe == Größe::DV   ? u"+0.00;-0.00;0.00"_s
                  : größe == Größe::HI ? muster::HI.toString()
                                       : muster::CI.toString(),
                  format);
}

QString streuungstext(Größe größe, double wert, const Zahlenformat& format) {
    return Format(wert, größe == Größe::HI ? muster::HI : muster::CI, format);
}

QString dpitext(int dpi, const Texte& texte) {
    return dpi > 0                         ? texte(Meldung::ÜbersichtDpi).arg(dpi)
           : dpi == Koloniewerte::Gemischt ? texte(Meldung::ÜbersichtDpiGemischt)
                                           : texte(Meldung::ÜbersichtDpiUnbekannt);
}

QString kolonietitel(const Koloniewerte& kolonie) {
    QStringList teile{kolonie.UNr, kolonie.Volk};
    teile.removeAll(QString());
    return teile.join(u" · "_s);
}

QString urteilstext(const Koloniewerte& kolonie, const Texte& texte) {
    return kolonie.urteil ? texte(urteilswort(*kolonie.urteil)) : texte(Meldung::NichtBeurteilt);
}

std::optional<Koloniegrenzen> gemeinsameGrenzen(const Kolonieauswahl& kolonien,
                                                const Kolonieregeln& regeln) {
    if (kolonien.empty()) {
        return std::nullopt;
    }
    const Koloniewerte& erste = *kolonien.front();
    const bool gleich = std::all_of(kolonien.begin(), kolonien.end(), [&](const Koloniewerte* k) {
        return k->rasse == erste.rasse && k->tiere == erste.tiere;
    });
    return gleich ? regeln.grenzen(erste.rasse, erste.tiere) : std::nullopt;
}

QStringList umbruch(const QString& text, const QFont& schrift, double breite) {
    QStringList zeilen;
    QString zeile;
    // Signs that stand behind a blank stay on its line.
    QString satz = text;
    for (const QChar zeichen : u":;?!%") {
        satz.replace(QString(u' ') + zeichen, QString(QChar::Nbsp) + zeichen);
    }
    const QStringList worte = satz.split(u' ', Qt::SkipEmptyParts);
    for (const QString& wort : worte) {
        const QString länger = zeile.isEmpty() ? wort : zeile + u' ' + wort;
        if (zeile.isEmpty() || textbreite(länger, schrift) <= breite) {
            zeile = länger;
            continue;
        }
        zeilen << gekürzt(zeile, schrift, breite);
        zeile = wort;
    }
    if (!zeile.isEmpty()) {
        zeilen << gekürzt(zeile, schrift, breite);
    }
    return zeilen;
}

void maleZeichen(Zeichenfläche& z, QPointF mitte, int art, const QColor& farbe, double radius,
                 bool gefüllt) {
    QPainter& p = z.painter();
    p.setPen(QPen(farbe, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    p.setBrush(gefüllt                    ? QBrush(farbe)
               : z.stil().grund.isValid() ? QBrush(z.stil().grund)
                                          : QBrush(Qt::NoBrush));
    const double r = radius;
    const auto vieleck = [&](std::initializer_list<QPointF> ecken) {
        std::array<QPointF, 4> orte{};
        std::transform(ecken.begin(), ecken.end(), orte.begin(),
                       [&](QPointF ecke) { return mitte + ecke * r; });
        p.drawPolygon(orte.data(), static_cast<int>(ecken.size()));
    };
    switch (art) {
    case 0:
        p.drawEllipse(mitte, r, r);
        break;
    case 1:
        vieleck({{-0.9, -0.9}, {0.9, -0.9}, {0.9, 0.9}, {-0.9, 0.9}});
        break;
    case 2:
        vieleck({{0, -1.1}, {1.1, 0.9}, {-1.1, 0.9}});
        break;
    case 3:
        vieleck({{0, -1.25}, {1.25, 0}, {0, 1.25}, {-1.25, 0}});
        break;
    case 4:
        vieleck({{-1.1, -0.9}, {1.1, -0.9}, {0, 1.1}});
        break;
    default:
        p.drawLine(mitte + QPointF(-r, -r), mitte + QPointF(r, r));
        p.drawLine(mitte + QPointF(-r, r), mitte + QPointF(r, -r));
        break;
    }
    p.setBrush(Qt::NoBrush);
}

Übersichtsblatt::Übersichtsblatt(const QRectF& rahmen, const Diagrammstil& stil, QString titel,
                                 const QStringList& hinweise)
    : maß(Diagrammmaß::für(rahmen))
    , titel_(std::move(titel)) {
    if (maß.faktor <= 0) {
        return;
    }
    zeilen_ = zeilenVon(hinweise, diagrammschrift(stil, Schriftgrad::Klein),
                        maß.größe.width() - 2 * Rand);
    mitte =
        QRectF(QPointF(0, Kopfhöhe),
               QPointF(maß.größe.width(),
                       maß.größe.height() - Fußzeile * static_cast<double>(zeilen_.size()) - 8));
}

void Übersichtsblatt::male(Zeichenfläche& z) const {
    const QFont fett = diagrammschrift(z.stil(), Schriftgrad::Titel, true);
    const QFont klein = diagrammschrift(z.stil(), Schriftgrad::Klein);
    const double breite = maß.größe.width() - 2 * Rand;
    z.text({Rand, Titelhöhe}, Qt::AlignLeft,
           gekürzt(titel_, verkleinert(fett, titel_, breite), breite),
           verkleinert(fett, titel_, breite), z.stil().schrift);
    double y = mitte.bottom() + Fußzeile / 2;
    for (const QString& zeile : zeilen_) {
        z.text({Rand, y}, Qt::AlignLeft, zeile, klein, z.stil().blass);
        y += Fußzeile;
    }
}

Blattmaler::Blattmaler(QPainter& painter, const Übersichtsblatt& blatt,
                       const Übersichtsworte& worte, const Diagrammstil& stil)
    : z_(painter, blatt.maß, stil)
    , blatt_(blatt)
    , worte_(worte)
    , stil_(stil)
    , klein_(diagrammschrift(stil, Schriftgrad::Klein))
    , fett_(diagrammschrift(stil, Schriftgrad::Klein, true))
    , normal_(diagrammschrift(stil, Schriftgrad::Normal)) {}

void Blattmaler::sage(const QString& satz) {
    constexpr double Zeilenhöhe = 20;
    const QRectF& m = blatt_.mitte;
    const QStringList zeilen = umbruch(satz, normal_, m.width() - 60);
    double y = m.center().y() - Zeilenhöhe * static_cast<double>(zeilen.size() - 1) / 2;
    for (const QString& zeile : zeilen) {
        z_.text({m.center().x(), y}, Qt::AlignHCenter, zeile, normal_, stil_.schrift);
        y += Zeilenhöhe;
    }
}

Zeichenerklärung::Zeichenerklärung(std::vector<Eintrag> einträge, const Diagrammstil& stil,
                                   double oben, double links, double rechts)
    : einträge_(std::move(einträge))
    , unten_(oben) {
    const QFont schrift = diagrammschrift(stil, Schriftgrad::Klein);
    double x = links;
    double y = oben + Erklärungszeile / 2;
    for (Eintrag& e : einträge_) {
        e.text = gekürzt(e.text, schrift, rechts - links - Zeichenbreite);
        const double breite = Zeichenbreite + textbreite(e.text, schrift);
        if (x > links && x + breite > rechts) {
            x = links;
            y += Erklärungszeile;
        }
        orte_.emplace_back(x, y);
        x += breite + Eintragsabstand;
        unten_ = y + Erklärungszeile / 2;
    }
}

void Zeichenerklärung::male(Zeichenfläche& z) const {
    const QFont schrift = diagrammschrift(z.stil(), Schriftgrad::Klein);
    for (std::size_t i = 0; i < einträge_.size(); ++i) {
        if (einträge_[i].zeichen == Grenzlinie) {
            z.linie(orte_[i], orte_[i] + QPointF(16, 0), z.stil().rasse, 1.8, Qt::DashLine);
        } else {
            maleZeichen(z, orte_[i] + QPointF(7, 0), einträge_[i].zeichen, z.stil().probe, 5,
                        false);
        }
        z.text(orte_[i] + QPointF(Zeichenbreite, 0), Qt::AlignLeft, einträge_[i].text, schrift,
               z.stil().schrift);
    }
}

Achse luftigeAchse(double von, double bis, double anfang, double ende) {
    constexpr double Anteil = 0.06;
    const double luft = bis > von ? (bis - von) * Anteil : std::max(std::abs(von) * 0.1, 0.1);
    return {von - luft, bis + luft, anfang, ende};
}

void maleWaagrechteTeilung(Zeichenfläche& z, const Wertefeld& feld, const Zahlenformat& format,
                           bool mitVorzeichen) {
    constexpr double Zahlbreite = 62;
    const QFont schrift = diagrammschrift(z.stil(), Schriftgrad::Klein);
    const Teilung t = teilung(feld.x.wertAnfang, feld.x.wertEnde,
                              static_cast<int>(feld.fläche.width() / Zahlbreite));
    for (const double marke : t.marken) {
        const double x = feld.x.ort(marke);
        z.linie({x, feld.fläche.top()}, {x, feld.fläche.bottom()}, z.stil().gitter, 1);
        z.text({x, feld.fläche.bottom() + 17}, Qt::AlignHCenter,
               Format(marke, teilungsmuster(t.nachkommastellen, mitVorzeichen), format), schrift,
               z.stil().blass);
    }
}

void maleSenkrechteTeilung(Zeichenfläche& z, const Wertefeld& feld, const Zahlenformat& format,
                           bool mitVorzeichen, int höchstens) {
    const QFont schrift = diagrammschrift(z.stil(), Schriftgrad::Klein);
    const Teilung t = teilung(feld.y.wertAnfang, feld.y.wertEnde, höchstens);
    for (const double marke : t.marken) {
        const double y = feld.y.ort(marke);
        z.linie({feld.fläche.left(), y}, {feld.fläche.right(), y}, z.stil().gitter, 1);
        z.text({feld.fläche.left() - 6, y}, Qt::AlignRight,
               Format(marke, teilungsmuster(t.nachkommastellen, mitVorzeichen), format), schrift,
               z.stil().blass);
    }
}

} // namespace tarvel
