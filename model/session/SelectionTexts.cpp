#include "model/session/SelectionTexts.h"

#include <algorithm>
#include <utility>

#include "model/program/StringTable.h"

namespace tamarind {

std::string SelectionTexts::Root() const {
    return m_workplace.Text(text::kRootCategory);
}

std::string SelectionTexts::Filter() const {
    const std::pair<KeyFilter, std::uint16_t> names[] = {
        {KeyFilter::ShowActive, text::kActiveKeys},
        {KeyFilter::ShowInactive, text::kInactiveKeys},
        {KeyFilter::ShowChanged, text::kChangedKeys},
        {KeyFilter::ShowDifferent, text::kDifferentKeys},
    };
    const auto* const name =
        std::ranges::find(names, m_selection.Filter(), &std::pair<KeyFilter, std::uint16_t>::first);
    return name == std::end(names) ? std::string() : m_workplace.Label(name->second);
}

std::string SelectionTexts::HiddenHits() const {
    if (m_selection.HiddenHits() == 0) {
        return {};
    }
    return m_workplace.Text(text::kHiddenBy,
                            {std::to_string(m_selection.HiddenHits()),
                             m_workplace.Label(text::kViewMenu) + " > " + Filter()});
}

std::string SelectionTexts::Counter() const {
    const std::string rows = std::to_string(m_selection.Rows().Keys().Size());
    if (!m_selection.HasRanking()) {
        return rows + "  " + m_workplace.Text(text::kKeys);
    }
    const std::string hidden = HiddenHits();
    // Of the keys that can be seen at all.
    const KeyStore& store = m_selection.Rows().Store();
    const std::size_t count =
        m_workplace.IsVisible(WindowPart::UndescribedKeys) ? store.Size() : store.DescribedCount();
    return m_workplace.Text(text::kKeysOfKeys, {rows, std::to_string(count)}) +
           (hidden.empty() ? "" : ", " + hidden);
}

}  // namespace tamarind
