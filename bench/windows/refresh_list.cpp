// The key list of the real main window with 700 and with 32,000 rows: filling and painting it
// again, and changing one value with its undo entry and its row's repaint.
#include "bench/windows/Harness.h"
#include "core/Environment.h"
#include "core/WideText_win32.h"
#include "ui/main/frmMain.h"
#include "ui/shell/RealOtherPrograms.h"
#include "ui/shell/WindowPrompts.h"

namespace tamarind::bench {
namespace {

// Names the settings file as if Total Commander had stored it.
class BenchRegistry final : public Registry {
public:
    explicit BenchRegistry(std::string settings) : m_settings(std::move(settings)) {}

    std::optional<RegistryValue> Query(std::uint32_t, const std::string&,
                                       const std::string& valueName) override {
        if (valueName != "IniFileName") {
            return std::nullopt;
        }
        return RegistryValue{kRegistryString, EncodeUtf16Le(m_settings) + std::string(2, '\0')};
    }
    bool Store(std::uint32_t, const std::string&, const std::string&,
               const RegistryValue&) override {
        return false;
    }
    bool DeleteKey(std::uint32_t, const std::string&) override { return false; }

private:
    std::string m_settings;
};

struct Times {
    double refresh = 0;
    double change = 0;
};

Times Measure(const std::wstring& folder, int keys) {
    const SampleFiles sample = MakeSample(keys);
    WriteOldFile(folder + L"data.tmdf", sample.dataFile);
    WriteOldFile(folder + L"Wincmd.ini", sample.settings);
    DiskFileSystem disk;
    IniFiles files(disk);
    BenchRegistry registry(Narrow(folder + L"Wincmd.ini"));
    const ProcessEnvironment environment;
    WindowPrompts prompts(L"bench");
    RealOtherPrograms programs;
    EditorSession session(
        {files, registry, environment, prompts, programs, Narrow(folder), "0", {15360, 11520}});
    session.LoadSettings();
    frmMain window(session);
    if (!window.Create() || !session.Activate("\"" + Narrow(folder) + "data.tmdf\"")) {
        return {};
    }
    window.ShowFirst(SW_SHOWNORMAL);
    const auto settle = [] {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message != WM_QUIT) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        GdiFlush();
    };
    settle();
    Times times;
    times.refresh = MedianMs(41, [&] {
        session.SetKeyFilter(KeyFilter::ShowAll);
        settle();
    });
    int number = 0;
    times.change = MedianMs(201, [&] {
        session.SetValue(std::to_string(++number));
        settle();
    });
    std::printf("%6u rows: refresh %6.2f ms, change of a value %6.3f ms\n",
                static_cast<unsigned>(session.Keys().Size()), times.refresh, times.change);
    return times;
}

int Run() {
    const std::wstring folder = MakeScratchFolder(L"list");
    Measure(folder, 700);  // a warm-up
    const Times small = Measure(folder, 700);
    const Times large = Measure(folder, 32000);
    std::printf("32,000 rows / 700 rows: refresh %.2f, change of a value %.2f\n",
                large.refresh / small.refresh, large.change / small.change);
    return small.refresh > 0 && large.refresh > 0 ? 0 : 1;
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    return tamarind::bench::Run();
}
