#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

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
    void ExpectAllKeys(const std::string& path) {
        Session().Undescribed().LoadAll();
        std::map<std::pair<std::string, std::string>, std::pair<int, int>> places;
        const KeyStore& store = Selection().Rows().Store();
        for (KeyNumber key = 1; key <= store.Size(); ++key) {
            auto& [described, others] =
                places[{ToUpperCase(store.TargetSection(key)), ToUpperCase(store.KeyName(key))}];
            ++(store.IsDescribed(key) ? described : others);
        }
        const IniDocument& file = *Settings().Files().Main().document;
        std::map<IgnoredLine::Reason, std::ptrdiff_t> unread;
        for (IniDocument::SectionId id = 0; id < file.SectionCount(); ++id) {
            const bool isFirst = file.FindSection(file.SectionName(id)) == id;
            for (auto line = file.FirstLine(id); line != IniDocument::kNone;
                 line = file.NextLine(line)) {
                if (file.Kind(line) != IniLineKind::Key || file.KeyName(line).empty()) {
                    continue;
                }
                const auto [described, others] =
                    places[{ToUpperCase(file.SectionName(id)), ToUpperCase(file.KeyName(line))}];
                const bool isMoved =
                    Settings().Files().FileOf(file.SectionName(id), file.KeyName(line)) != 0;
                const bool isRead = !isMoved && isFirst && !file.IsRepeated(id, line);
                unread[isMoved ? IgnoredLine::Reason::LeftBehind : IgnoredLine::Reason::Repeated] +=
                    isRead ? 0 : 1;
                EXPECT_TRUE(!isRead || others == (described > 0 ? 0 : 1))
                    << path << " " << file.KeyName(line);
            }
        }
        const std::vector<IgnoredLine> ignored = FindIgnoredLines(Settings().Files());
        for (const auto& [reason, count] : unread) {
            EXPECT_EQ(std::ranges::count_if(ignored,
                                            [&, reason = reason](const IgnoredLine& line) {
                                                return line.reason == reason &&
                                                       line.path == SessionWorld::kWincmd;
                                            }),
                      count)
                << path;
        }
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
    EXPECT_EQ(Texts().Counter(), "3  Key(s)");
    EXPECT_THAT(RowsOfNode(5), ElementsAre("Own=5", "Off=2"));
    EXPECT_EQ(Selection().Rows().Description(), "The data file does not describe this key.");
    EXPECT_EQ(Selection().Rows().Store().Size(), 5U) << "those of other sections wait";
    EXPECT_EQ(DataFile().MaxDescriptionUnits(), 0U);
    EXPECT_FALSE(States().IsEnabled(Command::FavoritesAdd)) << "favorites are of the data file";
    EXPECT_THAT(RowsOfNode(6), ElementsAre("a_SearchFor=x"));
    EXPECT_THAT(RowsOfNode(4), IsEmpty());
    EXPECT_EQ(Selection().CategoriesOfHeading().size(), 2U);

    // Find has the keys of the data file alone, the filter has all.
    Finding().SetSearchText("own");
    EXPECT_FALSE(Finding().FindNextString());
    Session().Filter().SetText("is:undescribed own");
    EXPECT_THAT(world.Rows(), ElementsAre("Own=5"));
    Selection().GoToKey(5);
    EXPECT_EQ(Selection().SelectedNode(), 5);
    EXPECT_EQ(Selection().Rows().CurrentKey(), 5U);

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
    Selection().Rows().ShowKeyDetails(1);
    Commands().SetValue("on");
    Selection().SelectCategory(6);
    Selection().Rows().ShowKeyDetails(0);
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

TEST_F(UndescribedKeysTest, SiblingsAreDescribedByOthers) {
    world.disk.Put(SessionWorld::kWincmdTypes,
                   std::string("[Colors]\nF#=list blank\nF#Color=color\n[searches]\n*_for=bool\n"
                               "[800x600 (8x16)]\nFont=string\nSize=int 1..\n"
                               "[counted:]\n#x# (#x#)=800x600 (8x16)\n"
                               "[counted:Colors]\nF#=F2\nF#Color=F2Color\n"
                               "[english:searches]\n*_for=7///What {n} of {section} is.\n"));
    StartWith(
        {"[Configuration]\r\n[Colors]\r\nF10Color=1\r\nF3=*.c\r\nF10=*.x\r\nFont3=x\r\n"
         "[1024x768 (8x16)]\r\nOdd=1\r\nSize=9\r\n"
         "[searches]\r\nmy_own_for=1\r\nelse=2\r\n[640x480]\r\nSize=1\r\n",
         "[Filters]\nCategoryTargetSection=Colors\nBack=0///First.\nF1=///Types 1.\n"
         "F1Color=5///Color of 1.\nF2=///Types 2, or 12 and 2.\nF2Color=5///Color of 2.\n"
         "[Screen]\nCategoryTargetSection=800x600 (8x16)\n"
         "Size=8///Size of 8 at 800x600.\nFont=///Name.\n",
         ""});
    const auto rows = [this](NodeIndex node) { return RowsOfNode(node); };
    EXPECT_THAT(world.Rows(),
                ElementsAre("Back", "F1", "F1Color", "F2", "F2Color", "Size", "Font"));
    EXPECT_THAT(rows(0), ElementsAre("Back", "F1", "F1Color", "F2", "F2Color", "F10Color=1",
                                     "F3=*.c", "F10=*.x"));
    std::vector<std::string> nodes;
    for (const CategoryNode& node : Selection().Categories()) {
        nodes.emplace_back(node.Text());
    }
    EXPECT_THAT(nodes, ElementsAre("Filters", "Screen", "Other Screen Resolutions",
                                   "[1024x768 (8x16)]", "Only in This File", "[Colors]: other keys",
                                   "[1024x768 (8x16)]: other keys", "[searches]", "[640x480]"));
    EXPECT_THAT(rows(3), ElementsAre("Size=9", "Font"));
    EXPECT_EQ(Selection().Rows().Description(), "Size of 8 at 1024x768.");
    EXPECT_THAT(rows(5), ElementsAre("Font3=x"));
    EXPECT_THAT(rows(6), ElementsAre("Odd=1"));
    EXPECT_THAT(rows(7), ElementsAre("my_own_for=1", "else=2"));
    EXPECT_EQ(Selection().Rows().Description(), "What my_own of searches is.");
    EXPECT_EQ(Selection().Rows().Record(*Selection().Rows().CurrentKey()).defaultValue, "7");
    EXPECT_EQ(Session().Values().TypeOf(*Selection().Rows().CurrentKey()).kind, ValueKind::Bool);
    const KeyRecord record = Selection().Rows().Record(*Selection().Rows().CurrentKey());
    EXPECT_EQ(Session().Values().DefaultOf(*Selection().Rows().CurrentKey()), "7");
    EXPECT_EQ(record.description, "What my_own of searches is.") << "views hold";
    EXPECT_EQ(DataFile().MaxDescriptionUnits(), 0U) << "the text is not that of a line of its own";

    Session().Filter().SetText("Types 10");
    EXPECT_THAT(world.Rows(), ElementsAre("F10=*.x"));
    Selection().ShowInCategory();
    EXPECT_EQ(Selection().SelectedNode(), 0);
    EXPECT_EQ(Selection().Rows().Description(), "Types 10, or 12 and 10.");
    Set(5, "77");
    Selection().SelectCategory(3);
    Set(1, "Arial");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    const std::string saved(world.disk.BytesOf(SessionWorld::kWincmd));
    EXPECT_THAT(saved, testing::HasSubstr("[Colors]\r\nF10Color=77\r\n"));
    EXPECT_THAT(saved, testing::HasSubstr("Odd=1\r\nSize=9\r\nFont=Arial\r\n"));

    Session().Undescribed().Show(false);
    EXPECT_THAT(rows(0), ElementsAre("Back", "F1", "F1Color", "F2", "F2Color"));
    EXPECT_EQ(Selection().Categories().size(), 2U);
}

TEST_F(UndescribedKeysTest, KeysAreAddedByName) {
    StartWith({kText, "", ""});
    KeyAdding& adding = Session().Adding();
    EXPECT_EQ(adding.ProposedSection(), "Configuration");
    EXPECT_THAT(adding.Sections(), ElementsAre("Colors", "Configuration", "notes", "searches"));
    const struct {
        const char* section;
        const char* name;
        const char* fault;
    } names[] = {{"a", " ", "Type a name"},     {"a", "x=y", "no \"=\""},
                 {"a", "x\ry", "line break"},   {"a", " ;x", "does not begin"},
                 {"a", "[x", "does not begin"}, {" ", "x", "of a section"},
                 {"a]", "x", "of a section"},   {"a", "b;[c]", ""}};
    for (const auto& one : names) {
        EXPECT_THAT(adding.FaultOf(one.section, one.name), testing::HasSubstr(one.fault))
            << one.name;
        EXPECT_EQ(adding.FaultOf(one.section, one.name).empty(), *one.fault == '\0') << one.name;
    }
    // One that is there is shown, whoever describes it.
    adding.Add("configuration", "showhidden");
    EXPECT_EQ(Selection().Rows().CurrentKey(), 2U);
    Session().Undescribed().Show(false);
    adding.Add("CONFIGURATION", "own");
    EXPECT_EQ(Selection().SelectedNode(), 5);
    EXPECT_THAT(world.Rows(), ElementsAre("Own=5", "Off=2"));

    Session().Undescribed().Show(false);
    adding.Add(" brand new ", " first ");
    EXPECT_THAT(MoreNodes(), ElementsAre("Only in This File", "[Configuration]: other keys",
                                         "[searches]", "[brand new]"));
    EXPECT_THAT(world.Rows(), ElementsAre("first"));
    EXPECT_FALSE(Settings().IsModified()) << "it has no value yet";
    Commands().SetValue("1");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd),
              std::string(kText) + "[brand new]\r\nfirst=1\r\n");
}

