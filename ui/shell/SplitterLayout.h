#pragma once

#include <optional>

#include "ui/toolkit/Lengths.h"

namespace tamarind {

enum class SplitDirection {
    Vertical = 1,    // a vertical bar, the panes side by side
    Horizontal = 2,  // a horizontal bar, the panes one above the other
};

// All that the places of a splitter's bar and panes follow from.
struct SplitterGeometry {
    SplitDirection direction = SplitDirection::Vertical;
    Twips containerWidth;
    Twips containerHeight;
    Twips leftMargin;
    Twips topMargin;
    Twips rightMargin;
    Twips bottomMargin;
    Twips splitterSize;
    Twips minFirst;  // sizes of the panes while dragging
    Twips minSecond;
    bool isFirstVisible = true;
    bool isSecondVisible = true;
};

struct TwipsRect {
    Twips left;
    Twips top;
    Twips right;
    Twips bottom;
    friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

// Where what is visible lies in the container.
struct SplitterPlaces {
    std::optional<TwipsRect> bar;
    std::optional<TwipsRect> first;
    std::optional<TwipsRect> second;
};

// Whether a drag may move the bar to `position`, its left or top edge.
bool AcceptsDrag(const SplitterGeometry& geometry, Twips position);

// Where a bar at `position` is shown: as near to it as the panes keep their smallest sizes, as long
// as the container has room for these, and always inside the container.
Twips ShownPosition(const SplitterGeometry& geometry, Twips position);

SplitterPlaces LayOutSplitter(const SplitterGeometry& geometry, Twips position);

}  // namespace tamarind
