// The commands of the real main window with 700 and with 32,000 keys, each up to the moment when
// everything is painted: no command at 32,000 keys may take longer than one and a half times as
// long as at 700 and one repaint of the whole window.
#include "bench/windows/BenchWindow.h"

#include <algorithm>
#include <numeric>

namespace tamarind::bench {
namespace {

struct Timed {
    const char* name;
    double ms;
};

// Every command in turn, and last a repaint.
std::vector<Timed> TimeCommands(BenchWindow& bench, int keys) {
    EditorSession& session = bench.session;
    std::vector<Timed> times;
    const auto time = [&](const char* name, const auto& command) {
        BenchWindow::Settle();
        times.push_back({name, MedianMs(61, [&] {
                             command();
                             BenchWindow::Settle();
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
    BenchWindow::Settle();
    times.push_back({"another row, not painted", MedianMs(61, [&] {
                         session.Selection().Rows().ShowKeyDetails(++number % 2 == 0 ? 0 : 1);
                     })});
    for (const char* const name : {"another row", "without the value bar"}) {
        // To and fro, so that the list does not scroll.
        time(name, [&] { session.Selection().Rows().ShowKeyDetails(++number % 2 == 0 ? 0 : 1); });
        session.Place().SetVisible(WindowPart::ValueBar,
                                   !session.Place().IsVisible(WindowPart::ValueBar));
    }
    session.Place().SetVisible(WindowPart::ValueBar, true);
    // The last key but one is the only hit, so that each step goes through all keys.
    session.Finding().Search().SetSearchesNames(true);
    session.Finding().SetSearchText("SomeSetting" + std::to_string(keys - 2));
    time("search in names", [&] {
        session.Finding().Search().Restart();
        session.Finding().FindNextString();
        session.Selection().Rows().ShowKeyDetails(0);
    });
    time("change of a value", [&] { session.Commands().SetValue(std::to_string(++number)); });
    time("undo and redo", [&] {
        session.Commands().Undo();
        session.Commands().Redo();
    });
    std::vector<std::size_t> rows(
        std::min<std::size_t>(1000, session.Selection().Rows().Keys().Size()));
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    session.Selection().Rows().SelectRows(rows, 0);
    session.Commands().CommentKeys();
    time("undo and redo of 1,000 keys", [&] {
        session.Commands().Undo();
        session.Commands().Redo();
    });
    session.Selection().Rows().ShowKeyDetails(0);
    time("dark theme and light again", [&] {
        for (const int theme : {2, 1}) {
            session.Place().OwnSettings().Values().theme = theme;
            SendMessageW(bench.window.Handle(), WM_SETTINGCHANGE, 0, 0);
        }
    });
    time("repaint", [&] { bench.Repaint(); });
    return times;
}

std::vector<Timed> Measure(const std::wstring& folder, int keys) {
    BenchWindow bench(folder, keys);
    return bench.isOpen ? TimeCommands(bench, keys) : std::vector<Timed>();
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
