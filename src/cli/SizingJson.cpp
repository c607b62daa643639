#include "SizingJson.h"

#include <array>
#include <cstdint>

#include "JsonText.h"
#include "RejectionReasons.h"

namespace genvara {
namespace {

/// The phases of the totals: all of them, then A to C.
constexpr std::array<std::int32_t, 4> kTotalAndPhases{0, 1, 2, 3};
constexpr std::array<std::int32_t, 3> kPhases{1, 2, 3};

/// A member that has a figure for each phase asked for.
template <typename Phases, typename Figure>
void PhaseMember(JsonText& json, std::string_view name, const Phases& phases, Figure figure) {
    json.Key(name).BeginArray();
    for (const std::int32_t phase : phases) {
        json.Value(figure(phase));
    }
    json.EndArray();
}

/// Rows of label, tab, value as pairs.
void PropsMember(JsonText& json, const std::vector<std::string>& rows) {
    json.Key("Props").BeginArray();
    for (const std::string& row : rows) {
        const std::size_t tab = row.find('\t');
        json.BeginArray().Value(row.substr(0, tab)).Value(row.substr(tab + 1)).EndArray();
    }
    json.EndArray();
}

void ProjectMember(JsonText& json, const CProject& project) {
    json.Key("Project")
        .BeginObject()
        .Member("ProjName", project.ProjName())
        .Member("Customer", project.Customer())
        .Member("Description", project.Description())
        .Member("UserName", project.UserName())
        .Member("Created", RenderIso(project.Created()))
        .Member("LastModified", RenderIso(project.LastModified()))
        .EndObject();
}

void PowerSystemMember(JsonText& json, const CPwrSys& site) {
    json.Key("PowerSystem")
        .BeginObject()
        .Member("Altitude", site.Altitude())
        .Member("AmbTemp", site.AmbTemp())
        .Member("Freq", site.Freq())
        .Member("GensetsInParallel", site.GensetsInParallel())
        .Member("Phases", site.Phases())
        .Member("Fuel", site.Fuel())
        .Member("RiseDutyCode", site.RiseDutyCode())
        .Member("Voltage", site.Voltage())
        .Member("ConnectCode", site.ConnectCode())
        .Member("MaxFreqDipEnabled", site.MaxFreqDipEnabled())
        .Member("MaxHarmonicsEnabled", site.MaxHarmonicsEnabled())
        .Member("MaxVoltageDip", site.MaxVoltageDip())
        .Member("MaxFreqDip", site.MaxFreqDip())
        .Member("MaxHarmonics", site.MaxHarmonics())
        .EndObject();
}

void LoadObject(JsonText& json, const Load& load) {
    json.BeginObject()
        .Member("ID", load.ID())
        .Member("LoadType", load.LoadType())
        .Member("name", load.name())
        .Member("Description", load.Description())
        .Member("Quantity", load.Quantity())
        .Member("Phases", load.Phases())
        .Member("Summary", load.Summary())
        .Member("RunningRealPower", load.RunningRealPower())
        .Member("RunningAppPower", load.RunningAppPower())
        .Member("RunningImgPower", load.RunningImgPower())
        .Member("StartingRealPower", load.StartingRealPower())
        .Member("StartingAppPower", load.StartingAppPower())
        .Member("StartingImgPower", load.StartingImgPower())
        .Member("ThreePhaseSixPulseRectPower", load.ThreePhaseSixPulseRectPower())
        .Member("ThreePhaseTwelvePulseRectPower", load.ThreePhaseTwelvePulseRectPower())
        .Member("ThreePhaseSixPulseRectFilteredPower", load.ThreePhaseSixPulseRectFilteredPower())
        .Member("ThreePhaseTwelvePulseRectFilteredPower", load.ThreePhaseTwelvePulseRectFilteredPower())
        .Member("ThreePhaseSixPulsePPCRectPower", load.ThreePhaseSixPulsePPCRectPower());
    PhaseMember(json, "SinglePhaseRectPower", kPhases, [&](auto p) { return load.SinglePhaseRectPower(p); });
    PhaseMember(json, "SinglePhaseElectBallastPower", kPhases,
                [&](auto p) { return load.SinglePhaseElectBallastPower(p); });
    PhaseMember(json, "SinglePhaseMagBallastPower", kPhases,
                [&](auto p) { return load.SinglePhaseMagBallastPower(p); });
    PropsMember(json, load.GetProps());
    json.EndObject();
}

void StepTotals(JsonText& json, const CLoadStep& step) {
    const auto total = [&](std::string_view name, auto figure) {
        PhaseMember(json, name, kTotalAndPhases, figure);
    };
    total("TotalRunningRealPower", [&](auto p) { return step.TotalRunningRealPower(p); });
    total("TotalRunningImgPower", [&](auto p) { return step.TotalRunningImgPower(p); });
    total("TotalRunningApparentPower", [&](auto p) { return step.TotalRunningApparentPower(p); });
    total("TotalStartingRealPower", [&](auto p) { return step.TotalStartingRealPower(p); });
    total("TotalStartingImgPower", [&](auto p) { return step.TotalStartingImgPower(p); });
    total("TotalStartingApparentPower", [&](auto p) { return step.TotalStartingApparentPower(p); });
    json.Member("TotalSixPulseRectPower", step.TotalSixPulseRectPower())
        .Member("TotalTwelvePulseRectPower", step.TotalTwelvePulseRectPower())
        .Member("TotalSixPulseRectFilteredPower", step.TotalSixPulseRectFilteredPower())
        .Member("TotalTwelvePulseRectFilteredPower", step.TotalTwelvePulseRectFilteredPower())
        .Member("TotalSixPulsePPCPower", step.TotalSixPulsePPCPower());
    const auto perPhase = [&](std::string_view name, auto figure) {
        PhaseMember(json, name, kPhases, figure);
    };
    perPhase("TotalSinglePhaseRectPower", [&](auto p) { return step.TotalSinglePhaseRectPower(p); });
    perPhase("TotalElectBallastRealPower", [&](auto p) { return step.TotalElectBallastRealPower(p); });
    perPhase("TotalMagBallastRealPower", [&](auto p) { return step.TotalMagBallastRealPower(p); });
}

void LoadProfileMember(JsonText& json, const CLoadProfile& profile, const CPwrSys& site) {
    json.Key("LoadProfile").BeginArray();
    std::int32_t number = 1;
    for (const CLoadStep& step : profile) {
        json.BeginObject()
            .Member("StepNumber", number)
            .Member("Description", step.Description())
            .Member("MaxVoltageDipOverride", step.MaxVoltageDipOverride())
            .Member("StepMaxVoltageDip", StepMaxVoltageDip(step, site));
        StepTotals(json, step);
        json.Member("HasFirePump", step.HasFirePump())
            .Member("HasLoadedMotor", step.HasLoadedMotor())
            .Member("HasMedicalImageLoad", step.HasMedicalImageLoad())
            .Member("HasLoadedMotorWithTap65", step.HasLoadedMotorWithTap65())
            .Member("GetSmallestMedicalDip", step.GetSmallestMedicalDip());
        PropsMember(json, step.GetProps());
        json.Key("Loads").BeginArray();
        for (const Load& load : step) {
            LoadObject(json, load);
        }
        json.EndArray().EndObject();
        ++number;
    }
    json.EndArray();
}

void DesignerMember(JsonText& json, const CDesigner& designer) {
    json.Key("Designer")
        .BeginObject()
        .Member("TotalRunningKW", designer.TotalRunningKW())
        .Member("PeakStartingKVA", designer.PeakStartingKVA())
        .Member("VTHD_CalcsValid", designer.VTHD_CalcsValid())
        .Member("DatabaseVersion", designer.DatabaseVersion())
        .Member("MinLoading", designer.MinLoading())
        .Member("MaxLoading", designer.MaxLoading())
        .Member("MaxSetsRecommended", designer.MaxSetsRecommended())
        .Member("MaxSetsUndersized", designer.MaxSetsUndersized())
        .Member("NumChosenSets", designer.NumChosenSets())
        .Member("NumRejectedSets", designer.NumRejectedSets())
        .EndObject();
}

/// The members that both lists share.
void SetMembers(JsonText& json, const ChosenSet& set) {
    json.Member("ModelNum", set.ModelNum)
        .Member("AltNum", set.AltNum)
        .Member("EngineNum", set.EngineNum)
        .Member("FuelType", set.FuelType)
        .Member("NominalRating", set.NominalRating)
        .Member("DeratedRating", set.DeratedRating)
        .Member("StartKVA35", set.StartKVA35)
        .Member("VoltageDips", set.VoltageDips)
        .Member("FreqDips", set.FreqDips)
        .Member("StepVTHD_A", set.StepVTHD_A)
        .Member("StepVTHD_B", set.StepVTHD_B)
        .Member("StepVTHD_C", set.StepVTHD_C)
        .Member("MaxStepVoltDip", set.MaxStepVoltDip)
        .Member("MaxStepFreqDip", set.MaxStepFreqDip)
        .Member("MaxStepVTHD", set.MaxStepVTHD)
        .Member("FreqDipAvail", set.FreqDipAvail);
}

void SetsMembers(JsonText& json, const CDesigner& designer) {
    json.Key("ChosenSets").BeginArray();
    for (const ChosenSet& set : designer.ChosenSets()) {
        json.BeginObject();
        SetMembers(json, set);
        json.EndObject();
    }
    json.EndArray().Key("RejectedSets").BeginArray();
    for (const RejectedSet& set : designer.RejectedSets()) {
        json.BeginObject()
            .Member("RejectionReason", set.RejectionReason)
            .Member("Reasons", RejectionTexts(set.RejectionReason));
        SetMembers(json, set);
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

std::string SizingJson(const std::string& file, const SizedProject& sized) {
    JsonText json;
    json.BeginObject().Member("File", file);
    ProjectMember(json, sized.Project());
    PowerSystemMember(json, sized.PowerSystem());
    LoadProfileMember(json, sized.LoadProfile(), sized.PowerSystem());
    DesignerMember(json, sized.Designer());
    SetsMembers(json, sized.Designer());
    return json.EndObject().Text();
}

void SetMember(JsonText& json, std::string_view name, const std::optional<ChosenSet>& set) {
    json.Key(name);
    if (!set) {
        json.Null();
        return;
    }
    json.BeginObject();
    SetMembers(json, *set);
    json.EndObject();
}

void ErrorMember(JsonText& json, const RaisedError& failure) {
    json.Key("Error")
        .BeginObject()
        .Member("Number", failure.Number())
        .Member("Source", failure.Source())
        .Member("Description", failure.Description())
        .EndObject();
}

std::string ErrorJson(const std::string& file, const RaisedError& failure) {
    JsonText json;
    json.BeginObject().Member("File", file);
    ErrorMember(json, failure);
    return json.EndObject().Text();
}

}  // namespace genvara
