// The input is a data file: whatever it holds, every key can be shown, found, edited and saved, and
// a description that is written is the one that is read.
#include "core/text/Unicode.h"
#include "model/files/DescriptionWriter.h"
#include "tests/fuzz/FuzzWorld.h"

namespace tamarind {
namespace {

void CheckDescriptions(SessionWorld& world) {
    EditorSession& session = *world.session;
    for (std::size_t row = 0; row < session.Selection().Rows().Keys().Size(); row += 7) {
        session.Selection().Rows().ShowKeyDetails(row);
        const KeyNumber key = *session.Selection().Rows().CurrentKey();
        if (session.DataFile().MaxDescriptionUnits() < 8) {
            continue;
        }
        session.DataFile().ChangeDescription("new@ one\r\n");
        const std::string before = world.disk.BytesOf(SessionWorld::kWincmdData);
        if (!session.DataFile().SaveDataFile()) {
            Require(world.disk.BytesOf(SessionWorld::kWincmdData) == before);
            continue;
        }
        const KeyRecord record = session.Selection().Rows().Record(key);
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
    FuzzWorld world("[Configuration]\r\nPanelsVertical=1\r\n;K=2\r\n", SessionWorld::kWincmdData,
                    FuzzedFile(data, size));
    Require(world.Start());
    EditorSession& session = *world.session;
    for (std::size_t node = 0; node < session.Selection().Categories().size(); ++node) {
        session.Selection().SelectCategory(static_cast<NodeIndex>(node));
    }
    session.Selection().SelectCategory(kRootNode);
    Require(session.Selection().Rows().Keys().Size() ==
            session.Selection().Rows().Store().DescribedCount());
    for (const char* const text : {"a", "\xC3\xA4", " ", "k"}) {
        for (const bool inNames : {true, false}) {
            session.Finding().SetSearchText(text);
            session.Finding().Search().SetSearchesNames(inNames);
            session.Finding().FindNextString();
        }
    }
    CheckDescriptions(world);
    return 0;
}
