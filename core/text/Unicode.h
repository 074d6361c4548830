#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamarind {

// One decoded code point and the number of bytes that it took (1 to 4). Malformed input decodes to
// U+FFFD and takes one byte, so that a walk over any bytes comes to an end.
struct CodePoint {
    char32_t value;
    std::size_t length;
};

// Decodes the code point at the start of `text`, which must not be empty.
CodePoint DecodeUtf8(std::string_view text);

// Appends one code point in UTF-8; surrogates and values beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

// Between UTF-8, the form of all text in the program, and the UTF-16 of Windows. Malformed input,
// lone surrogates included, becomes U+FFFD.
std::u16string Utf16FromUtf8(std::string_view text);
std::string Utf8FromUtf16(std::u16string_view units);

bool IsAscii(std::string_view text);
// Whether no byte of the text would decode to U+FFFD as malformed. A real U+FFFD is valid.
bool IsValidUtf8(std::string_view text);

// Length in UTF-16 code units, the unit of all limits and positions that users and files know.
// Malformed text gives some number, without an error.
std::size_t Utf16Length(std::string_view text);

// The longest prefix of `text` with at most `maxUnits` UTF-16 code units. A surrogate pair is never
// split.
std::string_view CutToUtf16Units(std::string_view text, std::size_t maxUnits);

// Simple (one to one) case mappings. Code points beyond the Basic Multilingual Plane stay as they
// are, as in the name comparison of Windows.
char32_t SimpleUpperCase(char32_t codePoint);
char32_t SimpleLowerCase(char32_t codePoint);

// How section and key names compare: equal in simple upper case, code point by code point.
bool EqualsIgnoreCase(std::string_view left, std::string_view right);

// The text in simple upper case, with U+FFFD for malformed bytes. The same for any two texts that
// EqualsIgnoreCase calls equal.
std::string ToUpperCase(std::string_view text);

// In simple lower case, with U+FFFD for what is malformed. Some texts that EqualsIgnoreCase calls
// equal differ in it.
std::string ToLowerCase(std::string_view text);

// Equal for any two texts that EqualsIgnoreCase calls equal, and the same in every process and
// version of the program: names of locks and messages between copies of it are made from this hash.
std::uint64_t HashIgnoreCase(std::string_view text);

// For tables in memory: as HashIgnoreCase, but different in each process, so that nobody can
// prepare a file whose names all have the same hash.
std::uint32_t TableHashIgnoreCase(std::string_view text);

// Makes TableHashIgnoreCase repeatable, for tests and measurements. To be called before any table
// is made; not thread-safe.
void SetTableHashSeed(std::uint64_t seed);

// Tells contents of files apart. The same in every process and version of the program, so it may be
// stored. Two contents of one length that differ within one aligned word of eight bytes never have
// the same hash, others only by chance. It does not protect against somebody who makes two such
// contents on purpose.
std::uint64_t HashBytes(std::string_view bytes);

}  // namespace tamarind
