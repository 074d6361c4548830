#include "model/session/TextFilter.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "core/text/Folding.h"
#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

// Each term as "field part|part", with "-" first if it leaves out.
std::vector<std::string> TermsOf(const std::string& text) {
    constexpr const char* kNames[] = {"",          "name ", "value ", "section ",
                                      "category ", "is ",   "type "};
    std::vector<std::string> terms;
    for (const FilterTerm& term : ParseFilter(text).terms) {
        std::string shown = (term.isExcluded ? "-" : "") +
                            std::string(kNames[static_cast<std::size_t>(term.field)]);
        if (term.field == FilterField::State) {
            shown += WordOf(term.state);
        } else if (term.field == FilterField::Type) {
            shown += WordOf(term.type);
        }
        for (std::size_t part = 0; part < term.parts.size(); ++part) {
            shown += (part > 0 ? "|" : "") + term.parts[part];
        }
        terms.push_back(shown);
    }
    return terms;
}

TEST(FilterQueryTest, TextsBecomeTerms) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"", {}},
        {" \t ", {}},
        {"Font  SIZE font", {"font", "size"}},
        {"\"Font size\" x", {"font size", "x"}},
        {"\"font size", {"font size"}},
        {"\"\" a", {"a"}},
        {"th*b*size *.txt *", {"th|b|size", ".txt", "*"}},
        {"\"a*b\"", {"a*b"}},
        {"-log - -\"a b\"", {"-log", "-", "-a b"}},
        {"name:Font NAME:\"a b\" -value:1*2", {"name font", "name a b", "-value 1|2"}},
        {"section:x category:y", {"section x", "category y"}},
        {"is:set -IS:Absent type:Color", {"is set", "-is absent", "type color"}},
        {"is: is:foo type:x name: names:a", {"is:", "is:foo", "type:x", "name:", "names:a"}},
        {"\xC3\x9C"
         "bergr\xC3\xB6\xC3\x9F"
         "e",
         {"ubergrosse"}},
    };
    for (const auto& [text, terms] : cases) {
        EXPECT_EQ(TermsOf(text), terms) << text;
    }
}

// The text with its marks in brackets.
std::string Marked(const std::string& text, const std::string& filter) {
    std::u16string units = Utf16FromUtf8(text);
    const std::vector<TextPart> parts = MarkedParts(text, ParseFilter(filter), FilterField::Name);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        units.insert(part->start + part->length, 1, u']');
        units.insert(part->start, 1, u'[');
    }
    return Utf8FromUtf16(units);
}

TEST(FilterQueryTest, MarksAreWhereTheWordsStand) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"FontSize", "size", "Font[Size]"},
        {"FontSize", "size font", "[FontSize]"},
        {"abcabc", "b -c", "a[b]ca[b]c"},
        {"thumb size thumbsize", "th*size", "thumb size [thumbsize]"},
        {"\xF0\x9F\x98\x80 Gr\xC3\xB6\xC3\x9F"
         "e",
         "os", "\xF0\x9F\x98\x80 Gr[\xC3\xB6\xC3\x9F]e"},
        {"e\xCC\x81t\xC3\xA9", "ete", "[e\xCC\x81t\xC3\xA9]"},
        {"FontSize", "value:size name:font", "[Font]Size"},
        {"FontSize", "is:set", "FontSize"},
    };
    for (const auto& [text, filter, marked] : cases) {
        EXPECT_EQ(Marked(text, filter), marked) << text << ", " << filter;
    }
}

