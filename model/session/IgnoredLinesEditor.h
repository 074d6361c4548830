#pragma once

#include <string>
#include <vector>

#include "model/files/IgnoredLines.h"
#include "model/session/OpenSettings.h"
#include "model/session/UndescribedCategories.h"

namespace tamarind {

// The lines of the settings that Total Commander does not read, so that a damaged file can be
// mended. Unlike changes of keys, deleting one writes the file at once, with a backup.
class IgnoredLinesEditor {
public:
    IgnoredLinesEditor(const Workplace& workplace, const KeyStore& store, OpenSettings& settings,
                       UndescribedCategories& undescribed)
        : m_workplace(workplace),
          m_store(store),
          m_settings(settings),
          m_undescribed(undescribed) {}

    // As the files are now.
    std::vector<IgnoredLine> Look();
    // "ignored: Total Commander reads the first".
    std::string ReasonOf(const IgnoredLine& line) const;

    // Whether something is read in place of a line: a key of that section and name. Shows it.
    bool CanGoTo(const IgnoredLine& line);
    void GoTo(const IgnoredLine& line);

    // Removes a line, and nothing else. False, after a message: the file cannot be written.
    bool Delete(const IgnoredLine& line);
    // Takes the last deletion back, unless the file has changed since, which a message says.
    bool CanUndo() const { return !m_steps.empty(); }
    bool Undo();

private:
    struct Step {
        std::string path;
        std::string before;
        std::string after;
    };

    bool Write(const std::string& path, const std::function<IniEdit(IniDocument&)>& edit);

    const Workplace& m_workplace;
    const KeyStore& m_store;
    OpenSettings& m_settings;
    UndescribedCategories& m_undescribed;
    std::vector<Step> m_steps;
};

}  // namespace tamarind
