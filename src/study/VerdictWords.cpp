#include "VerdictWords.h"

#include <fmt/format.h>

#include <array>
#include <limits>
#include <optional>
#include <utility>

#include "NumberText.h"

namespace genvara {
namespace {

/// A test's words, in the order of `kStepTests`: what it is about, and what stands behind its two figures.
struct TestWords {
    std::string_view caption;
    std::string_view needed;
    std::string_view available;
};

constexpr std::array<TestWords, kStepTests.size()> kWords{{
    {"engine start", "to start", "there"},
    {"rating", "running", "rated"},
    {"maximum loading", "running", "allowed"},
    {"phase loading", "on one phase", "there"},
    {"one-step capability", "in one step", "possible"},
    {"frequency dip", "frequency dip", "allowed"},
    {"alternator start", "to start", "within the allowed dip"},
    {"voltage dip", "dip", "allowed"},
    {"distortion", "distortion", "allowed"},
}};

constexpr int kMostDecimals = 9;

/// A number with another separator in place of its point.
std::string Separated(std::string number, std::string_view separator) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? number : number.replace(point, 1, separator);
}

bool IsPercent(std::size_t test) {
    return kStepTests.at(test).unit == "%";
}

/// Orders the steps of a test: the least comes first.
double Slack(const Verdict& verdict) {
    return verdict.Margin().value_or(verdict.available - verdict.needed);
}

/// The failing test that misses by most, or of a set that passes all the tightest.
std::optional<std::size_t> DecidingTest(const ExplainedSet& explained) {
    if (explained.reason == 0) {
        return explained.tightest ? std::optional(explained.tightest->test) : std::nullopt;
    }
    std::optional<std::size_t> worst;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        const Verdict& verdict = explained.steps[WorstStep(explained.steps, test)][test];
        if (verdict.Fails() && (!worst || Slack(verdict) < least)) {
            worst = test;
            least = Slack(verdict);
        }
    }
    return worst;
}

}  // namespace

std::string_view CaptionOf(std::size_t test) {
    return kWords.at(test).caption;
}

FigureTexts FigureTextsOf(std::size_t test, const Verdict& verdict, std::string_view separator) {
    FigureTexts texts;
    int decimals = 0;
    do {
        ++decimals;
        texts.needed = RenderFixed(verdict.needed, decimals);
        texts.available = RenderFixed(verdict.available, decimals);
    } while (texts.needed == texts.available && verdict.needed != verdict.available &&
             decimals < kMostDecimals);
    if (IsPercent(test)) {
        texts.available = RenderPlain(verdict.available);
    }
    texts.needed = Separated(std::move(texts.needed), separator);
    texts.available = Separated(std::move(texts.available), separator);
    return texts;
}

std::size_t WorstStep(const std::vector<StepVerdicts>& steps, std::size_t test) {
    std::size_t worst = 0;
    for (std::size_t s = 1; s < steps.size(); ++s) {
        const Verdict& verdict = steps[s][test];
        // A figure without a limit is worst where it is largest.
        const bool worse = verdict.applies ? Slack(verdict) < Slack(steps[worst][test])
                                           : verdict.needed > steps[worst][test].needed;
        worst = worse ? s : worst;
    }
    return worst;
}

std::string SentenceOf(const CLoadProfile& profile, std::int32_t stepNumber, std::size_t test,
                       const Verdict& verdict, std::string_view separator) {
    const std::string& step = profile.LoadStep(stepNumber).Description();
    const FigureTexts figures = FigureTextsOf(test, verdict, separator);
    const TestWords& words = kWords.at(test);
    return fmt::format("step {}{}{}: {} {unit} {}, {} {unit} {}", stepNumber, step.empty() ? "" : ", ", step,
                       figures.needed, words.needed, figures.available, words.available,
                       fmt::arg("unit", kStepTests.at(test).unit));
}

std::string_view WordOf(Fate fate) {
    switch (fate) {
        case Fate::Recommended:
            return "recommended";
        case Fate::Undersized:
            return "undersized";
        case Fate::BelowMinLoading:
            break;
    }
    return "below minimum loading";
}

std::string ReasonOf(const ExplainedSet& explained, const CLoadProfile& profile, std::int32_t minLoading,
                     std::string_view separator) {
    if (explained.fate == Fate::BelowMinLoading) {
        return fmt::format("loaded to {} %, {} % wanted at least",
                           Separated(RenderFixed(explained.loading.value_or(0.0), 1), separator), minLoading);
    }
    const std::optional<std::size_t> test = DecidingTest(explained);
    if (!test) {
        return "no test applies";
    }
    const std::size_t step = WorstStep(explained.steps, *test);
    const Verdict& verdict = explained.steps[step][*test];
    const std::string sentence =
        SentenceOf(profile, static_cast<std::int32_t>(step) + 1, *test, verdict, separator);
    const std::optional<double> margin = verdict.Margin();
    return explained.reason == 0 && margin
               ? fmt::format("{}, {} % left", sentence, Separated(RenderFixed(*margin, 1), separator))
               : sentence;
}

}  // namespace genvara
