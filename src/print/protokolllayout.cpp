#include "print/protokollseite.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tarvel {

namespace {

using namespace satzspiegel;
using Grad = Protokollgrad;

// Millimetres.
constexpr double Höchstanfang = 40; ///< the body begins no higher than this
constexpr double Abstand = 4;       ///< between sections
constexpr double Einzug = 1.5;      ///< from a line of the grid to text
constexpr double Haarlinie = 0.12;
constexpr double Kopflinie = 0.35;
constexpr double Gruppenbreite = 38; ///< names of the groups of body marks
constexpr double Markenbreite = (Breite - Gruppenbreite) / 4;
constexpr double Unterschriftshöhe = 15;
constexpr double Unterschriftsbreite = 76;
constexpr double Tabellenluft = 0.15;
constexpr double KleinstesDiagramm = 72;
constexpr double KleinstesDoppeldiagramm = 84;
constexpr double HöchstesDiagramm = 170;
constexpr double HöchsteBemerkung = 0.6; ///< part of a heading's line

double zeile(Grad grad) {
    return Protokollsatz::zeilenhöhe(grad);
}

/// A part of the page, laid out from the top of its own.
struct Block {
    std::vector<Protokolltext> texte;
    std::vector<Protokolllinie> linien;
    double höhe = 0;

    void setzeAuf(Protokollseite& seite, double oben) const {
        for (Protokolltext t : texte) {
            t.rahmen.translate(0, oben);
            seite.texte.push_back(std::move(t));
        }
        for (Protokolllinie l : linien) {
            l.linie.translate(0, oben);
            seite.linien.push_back(l);
        }
    }
};

/// Writes a block from top to bottom.
class Setzer {
public:
    explicit Setzer(const Protokolldaten& daten)
        : satz_(daten.einstellungen.SchriftArt, daten.einstellungen.SchriftKursiv) {}

    [[nodiscard]] Block block() && {
        b_.höhe = y_;
        return std::move(b_);
    }

    void lücke(double höhe) { y_ += höhe; }

    void titel(const QString& text) {
        y_ += absatz({Links, y_}, text, {Grad::Titel, false}, Breite, 2, Qt::AlignLeft);
    }

    /// A heading on a line, with a remark at its right end.
    void abschnitt(const QString& text, const QString& rechts = {}) {
        const double platz = rechts.isEmpty()
                                 ? 0
                                 : std::min(satz_.breite(rechts, Grad::Text, false) + Haarlinie,
                                            Breite * HöchsteBemerkung);
        const double höhe = absatz({Links, y_}, text, {Grad::Abschnitt, false},
                                   Breite - platz - 2 * Einzug, 1, Qt::AlignLeft);
        const double versatz =
            Protokollsatz::grundlinie(Grad::Abschnitt) - Protokollsatz::grundlinie(Grad::Text);
        absatz({Rechts - platz, y_ + versatz}, rechts, {Grad::Text, false}, platz, 1,
               Qt::AlignRight);
        y_ += höhe + 0.6;
        linie({Links, y_}, {Rechts, y_}, Kopflinie);
    }

    /// Cells side by side, name above and value below.
    void zellen(const std::vector<Protokollwert>& werte) { zellen(werte, bedarf(werte)); }
    /// The same in columns of one width, which several rows share.
    void spalten(const std::vector<Protokollwert>& werte) {
        zellen(werte,
               std::vector<double>(werte.size(), Breite / static_cast<double>(werte.size())));
    }

    void merkmale(const Protokolldaten& daten) {
        const double codes = codebreite(daten.merkmale);
        for (const Merkmalreihe& reihe : daten.merkmale) {
            merkmalreihe(reihe, codes, daten.nichtGemessen);
        }
        zeileMitNamen(daten.texte(Text::Merkmalsformel), daten.merkmalsformel);
    }

    void anmerkung(const QString& text) {
        if (!text.isEmpty()) {
            y_ += absatz({Links, y_}, text, {Grad::Klein, false}, Breite, 2, Qt::AlignLeft);
        }
    }

