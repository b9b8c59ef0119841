#include "results/tagessicherung.h"

#include "results/ergebnistabelle.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <optional>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t LetzteBleiben = 10;

QString dateiname(const QString& DatenbankPfad, const QString& datum) {
    return QFileInfo(DatenbankPfad).completeBaseName() + u' ' + datum + u".tdb"_s;
}

/// Whether the file was changed since its last backup was made.
bool istNeuer(const QFileInfo& datei, const std::vector<Sicherung>& alle) {
    return std::all_of(alle.begin(), alle.end(), [&](const Sicherung& sicherung) {
        return QFileInfo(sicherung.pfad).lastModified() < datei.lastModified();
    });
}

} // namespace

QString sicherungsordner(const QString& DatenbankPfad) {
    return QFileInfo(DatenbankPfad).absoluteDir().filePath(u"Tarvel Backup"_s);
}

std::vector<Sicherung> sicherungen(const QString& DatenbankPfad) {
    static const QRegularExpression datum(u"^\\d{4}-\\d{2}-\\d{2}$"_s);
    const QString anfang = dateiname(DatenbankPfad, {}).chopped(4);
    const QDir ordner(sicherungsordner(DatenbankPfad));
    std::vector<Sicherung> alle;
    const QFileInfoList dateien = ordner.entryInfoList(QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo& info : dateien) {
        const QString name = info.fileName();
        if (!name.startsWith(anfang) || !name.endsWith(u".tdb"_s)) {
            continue;
        }
        const QString tag = name.sliced(anfang.size()).chopped(4);
        const QDate gelesen = QDate::fromString(tag, Qt::ISODate);
        if (datum.match(tag).hasMatch() && gelesen.isValid()) {
            alle.push_back({info.absoluteFilePath(), gelesen, info.size()});
        }
    }
    std::sort(alle.begin(), alle.end(),
              [](const Sicherung& a, const Sicherung& b) { return a.datum > b.datum; });
    return alle;
}

std::vector<Sicherung> überzählige(const std::vector<Sicherung>& alle) {
    const auto monat = [](const Sicherung& s) {
        return std::pair(s.datum.year(), s.datum.month());
    };
    std::vector<Sicherung> weg;
    for (std::size_t i = LetzteBleiben; i < alle.size(); ++i) {
        if (monat(alle[i]) == monat(alle[i - 1])) {
            weg.push_back(alle[i]);
        }
    }
    return weg;
}

void sichereTag(const QString& DatenbankPfad, const QDate& heute,
                const std::atomic<bool>& aufhören) {
    const QFileInfo datei(DatenbankPfad);
    const QDir ordner(sicherungsordner(DatenbankPfad));
    const QString ziel = ordner.filePath(dateiname(DatenbankPfad, heute.toString(Qt::ISODate)));
    if (DatenbankPfad.isEmpty() || !datei.exists() || QFileInfo::exists(ziel) ||
        !istNeuer(datei, sicherungen(DatenbankPfad))) {
        return;
    }
    if (datei.size() > GrößteGesicherte) {
        throw Datenbankfehler(Datenbankgrund::ZuGroßZumSichern, DatenbankPfad);
    }
    const Ergebnistabelle tabelle(DatenbankPfad);
    if (tabelle.anzahl() == 0) {
        return;
    }
    if (!ordner.mkpath(u"."_s)) {
        throw Datenbankfehler(Datenbankgrund::NichtAnlegbar, ziel);
    }
    if (tabelle.sichereNebenbei(ziel, aufhören)) {
        for (const Sicherung& sicherung : überzählige(sicherungen(DatenbankPfad))) {
            // One that somebody went on working in is not ours any more.
            if (QFileInfo(sicherung.pfad).lastModified().date() <= sicherung.datum.addDays(1)) {
                QFile::remove(sicherung.pfad);
            }
        }
    }
}

Tagessicherung::Tagessicherung(std::function<void(const Datenbankfehler&)> beiFehler)
    : beiFehler_(std::move(beiFehler)) {
    faden_.setMaxThreadCount(1);
}

Tagessicherung::~Tagessicherung() {
    aufhören_ = true;
    faden_.clear();
}

void Tagessicherung::prüfe(const QString& DatenbankPfad, const QDate& heute) {
    if (DatenbankPfad.isEmpty() || unterwegs_.exchange(true)) {
        return;
    }
    faden_.start([this, DatenbankPfad, heute] {
        std::optional<Datenbankfehler> gescheitert;
        try {
            sichereTag(DatenbankPfad, heute, aufhören_);
        } catch (const Datenbankfehler& fehler) {
            gescheitert = fehler;
        }
        unterwegs_ = false;
        if (gescheitert && !aufhören_) {
            QMetaObject::invokeMethod(
                &eigner_,
                [this, DatenbankPfad, fehler = *gescheitert] { melde(DatenbankPfad, fehler); },
                Qt::QueuedConnection);
        }
    });
}

void Tagessicherung::melde(const QString& DatenbankPfad, const Datenbankfehler& fehler) {
    if (!gemeldet_.contains(DatenbankPfad)) {
        gemeldet_.insert(DatenbankPfad);
        beiFehler_(fehler);
    }
}

} // namespace tarvel
