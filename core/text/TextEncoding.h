#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamarind {

// A Windows code page number, such as 1252 or 936.
using CodePage = unsigned;
inline constexpr CodePage kCodePageUtf8 = 65001;

// What the first bytes of a file say about the encoding of all the others.
enum class FileMark : std::uint8_t { None, Utf8, Utf16Le };

inline constexpr std::string_view kUtf8MarkBytes = "\xEF\xBB\xBF";
inline constexpr std::string_view kUtf16LeMarkBytes = "\xFF\xFE";

// The mark that `bytes` begin with.
FileMark FindFileMark(std::string_view bytes);
std::string_view MarkBytes(FileMark mark);

// The code page in which Windows reads files without a mark.
CodePage SystemAnsiCodePage();

// The code page of a Windows font character set (such as 204 for Cyrillic); 1, the default set,
// and unknown numbers give the system's.
CodePage CodePageOfCharset(int charset);

// Bytes of a code page as UTF-8. Bytes that mean nothing there become U+FFFD or what Windows
// makes of them; no input fails.
std::string DecodeCodePage(std::string_view bytes, CodePage codePage);

// UTF-8 text in a code page, or nothing when it holds a character that the code page lacks; a
// look-alike is never taken instead.
std::optional<std::string> EncodeCodePage(std::string_view text, CodePage codePage);

// UTF-16LE bytes, without a mark; an odd last byte is left out.
std::string DecodeUtf16Le(std::string_view bytes);
std::string EncodeUtf16Le(std::string_view text);

}  // namespace tamarind
