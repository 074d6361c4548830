#include "model/session/Messages.h"

#include "model/program/StringTable.h"

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

void Messages::Show(MessageIcon icon, std::uint16_t text) const {
    m_workplace.Prompts().ShowMessage(icon, m_workplace.Text(text));
}

void Messages::ReportUnreadable(const std::string& path, FileError error) const {
    m_workplace.Prompts().ShowMessage(
        MessageIcon::Exclamation, m_workplace.Text(text::kCannotReadFile) + " " + path + "\n\n" +
                                      m_workplace.Texts().Reason(error));
}

void Messages::ReportFailure(std::uint16_t message, const std::string& path,
                             const WriteResult& result) const {
    m_workplace.Prompts().ShowMessage(
        MessageIcon::Exclamation, m_workplace.Text(message) + " " + path + "\n\n" + Reason(result));
}

void Messages::ReportUnsaved(const SaveResult& result, const KeyStore& store) const {
    const bool isOne = result.failures.size() == 1;
    std::string message = m_workplace.Text(isOne ? text::kCannotSaveFile : text::kCannotSaveFiles);
    for (const SaveResult::Failure& failure : result.failures) {
        message += (isOne ? " " : "\n\n") + failure.path + "\n\n" + Reason(failure.result);
        if (failure.refusedKey) {
            message += " " + NameWithSection(store.Record(*failure.refusedKey));
        }
    }
    m_workplace.Prompts().ShowMessage(MessageIcon::Exclamation, message);
}

bool Messages::AskToSave(const std::string& question, const std::function<bool()>& save) const {
    const Answer answer = m_workplace.Prompts().Ask(question);
    return answer == Answer::Yes ? save() : answer == Answer::No;
}

std::string Messages::Reason(const WriteResult& result) const {
    const std::string reason = IsRefused(result.refused)
                                   ? m_workplace.Text(ReasonOf(result.refused))
                                   : m_workplace.Texts().Reason(result.error);
    return result.aside.empty()
               ? reason
               : reason + " " + m_workplace.Text(text::kTextKeptIn) + " " + result.aside;
}

}  // namespace tamarind