TEST_F(UndescribedKeysTest, ADescriptionBecomesALineOfTheDataFile) {
    StartWith({kText, "", ""});
    KeyDescribing& describing = Session().Describing();
    EXPECT_FALSE(describing.CanDescribe());
    Selection().SelectCategory(5);
    ASSERT_TRUE(describing.CanDescribe());

    // The data file comes with the program: a copy is made where the user wants it.
    world.prompts.answers = {Answer::Cancel, Answer::Yes};
    world.prompts.filesToChoose = {"C:\\TC\\own.tmdf"};
    EXPECT_FALSE(describing.Prepare());
    ASSERT_TRUE(describing.Prepare());
    EXPECT_EQ(DataFile().Path(), "C:\\TC\\own.tmdf");
    EXPECT_TRUE(describing.Prepare()) << "nobody asks about one's own file";
    EXPECT_EQ(Selection().Rows().Record(*Selection().Rows().CurrentKey()).keyName, "Own");
    describing.Describe("What I found out.\r\n5 = best");
    EXPECT_EQ(Selection().Rows().Description(), "What I found out.\r\n5 = best");
    Selection().SelectCategory(6);
    ASSERT_TRUE(describing.CanDescribe());
    describing.Describe("For pictures.");
    ASSERT_TRUE(DataFile().SaveDataFile());
    const std::string shipped(world.disk.BytesOf(SessionWorld::kWincmdData));
    std::string expected = shipped;
    expected.insert(expected.find("[Colors]"), "Own=///What I found out.@5 = best\r\n");
    expected += "[searches]\r\nCategoryTargetSection=searches\r\na_SearchFor=///For pictures.\r\n";
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\own.tmdf"), expected);

    // With the next settings the keys are those of the data file.
    ASSERT_TRUE(Session().OpenSettingsFile(SessionWorld::kWincmd, false));
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical=1", "ShowHidden=0", "Own=5", "BackColor",
                                          "a_SearchFor=x"));
}

