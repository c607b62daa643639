#include "SetsGrid.h"

#include <QObject>
#include <QStringList>

#include "Explain.h"
#include "Texts.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

constexpr double kWhole = 100.0;  // percent

GridCell LoadingCell(const CDesigner& designer, const ChosenSet& set, bool isTooMuch) {
    const auto loading = LoadingOf(set.figures, designer.TotalRunningKW());
    if (!loading) {
        return {};
    }
    GridCell cell = NumberCell(*loading, 1);
    cell.bar = CellBar{.value = *loading,
                       .limit = static_cast<double>(designer.MaxLoading()),
                       .most = kWhole,
                       .fails = isTooMuch};
    cell.tip =
        QObject::tr("%1 % of the rating at the site; %2 % allowed").arg(cell.text).arg(designer.MaxLoading());
    return cell;
}

/// A figure that a set may have no data for.
GridCell DataCell(bool hasData, double percent) {
    return hasData ? NumberCell(percent, 1) : TextCell(QObject::tr("no data"));
}

QString VerdictOf(std::int32_t reason) {
    if (reason == 0) {
        return QObject::tr("recommended");
    }
    QStringList failed;
    for (std::size_t test = 0; test < kStepTests.size(); ++test) {
        if ((reason & kStepTests[test].bit) != 0) {
            failed += ToQt(CaptionOf(test));
        }
    }
    return QObject::tr("undersized: %1").arg(failed.join(", "));
}

std::vector<GridCell> RowOf(const CDesigner& designer, const ChosenSet& set, std::int32_t reason) {
    const bool overloaded = (reason & (rejection::kMaxLoading | rejection::kRating)) != 0;
    const QString name = ToQt(set.ModelNum);
    std::vector<GridCell> row{
        TextCell(set.AltNum.empty() ? name : QString("%1 (%2)").arg(name, ToQt(set.AltNum))),
        NumberCell(set.NominalRating, 0),
        NumberCell(set.DeratedRating, 1),
        LoadingCell(designer, set, overloaded),
        NumberCell(set.StartKVA35, 0),
        NumberCell(set.MaxStepVoltDip, 1),
        DataCell(set.FreqDipAvail, set.MaxStepFreqDip),
        DataCell(set.figures.hasDistortion, set.MaxStepVTHD),
        TextCell(VerdictOf(reason))};
    row.back().tip = row.back().text;
    return row;
}

}  // namespace

TextGrid SetsGrid(const CDesigner& designer) {
    TextGrid grid{.title = QObject::tr("Listed gensets"),
                  .columns = {{.caption = QObject::tr("Genset")},
                              {.caption = QObject::tr("Rated kW"), .isNumber = true},
                              {.caption = QObject::tr("Site kW"),
                               .isNumber = true,
                               .tip = QObject::tr("Rating at the site's altitude and temperature")},
                              {.caption = QObject::tr("Loading %"), .isNumber = true},
                              {.caption = QObject::tr("Start kVA"),
                               .isNumber = true,
                               .tip = QObject::tr("kVA that one set starts at a voltage dip of 35 %")},
                              {.caption = QObject::tr("V dip %"), .isNumber = true},
                              {.caption = QObject::tr("Hz dip %"), .isNumber = true},
                              {.caption = QObject::tr("THD %"), .isNumber = true},
                              {.caption = QObject::tr("Verdict")}}};
    for (const ChosenSet& set : designer.ChosenSets()) {
        grid.rows.push_back(RowOf(designer, set, 0));
    }
    for (const RejectedSet& set : designer.RejectedSets()) {
        grid.rows.push_back(RowOf(designer, set, set.RejectionReason));
    }
    return grid;
}

}  // namespace genvara
