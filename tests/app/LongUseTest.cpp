// Random keys and clicks over all windows of the program that was built, beside another program
// that writes the same settings file. TAMARIND_USE_MINUTES says how long, TAMARIND_USE_SEED which
// keys and which file.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <optional>
#include <random>
#include <set>
#include <span>
#include <thread>

#include "core/system/UniqueHandle_win32.h"
#include "core/text/WideText_win32.h"
#include "model/program/Commands.h"
#include "tests/app/OuterShell.h"
#include "tests/app/ProcessObjects.h"
#include "tests/app/RunningProgram.h"
#include "ui/changes/ChangesIds.h"
#include "ui/main/ControlIds.h"
#include "ui/shell/ShellIds.h"

namespace tamarind {
namespace {

using Lines = std::multiset<std::string>;

constexpr UINT kPatienceMs = 5000;
constexpr ULONGLONG kCheckEveryMs = 15000;
constexpr DWORD kCalmMs = 300;
constexpr std::size_t kMadeOnce = 16;  // objects that wait for their first use
constexpr const char* kWriterMark = "; seen from outside ";
constexpr std::size_t kComparedUnits = 200;  // of a line: lists do not show all of a long one

constexpr const char* kKeys[] = {
    "Up",       "Down",   "Down",     "Page_Up",     "Page_Down", "Home",       "End",
    "Left",     "Right",  "Tab",      "Tab",         "shift+Tab", "ctrl+Tab",   "F6",
    "shift+F6", "Return", "Return",   "Return",      "Escape",    "Escape",     "Escape",
    "space",    "0",      "1",        "7",           "a",         "e",          "n",
    "plus",     "minus",  "slash",    "semicolon",   "BackSpace", "Delete",     "ctrl+Delete",
    "ctrl+z",   "ctrl+z", "ctrl+y",   "F2",          "F3",        "F4",         "alt+Down",
    "ctrl+f",   "ctrl+l", "ctrl+a",   "ctrl+c",      "ctrl+v",    "shift+Down", "shift+F10",
    "ctrl+e",   "equal",  "quotedbl", "bracketleft", "F10",       "F5",         "Insert",
};
constexpr const char* kKeysThatLook[] = {"Up", "Down", "Tab", "shift+Tab", "Home", "End"};
constexpr const char* kClicks[] = {"click 1", "click 1", "click --repeat 2 1", "click 3",
                                   "click 4", "click 5", "click --repeat 9 5"};

constexpr Command kOpening[] = {
    Command::HelpAbout,         Command::SearchFind,       Command::FavoritesAdd,
    Command::FavoritesOrganize, Command::EditAddKey,       Command::EditDescribe,
    Command::EditBrowseValue,   Command::ViewIgnoredLines, Command::ViewOptions,
    Command::FileImport,        Command::FileExport,       Command::FileExportDifferences,
    Command::FileOpen,          Command::FileOpenDataFile, Command::FilePendingChanges,
};
constexpr Command kAtOnce[] = {
    Command::ViewToolbar,      Command::ViewDescription,   Command::ViewValueBar,
    Command::ViewFilterBar,    Command::ViewUndescribed,   Command::ViewActiveKeys,
    Command::ViewInactiveKeys, Command::ViewChangedKeys,   Command::ViewDifferentKeys,
    Command::ViewAllKeys,      Command::ViewColumnDefault, Command::ViewColumnMeaning,
    Command::EditComment,      Command::EditReset,         Command::EditResetCategory,
    Command::EditSetValue1,    Command::EditSetValue0,     Command::SearchFilterAgain,
};
// Real ones that do not send sections to other files.
constexpr const char* kFiles[] = {"wincmd_05.ini", "wincmd_07.ini", "wincmd_09.ini",
                                  "wincmd_11.ini"};
constexpr const char* kLanguages[] = {
    "Arabic", "Chinese (simplified)", "French", "German", "Hungarian", "Polish", "Russian",
    "Spanish"};

std::string FromEnvironment(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : otherwise;
}

// The start of a line without the marks of direction that lists have in a language from right to
// left.
std::string Shortened(const std::string& text) {
    std::wstring wide = Widen(text);
    std::erase_if(wide,
                  [](wchar_t c) { return c == L'\u200E' || (c >= L'\u202A' && c <= L'\u202E'); });
    return Narrow(wide.substr(
        0, kComparedUnits + (wide.starts_with(L"+ ") || wide.starts_with(L"- ") ? 2 : 0)));
}

// A line of the file or a row of the list without what only one of them has: the sign of a
// commented line, quotation marks, blanks, and the case of the name.
std::string AsRow(std::string line) {
    std::erase_if(line, [](char c) { return c == '"' || c == ' ' || c == '\t'; });
    line.erase(0, std::min(line.find_first_not_of(';'), line.size()));
    const auto end =
        line.begin() + static_cast<std::ptrdiff_t>(std::min(line.find('='), line.size()));
    std::transform(line.begin(), end, line.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return line.substr(0, kComparedUnits / 2);  // what went from one of them may have moved the end
}

// A line of a settings file, in UTF-8 or in the code page of the system. Total Commander has a mark
// in front of a value in UTF-8, which lists do not show.
std::string Decoded(std::string line) {
    const auto length = static_cast<int>(line.size());
    std::wstring wide(line.size(), L'\0');
    if (MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, line.data(), length, nullptr, 0) == 0) {
        MultiByteToWideChar(CP_ACP, 0, line.data(), length, wide.data(), length);
        line = Narrow(wide);
    }
    if (const std::size_t mark = line.find("\xEF\xBB\xBF"); mark != std::string::npos) {
        line.erase(mark, 3);
    }
    return Shortened(line);
}

Lines LinesOf(const std::string& bytes) {
    Lines lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        const std::string line = bytes.substr(at, end - at);
        lines.insert(Decoded(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line));
        at = end + 1;
    }
    return lines;
}

// Asks a window again and again whether it is there, and keeps the longest time that it took.
class Watch {
public:
    explicit Watch(HWND window)
        : m_thread([this, window] {
              while (!m_isOver) {
                  const ULONGLONG start = GetTickCount64();
                  SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 4 * kPatienceMs, nullptr);
                  m_longestMs = std::max(m_longestMs, GetTickCount64() - start);
                  Sleep(20);
              }
          }) {}
    ~Watch() { End(); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // In milliseconds.
    ULONGLONG End() {
        m_isOver = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
        return m_longestMs;
    }

private:
    std::atomic<bool> m_isOver = false;
    ULONGLONG m_longestMs = 0;
    std::thread m_thread;
};

class LongUseTest : public ProgramTest {
protected:
    template <typename List>
    auto OneOf(const List& list) {
        return list[std::uniform_int_distribution<std::size_t>(0, std::size(list) - 1)(m_random)];
    }
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

