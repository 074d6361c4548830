#include "model/files/IgnoredLines.h"

#include <optional>
#include <utility>

#include "core/ini/IniParser.h"

namespace tamarind {
namespace {

using Reason = IgnoredLine::Reason;

class Finder {
public:
    Finder(const SettingsFiles& settings, std::size_t file, std::vector<IgnoredLine>& lines)
        : m_settings(settings),
          m_file(file),
          m_document(*settings.Files()[file].document),
          m_lines(lines) {}

    void Find() {
        for (IniDocument::LineId line = 0; line < m_document.LineCount(); ++line) {
            switch (m_document.Kind(line)) {
                case IniLineKind::Section:
                    EnterSection(m_next++);
                    ++m_number;
                    break;
                case IniLineKind::Key:
                    ++m_number;
                    LookAtKey(line);
                    break;
                case IniLineKind::Prose:
                    LookAtProse(line);
                    break;
                default:
                    ++m_number;
                    break;
            }
        }
    }

private:
    void EnterSection(IniDocument::SectionId section) {
        const std::string_view name = m_document.SectionName(section);
        m_section = name;
        m_isFirst = m_document.FindSection(name) == section;
        m_keptIn = m_settings.FileOf(name);
    }

    void LookAtKey(IniDocument::LineId line) {
        if (m_next == 0) {  // outside of all sections
            Add(m_document.FileLines(line).front(), Reason::NoKey);
            return;
        }
        const std::string_view key = m_document.KeyName(line);
        const bool isMoved = m_keptIn != m_file && !SettingsFiles::StaysInMainFile(key);
        if (m_file != 0 && m_keptIn != m_file) {
            return;  // of a section that nothing reads from here
        }
        if (isMoved || !m_isFirst || m_document.IsRepeated(m_next - 1, line)) {
            IgnoredLine& added = Add(m_document.FileLines(line).front(),
                                     isMoved ? Reason::LeftBehind : Reason::Repeated);
            added.section = m_section;
            added.key = key;
            added.keptIn = isMoved ? m_settings.Files()[m_keptIn].path : std::string();
        }
    }

    void LookAtProse(IniDocument::LineId line) {
        for (std::string& text : m_document.FileLines(line)) {
            ++m_number;
            const std::string_view trimmed = TrimIniBlanks(text);
            const bool isRead = m_file == 0 || m_keptIn == m_file;
            if (isRead && !trimmed.empty() && !trimmed.starts_with(';')) {
                Add(std::move(text), Reason::NoKey);
            }
        }
    }

    IgnoredLine& Add(std::string text, Reason reason) {
        IgnoredLine& line = m_lines.emplace_back();
        line.path = m_settings.Files()[m_file].path;
        line.number = m_number;
        line.text = std::move(text);
        line.reason = reason;
        return line;
    }

    const SettingsFiles& m_settings;
    const std::size_t m_file;
    const IniDocument& m_document;
    std::vector<IgnoredLine>& m_lines;
    std::size_t m_number = 0;
    IniDocument::SectionId m_next = 0;
    std::string_view m_section;
    bool m_isFirst = true;
    std::size_t m_keptIn = 0;
};

}  // namespace

std::vector<IgnoredLine> FindIgnoredLines(const SettingsFiles& settings) {
    std::vector<IgnoredLine> lines;
    for (std::size_t file = 0; file < settings.Files().size(); ++file) {
        Finder(settings, file, lines).Find();
    }
    return lines;
}

}  // namespace tamarind
