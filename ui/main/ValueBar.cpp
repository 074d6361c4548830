#include "ui/main/ValueBar.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/main/ValueBarLayout.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// In pixels at 96 DPI.
constexpr int kGap = 4;
constexpr int kFieldMargin = 3;  // above and below the field's text, inside of its frame
constexpr int kLeastField = 110;
constexpr int kMostField = 300;
constexpr int kLeastName = 40;
constexpr int kLeastNote = 60;
constexpr int kChoicesWidth = 24;
constexpr int kBrowseWidth = 26;
constexpr int kSpinWidth = 18;
constexpr int kColorWidth = 34;
constexpr int kSignMargin = 4;
constexpr int kResetMargin = 8;  // beside the text of the button

// The name takes a multiple of this, so that going through the list moves the rest but rarely.
constexpr int kNameStep = 50;

constexpr UINT kPlaceCheckMs = 250;
constexpr const wchar_t* kDownArrow = L"\u25BC";
// EVENT_OBJECT_LIVEREGIONCHANGED, which older headers lack.
constexpr DWORD kLiveRegionChanged = 0x8019;

// In the font that is selected, in pixels.
int WidthOf(const ScreenDC& dc, const std::wstring& text) {
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

int RoundedUp(int length, int step) {
    return (length + step - 1) / step * step;
}

}  // namespace

ValueBar::ValueBar(Workplace& workplace, KeySelection& selection, ValueEditing& editing,
                   const CommandStates& states, MainWindowActions& actions)
    : m_workplace(workplace),
      m_selection(selection),
      m_editing(editing),
      m_states(states),
      m_actions(actions) {
    m_selection.KeyWatchers().Add(*this);
    m_workplace.Watchers().Add(*this);
}

ValueBar::~ValueBar() {
    m_workplace.Watchers().Remove(*this);
    m_selection.KeyWatchers().Remove(*this);
}

bool ValueBar::Create(HWND parent) {
    WindowParams params;
    params.className = L"TamarindValueBar";
    params.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdValueBar;
    return CreateHandle(params);
}

std::array<Control*, 11> ValueBar::Parts() {
    return {&lblKey,    &txtValue,   &cmdChoices, &spnValue, &lblUnit,         &cmdColor,
            &cmdBrowse, &picWarning, &lblNote,    &cmdReset, &m_choices.List()};
}

// Font and direction of a control, if it is there. Values run from left to right.
void ValueBar::SetUp(Control& part) const {
    if (part.Handle() == nullptr) {
        return;
    }
    part.UseFont(m_font.Get());
    if (&part != &txtValue) {
        SetMirrored(part.Handle(), m_isRightToLeft);
    }
}

void ValueBar::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    UniqueFont font = MakeUserFont(look.font, m_dpi);
    std::swap(font, m_font);  // the former one is destroyed when no control uses it any more
    for (Control* const part : Parts()) {
        SetUp(*part);
    }
    if (picWarning.Handle() != nullptr) {
        picWarning.SetDpi(m_dpi);
    }
    m_height = LineHeightOf(m_font.Get()) + ScaledPixels(2 * (kGap + kFieldMargin), m_dpi);
    Layout();
}

void ValueBar::ApplyLanguage(bool isRightToLeft) {
    m_isRightToLeft = isRightToLeft;
    SetMirrored(Handle(), isRightToLeft);
    if (cmdReset.Handle() != nullptr) {
        cmdReset.SetText(Widen(m_workplace.Text(text::kResetValue)));
    }
    for (Control* const part : Parts()) {
        SetUp(*part);
    }
    OnKeyShown();
}

void ValueBar::Show(bool isVisible) {
    if (isVisible != m_isVisible) {
        m_isVisible = isVisible;
        CloseChoices();
        OnKeyShown();
        ShowWindow(Handle(), isVisible ? SW_SHOWNA : SW_HIDE);
    }
}

void ValueBar::SetBounds(const RECT& bounds) {
    SetWindowBounds(Handle(), bounds);
}

