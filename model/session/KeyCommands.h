#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/keys/ColorKeys.h"
#include "model/keys/KeyEditor.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/Workplace.h"

namespace tamarind {

// What the user does with keys: each change waits to be saved and can be undone.
class KeyCommands {
public:
    KeyCommands(Workplace& workplace, KeyStore& store, KeyEditor& editor, KeySelection& selection,
                const OpenDataFile& dataFile, const OpenSettings& settings);

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

    // The other commands on the current key; each does nothing where it is not enabled. SetValue
    // and BrowseValue return whether a value was stored. The colour dialog starts at the key's
    // colour.
    bool SetValue(const std::string& value);
    bool BrowseValue();
    void CommentKey() { ChangeKey(&KeyEditor::Comment); }
    void DeleteKey() { ChangeKey(&KeyEditor::Delete); }

    // They work while any key is shown, whichever category their own key is in.
    void Undo() { Replay(&KeyEditor::Undo); }
    void Redo() { Replay(&KeyEditor::Redo); }
    bool CanUndo() const { return m_editor.CanUndo() && !m_selection.ShowsHeading(); }
    bool CanRedo() const { return m_editor.CanRedo() && !m_selection.ShowsHeading(); }

    // What the current key's value is as a colour; nothing for a key that is none. One that is
    // absent or to be deleted has the system's.
    std::optional<ColorSample> CurrentColor() const;

    // Writes the rows of the key list with their pending states into a file of the user's choice,
    // or makes all that such a file says of them pending. Import makes no undo entries.
    void ExportKeys();
    void ImportKeys();

private:
    bool CanEditValue() const;
    void ChangeKey(bool (KeyEditor::*change)(KeyNumber key));
    void Replay(std::optional<KeyNumber> (KeyEditor::*replay)());
    void TellChange(KeyNumber key);
    std::string AskExchangeFile(bool isExport) const;

    Workplace& m_workplace;
    KeyStore& m_store;
    KeyEditor& m_editor;
    KeySelection& m_selection;
    const OpenDataFile& m_dataFile;
    const OpenSettings& m_settings;
};

}  // namespace tamarind
