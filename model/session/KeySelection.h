#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/files/DataFile.h"
#include "model/keys/KeyList.h"
#include "model/keys/KeySearch.h"
#include "model/keys/KeyStore.h"
#include "model/program/Favorites.h"
#include "model/session/Workplace.h"

namespace tamarind {

// A node of the category tree: the root, or a category by its place in Categories().
using NodeIndex = std::int32_t;
inline constexpr NodeIndex kRootNode = -1;

// Hears of the tree.
class CategoryListener {
public:
    virtual ~CategoryListener() = default;
    virtual void OnCategoriesChanged() {}        // the tree holds other nodes
    virtual void OnMoreCategories(NodeIndex) {}  // it does from this one on
    virtual void OnCategorySelected() {}         // another node is the selected one
    virtual void OnHitsChanged() {}  // the nodes have other numbers of hits, or none any more
};

// A part of the current key's description, in UTF-16 units.
struct DescriptionPart {
    std::size_t start = 0;
    std::size_t length = 0;
};

// Hears of the key list.
class KeyListListener {
public:
    virtual ~KeyListListener() = default;
    virtual void OnKeyListChanged() {}       // the list holds other rows
    virtual void OnKeyShown() {}             // another row is current, or none
    virtual void OnKeyChanged(KeyNumber) {}  // its row, if shown, looks different now
    virtual void OnManyKeysChanged() {}      // any row may look different now
    // A search or a favorite led to the current row, maybe to a part of its description.
    virtual void OnWentToKey(const std::optional<DescriptionPart>&) {}
};

// Chooses keys from those of all categories and brings them into an order of its own.
class KeyRanking {
public:
    virtual ~KeyRanking() = default;
    // Asked whenever the list takes its rows: when it is set, at another node and another filter.
    virtual std::vector<KeyNumber> RankedKeys() = 0;
    // The selection went on to a key without it.
    virtual void OnRankingDropped() = 0;
};

// What of the open files is shown: the selected node of the tree, the rows of the key list and the
// current one among them. The search moves it.
class KeySelection {
public:
    KeySelection(Workplace& workplace, const KeyStore& store)
        : m_workplace(workplace), m_store(store) {}

    Listeners<CategoryListener>& CategoryWatchers() { return m_categoryListeners; }
    Listeners<KeyListListener>& KeyWatchers() { return m_keyListeners; }

    std::string RootText() const;
    const std::vector<CategoryNode>& Categories() const { return m_categories; }
    NodeIndex SelectedNode() const { return m_selectedNode; }

    // The tree's selection moved to a node: fills the key list with its keys, unless it shows them.
    void SelectCategory(NodeIndex node);
    // Whether the category shown is a heading, for which the commands on keys are off.
    bool ShowsHeading() const;

    KeyFilter Filter() const { return m_filter; }
    void SetKeyFilter(KeyFilter filter);

    // Shows the hits of a ranking, which must live until another one takes its place: those of all
    // categories at first, of one of them, or of all below a heading, when its node is selected.
    void SetRanking(KeyRanking& ranking);
    // Ends it at the node that was selected before. The current key stays the current one: there,
    // or else in its own category.
    void EndRanking();
    bool HasRanking() const { return m_ranking != nullptr; }
    // How many hits a node has; nothing without a ranking.
    std::optional<std::size_t> HitsOf(NodeIndex node) const;
    // How many hits of the selected node the filter hides.
    std::size_t HiddenHits() const { return m_hiddenHits; }
    // The filter as the menu has it; empty for all keys.
    std::string FilterName() const;
    // "12 hidden by View > Active Keys"; empty if no hits are.
    std::string HiddenText() const;

    // The categories below the heading that is shown, with the number of their keys that are set.
    struct CategoryCount {
        NodeIndex node = kRootNode;
        std::string name;
        std::size_t setKeys = 0;
    };
    std::vector<CategoryCount> CategoriesOfHeading() const;

    // All keys of the selected node, whichever of them the filter shows.
    std::vector<KeyNumber> KeysOfNode() const;

    const KeyStore& Store() const { return m_store; }
    const KeyList& Keys() const { return m_keys; }
    KeyRecord Record(KeyNumber key) const { return m_store.Record(key); }
    // The names of the rows as they are now, or would be without a ranking.
    ShownNames NamesInList() const;
    // The status bar's text of how many rows there are.
    std::string CounterPanel() const;

