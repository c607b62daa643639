#include "ExplainJson.h"

#include <cstddef>
#include <cstdint>

#include "JsonText.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

void TestObject(JsonText& json, const StepTest& test, const Verdict& verdict) {
    json.BeginObject()
        .Member("Name", test.name)
        .Member("Bit", test.bit)
        .Member("Unit", test.unit)
        .Member("Needed", verdict.needed)
        .Member("Available", verdict.available)
        .Member("Applies", verdict.applies)
        .Member("Fails", verdict.Fails())
        .Member("Margin", verdict.Margin())
        .EndObject();
}

void StepsMember(JsonText& json, const std::vector<StepVerdicts>& steps) {
    json.Key("Steps").BeginArray();
    std::int32_t number = 1;
    for (const StepVerdicts& verdicts : steps) {
        json.BeginObject().Member("StepNumber", number).Key("Tests").BeginArray();
        for (std::size_t test = 0; test < verdicts.size(); ++test) {
            TestObject(json, kStepTests[test], verdicts[test]);
        }
        json.EndArray().EndObject();
        ++number;
    }
    json.EndArray();
}

void SetObject(JsonText& json, const ExplainedSet& explained) {
    json.BeginObject()
        .Member("ModelNum", explained.set.ModelNum)
        .Member("AltNum", explained.set.AltNum)
        .Member("EngineNum", explained.set.EngineNum)
        .Member("NominalRating", explained.set.NominalRating)
        .Member("DeratedRating", explained.set.DeratedRating)
        .Member("Verdict", WordOf(explained.fate))
        .Member("Class", explained.transientClass)
        .Member("Loading", explained.loading);
    StepsMember(json, explained.steps);
    TightestMember(json, explained.tightest);
    json.EndObject();
}

}  // namespace

void TightestMember(JsonText& json, const std::optional<Tightest>& tightest) {
    json.Key("Tightest");
    if (!tightest) {
        json.Null();
        return;
    }
    json.BeginObject()
        .Member("Name", kStepTests[tightest->test].name)
        .Member("StepNumber", tightest->stepNumber)
        .Member("Margin", tightest->margin)
        .EndObject();
}

std::string ExplanationJson(const std::string& file, const Explanation& explanation) {
    JsonText json;
    json.BeginObject()
        .Member("File", file)
        .Member("Candidates", explanation.counts.Candidates())
        .Member("Recommended", explanation.counts.recommended)
        .Member("Undersized", explanation.counts.undersized)
        .Member("BelowMinLoading", explanation.counts.underloaded)
        .Key("Sets")
        .BeginArray();
    for (const ExplainedSet& explained : explanation.sets) {
        SetObject(json, explained);
    }
    return json.EndArray().EndObject().Text();
}

}  // namespace genvara
