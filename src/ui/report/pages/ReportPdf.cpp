#include "ReportPdf.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QStringList>
#include <string>
#include <string_view>

#include "Brand.h"
#include "ProgramVersion.h"
#include "ReportSheets.h"

namespace genvara {
namespace {

constexpr int kDotsPerInch = 1200;
constexpr std::string_view kDateKey = "/CreationDate (D:";

/// Puts a moment in the place of the one at which the file was made; the zone behind it stays. No byte may
/// move: the file counts them.
void SetCreationDate(QByteArray& pdf, const DateTime& moment) {
    const qsizetype key = pdf.indexOf(kDateKey);
    if (key >= 0) {
        const std::string date = fmt::format("{:04}{:02}{:02}{:02}{:02}{:02}", moment.year, moment.month,
                                             moment.day, moment.hour, moment.minute, moment.second);
        pdf.replace(key + static_cast<qsizetype>(kDateKey.size()), static_cast<qsizetype>(date.size()),
                    date.c_str());
    }
}

}  // namespace

QString ReportTitle(const ReportLayout& layout) {
    const QStringList lines = layout.Text().left(200).split('\n');
    return lines.size() > 2 && !lines[0].isEmpty() ? lines[1].trimmed() : QString();
}

QByteArray PaintedPdf(const RichPage& paper, const QString& title, const DateTime& created,
                      const std::function<bool(QPagedPaintDevice&)>& paint) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    writer.setTitle(title);
    writer.setCreator(
        QString::fromStdString(fmt::format("{} {}", WordsOf(BuiltBrand()).productName, kProgramVersionText)));
    writer.setResolution(kDotsPerInch);
    writer.setPageLayout(SheetOf(paper));
    if (!paint(writer)) {
        return {};
    }
    file.close();
    QByteArray pdf = file.data();
    SetCreationDate(pdf, created);
    return pdf;
}

QByteArray ReportPdf(const ReportLayout& layout, const QString& name, const DateTime& created) {
    QStringList title{name.simplified(), ReportTitle(layout)};
    title.removeAll(QString());
    return PaintedPdf(layout.Paper(), title.join(" \u2013 "), created, [&](QPagedPaintDevice& device) {
        return PaintSheets(layout, name, 0, layout.PageCount() - 1, device);
    });
}

}  // namespace genvara
