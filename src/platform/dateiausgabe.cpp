#include "platform/dateiausgabe.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <initializer_list>
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

Fehlerart fehlerart(const std::error_code& fehler) {
    using enum std::errc;
    const auto eine = [&fehler](std::initializer_list<std::errc> arten) {
        return std::any_of(arten.begin(), arten.end(),
                           [&](std::errc art) { return fehler == art; });
    };
    if (!fehler) {
        return Fehlerart::Keiner;
    }
#ifdef EDQUOT // the standard has no name for it
    if (fehler.value() == EDQUOT) {
        return Fehlerart::Voll;
    }
#endif
    if (eine({no_space_on_device, file_too_large})) {
        return Fehlerart::Voll;
    }
    return eine({permission_denied, operation_not_permitted, read_only_file_system,
                 no_such_file_or_directory, not_a_directory, is_a_directory, invalid_argument,
                 file_exists, too_many_symbolic_link_levels, filename_too_long})
               ? Fehlerart::Platz
               : Fehlerart::Laufwerk;
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

void Rohfassung::beschränkeAuf(const QString& vorbild) {
    if (da_ && dateiart(ziel_) == Dateiart::Keine) {
        datei_.beschränkeAuf(systempfad(vorbild));
    }
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
        return art == std::filesystem::file_type::not_found
                   ? nimmPlatz() && gelang(namenAufDieScheibe(ziel_.parent_path()))
                   : gelang(EEXIST);
    }
    if (!gelang(namenAufDieScheibe(ziel_.parent_path()))) {
        std::filesystem::remove(ziel_, fehler);
        return false;
    }
    return true;
}

Fehlerart Rohfassung::fehlerart() const {
    return tarvel::fehlerart({fehler_, std::generic_category()});
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
