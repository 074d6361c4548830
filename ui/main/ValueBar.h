#pragma once

#include "model/session/CommandStates.h"
#include "model/session/KeySelection.h"
#include "model/session/ValueEditing.h"
#include "ui/main/ChoiceList.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/main/ValueBarParts.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// A strip of one row about the current key: its name and state, a field for its value with what
// belongs to its type, its default or what is wrong with the value, and a button that resets it.
// The list of choices opens over the main window. Controls are made when a key first needs them.
class ValueBar final : public Window, private KeyListListener, private WorkplaceListener {
public:
    // All arguments are kept by reference and must outlive the bar.
    ValueBar(Workplace& workplace, KeySelection& selection, ValueEditing& editing,
             const CommandStates& states, MainWindowActions& actions);
    ~ValueBar() override;

    // Makes it without a size, hidden. False if Windows cannot create it.
    bool Create(HWND parent);
    void ApplyLook(const MainLook& look);
    void ApplyLanguage(bool isRightToLeft);
    // It is told of keys only while it is shown.
    void Show(bool isVisible);
    void SetBounds(const RECT& bounds);
    // In pixels.
    int IdealHeight() const { return m_height; }

    HWND Field() const { return m_parts.txtValue.Handle(); }
    // Whether the window is one of the bar, or the list of choices.
    bool IsPart(HWND window) const;

    // Opens the choices of the current key under the field, or, while the bar is hidden, under
    // `row`, in pixels of the screen. A key without choices gets the focus into its field. False if
    // there is neither.
    bool OpenChoices(const RECT& row);
    void CloseChoices() { m_choices.Close(); }

private:
    std::optional<AccessibleInfo> Describe() const override;
    AccessibleInfo DescribePart(int id) const;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnKeyShown() override;
    void OnKeyChanged(KeyNumber key) override;
    void OnManyKeysChanged() override;
    void OnCommandsChanged() override;
    void OnTyped();
    bool OnFieldKey(WPARAM key, bool withAlt);

    // Makes a control with this function unless it is there, and shows it or not.
    template <typename Part, typename Make>
    void ShowPart(Part& part, bool isVisible, Make make);
    void SetUp(Control& part) const;
    void ShowParts();
    void ShowValue();
    void ShowNote();
    void CheckPlace();
    void ShowObjection(std::string objection);
    void Layout();
    ValueField Shown() const { return m_shown ? *m_shown : ValueField(); }
    std::string Text() const;
    void Step(int steps);
    void Store();
    void Browse();
    void ReturnToValue();

    ChoiceListOwner OwnerOfChoices();
    ChoiceRows ChoicesToShow() const;
    void ToggleRow(int row);
    void TakeRow(int row);

    Workplace& m_workplace;
    KeySelection& m_selection;
    ValueEditing& m_editing;
    const CommandStates& m_states;
    MainWindowActions& m_actions;
    bool m_isVisible = false;
    bool m_isRightToLeft = false;
    UniqueFont m_font;  // of all controls
    int m_dpi = 0;
    int m_height = 0;

    std::optional<ValueField> m_shown;
    bool m_isTouched = false;  // the user has typed what is not stored
    std::string m_objection;
    bool m_returnsToField = false;  // the focus, when the choices are closed

    ValueBarParts m_parts;
    ChoiceList m_choices{OwnerOfChoices()};
    Timer m_placeCheck{[this] { CheckPlace(); }};
};

}  // namespace tamarind
