#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "EngineFixture.h"
#include "Stopping.h"
#include "Variation.h"

namespace genvara {

/// A project in memory, sized against candidates in memory. Its loads are the fixture's.
struct Studied {
    EngineFixture fixture;
    MotorConversions motors{.MotorHP = {1, 10, 1000},
                            .MotorRunningKW = {0.8, 8, 800},
                            .MotorRunningKVA = {1, 10, 1000},
                            .MotorStartPF = {0.4, 0.4, 0.4}};
    std::vector<CodeLetterRecord> letters{{"G", 6}};
    std::vector<double> multipliers{1, 0.64, 0.42, 0.7, 0.33};
    CandidateStore store{fixture.gensets};
    StudyTables tables{.rules = {.motors = {motors, letters, multipliers},
                                 .phasesOf = [](std::int32_t) { return std::optional(3); }},
                       .candidates = store};
    StopFlag stop{false};

    Studied() {
        for (const double rating : {50.0, 100.0, 150.0, 200.0}) {
            const std::string model = "M" + std::to_string(static_cast<int>(rating));
            fixture.gensets.rows.push_back(MakeRow({.model = model.c_str(),
                                                    .rating = rating,
                                                    .startKVA35 = 10 * rating,
                                                    .startingPower = rating}));
        }
    }
    [[nodiscard]] StudyProject Project() {
        return {.project = CProject(fixture.defaults, LocalTime),
                .powerSystem = fixture.site,
                .loadProfile = fixture.profile,
                .limits = fixture.designer,
                .format = ProjectFormat::Records};
    }
};

}  // namespace genvara
