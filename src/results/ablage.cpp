#include "results/ablage.h"

#include "evaluation/rassen.h"
#include "results/satzzugriff.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

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
        QString pfad = dokumente.filePath(name + nummer + u".tdb"_s);
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

Ablage::Ablage(const Ablageumgebung& umgebung, Benutzerspeicher& speicher)
    : umgebung_(umgebung)
    , speicher_(speicher) {}

void Ablage::richteEin() {
    DatenbankPfad_ =
        speicher_.GetSetting(Anwendung.toString(), Abschnitt.toString(), Schlüssel.toString());
    const bool ersterStart = QFileInfo(DatenbankPfad_).isRelative(); // empty, or no path of ours
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
        brauchbar_ = true;
        if (ersterStart) {
            QString vergessen;
            if (speicher_.vorhanden()) { // it has lost the name, so this is no first start
                vergessen = umgebung_.texte(Meldung::DatenbankVergessen)
                                .arg(anzeigename(speicher_.pfad()), anzeigename(DatenbankPfad_));
            }
            merkePfad(DatenbankPfad_, vergessen);
        }
    } catch (const Datenbankfehler& fehler) {
        // The path stays: the drive it lies on may only be missing now.
        meldeFehler(fehler);
    }
}

void Ablage::merkePfad(const QString& pfad, const QString& vorweg) {
    DatenbankPfad_ = pfad;
    QString text = vorweg;
    if (!speicher_.SaveSetting(Anwendung.toString(), Abschnitt.toString(), Schlüssel.toString(),
                               pfad)) {
        text += (text.isEmpty() ? QString() : u"\n"_s) +
                umgebung_.texte(Meldung::DatenbankNichtGemerkt).arg(anzeigename(pfad));
    }
    if (!text.isEmpty()) {
        umgebung_.dialoge.meldung(umgebung_.texte(Text::Ergebnisse), text, Meldungsart::Ausruf);
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
    brauchbar_ = true;
    setzeGespeichert(std::nullopt); // the open examination is not in this file
    return true;
}

std::optional<QString> Ablage::letzteNummer() const {
    if (!brauchbar_) {
        return std::nullopt;
    }
    try {
        return Ergebnistabelle(DatenbankPfad_).letzteNummer();
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
        return std::nullopt;
    }
}

void Ablage::setzeGespeichert(std::optional<Ergebnissatz> satz) {
    gespeichert_ = std::move(satz);
    marke_ = gespeichert_ ? satzmarke(*gespeichert_) : QString();
}

void Ablage::nimmAlsGespeichert(const QString& nummer, const QString& marke) {
    setzeGespeichert(std::nullopt);
    nichtGelesen_.clear();
    try {
        setzeGespeichert(nummer.isEmpty() ? std::nullopt
                                          : Ergebnistabelle(DatenbankPfad_).lade(nummer));
        if (gespeichert_) {
            nichtGelesen_ = untersuchungAus(*gespeichert_, satzumgebung()).nichtGelesen;
            if (!marke.isEmpty() && marke != marke_) {
                // What was there is not known any more, only that it was something else.
                Ergebnissatz anderer;
                anderer.U_NR = gespeichert_->U_NR;
                gespeichert_ = anderer;
                marke_ = marke;
            }
        }
    } catch (const Datenbankfehler&) {
        // Without its row it is a new one, and nothing is replaced unasked.
    }
}

Zeilenlage Ablage::zeilenlage() const {
    using Art = Zeilenlage::Art;
    if (!gespeichert_) {
        return {};
    }
    try {
        const Ergebnistabelle tabelle(DatenbankPfad_);
        const Ergebnissatz& alt = *gespeichert_;
        if (const auto jetzt = tabelle.lade(alt.U_NR)) {
            return stehenGleich(*jetzt, alt) ? Zeilenlage{}
                                             : Zeilenlage{Art::Geändert, jetzt->U_NR};
        }
        // What was measured tells a row that has another number by now.
        Zeilenlage lage{Art::Verschwunden};
        tabelle.sätze(
            tabelle.zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}),
            [&](const Ergebnissatz& satz) {
                Ergebnissatz gleicher = satz;
                gleicher.U_NR = alt.U_NR;
                const bool dieselben = satz.Grafik == alt.Grafik && satz.CI == alt.CI &&
                                       satz.MERKMAL == alt.MERKMAL && !satz.CI.trimmed().isEmpty();
                if (dieselben || stehenGleich(gleicher, alt)) {
                    lage = {Art::Umbenannt, satz.U_NR};
                }
                return lage.art == Art::Verschwunden;
            },
            [](const QString& /*zuGroß*/) {});
        return lage;
    } catch (const Datenbankfehler&) {
        return {}; // whoever stores next is told
    }
}

