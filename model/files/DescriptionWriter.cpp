#include "model/files/DescriptionWriter.h"

#include "core/ini/IniTransaction.h"
#include "core/ini/ShownValue.h"
#include "core/ini/cProfile.h"
#include "core/text/Unicode.h"
#include "model/files/DataFile.h"

namespace tamarind {
namespace {

// The entry of a key in a data file: default value, separator, description.
IniEdit WriteEntry(const KeyRecord& record, IniDocument& file) {
    std::string entry(record.defaultValue);
    entry.append(kEntrySeparator).append(record.description);
    return WriteExactValue(file, record.category, record.keyName, entry);
}

// The category of the data file that takes a key which it did not have: the first one for its
// section, or one of the section's own.
std::string CategoryForNewKey(IniDocument& file, std::string_view section) {
    for (const CategoryNode& node : ReadCategories(file)) {
        const auto target = file.FindValue(node.tag, kCategoryTarget);
        if (target && EqualsIgnoreCase(*target, section)) {
            return std::string(node.tag);
        }
    }
    std::string name(section);
    while (file.FindSection(name)) {
        name.insert(0, "[").append("]");  // a category for another section has that name
    }
    file.SetValue(name, kCategoryTarget, section);
    return name;
}

// Calls `visit` with each key whose description waits to be written.
template <typename Visit>
void ForEachPending(const KeyStore& store, Visit visit) {
    for (const auto& own : store.OwnDescriptions()) {
        if (store.IsDescriptionPending(own.first)) {
            visit(own.first);
        }
    }
}

IniEdit WriteEntries(const KeyStore& store, IniDocument& file) {
    IniEdit result = IniEdit::Changed;
    ForEachPending(store, [&](KeyNumber key) {
        if (!IsRefused(result)) {
            KeyRecord record = store.Record(key);
            const std::string category = store.IsDescribed(key)
                                             ? std::string(record.category)
                                             : CategoryForNewKey(file, record.targetSection);
            record.category = category;
            result = WriteEntry(record, file);
        }
    });
    return result;
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

std::size_t MaxDescriptionUnits(const KeyStore& store, KeyNumber key) {
    const std::string_view value = store.Record(key).defaultValue;
    // A "/" at the end of the value would become the first "/" of the separator.
    const bool isClear = !value.ends_with('/');
    const std::size_t used = Utf16Length(value) + kEntrySeparator.size() + 1;
    return store.CanDescribe(key) && isClear && used < cProfile::kBufferSize
               ? cProfile::kBufferSize - used
               : 0;
}

DescriptionResult WriteDescriptions(KeyStore& store, IniFiles& files, const std::string& path,
                                    std::shared_ptr<const IniDocument>& known,
                                    const std::function<bool()>& mayWrite) {
    DescriptionResult result;
    IniTransaction transaction(files, Backup::Yes);
    bool isAgain = true;
    while (isAgain) {
        FileError error = transaction.Begin({path});
        const IniSnapshot now = error == FileError::None ? transaction.Read(path) : IniSnapshot();
        error = error == FileError::None ? now.error : error;
        if (error != FileError::None) {
            result.written = {error, IniEdit::Unchanged, transaction.AsideOf(path)};
            return result;
        }
        if (now.document->Bytes() != known->Bytes()) {
            transaction.Pause();
            if (!mayWrite()) {
                return {{}, true};
            }
            // The user's answer was about this state.
            known = now.document;
            continue;
        }
        const IniTransaction::Written written = transaction.Edit(
            path, [&](IniDocument& document) { return WriteEntries(store, document); });
        result.written = written.result;
        isAgain = written.isAgain;
    }
    if (result.written.Succeeded()) {
        known = transaction.Read(path).document;
        ForEachPending(store, [&](KeyNumber key) { store.SetDescriptionSaved(key); });
    }
    return result;
}

}  // namespace tamarind
