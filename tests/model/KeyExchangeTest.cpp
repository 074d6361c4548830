#include "model/session/KeyExchange.h"

#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

constexpr const char* kFile = "C:\\TC\\exchange.ini";

class KeyExchangeTest : public KeyChangesTest {
protected:
    // The rows after an import in which the user takes what `choose` leaves.
    std::vector<std::string> Import(const std::function<bool(ImportReview&)>& choose) {
        world.prompts.filesToChoose = {kFile};
        world.prompts.onImport = choose;
        Exchange().Import();
        return world.Rows();
    }
};

TEST_F(KeyExchangeTest, OnlyWhatIsCheckedIsImported) {
    Start("[T]\nA=1\n;K=2\nZ=3\n");
    world.disk.Put(kFile, "[T]\nA=1\n;Z=9\n");
    world.disk.Wait(10);
    std::vector<std::string> shown;
    EXPECT_THAT(Import([&](ImportReview& review) {
                    for (const ImportRow& row : review.rows) {
                        shown.push_back(row.key + ": " + row.now + " > " + row.after);
                    }
                    EXPECT_EQ(review.missingCount, 2U);
                    return false;
                }),
                ElementsAre("A=1", "K=2", "Z=3", "BackColor"));
    EXPECT_THAT(shown, ElementsAre("[T] A: A=1 > A=1", "[T] Z: Z=3 > ;Z=9"));
    EXPECT_FALSE(Settings().IsModified()) << "the user has cancelled";

    Import([](ImportReview& review) {
        review.removesMissing = false;
        review.rows[0].isTaken = false;
        return true;
    });
    EXPECT_EQ(Pending().CountText(), "1 change");
    EXPECT_EQ(Commands().UndoName(), "import of Z");
    Commands().Undo();
    EXPECT_FALSE(Settings().IsModified());

    // With everything checked each shown key is pending.
    EXPECT_THAT(Import(nullptr), ElementsAre("A=1", "K", "Z=9", "BackColor"));
    EXPECT_EQ(Pending().CountText(), "4 changes");
    EXPECT_EQ(Commands().UndoName(), "import of 4 keys");
    Commands().Undo();
    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_THAT(Import(nullptr), ElementsAre("A=1")) << "Z is no longer active";
    Commands().Undo();
    EXPECT_FALSE(Settings().IsModified());

    world.disk.Remove(kFile);
    Import(nullptr);
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr(kFile));
    EXPECT_FALSE(Settings().IsModified()) << "a file that has vanished says nothing";
}

// Blanks and quotes that belong to values come back, and the other keys of the file stay.
TEST_F(KeyExchangeTest, SelectedKeysComeBackAsTheyWere) {
    const std::string lines = "[T]\nA=\" a \"\n;K=\"\"q\"\"\nZ=\"\"x\" \"%1\"\"\n";
    Start(lines);
    world.disk.Put(kFile, "; mine\n[T]\n;A=9\nK=9\nOther=1\n[Colors]\n;BackColor=1\n");
    world.disk.Wait(10);
    Selection().Rows().SelectRows({0, 1, 2, 3}, 0);
    world.prompts.filesToChoose = {kFile};
    Exchange().ExportSelected();
    EXPECT_EQ(world.disk.BytesOf(kFile),
              "; mine\n[T]\nA=\" a \"\n;K=\"\"q\"\"\nOther=1\nZ=\"\"x\" \"%1\"\"\n[Colors]\n");
    Commands().DeleteKeys();
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\n");
    Import(nullptr);
    ASSERT_TRUE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), lines);

    // Numbers differ by value from a default; what is absent or commented out does not differ.
    StartWith({std::string("[T]\nA=00\n;K=2\nZ=5\n") + kEnd,
               "[Cat]\nCategoryTargetSection=T\nA=0\nK=1\nZ=4\n", ""});
    for (const auto& [rows, written] :
         {std::pair(std::vector<std::size_t>{0, 1, 2}, "[T]\r\nZ=5\r\n"), {{0, 1}, "(none)"}}) {
        world.disk.Remove(kFile);
        Selection().Rows().SelectRows(rows, 0);
        world.prompts.filesToChoose = {kFile};
        Exchange().ExportSelectedDifferences();
        EXPECT_EQ(world.disk.Has(kFile) ? world.disk.BytesOf(kFile) : "(none)", written);
    }
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("No key was exported"));
}

}  // namespace
}  // namespace tamarind
