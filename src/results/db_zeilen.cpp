// What the browser does with several rows: reports, CSV, deletion, one field of all, spellings.

#include "results/db.h"

#include "lang/zielwahl.h"
#include "platform/dateiausgabe.h"
#include "platform/fortschritt.h"
#include "results/ergebnisgitter.h"
#include "results/ergebnismenues.h"
#include "results/zeilendialoge.h"

#include <QDir>
#include <QFileInfo>

#include <map>
#include <memory>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

void DB::zeilenbefehl(int index) {
    switch (index) {
    case Ergebnismenüs::ZelleÄndern:
        grid_->beginneEingabe();
        break;
    case Ergebnismenüs::ProtokolleEinPdf:
        schreibeProtokolle(false);
        break;
    case Ergebnismenüs::ProtokolleEinzeln:
        schreibeProtokolle(true);
        break;
    case Ergebnismenüs::GewählteExportieren:
        exportiere(gewählteIds());
        break;
    case Ergebnismenüs::FeldÄndern:
        ändereFeld();
        break;
    case Ergebnismenüs::Schreibweisen:
        führeZusammen();
        break;
    default:
        break;
    }
}

/// The places of the chosen rows in the order in which they are shown.
std::vector<qint64> DB::gewählteIds() {
    std::vector<qint64> ids;
    for (const int zeile : gewählteZeilen()) {
        ids.push_back(modell_.id(zeile));
    }
    return ids;
}

/// What came of a long work; what failed is listed.
void DB::berichte(const QString& titel, const QString& text, const QStringList& gescheitert) {
    if (gescheitert.isEmpty()) {
        umgebung_.dialoge.meldung(titel, text, Meldungsart::Hinweis);
    } else {
        umgebung_.dialoge.bericht(titel, text + u'\n' + umgebung_.texte(Meldung::ImportHinweise),
                                  gescheitert);
    }
}

/// What several rows went through is undone in one.
void DB::merke(const Rücknahme& rücknahme) {
    if (!rücknahme.leer()) {
        modell_.rücknahmen().push_back(rücknahme);
    }
}

void DB::löscheMehrere(const QList<int>& zeilen) {
    const Texte& texte = umgebung_.texte;
    const QString titel = texte(Text::ZeileLöschen);
    const QString zahl = sprachraum(texte).toString(zeilen.size());
    if (umgebung_.dialoge.frage({.titel = titel,
                                 .text = texte(Meldung::MehrereLöschenFrage).arg(zahl),
                                 .verwirft = true}) != Antwort::Ja) {
        return;
    }
    auto fortschritt = std::make_unique<Fortschritt>(this, titel, texte(Text::Abbrechen),
                                                     static_cast<int>(zeilen.size()));
    Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    Rücknahme rücknahme;
    QStringList gescheitert;
    int gelöscht = 0;
    int schritt = 0;
    for (const int zeile : zeilen) {
        if (!fortschritt->weiter(
                schritt, texte(Meldung::LöschenFortschritt)
                             .arg(QString::number(schritt + 1), QString::number(zeilen.size())))) {
            break;
        }
        ++schritt;
        const auto satz = modell_.gezeigte(zeile);
        try {
            if (!satz) {
                throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, umgebung_.DatenbankPfad);
            }
            rücknahme += tabelle.lösche(*satz);
            ++gelöscht;
        } catch (const Datenbankfehler& fehler) {
            gescheitert << (satz ? satz->werte.front().trimmed() + u": "_s : QString()) +
                               meldungstext(texte, fehler);
        }
    }
    fortschritt.reset();
    gemerkt_.reset();
    merke(rücknahme);
    zeigeNeu();
    if (gelöscht < zeilen.size()) {
        berichte(titel, texte(Meldung::GelöschtFertig).arg(QString::number(gelöscht), zahl),
                 gescheitert);
    }
}

