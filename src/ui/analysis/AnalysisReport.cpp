#include "AnalysisReport.h"

#include <QObject>
#include <QStringList>
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "AdviceFigures.h"
#include "AnalysisWords.h"
#include "Brand.h"
#include "SiteCodes.h"
#include "StepCharts.h"
#include "Texts.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

FlowText Heading(const QString& text) {
    return {.text = text, .kind = FlowText::Kind::Heading};
}

FlowText Body(const QString& text) {
    return {.text = text, .kind = FlowText::Kind::Body};
}

/// The site in both systems of units.
QString SiteText(const CPwrSys& site) {
    const FuelRow* const fuel = FindRow(kFuels, site.Fuel());
    QStringList parts{QObject::tr("%1 V, %2 Hz").arg(site.Voltage()).arg(site.Freq())};
    if (fuel != nullptr) {
        parts += Caption(fuel->caption);
    }
    parts += QObject::tr("altitude %1 m (%2 feet)")
                 .arg(ShownNumber(site.Altitude(), 0), ShownNumber(MetersToFeet(site.Altitude()), 0));
    parts += QString::fromUtf8("%1 \u00B0C (%2 \u00B0F)")
                 .arg(ShownNumber(site.AmbTemp(), 0), ShownNumber(CelsiusToFahrenheit(site.AmbTemp()), 0));
    parts += site.GensetsInParallel() == 1 ? QObject::tr("one set")
                                           : QObject::tr("%1 sets in parallel").arg(site.GensetsInParallel());
    return parts.join(", ");
}

QString LimitsText(const StudyProject& project) {
    const CPwrSys& site = project.powerSystem;
    std::vector<std::int32_t> dips;
    for (const CLoadStep& step : project.loadProfile) {
        dips.push_back(step.MaxVoltageDipOverride());
    }
    QStringList parts;
    if (!dips.empty()) {
        const auto [least, most] = std::ranges::minmax(dips);
        parts += least == most ? QObject::tr("voltage dip %1 %").arg(most)
                               : QObject::tr("voltage dip %1 to %2 % by step").arg(least).arg(most);
    }
    if (site.MaxFreqDipEnabled()) {
        parts += QObject::tr("frequency dip %1 %").arg(site.MaxFreqDip());
    }
    if (site.MaxHarmonicsEnabled()) {
        // A limit that no set was held to must not seem kept.
        parts += HasDistortionModel(site.ConnectCode())
                     ? QObject::tr("voltage distortion %1 %").arg(site.MaxHarmonics())
                     : ToQt(kNoDistortionFigures);
    }
    parts +=
        QObject::tr("loading %1 to %2 %").arg(project.limits.MinLoading()).arg(project.limits.MaxLoading());
    return parts.join(", ");
}

/// Who and what the analysis is for, and when; lines that would be empty are left out.
void AddProject(std::vector<FlowBlock>& blocks, const StudyProject& studied, const DateTime& now) {
    const CProject& project = studied.project;
    const std::array<std::pair<QString, std::string>, 6> lines{
        {{QObject::tr("Project"), project.ProjName()},
         {QObject::tr("Customer"), project.Customer()},
         {QObject::tr("Prepared by"), project.UserName()},
         {QObject::tr("Date"), RenderLongDate(now)},
         {QObject::tr("Site"), FromQt(SiteText(studied.powerSystem))},
         {QObject::tr("Limits"), FromQt(LimitsText(studied))}}};
    QStringList texts;
    for (const auto& [caption, text] : lines) {
        if (!text.empty()) {
            texts += caption + ": " + ToQt(text);
        }
    }
    blocks.emplace_back(Body(texts.join('\n')));
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

std::vector<FlowBlock> AnalysisReport(const AnalysisResult& result, int set, const AdviceList* advice,
                                      const DateTime& now) {
    std::vector<FlowBlock> blocks;
    blocks.emplace_back(Body(ToQt(WordsOf(BuiltBrand()).productName)));
    blocks.emplace_back(FlowText{.text = QObject::tr("Analysis"), .kind = FlowText::Kind::Title});
    AddProject(blocks, *result.project, now);
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
