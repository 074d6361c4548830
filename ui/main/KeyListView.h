#pragma once

#include "model/session/KeyCommands.h"
#include "model/session/KeySelection.h"
#include "ui/main/InplaceEdit.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/ColorSwatch.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/VirtualList.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The visible key list: the rows of the session's list, each a line of the settings file, with the
// box in which the current one is edited and the sample of its colour. All three are in a window of
// their own, which is never mirrored, since the places of the two follow from the rows.
class KeyListView final : public Window,
                          private VirtualListSource,
                          private InplaceEditListener,
                          private KeyListListener {
public:
    KeyListView(const Workplace& workplace, KeySelection& selection, KeyCommands& commands,
                MainWindowActions& actions);
    ~KeyListView() override;

    bool Create(HWND parent);
    void ApplyLook(const MainLook& look);
    // Shows the text of the present language.
    void ApplyLanguage();
    HWND List() const { return ListView1.Handle(); }

    // Opens the box over the current row.
    void BeginInplaceEdit();
    // Stores nothing, nor is it the next row's turn any more.
    void CloseInplaceEdit();
    bool IsEditing() const { return txtInplaceEdit.IsOpen(); }
    // Whether a window belongs to the list, which is to get the focus in its place.
    bool IsPart(HWND window) const;
    // A value was stored: a moment later it is the next row's turn, if the settings say so.
    void ContinueWithNextKey();

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnKeyListChanged() override;
    void OnKeyShown() override;
    void OnKeyChanged(KeyNumber key) override;
    void OnWentToKey(const std::optional<DescriptionPart>&) override;
    std::wstring RowText(int row) const override;
    RowLook LookOfRow(int row) const override;
    void OnRowSelected(int row) override;
    void OnListMenu(POINT at) override;
    void OnRowActivated() override;
    bool OnListKey(WPARAM key) override;
    void OnListPressed() override { txtInplaceEdit.Close(); }
    void OnListPlaced() override;
    bool OnTextEntered(const std::wstring& text) override;
    void OnNextKey();
    bool CreateInplaceEdit();
    void ApplyLookToInplaceEdit();
    void ShowColor();
    void PlaceColorSample();
    std::optional<KeyRecord> RecordOf(int row) const;

    const Workplace& m_workplace;
    KeySelection& m_selection;
    KeyCommands& m_commands;
    MainWindowActions& m_actions;
    COLORREF m_activeColor = 0;
    UserFont m_font;
    int m_dpi = 0;
    VirtualList ListView1;
    InplaceEdit txtInplaceEdit{ListView1};
    ColorSwatch cmdColorSample;
    Timer Timer1{[this] { OnNextKey(); }};
};

}  // namespace tamarind
