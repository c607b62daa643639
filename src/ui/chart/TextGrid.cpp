#include "TextGrid.h"

#include <QStringList>
#include <utility>

#include "CsvText.h"
#include "EntryNumbers.h"
#include "NumberText.h"
#include "Texts.h"

namespace genvara {
namespace {

const EntryNumbers& Numbers() {
    static const EntryNumbers numbers;
    return numbers;
}

QString CsvField(const QString& text) {
    return ToQt(CsvCell(FromQt(text)));
}

QString Value(const GridCell& cell) {
    return cell.number ? ToQt(RenderShortest(*cell.number)) : cell.text;
}

}  // namespace

QString ShownNumber(double value, int decimals) {
    return ToQt(Numbers().Fixed(value, decimals));
}

QString ShownPlain(double value) {
    return ToQt(Numbers().Plain(value));
}

const std::string& ShownSeparator() {
    return Numbers().Separator();
}

GridCell TextCell(QString text) {
    return {.text = std::move(text)};
}

GridCell NumberCell(double value, int decimals, const QString& behind) {
    return {.text = ShownNumber(value, decimals) + behind, .number = value};
}

QString TabText(const TextGrid& grid) {
    QStringList lines;
    QStringList fields;
    for (const GridColumn& column : grid.columns) {
        fields += column.caption.simplified();
    }
    lines += fields.join('\t');
    for (const std::vector<GridCell>& row : grid.rows) {
        fields.clear();
        for (const GridCell& cell : row) {
            const QString shown = cell.text.simplified();
            fields += cell.number ? shown : ToQt(WithoutFormula(FromQt(shown)));
        }
        lines += fields.join('\t');
    }
    return lines.join('\n') + '\n';
}

QByteArray CsvText(const TextGrid& grid) {
    QString text;
    QStringList fields;
    for (const GridColumn& column : grid.columns) {
        fields += CsvField(column.caption.simplified());
    }
    text += fields.join(',') + '\n';
    for (const std::vector<GridCell>& row : grid.rows) {
        fields.clear();
        for (const GridCell& cell : row) {
            fields += CsvField(Value(cell));
        }
        text += fields.join(',') + '\n';
    }
    return text.toUtf8();
}

}  // namespace genvara
