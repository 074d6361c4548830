#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using OpenSettingsTest = KeyChangesTest;

// The keys A and B of section S, C of T and the redirections of both, and a key of the settings
// file's own section.
class RedirectionTest : public SessionTest {
protected:
    static constexpr const char* kOther = "C:\\TC\\other.ini";

    void Start(const std::string& settings, const std::string& other = "") {
        if (!other.empty()) {
            world.disk.Put(kOther, other);
        }
        StartWith({settings + kEnd,
                   "[One]\nCategoryTargetSection=S\nA=0\nB=0\nRedirectSection=\n"
                   "[Two]\nCategoryTargetSection=T\nC=0\n"
                   "[Three]\nCategoryTargetSection=Configuration\nAlternateUserIni=\n",
                   ""});
    }
    std::string Other() const { return world.disk.BytesOf(kOther); }
};

// Every pair of a pending and an initial state, on every way there, against the bytes of the file.
TEST_F(OpenSettingsTest, EachPendingStateBecomesTheLinesThatItStandsFor) {
    using enum KeyState;
    const std::tuple<const char*, const char*, KeyState, const char*, const char*> cases[] = {
        {"[T]\nA=1\n", "sd", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\nA=1\n;end\n", "s", ValueSet, "K=new", "[T]\nA=1\nK=new\n;end\n"},
        {"[T]\nA=1\n;end\n", "sc", ToBeCommented, "K=new", "[T]\nA=1\n;K=new\n;end\n"},
        {"[T]\nK=1\nA=1\nk=2\n", "d", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\n K = 1 \nA=1\nk=2\n", "s", ValueSet, "K=new", "[T]\n K = new \nA=1\nk=2\n"},
        {"[t]\n k = 1\nA=1\nK=2\n", "c", ToBeCommented, "K=1", "[t]\n ;k = 1\nA=1\n"},
        {"[T]\nK=\n; K=7\n", "c", ToBeCommented, "K=", "[T]\n;K=\n; K=7\n"},
        {"[T]\n;K=1\nA=1\n;K=2\n", "d", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\n ;K = 1\nA=1\n;k=2\n", "s", ValueSet, "K=new", "[T]\n K = new\nA=1\n"},
        {"[T]\n;K=1\nA=1\n;K=2\n", "sc", ToBeCommented, "K=new", "[T]\n;K=new\nA=1\n;K=2\n"},
        // Both forms are there: the active one counts, and a line of the wanted form is used.
        {"[T]\n;K=0\nK=1\n", "d", ToBeDeleted, "K", "[T]\n;K=0\n"},
        {"[T]\n;K=0\nK=1\n", "s", ValueSet, "K=new", "[T]\n;K=0\nK=new\n"},
        {"[T]\n;K=0\nA=1\nK=1\n", "c", ToBeCommented, "K=1", "[T]\n;K=1\nA=1\n"},
        // Taken back and done again, with saves in between.
        {"[T]\n", "su", ToBeDeleted, "K", "[T]\n"},
        {"[T]\n;K=1\n", "su", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "cur", ToBeCommented, "K=1", "[T]\n;K=1\n"},
        {"[T]\nK=1\n", "cwu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "swuwr", ValueSet, "K=new", "[T]\nK=new\n"},
        {"[T]\nK=1\n", "dwu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "eur", ToBeDeleted, "K", "[T]\n"},
        {"[T]\nK=1\n", "sdcuu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "scuurr", ToBeCommented, "K=new", "[T]\n;K=new\n"},
        // What was taken back is gone with the next change.
        {"[T]\nK=1\n", "sucr", ToBeCommented, "K=1", "[T]\n;K=1\n"},
    };
    for (const auto& [before, script, state, shown, after] : cases) {
        SCOPED_TRACE(testing::PrintToString(before) + " " + script);
        Start(before);
        for (const char letter : std::string(script)) {
            Play(letter);
        }
        EXPECT_EQ(Selection().Rows().Record(2).currentState, state);
        EXPECT_EQ(VisibleText(Selection().Rows().Record(2)), shown);
        EXPECT_TRUE(Settings().IsModified());
        EXPECT_TRUE(Settings().SaveToSettingsFile());
        EXPECT_EQ(Saved(), after);
        EXPECT_FALSE(Settings().IsModified());
        EXPECT_EQ(Selection().Rows().Record(2).initialState,
                  Selection().Rows().Record(2).currentState);
        const int replaces = world.disk.replaces;
        Settings().SaveToSettingsFile();
        EXPECT_EQ(world.disk.replaces, replaces) << "nothing is left to save";
        ExpectRowsAsOnDisk();
    }
}

// Quotes that reading strips stay in the line, also where it was only taken back or opened.
TEST_F(OpenSettingsTest, QuotesSurvive) {
    const std::string command = "\"C:\\dir\\x.exe\" \"%1\"";
    Start("[T]\nK=\"  blanks \"\nA=\"" + command + "\"\nZ='single'\n");
    EXPECT_TRUE(Commands().StoreEditedValue(Commands().BeginInplaceEdit()->text));
    Set(2, "x");
    Commands().Undo();
    EXPECT_EQ(Selection().Rows().Record(1).currentValue, command);
    Set(0, command + " ");
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\nK=\"  blanks \"\nA=\"" + command + "\"\nZ='single'\n");
    EXPECT_EQ(Selection().Rows().Record(1).currentValue, command)
        << "the record holds what was stored";
    Selection().Rows().ShowKeyDetails(1);
    Commands().CommentKeys();
    EXPECT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("\n;K=\"  blanks \"\n"));
    ExpectRowsAsOnDisk();
}

TEST_F(OpenSettingsTest, LeavingAsksFirst) {
    const char* const asked = "?Save changes to  ";
    const std::tuple<Answer, FileError, bool, const char*, const char*> cases[] = {
        {Answer::Yes, FileError::None, true, "[T]\nK=2\n", asked},
        {Answer::Yes, FileError::ReadOnly, false, "[T]\nK=1\n", "read-only"},
        {Answer::Yes, FileError::DiskFull, false, "[T]\nK=1\n", "disk is full"},
        {Answer::No, FileError::None, true, "[T]\nK=1\n", asked},
        {Answer::Cancel, FileError::None, false, "[T]\nK=1\n", asked},
    };
    for (const auto& [answer, error, mayLeave, saved, told] : cases) {
        SCOPED_TRACE(told + std::to_string(int(answer)));
        Start("[T]\nK=1\n");
        EXPECT_TRUE(Settings().AskSaveSettings()) << "nothing is pending";
        Commands().SetValue("2");
        world.disk.FailReplaces(SessionWorld::kWincmd, error);
        world.prompts.answers = {answer};
        world.prompts.messages.clear();
        EXPECT_EQ(Settings().AskSaveSettings(), mayLeave);
        EXPECT_THAT(world.prompts.messages.at(0), HasSubstr(asked));
        EXPECT_THAT(world.prompts.messages.back(),
                    AllOf(HasSubstr(SessionWorld::kWincmd), HasSubstr(told)));
        EXPECT_EQ(Saved(), saved);
        // A save that has failed can be tried again.
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        EXPECT_TRUE(mayLeave || Settings().IsModified());
        EXPECT_TRUE(mayLeave || Settings().SaveToSettingsFile());
        EXPECT_TRUE(mayLeave || Saved() == "[T]\nK=2\n");
    }
}

TEST_F(RedirectionTest, SectionsAreReadWhereTheirRedirectionLeads) {
    world.environment.variables["DIR"] = "C:\\TC";
    const char* const other = "[S]\nA=other\n";
    const struct {
        const char *settings, *other, *row;  // of A
        bool isLoop = false;
    } cases[] = {
        {"[S]\nA=main\nRedirectSection=other.ini\n", other, "A=other"},
        {"[S]\nredirectsection = other.ini  \nA=main\n", other, "A=other"},
        {"[S]\nRedirectSection=.\\other.ini\n", other, "A=other"},
        {"[S]\nRedirectSection=%DIR%\\OTHER.ini\n", other, "A=other"},
        {"[S]\nRedirectSection=C:\\TC\\other.ini\n", other, "A=other"},
        {"[S]\nA=main\nRedirectSection=0\n", other, "A=main"},
        {"[S]\nA=main\nRedirectSection=\n", other, "A=main"},
        {"[S]\nA=main\nRedirectSection=1\n", other, "A=main"},
        {"[Configuration]\nAlternateUserIni=%DIR%\\other.ini\n[S]\nA=main\nRedirectSection=1\n",
         other, "A=other"},
        {"[S]\nA=main\n;RedirectSection=other.ini\n", other, "A=main"},
        {"[S]\nA=main\n[S]\nRedirectSection=other.ini\n", other, "A=main"},
        {"[S]\nA=main\nRedirectSection=gone.ini\n", other, "A"},
        // Followed once, and not back to where it came from.
        {"[S]\nRedirectSection=other.ini\n", "[S]\nA=other\nRedirectSection=third.ini\n",
         "A=other"},
        {"[S]\nA=main\nRedirectSection=Wincmd.ini\n", other, "A=main", true},
        {"[S]\nA=main\nRedirectSection=other.ini\n", "[S]\nA=x\nRedirectSection=wincmd.ini\n",
         "A=main", true},
    };
    const std::string loop = "!" + BuiltIn(text::kRedirectionLoop) + " [S]";
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.settings);
        world.prompts.messages.clear();
        Start(testCase.settings, testCase.other);
        EXPECT_EQ(world.Rows()[0], testCase.row);
        EXPECT_EQ(world.prompts.messages, std::vector<std::string>(testCase.isLoop ? 1 : 0, loop));
    }
}

TEST_F(RedirectionTest, ASaveWritesEachFileThatASectionIsIn) {
    Start("[S]\nA=1\nRedirectSection=other.ini\n[T]\nRedirectSection=C:\\TC\\new.ini\n",
          "[S]\n; theirs\n;A=2\n");
    EXPECT_EQ(Settings().TargetPanel(), "Target Section:  [S]  other.ini  One");
    Selection().Rows().ShowKeyDetails(2);
    EXPECT_EQ(Settings().TargetPanel(), "Target Section:  [S]  One");  // of the key itself
    Set(0, "3");
    Set(3, "4");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Other(), "[S]\n; theirs\nA=3\n");
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\new.ini"), "[T]\r\nC=4\r\n");
    EXPECT_THAT(Saved(), HasSubstr("[S]\nA=1\nRedirectSection"));

    // A file that cannot be written is named; the others are written.
    Set(0, "5");
    Set(3, "6");
    world.disk.FailReplaces(kOther, FileError::ReadOnly);
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr(kOther));
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\new.ini"), "[T]\r\nC=6\r\n");
    EXPECT_TRUE(Settings().IsModified());
    world.disk.FailReplaces(kOther, FileError::None);
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Other(), "[S]\n; theirs\nA=5\n");

    // Changes to what the files say already are known as such, whichever file comes first.
    Set(4, "x");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    Set(4, "x");
    Set(0, "5");
    for (const PendingChange& change : Pending().Look().changes) {
        EXPECT_TRUE(change.isAsInFile) << change.name;
    }

    // Without its redirection a section is read from the settings file again.
    Selection().Rows().ShowKeyDetails(2);
    Commands().DeleteKeys();
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(world.Rows()[0], "A=1");
    EXPECT_THAT(Saved(), HasSubstr("[S]\nA=1\n[T]"));
}

