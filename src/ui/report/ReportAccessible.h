#pragma once

namespace genvara {

class ReportView;

/// Lets screen readers read report views, line by line and with their selection. Does nothing when called
/// again.
void InstallReportAccessibility();
/// Tells screen readers that a view shows another report.
void AnnounceReport(ReportView& view);
/// Tells screen readers what a view has selected now.
void AnnounceSelection(ReportView& view, int from, int to);

}  // namespace genvara
