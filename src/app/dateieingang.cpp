#include "app/dateieingang.h"

#include "measure/aufloesung.h"
#include "measure/bildhoehe.h"
#include "measure/koordinatenausgabe.h"
#include "measure/koordinatenreihe.h"
#include "measure/leseproblem.h"
#include "measure/messdatei.h"
#include "measure/textdatei.h"
#include "results/einlesen.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// In the order in which files of several kinds are opened.
enum class Eingangsart { Ergebnisse, Ordner, Messdatei, Koordinaten, Bild };

Eingangsart eingangsart(const QString& pfad) {
    const QFileInfo datei(pfad);
    if (datei.isDir()) {
        return Eingangsart::Ordner;
    }
    constexpr std::array<std::pair<QStringView, Eingangsart>, 5> endungen{
        {{u"tdb", Eingangsart::Ergebnisse},
         {u"bee", Eingangsart::Messdatei},
         {u"csv", Eingangsart::Koordinaten},
         {u"txt", Eingangsart::Koordinaten},
         {u"tps", Eingangsart::Koordinaten}}};
    const QString endung = datei.suffix().toLower();
    const auto* const stelle = std::find_if(endungen.begin(), endungen.end(),
                                            [&](const auto& e) { return e.first == endung; });
    return stelle == endungen.end() ? Eingangsart::Bild : stelle->second;
}

/// Lays a wing onto its picture, which lies beside the file that names it. Where there is none, it
/// is turned over about its own middle, which leaves its shape right, and the picture is noted in
/// @p ohneBild, to be laid in its place when the picture is found.
void legeInsBild(Flügelmessung& messung, const QDir& ordner, QStringList& ohneBild) {
    const QString bild = ordner.filePath(messung.bilddatei);
    if (!messung.bilddatei.isEmpty()) {
        const std::optional<float> höhe = bildhöhe(bild, ordner.path());
        if (const auto gelegt = höhe ? gespiegelt(messung.punkte, *höhe) : std::nullopt) {
            messung.bilddatei = bild;
            messung.punkte = *gelegt;
            return;
        }
    }
    if (!ohneBild.contains(messung.bilddatei)) {
        ohneBild << messung.bilddatei;
    }
    messung.punkte = gespiegelt(messung.punkte, eigeneHöhe(messung.punkte)).value();
    messung.bilddatei = bildname(messung.bilddatei);
    messung.ohneBildhöhe = true;
}

/// "1200 dpi: Flügel 001, 002 (assumed)", a line for each resolution and where it comes from. Empty
/// when none comes from a scale, whose unit the file does not name.
QStringList auflösungszeilen(const Koordinaten& koordinaten, const Messreihe& reihe,
                             const Texte& t) {
    enum class Herkunft { Datei, Maßstab, Angenommen };
    std::map<std::pair<int, Herkunft>, QStringList> gruppen;
    bool ausMaßstab = false;
    int nummer = 0;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        const Flügelmessung* const flügel = reihe.messung(++nummer);
        if (flügel == nullptr) {
            continue;
        }
        Herkunft herkunft = Herkunft::Angenommen;
        if (auflösungAus(satz)) {
            herkunft = satz.maßstab ? Herkunft::Maßstab : Herkunft::Datei;
        }
        ausMaßstab = ausMaßstab || herkunft == Herkunft::Maßstab;
        gruppen[{flügel->aufnahme.dpi, herkunft}] << dreistellig(nummer);
    }
    QStringList zeilen;
    for (const auto& [gruppe, nummern] : gruppen) {
        QString zeile =
            t(Meldung::AuflösungDerFlügel)
                .arg(QString::number(gruppe.first), t(Text::Flügel) + u' ' + nummern.join(u", "_s));
        if (gruppe.second != Herkunft::Datei) {
            zeile += u" ("_s +
                     t(gruppe.second == Herkunft::Maßstab ? Meldung::AusMaßstab
                                                          : Meldung::AngenommeneAuflösung) +
                     u')';
        }
        zeilen << zeile;
    }
    return ausMaßstab ? zeilen : QStringList();
}

} // namespace

