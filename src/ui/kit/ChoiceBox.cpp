#include "ChoiceBox.h"

#include <QApplication>
#include <QWheelEvent>

#include "EntryField.h"

namespace genvara {

ChoiceBox::ChoiceBox(const QString& name, QWidget* parent) : QComboBox(parent), m_error(*this) {
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    ApplyColours();
    connect(this, &QComboBox::activated, this, &ChoiceBox::Clicked);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { ClearError(); });
}

void ChoiceBox::AddRow(const QString& text, std::int32_t code) {
    const int selected = currentIndex();
    addItem(text, code);
    setCurrentIndex(selected);  // the first row of an empty list is not selected by itself
}

void ChoiceBox::SelectRow(int row) {
    setCurrentIndex(row);
    if (row >= 0) {
        emit Clicked(row);
    }
}

void ChoiceBox::SelectCode(std::int32_t code) {
    const int row = findData(code);
    if (row >= 0) {
        SelectRow(row);
    }
}

std::optional<std::int32_t> ChoiceBox::Code() const {
    return currentIndex() < 0 ? std::nullopt : std::optional<std::int32_t>(currentData().toInt());
}

void ChoiceBox::ShowError(const QString& sentence) {
    m_error.Show(sentence);
    ApplyColours();
}

void ChoiceBox::ClearError() {
    if (m_error.IsShown()) {
        m_error.Clear();
        ApplyColours();
    }
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

void ChoiceBox::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    m_error.Recall();
    emit Entered();
}

void ChoiceBox::showEvent(QShowEvent* event) {
    QComboBox::showEvent(event);
    m_error.Recall();
}

void ChoiceBox::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    m_error.PaintOutline();
}

void ChoiceBox::changeEvent(QEvent* event) {
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange) {
        ApplyColours();
    }
}

void ChoiceBox::ApplyColours() {
    if (m_applying) {
        return;  // setting the palette reports its change
    }
    m_applying = true;
    // Colours of its own only where it needs them: the toolkit keeps something for each set of colours that a
    // list was ever painted in.
    QPalette colours;
    if (InError()) {
        colours = QApplication::palette(this);
        for (const QPalette::ColorRole ground : {QPalette::Base, QPalette::Button}) {
            colours.setColor(ground, FieldError::kGround);
        }
        for (const QPalette::ColorRole text : {QPalette::Text, QPalette::ButtonText}) {
            colours.setColor(text, Qt::black);
        }
    } else if (!isEnabled()) {
        colours = QApplication::palette(this);
        GreyDisabled(colours, QPalette::Base);
        GreyDisabled(colours, QPalette::Button);  // the ground of a list that cannot be typed into
    }
    setPalette(colours);
    m_applying = false;
}

}  // namespace genvara
