#include "ExhibitDesk.h"

#include <fmt/format.h>

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QPrinter>
#include <QSvgGenerator>
#include <algorithm>
#include <utility>

#include "AtomicFile.h"
#include "ErrorNumbers.h"
#include "FileNames.h"
#include "GridSheet.h"
#include "LastChance.h"
#include "ReportFonts.h"
#include "ReportPdf.h"
#include "ReportSheets.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr QSize kPicture(760, 400);  // pixels
constexpr int kLetters = 12;         // pixels
constexpr std::int32_t kPrinterError = 482;

QFont PictureFont() {
    QFont font = ReportFont({.face = "Arial"});
    font.setPixelSize(kLetters);
    return font;
}

void DrawTable(QPainter& painter, const GridSheet& sheet, std::size_t rows) {
    const GridSheet::Group& group = sheet.Groups().front();
    double top = 0.0;
    sheet.DrawHead(painter, {0.0, top}, group, ColoursOnPaper());
    top += sheet.HeadHeight(group);
    for (std::size_t row = 0; row < rows; ++row) {
        sheet.DrawRow(painter, {0.0, top}, group, row, ColoursOnPaper());
        top += sheet.RowHeight(group, row);
    }
}

QSize SizeOf(const GridSheet& sheet, std::size_t rows) {
    const GridSheet::Group& group = sheet.Groups().front();
    double height = sheet.HeadHeight(group);
    for (std::size_t row = 0; row < rows; ++row) {
        height += sheet.RowHeight(group, row);
    }
    return {qRound(sheet.Width(group)) + 1, qRound(height) + 1};
}

QImage PictureOf(const Chart& chart) {
    constexpr int kDensity = 2;
    QImage picture(kPicture * kDensity, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kDensity);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(PictureFont());
    chart.Draw(painter, QRectF(QPointF(), QSizeF(kPicture)), ColoursOnPaper(), -1);
    return picture;
}

std::vector<FlowBlock> BlocksOf(const Exhibit& exhibit) {
    std::vector<FlowBlock> blocks;
    if (exhibit.chart) {
        blocks.emplace_back(exhibit.chart);
    } else {
        blocks.emplace_back(FlowText{.text = exhibit.table.title, .kind = FlowText::Kind::Heading});
    }
    blocks.emplace_back(exhibit.table);
    return blocks;
}

}  // namespace

QByteArray SvgOf(const Exhibit& exhibit) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setTitle(exhibit.table.title);
    const GridSheet sheet(exhibit.table, 0.0, PictureFont());
    const bool isEmpty = sheet.Groups().empty();
    const QSize size = exhibit.chart || isEmpty ? kPicture : SizeOf(sheet, exhibit.table.rows.size());
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    // A pixel of the drawing is one of the viewer's.
    constexpr int kScreenDots = 96;
    generator.setResolution(kScreenDots);
    QPainter painter(&generator);
    painter.setFont(PictureFont());
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    if (exhibit.chart) {
        exhibit.chart->Draw(painter, QRectF(QPointF(), QSizeF(size)), ColoursOnPaper(), -1);
    } else if (!isEmpty) {
        DrawTable(painter, sheet, exhibit.table.rows.size());
    }
    painter.end();
    return file.data();
}

ExhibitDesk::ExhibitDesk(Surroundings surroundings) : m_around(std::move(surroundings)) {}

void ExhibitDesk::Copy(const Exhibit& exhibit) {
    auto* data = new QMimeData;  // NOLINT(cppcoreguidelines-owning-memory): the clipboard's
    data->setText(TabText(exhibit.table));
    if (exhibit.chart) {
        data->setImageData(PictureOf(*exhibit.chart));
    }
    QApplication::clipboard()->setMimeData(data);
}

void ExhibitDesk::Tell(QWidget* owner, const std::string& text) const {
    m_around.platform.ShowMessage(owner, {.text = text, .icon = MessageIcon::Exclamation});
}

void ExhibitDesk::Save(QWidget* owner, const Target& target, const std::function<QByteArray()>& make) const {
    std::string name;
    try {
        name = m_around.platform.SaveFileName(
            owner, {.title = "Save As",
                    .initialName = FileNameFor(FromQt(target.title), target.extension),
                    .defaultExtension = target.extension,
                    .filter = target.filter,
                    .asksBeforeReplacing = true});
    } catch (const RaisedError& failure) {
        if (failure.Number() == errors::kDialogCancelled) {
            return;
        }
        throw;
    }
    if (const auto obstacle = m_around.obstacle(name)) {
        Tell(owner, fmt::format("{} was not written: {}.", name, *obstacle));
        return;
    }
    try {
        const QByteArray bytes = make();
        AtomicFile file(name);
        file.Write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        file.Commit();
    } catch (const RaisedError& failure) {
        Tell(owner, fmt::format("{} was not written: {}", name, failure.Description()));
    }
}

