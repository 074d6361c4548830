// The input is the program's own settings file, with the recent files and the favorites in it.
#include "tests/fuzz/FuzzWorld.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    FuzzWorld world("[Configuration]\r\nPanelsVertical=1\r\n", SessionWorld::kOwnSettings,
                    FuzzedFile(data, size));
    if (!world.Start()) {
        return 0;  // its data file is another one
    }
    EditorSession& session = *world.session;
    for (const auto& entry : session.Recent().Files().Entries()) {
        Require(!entry.caption.empty());
    }
    session.OpenRecentFile(1);
    session.OpenSettingsFile(SessionWorld::kWincmd, true);
    Require(session.Recent().Files().ListItems(1) == SessionWorld::kWincmd);
    session.FavoriteKeys().SetOrganizerOpen(true);
    FavoritesOrganizer& organizer = session.FavoriteKeys().Organizer();
    organizer.AddSeparator();
    organizer.MoveDown();
    organizer.Rename(0, "caption");
    const std::size_t rows = organizer.Rows().size();
    if (session.FavoriteKeys().ApplyOrganizer()) {
        Require(session.FavoriteKeys().Items().size() <= rows);
    }
    session.Place().Options().Begin();
    session.Place().Options().Apply();
    session.Place().Options().End();
    return 0;
}
