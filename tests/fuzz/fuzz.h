#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace tarvel {

/// Ends the run with a finding, of which the fuzzer keeps the input, unless @p wahr.
inline void verlange(bool wahr, const char* was) {
    if (!wahr) {
        std::fprintf(stderr, "Broken promise: %s\n", was);
        std::abort();
    }
}

/// The same for two texts, which the log then shows.
inline void verlangeGleich(const QByteArray& soll, const QByteArray& ist, const char* was) {
    if (soll != ist) {
        std::fprintf(stderr, "expected: %s\nactual:   %s\n", soll.data(), ist.data());
    }
    verlange(soll == ist, was);
}

[[nodiscard]] inline QByteArrayView eingabe(const std::uint8_t* daten, std::size_t größe) {
    return {daten, static_cast<qsizetype>(größe)};
}

/// Takes the first line off @p rest. Inputs of several parts have them line by line, so that a
/// corpus can be written and read by hand.
inline QByteArrayView nimmZeile(QByteArrayView& rest) {
    const qsizetype ende = rest.indexOf('\n');
    const QByteArrayView zeile = ende < 0 ? rest : rest.first(ende);
    rest = ende < 0 ? QByteArrayView() : rest.sliced(ende + 1);
    return zeile;
}

} // namespace tarvel
