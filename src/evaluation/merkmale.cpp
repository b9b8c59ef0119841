#include "evaluation/merkmale.h"

#include "platform/zahlen.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array Arbeitergruppen{Merkmalgruppe::Panzer, Merkmalgruppe::HaarLänge,
                                     Merkmalgruppe::Filz};
constexpr std::array Drohngruppen{Merkmalgruppe::Panzer, Merkmalgruppe::Haarfarbe};

// The pieces are padded so that every code ends in the same column.
constexpr std::array PanzerA{Merkmalcode{u"O", u" O"}, Merkmalcode{u"E", u" E"},
                             Merkmalcode{u"1R", u"1R"}, Merkmalcode{u"2R", u"2R"}};
constexpr std::array PanzerD{Merkmalcode{u"O", u" O"}, Merkmalcode{u"I", u" I"},
                             Merkmalcode{u"1R", u"1R"}, Merkmalcode{u"2R", u"2R"}};
constexpr std::array HaarL{Merkmalcode{u"k", u", k"}, Merkmalcode{u"m", u", m"},
                           Merkmalcode{u"l", u", l"}};
constexpr std::array Filz{Merkmalcode{u"F", u",  F"}, Merkmalcode{u"ff", u", ff"},
                          Merkmalcode{u"f", u",  f"}};
constexpr std::array HaarF{Merkmalcode{u"gr", u",  gr"}, Merkmalcode{u"ge", u",  ge"},
                           Merkmalcode{u"br", u",  br"}, Merkmalcode{u"sch", u", sch"}};

constexpr QStringView OhneHaar = u", -";

// Columns of a line, from 0.
constexpr qsizetype SpaltePanzer = 5;
constexpr qsizetype SpalteHaarL = 9;
constexpr qsizetype SpalteFilz = 12;
constexpr qsizetype SpalteHaarF = 9;

bool sindDrohnen(Geschlecht tiere) {
    return tiere == Geschlecht::Drohnen;
}

int zeilennummer(QStringView zeile) {
    return ganzzahl16(Val(zeile.first(std::min<qsizetype>(3, zeile.size())))).value_or(0);
}

/// What stands in a line where a group's code stands, its padding included.
QStringView eintrag(QStringView zeile, Merkmalgruppe gruppe) {
    const auto ausschnitt = [zeile](qsizetype spalte, qsizetype länge) {
        return spalte < zeile.size()
                   ? zeile.sliced(spalte).first(std::min(länge, zeile.size() - spalte))
                   : QStringView();
    };
    switch (gruppe) {
    case Merkmalgruppe::Panzer:
        return ausschnitt(SpaltePanzer, 2);
    case Merkmalgruppe::HaarLänge:
        return ausschnitt(SpalteHaarL, 1);
    case Merkmalgruppe::Filz:
        return ausschnitt(SpalteFilz, 2);
    case Merkmalgruppe::Haarfarbe:
        return ausschnitt(SpalteHaarF, zeile.size());
    }
    return {};
}

/// The end of a piece is what a line shows in the columns of the group.
bool steht(QStringView eintrag, const Merkmalcode& code, Merkmalgruppe gruppe) {
    const qsizetype vorspann = gruppe == Merkmalgruppe::Panzer ? 0 : 2;
    return eintrag == code.stück.sliced(vorspann);
}

QString zeile(int nummer, Geschlecht tiere, QStringView panzer, QStringView haar,
              QStringView filz) {
    QString text = dreistellig(nummer) + u"  "_s;
    text += panzer;
    text += haar;
    if (!sindDrohnen(tiere)) {
        text += filz;
    }
    return text;
}

Merkmalzahlen zähle(const QStringList& liste, Geschlecht tiere) {
    Merkmalzahlen zahlen{};
    for (const QString& zeile : liste) {
        int platz = 0;
        for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
            for (const Merkmalcode& code : merkmalcodes(tiere, gruppe)) {
                if (steht(eintrag(zeile, gruppe), code, gruppe)) {
                    ++zahlen[platz];
                }
                ++platz;
            }
        }
    }
    return zahlen;
}

int summe(const Merkmalzahlen& zahlen, Geschlecht tiere, Merkmalgruppe gruppe) {
    const auto anfang = zahlen.begin() + ersterPlatz(tiere, gruppe);
    int gesamt = 0;
    for (auto n = anfang; n != anfang + std::ssize(merkmalcodes(tiere, gruppe)); ++n) {
        gesamt += *n;
    }
    return gesamt;
}

