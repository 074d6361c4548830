#include "model/files/SavePreview.h"

#include <algorithm>
#include <utility>

namespace tamarind {
namespace {

constexpr std::size_t kLinesAround = 2;
// So many bytes hold the lines around an edit nearly always; a longer line is shown in part.
constexpr std::size_t kBytesAround = 4096;

using Kind = PreviewLine::Kind;

// Puts the lines of a preview together.
class PreviewLines {
public:
    PreviewLines(const IniDocument& document, std::string_view before)
        : m_document(document), m_before(before), m_shown(MarkBytes(FindFileMark(before)).size()) {}

    // Up to two lines before `end` that were not shown yet.
    void ShowLinesBefore(std::size_t end) {
        // Text in UTF-16 has two bytes a unit: an even number of them is left out.
        const std::size_t begin = end - std::min(end - m_shown, kBytesAround);
        std::vector<std::string> lines = m_document.LinesOf(m_before.substr(begin, end - begin));
        const std::size_t count = std::min(lines.size(), kLinesAround);
        if (begin > m_shown || count < lines.size()) {
            m_lines.push_back({Kind::Skipped, {}});
        }
        Append(Kind::Same, {lines.end() - static_cast<std::ptrdiff_t>(count), lines.end()});
        m_shown = end;
    }

    // Up to two lines from there on, but none at or after `limit`.
    void ShowLinesAfter(std::size_t limit) {
        const std::size_t size = std::min(limit - m_shown, kBytesAround);
        std::size_t shown = 0;
        for (std::size_t line = 0; line < kLinesAround && shown < size; ++line) {
            shown = EndOfLine(m_before.substr(m_shown, size), shown);
        }
        Append(Kind::Same, m_document.LinesOf(m_before.substr(m_shown, shown)));
        m_shown += shown;
    }

    // What an edit removes and adds. Lines that it leaves as they are, but for a line end that the
    // last line of the file gets, are no change.
    void ShowEdit(const IniDocument::Edit& edit) {
        std::vector<std::string> removed =
            m_document.LinesOf(m_before.substr(edit.begin, edit.end - edit.begin));
        std::vector<std::string> added = m_document.LinesOf(edit.added);
        const auto [was, is] = std::ranges::mismatch(removed, added);
        Append(Kind::Same, {removed.begin(), was});
        removed.erase(removed.begin(), was);
        added.erase(added.begin(), is);
        Append(Kind::Removed, std::move(removed));
        Append(Kind::Added, std::move(added));
        m_shown = edit.end;
    }

    void ShowRest() {
        if (m_shown < m_before.size()) {
            m_lines.push_back({Kind::Skipped, {}});
        }
    }

    std::vector<PreviewLine> Take() { return std::move(m_lines); }

private:
    void Append(Kind kind, std::vector<std::string> texts) {
        for (std::string& text : texts) {
            m_lines.push_back({kind, std::move(text)});
        }
    }

    // The first byte behind the line that has byte `at`.
    std::size_t EndOfLine(std::string_view bytes, std::size_t at) const {
        const std::size_t unit = m_document.BytesPerUnit();
        const auto isAt = [&](std::size_t place, char character) {
            return place < bytes.size() && bytes[place] == character &&
                   (unit == 1 || (place + 1 < bytes.size() && bytes[place + 1] == '\0'));
        };
        while (at < bytes.size() && !isAt(at, '\r') && !isAt(at, '\n')) {
            at += unit;
        }
        at += isAt(at, '\r') && isAt(at + unit, '\n') ? 2 * unit : unit;
        return std::min(at, bytes.size());
    }

    const IniDocument& m_document;
    std::string_view m_before;
    std::size_t m_shown;  // up to this byte
    std::vector<PreviewLine> m_lines;
};

}  // namespace

std::vector<PreviewLine> LinesOfEdits(const IniDocument& edited, std::string_view before) {
    const std::vector<IniDocument::Edit> edits = edited.Edits();
    PreviewLines lines(edited, before);
    for (std::size_t at = 0; at < edits.size(); ++at) {
        lines.ShowLinesBefore(edits[at].begin);
        lines.ShowEdit(edits[at]);
        lines.ShowLinesAfter(at + 1 < edits.size() ? edits[at + 1].begin : before.size());
    }
    if (!edits.empty()) {
        lines.ShowRest();
    }
    return lines.Take();
}

SavePreview PreviewSave(const KeyStore& store, const SettingsFiles& settings) {
    SavePreview preview;
    const auto pending = PendingKeysByFile(store, settings);
    for (std::size_t at = 0; at < pending.size(); ++at) {
        if (pending[at].empty()) {
            continue;
        }
        const SettingsFiles::File& file = settings.Files()[at];
        FilePreview shown = {file.path, {}, std::nullopt, IniEdit::Unchanged};
        IniDocument copy = *file.document;
        for (const KeyNumber key : pending[at]) {
            const IniEdit edit = ApplyPendingChange(copy, store, key);
            if (IsRefused(edit)) {
                shown.refusedKey = key;
                shown.refused = edit;
                break;
            }
            if (edit == IniEdit::Unchanged) {
                preview.withoutEdit.push_back(key);
            }
        }
        if (!shown.refusedKey) {
            shown.lines = LinesOfEdits(copy, file.document->Bytes());
        }
        preview.files.push_back(std::move(shown));
    }
    std::ranges::sort(preview.withoutEdit);
    return preview;
}

}  // namespace tamarind
