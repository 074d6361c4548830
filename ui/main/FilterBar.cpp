#include "ui/main/FilterBar.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "core/text/AccessKeys.h"
#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/ScopeExit.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// In pixels at 96 DPI.
constexpr int kGap = 3;
constexpr int kFieldMargin = 3;  // above and below the box's text, inside of its frame
constexpr int kButtonWidth = 24;
constexpr int kButtonMargin = 8;  // beside the text of a wider button
constexpr int kLeastField = 60;

constexpr const wchar_t* kCross = L"\u00D7";
constexpr const wchar_t* kDownArrow = L"\u25BC";

// Of the entries of menus.
constexpr UINT_PTR kFirstRecent = 1;
constexpr UINT_PTR kFirstWord = 100;

}  // namespace

FilterBar::FilterBar(EditorSession& session, MainWindowActions& actions)
    : m_workplace(session.Place()),
      m_filter(session.Filter()),
      m_selection(session.Selection()),
      m_actions(actions) {
    m_filter.Watchers().Add(*this);
    m_selection.Rows().Watchers().Add(*this);
}

FilterBar::~FilterBar() {
    m_selection.Rows().Watchers().Remove(*this);
    m_filter.Watchers().Remove(*this);
}

bool FilterBar::Create(HWND parent) {
    WindowParams params;
    params.className = L"TamarindFilterBar";
    params.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdFilterBar;
    return CreateHandle(params);
}

bool FilterBar::MakeParts() {
    if (txtFilter.Handle() != nullptr) {
        return true;
    }
    const HWND bar = Handle();
    const bool areMade =
        txtFilter.Create(bar, kIdTxtFilter,
                         {[this] { OnTyped(); }, [] {},
                          [this](WPARAM key, bool withAlt) { return OnFieldKey(key, withAlt); }}) &&
        cmdRecentFilters.Create(bar, kIdCmdRecentFilters, [this] { OpenRecentTexts(); }) &&
        cmdFilterWords.Create(bar, kIdCmdFilterWords, [this] { OpenWords(); });
    cmdRecentFilters.SetText(kDownArrow);
    cmdFilterWords.SetText(L"?");
    for (Control* const part : Parts()) {
        if (part->Handle() != nullptr) {
            part->SetDescriber([this](int id) { return DescribePart(id); });
        }
        SetUp(*part);
    }
    txtFilter.SetCue(Widen(m_workplace.Text(text::kFilterCue)));
    return areMade;
}

std::array<Control*, 5> FilterBar::Parts() {
    return {&txtFilter, &cmdClearFilter, &cmdRecentFilters, &cmdFilterWords, &cmdShowAllKeys};
}

// Names and values of keys, which are typed into the box, run from left to right.
void FilterBar::SetUp(Control& part) const {
    if (part.Handle() != nullptr) {
        part.UseFont(m_font.Get());
        if (&part != &txtFilter) {
            SetMirrored(part.Handle(), m_isRightToLeft);
        }
    }
}

void FilterBar::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    UniqueFont font = MakeUserFont(look.font, m_dpi);
    std::swap(font, m_font);  // the former one is destroyed when no control uses it any more
    for (Control* const part : Parts()) {
        SetUp(*part);
    }
    m_height = LineHeightOf(m_font.Get()) + ScaledPixels(2 * (kGap + kFieldMargin), m_dpi);
    Layout();
}

void FilterBar::ApplyLanguage(bool isRightToLeft) {
    m_isRightToLeft = isRightToLeft;
    SetMirrored(Handle(), isRightToLeft);
    for (Control* const part : Parts()) {
        SetUp(*part);
    }
    if (txtFilter.Handle() != nullptr) {
        txtFilter.SetCue(Widen(m_workplace.Text(text::kFilterCue)));
    }
    ShowParts();
}

void FilterBar::Show(bool isVisible) {
    if (isVisible == m_isVisible || (isVisible && !MakeParts())) {
        return;
    }
    m_isVisible = isVisible;
    if (isVisible) {
        txtFilter.Show(true);
        cmdRecentFilters.Show(true);
        cmdFilterWords.Show(true);
        ShowParts();
    } else {
        m_filter.Clear();  // or nobody would see why keys are missing
    }
    ShowWindow(Handle(), isVisible ? SW_SHOWNA : SW_HIDE);
}

