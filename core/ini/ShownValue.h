#pragma once

#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

enum class KeyForm { Active, Commented };

// A shown value as it is stored: without the spaces around it.
std::string_view StoredValue(std::string_view shown);

// Writes a value so that reading gives it back with the blanks around it.
IniEdit WriteExactValue(IniDocument& document, std::string_view section, std::string_view key,
                        std::string_view value);

// Writes a value as the user sees it, so that reading gives it back: a text that reading would
// strip of its outer quotes gets one more pair. `shown` is the whole value, however long: a line
// that reads as it already keeps its bytes. With `replacesOtherForm` the key has this form only
// afterwards: a line of this form is used if there is one, else the first line of the other form
// becomes it where it stands.
IniEdit WriteShownValue(IniDocument& document, std::string_view section, std::string_view key,
                        KeyForm form, bool replacesOtherForm, std::string_view shown);

}  // namespace tamarind