Dateieingang::Dateieingang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz,
                           Untersuchungsgang& gang, const Fensterdienste& dienste)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , gang_(gang)
    , dienste_(dienste)
    , austausch_(umgebung_, arbeitsplatz) {}

bool Dateieingang::öffneDateien(const QStringList& pfade) {
    bool gelungen = true;
    for (const Eingangsart art :
         {Eingangsart::Ergebnisse, Eingangsart::Ordner, Eingangsart::Messdatei,
          Eingangsart::Koordinaten, Eingangsart::Bild}) {
        QStringList dateien = pfade;
        dateien.removeIf([art](const QString& pfad) { return eingangsart(pfad) != art; });
        if (dateien.isEmpty()) {
            continue;
        }
        if (art == Eingangsart::Messdatei && dateien.size() > 1) {
            gelungen = importiert(austausch_.importiere(dienste_.fenster, dateien)) && gelungen;
            continue;
        }
        const bool offen = öffneDatei(dateien.constFirst());
        gelungen = gelungen && offen;
        if (offen && dateien.size() > 1) {
            dienste_.hinweise.zeige(
                {Meldung::NurEineGeöffnet, {QFileInfo(dateien.constFirst()).fileName()}});
        }
    }
    return gelungen;
}

bool Dateieingang::öffneDatei(const QString& pfad) {
    switch (eingangsart(pfad)) {
    case Eingangsart::Ordner:
        return importiert(austausch_.importiereOrdner(dienste_.fenster, pfad));
    case Eingangsart::Messdatei:
        return lesMessdatei(pfad);
    case Eingangsart::Koordinaten:
        return lesKoordinaten(pfad);
    case Eingangsart::Bild:
        return dienste_.ladeBild(pfad);
    case Eingangsart::Ergebnisse:
        break;
    }
    return gang_.öffneDatenbank(pfad);
}

void Dateieingang::LadenBee() {
    const Texte& t = umgebung_.texte;
    const QStringList dateien = umgebung_.dialoge.wähleDateien(
        t(Text::Importieren), austausch_.ordner(),
        t(Text::Messdateien) + u" (*.Bee *.bee *.BEE);;"_s + t(Meldung::Koordinatendateien) +
            u" (*.csv *.tps *.txt *.CSV *.TPS *.TXT)"_s);
    if (!dateien.isEmpty()) {
        öffneDateien(dateien);
    }
}

void Dateieingang::importiereOrdner() {
    const QString ordner =
        umgebung_.dialoge.wähleOrdner(umgebung_.texte(Meldung::ImportOrdner), austausch_.ordner());
    if (!ordner.isEmpty()) {
        importiert(austausch_.importiereOrdner(dienste_.fenster, ordner));
    }
}

bool Dateieingang::importiert(const QString& ergebnis) {
    if (ergebnis.isEmpty()) {
        return false;
    }
    gang_.prüfeSicherung();
    // The number of an examination that was not begun yet may be taken now.
    if (arbeitsplatz_.ablage().gespeicherteNummer().isEmpty() &&
        !arbeitsplatz_.untersuchung().geändert() && !arbeitsplatz_.messung().punkte().begonnen()) {
        arbeitsplatz_.beginneNeue();
    }
    dienste_.hinweise.zeige(ergebnis);
    return true;
}

void Dateieingang::exportiere() {
    dienste_.vervollständige();
    if (const QString fertig = austausch_.exportiere(); !fertig.isEmpty()) {
        dienste_.hinweise.zeige(fertig);
    }
}

void Dateieingang::berichte(Meldung ergebnis, const QString& pfad,
                            const QStringList& gründe) const {
    const Texte& t = umgebung_.texte;
    umgebung_.dialoge.bericht(t(Text::Importieren), t(ergebnis).arg(QDir::toNativeSeparators(pfad)),
                              gründe);
}