void FilterBar::SetBounds(const RECT& bounds) {
    SetWindowBounds(Handle(), bounds);
}

LRESULT FilterBar::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SIZE) {
        Layout();
        return 0;
    }
    return Window::HandleMessage(message, wParam, lParam);
}

// What the program has changed; what is typed is there already.
void FilterBar::OnFilterChanged() {
    if (txtFilter.Handle() != nullptr && !m_isTyping) {
        txtFilter.SetText(Widen(m_filter.Text()));
    }
    ShowParts();
}

// The button for all keys says which filter of the menu hides some.
void FilterBar::ShowParts() {
    if (txtFilter.Handle() == nullptr) {
        return;
    }
    const std::string filter = m_texts.Filter();
    const bool hasText = !m_filter.Text().empty();
    const std::wstring sign = filter.empty() ? std::wstring() : Widen(filter) + L"  " + kCross;
    if (sign == m_sign && hasText == m_hasText) {
        return;
    }
    m_sign = sign;
    m_hasText = hasText;
    ShowButton(cmdClearFilter, kIdCmdClearFilter, hasText, [this] { ClearFilter(); });
    ShowButton(cmdShowAllKeys, kIdCmdShowAllKeys, !sign.empty(),
               [this] { m_actions.Execute(Command::ViewAllKeys); });
    if (hasText) {
        cmdClearFilter.SetText(kCross);
    }
    if (!sign.empty()) {
        cmdShowAllKeys.SetText(WithoutAccessKeys(sign));
    }
    Layout();
}

// One that is seldom needed is made when it is needed first.
void FilterBar::ShowButton(PushButton& button, int id, bool isVisible,
                           std::function<void()> onClick) {
    if (button.Handle() == nullptr) {
        if (!isVisible || !button.Create(Handle(), id, std::move(onClick))) {
            return;
        }
        button.SetDescriber([this](int part) { return DescribePart(part); });
        SetUp(button);
    }
    button.Show(isVisible);
}

void FilterBar::Layout() {
    if (!m_isVisible) {
        return;
    }
    const auto pixels = [this](int length) { return ScaledPixels(length, m_dpi); };
    const int gap = pixels(kGap);
    const SIZE area = ClientSizeOf(Handle());
    const int button = SignButtonWidth(m_font.Get(), kButtonWidth, m_dpi);
    LONG right = area.cx;
    const auto place = [&](Control& part, int width) {
        part.SetBounds({right - width, gap, right, area.cy - gap});
        right -= width + gap;
    };
    if (!m_sign.empty()) {
        const int wanted = TextWidth(cmdShowAllKeys.Handle(), m_sign) + 2 * pixels(kButtonMargin);
        const int room = static_cast<int>(area.cx) - pixels(kLeastField) - 3 * (button + gap);
        place(cmdShowAllKeys, std::clamp(room, 0, wanted));
    }
    place(cmdFilterWords, button);
    place(cmdRecentFilters, button);
    if (m_hasText) {
        place(cmdClearFilter, button);
    }
    txtFilter.SetBounds({0, gap, std::max<LONG>(right, 0), area.cy - gap});
}

void FilterBar::Focus() {
    SetFocus(txtFilter.Handle());
    txtFilter.SelectAll();
}

void FilterBar::OnTyped() {
    m_isTyping = true;
    const ScopeExit typed([this] { m_isTyping = false; });
    m_filter.SetText(Narrow(txtFilter.Text()));
}

bool FilterBar::OnFieldKey(WPARAM key, bool withAlt) {
    const bool isPlain = !withAlt && !IsKeyDown(VK_CONTROL) && !IsKeyDown(VK_SHIFT);
    if ((withAlt && key == VK_DOWN) || (isPlain && key == VK_F4)) {
        OpenRecentTexts();
        return true;
    }
    if (!isPlain) {
        return false;
    }
    switch (key) {
        case VK_RETURN:
        case VK_DOWN:
            m_filter.RememberText();
            m_actions.FocusKeyList();
            return true;
        case VK_ESCAPE:
            ClearFilter();
            return true;
        default:
            return false;
    }
}

