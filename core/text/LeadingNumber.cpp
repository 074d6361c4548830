#include "core/text/LeadingNumber.h"

#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>
#include <system_error>

namespace tamarind {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int DigitValue(char c) {
    if (IsDigit(c)) {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 99;
}

double PrefixedNumber(std::string_view digits, int base) {
    double number = 0;
    for (const char c : digits) {
        if (DigitValue(c) >= base) {
            break;
        }
        number = number * base + DigitValue(c);
    }
    return number;
}

// Length of the longest prefix of `text` that is a decimal number. An "e" without digits after it
// does not belong to the number.
std::size_t DecimalLength(std::string_view text) {
    std::size_t at = 0;
    const auto skipDigits = [&] {
        const std::size_t start = at;
        while (at < text.size() && IsDigit(text[at])) {
            ++at;
        }
        return at - start;
    };
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    std::size_t digits = skipDigits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += skipDigits();
    }
    if (digits == 0) {
        return 0;
    }
    const std::size_t mantissa = at;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        if (skipDigits() == 0) {
            return mantissa;
        }
    }
    return at;
}

}  // namespace

double LeadingNumber(std::string_view text) {
    // One digit is by far the most frequent value.
    if (text.size() == 1) {
        return IsDigit(text[0]) ? text[0] - '0' : 0;
    }
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.size() > 2 && text[0] == '&') {
        const char kind = static_cast<char>(text[1] | 0x20);
        if (kind == 'h' || kind == 'o') {
            return PrefixedNumber(text.substr(2), kind == 'h' ? 16 : 8);
        }
    }
    const std::size_t length = DecimalLength(text);
    return length == 0 ? 0.0 : std::strtod(std::string(text.substr(0, length)).c_str(), nullptr);
}

std::int32_t LeadingInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double number = LeadingNumber(text);
    if (number >= static_cast<double>(Limits::max())) {
        return Limits::max();
    }
    return number <= static_cast<double>(Limits::min()) ? Limits::min()
                                                        : static_cast<std::int32_t>(number);
}

std::optional<std::int64_t> WholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

}  // namespace tamarind
