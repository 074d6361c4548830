#include "model/Language.h"

#include "core/cProfile.h"
#include "model/StringTable.h"

namespace tamarind {

std::string Language::GetLanguageString(std::uint16_t number) const {
    if (m_settings.useDefaultLanguage == 0) {
        const IniSnapshot file =
            m_files.Read(m_settings.expandedLanguageFile, CodePageOfCharset(m_settings.fontScript));
        const auto text = file.document->FindValue("UserLanguage", std::to_string(number));
        if (text && !text->empty()) {
            return std::string(CutToBuffer(*text));
        }
    }
    return std::string(BuiltInText(number));
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
        case FileError::None:
        case FileError::Other:
            break;
    }
    return GetLanguageString(text::kReasonOther);
}

}  // namespace tamarind
