#include "ExplainTable.h"

#include <fmt/format.h>

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "NumberText.h"
#include "SizingTable.h"
#include "TextTable.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

using Align = TextTable::Align;

constexpr std::size_t kLongestStep = 28;
constexpr std::string_view kNoFigure = "-";

/// What the figures of one test at one step read as.
struct TestCells {
    std::string stepNumber;
    std::string needed;
    std::string available;
    std::string margin;
    std::string verdict;  ///< a word: no colour tells anything
};

bool HasData(const ExplainedSet& explained, std::size_t test) {
    switch (kStepTests[test].bit) {
        case rejection::kOneStepCapability:
        case rejection::kFrequencyDip:
            return explained.set.FreqDipAvail;
        case rejection::kDistortion:
            return explained.set.figures.hasDistortion;
        default:
            return true;
    }
}

std::string VerdictWord(const ExplainedSet& explained, std::size_t step, std::size_t test) {
    const std::optional<Tightest>& tightest = explained.tightest;
    if (explained.steps[step][test].Fails()) {
        return "FAILS";
    }
    const bool isTightest =
        tightest && tightest->test == test && static_cast<std::size_t>(tightest->stepNumber) == step + 1;
    return isTightest ? "tightest" : "ok";
}

TestCells CellsOf(const ExplainedSet& explained, std::size_t step, std::size_t test) {
    const Verdict& verdict = explained.steps[step][test];
    const FigureTexts figures = FigureTextsOf(test, verdict);
    const std::string none(kNoFigure);
    const std::string number = std::to_string(step + 1);
    if (!HasData(explained, test)) {
        return {.stepNumber = none, .needed = none, .available = none, .margin = none, .verdict = "no data"};
    }
    if (!verdict.applies) {
        return {.stepNumber = number,
                .needed = figures.needed,
                .available = none,
                .margin = none,
                .verdict = "no limit"};
    }
    const std::optional<double> margin = verdict.Margin();
    return {.stepNumber = number,
            .needed = figures.needed,
            .available = figures.available,
            .margin = margin ? RenderFixed(*margin, 1) : none,
            .verdict = VerdictWord(explained, step, test)};
}

/// A step's number with its description, as in "6, Chiller".
std::string StepText(const CLoadProfile& profile, std::size_t step, const std::string& number) {
    const std::string& description = profile.LoadStep(static_cast<std::int32_t>(step) + 1).Description();
    return description.empty() || number == kNoFigure
               ? number
               : fmt::format("{}, {}", number, OneLine(description, kLongestStep));
}

std::string CaptionWithUnit(std::size_t test) {
    return fmt::format("{} [{}]", CaptionOf(test), kStepTests[test].unit);
}

/// One line a test, with its worst step.
std::string WorstTable(const ExplainedSet& explained, const CLoadProfile& profile) {
    TextTable table({{"Test", Align::Left},
                     {"Worst step", Align::Left},
                     {"Needed"},
                     {"Available"},
                     {"Margin %"},
                     {"Verdict", Align::Left}});
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        const std::size_t step = WorstStep(explained.steps, test);
        const TestCells cells = CellsOf(explained, step, test);
        table.AddRow({CaptionWithUnit(test), StepText(profile, step, cells.stepNumber), cells.needed,
                      cells.available, cells.margin, cells.verdict});
    }
    return table.Text();
}

/// One line a step and test.
std::string StepsTable(const ExplainedSet& explained, const CLoadProfile& profile) {
    TextTable table({{"Step", Align::Left},
                     {"Test", Align::Left},
                     {"Needed"},
                     {"Available"},
                     {"Margin %"},
                     {"Verdict", Align::Left}});
    for (std::size_t step = 0; step < explained.steps.size(); ++step) {
        for (std::size_t test = 0; test < kStepTests.size(); ++test) {
            const TestCells cells = CellsOf(explained, step, test);
            table.AddRow({StepText(profile, step, std::to_string(step + 1)), CaptionWithUnit(test),
                          cells.needed, cells.available, cells.margin, cells.verdict});
        }
    }
    return table.Text();
}

std::string ClassText(const ExplainedSet& explained) {
    if (!explained.transientClass) {
        return explained.set.FreqDipAvail ? "not rated (diesel sets only)" : "not known (no frequency data)";
    }
    return std::string(*explained.transientClass);
}

std::string NameOf(const ExplainedSet& explained) {
    return fmt::format("{} {}", OneLine(explained.set.ModelNum, 60), OneLine(explained.set.AltNum, 60));
}

