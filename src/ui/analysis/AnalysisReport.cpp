#include "AnalysisReport.h"

#include <QObject>
#include <QStringList>
#include <array>
#include <string>
#include <utility>

#include "AdviceFigures.h"
#include "AnalysisWords.h"
#include "Brand.h"
#include "StepCharts.h"
#include "Texts.h"

namespace genvara {
namespace {

FlowText Heading(const QString& text) {
    return {.text = text, .kind = FlowText::Kind::Heading};
}

FlowText Body(const QString& text) {
    return {.text = text, .kind = FlowText::Kind::Body};
}

/// Who and what the analysis is for; lines that would be empty are left out.
void AddProject(std::vector<FlowBlock>& blocks, const CProject& project) {
    const std::array<std::pair<QString, std::string>, 3> lines{
        {{QObject::tr("Project"), project.ProjName()},
         {QObject::tr("Customer"), project.Customer()},
         {QObject::tr("Prepared by"), project.UserName()}}};
    QStringList texts;
    for (const auto& [caption, text] : lines) {
        if (!text.empty()) {
            texts += caption + ": " + ToQt(text);
        }
    }
    if (!texts.isEmpty()) {
        blocks.emplace_back(Body(texts.join('\n')));
    }
}

void AddAdvice(std::vector<FlowBlock>& blocks, const AdviceList* advice) {
    blocks.emplace_back(Heading(QObject::tr("What would let a smaller set do")));
    if (advice == nullptr) {
        blocks.emplace_back(Body(QObject::tr("This was still being worked out when the report was made.")));
        return;
    }
    if (advice->advice.empty()) {
        blocks.emplace_back(
            Body(QObject::tr("No single change of those that were tried lets a smaller set do.")));
        return;
    }
    blocks.emplace_back(AdviceGrid(*advice, nullptr));
}

}  // namespace

std::vector<FlowBlock> AnalysisReport(const AnalysisResult& result, int set, const AdviceList* advice) {
    std::vector<FlowBlock> blocks;
    blocks.emplace_back(Body(ToQt(WordsOf(BuiltBrand()).productName)));
    blocks.emplace_back(FlowText{.text = QObject::tr("Analysis"), .kind = FlowText::Kind::Title});
    AddProject(blocks, result.project->project);
    const ExplainedSet* explained = result.Set(set);
    if (explained == nullptr) {
        return blocks;
    }
    blocks.emplace_back(
        Heading(QString("%1, %2 kW").arg(SetName(explained->set), ShownPlain(explained->set.NominalRating))));
    blocks.emplace_back(Body(VerdictLine(*explained, *result.project)));
    blocks.emplace_back(Body(CountsText(result.explanation->counts)));
    blocks.emplace_back(Heading(QObject::tr("Tests of the listed sets: margin at the tightest step")));
    blocks.emplace_back(TestsGrid(*result.explanation, result.project->loadProfile));
    blocks.emplace_back(
        Heading(QObject::tr("What each step needs of %1").arg(ToQt(explained->set.ModelNum))));
    for (const StepChart& chart : StepChartsOf(*explained, *result.project)) {
        blocks.emplace_back(chart.chart);
    }
    AddAdvice(blocks, advice);
    return blocks;
}

}  // namespace genvara
