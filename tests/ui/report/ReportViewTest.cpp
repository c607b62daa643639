#include "ReportView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "ReportTexts.h"

namespace genvara {
namespace {

constexpr QSize kWindow{900, 600};

class ReportViewTest : public testing::Test {
  protected:
    ReportViewTest() {
        m_view.resize(kWindow);
        m_view.show();
        QApplication::processEvents();
    }

    void Show(const std::string& body) { m_view.RichText(ReportText(body)); }

    [[nodiscard]] int PositionOf(const QString& text) const {
        return static_cast<int>(m_view.Layout().Text().indexOf(text));
    }
    /// A point of the viewport within the left half of a text's first letter.
    [[nodiscard]] QPoint PointOf(const QString& text) const {
        return m_view.CursorRect(PositionOf(text)).center() + QPoint(1, 0);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&m_view, key, modifiers);
    }
    void Wheel(QPoint point, int angle) {
        QWheelEvent event(point, m_view.viewport()->mapToGlobal(point), {}, {0, angle}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_view.viewport(), &event);
    }

    ReportView m_view;
};

TEST_F(ReportViewTest, KeepsTheVeryBytes) {
    for (const std::string& bytes : {ReportText("a\\par"), std::string("\0\xFF{\\rtf1", 8), std::string()}) {
        m_view.RichText(bytes);
        EXPECT_EQ(m_view.RichText(), bytes);
    }
}

TEST_F(ReportViewTest, ShowsNothingWhenCleared) {
    Show(NumberedLines(200));
    m_view.Clear();
    EXPECT_EQ(m_view.RichText(), "");
    EXPECT_EQ(m_view.Layout().Text(), "");
    EXPECT_EQ(m_view.Layout().PageCount(), 1);
}

TEST_F(ReportViewTest, BeginsAtTheTopWithNothingSelected) {
    Show(NumberedLines(200));
    m_view.SelectAll();
    m_view.verticalScrollBar()->setValue(m_view.verticalScrollBar()->maximum());
    ASSERT_GT(m_view.verticalScrollBar()->value(), 0);
    const QSignalSpy changes(&m_view, &ReportView::SelectionChanged);
    Show(NumberedLines(100));
    EXPECT_EQ(m_view.verticalScrollBar()->value(), 0);
    EXPECT_EQ(m_view.SelLength(), 0);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ReportViewTest, IsBlackOnWhiteInAnyTheme) {
    Show("\\fs100\\b IIII\\par");
    for (const QColor& window : {QColor(0xF0, 0xF0, 0xF0), QColor(0x22, 0x22, 0x22)}) {
        m_view.setPalette(QPalette(window));
        QImage image = m_view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRect letter = m_view.CursorRect(PositionOf("IIII"));
        const qreal ratio = image.devicePixelRatio();
        int darkest = 255;
        for (int x = letter.left(); x < letter.left() + 40; ++x) {
            darkest =
                std::min(darkest, qGray(image.pixel((QPointF(x, letter.center().y()) * ratio).toPoint())));
        }
        EXPECT_LT(darkest, 60);
        EXPECT_EQ(image.pixelColor((QPointF(letter.left() - 8, letter.center().y()) * ratio).toPoint()),
                  QColor(Qt::white));
        const int ground = qGray(image.pixel(4, image.height() / 2));
        EXPECT_LT(ground, 230);
        EXPECT_GT(std::abs(ground - qGray(window.rgb())), 8);
    }
}

TEST_F(ReportViewTest, FillsItsWidthUpToAComfortableScale) {
    m_view.resize(900, 600);
    const double fitting = m_view.Zoom();
    // Letter is 816 pixels wide at 96 to the inch; 20 of ground on each side, less the scroll bar's width.
    EXPECT_NEAR(fitting, (m_view.viewport()->width() - 40) * 1440.0 / (12240 * m_view.logicalDpiX()), 1e-6);
    m_view.resize(3000, 600);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 1.5);
    m_view.resize(300, 600);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 0.7);
    EXPECT_GT(m_view.horizontalScrollBar()->maximum(), 0);
}