/// @p anzahl of @p gesamt in percent, computed with a single and rounded as number texts are.
QString anteilstext(int anzahl, int gesamt) {
    const float anteil = static_cast<float>(anzahl * 100) / static_cast<float>(gesamt);
    return Format(anteil, u"0", Zahlenformat());
}

/// Order of a group's codes in the summary, as indices of the option buttons.
std::vector<int> summenfolge(Merkmalgruppe gruppe, qsizetype codes) {
    if (gruppe == Merkmalgruppe::Haarfarbe) {
        return {0, 2, 1, 3};
    }
    std::vector<int> folge(static_cast<std::size_t>(codes));
    std::iota(folge.begin(), folge.end(), 0);
    return folge;
}

QString gruppentext(const Merkmalauswertung& auswertung, Merkmalgruppe gruppe) {
    const auto codes = merkmalcodes(auswertung.Tiere, gruppe);
    const int erster = ersterPlatz(auswertung.Tiere, gruppe);
    QStringList stücke;
    for (const int i : summenfolge(gruppe, std::ssize(codes))) {
        stücke += codes[i].code.toString() + u'=' +
                  anteilstext(auswertung.Anzahl.at(erster + i), auswertung.Bienen) + u'%';
    }
    return stücke.join(u"  "_s);
}

QString listensatz(const QStringList& liste, Geschlecht tiere) {
    QString satz = u"L"_s;
    for (const QString& zeile : liste) {
        satz += u'#' + dreistellig(zeilennummer(zeile)) + u';';
        for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
            const QStringView code = eintrag(zeile, gruppe);
            satz += sindDrohnen(tiere) ? code.trimmed()
                                       : code.last(std::min<qsizetype>(1, code.size()));
        }
        satz += u"; "_s;
    }
    return satz;
}

QString summensatz(const Merkmale& merkmale, int bienen) {
    QStringList felder{QString::number(bienen)};
    for (qsizetype i = 0; i < std::ssize(merkmalcodes(merkmale.Tiere)); ++i) {
        felder += QString::number(merkmale.Summen.at(i));
    }
    return u'A' + felder.join(u';');
}

std::optional<int> ganzeZahl(QStringView text) {
    bool gelesen = false;
    const int zahl = text.toInt(&gelesen);
    return gelesen && zahl >= 0 && zahl <= 32767 ? std::optional(zahl) : std::nullopt;
}

std::optional<Merkmale> ausSummen(QStringView felder, Geschlecht tiere) {
    const QList<QStringView> teile = felder.split(u';');
    const qsizetype codes = std::ssize(merkmalcodes(tiere));
    if (teile.size() != codes + 1) {
        return std::nullopt;
    }
    Merkmale merkmale{tiere, Merkmalmodus::Summen, {}, {}};
    for (qsizetype i = 0; i < codes; ++i) {
        const std::optional<int> zahl = ganzeZahl(teile[i + 1]);
        if (!zahl) {
            return std::nullopt;
        }
        merkmale.Summen.at(i) = *zahl;
    }
    return merkmale;
}

/// One item "001;OkF" of a list record.
struct Satzteil {
    int nummer = 0;
    QStringView codes;
};

std::optional<std::vector<Satzteil>> satzteile(QStringView liste) {
    std::vector<Satzteil> teile;
    if (liste.isEmpty()) {
        return teile;
    }
    if (liste.front() != u'#') {
        return std::nullopt;
    }
    const QList<QStringView> stücke = liste.sliced(1).split(u'#');
    for (const QStringView stück : stücke) {
        const QStringView item = stück.trimmed();
        const qsizetype trenner = item.indexOf(u';');
        if (trenner < 0 || !item.endsWith(u';') || trenner == item.size() - 1) {
            return std::nullopt;
        }
        const std::optional<int> nummer = ganzeZahl(item.first(trenner));
        if (!nummer || *nummer > HöchsteBienennummer) {
            return std::nullopt;
        }
        teile.push_back({*nummer, item.sliced(trenner + 1).chopped(1)});
    }
    return teile;
}

