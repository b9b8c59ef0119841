#include "platform/druckertabelle.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#include <winspool.h>

#ifdef _MSC_VER
#pragma warning(disable : 4996) // the version record is asked for what it says, not believed
#endif

namespace tarvel {
namespace {

// The record goes to the system as it is.
static_assert(sizeof(Druckersatz5) == sizeof(PRINTER_INFO_5A));
static_assert(offsetof(Druckersatz5, printerName) == offsetof(PRINTER_INFO_5A, pPrinterName));
static_assert(offsetof(Druckersatz5, portName) == offsetof(PRINTER_INFO_5A, pPortName));
static_assert(offsetof(Druckersatz5, attributes) == offsetof(PRINTER_INFO_5A, Attributes));
static_assert(offsetof(Druckersatz5, deviceNotSelectedTimeout) ==
              offsetof(PRINTER_INFO_5A, DeviceNotSelectedTimeout));
static_assert(offsetof(Druckersatz5, transmissionRetryTimeout) ==
              offsetof(PRINTER_INFO_5A, TransmissionRetryTimeout));

class WindowsTabelle final : public Druckertabelle {
public:
    bool GetVersionExA(Versionsangabe& version) override {
        OSVERSIONINFOA record{};
        record.dwOSVersionInfoSize = sizeof(record);
        if (!::GetVersionExA(&record)) {
            return false;
        }
        version.platformId = record.dwPlatformId;
        return true;
    }

    bool OpenPrinterA(const char* name, Handle& printer, std::uint32_t access) override {
        PRINTER_DEFAULTSA wish{};
        wish.DesiredAccess = access;
        return ::OpenPrinterA(const_cast<char*>(name), &printer, &wish) != 0;
    }

    bool GetPrinterA(Handle printer, std::uint32_t level, unsigned char* buffer, std::uint32_t size,
                     std::uint32_t& needed) override {
        DWORD bytes = 0;
        const BOOL done = ::GetPrinterA(printer, level, buffer, size, &bytes);
        needed = bytes;
        return done != 0;
    }

    bool SetPrinterA(Handle printer, std::uint32_t level, Druckersatz5& record) override {
        return ::SetPrinterA(printer, level, reinterpret_cast<LPBYTE>(&record), 0) != 0;
    }

    void ClosePrinter(Handle printer) override { ::ClosePrinter(printer); }

    std::uint32_t GetLastError() override { return ::GetLastError(); }

    std::uint32_t GetProfileStringA(const char* section, const char* key, const char* fallback,
                                    char* buffer, std::uint32_t size) override {
        return ::GetProfileStringA(section, key, fallback, buffer, size);
    }

    bool WriteProfileStringA(const char* section, const char* key, const char* value) override {
        return ::WriteProfileStringA(section, key, value) != 0;
    }

    void SendMessageA(std::uintptr_t window, std::uint32_t message, std::uintptr_t first,
                      const char* second) override {
        ::SendMessageA(reinterpret_cast<HWND>(window), message, first,
                       reinterpret_cast<LPARAM>(second));
    }
};

} // namespace

Druckertabelle& windowsDruckertabelle() {
    static WindowsTabelle tabelle;
    return tabelle;
}

} // namespace tarvel