bool ValueBar::IsPart(HWND window) const {
    return window != nullptr && (IsChild(Handle(), window) || window == m_choices.Handle());
}

LRESULT ValueBar::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SIZE) {
        CloseChoices();
        Layout();
        return 0;
    }
    return Window::HandleMessage(message, wParam, lParam);
}

// What was typed for another row is dropped.
void ValueBar::OnKeyShown() {
    m_placeCheck.Stop();
    CloseChoices();
    m_isTouched = false;
    if (!m_isVisible) {
        m_shown.reset();
        return;
    }
    m_shown = m_editing.Field();
    // Nothing is made before there is a key.
    if (m_shown || txtValue.Handle() != nullptr) {
        ShowParts();
        ShowValue();
    }
}

// A change from elsewhere leaves the text alone that the user has typed.
void ValueBar::OnKeyChanged(KeyNumber key) {
    if (!m_isVisible || key != m_selection.CurrentKey()) {
        return;
    }
    m_shown = m_editing.Field();
    if (!m_isTouched) {
        ShowValue();
    } else {
        Layout();
    }
}

void ValueBar::OnManyKeysChanged() {
    if (const auto key = m_selection.CurrentKey()) {
        OnKeyChanged(*key);
    }
}

void ValueBar::OnCommandsChanged() {
    if (cmdReset.Handle() != nullptr) {
        cmdReset.Enable(m_states.IsEnabled(Command::EditReset));
    }
}