std::string VerdictLine(const ExplainedSet& explained, const CLoadProfile& profile, std::int32_t minLoading) {
    return fmt::format("{}: {}", WordOf(explained.fate),
                       OneLine(ReasonOf(explained, profile, minLoading), 200));
}

void AddSet(std::string& text, const ExplainedSet& explained, const CLoadProfile& profile,
            const ExplainArguments& arguments, std::int32_t minLoading) {
    const ChosenSet& set = explained.set;
    fmt::format_to(std::back_inserter(text), "\n{}, engine {}: {} kW, {} kW at the site, loading {} %\n",
                   NameOf(explained), OneLine(set.EngineNum, 60), RenderFixed(set.NominalRating, 1),
                   RenderFixed(set.DeratedRating, 1),
                   explained.loading ? RenderFixed(*explained.loading, 1) : std::string(kNoFigure));
    fmt::format_to(std::back_inserter(text), "  {}\n  transient class of ISO 8528-5: {}\n",
                   VerdictLine(explained, profile, minLoading), ClassText(explained));
    text += WorstTable(explained, profile);
    if (arguments.steps) {
        text += "\n" + StepsTable(explained, profile);
    }
}

/// The first recommended set and the next smaller one, test by test.
void AddComparison(std::string& text, const ExplainedSet& first, const ExplainedSet& next,
                   const CLoadProfile& profile, std::int32_t minLoading) {
    fmt::format_to(std::back_inserter(text), "\nWhy {} and not the smaller {}\n", NameOf(first),
                   NameOf(next));
    const bool sameModel = first.set.ModelNum == next.set.ModelNum;
    const auto title = [sameModel](const ExplainedSet& explained) {
        return OneLine(sameModel ? explained.set.AltNum : explained.set.ModelNum, 20);
    };
    TextTable table({{"Test", Align::Left},
                     {title(first), Align::Left},
                     {"Step"},
                     {"Needed"},
                     {"Available"},
                     {"Margin %"},
                     {title(next), Align::Left},
                     {"Step"},
                     {"Needed"},
                     {"Available"},
                     {"Margin %"}});
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        std::vector<std::string> row{CaptionWithUnit(test)};
        for (const ExplainedSet* explained : {&first, &next}) {
            const std::size_t step = WorstStep(explained->steps, test);
            const TestCells cells = CellsOf(*explained, step, test);
            row.insert(row.end(),
                       {cells.verdict, cells.stepNumber, cells.needed, cells.available, cells.margin});
        }
        table.AddRow(std::move(row));
    }
    text += table.Text();
    for (const ExplainedSet* explained : {&first, &next}) {
        fmt::format_to(std::back_inserter(text), "  {}, {} kW, {}\n", NameOf(*explained),
                       RenderFixed(explained->set.NominalRating, 1),
                       VerdictLine(*explained, profile, minLoading));
    }
}

void AddCounts(std::string& text, const RunCounts& counts, std::int32_t minLoading) {
    if (counts.Candidates() == 0) {
        text +=
            "\nNo candidates: the genset database has no set of this frequency, connection, voltage and "
            "fuel.\n";
        return;
    }
    fmt::format_to(std::back_inserter(text),
                   "\n{} candidate{}: {} recommended, {} undersized, {} below the minimum loading of {} %\n",
                   counts.Candidates(), counts.Candidates() == 1 ? "" : "s", counts.recommended,
                   counts.undersized, counts.underloaded, minLoading);
}

/// What stands above a set whose like the one before was not.
std::string_view HeadingOf(const ExplainArguments& arguments, Fate fate) {
    if (!arguments.choice.IsOfLists()) {
        return "Candidates in the order of the catalogue";
    }
    return fate == Fate::Recommended ? "Recommended sets, smallest first" : "Undersized sets, largest first";
}

}  // namespace

std::string ExplanationTable(const std::string& file, const SizedProject& sized,
                             const Explanation& explanation, const ExplainArguments& arguments,
                             std::int32_t minLoading) {
    const CLoadProfile& profile = sized.LoadProfile();
    std::string text = ProjectHeading(file, sized);
    AddCounts(text, explanation.counts, minLoading);
    if (arguments.choice.IsOfLists() && explanation.first && explanation.nextSmaller) {
        AddComparison(text, *explanation.first, *explanation.nextSmaller, profile, minLoading);
    }
    std::string_view heading;
    for (const ExplainedSet& explained : explanation.sets) {
        if (const std::string_view own = HeadingOf(arguments, explained.fate); own != heading) {
            heading = own;
            fmt::format_to(std::back_inserter(text), "\n{}\n", heading);
        }
        AddSet(text, explained, profile, arguments, minLoading);
    }
    return text;
}

}  // namespace genvara