TEST_F(ReportViewTest, ShowsThePaperThatWasChosen) {
    Show(NumberedLines(100));
    m_view.verticalScrollBar()->setValue(500);
    const RichPage wideA5{
        .width = 11906, .height = 8391, .left = 720, .right = 720, .top = 720, .bottom = 720};
    m_view.Paper(wideA5);
    EXPECT_EQ(m_view.Layout().PageCount(), 4);
    EXPECT_EQ(m_view.verticalScrollBar()->value(), 0);
    Show(NumberedLines(50));
    EXPECT_EQ(m_view.Layout().PageCount(), 2) << "the next report is on it, too";
    m_view.Zoom(1.0);
    const QRect line = m_view.CursorRect(PositionOf("Line1"));
    const double pixels = m_view.logicalDpiX() / 1440.0;
    EXPECT_NEAR(line.height(), 276 * pixels, 2);
    // Upright A5 has 6951 twips for a text of 10080.
    m_view.Paper(
        RichPage{.width = 8391, .height = 11906, .left = 720, .right = 720, .top = 720, .bottom = 720});
    EXPECT_NEAR(m_view.CursorRect(PositionOf("Line1")).height(), 276 * pixels * 6951 / 10080, 2);
    m_view.Paper(std::nullopt);
    EXPECT_EQ(m_view.Layout().Page().width, 12240);
}

TEST_F(ReportViewTest, ShowsTheFooterOfItsPages) {
    Show("a\\par");
    m_view.Zoom(1.0);
    m_view.resize(900, 1200);
    QApplication::processEvents();
    const QImage before = m_view.viewport()->grab().toImage();
    m_view.FooterName("Mill");
    const QImage after = m_view.viewport()->grab().toImage();
    EXPECT_NE(before, after);
    EXPECT_EQ(m_view.Layout().Text(), "a") << "it is no part of the text";
}

TEST_F(ReportViewTest, ScrollsToItsVeryEndWhateverBarsItHas) {
    Show(NumberedLines(60));
    for (const QSize size : {QSize(900, 600), QSize(300, 600), QSize(900, 600)}) {
        m_view.resize(size);
        QApplication::processEvents();
        const SheetGeometry pages(m_view.Layout().Page(), m_view.Layout().PageCount(),
                                  m_view.Zoom() * m_view.logicalDpiX() / 1440.0, m_view.viewport()->size());
        EXPECT_EQ(m_view.verticalScrollBar()->maximum(),
                  pages.GroundSize().height() - m_view.viewport()->height());
        EXPECT_EQ(m_view.horizontalScrollBar()->isVisible(), size.width() == 300);
    }
}

TEST_F(ReportViewTest, ZoomsByKeysAndWheel) {
    Show(NumberedLines(50));
    m_view.Zoom(1.0);
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 1.1);
    Key(Qt::Key_Minus, Qt::ControlModifier);
    Key(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 0.9);
    Wheel({100, 100}, 240);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 1.1);
    Wheel({100, 100}, -60);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 1.1);
    Wheel({100, 100}, -60);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 1.0);
    m_view.Zoom(99);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 5.0);
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 5.0);
    m_view.Zoom(0.0);
    Key(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_view.Zoom(), 0.25);
    Key(Qt::Key_0, Qt::ControlModifier);
    const double fitting = m_view.Zoom();
    m_view.resize(m_view.width() + 100, m_view.height());
    EXPECT_GT(m_view.Zoom(), fitting);
}

TEST_F(ReportViewTest, KeepsWhatIsUnderTheMouseWhenTheWheelZooms) {
    Show(NumberedLines(120));
    m_view.verticalScrollBar()->setValue(500);
    const QPoint point(300, 200);
    const int before = m_view.PositionAt(point);
    Wheel(point, 360);
    EXPECT_NEAR(m_view.CursorRect(before).center().y(), point.y(), 20);  // half a line at the largest
    EXPECT_EQ(m_view.Layout().RowOf(m_view.PositionAt(point)), m_view.Layout().RowOf(before));
}

