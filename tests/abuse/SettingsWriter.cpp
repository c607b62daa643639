// Writes to a settings store: COUNT values of its own, one after the other, in each of which it counts up.
//
//   settings_writer FILE NAME COUNT [--unlock]
//
// After each write, "NAME-<i>" is <i> and "NAME" is the number of values. --unlock takes the store's lock
// away before each write, so that writers lose each other's values: the test of the tests.

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

#include "RaisedError.h"
#include "SettingsFile.h"

namespace genvara {
namespace {

const SettingsKey kKey{.root = 1, .path = "Software\\Crowd"};

int WriteAll(const std::filesystem::path& file, const std::string& name, int count, bool unlock) {
    SettingsFile settings(file);
    for (int i = 1; i <= count; ++i) {
        if (unlock) {
            std::filesystem::remove(file.string() + ".lock");
        }
        settings.Write(kKey, fmt::format("{}-{}", name, i), i);
        settings.Write(kKey, name, i);
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    if (argc < 4) {
        fmt::print(stderr, "settings_writer FILE NAME COUNT [--unlock]\n");
        return 2;
    }
    try {
        return genvara::WriteAll(argv[1], argv[2], std::atoi(argv[3]),
                                 argc > 4 && std::string_view(argv[4]) == "--unlock");
    } catch (const genvara::RaisedError& failure) {
        fmt::print(stderr, "{}: error {} from {}: {}\n", argv[1], failure.Number(), failure.Source(),
                   failure.Description());
        return 3;
    } catch (const std::bad_alloc&) {
        std::fputs("settings_writer: error: There is not enough memory.\n", stderr);
        return 3;
    }
}
