#include "batch/protokoll.h"

#include "lang/protokolltexte.h"
#include "lang/sprachpaket.h"
#include "lang/zielwahl.h"
#include "measure/fluegelbilder.h"
#include "print/protokolldaten.h"
#include "print/protokolldruck.h"
#include "print/serie.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QDir>

#include <optional>
#include <set>
#include <variant>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Protokolltexte protokolltexte(const Einstellungen& einstellungen, const Texte& texte) {
    Protokolltexte worte = ProtokolltexteStandard(texte);
    if (!einstellungen.schalter(Einstellung::Übersetzen)) {
        return worte;
    }
    ÜbersetzungLaden(einstellungen.IniPfad(), worte.felder);
    return ProtokolltexteÜbersetzt(worte.felder);
}

std::optional<Bilddatei> öffneScan(const QString& pfad) {
    auto offen = Bilddatei::öffne(pfad);
    auto* datei = std::get_if<Bilddatei>(&offen);
    return datei != nullptr && datei->pixel(nullptr) != nullptr ? std::optional(std::move(*datei))
                                                                : std::nullopt;
}

/// Puts reports together and writes them.
class Ausgabe {
public:
    Ausgabe(const Protokollbefehl& befehl, const Batchumgebung& umgebung,
            const Einstellungen& einstellungen)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , einstellungen_(einstellungen)
        , tabelle_(befehl.datenbank)
        , texte_(QString())
        , aussehen_(ladeProtokolleinstellungen(einstellungen))
        , grafik_(aussehen_.briefkopf)
        , suche_([](const QString& pfad) { return Bilddatei::liesGröße(pfad).value_or(QSize()); }) {
        texte_.SpracheEinstellen(
            static_cast<int>(umgebung.texte.sprache().value_or(Sprache::Deutsch)));
        if (const QString pfad = einstellungen.text(Einstellung::Sprachpaket); !pfad.isEmpty()) {
            texte_.setzePaket(ladeSprachpaket(pfad));
            if (!texte_.paket()) {
                tarvel::melde(umgebung, pfad, texte_(Meldung::SprachpaketUnlesbar).arg(pfad));
            }
        }
        worte_ = protokolltexte(einstellungen, texte_);
        suche_.setzeErgebnisdatei(befehl.datenbank);
        suche_.vertraue(befehl.datenbank);
        if (grafik_.fehler() != Grafikfehler::Keiner) {
            const QString& datei = aussehen_.briefkopf.Datei;
            tarvel::melde(umgebung, datei, texte_(meldung(grafik_.fehler())).arg(datei));
        }
    }

    Status führeAus() {
        if (befehl_.nummern.isEmpty()) {
            tabelle_.sätze(
                tabelle_.zeilenfolge(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}),
                [this](const Ergebnissatz& satz) {
                    nimm(satz);
                    return true;
                },
                [this](const QString& nummer) {
                    melde(texte_(Meldung::UntersuchungZuGroß).arg(nummer));
                });
        }
        for (const QString& nummer : befehl_.nummern) {
            if (const auto satz = tabelle_.lade(nummer)) {
                nimm(*satz);
            } else {
                melde(meldungstext(texte_, Datenbankfehler(Datenbankgrund::UntersuchungFehlt,
                                                           befehl_.datenbank, nummer)));
            }
        }
        const Status geschrieben = befehl_.ordner.isEmpty() ? schreibeEine() : schreibeJede();
        return status_ == Status::Gut ? geschrieben : status_;
    }

