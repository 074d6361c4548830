#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/files/Keywords.h"
#include "model/keys/FilterIndex.h"
#include "model/keys/FilterQuery.h"
#include "model/session/KeySelection.h"
#include "model/session/KeyValues.h"
#include "model/session/OpenDataFile.h"
#include "model/session/SelectionTexts.h"
#include "model/session/UndescribedCategories.h"
#include "model/session/Workplace.h"

namespace tamarind {

class TextFilterListener {
public:
    virtual ~TextFilterListener() = default;
    virtual void OnFilterChanged() {}  // another text, or none
};

// The filter that the user types: it shows the keys of all categories in which every word occurs,
// the best ones first. KeySelection has the rows; an edit of a key never changes which there are.
class TextFilter final : private KeyRanking {
public:
    TextFilter(Workplace& workplace, const KeyStore& store, KeySelection& selection,
               OpenDataFile& dataFile, const KeyValues& values, UndescribedCategories& undescribed);

    Listeners<TextFilterListener>& Watchers() { return m_listeners; }

    // As it was typed.
    const std::string& Text() const { return m_text; }
    // Whether it narrows the list. Blanks do not.
    bool IsOn() const { return m_selection.HasRanking(); }

    // The user has typed another text: shows its hits in all categories. Without words the list is
    // as Clear leaves it.
    void SetText(const std::string& text);
    // Ends the filter: the category that was shown before comes back, or that of the current key if
    // the key is not in it.
    void Clear();
    // Shows what the filter finds now, in the same category.
    void ApplyAgain();

    // What to mark in a text that is shown of a key: Name, Value or, for its description, Any.
    std::vector<TextPart> MarksIn(std::string_view text, FilterField field) const;

    // What the list says instead of rows: that there is no hit, that the menu View hides some, or
    // how many other categories have. Empty if it has rows, or the filter is off.
    std::string EmptyText() const;
    // "12 in Wcx_ftp": what an empty list offers, the hits among the keys of the other data file;
    // empty if there are none.
    std::string OtherHits();

    // The last texts, the latest one first, and that the present one is to be among them.
    std::vector<std::string> RecentTexts() const;
    void RememberText();

    // Words that narrow a filter, with what they do. One that ends with a colon is to be completed.
    struct Word {
        std::string word;
        std::string meaning;
    };
    std::vector<Word> Words() const;

private:
    // The keys of the other data file, in no settings.
    struct OtherKeys {
        std::string path;
        KeyStore store;
        ValueTypes types;
        std::optional<FilterIndex> index;
    };

    std::vector<KeyNumber> RankedKeys() override;
    void OnRankingDropped() override;
    FilterIndex MakeIndex(const KeyStore& store, const std::vector<CategoryNode>& categories,
                          SettingsTarget target, std::function<ValueKind(KeyNumber)> typeOf) const;
    void ReadOtherKeys();

    Workplace& m_workplace;
    const KeyStore& m_store;
    KeySelection& m_selection;
    const SelectionTexts m_texts{m_workplace, m_selection};
    OpenDataFile& m_dataFile;
    const KeyValues& m_values;
    UndescribedCategories& m_undescribed;
    Listeners<TextFilterListener> m_listeners;
    std::string m_text;
    FilterQuery m_query;

    std::optional<FilterIndex> m_index;  // from the first word on
    std::uint32_t m_indexedTexts = 0;    // which of the store's texts it has
    std::unique_ptr<OtherKeys> m_other;  // from the first filter without a hit on
};

}  // namespace tamarind
