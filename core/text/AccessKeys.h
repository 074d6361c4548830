#pragma once

#include <cstddef>
#include <string>

namespace tamarind {

// A text that menus, buttons and labels show as it is: in those a single "&" marks an access key.
template <typename Text>
Text WithoutAccessKeys(Text text) {
    for (std::size_t at = text.find('&'); at != Text::npos; at = text.find('&', at + 2)) {
        text.insert(at, 1, '&');
    }
    return text;
}

}  // namespace tamarind
