#include "results/ablage.h"

#include "evaluation/rassen.h"

#include <QDir>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// The section begins with a digit zero. It is how results files in use were remembered: under the
// other spelling they would not be found again.
constexpr QStringView Anwendung = u"Index";
constexpr QStringView Abschnitt = u"0ptionen";
constexpr QStringView Schlüssel = u"Tabelle";

QString anzeigename(const QString& pfad) {
    return QDir::toNativeSeparators(pfad);
}

/// A path among the documents that is free for a new file, or the one that is a results file
/// already: settings may be lost, examinations must not be.
QString ersterPfad(const QString& ordner, const QString& name) {
    const QDir dokumente(ordner);
    for (int zähler = 1;; ++zähler) {
        const QString nummer = zähler == 1 ? QString() : u" %1"_s.arg(zähler);
        const QString pfad = dokumente.filePath(name + nummer + u".tdb"_s);
        if (!QFileInfo::exists(pfad)) {
            return pfad;
        }
        try {
            Ergebnistabelle(pfad).öffneProbeweise();
            return pfad;
        } catch (const Datenbankfehler& fehler) {
            if (fehler.grund() == Datenbankgrund::Gesperrt) {
                return pfad; // of this program, and in use
            }
        }
    }
}

} // namespace

Ablage::Ablage(const Ablageumgebung& umgebung, Benutzerspeicher& speicher,
               Untersuchung& untersuchung)
    : umgebung_(umgebung)
    , speicher_(speicher)
    , untersuchung_(untersuchung) {}

void Ablage::richteEin() {
    DatenbankPfad_ =
        speicher_.GetSetting(Anwendung.toString(), Abschnitt.toString(), Schlüssel.toString());
    const bool ersterStart = DatenbankPfad_.isEmpty();
    if (ersterStart) {
        QDir().mkpath(umgebung_.dokumente);
        DatenbankPfad_ = ersterPfad(umgebung_.dokumente, umgebung_.texte(Text::MeineTabelle));
    }
    try {
        if (!QFileInfo::exists(DatenbankPfad_)) {
            NeueDatenbank(DatenbankPfad_);
            if (!ersterStart) {
                umgebung_.dialoge.meldung(
                    umgebung_.texte(Text::Ergebnisse),
                    umgebung_.texte(Meldung::DatenbankNeuAngelegt).arg(anzeigename(DatenbankPfad_)),
                    Meldungsart::Ausruf);
            }
        }
        Ergebnistabelle(DatenbankPfad_).öffneProbeweise();
        if (ersterStart) {
            merkePfad(DatenbankPfad_);
        }
    } catch (const Datenbankfehler& fehler) {
        // The path stays: the drive it lies on may only be missing now.
        meldeFehler(fehler);
    }
}

void Ablage::merkePfad(const QString& pfad) {
    DatenbankPfad_ = pfad;
    if (!speicher_.SaveSetting(Anwendung.toString(), Abschnitt.toString(), Schlüssel.toString(),
                               pfad)) {
        umgebung_.dialoge.meldung(
            umgebung_.texte(Text::Ergebnisse),
            umgebung_.texte(Meldung::DatenbankNichtGemerkt).arg(anzeigename(pfad)),
            Meldungsart::Ausruf);
    }
}

bool Ablage::DatenbankWählen(const QString& pfad) {
    try {
        Ergebnistabelle(pfad).öffneProbeweise();
    } catch (const Datenbankfehler& fehler) {
        QString text = meldungstext(umgebung_.texte, fehler);
        if (!DatenbankPfad_.isEmpty()) {
            text +=
                u'\n' +
                umgebung_.texte(Meldung::DatenbankBisherigeBleibt).arg(anzeigename(DatenbankPfad_));
        }
        umgebung_.dialoge.meldung(umgebung_.texte(Text::TabelleÖffnen), text, Meldungsart::Ausruf);
        return false;
    }
    merkePfad(pfad);
    gespeicherteNummer_.clear(); // the open examination is not in this file
    return true;
}

bool Ablage::leer() const {
    try {
        return Ergebnistabelle(DatenbankPfad_).anzahl() == 0;
    } catch (const Datenbankfehler&) {
        return true; // told when it was set up
    }
}

std::optional<QString> Ablage::letzteNummer() const {
    try {
        return Ergebnistabelle(DatenbankPfad_).letzteNummer();
    } catch (const Datenbankfehler&) {
        return std::nullopt;
    }
}

bool Ablage::frage(const QString& titel, const QString& text, Meldungsart art) const {
    return umgebung_.dialoge.frage({.titel = titel, .text = text, .art = art}) == Antwort::Ja;
}

bool Ablage::ersetztAndere(const Ergebnistabelle& tabelle) const {
    const QString& nummer = untersuchung_.angaben().UNr;
    return gespeicherteNummer_.compare(nummer, Qt::CaseInsensitive) != 0 &&
           tabelle.lade(nummer).has_value();
}

