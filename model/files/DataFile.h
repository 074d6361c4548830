#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniDocument.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Which of Total Commander's settings files a data file describes.
enum class SettingsTarget { Wincmd, WcxFtp };

SettingsTarget GetDataFileTarget(const IniDocument& dataFile);

// A node of the category tree below its root.
struct CategoryNode {
    std::uint32_t position = 0;  // among all sections of the file; its key is "Key_" and this
    std::string_view tag;        // the section's whole name
    bool IsHeading() const { return tag.starts_with('/'); }
    std::string_view Text() const { return IsHeading() ? tag.substr(1) : tag; }
};

// The categories in the order of the file; the target section is none.
std::vector<CategoryNode> ReadCategories(const IniDocument& dataFile);

// Fills the store with every key of the data file; `noDescription` stands where an entry has no
// description. `advance` is called before each key. Returns false
// when there are more keys than the store takes; the first ones are in it then.
bool LoadDataFile(std::shared_ptr<const IniDocument> dataFile, std::string noDescription,
                  const std::function<void()>& advance, KeyStore& store);

// A stored description with its line breaks (CR LF) instead of "@".
std::string DescriptionForDisplay(std::string_view stored);

}  // namespace tamarind
