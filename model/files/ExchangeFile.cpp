#include "model/files/ExchangeFile.h"

#include <algorithm>

#include "core/ini/ShownValue.h"
#include "core/ini/cProfile.h"

namespace tamarind {
namespace {

// Spaces around a value that waits to be saved are written if they will be saved.
IniEdit WriteKey(const KeyStore& store, KeyNumber key, IniDocument& file) {
    const KeyRecord record = store.Record(key);
    const KeyLooks looks = record.Looks();
    if (!looks.isGhosted) {
        const KeyForm form = looks.isChecked ? KeyForm::Active : KeyForm::Commented;
        return WriteShownValue(file, record.targetSection, record.keyName, form, true,
                               store.WholeValue(key).value_or(std::string_view()),
                               !store.IsPending(key) || store.KeepsSpaces(key));
    }
    const IniEdit edit = file.DeleteKey(record.targetSection, ";" + std::string(record.keyName));
    return IsRefused(edit) ? edit : file.DeleteKey(record.targetSection, record.keyName);
}

KeyChange ChangeOf(const IniDocument& file, KeyNumber key, const KeyStore& store) {
    const std::string_view section = store.TargetSection(key);
    const std::string_view name = store.KeyName(key);
    if (const auto active = file.FindValue(section, name)) {
        return {key, KeyState::ValueSet, std::string(*active)};
    }
    if (const auto commented = file.FindValue(section, ";" + std::string(name))) {
        return {key, KeyState::ToBeCommented, std::string(*commented)};
    }
    return {key, KeyState::ToBeDeleted, {}};
}

}  // namespace

WriteResult WriteExchangeFile(const KeyStore& store, const std::vector<KeyNumber>& keys,
                              IniFiles& files, const std::string& path) {
    return EditIniFile(files, path, [&](IniDocument& file) {
        for (const KeyNumber key : keys) {
            const IniEdit edit = WriteKey(store, key, file);
            if (IsRefused(edit)) {
                return edit;
            }
        }
        return IniEdit::Changed;
    });
}

bool HasSetKey(const std::vector<KeyNumber>& keys, const KeyStore& store) {
    return std::ranges::any_of(
        keys, [&](KeyNumber key) { return !LooksOf(store.CurrentState(key), {}).isGhosted; });
}

ExchangeContent ReadExchangeFile(const IniDocument& file, const std::vector<KeyNumber>& keys,
                                 const KeyStore& store) {
    ExchangeContent content;
    for (const KeyNumber key : store.WithoutTwins(keys)) {
        KeyChange change = ChangeOf(file, key, store);
        const bool isShort = CutToBuffer(change.value).size() == change.value.size();
        if (store.CanEditValue(key) && isShort) {
            content.changes.push_back(std::move(change));
        } else if (change.value != store.WholeValue(key)) {
            content.skipped.push_back(key);
        }
    }
    return content;
}

}  // namespace tamarind
