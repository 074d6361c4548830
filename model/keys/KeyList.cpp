#include "model/keys/KeyList.h"

#include <algorithm>
#include <utility>

namespace tamarind {
namespace {

bool Passes(const KeyStore& store, KeyNumber key, KeyFilter filter) {
    switch (filter) {
        case KeyFilter::ShowAll:
            break;
        case KeyFilter::ShowActive:
            return store.IsChecked(key);
        case KeyFilter::ShowInactive:
            return !store.IsChecked(key);
        case KeyFilter::ShowChanged:
            return store.IsPending(key);
        case KeyFilter::ShowDifferent:
            return store.IsChecked(key) && DiffersFromKnownDefault(store.Record(key));
    }
    return true;
}

}  // namespace

std::string VisibleText(const KeyRecord& record) {
    std::string text(record.keyName);
    if (record.currentState != KeyState::Absent && record.currentState != KeyState::ToBeDeleted) {
        text += '=';
        text += record.currentValue.value_or(std::string_view());
    }
    return text;
}

std::string LineOfState(const KeyRecord& record) {
    const KeyLooks looks = record.Looks();
    return looks.isGhosted ? std::string() : (looks.isChecked ? "" : ";") + VisibleText(record);
}

std::size_t KeyList::Fill(const KeyStore& store, bool isRoot, std::string_view category,
                          KeyFilter filter) {
    m_rows.clear();
    m_areRanked = false;
    std::size_t found = 0;
    const std::size_t count = isRoot ? store.DescribedCount() : store.Size();
    for (KeyNumber key = 1; key <= count; ++key) {
        if (!isRoot && store.Category(key) != category) {
            continue;
        }
        ++found;
        if (Passes(store, key, filter)) {
            m_rows.push_back(key);
        }
    }
    return found;
}

void KeyList::FillRanked(const KeyStore& store, std::vector<KeyNumber> keys, KeyFilter filter) {
    m_rows = std::move(keys);
    m_areRanked = true;
    std::erase_if(m_rows, [&](KeyNumber key) { return !Passes(store, key, filter); });
}

std::size_t KeyList::RowOf(KeyNumber key) const {
    const auto found =
        m_areRanked ? std::ranges::find(m_rows, key) : std::ranges::lower_bound(m_rows, key);
    return found != m_rows.end() && *found == key ? static_cast<std::size_t>(found - m_rows.begin())
                                                  : m_rows.size();
}

}  // namespace tamarind
