#pragma once

#include <deque>
#include <functional>
#include <string>

#include "model/files/UndescribedKeys.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/Workplace.h"

namespace tamarind {

// The keys that the data file does not have. Further members of its families stand behind these.
// Sections that are like one of it have a category each, below a heading for screen resolutions,
// and sections with other keys one below a heading at the end of the tree. All of them can be
// hidden; their pending changes stay.
//
// The keys of a section are taken into the store when somebody asks for them: of histories there
// can be very many.
class UndescribedCategories final : private WorkplaceListener, private CategoryListener {
public:
    UndescribedCategories(Workplace& workplace, KeyStore& store, KeySelection& selection,
                          OpenDataFile& dataFile);
    ~UndescribedCategories() override;
    UndescribedCategories(const UndescribedCategories&) = delete;
    UndescribedCategories& operator=(const UndescribedCategories&) = delete;

    // Before other settings are read: forgets those of the former.
    void Clear();
    // After settings were read, be it again, and the states of all records from them. They must
    // live until the next call, or Clear.
    void Take(const SettingsFiles& settings);

    // Takes the keys of all sections into the store.
    void LoadAll();

    // Adds a key that the store does not have yet, and that is absent from the settings. Returns
    // its number.
    KeyNumber Add(const std::string& section, const std::string& name);

    void Show(bool areVisible);
    // Makes a key the current one. Where such keys are hidden and it is one, they are shown again.
    void GoTo(KeyNumber key);

private:
    struct Section {
        MoreKeys keys;
        std::string othersTag;  // of the category for keys that have no place elsewhere
        std::string likeTag;
        bool isLoaded = false;
    };

    void OnLanguageChanged() override { Fill(); }
    void OnCategorySelected() override;
    bool IsShownBy(const Section& section, NodeIndex node) const;
    Section& SectionOf(const std::string& name);  // made if it is new
    void LoadSections(const std::function<bool(const Section&)>& isAsked);
    void Fill();

    Workplace& m_workplace;
    KeyStore& m_store;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
    const SettingsFiles* m_settings = nullptr;
    std::deque<Section> m_sections;  // in the order of their categories
};

}  // namespace tamarind
