#include "ui/shell/SplitterLayout.h"

#include <algorithm>

namespace tamarind {
namespace {

constexpr Twips kZero{0};

// The geometry along one line: the one on which the bar moves, or the one across it.
struct Line {
    Twips length;
    Twips nearMargin;
    Twips farMargin;
};

Line LineOf(const SplitterGeometry& geometry) {
    return geometry.direction == SplitDirection::Vertical
               ? Line{geometry.containerWidth, geometry.leftMargin, geometry.rightMargin}
               : Line{geometry.containerHeight, geometry.topMargin, geometry.bottomMargin};
}

Line CrossLineOf(const SplitterGeometry& geometry) {
    return geometry.direction == SplitDirection::Vertical
               ? Line{geometry.containerHeight, geometry.topMargin, geometry.bottomMargin}
               : Line{geometry.containerWidth, geometry.leftMargin, geometry.rightMargin};
}

// From `from` to `to` on the line of the bar, and across the whole container. Never of negative
// size.
TwipsRect Across(const SplitterGeometry& geometry, Twips from, Twips to) {
    const Line cross = CrossLineOf(geometry);
    const Twips crossTo = std::max(cross.nearMargin, cross.length - cross.farMargin);
    to = std::max(from, to);
    return geometry.direction == SplitDirection::Vertical
               ? TwipsRect{from, cross.nearMargin, to, crossTo}
               : TwipsRect{cross.nearMargin, from, crossTo, to};
}

}  // namespace

bool AcceptsDrag(const SplitterGeometry& geometry, Twips position) {
    return position < LineOf(geometry).length - geometry.minSecond && position > geometry.minFirst;
}

Twips ShownPosition(const SplitterGeometry& geometry, Twips position) {
    const Line line = LineOf(geometry);
    const Twips last = line.length - line.farMargin - geometry.splitterSize;
    const Twips forSecond = std::min(line.length - geometry.minSecond, last);
    const Twips forFirst = std::max(geometry.minFirst, line.nearMargin);
    // If there is no room for both smallest sizes, the second pane becomes too small first.
    position = std::max(std::min(position, forSecond), forFirst);
    return std::max(std::min(position, last), std::max(line.nearMargin, kZero));
}

SplitterPlaces LayOutSplitter(const SplitterGeometry& geometry, Twips position) {
    const Line line = LineOf(geometry);
    const Twips end = line.length - line.farMargin;
    SplitterPlaces places;
    if (!geometry.isSecondVisible) {
        places.first = Across(geometry, line.nearMargin, end);
        return places;
    }
    if (!geometry.isFirstVisible) {
        places.second = Across(geometry, line.nearMargin, end);
        return places;
    }
    const Twips bar = ShownPosition(geometry, position);
    places.first = Across(geometry, line.nearMargin, bar);
    places.bar = Across(geometry, bar, bar + geometry.splitterSize);
    places.second = Across(geometry, bar + geometry.splitterSize, end);
    return places;
}

}  // namespace tamarind
