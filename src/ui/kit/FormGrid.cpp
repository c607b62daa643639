#include "FormGrid.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPushButton>
#include <QWidget>

#include "FieldCheck.h"
#include "Texts.h"
#include "Theme.h"

namespace genvara {
namespace {

constexpr std::int32_t kOkString = 30;
constexpr std::int32_t kCancelString = 31;

}  // namespace

NoteLabel::NoteLabel(const QString& text) : QLabel(text) {
    ApplyColours();
}

void NoteLabel::Pale(bool pale) {
    m_pale = pale;
    ApplyColours();
}

void NoteLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        ApplyColours();
    }
}

void NoteLabel::ApplyColours() {
    if (m_applying) {
        return;  // setting the palette reports its change
    }
    m_applying = true;
    QPalette colours = QApplication::palette(this);
    if (m_pale) {
        const QColor pale = theme::LighterText(colours);
        colours.setColor(QPalette::Active, QPalette::WindowText, pale);
        colours.setColor(QPalette::Inactive, QPalette::WindowText, pale);
    }
    setPalette(colours);
    m_applying = false;
}

FormGrid::FormGrid(QWidget* parent) : QGridLayout(parent) {
    setHorizontalSpacing(metrics::kGap * 3 / 2);
    setVerticalSpacing(metrics::kGap);
    setColumnStretch(2, 1);
}

QLabel* FormGrid::AddField(const QString& labelName, const QString& caption, QWidget* field,
                           QWidget* behind) {
    auto* label = new QLabel(caption);
    label->setObjectName(labelName);
    // What holds a field and its arrows has no focus of its own, and so no key.
    QWidget* entry = field->focusProxy() == nullptr ? field : field->focusProxy();
    label->setBuddy(entry);
    if (entry->accessibleName().isEmpty()) {
        entry->setAccessibleName(WithoutMnemonic(caption));
    }
    AddRow(label, field, behind);
    return label;
}

void FormGrid::AddRow(QWidget* caption, QWidget* field, QWidget* behind) {
    const int row = rowCount();
    addWidget(caption, row, 0, Qt::AlignLeft | Qt::AlignVCenter);
    const bool narrow = behind != nullptr || field->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed ||
                        field->maximumWidth() < QWIDGETSIZE_MAX;
    if (!narrow) {
        addWidget(field, row, 1, 1, 2);
        return;
    }
    auto* line = new QHBoxLayout;
    line->setSpacing(metrics::kGap);
    line->addWidget(field);
    if (behind != nullptr) {
        line->addWidget(behind);
    }
    line->addStretch(1);
    addLayout(line, row, 1, 1, 2);
}

void FormGrid::AddWide(QWidget* widget) {
    addWidget(widget, rowCount(), 0, 1, 3);
}

QLabel* FormGrid::MakeNote(const QString& name, const QString& text) {
    auto* note = new NoteLabel(text);
    note->setObjectName(name);
    return note;
}

QWidget* Beside(QWidget* field, QWidget* arrows, QWidget* note) {
    auto* pair = new QWidget;
    auto* line = new QHBoxLayout(pair);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(field);
    line->addWidget(arrows);
    if (note != nullptr) {
        line->addSpacing(metrics::kGap);
        line->addWidget(note);
    }
    pair->setFocusProxy(field);
    pair->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return pair;
}

void SetDigits(QWidget& field, int digits) {
    constexpr int kFrame = 22;  // the field's frame and inner margins
    field.setFixedWidth(field.fontMetrics().horizontalAdvance('0') * digits + kFrame);
}

OkCancel MakeOkCancel() {
    auto* box = new QDialogButtonBox;
    auto* ok = new QPushButton(Caption(kOkString));
    // The box makes it the default once they are in their dialog, wherever the desktop wants OK to stand.
    // Made so here, it would look like the default, and Enter would press whatever button comes first.
    ok->setObjectName("cmdOK");
    auto* cancel = new QPushButton(Caption(kCancelString));
    cancel->setObjectName("cmdCancel");
    LeavesUnchecked(*cancel);
    box->addButton(ok, QDialogButtonBox::AcceptRole);
    box->addButton(cancel, QDialogButtonBox::RejectRole);
    return {.box = box, .ok = ok, .cancel = cancel};
}

}  // namespace genvara
