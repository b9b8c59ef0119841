#include "evaluation/rassestandard.h"

#include "evaluation/rassen.h"
#include "platform/benutzerspeicher.h"
#include "platform/codepage.h"
#include "platform/profil.h"
#include "settings/einstellungen.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Texts are read through a buffer of 128 characters.
constexpr int Puffer = 128;

using S = Rassestandard;
using Textort = QString& (*)(S&);
using Zahlort = qint16& (*)(S&);

constexpr Standardzeile text(Standardgruppe gruppe, QStringView schlüssel, Werteart art,
                             QStringView vorgabe, Textort ort) {
    return {gruppe, schlüssel, art, vorgabe, ort, nullptr};
}
constexpr Standardzeile zahl(Standardgruppe gruppe, QStringView schlüssel, Werteart art,
                             QStringView vorgabe, Zahlort ort) {
    return {gruppe, schlüssel, art, vorgabe, nullptr, ort};
}

constexpr auto A = Standardgruppe::Arbeiterinnen;
constexpr auto D = Standardgruppe::Drohnen;
constexpr auto G = Standardgruppe::Grenzlinien;
constexpr auto P = Werteart::Prozent;
constexpr auto B = Werteart::Bereich;

// clang-format off
constexpr std::array tabelle{
    text(A, u"Filzbinden F_",  P, u"100%", [](S& s) -> QString& { return s.arbeiterinnen.Filz[0]; }),
    text(A, u"Filzbinden ff",  P, u"50%",  [](S& s) -> QString& { return s.arbeiterinnen.Filz[1]; }),
    text(A, u"Filzbinden f",   P, u"0%",   [](S& s) -> QString& { return s.arbeiterinnen.Filz[2]; }),
    text(A, u"Haarlänge k",    P, u"100%", [](S& s) -> QString& { return s.arbeiterinnen.Haarlänge[0]; }),
    text(A, u"Haarlänge m",    P, u"30%",  [](S& s) -> QString& { return s.arbeiterinnen.Haarlänge[1]; }),
    text(A, u"Haarlänge l",    P, u"0%",   [](S& s) -> QString& { return s.arbeiterinnen.Haarlänge[2]; }),
    text(A, u"Panzer O",       P, u"100%", [](S& s) -> QString& { return s.arbeiterinnen.Panzer[0]; }),
    text(A, u"Panzer E",       P, u"30%",  [](S& s) -> QString& { return s.arbeiterinnen.Panzer[1]; }),
    text(A, u"Panzer 1R",      P, u"0%",   [](S& s) -> QString& { return s.arbeiterinnen.Panzer[2]; }),
    text(A, u"Panzer 2R",      P, u"0%",   [](S& s) -> QString& { return s.arbeiterinnen.Panzer[3]; }),
    zahl(A, u"CI Mittel A", Werteart::Schalter, u"0",  [](S& s) -> qint16& { return s.arbeiterinnen.mittel.CIMittel; }),
    zahl(A, u"Mittelwert",  Werteart::InZehnteln,  u"25", [](S& s) -> qint16& { return s.arbeiterinnen.mittel.Mittelwert.gespeichert; }),
    text(A, u"Klasse 0",       B, u"15-17", [](S& s) -> QString& { return s.arbeiterinnen.Klasse[0]; }),
    text(A, u"max 0",          P, u"15%",   [](S& s) -> QString& { return s.arbeiterinnen.max[0]; }),
    text(A, u"Klasse 1",       B, u"1-15",  [](S& s) -> QString& { return s.arbeiterinnen.Klasse[1]; }),
    text(A, u"max 1",          P, u"2%",    [](S& s) -> QString& { return s.arbeiterinnen.max[1]; }),
    text(A, u"Klasse 2",       B, u"16-17", [](S& s) -> QString& { return s.arbeiterinnen.Klasse[2]; }),
    zahl(A, u"CI Mittel Richtung", Werteart::Listenplatz, u"0", [](S& s) -> qint16& { return s.arbeiterinnen.mittel.Richtung; }),

    text(D, u"Haarfarbe gr",   P, u"100%", [](S& s) -> QString& { return s.drohnen.Haarfarbe[0]; }),
    text(D, u"Haarfarbe br",   P, u"20%",  [](S& s) -> QString& { return s.drohnen.Haarfarbe[1]; }),
    text(D, u"Haarfarbe ge",   P, u"0%",   [](S& s) -> QString& { return s.drohnen.Haarfarbe[2]; }),
    text(D, u"Haarfarbe sch",  P, u"0%",   [](S& s) -> QString& { return s.drohnen.Haarfarbe[3]; }),
    text(D, u"Panzer Drohn O", P, u"100%", [](S& s) -> QString& { return s.drohnen.Panzer[0]; }),
    text(D, u"Panzer Drohn I", P, u"10%",  [](S& s) -> QString& { return s.drohnen.Panzer[1]; }),
    text(D, u"Panzer Drohn 1R", P, u"0%",  [](S& s) -> QString& { return s.drohnen.Panzer[2]; }),
    text(D, u"Panzer Drohn 2R", P, u"0%",  [](S& s) -> QString& { return s.drohnen.Panzer[3]; }),
    zahl(D, u"CI Mittel D", Werteart::Schalter, u"0",  [](S& s) -> qint16& { return s.drohnen.mittel.CIMittel; }),
    zahl(D, u"Mittelwert",  Werteart::InZehnteln,  u"18", [](S& s) -> qint16& { return s.drohnen.mittel.Mittelwert.gespeichert; }),
    text(D, u"Klasse 3",       B, u"1-11", [](S& s) -> QString& { return s.drohnen.Klasse; }),
    text(D, u"max 3",          P, u"0%",   [](S& s) -> QString& { return s.drohnen.max; }),
    zahl(D, u"CI Mittel Richtung", Werteart::Listenplatz, u"0", [](S& s) -> qint16& { return s.drohnen.mittel.Richtung; }),

    zahl(G, u"CI Arbeit", Werteart::InHundertsteln, u"200", [](S& s) -> qint16& { return s.linien.Arbeit.CI.gespeichert; }),
    zahl(G, u"HI Arbeit", Werteart::InTausendsteln, u"920", [](S& s) -> qint16& { return s.linien.Arbeit.HI.gespeichert; }),
    zahl(G, u"DV Arbeit", Werteart::InHundertsteln, u"0",   [](S& s) -> qint16& { return s.linien.Arbeit.DV.gespeichert; }),
    zahl(G, u"CI Drohn",  Werteart::InHundertsteln, u"140", [](S& s) -> qint16& { return s.linien.Drohn.CI.gespeichert; }),
    zahl(G, u"HI Drohn",  Werteart::InTausendsteln, u"880", [](S& s) -> qint16& { return s.linien.Drohn.HI.gespeichert; }),
    zahl(G, u"DV Drohn",  Werteart::InHundertsteln, u"50",  [](S& s) -> qint16& { return s.linien.Drohn.DV.gespeichert; }),
    zahl(G, u"Korrelation", Werteart::Option,    u"-1",  [](S& s) -> qint16& { return s.linien.Korrelation; }),
    zahl(G, u"DV ><",     Werteart::Listenplatz, u"0",   [](S& s) -> qint16& { return s.linien.DVRichtung; }),
};
// clang-format on

