#include "evaluation/kurvenlayout.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using M = Kurvenmaße;

constexpr double Keilbreite = 16; ///< of a wedge and the air beside it

/// The places of a smooth line through the bees of the classes. Its slopes are limited so that it
/// neither swings below zero nor above its places.
QPainterPath glatteLinie(const Feld& f) {
    std::vector<QPointF> orte{{f.lage.ort(1), f.fläche.bottom()}};
    for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
        orte.emplace_back(f.lage.ort(klasse + 0.5), f.anzahl.ort(f.bienen(klasse)));
    }
    orte.emplace_back(f.fläche.right(), f.fläche.bottom());

    const auto steigung = [&](std::size_t i) {
        return (orte[i + 1].y() - orte[i].y()) / (orte[i + 1].x() - orte[i].x());
    };
    std::vector<double> tangenten(orte.size(), 0);
    for (std::size_t i = 1; i + 1 < orte.size(); ++i) {
        const double davor = steigung(i - 1);
        const double danach = steigung(i);
        if (davor * danach > 0) {
            tangenten[i] = 2 * davor * danach / (davor + danach);
        }
    }
    QPainterPath linie(orte.front());
    for (std::size_t i = 0; i + 1 < orte.size(); ++i) {
        const double drittel = (orte[i + 1].x() - orte[i].x()) / 3;
        linie.cubicTo(orte[i] + QPointF(drittel, drittel * tangenten[i]),
                      orte[i + 1] - QPointF(drittel, drittel * tangenten[i + 1]), orte[i + 1]);
    }
    return linie;
}

QPainterPath stufenlinie(const Feld& f) {
    QPainterPath linie(f.fläche.bottomLeft());
    for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
        const QRectF säule = f.säule(klasse);
        linie.lineTo(säule.topLeft());
        linie.lineTo(säule.topRight());
    }
    linie.lineTo(f.fläche.bottomRight());
    return linie;
}

class Kurvenzeichner {
public:
    Kurvenzeichner(QPainter& painter, const Kurvenlayout& layout, const Kurvenbild& bild,
                   const Diagrammstil& stil)
        : z_(painter, layout.maß, stil)
        , l_(layout)
        , bild_(bild)
        , stil_(stil)
        , klein_(diagrammschrift(stil, Schriftgrad::Klein))
        , normal_(diagrammschrift(stil, Schriftgrad::Normal))
        , fett_(diagrammschrift(stil, Schriftgrad::Normal, true)) {}

    void zeichne() {
        kopf();
        tönung();
        gitter(l_.CI);
        bereiche();
        verteilung(l_.CI);
        fahnen(l_.CI);
        anzahlen(l_.CI);
        achse(l_.CI);
        größenname();
        if (l_.zweite) {
            zweites();
        }
        if (bild_.CI.flügel.empty()) {
            z_.schild(l_.CI.fläche.center(), Qt::AlignHCenter,
                      gekürzt(bild_.worte.keineMessung, normal_, l_.CI.fläche.width() - 20),
                      normal_, stil_.schrift);
        }
        if (!l_.fuß.isEmpty()) {
            z_.text({M::RandLinks, l_.maß.größe.height() - M::Fußzeile / 2 - 2}, Qt::AlignLeft,
                    l_.fuß, klein_, stil_.verfehlt);
        }
    }

private:
    /// "n = 25     s = 0.31"; the mean stands at its line.
    [[nodiscard]] QString kennzahlentext(const Feld& f) const {
        const Klassenverteilung& v = *f.verteilung;
        if (!bild_.mitKennzahlen) {
            return {};
        }
        QString text = flügelzahl(v.flügel.size(), v.ausgelassen, bild_.worte);
        if (v.kennzahlen && v.kennzahlen->standardabweichung) {
            text += u"     s = "_s + Format(*v.kennzahlen->standardabweichung,
                                            f.achse->streuungsformat, bild_.format);
        }
        return text;
    }

