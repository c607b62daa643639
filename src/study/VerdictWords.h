#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CLoadProfile.h"
#include "Explain.h"
#include "StepTests.h"

/// What console and window say about tests and sets, in the words of an engineer.
namespace genvara {

/// What a test is about, as in "voltage dip"; tests count as in `kStepTests`.
[[nodiscard]] std::string_view CaptionOf(std::size_t test);

/// The two figures of a verdict.
struct FigureTexts {
    std::string needed;
    std::string available;
};

/// Figures with one decimal, limits in percent as they were entered; more decimals where different figures
/// would read the same.
/// @param separator of decimals, here and below.
[[nodiscard]] FigureTexts FigureTextsOf(std::size_t test, const Verdict& verdict,
                                        std::string_view separator = ".");

/// Position of the step, from 0, that decides a test: of the least margin, or where there is none, at which
/// most is missing. The first of equal ones.
[[nodiscard]] std::size_t WorstStep(const std::vector<StepVerdicts>& steps, std::size_t test);

/// What a test finds at a step, as in "step 6, Chiller: 11.1 % dip, 10 % allowed".
/// @param stepNumber counted from 1.
[[nodiscard]] std::string SentenceOf(const CLoadProfile& profile, std::int32_t stepNumber, std::size_t test,
                                     const Verdict& verdict, std::string_view separator = ".");

/// What became of a set: "recommended", "undersized" or "below minimum loading".
[[nodiscard]] std::string_view WordOf(Fate fate);

/// Why a set came to what it did: the tightest test of a recommended one, the worst failure of an undersized
/// one, the loading of one that is too large.
/// @param minLoading least loading that was asked for [percent].
[[nodiscard]] std::string ReasonOf(const ExplainedSet& explained, const CLoadProfile& profile,
                                   std::int32_t minLoading, std::string_view separator = ".");

}  // namespace genvara