constexpr std::array<QStringView, 3> Abschnitte{u"Merkmale Arbeiterinnen", u"Merkmale Drohnen",
                                                u"Grenzlinien"};
constexpr std::array<QStringView, Rassenzahl> Endungen{u"C-", u"M-", u"L-", u"P-"};

/// Where the settings file keeps what a standard goes by; the keys end with the mark of the race.
constexpr QStringView AbschnittKennung = u"Standard";
struct Kennungszeile {
    QStringView name;
    QString Standardkennung::*ort;
};
constexpr std::array Kennungszeilen{Kennungszeile{u"Name", &Standardkennung::Name},
                                    Kennungszeile{u"Version", &Standardkennung::Version},
                                    Kennungszeile{u"Datum", &Standardkennung::Datum},
                                    Kennungszeile{u"Marke", &Standardkennung::Marke}};

bool istRasse(int rasse) {
    return rasse >= 1 && rasse <= Rassenzahl;
}

QString schlüssel(const Standardzeile& zeile, int rasse) {
    return zeile.schlüssel.toString() + rassenendung(rasse).toString();
}

QByteArray bytes(QStringView text) {
    return nachCodepage1252(text.toString());
}

QString ausDatei(const Standardzeile& zeile, const QString& text) {
    return zeile.art == Werteart::Bereich ? klassenbereichtext(klassenbereich(text)) : text;
}

