#pragma once

#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "support/testordner.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include <functional>
#include <memory>
#include <optional>

namespace tarvel {

#ifdef Q_OS_UNIX
/// Write protection binds no administrator, so the test goes on as somebody else.
class OhneSonderrechte {
public:
    OhneSonderrechte() { istEingeschränkt_ = geteuid() != 0 || seteuid(65534) == 0; }
    ~OhneSonderrechte() {
        if (geteuid() != getuid()) {
            (void)!seteuid(getuid());
        }
    }
    OhneSonderrechte(const OhneSonderrechte&) = delete;
    OhneSonderrechte& operator=(const OhneSonderrechte&) = delete;
    [[nodiscard]] bool istEingeschränkt() const { return istEingeschränkt_; }

private:
    bool istEingeschränkt_;
};
#endif

/// Tests on real results files in a folder of their own, looked at by a program that knows the
/// engine and nothing of ours.
class Dateitest : public testing::Test {
protected:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(QStringLiteral("Völker 100% 'neu'.tdb"));

    void SetUp() override { NeueDatenbank(pfad_); }

    [[nodiscard]] Ergebnistabelle tabelle() const {
        return Ergebnistabelle(pfad_, std::chrono::milliseconds(20));
    }

    static Ergebnissatz satz(const QString& nummer, const QDate& datum = QDate(2025, 6, 15)) {
        Ergebnissatz s;
        s.U_NR = nummer;
        s.Z_NAME = QStringLiteral("Züchter von ") + nummer.left(8);
        s.DATUM = datum;
        return s;
    }

    /// All values that foreign SQL yields, rows by ';', columns by '|'; the error text if it fails.
    QString fremd(const QString& sql) const {
        sqlite3* db = nullptr;
        sqlite3_open(pfad_.toUtf8().constData(), &db);
        QStringList zeilen;
        char* fehler = nullptr;
        const auto zeile = [](void* ziel, int anzahl, char** werte, char**) {
            QStringList spalten;
            for (int i = 0; i < anzahl; ++i) {
                spalten << QString::fromUtf8(werte[i] != nullptr ? werte[i] : "NULL");
            }
            *static_cast<QStringList*>(ziel) << spalten.join(u'|');
            return 0;
        };
        sqlite3_exec(db, sql.toUtf8().constData(), zeile, &zeilen, &fehler);
        if (fehler != nullptr) {
            zeilen << QString::fromUtf8(fehler);
            sqlite3_free(fehler);
        }
        sqlite3_close(db);
        return zeilen.join(u';');
    }

    QString nummern() const {
        return fremd(QStringLiteral("SELECT U_NR FROM Ergebnisse ORDER BY U_NR"));
    }

    static QByteArray bytes(const QString& pfad) { return liesGanz(pfad); }
    static void schreibe(const QString& pfad, const QByteArray& inhalt) { lege(pfad, inhalt); }

    /// Why @p arbeit did not happen; nullopt when it did.
    static std::optional<Datenbankfehler> fehlerVon(const std::function<void()>& arbeit) {
        try {
            arbeit();
        } catch (const Datenbankfehler& fehler) {
            return fehler;
        }
        return std::nullopt;
    }
    static std::optional<Datenbankgrund> grundVon(const std::function<void()>& arbeit) {
        const auto fehler = fehlerVon(arbeit);
        return fehler ? std::optional(fehler->grund()) : std::nullopt;
    }
};

} // namespace tarvel
