#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <random>
#include <sstream>

#include "core/Unicode.h"
#include "model/SettingsWriter.h"
#include "model/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SavingTest : public testing::Test {
protected:
    static constexpr const char* kLastSection = "[Configuration]\r\n";

    SessionWorld world;
    EditorSession& Session() { return *world.session; }

    // Starts with a data file of the keys A, K and Z of section T.
    void Start(const std::string& settings) {
        world.PutUsualFiles("");
        world.disk.Put(SessionWorld::kWincmdData,
                       "[Cat]\nCategoryTargetSection=T\nA=0\nK=1///Key@two\nZ=\n"
                       "[/Head]\n[Col]\nCategoryTargetSection=Colors\nBackColor=-1\n");
        world.disk.Put(SessionWorld::kWincmd, settings + kLastSection);
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
        Session().ShowKeyDetails(1);  // K
    }
    // What was saved, without the section by which the file is known for a Wincmd.ini.
    std::string Saved() const {
        std::string bytes = world.disk.BytesOf(SessionWorld::kWincmd);
        const std::size_t last = bytes.rfind(kLastSection);
        return last == std::string::npos ? bytes : bytes.erase(last);
    }
};

// Every pair of a pending and an initial state against the bytes of the file.
TEST_F(SavingTest, EachPendingStateBecomesTheLinesThatItStandsFor) {
    enum Edit { kDelete, kSet, kComment };
    struct Case {
        Edit edit;
        const char* before;
        const char* after;
    };
    const Case cases[] = {
        {kDelete, "[T]\nA=1\n", "[T]\nA=1\n"},
        {kSet, "[T]\nA=1\n;end\n", "[T]\nA=1\nK=new\n;end\n"},
        {kComment, "[T]\nA=1\n;end\n", "[T]\nA=1\n;K=new\n;end\n"},
        {kDelete, "[T]\nK=1\nA=1\nk=2\n", "[T]\nA=1\n"},
        {kSet, "[T]\n K = 1 \nA=1\nk=2\n", "[T]\n K = new \nA=1\nk=2\n"},
        {kComment, "[T]\n K = 1\nA=1\nk=2\n", "[T]\n ;K = 1\nA=1\n"},
        {kDelete, "[T]\n;K=1\nA=1\n;K=2\n", "[T]\nA=1\n"},
        {kSet, "[T]\n ;K = 1\nA=1\n;k=2\n", "[T]\n K = new\nA=1\n"},
        {kComment, "[T]\n;K=1\nA=1\n;K=2\n", "[T]\n;K=new\nA=1\n;K=2\n"},
        // Both forms are there: the active one counts, and a line of the wanted form is used.
        {kDelete, "[T]\n;K=0\nK=1\n", "[T]\n;K=0\n"},
        {kSet, "[T]\n;K=0\nK=1\n", "[T]\n;K=0\nK=new\n"},
        {kComment, "[T]\n;K=0\nA=1\nK=1\n", "[T]\n;K=1\nA=1\n"},
    };
    for (const Case& testCase : cases) {
        Start(testCase.before);
        const KeyState initial = Session().Record(2).initialState;
        switch (testCase.edit) {
            case kDelete:
                // Deleting is offered for present keys only; an absent one is set before.
                if (initial == KeyState::Absent) {
                    Session().SetValue("x");
                }
                Session().DeleteKey();
                break;
            case kSet:
                Session().SetValue("new");
                break;
            case kComment:
                if (initial != KeyState::Active) {
                    Session().SetValue("new");
                }
                Session().CommentKey();
                break;
        }
        EXPECT_TRUE(Session().IsModified()) << testCase.before;
        EXPECT_TRUE(Session().SaveToSettingsFile()) << testCase.before;
        EXPECT_EQ(Saved(), testCase.after) << testCase.before;
        EXPECT_FALSE(Session().IsModified());
        const KeyRecord record = Session().Record(2);
        EXPECT_EQ(record.initialState, record.currentState);
        const int replaces = world.disk.replaces;
        Session().SaveToSettingsFile();
        EXPECT_EQ(world.disk.replaces, replaces) << "nothing is left to save";
    }
}