// Each call of Windows that changes nothing costs time at every new row.
bool ValueBar::IsShown(const Control& part) {
    return part.Handle() != nullptr &&
           (GetWindowLongPtrW(part.Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
}

void ValueBar::SetShown(Control& part, bool isVisible) {
    if (part.Handle() != nullptr && IsShown(part) != isVisible) {
        part.Show(isVisible);
    }
}

template <typename Part, typename Make>
void ValueBar::ShowPart(Part& part, bool isVisible, Make make) {
    if (isVisible && part.Handle() == nullptr) {
        make();
        SetUp(part);
        part.SetDescriber([this](int id) { return DescribePart(id); });
    }
    SetShown(part, isVisible);
}

// Those that the type of the key needs.
void ValueBar::ShowParts() {
    const HWND bar = Handle();
    const ValueField shown = Shown();
    const bool canEdit = m_shown && !shown.isReadOnly;
    ShowPart(lblKey, true, [&] { lblKey.Create(bar, kIdLblKey); });
    ShowPart(txtValue, true, [&] {
        txtValue.Create(bar, kIdTxtValue,
                        {[this] { OnTyped(); }, [this] { txtValue.SelectAll(); },
                         [this](WPARAM key, bool withAlt) { return OnFieldKey(key, withAlt); }});
    });
    ShowPart(cmdChoices, canEdit && !shown.choices.empty(), [&] {
        cmdChoices.Create(bar, kIdCmdChoices, [this] { OpenChoices({}); });
        cmdChoices.SetText(kDownArrow);
    });
    ShowPart(spnValue, canEdit && shown.isNumber,
             [&] { spnValue.Create(bar, kIdSpnValue, [this](int steps) { Step(steps); }); });
    ShowPart(lblUnit, !shown.unit.empty(), [&] { lblUnit.Create(bar, kIdLblUnit); });
    ShowPart(cmdColor, shown.color.has_value(),
             [&] { cmdColor.Create(bar, kIdCmdColor, [this] { Browse(); }); });
    ShowPart(cmdBrowse, canEdit && shown.hasDialog, [&] {
        cmdBrowse.Create(bar, kIdCmdBrowse, [this] { Browse(); });
        cmdBrowse.SetText(L"...");
    });
    ShowPart(lblNote, true, [&] { lblNote.Create(bar, kIdLblNote); });
    ShowPart(cmdReset, true, [&] {
        cmdReset.Create(bar, kIdCmdReset, [this] { m_actions.Execute(Command::EditReset); });
        cmdReset.SetText(Widen(m_workplace.Text(text::kResetValue)));
        OnCommandsChanged();
    });
    txtValue.Enable(m_shown.has_value());
    txtValue.SetReadOnly(shown.isReadOnly);
    if (lblUnit.Handle() != nullptr) {
        lblUnit.SetText(Widen(shown.unit));
    }
}

std::string ValueBar::Text() const {
    return Narrow(txtValue.Text());
}

void ValueBar::ShowValue() {
    txtValue.SetText(Widen(Shown().text));
    ShowNote();
}

// The default, or what is wrong with the text. Whether a place exists is asked a moment later, so
// that going through the list stays fast.
void ValueBar::ShowNote() {
    const std::string text = Text();
    m_placeCheck.Stop();
    if (m_shown && m_shown->hasDialog) {
        m_placeCheck.Start(Handle(), kPlaceCheckMs);
    }
    ShowObjection(m_shown ? m_editing.ObjectionTo(text) : std::string());
    if (m_shown && m_shown->color) {
        const auto color = m_editing.ColorOf(text);
        cmdColor.SetColor(color && !color->isSystemColor ? std::optional(COLORREF{color->color})
                                                         : std::nullopt);
    }
}

void ValueBar::CheckPlace() {
    m_placeCheck.Stop();
    if (m_editing.NamesMissingPlace(Text())) {
        ShowObjection(m_workplace.Text(text::kNoSuchPlace));
    }
}

// A screen reader is told of one that was not there before.
void ValueBar::ShowObjection(std::string objection) {
    const bool isNew = !objection.empty() && objection != m_objection;
    m_objection = std::move(objection);
    ShowPart(picWarning, !m_objection.empty(), [this] {
        picWarning.Create(Handle(), kIdPicWarning);
        picWarning.SetDpi(m_dpi);
    });
    Layout();
    if (isNew) {
        NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, lblNote.Handle(), OBJID_CLIENT, CHILDID_SELF);
        NotifyWinEvent(kLiveRegionChanged, lblNote.Handle(), OBJID_CLIENT, CHILDID_SELF);
    }
}

// The parts between the field and the note.
std::array<ValueBar::PartBeside, 6> ValueBar::PartsBeside(const ScreenDC& dc) {
    const auto pixels = [this](int length) { return ScaledPixels(length, m_dpi); };
    // The signs on the buttons may be large.
    const int sign = m_height - pixels(2 * (kGap + kFieldMargin - kSignMargin));
    return {{{cmdChoices, std::max(pixels(kChoicesWidth), sign)},
             {spnValue, pixels(kSpinWidth)},
             {lblUnit, WidthOf(dc, Widen(Shown().unit)) + pixels(kGap)},
             {cmdColor, pixels(kColorWidth)},
             {cmdBrowse, std::max(pixels(kBrowseWidth), sign)},
             {picWarning, WarningSign::Size(m_dpi)}}};
}

void ValueBar::Layout() {
    if (!m_isVisible || lblKey.Handle() == nullptr) {
        return;
    }
    const auto pixels = [this](int length) { return ScaledPixels(length, m_dpi); };
    const ValueField shown = Shown();
    const std::wstring name = Widen(shown.name);
    const std::wstring nameWithState = m_shown ? name + L": " + Widen(shown.state) : name;
    const std::wstring note =
        Widen(!m_objection.empty() ? m_objection
              : m_shown            ? m_workplace.Text(text::kDefaultIs, {shown.defaultValue})
                                   : std::string());
    const ScreenDC dc(Handle());
    const SelectedObject font(dc.Get(), m_font.Get());
    const int gap = pixels(kGap);
    const auto beside = PartsBeside(dc);

    ValueBarWishes wishes;
    wishes.name = WidthOf(dc, name) + gap;
    wishes.nameWithState = RoundedUp(WidthOf(dc, nameWithState) + gap, pixels(kNameStep));
    wishes.leastName = pixels(kLeastName);
    wishes.leastField = pixels(kLeastField);
    wishes.mostField = pixels(kMostField);
    for (const PartBeside& one : beside) {
        wishes.beside += IsShown(one.part) ? one.width + gap : 0;
    }
    wishes.note = WidthOf(dc, note) + gap;
    wishes.leastNote = pixels(kLeastNote);
    wishes.isWarning = !m_objection.empty();
    wishes.reset = WidthOf(dc, cmdReset.Text()) + 2 * pixels(kResetMargin);
    wishes.gap = gap;
    const SIZE area = ClientSizeOf(Handle());
    const ValueBarWidths widths = ShareValueBar(wishes, static_cast<int>(area.cx));

    const LONG bottom = area.cy - gap;
    LONG left = gap;
    const auto place = [&](Control& part, int width) {
        const RECT at{left, gap, left + width, bottom};
        if (const RECT former = BoundsInParent(part.Handle()); !EqualRect(&at, &former)) {
            part.SetBounds(at);
        }
        left += width > 0 ? width + gap : 0;
    };
    lblKey.SetText(widths.showsState ? nameWithState : name);
    place(lblKey, widths.name);
    place(txtValue, widths.field);
    for (const PartBeside& one : beside) {
        if (IsShown(one.part)) {
            place(one.part, one.width);
        }
    }
    lblNote.SetText(note);
    SetShown(lblNote, widths.note > 0);
    place(lblNote, widths.note);
    SetShown(cmdReset, widths.reset > 0);
    left = area.cx - gap - widths.reset;
    place(cmdReset, widths.reset);
}

void ValueBar::OnTyped() {
    m_isTouched = true;
    ShowNote();
}

void ValueBar::Step(int steps) {
    txtValue.SetText(Widen(m_editing.Stepped(Text(), steps)));
    txtValue.SelectAll();
    OnTyped();
}

// The text with which the row was shown.
void ValueBar::ReturnToValue() {
    m_isTouched = false;
    m_shown = m_editing.Field();
    ShowValue();
    txtValue.SelectAll();
}

bool ValueBar::OnFieldKey(WPARAM key, bool withAlt) {
    const bool isPlain = !withAlt && GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_SHIFT) >= 0;
    if ((withAlt && key == VK_DOWN) || (isPlain && key == VK_F4)) {
        OpenChoices({});
        return true;
    }
    if (!isPlain || !m_shown) {
        return false;
    }
    switch (key) {
        case VK_RETURN:
            Store();
            return true;
        case VK_ESCAPE:
            if (m_isTouched) {
                ReturnToValue();
            } else {
                m_actions.FocusKeyList();
            }
            return true;
        case VK_UP:
        case VK_DOWN:
            if (m_shown->isNumber && !m_shown->isReadOnly) {
                Step(key == VK_UP ? 1 : -1);
            } else if (key == VK_DOWN && !m_shown->choices.empty()) {
                OpenChoices({});
            }
            return true;
        default:
            return false;
    }
}

