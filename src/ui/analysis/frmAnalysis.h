#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "AnalysisHost.h"
#include "AnalysisResult.h"
#include "BackgroundStudy.h"
#include "ExhibitDesk.h"

class QLabel;
class QPushButton;
class QTabWidget;

namespace genvara {

class AdvicePage;
class AnalysisPage;
class ChoiceBox;
class NoticeBar;
class OrderPage;
class StepsPage;
class TestsPage;
class WhatIfPage;

/// What the engine knows about a project beyond which set does: a window beside the main one, always of the
/// project as it stands. All is worked out beside the window's thread; what no longer holds is shown in grey.
class frmAnalysis final : public QMainWindow {
    Q_OBJECT

  public:
    /// All of these outlive the window.
    frmAnalysis(AnalysisHost& host, Catalogue& catalogue, const ExhibitDesk& desk, QWidget* parent = nullptr);
    ~frmAnalysis() override;
    frmAnalysis(const frmAnalysis&) = delete;
    frmAnalysis& operator=(const frmAnalysis&) = delete;
    frmAnalysis(frmAnalysis&&) = delete;
    frmAnalysis& operator=(frmAnalysis&&) = delete;

    /// The project, or what it is sized with, has changed: greys what is shown, and works it out anew.
    void ProjectChanged();
    /// Shows the name of the project in the window's title.
    void ProjectName(const QString& name);

    /// A set by what tells it from others.
    struct SetKey {
        std::string model;
        std::string alternator;
        std::string engine;

        bool operator==(const SetKey&) const = default;
    };
    /// Shows a set, as soon as it is there.
    void ChooseSet(const SetKey& key);

    /// What is shown, once it holds; without a project while it does not.
    [[nodiscard]] AnalysisResult Result() const { return m_isFresh ? m_result : AnalysisResult{}; }
    [[nodiscard]] bool IsFresh() const noexcept { return m_isFresh; }
    [[nodiscard]] BackgroundStudy& Study() noexcept { return m_study; }

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// What the study comes to: a result, or a sentence that tells why there is none.
    struct Outcome {
        AnalysisResult result;
        QString failure;
    };

    void Build(const ExhibitDesk& desk);
    void AddPage(AnalysisPage* page, const QString& title);
    void Begin();
    void Take(const Outcome& outcome);
    void Tell(const QString& why);
    void FillSets();
    void SelectSet(int set);
    void ShowVerdict();
    void RefreshState();
    void ShowSteps(int set, int test);
    [[nodiscard]] std::vector<FlowBlock> Report() const;

    AnalysisHost* m_host;
    Catalogue* m_catalogue;
    const ExhibitDesk* m_desk;
    std::shared_ptr<const StudyDesk> m_studyDesk;
    QTimer m_soon;
    BackgroundStudy m_study;
    AnalysisResult m_result;
    bool m_isFresh = false;
    bool m_isDue = true;  ///< something has changed since the last study began
    int m_set = -1;
    SetKey m_wanted;
    std::vector<AnalysisPage*> m_pages;
    NoticeBar* m_notice;
    ChoiceBox* m_sets;
    QLabel* m_verdict;
    QLabel* m_state;
    QTabWidget* m_tabs;
    TestsPage* m_tests = nullptr;
    StepsPage* m_steps = nullptr;
    AdvicePage* m_advice = nullptr;
    OrderPage* m_order = nullptr;
    WhatIfPage* m_whatIf = nullptr;
    QPushButton* m_save;
    QPushButton* m_print;
};

}  // namespace genvara
