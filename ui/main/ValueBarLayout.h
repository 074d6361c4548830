#pragma once

namespace tamarind {

// How wide the parts of the value bar would like to be, in pixels.
struct ValueBarWishes {
    int name = 0;           // of the key
    int nameWithState = 0;  // the same with its state
    int leastName = 0;
    int leastField = 0;
    int mostField = 0;
    int beside = 0;  // all between the field and the note
    int note = 0;    // the default, or the sentence about a value
    int leastNote = 0;
    bool isWarning = false;  // the note says that something is wrong
    int reset = 0;
    int gap = 0;  // between two parts, and at both ends
};

// How wide they are; 0 for a part that has no room.
struct ValueBarWidths {
    int name = 0;
    bool showsState = false;
    int field = 0;
    int note = 0;
    int reset = 0;
};

// Divides the width of the bar, in pixels. Where it is too narrow for all, parts give way in this
// order: the default, the state, the button, a warning, the end of the name. What is left over is
// the field's, up to the most that it takes.
ValueBarWidths ShareValueBar(const ValueBarWishes& wishes, int width);

}  // namespace tamarind
