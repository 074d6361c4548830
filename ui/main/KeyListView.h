#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/FilterBar.h"
#include "ui/main/InplaceEdit.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/main/NoHitsNote.h"
#include "ui/toolkit/ColorSwatch.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/VirtualList.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The visible key list: one row for each key of KeySelection, with the box in which the current one
// is edited and the sample of its color. All three are in a window of their own that is never
// mirrored, because box and sample are placed beside rows that run from left to right.
class KeyListView final : public Window,
                          private VirtualListSource,
                          private InplaceEditListener,
                          private KeyListListener,
                          private KeyColumnsListener {
public:
    // All arguments are kept by reference and must outlive the view.
    KeyListView(EditorSession& session, MainWindowActions& actions);
    ~KeyListView() override;

    // False if Windows cannot create the pane or the list. Box and sample are made when they are
    // needed first.
    bool Create(HWND parent);
    // The pictures stay owned by `look`, which must live until the next call.
    void ApplyLook(const MainLook& look);
    // Keeps the order and the widths of the columns, as the user has made them.
    void KeepColumns() const;
    // The current row, in pixels of the screen.
    RECT CurrentRowBounds() const;
    // Shows the column titles in the present language.
    void ApplyLanguage();
    HWND List() const { return ListView1.Handle(); }
    FilterBar& Filter() { return m_filterBar; }
    // The filter bar, if it is visible, and the list below it.
    void Layout();

    void SelectAll() { ListView1.SelectAll(); }

    // Opens the box over the current row, if its value can be edited.
    void BeginInplaceEdit();
    // Closes the box without storing anything, and does not go on to the next row either.
    void CloseInplaceEdit();
    bool IsEditing() const { return txtInplaceEdit.IsOpen(); }
    // Whether the window is the list or its box, so that the list is to get the focus in its place.
    bool IsPart(HWND window) const;
    // To be called after a value was stored: if the settings say so, the next row is edited a
    // moment later.
    void ContinueWithNextKey();

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnKeyListChanged() override;
    void OnKeyShown() override;
    void OnKeyChanged(KeyNumber key) override;
    void OnManyKeysChanged() override;
    void OnWentToKey(const std::optional<DescriptionPart>&) override;
    void OnColumnsChanged() override;
    std::wstring RowText(int row) const override;
    std::wstring CellText(int row, int column) const override;
    RowLook LookOfRow(int row) const override;
    void OnRowSelected(int row) override;
    void OnSelectionChanged() override;
    void OnListMenu(POINT at) override;
    void OnTitleMenu(POINT at) override;
    void OnRowActivated() override;
    bool OnListKey(WPARAM key) override;
    void OnListPressed() override { txtInplaceEdit.Close(); }
    void OnListPlaced() override;
    bool OnTextEntered(const std::wstring& text) override;
    void ShowColumns();
    void OnNextKey();
    bool CreateInplaceEdit();
    void ApplyLookToInplaceEdit();
    // Shows or hides the color sample of the current key.
    void ShowColor();
    void PlaceColorSample();
    void ShowNote();
    void PlaceNote();
    std::vector<MarkedPart> MarksOf(const KeyRecord& record) const;
    std::optional<AccessibleInfo> DescribeRow(LONG row) const;
    // Nothing if there is no such row.
    std::optional<KeyRecord> RecordOf(int row) const;

    const Workplace& m_workplace;
    KeySelection& m_selection;
    KeyCommands& m_commands;
    const KeyValues& m_values;
    TextFilter& m_filter;
    ValueEditing& m_editing;
    KeyColumns& m_keyColumns;
    std::vector<KeyColumn> m_columns;  // as the list counts them
    MainWindowActions& m_actions;
    COLORREF m_activeColor = 0;
    UserFont m_font;
    int m_dpi = 0;
    FilterBar m_filterBar;
    VirtualList ListView1;
    NoHitsNote m_noHits;
    InplaceEdit txtInplaceEdit{ListView1};
    ColorSwatch cmdColorSample;
    Timer Timer1{[this] { OnNextKey(); }};
};

}  // namespace tamarind
