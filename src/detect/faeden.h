#pragma once

#include <atomic>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace tarvel {

/// Calls @p arbeit(i) for each i from 0 to @p anzahl - 1, in no certain order, on up to @p fäden
/// threads, the calling one among them. Each call has results of its own to write, so that what
/// comes out does not depend on the number of threads. What a call throws ends the others at their
/// next one and is thrown here.
template <typename Arbeit>
void verteile(int anzahl, int fäden, const Arbeit& arbeit) {
    std::atomic<int> nächste = 0;
    std::atomic_flag gescheitert;
    std::exception_ptr grund;
    const auto schleife = [&] {
        try {
            for (int i = nächste++; i < anzahl; i = nächste++)
                arbeit(i);
        } catch (...) {
            if (!gescheitert.test_and_set())
                grund = std::current_exception();
            nächste = anzahl;
        }
    };
    {
        std::vector<std::jthread> andere;
        try {
            for (int i = 1; i < fäden && i < anzahl; ++i)
                andere.emplace_back(schleife);
        } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch)
            // The system has no more threads: those there are do the work.
        }
        schleife();
    }
    if (grund)
        std::rethrow_exception(grund);
}

} // namespace tarvel
