#include "model/Language.h"

#include "core/LeadingNumber.h"
#include "core/cProfile.h"
#include "model/StringTable.h"

namespace tamarind {

std::string Language::Entry(std::string_view key) const {
    if (m_settings.useDefaultLanguage != 0) {
        return {};
    }
    const IniSnapshot file =
        m_files.Read(m_settings.expandedLanguageFile, CodePageOfCharset(m_settings.fontScript));
    const auto text = file.document->FindValue("UserLanguage", key);
    return text ? std::string(CutToBuffer(*text)) : std::string();
}

std::string Language::GetLanguageString(std::uint16_t number) const {
    std::string text = Entry(std::to_string(number));
    return text.empty() ? std::string(BuiltInText(number)) : text;
}

bool Language::IsRightToLeft() const {
    return LeadingInteger(Entry("RightToLeftLanguage")) != 0;
}

std::string Language::Reason(FileError error) const {
    switch (error) {
        case FileError::NotFound:
        case FileError::FolderMissing:
            return GetLanguageString(text::kReasonNotFound);
        case FileError::IsFolder:
            return GetLanguageString(text::kReasonFolder);
        case FileError::AccessDenied:
            return GetLanguageString(text::kReasonAccessDenied);
        case FileError::ReadOnly:
            return GetLanguageString(text::kReasonReadOnly);
        case FileError::DiskFull:
            return GetLanguageString(text::kReasonDiskFull);
        case FileError::InUse:
            return GetLanguageString(text::kReasonInUse);
        case FileError::TooLarge:
            return GetLanguageString(text::kReasonTooLarge);
        case FileError::NotVerified:
            return GetLanguageString(text::kReasonNotVerified);
        case FileError::Unreachable:
            return GetLanguageString(text::kReasonUnreachable);
        case FileError::BadName:
            return GetLanguageString(text::kReasonBadName);
        case FileError::Changed:
        case FileError::KeepsChanging:
            return GetLanguageString(text::kReasonKeepsChanging);
        case FileError::None:
        case FileError::Other:
            break;
    }
    return GetLanguageString(text::kReasonOther);
}

}  // namespace tamarind
