#include "results/fluegelsatz.h"
#include "results/satztext.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;
using namespace satztext;

namespace {

constexpr int HöchsterZoomfaktor = 4;
constexpr std::size_t MeisteWeitere = 100; // fields that no version would write are not carried on

constexpr QStringView KopfBeiangaben = u"Angaben 1";
/// An item that former versions do not understand and therefore say so, before they would store
/// the row again without the fields they do not know.
constexpr QStringView MehrFelder = u"Felder";

constexpr QStringView ModusListe = u"L";
constexpr QStringView ModusSummen = u"A";

QString merkmalfelder(const Merkmale& merkmale) {
    QStringList summen;
    for (const int zahl : merkmale.Summen) {
        summen += QString::number(zahl);
    }
    QStringList bienen;
    for (const QString& zeile : merkmale.Liste) {
        bienen += kodiert(zeile);
    }
    const bool liste = merkmale.Modus == Merkmalmodus::Liste;
    return u"Modus="_s + (liste ? ModusListe : ModusSummen).toString() + u";Summen="_s +
           summen.join(u'/') + u";Bienen="_s + bienen.join(u'/') + u';';
}

bool liesModus(QStringView wert, Merkmale& merkmale) {
    merkmale.Modus = wert == ModusSummen ? Merkmalmodus::Summen : Merkmalmodus::Liste;
    return wert == ModusSummen || wert == ModusListe;
}

bool liesSummen(QStringView wert, Merkmale& merkmale) {
    constexpr int HöchsteSumme = 32767;
    const std::vector<QStringView> felder = teile(wert, u'/', HöchsteMerkmalzahl);
    if (felder.size() != HöchsteMerkmalzahl) {
        return false;
    }
    for (int i = 0; i < HöchsteMerkmalzahl; ++i) {
        const std::optional<int> zahl = ganzeZahl(felder[i], 0, HöchsteSumme);
        if (!zahl) {
            return false;
        }
        merkmale.Summen.at(i) = *zahl;
    }
    return true;
}

bool liesBienen(QStringView wert, Merkmale& merkmale) {
    const std::vector<QStringView> zeilen = teile(wert, u'/', HöchsteBienennummer);
    if (zeilen.size() > HöchsteBienennummer) {
        return false;
    }
    for (const QStringView zeile : zeilen) {
        if (!zeile.isEmpty()) {
            merkmale.Liste += dekodiert(zeile);
        }
    }
    return true;
}

// --- Fields of the examination

struct Textfeld {
    QStringView name;
    QString& (*ort)(Beiangaben&);
    bool immer; ///< stands also when it is empty, as in rows of the first version
};

constexpr std::array Textfelder{
    Textfeld{u"Jahr", [](Beiangaben& b) -> QString& { return b.Jahr; }, true},
    Textfeld{u"LV", [](Beiangaben& b) -> QString& { return b.LV; }, true},
    Textfeld{u"ZNr", [](Beiangaben& b) -> QString& { return b.ZNr; }, true},
    Textfeld{u"Grenzen", [](Beiangaben& b) -> QString& { return b.zusatz.Grenzen; }, false},
    Textfeld{u"Herkunft", [](Beiangaben& b) -> QString& { return b.zusatz.Herkunft; }, false},
    Textfeld{u"Untersucher", [](Beiangaben& b) -> QString& { return b.zusatz.Untersucher; }, false},
};

QString textfelder(Beiangaben angaben, bool immer) {
    QString felder;
    for (const Textfeld& feld : Textfelder) {
        const QString& text = feld.ort(angaben);
        if (feld.immer == immer && (immer || !text.isEmpty())) {
            felder += feld.name.toString() + u'=' + kodiert(text) + u';';
        }
    }
    return felder;
}

/// Words for the stored verdict, in the order of Ablageurteil; the first is never written.
constexpr std::array<QStringView, 4> Urteilsworte{u"", u"ja", u"nein", u"-"};
constexpr QStringView Unlesbar = u"unlesbar";

QString zustandsfelder(const Untersuchungszusatz& zusatz) {
    QString felder;
    if (zusatz.Urteil != Ablageurteil::Keines) {
        felder += u"Urteil="_s +
                  Urteilsworte.at(static_cast<std::size_t>(zusatz.Urteil)).toString() + u';';
    }
    if (zusatz.merkmaleUnlesbar) {
        felder += u"Merkmale="_s + Unlesbar.toString() + u';';
    }
    return felder;
}

bool liesUrteil(QStringView wert, Untersuchungszusatz& zusatz) {
    const auto* const wort = std::find(Urteilsworte.begin() + 1, Urteilsworte.end(), wert);
    zusatz.Urteil = wort == Urteilsworte.end()
                        ? Ablageurteil::Keines
                        : static_cast<Ablageurteil>(wort - Urteilsworte.begin());
    return wort != Urteilsworte.end();
}

using Weitere = std::vector<std::pair<QString, QString>>;

bool merke(Weitere& weitere, QStringView name, QStringView text) {
    if (weitere.size() >= MeisteWeitere) {
        return false;
    }
    weitere.emplace_back(name.toString(), text.toString());
    return true;
}

bool liesFeld(QStringView name, QStringView wert, Beiangaben& angaben) {
    const auto merkmale = [&angaben]() -> Merkmale& {
        return angaben.merkmale ? *angaben.merkmale : angaben.merkmale.emplace();
    };
    const auto feld = std::find_if(Textfelder.begin(), Textfelder.end(),
                                   [name](const Textfeld& f) { return f.name == name; });
    if (feld != Textfelder.end()) {
        feld->ort(angaben) = dekodiert(wert);
        return true;
    }
    if (name == u"Modus") {
        return liesModus(wert, merkmale());
    }
    if (name == u"Summen") {
        return liesSummen(wert, merkmale());
    }
    if (name == u"Bienen") {
        return liesBienen(wert, merkmale());
    }
    if (name == u"Urteil") {
        return liesUrteil(wert, angaben.zusatz);
    }
    if (name == u"Merkmale") {
        angaben.zusatz.merkmaleUnlesbar = wert == Unlesbar;
        return wert == Unlesbar;
    }
    return merke(angaben.zusatz.weitere, name, wert);
}

// --- Fields of a wing

/// Letters for how a point came about, in the order of Punktherkunft.
constexpr QStringView Herkunftszeichen = u"-ktvpe";

struct Flügelfeld {
    QStringView name;
    /// Empty when there is nothing to say.
    QString (*schreibe)(const Flügelmessung&);
    bool (*lies)(QStringView, Flügelmessung&);
    bool desBildes; ///< a wing whose item is its number alone has that of the item before
};

QString größentext(const Flügelmessung& m) {
    const QSize größe = m.bild.größe;
    return größe.isValid() ? QString::number(größe.width()) + u'x' + QString::number(größe.height())
                           : QString();
}

bool liesGröße(QStringView text, Flügelmessung& m) {
    constexpr int Längste = 1'000'000;
    const std::vector<QStringView> seiten = teile(text, u'x', 2);
    if (seiten.size() != 2) {
        return false;
    }
    const std::optional<int> breite = ganzeZahl(seiten[0], 1, Längste);
    const std::optional<int> höhe = ganzeZahl(seiten[1], 1, Längste);
    if (breite && höhe) {
        m.bild.größe = {*breite, *höhe};
    }
    return breite && höhe;
}

QString markentext(const Flügelmessung& m) {
    return kodiert(m.bild.marke);
}

bool liesMarke(QStringView text, Flügelmessung& m) {
    m.bild.marke = dekodiert(text);
    return !text.isEmpty();
}

QString herkunftstext(const Flügelmessung& m) {
    QString text;
    bool bekannt = false;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const Punktherkunft herkunft = m.punkte.Herkunft[i];
        bekannt = bekannt || herkunft != Punktherkunft::Unbekannt;
        text += Herkunftszeichen[static_cast<qsizetype>(herkunft)];
    }
    return bekannt ? text : QString();
}

