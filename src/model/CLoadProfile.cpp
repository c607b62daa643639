#include "CLoadProfile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "ErrorNumbers.h"
#include "LanguageErrors.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::int32_t kStepError = errors::FromBase(0x64);
constexpr const char* kStepNumberText = "Invalid load step number.";
/// Both moves raise under the name of another operation; callers show the text alone.
constexpr const char* kMoveSource = "CLoadProfile::DeleteLoadStep";

std::ptrdiff_t Index(std::int32_t number) {
    return static_cast<std::ptrdiff_t>(number) - 1;
}

}  // namespace

std::int32_t CLoadProfile::AddLoadStep(std::string description, std::int32_t maxVoltageDip,
                                       std::int32_t position) {
    if (position < 0 || position > NumLoadSteps() + 1) {
        throw RaisedError(kStepError, "", "");
    }
    auto step = std::make_unique<CLoadStep>();
    step->Description(std::move(description));
    step->MaxVoltageDipOverride(maxVoltageDip);
    step->StepID(m_nextStepId);
    const bool atEnd = position == 0 || position > NumLoadSteps();
    m_steps.insert(atEnd ? m_steps.end() : m_steps.begin() + Index(position), std::move(step));
    return m_nextStepId++;
}

CLoadStep& CLoadProfile::LoadStep(std::int32_t number) const {
    RequirePosition(number, "CLoadProfile::LoadStep");
    return *m_steps[static_cast<std::size_t>(Index(number))];
}

CLoadStep* CLoadProfile::LoadStepByID(std::int32_t id) const {
    if (id < 0) {
        throw RaisedError(kStepError, "CLoadProfile::LoadStepByID", "Invalid load step ID.");
    }
    const auto found = std::ranges::find(m_steps, id, [](const auto& step) { return step->StepID(); });
    return found == m_steps.end() ? nullptr : found->get();
}

void CLoadProfile::DeleteLoadStep(std::int32_t id) {
    std::erase_if(m_steps, [id](const auto& step) { return step->StepID() == id; });
}

void CLoadProfile::DeleteAllLoadSteps() {
    m_steps.clear();
}

void CLoadProfile::RaiseLoadStep(std::int32_t number) {
    RequirePosition(number, kMoveSource);
    if (number == NumLoadSteps()) {
        m_steps.pop_back();
        RaiseSubscriptOutOfRange("CLoadProfile::RaiseLoadStep");
    }
    const auto moved = m_steps.begin() + Index(number);
    std::iter_swap(moved, moved + 1);
}

void CLoadProfile::LowerLoadStep(std::int32_t number) {
    RequirePosition(number, kMoveSource);
    if (number > 1) {
        const auto moved = m_steps.begin() + Index(number);
        std::iter_swap(moved, moved - 1);
    }
}

void CLoadProfile::RequirePosition(std::int32_t number, const char* source) const {
    if (number < 1 || number > NumLoadSteps()) {
        throw RaisedError(kStepError, source, kStepNumberText);
    }
}

}  // namespace genvara
