// A search through a data file of 32,000 keys to its end against one pass of the run-time library's
// memchr over the same bytes.
#include <cstring>

#include "bench/windows/Harness.h"
#include "model/files/DataFile.h"
#include "model/keys/KeySearch.h"

namespace tamarind::bench {
namespace {

void Measure() {
    constexpr int kRuns = 101;
    const SampleFiles sample = MakeSample(32000);
    KeyStore store;
    LoadDataFile(
        std::make_shared<const IniDocument>(IniDocument::Parse(sample.dataFile, 1252)), "none",
        [] {}, store);
    std::size_t found = 0;
    const double pass = MedianMs(kRuns, [&] {
        found += std::memchr(sample.dataFile.data(), '~', sample.dataFile.size()) != nullptr;
    });
    for (const bool inNames : {true, false}) {
        KeySearch search;
        search.SetSearchesNames(inNames);
        search.SetText("sentinel");
        const double time = MedianMs(kRuns, [&] { found += search.FindNext(store).has_value(); });
        std::printf("search of %s, 32,000 keys, %.1f MB: %.3f ms, memchr %.3f ms, ratio %.2f\n",
                    inNames ? "names" : "descriptions",
                    static_cast<double>(sample.dataFile.size()) / 1e6, time, pass, time / pass);
    }
    if (found != 0) {
        std::printf("found what is not there\n");
    }
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    tamarind::bench::Measure();
    return 0;
}
