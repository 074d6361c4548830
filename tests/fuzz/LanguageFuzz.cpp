// The input's last byte chooses the character set; before it is a language file.
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"
#include "tests/fuzz/FuzzWorld.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamarind;
    const int charset = size == 0 ? 1 : data[size - 1];
    FuzzWorld world("[Configuration]\r\n", SessionWorld::kOwnSettings,
                    "[Common]\r\nLanguageFile=C:\\x.lng\r\n[ConfigurationEditor]\r\n"
                    "UseDefaultLanguage=0\r\nFontScript=" +
                        std::to_string(charset) + "\r\n");
    world.disk.Put("C:\\x.lng", FuzzedFile(data, size == 0 ? 0 : size - 1));
    Require(world.Start());
    for (std::uint16_t number = 100; number < 4050; ++number) {
        const std::string text = world.session->Place().Text(number);
        Require(IsValidUtf8(text));
        Require(!text.empty() || BuiltInText(number).empty());
    }
    world.session->Place().Texts().IsRightToLeft();
    return 0;
}