/// The piece of the code that @p buchstabe is the last character of; of several the first.
QStringView stückZu(Merkmalgruppe gruppe, QChar buchstabe) {
    for (const Merkmalcode& code : merkmalcodes(Geschlecht::Arbeiterinnen, gruppe)) {
        if (code.code.back() == buchstabe) {
            return code.stück;
        }
    }
    return {};
}

/// How many of @p gesamt bees with one letter had the first of the two codes behind it, so that the
/// shares come closest to those of the summary. Without a summary all or none by @p sonstAlle.
int aufteilung(int gesamt, int bienen, QStringView prozent, QStringView erster, QStringView zweiter,
               bool sonstAlle) {
    const std::optional<int> anteil1 = merkmalanteil(prozent, erster);
    const std::optional<int> anteil2 = merkmalanteil(prozent, zweiter);
    if (!anteil1 || !anteil2 || bienen == 0) {
        return sonstAlle ? gesamt : 0;
    }
    const auto abstand = [bienen](int n, int anteil) {
        const bool gleich = anteilstext(n, bienen).toInt() == anteil;
        return (gleich ? 0 : 1000) + std::abs(n * 100.0 / bienen - anteil);
    };
    const auto güte = [&](int n) {
        return std::max(abstand(n, *anteil1), abstand(gesamt - n, *anteil2));
    };
    int beste = 0;
    for (int n = 1; n <= gesamt; ++n) {
        if (güte(n) < güte(beste)) {
            beste = n;
        }
    }
    return beste;
}

std::optional<Merkmale> arbeiterinnenAusListe(QStringView liste, QStringView prozent) {
    const auto teile = satzteile(liste);
    if (!teile) {
        return std::nullopt;
    }
    int ringe = 0;
    int kleineF = 0;
    for (const Satzteil& teil : *teile) {
        if (teil.codes.size() != 3) {
            return std::nullopt;
        }
        ringe += teil.codes[0] == u'R';
        kleineF += teil.codes[2] == u'f';
    }
    const auto bienen = static_cast<int>(teile->size());
    int einRing = aufteilung(ringe, bienen, prozent, u"1R", u"2R", true);
    int doppeltesF = aufteilung(kleineF, bienen, prozent, u"ff", u"f", false);

    Merkmale merkmale;
    for (const Satzteil& teil : *teile) {
        QStringView panzer = stückZu(Merkmalgruppe::Panzer, teil.codes[0]);
        if (teil.codes[0] == u'R' && einRing-- <= 0) {
            panzer = PanzerA[3].stück;
        }
        const QStringView haar =
            teil.codes[1] == u'-' ? OhneHaar : stückZu(Merkmalgruppe::HaarLänge, teil.codes[1]);
        QStringView filz = stückZu(Merkmalgruppe::Filz, teil.codes[2]);
        if (teil.codes[2] == u'f' && doppeltesF-- <= 0) {
            filz = Filz[2].stück;
        }
        if (panzer.isEmpty() || haar.isEmpty() || filz.isEmpty()) {
            return std::nullopt;
        }
        merkmale.Liste += zeile(teil.nummer, Geschlecht::Arbeiterinnen, panzer, haar, filz);
    }
    return merkmale;
}

std::optional<Merkmale> drohnenAusListe(QStringView liste) {
    const auto teile = satzteile(liste);
    if (!teile) {
        return std::nullopt;
    }
    Merkmale merkmale{Geschlecht::Drohnen, Merkmalmodus::Liste, {}, {}};
    for (const Satzteil& teil : *teile) {
        const auto passend = [&teil]() -> QString {
            for (const Merkmalcode& panzer : PanzerD) {
                for (const Merkmalcode& haar : HaarF) {
                    if (teil.codes.startsWith(panzer.code) &&
                        teil.codes.sliced(panzer.code.size()) == haar.code) {
                        return zeile(teil.nummer, Geschlecht::Drohnen, panzer.stück, haar.stück,
                                     {});
                    }
                }
            }
            return {};
        }();
        if (passend.isEmpty()) {
            return std::nullopt;
        }
        merkmale.Liste += passend;
    }
    return merkmale;
}

bool istGrenze(QChar davor) {
    return !davor.isLetterOrNumber();
}

} // namespace

