#pragma once

#include <string>
#include <vector>

#include "model/files/ExchangeFile.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/Workplace.h"

namespace tamarind {

// Export and import: keys that are carried from one settings file to another in a file of the
// user's choice.
class KeyExchange {
public:
    KeyExchange(Workplace& workplace, KeyStore& store, KeyEditor& editor, KeySelection& selection,
                const OpenDataFile& dataFile, const OpenSettings& settings);

    // Writes the rows of the key list with their pending states.
    void Export() const { Write(m_selection.Rows().Keys().All()); }
    // The same for the selected rows, or those among them that differ from their default.
    void ExportSelected() const { Write(m_selection.Rows().SelectedKeys()); }
    void ExportSelectedDifferences() const;

    // Makes what the user chooses of what a file says of the rows of the key list pending, in one
    // step. A file that cannot be read changes nothing.
    void Import();

private:
    std::string AskFile(bool isExport) const;
    void Write(const std::vector<KeyNumber>& keys) const;
    bool Review(std::vector<KeyChange>& changes) const;
    ImportRow RowOf(const KeyChange& change) const;
    void ReportSkipped(const std::vector<KeyNumber>& skipped) const;

    Workplace& m_workplace;
    const KeyStore& m_store;
    KeyEditor& m_editor;
    KeySelection& m_selection;
    const OpenDataFile& m_dataFile;
    const OpenSettings& m_settings;
};

}  // namespace tamarind
