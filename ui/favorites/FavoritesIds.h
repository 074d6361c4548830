#pragma once

// Resource numbers of the favorites windows. Macros, since the resource compiler reads them too.

#define IDD_FRMFAVORITEADD 210
#define IDC_FAVORITEADD_TEXT1 1001
// OK and Cancel are IDOK and IDCANCEL.

#define IDD_FRMORGANIZEFAVORITES 211
#define IDC_ORGANIZE_LISTVIEW1 1101
#define IDC_ORGANIZE_FRAME1 1102
#define IDC_ORGANIZE_CMDUP 1103
#define IDC_ORGANIZE_CMDDOWN 1104
#define IDC_ORGANIZE_CMDDELETE 1105
#define IDC_ORGANIZE_CMDDEFINITION 1106
#define IDC_ORGANIZE_CMDADDSEPARATOR 1107
#define IDC_ORGANIZE_CMDAPPLY 1108
// cmdCancel is IDCANCEL, so that the Escape key and the close box press it.