// Two traps of real files: quotes that reading strips, and values longer than any buffer.
TEST_F(SavingTest, QuotesAndLongValuesSurvive) {
    const std::string command = "\"C:\\dir\\x.exe\" \"%1\"";
    const std::string tail(5000, 'v');
    Start("[T]\nK=" + tail + "\nA=\"" + command + "\"\nZ='single'\n");
    EXPECT_EQ(Session().Record(1).currentValue, command);

    Session().CommentKey();
    EXPECT_TRUE(Session().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr(";K=" + tail + "\n")) << "the line's own text moves";
    Session().Undo();
    EXPECT_TRUE(Session().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("\nK=" + tail.substr(1)));
    EXPECT_THAT(Saved(), HasSubstr(tail));

    // Taken back to what the file says: the line stays as it is, its own quotes included.
    Session().ShowKeyDetails(2);
    Session().SetValue("x");
    Session().Undo();
    Session().ShowKeyDetails(0);
    Session().SetValue(command + " ");
    EXPECT_TRUE(Session().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("\nZ='single'\n"));
    EXPECT_THAT(Saved(), HasSubstr("\nA=\"" + command + "\"\n"));
    EXPECT_EQ(Session().Record(1).currentValue, command) << "the record holds what was stored";
}

TEST_F(SavingTest, AFailedSaveHasNotHappened) {
    struct Case {
        const char* name;
        FileError read;
        FileError replace;
        const char* reason;
    };
    const Case cases[] = {
        {"read-only", FileError::None, FileError::ReadOnly, "read-only"},
        {"locked", FileError::InUse, FileError::None, "Another program"},
        {"a folder now", FileError::IsFolder, FileError::None, "folder"},
        {"disk full", FileError::None, FileError::DiskFull, "disk is full"},
    };
    for (const Case& testCase : cases) {
        Start("[T]\nK=1\n");
        Session().SetValue("2");
        world.disk.FailReads(SessionWorld::kWincmd, testCase.read);
        world.disk.FailReplaces(SessionWorld::kWincmd, testCase.replace);
        world.prompts.messages.clear();
        EXPECT_FALSE(Session().SaveToSettingsFile()) << testCase.name;
        ASSERT_EQ(world.prompts.messages.size(), 1U) << testCase.name;
        EXPECT_THAT(world.prompts.messages[0], HasSubstr(SessionWorld::kWincmd));
        EXPECT_THAT(world.prompts.messages[0], HasSubstr(testCase.reason));
        EXPECT_TRUE(Session().IsModified()) << testCase.name;
        EXPECT_EQ(Session().Record(2).currentState, KeyState::ValueSet) << testCase.name;
        world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        EXPECT_EQ(Saved(), "[T]\nK=1\n") << testCase.name;
        EXPECT_TRUE(Session().SaveToSettingsFile()) << testCase.name;
        EXPECT_EQ(Saved(), "[T]\nK=2\n") << testCase.name;
    }
}

TEST_F(SavingTest, WithoutASettingsFileNothingIsLost) {
    Start("[T]\nK=1\n");
    world.registry = MemoryRegistry();
    ASSERT_TRUE(world.Start());
    Session().SetValue("2");
    world.prompts.messages.clear();
    EXPECT_FALSE(Session().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages,
                ElementsAre("!" + std::string(BuiltInText(text::kNoSettingsFile))));
    EXPECT_TRUE(Session().IsModified());
}

