#include "core/ini/ShownValue.h"

#include "core/ini/IniParser.h"

namespace tamarind {
namespace {

// Readers remove outer blanks first and then one pair of quotes: one pair more protects both.
std::string WithSafeQuotes(std::string_view value) {
    const bool wouldBeStripped = TrimIniBlanks(value) != value || UnquoteIniValue(value) != value;
    const std::string quote = wouldBeStripped ? "\"" : "";
    return quote + std::string(value) + quote;
}

}  // namespace

std::string_view StoredValue(std::string_view shown) {
    return TrimIniSpaces(shown);
}

IniEdit WriteExactValue(IniDocument& document, std::string_view section, std::string_view key,
                        std::string_view value) {
    return document.FindValue(section, key) == value
               ? IniEdit::Unchanged
               : document.SetValue(section, key, WithSafeQuotes(value));
}

IniEdit WriteShownValue(IniDocument& document, std::string_view section, std::string_view key,
                        KeyForm form, bool replacesOtherForm, std::string_view shown,
                        bool keepsSpaces) {
    const std::string commented = ";" + std::string(key);
    const bool isCommented = form == KeyForm::Commented;
    const std::string_view name = isCommented ? std::string_view(commented) : key;
    const std::string_view otherName = isCommented ? key : std::string_view(commented);
    IniEdit result = IniEdit::Unchanged;
    // False if the edit was refused, which is the result then.
    const auto goesOnAfter = [&result](IniEdit edit) {
        result = edit == IniEdit::Unchanged ? result : edit;
        return !IsRefused(edit);
    };
    if (replacesOtherForm && !document.FindValue(section, name) &&
        !goesOnAfter(document.ToggleComment(section, key, isCommented))) {
        return result;
    }
    const std::string_view stored = keepsSpaces ? shown : StoredValue(shown);
    if (document.FindValue(section, name) != shown &&
        !goesOnAfter(document.SetValue(section, name, WithSafeQuotes(stored)))) {
        return result;
    }
    if (replacesOtherForm) {
        goesOnAfter(document.DeleteKey(section, otherName));
    }
    return result;
}

}  // namespace tamarind
