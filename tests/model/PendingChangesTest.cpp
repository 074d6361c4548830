#include "model/session/PendingChanges.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

class PendingChangesTest : public KeyChangesTest {
protected:
    // Each pending change as the list shows it.
    std::vector<std::string> Shown() {
        std::vector<std::string> rows;
        for (const PendingChange& change : Pending().Look().changes) {
            rows.push_back(change.section + "/" + change.name + ": " + change.inFile + " > " +
                           (change.isAsInFile ? "same" : change.written));
        }
        return rows;
    }
    std::vector<KeyNumber> Keys() {
        std::vector<KeyNumber> keys;
        for (const PendingChange& change : Pending().Look().changes) {
            keys.push_back(change.key);
        }
        return keys;
    }
    // What undo would take back, and then what is shown after it.
    std::string Undo() {
        std::string name = Commands().UndoName();
        Commands().Undo();
        return name;
    }
};

TEST_F(PendingChangesTest, EachIsShownWithWhatTheFileHas) {
    Start("[T]\nA=1\n;K=2\nZ=3\nY=4\n\n");
    EXPECT_EQ(Pending().CountText(), "");
    Play('s');
    EXPECT_EQ(Pending().CountText(), "1 change");
    EXPECT_THAT(Session().Caption(), testing::EndsWith("Wincmd.ini *"));
    Set(0, "5");
    Commands().Undo();
    Selection().Rows().ShowKeyDetails(2);
    Play('d');
    EXPECT_EQ(Pending().CountText(), "3 changes");
    EXPECT_THAT(Shown(), ElementsAre("T/A: A=1 > same", "T/K: ;K=2 > K=new", "T/Z: Z=3 > "));
    const std::vector<FilePreview> files = Pending().Look().files;
    ASSERT_EQ(files.size(), 1U);
    std::string lines;
    for (const PreviewLine& line : files[0].lines) {
        lines += " -+~"[static_cast<int>(line.kind)] + line.text + "|";
    }
    EXPECT_EQ(lines, " [T]| A=1|-;K=2|-Z=3|+K=new| Y=4| |~|");

    Pending().Discard({2, 3});
    EXPECT_THAT(Shown(), ElementsAre("T/A: A=1 > same"));
    EXPECT_EQ(Undo(), "discarding of 2 keys");
    EXPECT_THAT(Shown(), ElementsAre("T/A: A=1 > same", "T/K: ;K=2 > K=new", "T/Z: Z=3 > "));
    Commands().Redo();
    Pending().Discard(Keys());
    EXPECT_FALSE(Settings().IsModified());
}

// Whatever was done before: after taking all of it back a save has nothing to write, and undoing
// that brings the same changes again.
TEST_F(PendingChangesTest, NothingIsLeftOfWhatIsDiscarded) {
    Start("[T]\nA=1\n;K=2\nOwn=1\n;Off=2\n[own]\nx=1\n");
    const std::string before = world.disk.BytesOf(SessionWorld::kWincmd);
    std::mt19937 random(7);
    for (int round = 0; round < 100; ++round) {
        for (int step = 0; step < 12; ++step) {
            // The keys of the data file, and those that only the settings have.
            const NodeIndex nodes[] = {kRootNode, 4, 5};
            Selection().SelectCategory(nodes[random() % std::size(nodes)]);
            Selection().Rows().ShowKeyDetails(random() % Selection().Rows().Keys().Size());
            Play("secdur"[random() % 6]);
        }
        const std::vector<std::string> shown = Shown();
        const bool hadChanges = Settings().IsModified();
        Pending().Discard(Keys());
        ASSERT_FALSE(Settings().IsModified()) << round;
        ASSERT_TRUE(Settings().SaveToSettingsFile());
        ASSERT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), before) << round;
        ASSERT_THAT(world.disk.ListBackups(SessionWorld::kWincmd), IsEmpty());
        if (hadChanges) {
            Commands().Undo();
            ASSERT_EQ(Shown(), shown) << round;
            Commands().Redo();
        }
    }
}

TEST_F(PendingChangesTest, StepsAreTakenBackAsAWhole) {
    Start("[T]\nA=1\n;K=2\nZ=3\n");
    Selection().Rows().SelectRows({0, 1, 2}, 1);
    Commands().DeleteKeys();
    EXPECT_THAT(world.Rows(), ElementsAre("A", "K", "Z", "BackColor"));
    EXPECT_EQ(Undo(), "deletion of 3 keys");
    EXPECT_THAT(Shown(), IsEmpty()) << "each is again as the file has it";
    Selection().Rows().SelectRows({0, 1, 2, 3}, 1);
    Commands().CommentKeys();
    EXPECT_THAT(Shown(), ElementsAre("T/A: A=1 > ;A=1", "T/Z: Z=3 > ;Z=3"));
    EXPECT_EQ(Undo(), "comment mark of 2 keys");
    EXPECT_FALSE(Settings().IsModified());
    Selection().Rows().SelectRows({0, 2}, 0);
    Commands().CopyKeys();
    EXPECT_EQ(world.prompts.copied, "A=1\r\nZ=3");

    // What was saved meanwhile becomes pending when it is undone.
    Commands().DeleteKeys();
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Undo(), "deletion of 2 keys");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\nA=1\nZ=3\n;K=2\n");
}