/// Changes rows one after the other, each of them whole or not at all. @p ändere is false for a row
/// that is to stay as it is.
void DB::trageEin(const QString& titel, const std::vector<qint64>& ids,
                  const std::function<bool(Ergebnismodell::Zeile&)>& ändere) {
    const Texte& texte = umgebung_.texte;
    const auto anzahl = static_cast<int>(ids.size());
    auto fortschritt = std::make_unique<Fortschritt>(this, titel, texte(Text::Abbrechen), anzahl);
    Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    Rücknahme rücknahme;
    QStringList gescheitert;
    int geändert = 0;
    for (int i = 0; i < anzahl; ++i) {
        if (!fortschritt->weiter(i, texte(Meldung::ÄndernFortschritt)
                                        .arg(QString::number(i + 1), QString::number(anzahl)))) {
            break;
        }
        QString nummer;
        try {
            const auto zeilen = tabelle.zeilen({ids[static_cast<std::size_t>(i)]});
            if (zeilen.empty()) {
                throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, umgebung_.DatenbankPfad);
            }
            nummer = zeilen.front().werte.front().trimmed() + u": "_s;
            Ergebnismodell::Zeile neu = zeilen.front();
            if (!ändere(neu)) {
                continue;
            }
            Grid_BeforeUpdate(neu);
            rücknahme += tabelle.ändere(zeilen.front(), neu);
            ++geändert;
        } catch (const Ergebnistabelle::Zeilenkonflikt&) {
            gescheitert << nummer + texte(Meldung::ZeileInzwischenGeändert);
        } catch (const Datenbankfehler& fehler) {
            gescheitert << nummer + meldungstext(texte, fehler);
        }
    }
    fortschritt.reset();
    merke(rücknahme);
    zeigeNeu();
    berichte(titel,
             texte(Meldung::GeändertFertig)
                 .arg(sprachraum(texte).toString(geändert), sprachraum(texte).toString(anzahl)),
             gescheitert);
}

