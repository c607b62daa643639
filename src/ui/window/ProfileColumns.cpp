#include "ProfileColumns.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <algorithm>

namespace genvara {
namespace {

constexpr int kColumnMargin = 14;  // pixels on both sides of a text together
/// Characters of a name or a description that are to be read beside the most important column alone, beside
/// any other, and beside the least important one.
constexpr int kShortText = 14;
constexpr int kOrdinaryText = 17;
constexpr int kLongText = 28;
constexpr int kTextInset = 58;              // pixels before a load's name, with its picture
constexpr const char* kFigure = "0000.00";  // of an ordinary site

struct ColumnLook {
    const char* name;
    const char* header;
};
constexpr std::array<ColumnLook, profile_column::kCount> kLooks{
    {{QT_TRANSLATE_NOOP("genvara::ProfileTree", "Steps and loads"), "Steps and loads"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Step"), "Step"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Quantity"), "Qty"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Phases"), "Phases"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Running kW"), "Running\nkW"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Running kVA"), "Running\nkVA"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Starting kW"), "Starting\nkW"},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Starting kVA"), "Starting\nkVA"}}};

/// From the most important one on.
constexpr std::array<int, profile_column::kCount - 2> kByImportance{
    profile_column::ColumnOf(PowerKind::RunningReal),
    profile_column::ColumnOf(PowerKind::StartingApparent),
    profile_column::kQuantity,
    profile_column::ColumnOf(PowerKind::RunningApparent),
    profile_column::ColumnOf(PowerKind::StartingReal),
    profile_column::kPhases};

int WidthOf(const QHeaderView& header, int column, const QString& widest) {
    const QFontMetrics letters = header.fontMetrics();
    QFont bold = header.font();
    bold.setBold(true);  // as steps and totals are
    const QFontMetrics boldLetters(bold);
    int width = letters.size(0, profile_column::HeaderText(column)).width();
    if (profile_column::IsPower(column)) {
        width =
            std::max({width, boldLetters.horizontalAdvance(kFigure), boldLetters.horizontalAdvance(widest)});
    }
    return width + kColumnMargin;
}

}  // namespace

QString profile_column::Name(int column) {
    return QCoreApplication::translate("genvara::ProfileTree",
                                       kLooks.at(static_cast<std::size_t>(column)).name);
}

QString profile_column::HeaderText(int column) {
    return QCoreApplication::translate("genvara::ProfileTree",
                                       kLooks.at(static_cast<std::size_t>(column)).header);
}

void ChooseColumns(QHeaderView& header, int room, const QString& widest) {
    const int character = header.fontMetrics().averageCharWidth();
    int left = room - kTextInset - header.sectionSize(profile_column::kNumber);
    for (const int column : kByImportance) {
        const int width = WidthOf(header, column, widest);
        const int text = column == kByImportance.front()  ? kShortText
                         : column == kByImportance.back() ? kLongText
                                                          : kOrdinaryText;
        left -= width;
        const bool fits = left >= text * character;
        header.setSectionHidden(column, !fits);
        if (fits) {
            header.resizeSection(column, width);
        }
    }
}

}  // namespace genvara
