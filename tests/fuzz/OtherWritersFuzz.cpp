// The first byte of the input counts the bytes behind it that are another program's turns; the rest
// is a settings file.
#include "tests/fuzz/OtherWritersChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    const std::string input = FuzzedFile(data, size);
    const std::size_t turns = input.empty() ? 0 : static_cast<unsigned char>(input[0]) % 32U;
    CheckSavesBeside(input.substr(std::min<std::size_t>(input.size(), 1), turns),
                     input.substr(std::min(input.size(), turns + 1)));
    return 0;
}
