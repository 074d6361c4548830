#include "model/session/IgnoredLinesEditor.h"

#include "core/files/Paths.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

std::vector<IgnoredLine> IgnoredLinesEditor::Look() {
    m_settings.CheckOutsideChanges();
    return m_settings.Files().IsEmpty() ? std::vector<IgnoredLine>()
                                        : FindIgnoredLines(m_settings.Files());
}

std::string IgnoredLinesEditor::ReasonOf(const IgnoredLine& line) const {
    switch (line.reason) {
        case IgnoredLine::Reason::Repeated:
            return m_workplace.Text(text::kIgnoredRepeated);
        case IgnoredLine::Reason::LeftBehind:
            return m_workplace.Text(text::kIgnoredLeftBehind,
                                    {std::string(FileNameOfPath(line.keptIn))});
        default:
            return m_workplace.Text(text::kIgnoredNoKey);
    }
}

bool IgnoredLinesEditor::CanGoTo(const IgnoredLine& line) {
    m_undescribed.LoadAll();
    return !line.key.empty() && m_store.Find(line.section, line.key).has_value();
}

void IgnoredLinesEditor::GoTo(const IgnoredLine& line) {
    m_undescribed.LoadAll();
    if (const auto key = m_store.Find(line.section, line.key)) {
        m_undescribed.GoTo(*key);
    }
}

bool IgnoredLinesEditor::Write(const std::string& path,
                               const std::function<IniEdit(IniDocument&)>& edit) {
    const WriteResult result = EditIniFile(m_workplace.Files(), path, edit, Backup::Yes);
    if (!result.Succeeded()) {
        Messages(m_workplace).ReportFailure(text::kCannotSaveFile, path, result);
    }
    m_settings.TakeOwnWrite();
    return result.Succeeded();
}

bool IgnoredLinesEditor::Delete(const IgnoredLine& line) {
    Step step{line.path, {}, {}};
    const bool isWritten = Write(line.path, [&](IniDocument& document) {
        step.before = document.Bytes();
        const IniEdit edit = document.DeleteFileLine(line.number, line.text);
        step.after = document.Bytes();
        return edit;
    });
    if (isWritten && step.before != step.after) {
        m_steps.push_back(std::move(step));
    }
    return isWritten;
}

bool IgnoredLinesEditor::Undo() {
    if (m_steps.empty()) {
        return false;
    }
    const Step step = std::move(m_steps.back());
    m_steps.pop_back();
    bool isAsLeft = false;
    const CodePage codePage = m_workplace.Files().SystemCodePage();
    const bool isWritten = Write(step.path, [&](IniDocument& document) {
        isAsLeft = document.Bytes() == step.after;
        if (isAsLeft) {
            document = IniDocument::Parse(step.before, codePage);
        }
        return isAsLeft ? IniEdit::Changed : IniEdit::Unchanged;
    });
    if (isWritten && !isAsLeft) {
        Messages(m_workplace)
            .ReportFailure(text::kCannotSaveFile, step.path,
                           {FileError::KeepsChanging, IniEdit::Unchanged, {}});
    }
    return isWritten && isAsLeft;
}

}  // namespace tamarind
