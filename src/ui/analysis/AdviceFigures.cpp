#include "AdviceFigures.h"

#include <QObject>
#include <QStringList>
#include <algorithm>
#include <iterator>

#include "AnalysisWords.h"
#include "Kilo.h"
#include "Paths.h"
#include "Texts.h"
#include "VerdictWords.h"
#include "WhatIfFigures.h"

namespace genvara {
namespace {

constexpr double kWholeMargin = 100.0;

/// What is left of the tightest test as a bar: how much of what is there is used.
GridCell MarginCell(const std::optional<Tightest>& tightest) {
    if (!tightest) {
        return TextCell(QString::fromUtf8("\u2013"));
    }
    GridCell cell = NumberCell(tightest->margin, 1, " %");
    cell.bar =
        CellBar{.value = kWholeMargin - tightest->margin, .limit = kWholeMargin, .most = kWholeMargin * 1.25};
    return cell;
}

QString LoadName(const StudyProject& project, const LoadPlace& place) {
    const Load& load = *std::next(project.loadProfile.LoadStep(place.step).begin(), place.load - 1);
    return ToQt(load.name());
}

std::vector<GridCell> RowOf(const MemberDifference& difference, const StudyProject& project) {
    const PropertyPath path = ParsePath(difference.path);
    QString what = RecordName(path, project) + ": " + ToQt(difference.facts.words);
    const bool isPower = difference.facts.unit == "W" || difference.facts.unit == "VA";
    if (!difference.facts.unit.empty()) {
        what += QString(isPower ? " [k%1]" : " [%1]").arg(ToQt(difference.facts.unit));
    }
    const auto shown = [&](const PropertyValue& value) {
        const auto* power = std::get_if<double>(&value);
        return isPower && power != nullptr ? ShownPlain(*power / kPerKilo)
                                           : ShownValue(difference.facts, value);
    };
    return {TextCell(what), TextCell(shown(difference.from)), TextCell(shown(difference.to)),
            TextCell(difference.follows ? QObject::tr("follows") : QString())};
}

QString OrderText(const LoadOrder& order, const StudyProject& project) {
    QStringList steps;
    for (const std::vector<LoadPlace>& loads : order) {
        QStringList names;
        for (const LoadPlace& place : loads) {
            names += LoadName(project, place);
        }
        steps += QString("%1: %2")
                     .arg(steps.size() + 1)
                     .arg(names.isEmpty() ? QString::fromUtf8("\u2013") : names.join(", "));
    }
    return steps.join("; ");
}

}  // namespace

bool Reaches(const Advice& advice, const ChosenSet& set) {
    const auto& answer = advice.sizing.set;
    return answer && answer->ModelNum == set.ModelNum && answer->AltNum == set.AltNum &&
           answer->EngineNum == set.EngineNum;
}

TextGrid AdviceGrid(const AdviceList& list, const ChosenSet* wanted) {
    TextGrid grid{.title = QObject::tr("What would let a smaller set do"),
                  .columns = {{.caption = QObject::tr("Change")},
                              {.caption = QObject::tr("Set")},
                              {.caption = QObject::tr("In all [kW]"), .isNumber = true},
                              {.caption = QObject::tr("Saved [kW]"), .isNumber = true},
                              {.caption = QObject::tr("Tightest test")},
                              {.caption = QObject::tr("Left"), .isNumber = true}}};
    for (const Advice& advice : list.advice) {
        std::vector<GridCell> row{TextCell(ToQt(advice.text)), TextCell(AnswerName(advice.sizing)),
                                  NumberCell(advice.sizing.total, 0),
                                  advice.saved ? NumberCell(*advice.saved, 0) : GridCell{}};
        const auto& tightest = advice.sizing.tightest;
        row.push_back(tightest ? TextCell(QObject::tr("%1, step %2")
                                              .arg(ToQt(CaptionOf(tightest->test)))
                                              .arg(tightest->stepNumber))
                               : GridCell{});
        row.push_back(MarginCell(tightest));
        row.front().tip = row.front().text;
        for (GridCell& cell : row) {
            cell.isBold = wanted != nullptr && Reaches(advice, *wanted);
        }
        grid.rows.push_back(std::move(row));
    }
    return grid;
}

TextGrid ChangesGrid(const Advice& advice, const StudyProject& project) {
    TextGrid grid{.title = QObject::tr("What changes"),
                  .columns = {{.caption = QObject::tr("What changes")},
                              {.caption = QObject::tr("From")},
                              {.caption = QObject::tr("To")},
                              {.caption = QObject::tr("Note")}}};
    for (const Alteration& alteration : advice.alterations) {
        if (alteration.move) {
            const LoadPlace& place = alteration.move->load;
            grid.rows.push_back(
                {TextCell(LoadName(project, place)), TextCell(QObject::tr("in step %1").arg(place.step)),
                 TextCell((alteration.move->isBefore ? QObject::tr("a step of its own before step %1")
                                                     : QObject::tr("a step of its own behind step %1"))
                              .arg(place.step)),
                 GridCell{}});
        } else if (alteration.order) {
            grid.rows.push_back({TextCell(QObject::tr("Order of the loads")),
                                 TextCell(OrderText(PresentOrder(project.loadProfile), project)),
                                 TextCell(OrderText(*alteration.order, project)), GridCell{}});
        }
    }
    for (const MemberDifference& difference : advice.differences) {
        grid.rows.push_back(RowOf(difference, project));
    }
    return grid;
}

bool ChangesOptions(const Advice& advice) {
    return std::ranges::any_of(advice.alterations, [](const Alteration& alteration) {
        return alteration.member && ParsePath(alteration.member->path).record == record_kind::kDesigner;
    });
}

}  // namespace genvara
