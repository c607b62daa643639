// What the user does to a report view with mouse and keys.

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QWheelEvent>
#include <algorithm>
#include <array>

#include "ReportView.h"

namespace genvara {
namespace {

constexpr int kWheelStep = 120;     // eighths of a degree, as mice have them
constexpr int kDragInterval = 40;   // milliseconds between two steps of scrolling
constexpr int kArrowDistance = 48;  // pixels

struct SelectionKey {
    QKeySequence::StandardKey key;
    ReportSelection::Move move;
};
constexpr std::array<SelectionKey, 10> kSelectionKeys{
    {{QKeySequence::SelectPreviousChar, ReportSelection::Move::kLeft},
     {QKeySequence::SelectNextChar, ReportSelection::Move::kRight},
     {QKeySequence::SelectPreviousWord, ReportSelection::Move::kWordLeft},
     {QKeySequence::SelectNextWord, ReportSelection::Move::kWordRight},
     {QKeySequence::SelectPreviousLine, ReportSelection::Move::kUp},
     {QKeySequence::SelectNextLine, ReportSelection::Move::kDown},
     {QKeySequence::SelectStartOfLine, ReportSelection::Move::kRowStart},
     {QKeySequence::SelectEndOfLine, ReportSelection::Move::kRowEnd},
     {QKeySequence::SelectStartOfDocument, ReportSelection::Move::kTextStart},
     {QKeySequence::SelectEndOfDocument, ReportSelection::Move::kTextEnd}}};

bool IsControl(const QKeyEvent& event) {
    return (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::ControlModifier;
}

bool IsZoomKey(const QKeyEvent& event) {
    constexpr std::array kKeys{Qt::Key_Plus, Qt::Key_Equal, Qt::Key_Minus, Qt::Key_0};
    return IsControl(event) && std::ranges::find(kKeys, event.key()) != kKeys.end();
}

}  // namespace

/// Keys that the view takes even where a menu of its window has them as well.
bool ReportView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll) || IsZoomKey(key)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ReportView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        Copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        SelectAll();
    } else if (!ZoomByKey(*event) && !SelectByKey(*event) &&
               ((event->modifiers() & Qt::ShiftModifier) != 0 || !ScrollByKey(event->key()))) {
        event->ignore();
        return;
    }
    event->accept();
}

bool ReportView::ZoomByKey(const QKeyEvent& event) {
    if (!IsZoomKey(event)) {
        return false;
    }
    if (event.key() == Qt::Key_0) {
        FitWidth();
    } else if (event.key() == Qt::Key_Minus) {
        ZoomOut();
    } else {
        ZoomIn();
    }
    return true;
}

/// A selection that begins with a key begins where the mouse last was, or else at the top of what is seen.
bool ReportView::SelectByKey(const QKeyEvent& event) {
    const auto* const found = std::ranges::find_if(
        kSelectionKeys, [&event](const SelectionKey& entry) { return event.matches(entry.key); });
    if (found == kSelectionKeys.end()) {
        return false;
    }
    ReportSelection selection = m_selection;
    if (selection.IsEmpty() && !viewport()->rect().intersects(CursorRect(selection.Cursor()))) {
        selection.Set(PositionAt({0, 0}));
    }
    selection.Extend(m_layout, found->move);
    Change(selection);
    ScrollTo(m_selection.Cursor());
    return true;
}

bool ReportView::ScrollByKey(int key) {
    QScrollBar& down = *verticalScrollBar();
    QScrollBar& across = *horizontalScrollBar();
    switch (key) {
        case Qt::Key_Up:
            down.setValue(down.value() - kArrowDistance);
            return true;
        case Qt::Key_Down:
            down.setValue(down.value() + kArrowDistance);
            return true;
        case Qt::Key_Left:
            across.setValue(across.value() - kArrowDistance);
            return true;
        case Qt::Key_Right:
            across.setValue(across.value() + kArrowDistance);
            return true;
        case Qt::Key_PageUp:
            down.setValue(down.value() - down.pageStep());
            return true;
        case Qt::Key_Space:
        case Qt::Key_PageDown:
            down.setValue(down.value() + down.pageStep());
            return true;
        case Qt::Key_Home:
            down.setValue(0);
            return true;
        case Qt::Key_End:
            down.setValue(down.maximum());
            return true;
        default:
            return false;
    }
}

