// The commands of the real main window with 700 and with 32,000 keys, each up to the moment when
// everything is painted: no command at 32,000 keys may take longer than one and a half times as
// long as at 700 and one repaint of the whole window.
#include "bench/windows/Harness.h"
#include "core/system/Environment.h"
#include "core/text/WideText_win32.h"
#include "ui/main/WindowPrompts.h"
#include "ui/main/frmMain.h"
#include "ui/shell/RealOtherPrograms.h"

namespace tamarind::bench {
namespace {

// Names the settings file as if Total Commander had stored it.
class BenchRegistry final : public Registry {
public:
    explicit BenchRegistry(std::string settings) : m_settings(std::move(settings)) {}

    std::optional<RegistryValue> Query(std::uint32_t, const std::string&,
                                       const std::string& valueName, RegistryView) override {
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

struct Timed {
    const char* name;
    double ms;
};

// Every command in turn, and last a repaint.
std::vector<Timed> TimeCommands(EditorSession& session, const frmMain& window, int keys) {
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
    std::vector<Timed> times;
    const auto time = [&](const char* name, const auto& command) {
        settle();
        times.push_back({name, MedianMs(61, [&] {
                             command();
                             settle();
                         })});
    };
    int number = 0;
    time("category and all keys again", [&] {
        session.Selection().SelectCategory(static_cast<NodeIndex>(++number % 5 + 1));
        session.Selection().SelectCategory(kRootNode);
    });
    time("filter active and all again", [&] {
        session.Selection().SetKeyFilter(KeyFilter::ShowActive);
        session.Selection().SetKeyFilter(KeyFilter::ShowAll);
    });
    // What the program does until Windows asks it to paint.
    settle();
    times.push_back({"another row, not painted", MedianMs(61, [&] {
                         session.Selection().ShowKeyDetails(++number % 2 == 0 ? 0 : 1);
                     })});
    for (const char* const name : {"another row", "without the value bar"}) {
        // To and fro, so that the list does not scroll.
        time(name, [&] { session.Selection().ShowKeyDetails(++number % 2 == 0 ? 0 : 1); });
        session.Place().SetValueBarVisible(!session.Place().IsValueBarVisible());
    }
    session.Place().SetValueBarVisible(true);
    // The last key but one is the only hit, so that each step goes through all keys.
    session.Selection().Search().SetSearchesNames(true);
    session.Selection().SetSearchText("SomeSetting" + std::to_string(keys - 2));
    time("search in names", [&] {
        session.Selection().Search().Restart();
        session.Selection().FindNextString();
        session.Selection().ShowKeyDetails(0);
    });
    time("change of a value", [&] { session.Commands().SetValue(std::to_string(++number)); });
    time("undo and redo", [&] {
        session.Commands().Undo();
        session.Commands().Redo();
    });
    time("repaint", [&] {
        RedrawWindow(window.Handle(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    });
    return times;
}

std::vector<Timed> Measure(const std::wstring& folder, int keys) {
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
    session.Selection().SelectCategory(kRootNode);
    return TimeCommands(session, window, keys);
}

int Run() {
    const std::wstring folder = MakeScratchFolder(L"list");
    Measure(folder, 700);  // a warm-up
    const std::vector<Timed> few = Measure(folder, 700);
    const std::vector<Timed> many = Measure(folder, 32000);
    if (few.empty() || many.empty()) {
        std::printf("the window did not open\n");
        return 1;
    }
    const double repaint = few.back().ms;
    for (std::size_t at = 0; at < few.size(); ++at) {
        std::printf(
            "%-28s 700 keys %7.3f ms, 32,000 keys %7.3f ms: %.2f times 1.5 times that and a "
            "repaint\n",
            few[at].name, few[at].ms, many[at].ms, many[at].ms / (1.5 * few[at].ms + repaint));
    }
    return 0;
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    return tamarind::bench::Run();
}
