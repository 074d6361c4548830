#include "model/files/DataFile.h"

#include <algorithm>

#include "core/ini/cProfile.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kTargetSectionName = "TargetIniFile";

// Adds the keys of one category, whose target section is the value of `target`. False if the store
// is full.
bool LoadCategory(const IniDocument& dataFile, std::string_view category,
                  const IniDocument::PlacedKey& target, const std::function<void()>& advance,
                  KeyStore& store) {
    store.AddCategory(category, CutToBuffer(dataFile.Value(target.line)));
    const std::uint32_t targetHash = dataFile.NameHash(target.line);
    const bool allDiffer = dataFile.AllNamesDiffer(target.section);
    bool fits = true;
    ForEachKey(dataFile, target.section, [&](IniDocument::LineId line, std::string_view name) {
        if (!fits) {
            return;
        }
        advance();
        // Names with another hash need not be read, which would take longer than everything else
        // here.
        if (dataFile.NameHash(line) == targetHash && EqualsIgnoreCase(name, kCategoryTarget)) {
            return;
        }
        // A name that was cut by the buffer may be that of another key, or of none. Of a repeated
        // name the first line counts.
        const bool isPlain = name.size() == dataFile.KeyName(line).size() &&
                             (allDiffer || !dataFile.IsRepeated(target.section, line));
        fits = isPlain ? store.Add(line)
                       : store.AddNamed(name, dataFile.FindKey(target.section, name));
    });
    // Nearly nobody looks these keys up again, and fresh memory costs more than the look-ups.
    dataFile.ForgetKeys(target.section);
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

bool LoadDataFile(std::shared_ptr<const IniDocument> dataFile, std::string noDescription,
                  const std::function<void()>& advance, KeyStore& store) {
    const IniDocument& document = *dataFile;
    store.Reset(std::move(dataFile), std::move(noDescription));
    const std::vector<IniDocument::PlacedKey> targets = document.KeysNamed(kCategoryTarget);
    for (const std::string_view category : SectionNames(document)) {
        const auto section = document.FindSection(category);
        const auto target = section ? std::ranges::lower_bound(targets, *section, {},
                                                               &IniDocument::PlacedKey::section)
                                    : targets.end();
        const bool isCategory = target != targets.end() && target->section == section;
        if (isCategory && !LoadCategory(document, category, *target, advance, store)) {
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
