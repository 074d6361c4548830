#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

class KeySelectionTest : public SessionTest, public KeyListListener {
protected:
    std::vector<std::pair<std::size_t, std::size_t>> hits;

private:
    void OnWentToKey(const std::optional<DescriptionPart>& part) override {
        if (part) {
            hits.emplace_back(part->start, part->length);
        }
    }
};

TEST_F(KeySelectionTest, FiltersAndCategoriesDecideTheRows) {
    StartWith({kSettingsText, "", ""});
    Selection().SelectCategory(1);
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical=1", "ShowHidden=0"));
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical=1"));
    Selection().SetKeyFilter(KeyFilter::ShowInactive);
    EXPECT_THAT(world.Rows(), ElementsAre("ShowHidden=0"));

    // All its keys filtered away: an empty list without a message, and no current key.
    Selection().SelectCategory(2);
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_THAT(world.Rows(), IsEmpty());
    EXPECT_EQ(Selection().Rows().CurrentKey(), std::nullopt);
    EXPECT_EQ(Settings().TargetPanel() + Selection().Rows().Description() + Texts().Counter(),
              "0  Key(s)");
    EXPECT_THAT(world.prompts.messages, IsEmpty());

    Selection().GoToKey(3);
    EXPECT_EQ(Selection().SelectedNode(), kRootNode);
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowAll);
    EXPECT_EQ(Selection().Rows().CurrentKey(), 3U);
}

TEST_F(KeySelectionTest, ChangedAndDifferentKeysHaveAFilter) {
    StartWithKeys("Same=1///\r\nColorBack=1///\r\nUnknown=///\r\nNumber=5///\r\n");
    Set(2, "x");
    Set(3, "05");
    Selection().SetKeyFilter(KeyFilter::ShowDifferent);
    EXPECT_THAT(world.Rows(), ElementsAre("ColorBack=7"));
    Selection().SetKeyFilter(KeyFilter::ShowChanged);
    EXPECT_THAT(world.Rows(), ElementsAre("Unknown=x", "Number=05"));
    EXPECT_TRUE(States().IsChecked(Command::ViewChangedKeys));
    Selection().Rows().ShowKeyDetails(1);
    Commands().Undo();
    EXPECT_THAT(world.Rows(), ElementsAre("Unknown=x", "Number")) << "a snapshot";
}

TEST_F(KeySelectionTest, AKeyIsShownInItsCategory) {
    StartWith({kSettingsText, "", ""});
    Selection().Rows().Watchers().Add(*this);
    EXPECT_THAT(Settings().TargetPanel(), HasSubstr("[Configuration]  Panels"));
    Selection().Rows().ShowKeyDetails(1);
    Selection().SetKeyFilter(KeyFilter::ShowInactive);
    Selection().Rows().ShowKeyDetails(0);
    EXPECT_TRUE(States().IsEnabled(Command::SearchShowInCategory));
    Selection().ShowInCategory();
    EXPECT_EQ(Selection().SelectedNode(), 1);
    EXPECT_EQ(Selection().Rows().CurrentKey(), 2U);
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowInactive);
    EXPECT_FALSE(States().IsEnabled(Command::SearchShowInCategory));
    EXPECT_THAT(Settings().TargetPanel(), testing::EndsWith("[Configuration]"));

    Selection().SelectCategory(0);  // the heading
    const auto below = Selection().CategoriesOfHeading();
    ASSERT_EQ(below.size(), 3U);
    EXPECT_EQ(below[0].name, "Panels");
    EXPECT_EQ(below[0].node, 1);
    EXPECT_EQ(below[0].setKeys, 1U) << "a commented-out one is not set";
    EXPECT_EQ(below[1].setKeys, 0U);
    Selection().Rows().Watchers().Remove(*this);
}

TEST_F(KeySelectionTest, HeadingsBeepAndCategoriesWithoutKeysComplain) {
    StartWith({kSettingsText, "", ""});
    Selection().SelectCategory(0);
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_EQ(world.prompts.beeps, 1);
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowAll);
    Selection().SelectCategory(3);
    Selection().SelectCategory(3);  // a category that is shown is not filled again
    EXPECT_THAT(world.prompts.messages, ElementsAre("X" + BuiltIn(text::kCategoryWithoutKeys)));
}

