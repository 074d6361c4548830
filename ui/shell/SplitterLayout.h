#pragma once

#include <optional>

#include "ui/toolkit/Lengths.h"

namespace tamarind {

// Which way a splitter divides its container.
enum class SplitDirection {
    Vertical = 1,    // a vertical bar, the panes side by side
    Horizontal = 2,  // a horizontal bar, the panes one above the other
};

// Everything that decides where the bar and the panes of a splitter are.
struct SplitterGeometry {
    SplitDirection direction = SplitDirection::Vertical;
    Twips containerWidth;
    Twips containerHeight;
    Twips leftMargin;
    Twips topMargin;
    Twips rightMargin;
    Twips bottomMargin;
    Twips splitterSize;
    Twips minFirst;  // smallest sizes of the panes
    Twips minSecond;
    bool isFirstVisible = true;
    bool isSecondVisible = true;
};

// A rectangle in twips of the container.
struct TwipsRect {
    Twips left;
    Twips top;
    Twips right;
    Twips bottom;
    friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

// The places of what is visible.
struct SplitterPlaces {
    std::optional<TwipsRect> bar;
    std::optional<TwipsRect> first;
    std::optional<TwipsRect> second;
};

// Whether a drag may move the bar to `position`, which is its left or upper edge.
bool AcceptsDrag(const SplitterGeometry& geometry, Twips position);

// Where a bar at `position` is shown: as near to it as the smallest sizes of the panes allow, if
// the container has room for both, and always inside the container.
Twips ShownPosition(const SplitterGeometry& geometry, Twips position);

// Places the bar and the panes. If only one pane is visible, it gets everything between the
// margins.
SplitterPlaces LayOutSplitter(const SplitterGeometry& geometry, Twips position);

}  // namespace tamarind