qint16 ausDatei(const Standardzeile& zeile, qint16 zahl) {
    const bool keinPlatz = zeile.art == Werteart::Listenplatz && zahl != 0 && zahl != 1;
    return keinPlatz ? qint16{0} : zahl;
}

void lade(Standardgruppe gruppe, Rassestandard& standard, int rasse,
          const Einstellungen& einstellungen) {
    if (!istRasse(rasse)) {
        return;
    }
    const QByteArray sektion = bytes(abschnitt(gruppe));
    for (const Standardzeile& zeile : tabelle) {
        if (zeile.gruppe != gruppe) {
            continue;
        }
        const QByteArray key = bytes(schlüssel(zeile, rasse));
        if (zeile.zahl != nullptr) {
            const int gelesen =
                GetPrivateProfileIntA(sektion, key, zeile.vorgabe.toInt(), einstellungen.IniPfad());
            zeile.zahl(standard) = ausDatei(zeile, static_cast<qint16>(gelesen));
            continue;
        }
        const QByteArray gelesen = GetPrivateProfileStringA(sektion, key, bytes(zeile.vorgabe),
                                                            Puffer, einstellungen.IniPfad());
        if (!gelesen.isEmpty()) {
            zeile.text(standard) = ausDatei(zeile, ausCodepage1252(gelesen));
        }
    }
}

QString dateitext(const Standardzeile& zeile, const Rassestandard& standard) {
    // The places only tell where a value is; nothing is changed through them here.
    auto& beschreibbar = const_cast<Rassestandard&>(standard);
    if (zeile.text != nullptr) {
        return zeile.text(beschreibbar);
    }
    const int wert = zeile.zahl(beschreibbar);
    if (zeile.art == Werteart::Option) {
        return wert == -1 ? u"-1"_s : u"0"_s;
    }
    return QString::number(wert);
}

template <typename Zusätzlich>
void speichere(Standardgruppe gruppe, const Rassestandard& standard, int rasse, Profil& ini,
               Zusätzlich zusätzlich) {
    if (!istRasse(rasse)) {
        return;
    }
    for (const Standardzeile& zeile : tabelle) {
        if (zeile.gruppe == gruppe) {
            const QString key = schlüssel(zeile, rasse);
            const QString wert = dateitext(zeile, standard);
            ini.setze(bytes(abschnitt(gruppe)), bytes(key), bytes(wert));
            zusätzlich(key, wert);
        }
    }
}

void nurInDatei(const QString& /*schlüssel*/, const QString& /*wert*/) {}

struct Dezimalart {
    int teile;
    QStringView muster;
};

std::optional<Dezimalart> dezimalart(Werteart art) {
    switch (art) {
    case Werteart::InZehnteln:
        return Dezimalart{10, u"#.0"};
    case Werteart::InHundertsteln:
        return Dezimalart{100, u"0.00"};
    case Werteart::InTausendsteln:
        return Dezimalart{1000, u"0.000"};
    case Werteart::Prozent:
    case Werteart::Bereich:
    case Werteart::Schalter:
    case Werteart::Option:
    case Werteart::Listenplatz:
        break;
    }
    return std::nullopt;
}

QString dezimaltext(Dezimalart art, qint16 gespeichert, const Zahlenformat& format) {
    return Format(static_cast<double>(gespeichert) / art.teile, art.muster, format);
}

int ganzeKlasse(QStringView text) {
    return ganzzahl16(Val(text)).value_or(0);
}

} // namespace

Rassestandard::Rassestandard() {
    for (const Standardzeile& zeile : tabelle) {
        if (zeile.text != nullptr) {
            zeile.text(*this) = ausDatei(zeile, zeile.vorgabe.toString());
        } else {
            zeile.zahl(*this) = static_cast<qint16>(zeile.vorgabe.toInt());
        }
    }
}

Linienwerte Grenzlinien::geltende(Geschlecht tiere) const {
    const Grenzlinien& linien = nachKruber() ? Rassestandard().linien : *this;
    return tiere == Geschlecht::Drohnen ? linien.Drohn : linien.Arbeit;
}

QStringView abschnitt(Standardgruppe gruppe) {
    return Abschnitte.at(static_cast<std::size_t>(gruppe));
}

