#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "model/program/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

inline std::string BuiltIn(std::uint16_t number) {
    return std::string(BuiltInText(number));
}

// A test of one or more parts of a session, all of which are there.
class SessionTest : public testing::Test {
protected:
    SessionWorld world;

    EditorSession& Session() { return *world.session; }
    Workplace& Place() { return Session().Place(); }
    KeySelection& Selection() { return Session().Selection(); }
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
        std::string settings;
        std::string dataFile;
        std::string ownSettings;
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
        Selection().ShowKeyDetails(row);
        Commands().SetValue(value);
    }
};

// The keys A, K and Z of section T, a heading and a colour. K is the current key.
class KeyChangesTest : public SessionTest {
protected:
    static constexpr const char* kLastSection = "[Configuration]\r\n";

    void Start(const std::string& settings) {
        StartWith({settings + kLastSection,
                   "[Cat]\nCategoryTargetSection=T\nA=0\nK=1///Key@two\nZ=\n"
                   "[/Head]\n[Col]\nCategoryTargetSection=Colors\nBackColor=-1\n",
                   ""});
        Selection().ShowKeyDetails(1);
    }
    // What a letter of a script does to the current key.
    void Play(char letter) {
        switch (letter) {
            case 's':
                Commands().SetValue("new");
                break;
            case 'e':
                Commands().SetValue("");
                break;
            case 'c':
                Commands().CommentKeys();
                break;
            case 'd':
                Commands().DeleteKeys();
                break;
            case 'u':
                Commands().Undo();
                break;
            case 'r':
                Commands().Redo();
                break;
            default:
                EXPECT_TRUE(Settings().SaveToSettingsFile());
        }
    }
    // What was saved, without the section by which the file is known for a Wincmd.ini.
    std::string Saved() const {
        std::string bytes = world.disk.BytesOf(SessionWorld::kWincmd);
        const std::size_t last = bytes.rfind(kLastSection);
        return last == std::string::npos ? bytes : bytes.erase(last);
    }
};

}  // namespace tamarind
