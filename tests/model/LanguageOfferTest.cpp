#include <fstream>
#include <iterator>

#include "core/text/Unicode.h"
#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

constexpr const char* kGermanData = "C:\\Tamarind\\Data Files\\tc all keys german.tmdf";
constexpr const char* kGermanTexts = "C:\\Tamarind\\Languages\\German.lng";

class LanguageOfferTest : public SessionTest {
protected:
    static std::string Shipped(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // As the packages lay it out, for somebody who starts the program for the first time.
    void LayOut(const std::string& change = "") {
        world.PutUsualFiles("[Configuration]\r\n");
        world.disk.Put(SessionWorld::kWincmdData,
                       Shipped("Data Files/tc all keys english.tmdf") + change);
        world.disk.Put(SessionWorld::kWcxFtpData,
                       Shipped("Data Files/tc wcx_ftp keys english.tmdf"));
        world.disk.Put(kGermanData,
                       "[Deutsch]\r\nCategoryTargetSection=Configuration\r\nA=1///\r\n");
        world.disk.Put("C:\\Tamarind\\Data Files\\tc wcx_ftp keys german.tmdf",
                       "[TargetIniFile]\r\nWcx_ftp=1\r\n");
        world.disk.Put(kGermanTexts, Shipped("Languages/German.lng"));
        world.disk.Wait(10);
    }
    bool StartAs(std::uint16_t systemLanguage, const std::string& commandLine = "") {
        SessionServices services = world.Services();
        services.systemLanguage = systemLanguage;
        world.session = std::make_unique<EditorSession>(services);
        world.session->LoadSettings();
        return world.session->Activate(commandLine);
    }
};

TEST_F(LanguageOfferTest, TheShippedFilesAreKnown) {
    for (const auto& [target, name] : {std::pair(SettingsTarget::Wincmd, "tc all keys"),
                                       {SettingsTarget::WcxFtp, "tc wcx_ftp keys"}}) {
        EXPECT_EQ(HashOfShippedFile(target),
                  HashBytes(Shipped("Data Files/" + std::string(name) + " english.tmdf")))
            << name << ": put the second number into LanguageOffer.cpp";
    }
}

TEST_F(LanguageOfferTest, ANewUserIsAskedOnce) {
    LayOut();
    world.prompts.answers = {Answer::Yes};
    ASSERT_TRUE(StartAs(7));
    ASSERT_EQ(world.prompts.messages.size(), 1U);
    EXPECT_EQ(world.prompts.messages[0],
              "?Sollen Programm und Beschreibungen der Schl\xC3\xBCssel auf Deutsch erscheinen?\n\n"
              "Do you want the program and the descriptions of keys in German?");
    EXPECT_EQ(DataFile().Path(), kGermanData);
    EXPECT_EQ(Place().Text(text::kKey), "Schl\xC3\xBCssel");
    EXPECT_EQ(world.OwnSetting("Common", "LanguageFile"), kGermanTexts);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "UseDefaultLanguage"), "0");
    EXPECT_THAT(world.OwnSetting("ConfigurationEditor", "WcxftpDataFile"), HasSubstr("german"));
    ASSERT_TRUE(StartAs(7));
    EXPECT_EQ(DataFile().Path(), kGermanData);
    EXPECT_EQ(world.prompts.messages.size(), 1U);
}

TEST_F(LanguageOfferTest, NobodyElseIsAsked) {
    LayOut();
    world.prompts.answers = {Answer::No};
    ASSERT_TRUE(StartAs(7));
    EXPECT_EQ(DataFile().Path(), SessionWorld::kWincmdData);
    ASSERT_TRUE(StartAs(7));
    EXPECT_EQ(world.prompts.messages.size(), 1U) << "no longer new";

    const auto startsSilently = [this](std::uint16_t language, const std::string& commandLine) {
        world.disk.Remove(SessionWorld::kOwnSettings);
        world.prompts.messages.clear();
        StartAs(language, commandLine);
        return world.prompts.messages.empty();
    };
    EXPECT_TRUE(startsSilently(9, ""));
    EXPECT_TRUE(startsSilently(7, '"' + std::string(SessionWorld::kWincmdData) + '"'));
    EXPECT_FALSE(startsSilently(7, ""));
    world.disk.Remove(kGermanData);
    EXPECT_TRUE(startsSilently(7, ""));
    LayOut("; the user's own\r\n");
    EXPECT_TRUE(startsSilently(7, ""));
}

TEST_F(LanguageOfferTest, TheOptionsOfferTheDescriptionsToo) {
    LayOut();
    ASSERT_TRUE(StartAs(9));
    const auto choose = [this](const char* file) {
        OptionsEditor& options = Place().Options();
        options.Begin();
        options.SetLanguageFile(file);
        options.SetFlag(&OptionsEditor::Choices::usesDefaultLanguage, std::string(file).empty());
        options.Apply();
        options.End();
    };
    choose(kGermanTexts);
    EXPECT_THAT(world.prompts.messages, ElementsAre("?Sollen auch die Beschreibungen der "
                                                    "Schl\xC3\xBCssel auf Deutsch erscheinen?"));
    EXPECT_EQ(DataFile().Path(), SessionWorld::kWincmdData) << "no";
    choose("");
    Commands().SetValue("7");
    choose(kGermanTexts);
    EXPECT_EQ(world.prompts.messages.size(), 1U) << "not while something is pending";
    Commands().Undo();
    choose("");
    world.prompts.answers = {Answer::Yes};
    Settings().SaveToSettingsFile();
    choose(kGermanTexts);
    EXPECT_EQ(DataFile().Path(), kGermanData);
    EXPECT_THAT(world.Rows(), ElementsAre("A"));
}

}  // namespace
}  // namespace tamarind
