#include "ctlSideBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "EntryField.h"
#include "LastChance.h"
#include "RaisedError.h"
#include "SideBarAccessible.h"
#include "Texts.h"

namespace genvara {
namespace {

/// Twips of a logical pixel, at 96 to the inch.
constexpr double kTwips = 15.0;
constexpr double kFirstTop = 100.0 / kTwips;
constexpr double kPitch = 1000.0 / kTwips;
constexpr double kBoxGap = 20.0 / kTwips;
constexpr double kIconSize = 40.0;  // pixels
constexpr double kTitleGap = 2.0;   // pixels
constexpr int kWidth = 110;         // pixels
constexpr int kTitleMargin = 4;     // pixels
constexpr std::int32_t kKeyInUse = 457;

/// Colours of a box: top and left lines, and bottom and right ones.
struct BoxColours {
    QColor first;
    QColor second;
};

BoxColours ColoursOf(const QPalette& palette, bool sunken) {
    const QColor dark = palette.color(QPalette::Dark);
    const QColor light = palette.color(QPalette::Light);
    return sunken ? BoxColours{.first = dark, .second = light} : BoxColours{.first = light, .second = dark};
}

}  // namespace

ctlSideBar::ctlSideBar(const QString& name, QWidget* parent) : QWidget(parent) {
    // Before the name, whose announcement makes the reader's picture of the bar.
    InstallSideBarAccessibility();
    setObjectName(name);
    setAccessibleName(tr("Panels"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setFixedWidth(kWidth);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Window);
}

const CBarItem& ctlSideBar::AddItem(const std::string& key, const std::string& title, int iconIndex,
                                    std::int32_t raiseValue) {
    if (std::ranges::any_of(m_items, [&](const auto& item) { return item->Key == key; })) {
        throw RaisedError(kKeyInUse, "ctlSideBar::AddItem",
                          "This key is already associated with an element of this collection");
    }
    m_items.push_back(std::make_unique<CBarItem>(
        CBarItem{.Title = title, .IconIndex = iconIndex, .Key = key, .RaiseValue = raiseValue}));
    FitWidth();
    update();
    return *m_items.back();
}

/// As wide as ever, and wider for titles in larger letters.
void ctlSideBar::FitWidth() {
    QFont bold = font();
    bold.setBold(true);  // as the title of the panel that is shown
    int widest = 0;
    for (const auto& item : m_items) {
        widest = std::max(widest, QFontMetrics(bold).horizontalAdvance(ToQt(item->Title)));
    }
    setFixedWidth(std::max(kWidth, widest + 2 * kTitleMargin));
}

void ctlSideBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        FitWidth();
    }
}

void ctlSideBar::SmallIcons(std::vector<QIcon> icons) {
    m_smallIcons = std::move(icons);
    update();
}

void ctlSideBar::LargeIcons(std::vector<QIcon> icons) {
    m_largeIcons = std::move(icons);
    update();
}

void ctlSideBar::Keys(std::vector<QString> keys) {
    m_keys = std::move(keys);
}

void ctlSideBar::ShowCurrent(std::int32_t raiseValue) {
    m_current = raiseValue;
    AnnounceCurrent(*this);
    update();
}

QString ctlSideBar::KeyOf(int item) const {
    const auto index = static_cast<std::size_t>(item - 1);
    return index < m_keys.size() ? m_keys[index] : QString();
}

QSize ctlSideBar::sizeHint() const {
    const double height = kFirstTop + kPitch * static_cast<double>(m_items.size());
    return {minimumWidth(), static_cast<int>(height)};
}

QRectF ctlSideBar::IconBox(std::size_t index) const {
    return {(width() - kIconSize) / 2.0, kFirstTop + kPitch * static_cast<double>(index), kIconSize,
            kIconSize};
}

QFont ctlSideBar::TitleFont(std::size_t index) const {
    QFont text = font();
    text.setBold(m_items[index]->RaiseValue == m_current);
    return text;
}

QRectF ctlSideBar::TitleBox(std::size_t index) const {
    // From the picture on, so that there is no gap in which a click would do nothing.
    const QFontMetricsF text(TitleFont(index));
    const double wide = std::min(text.horizontalAdvance(ToQt(m_items[index]->Title)), width() - 1.0);
    const QRectF picture = IconBox(index);
    return {(width() - 1.0 - wide) / 2.0, picture.bottom(), wide, kTitleGap + text.height()};
}

QRect ctlSideBar::ItemRect(int item) const {
    const auto index = static_cast<std::size_t>(item - 1);
    return IconBox(index).united(TitleBox(index)).toAlignedRect();
}