    void überschrift(double mitte, const QString& titel, const Feld& f, Schriftgrad grad) {
        const QString zahlen = kennzahlentext(f);
        const double rechts = f.fläche.right();
        const double breite = textbreite(zahlen, normal_);
        const QFont schrift = diagrammschrift(stil_, grad, true);
        z_.text({M::RandLinks, mitte}, Qt::AlignLeft,
                gekürzt(titel, schrift, rechts - M::RandLinks - breite - 16), schrift,
                stil_.schrift);
        z_.text({rechts, mitte}, Qt::AlignRight, zahlen, normal_, stil_.schrift);
    }

    void kopf() { überschrift(19, bild_.worte.cubitalindex, l_.CI, Schriftgrad::Titel); }

    /// Beside the counts, above the names of the rows below.
    void größenname() {
        const QRectF& feld = l_.CI.fläche;
        const QString text =
            gekürzt(bild_.worte.bienenJeKlasse, normal_, feld.bottom() - M::Kopfhöhe);
        const double mitte =
            std::min(feld.center().y(), feld.bottom() - textbreite(text, normal_) / 2);
        z_.textHochkant({14, mitte}, text, normal_, stil_.schrift);
    }

    /// The classes that no range of the standard limits, behind everything else: as in the
    /// correlation, the tint is where the wings of the race lie.
    void tönung() {
        const auto begrenzt = [this](int klasse) {
            return std::any_of(
                bild_.bereiche.begin(), bild_.bereiche.end(),
                [klasse](const Bereichsangabe& b) { return b.klassen.enthält(klasse); });
        };
        int anfang = 1;
        for (int klasse = 1; klasse <= KlassenzahlCI + 1 && !bild_.bereiche.empty(); ++klasse) {
            if (klasse <= KlassenzahlCI && !begrenzt(klasse)) {
                continue;
            }
            if (anfang < klasse) {
                z_.fülle({QPointF(l_.CI.lage.ort(anfang), l_.CI.fläche.top()),
                          QPointF(l_.CI.lage.ort(klasse), l_.CI.fläche.bottom())},
                         stil_.bereich);
            }
            anfang = klasse + 1;
        }
    }

    /// From where to where a range lies on the axis; empty when no class of it does.
    [[nodiscard]] std::optional<Bereich> spanne(const Bereichsangabe& b) const {
        const int von = std::clamp(b.klassen.von, 1, KlassenzahlCI + 1);
        const int bis = std::clamp(b.klassen.bis, 0, KlassenzahlCI);
        if (von > bis) {
            return std::nullopt;
        }
        return Bereich{l_.CI.lage.ort(von), l_.CI.lage.ort(bis + 1)};
    }

    void bereiche() {
        double oben = M::Kopfhöhe;
        for (const Bereichsangabe& b : bild_.bereiche) {
            const double mitte = oben + M::Bereichshöhe / 2;
            const auto x = spanne(b);
            double textanfang = M::RandLinks;
            if (x) {
                const QRectF balken(QPointF(x->von, mitte - 6), QPointF(x->bis, mitte + 6));
                z_.schraffur(balken, stil_.rasse, 5 + 3 * b.nummer % 7, 1);
                z_.rahmen(balken, stil_.rasse, 1.2);
                for (const double kante : {x->von, x->bis}) {
                    z_.linie({kante, mitte + 6}, {kante, l_.CI.fläche.bottom()}, stil_.rasse, 0.7,
                             Qt::DotLine);
                }
                textanfang = x->bis + 8;
            }
            // Classes beyond the axis have no strip, only a wedge at its end.
            const bool dahinter = b.klassen.bis > KlassenzahlCI && b.klassen.von <= b.klassen.bis;
            const bool davor = !x && !dahinter && b.klassen.von <= b.klassen.bis;
            if (dahinter) {
                z_.keil({l_.CI.fläche.right(), mitte}, {1, 0}, stil_.rasse);
            } else if (davor) {
                z_.keil({M::RandLinks, mitte}, {-1, 0}, stil_.rasse);
                textanfang += Keilbreite;
            }
            const double rechts = l_.CI.fläche.right() - (dahinter ? Keilbreite : 0);
            beschrifte(b, x, {x || !dahinter ? textanfang : rechts, rechts}, mitte);
            oben += M::Bereichshöhe;
        }
    }