std::span<const Standardzeile> standardtabelle() {
    return tabelle;
}

const Standardzeile& standardzeile(Standardgruppe gruppe, QStringView schlüssel) {
    return *std::find_if(tabelle.begin(), tabelle.end(), [&](const Standardzeile& zeile) {
        return zeile.gruppe == gruppe && zeile.schlüssel == schlüssel;
    });
}

QStringView rassenendung(int rasse) {
    return istRasse(rasse) ? Endungen.at(static_cast<std::size_t>(rasse - 1)) : QStringView();
}

void LadenMerkmaleArbeiterinnen(Rassestandard& standard, int rasse,
                                const Einstellungen& einstellungen) {
    lade(Standardgruppe::Arbeiterinnen, standard, rasse, einstellungen);
}

void LadenMerkmaleDrohnen(Rassestandard& standard, int rasse, const Einstellungen& einstellungen) {
    lade(Standardgruppe::Drohnen, standard, rasse, einstellungen);
}

void LadenGrenzlinien(Rassestandard& standard, int rasse, const Einstellungen& einstellungen) {
    lade(Standardgruppe::Grenzlinien, standard, rasse, einstellungen);
}

void LadenKennung(Rassestandard& standard, int rasse, const Einstellungen& einstellungen) {
    standard.kennung = {};
    for (const Kennungszeile& zeile : Kennungszeilen) {
        if (istRasse(rasse)) {
            standard.kennung.*zeile.ort =
                profiltext(bytes(AbschnittKennung),
                           bytes(zeile.name.toString() + rassenendung(rasse).toString()), Puffer,
                           einstellungen.IniPfad());
        }
    }
}

void SpeichernKennung(const Rassestandard& standard, int rasse, Profil& ini) {
    for (const Kennungszeile& zeile : Kennungszeilen) {
        const QByteArray key = bytes(zeile.name.toString() + rassenendung(rasse).toString());
        const QString& wert = standard.kennung.*zeile.ort;
        if (istRasse(rasse) && (!wert.isEmpty() || ini.wert(bytes(AbschnittKennung), key))) {
            ini.setzeText(bytes(AbschnittKennung), key, alsProfilwert(wert));
        }
    }
}

Rassestandard ladeRassestandard(int rasse, const Einstellungen& einstellungen) {
    Rassestandard standard;
    LadenMerkmaleArbeiterinnen(standard, rasse, einstellungen);
    LadenMerkmaleDrohnen(standard, rasse, einstellungen);
    LadenGrenzlinien(standard, rasse, einstellungen);
    LadenKennung(standard, rasse, einstellungen);
    return standard;
}

void SpeichernKarte5Arbeiterinnen(const Rassestandard& standard, int rasse, Profil& ini) {
    speichere(Standardgruppe::Arbeiterinnen, standard, rasse, ini, nurInDatei);
}

void SpeichernKarte5Drohnen(const Rassestandard& standard, int rasse, Profil& ini) {
    speichere(Standardgruppe::Drohnen, standard, rasse, ini, nurInDatei);
}

bool SpeichernKarte5Linien(const Rassestandard& standard, int rasse, Profil& ini,
                           Benutzerspeicher& speicher) {
    const QString sektion = abschnitt(Standardgruppe::Grenzlinien).toString();
    bool gespeichert = true;
    speichere(Standardgruppe::Grenzlinien, standard, rasse, ini,
              [&](const QString& key, const QString& wert) {
                  gespeichert = speicher.SaveSetting(u"Index"_s, sektion, key, wert) && gespeichert;
              });
    return gespeichert;
}

Klassenbereich klassenbereich(QStringView text) {
    const QStringView getrimmt = text.trimmed();
    QStringView ende = getrimmt.last(std::min<qsizetype>(2, getrimmt.size()));
    if (const qsizetype strich = ende.lastIndexOf(u'-'); strich >= 0) {
        ende = ende.sliced(strich + 1);
    }
    return {ganzeKlasse(getrimmt), ganzeKlasse(ende)};
}

QString klassenbereichtext(Klassenbereich bereich) {
    const Zahlenformat format;
    return Format(bereich.von, u"00", format) + u'-' + Format(bereich.bis, u"00", format);
}

