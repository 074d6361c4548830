#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "model/program/StringTable.h"
#include "model/session/SelectionTexts.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

inline std::string BuiltIn(std::uint16_t number) {
    return std::string(BuiltInText(number));
}

// A test of one or more parts of a session, all of which are there.
class SessionTest : public testing::Test {
protected:
    static constexpr const char* kSettingsText =
        "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\n";

    // The section by which a file is known for a Wincmd.ini.
    static constexpr const char* kEnd = "[Configuration]\r\n";

    SessionWorld world;

    EditorSession& Session() { return *world.session; }
    Workplace& Place() { return Session().Place(); }
    KeySelection& Selection() { return Session().Selection(); }
    KeyFinding& Finding() { return Session().Finding(); }
    SelectionTexts Texts() { return {Session().Place(), Selection()}; }
    OpenDataFile& DataFile() { return Session().DataFile(); }
    OpenSettings& Settings() { return Session().Settings(); }
    KeyCommands& Commands() { return Session().Commands(); }
    KeyExchange& Exchange() { return Session().Exchange(); }
    PendingChanges& Pending() { return Session().Pending(); }
    FavoritesBook& FavoriteKeys() { return Session().FavoriteKeys(); }
    RecentSettings& Recent() { return Session().Recent(); }
    const CommandStates& States() { return Session().States(); }

    // With the files of SessionWorld::PutUsualFiles, of which those that are given are others.
    struct StartFiles {
        std::string settings, dataFile, ownSettings;
    };
    void StartWith(const StartFiles& files) {
        world.PutUsualFiles(files.settings);
        if (!files.dataFile.empty()) {
            world.disk.Put(SessionWorld::kWincmdData, files.dataFile);
        }
        if (!files.ownSettings.empty()) {
            world.disk.Put(SessionWorld::kOwnSettings, files.ownSettings);
        }
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
    }
    // With keys of the section [Configuration], in which ColorBack is 7.
    void StartWithKeys(const std::string& keys, const std::string& ownSettings = "") {
        StartWith({"[Configuration]\r\nColorBack=7\r\n",
                   "\xEF\xBB\xBF[Cat]\r\nCategoryTargetSection=Configuration\r\n" + keys,
                   ownSettings});
    }
    void Set(std::size_t row, const std::string& value) {
        Selection().Rows().ShowKeyDetails(row);
        Commands().SetValue(value);
    }
    // As another program does it.
    void Write(const std::string& settings) {
        world.disk.Put(SessionWorld::kWincmd, settings + kEnd);
    }
    // What was saved, without kEnd.
    std::string Saved() const {
        std::string bytes = world.disk.BytesOf(SessionWorld::kWincmd);
        const std::size_t last = bytes.rfind(kEnd);
        return last == std::string::npos ? bytes : bytes.erase(last);
    }
    // Starts the program again, which must show what this one does.
    void ExpectRowsAsOnDisk() {
        const std::vector<std::string> rows = world.Rows();
        ASSERT_TRUE(world.Start());
        EXPECT_EQ(world.Rows(), rows);
    }
};

// The keys A, K and Z of section T, a heading and a color. K is the current key.
class KeyChangesTest : public SessionTest {
protected:
    void Start(const std::string& settings) {
        StartWith({settings + kEnd,
                   "[Cat]\nCategoryTargetSection=T\nA=0\nK=1///Key@two\nZ=\n"
                   "[/Head]\n[Col]\nCategoryTargetSection=Colors\nBackColor=-1\n",
                   ""});
        Selection().Rows().ShowKeyDetails(1);
    }
    // What a letter of a script does to the current key.
    void Play(char letter) {
        const std::map<char, std::function<void()>> moves = {
            {'s', [this] { Commands().SetValue("new"); }},
            {'e', [this] { Commands().SetValue(""); }},
            {'c', [this] { Commands().CommentKeys(); }},
            {'d', [this] { Commands().DeleteKeys(); }},
            {'u', [this] { Commands().Undo(); }},
            {'r', [this] { Commands().Redo(); }},
            {'w', [this] { EXPECT_TRUE(Settings().SaveToSettingsFile()); }},
        };
        moves.at(letter)();
    }
};

}  // namespace tamarind
