#include "batch/zusammenfuehren.h"

#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/sammlungsquelle.h"
#include "results/zusammenfuehrung.h"

#include <QHash>
#include <QIODevice>
#include <QSet>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto immerWeiter = [](int /*schritt*/, int /*alle*/) { return true; };

class Lauf {
public:
    Lauf(const Zusammenführungsbefehl& befehl, const Batchumgebung& umgebung)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , texte_(umgebung.texte) {}

    /// False when a row of @p datei could not be brought in, or nobody said what becomes of it.
    bool nimm(const QString& datei) {
        const Sammlungsquelle sammlung = öffneSammlung(
            datei, befehl_.datenbank, befehl_.folge, umgebung_.heute, texte_, [] { return true; });
        if (!sammlung.quelle || sammlung.datum) {
            melde(umgebung_, datei,
                  sammlung.datum ? texte_(Meldung::TagesfolgeNennen).arg(datei, *sammlung.datum)
                                 : sammlung.grund);
            return false;
        }
        for (const QString& hinweis : sammlung.hinweise) {
            melde(umgebung_, datei, hinweis);
        }
        Zusammenführung z(befehl_.datenbank, *sammlung.quelle);
        (void)z.vergleiche(immerWeiter);
        z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
        z.entscheide(Zeilenstand::Verschieden,
                     befehl_.beiVerschiedenen.value_or(Entscheidung::Lassen));
        bool alles = sammlung.hinweise.isEmpty();
        for (const QString& nummer : z.zuGroß()) {
            melde(umgebung_, datei, texte_(Meldung::UntersuchungZuGroß).arg(nummer));
            alles = false;
        }
        Zusammenführungsbericht bericht;
        if (!befehl_.nurZeigen) {
            bericht = z.übernimm(*texte_.sprache(), immerWeiter).value();
            geändert_ = geändert_ || bericht.übernommen > 0;
        }
        schreibeZeilen(datei, z, bericht);
        for (const auto& [nummer, grund] : bericht.übergangen) {
            melde(umgebung_, datei, nummer + u": "_s + übergehungstext(texte_, grund));
            alles = false;
        }
        return alles && (befehl_.nurZeigen || befehl_.beiVerschiedenen ||
                         z.anzahl(Zeilenstand::Verschieden) == 0);
    }

    /// Whether anything came in.
    [[nodiscard]] bool geändert() const { return geändert_; }

private:
    void schreibeZeile(const QString& text) const {
        umgebung_.ausgabe.write((sichtbar(text) + u'\n').toUtf8());
    }

    void schreibeZeilen(const QString& datei, const Zusammenführung& z,
                        const Zusammenführungsbericht& bericht) const {
        std::size_t umbenannte = 0;
        QSet<QString> übergangene;
        for (const auto& einer : bericht.übergangen) {
            übergangene << einer.nummer;
        }
        for (const Gegenüber& fall : z.fälle()) {
            if (fall.stand == Zeilenstand::Gleich || übergangene.contains(fall.nummer)) {
                continue;
            }
            QString zeile = datei + u": "_s + fall.nummer + u": "_s + stand(fall);
            const bool bekamNummer =
                fall.entscheidung == Entscheidung::Beide ||
                (fall.nummer.isEmpty() && fall.entscheidung != Entscheidung::Lassen);
            if (bekamNummer && umbenannte < bericht.umbenannt.size()) {
                zeile += u" → "_s + bericht.umbenannt.at(umbenannte++).second;
            }
            schreibeZeile(zeile);
        }
        const auto zahl = [&](Zeilenstand stand) { return QString::number(z.anzahl(stand)); };
        schreibeZeile(datei + u": "_s +
                      texte_(Meldung::VergleichSumme)
                          .arg(zahl(Zeilenstand::Neu), zahl(Zeilenstand::Verschieden),
                               zahl(Zeilenstand::Gleich)));
        if (!befehl_.nurZeigen) {
            schreibeZeile(datei + u": "_s +
                          texte_(Meldung::ZusammenführungFertig)
                              .arg(QString::number(bericht.übernommen),
                                   QString::number(bericht.umbenannt.size()),
                                   QString::number(bericht.ersetzt.size())));
        }
    }

    [[nodiscard]] QString stand(const Gegenüber& fall) const {
        if (fall.stand == Zeilenstand::Neu) {
            return texte_(Meldung::StandNeu);
        }
        const Meldung wort = fall.entscheidung == Entscheidung::Nehmen ? Meldung::EntscheidungAndere
                             : fall.entscheidung == Entscheidung::Beide
                                 ? Meldung::EntscheidungBeide
                                 : Meldung::EntscheidungMeine;
        return texte_(Meldung::StandVerschieden) + u", "_s + texte_(wort);
    }

    const Zusammenführungsbefehl& befehl_;
    const Batchumgebung& umgebung_;
    const Texte& texte_;
    bool geändert_ = false;
};

} // namespace

Status führeZusammen(const Zusammenführungsbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    try {
        // With a name that leads nowhere nothing is to be made.
        (void)Ergebnistabelle(befehl.datenbank).anzahl();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
    Lauf lauf(befehl, umgebung);
    bool alles = true;
    for (const QString& datei : befehl.andere) {
        try {
            alles = lauf.nimm(datei) && alles;
        } catch (const Datenbankfehler& fehler) {
            melde(umgebung, datei, meldungstext(umgebung.texte, fehler));
            alles = false;
        }
    }
    if (lauf.geändert()) {
        sichereTäglich(umgebung, *einstellungen, befehl.datenbank);
    }
    return alles ? Status::Gut : Status::NichtLesbar;
}

} // namespace tarvel
