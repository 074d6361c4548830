#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "ui/search/SearchIds.h"

namespace tamarind {
namespace {

using SearchWindowTest = MainWindowTest;

TEST_F(SearchWindowTest, TheSearchWindowKeepsItsSettings) {
    Start();
    Do(Command::SearchFind);
    dialog = FindWindowW(L"frmSearchFor", nullptr);
    const HWND box = In(IDC_SEARCHFOR_TXTFIND);
    EXPECT_FALSE(IsOn(IDC_SEARCHFOR_CMDFINDNEXT));
    SetWindowTextW(box, L"side");
    EXPECT_TRUE(IsOn(IDC_SEARCHFOR_CMDFINDNEXT));
    Click(IDC_SEARCHFOR_OPTKEYDESCRIPTION);
    Click(IDC_SEARCHFOR_CHKWHOLEWORD);
    Click(IDC_SEARCHFOR_CMDFINDNEXT);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(Send(kIdTxtDescriptionBox, EM_GETSEL), MAKELRESULT(21, 25));

    PressKey(VK_ESCAPE);
    Do(Command::SearchFind);
    EXPECT_EQ(GetFocus(), box);
    EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(0, 4));
    EXPECT_TRUE(IsChecked(IDC_SEARCHFOR_OPTKEYDESCRIPTION));
    Press(kIdListView1, VK_END);
    Do(Command::SearchFindNext);  // from the first key again
    EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(SearchWindowTest, ClosingLeavesTheFocusOnTheFoundKey) {
    Start();
    SetFocus(Find(kIdTreeView1));
    Do(Command::SearchFind);
    dialog = FindWindowW(L"frmSearchFor", nullptr);
    SetWindowTextW(In(IDC_SEARCHFOR_TXTFIND), L"hidden");
    Click(IDC_SEARCHFOR_CMDFINDNEXT);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(SelectedRow(), 1);
    Do(Command::SearchShowInCategory);
    EXPECT_EQ(Rows(), (Strings{"PanelsVertical=1", "ShowHidden=0"}));
    EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(SearchWindowTest, AHeadingListsItsCategories) {
    Start();
    SetFocus(Find(kIdTreeView1));
    Press(kIdTreeView1, VK_DOWN);
    const HWND list = Find(kIdLstCategories);
    ASSERT_TRUE(IsWindowVisible(list));
    EXPECT_FALSE(IsWindowEnabled(Find(kIdTxtDescriptionBox)));
    EXPECT_EQ(RowsIn(list), (Strings{"Panels", "Colors", "Broken"}));
    EXPECT_EQ(CellIn(list, 0, 1), "1");
    SetFocus(Find(kIdListView1));
    Do(kIdNextPane);
    EXPECT_EQ(GetFocus(), list) << "the field for the value has no key";
    Press(kIdLstCategories, VK_DOWN);
    Press(kIdLstCategories, VK_RETURN);
    EXPECT_FALSE(IsWindowVisible(list));
    EXPECT_EQ(world.session->Selection().SelectedNode(), 2);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
}

TEST_F(SearchWindowTest, AHitIsNotTheLastRowInSight) {
    PutManyKeys();
    Start();
    for (const auto& [name, lowest] : {std::pair("K50", 53), {"K98", 99}, {"K40", 43}, {"K1", 4}}) {
        world.session->Finding().SetSearchText(name);
        world.session->Finding().FindNextString();
        EXPECT_EQ(Rows()[static_cast<std::size_t>(SelectedRow())], name);
        const LRESULT top = Send(kIdListView1, LVM_GETTOPINDEX);
        EXPECT_LE(top, SelectedRow()) << name;
        EXPECT_GE(top + Send(kIdListView1, LVM_GETCOUNTPERPAGE), lowest + 1) << name;
    }
}

}  // namespace
}  // namespace tamarind
