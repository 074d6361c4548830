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

// The kind of settings file that a data file describes. A data file is an INI file itself:
//
//   [TargetIniFile]
//   Wcx_ftp=0                            0: keys of Wincmd.ini, otherwise of Wcx_ftp.ini
//   [Layout]                             a category; a name that begins with "/" is a heading
//   CategoryTargetSection=Layout         the section of the settings that its keys are in
//   ButtonBar=1///Shows the button bar   key, default value, separator, description
enum class SettingsTarget { Wincmd, WcxFtp };

inline SettingsTarget OtherTarget(SettingsTarget target) {
    return target == SettingsTarget::Wincmd ? SettingsTarget::WcxFtp : SettingsTarget::Wincmd;
}

// The key of a category that names its section of the settings.
inline constexpr std::string_view kCategoryTarget = "CategoryTargetSection";

// Wincmd unless the file says otherwise.
SettingsTarget GetDataFileTarget(const IniDocument& dataFile);

// A node of the category tree below its root. The view belongs to the data file or, for a category
// of keys that it does not describe, to the store.
struct CategoryNode {
    std::uint32_t position = 0;  // among all sections of the file; its key is "Key_" and this
    std::string_view tag;        // the section's whole name
    std::string label = {};      // the text, if it is another one
    bool IsHeading() const { return tag.starts_with('/'); }
    std::string_view Text() const {
        return !label.empty() ? std::string_view(label) : IsHeading() ? tag.substr(1) : tag;
    }
};

// The categories in the order of the file, as far as a list buffer takes their names. The target
// section is not one of them.
std::vector<CategoryNode> ReadCategories(const IniDocument& dataFile);

// Fills the store with every key of the data file. `noDescription` stands where an entry has no
// description; `advance` is called before each key. Categories without a target section have no
// keys. Returns false if there are more keys than the store takes; it then has the first ones.
bool LoadDataFile(std::shared_ptr<const IniDocument> dataFile, std::string noDescription,
                  const std::function<void()>& advance, KeyStore& store);

// A stored description with its line breaks ("@") as CR LF, as an edit control shows them.
std::string DescriptionForDisplay(std::string_view stored);

}  // namespace tamarind