std::optional<Bereichsmangel> bereichsmangel(QStringView getippt) {
    const QStringView text = getippt.trimmed();
    const bool nurKlassen = std::all_of(text.begin(), text.end(), [](QChar zeichen) {
        return erlaubt(Tastenfilter::Bereich, zeichen);
    });
    Klassenbereich bereich = klassenbereich(text);
    if (nurKlassen) {
        const auto teile = text.split(u'-');
        if (teile.size() > 2 || teile.first().isEmpty() || teile.last().isEmpty()) {
            return Bereichsmangel::Unfertig;
        }
        // What is beyond any number of classes need not fit a number of 16 bits either.
        const auto klasse = [](QStringView teil) {
            return static_cast<int>(std::min<double>(Val(teil), HöchsteKlasse + 1));
        };
        bereich = {klasse(teile.first()), klasse(teile.last())};
    }
    if (bereich.von > HöchsteKlasse || bereich.bis > HöchsteKlasse) {
        return Bereichsmangel::ZuHoch;
    }
    return bereich.bis < bereich.von ? std::optional(Bereichsmangel::Verkehrt) : std::nullopt;
}

double prozentzahl(QStringView text) {
    return Val(text);
}

qint16 gespeicherteZahl(Werteart art, QStringView getippt, qint16 bisher) {
    const std::optional<Dezimalart> dezimal = dezimalart(art);
    if (!dezimal) {
        return ganzzahl16(Val(getippt)).value_or(bisher);
    }
    const double zahl = Val(getippt.toString().replace(u',', u'.'));
    // The single is multiplied in full precision, so only typing it rounds, not the product.
    const std::optional<float> einfach = einfachGenau(zahl);
    return einfach ? ganzzahl16(static_cast<double>(*einfach) * dezimal->teile).value_or(bisher)
                   : bisher;
}

QString anzeigetext(const Standardzeile& zeile, const Rassestandard& standard,
                    const Zahlenformat& format) {
    const QString gespeichert = dateitext(zeile, standard);
    const std::optional<Dezimalart> dezimal = dezimalart(zeile.art);
    return dezimal ? dezimaltext(*dezimal, gespeichert.toShort(), format) : gespeichert;
}

void übernehme(const Standardzeile& zeile, Rassestandard& standard, const QString& text) {
    if (zeile.text != nullptr) {
        zeile.text(standard) = text;
        return;
    }
    qint16& ort = zeile.zahl(standard);
    ort = ausDatei(zeile, gespeicherteZahl(zeile.art, text, ort));
}

QString normalisiert(Werteart art, const QString& text, const Zahlenformat& format) {
    if (art == Werteart::Prozent) {
        return zahltext(prozentzahl(text), Zahlenformat()) + u'%';
    }
    if (art == Werteart::Bereich) {
        return klassenbereichtext(klassenbereich(text));
    }
    const std::optional<Dezimalart> dezimal = dezimalart(art);
    return dezimal ? dezimaltext(*dezimal, gespeicherteZahl(art, text, 0), format) : text;
}

Tastenfilter tastenfilter(Werteart art) {
    switch (art) {
    case Werteart::Prozent:
        return Tastenfilter::Prozent;
    case Werteart::Bereich:
        return Tastenfilter::Bereich;
    case Werteart::InZehnteln:
        return Tastenfilter::Dezimal;
    case Werteart::InHundertsteln:
    case Werteart::InTausendsteln:
        return Tastenfilter::DezimalVorzeichen;
    case Werteart::Schalter:
    case Werteart::Option:
    case Werteart::Listenplatz:
        break;
    }
    return Tastenfilter::Nichts;
}

bool erlaubt(Tastenfilter filter, QChar zeichen) {
    if (filter == Tastenfilter::Nichts) {
        return false;
    }
    if ((zeichen >= u'0' && zeichen <= u'9') || zeichen == u'\b') {
        return true;
    }
    const bool trenner = zeichen == u'.' || zeichen == u',';
    switch (filter) {
    case Tastenfilter::Prozent:
        return zeichen == u'%';
    case Tastenfilter::Bereich:
        return zeichen == u'-';
    case Tastenfilter::Dezimal:
        return trenner;
    case Tastenfilter::DezimalVorzeichen:
        return trenner || zeichen == u'-';
    case Tastenfilter::Ziffern:
    case Tastenfilter::Nichts:
        break;
    }
    return false;
}

} // namespace tarvel
