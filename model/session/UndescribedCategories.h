#pragma once

#include <deque>
#include <string>

#include "model/files/SettingsFiles.h"
#include "model/session/KeySelection.h"
#include "model/session/Workplace.h"

namespace tamarind {

// The keys that only the settings have: a heading at the end of the tree, and below it a category
// for each section that has such keys. They can be hidden; their pending changes stay. The keys of
// a section are taken into the store when somebody asks for them: of histories there can be very
// many.
class UndescribedCategories final : private WorkplaceListener, private CategoryListener {
public:
    UndescribedCategories(Workplace& workplace, KeyStore& store, KeySelection& selection);
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

    void Show(bool areVisible);

private:
    struct Section {
        std::string name;
        std::string tag;
        bool isLoaded = false;
    };

    void OnLanguageChanged() override { Fill(); }
    void OnCategorySelected() override;
    void Fill();

    Workplace& m_workplace;
    KeyStore& m_store;
    KeySelection& m_selection;
    const SettingsFiles* m_settings = nullptr;
    std::deque<Section> m_sections;  // in the order of their categories
};

}  // namespace tamarind
