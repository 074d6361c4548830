#pragma once

#include <memory>
#include <string>

#include "model/files/DataFile.h"
#include "model/files/SettingsFiles.h"

namespace tamarind::bench {

inline constexpr int kKeys = 32000;
inline constexpr int kKeysInCategory = 125;

// Half of the keys are in the settings.
struct OpenFiles {
    OpenFiles() {
        std::string text;
        for (int key = 0; key < kKeys; ++key) {
            const std::string name = "SomeSetting" + std::to_string(key);
            if (key % kKeysInCategory == 0) {
                const std::string section = "S" + std::to_string(key);
                dataFile += "[C" + section + "]\r\nCategoryTargetSection=" + section + "\r\n";
                text += "[" + section + "]\r\n";
            }
            dataFile += name + "=1///What this setting does.@0 = off@1 = on\r\n";
            text += key % 2 == 0 ? name + "=value of this setting\r\n" : "";
        }
        LoadDataFile(
            std::make_shared<const IniDocument>(IniDocument::Parse(dataFile, 1252)), "none", [] {},
            store);
        settings = SettingsFiles::Read(
            [&](const std::string&) {
                return IniSnapshot{
                    std::make_shared<const IniDocument>(IniDocument::Parse(text, 1252)),
                    FileError::None, true};
            },
            environment, "C:\\Wincmd.ini");
    }

    std::string dataFile;
    struct NoEnvironment final : Environment {
        std::string Variable(const std::string&) const override { return {}; }
        std::string FullPath(const std::string& path) const override { return path; }
    } environment;
    KeyStore store;
    SettingsFiles settings;
};

inline OpenFiles& Files() {
    static OpenFiles files;
    return files;
}

}  // namespace tamarind::bench