bool Ablage::frage(const QString& titel, const QString& text, Meldungsart art) const {
    return umgebung_.dialoge.frage({.titel = titel, .text = text, .art = art}) == Antwort::Ja;
}

bool Ablage::istGespeicherte(const QString& nummer) const {
    return gespeichert_ && gespeichert_->U_NR.compare(nummer, Qt::CaseInsensitive) == 0;
}

bool Ablage::darfAndereErsetzen(const QString& nummer) const {
    const Texte& t = umgebung_.texte;
    const Meldung text = istGespeicherte(nummer) ? Meldung::UntersuchungInzwischenGeändert
                                                 : Meldung::UntersuchungErsetzenFrage;
    return umgebung_.dialoge.frage({.titel = t(Text::MenüSpeichern),
                                    .text = t(text).arg(nummer),
                                    .art = Meldungsart::Ausruf,
                                    .verwirft = true,
                                    .ja = t(Meldung::Ersetzen),
                                    .nein = t(Meldung::NichtErsetzen)}) == Antwort::Ja;
}

QStringList Ablage::bewahreUngelesenes(Ergebnissatz& satz, const Ablagestand& stand) const {
    if (nichtGelesen_.isEmpty() || !istGespeicherte(satz.U_NR)) {
        return {};
    }
    if (marke_ != satzmarke(*gespeichert_)) {
        return nichtGelesen_; // it is not known any more what stood there, see nimmAlsGespeichert
    }
    // What the row would be if nothing had been changed: a column that is the same in both was not
    // edited.
    const GeleseneUntersuchung gelesen = untersuchungAus(*gespeichert_, satzumgebung());
    Untersuchung unverändert;
    unverändert.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum, stand.zusatz);
    Ergebnissatz vorher =
        satzAus(unverändert, stand.urteil, gelesen.auflösung.value_or(stand.auflösung), heute(),
                satzumgebung());
    Ergebnissatz alt = *gespeichert_;
    QStringList ersetzt;
    const auto bewahre = [&](const QString& spalte) {
        QString* jetzt = spaltentext(satz, spalte);
        if (jetzt == nullptr) {
            return; // an unreadable date is set anew
        }
        if (*jetzt == *spaltentext(vorher, spalte)) {
            *jetzt = *spaltentext(alt, spalte);
        } else {
            ersetzt << spalte;
        }
    };
    std::for_each(nichtGelesen_.begin(), nichtGelesen_.end(), bewahre);
    if (nichtGelesen_.contains(u"MERKMAL"_s) && !nichtGelesen_.contains(u"PROZENT"_s)) {
        bewahre(u"PROZENT"_s); // the shares of those marks
    }
    return ersetzt;
}

bool Ablage::darfUnlesbaresErsetzen(const QString& nummer, const QStringList& spalten) const {
    if (spalten.isEmpty()) {
        return true;
    }
    const Texte& t = umgebung_.texte;
    return umgebung_.dialoge.frage(
               {.titel = t(Text::MenüSpeichern),
                .text = t(Meldung::UngelesenesErsetzen).arg(nummer, spaltennamen(t, spalten)),
                .art = Meldungsart::Ausruf,
                .verwirft = true,
                .ja = t(Meldung::Ersetzen),
                .nein = t(Meldung::NichtErsetzen)}) == Antwort::Ja;
}