TEST(FilterQueryTest, FoldedTextsHaveNoCaseAndNoAccents) {
    const std::pair<std::string, std::string> cases[] = {
        {"\xC3\x84\xC3\xA9\xC5\x82\xC4\xB0\xE1\xBA\xBF", "aelie"},  // Latin
        {"\xCE\x86\xCF\x82", "\xCE\xB1\xCF\x83"},                   // Greek
        {"\xD0\x81\xD0\x99", "\xD0\xB5\xD0\xB8"},                   // Cyrillic
        {"\xD7\xA9\xD6\xB8\xD7\x9C", "\xD7\xA9\xD7\x9C"},           // Hebrew with a point
        {"\xD0\xAF\xE6\xBC\xA2\r\n\x80", "\xD1\x8F\xE6\xBC\xA2  \xEF\xBF\xBD"},
    };
    for (const auto& [text, folded] : cases) {
        EXPECT_EQ(Folded(text), folded);
    }
}

class TextFilterTest : public SessionTest {
protected:
    TextFilter& Filter() { return Session().Filter(); }

    std::vector<std::string> RowsFor(const std::string& filter) {
        Filter().SetText(filter);
        return world.Rows();
    }
    void Start() {
        world.disk.Put("C:\\Tamarind\\Data Files\\Wincmd.keywords",
                       "[english:Configuration]\r\nHistory#=visited\r\n"
                       "[german:configuration]\r\nHistory#=besucht, Verlauf\r\n"
                       "ShowHidden=unsichtbar\r\n");
        StartWith(
            {"[Configuration]\r\nPanels=1\r\n;ShowHidden=9\r\nHistory1=c:\\Big Font\r\n",
             "\xEF\xBB\xBF[/Screen]\r\n[Fonts]\r\nCategoryTargetSection=Colors\r\n"
             "Font=\r\nFontSize=10///How large the letters are.\r\nBigFont=///\r\n"
             "[/Other]\r\n[Rest]\r\nCategoryTargetSection=Configuration\r\n"
             "Panels=0///How panels stand.@0 = one font@1 = two\r\n"
             "ShowHidden=1///Shows files; the font is grey.\r\nHistory1=///\r\nHistory2=///\r\n",
             ""});
    }
};

TEST_F(TextFilterTest, HitsAreRankedByWhereTheWordStands) {
    Start();
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        // Name, its beginning, in it, meaning of a value, description or value.
        {"font",
         {"Font", "FontSize", "BigFont", "Panels=1", "ShowHidden=9", "History1=c:\\Big Font"}},
        {"size font", {"FontSize"}},
        {"font big", {"BigFont", "History1=c:\\Big Font"}},
        {"screen", {"Font", "FontSize", "BigFont"}},
        {"verlauf -history1", {"History2"}},
        {"VISITED besucht", {"History1=c:\\Big Font", "History2"}},
        {"section:colors size", {"FontSize"}},
        {"category:rest -name:history value:9", {"ShowHidden=9"}},
        {"value:font", {"History1=c:\\Big Font"}},
        {"\"big font\"", {"History1=c:\\Big Font"}},
        {"is:set", {"Panels=1", "History1=c:\\Big Font"}},
        {"is:commented", {"ShowHidden=9"}},
        {"is:absent -font", {"History2"}},
        {"is:modified", {"Panels=1"}},
        {"is:undescribed -is:absent", {"History1=c:\\Big Font"}},
        {"type:bool", {"Panels=1"}},
        {"none", {}},
    };
    for (const auto& [filter, rows] : cases) {
        EXPECT_EQ(RowsFor(filter), rows) << filter;
    }
    Filter().SetText("panels");
    Set(0, "5");
    EXPECT_THAT(RowsFor("is:changed"), ElementsAre("Panels=5"));
}

