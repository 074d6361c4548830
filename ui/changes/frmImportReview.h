#pragma once

#include <string>
#include <vector>

#include "model/program/UserPrompts.h"
#include "ui/changes/ChangesIds.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// Shows what an import would do, and lets the user choose what of it is done. Rows stand in groups,
// whose headings have check boxes for all of their rows.
class frmImportReview final : public ResizableDialog {
public:
    // `style` is kept by reference and must outlive the window.
    explicit frmImportReview(const DialogStyle& style);

    // On OK `review` gets the choices. False if the user cancels; `review` is then as it was.
    bool Show(HWND owner, ImportReview& review);

private:
    // A row of the list: a heading with its rows, a key of the file, or the keys it does not have.
    struct Row {
        enum class Kind { Heading, Key, Missing };
        Kind kind = Kind::Heading;
        std::size_t first = 0;  // of the review's rows
        std::size_t count = 1;  // of a heading
    };

    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void MakeRows();
    void AddGroup(std::size_t first, std::size_t count);
    std::wstring CellText(int row, int column) const;
    std::wstring HeadingText(const Row& row, int column) const;
    CellTone ToneOf(int row, int column) const;
    bool IsChecked(int row) const;
    void Toggle(int row);
    const Row& RowAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    const DialogStyle& m_style;
    ImportReview m_review;
    std::vector<Row> m_rows;
    ReportList lstKeys;
};

}  // namespace tamarind