TEST_F(KeySelectionTest, StepsThroughTheHitsAndSaysWhenThereAreNoMore) {
    StartWithKeys(
        "ColorBack=1///Show hidden@files\r\n"
        "Other=2///Show (hidden) \xC3\x9C"
        "BER files\r\n"
        "Blank=3\r\n"
        "InactiveColor=4///The last, hidden\r\n");
    Selection().Rows().Watchers().Add(*this);
    const struct {
        const char* text;
        bool inNames, wholeWord;
        std::vector<KeyNumber> keys;
        std::pair<std::size_t, std::size_t> firstHit;  // in the description
    } cases[] = {
        {"cOLOR", true, false, {1, 4}, {}},
        {"color", true, true, {}, {}},
        {"hidden", false, false, {1, 2, 4}, {5, 6}},
        {"HIDDEN", false, true, {1, 4}, {5, 6}},
        {"files", false, true, {1, 2}, {13, 5}},  // behind the line break, which is two long
        {"hidden  files", false, false, {1}, {5, 13}},
        {"\u00FCber", false, true, {2}, {14, 4}},
        {"not available", false, false, {3}, {12, 13}},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.text);
        Finding().Search().SetSearchesNames(testCase.inNames);
        Finding().Search().SetMatchesWholeWord(testCase.wholeWord);
        Finding().SetSearchText(testCase.text);
        hits.clear();
        // Twice: the end of a search starts it again.
        for (int round = 0; round < 2; ++round) {
            world.prompts.messages.clear();
            for (const KeyNumber key : testCase.keys) {
                EXPECT_THAT(world.prompts.messages, IsEmpty());
                Finding().FindNextString();
                EXPECT_EQ(Selection().Rows().CurrentKey(), key);
            }
            // A hit in the last key is the end as well.
            if (testCase.keys.empty() || testCase.keys.back() != 4) {
                Finding().FindNextString();
            }
            EXPECT_THAT(world.prompts.messages,
                        ElementsAre(std::string("iCannot find \"") + testCase.text + "\""));
        }
        if (!testCase.inNames) {
            EXPECT_EQ(hits.front(), testCase.firstHit);
        }
    }
    // A setting that changes starts the search again, one that stays as it is does not.
    Finding().SetSearchText("hidden");
    for (const auto& [wholeWord, key] : {std::pair(false, 1U), {false, 2U}, {true, 1U}}) {
        Finding().Search().SetSearchesNames(false);
        Finding().Search().SetMatchesWholeWord(wholeWord);
        Finding().FindNextString();
        EXPECT_EQ(Selection().Rows().CurrentKey(), key);
    }
    Finding().SetSearchText("");
    Finding().FindNextString();
    EXPECT_EQ(world.prompts.beeps, 1);
}

// The pass over the file's bytes against a look at each key, for data files of every kind.
TEST(KeySearchTest, TheFastSearchFindsWhatThePlainOneFinds) {
    const std::string start = "[A]\nCategoryTargetSection=T\n";
    const std::string second = "[B]\nCategoryTargetSection=T\n";
    for (const std::string& bytes :
         {start + "Color=1///a color\n;Color=no key\nK=2///Kelvin\n" + second + "Last=color///x\n",
          start + "B=1///color\n" + second + "C=1///b\n" + start + "D=3///color\n",
          start + "B=1///color\nb=2///k\nC=\"q///color\"\n",
          start + "B=1///k\nC=1///color\nD=1///b\xF6r"}) {
        KeyStore store;
        const auto document = std::make_shared<const IniDocument>(IniDocument::Parse(bytes, 1252));
        ASSERT_TRUE(LoadDataFile(
            document, "none", [] {}, store));
        store.SetDescription(2, "my own Color");
        for (const char* const text : {"color", "c", "o", "k", "x", "no", "1", "/", "\u00F6"}) {
            for (const bool inNames : {true, false}) {
                KeySearch search;
                search.SetText(text);
                search.SetSearchesNames(inNames);
                auto hit = search.FindNext(store);
                for (KeyNumber key = 1; key <= store.Size(); ++key) {
                    std::string where(inNames ? store.KeyName(key) : store.Record(key).description);
                    std::transform(where.begin(), where.end(), where.begin(), ::tolower);
                    const bool isHit = hit && hit->key == key;
                    EXPECT_EQ(isHit, where.find(text) != std::string::npos)
                        << text << key << inNames << bytes;
                    // Behind the last key the search would begin again.
                    hit = isHit && key < store.Size() ? search.FindNext(store) : hit;
                }
            }
        }
    }
}

}  // namespace
}  // namespace tamarind