QByteArray ExhibitDesk::Pdf(const QString& title, std::vector<FlowBlock> blocks) const {
    const PageFlow pages(std::move(blocks), ReportPage(m_around.printSetup()), m_around.projectName());
    QStringList titles{m_around.projectName().simplified(), title};
    titles.removeAll(QString());
    const QByteArray pdf =
        PaintedPdf(pages.Paper(), titles.join(" \u2013 "), m_around.clock(),
                   [&](QPagedPaintDevice& device) { return pages.Paint(device, 0, pages.PageCount() - 1); });
    if (pdf.isEmpty()) {
        throw RaisedError(kPrinterError, "ExhibitDesk::Pdf", "The pages cannot be made.");
    }
    return pdf;
}

void ExhibitDesk::SavePages(QWidget* owner, const QString& title, std::vector<FlowBlock> blocks) const {
    Save(owner, {title, ".pdf", "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*"},
         [&] { return Pdf(title, std::move(blocks)); });
}

void ExhibitDesk::SaveAsPdf(QWidget* owner, const Exhibit& exhibit) const {
    SavePages(owner, exhibit.table.title, BlocksOf(exhibit));
}

void ExhibitDesk::SaveAsSvg(QWidget* owner, const Exhibit& exhibit) const {
    Save(owner, {exhibit.table.title, ".svg", "SVG Drawings (*.svg)|*.svg|All Files (*.*)|*.*"},
         [&] { return SvgOf(exhibit); });
}

void ExhibitDesk::SaveAsCsv(QWidget* owner, const Exhibit& exhibit) const {
    Save(owner, {exhibit.table.title, ".csv", "CSV Tables (*.csv)|*.csv|All Files (*.*)|*.*"},
         [&] { return CsvText(exhibit.table); });
}

void ExhibitDesk::Print(QWidget* owner, const Exhibit& exhibit) const {
    PrintPages(owner, exhibit.table.title, BlocksOf(exhibit));
}

void ExhibitDesk::PrintPages(QWidget* owner, const QString& title, std::vector<FlowBlock> blocks) const {
    PrintSetup setup = m_around.printSetup();
    try {
        m_around.platform.Print(owner, FromQt(title), setup, [&](QPrinter& printer) {
            const PageFlow pages(std::move(blocks), ReportPage(setup), m_around.projectName());
            printer.setPageLayout(SheetOf(pages.Paper()));
            printer.setFullPage(true);
            const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
            const int last = pages.PageCount() - 1;
            const int from = isRange ? std::min(printer.fromPage() - 1, last) : 0;
            const int to = isRange ? std::clamp(printer.toPage() - 1, from, last) : last;
            if (!pages.Paint(printer, from, to)) {
                throw RaisedError(kPrinterError, "ExhibitDesk::PrintPages", "Printer error");
            }
        });
    } catch (const RaisedError& failure) {
        Tell(owner, fmt::format("It could not be printed: {}", failure.Description()));
    }
}

void ExhibitDesk::AddCommands(QWidget& widget, const std::function<std::optional<Exhibit>()>& shown) const {
    const auto add = [&](const char* name, const QString& caption, auto command) {
        auto* action = new QAction(caption, &widget);
        action->setObjectName(name);
        QObject::connect(action, &QAction::triggered, &widget, Event([shown, command] {
                             if (const std::optional<Exhibit> exhibit = shown()) {
                                 command(*exhibit);
                             }
                         }));
        widget.addAction(action);
        return action;
    };
    QAction* copy = add("actCopy", QObject::tr("&Copy"), [](const Exhibit& exhibit) { Copy(exhibit); });
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QWidget* owner = &widget;
    add("actPdf", QObject::tr("Save as &PDF..."),
        [this, owner](const Exhibit& exhibit) { SaveAsPdf(owner->window(), exhibit); });
    add("actSvg", QObject::tr("Save as &SVG..."),
        [this, owner](const Exhibit& exhibit) { SaveAsSvg(owner->window(), exhibit); });
    add("actCsv", QObject::tr("Save as CS&V..."),
        [this, owner](const Exhibit& exhibit) { SaveAsCsv(owner->window(), exhibit); });
    add("actPrint", QObject::tr("P&rint..."),
        [this, owner](const Exhibit& exhibit) { Print(owner->window(), exhibit); });
    widget.setContextMenuPolicy(Qt::ActionsContextMenu);
}

}  // namespace genvara
