// Saves beside another program that writes the same file at the wrong moment, and files that come
// and go.
#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

// The keys A and B of section S, A once more in a category of its own, and C of section T.
class OtherWritersTest : public SessionTest {
protected:
    void Start(const std::string& settings) {
        StartWith({settings + "[Configuration]\n",
                   "[One]\nCategoryTargetSection=S\nA=0\nB=0\n"
                   "[Again]\nCategoryTargetSection=s\na=0\n"
                   "[Two]\nCategoryTargetSection=T\nC=0///text\n",
                   ""});
    }
    void Write(const std::string& settings) {
        world.disk.Put(SessionWorld::kWincmd, settings + "[Configuration]\n");
    }
    std::string File() const { return world.disk.BytesOf(SessionWorld::kWincmd); }
    std::size_t CountBackups(const char* path = SessionWorld::kWincmd) {
        return world.disk.ListBackups(path).size();
    }
    // What another program has written has been brought together with ours, and the rows say what a
    // program that starts now reads.
    void ExpectRowsAsOnDisk() {
        const std::vector<std::string> rows = world.Rows();
        EditorSession fresh(world.Services());
        fresh.LoadSettings();
        ASSERT_TRUE(fresh.Activate(""));
        std::vector<std::string> read;
        for (std::size_t row = 0; row < fresh.Selection().Keys().Size(); ++row) {
            read.push_back(
                VisibleText(fresh.Selection().Record(fresh.Selection().Keys().KeyAt(row))));
        }
        EXPECT_EQ(rows, read);
    }
};

TEST_F(OtherWritersTest, NothingOfAnybodyIsLostWheneverTheyWrite) {
    enum class When { BeforeRead, BeforeExchange, WhileAside, WhileAsked };
    const std::string first = "[S] A: A=mine | A=2";
    const struct {
        When when;
        const char* theirs;
        const char* after;
        std::vector<std::string> asked = {};
    } cases[] = {
        {When::BeforeRead, "[S]\nA=1\nB=theirs\n", "[S]\nA=mine\nB=theirs\n"},
        {When::BeforeExchange, "[S]\nA=1\nB=theirs\n", "[S]\nA=mine\nB=theirs\n"},
        {When::BeforeExchange, "[New]\nx=1\n[S]\nA=1\n", "[New]\nx=1\n[S]\nA=mine\n"},
        {When::WhileAside, "[S]\nA=1\nB=theirs\n", "[S]\nA=mine\nB=theirs\n"},
        // The same key: the answer holds for the value that was shown.
        {When::BeforeExchange, "[S]\nA=theirs\n", "[S]\nA=mine\n", {"[S] A: A=mine | A=theirs"}},
        {When::WhileAside, "[S]\nA=theirs\n", "[S]\nA=mine\n", {"[S] A: A=mine | A=theirs"}},
        {When::WhileAsked, "[S]\nA=2\nB=theirs\n", "[S]\nA=mine\nB=theirs\n", {first}},
        {When::WhileAsked, "[S]\nA=3\n", "[S]\nA=mine\n", {first, "[S] A: A=mine | A=3"}},
    };
    const std::string end = "[Configuration]\n";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.theirs + std::to_string(int(c.when)));
        Start("[S]\nA=1\nB=1\n");
        Set(0, "mine");
        bool isTheirTurn = true;
        const auto write = [&](const std::string&) {
            if (std::exchange(isTheirTurn, false)) {
                Write(c.theirs);
            }
        };
        if (c.when == When::BeforeRead) {
            world.disk.beforeRead = write;
        } else if (c.when == When::BeforeExchange) {
            world.disk.beforeExchange = write;
        } else if (c.when == When::WhileAside) {
            world.disk.whileAside = [&](const std::string&) { return c.theirs + end; };
        } else {
            Write("[S]\nA=2\n");
            world.prompts.onConflicts = [&] { write({}); };
        }
        world.prompts.asked.clear();
        const std::size_t backups = CountBackups();
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        world.disk.beforeRead = world.disk.beforeExchange = nullptr;
        world.prompts.onConflicts = nullptr;
        EXPECT_EQ(File(), c.after + end);
        EXPECT_EQ(world.prompts.asked, c.asked);
        EXPECT_FALSE(Settings().IsModified());
        EXPECT_LE(CountBackups(), backups + 2U);
        ExpectRowsAsOnDisk();
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
    const auto aside = [&](const std::string&) {
        return "[S]\nA=1\nB=" + std::to_string(++round) + "\n[Configuration]\n";
    };
    world.disk.beforeExchange = [&](const std::string&) { world.disk.whileAside = aside; };
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    world.disk.beforeExchange = nullptr;
    EXPECT_THAT(world.prompts.messages.back(),
                HasSubstr(world.disk.ListBackups(SessionWorld::kWincmd).front().path));
    EXPECT_LE(CountBackups(), 2U);
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(File(), HasSubstr("A=mine"));
}

