// The half of EditorSession that changes keys and saves them.
#include "core/ini/cProfile.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/keys/ColorKeys.h"
#include "model/program/StringTable.h"
#include "model/session/EditorSession.h"

namespace tamarind {
namespace {

std::uint16_t ReasonOf(IniEdit refused) {
    switch (refused) {
        case IniEdit::NameNotEncodable:
            return text::kNameNotEncodable;
        case IniEdit::TextNotStorable:
            return text::kTextNotStorable;
        default:
            return text::kFileNotText;
    }
}

}  // namespace

bool EditorSession::CanEditKey() const {
    return m_currentKey != 0 && !ShowsHeading();
}

// After a beep or a message where it cannot be.
bool EditorSession::CanEditValue() {
    if (!CanEditKey() || m_isBusy) {
        m_services.prompts.Beep();
        return false;
    }
    if (!m_store.CanEditValue(m_currentKey)) {
        m_services.prompts.ShowMessage(MessageIcon::Information, Text(text::kLongValueStays));
        return false;
    }
    return true;
}

std::optional<EditorSession::EditStart> EditorSession::BeginInplaceEdit() {
    if (!CanEditValue()) {
        return std::nullopt;
    }
    const KeyRecord record = Record(m_currentKey);
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

bool EditorSession::StoreEditedValue(const std::string& text) {
    const std::size_t equals = text.find('=');
    return SetValue(equals == std::string::npos ? text : text.substr(equals + 1));
}

bool EditorSession::SetValue(const std::string& value) {
    if (!CanEditValue()) {
        return false;
    }
    // A longer one could be saved but not be read again.
    if (CutToBuffer(value).size() < value.size()) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kValueTooLong));
        return false;
    }
    // It stands for "no such value" wherever values are read.
    if (value == MissingValueMarker) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kValueIsMarker));
        return false;
    }
    m_listener->OnBeforeChange();
    m_editor.SetValue(m_currentKey, value);
    ShowChange(m_currentKey);
    return true;
}

bool EditorSession::BrowseValue() {
    if (!CanEditValue()) {
        return false;
    }
    const auto sample = CurrentColor();
    if (sample && !sample->isSystemColor) {
        m_services.prompts.StartColorAt(static_cast<std::int32_t>(sample->color));
    }
    const std::string value =
        sample ? m_services.prompts.ColorSelect() : m_services.prompts.BrowseForOpen({});
    return value != MissingValueMarker && SetValue(value);
}

void EditorSession::CommentKey() {
    ChangeKey(&KeyEditor::Comment);
}

void EditorSession::DeleteKey() {
    ChangeKey(&KeyEditor::Delete);
}

void EditorSession::ChangeKey(bool (KeyEditor::*change)(RowKey key)) {
    if (!CanEditKey() || m_isBusy || !(m_editor.*change)(m_currentKey)) {
        return;
    }
    m_listener->OnBeforeChange();
    ShowChange(m_currentKey);
    if (SelectsNextKey()) {
        SelectNextKey();
    }
}

bool EditorSession::SelectNextKey() {
    const std::size_t next = m_keys.RowOf(m_currentKey) + 1;
    if (next >= m_keys.Size()) {
        return false;
    }
    ShowKeyDetails(next);
    return true;
}

// Undo and redo work while any key is shown, whichever category their own key is in.
void EditorSession::Replay(bool isUndo) {
    if (ShowsHeading() || m_isBusy) {
        return;
    }
    m_listener->OnBeforeChange();
    const RowKey key = isUndo ? m_editor.Undo() : m_editor.Redo();
    if (key == 0) {
        return;
    }
    const std::size_t row = m_keys.RowOf(key);
    if (row < m_keys.Size()) {
        m_currentKey = key;
        m_listener->OnKeyShown();
    }
    ShowChange(key);
}

void EditorSession::ShowChange(RowKey key) {
    m_store.ForEachTwin(key, [this](RowKey twin) { m_listener->OnKeyChanged(twin); });
    m_listener->OnCommandsChanged();
}

std::optional<ColorSample> EditorSession::CurrentColor() const {
    if (!CanEditKey() || !HasColor(Record(m_currentKey))) {
        return std::nullopt;
    }
    ColorSample sample = ColorOfValue(m_store.CurrentValue(m_currentKey));
    sample.isSystemColor |= Record(m_currentKey).Looks().isGhosted;
    return sample;
}

bool EditorSession::AskSaveSettings() {
    return !IsModified() || AskToSave(Text(text::kSaveChangesTo) + "  " + m_settingsPath + "\n",
                                      &EditorSession::SaveToSettingsFile);
}

bool EditorSession::AskToSave(const std::string& question, bool (EditorSession::*save)()) {
    const Answer answer = m_services.prompts.Ask(question);
    return answer == Answer::Yes ? (this->*save)() : answer == Answer::No;
}

// Total Commander, once closed, is started again whatever becomes of the save.
bool EditorSession::Save(bool restarts) {
    if (m_isBusy) {
        return false;
    }
    m_listener->OnBeforeChange();
    if (!IsGivenPath(m_settingsPath)) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kNoSettingsFile));
        return false;
    }
    const auto whileBusy = [this](const auto& act) {
        m_isBusy = true;
        m_listener->OnCommandsChanged();
        RestartResult result = act();
        m_isBusy = false;
        return result;
    };
    RestartResult closed;
    if (restarts) {
        closed = whileBusy([&] { return m_totalCommander.Close(m_settings.Path()); });
    }
    const SaveResult result = WriteSettings();
    RestartResult started;
    if (restarts && (closed.hasClosed || !result.isCancelled)) {
        const char* const switchText = m_target == SettingsTarget::WcxFtp ? " /f=" : " /i=";
        started = whileBusy(
            [&] { return m_totalCommander.Start(switchText, m_settingsPath, m_settings.Path()); });
    }
    m_listener->OnCommandsChanged();
    if (!result.failures.empty()) {
        ReportUnsaved(result);
    }
    if (closed.stillRuns) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation,
                                       Text(text::kTotalCommanderStillRuns));
    }
    if (!started.refusedPath.empty()) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation,
                                       Text(text::kQuoteInPath) + " " + started.refusedPath);
    }
    return result.Succeeded();
}

SaveResult EditorSession::WriteSettings() {
    m_isBusy = true;
    SaveResult result =
        SettingsWriter(m_store, m_services.files, m_services.environment, m_settingsFiles, *this)
            .Save();
    m_isBusy = false;
    return result;
}

void EditorSession::ReportUnsaved(const SaveResult& result) {
    const bool isOne = result.failures.size() == 1;
    std::string message = Text(isOne ? text::kCannotSaveFile : text::kCannotSaveFiles);
    for (const SaveResult::Failure& failure : result.failures) {
        message += (isOne ? " " : "\n\n") + failure.path + "\n\n" + Reason(failure.result);
        if (failure.refusedKey != 0) {
            const KeyRecord record = Record(failure.refusedKey);
            message +=
                " [" + std::string(record.targetSection) + "] " + std::string(record.keyName);
        }
    }
    m_services.prompts.ShowMessage(MessageIcon::Exclamation, message);
}

std::string EditorSession::Reason(const WriteResult& result) const {
    const std::string reason = IsRefused(result.refused) ? Text(ReasonOf(result.refused))
                                                         : m_language.Reason(result.error);
    return result.aside.empty() ? reason
                                : reason + " " + Text(text::kTextKeptIn) + " " + result.aside;
}

}  // namespace tamarind
