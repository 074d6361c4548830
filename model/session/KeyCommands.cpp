#include "model/session/KeyCommands.h"

#include <algorithm>

#include "core/ini/cProfile.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/keys/KeyList.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {
namespace {

std::uint16_t NameTextOf(StepKind kind) {
    switch (kind) {
        case StepKind::Comment:
            return text::kStepOfComment;
        case StepKind::Delete:
            return text::kStepOfDeletion;
        case StepKind::Reset:
            return text::kStepOfReset;
        case StepKind::Import:
            return text::kStepOfImport;
        case StepKind::Discard:
            return text::kStepOfDiscard;
        case StepKind::Restore:
            return text::kStepOfRestore;
        case StepKind::Value:
            break;
    }
    return text::kStepOfValue;
}

}  // namespace

KeyCommands::KeyCommands(Workplace& workplace, KeyStore& store, KeyEditor& editor,
                         KeySelection& selection, OpenDataFile& dataFile)
    : m_workplace(workplace),
      m_store(store),
      m_editor(editor),
      m_selection(selection),
      m_dataFile(dataFile) {}

bool KeyCommands::SelectsNextKey() const {
    return m_workplace.OwnSettings().Values().autoSelectNextKey != 0;
}

bool KeyCommands::CanEditValue() const {
    const auto key = m_selection.Rows().EditableKey();
    if (!key || m_workplace.IsBusy()) {
        m_workplace.Prompts().Beep();
        return false;
    }
    if (!m_store.CanEditValue(*key)) {
        Messages(m_workplace).Show(MessageIcon::Information, text::kLongValueStays);
        return false;
    }
    return true;
}

std::optional<KeyCommands::EditStart> KeyCommands::BeginInplaceEdit() {
    if (!CanEditValue()) {
        return std::nullopt;
    }
    const KeyRecord record = m_store.Record(*m_selection.Rows().EditableKey());
    EditStart start;
    start.text = VisibleText(record);
    if (record.Looks().isGhosted) {
        start.text.append(1, '=').append(record.defaultValue);
    }
    const std::size_t equals = start.text.find('=');
    if (equals != std::string::npos) {
        start.selectionStart = Utf16Length(std::string_view(start.text).substr(0, equals + 1));
    }
    return start;
}

bool KeyCommands::StoreEditedValue(const std::string& text) {
    const std::size_t equals = text.find('=');
    return SetValue(equals == std::string::npos ? text : text.substr(equals + 1));
}

bool KeyCommands::SetValue(const std::string& value) {
    if (!CanEditValue()) {
        return false;
    }
    const Messages messages(m_workplace);
    // A longer one could be saved but not be read again.
    if (CutToBuffer(value).size() < value.size()) {
        messages.Show(MessageIcon::Exclamation, text::kValueTooLong);
        return false;
    }
    // It stands for "no such value" wherever values are read.
    if (value == MissingValueMarker) {
        messages.Show(MessageIcon::Exclamation, text::kValueIsMarker);
        return false;
    }
    const KeyNumber key = *m_selection.Rows().EditableKey();
    m_editor.SetValue(key, value);
    m_selection.Rows().TellChanges({key});
    return true;
}

void KeyCommands::SetValues(const std::vector<KeyChange>& changes) {
    std::vector<KeyNumber> keys(changes.size());
    std::ranges::transform(changes, keys.begin(), &KeyChange::key);
    m_editor.Change(StepKind::Value, changes);
    m_selection.Rows().TellChanges(keys);
}

bool KeyCommands::Unset() {
    const auto key = m_selection.Rows().EditableKey();
    if (!key || m_workplace.IsBusy()) {
        return false;
    }
    const std::vector<KeyNumber> changed = m_editor.Delete({*key}, StepKind::Reset);
    m_selection.Rows().TellChanges(changed);
    return !changed.empty();
}

void KeyCommands::CommentKeys() {
    const std::vector<KeyNumber> keys = m_store.WithoutTwins(m_selection.Rows().SelectedKeys());
    if (!m_workplace.IsBusy()) {
        AfterChange(m_editor.Comment(keys), keys.size());
    }
}

