#include "model/SettingsWriter.h"

namespace tamarind {
namespace {

IniEdit Apply(IniDocument& document, const SaveAction& action, const KeyStore& store, RowKey key) {
    const std::string_view section = store.TargetSection(key);
    const std::string_view name = store.KeyName(key);
    if (action.writes) {
        const bool replacesOther = action.deletesActive || action.deletesCommented;
        return WriteShownValue(document, section, name, *action.writes, replacesOther,
                               store.CurrentValue(key).value_or(std::string_view()));
    }
    IniEdit edit = IniEdit::Unchanged;
    if (action.deletesActive) {
        edit = document.DeleteKey(section, name);
    }
    if (action.deletesCommented) {
        edit = document.DeleteKey(section, ";" + std::string(name));
    }
    return edit;
}

}  // namespace

std::optional<SaveAction> SaveActionOf(KeyState currentState, KeyState initialState) {
    SaveAction action;
    switch (currentState) {
        case KeyState::ToBeDeleted:
            action.deletesActive = initialState == KeyState::Active;
            action.deletesCommented = initialState == KeyState::Commented;
            action.newState = KeyState::Absent;
            return action;
        case KeyState::ValueSet:
            action.deletesCommented = initialState == KeyState::Commented;
            action.writes = KeyForm::Active;
            action.newState = KeyState::Active;
            return action;
        case KeyState::ToBeCommented:
            action.deletesActive = initialState == KeyState::Active;
            action.writes = KeyForm::Commented;
            action.newState = KeyState::Commented;
            return action;
        case KeyState::Absent:
        case KeyState::Active:
        case KeyState::Commented:
            break;
    }
    return std::nullopt;
}

SaveResult WriteChanges(KeyStore& store, IniFiles& files, const std::string& path) {
    RowKey key = 0;
    const ProfileResult written = EditIniFile(files, path, [&](IniDocument& document) {
        for (key = 1; key <= store.Size(); ++key) {
            const auto action = SaveActionOf(store.CurrentState(key), store.InitialState(key));
            const IniEdit edit = action ? Apply(document, *action, store, key) : IniEdit::Unchanged;
            if (IsRefused(edit)) {
                return edit;
            }
        }
        return IniEdit::Changed;
    });
    if (!written.Succeeded()) {
        return {written.error, written.refused, IsRefused(written.refused) ? key : 0};
    }
    for (key = 1; key <= store.Size(); ++key) {
        if (const auto action = SaveActionOf(store.CurrentState(key), store.InitialState(key))) {
            store.Rebase(key, action->newState);
        }
    }
    return {};
}

}  // namespace tamarind
