// How fast INI text is parsed, beside two other parsers and a bare scan for line ends, and that the
// time grows with the size only. Every result is bytes a second.
#define SI_NO_CONVERSION
#include <SimpleIni.h>
#include <benchmark/benchmark.h>
#include <ini.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>

#include "core/ini/IniDocument.h"

namespace {

using tamarind::IniDocument;

constexpr std::size_t kMegabyte = 1U << 20;

// Lines as in a settings file: short numbers, paths, lists of masks, in sections of 40 keys.
std::string TypicalText(std::size_t size) {
    const std::string values[] = {"1",
                                  "0",
                                  "258",
                                  "1280,1024,96,0",
                                  "%COMMANDER_PATH%\\Plugins\\wlx\\viewer\\viewer.wlx",
                                  "ext=\"TXT\" | ext=\"INI\"",
                                  "*.zip;*.rar;*.7z;*.tar;*.gz",
                                  "\"C:\\Program Files\\Editor\\editor.exe\" \"%1\"",
                                  "",
                                  "16777215"};
    std::mt19937 random(1);
    std::string text;
    for (unsigned key = 0; text.size() < size; ++key) {
        if (key % 40 == 0) {
            text += "[Section " + std::to_string(key / 40) + "]\r\n";
        }
        std::string name(4 + random() % 16, 'a');
        for (char& c : name) {
            c = static_cast<char>('a' + random() % 26);
        }
        text += name + std::to_string(key) + "=" + values[random() % std::size(values)];
        text += random() % 20 == 0 ? " some more words of a title or a path\r\n" : "\r\n";
    }
    return text;
}

std::string RepeatedLines(std::size_t count, std::string (*line)(std::size_t)) {
    std::string text = "[First]\r\n";
    for (std::size_t i = 0; i < count; ++i) {
        text += line(i);
    }
    return text;
}

void CountBytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void Parse(benchmark::State& state) {
    const std::string text = TypicalText(kMegabyte);
    for (auto _ : state) {
        benchmark::DoNotOptimize(IniDocument::Parse(text, 1252));
    }
    CountBytes(state, text);
}

void ParseAndFirstLookUp(benchmark::State& state) {
    const std::string text = TypicalText(kMegabyte);
    for (auto _ : state) {
        const IniDocument document = IniDocument::Parse(text, 1252);
        benchmark::DoNotOptimize(document.FindValue("Section 1", "none"));
    }
    CountBytes(state, text);
}

void SimpleIniLoad(benchmark::State& state) {
    const std::string text = TypicalText(kMegabyte);
    for (auto _ : state) {
        CSimpleIniA ini;
        ini.SetMultiKey(true);
        if (ini.LoadData(text) < 0) {
            state.SkipWithError("not loaded");
        }
    }
    CountBytes(state, text);
}

int CountKey(void* count, const char*, const char*, const char*) {
    ++*static_cast<int*>(count);
    return 1;
}

void InihParse(benchmark::State& state) {
    const std::string text = TypicalText(kMegabyte);
    int keys = 0;
    for (auto _ : state) {
        keys = 0;
        ini_parse_string(text.c_str(), CountKey, &keys);
    }
    state.counters["keys"] = keys;
    CountBytes(state, text);
}

void LineScan(benchmark::State& state) {
    const std::string text = TypicalText(kMegabyte);
    for (auto _ : state) {
        std::size_t lines = 0;
        const char* const end = text.data() + text.size();
        for (const char* at = text.data(); at < end; ++lines) {
            const auto size = static_cast<std::size_t>(end - at);
            const void* const found = std::memchr(at, '\n', size);
            at = found == nullptr ? end : static_cast<const char*>(found) + 1;
        }
        benchmark::DoNotOptimize(lines);
    }
    CountBytes(state, text);
}

// The same form of text in two sizes: bytes a second must not fall when there is four times as
// much.
void Shape(benchmark::State& state, std::string (*make)(std::size_t)) {
    const std::string text = make(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const IniDocument document = IniDocument::Parse(text, 1252);
        benchmark::DoNotOptimize(document.FindValue("First", "none"));
    }
    CountBytes(state, text);
    state.SetItemsProcessed(state.iterations() * std::ranges::count(text, '\n'));  // lines
}

std::string OneSection(std::size_t n) {
    return RepeatedLines(n, [](std::size_t i) { return "key" + std::to_string(i) + "=value\r\n"; });
}
std::string ManySections(std::size_t n) {
    return RepeatedLines(n,
                         [](std::size_t i) { return "[s" + std::to_string(i) + "]\r\nx=1\r\n"; });
}
std::string OneName(std::size_t n) {
    return RepeatedLines(n, [](std::size_t) { return std::string("key=value\r\n"); });
}
std::string OneSectionName(std::size_t n) {
    return RepeatedLines(n, [](std::size_t) { return std::string("[A]\r\nkey=value\r\n"); });
}
std::string LongLines(std::size_t n) {
    return "[First]\r\nkey=" + std::string(n * 32, '=') + "\r\n;" + std::string(n * 32, 'c');
}

BENCHMARK(Parse);
BENCHMARK(ParseAndFirstLookUp);
BENCHMARK(SimpleIniLoad);
BENCHMARK(InihParse);
BENCHMARK(LineScan);
BENCHMARK_CAPTURE(Shape, one_section, OneSection)->Arg(8000)->Arg(32000)->Arg(128000);
BENCHMARK_CAPTURE(Shape, many_sections, ManySections)->Arg(8000)->Arg(32000)->Arg(128000);
BENCHMARK_CAPTURE(Shape, one_name, OneName)->Arg(8000)->Arg(32000)->Arg(128000);
BENCHMARK_CAPTURE(Shape, one_section_name, OneSectionName)->Arg(8000)->Arg(32000)->Arg(128000);
BENCHMARK_CAPTURE(Shape, long_lines, LongLines)->Arg(8000)->Arg(32000)->Arg(128000);

}  // namespace
