#include "evaluation/standarddatei.h"

#include "evaluation/beurteilung.h"
#include "measure/textdatei.h"

#include <QCryptographicHash>
#include <QDate>

#include <algorithm>
#include <array>
#include <limits>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Kopf = u"Tarvel-Rassestandard";
constexpr QStringView Aufbau = u"1";
constexpr QStringView AbschnittStandard = u"Standard";
constexpr qsizetype LängsterName = 100;

struct Kopffeld {
    QStringView name;
    QString& (*ort)(Standarddatei&);
};

constexpr std::array Kopffelder{
    Kopffeld{u"Rasse", [](Standarddatei& d) -> QString& { return d.Rasse; }},
    Kopffeld{u"Name", [](Standarddatei& d) -> QString& { return d.standard.kennung.Name; }},
    Kopffeld{u"Version", [](Standarddatei& d) -> QString& { return d.standard.kennung.Version; }},
    Kopffeld{u"Datum", [](Standarddatei& d) -> QString& { return d.standard.kennung.Datum; }},
    Kopffeld{u"Marke", [](Standarddatei& d) -> QString& { return d.standard.kennung.Marke; }},
};

/// A value as it stands in the text: texts in the form that their fields have.
QString wert(const Standardzeile& zeile, const Rassestandard& standard) {
    return normalisiert(zeile.art, anzeigetext(zeile, standard, Zahlenformat()), Zahlenformat());
}