std::span<const Merkmalgruppe> merkmalgruppen(Geschlecht tiere) {
    return sindDrohnen(tiere) ? std::span<const Merkmalgruppe>(Drohngruppen)
                              : std::span<const Merkmalgruppe>(Arbeitergruppen);
}

std::span<const Merkmalcode> merkmalcodes(Geschlecht tiere, Merkmalgruppe gruppe) {
    const bool drohnen = sindDrohnen(tiere);
    switch (gruppe) {
    case Merkmalgruppe::Panzer:
        return drohnen ? PanzerD : PanzerA;
    case Merkmalgruppe::HaarLänge:
        return drohnen ? std::span<const Merkmalcode>() : HaarL;
    case Merkmalgruppe::Filz:
        return drohnen ? std::span<const Merkmalcode>() : Filz;
    case Merkmalgruppe::Haarfarbe:
        return drohnen ? HaarF : std::span<const Merkmalcode>();
    }
    return {};
}

std::vector<QString> merkmalcodes(Geschlecht tiere) {
    std::vector<QString> alle;
    for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
        for (const Merkmalcode& code : merkmalcodes(tiere, gruppe)) {
            alle.push_back(code.code.toString());
        }
    }
    return alle;
}

int ersterPlatz(Geschlecht tiere, Merkmalgruppe gruppe) {
    int platz = 0;
    for (const Merkmalgruppe g : merkmalgruppen(tiere)) {
        if (g == gruppe) {
            return platz;
        }
        platz += static_cast<int>(merkmalcodes(tiere, g).size());
    }
    return -1;
}

bool Merkmale::leer() const {
    return Modus == Merkmalmodus::Liste ? Liste.isEmpty() : Summen == Merkmalzahlen{};
}

bool Merkmale::etwasEingetragen() const {
    return !Liste.isEmpty() || Summen != Merkmalzahlen{};
}

int nächsteBiene(const Merkmale& merkmale) {
    return merkmale.Liste.isEmpty() ? 1 : zeilennummer(merkmale.Liste.back()) + 1;
}

bool MerkmalÜbernehmen(Merkmale& merkmale, const Merkmalwahl& wahl, bool OhneHaarlänge) {
    const Geschlecht tiere = merkmale.Tiere;
    const bool drohnen = sindDrohnen(tiere);
    const bool ohneHaar = OhneHaarlänge && !drohnen;
    const auto stück = [tiere](Merkmalgruppe gruppe, int index) {
        const auto codes = merkmalcodes(tiere, gruppe);
        return index >= 0 && index < std::ssize(codes) ? codes[index].stück : QStringView();
    };
    const QStringView panzer = stück(Merkmalgruppe::Panzer, wahl.Panzer);
    const QStringView haar =
        ohneHaar ? OhneHaar
                 : stück(drohnen ? Merkmalgruppe::Haarfarbe : Merkmalgruppe::HaarLänge, wahl.Haar);
    const QStringView filz = stück(Merkmalgruppe::Filz, wahl.Filz);
    const int nummer = nächsteBiene(merkmale);
    if (merkmale.Modus != Merkmalmodus::Liste || nummer > HöchsteBienennummer || panzer.isEmpty() ||
        haar.isEmpty() || (filz.isEmpty() && !drohnen)) {
        return false;
    }
    merkmale.Liste += zeile(nummer, tiere, panzer, haar, filz);
    return true;
}

std::vector<int> zeilenMitCode(const Merkmale& merkmale, QStringView code) {
    std::vector<int> zeilen;
    if (merkmale.Modus != Merkmalmodus::Liste) {
        return zeilen;
    }
    for (const Merkmalgruppe gruppe : merkmalgruppen(merkmale.Tiere)) {
        for (const Merkmalcode& c : merkmalcodes(merkmale.Tiere, gruppe)) {
            for (qsizetype i = 0; c.code == code && i < merkmale.Liste.size(); ++i) {
                if (steht(eintrag(merkmale.Liste[i], gruppe), c, gruppe)) {
                    zeilen.push_back(static_cast<int>(i));
                }
            }
        }
    }
    return zeilen;
}

bool MerkmalEntfernen(Merkmale& merkmale, int zeile) {
    if (zeile < 0 || zeile >= merkmale.Liste.size()) {
        return false;
    }
    merkmale.Liste.removeAt(zeile);
    return true;
}