std::optional<QByteArray> Dateieingang::lesEin(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    dienste_.vervollständige();
    const Hinweis vorher = dienste_.hinweise.gezeigter();
    dienste_.hinweise.zeige({Meldung::ImportFortschritt, {u"1"_s, u"1"_s}});
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    std::optional<QByteArray> inhalt = dateiinhalt(pfad);
    dienste_.hinweise.zeige(vorher);
    if (!inhalt) {
        umgebung_.dialoge.meldung(t(Text::Importieren), textUnlesbar(pfad, t), Meldungsart::Ausruf);
    }
    return inhalt;
}

bool Dateieingang::lesMessdatei(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    const std::optional<QByteArray> inhalt = lesEin(pfad);
    if (!inhalt) {
        return false;
    }
    const Messdatei datei = liesMessdatei(*inhalt);
    QStringList gründe;
    for (const Leseproblem& problem : datei.probleme) {
        gründe << textMitZeile(problem, t);
    }
    if (!datei.istMessdatei) {
        berichte(Meldung::ImportNichtsGelesen, pfad, gründe);
        return false;
    }
    if (!gang_.verlasse()) {
        return false;
    }
    const EingeleseneUntersuchung gelesen =
        untersuchungAusMessdatei(datei, arbeitsplatz_.untersuchung().angaben().Rasse,
                                 umgebung_.format, QFileInfo(pfad).fileName());
    arbeitsplatz_.nimmEin(gelesen.untersuchung, {}, gelesen.messart);
    dienste_.verteiler.führeAus(befehl::Kurven);
    if (!gelesen.merkmaleVerstanden) {
        gründe << t(Meldung::ImportMerkmale).arg(zitat(datei.merkmaltext));
    }
    if (!gründe.isEmpty()) {
        berichte(Meldung::ImportNichtGelesen, pfad, gründe);
    }
    return true;
}

