// Somebody who presses everything in the analysis while the project changes under it.

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTimer>
#include <array>
#include <random>

#include "AnalysisFixture.h"
#include "ChartView.h"
#include "Globals.h"
#include "OrderTree.h"

namespace genvara {
namespace {

constexpr int kActions = 700;

class AnalysisMonkey : public AnalysisTest {
  protected:
    unsigned Throw(unsigned sides) { return std::uniform_int_distribution<unsigned>(0, sides - 1)(m_dice); }
    template <typename Kind>
    Kind* Any() {
        QList<Kind*> shown;
        for (Kind* widget : Analysis().findChildren<Kind*>()) {
            if (widget->isVisible() && widget->isEnabled()) {
                shown += widget;
            }
        }
        return shown.isEmpty() ? nullptr
                               : shown.at(static_cast<qsizetype>(Throw(static_cast<unsigned>(shown.size()))));
    }

    void Act() {
        switch (Throw(10)) {
            case 0:
            case 1:
                if (auto* button = Any<QAbstractButton>()) {
                    button->click();
                }
                break;
            case 2:
                if (auto* field = Any<QLineEdit>()) {
                    constexpr std::array<const char*, 6> kTexts{"", "0", "-5", "1e9", "abc", "12.5"};
                    field->setText(kTexts[Throw(kTexts.size())]);
                }
                break;
            case 3:
                if (auto* list = Any<QComboBox>(); list != nullptr && list->count() > 0) {
                    list->setCurrentIndex(static_cast<int>(Throw(static_cast<unsigned>(list->count()))));
                    emit list->activated(list->currentIndex());
                }
                break;
            case 4:
                Page<QTabWidget>("tabAnalysis").setCurrentIndex(static_cast<int>(Throw(5)));
                break;
            case 5:
                HitAKey();
                break;
            case 6:
                RunACommand();
                break;
            case 7:
                Page<OrderPage>("pagOrder")
                    .AddRule(Throw(2) == 0 ? OrderPage::Rule::Before : OrderPage::Rule::Together, AnyPlace(),
                             AnyPlace());
                break;
            case 8:
                ChangeTheProject();
                break;
            default:
                QTest::qWait(static_cast<int>(Throw(40)));
        }
    }
    LoadPlace AnyPlace() {
        return {static_cast<std::int32_t>(Throw(4)) + 1, static_cast<std::int32_t>(Throw(3)) + 1};
    }
    void HitAKey() {
        constexpr std::array<Qt::Key, 8> kKeys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,  Qt::Key_Down,
                                               Qt::Key_Home, Qt::Key_End,   Qt::Key_Tab, Qt::Key_Return};
        if (auto* view = Any<QAbstractItemView>()) {
            view->setFocus();
            QTest::keyClick(view, kKeys[Throw(kKeys.size())]);
        }
    }
    void RunACommand() {
        if (auto* view = Any<QAbstractItemView>(); view != nullptr && !view->actions().isEmpty()) {
            view->actions()
                .at(static_cast<qsizetype>(Throw(static_cast<unsigned>(view->actions().size()))))
                ->trigger();
        }
    }
    void ChangeTheProject() {
        constexpr std::array<const char*, 4> kSamples{"hospital.prj", "quarry.prj", "farm.prj", "office.prj"};
        g_ProjectDirty = false;
        if (Throw(6) == 0) {
            Run("mnuFileNew");
        } else {
            Open(Sample(kSamples[Throw(kSamples.size())]));
        }
    }

  private:
    std::mt19937 m_dice{20260305};
};

TEST_F(AnalysisMonkey, FindsNothingThatCrashesOrShowsAnotherProject) {
    platform.dice = [this] { return Throw(1U << 30U); };
    platform.diceFiles = {"", (folder / "a.pdf").string(), (folder / "a.svg").string(),
                          (folder / "missing/a.csv").string()};
    Analyse("quarry.prj");
    int fresh = 0;
    for (int action = 0; action < kActions; ++action) {
        SCOPED_TRACE(action);
        Act();
        QCoreApplication::processEvents();
        if (!Analysis().isVisible()) {
            Run("mnuToolsAnalysis");
        }
        platform.Take();
        ASSERT_THAT(platform.ends, testing::IsEmpty());
        const AnalysisResult result = Analysis().Result();
        if (result.explanation) {
            ++fresh;
            ASSERT_EQ(result.project->loadProfile.NumLoadSteps(), App().LoadProfile().NumLoadSteps());
            ASSERT_EQ(result.project->powerSystem.Voltage(), App().PowerSystem().Voltage());
        }
    }
    EXPECT_GT(fresh, kActions / 5);
    ChangeTheProject();
}

}  // namespace
}  // namespace genvara
