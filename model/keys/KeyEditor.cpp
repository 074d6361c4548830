#include "model/keys/KeyEditor.h"

namespace tamarind {

void KeyEditor::RecordValue(KeyNumber key) {
    m_history.Record(
        {key, false, std::string(m_store.WholeValue(key).value_or(std::string_view()))});
}

void KeyEditor::SetValue(KeyNumber key, const std::string& value) {
    RecordValue(key);
    m_store.SetValue(key, value, KeyState::ValueSet);
}

bool KeyEditor::Comment(KeyNumber key) {
    if (!m_store.IsChecked(key)) {
        return false;
    }
    m_store.SetState(key, KeyState::ToBeCommented);
    m_history.Record({key, true, {}});
    return true;
}

bool KeyEditor::Delete(KeyNumber key) {
    if (LooksOf(m_store.CurrentState(key), {}).isGhosted) {
        return false;
    }
    RecordValue(key);
    m_store.SetValue(key, {}, KeyState::ToBeDeleted);
    return true;
}

}  // namespace tamarind