TEST_F(UndescribedKeysTest, IgnoredLinesAreShownAndRemoved) {
    world.disk.Put("C:\\TC\\user.ini",
                   std::string("[user]\r\na=1\r\na=2\r\n[else]\r\nz=1\r\nz=2\r\n"));
    const std::string text =
        "outside=1\r\n[Configuration]\r\n\r\n; note\r\nOwn=5\r\n\r\ngarbage\r\nown = 6\r\n"
        "[user]\r\nRedirectSection=user.ini\r\nleft=1\r\n[configuration]\r\nLate=1\r\n";
    StartWith({text, "", ""});
    IgnoredLinesEditor& editor = Session().IgnoredLines();
    const auto texts = [&] {
        std::vector<std::string> all;
        for (const IgnoredLine& line : editor.Look()) {
            all.push_back(std::to_string(line.number) + " " + line.text + ": " +
                          editor.ReasonOf(line));
        }
        return all;
    };
    const std::vector<std::string> before = texts();
    const std::string repeated = ": ignored: Total Commander reads the first";
    EXPECT_THAT(before,
                ElementsAre("1 outside=1: neither key, comment nor section",
                            "7 garbage: neither key, comment nor section", "8 own = 6" + repeated,
                            "11 left=1: left behind: the section is kept in user.ini",
                            "13 Late=1" + repeated, "3 a=2" + repeated));
    EXPECT_FALSE(editor.CanGoTo(editor.Look()[1])) << "no key";
    EXPECT_FALSE(editor.CanGoTo(editor.Look()[4])) << "nothing is read in its place";
    ASSERT_TRUE(editor.CanGoTo(editor.Look()[2]));
    editor.GoTo(editor.Look()[2]);
    EXPECT_EQ(VisibleText(Selection().Rows().Record(*Selection().Rows().CurrentKey())), "Own=5");

    Set(0, "9");  // stays pending
    ASSERT_TRUE(editor.Delete(editor.Look()[1]));
    ASSERT_TRUE(editor.Delete(editor.Look()[1]));
    std::string after = text;
    after.erase(after.find("garbage"), std::string("garbage\r\nown = 6\r\n").size());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), after);
    EXPECT_THAT(texts(), testing::SizeIs(4));
    EXPECT_TRUE(Settings().IsModified());
    ASSERT_TRUE(editor.Undo());
    ASSERT_TRUE(editor.Undo());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), text);
    EXPECT_FALSE(editor.CanUndo());

    // What somebody else has changed meanwhile stays.
    const IgnoredLine stale = editor.Look()[1];
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\n" + text);
    world.disk.Wait(10);
    ASSERT_TRUE(editor.Delete(stale));
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), "[Configuration]\r\n" + text);
    ASSERT_TRUE(editor.Delete(editor.Look().back()));
    world.disk.Put("C:\\TC\\user.ini", std::string("[user]\r\nb=1\r\n"));
    world.disk.Wait(10);
    EXPECT_FALSE(editor.Undo());
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\user.ini"), "[user]\r\nb=1\r\n");
}

