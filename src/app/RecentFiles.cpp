#include "RecentFiles.h"

#include <variant>

#include "FailureRegion.h"

namespace genvara {

RecentFiles::RecentFiles(clsTRX_Registry& registry, const std::string& baseSubkey)
    : m_registry(&registry), m_subkey(baseSubkey + "Recent Files") {}

void RecentFiles::Open(bool create) const {
    m_registry->RootKey(HKEY_LOCAL_MACHINE);
    m_registry->SubKey(m_subkey);
    m_registry->AutoCreate(create);
    m_registry->OpenKey();
}

std::string RecentFiles::Entry(std::size_t number) const {
    std::string name;
    FailureRegion region;
    region.Run([&] {
        name = std::get<std::string>(m_registry->Value(std::to_string(number), registry_type::REG_SZ));
    });
    return name;
}

std::vector<std::string> RecentFiles::Read() const {
    std::vector<std::string> names;
    FailureRegion region;
    if (!region.Run([this] { Open(false); })) {
        return names;
    }
    for (std::size_t number = 1; number <= kMost; ++number) {
        const std::string name = Entry(number);
        if (name.empty()) {
            break;
        }
        names.push_back(name);
    }
    m_registry->CloseKey();
    return names;
}

void RecentFiles::Add(const std::string& name) const {
    Open(true);
    for (std::size_t number = kMost - 1; number >= 1; --number) {
        if (const std::string entry = Entry(number); !entry.empty()) {
            m_registry->Value(std::to_string(number + 1), registry_type::REG_SZ, entry);
        }
    }
    m_registry->Value("1", registry_type::REG_SZ, name);
    m_registry->CloseKey();
}

}  // namespace genvara
