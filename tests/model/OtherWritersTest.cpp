// Saves beside another program that writes the same file at the wrong moment, and files that come
// and go.
#include <random>

#include "tests/fuzz/OtherWritersChecks.h"
#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

// The keys A and B of section S, A once more in a category of its own, and C of section T.
class OtherWritersTest : public SessionTest {
protected:
    void Start(const std::string& settings) {
        StartWith({settings + kEnd,
                   "[One]\nCategoryTargetSection=S\nA=0\nB=0\n"
                   "[Again]\nCategoryTargetSection=s\na=0\n"
                   "[Two]\nCategoryTargetSection=T\nC=0///text\n",
                   ""});
    }
    std::size_t CountBackups(const char* path = SessionWorld::kWincmd) {
        return world.disk.ListBackups(path).size();
    }
};

TEST_F(OtherWritersTest, NothingOfAnybodyIsLostWheneverTheyWrite) {
    enum class When { BeforeExchange, WhileAside, WhileAsked };
    const std::string first = "[S] A: A=mine | A=2";
    const struct {
        When when;
        const char *theirs, *after;
        std::vector<std::string> asked = {};
    } cases[] = {
        {When::BeforeExchange, "[New]\nx=1\n[S]\nA=1\n", "[New]\nx=1\n[S]\nA=mine\n"},
        // The same key: the answer holds for the value that was shown.
        {When::BeforeExchange, "[S]\nA=theirs\n", "[S]\nA=mine\n", {"[S] A: A=mine | A=theirs"}},
        {When::WhileAside, "[S]\nA=theirs\n", "[S]\nA=mine\n", {"[S] A: A=mine | A=theirs"}},
        {When::WhileAsked, "[S]\nA=2\nB=theirs\n", "[S]\nA=mine\nB=theirs\n", {first}},
        {When::WhileAsked, "[S]\nA=3\n", "[S]\nA=mine\n", {first, "[S] A: A=mine | A=3"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.theirs + std::to_string(int(c.when)));
        Start("[S]\nA=1\nB=1\n");
        Set(0, "mine");
        if (c.when == When::WhileAsked) {
            Write("[S]\nA=2\n");
        }
        bool isTheirTurn = true;
        const auto writeAt = [&](When when) {
            if (when == c.when && std::exchange(isTheirTurn, false)) {
                Write(c.theirs);
            }
        };
        world.disk.beforeExchange = [&](const std::string&) { writeAt(When::BeforeExchange); };
        world.prompts.onConflicts = [&] { writeAt(When::WhileAsked); };
        if (c.when == When::WhileAside) {
            world.disk.whileAside = [&](const std::string&) {
                return std::string(c.theirs) + kEnd;
            };
        }
        world.prompts.asked.clear();
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        EXPECT_EQ(Saved(), c.after);
        EXPECT_EQ(world.prompts.asked, c.asked);
        EXPECT_FALSE(Settings().IsModified());
        ExpectRowsAsOnDisk();
    }
}

TEST_F(OtherWritersTest, NothingIsLostWhateverTheyDo) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::string turns;
        for (auto count = random() % 24; count > 0; --count) {
            turns += static_cast<char>(random());
        }
        SCOPED_TRACE(testing::PrintToString(turns));
        CheckSavesBeside(turns, "[S]\nA=1\n;B=2\nO3=0\n[T]\nC=1\n");
    }
}

TEST_F(OtherWritersTest, AProgramThatKeepsWritingIsNotWaitedForForEver) {
    Start("[S]\nA=1\n");
    Set(0, "mine");
    int round = 0;
    world.disk.beforeExchange = [&](const std::string&) {
        Write("[S]\nA=1\nB=" + std::to_string(++round) + "\n");
    };
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages,
                ElementsAre(AllOf(HasSubstr(SessionWorld::kWincmd),
                                  HasSubstr(BuiltIn(text::kReasonKeepsChanging)))));
    EXPECT_EQ(round, IniTransaction::kMaxRounds);
    EXPECT_TRUE(Settings().IsModified());

    // After an exchange the message names the backup with its text.
    world.disk.beforeExchange = [&](const std::string&) {
        world.disk.whileAside = [&](const std::string&) {
            return "[S]\nA=1\nB=" + std::to_string(++round) + "\n" + kEnd;
        };
    };
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    world.disk.beforeExchange = nullptr;
    EXPECT_THAT(world.prompts.messages.back(),
                HasSubstr(world.disk.ListBackups(SessionWorld::kWincmd).front().path));
    EXPECT_LE(CountBackups(), 2U);
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("A=mine"));
}

