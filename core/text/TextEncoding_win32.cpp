#include <windows.h>

#include "core/text/TextEncoding.h"
#include "core/text/Unicode.h"

namespace tamarind {

CodePage SystemAnsiCodePage() {
    return GetACP();
}

std::string DecodeCodePage(std::string_view bytes, CodePage codePage) {
    if (codePage == kCodePageUtf8) {
        return Utf8FromUtf16(Utf16FromUtf8(bytes));
    }
    const auto size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
    if (units <= 0) {
        return {};
    }
    std::u16string wide(static_cast<std::size_t>(units), u'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(wide.data()),
                        units);
    return Utf8FromUtf16(wide);
}

std::optional<std::string> EncodeCodePage(std::string_view text, CodePage codePage) {
    if (text.empty() || codePage == kCodePageUtf8) {
        return std::string(text);
    }
    const std::u16string wide = Utf16FromUtf8(text);
    const auto* units = reinterpret_cast<const wchar_t*>(wide.data());
    const auto count = static_cast<int>(wide.size());
    BOOL usedDefault = FALSE;
    const int size = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, units, count, nullptr, 0,
                                         nullptr, &usedDefault);
    if (size <= 0 || usedDefault) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, units, count, bytes.data(), size, nullptr,
                        &usedDefault);
    return bytes;
}

}  // namespace tamarind
