#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/program/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The keys A and B of section S, C of T and the redirections of both, and a key of the settings
// file's own section.
class TrustTest : public testing::Test {
protected:
    static constexpr const char* kOther = "C:\\TC\\other.ini";

    SessionWorld world;
    EditorSession& Session() { return *world.session; }

    void Start(const std::string& settings, const std::string& other = "") {
        world.PutUsualFiles("");
        world.disk.Put(SessionWorld::kWincmdData,
                       "[One]\nCategoryTargetSection=S\nA=0\nB=0\nRedirectSection=\n"
                       "[Two]\nCategoryTargetSection=T\nC=0\n"
                       "[Three]\nCategoryTargetSection=Configuration\nAlternateUserIni=\n");
        Write(settings);
        if (!other.empty()) {
            world.disk.Put(kOther, other);
        }
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
    }
    // As another program does it.
    void Write(const std::string& settings) {
        world.disk.Put(SessionWorld::kWincmd, settings + "[Configuration]\n");
        world.disk.Wait(10);
    }
    void Set(std::size_t row, const std::string& value) {
        Session().Selection().ShowKeyDetails(row);
        Session().Commands().SetValue(value);
    }
    std::string Main() const { return world.disk.BytesOf(SessionWorld::kWincmd); }
    std::string Other() const { return world.disk.BytesOf(kOther); }
};

TEST_F(TrustTest, SectionsAreReadWhereTheirRedirectionLeads) {
    world.environment.variables["DIR"] = "C:\\TC";
    const char* const other = "[S]\nA=other\n";
    const struct {
        const char* settings;
        const char* other;
        const char* row;  // of A
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
    const std::string loop = "!" + std::string(BuiltInText(text::kRedirectionLoop)) + " [S]";
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.settings);
        world.prompts.messages.clear();
        Start(testCase.settings, testCase.other);
        EXPECT_EQ(world.Rows()[0], testCase.row);
        EXPECT_EQ(world.prompts.messages, std::vector<std::string>(testCase.isLoop ? 1 : 0, loop));
    }
}

TEST_F(TrustTest, ASaveWritesEachFileThatASectionIsIn) {
    Start("[S]\nA=1\nRedirectSection=other.ini\n[T]\nRedirectSection=C:\\TC\\new.ini\n",
          "[S]\n; theirs\n;A=2\n");
    EXPECT_EQ(Session().TargetFile().TargetPanel(), "Target Section:  [S]  other.ini");
    Session().Selection().ShowKeyDetails(2);
    EXPECT_EQ(Session().TargetFile().TargetPanel(), "Target Section:  [S]");  // of the key itself
    Set(0, "3");
    Set(3, "4");
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(Other(), "[S]\n; theirs\nA=3\n");
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\new.ini"), "[T]\r\nC=4\r\n");
    EXPECT_THAT(Main(), HasSubstr("[S]\nA=1\nRedirectSection"));

    // A file that can not be written is named; the others are written.
    Set(0, "5");
    Set(3, "6");
    world.disk.FailReplaces(kOther, FileError::ReadOnly);
    EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr(kOther));
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\new.ini"), "[T]\r\nC=6\r\n");
    EXPECT_TRUE(Session().TargetFile().IsModified());
    world.disk.FailReplaces(kOther, FileError::None);
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(Other(), "[S]\n; theirs\nA=5\n");

    // Without its redirection a section is read from the settings file again.
    Session().Selection().ShowKeyDetails(2);
    Session().Commands().DeleteKey();
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(world.Rows()[0], "A=1");
    EXPECT_THAT(Main(), HasSubstr("[S]\nA=1\n[T]"));
}

TEST_F(TrustTest, WhatOtherProgramsChangeIsTakenOver) {
    Start("[S]\nA=1\nB=1\n[T]\nC=1\n");
    Set(1, "mine");
    Write("[T]\nC=2\n[S]\nA=2\nB=1\n");
    EXPECT_EQ(Session().TargetFile().CheckOutsideChanges(), OutsideCheck::Taken);
    EXPECT_THAT(world.Rows(),
                ElementsAre("A=2", "B=mine", "RedirectSection", "C=2", "AlternateUserIni"));
    EXPECT_THAT(world.prompts.asked, IsEmpty());
    EXPECT_TRUE(Session().TargetFile().IsModified());

    // A time stamp alone is no change.
    Write("[T]\nC=2\n[S]\nA=2\nB=1\n");
    EXPECT_EQ(Session().TargetFile().CheckOutsideChanges(), OutsideCheck::Taken);

    // The same key on both sides: asked again until it is decided.
    Write("[S]\n;B=theirs\n");
    world.prompts.cancelsConflicts = true;
    EXPECT_EQ(Session().TargetFile().CheckOutsideChanges(), OutsideCheck::PutOff);
    EXPECT_THAT(world.prompts.asked, ElementsAre("[S] B: B=mine | ;B=theirs"));
    EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(Main(), HasSubstr(";B=theirs"));
    world.prompts.cancelsConflicts = false;
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(Main(), "[S]\nB=mine\n[Configuration]\n");

    Set(1, "mine");
    Session().Commands().DeleteKey();
    Write("[S]\nB=\"\"theirs\"\"\n");
    world.prompts.conflictsToTake = {true};
    world.prompts.asked.clear();
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, ElementsAre("[S] B:  | B=\"theirs\""));
    EXPECT_EQ(world.Rows()[1], "B=\"theirs\"");
    EXPECT_EQ(Main(), "[S]\nB=\"\"theirs\"\"\n[Configuration]\n");

    // What comes to the same is no conflict.
    world.prompts.asked.clear();
    Set(1, "same");
    Write("[S]\nB=same\n");
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.asked, IsEmpty());
}

