#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/keys/KeyEditor.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/Workplace.h"

namespace tamarind {

// What the user does with keys: each change waits to be saved and can be undone.
class KeyCommands {
public:
    KeyCommands(Workplace& workplace, KeyStore& store, KeyEditor& editor, KeySelection& selection,
                OpenDataFile& dataFile);

    // What the edit box opens with on the current row, and the selected part of it: from that
    // UTF-16 unit to the end. Nothing, after a beep or a message, where nothing can be edited.
    struct EditStart {
        std::string text;
        std::size_t selectionStart = 0;
    };
    std::optional<EditStart> BeginInplaceEdit();

    // Takes the edit box's text for the current row. Returns false, after a message, for a value
    // that is too long; the box stays open then. After a stored value the next key's turn comes
    // when the own settings say so.
    bool StoreEditedValue(const std::string& text);
    bool SelectsNextKey() const;

    // Whether the current key's value can be edited; if not, after a beep or a message.
    bool CanEditValue() const;

    // The other commands on the current key; each does nothing where it is not enabled. They return
    // whether a change was made. Unset has its line removed, as a reset does.
    bool SetValue(const std::string& value);
    bool Unset();
    // Sets these keys, which may be others, in one step.
    void SetValues(const std::vector<KeyChange>& changes);

    // The commands on all selected keys, each one step. Keys for which a command makes no sense are
    // left out, and with more than one key a notice says how many. With one, the next key's turn
    // comes when the own settings say so.
    void CommentKeys();
    void DeleteKeys();
    // Has the lines of the keys removed, so that Total Commander uses its defaults. What it writes
    // by itself, and redirections, are left out unless nothing else is selected. From ten keys on
    // the user is asked.
    void ResetKeys();
    // The same for all keys of the selected category, whichever are shown; commented-out ones stay.
    void ResetCategory();
    // Puts the lines of the keys on the clipboard, as the list shows them.
    void CopyKeys() const;

    // They work while any key is shown, whichever category their own keys are in.
    void Undo();
    void Redo();
    bool CanUndo() const { return NextUndo() != nullptr && !m_selection.ShowsHeading(); }
    bool CanRedo() const { return NextRedo() != nullptr && !m_selection.ShowsHeading(); }
    // What would be undone or redone: "value of SizeStyle", "import of 15 keys". Empty for nothing.
    std::string UndoName() const { return NameOf(NextUndo()); }
    std::string RedoName() const { return NameOf(NextRedo()); }

private:
    void AfterChange(const std::vector<KeyNumber>& changed, std::size_t selected);
    void AfterReplay(const std::vector<KeyNumber>& keys);
    bool IsKeptByReset(KeyNumber key) const;
    void Reset(const std::vector<KeyNumber>& keys, std::size_t selected);
    const HistoryStep* NextUndo() const { return m_editor.History().NextUndo(); }
    const HistoryStep* NextRedo() const { return m_editor.History().NextRedo(); }
    std::string NameOf(const HistoryStep* step) const;

    Workplace& m_workplace;
    KeyStore& m_store;
    KeyEditor& m_editor;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
};

}  // namespace tamarind
