// A resource holds all pictures of one list and size in a row: width and height in pixels (16 bits
// each, low byte first), then four planes (blue, green, red, alpha) packed with PackBits. Colors
// are multiplied by their alpha.

#include "ui/toolkit/Pictures.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"

namespace tamarind {
namespace {

constexpr int kDesignSize = 16;
constexpr int kSizes[] = {48, 32, 24, 20, 16};
constexpr std::uint32_t kMostOfGray = 40;  // between the channels of a gray

// The pictures of a resource side by side: planes of blue, green, red and alpha. As image lists
// want them, the colors are not multiplied by their alpha.
struct Strip {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> planes;
};

// The size of the pictures to load, in pixels.
int SizeFor(int dpi) {
    const int wanted = ScaledPixels(kDesignSize, dpi);
    const auto* const size = std::ranges::find_if(kSizes, [&](int s) { return s <= wanted; });
    return size == std::end(kSizes) ? kDesignSize : *size;
}

// Empty if there is no such resource. The bytes live as long as the program.
std::span<const std::uint8_t> FindBytes(const std::wstring& name) {
    const HRSRC info = FindResourceW(nullptr, name.c_str(), RT_RCDATA);
    const HGLOBAL loaded = info != nullptr ? LoadResource(nullptr, info) : nullptr;
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const std::uint8_t*>(LockResource(loaded)), SizeofResource(nullptr, info)};
}

// PackBits: a control byte n below 128 is followed by n + 1 bytes that are taken as they are; any
// other by one byte that is repeated 257 - n times. `size` is that of the result; packed bytes
// beyond it, or too few of them, are seen by the caller in the size of the result.
std::vector<std::uint8_t> Unpack(std::span<const std::uint8_t> packed, std::size_t size) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(size);
    std::size_t at = 0;
    while (at + 1 < packed.size() && bytes.size() < size) {
        const std::size_t control = packed[at++];
        if (control < 128) {
            const std::size_t count = std::min(control + 1, packed.size() - at);
            const auto from = packed.begin() + static_cast<std::ptrdiff_t>(at);
            bytes.insert(bytes.end(), from, from + static_cast<std::ptrdiff_t>(count));
            at += count;
        } else {
            bytes.insert(bytes.end(), 257 - control, packed[at++]);
        }
    }
    return bytes;
}

std::optional<Strip> LoadStrip(const wchar_t* list, int dpi) {
    const auto bytes = FindBytes(std::wstring(list) + L'_' + std::to_wstring(SizeFor(dpi)));
    if (bytes.size() < 4) {
        return std::nullopt;
    }
    Strip strip;
    strip.width = bytes[0] | bytes[1] << 8;
    strip.height = bytes[2] | bytes[3] << 8;
    const std::size_t size = std::size_t{4} * static_cast<std::size_t>(strip.width * strip.height);
    strip.planes = Unpack(bytes.subspan(4), size);
    return strip.planes.size() == size ? std::optional(std::move(strip)) : std::nullopt;
}

std::uint32_t PixelAt(const Strip& strip, std::size_t at) {
    const std::size_t plane = strip.planes.size() / 4;
    std::uint32_t pixel = 0;
    for (std::size_t channel = 0; channel < 4; ++channel) {
        pixel |= std::uint32_t{strip.planes[at + channel * plane]} << (8 * channel);
    }
    return pixel;
}

// Pixels are 0xAARRGGBB.
std::uint32_t PixelInLook(std::uint32_t pixel, PictureLook look) {
    const std::uint32_t alpha = pixel >> 24;
    switch (look) {
        case PictureLook::Disabled: {
            const std::uint32_t red = pixel >> 16 & 0xFF;
            const std::uint32_t green = pixel >> 8 & 0xFF;
            const std::uint32_t blue = pixel & 0xFF;
            const std::uint32_t gray = (red * 77 + green * 151 + blue * 28) >> 8;
            return alpha * 2 / 5 << 24 | gray << 16 | gray << 8 | gray;
        }
        case PictureLook::Ghosted:
            return alpha / 2 << 24 | (pixel & 0xFFFFFF);
        case PictureLook::Normal:
            break;
    }
    return pixel;
}

// On a dark background gray lines become as light as they were dark; colors keep their hue.
std::uint32_t PixelForDark(std::uint32_t pixel) {
    const std::uint32_t channels[] = {pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF};
    const auto [least, most] = std::ranges::minmax(channels);
    if (most - least > kMostOfGray) {
        return pixel;
    }
    return (pixel & 0xFF000000U) | (~pixel & 0x00FFFFFFU);
}

UniqueBitmap MakeBitmap(const Strip& strip, PictureLook look) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = strip.width;
    info.bmiHeader.biHeight = -strip.height;  // the first row is the upper one
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap) {
        auto* const pixels = static_cast<std::uint32_t*>(bits);
        for (std::size_t at = 0; at < strip.planes.size() / 4; ++at) {
            const std::uint32_t pixel = PixelAt(strip, at);
            pixels[at] = PixelInLook(IsDark() ? PixelForDark(pixel) : pixel, look);
        }
    }
    return bitmap;
}

}  // namespace

HICON ProgramIcon(WPARAM size) {
    const bool isSmall = size == ICON_SMALL;
    return static_cast<HICON>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kProgramIcon), IMAGE_ICON,
                   GetSystemMetrics(isSmall ? SM_CXSMICON : SM_CXICON),
                   GetSystemMetrics(isSmall ? SM_CYSMICON : SM_CYICON), LR_SHARED));
}

UniqueImageList LoadPictures(const wchar_t* list, int dpi,
                             std::initializer_list<PictureLook> looks) {
    const auto strip = LoadStrip(list, dpi);
    if (!strip || strip->height == 0) {
        return {};
    }
    const int size = strip->height;
    UniqueImageList images(ImageList_Create(size, size, ILC_COLOR32, strip->width / size, 4));
    for (const PictureLook look : looks) {
        const UniqueBitmap bitmap = MakeBitmap(*strip, look);
        if (images && bitmap) {
            ImageList_Add(images.Get(), bitmap.Get(), nullptr);
        }
    }
    return images;
}

}  // namespace tamarind
