#include "WriteObstacle.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "AtomicFile.h"
#include "ErrorNumbers.h"
#include "RaisedError.h"

namespace genvara {

std::optional<std::string> WriteObstacle(const std::filesystem::path& file) {
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(file, failure);
    if (std::filesystem::is_directory(status)) {
        return "there is a folder of that name";
    }
    // A pipe would not even be opened before somebody reads from it.
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return "there is a device of that name";
    }
    if (failure.value() == ENAMETOOLONG) {  // the temporary file's name would be short
        return WriteObstacle(file, failure.value(), failure.message());
    }
    try {
        const AtomicFile probe(file);
    } catch (const RaisedError& refusal) {
        return WriteObstacle(file, refusal.Number(), refusal.Description());
    }
    return std::nullopt;
}

std::string WriteObstacle(const std::filesystem::path& file, int systemError,
                          const std::string& description) {
    switch (systemError) {
        case errors::kFileNotFound:
            return "its folder does not exist";
        case ENOTDIR:
            return "its folder is a file";
        case EROFS:
            return "its disk can only be read";
        case ENOSPC:
        case EDQUOT:
            return "the disk is full";
        case EFBIG:
            return "it would be larger than files may be";
        case ENAMETOOLONG:
            return "its name is too long";
        case EACCES:
        case EPERM:
            return access(file.c_str(), F_OK) == 0 && access(file.c_str(), W_OK) != 0
                       ? "the file can only be read"
                       : "nothing may be written to its folder";
        default:
            return description;
    }
}

}  // namespace genvara
