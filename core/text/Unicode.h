#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamarind {

// One decoded code point and the number of bytes it took (1 to 4). Malformed input decodes to
// U+FFFD and takes one byte, so a walk over any byte string ends.
struct CodePoint {
    char32_t value;
    std::size_t length;
};

// Decodes the code point at the start of `text`, which must not be empty.
CodePoint DecodeUtf8(std::string_view text);

// Appends one code point in UTF-8; surrogates and values beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

// Conversions between the program's inner form (UTF-8) and that of Windows (UTF-16). Malformed
// input, lone surrogates included, becomes U+FFFD.
std::u16string Utf16FromUtf8(std::string_view text);
std::string Utf8FromUtf16(std::u16string_view units);

bool IsAscii(std::string_view text);
bool IsValidUtf8(std::string_view text);

// Length in UTF-16 code units, the unit of every limit and position that users and files know.
std::size_t Utf16Length(std::string_view text);

// The longest start of `text` that holds at most `maxUnits` UTF-16 code units; a surrogate pair
// is never split.
std::string_view CutToUtf16Units(std::string_view text, std::size_t maxUnits);

// Simple (one to one) case mappings; code points beyond the Basic Multilingual Plane stay as
// they are, as in the name comparison of Windows.
char32_t SimpleUpperCase(char32_t codePoint);
char32_t SimpleLowerCase(char32_t codePoint);

// Comparison of section and key names: equal by simple upper case, code point by code point.
bool EqualsIgnoreCase(std::string_view left, std::string_view right);

// The same text for any two that EqualsIgnoreCase calls equal: in simple upper case, with U+FFFD
// for what is malformed.
std::string ToUpperCase(std::string_view text);

// In simple lower case, with U+FFFD for what is malformed. Some texts that EqualsIgnoreCase calls
// equal differ in it.
std::string ToLowerCase(std::string_view text);

// Equal for any two texts that EqualsIgnoreCase calls equal. The same in every process and version
// of the program: other copies know locks and messages by it.
std::uint64_t HashIgnoreCase(std::string_view text);

// For tables in memory: as HashIgnoreCase, but other in each process, so that nobody can choose
// texts of one hash without knowing its seed.
std::uint32_t TableHashIgnoreCase(std::string_view text);

// Takes away what is by chance, for tests and measurements; before the first table is made.
void SetTableHashSeed(std::uint64_t seed);

// Tells contents of files apart. The same in every process and version of the program, so that it
// may be stored. Contents of one length that differ in a single step of eight bytes never have the
// same hash, others only by chance; but nothing keeps somebody from making two that have.
std::uint64_t HashBytes(std::string_view bytes);

}  // namespace tamarind
