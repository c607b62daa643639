#include "panRecommend.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPrinter>
#include <QSplitter>
#include <QVBoxLayout>

#include "AtomicFile.h"
#include "CApplication.h"
#include "ChoiceBox.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "GridView.h"
#include "LastChance.h"
#include "ReportSheets.h"
#include "ReportView.h"
#include "SetsGrid.h"
#include "SpecExport.h"
#include "Texts.h"
#include "WaitCursor.h"

namespace genvara {
namespace {

constexpr int kListCharacters = 30;
constexpr int kLeastTable = 96;  // pixels
constexpr int kTable = 190;      // pixels
constexpr std::int32_t kPrinterError = 482;

QString RowText(const std::string& model, const std::string& alternator) {
    return ToQt(model + " (" + alternator + ")");
}

}  // namespace

panRecommend::panRecommend(PlatformServices& platform, CApplication& application, ErrorLog& log,
                           Commands commands, QWidget* parent)
    : Panel("panRecommend", Caption(128), "lblProjName", parent),
      m_platform(&platform),
      m_application(&application),
      m_commands(std::move(commands)),
      m_reports(application.BrandLabel(), application.LoadProfile(), application.Now(), log),
      m_printSettings(application.Registry(), CApplication::BaseRegistrySubkey()),
      m_printSetup(m_printSettings.Read()),
      m_cboAvailGensets(new ChoiceBox("cboAvailGensets")),
      m_cboRejectedGensets(new ChoiceBox("cboRejectedGensets")),
      m_chkRejectedGensets(new QCheckBox("Undersized Gensets")),
      m_cboAvailReports(new ChoiceBox("cboAvailReports")),
      m_rtfRecommend(new ReportView),
      m_tblGensets(new GridView("tblGensets", GridView::Choose::Rows)),
      m_lblNoData(FormGrid::MakeNote("lblNoData")),
      m_exhibits({.platform = platform,
                  .printSetup = [this] { return m_printSetup; },
                  .projectName = [this] { return Heading(); },
                  .obstacle =
                      [this](const std::filesystem::path& file) {
                          return m_application->Document().OutputObstacle(file);
                      },
                  .clock = application.Now()}) {
    m_chkRejectedGensets->setObjectName("chkRejectedGensets");
    m_rtfRecommend->setObjectName("rtfRecommend");
    m_rtfRecommend->setAccessibleName(tr("Report"));
    m_cboRejectedGensets->setAccessibleName(m_chkRejectedGensets->text());
    m_cboAvailReports->AddRow("Genset Sizing", report_type::kSizing);
    m_cboAvailReports->AddRow("Load Summary", report_type::kLoadProfile);
    m_cboAvailReports->setCurrentIndex(0);
    Build();
    UsePrintSetup();
    ShowRejectedList(false);
    Wire();
}

void panRecommend::Build() {
    const auto label = [](const char* name, const char* text, QWidget* buddy) {
        auto* made = new QLabel(text);
        made->setObjectName(name);
        made->setBuddy(buddy);
        buddy->setAccessibleName(text);
        return made;
    };
    for (ChoiceBox* list : {m_cboAvailGensets, m_cboRejectedGensets}) {
        list->setMinimumContentsLength(kListCharacters);
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    }
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(metrics::kMargin);
    grid->setVerticalSpacing(metrics::kGap / 2);
    grid->addWidget(label("lblRecommendGensets", "Recommended Gensets", m_cboAvailGensets), 0, 0);
    grid->addWidget(m_cboAvailGensets, 1, 0);
    grid->addWidget(m_cboRejectedGensets, 1, 0);
    grid->addWidget(m_chkRejectedGensets, 1, 1);
    grid->addWidget(label("lblAvailReports", "Available Reports", m_cboAvailReports), 0, 2);
    grid->addWidget(m_cboAvailReports, 1, 2);
    grid->setColumnStretch(3, 1);
    m_lblNoData->setWordWrap(true);
    m_lblNoData->hide();
    m_tblGensets->setAccessibleName(tr("Listed gensets"));
    m_tblGensets->setMinimumHeight(kLeastTable);
    m_tblGensets->Stretch(kVerdictColumn, false);
    m_exhibits.AddCommands(*m_tblGensets, [this]() -> std::optional<Exhibit> {
        return Exhibit{.table = m_tblGensets->Shown()};
    });
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_tblGensets, m_cboAvailGensets, m_cboRejectedGensets}) {
        AddAnalysisCommand(*widget);
    }
    auto* reported = new QWidget;
    auto* column = new QVBoxLayout(reported);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_lblNoData);
    column->addWidget(m_rtfRecommend, 1);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setObjectName("splGensets");
    parts->addWidget(m_tblGensets);
    parts->addWidget(reported);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 3);
    parts->setChildrenCollapsible(false);
    parts->setSizes({kTable, kTable * 2});
    Content()->addLayout(grid);
    Content()->addWidget(parts, 1);
}

