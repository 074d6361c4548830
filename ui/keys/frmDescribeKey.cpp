#include "ui/keys/frmDescribeKey.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Anchor kDescribeAnchors[] = {
    {IDC_DESCRIBE_LBLKEY, 0, 0, 100, 0},
    {IDC_DESCRIBE_TXTTEXT, 0, 0, 100, 100},
    {IDOK, 100, 100, 100, 100},
    {IDCANCEL, 100, 100, 100, 100},
};

}  // namespace

frmDescribeKey::frmDescribeKey(const DialogStyle& style)
    : ResizableDialog(IDD_FRMDESCRIBEKEY, L"frmDescribeKey", style, kDescribeAnchors) {}

std::optional<std::string> frmDescribeKey::Ask(HWND owner, const std::string& label,
                                               const std::string& text, std::size_t maxUnits) {
    m_label = label;
    m_text = text;
    m_maxUnits = maxUnits;
    return ShowModal(owner) == IDOK ? std::optional(m_text) : std::nullopt;
}

void frmDescribeKey::OnInit() {
    lblKey.SetText(Widen(m_label));
    txtText.SetText(Widen(m_text));
    SendMessageW(txtText.Handle(), EM_SETLIMITTEXT, m_maxUnits, 0);
    CenterForm(Handle());
    txtText.Focus();
}

std::optional<LRESULT> frmDescribeKey::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COMMAND) {
        return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
    const int id = LOWORD(wParam);
    if (id == IDOK) {
        m_text = Narrow(txtText.Text());
    }
    if (id == IDOK || id == IDCANCEL) {
        EndModal(id);
    }
    return 0;
}

}  // namespace tamarind
