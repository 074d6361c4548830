#include "model/session/KeyFinding.h"

#include "model/program/StringTable.h"

namespace tamarind {

void KeyFinding::SetSearchText(const std::string& text) {
    m_search.SetText(text);
    m_workplace.TellCommandsChanged();
}

bool KeyFinding::FindNextString() {
    if (!m_search.CanFind()) {
        m_workplace.Prompts().Beep();
        return false;
    }
    const auto hit = m_search.FindNext(m_selection.Rows().Store());
    if (hit) {
        m_selection.GoToKey(hit->key, m_search.SearchesNames() ? std::nullopt
                                                               : std::optional(DescriptionPart{
                                                                     hit->start, hit->length}));
    }
    // After a hit in the last key there is nothing more to come, which is said at once.
    if (!hit || hit->key >= m_selection.Rows().Keys().Size()) {
        m_workplace.Prompts().ShowMessage(
            MessageIcon::Information,
            m_workplace.Text(text::kCannotFind) + " \"" + m_search.Text() + "\"");
    }
    return hit.has_value();
}

}  // namespace tamarind
