#include <oleacc.h>

#include "model/program/StringTable.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/LateFunction.h"

namespace tamarind {
namespace {

class ValueBarTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        world.disk.Put("C:\\Tamarind\\Data Files\\Wincmd.types",
                       "[Configuration]\r\nOn=bool\r\nStyle=enum 0 1 2\r\nSum=flags 1 2|4\r\n"
                       "Size=int 8..20 px -1\r\nLib=path file\r\nFont=font Points\r\n"
                       "[Colors]\r\nTint=color -1\r\n");
        world.disk.Put(SessionWorld::kWincmdData,
                       "[Cat]\r\nCategoryTargetSection=Configuration\r\n"
                       "On=1///@0 = off@1 = on\r\nStyle=0///@0 = plain@1 = fancy@2 = grand\r\n"
                       "Sum=0///@1 = one@2 = two@4 = four\r\nSize=12///@-1 = as Windows\r\n"
                       "Lib=///\r\nFont=Arial///\r\n[Col]\r\nCategoryTargetSection=Colors\r\n"
                       "Tint=-1///@-1 = Windows color\r\n");
        world.disk.Put(SessionWorld::kWincmd,
                       "[Configuration]\r\nStyle=2\r\nSum=33\r\n[Colors]\r\nTint=$0000FF\r\n");
        world.disk.Wait(10);
    }
    HWND Field() const { return Find(kIdTxtValue); }
    HWND List() const { return Find(kIdListView1); }
    HWND Choices() const { return Find(kIdLstChoices); }
    void Go(int row) const {
        world.session->Selection().Rows().ShowKeyDetails(static_cast<size_t>(row));
    }
    // Into the field in place of all that it has.
    void Type(const wchar_t* text) const {
        SendMessageW(Field(), EM_SETSEL, 0, -1);
        SendMessageW(Field(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    }
    std::string Row(int row) const { return Rows()[static_cast<std::size_t>(row)]; }
    std::string Note() const { return TextOf(Find(kIdLblNote)); }
    bool HasPart(int id) const { return Find(id) != nullptr && IsWindowVisible(Find(id)); }

    // What a screen reader is told: name, value, role.
    struct Told {
        std::string name, value, description;
        LONG role = 0, state = 0;
    };
    static std::string TextIn(BSTR text) { return text == nullptr ? "" : Narrow(text); }
    static Told Ask(HWND control, LONG child = 0) {
        Told told;
        const auto fromAnswer =
            LateFunction<decltype(&ObjectFromLresult)>(L"oleacc.dll", "ObjectFromLresult");
        const LRESULT answer = SendMessageW(control, WM_GETOBJECT, 0, OBJID_CLIENT);
        IAccessible* object = nullptr;
        if (fromAnswer == nullptr || FAILED(fromAnswer(answer, __uuidof(IAccessible), 0,
                                                       reinterpret_cast<void**>(&object)))) {
            ADD_FAILURE() << "no object: " << answer;
            return told;
        }
        VARIANT self{}, role{}, state{};
        self.vt = VT_I4;
        self.lVal = child;
        BSTR name = nullptr, value = nullptr, description = nullptr;
        object->get_accName(self, &name);
        object->get_accValue(self, &value);
        object->get_accDescription(self, &description);
        object->get_accRole(self, &role);
        object->get_accState(self, &state);
        told = {TextIn(name), TextIn(value), TextIn(description), role.lVal, state.lVal};
        object->Release();
        return told;
    }
};

TEST_F(ValueBarTest, EachTypeHasItsControls) {
    Start();
    const struct {
        const char* key;
        const char* text;
        const char* note;
        std::vector<int> parts;
    } cases[] = {
        {"On: not set", "1 = on", "Default: 1 (on)", {kIdCmdChoices}},
        {"Style: set", "2 = grand", "Default: 0 (plain)", {kIdCmdChoices}},
        {"Sum: set", "33", "Expected: a sum of 1, 2, 4.", {kIdCmdChoices, kIdPicWarning}},
        {"Size: not set", "12", "Default: 12 px", {kIdCmdChoices, kIdSpnValue, kIdLblUnit}},
        {"Lib: not set", "", "Default: not set", {kIdCmdBrowse}},
        {"Font: not set", "Arial", "Default: Arial", {kIdCmdBrowse}},
        {"Tint: set", "$0000FF", "Default: -1 (Windows color)", {kIdCmdChoices, kIdCmdColor}},
    };
    for (const int dpi : {96, 144}) {
        SetDpi(dpi, {0, 0, 600 * dpi / 96, 500 * dpi / 96});
        int row = 0;
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << c.key << " at " << dpi);
            Go(row++);
            EXPECT_EQ(TextOf(Field()), c.text);
            EXPECT_EQ(Note(), c.note);
            EXPECT_TRUE(std::string(c.key).starts_with(TextOf(Find(kIdLblKey))));
            for (int id = kIdCmdChoices; id <= kIdPicWarning; ++id) {
                EXPECT_EQ(HasPart(id), std::ranges::find(c.parts, id) != c.parts.end()) << id;
            }
            ExpectNoOverlaps(Find(kIdValueBar));
            EXPECT_GE(WidthOf(Field()), 100 * dpi / 96);
            EXPECT_GE(HeightOf(Field()), 18 * dpi / 96);
        }
    }
    // However narrow it is, nothing overlaps.
    for (const LONG width : {500, 400, 300, 200}) {
        SetWindowPos(Find(kIdValueBar), nullptr, 0, 0, static_cast<int>(width), 30, SWP_NOMOVE);
        ExpectNoOverlaps(Find(kIdValueBar));
        EXPECT_GT(WidthOf(Field()), 0);
    }
    world.session->Selection().SelectCategory(kRootNode);
    Do(Command::ViewValueBar);
    EXPECT_FALSE(IsWindowVisible(Find(kIdValueBar)));
    EXPECT_EQ(world.session->Place().OwnSettings().Values().valueBarVisible, 0);
}

