#pragma once

#include <array>
#include <functional>
#include <string>

#include "model/session/EditorSession.h"
#include "model/session/SelectionTexts.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/PushButton.h"
#include "ui/toolkit/TextField.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The bar above the key list in which the user types a filter: the box, buttons to clear it, for
// the last texts and for the words that narrow a filter, and while the menu View hides keys a
// button that says so and shows all.
class FilterBar final : public Window, private TextFilterListener, private KeyListListener {
public:
    // All arguments are kept by reference and must outlive the bar.
    FilterBar(EditorSession& session, MainWindowActions& actions);
    ~FilterBar() override;

    // False if Windows cannot create the bar. It is hidden, and its controls are made when it is
    // shown first.
    bool Create(HWND parent);
    void ApplyLook(const MainLook& look);
    // The texts of the present language, in its direction.
    void ApplyLanguage(bool isRightToLeft);
    void Show(bool isVisible);
    bool IsVisible() const { return m_isVisible; }
    // In pixels of the parent.
    void SetBounds(const RECT& bounds);
    // The height in pixels that the font needs.
    int IdealHeight() const { return m_height; }

    // The box; null before the bar is shown first.
    HWND Field() const { return txtFilter.Handle(); }
    // Puts the caret into the box, with all of its text selected.
    void Focus();

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<AccessibleInfo> Describe() const override;
    void OnFilterChanged() override;
    void OnKeyListChanged() override { ShowParts(); }
    AccessibleInfo DescribePart(int id) const;
    bool MakeParts();
    std::array<Control*, 5> Parts();
    // Font and direction of a part, if it is there.
    void SetUp(Control& part) const;
    void ShowParts();
    void ShowButton(PushButton& button, int id, bool isVisible, std::function<void()> onClick);
    void Layout();
    void OnTyped();
    bool OnFieldKey(WPARAM key, bool withAlt);
    void ClearFilter();
    void OpenRecentTexts();
    void OpenWords();
    UniqueMenu MakeWordsMenu() const;
    void Choose(HMENU menu, const PushButton& button);

    const Workplace& m_workplace;
    TextFilter& m_filter;
    KeySelection& m_selection;
    const SelectionTexts m_texts{m_workplace, m_selection};
    MainWindowActions& m_actions;
    bool m_isVisible = false;
    bool m_isRightToLeft = false;
    bool m_isTyping = false;
    bool m_hasText = false;
    std::wstring m_sign;  // of the filter of the menu, as shown
    int m_dpi = 0;
    int m_height = 0;
    UniqueFont m_font;
    TextField txtFilter;
    PushButton cmdClearFilter;
    PushButton cmdRecentFilters;
    PushButton cmdFilterWords;
    PushButton cmdShowAllKeys;  // and hides nothing any more
};

}  // namespace tamarind