Speicherergebnis Ablage::SpeichernDB(const Untersuchung& untersuchung, Speicheranlass anlass,
                                     const Ablagestand& stand) {
    constexpr Speicherergebnis Nicht{.fertig = false, .gespeichert = {}, .merkmaleBewahrt = false};
    constexpr Speicherergebnis Ohne{.fertig = true, .gespeichert = {}, .merkmaleBewahrt = false};
    if (!untersuchung.geändert()) {
        return Ohne;
    }
    const Texte& t = umgebung_.texte;
    const Kolonieangaben& angaben = untersuchung.angaben();
    const QString& titel = t(Text::MenüSpeichern);
    if (angaben.UNr.trimmed().isEmpty()) {
        // Without a number the examination is given up, which no key may mean by accident.
        return umgebung_.dialoge.frage(
                   {.titel = titel,
                    .text = t(Text::UntersuchungNrFehlt) + u'\n' + t(Text::FrageNummerEintragen),
                    .art = Meldungsart::Stopp,
                    .neinVerwirft = true}) == Antwort::Ja
                   ? Nicht
                   : Ohne;
    }
    const bool ohneKönigin = angaben.Name.trimmed().isEmpty() && angaben.KNr.trimmed().isEmpty() &&
                             angaben.Besitzer.trimmed().isEmpty();
    if (ohneKönigin &&
        frage(titel, t(Text::ZüchterUndKöniginFehlen) + u'\n' + t(Text::FrageAngabenEintragen),
              Meldungsart::Frage)) {
        return Nicht;
    }
    if (anlass == Speicheranlass::Verlassen) {
        const Antwort antwort =
            umgebung_.dialoge.frage({.titel = titel,
                                     .text = u"' "_s + angaben.UNr + t(Text::WurdeGeändert),
                                     .art = Meldungsart::Frage,
                                     .mitAbbrechen = true});
        if (antwort != Antwort::Ja) {
            return antwort == Antwort::Nein ? Ohne : Nicht;
        }
    }
    try {
        Untersuchung mitZusatz = untersuchung;
        mitZusatz.setzeZusatz(stand.zusatz);
        Ergebnissatz satz =
            satzAus(mitZusatz, stand.urteil, stand.auflösung, heute(), satzumgebung());
        satz.U_NR = satz.U_NR.trimmed();
        const QStringList ersetzt = bewahreUngelesenes(satz, stand);
        if (!darfUnlesbaresErsetzen(satz.U_NR, ersetzt)) {
            return Nicht;
        }
        Ergebnistabelle tabelle(DatenbankPfad_);
        const auto erwartet = istGespeicherte(satz.U_NR) ? gespeichert_ : std::nullopt;
        if (!tabelle.ersetze(satz, erwartet)) {
            if (!darfAndereErsetzen(satz.U_NR)) {
                return Nicht;
            }
            tabelle.speichere(satz);
        }
        setzeGespeichert(satz);
        nichtGelesen_ = untersuchungAus(satz, satzumgebung()).nichtGelesen;
        brauchbar_ = true;
        return {.fertig = true,
                .gespeichert = satz.DATUM,
                .merkmaleBewahrt = nichtGelesen_.contains(u"MERKMAL"_s)};
    } catch (const Datenbankfehler& fehler) {
        umgebung_.dialoge.meldung(titel,
                                  t(Text::SpeichernNichtMöglich) + u'\n' + meldungstext(t, fehler),
                                  Meldungsart::Ausruf);
        return Nicht;
    }
}

QStringList Ablage::bekannte(QString Kolonieangaben::*wert) const {
    constexpr int Höchstens = 500;
    try {
        return Ergebnistabelle(DatenbankPfad_).bekannte(textspalte(wert), Höchstens);
    } catch (const Datenbankfehler&) {
        return {}; // choosing is a convenience; whoever saves is told
    }
}

Kolonieangaben Ablage::NeueUntersuchung(const Kolonieangaben& bisher) {
    const Texte& t = umgebung_.texte;
    Kolonieangaben neu;
    // Of a race outside the list the position says nothing.
    neu.Rasse =
        bisher.Rassenname.isEmpty()
            ? bisher.Rasse
            : std::clamp<int>(umgebung_.einstellungen.zahl(Einstellung::Rasse), 0,
                              static_cast<int>(rassenliste(umgebung_.einstellungen).size()) - 1);
    neu.Tiere = bisher.Tiere;
    if (umgebung_.einstellungen.schalter(Einstellung::AutoNummer)) {
        try {
            const QString nummer =
                Ergebnistabelle(DatenbankPfad_)
                    .NächsteNummer(heute(), umgebung_.einstellungen.text(Einstellung::Kurzzeichen));
            if (nummer.size() <= LängsteNummer) {
                neu.UNr = nummer;
            } else {
                umgebung_.dialoge.meldung(t(Text::Untersuchung),
                                          t(Meldung::NummerOhneKurzzeichen).arg(nummer),
                                          Meldungsart::Ausruf);
            }
        } catch (const Datenbankfehler& fehler) {
            if (brauchbar_) {
                meldeFehler(fehler);
            }
        }
    }
    setzeGespeichert(std::nullopt);
    nichtGelesen_.clear();
    return neu;
}

std::optional<GeleseneUntersuchung> Ablage::LadenDB(const QString& nummer) {
    try {
        const std::optional<Ergebnissatz> satz = Ergebnistabelle(DatenbankPfad_).lade(nummer);
        if (!satz) {
            throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, DatenbankPfad_, nummer);
        }
        GeleseneUntersuchung gelesen = untersuchungAus(*satz, satzumgebung());
        setzeGespeichert(*satz);
        nichtGelesen_ = gelesen.nichtGelesen;
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
