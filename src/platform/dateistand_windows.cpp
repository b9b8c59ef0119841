#include "platform/dateistand.h"

#include <QDir>

#include <memory>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

namespace tarvel {

namespace {

/// Nanoseconds since 1970 of what the system counts in tenths of microseconds since 1601.
qint64 nanosekunden(qint64 zehntel) {
    constexpr qint64 Zehntel1970 = 116'444'736'000'000'000;
    return (zehntel - Zehntel1970) * 100;
}

} // namespace

std::optional<Dateistand> dateistand(const QString& pfad) {
    const std::wstring name = QDir::toNativeSeparators(pfad).toStdWString();
    const HANDLE griff = CreateFileW(name.c_str(), FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (griff == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    const std::unique_ptr<void, decltype(&CloseHandle)> datei(griff, &CloseHandle);
    BY_HANDLE_FILE_INFORMATION stand{};
    FILE_BASIC_INFO zeiten{};
    if (GetFileInformationByHandle(griff, &stand) == 0 ||
        GetFileInformationByHandleEx(griff, FileBasicInfo, &zeiten, sizeof(zeiten)) == 0) {
        return std::nullopt;
    }
    const auto zusammen = [](quint64 hoch, quint64 tief) { return hoch << 32U | tief; };
    return Dateistand{.gerät = stand.dwVolumeSerialNumber,
                      .nummer = zusammen(stand.nFileIndexHigh, stand.nFileIndexLow),
                      .größe =
                          static_cast<qint64>(zusammen(stand.nFileSizeHigh, stand.nFileSizeLow)),
                      .geändert = nanosekunden(zeiten.LastWriteTime.QuadPart),
                      .angefasst = nanosekunden(zeiten.ChangeTime.QuadPart)};
}

} // namespace tarvel