private:
    void melde(const QString& text) {
        tarvel::melde(umgebung_, befehl_.datenbank, text);
        status_ = Status::NichtLesbar;
    }

    [[nodiscard]] GeleseneUntersuchung lies(const Ergebnissatz& satz) const {
        return untersuchungAus(satz, {.texte = texte_,
                                      .format = umgebung_.format,
                                      .rassen = aussehen_.rassen,
                                      .OhneHaarlänge = aussehen_.regeln.OhneHaarlänge});
    }

    [[nodiscard]] Protokolldaten daten(const GeleseneUntersuchung& gelesen, bool mitAnhang) {
        Untersuchung untersuchung;
        untersuchung.lade(gelesen.angaben, gelesen.reihe, gelesen.merkmale, gelesen.datum,
                          gelesen.zusatz);
        Protokolleinstellungen aussehen = aussehen_;
        aussehen.Anhang = aussehen_.Anhang && mitAnhang;
        Flügelbilder bilder({.suche = suche_, .öffne = öffneScan}, untersuchung.reihe());
        return protokolldaten(
            {.untersuchung = untersuchung,
             .standard = ladeRassestandard(untersuchung.angaben().Rasse + 1, einstellungen_),
             .einstellungen = aussehen,
             .texte = texte_,
             .protokolltexte = worte_,
             .format = umgebung_.format,
             .heute = umgebung_.heute,
             .bild = [&bilder](const Flügelmessung& flügel, const QRect& ausschnitt) {
                 return bilder.hole(flügel, ausschnitt);
             }});
    }

    void nimm(const Ergebnissatz& satz) {
        const GeleseneUntersuchung gelesen = lies(satz);
        const QString nummer = satz.U_NR.trimmed();
        if (!gelesen.nichtGelesen.isEmpty()) {
            tarvel::melde(umgebung_, befehl_.datenbank,
                          texte_(Meldung::UntersuchungTeilweise)
                              .arg(nummer, spaltennamen(texte_, gelesen.nichtGelesen)));
        }
        if (gelesen.reihe.leer() && gelesen.merkmale.leer()) {
            melde(nummer + u": "_s + texte_(Meldung::ProtokollOhneFlügel));
            return;
        }
        nummern_ << satz.U_NR;
        zeilen_.push_back(serienzeile(daten(gelesen, false)));
    }

    /// The report at a place of zeilen_, read anew since pictures of many would fill the memory.
    [[nodiscard]] Protokolldaten protokoll(std::size_t i) {
        const QString& nummer = nummern_.at(static_cast<qsizetype>(i));
        const auto satz = tabelle_.lade(nummer);
        if (!satz) {
            throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, befehl_.datenbank, nummer);
        }
        return daten(lies(*satz), true);
    }

    [[nodiscard]] Status schreibeEine() {
        if (zeilen_.empty()) {
            return Status::NichtLesbar;
        }
        const bool eines = zeilen_.size() == 1;
        return schreibe(umgebung_, befehl_.pdf,
                        eines ? protokollAlsPdf(protokoll(0), grafik_)
                              : serieAlsPdf(
                                    zeilen_, [this](std::size_t i) { return protokoll(i); },
                                    aussehen_, grafik_, texte_));
    }

    [[nodiscard]] Status schreibeJede() {
        Status status = Status::Gut;
        std::set<QString> vergeben;
        for (std::size_t p = 0; p < zeilen_.size(); ++p) {
            const QString stamm = alsDateiname(zeilen_[p].nummer);
            QString name = stamm + u".pdf"_s;
            for (int i = 2; !vergeben.insert(name.toLower()).second; ++i) {
                name = stamm + u'-' + QString::number(i) + u".pdf"_s;
            }
            const Status geschrieben = schreibe(umgebung_, QDir(befehl_.ordner).filePath(name),
                                                protokollAlsPdf(protokoll(p), grafik_));
            status = geschrieben == Status::Gut ? status : geschrieben;
        }
        return status;
    }

    const Protokollbefehl& befehl_;
    const Batchumgebung& umgebung_;
    const Einstellungen& einstellungen_;
    Ergebnistabelle tabelle_;
    Texte texte_;
    Protokolleinstellungen aussehen_;
    Protokolltexte worte_;
    Briefkopfgrafik grafik_;
    Bildsuche suche_;
    QStringList nummern_; ///< of the examinations that can be printed
    std::vector<Serienzeile> zeilen_;
    Status status_ = Status::Gut;
};

} // namespace

Status schreibeProtokoll(const Protokollbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    try {
        return Ausgabe(befehl, umgebung, *einstellungen).führeAus();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
