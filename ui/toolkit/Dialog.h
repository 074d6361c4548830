#pragma once

#include <windows.h>

#include <optional>

#include "ui/toolkit/DialogTexts.h"
#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// What dialogs need of the user's language and settings.
struct DialogStyle {
    TextByNumber text;
    bool isRightToLeft = false;
    bool showsControlsBackColor = false;  // texts and text boxes on cyan, to see where they are
    // Called before a dialog is made, which then takes the other members. May be left out.
    std::function<void()> refresh = nullptr;
};

// A dialog made from a resource template, modal or modeless. It has a window class of its own. A
// caption in the template that is a number stands for the text of that number. The object owns the
// window of a modeless dialog: destroying the object destroys it. An exception in a handler is
// reported and does not leave the window procedure.
class Dialog : public WindowObject {
public:
    // To be called by the main loop before anything else looks at a message. Returns whether it was
    // a message for a modeless dialog of ours and has been handled, such as Tab moving the focus.
    static bool TranslateDialogMessage(MSG& message);

    // Closes every modal dialog of this thread as its Cancel button does, also message boxes and
    // dialogs of the system; a box with just Yes and No ends with neither. Meant for the end of the
    // Windows session, when no answer will come. The dialogs are hidden on return, but the calls
    // that have shown them go on only when control is back in their message loops. False if there
    // was none.
    static bool CancelModalDialogs();

    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Null before the window is created and after Windows has destroyed it.
    HWND Handle() const { return m_window; }

    // Shows the present texts and direction of the language, which a new dialog does by itself. The
    // dialog becomes as wide as its texts need it and stays on its monitor. Does nothing without a
    // window.
    void ApplyLanguage();

protected:
    // `className` and `style` are kept by reference and must outlive the dialog.
    Dialog(int templateId, const wchar_t* className, const DialogStyle& style)
        : m_templateId(templateId), m_className(className), m_style(style) {}
    virtual ~Dialog();

    // Makes a modeless dialog, which is still hidden. False if it cannot be made.
    bool Create(HWND owner);

    // Shows the dialog until EndModal is called, and returns the value given to that, or -1 if the
    // dialog cannot be made. Until then all other windows of the program are disabled.
    INT_PTR ShowModal(HWND owner);
    void EndModal(INT_PTR result) { EndDialog(m_window, result); }

    // Called when the dialog has its texts and is not visible yet. It may set the focus, which is
    // otherwise on the first control.
    virtual void OnInit() = 0;

    // Called for a key that is pressed in a modal dialog, before anything else looks at it. Returns
    // whether it was handled. Modeless dialogs do not get this.
    virtual bool OnKey(WPARAM key);

    // Handles a message; nothing leaves it to Windows.
    virtual std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Whether a control is mirrored with the dialog in right-to-left languages, as lists and
    // controls with a caption are. Text boxes are not: they contain keys and paths, which run from
    // left to right.
    virtual bool IsMirrored(HWND control) const;

    // Gives a control that the dialog itself has made the direction of the language.
    void SetDirectionOf(HWND control) const { SetDirectionOf(control, m_style.isRightToLeft); }

    // Called when the controls were stretched for their texts. Gives the dialog a client area of
    // this width in pixels.
    virtual void OnStretched(int clientWidth);

    // Stretches the controls for their texts, and at least to this width in pixels.
    void StretchTo(int clientWidth) { OnStretched(m_texts.Stretch(clientWidth)); }

private:
    // The dialog of ours that contains a window, or null.
    static Dialog* FromDescendant(HWND window);
    static BOOL CALLBACK CancelIfModal(HWND window, LPARAM hasCancelled);
    // A WH_MSGFILTER hook.
    static LRESULT CALLBACK FilterMessage(int code, WPARAM wParam, LPARAM lParam);
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // WM_INITDIALOG. Returns whether Windows is to set the focus.
    static bool Initialize(HWND window, Dialog& dialog);
    std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnColors(HDC dc, HWND control) const;
    // Registers the window class, if that has not been done.
    bool Register() const;
    void RefreshLanguage() const;
    void SetDirection(bool isRightToLeft) const;
    void SetDirectionOf(HWND control, bool isRightToLeft) const;

    int m_templateId;
    const wchar_t* m_className;
    const DialogStyle& m_style;
    HWND m_window = nullptr;
    bool m_isModal = false;
    DialogTexts m_texts;
};

}  // namespace tamarind