    // Makes a row of the list the current one, and the only one that is selected.
    void ShowKeyDetails(std::size_t row) { SelectRows({row}, row); }
    // The same, but these rows are selected, ascending; the current one may be none of them.
    void SelectRows(const std::vector<std::size_t>& rows, std::size_t current);
    // None while the list is empty.
    std::optional<KeyNumber> CurrentKey() const { return m_currentKey; }
    std::optional<std::size_t> CurrentRow() const;
    // The current key, unless a heading is shown.
    std::optional<KeyNumber> EditableKey() const;
    // The keys that commands on several keys act on, in the order of the list; none while a heading
    // is shown.
    std::vector<KeyNumber> SelectedKeys() const;
    // Makes the row after the current one the current one. False on the last row.
    bool SelectNextKey();
    // The current key's, with line breaks (CR LF); empty without a current row.
    std::string Description() const;

    // Shows every key and makes one of them the current one.
    void GoToKey(KeyNumber key, const std::optional<DescriptionPart>& part = std::nullopt);

    // Whether the current key has a category of its own that is not the selected node; shows it
    // there.
    bool CanShowInCategory() const;
    void ShowInCategory();

    // The search. Steps show what they find; without a hit, or after the last one, a message says
    // so.
    KeySearch& Search() { return m_search; }
    const KeySearch& Search() const { return m_search; }
    void SetSearchText(const std::string& text);
    bool FindNextString();  // whether there was a hit

    // For the parts that change the records. Clear: the store is about to be filled, and has no row
    // until then. SetCategories: none of their keys is shown yet. ShowAgain: which keys pass the
    // filter may have changed.
    void Clear();
    void SetCategories(std::vector<CategoryNode> categories);
    // Puts other categories behind those, in the place of the former ones of that kind, for keys
    // that the data file does not describe. A selected one that is gone gives way to the root.
    void SetMoreCategories(std::vector<CategoryNode> categories);
    void ShowRoot();
    void ShowAgain();
    void TellChanged(KeyNumber key) const {
        m_keyListeners.Tell(&KeyListListener::OnKeyChanged, key);
    }
    // The same for these keys and their twins, and for the commands.
    void TellChanges(const std::vector<KeyNumber>& keys) const;
    // A replayed step: the first of its keys that is in the list becomes the current one.
    void ShowReplayed(const std::vector<KeyNumber>& keys);

private:
    void ShowCategory(NodeIndex node);
    void ShowKeyIn(NodeIndex node, KeyNumber key);
    void DropRanking();
    // The category of a key; nothing for one that the tree does not have.
    std::optional<NodeIndex> NodeOf(KeyNumber key) const;
    NodeIndex HeadingOf(NodeIndex node) const;
    bool IsBelow(std::optional<NodeIndex> category, NodeIndex node) const;
    std::size_t Fill(KeyList& keys, NodeIndex node, KeyFilter filter) const;
    std::size_t FillRanked(NodeIndex node);
    std::size_t VisibleCount() const;
    void CountHits(const std::vector<KeyNumber>& ranked);

    Workplace& m_workplace;
    const KeyStore& m_store;
    Listeners<CategoryListener> m_categoryListeners;
    Listeners<KeyListListener> m_keyListeners;
    std::vector<CategoryNode> m_categories;
    std::size_t m_describedCategories = 0;  // those of the data file come first
    NodeIndex m_selectedNode = kRootNode;
    std::optional<NodeIndex> m_shownNode;
    KeyFilter m_filter = KeyFilter::ShowAll;
    mutable std::vector<NodeIndex> m_nodes;  // of all keys, from the first question on
    KeyRanking* m_ranking = nullptr;
    NodeIndex m_nodeBefore = kRootNode;  // the ranking; the root in another file
    std::vector<std::size_t> m_hits;     // of the root, then of the categories
    std::size_t m_hiddenHits = 0;
    KeyList m_keys;
    std::optional<KeyNumber> m_currentKey;
    std::vector<KeyNumber> m_selectedKeys;
    KeySearch m_search;
};

}  // namespace tamarind
