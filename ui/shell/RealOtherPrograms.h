#pragma once

#include "model/TotalCommander.h"

namespace tamarind {

// Total Commander and other programs on this desktop.
class RealOtherPrograms final : public OtherPrograms {
public:
    bool IsTotalCommanderRunning() override;
    void BringTotalCommanderToFront() override;
    void CloseTotalCommander() override;
    void WaitHalfSecond() override;
    void Start(const std::string& commandLine) override;
    void OpenDocument(const std::string& path) override;
};

}  // namespace tamarind
