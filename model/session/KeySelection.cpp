#include "model/session/KeySelection.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "model/program/StringTable.h"

namespace tamarind {

std::string KeySelection::RootText() const {
    return m_workplace.Text(text::kRootCategory);
}

void KeySelection::Clear() {
    m_nodes.clear();
    m_keys.Clear();
    m_currentKey.reset();
    m_selectedKeys.clear();
}

void KeySelection::SetCategories(std::vector<CategoryNode> categories) {
    m_categories = std::move(categories);
    m_describedCategories = m_categories.size();
    m_nodes.clear();
    m_hits.clear();
    m_shownNode.reset();
    m_selectedNode = kRootNode;
    m_nodeBefore = kRootNode;
    m_keyListeners.Tell(&KeyListListener::OnKeyListChanged);
    m_categoryListeners.Tell(&CategoryListener::OnCategoriesChanged);
}

void KeySelection::SetMoreCategories(std::vector<CategoryNode> categories) {
    const auto first = m_categories.begin() + static_cast<std::ptrdiff_t>(m_describedCategories);
    m_nodes.clear();
    m_hits.clear();
    if (std::ranges::equal(std::span(first, m_categories.end()), categories, {},
                           &CategoryNode::Text, &CategoryNode::Text)) {
        return;
    }
    m_categories.erase(first, m_categories.end());
    std::ranges::move(categories, std::back_inserter(m_categories));
    m_categoryListeners.Tell(&CategoryListener::OnMoreCategories,
                             static_cast<NodeIndex>(m_describedCategories));
    const auto isGone = [this](NodeIndex node) {
        return static_cast<std::size_t>(node) + 1 > m_categories.size();  // 0 for the root
    };
    m_nodeBefore = isGone(m_nodeBefore) ? kRootNode : m_nodeBefore;
    if (isGone(m_selectedNode)) {
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
    const std::size_t found =
        m_ranking != nullptr ? FillRanked(node) : Fill(m_keys, node, m_filter);
    m_currentKey.reset();
    m_selectedKeys.clear();
    if (m_keys.Size() > 0) {
        m_currentKey = m_keys.KeyAt(0);
        m_selectedKeys = {*m_currentKey};
    }
    m_keyListeners.Tell(&KeyListListener::OnKeyListChanged);
    m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    m_workplace.TellCommandsChanged();
    if (found == 0 && !ShowsHeading() && m_ranking == nullptr) {
        m_workplace.Prompts().ShowMessage(MessageIcon::Critical,
                                          m_workplace.Text(text::kCategoryWithoutKeys));
    }
}

// Returns how many keys the node has.
std::size_t KeySelection::Fill(KeyList& keys, NodeIndex node, KeyFilter filter) const {
    const bool isRoot = node == kRootNode;
    return keys.Fill(m_store, isRoot,
                     isRoot ? std::string_view() : m_categories[static_cast<std::size_t>(node)].tag,
                     m_workplace.AreUndescribedVisible(), filter);
}

std::vector<KeyNumber> KeySelection::KeysOfNode() const {
    KeyList keys;
    Fill(keys, m_selectedNode, KeyFilter::ShowAll);
    return keys.All();
}

// The hits of a ranking and nothing else, in its order. Returns how many the node has.
std::size_t KeySelection::FillRanked(NodeIndex node) {
    std::vector<KeyNumber> keys = m_ranking->RankedKeys();
    CountHits(keys);
    if (node != kRootNode) {
        std::erase_if(keys, [&](KeyNumber key) { return !IsBelow(NodeOf(key), node); });
    }
    const std::size_t found = keys.size();
    m_keys.FillRanked(m_store, std::move(keys), m_filter);
    m_hiddenHits = found - m_keys.Size();
    m_categoryListeners.Tell(&CategoryListener::OnHitsChanged);
    return found;
}

void KeySelection::CountHits(const std::vector<KeyNumber>& ranked) {
    m_hits.assign(m_categories.size() + 1, 0);
    m_hits.front() = ranked.size();
    for (const KeyNumber key : ranked) {
        if (const auto node = NodeOf(key)) {
            ++m_hits[static_cast<std::size_t>(*node) + 1];
        }
    }
    std::size_t* ofHeading = nullptr;
    for (std::size_t node = 0; node < m_categories.size(); ++node) {
        if (m_categories[node].IsHeading()) {
            ofHeading = &m_hits[node + 1];
        } else if (ofHeading != nullptr) {
            *ofHeading += m_hits[node + 1];
        }
    }
}

std::optional<std::size_t> KeySelection::HitsOf(NodeIndex node) const {
    const std::size_t at = static_cast<std::size_t>(node) + 1;  // 0 for the root
    return m_ranking != nullptr && at < m_hits.size() ? std::optional(m_hits[at]) : std::nullopt;
}

// The heading above a category; the root if there is none.
NodeIndex KeySelection::HeadingOf(NodeIndex node) const {
    while (node != kRootNode && !m_categories[static_cast<std::size_t>(node)].IsHeading()) {
        --node;
    }
    return node;
}

bool KeySelection::IsBelow(std::optional<NodeIndex> category, NodeIndex node) const {
    return category && (*category == node || HeadingOf(*category) == node);
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
    const auto key = m_currentKey;
    DropRanking();
    const auto own = key ? NodeOf(*key) : std::nullopt;
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

std::string KeySelection::HiddenText() const {
    if (m_hiddenHits == 0) {
        return {};
    }
    return m_workplace.Text(
        text::kHiddenBy,
        {std::to_string(m_hiddenHits), m_workplace.Label(text::kViewMenu) + " > " + FilterName()});
}

std::string KeySelection::FilterName() const {
    const std::pair<KeyFilter, std::uint16_t> names[] = {
        {KeyFilter::ShowActive, text::kActiveKeys},
        {KeyFilter::ShowInactive, text::kInactiveKeys},
        {KeyFilter::ShowChanged, text::kChangedKeys},
        {KeyFilter::ShowDifferent, text::kDifferentKeys},
    };
    const auto* const name =
        std::ranges::find(names, m_filter, &std::pair<KeyFilter, std::uint16_t>::first);
    return name == std::end(names) ? std::string() : m_workplace.Label(name->second);
}

ShownNames KeySelection::NamesInList() const {
    if (m_ranking == nullptr) {
        return {m_keys, m_store};
    }
    KeyList keys;
    Fill(keys, m_selectedNode, m_filter);
    return {keys, m_store};
}

bool KeySelection::ShowsHeading() const {
    return m_ranking == nullptr && m_shownNode && *m_shownNode != kRootNode &&
           m_categories[static_cast<std::size_t>(*m_shownNode)].IsHeading();
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

// How many keys of the store can be seen at all.
std::size_t KeySelection::VisibleCount() const {
    return m_workplace.AreUndescribedVisible() ? m_store.Size() : m_store.DescribedCount();
}

std::string KeySelection::CounterPanel() const {
    if (m_ranking == nullptr) {
        return std::to_string(m_keys.Size()) + "  " + m_workplace.Text(text::kKeys);
    }
    const std::string hidden = HiddenText();
    const std::size_t count = VisibleCount();
    return m_workplace.Text(text::kKeysOfKeys,
                            {std::to_string(m_keys.Size()), std::to_string(count)}) +
           (hidden.empty() ? "" : ", " + hidden);
}

void KeySelection::SelectRows(const std::vector<std::size_t>& rows, std::size_t current) {
    m_selectedKeys.clear();
    for (const std::size_t row : rows) {
        m_selectedKeys.push_back(m_keys.KeyAt(row));
    }
    const auto former = std::exchange(m_currentKey, m_keys.KeyAt(current));
    if (former != m_currentKey || rows.size() == 1) {
        m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    }
    m_workplace.TellCommandsChanged();
}

std::vector<KeyNumber> KeySelection::SelectedKeys() const {
    return ShowsHeading() ? std::vector<KeyNumber>() : m_selectedKeys;
}

std::optional<std::size_t> KeySelection::CurrentRow() const {
    const std::size_t row = m_currentKey ? m_keys.RowOf(*m_currentKey) : m_keys.Size();
    return row < m_keys.Size() ? std::optional(row) : std::nullopt;
}

std::optional<KeyNumber> KeySelection::EditableKey() const {
    return ShowsHeading() ? std::nullopt : m_currentKey;
}

bool KeySelection::SelectNextKey() {
    const auto row = CurrentRow();
    if (!row || *row + 1 >= m_keys.Size()) {
        return false;
    }
    ShowKeyDetails(*row + 1);
    return true;
}

std::string KeySelection::Description() const {
    return m_currentKey ? DescriptionForDisplay(m_store.Record(*m_currentKey).description)
                        : std::string();
}

void KeySelection::GoToKey(KeyNumber key, const std::optional<DescriptionPart>& part) {
    DropRanking();
    if (!m_store.IsDescribed(key)) {
        ShowKeyIn(NodeOf(key).value_or(kRootNode), key);
        return;
    }
    SelectCategory(kRootNode);
    if (m_filter != KeyFilter::ShowAll) {
        SetKeyFilter(KeyFilter::ShowAll);
    }
    const std::size_t row = m_keys.RowOf(key);
    if (row < m_keys.Size()) {
        ShowKeyDetails(row);
        m_keyListeners.Tell(&KeyListListener::OnWentToKey, part);
    }
}

std::optional<NodeIndex> KeySelection::NodeOf(KeyNumber key) const {
    if (m_nodes.size() != m_store.Size()) {
        m_nodes.clear();
        m_nodes.reserve(m_store.Size());
        for (KeyNumber each = 1; each <= m_store.Size(); ++each) {
            const std::string_view tag = m_store.Category(each);
            const bool isAsBefore = each > 1 && tag.data() == m_store.Category(each - 1).data();
            const auto node = isAsBefore ? m_categories.end()
                                         : std::ranges::find(m_categories, tag, &CategoryNode::tag);
            m_nodes.push_back(isAsBefore ? m_nodes.back()
                              : node == m_categories.end()
                                  ? kRootNode
                                  : static_cast<NodeIndex>(node - m_categories.begin()));
        }
    }
    const NodeIndex node = m_nodes[key - 1];
    return node == kRootNode ? std::nullopt : std::optional(node);
}

bool KeySelection::CanShowInCategory() const {
    const auto key = EditableKey();
    const auto node = key ? NodeOf(*key) : std::nullopt;
    return node && (m_ranking != nullptr || *node != m_selectedNode);
}

void KeySelection::ShowInCategory() {
    if (!CanShowInCategory()) {
        return;
    }
    const KeyNumber key = *m_currentKey;
    DropRanking();
    ShowKeyIn(*NodeOf(key), key);
}

void KeySelection::ShowKeyIn(NodeIndex node, KeyNumber key) {
    SelectCategory(node);
    if (m_keys.RowOf(key) == m_keys.Size()) {
        SetKeyFilter(KeyFilter::ShowAll);
    }
    if (const std::size_t row = m_keys.RowOf(key); row < m_keys.Size()) {
        ShowKeyDetails(row);
        m_keyListeners.Tell(&KeyListListener::OnWentToKey, std::optional<DescriptionPart>());
    }
}

std::vector<KeySelection::CategoryCount> KeySelection::CategoriesOfHeading() const {
    std::vector<CategoryCount> counts;
    if (!ShowsHeading()) {
        return counts;
    }
    for (auto at = static_cast<std::size_t>(m_selectedNode) + 1;
         at < m_categories.size() && !m_categories[at].IsHeading(); ++at) {
        counts.push_back({static_cast<NodeIndex>(at), std::string(m_categories[at].Text()), 0});
    }
    // The keys of a category follow one another.
    std::string_view category;
    auto count = counts.end();
    for (KeyNumber key = 1; key <= VisibleCount(); ++key) {
        if (const std::string_view own = m_store.Category(key); own != category || key == 1) {
            category = own;
            count = std::ranges::find(counts, NodeOf(key), &CategoryCount::node);
        }
        if (count != counts.end() && m_store.IsChecked(key)) {
            ++count->setKeys;
        }
    }
    return counts;
}

void KeySelection::TellChanges(const std::vector<KeyNumber>& keys) const {
    // More rows than that are not visible at a time.
    constexpr std::size_t kManyKeys = 200;
    if (keys.size() > kManyKeys) {
        m_keyListeners.Tell(&KeyListListener::OnManyKeysChanged);
    } else {
        for (const KeyNumber key : keys) {
            m_store.ForEachTwin(key, [this](KeyNumber twin) { TellChanged(twin); });
        }
    }
    m_workplace.TellCommandsChanged();
}

void KeySelection::ShowReplayed(const std::vector<KeyNumber>& keys) {
    const auto shown = std::ranges::find_if(
        keys, [this](KeyNumber key) { return m_keys.RowOf(key) < m_keys.Size(); });
    if (shown != keys.end()) {
        m_currentKey = *shown;
        m_selectedKeys = {*shown};
        m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    }
}

void KeySelection::SetSearchText(const std::string& text) {
    m_search.SetText(text);
    m_workplace.TellCommandsChanged();
}

bool KeySelection::FindNextString() {
    if (!m_search.CanFind()) {
        m_workplace.Prompts().Beep();
        return false;
    }
    const auto hit = m_search.FindNext(m_store);
    if (hit) {
        GoToKey(hit->key, m_search.SearchesNames()
                              ? std::nullopt
                              : std::optional(DescriptionPart{hit->start, hit->length}));
    }
    // After a hit in the last key there is nothing more to come, which is said at once.
    if (!hit || hit->key >= m_keys.Size()) {
        m_workplace.Prompts().ShowMessage(
            MessageIcon::Information,
            m_workplace.Text(text::kCannotFind) + " \"" + m_search.Text() + "\"");
    }
    return hit.has_value();
}

}  // namespace tamarind