// What has been moved aside is not in the file until the next replacement: whoever holds it then is
// waited for.
TEST_F(OtherWritersTest, AHolderKeepsNoTextAside) {
    for (const bool isReading : {false, true}) {
        Start("[S]\nA=1\n");
        Set(0, "mine");
        int held = 0;
        const auto hold = [&](const std::string& path) {
            const FileError error = held-- > 0 ? FileError::InUse : FileError::None;
            isReading ? world.disk.FailReads(path, error) : world.disk.FailReplaces(path, error);
        };
        (isReading ? world.disk.beforeRead : world.disk.beforeExchange) = hold;
        world.disk.whileAside = [&](const std::string&) {
            held = 2;
            return std::string("[S]\nA=1\nB=theirs\n") + kEnd;
        };
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        world.disk.beforeRead = world.disk.beforeExchange = nullptr;
        EXPECT_EQ(Saved(), "[S]\nA=mine\nB=theirs\n");
    }
}

// What cannot be brought together stays among the backups, and the message says where.
TEST_F(OtherWritersTest, ARefusedMergeNamesItsBackup) {
    Start("[S]\nA=1\n");
    Set(0, "mine");
    world.disk.whileAside = [&](const std::string&) {
        world.disk.beforeRead = [&](const std::string&) { Write("[S]\nA=mine\nB=new\n"); };
        return std::string("[S]\nA=1\n\0", 9);  // no text, so that it takes no new key
    };
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    world.disk.beforeRead = nullptr;
    EXPECT_THAT(Saved(), HasSubstr("B=new"));
    EXPECT_THAT(world.prompts.messages,
                ElementsAre(HasSubstr(world.disk.ListBackups(SessionWorld::kWincmd).front().path)));
}

// The question is open for as long as the user thinks; nothing else happens meanwhile.
TEST_F(OtherWritersTest, NothingComesBetweenAQuestionAndItsAnswer) {
    Start("[S]\nA=1\n");
    Set(0, "mine");
    Write("[S]\nA=theirs\n");
    world.prompts.onConflicts = [&] {
        EXPECT_TRUE(Place().IsBusy());
        EXPECT_FALSE(Settings().SaveToSettingsFile());
        EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
        EXPECT_FALSE(Commands().SetValue("other"));
    };
    // A cancelled save leaves everything pending, and starts Total Commander again.
    world.prompts.cancelsConflicts = true;
    world.programs.isRunning = true;
    EXPECT_FALSE(Settings().SaveAndRestart());
    EXPECT_THAT(world.programs.calls.back(), HasSubstr("start"));
    EXPECT_EQ(world.prompts.asked.size(), 1U);
    EXPECT_EQ(world.Rows()[0], "A=mine");
    EXPECT_TRUE(Settings().IsModified());
    // With the file's value in the only conflict nothing is pending, and nothing is asked.
    world.prompts.cancelsConflicts = false;
    world.prompts.conflictsToTake = {true};
    world.disk.Wait(10);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::PutOff);
    EXPECT_EQ(world.prompts.asked.size(), 1U);
    Write("[S]\nA=other\n");
    world.disk.Wait(10);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_FALSE(Settings().IsModified());
    EXPECT_FALSE(States().IsEnabled(Command::FileSave));
    EXPECT_FALSE(States().IsEnabled(Command::EditUndo)) << "the value before is not theirs";
    // What is to be commented out is a change like any other.
    Commands().CommentKeys();
    Write("[S]\nA=again\n");
    world.prompts.asked.clear();
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, ElementsAre("[S] A: ;A=other | A=again"));
}

TEST_F(OtherWritersTest, AFileThatIsHeldOrYoungIsLookedAtAgain) {
    Start("[S]\nA=1\n");
    Write("[S]\n");
    world.disk.FailReads(SessionWorld::kWincmd, FileError::InUse);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::LookAgain);
    world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
    Write("[S]\nA=half\n");
    world.disk.Wait(0.4);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::LookAgain);
    EXPECT_EQ(world.Rows()[0], "A=1");
    world.disk.Wait(0.1);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_EQ(world.Rows()[0], "A=half");
    EXPECT_THAT(world.prompts.messages, IsEmpty());
}

