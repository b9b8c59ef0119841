#include "platform/dateiausgabe.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <system_error>

namespace tarvel {

namespace {

std::string_view alsText(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString alsPfad(const std::filesystem::path& pfad) {
#ifdef Q_OS_WIN
    return QString::fromStdWString(pfad.wstring());
#else
    return QFile::decodeName(QByteArray::fromStdString(pfad.native()));
#endif
}

/// Where a name leads to, be it to a file that is not there yet.
std::filesystem::path amEndeDerVerweise(std::filesystem::path pfad) {
    constexpr int Höchstens = 40; // as the system does
    std::error_code fehler;
    for (int i = 0; i < Höchstens; ++i) {
        const std::filesystem::path nächster = std::filesystem::read_symlink(pfad, fehler);
        if (fehler) {
            break;
        }
        pfad = pfad.parent_path() / nächster;
    }
    return pfad;
}

/// A name beside @p ziel that nobody has, not longer than names may be.
std::filesystem::path nachbarname(const std::filesystem::path& ziel) {
    constexpr qsizetype Zusatz = 9;
    constexpr qsizetype LängsterName = 255;
    QString name = alsPfad(ziel.filename());
    while (QFile::encodeName(name).size() > LängsterName - Zusatz) {
        name.chop(1);
    }
    name += u'.' + QUuid::createUuid().toString(QUuid::Id128).left(Zusatz - 1);
    return ziel.parent_path() / systempfad(name);
}

} // namespace

std::filesystem::path systempfad(const QString& pfad) {
#ifdef Q_OS_WIN
    return pfad.toStdWString();
#else
    return QFile::encodeName(pfad).toStdString();
#endif
}

Rohfassung::Rohfassung(const QString& ziel, Dateirecht recht)
    : ziel_(amEndeDerVerweise(systempfad(QFileInfo(ziel).absoluteFilePath())))
    , pfad_(nachbarname(ziel_)) {
    const Dateiart art = dateiart(ziel_);
    const bool ersetzt = art == Dateiart::Gewöhnlich;
    if (ersetzt && !gelang(beschreibbar(ziel_))) {
        return;
    }
    if (!ersetzt && art != Dateiart::Keine) {
        (void)gelang(art == Dateiart::Ordner ? EISDIR : EINVAL);
        return;
    }
    da_ = gelang(datei_.legeAn(pfad_, ersetzt || recht == Dateirecht::NurEigner));
    if (da_ && ersetzt) {
        datei_.nimmRechteVon(ziel_);
    }
    if (da_ && recht == Dateirecht::NurEigner) {
        datei_.verschließe();
    }
}

Rohfassung::~Rohfassung() {
    (void)datei_.schließe();
    if (da_) {
        std::error_code fehler;
        std::filesystem::remove(pfad_, fehler);
    }
}

QString Rohfassung::pfad() const {
    return alsPfad(pfad_);
}

QString Rohfassung::ziel() const {
    return alsPfad(ziel_);
}

bool Rohfassung::gelang(int fehler) {
    fehler_ = fehler;
    return fehler == 0;
}

bool Rohfassung::schreibe(const QByteArray& inhalt) {
    return gelang(datei_.schreibe(alsText(inhalt)));
}

bool Rohfassung::schließeAb() {
    return gelang(datei_.aufDieScheibe()) && gelang(datei_.schließe());
}

bool Rohfassung::nimmPlatz() {
    const bool genommen = gelang(ersetzeDatei(pfad_, ziel_));
    da_ = da_ && !genommen;
    return genommen;
}

bool Rohfassung::ersetze() {
    return schließeAb() && nimmPlatz() && gelang(namenAufDieScheibe(ziel_.parent_path()));
}

bool Rohfassung::benenne() {
    if (!schließeAb()) {
        return false;
    }
    std::error_code fehler;
    // A second name is given only where there is no file; the first goes with this object.
    std::filesystem::create_hard_link(pfad_, ziel_, fehler);
    if (fehler) { // a drive that knows no second names, or the place is taken
        std::error_code egal;
        const auto art = std::filesystem::symlink_status(ziel_, egal).type();
        return art == std::filesystem::file_type::not_found ? ersetze() : gelang(EEXIST);
    }
    if (!gelang(namenAufDieScheibe(ziel_.parent_path()))) {
        std::filesystem::remove(ziel_, fehler);
        return false;
    }
    return true;
}

bool Rohfassung::voll() const {
    return fehler_ == ENOSPC;
}

QString Rohfassung::grund() const {
    return qt_error_string(fehler_);
}

std::optional<QString> schreibeDatei(const QString& pfad, const QByteArray& inhalt,
                                     Dateirecht recht) {
    Rohfassung datei(pfad, recht);
    const bool geschrieben = datei.angelegt() && datei.schreibe(inhalt) && datei.ersetze();
    return geschrieben ? std::nullopt : std::optional(datei.grund());
}

std::optional<QString> schreibeHinein(const QString& pfad, const QByteArray& inhalt) {
    Schreibdatei datei;
    int fehler = datei.öffne(systempfad(pfad));
    if (fehler == 0) {
        fehler = datei.schreibe(alsText(inhalt));
    }
    const int schluss = datei.schließe();
    fehler = fehler != 0 ? fehler : schluss;
    return fehler == 0 ? std::nullopt : std::optional(qt_error_string(fehler));
}

} // namespace tarvel
