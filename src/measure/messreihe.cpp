#include "measure/messreihe.h"

#include "measure/indexmuster.h"
#include "measure/koordinatendatei.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

template <typename Zeile>
auto suche(std::vector<Zeile>& zeilen, qint16 nummer) {
    return std::find_if(zeilen.begin(), zeilen.end(),
                        [nummer](const Zeile& z) { return z.nummer == nummer; });
}

/// Replaces the line of the same number where it stands, so that a wing measured again keeps its
/// place in the list.
template <typename Zeile>
void ersetzeOderHängeAn(std::vector<Zeile>& zeilen, Zeile neu) {
    if (auto alt = suche(zeilen, neu.nummer); alt != zeilen.end()) {
        *alt = std::move(neu);
        return;
    }
    const auto stelle = std::find_if(zeilen.begin(), zeilen.end(),
                                     [&neu](const Zeile& z) { return z.nummer > neu.nummer; });
    zeilen.insert(stelle, std::move(neu));
}

template <typename Zeile>
void entferne(std::vector<Zeile>& zeilen, qint16 nummer) {
    std::erase_if(zeilen, [nummer](const Zeile& z) { return z.nummer == nummer; });
}

template <typename Zeile>
QStringList texte(const std::vector<Zeile>& zeilen, const Zeilenwörter& wörter) {
    QStringList liste;
    liste.reserve(static_cast<qsizetype>(zeilen.size()));
    for (const Zeile& zeile : zeilen) {
        liste.append(zeilentext(zeile, wörter));
    }
    return liste;
}

template <typename Zeile>
void ordne(std::vector<Zeile>& zeilen) {
    std::erase_if(zeilen, [](const Zeile& z) {
        return z.nummer < 1 || z.nummer > Messreihe::HöchsteFlügelzahl;
    });
    std::stable_sort(zeilen.begin(), zeilen.end(),
                     [](const Zeile& a, const Zeile& b) { return a.nummer < b.nummer; });
    const auto gleich = [](const Zeile& a, const Zeile& b) { return a.nummer == b.nummer; };
    zeilen.erase(std::unique(zeilen.begin(), zeilen.end(), gleich), zeilen.end());
}

/// Brings a wing that was turned over about its own middle to its place. False when it does not lie
/// on a picture of that height.
bool legeAufBild(Flügelmessung& flügel, QSize größe) {
    const auto höhe = static_cast<float>(größe.height() * flügel.aufnahme.Zoomfaktor);
    const std::optional<Messpunkte> wieGelesen =
        gespiegelt(flügel.punkte, eigeneHöhe(flügel.punkte));
    const std::optional<Messpunkte> gelegt =
        wieGelesen ? gespiegelt(*wieGelesen, höhe) : std::nullopt;
    if (gelegt) {
        flügel.punkte = *gelegt;
        flügel.bild.größe = größe;
        flügel.ohneBildhöhe = false;
    }
    return gelegt.has_value();
}

/// @p wert where it is one, else the number of a line.
float chartwert(float wert, const QString& zeilenwert) {
    if (std::isfinite(wert) && wert != Chartwerte::KeinWert) {
        return wert;
    }
    const std::optional<double> zahl = getippteZahl(zeilenwert);
    return (zahl ? einfachGenau(*zahl) : std::nullopt).value_or(Chartwerte::KeinWert);
}

} // namespace

bool liegtAuf(const Flügelmessung& flügel, const QString& bilddatei, const Bildkennung& bild) {
    return flügel.bilddatei == bilddatei && verträglich(flügel.bild, bild) && !flügel.ohneBildhöhe;
}

Zeilenwörter zeilenwörter(const Texte& texte) {
    return {texte(Text::CI), texte(Text::HI), texte(Text::DV), texte(Text::Klasse)};
}

QString zeilentext(const CiZeile& zeile, const Zeilenwörter& wörter) {
    return dreistellig(zeile.nummer) + u"  "_s + wörter.CI + u'=' + zeile.wert + u"  "_s +
           wörter.Klasse + u' ' + zeile.klasse;
}

QString zeilentext(const HiDvZeile& zeile, const Zeilenwörter& wörter) {
    return dreistellig(zeile.nummer) + u"  "_s + wörter.HI + u'=' + zeile.hi + u"  "_s +
           wörter.Klasse + u' ' + zeile.klasse + u"   "_s + wörter.DV + u'=' + zeile.dv;
}

QStringList Messreihe::ciTexte(const Zeilenwörter& wörter) const {
    return texte(ciZeilen_, wörter);
}

QStringList Messreihe::hiDvTexte(const Zeilenwörter& wörter) const {
    return texte(hiDvZeilen_, wörter);
}

const Flügelmessung* Messreihe::messung(int nummer) const {
    const auto stelle = messungen_.find(nummer);
    return stelle == messungen_.end() ? nullptr : &stelle->second;
}

