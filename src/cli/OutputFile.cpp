#include "OutputFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace genvara {
namespace {

/// Endings by which people and programs know what a file is.
constexpr auto kKnownEndings = std::to_array<std::string_view>(
    {".csv",     ".db",  ".doc", ".docx", ".gvx", ".htm",  ".html", ".ini", ".jpeg", ".jpg",
     ".json",    ".md",  ".ods", ".odt",  ".pdf", ".png",  ".prj",  ".ps",  ".rtf",  ".sqlite",
     ".sqlite3", ".svg", ".tsv", ".txt",  ".xls", ".xlsx", ".xml",  ".zip"});

std::string EndingOf(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::ranges::transform(ending, ending.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return ending;
}

}  // namespace

std::optional<std::string> RefusalOf(const std::string& output, const OutputKind& kind,
                                     std::span<const InputFile> inputs) {
    if (output == kStandardOutput) {
        return std::nullopt;
    }
    if (std::optional<std::string> refusal = OverwriteRefusal(output, inputs)) {
        return refusal;
    }
    const std::string ending = EndingOf(output);
    if (std::ranges::find(kKnownEndings, ending) != kKnownEndings.end() &&
        std::ranges::find(kind.endings, ending) == kind.endings.end()) {
        return fmt::format("{} would be {}, which its ending {} denies; let it end in {}.", output,
                           kind.meaning, ending, kind.endings.front());
    }
    return std::nullopt;
}

}  // namespace genvara
