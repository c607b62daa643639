#include "UpDown.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace genvara {
namespace {

constexpr int kArrowWidth = 18;  // pixels

}  // namespace

UpDown::UpDown(const QString& name, EntryField& buddy, Range range, QWidget* parent)
    : QWidget(parent), m_buddy(&buddy), m_range(range) {
    setObjectName(name);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(AddArrow(Qt::UpArrow, 1));
    column->addWidget(AddArrow(Qt::DownArrow, -1));
    setFixedSize(kArrowWidth, buddy.sizeHint().height());
    buddy.installEventFilter(this);
}

QToolButton* UpDown::AddArrow(Qt::ArrowType arrow, std::int32_t steps) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    button->setAccessibleName(steps > 0 ? tr("Increase") : tr("Decrease"));
    connect(button, &QToolButton::clicked, this, [this, steps] { Step(steps); });
    return button;
}

void UpDown::Step(std::int32_t steps) {
    const std::int32_t value = SteppedBy(EntryNumbers().Read(m_buddy->Content()), m_range, steps);
    m_buddy->setText(QString::number(value));
    emit Stepped(value);
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && isEnabled()) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            Step(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace genvara
