#include "LoadForm.h"

#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>
#include <limits>
#include <new>

#include "DialogKeys.h"
#include "EntryText.h"
#include "FailureRegion.h"
#include "KeyFilters.h"
#include "LanguageErrors.h"
#include "LastChance.h"
#include "LoadFactory.h"
#include "LoadMessages.h"
#include "NumberText.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kCountDigits = 5;       // of a step number or a quantity
constexpr int kLeastTextWidth = 240;  // of name and description [pixels]
constexpr std::int32_t kOutOfMemory = 7;
constexpr const char* kErrorTitle = "ERROR";

}  // namespace

LoadForm::LoadForm(std::int32_t loadType, const LoadFormServices& services)
    : QDialog(services.owner),
      m_services(services),
      m_kind(FindLoadKind(loadType)),
      m_separator(DecimalSeparator()),
      m_fields(new FormGrid),
      m_side(new QVBoxLayout),
      m_below(new QHBoxLayout) {
    setObjectName(ToQt(m_kind->form));
    setWindowTitle(ToQt(m_kind->title));
    setModal(true);
    auto* top = new QHBoxLayout;
    top->setSpacing(metrics::kMargin);
    top->addLayout(m_fields, 1);
    top->setAlignment(m_fields, Qt::AlignTop);
    top->addLayout(m_side);
    m_side->setSpacing(metrics::kGap);
    m_below->setSpacing(metrics::kGap);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addLayout(top);
    column->addLayout(m_below);
    column->addStretch(1);
    AddCommonFields();
    AddPhases();
    FailureRegion region;
    region.Run([this] { m_systemPhases = m_services.host.Phases(); });
}

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
            field->OnLeft([this, field] { field->Content(WholeNumberText(field->Content(), m_separator)); });
        } else {
            field->setMinimumWidth(kLeastTextWidth);
            field->setMaxLength(std::numeric_limits<int>::max());
        }
        // The first letters are the keys of these four on every form.
        m_fields->AddField(row.labelName, '&' + Caption(row.caption), field);
    }
}

void LoadForm::AddPhases() {
    m_phases = new OptionFrame("fraPhases", Caption(form_strings::kPhases),
                               {{"opt3Phase", Caption(m_kind->balancedString), 0},
                                {"optPhaseA", Caption(form_strings::kPhaseA), 1},
                                {"optPhaseB", Caption(form_strings::kPhaseB), 2},
                                {"optPhaseC", Caption(form_strings::kPhaseC), 3}});
    m_side->addWidget(m_phases);
}

