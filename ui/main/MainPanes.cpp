#include "ui/main/MainPanes.h"

#include <algorithm>
#include <iterator>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Twips kBarSize = ToTwips(Pixels{3}, kDesignDpi);
constexpr Twips kMinListWidth{2100};

// A bar that was not moved leaves the setting as the file has it.
void StorePosition(const cSplitter& splitter, std::int32_t& setting) {
    const Twips position = splitter.SplitPosition();
    if (position.value != UsableBarPosition(setting)) {
        // In a window that is too low for its description, the bar is above the upper edge.
        setting = std::max(position, kBarSize).value;
    }
}

}  // namespace

MainPanes::MainPanes(EditorSession& session, MainWindowActions& actions)
    : m_workplace(session.Place()),
      m_ownSettings(session.Place().OwnSettings()),
      m_tree(session.Place(), session.Selection(), actions),
      m_keys(session, actions),
      m_value(session.Place(), session.Selection(), session.Editing(), session.States(), actions),
      m_description(session, actions) {}

MainPanes::~MainPanes() {
    WindowObject::SetFilter(m_upper.Handle(), nullptr);
}

bool MainPanes::Create(HWND parent, const MainLook& look) {
    if (!Picture1.Create(parent, kIdPicture1) || !m_upper.Create(Picture1.Handle(), kIdUpperPane) ||
        !picSpliterContainer.Create(m_upper.Handle(), kIdPicSpliterContainer) ||
        !m_tree.Create(picSpliterContainer.Handle()) ||
        !m_keys.Create(picSpliterContainer.Handle()) ||
        !Frame1.Create(picSpliterContainer.Handle(), kIdFrame1) ||
        !m_value.Create(m_upper.Handle()) || !m_description.Create(Picture1.Handle(), look) ||
        !Frame2.Create(Picture1.Handle(), kIdFrame2)) {
        return false;
    }
    const OwnSettings& settings = m_ownSettings.Values();
    SplitterOptions options;
    options.SplitterSize = kBarSize;
    options.Direction = SplitDirection::Vertical;
    options.SplitterStartPos = Twips{UsableBarPosition(settings.splitPosition)};
    m_treeSplitter.MinLeftPanelWidth = Twips{0};
    m_treeSplitter.MinRightPanelWidth = kMinListWidth;
    m_treeSplitter.CreateSplitter(picSpliterContainer.Handle(), Frame1, m_tree.Handle(),
                                  m_keys.Handle(), options, look.dpi);
    options.Direction = SplitDirection::Horizontal;
    options.SplitterStartPos = Twips{UsableBarPosition(settings.descriptionPanelHeight)};
    WindowObject::SetFilter(m_upper.Handle(), this);
    m_descriptionSplitter.CreateSplitter(Picture1.Handle(), Frame2, m_upper.Handle(),
                                         m_description.Handle(), options, look.dpi);
    Frame1.SetName([this] { return Widen(m_workplace.Text(text::kTreeWidth)); });
    Frame2.SetName([this] { return Widen(m_workplace.Text(text::kDescriptionHeight)); });
    ApplyLook(look);
    return true;
}

void MainPanes::ApplyLook(const MainLook& look) {
    m_tree.ApplyLook(look);
    m_keys.ApplyLook(look);
    m_value.ApplyLook(look);
    LayoutUpper();
    m_description.ApplyLook(look);
    m_treeSplitter.SetDpi(look.dpi);
    m_descriptionSplitter.SetDpi(look.dpi);
}

std::optional<LRESULT> MainPanes::FilterMessage(UINT message, WPARAM, LPARAM) {
    if (message == WM_SIZE) {
        LayoutUpper();
    }
    return std::nullopt;
}

// The value bar at the bottom, tree and list above it.
void MainPanes::LayoutUpper() {
    RECT area = ClientAreaOf(m_upper.Handle());
    if (m_isValueVisible) {
        const LONG top = std::max<LONG>(0, area.bottom - m_value.IdealHeight());
        m_value.SetBounds({0, top, area.right, area.bottom});
        area.bottom = top;
    }
    picSpliterContainer.SetBounds(area);
}

void MainPanes::ShowValueBar(bool isVisible) {
    if (m_isValueVisible == isVisible) {
        return;
    }
    const bool hadFocus = m_value.IsPart(GetFocus());
    m_isValueVisible = isVisible;
    m_value.Show(isVisible);
    LayoutUpper();
    if (hadFocus) {
        FocusTree();
    }
}

void MainPanes::ShowFilterBar(bool isVisible) {
    FilterBar& bar = m_keys.Filter();
    if (bar.IsVisible() == isVisible) {
        return;
    }
    const bool hadFocus = IsChild(bar.Handle(), GetFocus());
    bar.Show(isVisible);
    m_keys.Layout();
    if (hadFocus) {
        FocusTree();
    }
}

void MainPanes::ShowDescriptionPane(bool isVisible) {
    if (m_descriptionSplitter.RightPanelVisible() == isVisible) {
        return;
    }
    const bool hadFocus = GetFocus() == m_description.Box();
    m_descriptionSplitter.SetRightPanelVisible(isVisible);
    if (hadFocus) {
        FocusTree();
    }
}

void MainPanes::StorePositions(OwnSettings& settings) const {
    StorePosition(m_treeSplitter, settings.splitPosition);
    StorePosition(m_descriptionSplitter, settings.descriptionPanelHeight);
    m_keys.KeepColumns();
}

void MainPanes::FocusNext(bool isForward) {
    const HWND order[] = {m_tree.Handle(), m_keys.List(), m_value.Field(),
                          m_description.FocusTarget(), m_keys.Filter().Field()};
    FocusNextOf(order, isForward);
}

void MainPanes::FocusNextPart(bool isForward, HWND toolbar) {
    const HWND order[] = {
        m_tree.Handle(), m_keys.List(),           m_value.Field(), m_description.FocusTarget(),
        toolbar,         m_keys.Filter().Field(), Frame1.Handle(), Frame2.Handle()};
    FocusNextOf(order, isForward);
}

// From a part that is none of these it goes to the last one, or to the second.
void MainPanes::FocusNextOf(std::span<const HWND> order, bool isForward) {
    HWND focus = GetFocus();
    focus = m_keys.IsPart(focus) ? m_keys.List() : m_value.IsPart(focus) ? m_value.Field() : focus;
    auto at = static_cast<std::size_t>(std::ranges::find(order, focus) - order.begin());
    if (at == order.size()) {
        at = isForward ? order.size() - 1 : 0;
    }
    for (std::size_t step = 0; step < order.size(); ++step) {
        at = (at + (isForward ? 1 : order.size() - 1)) % order.size();
        if (order[at] != nullptr && IsWindowVisible(order[at]) && IsWindowEnabled(order[at])) {
            SetFocus(order[at]);
            return;
        }
    }
}

}  // namespace tamarind
