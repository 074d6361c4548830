// What a stroke of a key in the filter needs besides drawing: its words among the texts and values
// of 32,000 keys, of which half are set, with the order of the hits. Making the index comes first.
#include <benchmark/benchmark.h>

#include "bench/OpenFiles.h"
#include "model/files/KeyStates.h"
#include "model/keys/FilterIndex.h"

namespace {

using namespace tamarind;
using namespace tamarind::bench;

FilterIndex MakeIndex() {
    FilterSources sources;
    sources.headingOf = [](std::string_view) { return std::string("Heading"); };
    sources.keywordsOf = [](KeyNumber) { return std::string(); };
    sources.typeOf = [](KeyNumber) { return ValueKind::Bool; };
    return {Files().store, sources};
}

void Index(benchmark::State& state) {
    for (auto _ : state) {
        state.counters["bytes_per_byte_of_data_file"] =
            static_cast<double>(MakeIndex().Bytes()) / static_cast<double>(Files().dataFile.size());
    }
}

void Find(benchmark::State& state, const char* text, std::size_t hits) {
    DeriveKeyStates(Files().store, Files().settings, [] {});
    FilterIndex index = MakeIndex();
    for (auto _ : state) {
        if (index.Find(ParseFilter(text)).size() != hits) {
            state.SkipWithError("other hits");
        }
    }
}

BENCHMARK(Index)->Name("Filter/index")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, letter, "e", kKeys)->Name("Filter/letter")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, word, "setting", kKeys)->Name("Filter/word")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, words, "does some value", kKeys / 2)
    ->Name("Filter/three_words")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, none, "nowhere", 0)->Name("Filter/none")->Unit(benchmark::kMillisecond);

}  // namespace
