#pragma once

#include <functional>
#include <string>

#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/UndescribedCategories.h"

namespace tamarind {

// Descriptions that the user writes for keys that nothing describes. They become lines of the open
// data file when that is saved.
class KeyDescribing {
public:
    KeyDescribing(Workplace& workplace, KeyStore& store, KeySelection& selection,
                  OpenDataFile& dataFile, OpenSettings& settings,
                  UndescribedCategories& undescribed)
        : m_workplace(workplace),
          m_store(store),
          m_selection(selection),
          m_dataFile(dataFile),
          m_settings(settings),
          m_undescribed(undescribed) {}

    // Whether the current key is one of those.
    bool CanDescribe() const;
    // Before the text is asked for: of a data file that comes with the program, which updates
    // replace, a copy can be made and opened. False: the user has cancelled, or it failed, which a
    // message explains.
    bool Prepare();
    // The text above the box for it.
    std::string LabelFor(std::string_view name) const;
    // With any kind of line break. An empty text changes nothing.
    void Describe(std::string_view text);
    // Of such a text, in UTF-16 units.
    static std::size_t MaxUnits();

private:
    bool IsDataFileOfProgram() const;
    bool CopyDataFile();

    Workplace& m_workplace;
    KeyStore& m_store;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
    OpenSettings& m_settings;
    UndescribedCategories& m_undescribed;
};

}  // namespace tamarind
