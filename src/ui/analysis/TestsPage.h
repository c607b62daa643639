#pragma once

#include "AnalysisPage.h"
#include "ExhibitDesk.h"

class QLabel;

namespace genvara {

class GridView;

/// The sets across, the tests down: how far each set is from each limit.
class TestsPage final : public AnalysisPage {
    Q_OBJECT

  public:
    explicit TestsPage(const ExhibitDesk& desk, QWidget* parent = nullptr);

    void Show(const AnalysisResult& result, int set) override;
    void Select(int set) override;
    void Stale() override;

  private:
    void ShowCell(int test, int set);

    AnalysisResult m_result;
    GridView* m_grid;
    QLabel* m_counts;
    QLabel* m_cell;
};

}  // namespace genvara
