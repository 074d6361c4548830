#include "model/DescriptionWriter.h"

#include "core/ShownValue.h"
#include "core/Unicode.h"
#include "core/cProfile.h"

namespace tamarind {
namespace {

IniEdit WriteEntry(const KeyRecord& record, IniDocument& file) {
    std::string entry(record.defaultValue);
    entry.append(kEntrySeparator).append(record.description);
    return WriteExactValue(file, record.category, record.keyName, entry);
}

}  // namespace

std::string StoredDescription(std::string_view text) {
    std::string stored;
    stored.reserve(text.size());
    for (const char c : text) {
        if (c != '\n') {
            stored += c == '\r' ? '@' : c;
        }
    }
    return stored;
}

std::size_t MaxDescriptionUnits(const KeyStore& store, RowKey key) {
    const std::string_view value = store.Record(key).defaultValue;
    // A slash at its end would be taken for the first of the three behind it.
    const bool isClear = value.empty() || value.back() != '/';
    const std::size_t used = Utf16Length(value) + kEntrySeparator.size() + 1;
    return store.CanDescribe(key) && isClear && used < cProfile::kBufferSize
               ? cProfile::kBufferSize - used
               : 0;
}

ProfileResult WriteDescriptions(KeyStore& store, IniFiles& files, const std::string& path) {
    const auto forEachPending = [&](const auto& visit) {
        for (const auto& own : store.OwnDescriptions()) {
            if (store.IsDescriptionPending(own.first)) {
                visit(own.first);
            }
        }
    };
    const auto edit = [&](IniDocument& file) {
        IniEdit result = IniEdit::Changed;
        forEachPending([&](RowKey key) {
            if (!IsRefused(result)) {
                result = WriteEntry(store.Record(key), file);
            }
        });
        return result;
    };
    const ProfileResult written = EditIniFile(files, path, edit, Backup::Yes);
    if (written.Succeeded()) {
        forEachPending([&](RowKey key) { store.SetDescriptionSaved(key); });
    }
    return written;
}

}  // namespace tamarind