TEST_F(OtherWritersTest, AFileThatIsGoneKeepsItsRows) {
    for (const FileError error : {FileError::NotFound, FileError::Unreachable}) {
        SCOPED_TRACE(int(error));
        Start("[S]\nA=1\nB=2\n");
        Set(0, "mine");
        const std::vector<std::string> rows = world.Rows();
        const std::string before = Saved();
        world.disk.FailReads(SessionWorld::kWincmd, error);
        world.prompts.messages.clear();
        Settings().CheckOutsideChanges();
        Settings().CheckOutsideChanges();
        EXPECT_THAT(world.prompts.messages, ElementsAre("!" + BuiltIn(text::kSettingsGone) +
                                                        "\n\n" + SessionWorld::kWincmd));
        EXPECT_EQ(world.Rows(), rows);
        EXPECT_THAT(world.prompts.asked, IsEmpty());
        // Answered with Cancel, or not even asked where nobody knows whether it is gone.
        EXPECT_FALSE(Settings().SaveToSettingsFile());
        EXPECT_TRUE(Settings().IsModified());
        EXPECT_EQ(Saved(), before);
        world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
        Write("[S]\nA=1\nB=back\n");
        world.disk.Wait(10);
        EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
        EXPECT_EQ(world.Rows()[1], "B=back");
        EXPECT_EQ(world.Rows()[0], "A=mine");
    }
    world.disk.Remove(SessionWorld::kWincmd);
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_FALSE(world.disk.Has(SessionWorld::kWincmd)) << "nobody said yes";
    world.prompts.answers = {Answer::Yes};
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[S]\nA=mine\nB=back\n") << "all that was known";
    ExpectRowsAsOnDisk();
}

TEST_F(OtherWritersTest, ADataFileIsNeitherMadeNorOverwrittenUnasked) {
    Start("");
    const std::string data = world.disk.BytesOf(SessionWorld::kWincmdData);
    Selection().Rows().ShowKeyDetails(3);
    DataFile().ChangeDescription("mine");
    world.disk.Remove(SessionWorld::kWincmdData);
    EXPECT_FALSE(DataFile().SaveDataFile());
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr(BuiltIn(text::kReasonNotFound))));
    EXPECT_FALSE(world.disk.Has(SessionWorld::kWincmdData));
    EXPECT_TRUE(DataFile().IsModified());
    // Changed after the save has looked at it.
    world.disk.Put(SessionWorld::kWincmdData, data);
    world.disk.beforeExchange = [&](const std::string& path) {
        world.disk.beforeExchange = nullptr;
        world.disk.Put(path, data + "D=1///theirs\n");
    };
    world.prompts.messages.clear();
    EXPECT_FALSE(DataFile().SaveDataFile());
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr(BuiltIn(text::kDataFileChanged))));
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmdData), data + "D=1///theirs\n");
    world.prompts.answers = {Answer::Yes, Answer::Yes};
    EXPECT_TRUE(DataFile().AskSaveDataFile()) << "two questions: save, and over the change";
    EXPECT_THAT(world.disk.BytesOf(SessionWorld::kWincmdData),
                AllOf(HasSubstr("C=0///mine\n"), HasSubstr("D=1///theirs\n")));
    EXPECT_EQ(CountBackups(SessionWorld::kWincmdData), 1U);
}

// A settings file of the other kind whose data file cannot be read: nothing changes.
TEST_F(OtherWritersTest, KeysGoIntoNoFileThatDoesNotHaveThem) {
    Start("[S]\nA=1\n");
    Set(0, "2");
    world.disk.Remove(SessionWorld::kWcxFtpData);
    EXPECT_FALSE(Session().OpenSettingsFile(SessionWorld::kWcxFtp, true));
    EXPECT_EQ(Settings().Path(), SessionWorld::kWincmd);
    EXPECT_EQ(world.Rows()[0], "A=2");
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWcxFtp), "[General]\r\nWaitDelay=9\r\n");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "StartUpIniFile"), "Wincmd");
    // At the start the keys are shown all the same, without a file.
    world.SetRegistry("HKEY_CURRENT_USER", "IniFileName", SessionWorld::kWcxFtp);
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(world.Rows()[0], "A");
    EXPECT_EQ(Settings().Path(), "");
}

