#include "ui/main/ValueBarParts.h"

#include "ui/main/ValueBarLayout.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// In pixels at 96 DPI.
constexpr int kGap = 4;
constexpr int kFieldMargin = 3;  // above and below the field's text, inside of its frame
constexpr int kLeastField = 110;
constexpr int kMostField = 300;
constexpr int kLeastName = 40;
constexpr int kLeastNote = 60;
constexpr int kChoicesWidth = 24;
constexpr int kBrowseWidth = 26;
constexpr int kSpinWidth = 18;
constexpr int kColorWidth = 34;
constexpr int kResetMargin = 8;  // beside the text of the button

// The name takes a multiple of this, so that going through the list moves the rest but rarely.
constexpr int kNameStep = 50;

int RoundedUp(int length, int step) {
    return (length + step - 1) / step * step;
}

}  // namespace

std::array<Control*, 10> ValueBarParts::All() {
    return {&lblKey,   &txtValue,  &cmdChoices, &spnValue, &lblUnit,
            &cmdColor, &cmdBrowse, &picWarning, &lblNote,  &cmdReset};
}

// Each call of Windows that changes nothing costs time at every new row.
bool ValueBarParts::IsShown(const Control& part) {
    return part.Handle() != nullptr &&
           (GetWindowLongPtrW(part.Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
}

void ValueBarParts::SetShown(Control& part, bool isVisible) {
    if (part.Handle() != nullptr && IsShown(part) != isVisible) {
        part.Show(isVisible);
    }
}

int ValueBarParts::HeightFor(HFONT font, int dpi) {
    return LineHeightOf(font) + ScaledPixels(2 * (kGap + kFieldMargin), dpi);
}

// Those between the field and the note.
std::array<ValueBarParts::PartBeside, 6> ValueBarParts::PartsBeside(HDC dc, HFONT font, int dpi,
                                                                    const std::wstring& unit) {
    const auto pixels = [dpi](int length) { return ScaledPixels(length, dpi); };

    return {{{cmdChoices, SignButtonWidth(font, kChoicesWidth, dpi)},
             {spnValue, pixels(kSpinWidth)},
             {lblUnit, TextWidth(dc, unit) + pixels(kGap)},
             {cmdColor, pixels(kColorWidth)},
             {cmdBrowse, SignButtonWidth(font, kBrowseWidth, dpi)},
             {picWarning, WarningSign::Size(dpi)}}};
}

void ValueBarParts::Layout(HWND bar, HFONT font, int dpi, const ValueBarTexts& texts) {
    const auto pixels = [dpi](int length) { return ScaledPixels(length, dpi); };
    const int gap = pixels(kGap);
    const SIZE area = ClientSizeOf(bar);
    const ScreenDC dc(bar);
    const SelectedObject selected(dc.Get(), font);
    const auto width = [&dc](const std::wstring& text) { return TextWidth(dc.Get(), text); };
    const auto beside = PartsBeside(dc.Get(), font, dpi, texts.unit);

    ValueBarWishes wishes;
    wishes.name = width(texts.name) + gap;
    wishes.nameWithState = RoundedUp(width(texts.nameWithState) + gap, pixels(kNameStep));
    wishes.leastName = pixels(kLeastName);
    wishes.leastField = pixels(kLeastField);
    wishes.mostField = pixels(kMostField);
    for (const PartBeside& one : beside) {
        wishes.beside += IsShown(one.part) ? one.width + gap : 0;
    }
    wishes.note = width(texts.note) + gap;
    wishes.leastNote = pixels(kLeastNote);
    wishes.isWarning = texts.isWarning;
    wishes.reset = width(cmdReset.Text()) + 2 * pixels(kResetMargin);
    wishes.gap = gap;
    const ValueBarWidths widths = ShareValueBar(wishes, static_cast<int>(area.cx));

    const LONG bottom = area.cy - gap;
    LONG left = gap;
    const auto place = [&](Control& part, int partWidth) {
        const RECT at{left, gap, left + partWidth, bottom};
        if (const RECT former = BoundsInParent(part.Handle()); !EqualRect(&at, &former)) {
            part.SetBounds(at);
        }
        left += partWidth > 0 ? partWidth + gap : 0;
    };
    lblKey.SetText(widths.showsState ? texts.nameWithState : texts.name);
    place(lblKey, widths.name);
    place(txtValue, widths.field);
    for (const PartBeside& one : beside) {
        if (IsShown(one.part)) {
            place(one.part, one.width);
        }
    }
    lblNote.SetText(texts.note);
    SetShown(lblNote, widths.note > 0);
    place(lblNote, widths.note);
    SetShown(cmdReset, widths.reset > 0);
    left = area.cx - gap - widths.reset;
    place(cmdReset, widths.reset);
}

}  // namespace tamarind
