// What the window of pending changes needs when it opens: 500 changes of 32,000 keys with the lines
// of the file that a save will change, beside reading the states of all keys from that file.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "model/files/DataFile.h"
#include "model/files/KeyStates.h"
#include "model/files/SavePreview.h"
#include "model/keys/KeyEditor.h"
#include "model/keys/KeyList.h"

namespace {

using namespace tamarind;

constexpr int kKeys = 32000;
constexpr int kChanges = 500;
constexpr int kKeysInCategory = 125;

// Half of the keys are in the settings.
struct OpenFiles {
    OpenFiles() {
        std::string dataFile;
        std::string text;
        for (int key = 0; key < kKeys; ++key) {
            const std::string name = "SomeSetting" + std::to_string(key);
            if (key % kKeysInCategory == 0) {
                const std::string section = "S" + std::to_string(key);
                dataFile += "[C" + section + "]\r\nCategoryTargetSection=" + section + "\r\n";
                text += "[" + section + "]\r\n";
            }
            dataFile += name + "=1///What this setting does.@0 = off@1 = on\r\n";
            text += key % 2 == 0 ? name + "=value of this setting\r\n" : "";
        }
        LoadDataFile(
            std::make_shared<const IniDocument>(IniDocument::Parse(dataFile, 1252)), "none", [] {},
            store);
        settings = SettingsFiles::Read(
            [&](const std::string&) {
                return IniSnapshot{
                    std::make_shared<const IniDocument>(IniDocument::Parse(text, 1252)),
                    FileError::None, true};
            },
            environment, "C:\\Wincmd.ini");
    }

    struct NoEnvironment final : Environment {
        std::string Variable(const std::string&) const override { return {}; }
        std::string FullPath(const std::string& path) const override { return path; }
    } environment;
    KeyStore store;
    SettingsFiles settings;
};

OpenFiles& Files() {
    static OpenFiles files;
    return files;
}

void DeriveStates(benchmark::State& state) {
    for (auto _ : state) {
        DeriveKeyStates(Files().store, Files().settings, [] {});
    }
}

void LookAtPendingChanges(benchmark::State& state) {
    KeyStore& store = Files().store;
    DeriveKeyStates(store, Files().settings, [] {});
    KeyEditor editor(store);
    for (int change = 0; change < kChanges; ++change) {
        editor.SetValue(static_cast<KeyNumber>(1 + change * (kKeys / kChanges)), "changed");
    }
    for (auto _ : state) {
        const SavePreview preview = PreviewSave(store, Files().settings);
        std::size_t characters = 0;
        for (const KeyNumber key : store.PendingKeys()) {
            characters += LineInSettings(store, key).size() + LineOfState(store.Record(key)).size();
        }
        benchmark::DoNotOptimize(characters);
        if (preview.files.size() != 1 || preview.files[0].lines.size() < 2 * kChanges) {
            state.SkipWithError("lines are missing");
        }
    }
}

BENCHMARK(DeriveStates)->Name("Pending/derive")->Unit(benchmark::kMillisecond);
BENCHMARK(LookAtPendingChanges)->Name("Pending/look")->Unit(benchmark::kMillisecond);

}  // namespace
