#include "model/session/PendingChanges.h"

#include <algorithm>

#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

std::string PendingChanges::CountText() const {
    const std::size_t count = m_store.PendingKeys().size();
    switch (count) {
        case 0:
            return {};
        case 1:
            return m_workplace.Text(text::kOneChange);
        default:
            return m_workplace.Text(text::kChanges, {std::to_string(count)});
    }
}

PendingChanges::Review PendingChanges::Look() const {
    SavePreview preview = m_settings.Preview();
    Review review;
    for (const KeyNumber key : m_store.PendingKeys()) {
        review.changes.push_back({key, std::string(m_store.KeyName(key)),
                                  std::string(m_store.TargetSection(key)),
                                  LineInSettings(m_store, key), LineOfState(m_store.Record(key)),
                                  std::ranges::binary_search(preview.withoutEdit, key)});
    }
    review.files = std::move(preview.files);
    return review;
}

std::string PendingChanges::RefusalBy(const FilePreview& file) const {
    if (!file.refusedKey) {
        return {};
    }
    return Messages(m_workplace).Reason({FileError::None, file.refused, {}}) + " " +
           NameWithSection(m_store.Record(*file.refusedKey));
}

void PendingChanges::Discard(const std::vector<KeyNumber>& keys) {
    if (!m_workplace.IsBusy()) {
        m_selection.Rows().TellChanges(m_editor.Discard(keys));
    }
}

}  // namespace tamarind
