// Two results files that are merged. Input, a line each: a row of ours, or behind a ">" a row of
// the other file: number, breeder, caste, date, CI, Grafik1, separated by ";"; a value behind "="
// is stored as bytes, an empty one as NULL. A line "!offset byte" damages the other file there.

#include "fuzz/fuzz.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/zusammenfuehrung.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <vector>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr auto weiter = [](int /*schritt*/, int /*alle*/) { return true; };

struct Datei {
    explicit Datei(const QString& pfad)
        : pfad_(pfad) {
        NeueDatenbank(pfad);
        sqlite3_open(pfad.toUtf8().constData(), &db_);
        sqlite3_exec(db_, "PRAGMA synchronous = OFF; BEGIN", nullptr, nullptr, nullptr);
    }
    ~Datei() { schließe(); }
    Datei(const Datei&) = delete;
    Datei& operator=(const Datei&) = delete;

    void füge(QByteArrayView zeile) const {
        sqlite3_stmt* anweisung = nullptr;
        sqlite3_prepare_v2(db_,
                           "INSERT INTO Ergebnisse(U_NR, Z_NAME, A_D, DATUM, CI, Grafik1) "
                           "VALUES(?, ?, ?, ?, ?, ?)",
                           -1, &anweisung, nullptr);
        for (int spalte = 1; spalte <= 6 && !zeile.isEmpty(); ++spalte) {
            const qsizetype ende = zeile.indexOf(';');
            const QByteArrayView wert = ende < 0 ? zeile : zeile.first(ende);
            zeile = ende < 0 ? QByteArrayView() : zeile.sliced(ende + 1);
            const auto länge = static_cast<int>(wert.size());
            if (wert.startsWith('=')) {
                sqlite3_bind_blob(anweisung, spalte, wert.data() + 1, länge - 1, SQLITE_TRANSIENT);
            } else if (länge > 0) {
                sqlite3_bind_text(anweisung, spalte, wert.data(), länge, SQLITE_TRANSIENT);
            }
        }
        (void)sqlite3_step(anweisung); // a number twice is refused
        sqlite3_finalize(anweisung);
    }
    void schließe() {
        if (db_ != nullptr) {
            sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
            sqlite3_close(std::exchange(db_, nullptr));
        }
    }

private:
    QString pfad_;
    sqlite3* db_ = nullptr;
};

QByteArray inhalt(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

void prüfe(const QString& meine, const QString& andere) {
    const int vorher = Ergebnistabelle(meine).anzahl();
    const Dateiquelle quelle(andere, meine);
    Zusammenführung z(meine, quelle);
    verlange(z.vergleiche(weiter), "nobody stopped it");
    verlange(z.fälle().size() == quelle.stellen().size(), "every row is compared");
    z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
    z.entscheide(Zeilenstand::Verschieden, Entscheidung::Beide);
    const int offen = z.anzahl(Zeilenstand::Neu) + z.anzahl(Zeilenstand::Verschieden);
    const auto bericht = z.übernimm(Sprache::Deutsch, weiter);
    verlange(bericht && bericht->ersetzt == 0, "nothing of ours is replaced");
    verlange(bericht->übernommen + bericht->übergangen.size() == offen, "every row is told of");
    verlange(bericht->übergangen.isEmpty(), "nobody changed them meanwhile");
    verlange(Ergebnistabelle(meine).anzahl() == vorher + offen, "no row is lost");
    for (const auto& [alt, neu] : bericht->umbenannt) {
        verlange(!neu.isEmpty() && neu.size() <= LängsteNummer, "new numbers fit");
    }
    verlange(z.vergleiche(weiter), "nobody stopped it");
    verlange(z.anzahl(Zeilenstand::Gleich) == static_cast<int>(z.fälle().size()),
             "merging twice changes nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    const QTemporaryDir ordner;
    const QString meine = ordner.filePath(u"a.tdb"_s);
    const QString andere = ordner.filePath(u"b.tdb"_s);
    QByteArrayView rest = eingabe(daten, größe);
    std::vector<std::pair<qint64, char>> schäden;
    {
        const Datei a(meine);
        const Datei b(andere);
        while (!rest.isEmpty()) {
            const QByteArrayView zeile = nimmZeile(rest);
            if (zeile.startsWith('!')) {
                const QList<QByteArray> teile = zeile.sliced(1).toByteArray().split(' ');
                schäden.emplace_back(teile.value(0).toLongLong(),
                                     static_cast<char>(teile.value(1).toInt()));
            } else if (zeile.startsWith('>')) {
                b.füge(zeile.sliced(1));
            } else {
                a.füge(zeile);
            }
        }
    }
    {
        QFile datei(andere);
        verlange(datei.open(QIODevice::ReadWrite), "the file is ours");
        for (const auto& [ort, byte] : schäden) {
            if (ort >= 0 && ort < datei.size() && datei.seek(ort)) {
                datei.putChar(byte);
            }
        }
    }
    const QByteArray vorher = inhalt(andere);
    try {
        prüfe(meine, andere);
    } catch (const Datenbankfehler&) {
        verlange(!schäden.empty(), "only a damaged file is refused");
    }
    verlange(inhalt(andere) == vorher, "the other file is only read");
    return 0;
}