    /// The verdict in a frame, with its sign: a failed one is bold and gives its reasons.
    void urteil(const Protokolldaten& d) {
        constexpr double Zeichenbreite = 8;
        constexpr int MeisteGrundzeilen = 5;
        const bool verfehlt = d.entspricht == false;
        const double oben = y_;
        const double x = Links + Einzug + Zeichenbreite;
        const double breite = Rechts - Einzug - x;
        y_ += 1.4;
        zeichen({Links + Einzug + 1, y_ + 0.5}, d.entspricht);
        y_ += absatz({x, y_}, d.urteil, {Grad::Abschnitt, verfehlt}, breite, 2, Qt::AlignLeft);
        if (!d.gründe.isEmpty()) {
            y_ += absatz({x, y_}, d.gründe.join(QStringLiteral("  ·  ")), {Grad::Text, verfehlt},
                         breite, MeisteGrundzeilen, Qt::AlignLeft);
        }
        if (!d.grundlage.isEmpty()) {
            constexpr int MeisteGrundlagenzeilen = 4;
            y_ += absatz({x, y_}, d.grundlage, {Grad::Text, false}, breite, MeisteGrundlagenzeilen,
                         Qt::AlignLeft);
        }
        y_ += 1.4;
        rahmen(oben, {Links, Rechts});
    }

    /// The table of the criteria; its first line names the columns.
    void kriterien(const Protokolldaten& d) {
        for (const Kriterienzeile& zeile : d.kriterien) {
            const double oben = y_;
            double x = Links;
            y_ += Tabellenluft;
            for (std::size_t i = 0; i < zeile.spalten.size(); ++i) {
                constexpr std::size_t Gemessen = 1;
                absatz({x + Einzug, y_}, zeile.spalten[i],
                       {Grad::Klein, zeile.fett && i == Gemessen}, Kriterienspalten[i] - Einzug, 1,
                       Qt::AlignLeft);
                x += Kriterienspalten[i];
            }
            y_ += ::tarvel::zeile(Grad::Klein) + Tabellenluft;
            rahmen(oben, {Links, Rechts});
        }
        anmerkung(d.kriterienerklärung);
    }

    /// Date and signature, each on a line, with what they are below it.
    void unterschrift(const QString& datum, const QString& datumswort, const QString& wort) {
        y_ += Unterschriftshöhe;
        const double rechts = Rechts - Unterschriftsbreite;
        absatz({Links, y_ - zeile(Grad::Text) - 0.4}, datum, {Grad::Text, false},
               Unterschriftsbreite, 1, Qt::AlignLeft);
        linie({Links, y_}, {Links + Unterschriftsbreite, y_}, Haarlinie);
        linie({rechts, y_}, {Rechts, y_}, Haarlinie);
        y_ += 0.6;
        absatz({Links, y_}, datumswort, {Grad::Klein, false}, Unterschriftsbreite, 1,
               Qt::AlignLeft);
        y_ +=
            absatz({rechts, y_}, wort, {Grad::Klein, false}, Unterschriftsbreite, 1, Qt::AlignLeft);
    }

    /// The footnotes and the number of the page.
    void fuß(const QStringList& noten, const QString& seitenzahl) {
        constexpr int MeisteZeilen = 7;
        constexpr double Zahlenbreite = 34;
        linie({Links, y_}, {Rechts, y_}, Haarlinie);
        y_ += 1;
        const double platz = seitenzahl.isEmpty() ? 0 : Zahlenbreite;
        const double oben = y_;
        y_ += absatz({Links, y_}, noten.join(QStringLiteral("   ")), {Grad::Klein, false},
                     Breite - platz - Einzug, MeisteZeilen, Qt::AlignLeft);
        absatz({Rechts - platz, oben}, seitenzahl, {Grad::Klein, false}, platz, 1, Qt::AlignRight);
    }

private:
    void zellen(const std::vector<Protokollwert>& werte, const std::vector<double>& breiten) {
        const double oben = y_;
        std::vector<double> kanten{Links};
        double höhe = 0;
        for (std::size_t i = 0; i < werte.size(); ++i) {
            höhe = std::max(höhe, zelle(kanten.back(), breiten[i], werte[i]));
            kanten.push_back(kanten.back() + breiten[i]);
        }
        y_ += höhe;
        rahmen(oben, kanten);
    }