bool liesHerkunft(QStringView text, Flügelmessung& m) {
    if (text.size() != Messpunkte::Anzahl) {
        return false;
    }
    bool verstanden = true;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const qsizetype stelle = Herkunftszeichen.indexOf(text[i - 1]);
        verstanden = verstanden && stelle >= 0;
        m.punkte.Herkunft[i] =
            stelle < 0 ? Punktherkunft::Unbekannt : static_cast<Punktherkunft>(stelle);
    }
    return verstanden;
}

QString lagetext(const Flügelmessung& m) {
    return m.ohneBildhöhe ? u"eigene"_s : QString();
}

bool liesLage(QStringView text, Flügelmessung& m) {
    m.ohneBildhöhe = text == u"eigene";
    return m.ohneBildhöhe;
}

QString prüfungstext(const Flügelmessung& m) {
    return m.ungeprüft ? u"1"_s : QString();
}

bool liesPrüfung(QStringView text, Flügelmessung& m) {
    m.ungeprüft = text == u"1";
    return m.ungeprüft;
}

constexpr std::array Flügelfelder{Flügelfeld{u"Bild", größentext, liesGröße, true},
                                  Flügelfeld{u"Marke", markentext, liesMarke, true},
                                  Flügelfeld{u"Punkte", herkunftstext, liesHerkunft, false},
                                  Flügelfeld{u"Lage", lagetext, liesLage, false},
                                  Flügelfeld{u"Ungeprueft", prüfungstext, liesPrüfung, false}};
