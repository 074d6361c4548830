#pragma once

#include <optional>
#include <string>

#include "ui/keys/KeysIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// Asks for the description of a key.
class frmDescribeKey final : public ResizableDialog {
public:
    explicit frmDescribeKey(const DialogStyle& style);

    // The label says which key it is; the text may have so many UTF-16 units. Nothing if the user
    // cancels.
    std::optional<std::string> Ask(HWND owner, const std::string& label, const std::string& text,
                                   std::size_t maxUnits);

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::string m_label;
    std::string m_text;
    std::size_t m_maxUnits = 0;
    DialogControl lblKey{*this, IDC_DESCRIBE_LBLKEY};
    DialogControl txtText{*this, IDC_DESCRIBE_TXTTEXT};
};

}  // namespace tamarind