    /// Widths of cells that fill the line: all the same, unless one of them needs more.
    [[nodiscard]] std::vector<double> bedarf(const std::vector<Protokollwert>& werte) const {
        const double gleich = Breite / static_cast<double>(werte.size());
        std::vector<double> breiten;
        std::vector<double> nötige; // a name may be shortened, a value must not
        double summe = 0;
        double nötig = 0;
        for (const Protokollwert& w : werte) {
            const double wert = satz_.breite(w.wert, Grad::Text, w.fett) + zusatzbreite(w);
            const double name = satz_.breite(w.name, Grad::Klein, false);
            breiten.push_back(std::min(std::max(wert, name) + 2 * Einzug + 0.1, Breite / 2));
            nötige.push_back(std::min(wert + 2 * Einzug + 0.1, breiten.back()));
            summe += breiten.back();
            nötig += nötige.back();
        }
        const bool genügt = std::all_of(breiten.begin(), breiten.end(),
                                        [gleich](double breite) { return breite <= gleich; });
        const double rest = (Breite - summe) / static_cast<double>(werte.size());
        const double anteil = nötig < Breite ? (Breite - nötig) / (summe - nötig) : 0;
        for (std::size_t i = 0; i < breiten.size(); ++i) {
            double& breite = breiten[i];
            breite = genügt       ? gleich
                     : rest >= 0  ? breite + rest
                     : anteil > 0 ? nötige[i] + (breite - nötige[i]) * anteil
                                  : breite * Breite / summe;
        }
        return breiten;
    }

    [[nodiscard]] double zusatzbreite(const Protokollwert& w) const {
        return w.zusatz.isEmpty() ? 0 : satz_.breite(w.zusatz, Grad::Klein, false) + Einzug;
    }

    struct Schnitt {
        Grad grad;
        bool fett;
    };

    /// A tick, a cross, or a dash where nothing was judged.
    void zeichen(QPointF ort, std::optional<bool> entspricht) {
        constexpr double Größe = 4;
        constexpr double Strich = 0.7;
        const auto strich = [&](QPointF von, QPointF nach) {
            linie(ort + von * Größe, ort + nach * Größe, Strich);
        };
        if (!entspricht) {
            strich({0, 0.5}, {1, 0.5});
        } else if (*entspricht) {
            strich({0, 0.55}, {0.35, 0.9});
            strich({0.35, 0.9}, {1, 0.05});
        } else {
            strich({0.05, 0.05}, {0.95, 0.95});
            strich({0.05, 0.95}, {0.95, 0.05});
        }
    }

    void linie(QPointF von, QPointF nach, double breite) {
        b_.linien.push_back({{von, nach}, breite});
    }

    /// Left and right edge of the cells of a row and the lines between them.
    void rahmen(double oben, const std::vector<double>& kanten) {
        for (const double x : kanten) {
            linie({x, oben}, {x, y_}, Haarlinie);
        }
        linie({Links, y_}, {Rechts, y_}, Haarlinie);
    }

    /// Writes @p text into a column at @p ort and returns its height.
    double absatz(QPointF ort, const QString& text, Schnitt s, double breite, int höchstens,
                  Qt::AlignmentFlag bündig) {
        if (text.trimmed().isEmpty()) {
            return zeile(s.grad);
        }
        double y = ort.y();
        const QStringList zeilen = satz_.umbrochen(text, s.grad, s.fett, breite, höchstens);
        for (const QString& z : zeilen) {
            const double länge = satz_.breite(z, s.grad, s.fett);
            const double x = bündig == Qt::AlignRight ? ort.x() + breite - länge : ort.x();
            b_.texte.push_back({QRectF(x, y, länge, zeile(s.grad)), z, s.grad, s.fett});
            y += zeile(s.grad);
        }
        return y - ort.y();
    }

    double zelle(double x, double breite, const Protokollwert& wert) {
        const double innen = breite - 2 * Einzug;
        double y = y_ + Zellenluft;
        y += absatz({x + Einzug, y}, wert.name, {Grad::Klein, false}, innen, 1, Qt::AlignLeft);
        y += wertMitZusatz({x + Einzug, y}, innen, wert, 2);
        return y + Zellenluft - y_;
    }

