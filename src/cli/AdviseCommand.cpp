#include "AdviseCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "Advise.h"
#include "AlteredProject.h"
#include "ExplainJson.h"
#include "JsonText.h"
#include "NearestNames.h"
#include "NumberText.h"
#include "OrderJson.h"
#include "Output.h"
#include "Progress.h"
#include "SizingJson.h"
#include "StudyCommand.h"
#include "StudyOutput.h"
#include "TextTable.h"
#include "ValueJson.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

constexpr std::string_view kMaxLoadingPath = "Designer.MaxLoading";
constexpr std::size_t kLongestName = 40;

AdviceChoice ChoiceOf(const AdviseArguments& arguments) {
    AdviceChoice choice;
    choice.pairs = arguments.pairs;
    if (arguments.kinds.empty()) {
        return choice;
    }
    choice.kinds.fill(false);
    std::string_view left = arguments.kinds;
    for (bool more = true; more;) {
        const std::size_t comma = left.find(',');
        const std::string_view name = left.substr(0, comma);
        const auto* const found = std::ranges::find(kAdviceKinds, name);
        if (found == kAdviceKinds.end()) {
            RefuseArguments(fmt::format("There is no advice of the kind \"{}\"; {}.", name,
                                        SuggestionText(name, kAdviceKinds)));
        }
        choice.kinds[static_cast<std::size_t>(found - kAdviceKinds.begin())] = true;
        more = comma != std::string_view::npos;
        left.remove_prefix(more ? comma + 1 : left.size());
    }
    return choice;
}

/// "starter", or "starter+limit" for a pair.
std::string KindText(const Advice& advice) {
    std::string text;
    for (const Alteration& alteration : advice.alterations) {
        text += (text.empty() ? "" : "+") + std::string(NameOf(alteration.kind));
    }
    return text;
}

void DifferenceObject(JsonText& json, const MemberDifference& difference) {
    json.BeginObject().Member("Path", difference.path);
    ValueMember(json, "From", difference.facts, difference.from);
    ValueMember(json, "To", difference.facts, difference.to);
    if (difference.follows) {
        json.Member("Follows", true);
    }
    json.EndObject();
}

void ChangesMember(JsonText& json, const Advice& advice) {
    json.Key("Changes").BeginArray();
    auto difference = advice.differences.begin();
    for (const Alteration& alteration : advice.alterations) {
        if (alteration.member) {
            DifferenceObject(json, *difference++);
        } else if (alteration.move) {
            json.BeginObject()
                .Member("Move", PlaceText(alteration.move->load))
                .Member("To", fmt::format("new step {} {}", alteration.move->isBefore ? "before" : "behind",
                                          alteration.move->load.step))
                .EndObject();
        } else {
            json.BeginObject();
            OrderMember(json, "Order", *alteration.order);
            json.EndObject();
        }
    }
    for (; difference != advice.differences.end(); ++difference) {
        DifferenceObject(json, *difference);
    }
    json.EndArray();
}

std::string ListJson(const std::string& file, const AdviceList& list) {
    JsonText json;
    json.BeginObject().Member("File", file);
    SetMember(json, "Now", list.now.set);
    json.Key("Advice").BeginArray();
    for (const Advice& advice : list.advice) {
        json.BeginObject().Member("Kind", KindText(advice)).Member("Text", advice.text);
        ChangesMember(json, advice);
        SetMember(json, "Set", advice.sizing.set);
        json.Member("Saved", advice.saved);
        TightestMember(json, advice.sizing.tightest);
        json.EndObject();
    }
    return json.EndArray().EndObject().Text() + "\n";
}

/// "MV750D" or, of several sets, "2 x MV400D".
std::string SetText(const Sizing& sizing) {
    const std::string model = OneLine(sizing.set->ModelNum, kLongestName);
    return sizing.sets > 1 ? fmt::format("{} x {}", sizing.sets, model) : model;
}

std::string OutcomeText(const AdviceList& list, const Advice& advice) {
    std::string text = SetText(advice.sizing);
    if (list.now.set) {
        text += fmt::format(" instead of {}, saves {} kW", SetText(list.now), RenderPlain(*advice.saved));
    }
    if (const auto& tightest = advice.sizing.tightest) {
        text += fmt::format("; tightest then: {} in step {}, {} % left", CaptionOf(tightest->test),
                            tightest->stepNumber, RenderFixed(tightest->margin, 1));
    }
    return text;
}

std::string ListText(const std::string& file, const AdviceList& list) {
    std::string text = fmt::format(
        "{}: now {}\n", file,
        list.now.set ? fmt::format("{} of {} kW in all", SetText(list.now), RenderPlain(list.now.total))
                     : std::string("no set does"));
    if (list.advice.empty()) {
        text += "  No change of the table lets a smaller set do.\n";
    }
    for (std::size_t i = 0; i < list.advice.size(); ++i) {
        const Advice& advice = list.advice[i];
        const std::string_view sentence = std::string_view(advice.text).substr(0, advice.text.size() - 1);
        text += fmt::format("  {:>3}  {}:\n       {}.\n", i, sentence, OutcomeText(list, advice));
    }
    return text;
}

void Apply(const ProjectArguments& project, const AdviseArguments& arguments, const StudiedProject& studied,
           AdviceList& list) {
    const auto number = static_cast<std::size_t>(*arguments.apply);
    if (number >= list.advice.size()) {
        RefuseArguments(list.advice.empty() ? "There is no advice to apply."
                                            : fmt::format("There is no advice {}: the last one is {}.",
                                                          number, list.advice.size() - 1));
    }
    Advice& advice = list.advice[number];
    WriteStudied(arguments.output, Altered(studied.Project(), advice.alterations, studied.Tables().rules),
                 studied.Tables(), advice.sizing);
    for (const Alteration& alteration : advice.alterations) {
        if (alteration.member && alteration.member->path == kMaxLoadingPath) {
            Complain(
                fmt::format("{}: the most loading is not part of a project: size it with --max-loading {}.",
                            project.files.front(), std::get<std::int32_t>(alteration.member->value)));
        }
    }
}

Status Work(const ProjectArguments& project, const AdviseArguments& arguments, const StudiedProject& studied,
            const StopFlag& stop) {
    const AdviceChoice choice = ChoiceOf(arguments);
    if (arguments.apply) {
        RequireProjectName(arguments.output, project);
    }
    Progress progress("variations", 0);
    AdviceList list = Advise(studied.Project(), choice, studied.Tables(), project.jobs, stop,
                             [&](std::int64_t done, std::int64_t total) { progress.Show(done, total); });
    progress.Clear();
    const std::string& file = project.files.front();
    if (list.allBelowMinLoading) {
        Complain(fmt::format("{}: every candidate is too large: all stay below the least loading of {} %.",
                             file, project.limits.MinLoading()));
    }
    ComplainIfNoCandidates(file, studied);
    if (arguments.apply) {
        Apply(project, arguments, studied, list);
    }
    Print(project.json ? ListJson(file, list) : ListText(file, list));
    return Status::Done;
}

}  // namespace

int RunAdvise(const ProjectArguments& project, const AdviseArguments& arguments) {
    return RunStudy(project, [&](const StudiedProject& studied, const StopFlag& stop) {
        return Work(project, arguments, studied, stop);
    });
}

}  // namespace genvara