void DB::ändereFeld() {
    const Texte& texte = umgebung_.texte;
    const QList<int> zeilen = gewählteZeilen();
    const std::vector<qint64> ids = gewählteIds();
    const auto bisher = [&](Ergebnisspalte spalte) -> std::optional<QString> {
        std::optional<QString> gemeinsam;
        for (const int zeile : zeilen) {
            const QString text =
                modell_.index(zeile, static_cast<int>(spalte)).data(Qt::EditRole).toString();
            if (gemeinsam && *gemeinsam != text) {
                return std::nullopt;
            }
            gemeinsam = text;
        }
        return gemeinsam;
    };
    Feldänderung dialog(texte, static_cast<int>(zeilen.size()), umgebung_.rassen, bisher, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const auto stelle = static_cast<std::size_t>(dialog.spalte());
    trageEin(dialog.windowTitle(), ids, [&](Ergebnismodell::Zeile& zeile) {
        zeile.werte.at(stelle) = dialog.wert();
        return true;
    });
}

void DB::führeZusammen() {
    const Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    const auto gruppen = [&](Ergebnisspalte spalte) -> std::vector<Schreibweisen> {
        try {
            return gruppiereSchreibweisen(tabelle.schreibweisen(static_cast<int>(spalte)));
        } catch (const Datenbankfehler& fehler) {
            meldeFehler(fehler);
            return {};
        }
    };
    Schreibweisenwahl dialog(umgebung_.texte, gruppen, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const auto spalte = static_cast<int>(dialog.spalte());
    std::map<QString, QString> ersatz;
    for (const auto& eine : dialog.gewählte()) {
        for (const QString& wort : eine.von) {
            ersatz[wort] = eine.nach;
        }
    }
    QStringList worte;
    for (const auto& [von, nach] : ersatz) {
        worte << von;
    }
    try {
        trageEin(dialog.windowTitle(), tabelle.zeilenMit(spalte, worte),
                 [&](Ergebnismodell::Zeile& zeile) {
                     QString& text = zeile.werte.at(static_cast<std::size_t>(spalte));
                     const auto neu = ersatz.find(text);
                     if (neu == ersatz.end()) {
                         return false;
                     }
                     text = neu->second;
                     return true;
                 });
    } catch (const Datenbankfehler& fehler) {
        meldeFehler(fehler);
    }
}

/// As one file behind a summary, or each into a folder.
void DB::schreibeProtokolle(bool einzeln) {
    const Texte& texte = umgebung_.texte;
    QString titel = texte(einzeln ? Meldung::ProtokolleEinzeln : Meldung::ProtokolleEinPdf);
    titel.remove(u" …"_s);
    const QFileInfo quelle(umgebung_.DatenbankPfad);
    const QString ziel = einzeln ? umgebung_.dialoge.wähleOrdner(titel, ordner())
                                 : wähleZiel(texte, umgebung_.dialoge,
                                             {.titel = titel,
                                              .vorschlag = quelle.absoluteDir().filePath(
                                                  quelle.completeBaseName() + u".pdf"_s),
                                              .muster = texte(Meldung::PdfDateien) + u" (*.pdf)"_s,
                                              .endungen = {u".pdf"_s}});
    if (ziel.isEmpty()) {
        return;
    }
    const std::vector<qint64> ids = gewählteIds();
    const auto anzahl = static_cast<int>(ids.size());
    auto fortschritt = std::make_unique<Fortschritt>(this, titel, texte(Text::Abbrechen), anzahl);
    const std::unique_ptr<Protokollserie> serie = umgebung_.protokolle();
    QStringList gescheitert;
    std::set<QString> vergeben;
    int geschrieben = 0;
    int schritt = 0;
    bool abgebrochen = false;
    const auto schreibe = [&](const QString& pfad, const QByteArray& pdf) {
        const auto grund = pdf.isEmpty() ? std::optional(QString()) : schreibeDatei(pfad, pdf);
        if (grund) {
            gescheitert << nichtGeschrieben(texte, pfad, *grund);
        }
        return !grund;
    };
    const auto nimm = [&](const Ergebnissatz& satz) {
        const QString stand = texte(Meldung::ProtokollFortschritt)
                                  .arg(QString::number(schritt + 1), QString::number(anzahl));
        abgebrochen = !fortschritt->weiter(schritt++, stand);
        if (abgebrochen) {
            return false;
        }
        const QString nummer = satz.U_NR.trimmed();
        if (const QString grund = serie->nimm(satz); !grund.isEmpty()) {
            gescheitert << nummer + u": "_s + grund;
            return true;
        }
        if (!einzeln) {
            ++geschrieben;
            return true;
        }
        // Numbers that differ only in what a file name cannot hold, or in case.
        QString name = alsDateiname(nummer) + u".pdf"_s;
        for (int i = 2; !vergeben.insert(name.toLower()).second; ++i) {
            name = alsDateiname(nummer) + u'-' + QString::number(i) + u".pdf"_s;
        }
        const QString pfad = QDir(ziel).filePath(name);
        if (darfErsetzen(texte, umgebung_.dialoge, titel, pfad) &&
            schreibe(pfad, serie->einzeln())) {
            ++geschrieben;
        }
        return true;
    };
    try {
        Ergebnistabelle(umgebung_.DatenbankPfad).sätze(ids, nimm, [&](const QString& nummer) {
            ++schritt;
            gescheitert << texte(Meldung::UntersuchungZuGroß).arg(nummer);
        });
    } catch (const Datenbankfehler& fehler) {
        gescheitert << meldungstext(texte, fehler);
    }
    if (!einzeln && (abgebrochen || geschrieben == 0 || !schreibe(ziel, serie->alle()))) {
        geschrieben = 0;
    }
    fortschritt.reset();
    if (!abgebrochen || einzeln) {
        berichte(titel,
                 texte(Meldung::ProtokolleFertig)
                     .arg(QString::number(geschrieben), QString::number(anzahl)),
                 gescheitert);
    }
}

} // namespace tarvel
