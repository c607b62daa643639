#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "OrderJudge.h"

namespace genvara {

/// How nearly some sets do with an arrangement, and with others that differ from it in a few steps: only the
/// steps that changed are judged.
///
/// It leads a search and promises nothing: steps that start the same on top of the same count as equal,
/// though sums in another order differ in their last bits.
class OrderMargins {
  public:
    static constexpr double kHopeless = -std::numeric_limits<double>::infinity();

    /// The judge outlives the margins.
    explicit OrderMargins(OrderJudge& judge) : m_judge(&judge) {}

    /// How near an arrangement comes.
    struct Nearness {
        /// The least margin over all steps, of the weighed set that has most [percent]; hopeless where it is
        /// not above the one that was asked for.
        double margin = kHopeless;
        bool mayDo = false;  ///< one of all sets passes every step, or fails by the last bits of a sum
    };

    /// Begins with an arrangement and some sets, each a candidate's position.
    /// @param weighed number of those, from the first, that an arrangement shall come nearer to.
    void Stand(Arrangement arrangement, std::vector<std::uint32_t> sets, std::size_t weighed);
    [[nodiscard]] double Margin() const noexcept { return m_margin; }

    /// Judges another arrangement, no further than to know that it does not come nearer than `least`.
    [[nodiscard]] Nearness Judge(const Arrangement& arrangement, double least);

  private:
    /// The tests of a step by what they cost, the cheapest first.
    enum class Stage : std::uint8_t { Powers, Dips, Distortion };
    static constexpr std::array kStages{Stage::Powers, Stage::Dips, Stage::Distortion};

    [[nodiscard]] StepFigures Brought(const ItemGroup& group);
    [[nodiscard]] const StepFigures& Item(std::uint32_t item);
    [[nodiscard]] double LeastOf(std::size_t set, double least) const noexcept;
    [[nodiscard]] bool IsHopeless(double least) const noexcept;
    void JudgeStep(const StepFigures& figures, Stage stage, double least, std::vector<double>& margins);

    OrderJudge* m_judge;
    std::vector<std::optional<StepFigures>> m_items;  ///< what each brings by itself, once it was asked for
    Arrangement m_arrangement;
    std::vector<std::uint32_t> m_sets;
    std::size_t m_weighed = 0;
    std::vector<StepFigures> m_figures;         ///< by step
    std::vector<std::vector<double>> m_before;  ///< by step, then set: least margin of all steps before it
    std::vector<std::vector<double>> m_behind;  ///< likewise of it and all steps behind
    std::vector<StepFigures> m_changed;         ///< of the arrangement that is judged, by step that changed
    std::vector<double> m_left;                 ///< by set, of the arrangement that is judged
    double m_margin = kHopeless;
};

}  // namespace genvara
