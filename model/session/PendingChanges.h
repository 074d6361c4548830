#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/files/SavePreview.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenSettings.h"
#include "model/session/Workplace.h"

namespace tamarind {

// A change that waits to be saved. The lines are as the key list shows them, ";" first if they are
// commented out; empty if there is none.
struct PendingChange {
    KeyNumber key = 0;
    std::string name;
    std::string section;
    std::string inFile;
    std::string written;
    bool isAsInFile = false;  // saving it leaves the file as it is
};

// The changes that wait to be saved, and what a save would make of the files.
class PendingChanges {
public:
    PendingChanges(const Workplace& workplace, const KeyStore& store, KeyEditor& editor,
                   KeySelection& selection, const OpenSettings& settings)
        : m_workplace(workplace),
          m_store(store),
          m_editor(editor),
          m_selection(selection),
          m_settings(settings) {}

    // The status bar's text, "5 changes"; empty if nothing is pending.
    std::string CountText() const;

    // In the order of the data file; of twins the first one.
    struct Review {
        std::vector<PendingChange> changes;
        std::vector<FilePreview> files;
    };
    Review Look() const;

    // Why the file cannot take the change of a key, and which one; empty if it can.
    std::string RefusalBy(const FilePreview& file) const;

    // Takes changes back, in one step that can be undone. Not while the program is busy.
    void Discard(const std::vector<KeyNumber>& keys);

private:
    const Workplace& m_workplace;
    const KeyStore& m_store;
    KeyEditor& m_editor;
    KeySelection& m_selection;
    const OpenSettings& m_settings;
};

}  // namespace tamarind