TEST_F(RedirectionTest, WhatOtherProgramsChangeIsTakenOver) {
    Start("[S]\nA=1\nB=1\n[T]\nC=1\n");
    Set(1, "mine");
    Write("[T]\nC=2\n[S]\nA=2\nB=1\n");
    world.disk.Wait(10);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_THAT(world.Rows(),
                ElementsAre("A=2", "B=mine", "RedirectSection", "C=2", "AlternateUserIni"));
    EXPECT_THAT(world.prompts.asked, IsEmpty());
    EXPECT_TRUE(Settings().IsModified());

    // A time stamp alone is no change.
    Write("[T]\nC=2\n[S]\nA=2\nB=1\n");
    world.disk.Wait(10);
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::Taken);

    // The same keys on both sides: asked again until they are decided, about each key once.
    Set(0, "mine");
    Write("[S]\nA=theirs\n;B=theirs\n");
    world.disk.Wait(10);
    world.prompts.cancelsConflicts = true;
    EXPECT_EQ(Settings().CheckOutsideChanges(), OutsideCheck::PutOff);
    EXPECT_THAT(world.prompts.asked,
                ElementsAre("[S] A: A=mine | A=theirs", "[S] B: B=mine | ;B=theirs"));
    world.prompts.asked.clear();
    Write("[S]\nA=again\n;B=again\n");
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked,
                ElementsAre("[S] A: A=mine | A=again", "[S] B: B=mine | ;B=again"));
    EXPECT_THAT(Saved(), HasSubstr(";B=again"));
    world.prompts.cancelsConflicts = false;
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[S]\nA=mine\nB=mine\n");

    // What comes to the same is no conflict.
    world.prompts.asked.clear();
    Set(1, "same");
    Selection().Rows().ShowKeyDetails(0);
    Commands().CommentKeys();
    Write("[S]\n;A=mine\nB=same\n");
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, IsEmpty());
}

TEST(BackupDifferencesTest, DiffersInKeysAndNotInTheirPlaces) {
    const auto parsed = [](const char* bytes) { return IniDocument::Parse(bytes, 1252); };
    const auto differences =
        CompareBackup(parsed("[S]\nGone=1\nK=old\nK=twice\n;C=1\n[Q]\nSame=\"1\"\n"),
                      parsed("[Q]\r\nSAME = 1\r\n[s]\r\nk=new\r\nC=1\r\nNew=\r\n"));
    std::vector<std::string> lines;
    for (const BackupDifference& difference : differences) {
        lines.push_back(difference.key + ": " + difference.inBackup + " | " + difference.now);
    }
    EXPECT_THAT(lines, ElementsAre("[s] k: k=old | k=new", "[s] C:  | C=1",
                                   "[s] New:  | New=", "[S] Gone: Gone=1 | ", "[S] C: ;C=1 | "));
}

}  // namespace
}  // namespace tamarind
