#include "InputTypeList.h"

#include <QEvent>
#include <QLabel>

#include "ChoiceBox.h"
#include "FormGrid.h"
#include "InputTypes.h"

namespace genvara {
namespace {

constexpr int kTypeDigits = 12;  // width of the list

}  // namespace

void InputTypeList::EnableTypes(bool enabled) const {
    label->setEnabled(enabled);
    types->setEnabled(enabled);
}

void FilterBox::Tick(bool on) {
    m_wanted = on;
    setChecked(on && isEnabled());
}

void FilterBox::changeEvent(QEvent* event) {
    QCheckBox::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        if (!isEnabled()) {
            m_wanted = isChecked();
        }
        setChecked(m_wanted && isEnabled());
    }
}

InputTypeList AddInputTypes(FormGrid& grid, const QString& caption, const QString& filterCaption) {
    InputTypeList list{.types = new ChoiceBox("cboType"), .filter = new FilterBox(filterCaption)};
    for (const InputTypeRow& row : kInputTypes) {
        list.types->AddRow(row.text, row.code);
    }
    list.types->SelectRow(0);
    SetDigits(*list.types, kTypeDigits);
    list.filter->setObjectName("chkInputFilter");
    list.label = grid.AddField("lblType", caption, list.types);
    grid.addWidget(list.filter, grid.rowCount(), 1, 1, 2);
    return list;
}

}  // namespace genvara