void setzeModus(Merkmale& merkmale, Merkmalmodus modus) {
    if (modus != merkmale.Modus) {
        const Merkmalzahlen gezählt = zähle(merkmale.Liste, merkmale.Tiere);
        if (modus == Merkmalmodus::Liste && merkmale.Summen == gezählt) {
            merkmale.Summen = {};
        } else if (modus == Merkmalmodus::Summen && merkmale.Summen == Merkmalzahlen{}) {
            merkmale.Summen = gezählt;
        }
    }
    merkmale.Modus = modus;
}

void setzeTiere(Merkmale& merkmale, Geschlecht tiere) {
    if (merkmale.Tiere != tiere) {
        löscheMerkmale(merkmale);
        merkmale.Tiere = tiere;
    }
}

void löscheMerkmale(Merkmale& merkmale) {
    merkmale.Liste.clear();
    merkmale.Summen = {};
}

int anzahlAusText(QStringView text) {
    return static_cast<int>(std::clamp(Val(text), 0.0, 32767.0));
}

Merkmalauswertung MerkmaleAuswerten(const Merkmale& merkmale, bool OhneHaarlänge) {
    Merkmalauswertung ergebnis;
    const Geschlecht tiere = merkmale.Tiere;
    ergebnis.Tiere = tiere;
    if (merkmale.leer()) {
        return ergebnis;
    }
    const bool ausListe = merkmale.Modus == Merkmalmodus::Liste;
    const bool ohneHaar = OhneHaarlänge && !sindDrohnen(tiere);
    ergebnis.Anzahl = ausListe ? zähle(merkmale.Liste, tiere) : merkmale.Summen;
    if (ohneHaar && !ausListe) {
        const auto haar = ergebnis.Anzahl.begin() + ersterPlatz(tiere, Merkmalgruppe::HaarLänge);
        std::fill_n(haar, HaarL.size(), 0);
    }

    ergebnis.Bienen = summe(ergebnis.Anzahl, tiere, Merkmalgruppe::Panzer);
    for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
        const bool zählt = gruppe != Merkmalgruppe::HaarLänge || !ohneHaar;
        ergebnis.Unterschiedlich |=
            zählt && summe(ergebnis.Anzahl, tiere, gruppe) != ergebnis.Bienen;
    }
    ergebnis.Satz =
        ausListe ? listensatz(merkmale.Liste, tiere) : summensatz(merkmale, ergebnis.Bienen);

    if (*std::max_element(ergebnis.Anzahl.begin(), ergebnis.Anzahl.end()) > HöchsteAnzahl) {
        ergebnis.Fehler = Anteilfehler::Überlauf;
    } else if (ergebnis.Bienen == 0) {
        ergebnis.Fehler = Anteilfehler::KeineBienen;
    } else {
        for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
            ergebnis.Texte += gruppentext(ergebnis, gruppe);
        }
    }
    return ergebnis;
}

QString prozentfeld(const Merkmalauswertung& auswertung) {
    if (auswertung.Texte.isEmpty()) {
        return {};
    }
    return auswertung.Texte.join(u';').replace(u"  "_s, u" "_s) + u';' +
           QString::number(auswertung.Bienen);
}

std::optional<Merkmale> merkmaleAusSatz(QStringView satz, QStringView prozent, Geschlecht tiere) {
    const QStringView text = satz.trimmed();
    if (text.isEmpty()) {
        Merkmale keine;
        keine.Tiere = tiere;
        return keine;
    }
    if (text.front() == u'A') {
        return ausSummen(text.sliced(1), tiere);
    }
    if (text.front() == u'L') {
        return sindDrohnen(tiere) ? drohnenAusListe(text.sliced(1))
                                  : arbeiterinnenAusListe(text.sliced(1), prozent);
    }
    return std::nullopt;
}

std::optional<int> merkmalanteil(QStringView text, QStringView code) {
    const QString gesucht = code.toString() + u'=';
    for (qsizetype stelle = text.indexOf(gesucht); stelle >= 0;
         stelle = text.indexOf(gesucht, stelle + 1)) {
        if (stelle == 0 || istGrenze(text[stelle - 1])) {
            const double zahl = Val(text.sliced(stelle + gesucht.size()));
            return ganzzahl32(zahl).value_or(0);
        }
    }
    return std::nullopt;
}

} // namespace tarvel
