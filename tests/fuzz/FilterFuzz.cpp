// The input is a filter, keywords of each key, and a data file; the first two are a line each. Hits
// are those that a plain look at all texts finds, and marks lie in the text and apart.
#include <algorithm>
#include <set>

#include "core/text/Folding.h"
#include "core/text/Unicode.h"
#include "model/files/DataFile.h"
#include "model/keys/FilterIndex.h"
#include "tests/fuzz/Require.h"

namespace tamarind {
namespace {

bool IsIn(std::string_view text, const FilterTerm& term) {
    std::size_t length = 0;
    const std::string folded = Folded(text);
    const std::size_t at = FindTerm(folded, term, 0, length);
    Require(at == std::string::npos || at + length <= folded.size());
    return at != std::string::npos;
}

bool IsAnywhere(const KeyRecord& record, std::string_view keywords, const FilterTerm& term) {
    bool isIn = IsIn(record.keyName, term) || IsIn(keywords, term) || IsIn(record.category, term);
    for (std::string_view rest = record.description; !isIn && !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('@'));
        isIn = IsIn(line, term);
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
    return isIn;
}

void CheckMarks(std::string_view text, const FilterQuery& query) {
    std::size_t end = 0;
    for (const TextPart& part : MarkedParts(text, query, FilterField::Any)) {
        Require(part.length > 0 && (part.start > end || end == 0));
        end = part.start + part.length;
    }
    Require(end <= Utf16FromUtf8(text).size());
}

}  // namespace
}  // namespace tamarind

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    const std::string input = FuzzedFile(data, size);
    const std::size_t first = std::min(input.find('\n'), input.size());
    const std::size_t second =
        std::min(input.find('\n', std::min(first + 1, input.size())), input.size());
    const FilterQuery query = ParseFilter(input.substr(0, first));
    const std::string keywords = input.substr(first, second - first);
    KeyStore store;
    LoadDataFile(
        std::make_shared<const IniDocument>(
            IniDocument::Parse(input.substr(second), kCodePageUtf8)),
        "", [] {}, store);
    FilterSources sources;
    sources.headingOf = [](std::string_view) { return std::string(); };
    sources.keywordsOf = [&](KeyNumber) { return keywords; };
    sources.typeOf = [](KeyNumber key) { return static_cast<ValueKind>(key % 3); };
    const std::vector<KeyNumber> hits = FilterIndex(store, sources).Find(query);
    const std::set<KeyNumber> found(hits.begin(), hits.end());
    Require(found.size() == hits.size());
    const bool isPlain = std::ranges::all_of(
        query.terms, [](const FilterTerm& term) { return term.field == FilterField::Any; });
    for (KeyNumber key = 1; key <= store.Size(); ++key) {
        const KeyRecord record = store.Record(key);
        const bool fits = isPlain && std::ranges::all_of(query.terms, [&](const FilterTerm& term) {
                              return IsAnywhere(record, keywords, term) != term.isExcluded;
                          });
        Require(!isPlain || fits == found.contains(key));
        CheckMarks(record.keyName, query);
        CheckMarks(DescriptionForDisplay(record.description), query);
    }
    CheckMarks(input, query);
    return 0;
}