bool Dateieingang::lesKoordinaten(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    const std::optional<QByteArray> inhalt = lesEin(pfad);
    if (!inhalt) {
        return false;
    }
    const auto gelesen = liesKoordinaten(*inhalt, arbeitsplatz_.einstellungen().messart);
    if (const auto* problem = std::get_if<Leseproblem>(&gelesen)) {
        berichte(Meldung::ImportNichtsGelesen, pfad, {textMitZeile(*problem, t)});
        return false;
    }
    const auto& koordinaten = std::get<Koordinaten>(gelesen);
    const auto ohneAuflösung =
        std::count_if(koordinaten.flügel.begin(), koordinaten.flügel.end(),
                      [](const Koordinatensatz& satz) { return !auflösungAus(satz).has_value(); });
    const bool alleOhne = ohneAuflösung == std::ssize(koordinaten.flügel);
    const bool verschieden = !alleOhne && !auflösungAus(koordinaten);
    const bool ausMaßstab =
        std::any_of(koordinaten.flügel.begin(), koordinaten.flügel.end(),
                    [](const Koordinatensatz& satz) { return satz.maßstab.has_value(); });
    std::optional<int> dpi =
        auflösungAus(koordinaten).value_or(arbeitsplatz_.einstellungen().auflösung);
    // A scale does not name its unit, so what one gives is only proposed where it can be.
    if (ohneAuflösung > 0 || (!verschieden && ausMaßstab)) {
        dpi = frageAuflösung(pfad, koordinaten, verschieden ? ohneAuflösung : 0);
    }
    if (!dpi) {
        return false;
    }
    Lagebestimmung lage;
    QStringList ohneBild;
    if (koordinaten.yNachOben) {
        lage = [&, ordner = QFileInfo(pfad).dir()](Flügelmessung& m) {
            legeInsBild(m, ordner, ohneBild);
        };
    }
    Koordinatenreihe eingelesen =
        reiheAus(koordinaten, {.messart = arbeitsplatz_.einstellungen().messart,
                               .aufnahme = {1, *dpi},
                               .eigeneAuflösung = verschieden,
                               .format = umgebung_.format,
                               .lage = lage});
    QStringList ohneWerte;
    for (const Flügelmangel& mangel : eingelesen.mängel) {
        ohneWerte << t(Meldung::LeseZeile)
                         .arg(QString::number(mangel.zeile),
                              u'\'' + mangel.name + u"': "_s + text(mangel, t));
    }
    if (eingelesen.reihe.leer()) {
        berichte(Meldung::ImportNichtsGelesen, pfad, ohneWerte);
        return false;
    }
    if (!gang_.verlasse()) {
        return false;
    }
    Untersuchung neu = arbeitsplatz_.untersuchung();
    Kolonieangaben angaben;
    angaben.Rasse = neu.angaben().Rasse;
    angaben.Tiere = neu.angaben().Tiere;
    neu.beginneNeu(angaben);
    neu.setzeReihe(eingelesen.reihe);
    std::set<int> gerechnet;
    const std::vector<int> nummern = neu.reihe().nummern();
    for (const int nummer : nummern) {
        gerechnet.insert(neu.reihe().messung(nummer)->aufnahme.dpi);
    }
    arbeitsplatz_.nimmEin(neu, neu.reihe().messung(nummern.back())->aufnahme.dpi);
    dienste_.verteiler.führeAus(befehl::Kurven);
    QStringList worte;
    for (const int wert : gerechnet) {
        worte << QString::number(wert);
    }
    dienste_.hinweise.zeige({ohneAuflösung > 0 || ausMaßstab ? Meldung::KoordinatenEingelesen
                                                             : Meldung::KoordinatenMitAuflösung,
                             {QString::number(nummern.size()), worte.join(u", "_s)}});
    if (const QStringList zeilen =
            verschieden ? auflösungszeilen(koordinaten, neu.reihe(), t) : QStringList();
        !zeilen.isEmpty()) {
        umgebung_.dialoge.bericht(
            t(Text::Importieren),
            t(Meldung::AuflösungenVerschieden).arg(QFileInfo(pfad).fileName()), zeilen);
    }
    if (!ohneWerte.isEmpty()) {
        umgebung_.dialoge.bericht(t(Text::Importieren),
                                  t(Meldung::FlügelOhneWerte).arg(QString()).trimmed(), ohneWerte);
    }
    if (!ohneBild.isEmpty()) {
        const bool benannt = ohneBild != QStringList(QString());
        for (QString& bild : ohneBild) {
            bild = t(Meldung::PunkteOhneBild)
                       .arg(bild.isEmpty() ? t(Meldung::DateiUnbekannt) : bildname(bild));
        }
        if (benannt) {
            ohneBild << t(Meldung::PunkteKommenInsBild);
        }
        umgebung_.dialoge.meldung(t(Text::Importieren), ohneBild.join(u'\n'), Meldungsart::Hinweis);
    }
    return true;
}

std::optional<int> Dateieingang::frageAuflösung(const QString& pfad, const Koordinaten& koordinaten,
                                                std::ptrdiff_t ohne) const {
    const Texte& t = umgebung_.texte;
    const QString name = QFileInfo(pfad).fileName();
    const std::optional<int> ausDatei = auflösungAus(koordinaten);
    QString frage = ohne > 0 ? t(Meldung::AuflösungFrageOhne).arg(name, QString::number(ohne))
                             : t(Meldung::AuflösungFrage).arg(name);
    if (ausDatei) {
        frage += u'\n' + t(Meldung::AuflösungAusMaßstab).arg(*ausDatei);
    }
    std::vector<int> dpi(Scannerauflösungen.begin(), Scannerauflösungen.end());
    const int vorgabe = ausDatei.value_or(arbeitsplatz_.einstellungen().auflösung);
    auto stelle = std::lower_bound(dpi.begin(), dpi.end(), vorgabe);
    if (stelle == dpi.end() || *stelle != vorgabe) {
        stelle = dpi.insert(stelle, vorgabe);
    }
    QStringList worte;
    for (const int wert : dpi) {
        worte << QString::number(wert) + u' ' + t(Meldung::EinheitDpi);
    }
    const std::optional<int> wahl = umgebung_.dialoge.auswahl(
        t(Text::Importieren), frage, worte, static_cast<int>(stelle - dpi.begin()));
    return wahl ? std::optional(dpi.at(static_cast<std::size_t>(*wahl))) : std::nullopt;
}

} // namespace tarvel
