#include "model/files/ExchangeFile.h"

#include <unordered_set>

#include "core/ini/ShownValue.h"
#include "core/ini/cProfile.h"

namespace tamarind {
namespace {

// `whole` is the whole value of the record, however long.
IniEdit WriteKey(const KeyRecord& record, std::string_view whole, IniDocument& file) {
    const KeyLooks looks = record.Looks();
    if (!looks.isGhosted) {
        const KeyForm form = looks.isChecked ? KeyForm::Active : KeyForm::Commented;
        return WriteShownValue(file, record.targetSection, record.keyName, form, true, whole);
    }
    const IniEdit edit = file.DeleteKey(record.targetSection, ";" + std::string(record.keyName));
    return IsRefused(edit) ? edit : file.DeleteKey(record.targetSection, record.keyName);
}

// False if a value that would have to change, here or in the file, is longer than the receive
// buffer.
bool ReadKey(const IniDocument& file, KeyNumber key, KeyStore& store) {
    const std::string_view section = store.TargetSection(key);
    const std::string_view name = store.KeyName(key);
    const auto active = file.FindValue(section, name);
    const auto commented = active ? std::nullopt : file.FindValue(section, ";" + std::string(name));
    const std::string_view value = active.value_or(commented.value_or(std::string_view()));
    if (!store.CanEditValue(key) || CutToBuffer(value).size() < value.size()) {
        return value == store.WholeValue(key);
    }
    store.SetValue(key, std::string(value),
                   active      ? KeyState::ValueSet
                   : commented ? KeyState::ToBeCommented
                               : KeyState::ToBeDeleted);
    return true;
}

}  // namespace

WriteResult WriteExchangeFile(const KeyStore& store, const KeyList& keys, IniFiles& files,
                              const std::string& path) {
    return EditIniFile(files, path, [&](IniDocument& file) {
        for (std::size_t row = 0; row < keys.Size(); ++row) {
            const KeyNumber key = keys.KeyAt(row);
            const IniEdit edit = WriteKey(store.Record(key),
                                          store.WholeValue(key).value_or(std::string_view()), file);
            if (IsRefused(edit)) {
                return edit;
            }
        }
        return IniEdit::Changed;
    });
}

bool HasSetKey(const KeyList& keys, const KeyStore& store) {
    for (std::size_t row = 0; row < keys.Size(); ++row) {
        if (!LooksOf(store.CurrentState(keys.KeyAt(row)), {}).isGhosted) {
            return true;
        }
    }
    return false;
}

std::vector<KeyNumber> ReadExchangeFile(const IniDocument& file, const KeyList& keys,
                                        KeyStore& store) {
    std::vector<KeyNumber> skipped;
    std::unordered_set<KeyNumber> done;
    for (std::size_t row = 0; row < keys.Size(); ++row) {
        const KeyNumber key = keys.KeyAt(row);
        if (done.insert(store.FirstTwin(key)).second && !ReadKey(file, key, store)) {
            skipped.push_back(key);
        }
    }
    return skipped;
}

}  // namespace tamarind
