#include "ui/main/DescriptionPane.h"

#include <algorithm>
#include <utility>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kSavePicture = 1;        // its place among the toolbar's pictures
constexpr int kDescriptionMargin = 4;  // pixels at 96 DPI
constexpr int kToolbarMargin = 2;
constexpr Twips kToolbarDistance{300};

}  // namespace

DescriptionPane::DescriptionPane(EditorSession& session, MainWindowActions& actions)
    : m_workplace(session.Place()),
      m_selection(session.Selection()),
      m_dataFile(session.DataFile()),
      m_filter(session.Filter()),
      m_states(session.States()),
      m_actions(actions) {
    m_selection.Rows().Watchers().Add(*this);
    m_workplace.Watchers().Add(*this);
}

DescriptionPane::~DescriptionPane() {
    m_workplace.Watchers().Remove(*this);
    m_selection.Rows().Watchers().Remove(*this);
}

bool DescriptionPane::Create(HWND parent, const MainLook& look) {
    WindowParams params;
    params.className = L"TamarindDescriptionPane";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdDescriptionPane;
    if (!CreateHandle(params) || !txtDescriptionBox.Create(Handle(), kIdTxtDescriptionBox, *this) ||
        !Toolbar2.Create(Handle(), kIdToolbar2, *this)) {
        return false;
    }
    ApplyLook(look);
    ToolButton save;
    save.id = static_cast<int>(Command::FileSaveDataFile);
    save.picture = kSavePicture;
    save.text = Widen(m_workplace.Text(InfoOf(Command::FileSaveDataFile).textNumber));
    Toolbar2.AddButtons({&save, 1});
    OnCommandsChanged();
    return true;
}

void DescriptionPane::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    const bool showsControlsBackColor =
        m_workplace.OwnSettings().Values().showControlsBackColor != 0;
    txtDescriptionBox.SetColors(look.foreground,
                                showsControlsBackColor ? kControlsBackColor : look.background);
    txtDescriptionBox.SetBorder(look.border);
    ApplyUserFont(txtDescriptionBox, look.font, true, 0, look.dpi);
    m_font = look.font;
    if (lstCategories.Handle() != nullptr) {
        ApplyUserFont(lstCategories, m_font, true, 0, m_dpi);
    }
    txtDescriptionBox.SetMargins(ScaledPixels(kDescriptionMargin, look.dpi));
    Toolbar2.SetImages(look.toolbarPictures.Get(), look.disabledToolbarPictures.Get());
    Layout();
}

void DescriptionPane::ApplyLanguage() {
    Toolbar2.SetText(static_cast<int>(Command::FileSaveDataFile),
                     Widen(m_workplace.Text(InfoOf(Command::FileSaveDataFile).textNumber)));
    if (lstCategories.Handle() != nullptr) {
        lstCategories.SetTitles(
            {Widen(m_workplace.Text(text::kCategory)), Widen(m_workplace.Text(text::kKeysSet))});
    }
}

void DescriptionPane::ShowDescription() {
    if (const std::string text = m_selection.Rows().Description(); text != m_loaded) {
        m_isLoading = true;
        txtDescriptionBox.SetText(Widen(text));
        m_isLoading = false;
        m_loaded = text;
    }
    ShowMarks();
    txtDescriptionBox.SetMaxLength(m_dataFile.MaxDescriptionUnits());
    txtDescriptionBox.Enable(m_selection.Rows().CurrentKey().has_value());
}

void DescriptionPane::ShowMarks() {
    std::vector<MarkedPart> marks;
    if (m_filter.IsOn()) {
        const std::string text = Narrow(txtDescriptionBox.Text());
        for (const TextPart& part : m_filter.MarksIn(text, FilterField::Any)) {
            marks.push_back({part.start, part.length});
        }
    }
    txtDescriptionBox.SetMarks(std::move(marks));
}

// If the box can no longer be edited, it gives up the focus.
void DescriptionPane::OnKeyShown() {
    const bool hadFocus = GetFocus() == Box();
    ShowDescription();
    ShowCategories();
    if (hadFocus && !IsWindowEnabled(Box())) {
        m_actions.FocusKeyList();
    }
}