TEST_F(TextFilterTest, TheTreeNarrowsAndCountsTheHits) {
    Start();
    Selection().SelectCategory(1);
    EXPECT_EQ(Selection().HitsOf(kRootNode), std::nullopt);
    Filter().SetText("font");
    EXPECT_EQ(Selection().SelectedNode(), kRootNode);
    const std::size_t hits[] = {6, 3, 3, 3, 3};
    for (NodeIndex node = kRootNode; node < 4; ++node) {
        EXPECT_EQ(Selection().HitsOf(node), hits[node + 1]) << node;
    }
    EXPECT_EQ(Texts().Counter(), "6 of 7 keys");
    Selection().SelectCategory(2);
    EXPECT_FALSE(Selection().ShowsHeading());
    EXPECT_THAT(world.Rows(), ElementsAre("Panels=1", "ShowHidden=9", "History1=c:\\Big Font"));
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_EQ(Texts().Counter(), "2 of 7 keys, 1 hidden by View > Active Keys");
    EXPECT_EQ(Filter().EmptyText(), "");
    Filter().SetText("grey");
    EXPECT_EQ(Filter().EmptyText(), "1 hidden by View > Active Keys");
    Filter().SetText("xyz");
    EXPECT_EQ(Filter().EmptyText(), "No key contains 'xyz'");
    Filter().SetText("size");
    Selection().SelectCategory(3);
    EXPECT_EQ(Filter().EmptyText(), "1 in " + Texts().Root());
    EXPECT_THAT(world.prompts.messages, IsEmpty());

    // An edit filters nothing anew; the filter, asked again, does.
    Selection().SetKeyFilter(KeyFilter::ShowAll);
    Filter().SetText("value:font");
    Set(0, "x");
    EXPECT_THAT(world.Rows(), ElementsAre("History1=x"));
    Filter().ApplyAgain();
    EXPECT_THAT(world.Rows(), IsEmpty());
}

TEST_F(TextFilterTest, AnEndGoesBackAndAGoalElsewhereEndsIt) {
    Start();
    const auto place = [this] {
        return std::pair(Selection().SelectedNode(), Selection().Rows().CurrentKey());
    };
    using Place = std::pair<NodeIndex, std::optional<KeyNumber>>;
    Selection().SelectCategory(3);
    Filter().SetText("font");
    Filter().Clear();
    EXPECT_EQ(Selection().HitsOf(kRootNode), std::nullopt);
    EXPECT_EQ(place(), Place(1, 1)) << "the key's own category";
    Filter().SetText("show");
    Filter().SetText("showh");
    Selection().SelectCategory(3);
    Selection().SelectCategory(kRootNode);
    Filter().SetText("");
    EXPECT_EQ(place(), Place(3, 5));
    Filter().SetText("hist");
    Filter().SetText("histxxx");
    Filter().Clear();
    EXPECT_EQ(place(), Place(3, 4)) << "the category that was shown before";
    EXPECT_EQ(Texts().Counter(), "4  Key(s)");

    const std::function<void()> goals[] = {
        [this] { Selection().GoToKey(6); },
        [this] { FavoriteKeys().FavoriteDefinition("History1"); },
        [this] {
            Finding().SetSearchText("history1");
            Finding().FindNextString();
        },
        [this] {
            Filter().SetText("history1");
            EXPECT_TRUE(States().IsEnabled(Command::SearchShowInCategory));
            Selection().ShowInCategory();
        },
    };
    for (const auto& go : goals) {
        Filter().SetText("size");
        go();
        EXPECT_EQ(Filter().Text(), "");
        EXPECT_FALSE(Filter().IsOn());
        EXPECT_EQ(Selection().Rows().CurrentKey(), 6U);
    }
    EXPECT_EQ(Selection().SelectedNode(), 3);
}

TEST_F(TextFilterTest, OtherTextsAreSearchedWhenTheyChange) {
    Start();
    Filter().SetText("large");
    Filter().Clear();
    Selection().GoToKey(1);
    DataFile().ChangeDescription("quite large");
    EXPECT_THAT(RowsFor("large"), ElementsAre("Font", "FontSize"));

    // The keys of the other data file, which take over with the filter.
    world.disk.Put(SessionWorld::kWcxFtpData,
                   "[TargetIniFile]\r\nWcx_ftp=1\r\n[Ftp]\r\nCategoryTargetSection=General\r\n"
                   "Passive=1///\r\nActive=1///Not passive\r\n");
    Filter().Clear();
    Selection().SelectCategory(3);
    Filter().SetText("passive");
    EXPECT_EQ(Filter().OtherHits(), "2 in Wcx_ftp");
    Filter().SetText("active size");
    EXPECT_EQ(Filter().OtherHits(), "");
    Filter().SetText("passive");
    world.prompts.answers = {Answer::No};  // the changed description
    Session().OpenOtherDataFile();
    EXPECT_THAT(world.Rows(), ElementsAre("Passive", "Active"));
    EXPECT_EQ(Filter().OtherHits(), "");
    // The category before was one of the former file.
    Filter().SetText("nothing at all");
    Filter().Clear();
    EXPECT_EQ(Selection().SelectedNode(), kRootNode);
}

