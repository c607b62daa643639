#pragma once

#include <memory>
#include <string>
#include <vector>

#include "AnalysisPage.h"
#include "BackgroundStudy.h"
#include "ExhibitDesk.h"
#include "WhatIfFigures.h"

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace genvara {

class AxisRow;
class ChartView;
class GridView;

/// What the smallest set would be if one value, or two, were others.
class WhatIfPage final : public AnalysisPage {
    Q_OBJECT

  public:
    explicit WhatIfPage(const ExhibitDesk& desk, QWidget* parent = nullptr);

    void Show(const AnalysisResult& result, int set) override;
    void Select(int set) override;
    void Stale() override;

    /// What was worked out last, while it holds.
    [[nodiscard]] std::shared_ptr<const SweepAnswer> Answer() const { return m_answer; }
    [[nodiscard]] BackgroundStudy& Study() noexcept { return m_study; }

  private:
    /// What a study comes to: an answer, or why there is none.
    struct Outcome {
        std::shared_ptr<const SweepAnswer> answer;
        QString failure;
    };

    void Build(const ExhibitDesk& desk);
    /// The axes as they are entered; nothing where they cannot be taken, which is told.
    [[nodiscard]] std::optional<std::vector<SweepAxis>> Axes();
    void Begin();
    void Take(const Outcome& outcome);
    void Note(const QString& text);
    void ShowAnswer();
    void RefreshButtons();

    AnalysisResult m_result;
    int m_set = -1;
    bool m_hasAsked = false;  ///< somebody has asked, and wants the answer for each change of the project
    std::shared_ptr<const SweepAnswer> m_answer;
    BackgroundStudy m_study;
    AxisRow* m_first;
    AxisRow* m_second;
    QCheckBox* m_exact;
    QPushButton* m_work;
    QPushButton* m_cancel;
    QProgressBar* m_progress;
    QLabel* m_note;
    ChartView* m_chart;
    GridView* m_points;
};

}  // namespace genvara