HWND DescriptionPane::FocusTarget() const {
    return m_categories.empty() ? Box() : lstCategories.Handle();
}

// The list is made for the first heading that is selected. While its rows change it is empty. Like
// the key list it runs from left to right in all languages, as the names of categories do.
void DescriptionPane::ShowCategories() {
    if (lstCategories.Handle() != nullptr) {
        lstCategories.SetRowCount(0);
    }
    m_categories = m_selection.CategoriesOfHeading();
    if (m_categories.empty()) {
        if (lstCategories.Handle() != nullptr) {
            lstCategories.Show(false);
        }
        return;
    }
    if (lstCategories.Handle() == nullptr) {
        ReportRows rows;
        rows.text = [this](int row, int column) {
            const auto at = static_cast<std::size_t>(row);
            return at >= m_categories.size() ? std::wstring()
                   : column == 0             ? Widen(m_categories[at].name)
                                             : std::to_wstring(m_categories[at].setKeys);
        };
        rows.onClicked = [this](int row) { OpenCategory(row); };
        rows.onKey = [this](WPARAM key) {
            if (key == VK_RETURN) {
                OpenCategory(lstCategories.SelectedRow());
            }
            return key == VK_RETURN;
        };
        if (!lstCategories.Create(Handle(), kIdLstCategories, std::move(rows),
                                  {{Widen(m_workplace.Text(text::kCategory))},
                                   {Widen(m_workplace.Text(text::kKeysSet)), true}})) {
            m_categories.clear();
            return;
        }
        ApplyUserFont(lstCategories, m_font, true, 0, m_dpi);
        Layout();
    }
    lstCategories.SetRowCount(static_cast<int>(m_categories.size()));
    lstCategories.SelectRow(0);
    lstCategories.Show(true);
    SetWindowPos(lstCategories.Handle(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void DescriptionPane::OpenCategory(int row) {
    if (row >= 0 && static_cast<std::size_t>(row) < m_categories.size()) {
        m_actions.FocusKeyList();
        m_selection.SelectCategory(m_categories[static_cast<std::size_t>(row)].node);
    }
}

void DescriptionPane::OnWentToKey(const std::optional<DescriptionPart>& part) {
    if (part) {
        txtDescriptionBox.Select(part->start, part->length);
    }
}

// A text that the program has set is no change by the user, should the system report it.
void DescriptionPane::OnTextChanged() {
    if (!m_isLoading) {
        m_loaded.reset();
        m_dataFile.ChangeDescription(Narrow(txtDescriptionBox.Text()));
        ShowMarks();
    }
}

void DescriptionPane::OnCommandsChanged() {
    Toolbar2.Show(m_dataFile.IsModified());
    Toolbar2.SetEnabled(static_cast<int>(Command::FileSaveDataFile),
                        m_states.IsEnabled(Command::FileSaveDataFile));
}

LRESULT DescriptionPane::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        default:
            return Window::HandleMessage(message, wParam, lParam);
    }
}

void DescriptionPane::Layout() {
    const RECT area = ClientAreaOf(Handle());
    txtDescriptionBox.SetBounds(area);
    if (lstCategories.Handle() != nullptr) {
        lstCategories.SetBounds(area);
    }
    PlaceDescriptionToolbar(ToTwips(Pixels{static_cast<int>(area.bottom)}, m_dpi));
}

// In the lower right corner, beside the scroll bar. `height` is that of the pane.
void DescriptionPane::PlaceDescriptionToolbar(Twips height) {
    const SIZE size = Toolbar2.IdealSize();
    const LONG left = std::max<LONG>(
        ClientSizeOf(Handle()).cx - size.cx - ToPixels(kToolbarDistance, m_dpi).value, 0);
    const LONG bottom = ToPixels(height, m_dpi).value - ScaledPixels(kToolbarMargin, m_dpi);
    Toolbar2.SetBounds({left, bottom - size.cy, left + size.cx, bottom});
    SetWindowPos(Toolbar2.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void DescriptionPane::OnToolbarButton(int id) {
    m_actions.Execute(static_cast<Command>(id));
}

}  // namespace tamarind
