#include "frmSSCurrentLimit.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "DialogKeys.h"
#include "EntryField.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "MemberBounds.h"
#include "MotorCalculator.h"
#include "Texts.h"
#include "frmMtrLoad.h"

namespace genvara {
namespace {

constexpr std::int32_t kQueryString = 760;
constexpr int kLimitDigits = 5;

}  // namespace

frmSSCurrentLimit::frmSSCurrentLimit(QWidget* owner, PlatformServices& platform)
    : QDialog(owner), m_limit(new EntryField(platform, "txtCurrentLimit")) {
    setObjectName("frmSSCurrentLimit");
    setWindowTitle("Solid State Starter");
    setModal(true);
    SetDigits(*m_limit, kLimitDigits);
    m_limit->Filter(key_filters::Digits());
    NumberBounds bounds = LoadBounds(load_type::kMotor, "SolidStateCurrentLimit");
    bounds.name = FromQt(tr("Starting current"));
    bounds.whole = false;  // a fraction is rounded
    m_limit->Bounds(std::move(bounds));
    m_limit->CheckBeforeLeaving([this] { return IsBad(); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    auto* fields = new FormGrid;
    fields->AddField("lblQuery", Caption(kQueryString), m_limit,
                     FormGrid::MakeNote("lblLimits", ToQt(BoundsNote(*m_limit->Bounds(), EntryNumbers()))));
    column->addLayout(fields);
    const OkCancel buttons = MakeOkCancel();
    column->addWidget(buttons.box);
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { Confirm(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    OrderTabsByLayout(*this);
    MarkMnemonics(*this);
    m_limit->SelectAllText();
}

void frmSSCurrentLimit::ParentForm(frmMtrLoad& form) {
    m_parentForm = &form;
    m_limit->Content(std::to_string(form.SolidStateCurrentLimit()));
    m_limit->SelectAllText();
}

bool frmSSCurrentLimit::IsBad() {
    const bool bad = !ParseCurrentLimit(m_limit->Content(), EntryNumbers());
    if (bad) {
        m_limit->ShowError(m_limit->Complaint());
    } else {
        m_limit->ClearError();
    }
    return bad;
}

void frmSSCurrentLimit::Confirm() {
    if (IsBad()) {
        m_limit->SelectAllText();
        return;
    }
    if (m_parentForm != nullptr) {
        m_parentForm->SolidStateCurrentLimit(*ParseCurrentLimit(m_limit->Content(), EntryNumbers()));
    }
    accept();
}

}  // namespace genvara
