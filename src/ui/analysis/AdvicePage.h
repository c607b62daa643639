#pragma once

#include <memory>
#include <optional>

#include "Advise.h"
#include "AnalysisHost.h"
#include "AnalysisPage.h"
#include "BackgroundStudy.h"
#include "ExhibitDesk.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace genvara {

class GridView;

/// What would let a smaller set do, and what a chosen advice changes.
class AdvicePage final : public AnalysisPage {
    Q_OBJECT

  public:
    AdvicePage(AnalysisHost& host, const ExhibitDesk& desk, QWidget* parent = nullptr);

    void Show(const AnalysisResult& result, int set) override;
    void Select(int set) override;
    void Stale() override;

    /// The list, once it has been worked out; null before.
    [[nodiscard]] std::shared_ptr<const AdviceList> List() const { return m_isFresh ? m_list : nullptr; }
    [[nodiscard]] BackgroundStudy& Study() noexcept { return m_study; }

  private:
    /// What a study comes to: a list, or why there is none.
    struct Outcome {
        std::shared_ptr<const AdviceList> list;
        QString failure;
    };

    QWidget* MakeButtons();
    void Begin(bool pairs);
    void Take(const Outcome& outcome, bool pairs);
    void ShowList();
    void ShowChosen();
    void ShowNow();
    void RefreshButtons();
    void Apply();
    [[nodiscard]] const Advice* Chosen() const;

    AnalysisHost* m_host;
    AnalysisResult m_result;
    int m_set = -1;
    std::shared_ptr<const AdviceList> m_list;
    bool m_isFresh = false;  ///< the list is of the project as it stands
    bool m_hasPairs = false;
    BackgroundStudy m_study;
    QLabel* m_applied;
    QLabel* m_now;
    GridView* m_advice;
    GridView* m_changes;
    QPushButton* m_pairs;
    QPushButton* m_cancel;
    QPushButton* m_apply;
    QProgressBar* m_progress;
    QLabel* m_note;
};

}  // namespace genvara