void panRecommend::AddAnalysisCommand(QWidget& widget) {
    auto* action = new QAction(tr("&Analysis\tF7"), &widget);
    action->setObjectName("actAnalysis");
    connect(action, &QAction::triggered, this, Event([this] { emit AnalysisAsked(); }));
    widget.addAction(action);
    widget.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void panRecommend::Wire() {
    connect(m_cboAvailGensets, &ChoiceBox::Clicked, this, Event([this](int row) { ChosenClicked(row); }));
    connect(m_cboRejectedGensets, &ChoiceBox::Clicked, this,
            Event([this](int row) { RejectedClicked(row); }));
    connect(m_cboAvailGensets, &ChoiceBox::Entered, this, Event([this] { FocusRule(); }));
    connect(m_cboAvailReports, &ChoiceBox::Clicked, this, Event([this] { ReportClicked(); }));
    connect(m_chkRejectedGensets, &QCheckBox::toggled, this, Event([this] { UndersizedClicked(); }));
    connect(m_tblGensets, &GridView::Chosen, this,
            Event([this](int row, int /*column*/) { TableClicked(row); }));
    connect(m_tblGensets, &GridView::Opened, this, Event([this] { emit AnalysisAsked(); }));
}

void panRecommend::ProjectName(const std::string& text) {
    Heading(ToQt(text));
}

void panRecommend::ShowRejectedList(bool rejected) {
    ChoiceBox* now = rejected ? m_cboRejectedGensets : m_cboAvailGensets;
    ChoiceBox* before = rejected ? m_cboAvailGensets : m_cboRejectedGensets;
    now->show();
    if (before->hasFocus()) {
        now->setFocus(Qt::OtherFocusReason);
    }
    before->hide();
}

void panRecommend::ClearReport() {
    {
        const QSignalBlocker quiet(m_chkRejectedGensets);
        m_chkRejectedGensets->setChecked(false);
    }
    ShowRejectedList(false);
    m_cboAvailGensets->clear();
    m_cboRejectedGensets->clear();
    m_tblGensets->Show({});
    m_lblNoData->hide();
    m_rtfRecommend->Clear();
}

void panRecommend::DisplayChosenSets() {
    const std::int32_t chosen = m_designer->NumChosenSets();
    const std::int32_t rejected = m_designer->NumRejectedSets();
    ClearReport();
    for (std::int32_t set = 0; set < rejected; ++set) {
        m_cboRejectedGensets->AddRow(RowText(m_designer->SetModelNumRej(set), m_designer->SetAltNumRej(set)));
    }
    for (std::int32_t set = 0; set < chosen; ++set) {
        m_cboAvailGensets->AddRow(RowText(m_designer->SetModelNum(set), m_designer->SetAltNum(set)));
    }
    m_tblGensets->Show(SetsGrid(*m_designer));
    if (chosen > 0) {
        m_cboAvailGensets->SelectRow(0);
    }
    FocusRule();
}

void panRecommend::TableClicked(int row) {
    const std::int32_t chosen = m_designer->NumChosenSets();
    const bool rejected = row >= chosen;
    // The box first, as a user would: it brings its list, and that list's own row and report.
    m_chkRejectedGensets->setChecked(rejected);
    ChoiceBox* list = rejected ? m_cboRejectedGensets : m_cboAvailGensets;
    const int wanted = rejected ? row - chosen : row;
    if (list->currentIndex() != wanted) {
        list->SelectRow(wanted);
    }
}

void panRecommend::MarkInTable(bool rejected, int row) {
    const QSignalBlocker quiet(m_tblGensets);
    m_tblGensets->ChooseRow(rejected ? row + m_designer->NumChosenSets() : row);
    const ChosenSet* set = ShownSet();
    m_lblNoData->setVisible(set != nullptr && !set->FreqDipAvail);
    if (set != nullptr) {
        m_lblNoData->setText(
            tr("No data: the catalogue says nothing of the frequency dip of %1, and no test asks for it.")
                .arg(ToQt(set->ModelNum)));
    }
}

void panRecommend::FocusRule() {
    if (m_designer == nullptr || m_designer->NumChosenSets() != 0) {
        return;
    }
    m_commands.enableExport(false);
    Report([this] {
        FillReportCommon(m_reports, Sources());
        return m_reports.CreateNoMatchReport();
    });
}

void panRecommend::ChosenClicked(int row) {
    if (row >= 0) {
        FillChosenSet(m_reports, Sources(), row);
        ShowReport(false);
        MarkInTable(false, row);
    }
}

void panRecommend::RejectedClicked(int row) {
    if (row >= 0) {
        FillRejectedSet(m_reports, Sources(), row);
        ShowReport(true);
        MarkInTable(true, row);
    }
}

void panRecommend::ShowReport(bool undersized) {
    const WaitCursor busy;
    const std::int32_t type = m_cboAvailReports->Code().value_or(report_type::kSizing);
    Report([&] { return m_reports.CreateReport(type, undersized); });
}

void panRecommend::ShowRichText(const std::string& report) {
    m_rtfRecommend->FooterName(ToQt(m_reports.Data().ProjectName));
    m_rtfRecommend->RichText(report);
}

void panRecommend::Report(const std::function<std::string()>& make) {
    FailureRegion region;
    const bool made = region.Run([&] { ShowRichText(make()); });
    m_commands.enableReport(made);
    if (!made) {
        m_rtfRecommend->Clear();
        m_platform->ShowMessage(this, {.text = m_application->Document().WhyNotReported(*region.Pending()),
                                       .icon = MessageIcon::Exclamation});
    }
}

void panRecommend::ReportClicked() {
    if (m_chkRejectedGensets->isChecked()) {
        RejectedClicked(m_cboRejectedGensets->currentIndex());
    } else {
        ChosenClicked(m_cboAvailGensets->currentIndex());
    }
}

void panRecommend::UndersizedClicked() {
    const bool rejected = m_chkRejectedGensets->isChecked();
    ShowRejectedList(rejected);
    if (!rejected) {
        FocusRule();
        ReportClicked();
    } else if (m_cboRejectedGensets->count() > 0) {
        m_commands.enableExport(true);
        m_cboRejectedGensets->SelectRow(0);
    }
}

ReportSources panRecommend::Sources() const {
    return m_application->Document().Sources(m_application->IsMetric());
}

std::size_t panRecommend::ExportSpec(const std::filesystem::path& path) const {
    return genvara::ExportSpec(path, m_reports, m_application->Project(), m_application->PowerSystem());
}

const ChosenSet* panRecommend::ShownSet() const {
    if (m_designer == nullptr) {
        return nullptr;
    }
    const bool rejected = m_chkRejectedGensets->isChecked();
    const int row = (rejected ? m_cboRejectedGensets : m_cboAvailGensets)->currentIndex();
    const auto index = static_cast<std::size_t>(row);
    if (row < 0 ||
        index >= (rejected ? m_designer->RejectedSets().size() : m_designer->ChosenSets().size())) {
        return nullptr;
    }
    return rejected ? &m_designer->RejectedSets()[index] : &m_designer->ChosenSets()[index];
}

bool panRecommend::HasReport() const {
    return !m_rtfRecommend->RichText().empty();
}

void panRecommend::PrintReport() {
    m_platform->Print(this, FromQt(Heading()), m_printSetup, [this](QPrinter& printer) {
        UsePrintSetup();
        const std::string file = FromQt(printer.outputFileName());
        if (!file.empty() && m_commands.refusesOutput(file)) {
            return;
        }
        if (!m_rtfRecommend->Print(printer)) {
            throw RaisedError(kPrinterError, "panRecommend::PrintReport", "Printer error");
        }
    });
}

void panRecommend::SetUpPrinter() {
    if (const auto chosen = m_platform->SetUpPrinter(this, m_printSetup, m_application->IsMetric())) {
        m_printSetup = *chosen;
        UsePrintSetup();
        FailureRegion region;  // one that cannot be kept holds for this session
        region.Run([this] { m_printSettings.Write(m_printSetup); });
    }
}

void panRecommend::UsePrintSetup() {
    m_rtfRecommend->Paper(ReportPage(m_printSetup));
}

void panRecommend::SaveReport(const std::filesystem::path& path) const {
    AtomicFile file(path);
    file.Write(m_rtfRecommend->RichText());
    file.Commit();
}

void panRecommend::SaveReportAsPdf(const std::filesystem::path& path) const {
    const WaitCursor busy;
    const QByteArray pdf = m_rtfRecommend->Pdf(m_application->Now()());
    if (pdf.isEmpty()) {
        throw RaisedError(kPrinterError, "panRecommend::SaveReportAsPdf", "The pages cannot be made.");
    }
    AtomicFile file(path);
    file.Write({pdf.constData(), static_cast<std::size_t>(pdf.size())});
    file.Commit();
}

}  // namespace genvara
