#include "model/files/DataFile.h"

#include "core/ini/cProfile.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kTargetSectionName = "TargetIniFile";

// Adds the keys of one category. False if the store is full.
bool LoadCategory(const IniDocument& dataFile, std::string_view category,
                  const std::function<void()>& advance, KeyStore& store) {
    const auto section = dataFile.FindSection(category);
    const auto target = section ? dataFile.FindKey(*section, kCategoryTarget) : std::nullopt;
    if (!target) {
        return true;
    }
    store.AddCategory(category, CutToBuffer(dataFile.Value(*target)));
    const std::uint32_t targetHash = dataFile.NameHash(*target);
    bool fits = true;
    ForEachKey(dataFile, *section, [&](IniDocument::LineId line, std::string_view name) {
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
        const bool isPlain =
            name.size() == dataFile.KeyName(line).size() && !dataFile.IsRepeated(*section, line);
        fits = isPlain ? store.Add(line) : store.AddNamed(name, dataFile.FindKey(*section, name));
    });
    // Nearly nobody looks these keys up again, and fresh memory costs more than the look-ups.
    dataFile.ForgetKeys(*section);
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
    for (const std::string_view category : SectionNames(document)) {
        if (!LoadCategory(document, category, advance, store)) {
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