bool Ablage::SpeichernDB(Speicheranlass anlass, const Ablagestand& stand) {
    if (!untersuchung_.geändert()) {
        return true;
    }
    const Texte& t = umgebung_.texte;
    const Kolonieangaben& angaben = untersuchung_.angaben();
    const QString& titel = t(Text::MenüSpeichern);
    if (angaben.UNr.trimmed().isEmpty()) {
        return !frage(titel, t(Text::UntersuchungNrFehlt) + u'\n' + t(Text::FrageNummerEintragen),
                      Meldungsart::Stopp);
    }
    const bool ohneKönigin = angaben.Name.trimmed().isEmpty() && angaben.KNr.trimmed().isEmpty() &&
                             angaben.Besitzer.trimmed().isEmpty();
    if (ohneKönigin &&
        frage(titel, t(Text::ZüchterUndKöniginFehlen) + u'\n' + t(Text::FrageAngabenEintragen),
              Meldungsart::Frage)) {
        return false;
    }
    if (anlass == Speicheranlass::Verlassen) {
        const Antwort antwort =
            umgebung_.dialoge.frage({.titel = titel,
                                     .text = u"' "_s + angaben.UNr + t(Text::WurdeGeändert),
                                     .art = Meldungsart::Frage,
                                     .mitAbbrechen = true});
        if (antwort != Antwort::Ja) {
            return antwort == Antwort::Nein;
        }
    }
    try {
        Ergebnistabelle tabelle(DatenbankPfad_);
        if (ersetztAndere(tabelle) &&
            umgebung_.dialoge.frage({.titel = titel,
                                     .text = t(Meldung::UntersuchungErsetzenFrage).arg(angaben.UNr),
                                     .art = Meldungsart::Ausruf,
                                     .verwirft = true,
                                     .ja = t(Meldung::Ersetzen),
                                     .nein = t(Meldung::NichtErsetzen)}) != Antwort::Ja) {
            return false;
        }
        const Ergebnissatz satz =
            satzAus(untersuchung_, stand.EntsprichtRasse, stand.auflösung, heute(), satzumgebung());
        tabelle.speichere(satz);
        untersuchung_.alsGespeichertMerken(satz.DATUM);
        gespeicherteNummer_ = satz.U_NR;
        return true;
    } catch (const Datenbankfehler& fehler) {
        umgebung_.dialoge.meldung(titel,
                                  t(Text::SpeichernNichtMöglich) + u'\n' + meldungstext(t, fehler),
                                  Meldungsart::Ausruf);
        return false;
    }
}

void Ablage::NeueUntersuchung() {
    Kolonieangaben neu;
    neu.Rasse = untersuchung_.angaben().Rasse;
    neu.Tiere = untersuchung_.angaben().Tiere;
    if (umgebung_.einstellungen.schalter(Einstellung::AutoNummer)) {
        try {
            neu.UNr =
                Ergebnistabelle(DatenbankPfad_)
                    .NächsteNummer(heute(), umgebung_.einstellungen.text(Einstellung::Kurzzeichen));
        } catch (const Datenbankfehler& fehler) {
            meldeFehler(fehler);
        }
    }
    untersuchung_.beginneNeu(neu);
    gespeicherteNummer_.clear();
}

std::optional<GeleseneUntersuchung> Ablage::LadenDB(const QString& nummer) {
    try {
        const std::optional<Ergebnissatz> satz = Ergebnistabelle(DatenbankPfad_).lade(nummer);
        if (!satz) {
            throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, DatenbankPfad_, nummer);
        }
        GeleseneUntersuchung gelesen = untersuchungAus(*satz, satzumgebung());
        untersuchung_.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum);
        gespeicherteNummer_ = satz->U_NR;
        return gelesen;
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return std::nullopt;
    }
}

void Ablage::SpracheDB() {
    const std::optional<Sprache> sprache = umgebung_.texte.sprache();
    if (!sprache || DatenbankPfad_.isEmpty()) {
        return;
    }
    try {
        Ergebnistabelle(DatenbankPfad_).SpracheDB(*sprache);
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
    }
}

void Ablage::meldeFehler(const Datenbankfehler& fehler) const {
    umgebung_.dialoge.meldung(umgebung_.texte(Text::Ergebnisse),
                              meldungstext(umgebung_.texte, fehler), Meldungsart::Ausruf);
}

Satzumgebung Ablage::satzumgebung() const {
    return {.texte = umgebung_.texte,
            .format = umgebung_.format,
            .rassen = rassenliste(umgebung_.einstellungen),
            .OhneHaarlänge = umgebung_.einstellungen.schalter(Einstellung::OhneHaarlänge)};
}

} // namespace tarvel
