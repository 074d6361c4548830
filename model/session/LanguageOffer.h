#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/session/OpenDataFile.h"
#include "model/session/Workplace.h"

namespace tamarind {

// A language in which the program comes with descriptions of keys, too.
struct DescribedLanguage {
    std::uint16_t systemLanguage;  // the primary language of a LANGID of Windows
    const char* languageFile;      // below Languages
    const char* word;              // in the names of the data files
    const char* name;              // in English
    const char* nativeName;        // in itself
};

// The hash of the English data file of a kind of settings as it is shipped (HashBytes). A test
// compares it with the file.
std::uint64_t HashOfShippedFile(SettingsTarget target);

// Offers the descriptions of keys in the user's language. They take the place of the English ones
// only while those are the file in use and nobody has changed them.
class LanguageOffer {
public:
    LanguageOffer(Workplace& workplace, OpenDataFile& dataFile)
        : m_workplace(workplace), m_dataFile(dataFile) {}

    // The first start of a new user: where Windows speaks one of these languages, one question, in
    // it and in English, offers program and descriptions in it. Not if a data file was given on the
    // command line. What is chosen is stored like any other choice.
    void AtFirstStart(const std::string& commandLine);

    // When the user has chosen another language of the program: the data file for the settings that
    // are open, if there is one in that language and the user wants it. The choice is stored.
    std::optional<std::string> DataFileForLanguage();

private:
    std::string Translated(const DescribedLanguage& language, std::uint16_t number) const;
    std::optional<std::string> Counterpart(const DescribedLanguage& language,
                                           SettingsTarget target) const;
    void StoreDataFiles(const DescribedLanguage& language) const;

    Workplace& m_workplace;
    OpenDataFile& m_dataFile;
};

}  // namespace tamarind
