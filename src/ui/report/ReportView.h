#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QByteArray>
#include <QString>
#include <optional>
#include <string>

#include "DateTime.h"
#include "ReportLayout.h"
#include "ReportSelection.h"
#include "SheetGeometry.h"

class QPainter;
class QPrinter;

namespace genvara {

/// Shows a report as the white pages that a printer makes of it. Its text cannot be edited; it is selected
/// with the mouse, or with Shift and the keys that move, and copied.
///
/// The pages are as wide as the view, up to a comfortable scale, until the user zooms: Ctrl with the wheel,
/// plus, minus; Ctrl+0 goes back to the view's width.
class ReportView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit ReportView(QWidget* parent = nullptr);

    /// Shows a rich text from its beginning. Any bytes are taken; "" shows an empty page.
    void RichText(const std::string& bytes);
    /// The very bytes that were set.
    [[nodiscard]] const std::string& RichText() const noexcept { return m_bytes; }
    void Clear() { RichText(std::string()); }

    /// Name that stands at the foot of each page; none at first.
    void FooterName(const QString& name);
    [[nodiscard]] const QString& FooterName() const noexcept { return m_footerName; }

    /// Sets reports on a paper in place of their own; nothing for their own again.
    void Paper(const std::optional<RichPage>& paper);

    /// Prints the whole report, or those of its pages that the printer is told to.
    /// @return false if the printer does not take the pages.
    bool Print(QPrinter& printer) const;
    /// The whole report as a PDF file.
    /// @param created local time that the file states as its own
    /// @return nothing if it cannot be made.
    [[nodiscard]] QByteArray Pdf(const DateTime& created) const;

    /// Characters that are selected; 0 for none.
    [[nodiscard]] int SelLength() const noexcept { return m_selection.To() - m_selection.From(); }
    /// Position of the first of them.
    [[nodiscard]] int SelectionStart() const noexcept { return m_selection.From(); }
    [[nodiscard]] QString SelectedText() const;
    void Select(int from, int to);
    void SelectAll();
    /// Puts the selection on the clipboard; all of it also as rich text. Nothing if nothing is selected.
    void Copy() const;

    /// Scale of the pages, 1 for true size.
    [[nodiscard]] double Zoom() const noexcept;
    /// Sets the scale, 0.25 to 5; others are brought into the range.
    void Zoom(double scale);
    void ZoomIn();
    void ZoomOut();
    /// Follows the view's width from now on.
    void FitWidth();

    [[nodiscard]] const ReportLayout& Layout() const noexcept { return m_layout; }
    /// Room of a text position on the viewport [pixel].
    [[nodiscard]] QRect CursorRect(int position) const;
    /// Text position nearest to a point of the viewport [pixel].
    [[nodiscard]] int PositionAt(QPoint point) const;

    /// Scrolls as little as needed to show a text position.
    void ScrollTo(int position);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    void SelectionChanged();

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    [[nodiscard]] double PixelsPerTwip() const;
    [[nodiscard]] double FittingZoom() const;
    [[nodiscard]] QPoint Offset() const;
    void SetOnPages();
    void Arrange(QPoint fixedPoint);
    void ZoomAt(QPoint fixedPoint, double scale);
    void ZoomStep(QPoint fixedPoint, bool larger);
    bool ScrollByKey(int key);
    bool ZoomByKey(const QKeyEvent& event);
    bool SelectByKey(const QKeyEvent& event);
    void Change(const ReportSelection& selection);
    void ExtendTo(QPoint point);
    void PaintPage(QPainter& painter, int page, const QRect& part) const;

    std::string m_bytes;
    QString m_footerName;
    std::optional<RichPage> m_paper;  // none for the report's own
    ReportLayout m_layout;
    SheetGeometry m_sheets;
    ReportSelection m_selection;
    std::optional<double> m_zoom;  // of the user; none while the pages follow the view's width
    int m_wheel = 0;               // turns of the wheel that have not made a step yet [1/8 degree]
    bool m_isSelecting = false;
    QBasicTimer m_dragTimer;    // scrolls while a selection is drawn beyond the edge
    QBasicTimer m_tripleTimer;  // runs while a third click selects a line
    QPoint m_triplePoint;
};

}  // namespace genvara