void FilterBar::ClearFilter() {
    m_filter.RememberText();
    m_filter.Clear();
    m_actions.FocusKeyList();
}

// The last texts, and below them the words as in their own menu, so that the keyboard reaches both.
void FilterBar::OpenRecentTexts() {
    m_filter.RememberText();
    const std::vector<std::string> texts = m_filter.RecentTexts();
    const UniqueMenu menu(CreatePopupMenu());
    for (std::size_t at = 0; at < texts.size(); ++at) {
        AppendMenuW(menu.Get(), MF_STRING, kFirstRecent + at,
                    WithoutAccessKeys(Widen(texts[at])).c_str());
    }
    if (!texts.empty()) {
        AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    }
    UniqueMenu words = MakeWordsMenu();
    if (AppendMenuW(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(words.Get()),
                    Widen(m_workplace.Text(text::kFilterWords)).c_str())) {
        words.Release();  // the menu destroys it
    }
    Choose(menu.Get(), cmdRecentFilters);
}

void FilterBar::OpenWords() {
    Choose(MakeWordsMenu().Get(), cmdFilterWords);
}

UniqueMenu FilterBar::MakeWordsMenu() const {
    UniqueMenu menu(CreatePopupMenu());
    UINT_PTR id = kFirstWord;
    for (const TextFilter::Word& word : m_filter.Words()) {
        AppendMenuW(menu.Get(), MF_STRING, id++,
                    WithoutAccessKeys(Widen(word.word + "\t" + word.meaning)).c_str());
    }
    return menu;
}

// Below a button. A text takes the place of the present one, a word comes behind it.
void FilterBar::Choose(HMENU menu, const PushButton& button) {
    const RECT at = BoundsOf(button.Handle());
    TPMPARAMS around{sizeof(TPMPARAMS), at};
    const auto id =
        static_cast<UINT_PTR>(TrackPopupMenuEx(menu, TPM_VERTICAL | TPM_RIGHTALIGN | TPM_RETURNCMD,
                                               at.right, at.bottom, Handle(), &around));
    const auto texts = m_filter.RecentTexts();
    const auto words = m_filter.Words();
    if (id >= kFirstWord && id - kFirstWord < words.size()) {
        SetFocus(txtFilter.Handle());
        txtFilter.SelectEnd();
        const bool needsBlank = !m_filter.Text().empty() && !m_filter.Text().ends_with(' ');
        txtFilter.Insert(Widen((needsBlank ? " " : "") + words[id - kFirstWord].word));
    } else if (id >= kFirstRecent && id - kFirstRecent < texts.size()) {
        SetFocus(txtFilter.Handle());
        txtFilter.SelectAll();
        txtFilter.Insert(Widen(texts[id - kFirstRecent]));
    }
}

std::optional<AccessibleInfo> FilterBar::Describe() const {
    return DescribePart(kIdFilterBar);
}

AccessibleInfo FilterBar::DescribePart(int id) const {
    AccessibleInfo info;
    const auto words = [this](std::uint16_t number) { return Widen(m_workplace.Text(number)); };
    switch (id) {
        case kIdFilterBar:
            info.name = Widen(m_workplace.Label(InfoOf(Command::ViewFilterBar).textNumber));
            info.role = ROLE_SYSTEM_TOOLBAR;
            break;
        case kIdTxtFilter:
            info.name = Widen(m_workplace.Label(InfoOf(Command::SearchFilter).textNumber));
            info.value = txtFilter.Text();
            info.description = Widen(m_texts.Counter());
            break;
        case kIdCmdClearFilter:
            info.name = words(text::kClearFilter);
            break;
        case kIdCmdRecentFilters:
            info.name = words(text::kRecentFilters);
            info.role = ROLE_SYSTEM_BUTTONMENU;
            break;
        case kIdCmdFilterWords:
            info.name = words(text::kFilterWords);
            info.role = ROLE_SYSTEM_BUTTONMENU;
            break;
        default:
            break;
    }
    return info;
}

}  // namespace tamarind
