#include "results/sammlungsquelle.h"

#include "measure/textdatei.h"
#include "results/jetdatei.h"
#include "results/tabelleneinfuhr.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

bool istSqlite(const QString& pfad) {
    constexpr QByteArrayView Anfang("SQLite format 3");
    QFile datei(pfad);
    return QFileInfo(pfad).isFile() && datei.open(QIODevice::ReadOnly) &&
           datei.read(Anfang.size()) == Anfang;
}

Sammlungsquelle ausTabelle(const QString& pfad, Tabelleninhalt inhalt, const Texte& texte) {
    Sammlungsquelle s;
    s.datum = inhalt.datum;
    if (!inhalt.fremdeSpalten.isEmpty()) {
        s.hinweise << texte(Meldung::TabelleSpalten).arg(inhalt.fremdeSpalten.join(u", "_s));
    }
    for (const Zeilenproblem& problem : inhalt.probleme) {
        s.hinweise << problemtext(problem, texte);
    }
    s.quelle = std::make_unique<Satzliste>(QFileInfo(pfad).fileName(), std::move(inhalt.sätze));
    return s;
}

} // namespace

Sammlungsquelle öffneSammlung(const QString& pfad, const QString& DatenbankPfad,
                              std::optional<Tagesfolge> folge, const QDate& heute,
                              const Texte& texte, const std::function<bool()>& weiter) {
    Sammlungsquelle s;
    const QString name = QDir::toNativeSeparators(pfad);
    if (istJetDatei(pfad)) {
        Jetinhalt jet = liesJetDatei(pfad, weiter);
        Tabelleninhalt inhalt = liesTabelle(jet.tabelle, Tagesfolge::MonatZuerst, heute);
        if (jet.ausgang == Jetinhalt::Ausgang::Gelesen && inhalt.istTabelle) {
            return ausTabelle(pfad, std::move(inhalt), texte);
        }
        if (jet.ausgang != Jetinhalt::Ausgang::Abgebrochen) {
            s.grund = jet.ausgang == Jetinhalt::Ausgang::OhneProgramm
                          ? texte(Meldung::JetOhneProgramm).arg(name)
                          : texte(Meldung::JetUnlesbar).arg(name, jet.meldung);
        }
        return s;
    }
    if (!istSqlite(pfad)) {
        const auto bytes = dateiinhalt(pfad, GrößteTabelle);
        Tabelleninhalt inhalt = bytes ? liesTabelle(*bytes, folge, heute) : Tabelleninhalt();
        if (inhalt.istTabelle) {
            return ausTabelle(pfad, std::move(inhalt), texte);
        }
        const QString endung = QFileInfo(pfad).suffix().toLower();
        if (bytes && (endung == u"csv"_s || endung == u"txt"_s || endung == u"tsv"_s)) {
            s.grund = texte(Meldung::TabelleKeine).arg(name);
            return s;
        }
    }
    s.quelle = std::make_unique<Dateiquelle>(pfad, DatenbankPfad);
    return s;
}

} // namespace tarvel