constexpr QStringView FeldAusgelassen = u"Ausgelassen";

/// "Bild:3507x2480/Punkte:kkkkkkkk", empty when there is nothing to say. Without @p messung what
/// belongs to the wing alone.
QString flügelfelder(const Flügelmessung* messung, bool mitBild, const Flügelangaben* angaben) {
    QStringList felder;
    for (const Flügelfeld& feld : Flügelfelder) {
        const bool gefragt = messung != nullptr && (mitBild || !feld.desBildes);
        if (const QString text = gefragt ? feld.schreibe(*messung) : QString(); !text.isEmpty()) {
            felder += feld.name.toString() + u':' + text;
        }
    }
    if (angaben != nullptr) {
        if (angaben->ausgelassen) {
            felder += FeldAusgelassen.toString() + u":1"_s;
        }
        for (const auto& [name, text] : angaben->weitere) {
            felder += name + u':' + text;
        }
    }
    return felder.join(u'/');
}

/// @p messung null for a wing without points.
bool liesFlügelfelder(QStringView text, Flügelmessung* messung, Flügelangaben& angaben) {
    constexpr std::size_t MeisteFelder = MeisteWeitere + 10;
    bool verstanden = true;
    const std::vector<QStringView> felder = teile(text, u'/', MeisteFelder);
    for (const QStringView stück : felder) {
        const qsizetype trenner = stück.indexOf(u':');
        const QStringView name = stück.left(std::max<qsizetype>(trenner, 0));
        const QStringView wert = stück.sliced(trenner + 1);
        const auto feld = std::find_if(Flügelfelder.begin(), Flügelfelder.end(),
                                       [name](const Flügelfeld& f) { return f.name == name; });
        if (trenner < 0) {
            verstanden = false;
        } else if (feld != Flügelfelder.end()) {
            verstanden = messung != nullptr && feld->lies(wert, *messung) && verstanden;
        } else if (name == FeldAusgelassen) {
            angaben.ausgelassen = wert == u"1";
            verstanden = angaben.ausgelassen && verstanden;
        } else {
            verstanden = merke(angaben.weitere, name, wert) && verstanden;
        }
    }
    return verstanden && felder.size() <= MeisteFelder;
}

// --- What a wing was measured from

bool gleicheAufnahme(const Flügelmessung& a, const Flügelmessung& b) {
    return a.messart == b.messart && a.aufnahme == b.aufnahme && a.bilddatei == b.bilddatei &&
           a.bild == b.bild;
}

QString aufnahmetext(const Flügelmessung& messung) {
    return u'/' + QString::number(messung.aufnahme.Zoomfaktor) + u'/' +
           QString::number(messung.aufnahme.dpi) + u'/' +
           QString::number(static_cast<int>(messung.messart)) + u'/' + kodiert(messung.bilddatei);
}

std::optional<Flügelmessung> aufnahmeAus(const std::vector<QStringView>& felder) {
    constexpr int LetzteMessart = static_cast<int>(Messart::Korrelation);
    const std::optional<int> zoom = ganzeZahl(felder[1], 1, HöchsterZoomfaktor);
    const std::optional<int> dpi = ganzeZahl(felder[2], 1, HöchsteAuflösung);
    const std::optional<int> messart = ganzeZahl(felder[3], 0, LetzteMessart);
    if (!zoom || !dpi || !messart) {
        return std::nullopt;
    }
    Flügelmessung messung;
    messung.aufnahme = {static_cast<qint16>(*zoom), *dpi};
    messung.messart = static_cast<Messart>(*messart);
    messung.bilddatei = dekodiert(felder[4]);
    return messung;
}

/// Reads the items of the wings.
class Flügelleser {
public:
    explicit Flügelleser(Beisatz& satz)
        : satz_(satz) {}

