#include "model/session/KeyCommands.h"

#include <vector>

#include "core/ini/cProfile.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/ExchangeFile.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

KeyCommands::KeyCommands(Workplace& workplace, KeyStore& store, KeyEditor& editor,
                         KeySelection& selection, const OpenDataFile& dataFile,
                         const OpenSettings& settings)
    : m_workplace(workplace),
      m_store(store),
      m_editor(editor),
      m_selection(selection),
      m_dataFile(dataFile),
      m_settings(settings) {}

bool KeyCommands::SelectsNextKey() const {
    return m_workplace.OwnSettings().Values().autoSelectNextKey != 0;
}

// After a beep or a message where it cannot be.
bool KeyCommands::CanEditValue() const {
    const auto key = m_selection.EditableKey();
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
    const KeyRecord record = m_store.Record(*m_selection.EditableKey());
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
    const KeyNumber key = *m_selection.EditableKey();
    m_editor.SetValue(key, value);
    TellChange(key);
    return true;
}

bool KeyCommands::BrowseValue() {
    if (!CanEditValue()) {
        return false;
    }
    UserPrompts& prompts = m_workplace.Prompts();
    const auto sample = CurrentColor();
    if (sample && !sample->isSystemColor) {
        prompts.StartColorAt(static_cast<std::int32_t>(sample->color));
    }
    const std::string value = sample ? prompts.ColorSelect() : prompts.BrowseForOpen({});
    return value != MissingValueMarker && SetValue(value);
}

void KeyCommands::ChangeKey(bool (KeyEditor::*change)(KeyNumber key)) {
    const auto key = m_selection.EditableKey();
    if (!key || m_workplace.IsBusy() || !(m_editor.*change)(*key)) {
        return;
    }
    TellChange(*key);
    if (SelectsNextKey()) {
        m_selection.SelectNextKey();
    }
}

void KeyCommands::Replay(std::optional<KeyNumber> (KeyEditor::*replay)()) {
    if (m_selection.ShowsHeading() || m_workplace.IsBusy()) {
        return;
    }
    if (const auto key = (m_editor.*replay)()) {
        m_selection.ShowReplayed(*key);
        TellChange(*key);
    }
}

void KeyCommands::TellChange(KeyNumber key) {
    m_store.ForEachTwin(key, [this](KeyNumber twin) { m_selection.TellChanged(twin); });
    m_workplace.TellCommandsChanged();
}

std::optional<ColorSample> KeyCommands::CurrentColor() const {
    const auto key = m_selection.EditableKey();
    if (!key || !HasColor(m_store.Record(*key))) {
        return std::nullopt;
    }
    ColorSample sample = ColorOfValue(m_store.CurrentValue(*key));
    sample.isSystemColor |= m_store.Record(*key).Looks().isGhosted;
    return sample;
}

// Which file to exchange keys with: its name, or the MissingValueMarker.
std::string KeyCommands::AskExchangeFile(bool isExport) const {
    FileQuestion question;
    question.initialFolder = m_settings.Folder();
    question.filter = m_dataFile.Target() == SettingsTarget::Wincmd ? FileFilter::WincmdIni
                                                                    : FileFilter::WcxFtpIni;
    question.title = m_workplace.Text(isExport ? text::kExport : text::kImport);
    return isExport ? m_workplace.Prompts().BrowseForSave(question)
                    : m_workplace.Prompts().BrowseForOpen(question);
}

void KeyCommands::ExportKeys() {
    const std::string path = AskExchangeFile(true);
    if (path == MissingValueMarker) {
        return;
    }
    const KeyList& keys = m_selection.Keys();
    const WriteResult result = WriteExchangeFile(m_store, keys, m_workplace.Files(), path);
    if (!result.Succeeded()) {
        Messages(m_workplace).ReportFailure(text::kCannotSaveFile, path, result);
    } else if (!HasSetKey(keys, m_store)) {
        // Without a line to write no file is made.
        Messages(m_workplace).Show(MessageIcon::Information, text::kNothingExported);
    }
}

void KeyCommands::ImportKeys() {
    const std::string path = AskExchangeFile(false);
    if (path == MissingValueMarker) {
        return;
    }
    const IniSnapshot file = m_workplace.Files().Read(path);
    // A file that is there but cannot be read says nothing of any key.
    if (file.error != FileError::None && !IsMissing(file.error)) {
        Messages(m_workplace).ReportUnreadable(path, file.error);
        return;
    }
    const std::vector<KeyNumber> skipped =
        ReadExchangeFile(*file.document, m_selection.Keys(), m_store);
    m_selection.ShowAgain();
    m_workplace.TellCommandsChanged();
    if (!skipped.empty()) {
        std::string message = m_workplace.Text(text::kLongValuesSkipped) + "\n";
        for (const KeyNumber key : skipped) {
            message += "\n" + std::string(m_store.KeyName(key));
        }
        m_workplace.Prompts().ShowMessage(MessageIcon::Exclamation, message);
    }
}

}  // namespace tamarind
