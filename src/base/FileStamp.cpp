#include "FileStamp.h"

#include <array>
#include <fstream>
#include <system_error>

namespace genvara {
namespace {

constexpr std::uint64_t kFnvBasis = 14695981039346656037ULL;
constexpr std::uint64_t kFnvPrime = 1099511628211ULL;

/// Size and time alone.
std::optional<FileStamp> Look(const std::filesystem::path& file) {
    std::error_code failure;
    FileStamp stamp;
    if (!std::filesystem::is_regular_file(file, failure)) {
        return std::nullopt;
    }
    stamp.size = std::filesystem::file_size(file, failure);
    if (!failure) {
        const auto changed = std::filesystem::last_write_time(file, failure);
        stamp.changed = static_cast<std::int64_t>(changed.time_since_epoch().count());
    }
    return failure ? std::nullopt : std::optional(stamp);
}

std::optional<std::uint64_t> HashOf(const std::filesystem::path& file) {
    std::ifstream bytes(file, std::ios::binary);
    if (!bytes) {
        return std::nullopt;
    }
    std::uint64_t hash = kFnvBasis;
    std::array<char, 65536> buffer{};
    while (bytes.read(buffer.data(), buffer.size()) || bytes.gcount() > 0) {
        for (std::streamsize at = 0; at < bytes.gcount(); ++at) {
            hash = (hash ^ static_cast<unsigned char>(buffer[static_cast<std::size_t>(at)])) * kFnvPrime;
        }
    }
    return bytes.bad() ? std::nullopt : std::optional(hash);
}

}  // namespace

std::optional<FileStamp> StampOf(const std::filesystem::path& file) {
    std::optional<FileStamp> stamp = Look(file);
    const std::optional<std::uint64_t> hash = stamp ? HashOf(file) : std::nullopt;
    if (!hash) {
        return std::nullopt;
    }
    stamp->hash = *hash;
    return stamp;
}

bool HoldsOtherBytes(const std::filesystem::path& file, const FileStamp& than) {
    const std::optional<FileStamp> now = Look(file);
    if (!now || (now->size == than.size && now->changed == than.changed)) {
        return false;
    }
    return now->size != than.size || HashOf(file) != than.hash;
}

}  // namespace genvara
