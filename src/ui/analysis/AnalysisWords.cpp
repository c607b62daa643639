#include "AnalysisWords.h"

#include <QObject>
#include <QStringList>
#include <algorithm>

#include "RejectionReasons.h"
#include "Texts.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

/// Share of a cell's bar that lies below its mark, so that one sees by how much a figure passes it.
constexpr double kRoomAboveLimit = 1.25;

QString Shown(const std::string& text) {
    return ToQt(text);
}

QString Capitalised(QString text) {
    if (!text.isEmpty()) {
        text[0] = text[0].toUpper();
    }
    return text;
}

GridCell CellOf(const ExplainedSet& explained, const CLoadProfile& profile, std::size_t test) {
    if (explained.steps.empty()) {
        return TextCell(QString::fromUtf8("\u2013"));
    }
    const std::size_t step = WorstStep(explained.steps, test);
    const Verdict& verdict = explained.steps[step][test];
    if (!verdict.applies) {
        GridCell cell = TextCell(WhyNotApplied(explained, test));
        cell.tip = VerdictSentence(explained, profile, test, step);
        return cell;
    }
    GridCell cell;
    const std::optional<double> margin = verdict.Margin();
    if (margin) {
        cell = NumberCell(*margin, 1, " %");
    } else {
        cell.text = QObject::tr("nothing there");
    }
    if (verdict.Fails()) {
        cell.text = QObject::tr("fails %1").arg(cell.text);
        cell.isBold = true;
    }
    const double most = std::max(verdict.available * kRoomAboveLimit, 0.0);
    cell.bar = CellBar{.value = verdict.needed,
                       .limit = verdict.available,
                       .most = most > 0.0 ? most : std::max(verdict.needed, 1.0),
                       .fails = verdict.Fails()};
    cell.tip = VerdictSentence(explained, profile, test, step);
    return cell;
}

}  // namespace

QString SetName(const ChosenSet& set) {
    const QString model = ToQt(set.ModelNum);
    return set.AltNum.empty() ? model : QString("%1 (%2)").arg(model, ToQt(set.AltNum));
}

QString AnswerName(const Sizing& sizing) {
    if (!sizing.set) {
        return QObject::tr("none");
    }
    const QString model = ToQt(sizing.set->ModelNum);
    return sizing.sets > 1 ? QString("%1 x %2").arg(sizing.sets).arg(model) : model;
}

QString TestName(std::size_t test) {
    return Capitalised(ToQt(CaptionOf(test)));
}

QString VerdictText(const ExplainedSet& explained) {
    QString text = ToQt(WordOf(explained.fate));
    QStringList failed;
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        if ((explained.reason & kStepTests[test].bit) != 0) {
            failed += ToQt(CaptionOf(test));
        }
    }
    return failed.isEmpty() ? text : text + ": " + failed.join(", ");
}

QString VerdictLine(const ExplainedSet& explained, const StudyProject& project) {
    QStringList parts;
    parts += Capitalised(ToQt(WordOf(explained.fate))) + ": " +
             Shown(ReasonOf(explained, project.loadProfile, project.limits.MinLoading(), ShownSeparator()));
    if (explained.loading) {
        parts += QObject::tr("loaded to %1 %").arg(ShownNumber(*explained.loading, 1));
    }
    if (explained.transientClass) {
        parts += QObject::tr("ISO 8528-5 class %1").arg(ToQt(*explained.transientClass));
    }
    return parts.join("; ") + ".";
}

QString VerdictSentence(const ExplainedSet& explained, const CLoadProfile& profile, std::size_t test,
                        std::size_t step) {
    const Verdict& verdict = explained.steps[step][test];
    QString text =
        Shown(SentenceOf(profile, static_cast<std::int32_t>(step) + 1, test, verdict, ShownSeparator()));
    const std::optional<double> margin = verdict.Margin();
    if (!verdict.applies) {
        return text.section(", ", 0, -2) + ", " + WhyNotApplied(explained, test);
    }
    if (margin && *margin < 0.0) {
        return text + QObject::tr(": %1 % beyond it").arg(ShownNumber(-*margin, 1));
    }
    return margin ? text + QObject::tr(": %1 % left").arg(ShownNumber(*margin, 1)) : text;
}

QString CountsText(const RunCounts& counts) {
    return QObject::tr(
               "%1 candidates for this site: %2 recommended, %3 undersized, %4 below the least loading.")
        .arg(counts.Candidates())
        .arg(counts.recommended)
        .arg(counts.undersized)
        .arg(counts.underloaded);
}

QString WhyNotApplied(const ExplainedSet& explained, std::size_t test) {
    const Figure figure = kStepTests.at(test).figure;
    const bool lacksData = figure == Figure::Distortion ? !explained.set.figures.hasDistortion
                                                        : !HasFrequencyDip(explained.set.figures);
    return lacksData ? QObject::tr("no data") : QObject::tr("no limit");
}

TextGrid TestsGrid(const Explanation& explanation, const CLoadProfile& profile) {
    TextGrid grid{.title = QObject::tr("Margin of each test at its tightest step"),
                  .columns = {{.caption = QObject::tr("Test")}}};
    for (const ExplainedSet& explained : explanation.sets) {
        grid.columns.push_back(
            {.caption = QString("%1\n%2 kW\n%3")
                            .arg(SetName(explained.set), ShownPlain(explained.set.NominalRating),
                                 ToQt(WordOf(explained.fate))),
             .isNumber = true,
             .tip = VerdictText(explained)});
    }
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        std::vector<GridCell> row{TextCell(TestName(test))};
        for (const ExplainedSet& explained : explanation.sets) {
            row.push_back(CellOf(explained, profile, test));
        }
        grid.rows.push_back(std::move(row));
    }
    return grid;
}

}  // namespace genvara
