#include "ui/main/ValueBar.h"

#include <oleacc.h>

#include <utility>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Accessible.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr UINT kPlaceCheckMs = 250;
constexpr const wchar_t* kDownArrow = L"\u25BC";

}  // namespace

ValueBar::ValueBar(Workplace& workplace, KeySelection& selection, ValueEditing& editing,
                   const CommandStates& states, MainWindowActions& actions)
    : m_workplace(workplace),
      m_selection(selection),
      m_editing(editing),
      m_states(states),
      m_actions(actions) {
    m_selection.Rows().Watchers().Add(*this);
    m_workplace.Watchers().Add(*this);
}

ValueBar::~ValueBar() {
    m_workplace.Watchers().Remove(*this);
    m_selection.Rows().Watchers().Remove(*this);
}

bool ValueBar::Create(HWND parent) {
    WindowParams params;
    params.className = L"TamarindValueBar";
    params.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdValueBar;
    return CreateHandle(params);
}

// Font and direction of a control, if it is there. Values run from left to right.
void ValueBar::SetUp(Control& part) const {
    if (part.Handle() == nullptr) {
        return;
    }
    part.UseFont(m_font.Get());
    if (&part != &m_parts.txtValue) {
        SetMirrored(part.Handle(), m_isRightToLeft);
    }
}

void ValueBar::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    UniqueFont font = MakeUserFont(look.font, m_dpi);
    std::swap(font, m_font);  // the former one is destroyed when no control uses it any more
    for (Control* const part : m_parts.All()) {
        SetUp(*part);
    }
    SetUp(m_choices.List());
    if (m_parts.picWarning.Handle() != nullptr) {
        m_parts.picWarning.SetDpi(m_dpi);
    }
    m_height = ValueBarParts::HeightFor(m_font.Get(), m_dpi);
    Layout();
}

void ValueBar::ApplyLanguage(bool isRightToLeft) {
    m_isRightToLeft = isRightToLeft;
    SetMirrored(Handle(), isRightToLeft);
    if (m_parts.cmdReset.Handle() != nullptr) {
        m_parts.cmdReset.SetText(Widen(m_workplace.Text(text::kResetValue)));
    }
    for (Control* const part : m_parts.All()) {
        SetUp(*part);
    }
    SetUp(m_choices.List());
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
    if (m_shown || m_parts.txtValue.Handle() != nullptr) {
        ShowParts();
        ShowValue();
    }
}

