#include "collection/tabellenausfuhr.h"

#include "platform/csv.h"
#include "platform/dateiausgabe.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <optional>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void scheitere(const Rohfassung& datei) {
    throw Ausfuhrfehler{datei.ziel(), datei.grund()};
}

QByteArray kopfzeile(const Ausfuhrtabelle& tabelle) {
    QByteArray kopf;
    for (const Ausfuhrspalte& spalte : tabelle.spalten) {
        kopf += (kopf.isEmpty() ? "" : ",") + QByteArray(spalte.name);
    }
    return kopf;
}

class Csvziel : public Tabellenziel {
public:
    explicit Csvziel(const QString& ordner) {
        if (!QDir().mkpath(ordner)) {
            throw Ausfuhrfehler{ordner,
                                qt_error_string(QFileInfo::exists(ordner) ? ENOTDIR : EACCES)};
        }
        for (const Ausfuhrtabelle& tabelle : ausfuhrtabellen()) {
            auto& datei =
                dateien_.emplace_back(Datei{std::make_unique<Rohfassung>(QDir(ordner).filePath(
                                                QString::fromLatin1(tabelle.name) + u".csv"_s)),
                                            CsvTabelle(kopfzeile(tabelle))});
            if (!datei.roh->angelegt()) {
                scheitere(*datei.roh);
            }
        }
    }

    void zeile(std::size_t tabelle, const QVariantList& werte) override {
        constexpr qsizetype Stück = qsizetype{1} << 20;
        Datei& datei = dateien_.at(tabelle);
        for (const QVariant& wert : werte) {
            switch (wert.typeId()) {
            case QMetaType::Int:
                datei.csv.zelle(QByteArray::number(wert.toInt()));
                break;
            case QMetaType::Float:
                datei.csv.zelle(vollerWert(wert.toFloat()));
                break;
            case QMetaType::Double:
                datei.csv.zelle(QByteArray::number(wert.toDouble(), 'g', 9));
                break;
            default:
                datei.csv.text(wert.toString());
            }
        }
        datei.csv.zeilenende();
        if (datei.csv.csv().size() > Stück) {
            leere(datei);
        }
    }

    void schließeAb() override {
        for (Datei& datei : dateien_) {
            leere(datei);
            if (!datei.roh->schließeAb()) {
                scheitere(*datei.roh);
            }
        }
        for (Datei& datei : dateien_) {
            if (!datei.roh->nimmPlatz()) {
                scheitere(*datei.roh);
            }
        }
        (void)namenAufDieScheibe(QFileInfo(dateien_.front().roh->ziel()).path().toStdString());
    }

private:
    struct Datei {
        std::unique_ptr<Rohfassung> roh;
        CsvTabelle csv;
    };

    static void leere(Datei& datei) {
        if (!datei.roh->schreibe(datei.csv.nimmHeraus())) {
            scheitere(*datei.roh);
        }
    }

    std::vector<Datei> dateien_;
};

class Sqliteziel : public Tabellenziel {
public:
    explicit Sqliteziel(const QString& pfad)
        : roh_(pfad) {
        if (!roh_.angelegt()) {
            scheitere(roh_);
        }
        versuche([this] {
            datei_.emplace(roh_.pfad().toStdString(), SQLite::OPEN_READWRITE);
            // It is not in its place yet, so what a crash leaves is nobody's file.
            datei_->exec("PRAGMA journal_mode = OFF");
            datei_->exec("PRAGMA synchronous = OFF");
            datei_->exec("BEGIN");
            for (const Ausfuhrtabelle& tabelle : ausfuhrtabellen()) {
                lege(tabelle);
            }
        });
    }

    void zeile(std::size_t tabelle, const QVariantList& werte) override {
        versuche([&] {
            SQLite::Statement& einfügen = einfügen_.at(tabelle);
            for (int i = 0; i < werte.size(); ++i) {
                binde(einfügen, i + 1, werte[i]);
            }
            einfügen.exec();
            einfügen.reset();
            einfügen.clearBindings();
        });
    }

    void schließeAb() override {
        versuche([this] {
            datei_->exec("COMMIT");
            einfügen_.clear();
            datei_.reset();
        });
        if (!roh_.ersetze()) {
            scheitere(roh_);
        }
    }

private:
    void lege(const Ausfuhrtabelle& tabelle) {
        std::string spalten;
        std::string plätze;
        for (const Ausfuhrspalte& spalte : tabelle.spalten) {
            spalten +=
                (spalten.empty() ? "\"" : ", \"") + std::string(spalte.name) + "\" " + spalte.art;
            plätze += plätze.empty() ? "?" : ", ?";
        }
        const std::string name = '"' + std::string(tabelle.name) + '"';
        datei_->exec("CREATE TABLE " + name + " (" + spalten + ")");
        einfügen_.emplace_back(*datei_, "INSERT INTO " + name + " VALUES (" + plätze + ")");
    }

    static void binde(SQLite::Statement& anweisung, int stelle, const QVariant& wert) {
        switch (wert.typeId()) {
        case QMetaType::UnknownType:
            anweisung.bind(stelle);
            break;
        case QMetaType::Int:
            anweisung.bind(stelle, wert.toInt());
            break;
        case QMetaType::Float:
            // As the shortest number that is the same single: 2.31 rather than 2.3099999.
            anweisung.bind(stelle, vollerWert(wert.toFloat()).toDouble());
            break;
        case QMetaType::Double:
            anweisung.bind(stelle, wert.toDouble());
            break;
        default:
            anweisung.bind(stelle, wert.toString().toStdString());
        }
    }

    template <typename Arbeit>
    void versuche(Arbeit&& arbeit) {
        try {
            arbeit();
        } catch (const SQLite::Exception& fehler) {
            throw Ausfuhrfehler{roh_.ziel(), QString::fromUtf8(fehler.what())};
        }
    }

    Rohfassung roh_;
    std::optional<SQLite::Database> datei_;
    std::vector<SQLite::Statement> einfügen_;
};

} // namespace

std::unique_ptr<Tabellenziel> csvziel(const QString& ordner) {
    return std::make_unique<Csvziel>(ordner);
}

std::unique_ptr<Tabellenziel> sqliteziel(const QString& pfad) {
    return std::make_unique<Sqliteziel>(pfad);
}

} // namespace tarvel