qint16 Messreihe::letzteNummer() const {
    qint16 letzte = 0;
    if (!ciZeilen_.empty()) {
        letzte = ciZeilen_.back().nummer;
    }
    if (!hiDvZeilen_.empty()) {
        letzte = std::max(letzte, hiDvZeilen_.back().nummer);
    }
    return letzte;
}

bool Messreihe::enthält(int nummer) const {
    const std::vector<int> alle = nummern();
    return std::find(alle.begin(), alle.end(), nummer) != alle.end();
}

std::vector<int> Messreihe::nummern() const {
    std::vector<int> alle;
    for (const CiZeile& z : ciZeilen_) {
        alle.push_back(z.nummer);
    }
    for (const HiDvZeile& z : hiDvZeilen_) {
        alle.push_back(z.nummer);
    }
    std::sort(alle.begin(), alle.end());
    alle.erase(std::unique(alle.begin(), alle.end()), alle.end());
    return alle;
}

std::optional<QChar> Messreihe::dezimalzeichen() const {
    const QString wert = !ciZeilen_.empty()     ? ciZeilen_.back().wert
                         : !hiDvZeilen_.empty() ? hiDvZeilen_.back().hi
                                                : QString();
    for (const QChar zeichen : {QChar(u','), QChar(u'.')}) {
        if (wert.contains(zeichen)) {
            return zeichen;
        }
    }
    return std::nullopt;
}

Indextexte indextexte(const Indizes& indizes, const Zahlenformat& format) {
    const auto text = [&format](const std::optional<float>& wert, QStringView form) {
        return wert ? Format(*wert, form, format) : QString();
    };
    return {text(indizes.CI, muster::CI), text(indizes.HI, muster::HI),
            text(indizes.DV, muster::DV)};
}

bool Messreihe::trageEin(qint16 nummer, const Indizes& indizes, const Flügelmessung& messung,
                         const Zahlenformat& vorgabe) {
    Q_ASSERT(nummer >= 1 && nummer <= HöchsteFlügelzahl);
    const bool hiUndDv = indizes.HI && indizes.DV;
    if (!indizes.CI && !hiUndDv) {
        return false;
    }
    Zahlenformat format = vorgabe;
    format.dezimal = dezimalzeichen().value_or(vorgabe.dezimal);
    const Indextexte texte = indextexte(indizes, format);
    // A wing measured again brings all its lines anew; a line it no longer has must not survive.
    Chartwerte werte;
    if (indizes.CI) {
        werte.CI = *indizes.CI;
        ersetzeOderHängeAn(
            ciZeilen_,
            {nummer, texte.CI, Format(klassenpositionCI(*indizes.CI), muster::Klasse, format)});
    } else {
        entferne(ciZeilen_, nummer);
    }
    if (hiUndDv) {
        werte.HI = *indizes.HI;
        werte.DV = *indizes.DV;
        ersetzeOderHängeAn(hiDvZeilen_,
                           {nummer, texte.HI,
                            Format(klassenpositionHI(*indizes.HI), muster::Klasse, format),
                            texte.DV});
    } else {
        entferne(hiDvZeilen_, nummer);
    }
    chartwerte_.at(nummer) = werte;
    messungen_.insert_or_assign(nummer, messung);
    geändert_ = true;
    return true;
}

void Messreihe::stelleHer(std::vector<CiZeile> ciZeilen, std::vector<HiDvZeile> hiDvZeilen,
                          const std::map<int, Chartwerte>& werte,
                          std::map<int, Flügelmessung> messungen,
                          std::map<int, Flügelangaben> angaben) {
    const auto wertVon = [&werte](qint16 nummer, float Chartwerte::*größe, const QString& text) {
        const auto stelle = werte.find(nummer);
        return chartwert(stelle == werte.end() ? Chartwerte::KeinWert : stelle->second.*größe,
                         text);
    };
    ciZeilen_ = std::move(ciZeilen);
    hiDvZeilen_ = std::move(hiDvZeilen);
    ordne(ciZeilen_);
    ordne(hiDvZeilen_);
    std::fill(chartwerte_.begin(), chartwerte_.end(), Chartwerte{});
    for (const CiZeile& z : ciZeilen_) {
        chartwerte_.at(z.nummer).CI = wertVon(z.nummer, &Chartwerte::CI, z.wert);
    }
    for (const HiDvZeile& z : hiDvZeilen_) {
        chartwerte_.at(z.nummer).HI = wertVon(z.nummer, &Chartwerte::HI, z.hi);
        chartwerte_.at(z.nummer).DV = wertVon(z.nummer, &Chartwerte::DV, z.dv);
    }
    const std::vector<int> alle = nummern();
    messungen_ = std::move(messungen);
    flügelangaben_ = std::move(angaben);
    const auto fremd = [&alle](const auto& eintrag) {
        return !std::binary_search(alle.begin(), alle.end(), eintrag.first);
    };
    std::erase_if(messungen_, fremd);
    std::erase_if(flügelangaben_, fremd);
    geändert_ = true;
}

