// Saving 500 changes into a file of 16,000 keys: ours, which replaces the file once and safely,
// against one call of the system's profile function for each.
#include "bench/windows/Harness.h"
#include "core/text/WideText_win32.h"
#include "model/files/DataFile.h"
#include "model/files/KeyStates.h"
#include "model/files/SettingsWriter.h"
#include "model/keys/KeyEditor.h"

namespace tamarind::bench {
namespace {

constexpr int kKeys = 32000;  // half of them are in the settings file
constexpr int kChanges = 500;

class NoQuestions final : public SaveQuestions {
public:
    void OnRecordsChanged(const OutsideChanges&, const std::vector<KeyNumber>&) override {}
    bool HasConflicts() override { return false; }
    bool ResolveConflicts() override { return false; }
    bool MayMakeAnew(const std::string&) override { return false; }
};

double MeasureOurs(const std::wstring& path, const SampleFiles& sample) {
    DiskFileSystem disk;
    IniFiles files(disk);
    const CodePage codePage = files.SystemCodePage();
    const auto dataFile =
        std::make_shared<const IniDocument>(IniDocument::Parse(sample.dataFile, codePage));
    KeyStore store;
    LoadDataFile(
        dataFile, "none", [] {}, store);
    int round = 0;
    std::vector<double> times;
    for (int run = 0; run < 9; ++run) {
        WriteOldFile(path, sample.settings);
        const ProcessEnvironment environment;
        SettingsFiles settings = SettingsFiles::Read(files, environment, Narrow(path));
        DeriveKeyStates(store, settings, [] {});
        KeyEditor editor(store);
        ++round;
        for (int change = 0; change < kChanges; ++change) {
            editor.SetValue(static_cast<KeyNumber>(1 + change * (kKeys / kChanges)),
                            "changed " + std::to_string(round));
        }
        const double start = NowMs();
        NoQuestions questions;
        const SaveResult result =
            SettingsWriter(store, files, environment, settings, questions).Save();
        times.push_back(NowMs() - start);
        if (!result.Succeeded()) {
            std::printf("the save failed\n");
        }
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double MeasureSystem(const std::wstring& path, const SampleFiles& sample) {
    return MedianMs(1, [&] {
        WriteOldFile(path, sample.settings);
        for (int change = 0; change < kChanges; ++change) {
            const int key = change * (kKeys / kChanges);
            const std::wstring section = L"Section" + std::to_wstring(key / 500);
            const std::wstring name = L"SomeSetting" + std::to_wstring(key);
            WritePrivateProfileStringW(section.c_str(), name.c_str(), L"changed", path.c_str());
        }
    });
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    using namespace tamarind::bench;
    const std::wstring path = MakeScratchFolder(L"save") + L"settings.ini";
    const SampleFiles sample = MakeSample(kKeys);
    const double ours = MeasureOurs(path, sample);
    const double system = MeasureSystem(path, sample);
    std::printf("%d changes into 16,000 keys: ours %.2f ms, system %.0f ms, system / ours %.0f\n",
                kChanges, ours, system, system / ours);
    return 0;
}
