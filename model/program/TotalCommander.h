#pragma once

#include <string>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "model/program/OtherPrograms.h"

namespace tamarind {

// What closing and starting Total Commander came to.
struct RestartResult {
    bool hasClosed = false;   // it ran, was asked to close and did
    bool stillRuns = false;   // it ran, was asked to close and did not
    std::string refusedPath;  // not started, for the quotation mark in this path; else empty
};

// Closes Total Commander before a save and starts it again behind it: it keeps its settings in
// memory and would write them over ours when it closes.
class TotalCommander {
public:
    TotalCommander(OtherPrograms& programs, IniFiles& files, const Environment& environment)
        : m_programs(programs), m_files(files), m_environment(environment) {}

    bool IsRunning() const { return m_programs.IsTotalCommanderRunning(); }

    // Closes with `closeOnly`, else starts, with `switchText` (" /i=" or " /f=") and the quoted
    // `settingsPath` as its arguments if it is to have any. Does nothing where its folder is known
    // neither to the environment nor to the program's own settings file `ownSettings`.
    RestartResult RestartTotalCommander(bool closeOnly, bool withArguments,
                                        const std::string& switchText,
                                        const std::string& settingsPath,
                                        const std::string& ownSettings);

    // Asks a running one to close and waits until it has, for some seconds. What is started next is
    // the same program again, be it for 32-bit or 64-bit Windows.
    RestartResult Close(const std::string& ownSettings);

    // Brings one that still runs to the front, waits, and starts the program. `settingsPath` is
    // empty for none.
    RestartResult Start(const std::string& switchText, const std::string& settingsPath,
                        const std::string& ownSettings);

private:
    std::string InstallFolder(const std::string& ownSettings);
    std::string ProgramPath(const std::string& folder) const;

    OtherPrograms& m_programs;
    IniFiles& m_files;
    const Environment& m_environment;
    std::string m_closedPath;  // of the program that was closed; empty where it is not known
};

}  // namespace tamarind