    /// An item of a number alone refers to the item before; one that is not understood has none.
    bool liesAufnahme(QStringView stück) {
        constexpr std::size_t Feldzahl = 5;
        const std::vector<QStringView> felder = teile(stück, u'/', Feldzahl);
        if (felder.size() != 1) {
            vorige_ = felder.size() == Feldzahl ? aufnahmeAus(felder) : std::nullopt;
        }
        const std::optional<int> nummer = flügelnummer(felder[0]);
        vorigeNummer_ = nummer.value_or(0);
        return nummer && vorige_ && satz_.aufnahmen.try_emplace(*nummer, *vorige_).second;
    }

    bool liesFelder(int nummer, QStringView text) {
        if (!mitFeldern_.insert(nummer).second) {
            return false;
        }
        const auto aufnahme = satz_.aufnahmen.find(nummer);
        Flügelmessung* messung = aufnahme == satz_.aufnahmen.end() ? nullptr : &aufnahme->second;
        Flügelangaben angaben;
        const bool verstanden = liesFlügelfelder(text, messung, angaben);
        if (messung != nullptr && vorige_ && nummer == vorigeNummer_) {
            vorige_->bild = messung->bild;
        }
        if (angaben != Flügelangaben{}) {
            satz_.flügelangaben.insert_or_assign(nummer, std::move(angaben));
        }
        return verstanden;
    }

private:
    Beisatz& satz_;
    std::optional<Flügelmessung> vorige_;
    int vorigeNummer_ = 0;
    std::set<int> mitFeldern_;
};

} // namespace

QString beisatz(const Beiangaben& angaben, const std::map<int, Flügelmessung>& messungen,
                const std::map<int, Flügelangaben>& flügelangaben) {
    QString satz = KopfBeiangaben.toString() + u';' + textfelder(angaben, true);
    if (angaben.merkmale) {
        satz += merkmalfelder(*angaben.merkmale);
    }
    QString neue = textfelder(angaben, false) + zustandsfelder(angaben.zusatz);
    for (const auto& [name, text] : angaben.zusatz.weitere) {
        neue += name + u'=' + text + u';';
    }
    bool mitNeuen = !neue.isEmpty();
    QString flügel;
    const auto füge = [&](int nummer, const QString& felder) {
        if (!felder.isEmpty()) {
            flügel += dreistellig(nummer) + u'=' + felder + u';';
            mitNeuen = true;
        }
    };
    const Flügelmessung* vorige = nullptr;
    for (const auto& [nummer, messung] : messungen) {
        const bool ganz = vorige == nullptr || !gleicheAufnahme(*vorige, messung);
        flügel += dreistellig(nummer) + (ganz ? aufnahmetext(messung) : QString()) + u';';
        const auto eigene = flügelangaben.find(nummer);
        füge(nummer, flügelfelder(&messung, ganz,
                                  eigene == flügelangaben.end() ? nullptr : &eigene->second));
        vorige = &messung;
    }
    for (const auto& [nummer, eigene] : flügelangaben) {
        if (!messungen.contains(nummer)) {
            füge(nummer, flügelfelder(nullptr, false, &eigene));
        }
    }
    return satz + neue + (mitNeuen ? MehrFelder.toString() + u';' : QString()) + flügel;
}

Gelesen<Beisatz> beiangabenAusSatz(QStringView satz) {
    Gelesen<Beisatz> gelesen;
    Flügelleser flügel(gelesen.inhalt);
    gelesen.vollständig = jederEintrag(satz, KopfBeiangaben, [&](QStringView stück) {
        const qsizetype gleich = stück.indexOf(u'=');
        if (gleich < 0) {
            return stück == MehrFelder || flügel.liesAufnahme(stück);
        }
        const QStringView name = stück.first(gleich);
        const QStringView wert = stück.sliced(gleich + 1);
        const std::optional<int> nummer = flügelnummer(name);
        return nummer ? flügel.liesFelder(*nummer, wert)
                      : liesFeld(name, wert, gelesen.inhalt.angaben);
    });
    return gelesen;
}

bool ergänzePunkte(std::map<int, Flügelmessung>& aufnahmen,
                   const std::map<int, Messpunkte>& punkte) {
    bool alle = punkte.size() == aufnahmen.size();
    for (auto& [nummer, messung] : aufnahmen) {
        const auto stelle = punkte.find(nummer);
        if (stelle == punkte.end()) {
            alle = false;
            continue;
        }
        const auto herkunft = messung.punkte.Herkunft;
        messung.punkte = stelle->second;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (messung.punkte.gemessen(i)) {
                messung.punkte.Herkunft[i] = herkunft[i];
            }
        }
    }
    std::erase_if(aufnahmen,
                  [&punkte](const auto& aufnahme) { return !punkte.contains(aufnahme.first); });
    return alle;
}

} // namespace tarvel
