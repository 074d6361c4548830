#include "core/text/TextEncoding.h"

#include "core/text/Unicode.h"

namespace tamarind {

FileMark FindFileMark(std::string_view bytes) {
    if (bytes.substr(0, kUtf8MarkBytes.size()) == kUtf8MarkBytes) {
        return FileMark::Utf8;
    }
    if (bytes.substr(0, kUtf16LeMarkBytes.size()) == kUtf16LeMarkBytes) {
        return FileMark::Utf16Le;
    }
    return FileMark::None;
}

std::string_view MarkBytes(FileMark mark) {
    switch (mark) {
        case FileMark::Utf8:
            return kUtf8MarkBytes;
        case FileMark::Utf16Le:
            return kUtf16LeMarkBytes;
        case FileMark::None:
            break;
    }
    return {};
}

// Source: Microsoft, the character sets (ANSI_CHARSET, SHIFTJIS_CHARSET, ...) of
// TranslateCharsetInfo.
CodePage CodePageOfCharset(int charset) {
    switch (charset) {
        case 0:
            return 1252;
        case 128:
            return 932;
        case 129:
            return 949;
        case 134:
            return 936;
        case 136:
            return 950;
        case 161:
            return 1253;
        case 162:
            return 1254;
        case 163:
            return 1258;
        case 177:
            return 1255;
        case 178:
            return 1256;
        case 186:
            return 1257;
        case 204:
            return 1251;
        case 222:
            return 874;
        case 238:
            return 1250;
        default:
            return SystemAnsiCodePage();
    }
}

std::string DecodeUtf16Le(std::string_view bytes) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
        units[i] = static_cast<char16_t>(low | (high << 8));
    }
    return Utf8FromUtf16(units);
}

std::string EncodeUtf16Le(std::string_view text) {
    std::string bytes;
    for (const char16_t unit : Utf16FromUtf8(text)) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace tamarind
