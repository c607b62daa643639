#include "LastChance.h"

#include <exception>
#include <new>

namespace genvara {
namespace {

/// Numbers of what is no raised error: memory, and everything else.
constexpr std::int32_t kOutOfMemory = 7;
constexpr std::int32_t kInternalError = 51;

struct Handler {
    PlatformServices* platform = nullptr;
    std::function<std::filesystem::path()> rescue;
    bool busy = false;
};

Handler& TheHandler() {
    static Handler handler;
    return handler;
}

std::filesystem::path Rescue(const Handler& handler) noexcept {
    try {
        return handler.rescue ? handler.rescue() : std::filesystem::path();
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

void SetLastChance(PlatformServices& platform, std::function<std::filesystem::path()> rescue) {
    TheHandler() = {.platform = &platform, .rescue = std::move(rescue)};
}

void ClearLastChance() noexcept {
    TheHandler() = {};
}

void HandleUnhandled(const RaisedError& failure) {
    Handler& handler = TheHandler();
    if (handler.platform == nullptr) {
        throw failure;
    }
    if (handler.busy) {
        return;
    }
    handler.busy = true;
    handler.platform->EndProcess(failure, Rescue(handler));
    handler.busy = false;
}

void HandleUnhandled() {
    try {
        throw;
    } catch (const RaisedError& failure) {
        HandleUnhandled(failure);
    } catch (const std::bad_alloc&) {
        HandleUnhandled(RaisedError(kOutOfMemory, "Genvara", "Out of memory"));
    } catch (const std::exception& failure) {
        HandleUnhandled(RaisedError(kInternalError, "Genvara", failure.what()));
    }
}

}  // namespace genvara
