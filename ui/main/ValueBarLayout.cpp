#include "ui/main/ValueBarLayout.h"

#include <algorithm>

namespace tamarind {

ValueBarWidths ShareValueBar(const ValueBarWishes& wishes, int width) {
    ValueBarWidths parts = {wishes.nameWithState, true, wishes.leastField, wishes.note,
                            wishes.reset};
    // How much more is wanted than there is; a part that is left out saves its gap, too.
    const auto missing = [&] {
        const auto taken = [&wishes](int part) { return part > 0 ? part + wishes.gap : 0; };
        return wishes.gap + taken(parts.name) + taken(parts.field) + taken(wishes.beside) +
               taken(parts.note) + taken(parts.reset) - width;
    };
    const auto cutNote = [&] {
        if (missing() > 0) {
            parts.note = std::max(0, parts.note - missing());
            parts.note = parts.note < wishes.leastNote ? 0 : parts.note;
        }
    };
    if (!wishes.isWarning) {
        cutNote();
    }
    if (missing() > 0) {
        parts.name = wishes.name;
        parts.showsState = false;
    }
    if (missing() > 0) {
        parts.reset = 0;
    }
    cutNote();
    if (missing() > 0) {
        parts.name = std::max(wishes.leastName, parts.name - missing());
    }
    parts.field = std::clamp(parts.field - missing(), 0, wishes.mostField);
    return parts;
}

}  // namespace tamarind
