#include "OptionFrame.h"

#include <QBoxLayout>
#include <QRadioButton>
#include <algorithm>

#include "FormGrid.h"

namespace genvara {

OptionFrame::OptionFrame(const QString& name, const QString& title, const std::vector<Option>& options,
                         Qt::Orientation orientation)
    : QGroupBox(title) {
    setObjectName(name);
    auto* line =
        new QBoxLayout(orientation == Qt::Vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
    line->setSpacing(orientation == Qt::Vertical ? metrics::kGap / 2 : metrics::kMargin);
    for (const Option& option : options) {
        auto* button = new QRadioButton(option.caption);
        button->setObjectName(option.name);
        line->addWidget(button);
        m_buttons.push_back({.code = option.code, .button = button});
        connect(button, &QRadioButton::toggled, this, [this, code = option.code](bool selected) {
            if (selected) {
                emit Clicked(code);
            }
        });
    }
    line->addStretch(1);
}

std::optional<std::int32_t> OptionFrame::Code() const {
    const auto selected =
        std::ranges::find_if(m_buttons, [](const Coded& c) { return c.button->isChecked(); });
    return selected == m_buttons.end() ? std::nullopt : std::optional(selected->code);
}

void OptionFrame::Select(std::int32_t code) const {
    if (QRadioButton* button = Button(code)) {
        button->setChecked(true);
    }
}

void OptionFrame::Enable(std::int32_t code, bool enabled) const {
    if (QRadioButton* button = Button(code)) {
        button->setEnabled(enabled);
    }
}

QRadioButton* OptionFrame::Button(std::int32_t code) const {
    const auto coded = std::ranges::find(m_buttons, code, &Coded::code);
    return coded == m_buttons.end() ? nullptr : coded->button;
}

}  // namespace genvara
