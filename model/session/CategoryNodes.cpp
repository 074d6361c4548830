#include "model/session/CategoryNodes.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace tamarind {

std::optional<NodeIndex> CategoryNodes::NodeOf(KeyNumber key) const {
    if (m_nodesOfKeys.size() != m_store.Size()) {
        m_nodesOfKeys.clear();
        m_nodesOfKeys.reserve(m_store.Size());
        for (KeyNumber each = 1; each <= m_store.Size(); ++each) {
            const std::string_view tag = m_store.Category(each);
            const bool isAsBefore = each > 1 && tag.data() == m_store.Category(each - 1).data();
            const auto node =
                isAsBefore ? m_nodes.end() : std::ranges::find(m_nodes, tag, &CategoryNode::tag);
            m_nodesOfKeys.push_back(isAsBefore ? m_nodesOfKeys.back()
                                    : node == m_nodes.end()
                                        ? kRootNode
                                        : static_cast<NodeIndex>(node - m_nodes.begin()));
        }
    }
    const NodeIndex node = m_nodesOfKeys[key - 1];
    return node == kRootNode ? std::nullopt : std::optional(node);
}

// The heading above a category; the root if there is none.
NodeIndex CategoryNodes::HeadingOf(NodeIndex node) const {
    while (node != kRootNode && !IsHeading(node)) {
        --node;
    }
    return node;
}

bool CategoryNodes::IsBelow(std::optional<NodeIndex> category, NodeIndex node) const {
    return category && (*category == node || HeadingOf(*category) == node);
}

std::vector<std::size_t> CategoryNodes::CountBelow(const std::vector<KeyNumber>& keys) const {
    std::vector<std::size_t> counts(m_nodes.size() + 1, 0);
    counts.front() = keys.size();
    for (const KeyNumber key : keys) {
        if (const auto node = NodeOf(key)) {
            ++counts[static_cast<std::size_t>(*node) + 1];
        }
    }
    std::size_t* ofHeading = nullptr;
    for (std::size_t node = 0; node < m_nodes.size(); ++node) {
        if (m_nodes[node].IsHeading()) {
            ofHeading = &counts[node + 1];
        } else if (ofHeading != nullptr) {
            *ofHeading += counts[node + 1];
        }
    }
    return counts;
}

void CategoryNodes::Set(std::vector<CategoryNode> nodes) {
    m_nodes = std::move(nodes);
    m_describedCount = m_nodes.size();
    m_nodesOfKeys.clear();
}

std::optional<NodeIndex> CategoryNodes::SetMore(std::vector<CategoryNode> nodes) {
    m_nodesOfKeys.clear();
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(m_describedCount);
    if (std::ranges::equal(std::span(first, m_nodes.end()), nodes, {}, &CategoryNode::Text,
                           &CategoryNode::Text)) {
        return std::nullopt;
    }
    m_nodes.erase(first, m_nodes.end());
    std::ranges::move(nodes, std::back_inserter(m_nodes));
    return static_cast<NodeIndex>(m_describedCount);
}

}  // namespace tamarind