    void SetUp() override {
        ProgramTest::SetUp();
        std::filesystem::copy("build/windows/bin/Languages", Path(L"Languages"));
        std::filesystem::copy("build/windows/bin/Data Files", Path(L"Data Files"));
        m_random.seed(static_cast<unsigned>(std::stoul(FromEnvironment("TAMARIND_USE_SEED", "1"))));
        std::filesystem::copy_file("tests/data/corpus/" + std::string(OneOf(kFiles)),
                                   Path(L"Wincmd.ini"),
                                   std::filesystem::copy_options::overwrite_existing);
        m_shell.emplace(Path(L""));
    }
    void TearDown() override {
        m_shell.reset();
        ProgramTest::TearDown();
    }

    static bool IsUsable(HWND window) {
        return (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION &&
               IsWindowVisible(window) && IsWindowEnabled(window);
    }
    // The window of the program that is above its others.
    HWND Highest() const {
        const DWORD thread = GetWindowThreadProcessId(m_main, nullptr);
        for (HWND window = nullptr;
             (window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr;) {
            if (GetWindowThreadProcessId(window, nullptr) == thread && IsUsable(window)) {
                return window;
            }
        }
        return m_main;
    }
    GUITHREADINFO ThreadInfo() const {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(m_main, nullptr), &info);
        return info;
    }
    // The one that has the keyboard.
    HWND Top() const {
        const HWND active = ThreadInfo().hwndActive;
        return IsUsable(active) ? active : Highest();
    }
    bool IsMainOnTop() const { return Top() == m_main; }
    bool IsInMenu() const { return (ThreadInfo().flags & GUI_INMENUMODE) != 0; }

    // What is done to the program, through the X server; waits until it has been sent. A window
    // manager may have given the keyboard to nobody when windows came and went quickly.
    void Send(const std::string& input) { SendTo(Top(), input); }
    void SendTo(HWND window, const std::string& input) {
        const HWND focus = ThreadInfo().hwndFocus;
        m_log.push_back(ClassOf(window) +
                        (focus == nullptr ? "" : " " + std::to_string(GetDlgCtrlID(focus))) + ": " +
                        input);
        const std::string outer = std::to_string(
            reinterpret_cast<std::uintptr_t>(GetPropW(window, L"__wine_x11_whole_window")));
        // The window manager may hold the X server for a while.
        ASSERT_TRUE(m_shell->Run("[ $(xdotool getwindowfocus) = " + outer +
                                 " ] || xdotool windowactivate " + outer + " sleep 0.1; xdotool " +
                                 input))
            << input;
    }
    // As a menu would do, which nobody can open while another menu or window is open: false then.
    bool Choose(Command command) {
        Send("key Escape Escape");
        Sleep(kCalmMs / 2);
        Settle();
        if (!IsMainOnTop() || IsInMenu()) {
            return false;
        }
        PostMessageW(m_main, WM_COMMAND, static_cast<WPARAM>(command), 0);
        Settle();
        return true;
    }
    // What is sent overtakes what is posted, hence the pause.
    void Settle() const {
        Sleep(50);
        SendMessageTimeoutW(m_main, WM_NULL, 0, 0, SMTO_NORMAL, kPatienceMs, nullptr);
    }
    std::string PointIn(HWND window) {
        RECT area = {};
        GetClientRect(window, &area);
        POINT at = {Below(std::max<int>(area.right, 1)), Below(std::max<int>(area.bottom, 1))};
        ClientToScreen(window, &at);
        return "mousemove " + std::to_string(at.x) + " " + std::to_string(at.y) + " ";
    }
    std::string On(HWND control) const {
        const RECT place = BoundsOf(control);
        return "mousemove " + std::to_string((place.left + place.right) / 2) + " " +
               std::to_string((place.top + place.bottom) / 2) + " click 1 ";
    }

    std::string Described(HWND window) const {
        std::string texts = ClassOf(window) + (IsWindowVisible(window) ? ":" : " (hidden):");
        for (const HWND control : ChildrenOf(window)) {
            texts += " " + TextOf(control);
        }
        return texts;
    }

    // Looks only: a backup would put back what the other program has changed since. A message about
    // that program's changes may come first, and the command is dropped then.
    void LookAtBackups() {
        if (Choose(Command::FileRestoreBackup) &&
            WaitUntil([&] { return ClassOf(Top()) == "frmRestoreBackup"; })) {
            Send(std::string("key ") + OneOf(kKeysThatLook) + " " + OneOf(kKeysThatLook) +
                 " Escape");
            EXPECT_TRUE(WaitUntil([&] { return Top() == m_main; })) << Described(Top());
        }
    }

    // Windows of the system are only closed: they could name the settings file for an export.
    void UseWindow() {
        const HWND top = Top();
        const std::string kind = ClassOf(top);
        if (kind == "#32770") {
            const bool isMessage = ChildrenOf(top).size() < 7;
            Send(std::string("key ") + (isMessage && Below(2) == 0 ? "Return" : "Escape"));
        } else if (top == m_used && Below(4) == 0) {  // surely on the screen by now
            Send(PointIn(top) + OneOf(kClicks));
        } else {
            std::string keys = "key";
            for (int count = 1 + Below(6); count > 0; --count) {
                keys += std::string(" ") + OneOf(kKeys);
            }
            Send(keys);
        }
        m_used = top;
    }

    void ChangeOptions() {
        Choose(Command::ViewOptions);
        const HWND options = Top();
        if (ClassOf(options) != "frmOptions") {
            return;
        }
        if (Below(2) == 0) {
            Send(On(FindControl(options, IDC_OPTIONS_CBOTHEME)) + "key Home " +
                 (Below(2) == 0 ? "Down" : "End") + " Return");
        } else if (Below(4) == 0) {
            Send("key ctrl+shift+Tab " +
                 On(FindControl(options, IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE)));
        } else {
            Send("key ctrl+shift+Tab " + On(FindControl(options, IDC_OPTIONS_OPTUSEOTHELANGUAGE)) +
                 On(FindControl(options, IDC_OPTIONS_TXTLANGUAGEFILEPATH)));
            Send("key ctrl+a type --delay 2 '" + Narrow(Path(L"Languages\\")) + OneOf(kLanguages) +
                 ".lng'");
        }
        Send("key Return");
    }

    // Keys may have found their way through the menu to the window that restores a backup. Then
    // `own` is in the backup of what was replaced, and the file, or the backup of it that a save
    // has made since, is like another one.
    bool IsRestored(const std::string& text, const std::string& own) const {
        Strings contents = {text};
        for (const auto& entry : std::filesystem::directory_iterator(Path(L"Wincmd.ini backups"))) {
            contents.push_back(Read(L"Wincmd.ini backups\\" + entry.path().filename().wstring()));
        }
        std::ranges::sort(contents);
        return std::ranges::adjacent_find(contents) != contents.end() &&
               std::ranges::any_of(contents, [&](const std::string& content) {
                   return content.find(own) != std::string::npos;
               });
    }

    // A program that keeps a line of its own in the file, and sometimes changes a key. While it
    // writes nobody else can.
    void WriteFromOutside() {
        UniqueFile file;
        WaitUntil([&] {
            file.Reset(CreateFileW(Path(L"Wincmd.ini").c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                   nullptr, OPEN_EXISTING, 0, nullptr));
            return static_cast<bool>(file);
        });
        std::string text(GetFileSize(file.Get(), nullptr), '\0');
        DWORD done = 0;
        ReadFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
        const std::string own = kWriterMark + std::to_string(m_written) + "\r\n";
        std::size_t at = text.find(own);
        if (m_written > 0 && at == std::string::npos) {
            ASSERT_TRUE(IsRestored(text, own)) << own << " is not in\n" << text.substr(0, 2000);
            m_log.push_back("(a backup was restored)");
            ++m_restored;
            at = text.find(kWriterMark);
        }
        if (at != std::string::npos) {
            text.erase(at, text.find('\n', at) + 1 - at);
        }
        text.insert(text.starts_with("\xEF\xBB\xBF") ? 3 : 0,
                    kWriterMark + std::to_string(++m_written) + "\r\n");
        if (const std::size_t at = text.find("\r\nPanelsVertical="); at != std::string::npos) {
            text[at + 17] = static_cast<char>('0' + Below(2));
        }
        SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
        WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
        SetEndOfFile(file.Get());
        m_log.push_back("(written from outside)");
    }

    // A window that was hidden and shown again quickly is at times one for Wine, but not on the
    // screen of the X server, where no key can reach it: it is shown once more then.
    void CloseOtherWindows() {
        Sleep(kCalmMs);
        for (int tries = 0; tries < 40 && (tries < 2 || Highest() != m_main); ++tries) {
            SendTo(Highest(), tries % 5 == 4 ? "key Return" : "key Escape");
            if (tries == 20) {
                const HWND lost = Highest();
                m_log.push_back("(shown again)");
                ShowWindow(lost, SW_HIDE);
                ShowWindow(lost, SW_SHOW);
            }
        }
        ASSERT_EQ(Highest(), m_main) << Described(Highest());
    }

    // Saves, and compares the file with what the window of pending changes said that a save would
    // write, and with what the list shows after it.
    void CheckSaving() {
        CloseOtherWindows();
        TreeView_SelectItem(FindControl(m_main, kIdTreeView1),
                            TreeView_GetRoot(FindControl(m_main, kIdTreeView1)));
        Sleep(kCalmMs);
        Choose(Command::ViewAllKeys);
        Choose(Command::SearchFilter);
        Send("key ctrl+a Delete Escape");
        // A question about the other program's changes may come first.
        const auto isOpen = [&] { return ClassOf(Top()) == "frmPendingChanges"; };
        for (int tries = 0; tries < 3 && !isOpen(); ++tries) {
            CloseOtherWindows();
            Choose(Command::FilePendingChanges);
            WaitUntil(isOpen);
        }
        ASSERT_TRUE(isOpen()) << Described(Top());
        const HWND pending = Top();
        Strings rows;
        Strings former;
        do {  // keys that were sent before may still have their effect
            former = std::exchange(rows, RowsIn(FindControl(pending, IDC_PENDING_LSTLINES)));
            Sleep(kCalmMs);
        } while (rows != former);
        Lines expected = LinesOf(Read(L"Wincmd.ini"));
        for (const std::string& row : rows) {
            const std::string line = Shortened(row);
            if (line.starts_with("+ ")) {
                expected.insert(line.substr(2));
            } else if (line.starts_with("- ")) {
                const auto found = expected.find(line.substr(2));
                ASSERT_NE(found, expected.end()) << row;
                expected.erase(found);
            }
        }
        Send("key Escape");
        Choose(Command::FileSave);
        Sleep(kCalmMs);
        if (ClassOf(Top()) == "frmConflicts") {  // put off before; one's own values stay
            Send("key Return");
        }
        ASSERT_TRUE(WaitUntil([&] { return IsMainOnTop(); })) << Described(Top());
        const Lines lines = LinesOf(Read(L"Wincmd.ini"));
        Strings lost;
        Strings alien;
        std::ranges::set_difference(expected, lines, std::back_inserter(lost));
        std::ranges::set_difference(lines, expected, std::back_inserter(alien));
        EXPECT_EQ(lost, Strings());
        EXPECT_EQ(alien, Strings());
        Strings held;
        std::ranges::transform(lines, std::back_inserter(held), AsRow);
        std::ranges::sort(held);
        for (const std::string& row : RowsIn(FindControl(m_main, kIdListView1))) {
            EXPECT_TRUE(row.find('=') == std::string::npos ||
                        std::ranges::binary_search(held, AsRow(Shortened(row))))
                << row;
        }
        if (!HasFailure()) {
            m_log.clear();
        }
        ++m_checks;
    }

    void TakeTurn() {
        const int turn = Below(100);
        if (!IsMainOnTop() || turn < 60) {
            UseWindow();
        } else if (turn < 75) {
            Choose(OneOf(kOpening));
        } else if (turn < 83) {
            Choose(OneOf(kAtOnce));
        } else if (turn < 85) {
            ChangeOptions();
        } else if (turn < 87) {
            LookAtBackups();
        } else if (turn < 90) {
            SetWindowPos(m_main, nullptr, Below(300), Below(200), 200 + Below(800),
                         150 + Below(600), SWP_NOZORDER | SWP_NOACTIVATE);
        } else {
            WriteFromOutside();
        }
    }

    // What is there depends on what is shown at the moment; what is never given back makes the
    // least of the last quarter more than the most of the one before.
    static void ExpectNoGrowth(const std::vector<ProcessObjects>& counts,
                               std::size_t ProcessObjects::*kind, const char* name) {
        if (counts.size() < 8) {
            return;
        }
        const auto middle = counts.begin() + static_cast<std::ptrdiff_t>(counts.size() / 2);
        const auto late = counts.begin() + static_cast<std::ptrdiff_t>(counts.size() * 3 / 4);
        const std::size_t most = std::ranges::max(std::span(middle, late), {}, kind).*kind;
        const std::size_t least = std::ranges::min(std::span(late, counts.end()), {}, kind).*kind;
        EXPECT_GT(most, 0U) << name;
        EXPECT_LE(least, most + kMadeOnce) << name;
        std::cout << name << ": " << (*middle).*kind << " in the middle, " << counts.back().*kind
                  << " at the end\n";
    }

    std::string LastSteps() const {
        std::string steps;
        for (const std::string& step : m_log) {
            steps += step + "\n";
        }
        return steps;
    }

    std::optional<OuterShell> m_shell;
    HWND m_main = nullptr;
    HWND m_used = nullptr;  // before
    std::mt19937 m_random;
    std::vector<std::string> m_log;  // since the last check
    int m_written = 0;
    int m_restored = 0;
    int m_checks = 0;
};

TEST_F(LongUseTest, NothingIsLostOrLeftBehind) {
    const ULONGLONG start = GetTickCount64();
    const auto length =
        static_cast<ULONGLONG>(60000 * std::stod(FromEnvironment("TAMARIND_USE_MINUTES", "3")));
    ULONGLONG longest = 0;
    int turns = 0;
    int starts = 0;
    std::vector<ProcessObjects> counts;  // at each check since the last start
    // The random keys may also choose to end it.
    for (DWORD ended = 0; ended == 0 && GetTickCount64() < start + length && !HasFailure();) {
        ++starts;
        counts.clear();
        const RunningProgram program = StartEditor(L"Data Files\\tc all keys english.tmdf");
        m_main = program.WaitForWindow();
        Send("set_num_desktops 1");  // the wheel turns them
        Watch watch(m_main);
        ULONGLONG nextCheck = GetTickCount64() + kCheckEveryMs;
        while (GetTickCount64() < start + length && !HasFailure() && IsWindow(m_main)) {
            TakeTurn();
            ++turns;
            if (IsWindow(m_main) && GetTickCount64() >= nextCheck) {
                CheckSaving();
                counts.push_back(CountObjects(program.Process()));
                nextCheck = GetTickCount64() + kCheckEveryMs;
            }
        }
        if (!IsWindow(m_main)) {
            EXPECT_TRUE(program.WaitForEnd());
            GetExitCodeProcess(program.Process(), &ended);
            EXPECT_EQ(ended, 0U);
        }
        longest = std::max(longest, watch.End());
    }
    EXPECT_FALSE(HasFailure()) << LastSteps();
    EXPECT_LT(longest, kPatienceMs);
    for (const auto& [kind, name] : {std::pair<std::size_t ProcessObjects::*, const char*>(
                                         &ProcessObjects::handles, "handles"),
                                     {&ProcessObjects::graphics, "graphics objects"},
                                     {&ProcessObjects::windows, "windows"}}) {
        ExpectNoGrowth(counts, kind, name);
    }
    std::cout << turns << " turns, " << m_checks << " checks, " << m_written
              << " changes from outside, " << m_restored << " backups restored, " << starts
              << " starts; longest wait " << longest << " ms\n";
}

}  // namespace
}  // namespace tamarind
