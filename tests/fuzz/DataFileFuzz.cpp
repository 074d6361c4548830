// The input is a data file: whatever it holds, every key can be shown, found, edited and saved, and
// a description that is written is the one that is read.
#include "core/text/Unicode.h"
#include "model/files/DescriptionWriter.h"
#include "tests/fuzz/FuzzWorld.h"

namespace tamarind {
namespace {

void CheckDescriptions(SessionWorld& world) {
    EditorSession& session = *world.session;
    for (std::size_t row = 0; row < session.Keys().Size(); row += 7) {
        session.ShowKeyDetails(row);
        const RowKey key = session.CurrentKey();
        if (session.MaxDescriptionUnits() < 8) {
            continue;
        }
        session.ChangeDescription("new@ one\r\n");
        const std::string before = world.disk.BytesOf(SessionWorld::kWincmdData);
        if (!session.SaveDataFile()) {
            Require(world.disk.BytesOf(SessionWorld::kWincmdData) == before);
            continue;
        }
        const KeyRecord record = session.Record(key);
        const IniDocument written = IniDocument::Parse(
            world.disk.BytesOf(SessionWorld::kWincmdData), world.files.SystemCodePage());
        const auto entry = written.FindValue(record.category, record.keyName);
        Require(entry.has_value());
        Require(SplitEntry(*entry).description == "new@ one@");
        Require(SplitEntry(*entry).defaultValue == record.defaultValue);
    }
}

}  // namespace
}  // namespace tamarind

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    SessionWorld world;
    world.PutUsualFiles("[Configuration]\r\nPanelsVertical=1\r\n;K=2\r\n");
    world.disk.Put(SessionWorld::kWincmdData, FuzzedFile(data, size));
    world.disk.Wait(10);  // files that are young are read again for each text
    Require(world.Start());
    EditorSession& session = *world.session;
    for (std::size_t node = 0; node < session.Categories().size(); ++node) {
        session.SelectCategory(static_cast<NodeIndex>(node));
    }
    session.SelectCategory(kRootNode);
    Require(session.Keys().Size() == session.Store().Size());
    for (const char* const text : {"a", "\xC3\xA4", " ", "k"}) {
        for (const bool inNames : {true, false}) {
            session.SetSearchText(text);
            session.SetSearchesNames(inNames);
            session.FindNextString();
        }
    }
    CheckDescriptions(world);
    return 0;
}
