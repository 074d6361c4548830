#include <process.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "model/program/StringTable.h"
#include "tests/ui/FakeLook.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/changes/ChangesIds.h"
#include "ui/shell/ShellIds.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/ScopeExit.h"

namespace tamarind {
namespace {

struct TourLanguage {
    std::string name;
    std::map<int, std::string> texts;  // without the marks of access keys
    bool isRightToLeft = false;
};

std::string BytesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Without marks of access keys, nor the shortcut that stands behind a menu's text.
std::string Plain(std::string text) {
    std::erase(text, '&');
    return text.substr(0, text.find_first_of("\t\r"));
}

// The built-in one is the first.
std::vector<TourLanguage> ReadLanguages() {
    std::vector<TourLanguage> languages = {{"English", {}}};
    for (std::uint16_t number = 1; number < 10000; ++number) {
        languages[0].texts[number] = Plain(std::string(BuiltInText(number)));
    }
    for (const auto& entry : std::filesystem::directory_iterator("Languages")) {
        TourLanguage& language = languages.emplace_back();
        language.name = entry.path().stem().string();
        std::ifstream lines(entry.path(), std::ios::binary);
        for (std::string line; std::getline(lines, line);) {
            language.texts[std::atoi(line.c_str())] = Plain(line.substr(line.find('=') + 1));
            language.isRightToLeft |= line.starts_with("RightToLeftLanguage=1");
        }
    }
    return languages;
}

// How large a control draws a text: on one line, or wrapped at a width.
SIZE Measure(HWND control, const std::string& text, LONG width = 0, HFONT font = nullptr) {
    const ScreenDC dc(control);
    const auto own = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    const SelectedObject selected(dc.Get(), font != nullptr ? font : own);
    RECT area{0, 0, width, 0};
    DrawTextW(dc.Get(), Widen(Plain(text)).c_str(), -1, &area,
              DT_CALCRECT | DT_NOPREFIX | (width > 0 ? DT_WORDBREAK : DT_SINGLELINE));
    return {area.right, area.bottom};
}

// Goes through all windows with all languages.
class TourTest : public MainWindowTest {
protected:
    // The main window is 800 pixels wide. Every second language has the dark theme, which languages
    // depends on the resolution.
    void StartIn(const TourLanguage& wanted) {
        const auto place = &wanted - languages.data();
        const char* const theme = std::getenv("TAMARIND_THEME");  // dark or light
        isDark =
            theme != nullptr ? std::string(theme) == "dark" : (place + SystemDpi() / 48) % 2 == 1;
        const std::string path = PutFile(wanted);
        PutOwnSettings(std::string("Theme=") + (isDark ? "2" : "1") +
                       "\r\nMainWindowWidth=12000\r\nMainWindowHeight=8400\r\nUseDefaultLanguage=" +
                       std::to_string(path.empty()) + "\r\n[Common]\r\nLanguageFile=" + path +
                       "\r\n[FavoritesList]\r\nBackColor=Back\r\n");
        Start();
        Use(wanted);
    }
    // The path of the language's file, empty for the built-in one.
    std::string PutFile(const TourLanguage& wanted) {
        const std::string path = "Languages\\" + wanted.name + ".lng";
        world.disk.Put("C:\\Tamarind\\" + path, BytesOfFile(path));
        return &wanted == languages.data() ? "" : "C:\\Tamarind\\" + path;
    }
    void Use(const TourLanguage& wanted) {
        language = &wanted;
        known = {"",
                 "...",
                 "\u25BC",
                 "\u00D7",
                 "?",
                 "px",
                 "s",
                 "Back",
                 Text(1503) + " 5.01",
                 EditorSession::kProgramName};
        for (const auto& [number, text] : wanted.texts) {
            known.insert(text);
        }
        known.insert(world.session->Place().Label(text::kActiveKeys) + "  \u00D7");
        known.insert(Plain(world.session->Place().Text(text::kDescriptionOf, {"a"})));
    }
    std::string Text(int number) const { return language->texts.at(number); }
    int Scaled(int pixels) const { return ScaledPixels(pixels, WindowDpi(Main())); }
    void ExpectText(const std::string& text) const {
        EXPECT_TRUE(known.contains(Plain(text))) << text;
    }

