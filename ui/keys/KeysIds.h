#pragma once

// Resource numbers of the dialogs of this folder. Macros, since the resource compiler reads them
// too.

#define IDD_FRMADDKEY 280
#define IDC_ADDKEY_CBOSECTION 1001
#define IDC_ADDKEY_CBONAME 1002
#define IDC_ADDKEY_LBLFAULT 1003

#define IDD_FRMDESCRIBEKEY 281
#define IDC_DESCRIBE_LBLKEY 1001
#define IDC_DESCRIBE_TXTTEXT 1002

#define IDD_FRMIGNOREDLINES 282
// cmdGoTo is IDOK, cmdClose IDCANCEL.
#define IDC_IGNORED_LSTLINES 1001
#define IDC_IGNORED_CMDDELETE 1002
#define IDC_IGNORED_CMDUNDO 1003
#define IDC_IGNORED_LBLNONE 1004
