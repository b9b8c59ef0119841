#include "results/einfuhr.h"

#include "evaluation/beurteilung.h"
#include "evaluation/standarddatei.h"
#include "measure/messdatei.h"
#include "measure/textdatei.h"
#include "results/datenbankfehler.h"
#include "results/einlesen.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Line of a measurement file that fills a column.
int zeileZu(const QString& spalte) {
    constexpr std::array<std::pair<QStringView, int>, 6> zeilen{{{u"ZB_NR", 3},
                                                                 {u"U_NR", 6},
                                                                 {u"Z_NAME", 7},
                                                                 {u"B_NAME", 10},
                                                                 {u"VOLK", 11},
                                                                 {u"VATER", 12}}};
    const auto* const stelle = std::find_if(zeilen.begin(), zeilen.end(),
                                            [&](const auto& z) { return z.first == spalte; });
    return stelle == zeilen.end() ? 1 : stelle->second;
}

/// Whether the file was read all the same.
bool nurHinweis(const Leseproblem& problem) {
    return problem.grund == Lesegrund::AndererZeichensatz;
}

/// The next number has grown beyond its column, because the year was taken for part of it.
struct NummerZuLang {
    QString nummer;
};

Einfuhrbericht::Hinweis ablehnung(const Datenbankfehler& fehler, const Texte& texte) {
    const QString grund = meldungstext(texte, fehler);
    switch (fehler.grund()) {
    case Datenbankgrund::NummerDoppelt:
        return {zeileZu(u"U_NR"_s), grund};
    case Datenbankgrund::TextZuLang:
        return {zeileZu(fehler.einzelheit()), grund};
    default:
        return {std::nullopt, grund};
    }
}

} // namespace

Einfuhr::Einfuhr(const QString& DatenbankPfad, Einfuhrumgebung umgebung)
    : umgebung_(std::move(umgebung))
    , tabelle_(DatenbankPfad)
    , vorhanden_(QFile::exists(DatenbankPfad)) {
    if (vorhanden_) {
        tabelle_.öffneProbeweise();
    }
}

Einfuhrbericht Einfuhr::nimm(const QString& pfad) {
    const std::optional<QByteArray> bytes = dateiinhalt(pfad);
    if (!bytes) {
        Einfuhrbericht bericht;
        bericht.hinweise.push_back({1, textUnlesbar(pfad, umgebung_.satz.texte)});
        return bericht;
    }
    return nimmInhalt(*bytes, QFileInfo(pfad).fileName());
}

Einfuhrbericht Einfuhr::nimmInhalt(QByteArrayView bytes, const QString& herkunft) {
    const Texte& texte = umgebung_.satz.texte;
    Einfuhrbericht bericht;
    const Messdatei gelesen = liesMessdatei(bytes);
    for (const Leseproblem& problem : gelesen.probleme) {
        bericht.hinweise.push_back({problem.zeile, text(problem, texte)});
    }
    const bool fehlerlos =
        std::all_of(gelesen.probleme.begin(), gelesen.probleme.end(), nurHinweis);
    if (!gelesen.istMessdatei || !(fehlerlos || umgebung_.teilweise)) {
        return bericht;
    }
    versuche(bericht, [&] { speichere(gelesen, herkunft, bericht); });
    return bericht;
}

Einfuhrbericht Einfuhr::nimm(const Untersuchung& untersuchung) {
    Einfuhrbericht bericht;
    versuche(bericht, [&] { bericht.nummer = speichere(untersuchung, std::nullopt); });
    return bericht;
}

template <typename Handlung>
void Einfuhr::versuche(Einfuhrbericht& bericht, const Handlung& handlung) const {
    const Texte& texte = umgebung_.satz.texte;
    try {
        handlung();
    } catch (const Datenbankfehler& fehler) {
        bericht.hinweise.push_back(ablehnung(fehler, texte));
    } catch (const NummerZuLang& zuLang) {
        bericht.hinweise.push_back(
            {std::nullopt, texte(Meldung::NummerOhneKurzzeichen).arg(zuLang.nummer)});
    }
}

void Einfuhr::speichere(const Messdatei& datei, const QString& herkunft, Einfuhrbericht& bericht) {
    EingeleseneUntersuchung eingelesen =
        untersuchungAusMessdatei(datei, umgebung_.rasse, umgebung_.satz.format, herkunft);
    const bool verstanden = eingelesen.merkmaleVerstanden;
    bericht.nummer = speichere(std::move(eingelesen.untersuchung),
                               verstanden ? std::nullopt : std::optional(datei.merkmaltext));
    if (!verstanden) {
        bericht.hinweise.push_back(
            {std::nullopt,
             umgebung_.satz.texte(Meldung::ImportMerkmale).arg(zitat(datei.merkmaltext))});
    }
}

QString Einfuhr::speichere(Untersuchung untersuchung, const std::optional<QString>& merkmaltext) {
    const std::optional<bool> urteil = this->urteil(untersuchung);
    if (urteil) {
        Untersuchungszusatz zusatz = untersuchung.zusatz();
        zusatz.Grenzen =
            standardtext({umgebung_.satz.rassen.value(umgebung_.rasse), umgebung_.standard});
        untersuchung.setzeZusatz(zusatz);
    }
    Ergebnissatz satz =
        satzAus(untersuchung, urteil, umgebung_.auflösung, umgebung_.heute, umgebung_.satz);
    satz.MERKMAL = merkmaltext.value_or(satz.MERKMAL);
    const bool neu = !vorhanden_;
    if (neu) {
        NeueDatenbank(tabelle_.pfad());
    }
    try {
        QString nummer = speichere(satz);
        vorhanden_ = true;
        return nummer;
    } catch (...) {
        if (neu) {
            QFile::remove(tabelle_.pfad()); // nobody asked for an empty one
        }
        throw;
    }
}

QString Einfuhr::speichere(Ergebnissatz& satz) {
    if (satz.U_NR.trimmed().isEmpty()) {
        satz.U_NR = tabelle_.NächsteNummer(umgebung_.heute, umgebung_.kurzzeichen);
        if (satz.U_NR.size() > LängsteNummer) {
            throw NummerZuLang{satz.U_NR};
        }
    }
    const std::optional<Ergebnissatz> keine;
    if (!tabelle_.ersetze(satz, keine)) {
        throw Datenbankfehler(Datenbankgrund::NummerDoppelt, tabelle_.pfad(), satz.U_NR);
    }
    return satz.U_NR;
}

std::optional<bool> Einfuhr::urteil(const Untersuchung& untersuchung) const {
    return urteile(prüfling(untersuchung), umgebung_.standard, umgebung_.regeln)
        .beurteilung.urteil();
}

} // namespace tarvel
