#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

class KeySelectionTest : public SessionTest, private KeyListListener {
protected:
    std::vector<std::pair<std::size_t, std::size_t>> hits;

    void Start(const std::string& keys) {
        StartWithKeys(keys);
        Selection().KeyWatchers().Add(*this);
    }

private:
    void OnWentToKey(const std::optional<DescriptionPart>& part) override {
        if (part) {
            hits.emplace_back(part->start, part->length);
        }
    }
};

class CategoriesTest : public SessionTest {
protected:
    void Start() {
        StartWith({"[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\n", "", ""});
    }
};

TEST_F(CategoriesTest, FiltersAndCategoriesDecideTheRows) {
    Start();
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
    EXPECT_EQ(Selection().CurrentKey(), std::nullopt);
    EXPECT_EQ(Settings().TargetPanel() + Selection().Description() + Selection().CounterPanel(),
              "0  Key(s)");
    EXPECT_THAT(world.prompts.messages, IsEmpty());

    Selection().GoToKey(3);
    EXPECT_EQ(Selection().SelectedNode(), kRootNode);
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowAll);
    EXPECT_EQ(Selection().CurrentKey(), 3U);
}

TEST_F(CategoriesTest, HeadingsBeepAndCategoriesWithoutKeysComplain) {
    Start();
    Selection().SelectCategory(0);
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_EQ(world.prompts.beeps, 1);
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowAll);
    Selection().SelectCategory(3);
    Selection().SelectCategory(3);  // a category that is shown is not filled again
    EXPECT_THAT(world.prompts.messages, ElementsAre("X" + BuiltIn(text::kCategoryWithoutKeys)));
}

TEST_F(KeySelectionTest, StepsThroughTheHitsAndSaysWhenThereAreNoMore) {
    Start(
        "ColorBack=1///Show hidden@files\r\n"
        "Other=2///Show (hidden) \xC3\x9C"
        "BER files\r\n"
        "Blank=3\r\n"
        "InactiveColor=4///The last, hidden\r\n");
    const struct {
        const char* text;
        bool inNames;
        bool wholeWord;
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
        Selection().Search().SetSearchesNames(testCase.inNames);
        Selection().Search().SetMatchesWholeWord(testCase.wholeWord);
        Selection().SetSearchText(testCase.text);
        hits.clear();
        // Twice: the end of a search starts it again.
        for (int round = 0; round < 2; ++round) {
            world.prompts.messages.clear();
            for (const KeyNumber key : testCase.keys) {
                EXPECT_THAT(world.prompts.messages, IsEmpty());
                Selection().FindNextString();
                EXPECT_EQ(Selection().CurrentKey(), key);
            }
            // A hit in the last key is the end as well.
            if (testCase.keys.empty() || testCase.keys.back() != 4) {
                Selection().FindNextString();
            }
            EXPECT_THAT(world.prompts.messages,
                        ElementsAre(std::string("iCannot find \"") + testCase.text + "\""));
        }
        if (!testCase.inNames) {
            EXPECT_EQ(hits.front(), testCase.firstHit);
        }
    }
    // A setting that stays as it is does not start the search again.
    Selection().SetSearchText("color");
    for (const auto& [wholeWord, key] : {std::pair(true, 0U), {false, 1U}, {false, 4U}}) {
        Selection().Search().SetSearchesNames(true);
        Selection().Search().SetMatchesWholeWord(wholeWord);
        Selection().FindNextString();
        EXPECT_TRUE(key == 0 || Selection().CurrentKey() == key) << key;
    }
    Selection().SetSearchText("");
    Selection().FindNextString();
    EXPECT_EQ(world.prompts.beeps, 1);
}

// The pass over the file's bytes against a look at each key, for data files of every kind.
TEST(KeySearchTest, TheFastSearchFindsWhatThePlainOneFinds) {
    const std::string files[] = {
        "[A]\nCategoryTargetSection=T\nColor=1///a color\n;Color=no key\nK=2///Kelvin\n[B]\n"
        "CategoryTargetSection=T\nLast=color///x\n",
        "[A]\nCategoryTargetSection=T\nB=1///color\n[B]\nCategoryTargetSection=T\nC=1///b\n[A]\n"
        "CategoryTargetSection=T\nD=3///color\n",
        "[A]\nCategoryTargetSection=T\nB=1///color\nb=2///k\nC=\"q///color\"\n",
        "[A]\nCategoryTargetSection=T\nB=1///k\nC=1///color\nD=1///b\xF6r",
    };
    for (const std::string& bytes : files) {
        KeyStore store;
        const auto document = std::make_shared<const IniDocument>(IniDocument::Parse(bytes, 1252));
        ASSERT_TRUE(LoadDataFile(
            document, "none", [] {}, store));
        store.SetDescription(2, "my own Color");
        for (const char* const text :
             {"color", "c", "o", "r", "k", "x", "no", "1", "/", "\u00F6"}) {
            for (const bool inNames : {true, false}) {
                KeySearch search;
                search.SetText(text);
                search.SetSearchesNames(inNames);
                std::vector<KeyNumber> found;
                while (const auto hit = search.FindNext(store)) {
                    found.push_back(hit->key);
                    if (hit->key == store.Size()) {
                        break;
                    }
                }
                std::vector<KeyNumber> expected;
                for (KeyNumber key = 1; key <= store.Size(); ++key) {
                    std::string where(inNames ? store.KeyName(key) : store.Record(key).description);
                    std::transform(where.begin(), where.end(), where.begin(), ::tolower);
                    if (where.find(text) != std::string::npos) {
                        expected.push_back(key);
                    }
                }
                EXPECT_EQ(found, expected) << text << inNames << bytes;
            }
        }
    }
}

}  // namespace
}  // namespace tamarind
