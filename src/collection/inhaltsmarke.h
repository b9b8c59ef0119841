#pragma once

#include <QByteArrayView>

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace tarvel {

/// A number that contents share when they are the same, and otherwise practically never. It is
/// quick rather than safe against somebody who wants two contents to share one.
class Inhaltsmarke {
public:
    /// Adds a part; where parts end counts too.
    void füge(QByteArrayView teil) {
        const char* ort = teil.data();
        auto rest = static_cast<std::size_t>(teil.size());
        // Four sums beside each other do not wait for one another.
        for (; rest >= 4 * Wortlänge; rest -= 4 * Wortlänge, ort += 4 * Wortlänge) {
            for (std::size_t i = 0; i < 4; ++i) {
                mische(summen_.at(i), wort(ort + i * Wortlänge, Wortlänge));
            }
        }
        std::size_t i = 0;
        for (; rest >= Wortlänge; rest -= Wortlänge, ort += Wortlänge) {
            mische(summen_.at(i++), wort(ort, Wortlänge));
        }
        mische(summen_[3], wort(ort, rest));
        mische(summen_[0], static_cast<quint64>(teil.size()));
    }

    [[nodiscard]] quint64 wert() const {
        quint64 ergebnis = 0;
        for (const quint64 summe : summen_) {
            mische(ergebnis, summe);
            ergebnis ^= ergebnis >> 32;
        }
        return ergebnis;
    }

private:
    static constexpr std::size_t Wortlänge = 8;

    static quint64 wort(const char* ort, std::size_t länge) {
        quint64 w = 0;
        if (länge > 0) {
            std::memcpy(&w, ort, länge);
        }
        return w;
    }
    static void mische(quint64& summe, quint64 w) {
        summe = std::rotl(summe ^ w, 29) * 0x9E3779B97F4A7C15ULL;
    }

    std::array<quint64, 4> summen_{1, 2, 3, 4};
};

} // namespace tarvel