void ValueBar::Store() {
    const bool wasTouched = std::exchange(m_isTouched, false);
    if (m_editing.Store(Text())) {
        txtValue.SelectAll();
        m_actions.ContinueWithNextKey();
    } else {
        m_isTouched = wasTouched;
    }
}

void ValueBar::Browse() {
    m_isTouched = false;
    if (m_editing.Browse()) {
        m_actions.ContinueWithNextKey();
    }
}

ChoiceRows ValueBar::ChoicesToShow() const {
    const ValueField shown = Shown();
    ChoiceRows rows;
    for (const LabeledChoice& choice : shown.choices) {
        const bool isPresent = choice.label == shown.text || choice.value == shown.text;
        if (isPresent && !shown.isSum) {
            rows.present = static_cast<int>(rows.texts.size());
        }
        rows.texts.push_back(Widen(choice.isDefault
                                       ? m_workplace.Text(text::kChoiceIsDefault, {choice.label})
                                       : choice.label));
    }
    rows.hasCheckBoxes = shown.isSum;
    rows.checkCount = static_cast<int>(rows.texts.size());
    const std::string others = shown.isSum ? m_editing.OtherBitsOf(Text()) : std::string();
    if (!others.empty()) {
        rows.texts.push_back(Widen(others));
    }
    return rows;
}

