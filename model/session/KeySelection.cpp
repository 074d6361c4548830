#include "model/session/KeySelection.h"

#include <algorithm>
#include <utility>

#include "model/program/StringTable.h"

namespace tamarind {

void KeySelection::Clear() {
    m_tree.ForgetKeys();
    m_rows.Clear();
}

void KeySelection::SetCategories(std::vector<CategoryNode> categories) {
    m_tree.Set(std::move(categories));
    m_hits.clear();
    m_shownNode.reset();
    m_selectedNode = kRootNode;
    m_nodeBefore = kRootNode;
    m_rows.Watchers().Tell(&KeyListListener::OnKeyListChanged);
    m_categoryListeners.Tell(&CategoryListener::OnCategoriesChanged);
}

void KeySelection::SetMoreCategories(std::vector<CategoryNode> categories) {
    m_hits.clear();
    const auto first = m_tree.SetMore(std::move(categories));
    if (!first) {
        return;
    }
    m_categoryListeners.Tell(&CategoryListener::OnMoreCategories, *first);
    m_nodeBefore = m_tree.Has(m_nodeBefore) ? m_nodeBefore : kRootNode;
    if (!m_tree.Has(m_selectedNode)) {
        ShowRoot();
    }
}

void KeySelection::SelectCategory(NodeIndex node) {
    if (m_selectedNode != node) {
        m_selectedNode = node;
        m_categoryListeners.Tell(&CategoryListener::OnCategorySelected);
    }
    ShowCategory(node);
}

void KeySelection::ShowRoot() {
    m_shownNode.reset();
    SelectCategory(kRootNode);
}

void KeySelection::ShowAgain() {
    m_shownNode.reset();
    ShowCategory(m_selectedNode);
}

void KeySelection::ShowCategory(NodeIndex node) {
    if (m_shownNode == node) {
        return;
    }
    m_shownNode = node;
    KeyList keys;
    const std::size_t found =
        m_ranking != nullptr ? FillRanked(keys, node) : Fill(keys, node, m_filter);
    m_rows.Show(std::move(keys), !ShowsHeading());
    if (found == 0 && !ShowsHeading() && m_ranking == nullptr) {
        m_workplace.Prompts().ShowMessage(MessageIcon::Critical,
                                          m_workplace.Text(text::kCategoryWithoutKeys));
    }
}

// Returns how many keys the node has.
std::size_t KeySelection::Fill(KeyList& keys, NodeIndex node, KeyFilter filter) const {
    const bool isRoot = node == kRootNode;
    return keys.Fill(m_rows.Store(), isRoot,
                     isRoot ? std::string_view() : m_tree.All()[static_cast<std::size_t>(node)].tag,
                     m_workplace.IsVisible(WindowPart::UndescribedKeys), filter);
}

std::vector<KeyNumber> KeySelection::KeysOfNode() const {
    KeyList keys;
    Fill(keys, m_selectedNode, KeyFilter::ShowAll);
    return keys.All();
}

// The hits of a ranking and nothing else, in its order. Returns how many the node has.
std::size_t KeySelection::FillRanked(KeyList& keys, NodeIndex node) {
    std::vector<KeyNumber> hits = m_ranking->RankedKeys();
    m_hits = m_tree.CountBelow(hits);
    if (node != kRootNode) {
        std::erase_if(hits,
                      [&](KeyNumber key) { return !m_tree.IsBelow(m_tree.NodeOf(key), node); });
    }
    const std::size_t found = hits.size();
    keys.FillRanked(m_rows.Store(), std::move(hits), m_filter);
    m_hiddenHits = found - keys.Size();
    m_categoryListeners.Tell(&CategoryListener::OnHitsChanged);
    return found;
}

std::optional<std::size_t> KeySelection::HitsOf(NodeIndex node) const {
    const std::size_t at = static_cast<std::size_t>(node) + 1;  // 0 for the root
    return m_ranking != nullptr && at < m_hits.size() ? std::optional(m_hits[at]) : std::nullopt;
}

void KeySelection::SetRanking(KeyRanking& ranking) {
    if (m_ranking == nullptr) {
        m_nodeBefore = m_selectedNode;
    }
    m_ranking = &ranking;
    ShowRoot();
}

void KeySelection::EndRanking() {
    const NodeIndex node = m_nodeBefore;
    const auto key = m_rows.CurrentKey();
    DropRanking();
    const auto own = key ? m_tree.NodeOf(*key) : std::nullopt;
    const bool isThere = !own || node == kRootNode || *own == node;
    const NodeIndex target = isThere ? node : *own;
    if (key) {
        ShowKeyIn(target, *key);
    } else {
        SelectCategory(target);
    }
}

void KeySelection::DropRanking() {
    if (KeyRanking* const former = std::exchange(m_ranking, nullptr)) {
        m_shownNode.reset();
        m_hiddenHits = 0;
        former->OnRankingDropped();
        m_categoryListeners.Tell(&CategoryListener::OnHitsChanged);
    }
}

ShownNames KeySelection::NamesInList() const {
    if (m_ranking == nullptr) {
        return {m_rows.Keys(), m_rows.Store()};
    }
    KeyList keys;
    Fill(keys, m_selectedNode, m_filter);
    return {keys, m_rows.Store()};
}

bool KeySelection::ShowsHeading() const {
    return m_ranking == nullptr && m_shownNode && m_tree.IsHeading(*m_shownNode);
}

void KeySelection::SetKeyFilter(KeyFilter filter) {
    if (ShowsHeading()) {
        m_workplace.Prompts().Beep();
        m_workplace.TellCommandsChanged();
        return;
    }
    m_filter = filter;
    ShowAgain();
}

void KeySelection::GoToKey(KeyNumber key, const std::optional<DescriptionPart>& part) {
    DropRanking();
    if (!m_rows.Store().IsDescribed(key)) {
        ShowKeyIn(m_tree.NodeOf(key).value_or(kRootNode), key);
        return;
    }
    SelectCategory(kRootNode);
    if (m_filter != KeyFilter::ShowAll) {
        SetKeyFilter(KeyFilter::ShowAll);
    }
    m_rows.GoTo(key, part);
}

bool KeySelection::CanShowInCategory() const {
    const auto key = m_rows.EditableKey();
    const auto node = key ? m_tree.NodeOf(*key) : std::nullopt;
    return node && (m_ranking != nullptr || *node != m_selectedNode);
}

void KeySelection::ShowInCategory() {
    if (!CanShowInCategory()) {
        return;
    }
    const KeyNumber key = *m_rows.CurrentKey();
    DropRanking();
    ShowKeyIn(*m_tree.NodeOf(key), key);
}

void KeySelection::ShowKeyIn(NodeIndex node, KeyNumber key) {
    SelectCategory(node);
    if (!m_rows.GoTo(key)) {
        SetKeyFilter(KeyFilter::ShowAll);
        m_rows.GoTo(key);
    }
}

std::vector<KeySelection::CategoryCount> KeySelection::CategoriesOfHeading() const {
    std::vector<CategoryCount> counts;
    if (!ShowsHeading()) {
        return counts;
    }
    for (auto at = static_cast<std::size_t>(m_selectedNode) + 1;
         at < m_tree.All().size() && !m_tree.All()[at].IsHeading(); ++at) {
        counts.push_back({static_cast<NodeIndex>(at), std::string(m_tree.All()[at].Text()), 0});
    }
    // The keys of a category follow one another.
    const KeyStore& store = m_rows.Store();
    std::string_view category;
    auto count = counts.end();
    for (KeyNumber key = 1; key <= store.Size(); ++key) {
        if (const std::string_view own = store.Category(key); own != category || key == 1) {
            category = own;
            count = std::ranges::find(counts, m_tree.NodeOf(key), &CategoryCount::node);
        }
        if (count != counts.end() && store.IsChecked(key)) {
            ++count->setKeys;
        }
    }
    return counts;
}

}  // namespace tamarind
