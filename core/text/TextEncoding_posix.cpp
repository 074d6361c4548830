#include <iconv.h>
#include <cerrno>

#include "core/text/TextEncoding.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

// Owns an iconv handle.
class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : m_handle(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (IsOpen()) {
            iconv_close(m_handle);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    // Converts as far as it can. `bytes` keeps the part that could not be converted.
    std::string Convert(std::string_view& bytes) {
        std::string result;
        char buffer[1024];
        while (!bytes.empty()) {
            char* in = const_cast<char*>(bytes.data());
            std::size_t inLeft = bytes.size();
            char* out = buffer;
            std::size_t outLeft = sizeof buffer;
            const std::size_t done = iconv(m_handle, &in, &inLeft, &out, &outLeft);
            const int error = errno;
            result.append(buffer, sizeof buffer - outLeft);
            bytes.remove_prefix(bytes.size() - inLeft);
            if (done == static_cast<std::size_t>(-1) && error != E2BIG) {
                break;
            }
        }
        return result;
    }

private:
    iconv_t m_handle;
};

std::string IconvName(CodePage codePage) {
    return "CP" + std::to_string(codePage);
}

}  // namespace

CodePage SystemAnsiCodePage() {
    return 1252;
}

std::string DecodeCodePage(std::string_view bytes, CodePage codePage) {
    if (codePage == kCodePageUtf8) {
        return Utf8FromUtf16(Utf16FromUtf8(bytes));
    }
    Converter converter("UTF-8", IconvName(codePage));
    std::string text;
    while (!bytes.empty()) {
        if (converter.IsOpen()) {
            text += converter.Convert(bytes);
        }
        if (!bytes.empty()) {
            AppendUtf8(text, 0xFFFD);
            bytes.remove_prefix(1);
        }
    }
    return text;
}

std::optional<std::string> EncodeCodePage(std::string_view text, CodePage codePage) {
    if (codePage == kCodePageUtf8) {
        return std::string(text);
    }
    Converter converter(IconvName(codePage), "UTF-8");
    if (!converter.IsOpen()) {
        return std::nullopt;
    }
    std::string bytes = converter.Convert(text);
    return text.empty() ? std::optional(bytes) : std::nullopt;
}

}  // namespace tamarind