// What has been moved aside is not in the file until the next replacement: whoever holds it then is
// waited for, and the message says where the text is.
TEST_F(OtherWritersTest, AHolderKeepsNoTextAside) {
    for (const bool isReading : {false, true}) {
        for (const int tries : {2, IniTransaction::kMaxRounds}) {
            SCOPED_TRACE(testing::Message() << isReading << tries);
            Start("[S]\nA=1\n");
            Set(0, "mine");
            int held = 0;
            const auto hold = [&](const std::string& path) {
                const FileError error = held == 0 ? FileError::None : FileError::InUse;
                held -= held > 0 ? 1 : 0;
                isReading ? world.disk.FailReads(path, error)
                          : world.disk.FailReplaces(path, error);
            };
            (isReading ? world.disk.beforeRead : world.disk.beforeExchange) = hold;
            world.disk.whileAside = [&](const std::string&) {
                held = tries;
                return "[S]\nA=1\nB=theirs\n[Configuration]\n";
            };
            world.prompts.messages.clear();
            const bool isSaved = Settings().SaveToSettingsFile();
            EXPECT_EQ(isSaved, tries < IniTransaction::kMaxRounds);
            world.disk.beforeRead = world.disk.beforeExchange = nullptr;
            if (isSaved) {
                EXPECT_EQ(File(), "[S]\nA=mine\nB=theirs\n[Configuration]\n");
                ExpectRowsAsOnDisk();
            } else {
                const auto aside = world.disk.ListBackups(SessionWorld::kWincmd).front().path;
                EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr(aside)));
            }
            world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
            world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        }
    }
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
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_FALSE(Settings().IsModified());
    EXPECT_FALSE(States().IsEnabled(Command::FileSave));
    EXPECT_FALSE(States().IsEnabled(Command::EditUndo)) << "the value before is not theirs";
    world.prompts.messages.clear();
    EXPECT_TRUE(Settings().AskSaveSettings());
    EXPECT_THAT(world.prompts.messages, IsEmpty());
    // What is to be commented out is a change like any other.
    Commands().CommentKeys();
    Write("[S]\nA=again\n");
    world.prompts.asked.clear();
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, ElementsAre("[S] A: ;A=theirs | A=again"));
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
        const std::string before = File();
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
        EXPECT_EQ(File(), before);
        world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
        Write("[S]\nA=1\nB=back\n");
        world.disk.Wait(10);
        EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
        EXPECT_EQ(world.Rows()[1], "B=back");
        EXPECT_EQ(world.Rows()[0], "A=mine");
    }
    world.disk.Remove(SessionWorld::kWincmd);
    world.prompts.answers = {Answer::Yes};
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(File(), "[S]\nA=mine\nB=back\n[Configuration]\n") << "all that was known";
    ExpectRowsAsOnDisk();
}

