#include "model/StringTable.h"

#include <algorithm>
#include <iterator>

namespace tamarind {
namespace {

struct TextRow {
    std::uint16_t number;
    std::string_view text;
};

// Ascending. Language files give other texts for these numbers; "&" marks the access key.
constexpr TextRow kTexts[] = {
    {101, "&File"},
    {103, "&Open..."},
    {104, "&Save"},
    {107, "&Recent Files"},
    {108, "No Recent Files"},
    {109, "Clear List"},
    {110, "E&xit"},
    {112, "&Export..."},
    {113, "&Import..."},
    {114, "Open &Data File..."},
    {115, "Sa&ve Data File"},
    {116, "Save and Restart Total &Commander"},
    {121, "&Edit"},
    {124, "Add Se&parator"},
    {132, "&Delete"},
    {134, "De&finition"},
    {140, "&Comment"},
    {141, "&View"},
    {142, "&Toolbar"},
    {150, "&Options..."},
    {151, "&Description"},
    {152, "All &Keys"},
    {153, "&Active Keys"},
    {154, "&Inactive Keys"},
    {161, "&Help"},
    {162, "Help &Topics"},
    {163, "&About..."},
    {190, "&Undo"},
    {191, "&Redo"},
    {192, "&Edit Value"},
    {193, "Value = &1"},
    {194, "Value = &0"},
    {195, "&Browse Value..."},
    {200, "Favori&tes"},
    {201, "&Add to Favorites..."},
    {202, "&Organize Favorites..."},
    {203, "Favorite Name:"},
    {204, "Cannot find this favorite key!"},
    {205, "Add Favorite"},
    {206, "Organize Favorites"},
    {207, "Favorites list cannot contain more than 99 items."},
    {208, "There is already a favorite with that key."},
    {250, "&Search"},
    {251, "&Find..."},
    {252, "Find &Next"},
    {253, "Find"},
    {254, "Find What:"},
    {255, "Search in:"},
    {256, "&Key Name"},
    {257, "Key &Description"},
    {258, "Match Whole Word &Only"},
    {259, "Cannot find"},
    {1001, "Options"},
    {1002, "Layout"},
    {1005, "Operation"},
    {1006, "Language"},
    {1008, "OK"},
    {1009, "Cancel"},
    {1010, "&Apply"},
    {1021, "Visual Effects :"},
    {1024, "Show &Grid Lines"},
    {1025, "Fixed &Borders"},
    {1026, "&Flat User Interface"},
    {1044, "&Change..."},
    {1051, "Text :"},
    {1052, "Foreground"},
    {1053, "Background"},
    {1060, "Active Key"},
    {1065, "Font :"},
    {1089, "Change Language :"},
    {1090, "Use &Default Language"},
    {1091, "&Other"},
    {1120, "&Auto select the next key after editing."},
    {1121, "Auto &restart Total Commander after saving changes."},
    {1282, "&Up"},
    {1283, "Dow&n"},
    {1501, "About"},
    {1502, "Programmed by :"},
    {1503, "Version"},
    {1505, "For the latest information on this program please visit the program home page."},
    {1506, "Web site"},
    {1507, "e-mail"},
    {3009, "Are you sure?"},
    {3020, "Save changes to"},
    {3021, "Cannot find this file"},
    {3022, "Please verify that the correct path and file name are given."},
    {3045, "Cannot find Total Commander settings file [Wcx_ftp.ini]"},
    {3046, "Cannot find Total Commander settings file [Wincmd.ini]"},
    {3048, "Cannot find language file!"},
    {3056, "File not found."},
    {3073, "Total Commander Configuration"},
    {3074, "Cannot find data file! Please open one to continue"},
    {3075,
     "The target section for this category is missing! or this category hasn't any "
     "key. Please correct this error in the current data file."},
    {3076, "Save changes to the program data file?"},
    {3077, "Key(s)"},
    {3078, "Data File:"},
    {3079, "Target Section:"},
    {3080, "Description not available!"},
    {4001, "Cannot read this file"},
    {4002, "This data file describes more than 32,767 keys. The first 32,767 are shown."},
    {4003, "The file does not exist."},
    {4004, "The path names a folder."},
    {4005, "Access to it is denied."},
    {4006, "Another program is using it."},
    {4007, "It is larger than 64 MB, which no settings file is."},
    {4008, "Windows reported an error while reading it."},
};

}  // namespace

std::string_view BuiltInText(std::uint16_t number) {
    const auto* const row = std::lower_bound(
        std::begin(kTexts), std::end(kTexts), number,
        [](const TextRow& entry, std::uint16_t wanted) { return entry.number < wanted; });
    return row != std::end(kTexts) && row->number == number ? row->text : std::string_view();
}

}  // namespace tamarind