    /// The addition stands at the right end of the first line, or below a value that has to stay
    /// on one line and leaves it no room there.
    double wertMitZusatz(QPointF ort, double breite, const Protokollwert& wert, int höchstens) {
        const Schnitt klein{Grad::Klein, false};
        const bool darunter =
            höchstens == 1 && !wert.zusatz.isEmpty() &&
            satz_.breite(wert.wert, Grad::Text, wert.fett) + zusatzbreite(wert) > breite;
        const double höhe =
            absatz(ort, wert.wert, {Grad::Text, wert.fett},
                   darunter ? breite : breite - zusatzbreite(wert), höchstens, Qt::AlignLeft);
        if (darunter) {
            return höhe +
                   absatz(ort + QPointF(0, höhe), wert.zusatz, klein, breite, 1, Qt::AlignRight);
        }
        const double versatz =
            Protokollsatz::grundlinie(Grad::Text) - Protokollsatz::grundlinie(Grad::Klein);
        absatz(ort + QPointF(0, versatz), wert.zusatz, klein, breite, 1, Qt::AlignRight);
        return höhe;
    }

    /// What the codes of the marks take of their cells: less where a share with its limit needs it.
    [[nodiscard]] double codebreite(const std::vector<Merkmalreihe>& reihen) const {
        constexpr double Höchstens = 7.5;
        double codes = 0;
        double anteile = 0;
        for (const Merkmalreihe& reihe : reihen) {
            for (const Protokollwert& w : reihe.werte) {
                codes = std::max(codes, satz_.breite(w.name, Grad::Text, false) + Einzug);
                anteile =
                    std::max(anteile, satz_.breite(w.wert, Grad::Text, w.fett) + zusatzbreite(w));
            }
        }
        constexpr double Rundung = 0.1;
        const double rest = Markenbreite - 2 * Einzug - anteile - Rundung;
        return std::max(std::min(Höchstens, rest), std::min(Höchstens, codes));
    }

    void merkmalreihe(const Merkmalreihe& reihe, double codes, const QString& nichtGemessen) {
        if (!reihe.gemessen) {
            zeileMitNamen(reihe.gruppe, nichtGemessen);
            return;
        }
        const double oben = y_;
        y_ += Zellenluft;
        double höhe = gruppenname(reihe.gruppe);
        std::vector<double> kanten{Links, Rechts};
        double x = Links + Gruppenbreite;
        for (const Protokollwert& wert : reihe.werte) {
            kanten.push_back(x);
            absatz({x + Einzug, y_}, wert.name, {Grad::Text, false}, codes, 1, Qt::AlignLeft);
            höhe = std::max(höhe, wertMitZusatz({x + Einzug + codes, y_},
                                                Markenbreite - codes - 2 * Einzug, wert, 1));
            x += Markenbreite;
        }
        kanten.push_back(x);
        y_ += höhe + Zellenluft;
        rahmen(oben, kanten);
    }

    double gruppenname(const QString& name) {
        return absatz({Links + Einzug, y_}, name, {Grad::Text, false}, Gruppenbreite - 2 * Einzug,
                      2, Qt::AlignLeft);
    }

    void zeileMitNamen(const QString& name, const QString& text) {
        const double oben = y_;
        y_ += Zellenluft;
        const double x = Links + Gruppenbreite;
        const double höhe = gruppenname(name);
        y_ += std::max(höhe, absatz({x + Einzug, y_}, text, {Grad::Text, false},
                                    Rechts - x - 2 * Einzug, 2, Qt::AlignLeft));
        y_ += Zellenluft;
        rahmen(oben, {Links, x, Rechts});
    }