    /// Writes a range's text from the beginning of @p platz, or before its strip, or at the end.
    void beschrifte(const Bereichsangabe& b, const std::optional<Bereich>& x, Bereich platz,
                    double mitte) {
        const bool verfehlt = bild_.beurteilt && b.verfehlt;
        const QFont& schrift = verfehlt ? fett_ : normal_;
        const bool zeichen = bild_.beurteilt && !bild_.CI.flügel.empty();
        const double zugabe = zeichen ? 24 : 0;
        const QString text = eingepasst(platz.bis - M::RandLinks - zugabe - 24, schrift,
                                        [&](double breite) { return bereichstext(b, breite); });
        const double breite = textbreite(text, schrift) + zugabe;
        const QColor& farbe = verfehlt ? stil_.verfehlt : stil_.schrift;
        const double spätestens = platz.bis - breite;
        double anfang = std::min(platz.von, spätestens);
        if (platz.von > spätestens && x) {
            // Left of its strip, or else upon it where both of its ends stay to be seen.
            anfang = x->von - 8 - breite;
            if (anfang < M::RandLinks) {
                anfang = std::clamp((x->von + x->bis - breite) / 2, M::RandLinks, spätestens);
            }
        }
        z_.schild({anfang, mitte}, Qt::AlignLeft, text, schrift, farbe, zugabe);
        if (zeichen) {
            z_.urteil({anfang + breite - 10, mitte}, !b.verfehlt, farbe);
        }
    }

    /// "Klasse 0 (15-17): 12 % ≤ 15 %", its words no wider than @p breite.
    [[nodiscard]] QString bereichstext(const Bereichsangabe& b, double breite) const {
        QString text = u"%1 %2 (%3-%4)"_s.arg(gekürzt(bild_.worte.klasse, normal_, breite))
                           .arg(b.nummer)
                           .arg(b.klassen.von)
                           .arg(b.klassen.bis);
        if (!bild_.beurteilt) {
            // Nothing is compared then, and a secondary peak is not looked for.
            return b.anteil ? text + u": %1 %"_s.arg(*b.anteil) : text;
        }
        if (b.erlaubt) {
            text += u": "_s;
            if (b.anteil) {
                text += u"%1 % "_s.arg(*b.anteil);
            }
            text += b.anteil && *b.anteil > *b.erlaubt ? u"> "_s : u"≤ "_s;
            text += zahltext(*b.erlaubt, bild_.format) + u" %"_s;
        } else if (!bild_.CI.flügel.empty()) {
            text += u": "_s + gekürzt(bild_.nebengipfel ? bild_.worte.nebengipfel
                                                        : bild_.worte.keinNebengipfel,
                                      normal_, breite);
        }
        return text;
    }

    void gitter(const Feld& f) {
        for (const double marke : f.teilung.marken) {
            const double y = f.anzahl.ort(marke);
            if (y >= f.fläche.top() - 0.5) {
                z_.linie({f.fläche.left(), y}, {f.fläche.right(), y}, stil_.gitter, 1);
                z_.text({f.fläche.left() - 8, y}, Qt::AlignRight, QString::number(qRound(marke)),
                        klein_, stil_.blass);
            }
        }
    }

