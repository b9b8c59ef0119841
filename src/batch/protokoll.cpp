#include "batch/protokoll.h"

#include "lang/sprachpaket.h"
#include "lang/zielwahl.h"
#include "print/protokolldruck.h"
#include "print/serie.h"
#include "print/serienquelle.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"

#include <QDir>

#include <set>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The words of the call, with the language pack of the settings laid over them.
void ladeTexte(Texte& texte, const Batchumgebung& umgebung, const Einstellungen& einstellungen) {
    texte.SpracheEinstellen(static_cast<int>(umgebung.texte.sprache().value_or(Sprache::Deutsch)));
    if (const QString pfad = einstellungen.text(Einstellung::Sprachpaket); !pfad.isEmpty()) {
        texte.setzePaket(ladeSprachpaket(pfad));
        if (!texte.paket()) {
            melde(umgebung, pfad, texte(Meldung::SprachpaketUnlesbar).arg(pfad));
        }
    }
}

/// Puts reports together and writes them.
class Protokolllauf {
public:
    Protokolllauf(const Protokollbefehl& befehl, const Batchumgebung& umgebung,
                  const Einstellungen& einstellungen, const Texte& texte)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , texte_(texte)
        , tabelle_(befehl.datenbank)
        , quelle_(einstellungen, texte, umgebung.format, umgebung.heute, befehl.datenbank) {
        const Grafikfehler fehler = quelle_.grafik().fehler();
        if (fehler != Grafikfehler::Keiner) {
            const QString& datei = quelle_.aussehen().briefkopf.Datei;
            tarvel::melde(umgebung, datei, texte_(meldung(fehler)).arg(datei));
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

    void nimm(const Ergebnissatz& satz) {
        const GeleseneUntersuchung gelesen = quelle_.lies(satz);
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
        zeilen_.push_back(serienzeile(quelle_.protokoll(gelesen, false)));
    }

    /// The report at a place of zeilen_, read anew since pictures of many would fill the memory.
    [[nodiscard]] Protokolldaten protokoll(std::size_t i) {
        const QString& nummer = nummern_.at(static_cast<qsizetype>(i));
        const auto satz = tabelle_.lade(nummer);
        if (!satz) {
            throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, befehl_.datenbank, nummer);
        }
        return quelle_.protokoll(quelle_.lies(*satz), true);
    }

    [[nodiscard]] Status schreibeEine() {
        if (zeilen_.empty()) {
            return Status::NichtLesbar;
        }
        const bool eines = zeilen_.size() == 1;
        return schreibe(umgebung_, befehl_.pdf,
                        eines ? protokollAlsPdf(protokoll(0), quelle_.grafik())
                              : serieAlsPdf(
                                    zeilen_, [this](std::size_t i) { return protokoll(i); },
                                    quelle_.aussehen(), quelle_.grafik(), texte_));
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
                                                protokollAlsPdf(protokoll(p), quelle_.grafik()));
            status = geschrieben == Status::Gut ? status : geschrieben;
        }
        return status;
    }

    const Protokollbefehl& befehl_;
    const Batchumgebung& umgebung_;
    const Texte& texte_;
    Ergebnistabelle tabelle_;
    Serienquelle quelle_;
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
        Texte texte{QString()};
        ladeTexte(texte, umgebung, *einstellungen);
        return Protokolllauf(befehl, umgebung, *einstellungen, texte).führeAus();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel
