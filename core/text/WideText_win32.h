#pragma once

#include <string>
#include <string_view>

#include "core/text/Unicode.h"

namespace tamarind {

// Text for the W functions of Windows, and from them. Malformed text becomes U+FFFD.
inline std::wstring Widen(std::string_view text) {
    const std::u16string units = Utf16FromUtf8(text);
    return {units.begin(), units.end()};
}

inline std::string Narrow(std::wstring_view text) {
    return Utf8FromUtf16(
        std::u16string_view(reinterpret_cast<const char16_t*>(text.data()), text.size()));
}

}  // namespace tamarind