    void verteilung(const Feld& f) {
        if (bild_.form == Kurvenform::Balken) {
            for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
                balken(f, klasse);
            }
        } else if (!f.verteilung->flügel.empty()) {
            kurve(f);
        }
    }

    void balken(const Feld& f, int klasse) {
        if (f.bienen(klasse) == 0) {
            return;
        }
        const QRectF balken = schmal(f.säule(klasse));
        z_.fülle(balken, stil_.fläche);
        hervorhebung(f, klasse);
        z_.rahmen(balken, stil_.probe, 1.6);
    }

    [[nodiscard]] static QRectF schmal(const QRectF& säule) {
        const double rand = säule.width() * 0.14;
        return säule.adjusted(rand, 0, -rand, 0);
    }

    void kurve(const Feld& f) {
        const bool glatt = bild_.form == Kurvenform::Linie;
        const QPainterPath linie = glatt ? glatteLinie(f) : stufenlinie(f);
        z_.painter().fillPath(linie, stil_.fläche);
        for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
            hervorhebung(f, klasse);
        }
        z_.painter().strokePath(linie, QPen(stil_.probe, 2, Qt::SolidLine, Qt::FlatCap,
                                            glatt ? Qt::RoundJoin : Qt::MiterJoin));
        if (glatt) {
            z_.painter().setPen(Qt::NoPen);
            z_.painter().setBrush(stil_.probe);
            for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
                if (f.bienen(klasse) > 0) {
                    z_.painter().drawEllipse(
                        QPointF(f.lage.ort(klasse + 0.5), f.anzahl.ort(f.bienen(klasse))), 3.2,
                        3.2);
                }
            }
        }
    }

    /// The wings that are pointed out fill their part of the bar from below.
    void hervorhebung(const Feld& f, int klasse) {
        const std::vector<int>& flügel = f.flügel[static_cast<std::size_t>(klasse)];
        const auto zahl = std::count_if(flügel.begin(), flügel.end(), [&](int nummer) {
            return std::find(bild_.hervorgehoben.begin(), bild_.hervorgehoben.end(), nummer) !=
                   bild_.hervorgehoben.end();
        });
        if (zahl > 0) {
            QRectF teil = schmal(f.säule(klasse));
            teil.setTop(f.anzahl.ort(static_cast<double>(zahl)));
            z_.fülle(teil, stil_.gewählt);
        }
    }

    void anzahlen(const Feld& f) {
        for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
            anzahl(f, klasse);
        }
    }

    void anzahl(const Feld& f, int klasse) {
        if (f.bienen(klasse) == 0) {
            return;
        }
        const QString zahl = QString::number(f.bienen(klasse));
        const QRectF säule = f.säule(klasse);
        const double abstand = bild_.form == Kurvenform::Linie ? 12 : 9;
        z_.textMitHof({säule.center().x(), säule.top() - abstand}, Qt::AlignHCenter, zahl,
                      verkleinert(klein_, zahl, zahlbreite(f, klasse)), stil_.schrift);
    }

    /// A number may reach over its neighbours where they and their numbers stay below it.
    [[nodiscard]] static double zahlbreite(const Feld& f, int klasse) {
        constexpr double Zahlenhöhe = 18;
        const QRectF säule = f.säule(klasse);
        const auto niedrig = [&](int andere) {
            return andere < 1 || andere > f.achse->klassen || f.bienen(andere) == 0 ||
                   f.säule(andere).top() > säule.top() + Zahlenhöhe;
        };
        return niedrig(klasse - 1) && niedrig(klasse + 1) ? säule.width() * 1.6
                                                          : säule.width() - 0.5;
    }

    void fahnen(const Feld& f) {
        const double oben = f.fläche.top() - M::Fahnenhöhe * f.fahnenzeilen();
        const auto mitte = [oben](const Fahne& fahne) {
            return oben + M::Fahnenhöhe * (fahne.zeile + 0.5);
        };
        for (const Fahne& fahne : f.fahnen) {
            const double anfang = mitte(fahne) - M::Fahnenhöhe / 2 + 2;
            if (fahne.ziel == Fahnenziel::Linie) {
                z_.linie({fahne.x, anfang}, {fahne.x, f.fläche.bottom()}, fahne.farbe,
                         fahne.art == Qt::DashDotLine ? 1.4 : 2.2, fahne.art);
            } else if (fahne.ziel == Fahnenziel::Säule) {
                const int klasse = static_cast<int>(f.lage.wert(fahne.x));
                const QPointF spitze(fahne.x, f.säule(klasse).top() - 24);
                z_.linie({fahne.x, anfang}, spitze - QPointF(0, 9), fahne.farbe, 1.6);
                z_.keil(spitze, {0, 1}, fahne.farbe);
            }
        }
        for (const Fahne& fahne : f.fahnen) {
            const double abstand =
                fahne.bündig == Qt::AlignLeft ? fahne.abstand() : -fahne.abstand();
            z_.schild({fahne.x + abstand, mitte(fahne)}, fahne.bündig, fahne.text,
                      fahne.fett ? fett_ : normal_, fahne.farbe);
            // What lies beyond the axis is named at its end, with a wedge that points there.
            if (fahne.ziel == Fahnenziel::Links) {
                z_.keil({fahne.x, mitte(fahne)}, {-1, 0}, fahne.farbe);
            } else if (fahne.ziel == Fahnenziel::Rechts) {
                z_.keil({fahne.x, mitte(fahne)}, {1, 0}, fahne.farbe);
            }
        }
    }

    void achse(const Feld& f) {
        const double y = f.fläche.bottom();
        z_.linie({f.fläche.left(), y}, {f.fläche.right(), y}, stil_.blass, 1.4);
        double zeile = y + M::Luft + M::Wertezeile / 2;
        if (f.achse->klassennummern) {
            zeile = y + 2 + M::Klassenzeile / 2;
            klassennummern(f, zeile);
            zeile += M::Klassenzeile / 2 + M::Wertezeile / 2 + 3;
        }
        const double grund = zeile - M::Wertezeile / 2 + 1;
        if (f.achse->klassennummern) {
            z_.linie({f.fläche.left(), grund - 3}, {f.fläche.right(), grund - 3}, stil_.blass, 0.8);
        }
        const double abstand = f.lage.wert(f.fläche.left() + 34) - 1;
        for (const Achsenstrich& marke :
             ungleicheStriche(f.achse->werte, f.achse->lage, 1, f.achse->klassen + 1.0, abstand)) {
            const double x = f.lage.ort(marke.ort);
            const double oben = f.achse->klassennummern ? grund - 3 : y;
            z_.linie({x, oben}, {x, oben + 4}, stil_.blass, 1.2);
            z_.text({x, zeile + 2}, Qt::AlignHCenter,
                    Format(marke.wert, f.achse->markenformat, bild_.format), klein_, stil_.schrift);
        }
        name(zeile + 2, bild_.worte.*(f.achse->name), 22);
    }

    void klassennummern(const Feld& f, double mitte) {
        const double breite = f.lage.ort(2) - f.lage.ort(1);
        const double platz = textbreite(u"00"_s, klein_) + 4;
        const int schritt = static_cast<int>(std::ceil(platz / breite));
        for (int klasse = 1; klasse <= f.achse->klassen; klasse += schritt) {
            z_.text({f.lage.ort(klasse + 0.5), mitte}, Qt::AlignHCenter, QString::number(klasse),
                    klein_, stil_.blass);
        }
        name(mitte, bild_.worte.klasse, 8);
    }

    /// Name of a row of numbers, left of the axis.
    void name(double mitte, const QString& name, double abstand) {
        z_.text({M::RandLinks - abstand, mitte}, Qt::AlignRight,
                gekürzt(name, klein_, M::RandLinks - abstand - 4), klein_, stil_.blass);
    }

    void zweites() {
        const Feld& f = *l_.zweite;
        const double titel =
            f.fläche.top() - M::Fahnenhöhe * f.fahnenzeilen() - M::Zwischentitel / 2 + 2;
        if (f.verteilung->grenzlinie) {
            const double grenze = ortAufAchse(f, *f.verteilung->grenzlinie);
            z_.fülle(QRectF(QPointF(bild_.darunter ? f.fläche.left() : grenze, f.fläche.top()),
                            QPointF(bild_.darunter ? grenze : f.fläche.right(), f.fläche.bottom())),
                     stil_.bereich);
        }
        überschrift(titel,
                    bild_.art == ZweiteKurve::Hantelindex ? bild_.worte.hantelklassen
                                                          : bild_.worte.dvKlassen,
                    f, Schriftgrad::Normal);
        gitter(f);
        verteilung(f);
        fahnen(f);
        anzahlen(f);
        achse(f);
    }

    Zeichenfläche z_;
    const Kurvenlayout& l_;
    const Kurvenbild& bild_;
    const Diagrammstil& stil_;
    QFont klein_;
    QFont normal_;
    QFont fett_;
};

