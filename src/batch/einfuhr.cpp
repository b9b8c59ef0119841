#include "batch/einfuhr.h"

#include "evaluation/beurteilung.h"
#include "evaluation/merkmale.h"
#include "evaluation/rassen.h"
#include "measure/aufloesung.h"
#include "measure/messdatei.h"
#include "results/datenbankfehler.h"
#include "results/einlesen.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Line of a measurement file that fills a column.
int zeileZu(const QString& spalte) {
    constexpr std::array<std::pair<QStringView, int>, 6> zeilen{{{u"ZB_NR", 3},
                                                                 {u"U_NR", 6},
                                                                 {u"Z_NAME", 7},
                                                                 {u"B_NAME", 10},
                                                                 {u"VOLK", 11},
                                                                 {u"VATER", 12}}};
    const auto* const stelle = std::find_if(zeilen.begin(), zeilen.end(),
                                            [&](const auto& z) { return z.first == spalte; });
    return stelle == zeilen.end() ? 1 : stelle->second;
}

/// Whether the file was read all the same.
bool nurHinweis(const Leseproblem& problem) {
    return problem.grund == Lesegrund::AndererZeichensatz;
}

class Einfuhr {
public:
    Einfuhr(const Einfuhrbefehl& befehl, const Batchumgebung& umgebung,
            const Einstellungen& einstellungen, const Rassenwahl& rasse)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , einstellungen_(einstellungen)
        , rasse_(rasse)
        , satzumgebung_{.texte = umgebung.texte,
                        .format = umgebung.format,
                        .rassen = rassenliste(einstellungen),
                        .OhneHaarlänge = einstellungen.schalter(Einstellung::OhneHaarlänge)}
        , tabelle_(befehl.datenbank) {}

    /// Throws Datenbankfehler when the database is none. A file that is missing is made later.
    void prüfeDatenbank() {
        vorhanden_ = QFile::exists(befehl_.datenbank);
        if (vorhanden_) {
            tabelle_.öffneProbeweise();
        }
    }

    /// Stores one file. False, with a message, when it is not stored.
    bool nimm(const QString& datei) {
        const std::optional<QByteArray> bytes = lesenOderMelden(umgebung_, datei);
        if (!bytes) {
            return false;
        }
        const Messdatei gelesen = liesMessdatei(*bytes);
        for (const Leseproblem& problem : gelesen.probleme) {
            melde(umgebung_, datei, problem);
        }
        const bool fehlerlos =
            std::all_of(gelesen.probleme.begin(), gelesen.probleme.end(), nurHinweis);
        if (!gelesen.istMessdatei || !(fehlerlos || befehl_.teilweise)) {
            return false;
        }
        try {
            const QString nummer = speichere(gelesen, datei);
            umgebung_.ausgabe.write((datei + u": "_s +
                                     umgebung_.texte(Meldung::UntersuchungGespeichert).arg(nummer) +
                                     u'\n')
                                        .toUtf8());
            return true;
        } catch (const Datenbankfehler& fehler) {
            meldeAblehnung(datei, fehler);
            return false;
        }
    }

private:
    void meldeAblehnung(const QString& datei, const Datenbankfehler& fehler) const {
        const QString grund = meldungstext(umgebung_.texte, fehler);
        switch (fehler.grund()) {
        case Datenbankgrund::NummerDoppelt:
            melde(umgebung_, datei, grund, zeileZu(u"U_NR"_s));
            break;
        case Datenbankgrund::TextZuLang:
            melde(umgebung_, datei, grund, zeileZu(fehler.einzelheit()));
            break;
        default:
            melde(umgebung_, datei, grund);
        }
    }

    /// Stores the examination and returns its number. Throws Datenbankfehler.
    QString speichere(const Messdatei& datei, const QString& name) {
        const EingeleseneUntersuchung eingelesen =
            untersuchungAusMessdatei(datei, rasse_.position, umgebung_.format);
        Ergebnissatz satz =
            satzAus(eingelesen.untersuchung, entspricht(eingelesen.untersuchung),
                    scannerauflösung(einstellungen_.zahl(Einstellung::ScannMessung)),
                    umgebung_.heute, satzumgebung_);
        if (!eingelesen.merkmaleVerstanden) {
            satz.MERKMAL = datei.merkmaltext;
            melde(umgebung_, name,
                  umgebung_.texte(Text::KörperMerkmale) + u": "_s +
                      text({.grund = Lesegrund::Unerwartet, .texte = {zitat(datei.merkmaltext)}},
                           umgebung_.texte));
        }
        if (vorhanden_) {
            return speichere(satz);
        }
        NeueDatenbank(befehl_.datenbank);
        try {
            QString nummer = speichere(satz);
            vorhanden_ = true;
            return nummer;
        } catch (const Datenbankfehler&) {
            QFile::remove(befehl_.datenbank); // nobody asked for an empty one
            throw;
        }
    }

    QString speichere(Ergebnissatz& satz) {
        if (satz.U_NR.trimmed().isEmpty()) {
            satz.U_NR = tabelle_.NächsteNummer(umgebung_.heute,
                                               einstellungen_.text(Einstellung::Kurzzeichen));
        }
        const std::optional<Ergebnissatz> keine;
        if (!tabelle_.ersetze(satz, keine)) {
            throw Datenbankfehler(Datenbankgrund::NummerDoppelt, befehl_.datenbank, satz.U_NR);
        }
        return satz.U_NR;
    }

    [[nodiscard]] bool entspricht(const Untersuchung& untersuchung) const {
        const Merkmalauswertung merkmale =
            MerkmaleAuswerten(untersuchung.merkmale(), satzumgebung_.OhneHaarlänge);
        return beurteile({.Tiere = untersuchung.angaben().Tiere,
                          .Klassen = klassenCI(untersuchung.reihe()),
                          .Merkmale = merkmale.Texte,
                          .Merkmalfehler = merkmale.Fehler},
                         rasse_.standard, einstellungen_.schalter(Einstellung::Beurteilung))
            .EntsprichtRasse;
    }

    const Einfuhrbefehl& befehl_;
    const Batchumgebung& umgebung_;
    const Einstellungen& einstellungen_;
    const Rassenwahl& rasse_;
    Satzumgebung satzumgebung_;
    Ergebnistabelle tabelle_;
    bool vorhanden_ = false;
};

} // namespace

Status importiere(const Einfuhrbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    const auto rasse = wähleRasse(umgebung, *einstellungen, befehl.rasse);
    if (!rasse) {
        return Status::FalscherAufruf;
    }
    Einfuhr einfuhr(befehl, umgebung, *einstellungen, *rasse);
    try {
        einfuhr.prüfeDatenbank();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
    qsizetype gespeichert = 0;
    for (const QString& datei : befehl.dateien) {
        gespeichert += einfuhr.nimm(datei) ? 1 : 0;
    }
    const qsizetype alle = befehl.dateien.size();
    if (alle > 1) {
        umgebung.ausgabe.write((umgebung.texte(Meldung::ImportFertig)
                                    .arg(QString::number(gespeichert), QString::number(alle)) +
                                u'\n')
                                   .toUtf8());
    }
    return gespeichert == alle ? Status::Gut : Status::NichtLesbar;
}

} // namespace tarvel