TEST_F(PendingChangesTest, ResettingSparesWhatIsNoSetting) {
    world.disk.Put(SessionWorld::kWincmdTypes, "[T]\nHist#=int history\nN=history\n");
    std::string dataFile = "[Cat]\nCategoryTargetSection=T\nA=0\nB=0\nRedirectSection=\nHist1=\n";
    std::string settings = "[T]\nA=1\n;B=2\nRedirectSection=0\nHist1=3\n";
    for (int key = 0; key < 9; ++key) {
        dataFile += "More" + std::to_string(key) + "=\n";
        settings += "More" + std::to_string(key) + "=1\n";
    }
    StartWith({settings + kEnd, dataFile, ""});
    Selection().SelectCategory(0);
    Selection().SetKeyFilter(KeyFilter::ShowInactive);
    world.prompts.answers = {Answer::No};
    Commands().ResetCategory();
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("reset 10 keys"));
    EXPECT_FALSE(Settings().IsModified());
    world.prompts.answers = {Answer::Yes};
    Commands().ResetCategory();
    EXPECT_EQ(Pending().CountText(), "10 changes") << "A and nine others, but B is commented out";
    EXPECT_EQ(Undo(), "reset of 10 keys");

    Selection().SetKeyFilter(KeyFilter::ShowAll);
    Selection().Rows().SelectRows({0, 1, 2, 3}, 0);
    Commands().ResetKeys();
    EXPECT_THAT(Shown(), ElementsAre("T/A: A=1 > ", "T/B: ;B=2 > "));
    Selection().Rows().SelectRows({2, 3}, 2);
    Commands().ResetKeys();
    EXPECT_EQ(Pending().CountText(), "4 changes") << "nothing else is selected";
}

std::map<std::string, int> CountedLines(const std::string& bytes) {
    std::map<std::string, int> lines;
    for (const std::string& line :
         IniDocument::Parse(bytes, 1252)
             .LinesOf(bytes.substr(MarkBytes(FindFileMark(bytes)).size()))) {
        ++lines[line];
    }
    return lines;
}

TEST_F(PendingChangesTest, ALineThatOnlyGetsAnEndIsNoChange) {
    StartWith({"[Configuration]\n[T]\nA=1", "[Cat]\nCategoryTargetSection=T\nA=0\nK=1\n", ""});
    Set(1, "2");
    std::string lines;
    const auto preview = Pending().Look();
    for (const PreviewLine& line : preview.files[0].lines) {
        lines += std::to_string(static_cast<int>(line.kind)) + line.text + "|";
    }
    EXPECT_EQ(lines, "0[Configuration]|0[T]|0A=1|2K=2|");
}

