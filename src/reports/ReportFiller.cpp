#include "ReportFiller.h"

#include <string>

#include "ProgramVersion.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

/// What both lists know of a set besides the readers' checks.
void FillSet(CReports& reports, const ChosenSet& set) {
    ReportData& data = reports.Data();
    data.ModelNum = set.ModelNum;
    data.AlternatorNum = set.AltNum;
    data.EngineNum = set.EngineNum;
    reports.Fuel(set.FuelType);
    data.AvailKVA35 = set.StartKVA35;
    data.RatedKW = set.NominalRating;
    data.DeratedKW = set.DeratedRating;
    data.MaxVoltDip = set.MaxStepVoltDip;
    data.MaxFreqDip = set.MaxStepFreqDip;
    data.MaxVTHD = set.MaxStepVTHD;
    data.StepVoltDips = set.VoltageDips;
    data.StepFreqDips = set.FreqDips;
    data.StepVTHDs_A = set.StepVTHD_A;
    data.StepVTHDs_B = set.StepVTHD_B;
    data.StepVTHDs_C = set.StepVTHD_C;
    reports.FreqDipAvailable(set.FreqDipAvail ? 1.0 : 0.0);
}

}  // namespace

void FillReportCommon(CReports& reports, const ReportSources& sources) {
    const CPwrSys& site = sources.site;
    ReportData& data = reports.Data();
    data.ProjectName = sources.project.ProjName();
    data.Customer = sources.project.Customer();
    data.UserName = sources.project.UserName();
    data.ParallelSets = site.GensetsInParallel();
    data.LLVoltage = site.Voltage();
    data.ConnCode = site.ConnectCode();
    data.Phases = site.Phases();
    data.Frequency = site.Freq();
    reports.AltRise(site.RiseDutyCode());
    data.MetricUnits = sources.metricUnits;
    data.AmbTemp = sources.metricUnits ? site.AmbTemp() : CelsiusToFahrenheit(site.AmbTemp());
    data.Altitude = sources.metricUnits ? site.Altitude() : MetersToFeet(site.Altitude());
    data.TotalRunKW = sources.designer.TotalRunningKW();
    data.PeakStartingKVA = sources.designer.PeakStartingKVA();
    data.ProgVersion = kProgramVersionText;
    data.CreatedDate = sources.project.Created();
    data.ModifiedDate = sources.project.LastModified();
    data.AllowedVoltDip = site.MaxVoltageDip();
    data.AllowedFreqDip = site.MaxFreqDip();
    data.AllowedVTHD = site.MaxHarmonics();
    data.FreqDipEnabled = site.MaxFreqDipEnabled();
    data.VTHDEnabled = site.MaxHarmonicsEnabled();
    data.DBVersion = sources.designer.DatabaseVersion();
}

void FillChosenSet(CReports& reports, const ReportSources& sources, std::int32_t index) {
    FillReportCommon(reports, sources);
    (void)sources.designer.SetModelNum(index);  // refuses a position beyond the list
    FillSet(reports, sources.designer.ChosenSets()[static_cast<std::size_t>(index)]);
    reports.Data().CalcVTHD = sources.designer.VTHD_CalcsValid();
}

void FillRejectedSet(CReports& reports, const ReportSources& sources, std::int32_t index) {
    FillReportCommon(reports, sources);
    reports.Data().RejectionReason = sources.designer.RejectionReason(index);
    FillSet(reports, sources.designer.RejectedSets()[static_cast<std::size_t>(index)]);
}

void FillRejectedSetAfterRun(CReports& reports, const ReportSources& sources, std::int32_t index) {
    reports.Data().CalcVTHD = sources.designer.NumChosenSets() == 0 || sources.designer.VTHD_CalcsValid();
    FillRejectedSet(reports, sources, index);
}

}  // namespace genvara