TEST_F(ReportViewTest, KeepsItsColumnsAtEveryScale) {
    Show("\\tqdec\\tx3787 Genset Rating\\tab 900.00 kW\\par Peak\\tab 3255.00\\par");
    for (const double scale : {0.25, 0.5, 0.9, 1.0, 1.37, 2.0, 5.0}) {
        m_view.Zoom(scale);
        const int first = m_view.CursorRect(PositionOf(".00 kW")).x();
        const int margin = m_view.CursorRect(PositionOf("Genset")).x();
        EXPECT_EQ(m_view.CursorRect(static_cast<int>(m_view.Layout().Text().lastIndexOf(".00"))).x(), first);
        EXPECT_NEAR(first - margin, 3787 * scale * m_view.logicalDpiX() / 1440.0, 1.0);
    }
}

TEST_F(ReportViewTest, StaysAtItsPlaceWhenItsWidthChanges) {
    Show(NumberedLines(200));
    m_view.verticalScrollBar()->setValue(1500);
    const std::size_t row = m_view.Layout().RowOf(m_view.PositionAt({400, 0}));
    m_view.resize(700, 600);
    EXPECT_EQ(m_view.Layout().RowOf(m_view.PositionAt({300, 0})), row);
    m_view.resize(1100, 600);
    EXPECT_NEAR(static_cast<double>(m_view.Layout().RowOf(m_view.PositionAt({300, 0}))),
                static_cast<double>(row), 1);
}

TEST_F(ReportViewTest, SelectsWithTheMouse) {
    Show("Genset Rating\\tab 900.00 kW\\par Second line\\par");
    const QSignalSpy changes(&m_view, &ReportView::SelectionChanged);
    QTest::mousePress(m_view.viewport(), Qt::LeftButton, {}, PointOf("Rating"));
    QTest::mouseMove(m_view.viewport(), PointOf("kW"));
    QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, {}, PointOf("kW"));
    EXPECT_EQ(m_view.SelectedText(), "Rating\t900.00 ");
    EXPECT_EQ(m_view.SelLength(), 14);
    EXPECT_GE(changes.count(), 1);
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, Qt::ShiftModifier, PointOf("line"));
    EXPECT_EQ(m_view.SelectedText(), "Rating\t900.00 kW\nSecond ");
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, PointOf("kW"));
    EXPECT_EQ(m_view.SelLength(), 0);
}

TEST_F(ReportViewTest, SelectsAWordAndALine) {
    Show("Genset Rating\\tab 900.00 kW\\par Second line\\par");
    const QPoint point = PointOf("ating");
    QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, {}, point);
    EXPECT_EQ(m_view.SelectedText(), "Rating");
    QTest::mousePress(m_view.viewport(), Qt::LeftButton, {}, point);
    EXPECT_EQ(m_view.SelectedText(), "Genset Rating\t900.00 kW");
    QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, {}, point);
}

TEST_F(ReportViewTest, SelectsWithKeys) {
    Show("First line\\par\\par Third\\par");
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, PointOf("First"));
    const auto after = [this](Qt::Key key, Qt::KeyboardModifiers more = Qt::NoModifier) {
        Key(key, Qt::ShiftModifier | more);
        return m_view.SelectedText().toStdString();
    };
    EXPECT_EQ(after(Qt::Key_Right), "F");
    EXPECT_EQ(after(Qt::Key_Right), "Fi");
    EXPECT_EQ(after(Qt::Key_Left), "F");
    EXPECT_EQ(after(Qt::Key_End), "First line");
    EXPECT_EQ(after(Qt::Key_Right), "First line\n");
    EXPECT_EQ(after(Qt::Key_Left), "First line");
    EXPECT_EQ(after(Qt::Key_Down), "First line\n");
    EXPECT_EQ(after(Qt::Key_Down), "First line\n\nThird");
    EXPECT_EQ(after(Qt::Key_Up), "First line\n");
    EXPECT_EQ(after(Qt::Key_Home, Qt::ControlModifier), "");
    EXPECT_EQ(after(Qt::Key_End, Qt::ControlModifier), "First line\n\nThird");
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_view.SelLength(), m_view.Layout().Text().size());
}

