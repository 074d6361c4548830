#pragma once

#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

// Whether a key is in a file as "name=value" or as ";name=value".
enum class KeyForm { Active, Commented };

// A shown value as it is stored: without the spaces around it. A view into `shown`.
std::string_view StoredValue(std::string_view shown);

// Writes a value so that reading gives it back exactly, with the blanks and quotes around it: " a"
// is stored in double quotes. A value that reads so already is left as it is.
IniEdit WriteExactValue(IniDocument& document, std::string_view section, std::string_view key,
                        std::string_view value);

// Writes a value as the user sees it, so that reading gives it back without the spaces around it,
// or with them if `keepsSpaces`: a text that reading would strip of its outer quotes gets one more
// pair. `shown` is the whole value, however long; a line that reads as it already keeps its bytes.
// With `replacesOtherForm` the key
// has only the form `form` afterwards: its line of this form is used if there is one, otherwise the
// first line of the other form is turned into it where it stands. For the value 2 and the form
// Active:
//
//   before      replacesOtherForm    otherwise
//   A=1         A=2                  A=2
//   ;A=1        A=2                  ;A=1 and A=2
//   A=1, ;A=3   A=2                  A=2, ;A=3
IniEdit WriteShownValue(IniDocument& document, std::string_view section, std::string_view key,
                        KeyForm form, bool replacesOtherForm, std::string_view shown,
                        bool keepsSpaces = false);

}  // namespace tamarind
