#pragma once

#include <windows.h>

#include <optional>

#include "ui/toolkit/DialogTexts.h"
#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// What dialogs need of the user's language.
struct DialogStyle {
    TextByNumber text;
    bool isRightToLeft = false;
    bool showsControlsBackColor = false;  // texts and text boxes on cyan, to see where they are
    // Called before a dialog is made, which then takes the rest. May be left out.
    std::function<void()> refresh = nullptr;
};

// A dialog over a resource template, modal or modeless. The template's class is the dialog's own;
// captions in it are the numbers of the texts to be shown. The object owns a modeless dialog's
// window: it is destroyed with it.
class Dialog : public WindowObject {
public:
    // To be called by the main loop before anything else looks at a message. Whether it was one
    // for a modeless dialog of ours and is done with; keys move the focus there as users expect.
    static bool TranslateDialogMessage(MSG& message);

    // Closes every modal dialog of this thread as its Cancel button does, also the message boxes
    // and the system's dialogs in front of it; a box that only knows Yes and No as by neither. For
    // when Windows does not wait for the user. They are out of sight then; the calls that showed
    // them go on once control is back in their loops. False: there was none.
    static bool CancelModalDialogs();

    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Null before it is created and after Windows destroyed it.
    HWND Handle() const { return m_window; }

    // Shows the language's present texts and direction, as a new dialog does by itself. The dialog
    // becomes as wide as the texts need it and stays on its monitor.
    void ApplyLanguage();

protected:
    // Both arguments outlive the dialog.
    Dialog(int templateId, const wchar_t* className, const DialogStyle& style)
        : m_templateId(templateId), m_className(className), m_style(style) {}
    virtual ~Dialog();

    // Makes a modeless dialog, which is hidden. False when it can not be made.
    bool Create(HWND owner);

    // Shows the dialog until EndModal and returns what that was given, or -1 when there can be no
    // dialog. Meanwhile all other windows of the program are disabled.
    INT_PTR ShowModal(HWND owner);
    void EndModal(INT_PTR result) { EndDialog(m_window, result); }

    // The dialog has its texts and is not visible yet. It may set the focus, which is on the first
    // control otherwise.
    virtual void OnInit() = 0;

    // A key that was pressed in the dialog while it is modal, before anything else looks at it.
    // Whether it is done with.
    virtual bool OnKey(WPARAM key);

    // One switch over the messages; nothing leaves one to Windows.
    virtual std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Whether a control is mirrored with the dialog in right-to-left languages, as lists and those
    // with a caption are. In boxes stand keys and paths, which are written from left to right.
    virtual bool IsMirrored(HWND control) const;

    // Gives a control that the dialog has made by itself the direction of its language.
    void SetDirectionOf(HWND control) const { SetDirectionOf(control, m_style.isRightToLeft); }

    // The controls were stretched for their texts, to a client area of that width in pixels. Gives
    // the dialog that width.
    virtual void OnStretched(int clientWidth);

    // Stretches the controls for their texts, and to at least that width.
    void StretchTo(int clientWidth) { OnStretched(m_texts.Stretch(clientWidth)); }

private:
    static Dialog* FromDescendant(HWND window);
    static BOOL CALLBACK CancelIfModal(HWND window, LPARAM hasCancelled);
    static LRESULT CALLBACK FilterMessage(int code, WPARAM wParam, LPARAM lParam);
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static bool Initialize(HWND window, Dialog& dialog);
    std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnColors(HDC dc, HWND control) const;
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
