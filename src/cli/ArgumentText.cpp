#include "ArgumentText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "NearestNames.h"
#include "NumberText.h"

namespace genvara {
namespace {

std::vector<std::string> CommandsOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

}  // namespace

CLI::Validator Decimal() {
    const auto plain = [](std::string& text) -> std::string {
        const std::size_t first = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
        if (text.size() == first || text.find_first_not_of("0123456789", first) != std::string::npos) {
            return fmt::format("\"{}\" is no whole number", text);
        }
        const std::string digits = text.substr(std::min(text.find_first_not_of('0', first), text.size() - 1));
        text = (text.front() == '-' ? "-" : "") + digits;
        const bool fits = RoundToInteger(ParseNumber(text).value_or(0.0)).has_value();
        return fits ? std::string() : fmt::format("{} is out of range", text);
    };
    return {plain, ""};
}

CLI::Validator NotNegative() {
    const auto refuse = [](std::string& text) -> std::string {
        const std::optional<double> number = ParseNumber(text);
        const bool accepted = number && std::isfinite(*number) && *number >= 0.0;
        return accepted ? std::string() : fmt::format("\"{}\" is no number of 0 or more", text);
    };
    return {refuse, ""};
}

CLI::Validator NotEmpty() {
    const auto refuse = [](std::string& text) -> std::string {
        return text.empty() ? "expected a name, found nothing" : std::string();
    };
    return {refuse, ""};
}

std::string WithBlank(std::string time) {
    constexpr std::size_t kDateLength = 10;
    if (time.size() > kDateLength && time[kDateLength] == 'T') {
        time[kDateLength] = ' ';
    }
    return time;
}

std::string UnknownCommand(const CLI::App& app, std::span<char*> arguments) {
    const CLI::App* level = &app;
    for (const std::string_view word : arguments) {
        const std::vector<std::string> known = CommandsOf(*level);
        if (known.empty() || word.starts_with('-')) {
            return {};
        }
        if (std::ranges::find(known, word) == known.end()) {
            const std::vector<std::string_view> names(known.begin(), known.end());
            const std::string_view nearest = SlipOf(word, names);
            return fmt::format("there is no command \"{}\"{}", word,
                               nearest.empty() ? "." : fmt::format("; did you mean \"{}\"?", nearest));
        }
        level = level->get_subcommand(std::string(word));
    }
    return {};
}

}  // namespace genvara