TEST_F(OtherWritersTest, RowsOfOneKeyChangeTogether) {
    Start("[S]\nA=1\n");
    const auto both = [&] { return world.Rows()[0] + " " + world.Rows()[2]; };
    Set(2, "x");
    EXPECT_EQ(both(), "A=x a=x");
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(both(), "A=x a=x");
    EXPECT_THAT(Saved(), HasSubstr("A=x\n"));
    Selection().Rows().ShowKeyDetails(0);
    Commands().CommentKeys();
    EXPECT_FALSE(Selection().Rows().Record(3).Looks().isChecked);
    Commands().Undo();
    Commands().DeleteKeys();
    EXPECT_EQ(both(), "A a");
    Write("[S]\nA=theirs\n");
    world.prompts.conflictsToTake = {true};
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, ElementsAre("[S] A:  | A=theirs"));
    EXPECT_EQ(both(), "A=theirs a=theirs");
    ExpectRowsAsOnDisk();
}

TEST_F(OtherWritersTest, LongValuesAreReadOnlyAndStayWhole) {
    const std::string whole(5000, 'v');
    Start("[S]\nA=" + whole + "\n");
    EXPECT_FALSE(Commands().BeginInplaceEdit());
    EXPECT_FALSE(Commands().SetValue("1"));
    EXPECT_FALSE(Session().Editing().Browse());
    EXPECT_THAT(world.prompts.messages, Each("i" + BuiltIn(text::kLongValueStays)));
    EXPECT_EQ(world.prompts.messages.size(), 3U);
    world.prompts.messages.clear();
    world.disk.Put("C:\\in.ini", "[S]\nA=1\nB=2\n");
    world.prompts.filesToChoose = {"C:\\in.ini", "C:\\out.ini"};
    Exchange().Import();
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr(BuiltIn(text::kLongValuesSkipped))));
    EXPECT_EQ(world.Rows()[1], "B=2");
    Exchange().Export();
    EXPECT_THAT(world.disk.BytesOf("C:\\out.ini"), HasSubstr("A=" + whole + "\r\n"));
    // Deleted, commented out and taken back it is still all there.
    Selection().Rows().ShowKeyDetails(0);
    for (int step = 0; step < 2; ++step) {
        step == 0 ? Commands().DeleteKeys() : Commands().CommentKeys();
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        Commands().Undo();
        Write("[S]\nB=3\n" + (step == 0 ? "" : ";A=" + whole + "\n"));
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        EXPECT_THAT(Saved(), HasSubstr("\nA=" + whole + "\n"));
    }
}

// What a restore brings back is not undone into something that never was.
TEST_F(OtherWritersTest, ARestoreEndsTheHistoryOfItsKeys) {
    Start("[S]\nB=1\n");
    Set(0, "0");
    Commands().CommentKeys();
    Set(1, "2");
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(CountBackups(), 1U);
    Set(1, "3");
    const std::string backup = world.disk.ListBackups(SessionWorld::kWincmd)[0].path;
    EXPECT_FALSE(Settings().RestoreBackup(SessionWorld::kWincmdData, backup)) << "cancelled";
    world.disk.FailReplaces(SessionWorld::kWincmd, FileError::ReadOnly);
    EXPECT_FALSE(Settings().RestoreBackup(SessionWorld::kWincmd, backup));
    EXPECT_EQ(world.Rows()[0], "A=0");
    world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
    ASSERT_TRUE(Settings().RestoreBackup(SessionWorld::kWincmd, backup));
    EXPECT_EQ(CountBackups(), 2U);
    EXPECT_EQ(world.Rows()[0], "A");
    Commands().Undo();
    EXPECT_EQ(world.Rows()[0], "A=0") << "as it was before the backup was restored";
    Commands().Redo();
    EXPECT_EQ(world.Rows()[0], "A");
    Commands().Undo();
    Commands().Undo();
    EXPECT_EQ(world.Rows()[1], "B=2") << "its change was still pending";
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[S]\nB=2\n;A=0\n");
    // Another file has a history of its own.
    Set(0, "1");
    Commands().Undo();
    EXPECT_TRUE(States().IsEnabled(Command::EditUndo) && States().IsEnabled(Command::EditRedo));
    Session().OpenSettingsFile(SessionWorld::kWincmd, false);
    EXPECT_FALSE(States().IsEnabled(Command::EditUndo) || States().IsEnabled(Command::EditRedo));
}

}  // namespace
}  // namespace tamarind
