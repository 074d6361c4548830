// The input's last five bytes choose the code page and the edits, so that a settings file as it
// stands is a useful input; what comes before them is the file.
#include "tests/fuzz/IniDocumentChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace tamarind;
    constexpr CodePage kCodePages[] = {1252, 1251, 936, 932, 950, kCodePageUtf8};
    constexpr std::size_t kChoiceBytes = 5;
    const std::size_t length = size < kChoiceBytes ? 0 : size - kChoiceBytes;
    const unsigned char* const choices = data + length;
    unsigned choice = 0;
    for (std::size_t i = 1; i < std::min(size, kChoiceBytes); ++i) {
        choice = (choice << 8) | choices[i];
    }
    const CodePage codePage = kCodePages[size == 0 ? 0 : choices[0] % std::size(kCodePages)];
    CheckFile(FuzzedFile(data, length), codePage, choice);
    return 0;
}