int ctlSideBar::ItemAt(const QPointF& point) const {
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        if (IconBox(index).contains(point) || TitleBox(index).contains(point)) {
            return static_cast<int>(index) + 1;
        }
    }
    return 0;
}

void ctlSideBar::Hover(int item, bool down) {
    if (item != m_hovered || down != m_down) {
        m_hovered = item;
        m_down = down;
        setCursor(item > 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
        update();
    }
}

void ctlSideBar::mouseMoveEvent(QMouseEvent* event) {
    Hover(ItemAt(event->position()), (event->buttons() & Qt::LeftButton) != 0);
}

void ctlSideBar::mousePressEvent(QMouseEvent* event) {
    m_pressed = true;
    Hover(ItemAt(event->position()), (event->buttons() & Qt::LeftButton) != 0);
}

void ctlSideBar::mouseReleaseEvent(QMouseEvent* event) {
    const int item = ItemAt(event->position());
    Hover(item, (event->buttons() & Qt::LeftButton) != 0);
    // A release whose press a field that holds the focus has kept from us is no click.
    if (std::exchange(m_pressed, false) && item > 0) {
        Stand(item);
        Raise(item);
    }
}

void ctlSideBar::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    Hover(0, false);
}

void ctlSideBar::Raise(int item) {
    RunEvent([&] { emit ItemClicked(m_items.at(static_cast<std::size_t>(item - 1))->RaiseValue); });
}

void ctlSideBar::Press(int item) {
    if (!FocusIsHeld(*window())) {
        Stand(item);
        Raise(item);
    }
}

void ctlSideBar::Stand(int item) {
    m_standing = std::clamp(item, 1, std::max(1, CountItems()));
    AnnounceStanding(*this);
    update();
}

bool ctlSideBar::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const int item = ItemAt(help->pos());
        const QString key = item > 0 ? KeyOf(item) : QString();
        if (key.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help->globalPos(), QString("%1 (%2)").arg(ToQt(Item(item).Title), key), this);
        }
        return true;
    }
    return QWidget::event(event);
}

void ctlSideBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            Stand(m_standing - 1);
            break;
        case Qt::Key_Down:
            Stand(m_standing + 1);
            break;
        case Qt::Key_Home:
            Stand(1);
            break;
        case Qt::Key_End:
            Stand(static_cast<int>(m_items.size()));
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (!m_items.empty()) {
                Raise(m_standing);
            }
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

void ctlSideBar::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    Stand(m_standing);
}

void ctlSideBar::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void ctlSideBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(width() - 1, 0, width() - 1, height());
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        PaintItem(painter, index);
        PaintBox(painter, index);
    }
}

void ctlSideBar::PaintItem(QPainter& painter, std::size_t index) const {
    const CBarItem& item = *m_items[index];
    const QRectF box = IconBox(index);
    const QRectF whole(2.0, box.top() - 3.0, width() - 5.0, kPitch - 3.0);
    if (item.RaiseValue == m_current) {
        QColor ground = palette().color(QPalette::Highlight);
        ground.setAlphaF(0.22F);
        painter.fillRect(whole, ground);
    }
    const std::vector<QIcon>& icons = m_largeIcons.empty() ? m_smallIcons : m_largeIcons;
    if (item.IconIndex >= 0 && static_cast<std::size_t>(item.IconIndex) < icons.size()) {
        icons[static_cast<std::size_t>(item.IconIndex)].paint(&painter, box.toRect());
    }
    painter.setFont(TitleFont(index));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRectF(0.0, box.bottom() + kTitleGap, width() - 1.0, kPitch - kIconSize - 5.0),
                     Qt::AlignHCenter | Qt::AlignTop, ToQt(item.Title));
    if (hasFocus() && static_cast<int>(index) + 1 == m_standing) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawRect(whole);
    }
}

void ctlSideBar::PaintBox(QPainter& painter, std::size_t index) const {
    if (static_cast<int>(index) + 1 != m_hovered) {
        return;  // the ground is drawn anew, so that there is no box to erase
    }
    const BoxColours colours = ColoursOf(palette(), m_down);
    const QRectF box = IconBox(index).adjusted(-kBoxGap, -kBoxGap, kBoxGap, kBoxGap);
    painter.setPen(colours.first);
    painter.drawLine(box.topLeft(), box.topRight());
    painter.drawLine(box.topLeft(), box.bottomLeft());
    painter.setPen(colours.second);
    painter.drawLine(box.bottomLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomRight());
}

}  // namespace genvara