// The same lines with some of them lost, doubled, moved, or in other letters.
std::string Mutated(const std::string& bytes, std::mt19937& random) {
    std::vector<std::string> lines;
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line, '\n');) {
        lines.push_back(line + "\n");
    }
    for (int change = 0; change < 60 && !lines.empty(); ++change) {
        const std::string line = lines[random() % lines.size()];
        const auto at = lines.begin() + static_cast<std::ptrdiff_t>(random() % lines.size());
        switch (random() % 5) {
            case 0:
                lines.erase(at);
                break;
            case 1:
                at->insert(0, ";");
                break;
            case 2:
                *at = ToUpperCase(*at);
                break;
            case 3:
                lines.insert(at, "no key\r\n");
                break;
            default:
                lines.insert(at, line);
                break;
        }
    }
    std::string mutated;
    for (const std::string& line : lines) {
        mutated += line;
    }
    return mutated;
}

// Every key that Total Commander reads from a real file, or one that was damaged, is there: in the
// rows of its data file, or else once in a category of its section. All others are ignored lines.
TEST_F(UndescribedKeysTest, EveryKeyOfRealFilesIsReachable) {
    const std::string dataFile = BytesOfFile("Data Files/tc all keys english.tmdf");
    world.disk.Put(SessionWorld::kWincmdTypes, BytesOfFile("Data Files/Wincmd.types"));
    std::mt19937 random(19);
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/corpus")) {
        const std::string real = BytesOfFile(entry.path());
        for (const std::string& bytes : {real, Mutated(real, random), Mutated(real, random)}) {
            StartWith({bytes, dataFile, ""});
            ExpectAllKeys(entry.path().string());
        }
        ++files;
    }
    EXPECT_GT(files, 3);
}

}  // namespace
}  // namespace tamarind
