#include "measure/bildsuche.h"

#include "measure/bildort.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

namespace {

/// Folder, name of that folder and name of a stored path. Rows travel between systems, so both
/// separators count.
struct Pfadteile {
    QString ordner;
    QString ordnername;
    QString name;
};

Pfadteile geteilt(const QString& pfad) {
    const auto trenner = [](const QString& text) {
        return std::max(text.lastIndexOf(u'/'), text.lastIndexOf(u'\\'));
    };
    const qsizetype vorName = trenner(pfad);
    const QString ordner = pfad.left(std::max<qsizetype>(vorName, 0));
    return {ordner, ordner.sliced(trenner(ordner) + 1), pfad.sliced(vorName + 1)};
}

QSize ausdehnung(const Flügelmessung& messung) {
    float x = 0;
    float y = 0;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (messung.punkte.gemessen(i)) {
            x = std::max(x, messung.punkte.PunktX[i]);
            y = std::max(y, messung.punkte.PunktY[i]);
        }
    }
    const auto pixel = [&messung](float wert) {
        // On the last pixel means at most its right end.
        return static_cast<int>(std::ceil(wert / static_cast<float>(messung.aufnahme.Zoomfaktor)));
    };
    return {pixel(x), pixel(y)};
}

} // namespace

std::vector<GesuchtesBild> gesuchteBilder(const Messreihe& reihe) {
    std::vector<GesuchtesBild> bilder;
    for (const auto& [nummer, messung] : reihe.messungen()) {
        if (messung.bilddatei.isEmpty()) {
            continue;
        }
        const auto gleiches = [&m = messung](const GesuchtesBild& b) {
            return b.pfad == m.bilddatei && b.kennung == m.bild;
        };
        auto bild = std::find_if(bilder.begin(), bilder.end(), gleiches);
        if (bild == bilder.end()) {
            bild = bilder.insert(bild, {.pfad = messung.bilddatei, .kennung = messung.bild});
        }
        bild->mindestens = bild->mindestens.expandedTo(ausdehnung(messung));
        bild->ohneBildhöhe = bild->ohneBildhöhe || messung.ohneBildhöhe;
    }
    return bilder;
}

GesuchtesBild gesuchtesBild(const Messreihe& reihe, const Flügelmessung& flügel) {
    for (const GesuchtesBild& bild : gesuchteBilder(reihe)) {
        if (bild.pfad == flügel.bilddatei && bild.kennung == flügel.bild) {
            return bild;
        }
    }
    return {.pfad = flügel.bilddatei, .kennung = flügel.bild};
}

void Bildsuche::setzeErgebnisdatei(const QString& pfad) {
    nebenErgebnissen_ = pfad.isEmpty() ? QString() : QFileInfo(pfad).absolutePath();
    vertraue(pfad);
}

void Bildsuche::vertraue(const QString& pfad) {
    if (const QString rechner = netzrechner(pfad); !rechner.isEmpty()) {
        rechner_.insert(rechner);
    }
}

bool Bildsuche::darfFragen(const QString& pfad) const {
    const QString rechner = netzrechner(pfad);
    return rechner.isEmpty() || rechner_.contains(rechner);
}

void Bildsuche::zeigeOrdner(const GesuchtesBild& bild, const QString& ordner) {
    gezeigt_.insert_or_assign(geteilt(bild.pfad).ordner, ordner);
    vertraue(ordner);
}

Bildfund Bildsuche::suche(const GesuchtesBild& bild) {
    Bildfund fund;
    const QStringList stellen = orte(bild);
    for (const QString& pfad : stellen) {
        if (!QFileInfo(Bildort::aus(pfad).datei).isFile()) {
            continue;
        }
        if (ist(pfad, bild)) {
            zuletzt_ = QFileInfo(pfad).absolutePath();
            return {Bildfund::Art::Gefunden, pfad};
        }
        if (fund.art == Bildfund::Art::Fehlt) {
            fund = {Bildfund::Art::AndererInhalt, pfad};
        }
    }
    return fund;
}

QStringList Bildsuche::orte(const GesuchtesBild& bild) const {
    const Pfadteile teile = geteilt(bild.pfad);
    QStringList liste;
    if (teile.name.isEmpty()) {
        return liste;
    }
    if (darfFragen(bild.pfad) && QFileInfo(bild.pfad).isAbsolute()) {
        liste += bild.pfad;
    }
    QStringList ordner;
    if (const auto gezeigt = gezeigt_.find(teile.ordner); gezeigt != gezeigt_.end()) {
        ordner += gezeigt->second;
    }
    ordner << nebenErgebnissen_ << zuletzt_;
    for (const auto& [früher, jetzt] : gezeigt_) {
        ordner += jetzt;
    }
    ordner.removeAll(QString());
    ordner.removeDuplicates();
    for (const QString& o : std::as_const(ordner)) {
        liste += QDir(o).filePath(teile.name);
        if (!teile.ordnername.isEmpty()) {
            liste += QDir(o).filePath(teile.ordnername + u'/' + teile.name);
        }
    }
    return liste;
}

bool Bildsuche::ist(const QString& pfad, const GesuchtesBild& bild) const {
    const QSize größe = bildgröße_(pfad);
    if (!größe.isValid() || (bild.kennung.größe.isValid() && größe != bild.kennung.größe)) {
        return false;
    }
    if (!bild.kennung.marke.isEmpty()) {
        return inhaltsmarke(Bildort::aus(pfad).datei) == bild.kennung.marke;
    }
    return größe.width() >= bild.mindestens.width() && größe.height() >= bild.mindestens.height();
}

bool Bildsuche::gehörtZu(const GesuchtesBild& bild, const QString& pfad,
                         const Bildkennung& kennung) const {
    if (!darfFragen(bild.pfad)) {
        return false;
    }
    if (bild.pfad == pfad) {
        return bild.ohneBildhöhe && ist(pfad, bild);
    }
    if (!bild.kennung.marke.isEmpty()) {
        return bild.kennung == kennung && Bildort::aus(bild.pfad).seite == Bildort::aus(pfad).seite;
    }
    const QFileInfo frühere(Bildort::aus(bild.pfad).datei);
    return geteilt(bild.pfad).name == geteilt(pfad).name &&
           !(frühere.isAbsolute() && frühere.exists()) && ist(pfad, bild);
}

} // namespace tarvel
