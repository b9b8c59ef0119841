#include "platform/dateisystem.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace tarvel {

namespace {

int fehler(bool gelungen) {
    return gelungen ? 0 : errno;
}

int öffneBinär(const std::filesystem::path& pfad, int art) {
    return _wsopen(pfad.c_str(), art | _O_WRONLY | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
                   _S_IREAD | _S_IWRITE);
}

} // namespace

int Schreibdatei::legeAn(const std::filesystem::path& pfad, bool /*nurEigner*/) {
    // A file has the rights of its folder here, and those of a person are the person's.
    nummer_ = öffneBinär(pfad, _O_CREAT | _O_EXCL);
    return fehler(nummer_ >= 0);
}

int Schreibdatei::öffne(const std::filesystem::path& pfad) {
    nummer_ = öffneBinär(pfad, 0);
    return fehler(nummer_ >= 0);
}

void Schreibdatei::nimmRechteVon(const std::filesystem::path& /*vorbild*/) {}

void Schreibdatei::beschränkeAuf(const std::filesystem::path& /*vorbild*/) {}

void Schreibdatei::verschließe() {}

int Schreibdatei::kürze(long long länge) {
    return _chsize_s(nummer_, länge);
}

int Schreibdatei::schreibe(std::string_view inhalt) {
    constexpr std::size_t Stück = std::size_t{1} << 20U;
    while (!inhalt.empty()) {
        const int anzahl =
            _write(nummer_, inhalt.data(), static_cast<unsigned>(std::min(inhalt.size(), Stück)));
        if (anzahl <= 0) {
            return anzahl < 0 ? errno : EIO;
        }
        inhalt.remove_prefix(static_cast<std::size_t>(anzahl));
    }
    return 0;
}

int Schreibdatei::schreibeAnsEnde(std::string_view inhalt) {
    return _lseeki64(nummer_, 0, SEEK_END) < 0 ? errno : schreibe(inhalt);
}

int Schreibdatei::aufDieScheibe() {
    return fehler(_commit(nummer_) == 0);
}

int Schreibdatei::schließe() {
    if (nummer_ < 0) {
        return 0;
    }
    const int stand = fehler(_close(nummer_) == 0);
    nummer_ = -1;
    return stand;
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

bool istOffen(const std::filesystem::path& /*pfad*/) {
    return false;
}

int beschreibbar(const std::filesystem::path& pfad) {
    return fehler(_waccess(pfad.c_str(), 2) == 0);
}

bool istStandardausgabe(const std::filesystem::path& /*pfad*/) {
    return false;
}

int ersetzeDatei(const std::filesystem::path& neu, const std::filesystem::path& ziel) {
    std::error_code stand;
    std::filesystem::rename(neu, ziel, stand);
    return stand ? (stand == std::errc::permission_denied ? EACCES : EIO) : 0;
}

int namenAufDieScheibe(const std::filesystem::path& /*ordner*/) {
    return 0; // the system has no such call
}

} // namespace tarvel
