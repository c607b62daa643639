#include "CLoadProfile.h"

#include <memory>
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

constexpr const char* kStepSource = "CLoadProfile::LoadStep";

/// The question whether a step has an ID.
/// @throws RaisedError for an ID that no step can have.
auto HasID(std::int32_t id) {
    if (id < 0) {
        throw RaisedError(kStepError, "CLoadProfile::LoadStepByID", "Invalid load step ID.");
    }
    return [id](const CLoadStep& step) { return step.StepID() == id; };
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
    m_steps.Insert(atEnd ? m_steps.Size() : static_cast<std::size_t>(position) - 1, std::move(step));
    return m_nextStepId++;
}

CLoadStep& CLoadProfile::LoadStep(std::int32_t number) {
    return m_steps[RequireIndex(number, kStepSource)];
}

const CLoadStep& CLoadProfile::LoadStep(std::int32_t number) const {
    return m_steps[RequireIndex(number, kStepSource)];
}

CLoadStep* CLoadProfile::LoadStepByID(std::int32_t id) {
    return m_steps.Find(HasID(id));
}

const CLoadStep* CLoadProfile::LoadStepByID(std::int32_t id) const {
    return m_steps.Find(HasID(id));
}

void CLoadProfile::DeleteLoadStep(std::int32_t id) {
    (void)m_steps.Take([id](const CLoadStep& step) { return step.StepID() == id; });
}

void CLoadProfile::DeleteAllLoadSteps() {
    m_steps.Clear();
}

void CLoadProfile::RaiseLoadStep(std::int32_t number) {
    const std::size_t moved = RequireIndex(number, kMoveSource);
    if (number == NumLoadSteps()) {
        DeleteLoadStep(m_steps[moved].StepID());
        RaiseSubscriptOutOfRange("CLoadProfile::RaiseLoadStep");
    }
    m_steps.Swap(moved, moved + 1);
}

void CLoadProfile::LowerLoadStep(std::int32_t number) {
    const std::size_t moved = RequireIndex(number, kMoveSource);
    if (moved > 0) {
        m_steps.Swap(moved, moved - 1);
    }
}

void CLoadProfile::Restore(const Moment& moment) {
    Steps restored;
    for (const std::shared_ptr<const CLoadStep>& then : moment) {
        const std::int32_t id = then->StepID();
        std::unique_ptr<CLoadStep> step =
            m_steps.Take([id](const CLoadStep& now) { return now.StepID() == id; });
        if (step == nullptr || !step->IsSameMoment(*then)) {
            step = std::make_unique<CLoadStep>(*then);
        }
        restored.Insert(restored.Size(), std::move(step));
    }
    m_steps = std::move(restored);
}

std::size_t CLoadProfile::RequireIndex(std::int32_t number, const char* source) const {
    if (number < 1 || number > NumLoadSteps()) {
        throw RaisedError(kStepError, source, kStepNumberText);
    }
    return static_cast<std::size_t>(number) - 1;
}

}  // namespace genvara