TEST_F(SavingTest, WhatTheFileCanNotHoldIsRefusedOrStoredInAFormThatItCan) {
    Start("[T]\r\nK=1\r\n");
    Session().SetValue("\xE4\xB8\xAD");  // beyond every one-byte code page
    EXPECT_TRUE(Session().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\r\nK=\xEF\xBB\xBF\xE4\xB8\xAD\r\n");
    Session().SetValue("line\nbreak");
    EXPECT_FALSE(Session().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("[T] K"));
    EXPECT_TRUE(Session().IsModified());

    world.prompts.messages.clear();
    EXPECT_FALSE(Session().StoreEditedValue("K=" + std::string(4096, 'x')));
    EXPECT_THAT(world.prompts.messages,
                ElementsAre("!" + std::string(BuiltInText(text::kValueTooLong))));
    EXPECT_EQ(Session().Record(2).currentValue, "line\nbreak");

    world.disk.Put(SessionWorld::kWincmdData,
                   "\xEF\xBB\xBF[C]\nCategoryTargetSection=T\n\xE4\xB8\xAD=1\n");
    world.disk.Put(SessionWorld::kWincmd, "[T]\nA=1\n[Configuration]\r\n");
    ASSERT_TRUE(world.Start());
    Session().SetValue("2");
    EXPECT_FALSE(Session().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\nA=1\n");
}

TEST_F(SavingTest, TheEditBoxOpensWithTheLineAndTakesWhatFollowsTheEqualsSign) {
    Start("[T]\nK=v=w\n");
    EXPECT_EQ(Session().BeginInplaceEdit()->text, "K=v=w");
    EXPECT_EQ(Session().BeginInplaceEdit()->selectionStart, 2U);
    Session().ShowKeyDetails(0);
    EXPECT_EQ(Session().BeginInplaceEdit()->text, "A=0") << "an absent key offers its default";
    struct Case {
        const char* typed;
        const char* shown;
    };
    const Case cases[] = {{"other=12345", "A=12345"},
                          {"77", "A=77"},
                          {"=", "A="},
                          {"A=a=b", "A=a=b"},
                          {" x ", "A= x "}};
    for (const Case& testCase : cases) {
        EXPECT_TRUE(Session().StoreEditedValue(testCase.typed));
        EXPECT_EQ(VisibleText(Session().Record(1)), testCase.shown);
        EXPECT_EQ(Session().Record(1).currentState, KeyState::ValueSet);
    }
    Session().SelectCategory(1);  // the heading
    EXPECT_FALSE(Session().BeginInplaceEdit());
    EXPECT_FALSE(Session().SetValue("1"));
    EXPECT_EQ(world.prompts.beeps, 2);
    Session().Undo();
    EXPECT_EQ(VisibleText(Session().Record(1)), "A= x ") << "no undo while a heading is shown";
}

TEST_F(SavingTest, CommandsFollowTheCurrentKeysState) {
    Start("[T]\nK=1\n;Z=2\n");
    const auto enabled = [&] {
        std::string flags;
        for (const Command command : {Command::EditValue, Command::EditComment, Command::EditDelete,
                                      Command::EditUndo, Command::EditRedo, Command::FileSave}) {
            flags += Session().IsEnabled(command) ? '+' : '-';
        }
        return flags;
    };
    EXPECT_EQ(enabled(), "+++---");
    Session().ShowKeyDetails(0);
    EXPECT_EQ(enabled(), "+-----");
    Session().CommentKey();
    Session().DeleteKey();
    EXPECT_FALSE(Session().IsModified()) << "an absent key is neither commented nor deleted";
    Session().ShowKeyDetails(2);
    EXPECT_EQ(enabled(), "+-+---");
    Session().DeleteKey();
    EXPECT_EQ(enabled(), "+--+-+");
    Session().Undo();
    EXPECT_EQ(enabled(), "+++-++");
    Session().SelectCategory(1);
    EXPECT_EQ(enabled(), "-----+");
    Session().SelectCategory(kRootNode);
    Session().ProgramSettings().Values().autoSelectNextKey = 1;
    Session().ShowKeyDetails(1);
    Session().CommentKey();
    EXPECT_EQ(Session().CurrentKey(), 3U) << "the next key's turn";
    Session().ShowKeyDetails(3);
    EXPECT_FALSE(Session().SelectNextKey());
    EXPECT_EQ(Session().CurrentKey(), 4U);
}

TEST_F(SavingTest, ColorKeysShowAndChooseColors) {
    Start("[Colors]\nBackColor=255\n");
    EXPECT_FALSE(Session().CurrentColor());
    world.prompts.filesToChoose = {"C:\\a=b.exe"};
    EXPECT_TRUE(Session().BrowseValue());
    EXPECT_EQ(Session().Record(2).currentValue, "C:\\a=b.exe") << "as the dialog gave it";
    EXPECT_FALSE(Session().BrowseValue()) << "cancelled";
    Session().ShowKeyDetails(3);
    EXPECT_EQ(Session().CurrentColor()->color, 255U);
    world.prompts.colorsToChoose = {"65280"};
    EXPECT_TRUE(Session().BrowseValue());
    EXPECT_EQ(Session().CurrentColor()->color, 65280U);
    EXPECT_EQ(ColorOfValue("$FF8000").color, 0xFF8000U);
    EXPECT_EQ(ColorOfValue("16777216").color, 0U);
    EXPECT_TRUE(ColorOfValue("-1").isSystemColor);
    EXPECT_TRUE(ColorOfValue(std::nullopt).isSystemColor);
}

TEST_F(SavingTest, LeavingAsksFirst) {
    struct Case {
        Answer answer;
        FileError error;
        bool mayLeave;
        bool isSaved;
    };
    const Case cases[] = {
        {Answer::Yes, FileError::None, true, true},
        {Answer::Yes, FileError::ReadOnly, false, false},
        {Answer::No, FileError::None, true, false},
        {Answer::Cancel, FileError::None, false, false},
    };
    for (const Case& testCase : cases) {
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        Start("[T]\nK=1\n");
        EXPECT_TRUE(Session().AskSaveSettings()) << "nothing is pending";
        Session().SetValue("2");
        world.disk.FailReplaces(SessionWorld::kWincmd, testCase.error);
        world.prompts.answers = {testCase.answer};
        world.prompts.messages.clear();
        EXPECT_EQ(Session().AskSaveSettings(), testCase.mayLeave);
        EXPECT_EQ(world.prompts.messages.at(0), "?Save changes to  C:\\TC\\Wincmd.ini\n");
        EXPECT_EQ(Saved() == "[T]\nK=2\n", testCase.isSaved);
    }
}

TEST_F(SavingTest, ARestartClosesBeforeTheSaveAndStartsAfterIt) {
    Start("[T]\nK=1\n");
    world.disk.Put("C:\\TC\\TOTALCMD64.EXE", "");
    EXPECT_FALSE(Session().IsEnabled(Command::FileSaveAndRestart));
    world.programs.isRunning = true;
    EXPECT_TRUE(Session().IsEnabled(Command::FileSaveAndRestart));
    Session().SetValue("2");
    std::vector<std::string> savedAtWait;
    world.programs.onWait = [&] {
        savedAtWait.push_back(Saved());
        EXPECT_TRUE(Session().IsBusy());
        EXPECT_FALSE(Session().SaveToSettingsFile());
        EXPECT_FALSE(Session().IsEnabled(Command::EditDelete));
    };
    EXPECT_TRUE(Session().SaveAndRestart());
    EXPECT_THAT(savedAtWait, ElementsAre("[T]\nK=1\n", "[T]\nK=2\n"));
    EXPECT_THAT(world.programs.calls,
                ElementsAre("front", "close", "wait", "wait",
                            "start \"C:\\TC\\TOTALCMD64.EXE\" /i=\"C:\\TC\\Wincmd.ini\""));

    // Nothing is touched where its folder is not known.
    world.programs.calls.clear();
    world.environment.variables.erase("Commander_Path");
    Session().SetValue("3");
    EXPECT_TRUE(Session().SaveAndRestart());
    EXPECT_THAT(world.programs.calls, IsEmpty());
    EXPECT_EQ(Saved(), "[T]\nK=3\n");
}

// The same rules written down once more, as plainly as they can be said.
class Reference {
public:
    struct Key {
        std::string name;
        std::optional<std::string> value;
        char initial = '0';
        char current = '0';
    };
    std::vector<Key> keys;
    std::map<std::string, std::string> file;  // by entry name
    std::vector<std::string> undo;
    std::vector<std::string> redo;

    void Change(std::size_t key, const std::string& value, char state) {
        undo.push_back(std::to_string(key) + "///" + keys[key].value.value_or(""));
        redo.clear();
        keys[key].value = value;
        keys[key].current = state;
    }
    void Comment(std::size_t key) {
        if (IsChecked(key)) {
            keys[key].current = '5';
            undo.push_back(std::to_string(key) + "///;;;commented;;;");
            redo.clear();
        }
    }
    void Delete(std::size_t key) {
        if (keys[key].current != '0' && keys[key].current != '3') {
            Change(key, "", '3');
        }
    }
    void Replay(std::vector<std::string>& from, std::vector<std::string>& to) {
        if (from.empty()) {
            return;
        }
        const std::string line = from.back();
        from.pop_back();
        const std::size_t slashes = line.find("///");
        Key& key = keys[std::stoul(line.substr(0, slashes))];
        const std::string payload = line.substr(slashes + 3);
        if (payload == ";;;commented;;;") {
            to.push_back(line);
            key.current = key.current == '2' || key.current == '5' ? '4' : '5';
        } else {
            to.push_back(line.substr(0, slashes) + "///" + key.value.value_or(""));
            key.value = payload;
            key.current = payload.empty() ? '3' : '4';
        }
    }
    // What a file says of a key: its value with "=" in front, that behind a ";", or nothing.
    void Import(std::size_t key, const std::string& line) {
        const bool isCommented = line.substr(0, 1) == ";";
        keys[key].value = line.empty() ? line : line.substr(isCommented ? 2 : 1);
        keys[key].current = line.empty() ? '3' : isCommented ? '5' : '4';
    }
    bool IsChecked(std::size_t key) const {
        return keys[key].current == '1' || keys[key].current == '4';
    }
    void Save() {
        for (Key& key : keys) {
            if (key.current < '3') {
                continue;
            }
            const std::string value(StoredValue(key.value.value_or("")));
            if (key.current != '5' || key.initial == '1') {
                file.erase(key.current == '5' || key.initial == '1' ? key.name : ";" + key.name);
            }
            if (key.current == '4') {
                file[key.name] = value;
            } else if (key.current == '5') {
                file[";" + key.name] = value;
            }
            key.value = value;
            key.initial = key.current = static_cast<char>(key.current == '3'   ? '0'
                                                          : key.current == '4' ? '1'
                                                                               : '2');
        }
    }
    std::string Visible(std::size_t key) const {
        const bool isBare = keys[key].current == '0' || keys[key].current == '3';
        return isBare ? keys[key].name : keys[key].name + "=" + keys[key].value.value_or("");
    }
};

TEST_F(SavingTest, RandomSequencesAgreeWithTheReference) {
    const char* const values[] = {"1",          "0",       "",    " blanks ",
                                  "\"quoted\"", "'a' 'b'", "a=b", "x///y"};
    for (unsigned seed = 1; seed <= 3; ++seed) {
        Start("[T]\nA=1\n;K=2\n");
        Reference reference;
        reference.keys = {{"A", "1", '1', '1'}, {"K", "2", '2', '2'}, {"Z", {}, '0', '0'}};
        reference.file = {{"A", "1"}, {";K", "2"}};
        std::mt19937 random(seed);
        for (int step = 0; step < 10000; ++step) {
            const std::size_t key = random() % 3;
            const std::size_t row = Session().Keys().RowOf(static_cast<RowKey>(key + 1));
            const bool isShown = row < Session().Keys().Size();
            if (isShown) {
                Session().ShowKeyDetails(row);
            }
            switch (isShown ? random() % 10 : 6 + random() % 4) {
                case 0:
                case 1: {
                    const std::string value = values[random() % std::size(values)];
                    Session().StoreEditedValue("K=" + value);
                    reference.Change(key, value, '4');
                    break;
                }
                case 2:
                    Session().CommentKey();
                    reference.Comment(key);
                    break;
                case 3:
                    Session().DeleteKey();
                    reference.Delete(key);
                    break;
                case 4:
                case 5:
                    Session().Undo();
                    reference.Replay(reference.undo, reference.redo);
                    break;
                case 6:
                    Session().Redo();
                    reference.Replay(reference.redo, reference.undo);
                    break;
                case 7: {
                    const auto filter = static_cast<KeyFilter>(random() % 3);
                    Session().SetKeyFilter(filter);
                    for (std::size_t at = 0; at < 3; ++at) {
                        const bool isIn =
                            filter == KeyFilter::ShowAll ||
                            reference.IsChecked(at) == (filter == KeyFilter::ShowActive);
                        const KeyList& list = Session().Keys();
                        ASSERT_EQ(list.RowOf(static_cast<RowKey>(at + 1)) < list.Size(), isIn);
                    }
                    break;
                }
                case 8: {
                    std::string file = "[T]\n";
                    for (std::size_t at = 0; at < 3; ++at) {
                        const char* const forms[] = {"", "=new", ";=\"quoted\"", "="};
                        const std::string line = forms[random() % 4];
                        const bool isCommented = line.substr(0, 1) == ";";
                        const std::string& name = reference.keys[at].name;
                        file += line.empty()  ? "other=1\n"
                                : isCommented ? ";" + name + "=\"\"quoted\"\"\n"
                                              : name + line + "\n";
                        const KeyList& list = Session().Keys();
                        if (list.RowOf(static_cast<RowKey>(at + 1)) < list.Size()) {
                            reference.Import(at, line);
                        }
                    }
                    world.disk.Put("C:\\keys.ini", file);
                    world.prompts.filesToChoose = {"C:\\keys.ini"};
                    Session().ImportKeys();
                    break;
                }
                default:
                    ASSERT_TRUE(Session().SaveToSettingsFile());
                    reference.Save();
                    break;
            }
            const IniDocument saved = IniDocument::Parse(Saved(), 1252);
            for (std::size_t at = 0; at < reference.keys.size(); ++at) {
                const auto& expected = reference.keys[at];
                const KeyRecord record = Session().Record(static_cast<RowKey>(at + 1));
                ASSERT_EQ(static_cast<char>(record.currentState), expected.current) << step;
                ASSERT_EQ(static_cast<char>(record.initialState), expected.initial) << step;
                ASSERT_EQ(VisibleText(record), reference.Visible(at)) << step;
                for (const std::string& name : {expected.name, ";" + expected.name}) {
                    const auto inFile = reference.file.find(name);
                    const auto found = saved.FindValue("T", name);
                    ASSERT_EQ(found.has_value(), inFile != reference.file.end()) << step << name;
                    ASSERT_TRUE(!found || *found == inFile->second) << step << name;
                }
            }
        }
    }
}

// In each real file three keys change, and nothing else does.
TEST_F(SavingTest, OnlyTheChangedLinesOfRealFilesDiffer) {
    for (int number = 1; number <= 12; ++number) {
        char path[64];
        std::snprintf(path, sizeof path, "tests/data/corpus/wincmd_%02d.ini", number);
        std::ifstream file(path, std::ios::binary);
        std::stringstream content;
        content << file.rdbuf();
        const std::string before = content.str();
        ASSERT_FALSE(before.empty()) << path;
        // A data file for the first key, the middle one and the last of those that can be found.
        const IniDocument document = IniDocument::Parse(before, SystemAnsiCodePage());
        std::vector<std::pair<std::string, std::string>> all;
        for (IniDocument::SectionId section = 0; section < document.SectionCount(); ++section) {
            for (auto line = document.FirstLine(section); line != IniDocument::kNone;
                 line = document.NextLine(line)) {
                const std::string name(document.KeyName(line));
                if (document.Kind(line) == IniLineKind::Key && IsAscii(name) && !name.empty() &&
                    document.FindSection(document.SectionName(section)) == section &&
                    IsAscii(document.SectionName(section)) && !document.IsRepeated(line)) {
                    all.emplace_back(document.SectionName(section), name);
                }
            }
        }
        ASSERT_GE(all.size(), 2U) << path;
        std::string dataFile;
        for (const std::size_t at : {std::size_t{0}, all.size() / 2, all.size() - 1}) {
            dataFile += "[C" + std::to_string(at) + "]\nCategoryTargetSection=" + all[at].first +
                        "\n" + all[at].second + "=\n";
        }
        world.PutUsualFiles(before);
        world.disk.Put(SessionWorld::kWincmdData, dataFile);
        world.disk.Put(SessionWorld::kWcxFtpData, dataFile);
        ASSERT_TRUE(world.Start());
        for (std::size_t row = 0; row < Session().Keys().Size(); ++row) {
            Session().ShowKeyDetails(row);
            ASSERT_TRUE(Session().SetValue("changed by the test"));
        }
        ASSERT_TRUE(Session().SaveToSettingsFile());
        const std::string after = world.disk.BytesOf(Session().SettingsPath());
        const auto lines = [](const std::string& bytes) {
            std::vector<std::string> result(1);
            for (const char c : bytes) {
                result.back() += c;
                if (c == '\n') {
                    result.emplace_back();
                }
            }
            return result;
        };
        const auto linesBefore = lines(before);
        const auto linesAfter = lines(after);
        ASSERT_EQ(linesBefore.size(), linesAfter.size()) << path;
        std::size_t different = 0;
        for (std::size_t at = 0; at < linesBefore.size(); ++at) {
            different += linesBefore[at] == linesAfter[at] ? 0U : 1U;
        }
        EXPECT_EQ(different, std::min<std::size_t>(3, all.size())) << path;
    }
}

}  // namespace
}  // namespace tamarind
