#include "LoadForm.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <new>

#include "DialogKeys.h"
#include "FailureRegion.h"
#include "LastChance.h"
#include "LoadFactory.h"
#include "LoadMessages.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr std::int32_t kOutOfMemory = 7;
constexpr const char* kErrorTitle = "ERROR";

}  // namespace

LoadForm::LoadForm(std::int32_t loadType, const LoadFormServices& services)
    : QDialog(services.owner),
      m_services(services),
      m_kind(FindLoadKind(loadType)),
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

void LoadForm::AddButtons() {
    const OkCancel buttons = MakeOkCancel();
    m_ok = buttons.ok;
    connect(m_ok, &QPushButton::clicked, this, Event([this] { Confirm(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_side->addStretch(1);
    AddFigures();
    layout()->addWidget(buttons.box);
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
    WatchEntries();
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
    if (HoldsOk() || !NamesAStep()) {
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
    if (!StoreInLoad(*trial) || !CanBeWorkedOut(*trial)) {
        return;
    }
    bool stored = false;
    m_services.host.Change("Edit Load " + trial->name(), [&] { stored = StoreInLoad(*m_load); });
    if (stored) {
        CloseStored();
    }
}

void LoadForm::ConfirmNew() {
    std::unique_ptr<Load> load = TryNewLoad();
    if (!load || !StoreInLoad(*load) || !CanBeWorkedOut(*load)) {
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

bool LoadForm::NamesAStep() {
    // The number of a step that is not there gets its message; what is no number at all has none of its own.
    return IsEdit() || m_stepNum->HoldsInteger() || !m_stepNum->RefuseOutOfBounds();
}

bool LoadForm::CanBeWorkedOut(const Load& load) {
    for (EntryField* field : m_enforced) {
        if (field->isEnabled() && field->RefuseOutOfBounds()) {
            return false;
        }
    }
    const std::optional<FailedFigure> failed = TryFigures(load);
    if (failed) {
        EntryField* field = FieldOf(failed->figure);
        field->Refuse(SentenceOn(*field, failed->failure.Description()));
    }
    return !failed;
}

QString LoadForm::SentenceOn(const EntryField& field, const std::string& fallback) {
    const QString complaint = field.Complaint();
    if (!complaint.isEmpty() || !field.Bounds()) {
        return complaint.isEmpty() ? ToQt(fallback) : complaint;
    }
    return tr("%1 %2: %3").arg(ToQt(field.Bounds()->name), ToQt(field.Content()), ToQt(fallback));
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
        stepNumber = m_numbers.Integer(m_stepNum->Content());
        const std::string name = "Add Load " + load->name();
        m_services.host.Change(
            name, [&] { loadId = Project().profile.LoadStep(stepNumber).AddLoad(std::move(load)); });
        return true;
    } catch (const RaisedError& failure) {
        m_stepNum->ShowError(SentenceOn(*m_stepNum, failure.Description()));
        ShowError(AddFailureText(failure));
        m_stepNum->SelectAllText();
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
        return Fill(load);
    } catch (const RaisedError& failure) {
        ReportStore(failure);
        return false;
    }
}

bool LoadForm::Fill(Load& load) {
    const std::string name = Trimmed(m_name->Content());
    load.name(name.empty() ? std::string(m_kind->defaultName) : name);
    load.Description(m_description->Content());
    load.Phases(m_phases->Code().value_or(0));
    return StoreInputs(load);
}

void LoadForm::ReportStore(const RaisedError& failure) {
    const std::string text = FailureText(failure);
    if (m_current != nullptr) {
        m_current->ShowError(SentenceOn(*m_current, failure.Description()));
    }
    if (!text.empty()) {
        ShowError(text);
    } else {
        m_services.platform.Beep();
    }
    if (m_current != nullptr) {
        m_current->SelectAllText();
    }
}

std::string LoadForm::FailureText(const RaisedError& failure) const {
    return StoreFailureText(*m_kind, failure, m_current == nullptr ? std::string() : m_current->Content());
}

MessageAnswer LoadForm::ShowError(const std::string& text, MessageButtons buttons) {
    return m_services.platform.ShowMessage(
        this, {.text = text, .icon = MessageIcon::Stop, .title = kErrorTitle, .buttons = buttons});
}

}  // namespace genvara
