#include "model/session/CommandStates.h"

namespace tamarind {

CommandState CommandStates::State() const {
    CommandState state;
    state.isToolbarVisible = m_workplace.IsVisible(WindowPart::Toolbar);
    state.isDescriptionVisible = m_workplace.IsVisible(WindowPart::Description);
    state.isValueBarVisible = m_workplace.IsVisible(WindowPart::ValueBar);
    state.isFilterBarVisible = m_workplace.IsVisible(WindowPart::FilterBar);
    state.areUndescribedVisible = m_workplace.IsVisible(WindowPart::UndescribedKeys);
    state.isFiltered = m_selection.HasRanking();
    for (const ShownColumn& shown : m_columns.Shown()) {
        if (shown.column != KeyColumn::Key) {
            state.showsColumns[static_cast<std::size_t>(shown.column) - 1] = true;
        }
    }
    state.hasKey = m_selection.Rows().EditableKey().has_value();
    for (const KeyNumber key : m_selection.Rows().SelectedKeys()) {
        const KeyLooks looks = LooksOf(m_selection.Rows().Store().CurrentState(key), {});
        state.isKeyPresent |= !looks.isGhosted;
        state.isKeyActive |= looks.isChecked;
        if (state.isKeyActive) {
            break;
        }
    }
    const auto current = m_selection.Rows().CurrentKey();
    state.hasDescribedRow = current && m_selection.Rows().Store().IsDescribed(*current);
    state.isDataFileModified = m_dataFile.IsModified();
    state.canFind = m_finding.Search().CanFind();
    state.isModified = m_settings.IsModified();
    state.canUndo = m_commands.CanUndo();
    state.canRedo = m_commands.CanRedo();
    state.showsAllKeys = m_selection.Filter() == KeyFilter::ShowAll;
    state.showsActiveKeys = m_selection.Filter() == KeyFilter::ShowActive;
    state.showsInactiveKeys = m_selection.Filter() == KeyFilter::ShowInactive;
    state.showsChangedKeys = m_selection.Filter() == KeyFilter::ShowChanged;
    state.showsDifferentKeys = m_selection.Filter() == KeyFilter::ShowDifferent;
    state.canDescribe = m_describing.CanDescribe();
    state.canShowInCategory = m_selection.CanShowInCategory();
    return state;
}

bool CommandStates::IsEnabled(Command command) const {
    if (m_workplace.IsBusy()) {
        return false;
    }
    CommandState state = State();
    // Looking for another program's window takes longer than all the rest.
    state.isTotalCommanderRunning =
        command == Command::FileSaveAndRestart && m_settings.IsTotalCommanderRunning();
    return InfoOf(command).isEnabled(state);
}

bool CommandStates::IsChecked(Command command) const {
    return InfoOf(command).isChecked(State());
}

std::string CommandStates::NameOfStep(Command command) const {
    switch (command) {
        case Command::EditUndo:
            return m_commands.UndoName();
        case Command::EditRedo:
            return m_commands.RedoName();
        default:
            return {};
    }
}

}  // namespace tamarind
