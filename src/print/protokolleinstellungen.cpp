#include "print/protokolleinstellungen.h"

#include "evaluation/rassen.h"
#include "results/kolonieangaben.h"
#include "settings/einstellungen.h"

#include <QLocale>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The value at a stored position, or the default that the settings give it.
template <typename Wahl>
Wahl wahl(int position, Wahl letzte, Wahl vorgabe) {
    return position >= 0 && position <= static_cast<int>(letzte) ? static_cast<Wahl>(position)
                                                                 : vorgabe;
}

/// The forms are set here, because those of a system name the weekday or only two digits of the
/// year, and the report must not depend on the machine that prints it.
struct Datumsmuster {
    QLocale::Language sprache;
    QStringView lang;
    QStringView kurz;
};

Datumsmuster datumsmuster(Sprache sprache) {
    switch (sprache) {
    case Sprache::Englisch:
        return {QLocale::English, u"d MMMM yyyy", u"dd/MM/yyyy"};
    case Sprache::Französisch:
        return {QLocale::French, u"d MMMM yyyy", u"dd/MM/yyyy"};
    case Sprache::Deutsch:
        break;
    }
    return {QLocale::German, u"d. MMMM yyyy", u"dd.MM.yyyy"};
}

} // namespace

Protokollart ladeProtokollart(const Einstellungen& einstellungen) {
    return wahl(einstellungen.zahl(Einstellung::Art), Protokollart::CubitalindexUndDV,
                Protokolleinstellungen().art);
}

Protokolleinstellungen ladeProtokolleinstellungen(const Einstellungen& einstellungen) {
    using E = Einstellung;
    Protokolleinstellungen p;
    p.briefkopf = ladeBriefkopf(einstellungen);
    p.SchriftArt = einstellungen.text(E::ProtokollSchriftArt);
    p.SchriftKursiv = einstellungen.schalter(E::ProtokollSchriftKursiv);
    p.art = ladeProtokollart(einstellungen);
    p.datum = wahl(einstellungen.zahl(E::Datum), Datumsform::ÄnderungKurz, p.datum);
    p.regeln = ladeUrteilsregeln(einstellungen);
    p.Anhang = einstellungen.schalter(E::Anhang);
    p.Kurvenform = einstellungen.zahl(E::Kurvenform);
    p.rassen = rassenliste(einstellungen);
    return p;
}

QString datumstext(Datumsform form, QDate heute, QDate änderung, Sprache sprache,
                   const QString& gebiet) {
    const bool geändert = form == Datumsform::ÄnderungLang || form == Datumsform::ÄnderungKurz;
    const bool lang = form == Datumsform::HeuteLang || form == Datumsform::ÄnderungLang;
    const Datumsmuster muster = datumsmuster(sprache);
    return (gebiet.isEmpty() ? QLocale(muster.sprache) : QLocale(gebiet))
        .toString(geändert && änderung.isValid() ? änderung : heute,
                  lang ? muster.lang : muster.kurz);
}

QString zuchtbuchnummer(const Kolonieangaben& angaben) {
    const QStringList teile{angaben.LV.trimmed(), angaben.ZNr.trimmed(), angaben.KNr.trimmed(),
                            angaben.Jahr.trimmed()};
    if (std::all_of(teile.begin(), teile.end(), [](const QString& t) { return t.isEmpty(); })) {
        return {};
    }
    const QStringList lücken{u"__"_s, u"___"_s, u"___"_s, u"____"_s};
    QStringList nummer;
    for (qsizetype i = 0; i < teile.size(); ++i) {
        nummer << (teile[i].isEmpty() ? lücken[i] : teile[i]);
    }
    return nummer.join(u'-');
}

} // namespace tarvel
