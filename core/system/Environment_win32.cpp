#include "core/system/Environment.h"

#include <windows.h>

#include "core/system/LongPath_win32.h"
#include "core/text/WideText_win32.h"

namespace tamarind {

std::string ProcessEnvironment::Variable(const std::string& name) const {
    const std::wstring wideName = Widen(name);
    const DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    if (size == 0) {
        return {};
    }
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), size));
    return Narrow(value);
}

std::string ProcessEnvironment::FullPath(const std::string& path) const {
    return Narrow(tamarind::FullPath(path));
}

}  // namespace tamarind