void KeyCommands::DeleteKeys() {
    const std::vector<KeyNumber> keys = m_store.WithoutTwins(m_selection.Rows().SelectedKeys());
    if (!m_workplace.IsBusy()) {
        AfterChange(m_editor.Delete(keys), keys.size());
    }
}

// What a command on `selected` keys has to do when it has changed some of them.
void KeyCommands::AfterChange(const std::vector<KeyNumber>& changed, std::size_t selected) {
    if (changed.empty()) {
        return;
    }
    m_selection.Rows().TellChanges(changed);
    if (selected > 1 || m_selection.Rows().SelectedKeys().size() > 1) {
        m_workplace.TellNotice({m_workplace.Text(text::kChangedAndLeftOut,
                                                 {std::to_string(changed.size()),
                                                  std::to_string(selected - changed.size())}),
                                false});
    } else if (SelectsNextKey()) {
        m_selection.Rows().SelectNextKey();
    }
}

bool KeyCommands::IsKeptByReset(KeyNumber key) const {
    const KeyNumber model = m_store.ModelOf(key);
    return EqualsIgnoreCase(m_store.KeyName(key), "RedirectSection") ||
           m_dataFile.Types().IsHistory(m_store.TargetSection(model), m_store.KeyName(model));
}

void KeyCommands::ResetKeys() {
    const std::vector<KeyNumber> selected = m_store.WithoutTwins(m_selection.Rows().SelectedKeys());
    std::vector<KeyNumber> keys = selected;
    std::erase_if(keys, [this](KeyNumber key) { return IsKeptByReset(key); });
    Reset(keys.empty() ? selected : keys, selected.size());
}

void KeyCommands::ResetCategory() {
    if (m_selection.ShowsHeading()) {
        return;
    }
    std::vector<KeyNumber> keys = m_store.WithoutTwins(m_selection.KeysOfNode());
    std::erase_if(keys,
                  [this](KeyNumber key) { return !m_store.IsChecked(key) || IsKeptByReset(key); });
    if (keys.empty()) {
        Messages(m_workplace).Show(MessageIcon::Information, text::kNothingToReset);
    } else {
        Reset(keys, keys.size());
    }
}

void KeyCommands::Reset(const std::vector<KeyNumber>& keys, std::size_t selected) {
    constexpr std::ptrdiff_t kAskedFrom = 10;
    const auto count = std::ranges::count_if(
        keys, [this](KeyNumber key) { return !LooksOf(m_store.CurrentState(key), {}).isGhosted; });
    const bool isSure =
        !m_workplace.IsBusy() &&
        (count < kAskedFrom || m_workplace.Prompts().AskWhetherSure(
                                   m_workplace.Text(text::kAskReset, {std::to_string(count)})));
    if (isSure) {
        AfterChange(m_editor.Delete(keys, StepKind::Reset), selected);
    }
}

void KeyCommands::CopyKeys() const {
    std::string lines;
    for (const KeyNumber key : m_selection.Rows().SelectedKeys()) {
        lines += (lines.empty() ? "" : "\r\n") + VisibleText(m_store.Record(key));
    }
    if (!lines.empty()) {
        m_workplace.Prompts().CopyText(lines);
    }
}

void KeyCommands::Undo() {
    if (!m_selection.ShowsHeading() && !m_workplace.IsBusy()) {
        AfterReplay(m_editor.Undo());
    }
}

void KeyCommands::Redo() {
    if (!m_selection.ShowsHeading() && !m_workplace.IsBusy()) {
        AfterReplay(m_editor.Redo());
    }
}

void KeyCommands::AfterReplay(const std::vector<KeyNumber>& keys) {
    if (!keys.empty()) {
        m_selection.Rows().ShowReplayed(keys);
        m_selection.Rows().TellChanges(keys);
    }
}

std::string KeyCommands::NameOf(const HistoryStep* step) const {
    if (step == nullptr) {
        return {};
    }
    const std::size_t count = step->entries.size();
    const std::string keys = count == 1
                                 ? std::string(m_store.KeyName(step->entries.front().key))
                                 : m_workplace.Text(text::kSeveralKeys, {std::to_string(count)});
    return m_workplace.Text(NameTextOf(step->kind), {keys});
}

}  // namespace tamarind
