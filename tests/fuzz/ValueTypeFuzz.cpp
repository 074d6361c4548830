// The input is an entry of a file of types, a value and a description, each on a line of its own.
#include <algorithm>

#include "model/keys/ColorKeys.h"
#include "model/keys/ValueType.h"
#include "tests/fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    const std::string input = FuzzedFile(data, size);
    const std::size_t first = std::min(input.find('\n'), input.size());
    const std::size_t second = std::min(input.find('\n', first + 1), input.size());
    const std::string value = input.substr(std::min(first + 1, second), second - first);
    const auto lines = DescribedValues(std::string_view(input).substr(second));
    const ValueType type = ParseValueType(std::string_view(input).substr(0, first));
    for (const ValueType& one : {type, TypeOfDescription(lines)}) {
        for (const ValueChoice& choice : ChoicesOf(one, lines)) {
            Require(!WhatIsExpected(one, lines, choice.value));
            if (one.kind == ValueKind::Flags) {
                const std::string toggled = WithBitsToggled(one, value, choice.value);
                Require(HasBits(one, toggled, choice.value) != HasBits(one, value, choice.value));
                Require(!WhatIsExpected(one, lines, WithBitsToggled(one, "0", choice.value)));
            }
        }
        MeaningOf(one, lines, value);
        if (one.kind == ValueKind::Int && WhatIsExpected(one, lines, value)) {
            const std::string stepped = Stepped(one, value, 1);
            Require(!WhatIsExpected(one, lines, stepped));
        }
    }
    if (const auto color = ParseColor(value)) {
        for (const char* const like : {"", "$1", "#000000"}) {
            Require(ParseColor(FormatColor(*color, like)) == color);
        }
        Require(IsSameValue(value, FormatColor(*color, value)));
    }
    return 0;
}
