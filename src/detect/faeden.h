#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace tarvel {

/// Calls @p arbeit(i) for each i from 0 to @p anzahl - 1, in no certain order, on up to @p fäden
/// threads, the calling one among them. Each call has results of its own to write, so that what
/// comes out does not depend on the number of threads.
template <typename Arbeit>
void verteile(int anzahl, int fäden, const Arbeit& arbeit) {
    std::atomic<int> nächste = 0;
    const auto schleife = [&] {
        for (int i = nächste++; i < anzahl; i = nächste++)
            arbeit(i);
    };
    std::vector<std::jthread> andere;
    for (int i = 1; i < fäden && i < anzahl; ++i)
        andere.emplace_back(schleife);
    schleife();
}

} // namespace tarvel
