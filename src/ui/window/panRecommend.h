#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "CDesigner.h"
#include "CReports.h"
#include "ExhibitDesk.h"
#include "Panel.h"
#include "PlatformServices.h"
#include "PrintSetup.h"
#include "ReportFiller.h"

class QCheckBox;
class QLabel;

namespace genvara {

class CApplication;
class ChoiceBox;
class GridView;
class ReportView;

/// The recommended and the undersized sets, and the report of the one that is selected.
class panRecommend final : public Panel {
    Q_OBJECT

  public:
    /// What the panel asks of the main window.
    struct Commands {
        std::function<void(bool)> enableExport;
        std::function<void(bool)> enableReport;  ///< of the commands that print or save what is shown
        /// Whether a file must not be written, which the user is told.
        std::function<bool(const std::string&)> refusesOutput;
    };

    /// Everything outlives the panel.
    panRecommend(PlatformServices& platform, CApplication& application, ErrorLog& log, Commands commands,
                 QWidget* parent = nullptr);

    void ProjectName(const std::string& text);

    /// The designer whose sets are listed; it outlives the panel.
    void Designer(CDesigner& designer) noexcept { m_designer = &designer; }

    /// Lists the sets of the last run and reports on the first one, or on the failed search.
    void DisplayChosenSets();
    /// Writes the spec of the set that was reported on last.
    /// @return characters that the file's code page could not hold: each stands there as a question mark.
    /// @throws RaisedError with the system's number.
    std::size_t ExportSpec(const std::filesystem::path& path) const;
    /// Whether anything is shown.
    [[nodiscard]] bool HasReport() const;
    /// Prints the whole report.
    /// @throws RaisedError 482 of the printer.
    void PrintReport();
    /// Lets the user choose printer, paper and margins, which hold for view, print and PDF file.
    void SetUpPrinter();
    /// Saves the report's very bytes.
    /// @throws RaisedError with the system's number; the old file is then whole.
    void SaveReport(const std::filesystem::path& path) const;
    /// Saves the report as a PDF file, with the pages that are shown.
    /// @throws RaisedError with the system's number; 482 if it cannot be made. The old file is then whole.
    void SaveReportAsPdf(const std::filesystem::path& path) const;
    void ClearReport();

    /// Copies, saves and prints tables and charts on the paper of the reports.
    [[nodiscard]] const ExhibitDesk& Exhibits() const noexcept { return m_exhibits; }
    /// The set that is chosen in the list at hand; null without one.
    [[nodiscard]] const ChosenSet* ShownSet() const;

  signals:
    /// The analysis of the chosen set is asked for.
    void AnalysisAsked();

  private:
    void Build();
    void AddAnalysisCommand(QWidget& widget);
    void Wire();
    void ShowRejectedList(bool rejected);
    void ChosenClicked(int row);
    void RejectedClicked(int row);
    void ReportClicked();
    void UndersizedClicked();
    /// A row of the table was chosen: chooses its set in the list.
    void TableClicked(int row);
    /// Marks the set of a list's row in the table, and tells what data it lacks.
    void MarkInTable(bool rejected, int row);
    void FocusRule();
    /// Works out a report; one that cannot be is told, and leaves an empty view.
    void Report(const std::function<std::string()>& make);
    void ShowReport(bool undersized);
    void ShowRichText(const std::string& report);
    void UsePrintSetup();
    [[nodiscard]] ReportSources Sources() const;

    PlatformServices* m_platform;
    CApplication* m_application;
    Commands m_commands;
    CDesigner* m_designer = nullptr;
    CReports m_reports;
    PrintSettings m_printSettings;
    PrintSetup m_printSetup;
    ChoiceBox* m_cboAvailGensets;
    ChoiceBox* m_cboRejectedGensets;
    QCheckBox* m_chkRejectedGensets;
    ChoiceBox* m_cboAvailReports;
    ReportView* m_rtfRecommend;
    GridView* m_tblGensets;
    QLabel* m_lblNoData;
    ExhibitDesk m_exhibits;
};

}  // namespace genvara
