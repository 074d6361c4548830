#pragma once

// Resource numbers of the search windows. Macros, since the resource compiler reads them too.

#define IDD_FRMSEARCHFOR 200
#define IDC_SEARCHFOR_TXTFIND 1001
#define IDC_SEARCHFOR_FRAME1 1002
#define IDC_SEARCHFOR_OPTKEYNAME 1003
#define IDC_SEARCHFOR_OPTKEYDESCRIPTION 1004
#define IDC_SEARCHFOR_CHKWHOLEWORD 1005
#define IDC_SEARCHFOR_CMDFINDNEXT 1006
// cmdCancel is IDCANCEL, so that the Escape key and the close box press it.