TEST_F(TextFilterTest, TheLastTextsAreKept) {
    Start();
    for (const char* const text : {"\"last one\"", "b", "a", "B", " ", "c\td", "\"first one\""}) {
        Filter().SetText(text);
        Filter().RememberText();
    }
    Place().OwnSettings().SaveSettings();
    ASSERT_TRUE(world.Start());
    EXPECT_THAT(Filter().RecentTexts(),
                ElementsAre("\"first one\"", "c d", "B", "a", "\"last one"));
    for (int number = 0; number < 12; ++number) {
        Filter().SetText(std::to_string(number));
        Filter().RememberText();
    }
    EXPECT_EQ(Filter().RecentTexts().size(), 10U);
    EXPECT_EQ(Filter().RecentTexts()[9], "2");
    for (const TextFilter::Word& word : Filter().Words()) {
        const FilterQuery query = ParseFilter(word.word + (word.word.ends_with(':') ? "x" : ""));
        const bool isField = word.word.find(':') != std::string::npos;
        EXPECT_EQ(query.terms[0].field != FilterField::Any, isField) << word.word;
        EXPECT_FALSE(word.meaning.empty()) << word.word;
    }
}

// How many of the wishes in tests/data find their key among the first three hits.
TEST_F(TextFilterTest, WishesFindTheirKey) {
    const auto shipped = [](const std::string& name) {
        std::ifstream file("Data Files/" + name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    StartWith({kEnd, shipped("tc all keys english.tmdf"), ""});
    for (const char* const name :
         {"tc wcx_ftp keys english.tmdf", "Wincmd.types", "Wincmd.keywords", "Wcx_ftp.keywords"}) {
        world.disk.Put("C:\\Tamarind\\Data Files\\" + std::string(name), shipped(name));
        ASSERT_FALSE(shipped(name).empty());
    }
    std::ifstream wishes("tests/data/wishes.tsv");
    int count = 0;
    std::string missed;
    for (std::string line; std::getline(wishes, line);) {
        if (line.starts_with('#')) {
            continue;
        }
        std::istringstream parts(line);
        std::string wish, kind, answers;
        std::getline(std::getline(std::getline(parts, wish, '\t'), kind, '\t'), answers);
        if ((kind == "wincmd") != (DataFile().Target() == SettingsTarget::Wincmd)) {
            Session().OpenOtherDataFile();
        }
        Filter().SetText(wish);
        bool isFound = false;
        const auto& hits = Selection().Rows().Keys().All();
        for (std::size_t row = 0; row < std::min<std::size_t>(hits.size(), 3); ++row) {
            const std::string name = NameWithSection(Selection().Rows().Record(hits[row]));
            std::string withoutNumbers;
            for (const char c : name) {
                const bool isDigit = c >= '0' && c <= '9';
                if (!isDigit || !withoutNumbers.ends_with('#')) {
                    withoutNumbers += isDigit ? '#' : c;
                }
            }
            const std::string all = " | " + answers + " | ";
            isFound |= all.find("| " + name + " |") != std::string::npos ||
                       all.find("| " + withoutNumbers + " |") != std::string::npos;
        }
        ++count;
        missed += isFound ? "" : wish + "\n";
    }
    EXPECT_EQ(count, 60);
    EXPECT_LE(std::ranges::count(missed, '\n'), 5) << missed;
}

}  // namespace
}  // namespace tamarind
