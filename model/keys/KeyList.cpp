#include "model/keys/KeyList.h"

#include <algorithm>
#include <iterator>
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

std::string DigitsOf(std::string_view name) {
    std::string digits;
    std::ranges::copy_if(name, std::back_inserter(digits),
                         [](char character) { return character >= '0' && character <= '9'; });
    return digits;
}

// The last key of the families that a key ends: those whose members take turns have one number.
KeyNumber EndOfFamilies(const KeyStore& store, KeyNumber key) {
    const std::string digits = DigitsOf(store.KeyName(key));
    while (!digits.empty() && key < store.DescribedCount() &&
           store.Category(key + 1) == store.Category(key) &&
           DigitsOf(store.KeyName(key + 1)) == digits) {
        ++key;
    }
    return key;
}

void PutBehindFamilies(const KeyStore& store, std::vector<KeyNumber>& keys) {
    std::vector<std::pair<KeyNumber, KeyNumber>> places;
    places.reserve(keys.size());
    for (const KeyNumber key : keys) {
        places.emplace_back(store.IsSibling(key) ? EndOfFamilies(store, store.ModelOf(key)) : key,
                            key);
    }
    std::ranges::sort(places);
    std::ranges::transform(places, keys.begin(), &std::pair<KeyNumber, KeyNumber>::second);
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
                          bool hasMore, KeyFilter filter) {
    m_rows.clear();
    std::size_t found = 0;
    bool hasSiblings = false;
    const std::size_t count = isRoot || !hasMore ? store.DescribedCount() : store.Size();
    for (KeyNumber key = 1; key <= count; ++key) {
        if (!isRoot && store.Category(key) != category) {
            continue;
        }
        ++found;
        if (Passes(store, key, filter)) {
            m_rows.push_back(key);
            hasSiblings |= store.IsSibling(key);
        }
    }
    m_areAscending = !hasSiblings;
    if (hasSiblings) {
        PutBehindFamilies(store, m_rows);
    }
    return found;
}

void KeyList::FillRanked(const KeyStore& store, std::vector<KeyNumber> keys, KeyFilter filter) {
    m_rows = std::move(keys);
    m_areAscending = false;
    std::erase_if(m_rows, [&](KeyNumber key) { return !Passes(store, key, filter); });
}

std::size_t KeyList::RowOf(KeyNumber key) const {
    const auto found =
        m_areAscending ? std::ranges::lower_bound(m_rows, key) : std::ranges::find(m_rows, key);
    return found != m_rows.end() && *found == key ? static_cast<std::size_t>(found - m_rows.begin())
                                                  : m_rows.size();
}

}  // namespace tamarind
