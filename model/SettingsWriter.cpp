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

// Writes the changes of some keys into one file; what went wrong, if anything did.
std::optional<SaveResult::Failure> WriteFile(KeyStore& store, IniFiles& files,
                                             const std::string& path,
                                             const std::vector<RowKey>& keys) {
    RowKey present = 0;
    const auto editAll = [&](IniDocument& document) {
        for (const RowKey key : keys) {
            present = key;
            const auto action = SaveActionOf(store.CurrentState(key), store.InitialState(key));
            const IniEdit edit = Apply(document, *action, store, key);
            if (IsRefused(edit)) {
                return edit;
            }
        }
        return IniEdit::Changed;
    };
    const ProfileResult written = EditIniFile(files, path, editAll, Backup::Yes);
    if (!written.Succeeded()) {
        return SaveResult::Failure{path, written.error, written.refused,
                                   IsRefused(written.refused) ? present : 0};
    }
    for (const RowKey key : keys) {
        const auto action = SaveActionOf(store.CurrentState(key), store.InitialState(key));
        store.Rebase(key, action->newState);
    }
    return std::nullopt;
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

SaveResult WriteChanges(KeyStore& store, IniFiles& files, const SettingsFiles& settings) {
    std::vector<std::vector<RowKey>> pending(settings.Files().size());
    for (RowKey key = 1; key <= store.Size(); ++key) {
        if (SaveActionOf(store.CurrentState(key), store.InitialState(key))) {
            pending[settings.FileOf(store.TargetSection(key), store.KeyName(key))].push_back(key);
        }
    }
    SaveResult result;
    for (std::size_t file = 0; file < pending.size(); ++file) {
        if (!pending[file].empty()) {
            const std::string& path = settings.Files()[file].path;
            if (auto failure = WriteFile(store, files, path, pending[file])) {
                result.failures.push_back(std::move(*failure));
            }
        }
    }
    return result;
}

}  // namespace tamarind
