#include "batch/auswertungsausgabe.h"

#include "batch/ausgabe.h"
#include "evaluation/klassen.h"
#include "evaluation/urteilstext.h"
#include "measure/indexmuster.h"
#include "measure/reihenmodelle.h"
#include "measure/statistik.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <map>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

std::map<int, int> flügelJeKlasse(const Messreihe& reihe) {
    std::map<int, int> klassen;
    for (const int klasse : klassenCI(reihe)) {
        ++klassen[klasse];
    }
    return klassen;
}

/// The verdict as a sentence, or why there is none.
QString urteilstext(const Auswertungsprobe& probe, const Texte& texte) {
    const std::optional<bool> urteil = probe.beurteilung.urteil();
    return urteil ? texte(urteilssatz(*urteil)) + u' ' + probe.vorgabe.rasse
                  : unbeurteilttext(probe.beurteilung, probe.vorgabe.rasse, texte);
}

/// The checks that apply to wings; body marks are not in coordinate files.
std::vector<Prüfwert> prüfungen(const Beurteilung& beurteilung) {
    std::vector<Prüfwert> werte = beurteilung.werte;
    std::erase_if(werte, [](const Prüfwert& wert) { return wert.art == Prüfung::Merkmal; });
    return werte;
}

class Textausgabe {
public:
    Textausgabe(const Auswertungsprobe& probe, const Texte& texte)
        : probe_(probe)
        , texte_(texte)
        , wörter_(zeilenwörter(texte)) {}

    QString text() {
        const bool drohnen = probe_.vorgabe.tiere == Geschlecht::Drohnen;
        zeile(probe_.datei);
        zeile(QString::number(probe_.reihe.gewertete().size()) + u' ' +
              texte_(drohnen ? Text::DrohnenUntersucht : Text::ArbeiterinnenUntersucht));
        namen();
        absatz(probe_.reihe.ciTexte(wörter_));
        absatz(probe_.reihe.hiDvTexte(wörter_));
        if (const QString satz = ausgelassen(probe_.reihe, texte_); !satz.isEmpty()) {
            absatz({satz});
        }
        kennzahlen();
        klassen();
        beurteilung();
        return std::move(text_);
    }

private:
    void zeile(const QString& text) { text_ += text + u'\n'; }
    void absatz(const QStringList& zeilen) {
        if (!zeilen.isEmpty()) {
            zeile({});
            zeile(zeilen.join(u'\n'));
        }
    }

    /// Which wing a number of the lists means.
    void namen() {
        QStringList liste;
        for (const Ausgabeflügel& f : probe_.flügel) {
            if (!f.name.isEmpty() && f.name.toInt() != f.nummer) {
                liste << dreistellig(f.nummer) + u"  "_s + f.name;
            }
        }
        absatz(liste);
    }

    void kennzahlen() {
        struct Größe {
            QString name;
            float Chartwerte::*wert;
            QStringView muster, streuung;
        };
        QStringList liste;
        for (const Größe& g : {Größe{wörter_.CI, &Chartwerte::CI, muster::CI, muster::CI},
                               {wörter_.HI, &Chartwerte::HI, muster::HI, muster::HI},
                               {wörter_.DV, &Chartwerte::DV, muster::DV, muster::StreuungDV}}) {
            const auto k = tarvel::kennzahlen(werte(probe_.reihe, g.wert));
            if (!k) {
                continue;
            }
            const auto zahl = [&](double wert, QStringView muster) {
                return Format(wert, muster, probe_.vorgabe.format);
            };
            QString text =
                texte_(Text::Mittelwert) + u' ' + g.name + u' ' + zahl(k->mittelwert, g.muster);
            if (k->standardabweichung) {
                text += u" ± "_s + zahl(*k->standardabweichung, g.streuung);
            }
            liste << text + u"  ("_s + zahl(k->minimum, g.muster) + u" … "_s +
                         zahl(k->maximum, g.muster) + u")  n = "_s + QString::number(k->anzahl);
        }
        absatz(liste);
    }

