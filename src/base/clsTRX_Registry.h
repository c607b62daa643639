#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "SettingsFile.h"

namespace genvara {

/// Codes of the two kinds of value.
namespace registry_type {
inline constexpr std::int32_t REG_SZ = 1;     ///< text
inline constexpr std::int32_t REG_DWORD = 4;  ///< 32-bit integer
}  // namespace registry_type

/// The root under which the program keeps its settings.
inline constexpr auto HKEY_LOCAL_MACHINE = static_cast<std::int32_t>(0x80000002);

/// One open key of the settings store.
///
/// Callers set `SubKey` and `AutoCreate`, open the key, work with its values and close it. Every problem is
/// raised; nothing is caught here. Numbers of the class are 0x80040000 and an offset: 1000 "Cann't open
/// parent key.", 1004 "Key does not exist", 1006 "No key opened", 1007 "Unimplemented registry type", 1009
/// "Unknown Error No. " with the system's code.
class clsTRX_Registry {
  public:
    using Variant = std::variant<std::string, std::int32_t>;

    /// The file behind the store outlives the object.
    explicit clsTRX_Registry(SettingsFile& store) : m_store(&store) {}

    // Where to look. The program sets these three and asks for none.

    /// Whether `OpenKey` creates a missing key; default false.
    void AutoCreate(bool create) noexcept { m_autoCreate = create; }
    [[nodiscard]] bool AutoCreate() const noexcept { return m_autoCreate; }

    /// Root of the keys; default `HKEY_LOCAL_MACHINE`.
    void RootKey(std::int32_t root) noexcept { m_rootKey = root; }
    [[nodiscard]] std::int32_t RootKey() const noexcept { return m_rootKey; }

    /// Path of the key below the root; default empty.
    void SubKey(std::string path);
    [[nodiscard]] const std::string& SubKey() const noexcept { return m_subKey; }

    /// Stores a value in the open key, converted to the type.
    /// @throws RaisedError 0x800403EE "No key opened"; 0x800403EF "Unimplemented registry type";
    ///         13 "Type mismatch" for a text that is no number where an integer is stored; 0x800403F1
    ///         "Unknown Error No. " and the system's code if the store cannot be written.
    void Value(const std::string& name, std::int32_t type, const Variant& newValue);

    /// A value of the open key.
    /// @throws RaisedError 0x800403EE "No key opened."; 0x800403EF "Unimplemented registry type."; the
    ///         system's code itself: 2 for a missing value, 13 for one of the other type, 234 for a text of
    ///         more than 255 characters, which the read buffer does not hold, and that of a store that
    ///         cannot be read.
    [[nodiscard]] Variant Value(const std::string& name, std::int32_t type) const;

    /// Opens `SubKey` below `RootKey`; 1 if the key was created, 2 if it existed. Does not close another one.
    /// @throws RaisedError 0x800403E8 "Cann't open parent key." for a root that is none of the predefined
    ///         ones; 0x800403EC "Key does not exist"; 0x800403F1 as `Value`.
    std::int32_t OpenKey();

    /// Closes the open key, if there is one.
    void CloseKey() noexcept { m_open = false; }

  private:
    [[nodiscard]] SettingsKey Key() const { return {.root = m_openRoot, .path = m_openPath}; }

    SettingsFile* m_store;
    bool m_autoCreate = false;
    std::int32_t m_rootKey = HKEY_LOCAL_MACHINE;
    std::string m_subKey;
    bool m_open = false;
    std::int32_t m_openRoot = 0;
    std::string m_openPath;
};

}  // namespace genvara