TEST_F(OtherWritersTest, ADataFileIsNeitherMadeNorOverwrittenUnasked) {
    Start("");
    const std::string data = world.disk.BytesOf(SessionWorld::kWincmdData);
    Selection().ShowKeyDetails(3);
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
    world.prompts.answers = {Answer::Yes};
    EXPECT_TRUE(DataFile().SaveDataFile());
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
    EXPECT_THAT(File(), HasSubstr("A=x\n"));
    Selection().ShowKeyDetails(0);
    Commands().CommentKeys();
    EXPECT_FALSE(Selection().Record(3).Looks().isChecked);
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

// What a save leaves in the file is what the rows say, not what was meant to be there.
TEST_F(OtherWritersTest, RowsFollowTheFileThatWasWritten) {
    const struct {
        const char* before;
        const char* script;  // e: Enter without a change, d: delete, c: comment
        const char* row;
        const char* after;
    } cases[] = {
        {"[S]\nA=1\n;A=0\n", "d", "A=0", "[S]\n;A=0\n"},
        {"[S]\nA=\"    Powershell x86\"\n", "e", "A=    Powershell x86",
         "[S]\nA=\"    Powershell x86\"\n"},
        {"[S]\nA=\"    Powershell x86\"\n", "ec", "A=    Powershell x86",
         "[S]\n;A=\"    Powershell x86\"\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.before);
        Start(c.before);
        for (const char letter : std::string(c.script)) {
            letter == 'd' ? Commands().DeleteKeys()
            : letter == 'c'
                ? Commands().CommentKeys()
                : (void)Commands().StoreEditedValue(Commands().BeginInplaceEdit()->text);
            EXPECT_TRUE(Settings().SaveToSettingsFile());
        }
        EXPECT_EQ(File(), c.after + std::string("[Configuration]\n"));
        EXPECT_EQ(world.Rows()[0], c.row);
        ExpectRowsAsOnDisk();
    }
}

TEST_F(OtherWritersTest, LongValuesAreReadOnlyAndStayWhole) {
    const std::string whole(5000, 'v');
    Start("[S]\nA=" + whole + "\n");
    const auto expectRefused = [&](bool isDone) {
        EXPECT_FALSE(isDone);
        EXPECT_THAT(world.prompts.messages, ElementsAre("i" + BuiltIn(text::kLongValueStays)));
        world.prompts.messages.clear();
    };
    expectRefused(Commands().BeginInplaceEdit().has_value());
    expectRefused(Commands().SetValue("1"));
    expectRefused(Commands().BrowseValue());
    world.disk.Put("C:\\in.ini", "[S]\nA=1\nB=2\n");
    world.prompts.filesToChoose = {"C:\\in.ini", "C:\\out.ini"};
    Exchange().Import();
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr(BuiltIn(text::kLongValuesSkipped))));
    EXPECT_EQ(world.Rows()[1], "B=2");
    Exchange().Export();
    EXPECT_THAT(world.disk.BytesOf("C:\\out.ini"), HasSubstr("A=" + whole + "\r\n"));
    // Deleted, commented out and taken back it is still all there.
    Selection().ShowKeyDetails(0);
    for (int step = 0; step < 2; ++step) {
        step == 0 ? Commands().DeleteKeys() : Commands().CommentKeys();
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        Commands().Undo();
        Write("[S]\nB=3\n" + (step == 0 ? "" : ";A=" + whole + "\n"));
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        EXPECT_THAT(File(), HasSubstr("\nA=" + whole + "\n"));
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
    ASSERT_TRUE(Settings().RestoreBackup(SessionWorld::kWincmd,
                                         world.disk.ListBackups(SessionWorld::kWincmd)[0].path));
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
    EXPECT_EQ(File(), "[S]\nB=2\n;A=0\n[Configuration]\n");
    // Another file has a history of its own.
    Set(0, "1");
    Commands().Undo();
    EXPECT_TRUE(States().IsEnabled(Command::EditUndo) && States().IsEnabled(Command::EditRedo));
    Session().OpenSettingsFile(SessionWorld::kWincmd, false);
    EXPECT_FALSE(States().IsEnabled(Command::EditUndo) || States().IsEnabled(Command::EditRedo));
}

}  // namespace
}  // namespace tamarind
