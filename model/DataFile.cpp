#include "model/DataFile.h"

#include "core/Unicode.h"
#include "core/cProfile.h"

namespace tamarind {
namespace {

constexpr std::string_view kTargetSectionName = "TargetIniFile";
constexpr std::string_view kCategoryTarget = "CategoryTargetSection";
constexpr std::string_view kEntrySeparator = "///";

// Adds the keys of one category; false when the store is full.
bool LoadCategory(const IniDocument& dataFile, std::string_view category,
                  std::string_view noDescription, const std::function<void()>& advance,
                  KeyStore& store) {
    const auto section = dataFile.FindSection(category);
    const auto target = section ? dataFile.FindKey(*section, kCategoryTarget) : std::nullopt;
    if (!target) {
        return true;
    }
    KeyRecord record;
    record.category = category;
    record.targetSection = CutToBuffer(dataFile.Value(*target));
    bool fits = true;
    ForEachKey(dataFile, *section, [&](IniDocument::LineId line, std::string_view name) {
        if (!fits) {
            return;
        }
        advance();
        if (EqualsIgnoreCase(name, kCategoryTarget)) {
            return;
        }
        // A name that the list buffer cut may be no key at all, or another one.
        const bool isPlain =
            name.size() == dataFile.KeyName(line).size() && !dataFile.IsRepeated(line);
        const auto valueLine = isPlain ? std::optional(line) : dataFile.FindKey(*section, name);
        const KeyEntry entry =
            valueLine ? SplitEntry(CutToBuffer(dataFile.Value(*valueLine))) : KeyEntry();
        record.keyName = name;
        record.defaultValue = entry.defaultValue;
        record.description = entry.description.empty() ? noDescription : entry.description;
        fits = store.Add(record);
    });
    return fits;
}

}  // namespace

SettingsTarget GetDataFileTarget(const IniDocument& dataFile) {
    const auto value = dataFile.FindValue(kTargetSectionName, "Wcx_ftp");
    return !value || *value == "0" ? SettingsTarget::Wincmd : SettingsTarget::WcxFtp;
}

std::vector<CategoryNode> ReadCategories(const IniDocument& dataFile) {
    std::vector<CategoryNode> categories;
    std::uint32_t position = 0;
    for (const std::string_view name : SectionNames(dataFile)) {
        if (!EqualsIgnoreCase(name, kTargetSectionName)) {
            categories.push_back({position, name});
        }
        ++position;
    }
    return categories;
}

KeyEntry SplitEntry(std::string_view value) {
    const std::size_t separator = value.find(kEntrySeparator);
    if (separator == std::string_view::npos) {
        return {value, {}};
    }
    return {value.substr(0, separator), value.substr(separator + kEntrySeparator.size())};
}

bool LoadDataFile(std::shared_ptr<const IniDocument> dataFile, std::string_view noDescription,
                  const std::function<void()>& advance, KeyStore& store) {
    store.SetSource(dataFile);
    const std::string_view kept = store.Keep(noDescription);
    for (const std::string_view category : SectionNames(*dataFile)) {
        if (!LoadCategory(*dataFile, category, kept, advance, store)) {
            return false;
        }
    }
    return true;
}

std::string DescriptionForDisplay(std::string_view stored) {
    std::string text;
    text.reserve(stored.size() + 16);
    for (const char c : stored) {
        if (c == '@') {
            text += "\r\n";
        } else {
            text += c;
        }
    }
    return text;
}

}  // namespace tamarind
