#pragma once

#include <memory>
#include <vector>

#include "AnalysisHost.h"
#include "AnalysisPage.h"
#include "BackgroundStudy.h"
#include "ExhibitDesk.h"
#include "Order.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace genvara {

class OrderTree;

/// Which loads should start together, and in which order: the present order beside the best one, and the
/// rules that it keeps to.
class OrderPage final : public AnalysisPage {
    Q_OBJECT

  public:
    OrderPage(AnalysisHost& host, const ExhibitDesk& desk, QWidget* parent = nullptr);

    void Show(const AnalysisResult& result, int set) override;
    void Select(int /*set*/) override {}
    void Stale() override;

    /// Which rule two loads are given.
    enum class Rule { Before, Together };
    /// Gives two loads a rule; one that no order could keep to is told, and not given.
    /// Loads that the project lacks are given none.
    void AddRule(Rule rule, const LoadPlace& first, const LoadPlace& second);

    /// What was found, while it holds.
    [[nodiscard]] std::shared_ptr<const OrderAnswer> Answer() const { return m_answer; }
    [[nodiscard]] BackgroundStudy& Study() noexcept { return m_study; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    struct Given {
        Rule rule;
        LoadPair loads;
        QString first;  ///< names, by which a rule is known again in a changed project
        QString second;
    };
    struct Outcome {
        std::shared_ptr<const OrderAnswer> answer;
        QString failure;
    };

    void Build(const ExhibitDesk& desk);
    QWidget* MakeRules();
    void AskForRule(const LoadPlace& dragged, const LoadPlace& target);
    /// @param turned the lower one first
    void RuleOfSelected(Rule rule, bool turned);
    void RemoveRule();
    void KeepRules();
    void ShowRules();
    [[nodiscard]] OrderRules RulesOf(const std::vector<Given>& given) const;
    [[nodiscard]] bool HasLoad(const LoadPlace& place) const;
    [[nodiscard]] QString NameAt(const LoadPlace& place) const;
    void Note(const QString& text);
    void Begin();
    void Take(const Outcome& outcome);
    void ShowVerdict();
    void RefreshButtons();
    void Apply();
    [[nodiscard]] TextGrid Grid() const;

    AnalysisHost* m_host;
    AnalysisResult m_result;
    std::vector<Given> m_given;
    std::shared_ptr<const OrderAnswer> m_answer;
    BackgroundStudy m_study;
    OrderTree* m_now;
    OrderTree* m_best;
    QLabel* m_verdict;
    QLabel* m_note;
    QSpinBox* m_maxSteps;
    QPushButton* m_before;
    QPushButton* m_behind;
    QPushButton* m_together;
    QListWidget* m_rules;
    QPushButton* m_remove;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QPushButton* m_apply;
};

}  // namespace genvara