bool ValueBar::OpenChoices(const RECT& row) {
    if (!m_isVisible) {
        m_shown = m_editing.Field();
        ShowParts();
        ShowValue();
    }
    if (!m_shown || m_shown->isReadOnly || m_workplace.IsBusy()) {
        return false;
    }
    if (m_shown->choices.empty()) {
        if (m_isVisible) {
            SetFocus(txtValue.Handle());
        }
        return m_isVisible;
    }
    if (m_choices.IsOpen()) {
        CloseChoices();
        return true;
    }
    const HWND focus = GetFocus();
    m_returnsToField = focus != nullptr && IsChild(Handle(), focus);
    RECT anchor = row;
    if (m_isVisible) {
        const RECT field = BoundsOf(txtValue.Handle());
        const RECT button = BoundsOf(cmdChoices.Handle());
        UnionRect(&anchor, &field, &button);
    }
    return m_choices.Open(GetAncestor(Handle(), GA_ROOT), anchor, ChoicesToShow());
}

ChoiceListOwner ValueBar::OwnerOfChoices() {
    ChoiceListOwner owner;
    owner.onMade = [this](Control& list) {
        SetUp(list);
        list.SetDescriber([this](int id) { return DescribePart(id); });
    };
    owner.isChecked = [this](int row) {
        return m_editing.IsChecked(Text(), static_cast<std::size_t>(row));
    };
    owner.onToggled = [this](int row) { ToggleRow(row); };
    owner.onTaken = [this](int row) { TakeRow(row); };
    owner.onEntered = [this] { Store(); };
    owner.onCancelled = [this] {
        if (m_isTouched) {
            ReturnToValue();
        }
    };
    owner.onReturn = [this] {
        if (m_returnsToField) {
            SetFocus(txtValue.Handle());
        } else {
            m_actions.FocusKeyList();
        }
    };
    return owner;
}

// The sum in the field follows.
void ValueBar::ToggleRow(int row) {
    txtValue.SetText(Widen(m_editing.Toggled(Text(), static_cast<std::size_t>(row))));
    OnTyped();
    m_choices.Redraw();
}

void ValueBar::TakeRow(int row) {
    m_isTouched = false;
    if (m_editing.Choose(static_cast<std::size_t>(row))) {
        m_actions.ContinueWithNextKey();
    }
}

std::optional<AccessibleInfo> ValueBar::Describe() const {
    return DescribePart(kIdValueBar);
}

AccessibleInfo ValueBar::DescribePart(int id) const {
    const ValueField shown = Shown();
    const auto words = [this](std::uint16_t number) { return Widen(m_workplace.Text(number)); };
    const std::wstring value = Widen(m_workplace.Text(text::kValueOf, {shown.name}));
    AccessibleInfo info;
    switch (id) {
        case kIdValueBar:
            info.name = value;
            info.role = ROLE_SYSTEM_TOOLBAR;
            break;
        case kIdTxtValue:
            info.name = value + L", " + Widen(shown.state);
            info.value = txtValue.Text();
            info.description = lblNote.Text();
            if (!shown.choices.empty()) {
                info.role = ROLE_SYSTEM_COMBOBOX;
                info.state = STATE_SYSTEM_HASPOPUP |
                             (m_choices.IsOpen() ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED);
            }
            break;
        case kIdSpnValue:
            info.name = value;
            break;
        case kIdCmdChoices:
            info.name = words(text::kShowChoices);
            info.role = ROLE_SYSTEM_BUTTONDROPDOWN;
            break;
        case kIdCmdColor:
        case kIdCmdBrowse:
            info.name = words(text::kChooseValue);
            break;
        case kIdPicWarning:
            info.name = Widen(m_objection);
            break;
        case kIdLstChoices:
            info.name = Widen(m_workplace.Text(text::kChoicesFor, {shown.name}));
            break;
        default:
            break;
    }
    return info;
}

}  // namespace tamarind