bool nurZiffern(QStringView text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Digits, with one decimal separator and, where @p mitVorzeichen, a sign.
bool istDezimal(QStringView text, bool mitVorzeichen) {
    if (mitVorzeichen && text.startsWith(u'-')) {
        text = text.sliced(1);
    }
    const qsizetype trenner = std::max(text.indexOf(u'.'), text.indexOf(u','));
    return trenner < 0 ? nurZiffern(text)
                       : (trenner == 0 || nurZiffern(text.first(trenner))) &&
                             nurZiffern(text.sliced(trenner + 1));
}

bool passt(Werteart art, QStringView text) {
    constexpr double Größter = std::numeric_limits<qint16>::max();
    constexpr qsizetype LängsteKlasse = 5;
    switch (art) {
    case Werteart::Prozent: {
        const QStringView zahl = text.endsWith(u'%') ? text.chopped(1).trimmed() : text;
        return istDezimal(zahl, false) &&
               prozentzahl(zahl.toString().replace(u',', u'.')) <= Größter;
    }
    case Werteart::Bereich: {
        const auto teile = text.split(u'-');
        return teile.size() <= 2 && std::all_of(teile.begin(), teile.end(), [](QStringView teil) {
                   return nurZiffern(teil) && teil.size() <= LängsteKlasse;
               });
    }
    case Werteart::InZehnteln:
    case Werteart::InHundertsteln:
    case Werteart::InTausendsteln:
        // Beyond 16 bits it would be taken for something else, of two one differs.
        return istDezimal(text, art != Werteart::InZehnteln) &&
               gespeicherteZahl(art, text, 0) == gespeicherteZahl(art, text, 1);
    case Werteart::Schalter:
    case Werteart::Listenplatz:
        return text == u"0" || text == u"1";
    case Werteart::Option:
        return text == u"0" || text == u"-1";
    }
    return false;
}

/// Reads the lines of a standard.
class Standardleser {
public:
    explicit Standardleser(QStringView text)
        : zeilen_(text) {}

    std::variant<Standarddatei, Standardfehler> lies() {
        if (const auto fehler = liesKopf()) {
            return *fehler;
        }
        while (const auto zeile = zeilen_.nächste()) {
            const QStringView knapp = zeile->trimmed();
            if (knapp.isEmpty() || knapp.startsWith(u';')) {
                continue;
            }
            if (const auto fehler = liesZeile(knapp)) {
                return *fehler;
            }
        }
        for (const Standardzeile& zeile : standardtabelle()) {
            if (!gelesen_.contains(&zeile)) {
                return Standardfehler{.grund = Standardgrund::WertFehlt, .wert = &zeile};
            }
        }
        if (datei_.Rasse.isEmpty()) {
            return Standardfehler{.grund = Standardgrund::WertFehlt,
                                  .text = Kopffelder.front().name.toString()};
        }
        return datei_;
    }

private:
    std::optional<Standardfehler> liesKopf() {
        const QStringView zeile = zeilen_.nächste().value_or(QStringView()).trimmed();
        const qsizetype trenner = zeile.lastIndexOf(u' ');
        if (trenner < 0 || zeile.first(trenner).trimmed() != Kopf) {
            return Standardfehler{.grund = Standardgrund::KeinStandard};
        }
        const QStringView aufbau = zeile.sliced(trenner + 1);
        return aufbau == Aufbau
                   ? std::nullopt
                   : std::optional(Standardfehler{.grund = Standardgrund::AndererAufbau,
                                                  .text = zitat(aufbau)});
    }

    std::optional<Standardfehler> fehler(Standardgrund grund, const QString& text,
                                         const Standardzeile* wert = nullptr) const {
        return Standardfehler{
            .grund = grund, .zeile = zeilen_.nummer(), .wert = wert, .text = text};
    }

    std::optional<Standardfehler> liesZeile(QStringView zeile) {
        if (zeile.startsWith(u'[') && zeile.endsWith(u']')) {
            abschnitt_ = zeile.sliced(1, zeile.size() - 2).trimmed();
            return std::nullopt;
        }
        const qsizetype gleich = zeile.indexOf(u'=');
        if (gleich < 0) {
            return fehler(Standardgrund::Unerwartet, zitat(zeile));
        }
        const QStringView name = zeile.first(gleich).trimmed();
        const QStringView text = zeile.sliced(gleich + 1).trimmed();
        if (abschnitt_ == AbschnittStandard) {
            return liesKopffeld(name, text);
        }
        for (const Standardzeile& z : standardtabelle()) {
            if (abschnitt_ == abschnitt(z.gruppe) && name == z.schlüssel) {
                return liesWert(z, text);
            }
        }
        return fehler(Standardgrund::Unerwartet, zitat(zeile));
    }

    std::optional<Standardfehler> liesKopffeld(QStringView name, QStringView text) {
        const auto* const feld = std::find_if(Kopffelder.begin(), Kopffelder.end(),
                                              [name](const Kopffeld& f) { return f.name == name; });
        if (feld == Kopffelder.end()) {
            return fehler(Standardgrund::Unerwartet, zitat(name));
        }
        QString& ort = feld->ort(datei_);
        if (!ort.isEmpty()) {
            return fehler(Standardgrund::WertDoppelt, name.toString());
        }
        const bool tag = name != u"Datum" || text.isEmpty() ||
                         QDate::fromString(text.toString(), Qt::ISODate).isValid();
        const bool lesbar =
            text.size() <= LängsterName && std::all_of(text.begin(), text.end(), [](QChar c) {
                return !c.isNonCharacter() && c.category() != QChar::Other_Control;
            });
        if (!tag || !lesbar) {
            return Standardfehler{
                .grund = Standardgrund::WertFalsch, .zeile = zeilen_.nummer(), .text = zitat(text)};
        }
        ort = text.toString().simplified();
        return std::nullopt;
    }

    std::optional<Standardfehler> liesWert(const Standardzeile& zeile, QStringView text) {
        if (gelesen_.contains(&zeile)) {
            return fehler(Standardgrund::WertDoppelt, {}, &zeile);
        }
        if (!passt(zeile.art, text)) {
            return fehler(Standardgrund::WertFalsch, zitat(text), &zeile);
        }
        gelesen_.insert(&zeile);
        QString getippt = text.toString();
        if (zeile.art == Werteart::Prozent) {
            getippt.replace(u',', u'.'); // shares are read with a point
        }
        übernehme(zeile, datei_.standard,
                  istText(zeile.art) ? normalisiert(zeile.art, getippt, Zahlenformat()) : getippt);
        return std::nullopt;
    }

    Zeilenleser zeilen_;
    QStringView abschnitt_;
    std::set<const Standardzeile*> gelesen_;
    Standarddatei datei_;
};

/// The group of marks that a key is of, or what else a value is about.
QString innenname(const Standardzeile& zeile, const Texte& t) {
    const auto teile = zeile.schlüssel.split(u' ');
    QString code = teile.last().toString();
    code.remove(u'_');
    const QStringView erstes = teile.first();
    if (zeile.gruppe == Standardgruppe::Grenzlinien) {
        return zeile.schlüssel == u"Korrelation" ? t(Text::Grenzlinien)
                                                 : erstes.toString() + u" ("_s +
                                                       t(code == u"Arbeit"  ? Text::Arbeiterinnen
                                                         : code == u"Drohn" ? Text::Drohnen
                                                                            : Text::Grenzlinien) +
                                                       u')';
    }
    if (erstes == u"Filzbinden") {
        return t(Text::Filzbinden) + u' ' + code;
    }
    if (erstes == u"Haarlänge") {
        return t(Text::Haarlänge) + u' ' + code;
    }
    if (erstes == u"Haarfarbe") {
        return t(Text::Haarfarbe) + u' ' + code;
    }
    if (erstes == u"Panzer") {
        return t(Text::Panzerzeichen) + u' ' + code;
    }
    if (erstes == u"max") {
        return t(Text::Klasse) + u' ' + code + u" ≤"_s;
    }
    if (zeile.schlüssel == u"Klasse 2") {
        return t(Text::Nebengipfel);
    }
    if (erstes == u"Klasse") {
        return t(Text::Klasse) + u' ' + code;
    }
    if (zeile.art == Werteart::InZehnteln) {
        return t(Text::Mittelwert) + u' ' + t(Text::CI);
    }
    QString name =
        t(zeile.art == Werteart::Schalter ? Meldung::MittelPrüfen : Meldung::NameMittelrichtung);
    return name.remove(u':').trimmed();
}

/// A value for people.
QString wertanzeige(const Standardzeile& zeile, const Rassestandard& standard, const Texte& t,
                    const Zahlenformat& format) {
    QString text = anzeigetext(zeile, standard, format);
    switch (zeile.art) {
    case Werteart::Schalter:
        return t(text == u"0" ? Text::Nein : Text::Ja);
    case Werteart::Option:
        return t(text == u"0" ? Text::GrenzlinienHierDefiniert : Text::GrenzlinienNachKruber);
    case Werteart::Listenplatz:
        return t(text == u"0" ? Text::Über : Text::Unter);
    default:
        return text;
    }
}

} // namespace

