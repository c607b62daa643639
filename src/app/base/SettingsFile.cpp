#include "SettingsFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
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

/// A lock that all programs take before they look at the file and change it.
class Lock {
  public:
    explicit Lock(const std::filesystem::path& file) {
        std::error_code failure;
        std::filesystem::create_directories(file.parent_path(), failure);
        const std::string name = file.string() + ".lock";
        m_descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (m_descriptor < 0) {
            RaiseSystemError(errno, kSource);
        }
        while (flock(m_descriptor, LOCK_EX) != 0) {
            if (errno != EINTR) {
                const int cause = errno;
                close(m_descriptor);
                RaiseSystemError(cause, kSource);
            }
        }
    }
    ~Lock() { close(m_descriptor); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    Lock(Lock&&) = delete;
    Lock& operator=(Lock&&) = delete;

  private:
    int m_descriptor = -1;
};

/// Moves a file that holds no settings out of the way, under a name that nothing has yet.
void SetAside(const std::filesystem::path& file) {
    std::filesystem::path aside;
    std::error_code failure;
    for (int number = 1; aside.empty() || std::filesystem::exists(aside, failure); ++number) {
        aside = file.string() + fmt::format(".damaged-{}", number);
    }
    std::filesystem::rename(file, aside, failure);
    if (failure) {
        RaiseSystemError(failure.value(), kSource);
    }
    fmt::print(stderr, "The settings in {} are damaged; they have been set aside as {}.\n", file.string(),
               aside.string());
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
        const bool integer = value.contains(kInteger) && value[kInteger].is_number_integer() &&
                             value[kInteger] >= std::numeric_limits<std::int32_t>::min() &&
                             value[kInteger] <= std::numeric_limits<std::int32_t>::max();
        const bool bytes = value.contains(kBytes) && HoldsBytes(value[kBytes]);
        return value.is_object() && value.size() == 1 && (text || integer || bytes);
    };
    return json.is_object() && std::ranges::all_of(json, [&](const Json& key) {
               return key.is_object() && std::ranges::all_of(key, isValue);
           });
}

/// The file's settings, empty if there is no file; nothing for a damaged one.
std::optional<Json> Parse(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::exists(file, failure)) {
        return Json::object();
    }
    if (std::filesystem::is_directory(file, failure)) {
        RaiseSystemError(EISDIR, kSource);
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        RaiseSystemError(errno != 0 ? errno : EIO, kSource);
    }
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    Json json = Json::parse(bytes, nullptr, false);
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
    AtomicFile target(file);
    target.Write(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
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

void SettingsFile::CreateKey(const SettingsKey& key) {
    const Lock lock(m_file);
    Json json = Load(m_file);
    json.emplace(KeyName(key), Json::object());
    Save(m_file, json);
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
