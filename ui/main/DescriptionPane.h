#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/EditBox.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/Toolbar.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The description of the current key, which can be edited; under a heading, the categories that it
// has. While changed descriptions wait to be
// saved, a small toolbar in the lower corner offers to do that.
class DescriptionPane final : public Window,
                              private ToolbarListener,
                              private EditBoxListener,
                              private KeyListListener,
                              private WorkplaceListener {
public:
    // All arguments are kept by reference and must outlive the pane.
    DescriptionPane(EditorSession& session, MainWindowActions& actions);
    ~DescriptionPane() override;

    // False if Windows cannot create the pane or its controls.
    bool Create(HWND parent, const MainLook& look);
    // The pictures stay owned by `look`, which must live until the next call.
    void ApplyLook(const MainLook& look);

    // Shows all texts in the present language.
    void ApplyLanguage();

    HWND Box() const { return txtDescriptionBox.Handle(); }
    // What gets the focus: the box or, under a heading, the list of its categories.
    HWND FocusTarget() const;
    // Shows the stored description of the current key.
    void ShowDescription();

private:
    // What the parts of the session tell: another key is shown, a search or a favorite has led to a
    // part of the description, the enabled commands have changed.
    void OnKeyShown() override;
    void OnWentToKey(const std::optional<DescriptionPart>& part) override;
    void OnCommandsChanged() override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnToolbarButton(int id) override;
    void OnToolbarDropDown(int, const RECT&) override {}
    void OnTextChanged() override;
    void ShowCategories();
    // Of what the filter looks for.
    void ShowMarks();
    void OpenCategory(int row);
    void Layout();
    void PlaceDescriptionToolbar(Twips height);

    Workplace& m_workplace;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
    const TextFilter& m_filter;
    const CommandStates& m_states;
    bool m_isLoading = false;
    std::optional<std::string> m_loaded;  // the text in the box, unless the user has changed it
    int m_dpi = 0;
    MainWindowActions& m_actions;
    UserFont m_font;
    std::vector<KeySelection::CategoryCount> m_categories;  // of the heading that is shown
    EditBox txtDescriptionBox;
    ReportList lstCategories;
    Toolbar Toolbar2;
};

}  // namespace tamarind
