#include "model/ExchangeFile.h"

#include "core/ShownValue.h"
#include "core/cProfile.h"

namespace tamarind {
namespace {

IniEdit WriteKey(const KeyRecord& record, IniDocument& file) {
    const KeyLooks looks = record.Looks();
    if (!looks.isGhosted) {
        const KeyForm form = looks.isChecked ? KeyForm::Active : KeyForm::Commented;
        return WriteShownValue(file, record.targetSection, record.keyName, form, true,
                               record.currentValue.value_or(std::string_view()));
    }
    const IniEdit edit = file.DeleteKey(record.targetSection, ";" + std::string(record.keyName));
    return IsRefused(edit) ? edit : file.DeleteKey(record.targetSection, record.keyName);
}

void ReadKey(const IniDocument& file, RowKey key, KeyStore& store) {
    const std::string_view section = store.TargetSection(key);
    const std::string_view name = store.KeyName(key);
    if (const auto value = file.FindValue(section, name)) {
        store.SetValue(key, std::string(CutToBuffer(*value)), KeyState::ValueSet);
    } else if (const auto commented = file.FindValue(section, ";" + std::string(name))) {
        store.SetValue(key, std::string(CutToBuffer(*commented)), KeyState::ToBeCommented);
    } else {
        store.SetValue(key, {}, KeyState::ToBeDeleted);
    }
}

}  // namespace

ProfileResult WriteExchangeFile(const KeyStore& store, const KeyList& keys, IniFiles& files,
                                const std::string& path) {
    return EditIniFile(files, path, [&](IniDocument& file) {
        for (std::size_t row = 0; row < keys.Size(); ++row) {
            const IniEdit edit = WriteKey(store.Record(keys.KeyAt(row)), file);
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

void ReadExchangeFile(const IniDocument& file, const KeyList& keys, KeyStore& store) {
    for (std::size_t row = 0; row < keys.Size(); ++row) {
        ReadKey(file, keys.KeyAt(row), store);
    }
}

}  // namespace tamarind
