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
constexpr std::string_view kBeforeNames = "_+|";

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

// Calls `find` with the name, then with the patterns that it fits, until there is a result.
template <typename Find>
auto FindNameOrPattern(std::string_view name, Find find) -> decltype(find(std::string())) {
    const std::vector<Run> runs = RunsOfDigits(name);
    // Each bit says that "#" stands for one of the runs; none does in the exact name.
    for (unsigned marks = 0; marks < 1U << runs.size(); ++marks) {
        std::string pattern(name);
        for (std::size_t run = runs.size(); run-- > 0;) {
            if ((marks >> run & 1U) != 0) {
                pattern.replace(runs[run].begin, runs[run].end - runs[run].begin, 1, '#');
            }
        }
        if (const auto found = find(pattern)) {
            return found;
        }
    }
    const std::size_t last = name.rfind('_');
    if (last != std::string_view::npos && last > 0) {
        if (const auto found = find("*" + std::string(name.substr(last)))) {
            return found;
        }
    }
    for (std::size_t at = name.size(); at-- > 1;) {
        if (kBeforeNames.find(name[at - 1]) != std::string_view::npos) {
            if (const auto found = find(std::string(name.substr(0, at)) + "*")) {
                return found;
            }
        }
    }
    return find("*");
}

}  // namespace

std::optional<IniDocument::LineId> FindKeyOrPattern(const IniDocument& file,
                                                    IniDocument::SectionId section,
                                                    std::string_view key) {
    return FindNameOrPattern(key,
                             [&](const std::string& name) { return file.FindKey(section, name); });
}

std::optional<IniDocument::SectionId> FindSectionOrPattern(const IniDocument& file,
                                                           std::string_view prefix,
                                                           std::string_view section) {
    return FindNameOrPattern(section, [&](const std::string& name) {
        return file.FindSection(std::string(prefix) + name);
    });
}

std::string_view NameWithinPattern(std::string_view pattern, std::string_view name) {
    const std::size_t mark = pattern.find_first_of("*#");
    if (mark == std::string_view::npos) {
        return name;
    }
    const std::size_t behind = pattern.size() - mark - 1;
    if (pattern[mark] == '*') {
        return name.substr(mark, name.size() - mark - behind);
    }
    return name.substr(mark, name.find_first_not_of(kDigits, mark) - mark);
}

}  // namespace tamarind
