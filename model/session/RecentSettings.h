#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/program/cRecentFiles.h"
#include "model/session/Workplace.h"

namespace tamarind {

// The settings files that were opened last. Another copy of the program may change the list, so it
// is read again before each change.
class RecentSettings {
public:
    explicit RecentSettings(Workplace& workplace);

    // Reads the list, whose length the own settings say.
    void Read();
    const cRecentFiles& Files() const { return m_files; }

    // Makes a file the first of the list.
    void Add(const std::string& path);
    // Empties the list, after a question.
    void Clear();
    // The path of an entry. Nothing for an empty one, or, after a message, for a file that is gone,
    // which leaves the list.
    std::optional<std::string> PathOf(std::int16_t index);

private:
    void Save();
    void Remove(const std::string& path);

    Workplace& m_workplace;
    cRecentFiles m_files;
};

}  // namespace tamarind
