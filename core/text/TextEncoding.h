#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamarind {

// A Windows code page number, such as 1252 or 936.
using CodePage = unsigned;
inline constexpr CodePage kCodePageUtf8 = 65001;

// What the first bytes of a file (byte order mark) say about the encoding of the rest.
enum class FileMark : std::uint8_t { None, Utf8, Utf16Le };

inline constexpr std::string_view kUtf8MarkBytes = "\xEF\xBB\xBF";
inline constexpr std::string_view kUtf16LeMarkBytes = "\xFF\xFE";

// The mark that `bytes` begin with, and the bytes of a mark.
FileMark FindFileMark(std::string_view bytes);
std::string_view MarkBytes(FileMark mark);

// The code page in which Windows reads files without a mark (GetACP).
CodePage SystemAnsiCodePage();

// The code page of a Windows font character set, such as 1251 for 204 (Cyrillic). The default set,
// 1, and unknown numbers give SystemAnsiCodePage.
CodePage CodePageOfCharset(int charset);

// Bytes of a code page as UTF-8. Invalid bytes become U+FFFD or what Windows makes of them. Empty
// if the system does not have that code page.
std::string DecodeCodePage(std::string_view bytes, CodePage codePage);

// UTF-8 text in a code page; nothing if the code page lacks one of its characters. A similar
// character is never used instead.
std::optional<std::string> EncodeCodePage(std::string_view text, CodePage codePage);

// Between UTF-8 and UTF-16LE bytes without a mark. An odd last byte is left out.
std::string DecodeUtf16Le(std::string_view bytes);
// The opposite: malformed UTF-8 becomes U+FFFD.
std::string EncodeUtf16Le(std::string_view text);

}  // namespace tamarind
