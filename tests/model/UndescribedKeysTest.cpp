#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

std::string BytesOfFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class UndescribedKeysTest : public SessionTest {
protected:
    static constexpr const char* kText =
        "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\nOwn=5\r\n; note=1\r\n;;x=1\r\n"
        ";Off=2\r\nOwn=6\r\n;PanelsVertical=3\r\n[searches]\r\na_SearchFor=x\r\n"
        "[notes]\r\n;only=comment\r\n[Configuration]\r\nLate=1\r\n";

    // The texts of the nodes behind those of the data file.
    std::vector<std::string> MoreNodes() {
        std::vector<std::string> texts;
        for (const CategoryNode& node : Selection().Categories()) {
            texts.emplace_back(node.Text());
        }
        texts.erase(texts.begin(), texts.begin() + 4);
        return texts;
    }
    std::vector<std::string> RowsOfNode(NodeIndex node) {
        Selection().SelectCategory(node);
        return world.Rows();
    }
};

TEST_F(UndescribedKeysTest, EachSectionHasACategory) {
    StartWith({kText, "", ""});
    EXPECT_THAT(MoreNodes(),
                ElementsAre("Only in This File", "[Configuration]: other keys", "[searches]"));
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical=1", "ShowHidden=0", "BackColor"));
    EXPECT_EQ(Selection().CounterPanel(), "3  Key(s)");
    EXPECT_THAT(RowsOfNode(5), ElementsAre("Own=5", "Off=2"));
    EXPECT_EQ(Selection().Description(), "The data file does not describe this key.");
    EXPECT_EQ(DataFile().MaxDescriptionUnits(), 0U);
    EXPECT_FALSE(States().IsEnabled(Command::FavoritesAdd)) << "favorites are of the data file";
    EXPECT_THAT(RowsOfNode(6), ElementsAre("a_SearchFor=x"));
    EXPECT_THAT(RowsOfNode(4), IsEmpty());
    EXPECT_EQ(Selection().CategoriesOfHeading().size(), 2U);

    // Find has the keys of the data file alone, the filter has all.
    Selection().SetSearchText("own");
    EXPECT_FALSE(Selection().FindNextString());
    Session().Filter().SetText("is:undescribed own");
    EXPECT_THAT(world.Rows(), ElementsAre("Own=5"));
    Selection().GoToKey(5);
    EXPECT_EQ(Selection().SelectedNode(), 5);
    EXPECT_EQ(Selection().CurrentKey(), 5U);

    Session().Undescribed().Show(false);
    EXPECT_EQ(Selection().SelectedNode(), kRootNode);
    EXPECT_THAT(MoreNodes(), IsEmpty());
    Session().Filter().SetText("own");
    EXPECT_THAT(world.Rows(), IsEmpty());
    Session().Undescribed().Show(true);
    EXPECT_THAT(world.Rows(), ElementsAre("Own=5"));

    world.disk.Put("C:\\TC\\other.ini", std::string("[Configuration]\r\nZ=1\r\n"));
    ASSERT_TRUE(Session().OpenSettingsFile("C:\\TC\\other.ini", false));
    EXPECT_THAT(world.Rows(), IsEmpty()) << "the filter stays";
    Session().Filter().Clear();
    EXPECT_THAT(RowsOfNode(5), ElementsAre("Z=1"));
}

TEST_F(UndescribedKeysTest, EditsChangeTheirLinesOnly) {
    StartWith({kText, "", ""});
    Selection().SelectCategory(5);
    Set(0, "7");
    Selection().ShowKeyDetails(1);
    Commands().SetValue("on");
    Selection().SelectCategory(6);
    Selection().ShowKeyDetails(0);
    Commands().DeleteKeys();
    Session().Undescribed().Show(false);
    EXPECT_TRUE(Settings().IsModified());
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    const std::string saved =
        "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\nOwn=7\r\n; note=1\r\n;;x=1\r\n"
        "Off=on\r\nOwn=6\r\n;PanelsVertical=3\r\n[searches]\r\n"
        "[notes]\r\n;only=comment\r\n[Configuration]\r\nLate=1\r\n";
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), saved);
    for (int step = 0; step < 3; ++step) {
        Commands().Undo();
    }
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    // A value that is undone is an active one.
    std::string undone = kText;
    undone.erase(undone.find(";Off"), 1);
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), undone);
}

TEST_F(UndescribedKeysTest, NewKeysOfOtherProgramsComeBehindTheOthers) {
    StartWith({kText, "", ""});
    Selection().SelectCategory(5);
    Selection().SelectCategory(6);
    Set(0, "mine");
    world.disk.Put(SessionWorld::kWincmd,
                   "[Configuration]\r\nPanelsVertical=1\r\nNew=1\r\n[searches]\r\na_SearchFor=x\r\n"
                   "b_SearchFor=y\r\n[later]\r\nk=1\r\n");
    world.disk.Wait(10);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_THAT(MoreNodes(), ElementsAre("Only in This File", "[Configuration]: other keys",
                                         "[searches]", "[later]"));
    EXPECT_THAT(RowsOfNode(5), ElementsAre("Own", "Off", "New=1"));
    EXPECT_THAT(RowsOfNode(6), ElementsAre("a_SearchFor=mine", "b_SearchFor=y"));
}

TEST_F(UndescribedKeysTest, RedirectedSectionsAreReadWhereTheyAre) {
    world.disk.Put("C:\\TC\\user.ini", std::string("[user]\r\nmenu1=a\r\nRedirectSection=x\r\n"
                                                   "[else]\r\nz=1\r\n"));
    StartWith({"[Configuration]\r\n[user]\r\nRedirectSection=user.ini\r\nmenu2=left\r\n", "", ""});
    EXPECT_THAT(MoreNodes(), ElementsAre("Only in This File", "[user]"));
    EXPECT_THAT(RowsOfNode(5), ElementsAre("RedirectSection=user.ini", "menu1=a"));
}

// Every key that Total Commander reads from a real file is there: in the rows of its data file, or
// else once in a category of its section.
TEST_F(UndescribedKeysTest, EveryKeyOfRealFilesIsReachable) {
    const std::string dataFile = BytesOfFile("Data Files/tc all keys english.tmdf");
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/corpus")) {
        const std::string bytes = BytesOfFile(entry.path());
        StartWith({bytes, dataFile, ""});
        Session().Undescribed().LoadAll();
        const IniDocument file = IniDocument::Parse(bytes, 1252);
        std::map<std::pair<std::string, std::string>, std::pair<int, int>> places;
        const KeyStore& store = Selection().Store();
        for (KeyNumber key = 1; key <= store.Size(); ++key) {
            auto& [described, others] =
                places[{ToUpperCase(store.TargetSection(key)), ToUpperCase(store.KeyName(key))}];
            ++(store.IsDescribed(key) ? described : others);
        }
        for (IniDocument::SectionId id = 0; id < file.SectionCount(); ++id) {
            for (auto line = file.FirstLine(id);
                 file.FindSection(file.SectionName(id)) == id && line != IniDocument::kNone;
                 line = file.NextLine(line)) {
                if (file.Kind(line) == IniLineKind::Key && !file.KeyName(line).empty()) {
                    const auto [described, others] = places[{ToUpperCase(file.SectionName(id)),
                                                             ToUpperCase(file.KeyName(line))}];
                    EXPECT_EQ(others, described > 0 ? 0 : 1) << entry.path() << file.KeyName(line);
                }
            }
        }
        ++files;
    }
    EXPECT_GT(files, 3);
}

}  // namespace
}  // namespace tamarind
