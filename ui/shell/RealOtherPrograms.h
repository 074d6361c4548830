#pragma once

#include "model/program/TotalCommander.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// Other programs on the desktop of this user, found by their windows.
class RealOtherPrograms final : public OtherPrograms {
public:
    bool IsTotalCommanderRunning() override;
    std::string TotalCommanderPath() override;
    void BringTotalCommanderToFront() override;
    void CloseTotalCommander() override;
    void WaitHalfSecond() override;
    bool WaitForTotalCommanderEnd(int milliseconds) override;
    void Start(const std::string& path, const std::string& arguments) override;
    void OpenDocument(const std::string& path) override;

private:
    // Handles window messages until the time is over or `process`, which may be null, has ended.
    static void Wait(int milliseconds, HANDLE process);

    UniqueObject m_closing;  // the process that was asked to close
};

}  // namespace tamarind
