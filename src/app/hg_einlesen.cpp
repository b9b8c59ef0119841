// How files come into the main window: pictures, results files, and what other programs wrote.

#include "app/hg.h"

#include "app/hinweiszeile.h"
#include "measure/aufloesung.h"
#include "measure/koordinatenreihe.h"
#include "measure/leseproblem.h"
#include "measure/messdatei.h"
#include "measure/messplatz.h"
#include "measure/textdatei.h"
#include "results/einlesen.h"
#include "results/kolonieformular.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// In the order in which files of several kinds are opened.
enum class Dateiart { Ergebnisse, Ordner, Messdatei, Koordinaten, Bild };

Dateiart dateiart(const QString& pfad) {
    const QFileInfo datei(pfad);
    if (datei.isDir()) {
        return Dateiart::Ordner;
    }
    constexpr std::array<std::pair<QStringView, Dateiart>, 5> endungen{
        {{u"tdb", Dateiart::Ergebnisse},
         {u"bee", Dateiart::Messdatei},
         {u"csv", Dateiart::Koordinaten},
         {u"txt", Dateiart::Koordinaten},
         {u"tps", Dateiart::Koordinaten}}};
    const QString endung = datei.suffix().toLower();
    const auto* const stelle = std::find_if(endungen.begin(), endungen.end(),
                                            [&](const auto& e) { return e.first == endung; });
    return stelle == endungen.end() ? Dateiart::Bild : stelle->second;
}

/// Lays a wing onto its picture, which lies beside the file that names it; where there is none, it
/// is turned over about its own middle, which leaves its shape right.
void legeInsBild(Flügelmessung& messung, const QDir& ordner) {
    const QString bild = ordner.filePath(messung.bilddatei);
    std::optional<float> höhe;
    if (!messung.bilddatei.isEmpty() && QFileInfo(bild).isFile()) {
        messung.bilddatei = bild;
        if (const QSize größe = QImageReader(bild).size(); größe.isValid()) {
            höhe = static_cast<float>(größe.height());
        }
    }
    messung.punkte = gespiegelt(messung.punkte, höhe);
}

} // namespace

bool HG::öffneDateien(const QStringList& pfade) {
    bool gelungen = true;
    for (const Dateiart art : {Dateiart::Ergebnisse, Dateiart::Ordner, Dateiart::Messdatei,
                               Dateiart::Koordinaten, Dateiart::Bild}) {
        QStringList dateien = pfade;
        dateien.removeIf([art](const QString& pfad) { return dateiart(pfad) != art; });
        if (dateien.isEmpty()) {
            continue;
        }
        if (art == Dateiart::Messdatei && dateien.size() > 1) {
            gelungen = importiert(austausch_.importiere(this, dateien)) && gelungen;
            continue;
        }
        const bool offen = öffneDatei(dateien.constFirst());
        gelungen = gelungen && offen;
        if (offen && dateien.size() > 1) {
            ZeigeEigenenHinweis(
                {Meldung::NurEineGeöffnet, {QFileInfo(dateien.constFirst()).fileName()}});
        }
    }
    return gelungen;
}

bool HG::öffneDatei(const QString& pfad) {
    switch (dateiart(pfad)) {
    case Dateiart::Ordner:
        return importiert(austausch_.importiereOrdner(this, pfad));
    case Dateiart::Messdatei:
        return lesMessdatei(pfad);
    case Dateiart::Koordinaten:
        return lesKoordinaten(pfad);
    case Dateiart::Bild:
        return ladeBild(pfad);
    case Dateiart::Ergebnisse:
        break;
    }
    kolonie_->vervollständige();
    if (!verlasseUntersuchung() || !ablage_.DatenbankWählen(pfad)) {
        return false;
    }
    zeigeLetzte();
    return true;
}

void HG::LadenBee() {
    const Texte& t = umgebung_.texte;
    const QStringList dateien = umgebung_.dialoge.dateienOeffnen(
        t(Text::Importieren), austausch_.ordner(),
        t(Text::Messdateien) + u" (*.Bee *.bee *.BEE);;"_s + t(Meldung::Koordinatendateien) +
            u" (*.csv *.tps *.txt *.CSV *.TPS *.TXT)"_s);
    if (!dateien.isEmpty()) {
        öffneDateien(dateien);
    }
}

void HG::importiereOrdner() {
    const QString ordner = umgebung_.dialoge.ordnerWaehlen(umgebung_.texte(Meldung::ImportOrdner),
                                                           austausch_.ordner());
    if (!ordner.isEmpty()) {
        importiert(austausch_.importiereOrdner(this, ordner));
    }
}

bool HG::importiert(const QString& ergebnis) {
    if (ergebnis.isEmpty()) {
        return false;
    }
    // The number of an examination that was not begun yet may be taken now.
    if (ablage_.gespeicherteNummer().isEmpty() && !untersuchung_.geändert() &&
        !messung_.punkte().begonnen()) {
        beginneNeue();
    }
    ZeigeEigenenHinweis(ergebnis);
    return true;
}

void HG::exportiere() {
    kolonie_->vervollständige();
    if (const QString fertig = austausch_.exportiere(stand()); !fertig.isEmpty()) {
        ZeigeEigenenHinweis(fertig);
    }
}