    void klassen() {
        QStringList liste;
        const std::map<int, int> anzahl = flügelJeKlasse(probe_.reihe);
        for (const auto& [klasse, flügel] : anzahl) {
            liste << u"%1  %2  %3"_s.arg(QString::number(klasse).rightJustified(5),
                                         QString::number(flügel).rightJustified(3),
                                         QString(flügel, u'*'));
        }
        if (!liste.isEmpty()) {
            absatz({texte_(Text::BienenJeKlasse)});
            zeile(liste.join(u'\n'));
        }
    }

    [[nodiscard]] QString anteil(const Prüfwert& wert) const {
        if (wert.art == Prüfung::Mittelwert) {
            return texte_(Text::Mittelwert) + u"  "_s +
                   (wert.mittel ? Format(*wert.mittel, muster::CI, probe_.vorgabe.format)
                                : u"–"_s) +
                   (wert.höchstens ? u"  ≤ "_s : u"  ≥ "_s) +
                   zahltext(wert.erlaubt, probe_.vorgabe.format);
        }
        const QString name = texte_(Text::Klasse) + u' ' + klassenbereichtext(wert.bereich);
        if (wert.art == Prüfung::Nebengipfel) {
            const std::optional<int> klasse = probe_.beurteilung.nebengipfel;
            return name + u"  "_s + texte_(Text::Nebengipfel) + u": "_s +
                   (klasse ? texte_(Text::Klasse) + u' ' + QString::number(*klasse) : u"–"_s);
        }
        return name + u"  "_s +
               (wert.gemessen ? QString::number(*wert.gemessen) + u" %"_s : u"–"_s) + u"  ≤ "_s +
               zahltext(wert.erlaubt, probe_.vorgabe.format) + u" %"_s;
    }

    void beurteilung() {
        absatz({texte_(Text::Beurteilung)});
        for (const Prüfwert& wert : prüfungen(probe_.beurteilung)) {
            if (wert.art != Prüfung::Nebengipfel || probe_.beurteilung.BewertungAktiv) {
                zeile(anteil(wert));
            }
        }
        zeile(urteilstext(probe_, texte_));
        if (probe_.beurteilung.urteil()) {
            zeile(grundlagentext(probe_.beurteilung.umfang, texte_));
        }
        for (const Prüfwert& mangel : probe_.beurteilung.mängel()) {
            zeile(u"• "_s + mangeltext(mangel, texte_, probe_.vorgabe.format));
        }
    }

    const Auswertungsprobe& probe_;
    const Texte& texte_;
    Zeilenwörter wörter_;
    QString text_;
};

/// As a double whose shortest text is that of the single.
QJsonValue json(std::optional<float> wert) {
    return wert ? QJsonValue(vollerWert(*wert).toDouble()) : QJsonValue();
}

QJsonValue json(std::optional<int> wert) {
    return wert ? QJsonValue(*wert) : QJsonValue();
}

QJsonObject flügelobjekt(const Ausgabeflügel& flügel) {
    const Flügelmessung& m = flügel.messung;
    const Indizes indizes = berechneIndizes(m.punkte, m.messart, m.aufnahme);
    const auto klasse = [](std::optional<float> index, float (*position)(float)) {
        return json(index ? std::optional(position(*index)) : std::nullopt);
    };
    return {{u"number"_s, flügel.nummer},
            {u"wing"_s, flügel.name.isEmpty() ? QString::number(flügel.nummer) : flügel.name},
            {u"ci"_s, json(indizes.CI)},
            {u"ci_class"_s, klasse(indizes.CI, klassenpositionCI)},
            {u"hi"_s, json(indizes.HI)},
            {u"hi_class"_s, klasse(indizes.HI, klassenpositionHI)},
            {u"dv"_s, json(indizes.DV)},
            {u"dpi"_s, m.aufnahme.dpi},
            {u"zoom"_s, m.aufnahme.Zoomfaktor},
            {u"left_out"_s, flügel.ausgelassen}};
}

/// What all wings of a sample have in common; nullopt when they differ.
template <typename Größe>
std::optional<int> gemeinsam(const Auswertungsprobe& probe, Größe größe) {
    std::optional<int> wert;
    for (const Ausgabeflügel& f : probe.flügel) {
        const int eigener = größe(f.messung.aufnahme);
        if (wert && *wert != eigener) {
            return std::nullopt;
        }
        wert = eigener;
    }
    return wert;
}

