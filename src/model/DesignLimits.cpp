#include "DesignLimits.h"

#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::int32_t kLoadingError = 13;

}  // namespace

void DesignLimits::MinLoading(std::int32_t percent) {
    if (percent < 0) {
        throw RaisedError(kLoadingError, "CDesigner::MinLoading", "Invalid minimum loading level.");
    }
    m_minLoading = percent;
}

void DesignLimits::MaxLoading(std::int32_t percent) {
    if (percent > 100) {
        throw RaisedError(kLoadingError, "CDesigner::MaxLoading", "Invalid maximum loading level.");
    }
    m_maxLoading = percent;
}

}  // namespace genvara
