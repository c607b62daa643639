#include "StepDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "DialogKeys.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "MemberBounds.h"
#include "SiteControls.h"
#include "Texts.h"
#include "UpDown.h"

namespace genvara {
namespace {

constexpr int kDipDigits = 4;
constexpr int kDescriptionWidth = 280;  // pixels

}  // namespace

StepDialog::StepDialog(PlatformServices& platform, const CPwrSys& site, const QString& caption,
                       const char* descriptionField, QWidget* owner)
    : QDialog(owner),
      m_platform(&platform),
      m_site(&site),
      m_txtDip(new EntryField(platform, "txtDefaultMaxVoltDip")),
      m_updDip(new UpDown("updDefaultMaxVoltDip", *m_txtDip,
                          StepsWithin(StepDipBounds(site.MaxVoltageDip()), kLimitStep))),
      m_txtDescription(new EntryField(platform, descriptionField)),
      m_lblRange(FormGrid::MakeNote("lblRange")) {
    setWindowTitle(caption);
    m_txtDip->Filter(key_filters::Digits());
    NumberBounds dip = StepDipBounds(site.MaxVoltageDip());
    dip.name = FromQt(Caption(172));
    m_txtDip->Bounds(std::move(dip));
    m_lblRange->setText(ToQt(BoundsNote(*m_txtDip->Bounds(), EntryNumbers())));
    SetDigits(*m_txtDip, kDipDigits);
    m_txtDescription->setMinimumWidth(kDescriptionWidth);
    MaxVoltDip(site.MaxVoltageDip());
}

void StepDialog::Build(QWidget* firstField, const QString& firstCaption, const char* firstLabel) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    auto* grid = new FormGrid;
    if (firstField != nullptr) {
        grid->AddField(firstLabel, firstCaption, firstField);
    } else {
        m_txtDip->OnEntered([this] { m_txtDip->selectAll(); });  // the next entry replaces it
    }
    m_txtDip->setAccessibleName(WithoutMnemonic(Caption(172)));
    grid->AddField("lblMaxVoltDip", Caption(172), Beside(m_txtDip, m_updDip, m_lblRange));
    grid->AddField("lblDescription", Caption(173), m_txtDescription);
    column->addLayout(grid);
    column->addStretch(1);
    const OkCancel buttons = MakeOkCancel();
    column->addWidget(buttons.box);
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { OkClicked(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    OrderTabsByLayout(*this);
    MarkMnemonics(*this);
}

std::string StepDialog::Description() const {
    return m_txtDescription->Content();
}

void StepDialog::Description(const std::string& text) {
    m_txtDescription->Content(text);
}

std::int32_t StepDialog::MaxVoltDip() const {
    return EntryNumbers().Integer(m_txtDip->Content());
}

void StepDialog::MaxVoltDip(std::int32_t percent) {
    m_txtDip->setText(QString::number(percent));
}

void StepDialog::Change(const std::string& name, const std::function<void()>& change) const {
    if (m_changer) {
        m_changer(name, change);
    } else {
        change();
    }
}

void StepDialog::OkClicked() {
    // A number out of bounds gets its message; what is no number has none of its own.
    if (HoldsOk() || (!m_txtDip->HoldsInteger() && m_txtDip->RefuseOutOfBounds())) {
        return;
    }
    try {
        if (!m_txtDip->Complaint().isEmpty()) {
            m_txtDip->ShowError(m_txtDip->Complaint());
        }
        if (MaxVoltDip() > m_site->MaxVoltageDip()) {
            m_platform->ShowMessage(
                this, {.text = "Load step voltage dip can not exceed\r\npower system voltage dip limit.",
                       .icon = MessageIcon::Exclamation});
            m_txtDip->SelectAllText();
            return;
        }
        Apply();
        accept();
    } catch (const RaisedError& failure) {
        m_platform->ShowMessage(this,
                                {.text = failure.Description(), .icon = MessageIcon::Stop, .title = "ERROR"});
        if (m_txtDip->InError()) {
            m_txtDip->SelectAllText();
        }
    }
}

}  // namespace genvara
