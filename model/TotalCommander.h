#pragma once

#include <string>

#include "core/Environment.h"
#include "core/IniFiles.h"

namespace tamarind {

// Other programs: what this one sees of them and does to them.
class OtherPrograms {
public:
    virtual ~OtherPrograms() = default;

    // Whether Total Commander's main window (class "TTOTAL_CMD") is there.
    virtual bool IsTotalCommanderRunning() = 0;
    virtual void BringTotalCommanderToFront() = 0;
    // Asks it to close, without waiting for an answer.
    virtual void CloseTotalCommander() = 0;
    // Handles the window's events for half a second.
    virtual void WaitHalfSecond() = 0;
    // Handles the window's events until the process that was asked to close has ended, for up to so
    // many milliseconds. False: it still runs.
    virtual bool WaitForTotalCommanderEnd(int milliseconds) = 0;
    // Starts a program with a normal window; a failure is not reported.
    virtual void Start(const std::string& commandLine) = 0;
    // Opens a file with the program that the user has for it; a failure is not reported.
    virtual void OpenDocument(const std::string& path) = 0;
};

// Closes Total Commander before a save and starts it again behind it: it keeps its settings in
// memory and would write them over ours when it closes.
class TotalCommander {
public:
    TotalCommander(OtherPrograms& programs, IniFiles& files, const Environment& environment)
        : m_programs(programs), m_files(files), m_environment(environment) {}

    bool IsRunning() const { return m_programs.IsTotalCommanderRunning(); }

    // With `closeOnly` asks a running one to close and waits; else brings one that still runs to
    // the front, waits, and starts the program with `switchText` (" /i=" or " /f=") and the quoted
    // `settingsPath`. Does nothing where its folder is known neither to the environment nor to
    // the program's own settings file `ownSettings`. Returns whether no Total Commander that was
    // asked to close still runs.
    bool RestartTotalCommander(bool closeOnly, bool withArguments, const std::string& switchText,
                               const std::string& settingsPath, const std::string& ownSettings);

private:
    std::string InstallFolder(const std::string& ownSettings);
    std::string ProgramPath(const std::string& folder) const;

    OtherPrograms& m_programs;
    IniFiles& m_files;
    const Environment& m_environment;
};

}  // namespace tamarind
