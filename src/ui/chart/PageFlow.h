#pragma once

#include <QString>
#include <functional>
#include <variant>
#include <vector>

#include "Chart.h"
#include "RichTextReader.h"
#include "TextGrid.h"

class QPagedPaintDevice;
class QPainter;

namespace genvara {

/// A line or more of text on paper.
struct FlowText {
    enum class Kind { Title, Heading, Body };
    QString text;
    Kind kind = Kind::Body;
};

/// What stands on paper one below the other.
using FlowBlock = std::variant<FlowText, TextGrid, ChartPtr>;

/// Texts, tables and charts set on pages. A heading stays with what follows; a table goes on with its head on
/// the next page; a chart is never parted. Lengths are twips.
class PageFlow {
  public:
    /// @param name that stands at the foot of each page
    PageFlow(std::vector<FlowBlock> blocks, const RichPage& paper, QString name);

    [[nodiscard]] int PageCount() const noexcept { return m_pages; }
    [[nodiscard]] const RichPage& Paper() const noexcept { return m_paper; }
    /// Draws a page, counted from 0; the painter's unit is the twip.
    void Draw(QPainter& painter, int page) const;
    /// Paints pages from `first` to `last` on a device that has the paper.
    /// @return false if the device does not take them.
    [[nodiscard]] bool Paint(QPagedPaintDevice& device, int first, int last) const;

  private:
    /// Something drawn on a page.
    struct Piece {
        int page;
        std::function<void(QPainter&)> draw;
    };

    void Add(const FlowText& text, double wantedBehind);
    void Add(const TextGrid& grid);
    void Add(const ChartPtr& chart);
    /// Begins another page unless a height is left on this one.
    void Require(double height);
    void Put(double height, std::function<void(QPainter&, const QPointF&)> draw);
    [[nodiscard]] double TextWidth() const;
    [[nodiscard]] double TextHeight() const;
    [[nodiscard]] double WantedBy(const FlowBlock& block) const;

    std::vector<FlowBlock> m_blocks;
    RichPage m_paper;
    QString m_name;
    std::vector<Piece> m_pieces;
    int m_pages = 1;
    double m_y;
};

}  // namespace genvara
