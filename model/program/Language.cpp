#include "model/program/Language.h"

#include "core/files/Paths.h"
#include "core/ini/cProfile.h"
#include "core/text/LeadingNumber.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {

bool Language::Load() {
    m_file.reset();
    if (m_settings.useDefaultLanguage != 0) {
        return true;
    }
    m_path = m_settings.languageFile;
    m_expandedPath = m_settings.expandedLanguageFile;
    m_codePage = CodePageOfCharset(m_settings.fontScript);
    if (!FileExists(m_expandedPath, m_files.Files())) {
        return false;
    }
    m_file = m_files.Read(m_expandedPath, m_codePage).document;
    return true;
}

bool Language::Refresh() {
    if (!m_file) {
        return true;
    }
    if (!FileExists(m_expandedPath, m_files.Files())) {
        m_file.reset();
        return false;
    }
    // A file that is just being written cannot be read and keeps its former texts.
    const IniSnapshot now = m_files.Read(m_expandedPath, m_codePage);
    if (now.error == FileError::None) {
        m_file = now.document;
    }
    return true;
}

bool Language::IsThatOfSettings() const {
    const bool usesDefault = m_settings.useDefaultLanguage != 0;
    if (!m_file || usesDefault) {
        return !m_file && usesDefault;
    }
    return EqualsIgnoreCase(m_path, m_settings.languageFile) &&
           m_codePage == CodePageOfCharset(m_settings.fontScript);
}

std::string Language::Entry(std::string_view key) const {
    const auto text = m_file ? m_file->FindValue("UserLanguage", key) : std::nullopt;
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
