#include "frmOptions.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "CApplication.h"
#include "DialogKeys.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "Texts.h"
#include "UpDown.h"

namespace genvara {
namespace {

/// Digits that a number field takes, and those of the undersized sets.
constexpr std::size_t kMostDigits = 3;
constexpr std::size_t kUndersizedDigits = 2;
constexpr int kPathWidth = 300;  // pixels
constexpr int kNumberDigits = 4;

}  // namespace

frmOptions::frmOptions(PlatformServices& platform, CApplication& application,
                       std::function<void(bool)> unitsChanged, QWidget* owner)
    : QDialog(owner),
      m_platform(&platform),
      m_application(&application),
      m_unitsChanged(std::move(unitsChanged)),
      m_txtProjPath(new EntryField(platform, "txtProjPath")),
      m_optEnglish(new QRadioButton("&English")),
      m_optMetric(new QRadioButton("&Metric")) {
    setObjectName("frmOptions");
    setWindowTitle(Caption(320));
    auto* grid = new FormGrid;
    AddPath(*grid);
    m_txtNumGensets =
        AddNumber(*grid, {"txtNumGensets", "updNumGensets", "lblNumGensets"}, Caption(323), {1, 32, 1});
    m_txtNumUndersized = AddNumber(*grid, {"txtNumUndersized", "updNumUndersized", "lblNumUndersized"},
                                   "Max. Number of Undersized Gensets Shown", {0, 8, 1});
    m_txtMaxLoad = AddNumber(*grid, {"txtMaxLoad", "updMaxLoad", "lblMaxLoad"}, Caption(324), {0, 100, 1});
    m_txtMinLoad = AddNumber(*grid, {"txtMinLoad", "updMinLoad", "lblMinLoad"}, Caption(325), {0, 100, 1});
    m_txtNumUndersized->Filter(key_filters::DigitsUpTo(kUndersizedDigits));
    const OkCancel buttons = MakeOkCancel();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addLayout(grid);
    column->addWidget(MakeUnits());
    column->addStretch(1);
    column->addWidget(buttons.box);
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { OkClicked(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    MarkMnemonics(*this);
    OrderTabsByLayout(*this);
    ShowOptions();
}

void frmOptions::AddPath(FormGrid& grid) {
    auto* browse = new QPushButton(Caption(322));
    browse->setObjectName("cmdBrowseProjPath");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, Event([this] { BrowseClicked(); }));
    m_txtProjPath->setMinimumWidth(kPathWidth);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(metrics::kGap);
    row->addWidget(m_txtProjPath, 1);
    row->addWidget(browse);
    line->setFocusProxy(m_txtProjPath);
    m_txtProjPath->setAccessibleName(Caption(321));
    grid.AddField("lblProjPath", Caption(321), line);
}

EntryField* frmOptions::AddNumber(FormGrid& grid, const NumberNames& names, const QString& caption,
                                  UpDown::Range range) {
    auto* field = new EntryField(*m_platform, names.field);
    field->Filter(key_filters::DigitsUpTo(kMostDigits));
    field->Bounds({.name = FromQt(caption),
                   .least = static_cast<double>(range.least),
                   .most = static_cast<double>(range.most),
                   .whole = true});
    field->setAccessibleName(caption);
    SetDigits(*field, kNumberDigits);
    auto* arrows = new UpDown(names.arrows, *field, range);
    QLabel* bounds = FormGrid::MakeNote({}, ToQt(BoundsNote(*field->Bounds(), EntryNumbers())));
    grid.AddField(names.label, caption, Beside(field, arrows, bounds));
    return field;
}

QWidget* frmOptions::MakeUnits() {
    m_optEnglish->setObjectName("optEnglish");
    m_optMetric->setObjectName("optMetric");
    auto* frame = new QGroupBox("Units");
    frame->setObjectName("fraUnits");
    auto* line = new QHBoxLayout(frame);
    line->setSpacing(metrics::kMargin);
    line->addWidget(m_optEnglish);
    line->addWidget(m_optMetric);
    line->addStretch(1);
    return frame;
}

void frmOptions::ShowOptions() {
    const CDesigner& designer = m_application->Designer();
    m_txtMinLoad->setText(QString::number(designer.MinLoading()));
    m_txtMaxLoad->setText(QString::number(designer.MaxLoading()));
    m_txtNumGensets->setText(QString::number(designer.MaxSetsRecommended()));
    m_txtNumUndersized->setText(QString::number(designer.MaxSetsUndersized()));
    m_txtProjPath->Content(m_application->ProjectPath());
    m_optMetric->setChecked(m_application->IsMetric());
    m_optEnglish->setChecked(!m_application->IsMetric());
}

void frmOptions::BrowseClicked() {
    const std::string folder =
        m_platform->BrowseForFolder(this, "Choose Directory", m_txtProjPath->Content());
    if (!folder.empty()) {
        m_txtProjPath->Content(folder);
    }
}

void frmOptions::OkClicked() {
    for (EntryField* field : {m_txtNumGensets, m_txtNumUndersized, m_txtMaxLoad, m_txtMinLoad}) {
        if (field->RefuseOutOfBounds()) {
            return;
        }
    }
    const EntryNumbers numbers;
    if (numbers.Integer(m_txtMaxLoad->Content()) < numbers.Integer(m_txtMinLoad->Content())) {
        constexpr const char* kCrossed = "Minimum loading can not be greater than maximum loading.";
        m_txtMaxLoad->ShowError(kCrossed);
        m_platform->ShowMessage(
            this, {.text = kCrossed, .icon = MessageIcon::Exclamation, .title = FromQt(Caption(320))});
        m_txtMaxLoad->setFocus();
        return;
    }
    Store();
    m_unitsChanged(m_application->IsMetric());
    accept();
}

void frmOptions::Store() {
    CDesigner& designer = m_application->Designer();
    const EntryNumbers numbers;
    FailureRegion region;  // a value that is refused leaves the former one
    region.Run([&] { designer.MaxLoading(numbers.Integer(m_txtMaxLoad->Content())); });
    region.Run([&] { designer.MinLoading(numbers.Integer(m_txtMinLoad->Content())); });
    region.Run([&] { designer.MaxSetsRecommended(numbers.Integer(m_txtNumGensets->Content())); });
    region.Run([&] { designer.MaxSetsUndersized(numbers.Integer(m_txtNumUndersized->Content())); });
    m_application->ProjectPath(m_txtProjPath->Content());
    m_application->IsMetric(m_optMetric->isChecked());
}

}  // namespace genvara
