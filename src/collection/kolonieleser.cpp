#include "collection/kolonieleser.h"

#include "collection/inhaltsmarke.h"
#include "collection/koloniespeicher.h"
#include "platform/dateiausgabe.h"
#include "platform/dateistand.h"
#include "results/ergebnisdatei.h"
#include "results/satzzugriff.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds Wartezeit(2);
constexpr int Gruppe = 256;      ///< rows between which the file is closed
constexpr int MeisteDateien = 8; ///< results files whose figures are kept

/// What tells without reading the rows whether a results file is untouched; empty when nothing
/// can: the file is just being changed, or was left in the middle of a change.
QByteArray standVon(const QString& pfad) {
    constexpr qint64 Zählerort = 24; // of the engine's count of changes
    const auto stand = dateistand(pfad);
    QFile datei(pfad);
    if (!stand || stand->frisch() || QFileInfo::exists(pfad + u"-journal"_s) ||
        !datei.open(QIODevice::ReadOnly) || !datei.seek(Zählerort)) {
        return {};
    }
    QByteArray bytes;
    QDataStream strom(&bytes, QIODevice::WriteOnly);
    const auto füge = [&strom](const Dateistand& s) {
        strom << s.gerät << s.nummer << s.größe << s.geändert << s.angefasst;
    };
    strom << datei.read(4);
    füge(*stand);
    if (const auto log = dateistand(pfad + u"-wal"_s); log && log->größe > 0) {
        if (log->frisch()) {
            return {};
        }
        füge(*log);
    }
    return bytes;
}

/// A mark of a row. The words of caste and verdict count by what they mean: a change of language
/// rewrites them in every row.
class Zeilenmarke {
public:
    Zeilenmarke(SQLite::Statement& zeile, std::span<const std::string> spalten) {
        int platz = 1;
        for (const std::string& name : spalten) {
            const SQLite::Column wert = zeile.getColumn(platz++);
            const bool wort = name == "A_D" || name == "ERGEBNIS";
            const int bedeutung = wort ? bedeutungVon(spaltentext(wert).text) : -1;
            if (bedeutung >= 0) {
                marke_.füge(QByteArray(1, static_cast<char>(bedeutung)));
                continue;
            }
            marke_.füge(QByteArrayView(static_cast<const char*>(wert.getBlob()), wert.getBytes()));
        }
    }

    [[nodiscard]] quint64 wert() const { return marke_.wert(); }

private:
    static int bedeutungVon(const QString& wort) {
        int stelle = 0;
        for (const Text text : {Text::Arbeiter, Text::Drohnen, Text::Ja, Text::Nein}) {
            if (bedeutet(wort, text)) {
                return stelle;
            }
            ++stelle;
        }
        return -1;
    }

    Inhaltsmarke marke_;
};

/// Goes through a results file and takes the figures of rows from what is kept, where their
/// content is there.
class Durchgang {
public:
    Durchgang(const QString& datenbank, const Kolonieregeln& regeln, const Lesestand& stand,
              std::vector<Koloniesatz> bekannte)
        : datenbank_(datenbank)
        , regeln_(regeln)
        , stand_(stand)
        , bekannte_(std::move(bekannte)) {
        for (const QString& name : tabellenspalten()) {
            spalten_.push_back(name.toStdString());
            auswahl_ += ", " + spalten_.back();
        }
    }

    /// False when it was stopped.
    bool lies() {
        gesamt_ = mitErgebnisdatei(datenbank_, Wartezeit, [](Ergebnisdatei& datei) {
            return datei.verbindung().execAndGet("SELECT COUNT(*) FROM Ergebnisse").getInt();
        });
        sätze.reserve(static_cast<std::size_t>(gesamt_));
        while (!fertig_) {
            neue_.clear();
            mitErgebnisdatei(datenbank_, Wartezeit,
                             [this](Ergebnisdatei& datei) { liesGruppe(datei); });
            // The file is closed while rows are evaluated, so that others can write to it.
            for (const auto& [stelle, satz] : neue_) {
                if (!stand_(gelesen_++, gesamt_)) {
                    behalteBekannte();
                    return false;
                }
                sätze[stelle].werte = koloniewerte(satz.satz, regeln_);
                sätze[stelle].marke = satz.marke;
            }
        }
        return true;
    }

    std::vector<Koloniesatz> sätze;
    /// Whether they differ from those that were known.
    [[nodiscard]] bool geändert() const { return anders_ || sätze.size() != bekannte_.size(); }

private:
    struct Neuer {
        quint64 marke;
        Ergebnissatz satz;
    };

    /// When it was stopped: what is known of rows that were not reached stays known.
    void behalteBekannte() {
        std::erase_if(sätze, [](const Koloniesatz& s) { return s.marke == 0; });
        std::unordered_set<quint64> da;
        for (const Koloniesatz& satz : sätze) {
            da.insert(satz.marke);
        }
        std::copy_if(bekannte_.begin(), bekannte_.end(), std::back_inserter(sätze),
                     [&da](const Koloniesatz& satz) { return !da.contains(satz.marke); });
    }