Klassenfeld nachAußen(const Feld& f, const Diagrammmaß& maß) {
    const QRectF fläche = maß.außen(f.fläche);
    return {fläche,
            {f.lage.wertAnfang, f.lage.wertEnde, fläche.left(), fläche.right()},
            {f.anzahl.wertAnfang, f.anzahl.wertEnde, fläche.bottom(), fläche.top()}};
}

void sammle(std::vector<Diagrammstelle>& stellen, const Feld& f, const Kurvenlayout& l,
            const Kurvenbild& bild) {
    constexpr double LeichtZuTreffen = 14;
    for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
        if (f.bienen(klasse) == 0) {
            continue;
        }
        QRectF säule = f.säule(klasse);
        säule.setTop(std::min(säule.top(), säule.bottom() - LeichtZuTreffen));
        QString name = bild.worte.*(f.achse->name) + u", "_s + bild.worte.klasse + u' ';
        if (f.achse->klassennummern) {
            name += QString::number(klasse);
        } else {
            name += Format(DVBeiKlassenlage(klasse), f.achse->wertformat, bild.format) + u" … "_s +
                    Format(DVBeiKlassenlage(klasse + 1), f.achse->wertformat, bild.format);
        }
        stellen.push_back({l.maß.außen(säule), f.flügel[static_cast<std::size_t>(klasse)],
                           name + u": "_s + QString::number(f.bienen(klasse))});
    }
}

} // namespace