TEST_F(ReportViewTest, CannotBeEdited) {
    Show("a\\par");
    m_view.SelectAll();
    Key(Qt::Key_X);
    Key(Qt::Key_Delete);
    Key(Qt::Key_V, Qt::ControlModifier);
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(m_view.Layout().Text(), "a");
    EXPECT_EQ(m_view.RichText(), ReportText("a\\par"));
}

TEST_F(ReportViewTest, CopiesItsSelection) {
    Show("Genset Rating\\tab 900.00 kW\\par Second caf\\'e9\\par");
    QClipboard& clipboard = *QApplication::clipboard();
    clipboard.setText("before");
    m_view.Copy();
    EXPECT_EQ(clipboard.text(), "before");
    m_view.Select(0, 6);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), "Genset");
    EXPECT_FALSE(clipboard.mimeData()->hasFormat("text/rtf"));
    m_view.SelectAll();
    m_view.Copy();
    EXPECT_EQ(clipboard.text(), QString("Genset Rating\t900.00 kW\nSecond caf\u00E9"));
    EXPECT_EQ(clipboard.mimeData()->data("text/rtf").toStdString(), m_view.RichText());
}

TEST_F(ReportViewTest, ScrollsByKeys) {
    Show(NumberedLines(200));
    const QScrollBar& bar = *m_view.verticalScrollBar();
    Key(Qt::Key_Down);
    EXPECT_GT(bar.value(), 0);
    Key(Qt::Key_Up);
    EXPECT_EQ(bar.value(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(bar.value(), bar.maximum());
    Key(Qt::Key_PageUp);
    EXPECT_LT(bar.value(), bar.maximum());
    Key(Qt::Key_Home);
    EXPECT_EQ(bar.value(), 0);
    Key(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_TRUE(m_view.viewport()->rect().contains(m_view.CursorRect(m_view.SelLength())));
}

TEST_F(ReportViewTest, LeavesTabAndEscapeToItsWindow) {
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&m_view, &tab);
    EXPECT_FALSE(tab.isAccepted());
    EXPECT_EQ(m_view.focusPolicy(), Qt::StrongFocus);
}

TEST_F(ReportViewTest, CanBeReadOut) {
    Show("First line\\par Second\\par");
    m_view.setAccessibleName("Report");
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&m_view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Report");
    EXPECT_TRUE(accessible->state().readOnly);
    QAccessibleTextInterface* const text = accessible->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->text(0, text->characterCount()), "First line\nSecond");
    text->setSelection(0, 11, 17);
    EXPECT_EQ(m_view.SelectedText(), "Second");
    EXPECT_EQ(text->selectionCount(), 1);
    EXPECT_EQ(text->offsetAtPoint(text->characterRect(3).center() - QPoint(2, 0)), 3);
}

TEST_F(ReportViewTest, TakesAnyBytes) {
    EXPECT_TRUE(rc::check([this](const std::string& bytes) {
        m_view.RichText("{\\rtf1" + bytes);
        m_view.SelectAll();
        QImage image(200, 200, QImage::Format_RGB32);
        m_view.render(&image);
        RC_ASSERT(m_view.SelLength() == m_view.Layout().Text().size());
        for (const QPoint point : {QPoint(0, 0), QPoint(450, 90), QPoint(-5000, 9999)}) {
            QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, {}, point);
        }
        Key(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
        Key(Qt::Key_Down, Qt::ShiftModifier);
    }));
}

}  // namespace
}  // namespace genvara
