#include "SpecExport.h"

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "AtomicFile.h"
#include "CodePage.h"
#include "NumberText.h"
#include "ProfileWriter.h"

namespace genvara {
namespace {

constexpr std::int32_t kWyeConnection = 1;
constexpr std::int32_t kDeltaConnection = 2;

/// Temperature rise by code.
constexpr std::array<std::string_view, 5> kRises{"80", "105", "125", "130", "150"};

std::string OrNone(const std::string& text) {
    return text.empty() ? "<none>" : text;
}

std::string VoltageText(const CPwrSys& site) {
    const double neutral = site.Voltage() / (site.ConnectCode() == kWyeConnection ? std::sqrt(3.0) : 2.0);
    return RenderFixed(neutral, 0) + "/" + RenderFixed(site.Voltage(), 0);
}

std::string PhaseText(const CPwrSys& site) {
    const bool threePhase = site.ConnectCode() == kWyeConnection || site.ConnectCode() == kDeltaConnection;
    return threePhase ? "3" : "1";
}

std::string RiseText(const CPwrSys& site) {
    const std::int32_t code = site.RiseDutyCode();
    const bool known = code >= 0 && code < static_cast<std::int32_t>(kRises.size());
    return std::string(known ? kRises[static_cast<std::size_t>(code)] : "Unknown");
}

/// What an ordinary file holds; a device or a pipe is only written to.
std::string ExistingContent(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        return {};
    }
    std::ifstream existing(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(existing), std::istreambuf_iterator<char>()};
}

/// A value stands on one line.
std::string OneLine(std::string text) {
    for (char& byte : text) {
        byte = byte == '\r' || byte == '\n' ? ' ' : byte;
    }
    return text;
}

}  // namespace

std::string SpecText(std::string before, const CReports& reports, const CProject& project,
                     const CPwrSys& site) {
    struct Entry {
        std::string_view section;
        std::string_view key;
        std::string value;
    };
    const std::array<Entry, 8> entries{{{"Project", "projectname", OrNone(project.ProjName())},
                                        {"Fuel", "fuel", OrNone(reports.FuelType())},
                                        {"Model No", "model", OrNone(reports.ModelNum())},
                                        {"Alternator", "alternator", OrNone(reports.AlternatorNum())},
                                        {"Voltage", "voltage", VoltageText(site)},
                                        {"Frequency", "frequency", RenderFixed(site.Freq(), 0)},
                                        {"Phase", "phase", PhaseText(site)},
                                        {"Rise", "rise", RiseText(site)}}};
    for (const Entry& entry : entries) {
        before = WithProfileValue(std::move(before), entry.section, entry.key,
                                  EncodeText(OneLine(entry.value)).bytes);
    }
    return before;
}

void ExportSpec(const std::filesystem::path& file, const CReports& reports, const CProject& project,
                const CPwrSys& site) {
    AtomicFile target(file);
    std::string before = ExistingContent(file);
    target.Write(SpecText(std::move(before), reports, project, site));
    target.Commit();
}

}  // namespace genvara
