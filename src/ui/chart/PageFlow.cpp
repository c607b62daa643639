#include "PageFlow.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <memory>
#include <type_traits>
#include <utility>

#include "GridSheet.h"
#include "ReportFonts.h"
#include "ReportFooter.h"

namespace genvara {
namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr double kGap = 160.0;           // twips between blocks
constexpr double kChartHeight = 3060.0;  // twips
/// Share of a page up to which a table is not parted, with its heading.
constexpr double kMostKept = 0.6;

QFont FontOf(FlowText::Kind kind) {
    constexpr int kTitle = 36;  // half points
    constexpr int kHeading = 24;
    constexpr int kBody = 19;
    const bool isBody = kind == FlowText::Kind::Body;
    const int size = kind == FlowText::Kind::Title ? kTitle : (isBody ? kBody : kHeading);
    return ReportFont({.face = "Arial", .halfPoints = size, .bold = !isBody});
}

QFont GridFont() {
    constexpr int kGrid = 16;  // half points
    return ReportFont({.face = "Arial", .halfPoints = kGrid});
}

}  // namespace

PageFlow::PageFlow(std::vector<FlowBlock> blocks, const RichPage& paper, QString name)
    : m_blocks(std::move(blocks)), m_paper(paper), m_name(std::move(name)), m_y(paper.top) {
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        const double wantedBehind = i + 1 < m_blocks.size() ? WantedBy(m_blocks[i + 1]) : 0.0;
        std::visit(
            [&](const auto& block) {
                if constexpr (std::is_same_v<std::decay_t<decltype(block)>, FlowText>) {
                    Add(block, wantedBehind);
                } else {
                    Add(block);
                }
            },
            m_blocks[i]);
    }
}

/// Height that a block wants below its heading: a chart or a table as a whole, the beginning of a table that
/// is longer than a page.
double PageFlow::WantedBy(const FlowBlock& block) const {
    if (std::holds_alternative<FlowText>(block)) {
        return 0.0;
    }
    const auto* grid = std::get_if<TextGrid>(&block);
    if (grid == nullptr || grid->columns.empty()) {
        return kChartHeight;
    }
    const GridSheet sheet(*grid, TextWidth(), GridFont());
    const double most = TextHeight() * kMostKept;
    const double height = sheet.HeightUpTo(most, sheet.Groups().front());
    return height < most ? height : kChartHeight;
}

double PageFlow::TextHeight() const {
    return m_paper.height - m_paper.top - m_paper.bottom;
}

double PageFlow::TextWidth() const {
    return m_paper.width - m_paper.left - m_paper.right;
}

void PageFlow::Require(double height) {
    if (m_y > m_paper.top && m_y + height > m_paper.height - m_paper.bottom) {
        ++m_pages;
        m_y = m_paper.top;
    }
}

void PageFlow::Put(double height, std::function<void(QPainter&, const QPointF&)> draw) {
    Require(height);
    const QPointF place(m_paper.left, m_y);
    m_pieces.push_back(
        {m_pages - 1, [draw = std::move(draw), place](QPainter& painter) { draw(painter, place); }});
    m_y += height;
}

void PageFlow::Add(const FlowText& text, double wantedBehind) {
    const QFont font = FontOf(text.kind);
    const double width = TextWidth();
    const double height =
        QFontMetricsF(font)
            .boundingRect(QRectF(0.0, 0.0, width, 1e6), static_cast<int>(Qt::TextWordWrap), text.text)
            .height();
    const bool isBody = text.kind == FlowText::Kind::Body;
    if (!isBody && m_y > m_paper.top) {
        m_y += kGap;
    }
    Require(height + (isBody ? 0.0 : wantedBehind));
    Put(height, [font, width, height, words = text.text](QPainter& painter, const QPointF& place) {
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QRectF(place, QSizeF(width, height + 1.0)), static_cast<int>(Qt::TextWordWrap),
                         words);
    });
    m_y += isBody ? kGap / 3 : kGap / 2;
}

void PageFlow::Add(const TextGrid& grid) {
    const auto sheet = std::make_shared<const GridSheet>(grid, TextWidth(), GridFont());
    for (const GridSheet::Group& group : sheet->Groups()) {
        const double head = sheet->HeadHeight(group);
        const auto drawHead = [sheet, &group](QPainter& painter, const QPointF& place) {
            sheet->DrawHead(painter, place, group, ColoursOnPaper());
        };
        const double most = TextHeight() * kMostKept;
        const double whole = sheet->HeightUpTo(most, group);
        const double first = grid.rows.empty() ? 0.0 : sheet->RowHeight(group, 0);
        Require(whole < most ? whole : head + first);
        Put(head, drawHead);
        for (std::size_t row = 0; row < grid.rows.size(); ++row) {
            const double height = sheet->RowHeight(group, row);
            const int page = m_pages;
            Require(height);
            if (m_pages != page) {
                Put(head, drawHead);
            }
            Put(height, [sheet, &group, row](QPainter& painter, const QPointF& place) {
                sheet->DrawRow(painter, place, group, row, ColoursOnPaper());
            });
        }
        m_y += kGap;
    }
}

void PageFlow::Add(const ChartPtr& chart) {
    const double width = TextWidth();
    Put(kChartHeight, [chart, width](QPainter& painter, const QPointF& place) {
        // A chart's lines are of pixels: fifteen twips each.
        constexpr double kTwipsPerPixel = 15.0;
        constexpr int kPixels = 11;
        QFont font = ReportFont({.face = "Arial"});
        font.setPixelSize(kPixels);
        painter.save();
        painter.translate(place);
        painter.scale(kTwipsPerPixel, kTwipsPerPixel);
        painter.setFont(font);
        painter.setRenderHint(QPainter::Antialiasing);
        chart->Draw(painter, QRectF(0.0, 0.0, width / kTwipsPerPixel, kChartHeight / kTwipsPerPixel),
                    ColoursOnPaper(), -1);
        painter.restore();
    });
    m_y += kGap;
}

void PageFlow::Draw(QPainter& painter, int page) const {
    for (const Piece& piece : m_pieces) {
        if (piece.page == page) {
            painter.save();
            piece.draw(painter);
            painter.restore();
        }
    }
    DrawFooter(painter, m_paper, 1.0, {.page = page, .count = m_pages}, m_name);
}

bool PageFlow::Paint(QPagedPaintDevice& device, int first, int last) const {
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    painter.scale(device.logicalDpiX() / kTwipsPerInch, device.logicalDpiY() / kTwipsPerInch);
    for (int page = first; page <= last; ++page) {
        if (page > first && !device.newPage()) {
            return false;
        }
        Draw(painter, page);
    }
    return painter.end();
}

}  // namespace genvara
