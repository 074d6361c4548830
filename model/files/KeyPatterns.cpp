#include "model/files/KeyPatterns.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace tamarind {
namespace {

constexpr std::string_view kDigits = "0123456789";
// A name with more runs of digits is looked up with the last ones as they are.
constexpr std::size_t kMaxRuns = 4;

struct Run {
    std::size_t begin;
    std::size_t end;
};

std::vector<Run> RunsOfDigits(std::string_view name) {
    std::vector<Run> runs;
    std::size_t begin = name.find_first_of(kDigits);
    while (begin != std::string_view::npos && runs.size() < kMaxRuns) {
        const std::size_t end = std::min(name.find_first_not_of(kDigits, begin), name.size());
        runs.push_back({begin, end});
        begin = name.find_first_of(kDigits, end);
    }
    return runs;
}

}  // namespace

std::optional<IniDocument::LineId> FindKeyOrPattern(const IniDocument& file,
                                                    IniDocument::SectionId section,
                                                    std::string_view key) {
    const std::vector<Run> runs = RunsOfDigits(key);
    // Each bit says that "#" stands for one of the runs; none does in the exact name.
    for (unsigned marks = 0; marks < 1U << runs.size(); ++marks) {
        std::string name(key);
        for (std::size_t run = runs.size(); run-- > 0;) {
            if ((marks >> run & 1U) != 0) {
                name.replace(runs[run].begin, runs[run].end - runs[run].begin, 1, '#');
            }
        }
        if (const auto line = file.FindKey(section, name)) {
            return line;
        }
    }
    return std::nullopt;
}

}  // namespace tamarind