// A change from elsewhere leaves the text alone that the user has typed.
void ValueBar::OnKeyChanged(KeyNumber key) {
    if (!m_isVisible || key != m_selection.Rows().CurrentKey()) {
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
    if (const auto key = m_selection.Rows().CurrentKey()) {
        OnKeyChanged(*key);
    }
}

void ValueBar::OnCommandsChanged() {
    if (m_parts.cmdReset.Handle() != nullptr) {
        m_parts.cmdReset.Enable(m_states.IsEnabled(Command::EditReset));
    }
}

template <typename Part, typename Make>
void ValueBar::ShowPart(Part& part, bool isVisible, Make make) {
    if (isVisible && part.Handle() == nullptr) {
        make();
        SetUp(part);
        part.SetDescriber([this](int id) { return DescribePart(id); });
    }
    ValueBarParts::SetShown(part, isVisible);
}

// Those that the type of the key needs.
void ValueBar::ShowParts() {
    const HWND bar = Handle();
    const ValueField shown = Shown();
    const bool canEdit = m_shown && !shown.isReadOnly;
    ShowPart(m_parts.lblKey, true, [&] { m_parts.lblKey.Create(bar, kIdLblKey); });
    ShowPart(m_parts.txtValue, true, [&] {
        m_parts.txtValue.Create(
            bar, kIdTxtValue,
            {[this] { OnTyped(); }, [this] { m_parts.txtValue.SelectAll(); },
             [this](WPARAM key, bool withAlt) { return OnFieldKey(key, withAlt); }});
    });
    ShowPart(m_parts.cmdChoices, canEdit && !shown.choices.empty(), [&] {
        m_parts.cmdChoices.Create(bar, kIdCmdChoices, [this] { OpenChoices({}); });
        m_parts.cmdChoices.SetText(kDownArrow);
    });
    ShowPart(m_parts.spnValue, canEdit && shown.isNumber, [&] {
        m_parts.spnValue.Create(bar, kIdSpnValue, [this](int steps) { Step(steps); });
    });
    ShowPart(m_parts.lblUnit, !shown.unit.empty(),
             [&] { m_parts.lblUnit.Create(bar, kIdLblUnit); });
    ShowPart(m_parts.cmdColor, shown.color.has_value(),
             [&] { m_parts.cmdColor.Create(bar, kIdCmdColor, [this] { Browse(); }); });
    ShowPart(m_parts.cmdBrowse, canEdit && shown.hasDialog, [&] {
        m_parts.cmdBrowse.Create(bar, kIdCmdBrowse, [this] { Browse(); });
        m_parts.cmdBrowse.SetText(L"...");
    });
    ShowPart(m_parts.lblNote, true, [&] { m_parts.lblNote.Create(bar, kIdLblNote); });
    ShowPart(m_parts.cmdReset, true, [&] {
        m_parts.cmdReset.Create(bar, kIdCmdReset,
                                [this] { m_actions.Execute(Command::EditReset); });
        m_parts.cmdReset.SetText(Widen(m_workplace.Text(text::kResetValue)));
        OnCommandsChanged();
    });
    m_parts.txtValue.Enable(m_shown.has_value());
    m_parts.txtValue.SetReadOnly(shown.isReadOnly);
    if (m_parts.lblUnit.Handle() != nullptr) {
        m_parts.lblUnit.SetText(Widen(shown.unit));
    }
}

std::string ValueBar::Text() const {
    return Narrow(m_parts.txtValue.Text());
}

void ValueBar::ShowValue() {
    m_parts.txtValue.SetText(Widen(Shown().text));
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
        m_parts.cmdColor.SetColor(
            color && !color->isSystemColor ? std::optional(COLORREF{color->color}) : std::nullopt);
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
    ShowPart(m_parts.picWarning, !m_objection.empty(), [this] {
        m_parts.picWarning.Create(Handle(), kIdPicWarning);
        m_parts.picWarning.SetDpi(m_dpi);
    });
    Layout();
    if (isNew) {
        AnnounceText(m_parts.lblNote.Handle());
    }
}

void ValueBar::Layout() {
    if (!m_isVisible || m_parts.lblKey.Handle() == nullptr) {
        return;
    }
    const ValueField shown = Shown();
    ValueBarTexts texts;
    texts.name = Widen(shown.name);
    texts.nameWithState = m_shown ? texts.name + L": " + Widen(shown.state) : texts.name;
    texts.unit = Widen(shown.unit);
    texts.note = Widen(!m_objection.empty() ? m_objection
                       : m_shown ? m_workplace.Text(text::kDefaultIs, {shown.defaultValue})
                                 : std::string());
    texts.isWarning = !m_objection.empty();
    m_parts.Layout(Handle(), m_font.Get(), m_dpi, texts);
}

void ValueBar::OnTyped() {
    m_isTouched = true;
    ShowNote();
}

void ValueBar::Step(int steps) {
    m_parts.txtValue.SetText(Widen(m_editing.Stepped(Text(), steps)));
    m_parts.txtValue.SelectAll();
    OnTyped();
}

// The text with which the row was shown.
void ValueBar::ReturnToValue() {
    m_isTouched = false;
    m_shown = m_editing.Field();
    ShowValue();
    m_parts.txtValue.SelectAll();
}

bool ValueBar::OnFieldKey(WPARAM key, bool withAlt) {
    const bool isPlain = !withAlt && !IsKeyDown(VK_CONTROL) && !IsKeyDown(VK_SHIFT);
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
        m_parts.txtValue.SelectAll();
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
            SetFocus(m_parts.txtValue.Handle());
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
        const RECT field = BoundsOf(m_parts.txtValue.Handle());
        const RECT button = BoundsOf(m_parts.cmdChoices.Handle());
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
            SetFocus(m_parts.txtValue.Handle());
        } else {
            m_actions.FocusKeyList();
        }
    };
    return owner;
}

// The sum in the field follows.
void ValueBar::ToggleRow(int row) {
    m_parts.txtValue.SetText(Widen(m_editing.Toggled(Text(), static_cast<std::size_t>(row))));
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
            info.value = m_parts.txtValue.Text();
            info.description = m_parts.lblNote.Text();
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
