#pragma once

#include <windows.h>

#include <vector>

namespace tamarind {

// The template of a dialog with the font in the size that the user wants for texts. Windows lays a
// dialog out in units of its font, so that everything in it grows with the texts, as far as the
// dialog stays on the monitor of `owner`.
class DialogTemplate {
public:
    // `id` is that of a resource of the program (DIALOGEX with a font).
    DialogTemplate(int id, HWND owner);

    // Null if there is no such resource.
    const DLGTEMPLATE* Get() const;

private:
    std::vector<WORD> m_words;
};

}  // namespace tamarind
