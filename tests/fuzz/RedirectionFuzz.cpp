// The input is a settings file with redirections; up to the first NUL it is the settings file, from
// there on the file that some of them name. What is saved can be read again, and nothing else
// moves.
#include "model/files/KeyStates.h"
#include "model/files/SettingsWriter.h"
#include "tests/fuzz/FuzzWorld.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    const std::string input = FuzzedFile(data, size);
    const std::size_t nul = input.find('\0');
    FuzzWorld world(input.substr(0, nul), SessionWorld::kWincmdData,
                    "[A]\nCategoryTargetSection=Configuration\nPanelsVertical=0\n"
                    "RedirectSection=\nAlternateUserIni=\n[B]\nCategoryTargetSection=Colors\n"
                    "BackColor=-1\nRedirectSection=\n[C]\nCategoryTargetSection=Left\npath=\n");
    world.disk.Put("C:\\TC\\History.ini", nul == std::string::npos ? "[Colors]\r\nBackColor=1\r\n"
                                                                   : input.substr(nul + 1));
    world.disk.Wait(10);
    world.environment.variables["COMMANDER_PATH"] = "C:\\TC";
    Require(world.Start());
    EditorSession& session = *world.session;
    const bool saved = session.Settings().SaveToSettingsFile();
    for (KeyNumber key = 1; key <= session.Selection().Rows().Store().Size() && saved; ++key) {
        const std::string text = input.empty() || key % 2 == 0 ? "History.ini" : input.substr(0, 9);
        session.Selection().Rows().ShowKeyDetails(session.Selection().Rows().Keys().RowOf(key));
        if (!session.Commands().SetValue(text) || !session.Settings().SaveToSettingsFile()) {
            session.Commands().Undo();
            session.OpenSettingsFile(SessionWorld::kWincmd, false);
            continue;
        }
        const SettingsFiles now =
            SettingsFiles::Read(world.files, world.environment, SessionWorld::kWincmd);
        const KeyRecord record = session.Selection().Rows().Record(key);
        const auto& file = now.Files()[now.FileOf(record.targetSection, record.keyName)];
        const auto value = file.document->FindValue(record.targetSection, record.keyName);
        Require(!value || record.currentState != KeyState::Absent);
        Require(session.Settings().CheckOutsideChanges() != OutsideCheck::PutOff);
    }
    return 0;
}
