#pragma once

#include <filesystem>
#include <functional>
#include <type_traits>
#include <utility>

#include "PlatformServices.h"
#include "RaisedError.h"

/// What happens to a failure that passes the top of an event routine: the project on screen is copied to the
/// user's state folder, number and description are shown, and the process ends.
namespace genvara {

/// Tells the handler whom to ask and how to keep the project; both outlive the windows.
/// @param rescue writes the project into the state folder and returns the file; empty if that failed.
void SetLastChance(PlatformServices& platform, std::function<std::filesystem::path()> rescue);
/// From here on failures pass unhandled; for the end of a test.
void ClearLastChance() noexcept;

/// Handles a failure. A second one while the first is reported is passed over.
void HandleUnhandled(const RaisedError& failure);
/// The same for the exception that is being handled now, whatever it is.
void HandleUnhandled();

/// Runs an event routine; a failure that escapes from it goes to the handler.
template <typename Routine>
void RunEvent(Routine&& routine) {
    try {
        std::forward<Routine>(routine)();
    } catch (...) {
        HandleUnhandled();
    }
}

/// An event routine that ends in the handler if it fails, to be connected to a signal; one that takes nothing
/// may be connected to any.
template <typename Routine>
[[nodiscard]] auto Event(Routine routine) {
    return [routine = std::move(routine)](auto&&... arguments) mutable -> void {
        if constexpr (std::is_invocable_v<Routine&, decltype(arguments)...>) {
            RunEvent([&] { routine(std::forward<decltype(arguments)>(arguments)...); });
        } else {
            RunEvent(routine);
        }
    };
}

}  // namespace genvara