QString standardtext(const Standarddatei& datei) {
    Standarddatei kopie = datei;
    kopie.Rasse = datei.Rasse.simplified();
    QString text = Kopf.toString() + u' ' + Aufbau.toString() + u"\n["_s +
                   AbschnittStandard.toString() + u"]\n"_s;
    for (const Kopffeld& feld : Kopffelder) {
        text +=
            feld.name.toString() + u'=' + feld.ort(kopie).simplified().left(LängsterName) + u'\n';
    }
    std::optional<Standardgruppe> gruppe;
    for (const Standardzeile& zeile : standardtabelle()) {
        if (gruppe != zeile.gruppe) {
            gruppe = zeile.gruppe;
            text += u'[' + abschnitt(zeile.gruppe).toString() + u"]\n"_s;
        }
        text += zeile.schlüssel.toString() + u'=' + wert(zeile, datei.standard) + u'\n';
    }
    return text;
}

std::variant<Standarddatei, Standardfehler> liesStandard(QStringView text) {
    return Standardleser(text).lies();
}

std::variant<Standarddatei, Standardfehler> liesStandarddatei(QByteArrayView bytes) {
    const Dateitext datei = dateitext(bytes);
    if (datei.problem) {
        return Standardfehler{.grund = Standardgrund::KeinText, .problem = datei.problem};
    }
    auto gelesen = liesStandard(datei.text);
    if (const auto* standard = std::get_if<Standarddatei>(&gelesen)) {
        if (const auto mangel = standardmangel(standard->standard)) {
            return *mangel;
        }
    }
    return gelesen;
}