    void liesGruppe(Ergebnisdatei& datei) {
        SQLite::Transaction lesen(datei.verbindung());
        const std::string& platz = datei.platz();
        SQLite::Statement zeilen(datei.verbindung(), "SELECT " + platz + auswahl_ +
                                                         " FROM Ergebnisse WHERE " + platz +
                                                         " > ? ORDER BY " + platz + " LIMIT ?");
        zeilen.bind(1, static_cast<std::int64_t>(letzte_));
        zeilen.bind(2, Gruppe);
        int anzahl = 0;
        std::vector<std::pair<qint64, quint64>> unbekannte;
        while (zeilen.executeStep()) {
            ++anzahl;
            letzte_ = zeilen.getColumn(0).getInt64();
            const quint64 marke = Zeilenmarke(zeilen, spalten_).wert();
            if (const Koloniesatz* bekannt = finde(marke)) {
                sätze.push_back(*bekannt);
                continue;
            }
            anders_ = true;
            const qint64 id = letzte_;
            GeleseneSätze gelesen = tarvel::lies(datei, std::span(&id, 1));
            if (!gelesen.sätze.empty()) {
                sätze.emplace_back(); // filled in later
                neue_.emplace_back(sätze.size() - 1, Neuer{marke, gelesen.sätze.front()});
            } else if (!gelesen.zuGroß.isEmpty()) {
                Koloniesatz& satz = sätze.emplace_back(Koloniesatz{marke, true, {}});
                satz.werte.UNr = gelesen.zuGroß.front();
            }
        }
        fertig_ = anzahl < Gruppe;
    }

    /// Rows mostly come in the order in which they are known.
    const Koloniesatz* finde(quint64 marke) {
        if (nächste_ < bekannte_.size() && bekannte_[nächste_].marke == marke) {
            return &bekannte_[nächste_++];
        }
        if (verzeichnis_.empty()) {
            for (std::size_t i = 0; i < bekannte_.size(); ++i) {
                verzeichnis_.emplace(bekannte_[i].marke, i);
            }
        }
        const auto ort = verzeichnis_.find(marke);
        if (ort == verzeichnis_.end()) {
            return nullptr;
        }
        anders_ = true;
        nächste_ = ort->second + 1;
        return &bekannte_[ort->second];
    }

    const QString& datenbank_;
    const Kolonieregeln& regeln_;
    const Lesestand& stand_;
    std::vector<Koloniesatz> bekannte_;
    std::unordered_map<quint64, std::size_t> verzeichnis_;
    std::size_t nächste_ = 0;
    std::vector<std::string> spalten_;
    std::string auswahl_;
    std::vector<std::pair<std::size_t, Neuer>> neue_;
    qint64 letzte_ = std::numeric_limits<qint64>::min();
    int gesamt_ = 0;
    int gelesen_ = 0;
    bool fertig_ = false;
    bool anders_ = false;
};

QString speicherdatei(const QString& speicher, const QString& datenbank) {
    constexpr qsizetype Namenslänge = 16;
    const QString pfad = QFileInfo(datenbank).canonicalFilePath();
    const QByteArray name =
        QCryptographicHash::hash(pfad.toUtf8(), QCryptographicHash::Sha1).toHex();
    return speicher + u'/' + QString::fromLatin1(name.first(Namenslänge)) + u".cache"_s;
}

/// Nobody is told when it fails: the figures are computed again then.
void bewahreAuf(const QString& pfad, const Koloniespeicher& speicher, quint64 regelmarke) {
    const QFileInfo info(pfad);
    if (!QDir().mkpath(info.path()) ||
        schreibeDatei(pfad, alsDatei(speicher, regelmarke), Dateirecht::NurEigner)) {
        return;
    }
    const QFileInfoList alle =
        QDir(info.path()).entryInfoList({u"*.cache"_s}, QDir::Files, QDir::Time);
    for (qsizetype i = MeisteDateien; i < alle.size(); ++i) {
        QFile::remove(alle[i].filePath());
    }
}

Koloniesammlung sammlungAus(std::vector<Koloniesatz>&& sätze) {
    Koloniesammlung sammlung;
    sammlung.kolonien.reserve(sätze.size());
    for (Koloniesatz& satz : sätze) {
        if (satz.unlesbar) {
            sammlung.unlesbar << satz.werte.UNr;
        } else {
            sammlung.kolonien.push_back(std::move(satz.werte));
        }
    }
    return sammlung;
}

} // namespace

int Koloniesammlung::teilweise() const {
    return static_cast<int>(std::count_if(kolonien.begin(), kolonien.end(),
                                          [](const Koloniewerte& k) { return k.teilweise; }));
}

std::optional<Koloniesammlung> liesKolonien(const QString& datenbank, const QString& speicher,
                                            const Kolonieregeln& regeln, const Lesestand& stand) {
    const quint64 regelmarke = regeln.marke();
    Koloniespeicher bisher;
    QString datei;
    if (!speicher.isEmpty()) {
        datei = speicherdatei(speicher, datenbank);
        QFile da(datei);
        if (da.open(QIODevice::ReadOnly)) {
            bisher = speicherAus(da.readAll(), regelmarke).value_or(Koloniespeicher());
        }
    }
    const QByteArray vorher = standVon(datenbank);
    if (!vorher.isEmpty() && bisher.stand == vorher) {
        return sammlungAus(std::move(bisher.sätze));
    }
    Durchgang durchgang(datenbank, regeln, stand, std::move(bisher.sätze));
    const bool ganz = durchgang.lies();
    if (!datei.isEmpty()) {
        Koloniespeicher neu;
        // Only when nobody changed the file meanwhile are these its rows.
        if (ganz && standVon(datenbank) == vorher) {
            neu.stand = vorher;
        }
        const bool geändert = durchgang.geändert();
        neu.sätze = std::move(durchgang.sätze);
        if (geändert || neu.stand != bisher.stand) {
            bewahreAuf(datei, neu, regelmarke);
        }
        durchgang.sätze = std::move(neu.sätze);
    }
    return ganz ? std::optional(sammlungAus(std::move(durchgang.sätze))) : std::nullopt;
}

} // namespace tarvel
