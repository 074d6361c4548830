#pragma once

#include <string>
#include <vector>

#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/UndescribedCategories.h"

namespace tamarind {

// Keys that the user adds to the settings by name.
class KeyAdding {
public:
    KeyAdding(const Workplace& workplace, const KeyStore& store, KeySelection& selection,
              OpenDataFile& dataFile, const OpenSettings& settings,
              UndescribedCategories& undescribed)
        : m_workplace(workplace),
          m_store(store),
          m_selection(selection),
          m_dataFile(dataFile),
          m_settings(settings),
          m_undescribed(undescribed) {}

    // The section that is proposed: that of the current key, or of the category shown.
    std::string ProposedSection() const;
    // Those of the data file and of the settings.
    std::vector<std::string> Sections() const;
    // What names further keys of a section may have, with "#" for a number and "*" for a name.
    std::vector<std::string> FormsIn(const std::string& section) const;

    // Why there can be no such key; empty if there can.
    std::string FaultOf(const std::string& section, const std::string& name) const;
    // Shows the key, which is made if it is not there yet. It has no value until it gets one. There
    // must be no fault.
    void Add(const std::string& section, const std::string& name);

private:
    const Workplace& m_workplace;
    const KeyStore& m_store;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
    const OpenSettings& m_settings;
    UndescribedCategories& m_undescribed;
};

}  // namespace tamarind
