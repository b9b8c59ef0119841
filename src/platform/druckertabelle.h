#pragma once

#include <cstddef>
#include <cstdint>

// Plain C++ on purpose: the file with the real operations sees the system's own headers and must
// not meet the toolkit's.

namespace tarvel {

/// The family of the operating system, as its version record tells it.
struct Versionsangabe {
    std::uint32_t platformId = 0; ///< 1 is the consumer family of Windows
};

/// The level-5 record of a printer, laid out as the printing interface hands it over. The two names
/// end with a zero and lie in the same buffer behind the record.
struct Druckersatz5 {
    char* printerName = nullptr;
    char* portName = nullptr;
    std::uint32_t attributes = 0;
    std::uint32_t deviceNotSelectedTimeout = 0; ///< milliseconds
    std::uint32_t transmissionRetryTimeout = 0; ///< milliseconds
};

/// What the choice of a printer needs from Windows, under the system's own names. Texts are in the
/// system's code page and end with a zero. Comes in from outside, so both ways of choosing a
/// printer run on every system.
class Druckertabelle {
public:
    using Handle = void*;

    virtual ~Druckertabelle() = default;

    virtual bool GetVersionExA(Versionsangabe& version) = 0;
    /// @p access the wished rights. On success @p printer must be closed again.
    virtual bool OpenPrinterA(const char* name, Handle& printer, std::uint32_t access) = 0;
    /// Writes the record of @p level to @p buffer of @p size bytes and the bytes it takes to
    /// @p needed. False when the buffer is too small.
    virtual bool GetPrinterA(Handle printer, std::uint32_t level, unsigned char* buffer,
                             std::uint32_t size, std::uint32_t& needed) = 0;
    virtual bool SetPrinterA(Handle printer, std::uint32_t level, Druckersatz5& record) = 0;
    virtual void ClosePrinter(Handle printer) = 0;
    /// The number of the last failure.
    virtual std::uint32_t GetLastError() = 0;

    /// Reads from the user's profile (win.ini). Without @p key: the key names of the section, each
    /// ending with a zero. Returns the characters written to @p buffer of @p size characters,
    /// without the last zero; a list that does not fit is cut and returns @p size - 2.
    virtual std::uint32_t GetProfileStringA(const char* section, const char* key,
                                            const char* fallback, char* buffer,
                                            std::uint32_t size) = 0;
    virtual bool WriteProfileStringA(const char* section, const char* key, const char* value) = 0;
    /// @p window 0xFFFF means all top-level windows.
    virtual void SendMessageA(std::uintptr_t window, std::uint32_t message, std::uintptr_t first,
                              const char* second) = 0;
};

/// The operations of this Windows. On other systems there is none.
[[nodiscard]] Druckertabelle& windowsDruckertabelle();

} // namespace tarvel