// Total Commander writes its own settings while it closes, some of it late.
TEST_F(TrustTest, ItsLastWriteComesBeforeOurs) {
    Start("[S]\nA=1\nB=1\n");
    Set(0, "mine");
    world.programs.isRunning = true;
    world.programs.refusesToClose = true;
    world.programs.onEnding = [&] {
        Write("[S]\nA=1\nB=theirs\nNew=1\n");
        world.programs.isRunning = false;
    };
    ASSERT_TRUE(Session().TargetFile().SaveAndRestart());
    EXPECT_EQ(Main(), "[S]\nA=mine\nB=theirs\nNew=1\n[Configuration]\n");
    EXPECT_EQ(world.Rows()[1], "B=theirs");
    EXPECT_THAT(world.prompts.messages, IsEmpty());

    world.programs.isRunning = true;
    world.programs.onEnding = [] {};
    Set(0, "again");
    ASSERT_TRUE(Session().TargetFile().SaveAndRestart());
    EXPECT_THAT(Main(), HasSubstr("A=again"));
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("still running"));
}

TEST_F(TrustTest, TwoWindowsKeepEachOthersLists) {
    Start("");
    EditorSession second(world.Services());
    second.LoadSettings();
    ASSERT_TRUE(second.Activate(""));
    Session().FavoriteKeys().SetOrganizerOpen(true);
    ASSERT_TRUE(second.FavoriteKeys().AddFavorite("A", "added there"));
    ASSERT_TRUE(Session().FavoriteKeys().AddFavorite("B", "added here"));
    Session().FavoriteKeys().Organizer().MoveUp();
    ASSERT_TRUE(Session().FavoriteKeys().ApplyOrganizer());
    EXPECT_EQ(world.OwnSetting("FavoritesList", "A"), "added there");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "B"), "added here");

    world.disk.Put("C:\\b.ini", "[Configuration]\n");
    second.OpenSettingsFile(SessionWorld::kWincmd, true);
    Session().OpenSettingsFile("C:\\b.ini", true);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), "C:\\b.ini");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles2"), SessionWorld::kWincmd);
    second.Place().OwnSettings().Values().splitPosition = 1234;
    second.Place().OwnSettings().SaveSettings();
    Session().Place().OwnSettings().SaveSettings();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "1234");
}

// Where the program's own settings are kept.
TEST_F(TrustTest, OwnSettingsGoWhereTheyCanBeWritten) {
    const std::string user = "C:\\Users\\me\\Tamarind Editors\\tamarind editors.ini";
    world.environment.variables["APPDATA"] = "C:\\Users\\me";
    Start("");
    EXPECT_EQ(Session().Place().OwnSettings().Path(), SessionWorld::kOwnSettings);
    world.disk.Remove(SessionWorld::kOwnSettings);
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::AccessDenied);
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Session().Place().OwnSettings().Path(), user);
    EXPECT_THAT(world.disk.folders, ElementsAre("C:\\Users\\me\\Tamarind Editors"));
    ASSERT_TRUE(Session().FavoriteKeys().AddFavorite("A", "kept"));
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Session().FavoriteKeys().Items().size(), 1U);
    // One beside the program wins, also if it can only be read.
    world.disk.Put(SessionWorld::kOwnSettings, "[FavoritesList]\nB=1\nC=2\n");
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Session().FavoriteKeys().Items().size(), 2U);
    EXPECT_FALSE(Session().FavoriteKeys().AddFavorite("D", "not kept"));
    // Nowhere at all, which stops nothing.
    world.disk.Remove(SessionWorld::kOwnSettings);
    world.environment.variables.erase("APPDATA");
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Session().Place().OwnSettings().Values().mainWindowWidth, 9000);
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