Kurvenanordnung kurvenanordnung(const QRectF& rahmen, const Kurvenbild& bild,
                                const Diagrammstil& stil) {
    const Kurvenlayout l = kurvenlayout(rahmen, bild, stil);
    Kurvenanordnung anordnung{nachAußen(l.CI, l.maß), std::nullopt};
    if (l.zweite) {
        anordnung.zweite = nachAußen(*l.zweite, l.maß);
    }
    return anordnung;
}

std::vector<Diagrammstelle> kurvenstellen(const QRectF& rahmen, const Kurvenbild& bild,
                                          const Diagrammstil& stil) {
    std::vector<Diagrammstelle> stellen;
    const Kurvenlayout l = kurvenlayout(rahmen, bild, stil);
    if (l.maß.faktor > 0) {
        sammle(stellen, l.CI, l, bild);
        if (l.zweite) {
            sammle(stellen, *l.zweite, l, bild);
        }
    }
    return stellen;
}

void maleKurven(QPainter& painter, const QRectF& rahmen, const Kurvenbild& bild,
                const Diagrammstil& stil) {
    const Kurvenlayout l = kurvenlayout(rahmen, bild, stil);
    if (l.maß.faktor > 0) {
        Kurvenzeichner(painter, l, bild, stil).zeichne();
    }
}

} // namespace tarvel