void ReportView::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    m_wheel += event->angleDelta().y();
    for (; m_wheel >= kWheelStep; m_wheel -= kWheelStep) {
        ZoomStep(event->position().toPoint(), true);
    }
    for (; m_wheel <= -kWheelStep; m_wheel += kWheelStep) {
        ZoomStep(event->position().toPoint(), false);
    }
    event->accept();
}

void ReportView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint point = event->position().toPoint();
    const bool isTriple = m_tripleTimer.isActive() &&
                          (point - m_triplePoint).manhattanLength() < QApplication::startDragDistance();
    m_tripleTimer.stop();
    m_isSelecting = true;
    if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        ExtendTo(point);
        return;
    }
    ReportSelection selection;
    selection.Begin(m_layout, PositionAt(point),
                    isTriple ? ReportSelection::Unit::kRow : ReportSelection::Unit::kCharacter);
    Change(selection);
}

void ReportView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_triplePoint = event->position().toPoint();
    m_tripleTimer.start(QGuiApplication::styleHints()->mouseDoubleClickInterval(), this);
    m_isSelecting = true;
    ReportSelection selection;
    selection.Begin(m_layout, PositionAt(m_triplePoint), ReportSelection::Unit::kWord);
    Change(selection);
}

void ReportView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const int page = m_sheets.PageAt(point.y() + Offset().y());
    const bool isOnPaper = m_sheets.PageRect(page).contains(point + Offset());
    viewport()->setCursor(isOnPaper || m_isSelecting ? Qt::IBeamCursor : Qt::ArrowCursor);
    if (!m_isSelecting || (event->buttons() & Qt::LeftButton) == 0) {
        return;
    }
    ExtendTo(point);
    if (viewport()->rect().contains(point)) {
        m_dragTimer.stop();
    } else if (!m_dragTimer.isActive()) {
        m_dragTimer.start(kDragInterval, this);
    }
}

void ReportView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_isSelecting = false;
    m_dragTimer.stop();
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (!m_selection.IsEmpty() && clipboard.supportsSelection()) {
        clipboard.setText(SelectedText(), QClipboard::Selection);
    }
}

void ReportView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_tripleTimer.timerId()) {
        m_tripleTimer.stop();
    } else if (event->timerId() == m_dragTimer.timerId()) {
        const QPoint point = viewport()->mapFromGlobal(QCursor::pos());
        const QRect window = viewport()->rect();
        const auto beyond = [](int place, int from, int to) {
            return std::min(place - from, 0) + std::max(place - to, 0);
        };
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      beyond(point.y(), window.top(), window.bottom()));
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                        beyond(point.x(), window.left(), window.right()));
        ExtendTo(point);
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

void ReportView::ExtendTo(QPoint point) {
    ReportSelection selection = m_selection;
    selection.Extend(m_layout, PositionAt(point));
    Change(selection);
}

void ReportView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    const auto add = [&menu](const QString& caption, const QKeySequence& key, bool isEnabled) {
        QAction* const action = menu.addAction(caption);
        action->setShortcut(key);
        action->setEnabled(isEnabled);
        return action;
    };
    connect(add(tr("&Copy"), QKeySequence::Copy, !m_selection.IsEmpty()), &QAction::triggered, this,
            [this] { Copy(); });
    connect(add(tr("Select &All"), QKeySequence::SelectAll, !m_layout.Text().isEmpty()), &QAction::triggered,
            this, [this] { SelectAll(); });
    menu.addSeparator();
    connect(add(tr("Zoom &In"), QKeySequence::ZoomIn, true), &QAction::triggered, this, [this] { ZoomIn(); });
    connect(add(tr("Zoom &Out"), QKeySequence::ZoomOut, true), &QAction::triggered, this,
            [this] { ZoomOut(); });
    connect(add(tr("Fit &Width"), QKeySequence(Qt::CTRL | Qt::Key_0), true), &QAction::triggered, this,
            [this] { FitWidth(); });
    menu.exec(event->globalPos());
}

}  // namespace genvara
