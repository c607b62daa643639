#pragma once

#include <QFont>
#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "PageBreaks.h"
#include "ReportLayout.h"
#include "RichTextReader.h"

class QTextLayout;

namespace genvara {

/// Sets a document on its pages; see `ReportLayout`.
class ReportComposer {
  public:
    /// @param page in place of the document's own
    ReportComposer(const RichDocument& document, const RichPage& page);

    void Compose();

    [[nodiscard]] QString TakeText() { return std::move(m_text); }
    /// At least one row.
    [[nodiscard]] std::vector<ReportRow> TakeRows() { return std::move(m_rows); }
    [[nodiscard]] std::vector<ReportPiece> TakePieces() { return std::move(m_pieces); }

  private:
    /// A format's font and the heights of its letters [twip].
    struct SetFont {
        RichFormat format;
        QFont font;
        double ascent = 0.0;
        double descent = 0.0;  ///< with the gap between lines
    };
    /// Characters of one format.
    struct Stretch {
        int from = 0;
        int to = 0;
        std::size_t font = 0;
    };
    /// Characters between tabs and line breaks.
    struct Segment {
        int from = 0;
        int to = 0;
        std::shared_ptr<QTextLayout> letters{};  ///< on one line; null if there are none
        double width = 0.0;
        double shownWidth = 0.0;  ///< without blanks at the end
    };

    void SetParagraph(const RichParagraph& paragraph);
    void AppendRuns(const RichParagraph& paragraph);
    void BeginRow(int from);
    void EndRow(int to, int next);
    void BindRows(std::size_t first, const RichParagraph* next);
    void SetOnPages();
    [[nodiscard]] std::pair<double, double> HeightsOf(int from, int to) const;

    [[nodiscard]] std::optional<RichTabStop> NextStop() const;
    [[nodiscard]] RichTabStop StopFor(int tab);
    [[nodiscard]] double StartAt(const RichTabStop& stop, const Segment& segment) const;
    [[nodiscard]] int PartEnd(int from, int to) const;
    [[nodiscard]] Segment Measure(int from, int to);
    void PlaceSegment(const Segment& segment);
    void WrapSegment(const Segment& segment);
    [[nodiscard]] std::shared_ptr<QTextLayout> Letters(int from, int to);
    [[nodiscard]] std::shared_ptr<QTextLayout> NewLetters(int from, int to) const;
    [[nodiscard]] std::size_t FontIndex(const RichFormat& format);
    void AddPiece(ReportPiece piece);

    const RichDocument& m_document;
    RichPage m_page;
    double m_textWidth;
    QString m_text;
    std::vector<ReportRow> m_rows;
    std::vector<BoundLine> m_lines;  // the rows, as pages see them
    std::vector<ReportPiece> m_pieces;

    std::vector<SetFont> m_fonts;
    QHash<std::pair<std::size_t, QString>, std::shared_ptr<QTextLayout>> m_known;

    const RichParagraph* m_paragraph = nullptr;
    std::vector<Stretch> m_stretches;  // of the paragraph
    std::size_t m_markFont = 0;
    ReportRow m_row;
    double m_x = 0.0;  // where the row has come to
};

}  // namespace genvara
