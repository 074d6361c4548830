// What the window of pending changes needs when it opens: 500 changes of 32,000 keys with the lines
// of the file that a save will change, beside reading the states of all keys from that file; and
// one step of 1,000 keys, taken back and made again.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/OpenFiles.h"
#include "model/files/KeyStates.h"
#include "model/files/SavePreview.h"
#include "model/keys/KeyEditor.h"
#include "model/keys/KeyList.h"

namespace {

using namespace tamarind;
using namespace tamarind::bench;

constexpr int kChanges = 500;
constexpr int kStep = 1000;  // keys of one step
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

void UndoAndRedo(benchmark::State& state) {
    KeyStore& store = Files().store;
    DeriveKeyStates(store, Files().settings, [] {});
    KeyEditor editor(store);
    std::vector<KeyNumber> keys;
    for (int key = 0; key < kStep; ++key) {
        keys.push_back(static_cast<KeyNumber>(1 + key * (kKeys / kStep)));
    }
    const std::size_t changed = editor.Comment(keys).size();
    for (auto _ : state) {
        if (editor.Undo().size() != changed || editor.Redo().size() != changed || changed == 0) {
            state.SkipWithError("keys are missing");
        }
    }
}

BENCHMARK(DeriveStates)->Name("Pending/derive")->Unit(benchmark::kMillisecond);
BENCHMARK(LookAtPendingChanges)->Name("Pending/look")->Unit(benchmark::kMillisecond);
BENCHMARK(UndoAndRedo)->Name("Pending/undo and redo")->Unit(benchmark::kMillisecond);

}  // namespace
