#include "clsTRX_Registry.h"

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <utility>

#include "CodePage.h"
#include "ErrorNumbers.h"
#include "LanguageErrors.h"
#include "NumberText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr const char* kSource = "clsTRX_Registry";
constexpr std::int32_t kCannotOpenParent = errors::FromBase(1000);
constexpr std::int32_t kKeyDoesNotExist = errors::FromBase(1004);
constexpr std::int32_t kNoKeyOpened = errors::FromBase(1006);
constexpr std::int32_t kUnimplementedType = errors::FromBase(1007);
constexpr std::int32_t kUnknownError = errors::FromBase(1009);

// The system's codes of a value that cannot be read.
constexpr std::int32_t kSystemNotFound = 2;
constexpr std::int32_t kSystemInvalidData = 13;
constexpr std::int32_t kSystemMoreData = 234;

// The predefined roots; a key below any other handle has no parent.
constexpr auto kFirstRoot = static_cast<std::int32_t>(0x80000000);
constexpr auto kLastRoot = static_cast<std::int32_t>(0x80000006);

constexpr std::size_t kLongestText = 255;

constexpr std::int32_t kCreated = 1;
constexpr std::int32_t kExisted = 2;

/// Runs work on the store; a failure of the system becomes the class's own.
template <typename Work>
auto OnStore(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const RaisedError& failure) {
        throw RaisedError(kUnknownError, kSource, fmt::format("Unknown Error No. {}", failure.Number()));
    }
}

std::int32_t ToInteger(const clsTRX_Registry::Variant& value) {
    if (const auto* integer = std::get_if<std::int32_t>(&value)) {
        return *integer;
    }
    const std::optional<double> number = ParseNumber(std::get<std::string>(value));
    if (!number) {
        RaiseTypeMismatch("clsTRX_Registry::Value");
    }
    const std::optional<std::int32_t> integer = RoundToInteger(*number);
    if (!integer) {
        RaiseOverflow("clsTRX_Registry::Value");
    }
    return *integer;
}

std::string ToText(const clsTRX_Registry::Variant& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : fmt::format("{}", std::get<std::int32_t>(value));
}

[[noreturn]] void RaiseSystemCode(std::int32_t code) {
    throw RaisedError(code, kSource, fmt::format("System error {}", code));
}

/// A value of the store; a failure of the system is raised as its own number.
std::optional<SettingsValue> ReadValue(const SettingsFile& store, const SettingsKey& key,
                                       const std::string& name) {
    try {
        return store.Read(key, name);
    } catch (const RaisedError& failure) {
        RaiseSystemCode(failure.Number());
    }
}

}  // namespace

void clsTRX_Registry::SubKey(std::string path) {
    m_subKey = std::move(path);
}

void clsTRX_Registry::Value(const std::string& name, std::int32_t type, const Variant& newValue) {
    if (!m_open) {
        throw RaisedError(kNoKeyOpened, kSource, "No key opened");
    }
    if (type == registry_type::REG_SZ) {
        OnStore([&, text = ToText(newValue)] { m_store->Write(Key(), name, SettingsValue(text)); });
    } else if (type == registry_type::REG_DWORD) {
        const std::int32_t integer = ToInteger(newValue);
        OnStore([&] { m_store->Write(Key(), name, SettingsValue(integer)); });
    } else {
        throw RaisedError(kUnimplementedType, kSource, "Unimplemented registry type");
    }
}

clsTRX_Registry::Variant clsTRX_Registry::Value(const std::string& name, std::int32_t type) const {
    if (!m_open) {
        throw RaisedError(kNoKeyOpened, kSource, "No key opened.");
    }
    if (type != registry_type::REG_SZ && type != registry_type::REG_DWORD) {
        throw RaisedError(kUnimplementedType, kSource, "Unimplemented registry type.");
    }
    const std::optional<SettingsValue> value = ReadValue(*m_store, Key(), name);
    if (!value) {
        RaiseSystemCode(kSystemNotFound);
    }
    if (std::holds_alternative<std::string>(*value) != (type == registry_type::REG_SZ)) {
        RaiseSystemCode(kSystemInvalidData);
    }
    const auto* text = std::get_if<std::string>(&*value);
    if (text != nullptr && DecodeUtf8(*text).size() > kLongestText) {
        RaiseSystemCode(kSystemMoreData);
    }
    return *value;
}

std::int32_t clsTRX_Registry::OpenKey() {
    if (m_rootKey < kFirstRoot || m_rootKey > kLastRoot) {
        throw RaisedError(kCannotOpenParent, kSource, "Cann't open parent key.");
    }
    const SettingsKey key{.root = m_rootKey, .path = m_subKey};
    std::int32_t result = kExisted;
    if (m_autoCreate) {
        // One step of the store, so that of two programs at once only one is told that it created the key.
        result = OnStore([&] { return m_store->CreateKey(key); }) ? kCreated : kExisted;
    } else if (!OnStore([&] { return m_store->HasKey(key); })) {
        throw RaisedError(kKeyDoesNotExist, kSource, "Key does not exist");
    }
    m_open = true;
    m_openRoot = m_rootKey;
    m_openPath = m_subKey;
    return result;
}

}  // namespace genvara
