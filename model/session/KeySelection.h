#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/files/DataFile.h"
#include "model/keys/KeyList.h"
#include "model/keys/KeyStore.h"
#include "model/program/Favorites.h"
#include "model/session/CategoryNodes.h"
#include "model/session/KeyRows.h"
#include "model/session/Workplace.h"

namespace tamarind {

// Hears of the tree.
class CategoryListener {
public:
    virtual ~CategoryListener() = default;
    virtual void OnCategoriesChanged() {}        // the tree holds other nodes
    virtual void OnMoreCategories(NodeIndex) {}  // it does from this one on
    virtual void OnCategorySelected() {}         // another node is the selected one
    virtual void OnHitsChanged() {}  // the nodes have other numbers of hits, or none any more
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

// What of the open files is shown: the selected node of the tree, and which of its keys are the
// rows of the key list.
class KeySelection {
public:
    KeySelection(Workplace& workplace, const KeyStore& store)
        : m_workplace(workplace), m_tree(store), m_rows(workplace, store) {}

    Listeners<CategoryListener>& CategoryWatchers() { return m_categoryListeners; }

    const std::vector<CategoryNode>& Categories() const { return m_tree.All(); }
    NodeIndex SelectedNode() const { return m_selectedNode; }
    KeyRows& Rows() { return m_rows; }
    const KeyRows& Rows() const { return m_rows; }

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
    // The categories below the heading that is shown, with the number of their keys that are set.
    struct CategoryCount {
        NodeIndex node = kRootNode;
        std::string name;
        std::size_t setKeys = 0;
    };
    std::vector<CategoryCount> CategoriesOfHeading() const;

    // All keys of the selected node, whichever of them the filter shows.
    std::vector<KeyNumber> KeysOfNode() const;

    // The names of the rows as they are now, or would be without a ranking.
    ShownNames NamesInList() const;
    // Shows every key and makes one of them the current one.
    void GoToKey(KeyNumber key, const std::optional<DescriptionPart>& part = std::nullopt);

    // Whether the current key has a category of its own that is not the selected node; shows it
    // there.
    bool CanShowInCategory() const;
    void ShowInCategory();

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

private:
    void ShowCategory(NodeIndex node);
    void ShowKeyIn(NodeIndex node, KeyNumber key);
    void DropRanking();
    std::size_t Fill(KeyList& keys, NodeIndex node, KeyFilter filter) const;
    std::size_t FillRanked(KeyList& keys, NodeIndex node);

    Workplace& m_workplace;
    CategoryNodes m_tree;
    KeyRows m_rows;
    Listeners<CategoryListener> m_categoryListeners;
    NodeIndex m_selectedNode = kRootNode;
    std::optional<NodeIndex> m_shownNode;
    KeyFilter m_filter = KeyFilter::ShowAll;
    KeyRanking* m_ranking = nullptr;
    NodeIndex m_nodeBefore = kRootNode;  // the ranking; the root in another file
    std::vector<std::size_t> m_hits;     // of the root, then of the categories
    std::size_t m_hiddenHits = 0;
};

}  // namespace tamarind
