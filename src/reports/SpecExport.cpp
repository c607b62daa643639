#include "SpecExport.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "AtomicFile.h"
#include "CodePage.h"
#include "NumberText.h"
#include "ProfileWriter.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "ExportSpec";
constexpr std::size_t kPieceSize = 65536;  // bytes

std::string OrNone(const std::string& text) {
    return text.empty() ? "<none>" : text;
}

std::string VoltageText(const CPwrSys& site) {
    const double neutral = site.Voltage() / TreatmentOf(site.ConnectCode()).neutralDivisor;
    return RenderFixed(neutral, 0) + "/" + RenderFixed(site.Voltage(), 0);
}

std::string RiseText(const CPwrSys& site) {
    const RiseDutyRow* rise = FindRow(kRiseDuties, site.RiseDutyCode());
    return rise != nullptr ? std::to_string(rise->degrees) : "Unknown";
}

/// A file that is closed with its owner.
struct CloseFile {
    void operator()(std::FILE* file) const noexcept { (void)std::fclose(file); }
};

/// What an ordinary file holds; a device or a pipe is only written to.
/// @throws RaisedError with the system's number from "ExportSpec" for a file that is there and cannot be
/// read:
///         what it holds would be lost.
std::string ExistingContent(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        return {};
    }
    const std::unique_ptr<std::FILE, CloseFile> existing(std::fopen(file.c_str(), "rbe"));
    if (existing == nullptr) {
        RaiseSystemError(errno, kSource);
    }
    std::string content;
    std::array<char, kPieceSize> piece{};
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), existing.get())) {
        content.append(piece.data(), count);
    }
    if (std::ferror(existing.get()) != 0) {
        RaiseSystemError(errno, kSource);
    }
    return content;
}

/// A value stands on one line.
std::string OneLine(std::string text) {
    for (char& byte : text) {
        byte = byte == '\r' || byte == '\n' ? ' ' : byte;
    }
    return text;
}

}  // namespace

EncodedText SpecText(std::string before, const CReports& reports, const CProject& project,
                     const CPwrSys& site) {
    struct Entry {
        std::string_view section;
        std::string_view key;
        std::string value;
    };
    const std::array<Entry, 8> entries{
        {{"Project", "projectname", OrNone(project.ProjName())},
         {"Fuel", "fuel", OrNone(reports.FuelType())},
         {"Model No", "model", OrNone(reports.ModelNum())},
         {"Alternator", "alternator", OrNone(reports.AlternatorNum())},
         {"Voltage", "voltage", VoltageText(site)},
         {"Frequency", "frequency", RenderFixed(site.Freq(), 0)},
         {"Phase", "phase", std::string(TreatmentOf(site.ConnectCode()).exportedPhases)},
         {"Rise", "rise", RiseText(site)}}};
    EncodedText content{.bytes = std::move(before)};
    for (const Entry& entry : entries) {
        const EncodedText value = EncodeText(OneLine(entry.value));
        content.bytes = WithProfileValue(std::move(content.bytes), entry.section, entry.key, value.bytes);
        content.lostCharacters += value.lostCharacters;
    }
    return content;
}

std::size_t ExportSpec(const std::filesystem::path& file, const CReports& reports, const CProject& project,
                       const CPwrSys& site) {
    const EncodedText content = SpecText(ExistingContent(file), reports, project, site);
    AtomicFile target(file);
    target.Write(content.bytes);
    target.Commit();
    return content.lostCharacters;
}

}  // namespace genvara
