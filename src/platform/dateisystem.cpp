#include "platform/dateisystem.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvel {

namespace {

constexpr mode_t Alle = 0666;
constexpr mode_t NurEigner = 0600;
constexpr mode_t Rechte = 0777;

template <typename Ruf>
auto wiederhole(const Ruf& ruf) {
    auto ergebnis = ruf();
    while (ergebnis < 0 && errno == EINTR) {
        ergebnis = ruf();
    }
    return ergebnis;
}

/// The number of a file that is open here, of a name like /dev/fd/3; -1 for any other.
int offeneNummer(const std::filesystem::path& pfad) {
    const std::filesystem::path ordner = pfad.parent_path();
    const std::string name = pfad.filename();
    int nummer = -1;
    const auto [ende, stand] = std::from_chars(name.data(), name.data() + name.size(), nummer);
    const bool ganz = stand == std::errc() && ende == name.data() + name.size();
    return ganz && (ordner == "/dev/fd" || ordner == "/proc/self/fd") ? nummer : -1;
}

/// A quota that is used up is a full drive for whom it concerns.
int fehler(bool gelungen) {
    return gelungen ? 0 : errno == EDQUOT ? ENOSPC : errno;
}

} // namespace

int Schreibdatei::legeAn(const std::filesystem::path& pfad, bool nurEigner) {
    nummer_ = wiederhole([&] {
        return ::open(pfad.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                      nurEigner ? NurEigner : Alle);
    });
    return fehler(nummer_ >= 0);
}

int Schreibdatei::öffne(const std::filesystem::path& pfad) {
    const int offen = offeneNummer(pfad);
    nummer_ = wiederhole([&] {
        return offen >= 0 ? ::fcntl(offen, F_DUPFD_CLOEXEC, 0)
                          : ::open(pfad.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    });
    return fehler(nummer_ >= 0);
}

void Schreibdatei::nimmRechteVon(const std::filesystem::path& vorbild) {
    struct stat alt {};
    struct stat neu {};
    if (::stat(vorbild.c_str(), &alt) != 0 || ::fstat(nummer_, &neu) != 0) {
        return;
    }
    const bool fremd = alt.st_uid != neu.st_uid || alt.st_gid != neu.st_gid;
    if (fremd && ::fchown(nummer_, alt.st_uid, alt.st_gid) != 0) {
        // Only the administrator gives files away; the group of the folder may do.
        (void)(::fchown(nummer_, static_cast<uid_t>(-1), alt.st_gid) == 0);
    }
    (void)(::fchmod(nummer_, alt.st_mode & Rechte) == 0);
}

void Schreibdatei::beschränkeAuf(const std::filesystem::path& vorbild) {
    struct stat alt {};
    struct stat neu {};
    if (::stat(vorbild.c_str(), &alt) == 0 && ::fstat(nummer_, &neu) == 0) {
        (void)(::fchmod(nummer_, (neu.st_mode & alt.st_mode & Rechte) | NurEigner) == 0);
    }
}

void Schreibdatei::verschließe() {
    (void)(::fchmod(nummer_, NurEigner) == 0);
}

int Schreibdatei::kürze(long long länge) {
    return fehler(wiederhole([&] { return ::ftruncate(nummer_, länge); }) == 0);
}

int Schreibdatei::schreibe(std::string_view inhalt) {
    while (!inhalt.empty()) {
        const ssize_t anzahl =
            wiederhole([&] { return ::write(nummer_, inhalt.data(), inhalt.size()); });
        if (anzahl <= 0) {
            return anzahl < 0 ? fehler(false) : EIO;
        }
        inhalt.remove_prefix(static_cast<std::size_t>(anzahl));
    }
    return 0;
}

int Schreibdatei::schreibeAnsEnde(std::string_view inhalt) {
    return ::lseek(nummer_, 0, SEEK_END) < 0 ? errno : schreibe(inhalt);
}

int Schreibdatei::aufDieScheibe() {
    const int stand = fehler(wiederhole([&] { return ::fsync(nummer_); }) == 0);
    return stand == EINVAL || stand == ENOTSUP ? 0 : stand; // a file system without a drive
}

int Schreibdatei::schließe() {
    if (nummer_ < 0) {
        return 0;
    }
    const int stand = fehler(::close(nummer_) == 0);
    nummer_ = -1;
    return stand == EINTR ? 0 : stand; // it is closed, and not to be closed again
}

Dateiart dateiart(const std::filesystem::path& pfad) {
    std::error_code stand;
    switch (std::filesystem::status(pfad, stand).type()) {
    case std::filesystem::file_type::not_found:
        return Dateiart::Keine;
    case std::filesystem::file_type::regular:
        return Dateiart::Gewöhnlich;
    case std::filesystem::file_type::directory:
        return Dateiart::Ordner;
    default:
        return Dateiart::Sonstige;
    }
}

bool istOffen(const std::filesystem::path& pfad) {
    return offeneNummer(pfad) >= 0;
}

int beschreibbar(const std::filesystem::path& pfad) {
    return fehler(::faccessat(AT_FDCWD, pfad.c_str(), W_OK, AT_EACCESS) == 0);
}

bool istStandardausgabe(const std::filesystem::path& pfad) {
    struct stat a {};
    struct stat b {};
    return ::stat(pfad.c_str(), &a) == 0 && ::fstat(STDOUT_FILENO, &b) == 0 &&
           a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

int ersetzeDatei(const std::filesystem::path& neu, const std::filesystem::path& ziel) {
    return fehler(wiederhole([&] { return std::rename(neu.c_str(), ziel.c_str()); }) == 0);
}

int namenAufDieScheibe(const std::filesystem::path& ordner) {
    const int nummer =
        wiederhole([&] { return ::open(ordner.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (nummer < 0) {
        return 0; // one may write into a folder that one may not read
    }
    const int stand = fehler(wiederhole([&] { return ::fsync(nummer); }) == 0);
    (void)::close(nummer);
    return stand == EIO || stand == ENOSPC ? stand : 0;
}

} // namespace tarvel