    Protokollsatz satz_;
    Block b_;
    double y_ = 0;
};

Block oben1(const Protokolldaten& d) {
    Setzer s(d);
    s.titel(d.titel);
    s.lücke(2);
    if (!d.urteil.isEmpty()) {
        s.abschnitt(d.texte(Text::Beurteilung));
        s.urteil(d);
        s.lücke(Abstand);
    }
    s.abschnitt(d.texte(Text::AngabenZurKönigin));
    s.spalten(d.königin);
    s.spalten(d.volk);
    s.lücke(Abstand);
    s.abschnitt(d.einstellungen.art == Protokollart::CubitalindexUndDV
                    ? d.texte(Text::CubitalindexUndDiscoidalverschiebung)
                    : d.texte(Text::Cubitalindex),
                d.gemessen);
    s.zellen(d.indizes);
    s.anmerkung(d.ausgelassen);
    s.anmerkung(d.entstehung);
    s.lücke(2);
    return std::move(s).block();
}

Block oben2(const Protokolldaten& d) {
    Setzer s(d);
    s.titel(d.titel);
    s.lücke(2);
    s.abschnitt(d.texte(Text::AngabenZurKönigin));
    s.spalten(d.königin);
    s.spalten(d.volk);
    s.lücke(Abstand);
    s.abschnitt(d.texte(Text::HantelindexUndDV), d.korrel.flügel.empty() ? QString() : d.gemessen);
    s.zellen(d.korrelation);
    s.anmerkung(d.ausgelassen);
    s.anmerkung(d.entstehung);
    s.lücke(2);
    return std::move(s).block();
}

Block unten(const Protokolldaten& d, int nummer) {
    Setzer s(d);
    if (nummer == 1) {
        s.lücke(Abstand);
        s.abschnitt(d.texte(Text::KörperMerkmale), d.merkmalszahl);
        s.merkmale(d);
    } else if (!d.kriterien.empty()) {
        s.lücke(2);
        s.abschnitt(d.kriterienüberschrift);
        s.kriterien(d);
    }
    s.unterschrift(d.datum, d.datumswort, d.texte(Text::Unterschrift));
    s.lücke(Abstand);
    QString seite;
    if (seitenzahl(d.einstellungen.art) == 2) {
        seite = nummer == 1 ? d.texte(Text::Seite1Von2) : d.texte(Text::Seite2);
    }
    s.fuß(d.fußnoten.at(static_cast<std::size_t>(nummer - 1)), seite);
    return std::move(s).block();
}

QRectF kopfrahmen(const Briefkopf& kopf, const Briefkopfgrafik& grafik) {
    return grafik.rahmen(kopf).united(briefkopftext(kopf, grafik));
}

} // namespace

int seitenzahl(const Protokolldaten& daten) {
    return seitenzahl(daten.einstellungen.art) + anhangseiten(daten);
}

Protokollseite protokollseite(const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                              int nummer) {
    const Protokollart art = daten.einstellungen.art;
    if (nummer > seitenzahl(art) && nummer <= seitenzahl(daten)) {
        return anhangseite(daten, nummer - seitenzahl(art));
    }
    const bool zweite = nummer == 2 && seitenzahl(art) == 2;
    const Block kopf = zweite ? oben2(daten) : oben1(daten);
    const Block fuß = unten(daten, zweite ? 2 : 1);

    // Both pages carry the letterhead at the same place, which the fuller one decides.
    const double diagramm =
        art == Protokollart::CubitalindexUndDV ? KleinstesDoppeldiagramm : KleinstesDiagramm;
    double inhalt = kopf.höhe + fuß.höhe;
    if (seitenzahl(art) == 2) {
        inhalt = std::max(inhalt, zweite ? oben1(daten).höhe + unten(daten, 1).höhe
                                         : oben2(daten).höhe + unten(daten, 2).höhe);
    }
    const double spätestens = Unten - diagramm - inhalt;
    Protokollseite seite;
    seite.briefkopf = eingepasst(daten.einstellungen.briefkopf, grafik, spätestens - Abstand);
    seite.briefkopfrahmen = kopfrahmen(seite.briefkopf, grafik);
    const double anfang = std::max(Höchstanfang, seite.briefkopfrahmen.bottom() + Abstand);
    kopf.setzeAuf(seite, anfang);
    fuß.setzeAuf(seite, Unten - fuß.höhe);
    const double mitte = anfang + kopf.höhe;
    const double höhe = std::min(HöchstesDiagramm, Unten - fuß.höhe - mitte);
    seite.diagramme.push_back({zweite ? Protokolldiagramm::Korrel : Protokolldiagramm::Kurven,
                               QRectF(Links, mitte, Breite, höhe)});
    return seite;
}

} // namespace tarvel
