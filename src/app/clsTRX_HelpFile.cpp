#include "clsTRX_HelpFile.h"

#include <filesystem>
#include <system_error>

#include "ErrorNumbers.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::int32_t kCannotClose = errors::FromBase(1101);
constexpr std::int32_t kCannotShow = errors::FromBase(1102);
constexpr std::int32_t kFileNotFound = errors::FromBase(1103);

}  // namespace

void clsTRX_HelpFile::Filename(const std::string& file) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        throw RaisedError(kFileNotFound, "clsTRX_HelpFileFilename <property let> --- ",
                          "Help file not found.");
    }
    m_filename = file;
}

void clsTRX_HelpFile::CloseFile() const {
    if (!Command(help_command::kQuit)) {
        throw RaisedError(kCannotClose, "CloseFile <sub> --- ", "Unable to close help file window.");
    }
}

void clsTRX_HelpFile::ShowHelp() const {
    if (!Command(help_command::kFinder)) {
        throw RaisedError(kCannotShow, ".ShowHelp", "Unable to display requested help window.");
    }
}

bool clsTRX_HelpFile::Command(std::int32_t command) const {
    return m_viewer && m_viewer(m_requestingWindow, m_filename, command);
}

}  // namespace genvara