TEST_F(ValueBarTest, ChoicesAreChosenByKeys) {
    Start();
    SetFocus(List());
    Go(1);
    Press(kIdListView1, VK_F4);
    ASSERT_TRUE(IsWindowVisible(Choices()));
    EXPECT_EQ(GetFocus(), Choices());
    EXPECT_EQ(SelectedIn(Choices()), 2) << "the present one";
    EXPECT_EQ(CellIn(Choices(), 0, 0), "0 = plain (default)");
    Press(kIdLstChoices, VK_UP);
    Press(kIdLstChoices, VK_RETURN);
    EXPECT_FALSE(IsWindowVisible(Choices()));
    EXPECT_EQ(GetFocus(), List());
    EXPECT_EQ(Row(1), "Style=1");
    EXPECT_EQ(TextOf(Find(kIdLblKey)), "Style: set, changed");
    EXPECT_EQ(world.session->Commands().UndoName(), "value of Style");

    // Alt+Down opens them from the field as well; Esc leaves all as it is.
    SetFocus(Field());
    SendMessageW(Field(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
    ASSERT_TRUE(IsWindowVisible(Choices()));
    Press(kIdLstChoices, VK_HOME);
    Press(kIdLstChoices, VK_ESCAPE);
    EXPECT_EQ(GetFocus(), Field());
    EXPECT_EQ(Row(1), "Style=1");

    // A sum follows its boxes; what is not listed stays.
    SetFocus(List());
    Go(2);
    SendMessageW(List(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
    ASSERT_EQ(Strings({"1 = one", "2 = two", "4 = four", "other: 32"}), RowsIn(Choices()));
    Press(kIdLstChoices, VK_SPACE);
    EXPECT_EQ(TextOf(Field()), "32");
    Press(kIdLstChoices, VK_DOWN);
    Press(kIdLstChoices, VK_SPACE);
    Press(kIdLstChoices, VK_DOWN);
    Press(kIdLstChoices, VK_SPACE);
    EXPECT_EQ(TextOf(Field()), "36") << "one of the two";
    EXPECT_EQ(Row(2), "Sum=33");
    Press(kIdLstChoices, VK_RETURN);
    EXPECT_EQ(Row(2), "Sum=36");

    // The command opens the same, also while the bar is off.
    Do(Command::ViewValueBar);
    Go(1);
    Do(Command::EditBrowseValue);
    ASSERT_TRUE(IsWindowVisible(Choices()));
    Press(kIdLstChoices, VK_HOME);
    Press(kIdLstChoices, VK_RETURN);
    EXPECT_EQ(Row(1), "Style=0");
    EXPECT_TRUE(world.prompts.questions.empty());
    Go(0);
    Press(kIdListView1, VK_SPACE);
    EXPECT_EQ(Row(0), "On=0");
}

TEST_F(ValueBarTest, ABarThatWasNeverShownHasChoices) {
    PutOwnSettings("ValueBarVisible=0\r\n");
    Start();
    Go(2);
    Press(kIdListView1, VK_F4);
    ASSERT_TRUE(IsWindowVisible(Choices()));
    EXPECT_TRUE(ListView_GetCheckState(Choices(), 0)) << "33 has a 1";
    Press(kIdLstChoices, VK_SPACE);
    Press(kIdLstChoices, VK_RETURN);
    EXPECT_EQ(Row(2), "Sum=32");
}

TEST_F(ValueBarTest, TypedTextIsStoredByEnterAlone) {
    Start();
    Go(3);
    SetFocus(Field());
    Press(kIdTxtValue, VK_UP);
    EXPECT_EQ(TextOf(Field()), "13");
    EXPECT_EQ(Row(3), "Size") << "not yet";
    Type(L"55");
    EXPECT_EQ(Note(), "Expected: a whole number from 8 to 20 or -1.");
    EXPECT_TRUE(HasPart(kIdPicWarning));
    Press(kIdTxtValue, VK_ESCAPE);
    EXPECT_EQ(TextOf(Field()), "12");
    EXPECT_FALSE(HasPart(kIdPicWarning));
    Type(L"55");
    Press(kIdTxtValue, VK_RETURN);
    EXPECT_EQ(Row(3), "Size=55") << "a type forbids nothing";
    EXPECT_TRUE(HasPart(kIdPicWarning));

    Type(L"9");
    Go(1);
    EXPECT_EQ(Row(3), "Size=55");
    Go(3);
    EXPECT_EQ(TextOf(Field()), "55");

    // A change from outside shows, unless something is being typed.
    world.session->Commands().SetValue("11");
    EXPECT_EQ(TextOf(Field()), "11");
    Type(L"19");
    world.session->Commands().SetValue("10");
    EXPECT_EQ(TextOf(Field()), "19");
    EXPECT_EQ(Row(3), "Size=10");

    // From the list to the field, to the description, and back.
    SetFocus(List());
    for (const HWND next : {Field(), Find(kIdTxtDescriptionBox)}) {
        Do(kIdNextPane);
        EXPECT_EQ(GetFocus(), next);
    }
    Do(kIdPreviousPane);
    Do(kIdPreviousPane);
    EXPECT_EQ(GetFocus(), List());

    world.session->Place().OwnSettings().Values().autoSelectNextKey = 1;
    SetFocus(Field());
    Type(L"8");
    Press(kIdTxtValue, VK_RETURN);
    EXPECT_EQ(Row(3), "Size=8");
    EXPECT_TRUE(WaitUntil([&] { return SelectedRow() == 4; }));

    Go(4);
    Type(L"C:\\nowhere\\x");
    EXPECT_TRUE(WaitUntil([&] { return Note() == "This place does not exist."; }));
}

TEST_F(ValueBarTest, AScreenReaderIsToldWhatIsSeen) {
    Start();
    Go(1);
    const Told field = Ask(Field());
    EXPECT_EQ(field.name, "Value of Style, set");
    EXPECT_EQ(field.value, "2 = grand");
    EXPECT_EQ(field.role, ROLE_SYSTEM_COMBOBOX);
    EXPECT_NE(field.state & STATE_SYSTEM_HASPOPUP, 0);
    EXPECT_EQ(Ask(Find(kIdCmdChoices)).name, BuiltInText(text::kShowChoices));
    EXPECT_EQ(Ask(Find(kIdValueBar)).name, "Value of Style");
    Go(4);
    EXPECT_EQ(Ask(Field()).role, ROLE_SYSTEM_TEXT);
    EXPECT_EQ(Ask(Find(kIdCmdBrowse)).name, BuiltInText(text::kChooseValue));

    // Rows tell what columns and colors show, whichever of these there are.
    EXPECT_EQ(Ask(List(), 2).name, "Style=2");
    EXPECT_EQ(Ask(List(), 2).description, "set, grand");
    Go(1);
    world.session->Commands().CommentKeys();
    EXPECT_EQ(Ask(List(), 2).description, "commented out, not saved, plain");
    EXPECT_EQ(Ask(Find(kIdToolbar1)).name, BuiltInText(text::kToolbarName));
    EXPECT_EQ(Ask(Find(kIdFrame1)).role, ROLE_SYSTEM_SEPARATOR);
}

TEST_F(ValueBarTest, ColumnsComeGoAndStay) {
    Start();
    const HWND header = ListView_GetHeader(List());
    EXPECT_EQ(Header_GetItemCount(header), 1);
    Do(Command::ViewColumnMeaning);
    Do(Command::ViewColumnState);
    EXPECT_EQ(Header_GetItemCount(header), 3);
    EXPECT_EQ(CellIn(List(), 1, 1), "grand");
    EXPECT_EQ(CellIn(List(), 1, 2), "set");
    Do(Command::EditValue);
    EXPECT_GE(BoundsOf(Find(kIdTxtInplaceEdit)).left, BoundsOf(List()).left);
    int order[] = {2, 0, 1};
    ListView_SetColumnOrderArray(List(), 3, order);
    ListView_SetColumnWidth(List(), 2, 77);
    Do(Command::ViewColumnMeaning);
    EXPECT_EQ(Header_GetItemCount(header), 2);
    EXPECT_EQ(CellIn(List(), 1, 1), "set");
    SendMessageW(Main(), WM_CLOSE, 0, 0);
    EXPECT_NE(StoredSettings().find("KeyListColumns=State:1155,Key:"), std::string::npos)
        << StoredSettings();
    Start();
    EXPECT_EQ(ListView_GetColumnWidth(List(), 1), 77);
    Go(1);
    Do(Command::EditValue);
    EXPECT_GE(BoundsOf(Find(kIdTxtInplaceEdit)).left, BoundsOf(List()).left + 77)
        << "over the column of the key";
}

}  // namespace
}  // namespace tamarind
