#include "model/session/KeySelection.h"

#include <utility>

#include "model/program/StringTable.h"

namespace tamarind {

std::string KeySelection::RootText() const {
    return m_workplace.Text(text::kRootCategory);
}

void KeySelection::Clear() {
    m_keys.Clear();
    m_currentKey.reset();
}

void KeySelection::SetCategories(std::vector<CategoryNode> categories) {
    m_categories = std::move(categories);
    m_shownNode.reset();
    m_selectedNode = kRootNode;
    m_keyListeners.Tell(&KeyListListener::OnKeyListChanged);
    m_categoryListeners.Tell(&CategoryListener::OnCategoriesChanged);
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
    const bool isRoot = node == kRootNode;
    const std::size_t found = m_keys.Fill(
        m_store, isRoot,
        isRoot ? std::string_view() : m_categories[static_cast<std::size_t>(node)].tag, m_filter);
    m_currentKey = m_keys.Size() > 0 ? std::optional(m_keys.KeyAt(0)) : std::nullopt;
    m_keyListeners.Tell(&KeyListListener::OnKeyListChanged);
    m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    m_workplace.TellCommandsChanged();
    if (found == 0 && !ShowsHeading()) {
        m_workplace.Prompts().ShowMessage(MessageIcon::Critical,
                                          m_workplace.Text(text::kCategoryWithoutKeys));
    }
}

bool KeySelection::ShowsHeading() const {
    return m_shownNode && *m_shownNode != kRootNode &&
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

std::string KeySelection::CounterPanel() const {
    return std::to_string(m_keys.Size()) + "  " + m_workplace.Text(text::kKeys);
}

void KeySelection::ShowKeyDetails(std::size_t row) {
    m_currentKey = m_keys.KeyAt(row);
    m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    m_workplace.TellCommandsChanged();
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

void KeySelection::ShowReplayed(KeyNumber key) {
    if (m_keys.RowOf(key) < m_keys.Size()) {
        m_currentKey = key;
        m_keyListeners.Tell(&KeyListListener::OnKeyShown);
    }
}

void KeySelection::SetSearchText(const std::string& text) {
    m_search.SetText(text);
    m_workplace.TellCommandsChanged();
}

void KeySelection::FindNextString() {
    if (!m_search.CanFind()) {
        m_workplace.Prompts().Beep();
        return;
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
}

}  // namespace tamarind
