// The last stroke of a text that is typed into the filter of the real main window, up to the moment
// when everything is painted, against a repaint of the window: the median and the longest.
#include <iterator>

#include "bench/windows/BenchWindow.h"
#include "ui/main/ControlIds.h"

namespace tamarind::bench {
namespace {

constexpr int kRuns = 61;

struct Text {
    const char* name;
    const wchar_t* text;
};
constexpr Text kTexts[] = {{"one letter", L"e"},
                           {"a common word", L"setting"},
                           {"three words", L"does some value"},
                           {"no hit", L"nowhere"}};

struct Timed {
    double median = 0;
    double longest = 0;
};

template <typename Work>
Timed TimesOf(Work work) {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) {
        times.push_back(work());
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

HWND FindBox(HWND parent) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const HWND found = GetDlgCtrlID(child) == kIdTxtFilter ? child : FindBox(child);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

// The repaint comes last.
std::vector<Timed> Measure(const std::wstring& folder, int keys) {
    BenchWindow bench(folder, keys);
    if (!bench.isOpen) {
        return {};
    }
    const HWND box = FindBox(bench.window.Handle());
    SetFocus(box);
    BenchWindow::Settle();
    const auto stroke = [&](const wchar_t* text) {
        const std::wstring all = text;
        SetWindowTextW(box, all.substr(0, all.size() - 1).c_str());
        SendMessageW(box, EM_SETSEL, all.size(), static_cast<LPARAM>(all.size()));
        BenchWindow::Settle();
        const double start = NowMs();
        SendMessageW(box, WM_CHAR, all.back(), 0);
        BenchWindow::Settle();
        return NowMs() - start;
    };
    std::printf("%d keys: the first stroke %.1f ms\n", keys, stroke(L"s"));
    std::vector<Timed> times;
    for (const Text& text : kTexts) {
        stroke(text.text);
        times.push_back(TimesOf([&] { return stroke(text.text); }));
    }
    times.push_back(TimesOf([&] {
        const double start = NowMs();
        bench.Repaint();
        return NowMs() - start;
    }));
    return times;
}

int Run() {
    const std::wstring folder = MakeScratchFolder(L"filter");
    const std::vector<Timed> few = Measure(folder, 3255);
    const std::vector<Timed> many = Measure(folder, 32000);
    if (few.empty() || many.empty()) {
        std::printf("the window did not open\n");
        return 1;
    }
    const double repaint = many.back().median;
    std::printf("a repaint %.2f ms\n", repaint);
    for (std::size_t at = 0; at < std::size(kTexts); ++at) {
        std::printf(
            "%-14s 32,000 keys %6.2f ms, %.2f repaints, the longest %.2f; %.2f times 3,255 keys\n",
            kTexts[at].name, many[at].median, many[at].median / repaint, many[at].longest / repaint,
            many[at].median / few[at].median);
    }
    return 0;
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    return tamarind::bench::Run();
}
