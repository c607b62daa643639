#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <optional>
#include <string>

#include "CodeEnums.h"
#include "DesignResults.h"
#include "Margins.h"
#include "Properties.h"

namespace genvara::python {

/// The tightest test of a set, by its name.
struct TightestTest {
    std::string name;
    std::int32_t stepNumber;
    double margin;
};

[[nodiscard]] inline std::optional<TightestTest> NamedTightest(const std::optional<Tightest>& tightest) {
    if (!tightest) {
        return std::nullopt;
    }
    return TightestTest{.name = std::string(kStepTests[tightest->test].name),
                        .stepNumber = tightest->stepNumber,
                        .margin = tightest->margin};
}

/// Gives a class of Python the members of a set as a run found it.
/// @param setOf answers `(const Owner&)` with a `const ChosenSet&`.
template <typename Owner, typename Class, typename SetOf>
void AddSetMembers(Class& bound, SetOf setOf) {
    const auto add = [&bound, setOf](const char* name, auto member, const char* doc) {
        bound.def_property_readonly(
            name, [setOf, member](const Owner& owner) { return setOf(owner).*member; }, doc);
    };
    add("model", &ChosenSet::ModelNum, "Model number of the set.");
    add("model_num", &ChosenSet::ModelNum, "Model number of the set.");
    add("alt_num", &ChosenSet::AltNum, "Model number of the alternator.");
    add("engine_num", &ChosenSet::EngineNum, "Model number of the engine.");
    bound.def_property_readonly(
        "fuel_type",
        [setOf](const Owner& owner) {
            const Property<CPwrSys>* fuel = FindProperty(PowerSystemProperties(), "Fuel");
            return ConstantOf(fuel->facts, setOf(owner).FuelType);
        },
        "Fuel, a Fuel.");
    add("nominal_rating", &ChosenSet::NominalRating, "Rating of one set. Unit: kW.");
    add("derated_rating", &ChosenSet::DeratedRating, "Rating of one set at the site. Unit: kW.");
    add("start_kva35", &ChosenSet::StartKVA35, "What one set starts at a voltage dip of 35 %. Unit: kVA.");
    add("voltage_dips", &ChosenSet::VoltageDips, "Voltage dip of each step. Unit: %.");
    add("freq_dips", &ChosenSet::FreqDips, "Frequency dip of each step. Unit: %.");
    add("step_vthd_a", &ChosenSet::StepVTHD_A, "Voltage distortion of each step on phase A. Unit: %.");
    add("step_vthd_b", &ChosenSet::StepVTHD_B, "Voltage distortion of each step on phase B. Unit: %.");
    add("step_vthd_c", &ChosenSet::StepVTHD_C, "Voltage distortion of each step on phase C. Unit: %.");
    add("max_step_volt_dip", &ChosenSet::MaxStepVoltDip, "Largest voltage dip. Unit: %.");
    add("max_step_freq_dip", &ChosenSet::MaxStepFreqDip, "Largest frequency dip. Unit: %.");
    add("max_step_vthd", &ChosenSet::MaxStepVTHD, "Largest voltage distortion. Unit: %.");
    add("freq_dip_avail", &ChosenSet::FreqDipAvail, "Whether the set has data of its frequency dip.");
}

}  // namespace genvara::python
