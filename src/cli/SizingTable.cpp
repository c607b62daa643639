#include "SizingTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "Kilo.h"
#include "NumberText.h"
#include "RejectionReasons.h"
#include "StringTable.h"
#include "TextTable.h"

namespace genvara {
namespace {

using Align = TextTable::Align;

constexpr std::size_t kLongestName = 40;
constexpr std::string_view kNoFigure = "-";

/// Caption of a code.
template <typename Table>
std::string TextOf(const Table& table, std::int32_t code) {
    const auto* row = FindRow(table, code);
    return row != nullptr ? std::string(StringTable::Text(row->caption)) : fmt::format("code {}", code);
}

std::string Percent(double figure) {
    return RenderFixed(figure, 1);
}

std::string Kilo(double figure) {
    return RenderFixed(figure / kPerKilo, 1);
}

std::string Limit(bool enabled, std::int32_t percent) {
    return enabled ? fmt::format("{} %", percent) : std::string("no limit");
}

/// Share of the rating at the site that the whole profile uses [percent].
std::string LoadingText(const ChosenSet& set, double totalRunningKW) {
    const double rating = set.figures.siteRating;
    return rating > 0.0 ? Percent(totalRunningKW * 100.0 / rating) : std::string(kNoFigure);
}

void AddSite(std::string& text, const CPwrSys& site) {
    const auto line = [&text](std::string_view label, const std::string& value) {
        fmt::format_to(std::back_inserter(text), "  {:<16}{}\n", label, value);
    };
    line("Site", fmt::format("{} V, {} Hz, {} phase, {}, {}", site.Voltage(), site.Freq(), site.Phases(),
                             TextOf(kFuels, site.Fuel()), TextOf(kRiseDuties, site.RiseDutyCode())));
    line("", fmt::format("{} m above sea level, {} \u00B0C, {} set{}", RenderFixed(site.Altitude(), 0),
                         RenderFixed(site.AmbTemp(), 0), site.GensetsInParallel(),
                         site.GensetsInParallel() == 1 ? "" : "s in parallel"));
    line("Limits", fmt::format("voltage dip {} %, frequency dip {}, distortion {}", site.MaxVoltageDip(),
                               Limit(site.MaxFreqDipEnabled(), site.MaxFreqDip()),
                               Limit(site.MaxHarmonicsEnabled(), site.MaxHarmonics())));
    if (!HasDistortionModel(site.ConnectCode())) {
        line("", std::string(kNoDistortionFigures));
    }
}

void AddProfile(std::string& text, const SizedProject& sized) {
    const CDesigner& designer = sized.Designer();
    const bool recommended = designer.NumChosenSets() > 0;
    std::vector<TextTable::Column> columns{{"Step", Align::Right},         {"Description", Align::Left},
                                           {"Run kW", Align::Right},       {"Run kVA", Align::Right},
                                           {"Start kW", Align::Right},     {"Start kVA", Align::Right},
                                           {"Allowed dip %", Align::Right}};
    if (recommended) {
        columns.insert(columns.end(), {{"Volt dip %"}, {"Freq dip %"}, {"VTHD %"}});
        fmt::format_to(std::back_inserter(text), "\nLoad profile, with the dips and distortion of {}\n",
                       designer.SetModelNum(0));
    } else {
        text += "\nLoad profile\n";
    }
    TextTable table(std::move(columns));
    std::int32_t number = 1;
    for (const CLoadStep& step : sized.LoadProfile()) {
        std::vector<std::string> cells{std::to_string(number),
                                       OneLine(step.Description(), kLongestName),
                                       Kilo(step.TotalRunningRealPower(0)),
                                       Kilo(step.TotalRunningApparentPower(0)),
                                       Kilo(step.TotalStartingRealPower(0)),
                                       Kilo(step.TotalStartingApparentPower(0)),
                                       std::to_string(StepMaxVoltageDip(step, sized.PowerSystem()))};
        if (recommended) {
            const ChosenSet& set = designer.ChosenSets().front();
            const auto s = static_cast<std::size_t>(number - 1);
            const double vthd = std::max({set.StepVTHD_A[s], set.StepVTHD_B[s], set.StepVTHD_C[s]});
            cells.push_back(Percent(set.VoltageDips[s]));
            cells.push_back(set.FreqDipAvail ? Percent(set.FreqDips[s]) : std::string(kNoFigure));
            cells.push_back(designer.VTHD_CalcsValid() ? Percent(vthd) : std::string(kNoFigure));
        }
        table.AddRow(std::move(cells));
        ++number;
    }
    text += table.Text();
}

TextTable SetTable() {
    return TextTable({{"#"},
                      {"Model", Align::Left},
                      {"Fuel", Align::Left},
                      {"Alternator", Align::Left},
                      {"Rating kW"},
                      {"Derated kW"},
                      {"Loading %"},
                      {"kVA at 35 %"},
                      {"Volt dip %"},
                      {"Freq dip %"},
                      {"VTHD %"}});
}

std::vector<std::string> SetCells(const ChosenSet& set, std::size_t index, const CDesigner& designer) {
    return {std::to_string(index),
            set.ModelNum,
            TextOf(kFuels, set.FuelType),
            set.AltNum,
            RenderFixed(set.NominalRating, 1),
            RenderFixed(set.DeratedRating, 1),
            LoadingText(set, designer.TotalRunningKW()),
            RenderFixed(set.StartKVA35, 0),
            Percent(set.MaxStepVoltDip),
            set.FreqDipAvail ? Percent(set.MaxStepFreqDip) : std::string(kNoFigure),
            designer.VTHD_CalcsValid() ? Percent(set.MaxStepVTHD) : std::string(kNoFigure)};
}

/// What became of the candidates, for whoever wonders why none of them is recommended.
std::string CandidatesText(const CDesigner& designer) {
    const RunCounts& counts = designer.Counts();
    if (counts.Candidates() == 0) {
        return "  0 candidates: no set of the catalogue is for this voltage, frequency, connection and "
               "fuel\n";
    }
    std::string text = fmt::format(
        "  {} candidate{}: {} undersized, {} dropped below the minimum loading of {} %", counts.Candidates(),
        counts.Candidates() == 1 ? "" : "s", counts.undersized, counts.underloaded, designer.MinLoading());
    if (counts.recommended > 0) {
        fmt::format_to(std::back_inserter(text), ", {} recommended and cut from the list",
                       counts.recommended);
    }
    return text + "\n";
}

void AddRecommended(std::string& text, const CDesigner& designer) {
    if (designer.NumChosenSets() == 0) {
        text += "\nRecommended sets: none\n" + CandidatesText(designer);
        return;
    }
    text += "\nRecommended sets, smallest first\n";
    TextTable table = SetTable();
    for (std::size_t i = 0; i < designer.ChosenSets().size(); ++i) {
        table.AddRow(SetCells(designer.ChosenSets()[i], i, designer));
    }
    text += table.Text();
}

/// The step at which a set misses a test by most, with the two figures.
std::string WorstMiss(const std::vector<StepVerdicts>& steps, std::int32_t bit) {
    std::string text;
    double worst = 0.0;
    for (std::size_t t = 0; t < kStepTests.size(); ++t) {
        for (std::size_t s = 0; s < steps.size() && kStepTests[t].bit == bit; ++s) {
            const Verdict& verdict = steps[s][t];
            if (verdict.Fails() && (text.empty() || verdict.needed - verdict.available > worst)) {
                worst = verdict.needed - verdict.available;
                text =
                    fmt::format("step {}: {} {unit}, limit {} {unit}", s + 1, RenderFixed(verdict.needed, 1),
                                RenderFixed(verdict.available, 1), fmt::arg("unit", kStepTests[t].unit));
            }
        }
    }
    return text;
}

void AddUndersized(std::string& text, const CDesigner& designer) {
    if (designer.NumRejectedSets() == 0) {
        text += "\nUndersized sets: none\n";
        return;
    }
    text += "\nUndersized sets, largest first\n";
    TextTable table = SetTable();
    for (std::size_t i = 0; i < designer.RejectedSets().size(); ++i) {
        table.AddRow(SetCells(designer.RejectedSets()[i], i, designer));
    }
    text += table.Text();
    for (std::size_t i = 0; i < designer.RejectedSets().size(); ++i) {
        const RejectedSet& set = designer.RejectedSets()[i];
        const auto verdicts = designer.VerdictsRej(static_cast<std::int32_t>(i));
        fmt::format_to(std::back_inserter(text), "\n  {} {}, {} kW:\n", i, set.ModelNum,
                       RenderFixed(set.DeratedRating, 1));
        for (const RejectionText& reason : kRejectionTexts) {
            if ((set.RejectionReason & reason.bit) != 0) {
                fmt::format_to(std::back_inserter(text), "    - {}\n      {}\n", reason.text,
                               WorstMiss(verdicts, reason.bit));
            }
        }
    }
}

}  // namespace

std::string ProjectHeading(const std::string& file, const SizedProject& sized) {
    const CProject& project = sized.Project();
    std::string text = fmt::format("{}\n", OneLine(file, 200));
    fmt::format_to(std::back_inserter(text), "  {:<16}{}\n", "Project", OneLine(project.ProjName(), 100));
    fmt::format_to(std::back_inserter(text), "  {:<16}{}\n", "Customer", OneLine(project.Customer(), 100));
    AddSite(text, sized.PowerSystem());
    return text;
}

std::string SizingTable(const std::string& file, const SizedProject& sized) {
    const CDesigner& designer = sized.Designer();
    std::string text = ProjectHeading(file, sized);
    AddProfile(text, sized);
    if (designer.NumChosenSets() + designer.NumRejectedSets() > 0) {
        fmt::format_to(std::back_inserter(text), "\n  Running {} kW in all, peak start {} kVA\n",
                       RenderFixed(designer.TotalRunningKW(), 1), RenderFixed(designer.PeakStartingKVA(), 1));
    }
    AddRecommended(text, designer);
    AddUndersized(text, designer);
    return text;
}

}  // namespace genvara