    // Everything has its place and direction, all texts are whole and in the language.
    void ExpectDialog(const wchar_t* className) const {
        const HWND shown = FindWindowW(className, nullptr);
        EXPECT_LE(WidthOf(shown), Scaled(1024) * system.textScale / 100);
        EXPECT_LE(HeightOf(shown),
                  std::min(Scaled(700) * system.textScale / 100, GetSystemMetrics(SM_CYSCREEN)));
        ExpectText(TextOf(shown));
        ExpectTitle(shown);
        ExpectNoOverlaps(shown);
        ExpectWindow(shown);
        if (isDark) {
            ExpectDark(shown);
        }
    }
    // The title fits in beside the button to close.
    void ExpectTitle(HWND shown) const {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof(metrics);
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
        const UniqueFont font(CreateFontIndirectW(&metrics.lfCaptionFont));
        EXPECT_LE(Measure(shown, TextOf(shown), 0, font.Get()).cx,
                  ClientAreaOf(shown).right - metrics.iCaptionWidth - Scaled(12));
    }
    void ExpectWindow(HWND shown) const {
        static const std::set<std::string> kLeftToRight = {
            WC_EDITA, WC_COMBOBOXA, "TamarindKeyListPane", "TamarindDescriptionPane"};
        const std::string name = ClassOf(shown);
        SCOPED_TRACE(name + " " + TextOf(shown));
        const bool isMirrored = (GetWindowLongPtrW(shown, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
        const bool isPicture = name == WC_STATICA && TextOf(shown).empty();
        const bool isInKeyList = ClassOf(GetParent(shown)) == "TamarindKeyListPane" ||
                                 GetDlgCtrlID(shown) == kIdLstCategories ||
                                 GetDlgCtrlID(GetParent(shown)) == kIdLstCategories ||
                                 GetParent(shown) == Find(kIdListView1);
        const bool isFilterBar = GetDlgCtrlID(shown) == kIdFilterBar;
        EXPECT_TRUE(isMirrored == (language->isRightToLeft && !kLeftToRight.contains(name) &&
                                   (!isInKeyList || isFilterBar)) ||
                    isPicture);
        ExpectCaption(shown);
        ExpectItems(shown, name);
        ExpectScrollBar(shown, isMirrored);
        for (const HWND child : ChildrenOf(shown)) {
            ExpectWindow(child);
        }
    }
    // Behind the name of the key its state; in a note a value follows the text. Both end in dots
    // where they are too long.
    void ExpectWords(const std::string& text, bool isNote) const {
        const std::size_t colon = text.find(": ");
        if (isNote) {
            const std::string note = Text(text::kDefaultIs);
            EXPECT_TRUE(text.starts_with(note.substr(0, note.find("%1")))) << text;
        } else if (colon != std::string::npos) {
            ExpectText(text.substr(colon + 2));
        }
    }
    // Each language has its turn at some of the resolutions, with both themes at each; all have it
    // where pictures are wanted.
    bool IsItsTurn(const TourLanguage& wanted) const {
        const auto pair = (&wanted - languages.data()) / 2;
        return std::getenv("TAMARIND_PICTURES") != nullptr ||
               (pair + SystemDpi() / kDesignDpi) % 2 == 0;
    }
    // Everything about keys of several types, with their choices.
    void ExpectValueBar() {
        for (const char* const name : {"SizeStyle", "LogOptions", "ActiveTabColor",
                                       "FontNameDialog", "AdminTimeout", "IconLib"}) {
            SCOPED_TRACE(name);
            const KeyStore& store = world.session->Selection().Rows().Store();
            KeyNumber key = 1;
            while (store.KeyName(key) != name) {
                ++key;
            }
            world.session->Selection().GoToKey(key);
            const HWND bar = Find(kIdValueBar);
            ExpectNoOverlaps(bar);
            ExpectWindow(bar);
            SetFocus(Find(kIdListView1));
            Press(kIdListView1, VK_F4);
            if (const HWND choices = Find(kIdLstChoices); IsWindowVisible(choices)) {
                RECT area = ClientAreaOf(Main());
                MapWindowPoints(Main(), nullptr, reinterpret_cast<POINT*>(&area), 2);
                EXPECT_TRUE(IsInside(BoundsOf(choices), area));
                Keep(Main(), std::string("choices-") + name);
                Press(kIdLstChoices, VK_ESCAPE);
            } else {
                Keep(Main(), std::string("value-") + name);
            }
        }
    }
    // With hits, without, and while the menu hides some.
    void ExpectFilterBar() {
        TextFilter& filter = world.session->Filter();
        const HWND box = Find(kIdTxtFilter);
        EXPECT_LE(Measure(box, Text(text::kFilterCue)).cx, ClientSizeOf(box).cx);
        filter.SetText("font size -name:tip");
        Keep(Main(), "filter");
        Do(Command::ViewActiveKeys);
        ExpectNoOverlaps(Find(kIdFilterBar));
        ExpectWindow(Find(kIdFilterBar));
        if (system.textScale < 200) {  // more than twice as large, on a screen twice as large
            ExpectPanelsFit(2);
        }
        Keep(Main(), "filter-active");
        filter.SetText("\"no such key\"");
        const HWND note = Find(kIdLblNoHits);
        EXPECT_LE(Measure(note, TextOf(note)).cx, WidthOf(note));
        Keep(Main(), "filter-none");
        filter.Clear();
        Do(Command::ViewAllKeys);
    }
    void ExpectPanelsFit(WPARAM first = 0) const {
        for (WPARAM part = first; part < 3; ++part) {
            const std::string text = Told(kIdStatusBar1, SB_GETTEXTW, part);
            RECT place{};
            Send(kIdStatusBar1, SB_GETRECT, part, reinterpret_cast<LPARAM>(&place));
            const LONG room = place.right - place.left - Scaled(part == 0 ? 16 : 0);  // a picture
            EXPECT_LE(Measure(Find(kIdStatusBar1), text).cx, room) << text;
        }
    }
    void ExpectCaption(HWND control) const {
        const ControlKind kind = KindOf(control);
        if (GetDlgCtrlID(control) == kIdLblKey || GetDlgCtrlID(control) == kIdLblNote) {
            ExpectWords(TextOf(control), GetDlgCtrlID(control) == kIdLblNote);
            return;
        }
        ExpectText(HasCaption(kind) ? TextOf(control) : "");
        if (HasCaption(kind) && kind != ControlKind::DrawnButton) {
            const bool isLabel = kind == ControlKind::Label;
            // What edges and marks take at the least.
            const int margins = isLabel ? 0 : kind == ControlKind::CommandButton ? 10 : 18;
            const LONG room = WidthOf(control) - Scaled(margins);
            const SIZE size = Measure(control, TextOf(control), isLabel ? room : 0);
            EXPECT_LE(size.cx, room);
            EXPECT_LE(size.cy, HeightOf(control));
        }
    }
    // It stands where a text's lines end, beside the client area.
    static void ExpectScrollBar(HWND shown, bool isMirrored) {
        if ((GetWindowLongPtrW(shown, GWL_STYLE) & WS_VSCROLL) != 0) {
            RECT area = ClientAreaOf(shown);
            MapWindowPoints(shown, nullptr, reinterpret_cast<POINT*>(&area), 2);
            const LONG left = area.left - BoundsOf(shown).left;
            const LONG right = BoundsOf(shown).right - area.right;
            EXPECT_GE(isMirrored ? left - right : right - left, 10) << left << " " << right;
        }
    }
    // The tabs of a strip, the titles of a list's columns.
    void ExpectItems(HWND control, const std::string& name) const {
        const bool isStrip = name == WC_TABCONTROLA;
        const int titles = name == WC_HEADERA ? Header_GetItemCount(control) : 0;
        for (int at = 0; at < (isStrip ? 3 : titles); ++at) {
            wchar_t text[100] = L"";
            TCITEMW tab{TCIF_TEXT, 0, 0, text, ARRAYSIZE(text), 0, 0};
            HDITEMW title{HDI_TEXT, 0, text, nullptr, ARRAYSIZE(text), 0, 0, 0, 0, 0, nullptr, 0};
            RECT place{};
            if (isStrip) {
                TabCtrl_GetItem(control, at, &tab);
                TabCtrl_GetItemRect(control, at, &place);
            } else {
                Header_GetItem(control, at, &title);
                Header_GetItemRect(control, at, &place);
            }
            ExpectText(Narrow(text));
            const LONG room = place.right - place.left - Scaled(12);  // margins
            EXPECT_LE(Measure(control, Narrow(text)).cx, room) << Narrow(text);
            EXPECT_LE(place.right, WidthOf(control));
        }
    }

    void ExpectMain() const {
        ExpectNoOverlaps(Main());
        ExpectWindow(Main());
        EXPECT_EQ(BoundsOf(Find(kIdTreeView1)).left > BoundsOf(Find(kIdListView1)).left,
                  language->isRightToLeft);
        EXPECT_EQ(Nodes().front(), Text(3073));
        ExpectMenu(GetMenu(Main()));
        RECT menus[2] = {};
        GetMenuItemRect(Main(), GetMenu(Main()), 0, &menus[0]);
        GetMenuItemRect(Main(), GetMenu(Main()), 5, &menus[1]);
        EXPECT_EQ(menus[0].top, menus[1].top);  // the menu bar is one line
        for (const CommandInfo& info : AllCommands()) {
            const bool isBelow = info.command == Command::FileSaveDataFile;
            if (isBelow || !info.toolbarName.empty()) {
                EXPECT_EQ(Told(isBelow ? kIdToolbar2 : kIdToolbar1, TB_GETBUTTONTEXTW,
                               static_cast<WPARAM>(info.command)),
                          Text(info.textNumber));
            }
        }
        const auto status = [&](WPARAM part) { return Told(kIdStatusBar1, SB_GETTEXTW, part); };
        EXPECT_EQ(status(0), Text(3078) + "  tc all keys english.tmdf");
        EXPECT_TRUE(status(1).starts_with(Text(3079) + "  [")) << status(1);
        EXPECT_EQ(status(2),
                  std::to_string(ListView_GetItemCount(Find(kIdListView1))) + "  " + Text(3077));
        ExpectPanelsFit();
    }
    void ExpectMenu(HMENU menu) const {
        SendMessageW(Main(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
        for (int at = 0; at < GetMenuItemCount(menu); ++at) {
            wchar_t text[100] = L"";
            GetMenuStringW(menu, static_cast<UINT>(at), text, ARRAYSIZE(text), MF_BYPOSITION);
            ExpectText(Narrow(text));
            ExpectMenu(GetSubMenu(menu, at));
        }
    }

    // Keeps a picture of the window as the screen shows it, if the environment names the language.
    // Wine has the number of the window's X window in a property.
    void Keep(HWND shown, const std::string& name) const {
        const char* const wanted = std::getenv("TAMARIND_PICTURES");
        if (wanted == nullptr || std::string(wanted).find(language->name) == std::string::npos) {
            return;
        }
        const std::string word = language->name.substr(0, language->name.find(' '));
        const std::string file = "build/tour/" + std::to_string(Scaled(96)) + "-" + word + "-" +
                                 name + (isDark ? "-dark.png" : ".png");
        std::filesystem::create_directories("build/tour");
        std::filesystem::remove(file);
        RedrawWindow(shown, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const auto id = reinterpret_cast<LONG_PTR>(GetPropW(shown, L"__wine_x11_whole_window"));
        const std::wstring take = L"\"sleep 0.2; import -silent -frame -window " +
                                  std::to_wstring(id) + L" " + Widen(file) + L"\"";
        _wspawnl(_P_NOWAIT, L"\\\\?\\unix\\bin\\sh", L"sh", L"-c", take.c_str(), nullptr);
        EXPECT_TRUE(WaitUntil([&] { return std::filesystem::exists(file); }));
    }
    void Visit(const wchar_t* className, const std::string& name, const std::function<void()>& open,
               WPARAM pages = 1) {
        const auto look = [&] {
            ExpectDialog(className);
            Keep(dialog, name);
            for (WPARAM page = 1; page < pages; ++page) {
                SendMessageW(FindControl(dialog, IDC_OPTIONS_TBSOPTIONS), TCM_SETCURFOCUS, page, 0);
                ExpectDialog(className);
                Keep(dialog, name + std::to_string(page + 1));
            }
        };
        Show(className, look, open);
    }

    void VisitDialogs() {
        const auto by = [&](Command command) { return [=, this] { Do(command); }; };
        Visit(L"frmSearchFor", "search", by(Command::SearchFind));
        Visit(L"frmFavoriteAdd", "favorite", by(Command::FavoritesAdd));
        Visit(L"frmOrganizeFavorites", "favorites", by(Command::FavoritesOrganize));
        Visit(L"frmRestoreBackup", "backups", by(Command::FileRestoreBackup));
        Visit(L"frmAddKey", "add-key", by(Command::EditAddKey));
        Visit(L"frmIgnoredLines", "ignored-lines", by(Command::ViewIgnoredLines));
        Visit(L"frmAbout", "about", by(Command::HelpAbout));
        Visit(L"frmOptions", "options", by(Command::ViewOptions), 3);
        std::vector<ValueConflict> conflicts = {{"[Colors] BackColor", "BackColor=1", ""}};
        Visit(L"frmConflicts", "conflicts", [&] { prompts.ResolveConflicts(conflicts); });
        ImportReview review = {
            {{"[Layout] ButtonBar", "", "ButtonBar=1"}, {"[Layout] X", "X=1", ";X=1", true}}, 9};
        Visit(L"frmImportReview", "import", [&] { prompts.ReviewImport(review); });
        UseOwnDataFile();
        world.session->Adding().Add("own", "a");
        Visit(L"frmDescribeKey", "describe-key", by(Command::EditDescribe));
        world.session->Commands().SetValue("7");
        Visit(L"frmPendingChanges", "pending", by(Command::FilePendingChanges));
    }
    void UseSampleFiles() {
        world.disk.Put(SessionWorld::kWincmdData,
                       BytesOfFile("Data Files/tc all keys english.tmdf"));
        world.disk.Put("C:\\Tamarind\\Data Files\\Wincmd.types",
                       BytesOfFile("Data Files/Wincmd.types"));
        world.disk.Put(SessionWorld::kWincmd, "[Colors]\r\nBackColor=2\r\n");
        world.disk.Replace(
            SessionWorld::kWincmd,
            BytesOfFile("samples/Wincmd.ini") + "[Layout]\r\nx=1\r\ngarbage\r\n[own]\r\na=1\r\n",
            Backup::Yes);
    }

    const std::vector<TourLanguage> languages = ReadLanguages();
    const TourLanguage* language = nullptr;  // the present one
    bool isDark = false;
    FakeLook system;
    std::set<std::string> known;  // what windows may say in it
};

TEST_F(TourTest, EveryWindowShowsItsTextsWhole) {
    UseSampleFiles();
    for (const TourLanguage& wanted : languages) {
        if (!IsItsTurn(wanted)) {
            continue;
        }
        SCOPED_TRACE(wanted.name);
        StartIn(wanted);
        ExpectMain();
        if (isDark) {
            ExpectDark(Main());
        }
        Keep(Main(), "main");
        ExpectValueBar();
        ExpectFilterBar();
        world.session->Selection().SelectCategory(0);  // a heading
        ExpectWindow(Find(kIdDescriptionPane));
        Keep(Main(), "heading");
        world.session->Selection().SelectCategory(kRootNode);
        VisitDialogs();
    }
}

// As users set it in Windows: in a language with long texts, and from right to left.
TEST_F(TourTest, LargeTextsAreWhole) {
    if (SystemDpi() > kDesignDpi) {
        GTEST_SKIP() << "the windows would be larger than the screen";
    }
    UseSampleFiles();
    SystemLook::Use(&system);
    const ScopeExit ended([] { SystemLook::Use(nullptr); });
    for (const TourLanguage& wanted : languages) {
        if (wanted.name == "German" || wanted.isRightToLeft) {
            SCOPED_TRACE(wanted.name);
            system.textScale = wanted.isRightToLeft ? 150 : 225;
            StartIn(wanted);
            Resize(Main(), std::min(system.textScale * 8, 1600), 1000);
            ExpectMain();
            Keep(Main(), "large");
            ExpectValueBar();
            ExpectFilterBar();
            VisitDialogs();
        }
    }
}

// From each language to the next and back to the first.
TEST_F(TourTest, ASwitchOfLanguageLeavesNothingOfTheFormer) {
    // So many categories that the tree scrolls.
    std::string data = world.disk.BytesOf(SessionWorld::kWincmdData);
    for (int heading = 0; heading < 50; ++heading) {
        data += "[/" + std::to_string(heading) + "]\r\n";
    }
    world.disk.Put(SessionWorld::kWincmdData, data);
    StartIn(languages[0]);
    Do(Command::SearchFind);
    Do(Command::FavoritesOrganize);
    Do(Command::FilePendingChanges);
    const LONG width = WidthOf(FindWindowW(L"frmSearchFor", nullptr));
    for (std::size_t at = 1; at <= languages.size(); ++at) {
        const TourLanguage& next = languages[at % languages.size()];
        SCOPED_TRACE(next.name);
        world.session->Selection().GoToKey(2);  // which has no description
        OptionsEditor& options = world.session->Place().Options();
        options.Begin();
        options.SetLanguageFile(PutFile(next));
        options.SetFlag(&OptionsEditor::Choices::usesDefaultLanguage, PutFile(next).empty());
        EXPECT_TRUE(options.Apply());
        options.End();
        Use(next);
        ExpectMain();
        EXPECT_EQ(TextOf(Find(kIdTxtDescriptionBox)), Text(3080));
        ExpectDialog(L"frmSearchFor");
        ExpectDialog(L"frmOrganizeFavorites");
        ExpectDialog(L"frmPendingChanges");

        // What belongs to a row stands where the row has it in all languages.
        world.session->Selection().GoToKey(3);
        Do(Command::EditValue);
        const RECT list = BoundsOf(Find(kIdListView1));
        EXPECT_LT(BoundsOf(Find(kIdTxtInplaceEdit)).left - list.left, Scaled(30));
        EXPECT_LT(list.right - BoundsOf(Find(kIdCmdColorSample)).right, Scaled(30));
    }
    EXPECT_EQ(WidthOf(FindWindowW(L"frmSearchFor", nullptr)), width);
}

}  // namespace
}  // namespace tamarind