void LoadForm::AddButtons() {
    const OkCancel buttons = MakeOkCancel();
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { Confirm(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_side->addStretch(1);
    layout()->addWidget(buttons.box);
}

EntryField* LoadForm::MakeField(const QString& name) {
    auto* field = new EntryField(m_services.platform, name);
    field->installEventFilter(this);
    return field;
}

EntryField* LoadForm::AddField(const FieldLook& look, EntryField::KeyFilter filter, bool checked) {
    EntryField* field = MakeField(look.name);
    SetDigits(*field, look.digits);
    field->Filter(std::move(filter));
    if (checked) {
        field->CheckBeforeLeaving([field] { return ValidateNumericText(*field); });
    }
    m_fields->AddField(look.labelName, look.caption, field,
                       look.note.isEmpty() ? nullptr : FormGrid::MakeNote(look.noteName, look.note));
    return field;
}

LoadForm::Spinner LoadForm::AddSpinner(const FieldLook& look, EntryField::KeyFilter filter,
                                       const char* arrowsName, UpDown::Range range) {
    EntryField* field = MakeField(look.name);
    SetDigits(*field, look.digits);
    field->Filter(std::move(filter));
    field->setAccessibleName(WithoutMnemonic(look.caption));
    auto* arrows = new UpDown(arrowsName, *field, range);
    QWidget* pair = Beside(field, arrows);
    pair->setFocusProxy(nullptr);  // Tab would stop at the pair and at its field
    QLabel* note = FormGrid::MakeNote(look.noteName, look.note);
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

void LoadForm::OpenForNewLoad() {
    AddButtons();
    OrderTabsByLayout(*this);
    MarkMnemonics(*this);
    FailureRegion region;
    region.Run([this] {
        m_stepNum->Content(std::to_string(m_services.host.SelectedStep()));
        m_qty->Content("1");
    });
    if (region.Pending()) {
        m_stepNum->clear();
        m_qty->clear();
    }
    region.Run([this] { ShowPhasesOffered(); });
    region.Run([this] { SetDefaults(); });
}

void LoadForm::ShowPhasesOffered() {
    const PhaseChoice choice = PhasesOffered(m_systemPhases);
    for (const std::int32_t code : {0, 2, 3}) {
        m_phases->Enable(code, !choice.single);
    }
    m_phases->Select(choice.selected);
}

void LoadForm::CurrentLoad(Load& load, std::int32_t stepNumber) {
    m_stepNum->Content(std::to_string(stepNumber));
    m_description->Content(load.Description());
    m_name->Content(load.name());
    m_qty->Content(std::to_string(load.Quantity()));
    m_phases->Select(load.Phases());
    ShowInputs(load);
    m_load = &load;
}

void LoadForm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_activated) {
        m_activated = true;
        Activate();
    }
}

void LoadForm::Activate() {
    m_stepNum->setReadOnly(IsEdit());
    m_stepNum->setFocusPolicy(IsEdit() ? Qt::NoFocus : Qt::StrongFocus);
    EntryField* first = Trimmed(m_stepNum->Content()).empty() ? m_stepNum : m_qty;
    first->SelectAllText();
}

void LoadForm::done(int result) {
    m_load = nullptr;
    QDialog::done(result);
}

void LoadForm::Confirm() {
    if (HoldsOk()) {
        return;
    }
    if (IsEdit()) {
        ConfirmEdit();
    } else {
        ConfirmNew();
    }
}

void LoadForm::ConfirmEdit() {
    // A store that fails half-way must not leave its first half in a load that Cancel then promises to have
    // let alone: it is tried on another load first.
    const std::unique_ptr<Load> trial = NewLoad();
    if (StoreInLoad(*trial) && StoreInLoad(*m_load)) {
        CloseStored();
    }
}

void LoadForm::ConfirmNew() {
    std::unique_ptr<Load> load = TryNewLoad();
    if (!load || !StoreInLoad(*load)) {
        return;
    }
    std::int32_t stepNumber = 0;
    std::int32_t loadId = 0;
    if (!AddToStep(std::move(load), stepNumber, loadId)) {
        return;
    }
    Display(stepNumber, loadId);
    CloseStored();
}

std::unique_ptr<Load> LoadForm::NewLoad() const {
    return MakeLoad(m_kind->loadType, Project().catalogue.Motors());
}

std::unique_ptr<Load> LoadForm::TryNewLoad() {
    std::string text;
    try {
        return NewLoad();
    } catch (const RaisedError& failure) {
        text = CreateFailureText(failure);
    } catch (const std::bad_alloc&) {
        text = CreateFailureText(RaisedError(kOutOfMemory, std::string(m_kind->form), "Out of memory"));
    }
    if (ShowError(text, MessageButtons::YesNo) == MessageAnswer::No) {
        reject();
    }
    return nullptr;
}

bool LoadForm::AddToStep(std::unique_ptr<Load> load, std::int32_t& stepNumber, std::int32_t& loadId) {
    try {
        stepNumber = IntegerOf(m_stepNum->Content(), m_separator);
        loadId = Project().profile.LoadStep(stepNumber).AddLoad(std::move(load));
        return true;
    } catch (const RaisedError& failure) {
        ShowError(AddFailureText(failure));
        return false;
    }
}

void LoadForm::Display(std::int32_t stepNumber, std::int32_t loadId) {
    try {
        m_services.host.DisplayNewLoad(stepNumber, loadId);
    } catch (const RaisedError& failure) {
        ShowError(DisplayFailureText(failure));
    }
}

void LoadForm::CloseStored() {
    m_services.host.ProjectChanged();
    accept();
}

bool LoadForm::StoreInLoad(Load& load) {
    if (m_current != nullptr) {
        m_current->ClearError();
    }
    m_current = nullptr;
    try {
        m_name->Content(Trimmed(m_name->Content()));
        const std::string name = m_name->Content();
        load.name(name.empty() ? std::string(m_kind->defaultName) : name);
        load.Description(m_description->Content());
        load.Phases(m_phases->Code().value_or(0));
        return StoreInputs(load);
    } catch (const RaisedError& failure) {
        ReportStore(failure);
        return false;
    }
}

void LoadForm::ReportStore(const RaisedError& failure) {
    const std::string text = FailureText(failure);
    if (text.empty()) {
        return;
    }
    ShowError(text);
    if (m_current != nullptr) {
        m_current->SelectAllText();
        m_current->ShowError(ToQt(text).replace("\r\n", ": "));
    }
}

std::string LoadForm::FailureText(const RaisedError& failure) const {
    return StoreFailureText(*m_kind, failure, m_current == nullptr ? std::string() : m_current->Content());
}

MessageAnswer LoadForm::ShowError(const std::string& text, MessageButtons buttons) {
    return m_services.platform.ShowMessage(
        this, {.text = text, .icon = MessageIcon::Stop, .title = kErrorTitle, .buttons = buttons});
}

double LoadForm::Number(EntryField& field) {
    m_current = &field;
    return NumberOf(field.Content(), m_separator);
}

double LoadForm::Kilo(EntryField& field) {
    return Finite(Number(field) * kPerKilo, "LoadForm::Kilo");
}

std::int32_t LoadForm::Integer(EntryField& field) {
    m_current = &field;
    return IntegerOf(field.Content(), m_separator);
}

std::string LoadForm::Plain(double value) const {
    return Shown(RenderPlain(value), m_separator);
}

std::string LoadForm::Fixed(double value, int decimals) const {
    return Shown(RenderFixed(value, decimals), m_separator);
}

}  // namespace genvara
