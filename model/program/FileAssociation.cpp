#include "model/program/FileAssociation.h"

#include "core/system/cRegistry.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr const char* kAllUsers = "HKEY_CLASSES_ROOT\\";
constexpr const char* kThisUser = "HKEY_CURRENT_USER\\Software\\Classes\\";
constexpr const char* kExtensionKey = ".tmdf";
constexpr const char* kTypeKey = "Fernedit";
constexpr const char* kTypeName = "Tamarind Config Data File";
constexpr const char* kCommandKey = "Fernedit\\Shell\\Open\\Command";
constexpr const char* kIconKey = "Fernedit\\DefaultIcon";
constexpr const char* kVersionName = "CurrentVersion";

// What is registered; both texts are the MissingValueMarker where nothing is.
struct Registration {
    std::string command;
    std::string version;
};

// The registration under one root key.
class ClassesRoot {
public:
    ClassesRoot(Registry& registry, const char* root) : m_registry(registry), m_root(root) {}

    Registration Read() {
        return {ToLowerCase(m_registry.ReadValue(m_root + kCommandKey, "")),
                m_registry.ReadValue(m_root + kCommandKey, kVersionName)};
    }

    void Write(const Registration& registration, const std::string& programPath) {
        Set(kExtensionKey, "", kTypeKey);
        Set(kTypeKey, "", kTypeName);
        Set(kCommandKey, "", registration.command);
        Set(kCommandKey, kVersionName, registration.version);
        Set(kIconKey, "", programPath + ", 1");
    }

private:
    void Set(const char* key, const char* name, const std::string& value) {
        m_registry.WriteValue(m_root + key, name, value, kRegistryString);
    }

    cRegistry m_registry;
    std::string m_root;
};

}  // namespace

bool RegisterDataFileType(Registry& registry, const std::string& programPath,
                          const std::string& versionText) {
    const Registration own = {ToLowerCase("\"" + programPath + "\" \"%1\""), versionText};
    ClassesRoot allUsers(registry, kAllUsers);
    ClassesRoot thisUser(registry, kThisUser);
    Registration present = allUsers.Read();
    if (present.version == MissingValueMarker) {
        present = thisUser.Read();
    }
    const bool isNewer = own.version > present.version;
    const bool wasMoved = own.version == present.version && own.command != present.command;
    if (!isNewer && !wasMoved) {
        return false;
    }
    allUsers.Write(own, programPath);
    if (allUsers.Read().command != own.command) {
        thisUser.Write(own, programPath);
    }
    return true;
}

}  // namespace tamarind