std::optional<Standardfehler> standardmangel(const Rassestandard& standard) {
    for (const Standardzeile& zeile : standardtabelle()) {
        if (zeile.art == Werteart::Bereich) {
            if (const auto mangel = bereichsmangel(anzeigetext(zeile, standard, Zahlenformat()))) {
                return Standardfehler{
                    .grund = Standardgrund::Bereich, .wert = &zeile, .bereich = mangel};
            }
        }
    }
    return std::nullopt;
}

QString bereichstext(Bereichsmangel mangel, const Texte& texte) {
    switch (mangel) {
    case Bereichsmangel::Unfertig:
        return texte(Meldung::BereichUnfertig);
    case Bereichsmangel::Verkehrt:
        return texte(Meldung::BereichVerkehrt);
    case Bereichsmangel::ZuHoch:
        break;
    }
    return texte(Meldung::BereichZuHoch).arg(HöchsteKlasse);
}

QString fehlertext(const Standardfehler& fehler, const Texte& texte) {
    const QString name = fehler.wert != nullptr ? wertname(*fehler.wert, texte) : fehler.text;
    QString satz;
    switch (fehler.grund) {
    case Standardgrund::KeinText:
        return fehler.problem ? text(*fehler.problem, texte) : QString();
    case Standardgrund::KeinStandard:
        return texte(Meldung::StandardKeiner);
    case Standardgrund::AndererAufbau:
        return texte(Meldung::StandardNeuererAufbau).arg(fehler.text);
    case Standardgrund::WertFehlt:
        return texte(Meldung::StandardWertFehlt).arg(name);
    case Standardgrund::Bereich:
        return name + u": "_s + (fehler.bereich ? bereichstext(*fehler.bereich, texte) : QString());
    case Standardgrund::Unerwartet:
        satz = texte(Meldung::LeseUnerwartet).arg(fehler.text);
        break;
    case Standardgrund::WertDoppelt:
        satz = texte(Meldung::StandardWertDoppelt).arg(name);
        break;
    case Standardgrund::WertFalsch:
        satz = texte(Meldung::StandardWertFalsch)
                   .arg(fehler.wert != nullptr ? name : texte(Meldung::Standard), fehler.text);
        break;
    }
    return texte(Meldung::LeseZeile).arg(QString::number(fehler.zeile), satz);
}

QString standardmarke(const Rassestandard& standard) {
    QByteArray alles;
    for (const Standardzeile& zeile : standardtabelle()) {
        alles += wert(zeile, standard).toUtf8() + ';';
    }
    constexpr qsizetype Länge = 8;
    return QString::fromLatin1(
        QCryptographicHash::hash(alles, QCryptographicHash::Sha256).toHex().first(Länge));
}

QString standardname(const Rassestandard& standard, const QString& rasse, const Texte& texte) {
    const Standardkennung& k = standard.kennung;
    if (k.Name.isEmpty() && k.Version.isEmpty()) {
        return rasse;
    }
    QString name = k.Name.isEmpty() ? rasse : k.Name;
    if (!k.Version.isEmpty()) {
        name = texte(Meldung::StandardFassung).arg(name, k.Version);
    }
    return k.Marke == standardmarke(standard) ? name : texte(Meldung::StandardGeändert).arg(name);
}

