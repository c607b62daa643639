#include "Panel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "FormGrid.h"
#include "UpDown.h"

namespace genvara {
namespace {

constexpr double kHeadingScale = 1.45;  // of the ordinary font

}  // namespace

Panel::Panel(const QString& name, const QString& title, const QString& nameLabel, QWidget* parent)
    : QWidget(parent),
      m_heading(new QLabel),
      m_notice(new NoticeBar("fraNotice")),
      m_content(new QVBoxLayout) {
    setObjectName(name);
    setAccessibleName(title);
    m_heading->setObjectName(nameLabel);
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setMinimumWidth(1);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * kHeadingScale);
    large.setBold(true);
    m_heading->setFont(large);
    auto* head = new QHBoxLayout;
    head->addWidget(m_heading, 1, Qt::AlignBottom);
    QLabel* what = FormGrid::MakeNote({}, title);
    head->addWidget(what, 0, Qt::AlignBottom);
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kGap);
    column->addLayout(head);
    column->addWidget(line);
    column->addWidget(m_notice);
    column->addLayout(m_content, 1);
    m_content->setSpacing(metrics::kGap);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FollowFocus(now); });
}

void Panel::WatchEdits() {
    const auto watch = [this](auto* sender, auto signal, QWidget* control) {
        connect(sender, signal, this, [this, control] { NoteEdit(control); });
    };
    for (auto* field : findChildren<QLineEdit*>()) {
        watch(field, &QLineEdit::textEdited, field);
    }
    for (auto* text : findChildren<QPlainTextEdit*>()) {
        watch(text, &QPlainTextEdit::textChanged, text);
    }
    for (auto* list : findChildren<QComboBox*>()) {
        watch(list, &QComboBox::activated, list);
    }
    for (auto* arrows : findChildren<UpDown*>()) {
        watch(arrows, &UpDown::Stepped, arrows->Buddy());
    }
    for (auto* button : findChildren<QAbstractButton*>()) {
        if (qobject_cast<UpDown*>(button->parentWidget()) == nullptr) {
            watch(button, &QAbstractButton::clicked, button);
        }
    }
}

void Panel::NoteEdit(QWidget* control) {
    m_lastEdited = control;
    emit Edited();
}

void Panel::Heading(const QString& projectName) {
    m_projectName = projectName;
    ShowHeading();
}

void Panel::ShowHeading() {
    const QString whole = m_projectName.simplified();
    m_heading->setText(m_heading->fontMetrics().elidedText(whole, Qt::ElideRight, m_heading->width()));
    m_heading->setToolTip(m_heading->text() == whole ? QString() : whole);
}

void Panel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ShowHeading();
}

void Panel::FollowFocus(QWidget* now) {
    // A menu that is opened by its key takes the focus without meaning to.
    if (now == nullptr || qobject_cast<QMenuBar*>(now) != nullptr || qobject_cast<QMenu*>(now) != nullptr) {
        return;
    }
    m_activeControl = isAncestorOf(now) ? now : nullptr;
}

}  // namespace genvara
