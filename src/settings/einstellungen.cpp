#include "settings/einstellungen.h"

#include "platform/codepage.h"
#include "platform/profil.h"

#include <array>

namespace tarvel {

namespace {

constexpr auto Zahl = Einstellungsart::Zahl;
constexpr auto Text = Einstellungsart::Text;
constexpr auto NurGeschrieben = Einstellungsart::NurGeschrieben;

using E = Einstellung;

// Missing "Neu" means that the program was never set up. "Scann" and "Default Zoom" are read with
// different defaults by the options dialog and by the measuring side, and the chosen race is
// written to another section than the one it is read from: files in use rely on both.
constexpr std::array tabelle{
    Einstellungszeile{E::Neu, u"Start", u"Neu", Zahl, -1, u"", 0},
    Einstellungszeile{E::Sprache, u"Start", u"Sprache", Zahl, 0, u"", 0},
    Einstellungszeile{E::AutoNummer, u"Allgemeines", u"AutoNummer", Zahl, 1, u"", 0},
    Einstellungszeile{E::Kurzzeichen, u"Allgemeines", u"Kurzzeichen", Text, 0, u"", 128},
    Einstellungszeile{E::Betriebsart, u"Allgemeines", u"Betriebsart", Zahl, 1, u"", 0},
    Einstellungszeile{E::ScannOptionen, u"Allgemeines", u"Scann", Zahl, 1, u"", 0},
    Einstellungszeile{E::ScannMessung, u"Allgemeines", u"Scann", Zahl, 2, u"", 0},
    Einstellungszeile{E::DefaultZoomOptionen, u"Allgemeines", u"Default Zoom", Zahl, 1, u"", 0},
    Einstellungszeile{E::DefaultZoomHauptfenster, u"Allgemeines", u"Default Zoom", Zahl, 0, u"", 0},
    Einstellungszeile{E::Kurvenform, u"Allgemeines", u"Kurvenform", Zahl, 1, u"", 0},
    Einstellungszeile{E::ZweiteKurve, u"Allgemeines", u"2. Kurve", Zahl, 1, u"", 0},
    Einstellungszeile{E::VierteRasse, u"Allgemeines", u"4.Rasse", Text, 0, u"Carpatica", 128},
    Einstellungszeile{E::Rasse, u"Allgemeines", u"Rasse", Zahl, 0, u"", 0},
    Einstellungszeile{E::GewählteRasse, u"Merkmale Arbeiterinnen", u"Rasse", NurGeschrieben, 0, u"",
                      0},
    Einstellungszeile{E::Arbeitsverzeichnis, u"Speichern", u"Arbeitsverzeichnis", Text, 0, u"",
                      128},
    Einstellungszeile{E::Grafikprogramm, u"Speichern", u"Grafikprogramm", Text, 0, u"", 128},
    Einstellungszeile{E::TextLinks, u"Briefkopf", u"Text Links", Zahl, 60, u"", 0},
    Einstellungszeile{E::TextOben, u"Briefkopf", u"Text Oben", Zahl, 20, u"", 0},
    Einstellungszeile{E::Name, u"Briefkopf", u"Name", Text, 0, u"", 128},
    Einstellungszeile{E::Straße, u"Briefkopf", u"Straße", Text, 0, u"", 128},
    Einstellungszeile{E::Ort, u"Briefkopf", u"Ort", Text, 0, u"", 128},
    Einstellungszeile{E::SchriftArt, u"Briefkopf", u"SchriftArt", Text, 0, u"Arial", 128},
    Einstellungszeile{E::SchriftGröße, u"Briefkopf", u"SchriftGröße", Zahl, 10, u"", 0},
    Einstellungszeile{E::SchriftFett, u"Briefkopf", u"SchriftFett", Zahl, 0, u"", 0},
    Einstellungszeile{E::SchriftKursiv, u"Briefkopf", u"SchriftKursiv", Zahl, 0, u"", 0},
    Einstellungszeile{E::Zeilenwechsel, u"Briefkopf", u"Zeilenwechsel", Zahl, 0, u"", 0},
    Einstellungszeile{E::GrafikLinks, u"Briefkopf", u"Grafik Links", Zahl, 20, u"", 0},
    Einstellungszeile{E::GrafikOben, u"Briefkopf", u"Grafik Oben", Zahl, 10, u"", 0},
    Einstellungszeile{E::Ikone, u"Briefkopf", u"Ikone", Zahl, 2, u"", 0},
    Einstellungszeile{E::Datei, u"Briefkopf", u"Datei", Text, 0, u"", 255},
    Einstellungszeile{E::ProtokollSchriftArt, u"Protokoll", u"SchriftArt", Text, 0, u"Arial", 128},
    Einstellungszeile{E::ProtokollSchriftKursiv, u"Protokoll", u"SchriftKursiv", Zahl, 0, u"", 0},
    Einstellungszeile{E::Datum, u"Protokoll", u"Datum", Zahl, 0, u"", 0},
    Einstellungszeile{E::Übersetzen, u"Protokoll", u"Übersetzen", Zahl, 0, u"", 0},
    Einstellungszeile{E::Beurteilung, u"Protokoll", u"Beurteilung", Zahl, 1, u"", 0},
    Einstellungszeile{E::Art, u"Protokoll", u"Art", Zahl, 1, u"", 0},
    Einstellungszeile{E::Seiten, u"Protokoll", u"Seiten", NurGeschrieben, 0, u"", 0},
    Einstellungszeile{E::OhneHaarlänge, u"Merkmale Arbeiterinnen", u"Ohne Haarlänge", Zahl, 0, u"",
                      0},
    // What is asked about before a report is printed without it.
    Einstellungszeile{E::WarnungCubitalindex, u"Protokoll", u"Warnung Cubitalindex", Zahl, 1, u"",
                      0},
    Einstellungszeile{E::WarnungHantelindex, u"Protokoll", u"Warnung Hantelindex", Zahl, 1, u"", 0},
    Einstellungszeile{E::WarnungMerkmale, u"Protokoll", u"Warnung Merkmale", Zahl, 1, u"", 0},
    Einstellungszeile{E::WarnungKönigin, u"Protokoll", u"Warnung Königin", Zahl, 1, u"", 0},
    // Where the windows stood when they were last closed.
    Einstellungszeile{E::FensterHG, u"Fenster", u"HG", Text, 0, u"", 2048},
    Einstellungszeile{E::FensterLeisten, u"Fenster", u"Leisten", Text, 0, u"", 2048},
    Einstellungszeile{E::FensterWerkzeugtexte, u"Fenster", u"Werkzeugtexte", Zahl, 0, u"", 0},
    Einstellungszeile{E::FensterLupeAmZeiger, u"Fenster", u"Lupe am Zeiger", Zahl, 0, u"", 0},
    // How many wings an examination shall have; only for showing how far it is.
    Einstellungszeile{E::Zielzahl, u"Allgemeines", u"Zielzahl", Zahl, 50, u"", 0},
    // The picture that was open when the window was closed.
    Einstellungszeile{E::LetztesBild, u"Fenster", u"Bild", Text, 0, u"", 2048},
    // How many wings, and bees with body marks, a full judgement needs.
    Einstellungszeile{E::SollFlügel, u"Protokoll", u"Mindestzahl Flügel", Zahl, 50, u"", 0},
    Einstellungszeile{E::SollBienen, u"Protokoll", u"Mindestzahl Merkmale", Zahl, 50, u"", 0},
    // Whether pages with every wing and bee follow the report; height of the letterhead's graphic.
    Einstellungszeile{E::Anhang, u"Protokoll", u"Anhang", Zahl, 0, u"", 0},
    Einstellungszeile{E::GrafikHöhe, u"Briefkopf", u"Grafik Höhe", Zahl, 25, u"", 0},
    // The default printer that is to be brought back, and the one that took its place.
    Einstellungszeile{E::DruckerVorher, u"Fenster", u"Drucker vorher", Text, 0, u"", 255},
    Einstellungszeile{E::DruckerGesetzt, u"Fenster", u"Drucker gesetzt", Text, 0, u"", 255},
    Einstellungszeile{E::DatenDaneben, u"Protokoll", u"Daten daneben", Zahl, 0, u"", 0},
    // Full path of the language pack that is laid over the texts.
    Einstellungszeile{E::Sprachpaket, u"Start", u"Sprachpaket", Text, 0, u"", 2048},
    // The table of criteria below the views.
    Einstellungszeile{E::FensterKriterien, u"Fenster", u"Kriterien", Zahl, 0, u"", 0},
    Einstellungszeile{E::FensterKriterienhöhe, u"Fenster", u"Kriterienhöhe", Zahl, 0, u"", 0},
    // The list of examinations: its place; widths of its columns and which of them are shown.
    Einstellungszeile{E::FensterErgebnisse, u"Fenster", u"Ergebnisse", Text, 0, u"", 2048},
    Einstellungszeile{E::FensterErgebnisspalten, u"Fenster", u"Ergebnisspalten", Text, 0, u"",
                      2048},
    // Whether the results file is backed up once a day.
    Einstellungszeile{E::Tagessicherung, u"Speichern", u"Tagessicherung", Zahl, 1, u"", 0},
    // Whether points are proposed for every wing that is found, and clicked ones drawn to them.
    Einstellungszeile{E::VorschlagJeFlügel, u"Allgemeines", u"Vorschlag je Flügel", Zahl, 0, u"",
                      0},
    Einstellungszeile{E::PunkteEinrasten, u"Allgemeines", u"Punkte einrasten", Zahl, 0, u"", 0},
};

constexpr bool inReihenfolge() {
    for (std::size_t i = 0; i < tabelle.size(); ++i) {
        if (tabelle[i].id != static_cast<Einstellung>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(inReihenfolge(), "the rows follow the enumeration");

const Einstellungszeile& zeile(Einstellung id) {
    return tabelle[static_cast<std::size_t>(id)];
}

QByteArray bytes(QStringView text) {
    return nachCodepage1252(text.toString());
}

} // namespace

std::span<const Einstellungszeile> einstellungstabelle() {
    return tabelle;
}

void setze(Profil& profil, Einstellung id, const QString& wert) {
    const Einstellungszeile& z = zeile(id);
    profil.setzeText(bytes(z.abschnitt), bytes(z.schlüssel), alsProfilwert(wert));
}

Einstellungen::Einstellungen(QString IniPfad)
    : IniPfad_(std::move(IniPfad)) {}

qint16 Einstellungen::zahl(Einstellung id) const {
    const Einstellungszeile& z = zeile(id);
    return static_cast<qint16>(
        GetPrivateProfileIntA(bytes(z.abschnitt), bytes(z.schlüssel), z.zahl, IniPfad_));
}

QString Einstellungen::text(Einstellung id, const QString& bisher) const {
    const Einstellungszeile& z = zeile(id);
    const QString gelesen = profiltext(bytes(z.abschnitt), bytes(z.schlüssel), z.puffer, IniPfad_);
    return gelesen.isEmpty() ? bisher : gelesen;
}

QString Einstellungen::text(Einstellung id) const {
    return text(id, zeile(id).text.toString());
}

void Einstellungen::schreibe(Einstellung id, const QString& wert) {
    Profil profil(IniPfad_);
    setze(profil, id, wert);
    if (!profil.sichere()) {
        schreibenMisslungen_ = true;
    }
}

void Einstellungen::schreibe(Einstellung id, int wert) {
    schreibe(id, QString::number(wert));
}

} // namespace tarvel
