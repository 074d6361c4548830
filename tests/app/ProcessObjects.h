#pragma once

#include <windows.h>

#include <cstddef>

namespace tamarind {

// What a process has of the system's objects.
struct ProcessObjects {
    std::size_t handles = 0;
    std::size_t graphics = 0;  // pens, brushes, fonts, bitmaps and what else GDI knows
    std::size_t windows = 0;   // those that are no children
};

// Counts the objects of another process. `process` needs the right to read its memory.
ProcessObjects CountObjects(HANDLE process);

}  // namespace tamarind