QJsonArray klassenliste(const Messreihe& reihe) {
    QJsonArray liste;
    for (const auto& [klasse, flügel] : flügelJeKlasse(reihe)) {
        liste.append(QJsonObject{{u"class"_s, klasse}, {u"wings"_s, flügel}});
    }
    return liste;
}

QJsonObject prüfungsobjekt(const Prüfwert& wert) {
    if (wert.art == Prüfung::Mittelwert) {
        return {{u"check"_s, u"mean"_s},
                {u"mean"_s, wert.mittel ? QJsonValue(*wert.mittel) : QJsonValue()},
                {wert.höchstens ? u"allowed_most"_s : u"allowed_least"_s, wert.erlaubt},
                {u"passed"_s, !wert.fett}};
    }
    QJsonObject objekt{
        {u"from"_s, wert.bereich.von}, {u"to"_s, wert.bereich.bis}, {u"passed"_s, !wert.fett}};
    const bool gipfel = wert.art == Prüfung::Nebengipfel;
    objekt[u"check"_s] = gipfel ? u"secondary_peak"_s : u"class_share"_s;
    objekt[gipfel ? u"wings"_s : u"percent"_s] = json(wert.gemessen);
    objekt[gipfel ? u"allowed_wings"_s : u"allowed_percent"_s] = wert.erlaubt;
    return objekt;
}

QJsonObject probenobjekt(const Auswertungsprobe& probe, const Texte& texte) {
    QJsonArray flügel;
    for (const Ausgabeflügel& f : probe.flügel) {
        flügel.append(flügelobjekt(f));
    }
    QJsonArray prüfliste;
    for (const Prüfwert& wert : prüfungen(probe.beurteilung)) {
        prüfliste.append(prüfungsobjekt(wert));
    }
    QJsonArray gründe;
    for (const Prüfwert& mangel : probe.beurteilung.mängel()) {
        gründe.append(mangeltext(mangel, texte, probe.vorgabe.format));
    }
    const std::optional<bool> urteil = probe.beurteilung.urteil();
    return {
        {u"file"_s, probe.datei},
        {u"kind"_s, static_cast<int>(probe.vorgabe.messart)},
        {u"dpi"_s, json(gemeinsam(probe, [](const Aufnahme& a) { return a.dpi; }))},
        {u"zoom"_s, json(gemeinsam(probe, [](const Aufnahme& a) { return int{a.Zoomfaktor}; }))},
        {u"caste"_s, probe.vorgabe.tiere == Geschlecht::Drohnen ? u"drones"_s : u"workers"_s},
        {u"race"_s, probe.vorgabe.rasse},
        {u"wings"_s, flügel},
        {u"classes"_s, klassenliste(probe.reihe)},
        {u"checks"_s, prüfliste},
        {u"secondary_peak"_s, json(probe.beurteilung.nebengipfel)},
        {u"conforms"_s, urteil ? QJsonValue(*urteil) : QJsonValue()},
        {u"verdict"_s, urteilstext(probe, texte)},
        {u"basis"_s, grundlagentext(probe.beurteilung.umfang, texte)},
        {u"preliminary"_s, probe.beurteilung.umfang.vorläufig()},
        {u"reasons"_s, gründe}};
}

} // namespace

QByteArray alsText(const std::vector<Auswertungsprobe>& proben, const Texte& texte) {
    QStringList alle;
    for (const Auswertungsprobe& probe : proben) {
        alle << sichtbar(Textausgabe(probe, texte).text(), true);
    }
    return alle.join(u'\n').toUtf8();
}

QByteArray alsCsv(const std::vector<Auswertungsprobe>& proben) {
    std::vector<Ausgabeflügel> alle;
    for (const Auswertungsprobe& probe : proben) {
        for (Ausgabeflügel f : probe.flügel) {
            if (proben.size() > 1) {
                f.name =
                    probe.datei + u':' + (f.name.isEmpty() ? QString::number(f.nummer) : f.name);
            }
            alle.push_back(std::move(f));
        }
    }
    return alsIndextabelle(alle);
}

QByteArray alsJson(const std::vector<Auswertungsprobe>& proben, const Texte& texte) {
    QJsonArray alle;
    for (const Auswertungsprobe& probe : proben) {
        alle.append(probenobjekt(probe, texte));
    }
    return QJsonDocument(QJsonObject{{u"samples"_s, alle}}).toJson();
}

} // namespace tarvel
