#include "OrderCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "JsonText.h"
#include "NumberText.h"
#include "Order.h"
#include "OrderJson.h"
#include "Output.h"
#include "Progress.h"
#include "SizingJson.h"
#include "StudyCommand.h"
#include "StudyOutput.h"
#include "TextTable.h"

namespace genvara {
namespace {

constexpr std::size_t kLongestName = 40;

OrderRules RulesOf(const OrderArguments& arguments, const CLoadProfile& profile) {
    OrderRules rules;
    rules.maxSteps = arguments.maxSteps > 0 ? arguments.maxSteps : profile.NumLoadSteps();
    for (const std::string& text : arguments.before) {
        rules.before.push_back(ParsePair(text, '<', profile));
    }
    for (const std::string& text : arguments.together) {
        rules.together.push_back(ParsePair(text, '+', profile));
    }
    RequireOrder(profile, rules);
    return rules;
}

void BoundMember(JsonText& json, const std::optional<CatalogueRow>& row) {
    json.Key("Bound");
    if (!row) {
        json.Null();
        return;
    }
    json.BeginObject()
        .Member("ModelNum", row->ModelNum)
        .Member("AltNum", row->AltNum)
        .Member("EngineNum", row->EngineNum)
        .Member("NominalRating", row->NominalRating)
        .Member("DeratedRating", row->DeratedRating)
        .EndObject();
}

std::string AnswerJson(const std::string& file, const OrderAnswer& answer) {
    JsonText json;
    json.BeginObject().Member("File", file);
    SetMember(json, "Now", answer.now.set);
    SetMember(json, "Best", answer.best.set);
    json.Member("Proven", answer.proven);
    BoundMember(json, answer.bound);
    OrderMember(json, "Steps", answer.steps);
    return json.EndObject().Text() + "\n";
}

/// "MV750D of 750 kW" or, of several sets in parallel, "2 x MV400D of 400 kW".
std::string SetText(std::int32_t sets, const std::string& model, double rating) {
    return fmt::format("{}{} of {} kW", sets > 1 ? fmt::format("{} x ", sets) : "",
                       OneLine(model, kLongestName), RenderPlain(rating));
}

std::string SetText(std::int32_t sets, const Sizing& sizing) {
    return sizing.set ? SetText(sets, sizing.set->ModelNum, sizing.set->NominalRating) : std::string("none");
}

/// The loads of each step, a line a load.
std::vector<std::string> LinesOf(const LoadOrder& order, const CLoadProfile& profile) {
    std::vector<std::string> lines;
    for (std::size_t step = 0; step < order.size(); ++step) {
        std::string number = fmt::format("{}", step + 1);
        if (order[step].empty()) {
            lines.push_back(number + "  (no load)");
        }
        for (const LoadPlace& place : order[step]) {
            const Load& load = *std::next(profile.LoadStep(place.step).begin(), place.load - 1);
            lines.push_back(fmt::format("{:<2} {}", number, OneLine(load.name(), kLongestName)));
            number.clear();
        }
    }
    return lines;
}

/// Old and new order side by side, and what they come to.
std::string AnswerTable(const std::string& file, const OrderAnswer& answer, const StudyProject& project) {
    using Align = TextTable::Align;
    const CLoadProfile& profile = project.loadProfile;
    const std::int32_t sets = project.powerSystem.GensetsInParallel();
    TextTable table({{"Now: " + SetText(sets, answer.now), Align::Left},
                     {"Best: " + SetText(sets, answer.best), Align::Left}});
    const std::vector<std::string> old = LinesOf(PresentOrder(profile), profile);
    const std::vector<std::string> best = LinesOf(answer.steps, profile);
    for (std::size_t line = 0; line < std::max(old.size(), best.size()); ++line) {
        table.AddRow({line < old.size() ? old[line] : "", line < best.size() ? best[line] : ""});
    }
    std::string verdict;
    if (answer.proven) {
        verdict = answer.best.set ? "No permitted order does with a smaller set."
                                  : "No permitted order has a set that does.";
    } else if (answer.bound) {
        verdict = fmt::format("Not proven: no proof excludes {}.",
                              SetText(sets, answer.bound->ModelNum, answer.bound->NominalRating));
    }
    if (!answer.presentIsPermitted) {
        verdict = "The present order is not permitted. " + verdict;
    }
    return fmt::format("{}\n{}{}\n", file, table.Text(), verdict);
}

Status Work(const ProjectArguments& project, const OrderArguments& arguments, const StudiedProject& studied,
            const StopFlag& stop) {
    const CLoadProfile& profile = studied.Project().loadProfile;
    const OrderRules rules = CheckingArguments([&] {
        if (!arguments.output.empty()) {
            RequireProjectName(arguments.output, project);
        }
        return RulesOf(arguments, profile);
    });
    Progress progress("orders", 0);
    const SearchEffort effort{.seconds = arguments.seconds,
                              .count = [&](std::int64_t judged) { progress.Show(judged); }};
    OrderAnswer answer = FindOrder(studied.Project(), rules, studied.Tables(), effort, stop);
    progress.Clear();
    if (!arguments.output.empty()) {
        const StudyProject ordered =
            answer.isPresent ? studied.Project() : Reordered(studied.Project(), answer.steps);
        WriteStudied(arguments.output, Reopened(ordered, studied.Tables().rules), studied.Tables(),
                     answer.best);
    }
    const std::string& file = project.files.front();
    ComplainIfNoCandidates(file, studied);
    Print(project.json ? AnswerJson(file, answer) : AnswerTable(file, answer, studied.Project()));
    return Status::Done;
}

}  // namespace

int RunOrder(const ProjectArguments& project, const OrderArguments& arguments) {
    return RunStudy(project, [&](const StudiedProject& studied, const StopFlag& stop) {
        return Work(project, arguments, studied, stop);
    });
}

}  // namespace genvara
