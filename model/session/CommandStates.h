#pragma once

#include "model/program/Commands.h"
#include "model/session/KeyColumns.h"
#include "model/session/KeyCommands.h"
#include "model/session/KeyDescribing.h"
#include "model/session/KeyFinding.h"
#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/Workplace.h"

namespace tamarind {

// Which commands are enabled and checked now.
class CommandStates {
public:
    CommandStates(const Workplace& workplace, const KeySelection& selection,
                  const KeyFinding& finding, const KeyCommands& commands,
                  const OpenDataFile& dataFile, const OpenSettings& settings,
                  const KeyColumns& columns, const KeyDescribing& describing)
        : m_workplace(workplace),
          m_selection(selection),
          m_finding(finding),
          m_commands(commands),
          m_dataFile(dataFile),
          m_settings(settings),
          m_columns(columns),
          m_describing(describing) {}

    bool IsEnabled(Command command) const;
    bool IsChecked(Command command) const;
    // What the menu shows behind the command's name: what would be undone. Empty for most commands.
    std::string NameOfStep(Command command) const;

private:
    CommandState State() const;

    const Workplace& m_workplace;
    const KeySelection& m_selection;
    const KeyFinding& m_finding;
    const KeyCommands& m_commands;
    const OpenDataFile& m_dataFile;
    const OpenSettings& m_settings;
    const KeyColumns& m_columns;
    const KeyDescribing& m_describing;
};

}  // namespace tamarind