void HG::berichte(Meldung ergebnis, const QString& pfad, const QStringList& gründe) {
    const Texte& t = umgebung_.texte;
    umgebung_.dialoge.bericht(t(Text::Importieren), t(ergebnis).arg(QDir::toNativeSeparators(pfad)),
                              gründe);
}

/// The bytes of a file that is read in; nullopt, with a message, when there are none.
std::optional<QByteArray> HG::lesEin(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    kolonie_->vervollständige();
    const Hinweis vorher = lab_H_->hinweis();
    ZeigeEigenenHinweis({Meldung::ImportFortschritt, {u"1"_s, u"1"_s}});
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    std::optional<QByteArray> inhalt = dateiinhalt(pfad);
    ZeigeEigenenHinweis(vorher);
    if (!inhalt) {
        umgebung_.dialoge.meldung(t(Text::Importieren), textUnlesbar(pfad, t), Meldungsart::Ausruf);
    }
    return inhalt;
}

bool HG::lesMessdatei(const QString& pfad) {
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
    if (!verlasseUntersuchung()) {
        return false;
    }
    // Race and resolution of a new examination, and its number where the file has none.
    beginneNeue();
    const QString nummer = untersuchung_.angaben().UNr;
    const EingeleseneUntersuchung gelesen =
        untersuchungAusMessdatei(datei, untersuchung_.angaben().Rasse, umgebung_.format);
    untersuchung_ = gelesen.untersuchung;
    if (Kolonieangaben angaben = untersuchung_.angaben(); angaben.UNr.trimmed().isEmpty()) {
        angaben.UNr = nummer;
        untersuchung_.setzeAngaben(angaben);
    }
    if (gelesen.messart) {
        messplatz_->wünscheMessart(*gelesen.messart);
    }
    zeigeUntersuchung();
    verteiler_.ausführen(befehl::Kurven);
    if (!gelesen.merkmaleVerstanden) {
        gründe << t(Meldung::ImportMerkmale).arg(zitat(datei.merkmaltext));
    }
    if (!gründe.isEmpty()) {
        berichte(Meldung::ImportNichtGelesen, pfad, gründe);
    }
    return true;
}

bool HG::lesKoordinaten(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    const std::optional<QByteArray> inhalt = lesEin(pfad);
    if (!inhalt) {
        return false;
    }
    const auto gelesen = liesKoordinaten(*inhalt);
    if (const auto* problem = std::get_if<Leseproblem>(&gelesen)) {
        berichte(Meldung::ImportNichtsGelesen, pfad, {textMitZeile(*problem, t)});
        return false;
    }
    const auto& koordinaten = std::get<Koordinaten>(gelesen);
    const std::optional<int> dpi = frageAuflösung(pfad, auflösungAus(koordinaten));
    if (!dpi) {
        return false;
    }
    Lagebestimmung lage;
    if (koordinaten.yNachOben) {
        lage = [ordner = QFileInfo(pfad).dir()](Flügelmessung& m) { legeInsBild(m, ordner); };
    }
    Koordinatenreihe eingelesen =
        reiheAus(koordinaten, eigeneMessart(), {1, *dpi}, umgebung_.format, lage);
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
    if (!verlasseUntersuchung()) {
        return false;
    }
    beginneNeue();
    messung_.setzeAuflösung(*dpi);
    untersuchung_.reihe() = std::move(eingelesen.reihe);
    zeigeUntersuchung();
    verteiler_.ausführen(befehl::Kurven);
    ZeigeEigenenHinweis(
        {Meldung::KoordinatenEingelesen,
         {QString::number(untersuchung_.reihe().nummern().size()), QString::number(*dpi)}});
    if (!ohneWerte.isEmpty()) {
        umgebung_.dialoge.bericht(t(Text::Importieren),
                                  t(Meldung::FlügelOhneWerte).arg(QString()).trimmed(), ohneWerte);
    }
    return true;
}

/// The resolution that coordinates were measured at, which the discoidal shift depends on. nullopt
/// when the user gave up.
std::optional<int> HG::frageAuflösung(const QString& pfad, std::optional<int> ausDatei) {
    const Texte& t = umgebung_.texte;
    std::vector<int> dpi(Scannerauflösungen.begin(), Scannerauflösungen.end());
    const int vorgabe = ausDatei.value_or(
        scannerauflösung(umgebung_.einstellungen.zahl(Einstellung::ScannMessung)));
    auto stelle = std::lower_bound(dpi.begin(), dpi.end(), vorgabe);
    if (stelle == dpi.end() || *stelle != vorgabe) {
        stelle = dpi.insert(stelle, vorgabe);
    }
    QStringList worte;
    for (const int wert : dpi) {
        worte << QString::number(wert) + u' ' + t(Meldung::EinheitDpi);
    }
    const std::optional<int> wahl = umgebung_.dialoge.auswahl(
        t(Text::Importieren), t(Meldung::AuflösungFrage).arg(QFileInfo(pfad).fileName()), worte,
        static_cast<int>(stelle - dpi.begin()));
    return wahl ? std::optional(dpi.at(static_cast<std::size_t>(*wahl))) : std::nullopt;
}

} // namespace tarvel
