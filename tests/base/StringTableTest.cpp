#include "StringTable.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace genvara {
namespace {

TEST(StringTable, FindsItsFirstAndLastAndNothingBetweenIds) {
    EXPECT_EQ(StringTable::Text(10), "Morvane");
    EXPECT_EQ(StringTable::Text(12), "\\GVHelp\\Helpfile.hlp");
    EXPECT_EQ(StringTable::Text(604), "Misc. Linear Load");
    EXPECT_EQ(StringTable::Text(755), "Solid State");
    EXPECT_EQ(StringTable::Text(855), "Increase the maximum Vthd.");
    for (const std::int32_t id : {-1, 0, 9, 13, 856, 100000}) {
        EXPECT_EQ(StringTable::Text(id), "") << id;
    }
}

struct Expected {
    std::int32_t id;
    std::string_view text;
};

// What users have read for years, misspellings included: written down here once more, so that no text
// changes by accident.
constexpr auto kTexts = std::to_array<Expected>({
    {10, "Morvane"},
    {11, "Genvara"},
    {12, "\\GVHelp\\Helpfile.hlp"},
    {20, "Caldrix"},
    {21, "Ohmvane"},
    {22, "\\OVHelp\\Helpfile.hlp"},
    {30, "OK"},
    {31, "Cancel"},
    {50, "&File"},
    {51, "&New Project"},
    {52, "&Open Project..."},
    {53, "&Save Project"},
    {54, "Save Project &As..."},
    {55, "&Print..."},
    {56, "Print Set&up..."},
    {57, "Sen&d To"},
    {58, "&Mail Recipient..."},
    {59, "E&xit"},
    {70, "&Edit"},
    {71, "Cu&t"},
    {72, "&Copy"},
    {73, "&Paste"},
    {75, "&Tools"},
    {76, "&Defaults..."},
    {77, "&Options..."},
    {85, "&Help"},
    {86, "Help &Topics"},
    {87, "Morvane on the &Web"},
    {88, "Caldrix on the &Web"},
    {89, "&About..."},
    {100, "Create New Project"},
    {101, "Open Existing Project"},
    {102, "Save Project"},
    {103, "Print Report"},
    {104, "Export Spec"},
    {105, "Cut"},
    {106, "Copy"},
    {107, "Paste"},
    {108, "Help"},
    {110, "Do you want to save the changes you made to the project?"},
    {111, "The project can not be saved."},
    {120, "Generator Set Sizing"},
    {121, "Save Project"},
    {122, "Open Project"},
    {125, "Project"},
    {126, "Power System"},
    {127, "Load Profile"},
    {128, "View Gensets"},
    {129, "Genset Performance"},
    {130, "Project Name"},
    {131, "Customer"},
    {132, "Description"},
    {133, "User Name"},
    {140, "Voltage LL"},
    {141, "Connection"},
    {142, "Phases"},
    {143, "Frequency"},
    {144, "Fuel"},
    {145, "Diesel"},
    {146, "Nat. Gas"},
    {147, "L.P."},
    {148, "Gasoline"},
    {149, "Any Fuel"},
    {150, "Temperature Rise / Duty"},
    {151, "Gensets in Parallel"},
    {152, "Altitude"},
    {153, "Ambient Temperature"},
    {154, "Max. Voltage Dip (%)"},
    {155, "Max. Frequency Dip (%)"},
    {156, "Max. Harmonics (%)"},
    {170, "Add Load Step"},
    {171, "Step No."},
    {172, "Max. Voltage Dip  (%)"},
    {173, "Description"},
    {175, "Add Load"},
    {176, "Available Loads"},
    {300, "OK"},
    {301, "&System Info..."},
    {302, "MSINFO32 failed to start."},
    {306, "Database Version"},
    {307, "Copyright (c) 2002 Morvane. All rights reserved."},
    {308, "Build Date:"},
    {309,
     "Results are engineering estimates that rest on the data entered and on typical values. The final "
     "choice of "
     "a generator set, its alternator and its accessories is the responsibility of the engineer of record. "
     "Ratings and data are subject to change without notice."},
    {320, "Options"},
    {321, "Project Path"},
    {322, "&Browse..."},
    {323, "Max. Number of Gensets to Recommend"},
    {324, "Max. Genset Loading ( % of full load )"},
    {325, "Min. Genset Loading ( % of full load )"},
    {500, "meters"},
    {501, "feet"},
    {502, "C"},
    {503, "F"},
    {504, "Hz"},
    {520, "80C Continuous"},
    {521, "105C Prime"},
    {522, "125C Prime"},
    {523, "130C Standby"},
    {524, "150C Standby"},
    {600, "Air Conditioning"},
    {601, "Battery Charger"},
    {602, "Lighting"},
    {603, "Medical Equipment"},
    {604, "Misc. Linear Load"},
    {605, "Motor"},
    {606, "UPS"},
    {607, "VFD"},
    {608, "Office Equipment"},
    {620, "Step Number"},
    {621, "Quantity"},
    {622, "Name"},
    {623, "Description"},
    {624, "3 Phase"},
    {625, "Phase A - N / A - B"},
    {626, "Phase B - N / B - C"},
    {627, "Phase C - N / C - A"},
    {628, "Evenly Distributed"},
    {630, "Meets ANSI C82.77 Standard"},
    {631, "Type"},
    {632, "Incandescent"},
    {633, "Fluorescent"},
    {634, "High Intensity Discharge"},
    {635, "Ballast"},
    {636, "High Efficiency Magnetic"},
    {637, "Electronic"},
    {638, "Low Distortion Electronic"},
    {639, "Current THD"},
    {640, "Running kW"},
    {641, "Running pF"},
    {642, "Starting kW"},
    {643, "Starting pF"},
    {650, "BTU / hr"},
    {651, "Tonnage"},
    {652, "Compressor HP"},
    {680, "Harbor Relay"},
    {682, "Off Line"},
    {683, "On Line"},
    {684, "Rating"},
    {685, "Loading"},
    {686, "Battery Charger"},
    {687, "UPS Type"},
    {688, "Input Filtering Installed"},
    {689, "IMPORTANT"},
    {690,
     "To properly size Harbor Relay and Off Line UPS loads, all protected loads must be seperately entered, "
     "ON THE SAME LOAD STEP AS THE UPS."},
    {700, "Horsepower"},
    {701, "Running kW"},
    {702, "Start/Run Amps"},
    {703, "Starting Amps"},
    {704, "Running Amps"},
    {705, "Code Letter"},
    {706, "Starting Method"},
    {707, "Starting kVA"},
    {708, "Starting pF"},
    {750, "Across the Line"},
    {751, "Autotransformer w/ 80% Tap"},
    {752, "Autotransformer w/ 65% Tap"},
    {753, "Part Winding"},
    {754, "Wye-Delta"},
    {755, "Solid State"},
    {760, "What percentage of running current is the starting current?"},
    {800,
     "The genset voltage dip adds to the reduced voltage of the motor starter to reduce starting torque."},
    {850, "No Generator Sets were found that meet your requirements."},
    {851, "Check that the voltage/frequency/connection combination is available."},
    {852, "Change the minimum/maximum allowed loading."},
    {853, "Increase the allowed alternator temperature rise."},
    {854, "Increase the maximum voltage or frequency dip."},
    {855, "Increase the maximum Vthd."},
});

TEST(StringTable, HoldsEveryTextByItsOwnWordsAndNoOther) {
    for (const Expected& expected : kTexts) {
        EXPECT_EQ(StringTable::Text(expected.id), expected.text) << expected.id;
    }
    std::size_t count = 0;
    for (std::int32_t id = 0; id < 2000; ++id) {
        count += StringTable::Text(id).empty() ? 0 : 1;
    }
    EXPECT_EQ(count, kTexts.size());
}

}  // namespace
}  // namespace genvara
