#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/system/cRegistry.h"
#include "core/text/TextEncoding.h"
#include "model/session/EditorSession.h"
#include "tests/core/fakes/FakeEnvironment.h"
#include "tests/core/fakes/MemoryFileSystem.h"
#include "tests/core/fakes/MemoryRegistry.h"
#include "tests/model/fakes/FakePrograms.h"
#include "tests/model/fakes/ScriptedPrompts.h"

namespace tamarind {

// The texts of the list's rows.
inline std::vector<std::string> RowsOf(const KeySelection& selection) {
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < selection.Rows().Keys().Size(); ++row) {
        rows.push_back(VisibleText(selection.Rows().Record(selection.Rows().Keys().KeyAt(row))));
    }
    return rows;
}

// Everything a session needs, in memory: the program in C:\Tamarind, Total Commander in C:\TC.
class SessionWorld {
public:
    static constexpr const char* kWincmd = "C:\\TC\\Wincmd.ini";
    static constexpr const char* kWcxFtp = "C:\\TC\\Wcx_ftp.ini";
    static constexpr const char* kWincmdData = "C:\\Tamarind\\Data Files\\tc all keys english.tmdf";
    static constexpr const char* kWcxFtpData =
        "C:\\Tamarind\\Data Files\\tc wcx_ftp keys english.tmdf";
    static constexpr const char* kWincmdTypes = "C:\\Tamarind\\Data Files\\Wincmd.types";
    static constexpr const char* kOwnSettings = "C:\\Tamarind\\tamarind editors.ini";

    MemoryFileSystem disk;
    IniFiles files{disk};
    MemoryRegistry registry;
    FakeEnvironment environment;
    ScriptedPrompts prompts;
    FakePrograms programs;
    std::unique_ptr<EditorSession> session;

    SessionWorld() {
        environment.variables = {{"windir", "C:\\Windows"}, {"Commander_Path", "C:\\TC"}};
    }

    // What a user has after installing both programs.
    void PutUsualFiles(const std::string& wincmd) {
        disk.Put(kWincmdData,
                 "[/Display]\r\n"
                 "[Panels]\r\nCategoryTargetSection=Configuration\r\n"
                 "PanelsVertical=0///Arrange panels.@0 = side by side\r\nShowHidden=1///\r\n"
                 "[Colors]\r\nCategoryTargetSection=Colors\r\nBackColor=-1\r\n"
                 "[Broken]\r\nLost=1///never shown\r\n");
        disk.Put(kWcxFtpData,
                 "[TargetIniFile]\r\nWcx_ftp=1\r\n"
                 "[General]\r\nCategoryTargetSection=General\r\nWaitDelay=5///Seconds.\r\n");
        disk.Put(kWincmd, wincmd);
        disk.Put(kWcxFtp, "[General]\r\nWaitDelay=9\r\n");
        SetRegistry("HKEY_CURRENT_USER", "IniFileName", ".\\Wincmd.ini");
        SetRegistry("HKEY_CURRENT_USER", "FtpIniName", kWcxFtp);
        disk.Wait(10);
    }

    void SetRegistry(const std::string& root, const std::string& name, const std::string& value) {
        cRegistry(registry).WriteValue(root + "\\Software\\Ghisler\\Total Commander", name, value,
                                       kRegistryString);
    }

    SessionServices Services() {
        return {files,    registry,         environment, prompts,
                programs, "C:\\Tamarind\\", "5.01",      {15360, 11520}};
    }
    bool Start(const std::string& commandLine = "") {
        session = std::make_unique<EditorSession>(Services());
        session->LoadSettings();
        session->Place().LoadLanguage();
        return session->Activate(commandLine);
    }

    std::vector<std::string> Rows() const { return RowsOf(session->Selection()); }

    std::string OwnSetting(const std::string& section, const std::string& key) {
        const IniSnapshot file = files.Read(kOwnSettings);
        const auto value = file.document->FindValue(section, key);
        return value ? std::string(*value) : "(none)";
    }
};

}  // namespace tamarind
