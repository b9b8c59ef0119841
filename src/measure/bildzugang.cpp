#include "measure/bildzugang.h"

#include "measure/bildordner.h"
#include "measure/bildort.h"
#include "measure/ladefortschritt.h"

#include <QDir>
#include <QFileInfo>

#include <utility>
#include <variant>

namespace tarvel {

using namespace Qt::StringLiterals;

Bildzugang::Bildzugang(const Texte& texte, Dialoge& dialoge, QWidget& fenster)
    : texte_(texte)
    , dialoge_(dialoge)
    , fenster_(fenster)
    , suche_([](const QString& pfad) { return Bilddatei::liesGröße(pfad).value_or(QSize()); }) {}

QString Bildzugang::wähleSeite(const QString& pfad) {
    const QList<Bildseite> seiten = Bilddatei::seiten(pfad);
    if (seiten.isEmpty()) {
        return pfad;
    }
    QStringList worte;
    for (const Bildseite& seite : seiten) {
        worte << texte_(Meldung::BildSeite)
                     .arg(QString::number(seite.nummer), QString::number(seite.größe.width()),
                          QString::number(seite.größe.height()));
    }
    const std::optional<int> wahl =
        dialoge_.auswahl(texte_(Text::KnopfBildLaden),
                         texte_(Meldung::BildSeiteFrage).arg(QFileInfo(pfad).fileName()), worte, 0);
    return wahl ? Bildort{pfad, seiten.at(*wahl).nummer}.name() : QString();
}

std::optional<Bilddatei> Bildzugang::öffne(const QString& pfad, bool ganz) {
    auto ergebnis = [&]() -> std::variant<Bilddatei, Bildfehler> {
        Ladefortschritt laden(&fenster_, texte_, pfad, zeigeLadenNach);
        auto offen = Bilddatei::öffne(pfad, laden.weiter());
        Bildfehler fehler;
        if (auto* datei = std::get_if<Bilddatei>(&offen);
            datei != nullptr && ganz && datei->pixel(&fehler, laden.weiter()) == nullptr) {
            return fehler;
        }
        return offen;
    }();
    if (const auto* fehler = std::get_if<Bildfehler>(&ergebnis)) {
        meldeBildfehler(*fehler, pfad);
        return std::nullopt;
    }
    return std::get<Bilddatei>(std::move(ergebnis));
}

std::optional<Bilddatei> Bildzugang::öffneStill(const QString& pfad, bool ganz) {
    if (!QFileInfo(Bildort::aus(pfad).datei).isFile()) {
        return std::nullopt;
    }
    Ladefortschritt laden(&fenster_, texte_, pfad, zeigeLadenNach);
    auto ergebnis = Bilddatei::öffne(pfad, laden.weiter());
    auto* datei = std::get_if<Bilddatei>(&ergebnis);
    if (datei != nullptr && ganz && datei->pixel(nullptr, laden.weiter()) == nullptr) {
        return std::nullopt;
    }
    return datei == nullptr ? std::nullopt : std::optional(std::move(*datei));
}

const QImage* Bildzugang::pixel(Bilddatei& datei) {
    Bildfehler fehler;
    const QImage* pixel = [&] {
        Ladefortschritt laden(&fenster_, texte_, datei.pfad(), zeigeLadenNach);
        return datei.pixel(&fehler, laden.weiter());
    }();
    if (pixel == nullptr) {
        meldeBildfehler(fehler, datei.pfad());
    }
    return pixel;
}

QString Bildzugang::finde(const GesuchtesBild& bild) {
    const Bildfund fund = suche_.suche(bild);
    if (fund.art == Bildfund::Art::Gefunden) {
        return fund.pfad;
    }
    const QString name = QDir::toNativeSeparators(bild.pfad);
    const QString titel = texte_(Text::BilddateiNichtGefunden);
    const Meldung text = fund.art == Bildfund::Art::AndererInhalt ? Meldung::BildIstAnderesFrage
                                                                  : Meldung::BildFehltFrage;
    if (dialoge_.frage({.titel = titel,
                        .text = texte_(text).arg(name),
                        .art = Meldungsart::Frage,
                        .ja = texte_(Meldung::BildZeigen),
                        .nein = texte_(Text::Abbrechen)}) != Antwort::Ja) {
        return {};
    }
    const QString gewählt =
        dialoge_.wähleDatei(titel, {},
                            texte_(Text::AlleBilddateien) + u" ("_s + bildmuster().join(u' ') +
                                u");;"_s + texte_(Text::AlleDateien) + u" (*)"_s);
    if (gewählt.isEmpty()) {
        return {};
    }
    suche_.vertraue(gewählt);
    QString pfad = Bildort{gewählt, Bildort::aus(bild.pfad).seite}.name();
    if (!suche_.ist(pfad, bild)) {
        dialoge_.meldung(
            titel, texte_(Meldung::BildIstEinAnderes).arg(QDir::toNativeSeparators(gewählt), name),
            Meldungsart::Ausruf);
        return {};
    }
    suche_.zeigeOrdner(bild, QFileInfo(gewählt).absolutePath());
    return pfad;
}

void Bildzugang::meldeBildfehler(const Bildfehler& fehler, const QString& pfad) {
    if (fehler.art != Bildfehler::Art::Abgebrochen) {
        dialoge_.meldung(texte_(Text::Fehler), text(fehler, pfad, texte_), Meldungsart::Ausruf);
    }
}

} // namespace tarvel