QString wertname(const Standardzeile& zeile, const Texte& texte) {
    const QString innen = innenname(zeile, texte);
    return zeile.gruppe == Standardgruppe::Grenzlinien
               ? innen
               : texte(zeile.gruppe == Standardgruppe::Drohnen ? Text::Drohnen
                                                               : Text::Arbeiterinnen) +
                     u": "_s + innen;
}

std::vector<const Standardzeile*> abweichungen(const Rassestandard& alt, const Rassestandard& neu) {
    std::vector<const Standardzeile*> liste;
    for (const Standardzeile& zeile : standardtabelle()) {
        if (wert(zeile, alt) != wert(zeile, neu)) {
            liste.push_back(&zeile);
        }
    }
    return liste;
}

std::vector<const Standardzeile*> urteilsabweichungen(const Rassestandard& alt,
                                                      const Rassestandard& neu, Geschlecht tiere) {
    const auto gruppe =
        tiere == Geschlecht::Drohnen ? Standardgruppe::Drohnen : Standardgruppe::Arbeiterinnen;
    const bool mittel = alt.mittelgrenze(tiere).gilt() || neu.mittelgrenze(tiere).gilt();
    std::vector<const Standardzeile*> liste = abweichungen(alt, neu);
    std::erase_if(liste, [&](const Standardzeile* zeile) {
        const bool nurBeiMittel =
            zeile->art == Werteart::InZehnteln || zeile->art == Werteart::Listenplatz;
        return zeile->gruppe != gruppe || (nurBeiMittel && !mittel);
    });
    return liste;
}

QString abweichungstext(const Standardzeile& zeile, const Rassestandard& alt,
                        const Rassestandard& neu, const Texte& texte, const Zahlenformat& format,
                        bool mitTieren) {
    return (mitTieren ? wertname(zeile, texte) : innenname(zeile, texte)) + u": "_s +
           wertanzeige(zeile, alt, texte, format) + u" → "_s +
           wertanzeige(zeile, neu, texte, format);
}

std::optional<Urteilsbeleg> urteilsbeleg(QStringView grenzen, const Rassestandard& jetzt,
                                         Geschlecht tiere, const Texte& texte,
                                         const Zahlenformat& format) {
    const auto gelesen = liesStandard(grenzen);
    const auto* damals = std::get_if<Standarddatei>(&gelesen);
    if (damals == nullptr) {
        return std::nullopt;
    }
    Urteilsbeleg beleg{standardname(damals->standard, damals->Rasse, texte), {}};
    for (const Standardzeile* zeile : urteilsabweichungen(damals->standard, jetzt, tiere)) {
        beleg.abweichungen << abweichungstext(*zeile, damals->standard, jetzt, texte, format,
                                              false);
    }
    return beleg;
}

Urteilsvergleich urteilsvergleich(bool gespeichert, std::optional<bool> urteil,
                                  const std::optional<Urteilsbeleg>& beleg, const Texte& t) {
    const QString& wort = t(urteilswort(gespeichert));
    const bool anders = urteil && gespeichert != *urteil;
    const bool andereGrenzen = urteil && beleg && !beleg->abweichungen.isEmpty();
    QStringList sätze;
    if (anders) {
        sätze << t(Meldung::UrteilAnders).arg(wort, t(urteilswort(*urteil)));
    } else if (!urteil) {
        sätze << t(Meldung::UrteilGespeichert).arg(wort);
    }
    if (beleg) {
        sätze << t(Meldung::GespeichertNach).arg(beleg->standard);
    }
    if (andereGrenzen) {
        constexpr qsizetype Höchstens = 3;
        QStringList grenzen =
            beleg->abweichungen.first(std::min(Höchstens, beleg->abweichungen.size()));
        if (const auto weitere = beleg->abweichungen.size() - grenzen.size(); weitere > 0) {
            grenzen << t(Meldung::UndWeitere).arg(weitere);
        }
        sätze << t(Meldung::GrenzenAnders).arg(grenzen.join(u", "_s));
    }
    return {sätze.join(u' '), anders || andereGrenzen};
}

} // namespace tarvel
