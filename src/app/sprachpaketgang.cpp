#include "app/sprachpaketgang.h"

#include "lang/zielwahl.h"
#include "platform/dateiausgabe.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString muster(const Texte& t) {
    return t(Meldung::SprachpaketDateien) + u" (*.txt)"_s;
}

} // namespace

void Sprachpaketgang::führeAus(Paketwunsch wunsch) {
    switch (wunsch) {
    case Paketwunsch::Laden:
        lade();
        break;
    case Paketwunsch::Vorlage:
        schreibeVorlage();
        break;
    case Paketwunsch::Ablegen:
        umgebung_.einstellungen.schreibe(Einstellung::Sprachpaket, QString());
        umgebung_.texte.setzePaket(std::nullopt);
        break;
    }
}

void Sprachpaketgang::bringeZurück(const Einstellungen& einstellungen, Texte& texte,
                                   Dialoge& dialoge) {
    const QString pfad = einstellungen.text(Einstellung::Sprachpaket);
    if (pfad.isEmpty()) {
        return;
    }
    std::optional<Sprachpaket> paket = ladeSprachpaket(pfad);
    if (!paket) {
        dialoge.meldung(texte(Meldung::Sprachpaket),
                        texte(Meldung::SprachpaketUnlesbar).arg(QDir::toNativeSeparators(pfad)),
                        Meldungsart::Ausruf);
    }
    texte.setzePaket(std::move(paket));
}

void Sprachpaketgang::lade() {
    Texte& t = umgebung_.texte;
    const QString bisher = umgebung_.einstellungen.text(Einstellung::Sprachpaket);
    const QString pfad = umgebung_.dialoge.wähleDatei(
        t(Meldung::Sprachpaket), bisher.isEmpty() ? QString() : QFileInfo(bisher).path(),
        muster(t));
    if (pfad.isEmpty()) {
        return;
    }
    std::optional<Sprachpaket> paket = ladeSprachpaket(pfad);
    if (!paket) {
        umgebung_.dialoge.meldung(t(Meldung::Sprachpaket),
                                  t(Meldung::SprachpaketKeins).arg(QDir::toNativeSeparators(pfad)),
                                  Meldungsart::Ausruf);
        return;
    }
    umgebung_.einstellungen.schreibe(Einstellung::Sprachpaket, pfad);
    const std::vector<int> abgewiesen = paket->abgewiesen;
    t.setzePaket(std::move(paket));
    if (!abgewiesen.empty()) {
        constexpr std::size_t Genannte = 10;
        QStringList nummern;
        for (std::size_t i = 0; i < std::min(Genannte, abgewiesen.size()); ++i) {
            nummern << QString::number(abgewiesen[i]);
        }
        nummern << (abgewiesen.size() > Genannte ? QStringList{u"…"_s} : QStringList());
        umgebung_.dialoge.meldung(
            t(Meldung::Sprachpaket),
            t(Meldung::SprachpaketAbgewiesen)
                .arg(QString::number(abgewiesen.size()), nummern.join(u", "_s), u"%1"_s),
            Meldungsart::Ausruf);
    }
}

void Sprachpaketgang::schreibeVorlage() {
    const Texte& t = umgebung_.texte;
    const QString pfad = wähleZiel(t, umgebung_.dialoge,
                                   {.titel = t(Meldung::Sprachpaket),
                                    .vorschlag = u"Tarvel.txt"_s,
                                    .muster = muster(t),
                                    .endungen = {u".txt"_s}});
    if (pfad.isEmpty()) {
        return;
    }
    if (const auto grund = schreibeDatei(pfad, sprachpaketvorlage(t))) {
        umgebung_.dialoge.meldung(t(Meldung::Sprachpaket), nichtGeschrieben(t, pfad, *grund),
                                  Meldungsart::Ausruf);
    }
}

} // namespace tarvel
