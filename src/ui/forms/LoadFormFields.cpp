// The entry forms' fields: how they are made, and how they are read.

#include <QFocusEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>
#include <limits>
#include <utility>

#include "LoadForm.h"
#include "MemberBounds.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kCountDigits = 5;       // of a step number or a quantity
constexpr int kLeastTextWidth = 240;  // of name and description [pixels]

/// "Phase A - N / A - B" with the phase's own letter for its key.
QString PhaseCaption(std::int32_t id) {
    const QString caption = Caption(id);
    return QString(caption).insert(caption.indexOf(' ') + 1, '&');
}

}  // namespace

void LoadForm::AddCommonFields() {
    struct Row {
        std::int32_t caption;
        bool count;
        const char* labelName;
        const char* name;
        const char* toolTip;
        EntryField** field;
    };
    const char* description = m_kind->loadType == load_type::kLighting ? "txtDescription" : "txtDecription";
    const std::array<Row, 4> rows{
        {{form_strings::kStepNumber, true, "lblStepNum", "txtStepNum", "Load Step Number", &m_stepNum},
         {form_strings::kQuantity, true, "lblQty", "txtQty", "Number of Identical Loads", &m_qty},
         {form_strings::kName, false, "lblLoadName", "txtName", "Brief Name of Load", &m_name},
         {form_strings::kDescription, false, "lblDescription", description, "Detailed Description of Load",
          &m_description}}};
    for (const Row& row : rows) {
        EntryField* field = MakeField(row.name);
        *row.field = field;
        field->setToolTip(row.toolTip);
        if (row.count) {
            SetDigits(*field, kCountDigits);
            field->Filter(key_filters::Digits());
            field->CheckBeforeLeaving([field] { return ValidateNumericText(*field); });
            field->OnLeft([this, field] { field->Content(m_numbers.WholeText(field->Content())); });
        } else {
            field->setMinimumWidth(kLeastTextWidth);
            field->setMaxLength(std::numeric_limits<int>::max());
        }
        // The first letters are the keys of these four on every form.
        m_fields->AddField(row.labelName, '&' + Caption(row.caption), field);
    }
    m_stepNum->Bounds({.name = FromQt(Caption(form_strings::kStepNumber)),
                       .least = 1,
                       .most = static_cast<double>(m_services.project.profile.NumLoadSteps()),
                       .whole = true});
    NumberBounds quantity = LoadBounds(m_kind->loadType, "Quantity");
    quantity.name = FromQt(Caption(form_strings::kQuantity));
    m_qty->Bounds(std::move(quantity));
}

void LoadForm::AddPhases() {
    m_phases = new OptionFrame("fraPhases", Caption(form_strings::kPhases),
                               {{"opt3Phase", Caption(m_kind->balancedString), 0},
                                {"optPhaseA", PhaseCaption(form_strings::kPhaseA), 1},
                                {"optPhaseB", PhaseCaption(form_strings::kPhaseB), 2},
                                {"optPhaseC", PhaseCaption(form_strings::kPhaseC), 3}});
    m_side->addWidget(m_phases);
}

EntryField* LoadForm::MakeField(const QString& name) {
    auto* field = new EntryField(m_services.platform, name);
    field->installEventFilter(this);
    return field;
}

void LoadForm::SetUp(EntryField& field, const FieldLook& look, EntryField::KeyFilter filter) const {
    SetDigits(field, look.digits);
    field.Filter(std::move(filter));
    NumberBounds bounds = look.bounds;
    bounds.name = FromQt(WithoutMnemonic(look.caption));
    field.Bounds(std::move(bounds));
}

QLabel* LoadForm::MakeNote(const FieldLook& look) const {
    if (!look.note.isEmpty()) {
        return FormGrid::MakeNote(look.noteName, look.note);
    }
    return look.printsBounds ? FormGrid::MakeNote(look.noteName, ToQt(BoundsNote(look.bounds, m_numbers)))
                             : nullptr;
}

EntryField* LoadForm::AddField(const FieldLook& look, EntryField::KeyFilter filter, bool checked) {
    EntryField* field = MakeField(look.name);
    SetUp(*field, look, std::move(filter));
    if (checked) {
        field->CheckBeforeLeaving([field] { return ValidateNumericText(*field); });
    }
    m_fields->AddField(look.labelName, look.caption, field, MakeNote(look));
    return field;
}

LoadForm::Spinner LoadForm::AddSpinner(const FieldLook& look, EntryField::KeyFilter filter,
                                       const char* arrowsName) {
    EntryField* field = MakeField(look.name);
    SetUp(*field, look, std::move(filter));
    field->setAccessibleName(WithoutMnemonic(look.caption));
    auto* arrows = new UpDown(arrowsName, *field, StepsWithin(look.bounds));
    QWidget* pair = Beside(field, arrows);
    pair->setFocusProxy(nullptr);  // Tab would stop at the pair and at its field
    QLabel* note = MakeNote(look);
    QLabel* label = m_fields->AddField(look.labelName, look.caption, pair, note);
    label->setBuddy(field);
    return {.field = field, .arrows = arrows, .label = label, .note = note};
}

void LoadForm::Spinner::Enable(bool enabled) const {
    for (QWidget* widget : std::initializer_list<QWidget*>{field, arrows, label, note}) {
        widget->setEnabled(enabled);
    }
}

bool LoadForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn &&
        static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason) {
        // Behind the click that brings the focus, which would place the cursor and deselect.
        QMetaObject::invokeMethod(static_cast<QLineEdit*>(watched), &QLineEdit::selectAll,
                                  Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

double LoadForm::Number(EntryField& field) {
    m_current = &field;
    return m_numbers.Number(field.Content());
}

double LoadForm::FromKilo(EntryField& field) {
    m_current = &field;
    return m_numbers.FromKilo(field.Content());
}

std::int32_t LoadForm::Integer(EntryField& field) {
    m_current = &field;
    return m_numbers.Integer(field.Content());
}

}  // namespace genvara