// The lines of each file, without those that the preview calls removed and with those that it calls
// added, are the lines that the save writes.
TEST_F(PendingChangesTest, ThePreviewIsWhatASaveWrites) {
    std::ifstream shipped("Data Files/tc all keys english.tmdf", std::ios::binary);
    const std::string dataFile(std::istreambuf_iterator<char>(shipped), {});
    std::ifstream shippedTypes("Data Files/Wincmd.types", std::ios::binary);
    const std::string types(std::istreambuf_iterator<char>(shippedTypes), {});
    std::mt19937 random(3);
    int files = 0;
    std::size_t previews = 0;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/corpus")) {
        if (entry.path().extension() != ".ini") {
            continue;
        }
        SCOPED_TRACE(entry.path());
        std::ifstream stream(entry.path(), std::ios::binary);
        IniDocument document = IniDocument::Parse({std::istreambuf_iterator<char>(stream), {}},
                                                  world.files.SystemCodePage());
        document.SetValue("Configuration", "Test", "1");
        document.SetValue("Colors", "RedirectSection", "colors.ini");
        std::string bytes = document.Bytes();
        if (++files % 3 == 0 && FindFileMark(bytes) == FileMark::None) {
            bytes = std::string(kUtf16LeMarkBytes) +
                    EncodeUtf16Le(DecodeCodePage(bytes, world.files.SystemCodePage()));
        }
        world.disk.Put("C:\\TC\\colors.ini", "[Colors]\r\nBackColor=1\r\n;ForeColor=2");
        world.disk.Put(SessionWorld::kWincmdTypes, types);
        StartWith({bytes, dataFile, ""});
        for (int round = 0; round < 2; ++round) {  // the second one after a save
            for (int change = 0; change < 60; ++change) {
                // All keys of the data file, or a category: one of the last has others.
                const auto nodes = static_cast<NodeIndex>(Selection().Categories().size());
                const NodeIndex node = nodes - 1 - static_cast<NodeIndex>(random() % 30);
                Selection().SelectCategory(change % 2 == 0 || node < 0 ? kRootNode : node);
                if (Selection().ShowsHeading() || Selection().Rows().Keys().Size() == 0) {
                    continue;
                }
                Selection().Rows().ShowKeyDetails(random() % Selection().Rows().Keys().Size());
                if (random() % 5 < 3) {
                    // Files that several of these settings lead to keep what was saved before.
                    Commands().SetValue("new " + std::to_string(100 * round + files));
                } else {
                    Play("cd"[random() % 2]);
                }
            }
            const std::vector<FilePreview> preview = Pending().Look().files;
            std::map<std::string, std::map<std::string, int>> expected;
            for (const FilePreview& file : preview) {
                auto& lines = expected[file.path] = CountedLines(world.disk.BytesOf(file.path));
                std::map<std::string, int> changes;
                for (const PreviewLine& line : file.lines) {
                    const int sign = line.kind == PreviewLine::Kind::Added     ? 1
                                     : line.kind == PreviewLine::Kind::Removed ? -1
                                                                               : 0;
                    EXPECT_GE(changes[line.text] * sign, 0) << "removed and added: " << line.text;
                    changes[line.text] += sign;
                    lines[line.text] += sign;
                }
                std::erase_if(lines, [](const auto& line) { return line.second == 0; });
            }
            previews += preview.size();
            ASSERT_TRUE(Settings().SaveToSettingsFile());
            for (const auto& [path, lines] : expected) {
                EXPECT_EQ(CountedLines(world.disk.BytesOf(path)), lines) << path;
            }
        }
    }
    EXPECT_EQ(files, 12);
    EXPECT_GT(previews, 20U) << "sections are in other files";
}

// What Total Commander holds when it ends overwrites what was saved while it ran, unless the save
// is repeated behind it.
TEST_F(PendingChangesTest, SavedKeysOutliveARunningTotalCommander) {
    Start("[T]\nA=1\nK=2\n");
    const std::string held = world.disk.BytesOf(SessionWorld::kWincmd);
    struct Hearer final : WorkplaceListener {
        void OnNotice(const Notice& notice) override { notices.push_back(notice); }
        std::vector<Notice> notices;
    } hearer;
    const std::vector<Notice>& notices = hearer.notices;
    Place().Watchers().Add(hearer);
    world.programs.isRunning = true;
    Set(0, "5");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_THAT(notices[0].text,
                AllOf(HasSubstr("1 key saved. Backup made."), HasSubstr("will overwrite")));
    EXPECT_TRUE(notices[0].offersRestart);
    const auto end = [&](const std::string& text) {
        world.programs.isRunning = true;
        world.programs.onEnding = [this, text] {
            world.disk.Put(SessionWorld::kWincmd, text);
            world.disk.Wait(10);
        };
        EXPECT_TRUE(Settings().SaveAndRestart());
    };
    end(held);
    EXPECT_EQ(Saved(), "[T]\nA=5\nK=2\n");
    EXPECT_FALSE(Settings().IsModified());
    EXPECT_THAT(world.prompts.asked, IsEmpty()) << "the user has decided about it already";
    EXPECT_FALSE(notices.back().offersRestart);
    end("[T]\nA=7\nK=2\n[Configuration]\n");
    EXPECT_THAT(world.prompts.asked, ElementsAre("[T] A: A=5 | A=7")) << "a value of its own";

    // In another file nothing of that counts.
    const char* const other = "C:\\TC\\other.ini";
    const auto put = [&](const char* text) { world.disk.Put(other, text + std::string(kEnd)); };
    put("[T]\nA=5\n");
    world.disk.Wait(10);
    ASSERT_TRUE(Session().OpenSettingsFile(other, false));
    world.programs.isRunning = true;
    world.programs.onEnding = [&] { put("[T]\nA=9\n"); };
    EXPECT_TRUE(Settings().SaveAndRestart());
    EXPECT_THAT(world.disk.BytesOf(other), HasSubstr("A=9"));
}

}  // namespace
}  // namespace tamarind
