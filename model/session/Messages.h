#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "model/files/SettingsWriter.h"
#include "model/session/Workplace.h"

namespace tamarind {

// What the user is told when something fails: what could not be done, with which file, and why.
class Messages {
public:
    explicit Messages(const Workplace& workplace) : m_workplace(workplace) {}

    // A text of the table alone.
    void Show(MessageIcon icon, std::uint16_t text) const;

    void ReportUnreadable(const std::string& path, FileError error) const;
    // `message` says what failed, as kCannotSaveFile does.
    void ReportFailure(std::uint16_t message, const std::string& path,
                       const WriteResult& result) const;
    void ReportUnsaved(const SaveResult& result, const KeyStore& store) const;

    // Why something cannot be written.
    std::string Reason(const WriteResult& result) const;

    // Asks whether to save something and does it for "yes". False where the user cancels, or
    // `save` fails: what was about to happen must not.
    bool AskToSave(const std::string& question, const std::function<bool()>& save) const;

private:
    const Workplace& m_workplace;
};

}  // namespace tamarind
