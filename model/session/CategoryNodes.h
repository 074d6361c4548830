#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/files/DataFile.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// A node of the category tree: the root, or a category by its place among the nodes.
using NodeIndex = std::int32_t;
inline constexpr NodeIndex kRootNode = -1;

// The categories of the tree, and which keys of the store are below them.
class CategoryNodes {
public:
    explicit CategoryNodes(const KeyStore& store) : m_store(store) {}

    const std::vector<CategoryNode>& All() const { return m_nodes; }
    bool Has(NodeIndex node) const { return static_cast<std::size_t>(node) + 1 <= m_nodes.size(); }
    bool IsHeading(NodeIndex node) const {
        return node != kRootNode && m_nodes[static_cast<std::size_t>(node)].IsHeading();
    }

    // The category of a key; nothing for one that the tree does not have.
    std::optional<NodeIndex> NodeOf(KeyNumber key) const;
    // Whether a category is a node, or below it if that is a heading.
    bool IsBelow(std::optional<NodeIndex> category, NodeIndex node) const;
    // How many of the keys are below each node: first the root, then the categories.
    std::vector<std::size_t> CountBelow(const std::vector<KeyNumber>& keys) const;

    // Those of the data file.
    void Set(std::vector<CategoryNode> nodes);
    // Puts others behind those, in the place of the former ones of that kind. Returns the first of
    // them, or nothing if they are the same as before.
    std::optional<NodeIndex> SetMore(std::vector<CategoryNode> nodes);
    // To be called when the store has other keys.
    void ForgetKeys() { m_nodesOfKeys.clear(); }

private:
    NodeIndex HeadingOf(NodeIndex node) const;

    const KeyStore& m_store;
    std::vector<CategoryNode> m_nodes;
    std::size_t m_describedCount = 0;              // those of the data file come first
    mutable std::vector<NodeIndex> m_nodesOfKeys;  // from the first question on
};

}  // namespace tamarind
