#pragma once

#include <vector>

#include "AnalysisPage.h"
#include "ExhibitDesk.h"
#include "StepCharts.h"

class QLabel;
class QScrollArea;

namespace genvara {

class ChartView;

/// What each step needs of one set, against what is there.
class StepsPage final : public AnalysisPage {
    Q_OBJECT

  public:
    explicit StepsPage(const ExhibitDesk& desk, QWidget* parent = nullptr);

    void Show(const AnalysisResult& result, int set) override;
    void Select(int set) override;
    void Stale() override;

    /// Brings the chart of a test into view and into the focus.
    void ShowTest(std::size_t test);

  private:
    void StepMarked(const ChartView* by, int step);

    AnalysisResult m_result;
    std::vector<ChartView*> m_views;
    QScrollArea* m_scroll;
    QLabel* m_step;
};

}  // namespace genvara
