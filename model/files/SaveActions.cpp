#include "model/files/SaveActions.h"

#include <string>

namespace tamarind {

std::optional<SaveAction> SaveActionOf(KeyState currentState, KeyState initialState) {
    SaveAction action;
    switch (currentState) {
        case KeyState::ToBeDeleted:
            action.deletesActive = initialState == KeyState::Active;
            action.deletesCommented = initialState == KeyState::Commented;
            return action;
        case KeyState::ValueSet:
            action.deletesCommented = initialState == KeyState::Commented;
            action.writes = KeyForm::Active;
            return action;
        case KeyState::ToBeCommented:
            action.deletesActive = initialState == KeyState::Active;
            action.writes = KeyForm::Commented;
            return action;
        case KeyState::Absent:
        case KeyState::Active:
        case KeyState::Commented:
            break;
    }
    return std::nullopt;
}

IniEdit ApplyPendingChange(IniDocument& file, const KeyStore& store, KeyNumber key) {
    const auto action = SaveActionOf(store.CurrentState(key), store.InitialState(key));
    if (!action) {
        return IniEdit::Unchanged;
    }
    const std::string_view section = store.TargetSection(key);
    const std::string_view name = store.KeyName(key);
    if (action->writes) {
        const bool replacesOther = action->deletesActive || action->deletesCommented;
        return WriteShownValue(file, section, name, *action->writes, replacesOther,
                               store.WholeValue(key).value_or(std::string_view()),
                               store.KeepsSpaces(key));
    }
    IniEdit edit = IniEdit::Unchanged;
    if (action->deletesActive) {
        edit = file.DeleteKey(section, name);
    }
    if (action->deletesCommented) {
        edit = file.DeleteKey(section, ";" + std::string(name));
    }
    return edit;
}

std::vector<std::vector<KeyNumber>> PendingKeysByFile(const KeyStore& store,
                                                      const SettingsFiles& settings) {
    std::vector<std::vector<KeyNumber>> pending(settings.Files().size());
    for (const KeyNumber key : store.PendingKeys()) {
        pending[settings.FileOf(store.TargetSection(key), store.KeyName(key))].push_back(key);
    }
    return pending;
}

}  // namespace tamarind
