#include "ProjectFormat.h"

#include <algorithm>
#include <string>

namespace genvara {

std::optional<ProjectFormat> FormatOfName(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::ranges::transform(ending, ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    if (ending == ".prj") {
        return ProjectFormat::Records;
    }
    return ending == ".json" ? std::optional(ProjectFormat::Json) : std::nullopt;
}

ProjectFormat FormatOf(const PeekedSource& content, const std::filesystem::path& file) {
    return content.FirstMark() == '{' ? ProjectFormat::Json
                                      : FormatOfName(file).value_or(ProjectFormat::Records);
}

}  // namespace genvara