bool Messreihe::löscheFlügel(int nummer) {
    if (!enthält(nummer)) {
        return false;
    }
    entferne(ciZeilen_, static_cast<qint16>(nummer));
    entferne(hiDvZeilen_, static_cast<qint16>(nummer));
    chartwerte_.at(nummer) = {};
    messungen_.erase(nummer);
    flügelangaben_.erase(nummer);
    geändert_ = true;
    return true;
}

bool Messreihe::lassAus(int nummer, bool aus) {
    if (!enthält(nummer) || ausgelassen(nummer) == aus) {
        return false;
    }
    flügelangaben_[nummer].ausgelassen = aus;
    geändert_ = true;
    return true;
}

bool Messreihe::ausgelassen(int nummer) const {
    const auto stelle = flügelangaben_.find(nummer);
    return stelle != flügelangaben_.end() && stelle->second.ausgelassen;
}

std::vector<int> Messreihe::gewertete() const {
    std::vector<int> liste = nummern();
    std::erase_if(liste, [this](int nummer) { return ausgelassen(nummer); });
    return liste;
}

std::vector<int> Messreihe::ausgelassene() const {
    std::vector<int> liste = nummern();
    std::erase_if(liste, [this](int nummer) { return !ausgelassen(nummer); });
    return liste;
}

std::optional<int> Messreihe::auflösung() const {
    const auto letzte =
        std::find_if(messungen_.rbegin(), messungen_.rend(),
                     [](const auto& messung) { return messung.second.punkte.begonnen(); });
    return letzte == messungen_.rend() ? std::nullopt : std::optional(letzte->second.aufnahme.dpi);
}

std::vector<Auflösungswechsel> Messreihe::auflösungswechsel(std::span<const int> nummern,
                                                            int dpi) const {
    std::vector<Auflösungswechsel> liste;
    for (const int nummer : nummern) {
        const Flügelmessung* m = messung(nummer);
        if (m == nullptr || !m->punkte.begonnen() || m->aufnahme.dpi == dpi) {
            continue;
        }
        const float vorher = chartwerte(nummer).DV;
        Auflösungswechsel wechsel{nummer, m->aufnahme.dpi, vorher, vorher};
        if (vorher != Chartwerte::KeinWert) {
            const auto DV = [m](int auflösung) {
                return berechneIndizes(m->punkte, m->messart, {m->aufnahme.Zoomfaktor, auflösung})
                    .DV;
            };
            // A value that was not computed from these points is only seen at another scale.
            wechsel.DVNachher =
                DV(m->aufnahme.dpi) == vorher
                    ? DV(dpi).value_or(vorher)
                    : static_cast<float>(static_cast<double>(vorher) * m->aufnahme.dpi / dpi);
        }
        liste.push_back(wechsel);
    }
    return liste;
}

bool Messreihe::setzeAuflösung(std::span<const int> nummern, int dpi) {
    Q_ASSERT(dpi > 0);
    const std::vector<Auflösungswechsel> liste = auflösungswechsel(nummern, dpi);
    for (const Auflösungswechsel& wechsel : liste) {
        messungen_.at(wechsel.nummer).aufnahme.dpi = dpi;
        if (wechsel.DVNachher == wechsel.DVVorher) {
            continue;
        }
        chartwerte_.at(wechsel.nummer).DV = wechsel.DVNachher;
        const auto zeile = suche(hiDvZeilen_, static_cast<qint16>(wechsel.nummer));
        const QChar dezimal = zeile->dv.contains(u',') ? u',' : u'.';
        zeile->dv = Format(wechsel.DVNachher, muster::DV, {.dezimal = dezimal});
    }
    geändert_ = geändert_ || !liste.empty();
    return !liste.empty();
}

std::vector<int> Messreihe::flügelAufBild(const QString& bilddatei, const Bildkennung& bild) const {
    std::vector<int> liste;
    for (const auto& [nummer, messung] : messungen_) {
        if (liegtAuf(messung, bilddatei, bild)) {
            liste.push_back(nummer);
        }
    }
    return liste;
}

bool Messreihe::verlegeBild(const QString& bilddatei, const Bildkennung& bild, const QString& jetzt,
                            QSize größe) {
    bool verlegt = false;
    for (auto& [nummer, messung] : messungen_) {
        const bool gemeint = messung.bilddatei == bilddatei && messung.bild == bild &&
                             (bilddatei != jetzt || messung.ohneBildhöhe);
        if (gemeint && (!messung.ohneBildhöhe || legeAufBild(messung, größe))) {
            messung.bilddatei = jetzt;
            verlegt = true;
        }
    }
    return verlegt;
}

void Messreihe::löscheAlle() {
    const bool warLeer = leer();
    ciZeilen_.clear();
    hiDvZeilen_.clear();
    std::fill(chartwerte_.begin(), chartwerte_.end(), Chartwerte{});
    messungen_.clear();
    flügelangaben_.clear();
    geändert_ = geändert_ || !warLeer;
}

} // namespace tarvel
