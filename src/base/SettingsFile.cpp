#include "SettingsFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>
#include <vector>

#include "AtomicFile.h"
#include "CodePage.h"
#include "RaisedError.h"

namespace genvara {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kSource = "SettingsFile";
constexpr const char* kText = "text";
constexpr const char* kInteger = "integer";
/// A text that is no UTF-8, as the name of a folder may be: its bytes, because JSON holds characters.
constexpr const char* kBytes = "bytes";

/// Most bytes of a store [B], some hundred times what the program ever keeps: a larger file is none of ours,
/// and reading it would only fill the memory.
constexpr std::size_t kMostBytes = 1U << 20U;

/// The system's code as it is: unlike the files of a user, a store that is missing has no number of its own.
[[noreturn]] void RaiseStoreError(int systemError) {
    throw RaisedError(systemError, kSource, std::generic_category().message(systemError));
}

/// A name without its case, as keys and values are found by.
std::string Folded(std::string name) {
    std::ranges::transform(name, name.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return name;
}

std::string KeyName(const SettingsKey& key) {
    std::string path = Folded(key.path);
    path.erase(path.find_last_not_of('\\') + 1);
    return fmt::format("{:08x}\\{}", static_cast<std::uint32_t>(key.root), path);
}

/// An open file of the system, closed with the object.
class Descriptor {
  public:
    explicit Descriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    ~Descriptor() {
        if (m_descriptor >= 0) {
            close(m_descriptor);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    [[nodiscard]] int Get() const noexcept { return m_descriptor; }

  private:
    int m_descriptor;
};

void CreateFolderOf(const std::filesystem::path& file) {
    std::error_code failure;
    if (file.has_parent_path() && !std::filesystem::is_directory(file.parent_path(), failure)) {
        std::filesystem::create_directories(file.parent_path(), failure);
        if (failure) {
            RaiseStoreError(failure.value());
        }
    }
}

/// A lock that all programs take before they look at the file and change it.
class Lock {
  public:
    explicit Lock(const std::filesystem::path& file) : m_descriptor(Open(file)) {
        if (m_descriptor.Get() < 0) {
            RaiseStoreError(errno);
        }
        while (flock(m_descriptor.Get(), LOCK_EX) != 0) {
            if (errno != EINTR) {
                RaiseStoreError(errno);
            }
        }
    }

  private:
    static int Open(const std::filesystem::path& file) {
        CreateFolderOf(file);
        return open((file.string() + ".lock").c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0644);
    }

    Descriptor m_descriptor;
};

/// The bytes of a file, one more than `kMostBytes` at the most; nothing where there is no file.
std::optional<std::string> ReadBytes(const std::filesystem::path& file) {
    // A pipe without a writer must not hold the program up.
    const Descriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (descriptor.Get() < 0) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        RaiseStoreError(errno);
    }
    struct stat status {};
    if (fstat(descriptor.Get(), &status) != 0) {
        RaiseStoreError(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        RaiseStoreError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    std::string bytes;
    std::array<char, 4096> buffer{};
    while (bytes.size() <= kMostBytes) {
        const ssize_t count = read(descriptor.Get(), buffer.data(), buffer.size());
        if (count == 0) {
            break;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            RaiseStoreError(errno);
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return bytes;
}

/// Moves a file that holds no settings out of the way, under a name that nothing has yet.
void SetAside(const std::filesystem::path& file) {
    std::filesystem::path aside;
    std::error_code failure;
    int number = 0;
    do {
        aside = file.string() + fmt::format(".damaged-{}", ++number);
    } while (std::filesystem::exists(std::filesystem::symlink_status(aside, failure)));
    std::filesystem::rename(file, aside, failure);
    if (failure) {
        RaiseStoreError(failure.value());
    }
    // Not by a call that fails where nobody can be told: a closed standard error ends no program.
    std::fputs(fmt::format("The settings in {} are damaged; they have been set aside as {}.\n", file.string(),
                           aside.string())
                   .c_str(),
               stderr);
}

bool IsInteger32(const Json& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (value.is_number_unsigned()) {  // apart, since a large one compared as signed would count as negative
        return value.get<std::uint64_t>() <= std::uint64_t{Limits::max()};
    }
    return value.is_number_integer() && value.get<std::int64_t>() >= Limits::min() &&
           value.get<std::int64_t>() <= Limits::max();
}

bool IsUtf8(const std::string& text) {
    return DecodeUtf8(text).find(U'\uFFFD') == std::u32string::npos;
}

/// True for an array of numbers from 0 to 255.
bool HoldsBytes(const Json& value) {
    return value.is_array() && std::ranges::all_of(value, [](const Json& byte) {
               return byte.is_number_integer() && byte >= 0 && byte <= 255;
           });
}

/// True for an object of keys, each an object of values, each an object of one text, integer
/// or run of bytes.
bool HoldsSettings(const Json& json) {
    const auto isValue = [](const Json& value) {
        const bool text = value.contains(kText) && value[kText].is_string();
        const bool integer = value.contains(kInteger) && IsInteger32(value[kInteger]);
        const bool bytes = value.contains(kBytes) && HoldsBytes(value[kBytes]);
        return value.is_object() && value.size() == 1 && (text || integer || bytes);
    };
    return json.is_object() && std::ranges::all_of(json, [&](const Json& key) {
               return key.is_object() && std::ranges::all_of(key, isValue);
           });
}

/// The file's settings, empty if there is no file; nothing for a damaged one.
std::optional<Json> Parse(const std::filesystem::path& file) {
    const std::optional<std::string> bytes = ReadBytes(file);
    if (!bytes) {
        return Json::object();
    }
    if (bytes->size() > kMostBytes) {
        return std::nullopt;
    }
    Json json = Json::parse(*bytes, nullptr, false);
    return HoldsSettings(json) ? std::optional(std::move(json)) : std::nullopt;
}

/// The settings of a file under the lock; a damaged one is set aside.
Json Load(const std::filesystem::path& file) {
    std::optional<Json> json = Parse(file);
    if (!json) {
        SetAside(file);
        return Json::object();
    }
    return std::move(*json);
}

/// The settings of a file that is only read. The lock is needed to set a damaged one aside, and not before:
/// a writer replaces the file whole, and a folder may be readable alone.
Json LoadToRead(const std::filesystem::path& file) {
    std::optional<Json> json = Parse(file);
    if (!json) {
        const Lock lock(file);
        return Load(file);
    }
    return std::move(*json);
}

void Save(const std::filesystem::path& file, const Json& json) {
    const std::string bytes = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    if (bytes.size() > kMostBytes) {
        RaiseStoreError(EFBIG);  // written, it would be unreadable
    }
    AtomicFile target(file);
    target.Write(bytes);
    target.Commit();
}

}  // namespace

SettingsFile::SettingsFile(std::filesystem::path file) : m_file(std::move(file)) {}

std::filesystem::path SettingsFile::DefaultPath() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    std::filesystem::path folder = configuration != nullptr ? configuration : "";
    if (!folder.is_absolute()) {
        const char* home = std::getenv("HOME");
        folder = std::filesystem::path(home != nullptr ? home : "/") / ".config";
    }
    return folder / "genvara" / "settings.json";
}

bool SettingsFile::HasKey(const SettingsKey& key) const {
    return LoadToRead(m_file).contains(KeyName(key));
}

bool SettingsFile::CreateKey(const SettingsKey& key) {
    const Lock lock(m_file);
    Json json = Load(m_file);
    const bool created = json.emplace(KeyName(key), Json::object()).second;
    if (created) {
        Save(m_file, json);
    }
    return created;
}

std::optional<SettingsValue> SettingsFile::Read(const SettingsKey& key, const std::string& name) const {
    const Json json = LoadToRead(m_file);
    const auto values = json.find(KeyName(key));
    if (values == json.end()) {
        return std::nullopt;
    }
    const auto value = values->find(Folded(name));
    if (value == values->end()) {
        return std::nullopt;
    }
    if (value->contains(kText)) {
        return SettingsValue(value->at(kText).get<std::string>());
    }
    if (value->contains(kBytes)) {
        const auto bytes = value->at(kBytes).get<std::vector<std::uint8_t>>();
        return SettingsValue(std::string(bytes.begin(), bytes.end()));
    }
    return SettingsValue(value->at(kInteger).get<std::int32_t>());
}

void SettingsFile::Write(const SettingsKey& key, const std::string& name, const SettingsValue& value) {
    const Lock lock(m_file);
    Json json = Load(m_file);
    Json& target = json[KeyName(key)][Folded(name)];
    target = Json::object();
    const auto* text = std::get_if<std::string>(&value);
    if (text != nullptr && !IsUtf8(*text)) {
        target[kBytes] = std::vector<std::uint8_t>(text->begin(), text->end());
    } else if (text != nullptr) {
        target[kText] = *text;
    } else {
        target[kInteger] = std::get<std::int32_t>(value);
    }
    Save(m_file, json);
}

}  // namespace genvara
