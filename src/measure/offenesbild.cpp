#include "measure/offenesbild.h"

#include "measure/bildaufloesung.h"
#include "measure/bildmarke.h"
#include "measure/bildort.h"

#include <QFileInfo>

#include <algorithm>

namespace tarvel {

OffenesBild::OffenesBild(const Texte& texte, Dialoge& dialoge, QWidget& fenster,
                         Messbefehle& befehle)
    : befehle_(befehle)
    , zugang_(texte, dialoge, fenster) {}

QString OffenesBild::pfad() const {
    return datei_ ? datei_->pfad() : QString();
}

QSize OffenesBild::größe() const {
    return datei_ ? datei_->größe() : QSize();
}

QImage OffenesBild::übersicht() const {
    return datei_ ? datei_->übersicht() : QImage();
}

std::optional<int> OffenesBild::auflösung() const {
    return datei_ ? auflösung_ : std::nullopt;
}

const QImage* OffenesBild::pixel() {
    return datei_ ? zugang_.pixel(*datei_) : nullptr;
}

std::shared_ptr<Pixelladung> OffenesBild::ladung() const {
    return datei_ ? datei_->ladung() : nullptr;
}

Scanquelle OffenesBild::scanquelle() {
    return {.suche = zugang_.suche(),
            .öffne = [this](const QString& pfad) { return zugang_.öffneStill(pfad, true); },
            .offener = [this](const Flügelmessung& flügel) -> std::optional<const QImage*> {
                return datei_ && liegtAuf(flügel, pfad(), flügel.bild) ? std::optional(pixel())
                                                                       : std::nullopt;
            }};
}

bool OffenesBild::öffne(const QString& pfad, bool ganz) {
    std::optional<Bilddatei> datei = zugang_.öffne(pfad, ganz);
    if (!datei) {
        return false;
    }
    nimm(std::move(*datei));
    return true;
}

void OffenesBild::nimm(Bilddatei datei) {
    datei_ = std::move(datei);
    const QString name = Bildort::aus(datei_->pfad()).datei;
    auflösung_ = bildauflösung(name);
    befehle_.zeigtBild({.größe = datei_->größe(), .marke = inhaltsmarke(name)});
    wechselt_ = true;
    ordneFlügelZu();
    wechselt_ = false;
    beiWechsel_();
}

void OffenesBild::ordneFlügelZu() {
    if (!datei_) {
        return;
    }
    const QString pfad = datei_->pfad();
    for (const GesuchtesBild& bild : gesuchteBilder(befehle_.reihe())) {
        if (zugang_.suche().gehörtZu(bild, pfad, befehle_.messung().bild())) {
            // measured where the picture was before
            befehle_.verlegeBild(bild, pfad, datei_->größe(), true);
        }
    }
}

QString OffenesBild::finde(const GesuchtesBild& gesucht) {
    QString jetzt = zugang_.finde(gesucht);
    if (!jetzt.isEmpty()) {
        // A picture of that name which is open is another one.
        befehle_.verlegeBild(gesucht, jetzt, zugang_.suche().größe(jetzt), gesucht.pfad != pfad());
    }
    return jetzt;
}

QString OffenesBild::finde(const Flügelmessung& flügel) {
    return finde(gesuchtesBild(befehle_.reihe(), flügel));
}

QString OffenesBild::findeWieder(const QString& pfad) {
    const Bildkennung& kennung = befehle_.messung().stand().bild;
    const QString datei = Bildort::aus(pfad).datei;
    if (QFileInfo(datei).isFile() &&
        (kennung.marke.isEmpty() || inhaltsmarke(datei) == kennung.marke)) {
        return pfad;
    }
    const auto& messungen = befehle_.reihe().messungen();
    const auto flügel = std::find_if(messungen.begin(), messungen.end(), [&](const auto& m) {
        return m.second.bilddatei == pfad && verträglich(m.second.bild, kennung);
    });
    return flügel == messungen.end() ? finde(GesuchtesBild{.pfad = pfad, .kennung = kennung})
                                     : finde(flügel->second);
}

bool OffenesBild::öffneLetztes(const QString& pfad) {
    QStringList orte;
    if (!pfad.isEmpty()) {
        zugang_.suche().vertraue(pfad);
        orte += pfad;
    }
    if (const auto& messungen = befehle_.reihe().messungen();
        !messungen.empty() && !messungen.rbegin()->second.bilddatei.isEmpty()) {
        const GesuchtesBild gesucht = gesuchtesBild(befehle_.reihe(), messungen.rbegin()->second);
        if (const Bildfund fund = zugang_.suche().suche(gesucht);
            fund.art == Bildfund::Art::Gefunden) {
            befehle_.verlegeBild(gesucht, fund.pfad, zugang_.suche().größe(fund.pfad), true);
            orte += fund.pfad;
        }
    }
    for (const QString& ort : std::as_const(orte)) {
        if (std::optional<Bilddatei> datei = zugang_.öffneStill(ort)) {
            nimm(std::move(*datei));
            return true;
        }
    }
    return false;
}

} // namespace tarvel
