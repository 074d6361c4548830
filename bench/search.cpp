// A search through a data file of 32,000 keys to its end, beside one pass of memchr over the same
// bytes. Every result is bytes a second.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "model/files/DataFile.h"
#include "model/keys/KeySearch.h"

namespace {

using namespace tamarind;

std::string DataFileText() {
    std::string text;
    for (int key = 0; key < 32000; ++key) {
        if (key % 125 == 0) {
            text += "[C" + std::to_string(key) + "]\r\nCategoryTargetSection=S\r\n";
        }
        text += "SomeSetting" + std::to_string(key) +
                "=1///What this setting does, in a sentence or two.@0 = off@1 = on\r\n";
    }
    return text;
}

class LoadedFile {
public:
    LoadedFile() : text(DataFileText()) {
        LoadDataFile(
            std::make_shared<const IniDocument>(IniDocument::Parse(text, 1252)), "none", [] {},
            store);
    }
    std::string text;
    KeyStore store;
};

const LoadedFile& File() {
    static const LoadedFile file;
    return file;
}

void SetBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * File().text.size()));
}

void MemchrPass(benchmark::State& state) {
    const std::string& text = File().text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::memchr(text.data(), '~', text.size()));
    }
    SetBytes(state);
}

void Search(benchmark::State& state, const char* what, bool inNames) {
    KeySearch search;
    search.SetText(what);
    search.SetSearchesNames(inNames);
    for (auto _ : state) {
        if (search.FindNext(File().store)) {
            state.SkipWithError("found what is not there");
        }
    }
    SetBytes(state);
}

BENCHMARK(MemchrPass);
BENCHMARK_CAPTURE(Search, descriptions, "sentinel value", false);
BENCHMARK_CAPTURE(Search, names, "sentinel", true);
BENCHMARK_CAPTURE(Search, beyond_ascii, "\xC3\xBC", false);

}  // namespace
