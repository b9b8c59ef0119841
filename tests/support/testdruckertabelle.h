#pragma once

#include "platform/druckertabelle.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <vector>

namespace tarvel {

/// A Windows with printers that exist only in memory. Records what was done to them.
class TestDruckertabelle final : public Druckertabelle {
public:
    struct Gerät {
        QByteArray name;
        QByteArray anschluss;
        std::uint32_t attribute = 0;
        std::uint32_t wartezeit = 0;
        std::uint32_t wiederholzeit = 0;
    };
    struct Eintrag {
        QByteArray schlüssel;
        QByteArray wert;
    };
    struct Rundruf {
        std::uintptr_t fenster;
        std::uint32_t nachricht;
        std::uintptr_t erster;
        QByteArray zweiter;
    };

    std::optional<std::uint32_t> platformId = 2; ///< no version record when missing
    std::map<QByteArray, QList<Eintrag>> profil;
    std::vector<Gerät> geräte;
    std::uint32_t fehler = 0; ///< SetPrinterA fails with this number
    std::vector<Rundruf> rundrufe;
    std::uint32_t zugriff = 0;
    std::vector<std::uint32_t> satzarten;
    int offen = 0;

    [[nodiscard]] QByteArray wert(const QByteArray& section, const QByteArray& key) {
        for (const Eintrag& eintrag : profil[section]) {
            if (eintrag.schlüssel == key) {
                return eintrag.wert;
            }
        }
        return {};
    }

    bool GetVersionExA(Versionsangabe& version) override {
        version.platformId = platformId.value_or(version.platformId);
        return platformId.has_value();
    }

    bool OpenPrinterA(const char* name, Handle& printer, std::uint32_t access) override {
        zugriff = access;
        for (Gerät& gerät : geräte) {
            if (gerät.name == name) {
                printer = &gerät;
                ++offen;
                return true;
            }
        }
        return false;
    }

    bool GetPrinterA(Handle printer, std::uint32_t level, unsigned char* buffer, std::uint32_t size,
                     std::uint32_t& needed) override {
        satzarten.push_back(level);
        const Gerät& gerät = *static_cast<Gerät*>(printer);
        const auto länge = [](const QByteArray& text) { return std::size_t(text.size()) + 1; };
        needed = std::uint32_t(sizeof(Druckersatz5) + länge(gerät.name) + länge(gerät.anschluss));
        if (size < needed) {
            letzter_ = 122;
            return false;
        }
        auto* name = reinterpret_cast<char*>(buffer) + sizeof(Druckersatz5);
        auto* anschluss = name + länge(gerät.name);
        std::memcpy(name, gerät.name.constData(), länge(gerät.name));
        std::memcpy(anschluss, gerät.anschluss.constData(), länge(gerät.anschluss));
        const Druckersatz5 satz{name, anschluss, gerät.attribute, gerät.wartezeit,
                                gerät.wiederholzeit};
        std::memcpy(buffer, &satz, sizeof(satz));
        return true;
    }

    bool SetPrinterA(Handle printer, std::uint32_t level, Druckersatz5& record) override {
        satzarten.push_back(level);
        if (fehler != 0) {
            letzter_ = fehler;
            return false;
        }
        *static_cast<Gerät*>(printer) = {record.printerName, record.portName, record.attributes,
                                         record.deviceNotSelectedTimeout,
                                         record.transmissionRetryTimeout};
        return true;
    }

    void ClosePrinter(Handle /*printer*/) override {
        --offen;
        letzter_ = 0;
    }

    std::uint32_t GetLastError() override { return letzter_; }

    std::uint32_t GetProfileStringA(const char* section, const char* key, const char* fallback,
                                    char* buffer, std::uint32_t size) override {
        QByteArray text;
        if (key != nullptr) {
            text = wert(section, key);
            return kopiere(text.isEmpty() ? QByteArray(fallback) : text, buffer, size, 1);
        }
        for (const Eintrag& eintrag : profil[section]) {
            text += eintrag.schlüssel + '\0';
        }
        return kopiere(text, buffer, size, 2);
    }

    bool WriteProfileStringA(const char* section, const char* key, const char* value) override {
        QList<Eintrag>& einträge = profil[section];
        einträge.removeIf([&](const Eintrag& eintrag) { return eintrag.schlüssel == key; });
        einträge.append(Eintrag{key, value});
        return true;
    }

    void SendMessageA(std::uintptr_t window, std::uint32_t message, std::uintptr_t first,
                      const char* second) override {
        rundrufe.push_back({window, message, first, second});
    }

private:
    /// The text cut so that @p nullen zeros follow it.
    static std::uint32_t kopiere(const QByteArray& text, char* buffer, std::uint32_t size,
                                 std::uint32_t nullen) {
        const std::uint32_t länge = std::min(std::uint32_t(text.size()), size - nullen);
        std::memcpy(buffer, text.constData(), länge);
        std::memset(buffer + länge, 0, nullen);
        return länge;
    }

    std::uint32_t letzter_ = 0;
};

} // namespace tarvel
