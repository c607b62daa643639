// The analysis: each page shows the very figures of the studies, of the project as it stands.

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSemaphore>
#include <QTreeWidget>

#include "AnalysisFixture.h"
#include "AnalysisReport.h"
#include "ChartView.h"
#include "EntryField.h"
#include "Globals.h"
#include "NoticeBar.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(AnalysisTest, TestsAreThoseOfTheStudyForEverySetAndTest) {
    Analyse("hospital.prj");
    const Explanation expected = Explained(Project());
    const TextGrid shown = Page<GridView>("tblTests").Shown();
    ASSERT_EQ(shown.columns.size(), expected.sets.size() + 1);
    ASSERT_EQ(shown.rows.size(), 9U);
    ASSERT_GT(expected.sets.size(), 10U);
    int margins = 0;
    for (std::size_t set = 0; set < expected.sets.size(); ++set) {
        EXPECT_THAT(shown.columns[set + 1].caption.toStdString(),
                    StartsWith(expected.sets[set].set.ModelNum));
        for (std::size_t test = 0; test < 9; ++test) {
            // The least margin of all steps, without the words that choose the step in the program.
            std::optional<double> least;
            bool fails = false;
            for (const StepVerdicts& verdicts : expected.sets[set].steps) {
                const auto margin = verdicts[test].Margin();
                least = margin && (!least || *margin < *least) ? margin : least;
                fails = fails || verdicts[test].Fails();
            }
            const GridCell& cell = shown.rows[test][set + 1];
            EXPECT_EQ(cell.number, least) << set << ", " << test;
            EXPECT_EQ(cell.text.contains("fails"), fails);
            EXPECT_EQ(cell.bar && cell.bar->fails, fails);
            margins += least ? 1 : 0;
        }
    }
    EXPECT_GT(margins, 100);
}

TEST_F(AnalysisTest, OneSetDrivesAllPages) {
    Analyse("hospital.prj");
    const Explanation expected = Explained(Project());
    auto& tests = Page<GridView>("tblTests");
    constexpr int kSet = 3;
    constexpr int kVoltageDip = 7;
    tests.ChooseCell(kVoltageDip, kSet);
    EXPECT_EQ(Page<ChoiceBox>("cboSet").currentIndex(), kSet);
    QTest::keyClick(&tests, Qt::Key_Return);
    EXPECT_EQ(Page<QTabWidget>("tabAnalysis").currentWidget()->objectName(), "pagSteps");
    const TextGrid& chart = Page<ChartView>("chaStep0").Shown()->Table();
    EXPECT_THAT(chart.title.toStdString(),
                HasSubstr("Voltage dip by step, " + expected.sets[kSet].set.ModelNum));
    ASSERT_EQ(chart.rows.size(), expected.sets[kSet].steps.size());
    for (std::size_t step = 0; step < chart.rows.size(); ++step) {
        const Verdict& verdict = expected.sets[kSet].steps[step][kVoltageDip];
        EXPECT_EQ(chart.rows[step][2].number, verdict.needed);
        EXPECT_EQ(chart.rows[step][3].number, verdict.available);
        EXPECT_EQ(chart.rows[step][4].number, verdict.Margin());
    }
    Page<ChoiceBox>("cboSet").SelectRow(1);
    EXPECT_EQ(tests.ChosenColumn(), 1);
    EXPECT_EQ(tests.ChosenRow(), kVoltageDip) << "the test stays";
}

TEST_F(AnalysisTest, AdviceIsThatOfTheStudyAndAppliedItSizesAsPromised) {
    Analyse("quarry.prj");
    const AdviceList expected = Advise(Project(), {}, Tables(), 1, m_goOn, [](std::int64_t, std::int64_t) {});
    const TextGrid shown = Page<GridView>("tblAdvice").Shown();
    ASSERT_EQ(shown.rows.size(), expected.advice.size());
    ASSERT_GT(shown.rows.size(), 3U);
    for (std::size_t i = 0; i < shown.rows.size(); ++i) {
        EXPECT_EQ(shown.rows[i][0].text.toStdString(), expected.advice[i].text);
        EXPECT_EQ(shown.rows[i][2].number, expected.advice[i].sizing.total);
        EXPECT_EQ(shown.rows[i][5].number, expected.advice[i].sizing.tightest->margin);
    }
    ShowPage("pagAdvice");
    g_ProjectDirty = false;
    Page<GridView>("tblAdvice").ChooseRow(1);
    Click(Analysis(), "cmdApply");
    EXPECT_FALSE(Analysis().IsFresh()) << "the project is another one now";
    EXPECT_TRUE(g_ProjectDirty);
    Settle();
    ProjectSizer sizer(Tables());
    // As it is saved and opened again: the panel knows more digits of an altitude in feet than a file.
    const Sizing now = sizer.Size(Reopened(Project(), Tables().rules));
    EXPECT_EQ(now.set->ModelNum, expected.advice[1].sizing.set->ModelNum);
    EXPECT_EQ(now.tightest->margin, expected.advice[1].sizing.tightest->margin);
    EXPECT_EQ(Analysis().Result().Set(0)->set.ModelNum, now.set->ModelNum);
    EXPECT_THAT(Page<QLabel>("lblApplied").text().toStdString(),
                StartsWith("Applied: " + expected.advice[1].text));
    const auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    EXPECT_EQ(tree.topLevelItemCount(), App().LoadProfile().NumLoadSteps()) << "the panels show it, too";
}

TEST_F(AnalysisTest, AdviceOnTheProgramsOwnMostLoadingIsNotAppliedToAProject) {
    Analyse("workshop.prj");
    ShowPage("pagAdvice");
    const auto list = Page<AdvicePage>("pagAdvice").List();
    ASSERT_TRUE(list);
    int found = 0;
    for (std::size_t i = 0; i < list->advice.size(); ++i) {
        const bool options = list->advice[i].differences.size() == 1 &&
                             list->advice[i].differences[0].path == "Designer.MaxLoading";
        Page<GridView>("tblAdvice").ChooseRow(static_cast<int>(i));
        EXPECT_EQ(Page<QPushButton>("cmdApply").isEnabled(), !options) << list->advice[i].text;
        EXPECT_EQ(Page<QLabel>("lblAdviceNote").isVisible(), options);
        found += options ? 1 : 0;
    }
    EXPECT_GT(found, 0) << "the sample is just above the next smaller set";
}

TEST_F(AnalysisTest, OrderIsThatOfTheStudyAndKeepsToItsRules) {
    Analyse("quarry.prj");
    ShowPage("pagOrder");
    auto& page = Page<OrderPage>("pagOrder");
    ASSERT_TRUE(QTest::qWaitFor([&] { return page.Answer() != nullptr; }, kPatience));
    const StudyProject project = Project();
    const OrderRules free{.maxSteps = project.loadProfile.NumLoadSteps(), .before = {}, .together = {}};
    const OrderAnswer expected = FindOrder(project, free, Tables(), {}, m_goOn);
    EXPECT_EQ(page.Answer()->steps, expected.steps);
    EXPECT_EQ(page.Answer()->best.total, expected.best.total);
    EXPECT_FALSE(page.Answer()->isPresent);
    EXPECT_TRUE(Page<QPushButton>("cmdApplyOrder").isEnabled());

    // The crusher behind the conveyors, as the project has it: no set does then.
    const LoadPlace conveyors{2, 1};
    const LoadPlace crusher{3, 1};
    page.AddRule(OrderPage::Rule::Before, conveyors, crusher);
    ASSERT_TRUE(QTest::qWaitFor([&] { return page.Answer() != nullptr; }, kPatience));
    EXPECT_FALSE(page.Answer()->best.set);
    EXPECT_EQ(Page<QListWidget>("lstRules").count(), 1);
    page.AddRule(OrderPage::Rule::Before, crusher, conveyors);
    EXPECT_EQ(Page<QListWidget>("lstRules").count(), 1) << "a circle is not taken";
    EXPECT_FALSE(Page<QLabel>("lblOrderNote").text().isEmpty());
    Page<QListWidget>("lstRules").setCurrentRow(0);
    Click(Analysis(), "cmdRemoveRule");
    ASSERT_TRUE(QTest::qWaitFor([&] { return page.Answer() != nullptr; }, kPatience));
    Click(Analysis(), "cmdApplyOrder");
    Settle();
    ProjectSizer sizer(Tables());
    EXPECT_EQ(sizer.Size(Project()).total, expected.best.total);
}

/// All three rules that a drag may make.
TEST_F(AnalysisTest, RulesAreGivenByKeys) {
    Analyse("quarry.prj");
    ShowPage("pagOrder");
    auto& tree = Page<QTreeWidget>("treNow");
    tree.setFocus();
    EXPECT_FALSE(Page<QPushButton>("cmdBehind").isEnabled());
    tree.setCurrentItem(tree.topLevelItem(1)->child(0));  // the conveyors
    for (int down = 0; down < 2; ++down) {
        QTest::keyClick(&tree, Qt::Key_Down, Qt::ControlModifier);
    }
    QTest::keyClick(&tree, Qt::Key_Space, Qt::ControlModifier);  // the crusher
    const auto rules = [this] {
        QStringList texts;
        for (int row = 0; row < Page<QListWidget>("lstRules").count(); ++row) {
            texts += Page<QListWidget>("lstRules").item(row)->text();
        }
        return texts;
    };
    Click(Analysis(), "cmdBehind");
    EXPECT_EQ(rules(), QStringList{"Primary crusher starts before Conveyor drives"});
    for (const auto& [button, rule] :
         {std::pair{"cmdBefore", "Conveyor drives starts before Primary crusher"},
          std::pair{"cmdTogether", "Conveyor drives and Primary crusher start together"}}) {
        Page<QListWidget>("lstRules").setCurrentRow(0);
        Click(Analysis(), "cmdRemoveRule");
        Click(Analysis(), button);
        EXPECT_EQ(rules(), QStringList{rule});
    }
}

TEST_F(AnalysisTest, WhatIfIsTheSweepOfTheStudy) {
    Analyse("hospital.prj");
    ShowPage("pagWhatIf");
    auto& page = Page<WhatIfPage>("pagWhatIf");
    Page<QLineEdit>("txtVaryFrom").setText("0");
    Page<QLineEdit>("txtVaryTo").setText("4500");
    Page<QLineEdit>("txtVaryBy").setText("500");
    Click(Analysis(), "cmdWorkOut");
    ASSERT_TRUE(QTest::qWaitFor([&] { return page.Answer() != nullptr; }, kPatience));
    const StudyProject project = Project();
    const auto axes = ParseAxes({"PowerSystem.Altitude=0:4500:500"}, project, Tables().rules);
    const TextGrid shown = Page<GridView>("tblPoints").Shown();
    ASSERT_EQ(shown.rows.size(), 10U);
    Sweep(project, axes, Tables(), 1, m_goOn, [&](std::int64_t index, const SweepPoint& point) {
        const auto& row = shown.rows[static_cast<std::size_t>(index)];
        EXPECT_EQ(row[0].number, 500.0 * static_cast<double>(index));
        EXPECT_EQ(row[1].text.toStdString(), point.sizing.set->ModelNum);
        EXPECT_EQ(row[2].number, point.sizing.total);
        EXPECT_EQ(row[6].number, point.sizing.tightest->margin);
    });
    Click(Analysis(), "chkExact");
    Click(Analysis(), "cmdWorkOut");
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return page.Answer() && !page.Answer()->stretches.empty(); }, kPatience));
    const auto breaks = FindBreaks(project, axes.front(), Tables(), 1, m_goOn, [](std::int64_t) {});
    ASSERT_EQ(page.Answer()->stretches.size(), breaks.size());
    for (std::size_t i = 0; i < breaks.size(); ++i) {
        EXPECT_EQ(page.Answer()->stretches[i].from, breaks[i].from);
    }
    Page<QLineEdit>("txtVaryBy").setText("0");
    Click(Analysis(), "cmdWorkOut");
    EXPECT_FALSE(Page<QLabel>("lblWhatIfNote").text().isEmpty()) << "a step of nothing is told";
    Page<QLineEdit>("txtVaryBy").setText("x");
    Click(Analysis(), "cmdWorkOut");
    EXPECT_THAT(Page<QLabel>("lblWhatIfNote").text().toStdString(), HasSubstr("is no number"));
}

TEST_F(AnalysisTest, WhatNoLongerHoldsIsNeverShownAsFresh) {
    Analyse("hospital.prj");
    const double before = *Analysis().Result().explanation->sets[0].steps[0][1].Margin();
    Bar(1);
    auto& altitude = Control<EntryField>("panPwrSys", "txtAltitude");
    altitude.setFocus();
    altitude.selectAll();
    QTest::keyClicks(&altitude, "9000");
    EXPECT_FALSE(Analysis().IsFresh());
    EXPECT_EQ(Analysis().Result().explanation, nullptr);
    EXPECT_FALSE(Page<AdvicePage>("pagAdvice").List());
    EXPECT_FALSE(Page<QPushButton>("cmdSaveAnalysis").isEnabled());
    Settle();
    const StudyProject project = Project();
    EXPECT_NEAR(project.powerSystem.Altitude(), 9000 * 0.3048, 1e-9)
        << "what is typed counts before it is left";
    EXPECT_NE(*Analysis().Result().explanation->sets[0].steps[0][1].Margin(), before);
    EXPECT_EQ(Analysis().Result().Set(0)->set.ModelNum, Explained(project).sets[0].set.ModelNum);
}

TEST_F(AnalysisTest, SaysWhyThereIsNothingToShow) {
    Run("mnuToolsAnalysis");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Page<NoticeBar>("barAnalysis").Text().isEmpty(); }, kPatience));
    EXPECT_EQ(Page<NoticeBar>("barAnalysis").Text(), "At least one load and load step must be entered.");
    Open(Sample("farm.prj"));
    Settle();
    EXPECT_TRUE(Page<NoticeBar>("barAnalysis").Text().isEmpty());
}

TEST_F(AnalysisTest, EventsAreHandledBetweenAnyTwoPiecesOfEachStudy) {
    Analyse("quarry.prj");
    // Each piece waits until the window has handled an event that was posted behind it: were a study worked
    // on by the window's thread, or the window waiting for it, none of them would ever be.
    std::atomic<int> pieces = 0;
    std::atomic<int> handled = 0;
    const auto watch = [&] {
        ++pieces;
        QSemaphore done;
        QMetaObject::invokeMethod(
            &Window(),
            [&] {
                ++handled;
                done.release();
            },
            Qt::QueuedConnection);
        done.acquire();
    };
    const auto expectHandled = [&](const char* study, int least) {
        EXPECT_GE(pieces, least) << study;
        EXPECT_EQ(handled, pieces) << study;
        pieces = 0;
        handled = 0;
    };
    Analysis().Study().BetweenPieces(watch);
    Analysis().ProjectChanged();
    Settle();
    Analysis().Study().BetweenPieces({});
    expectHandled("tests", 3);

    auto& advice = Page<AdvicePage>("pagAdvice");
    advice.Study().BetweenPieces(watch);
    Analysis().ProjectChanged();
    Settle();
    advice.Study().BetweenPieces({});
    expectHandled("advice", 10);

    ShowPage("pagOrder");
    auto& order = Page<OrderPage>("pagOrder");
    ASSERT_TRUE(QTest::qWaitFor([&] { return order.Answer() != nullptr; }, kPatience));
    order.Study().BetweenPieces(watch);
    order.AddRule(OrderPage::Rule::Together, {1, 1}, {2, 1});
    ASSERT_TRUE(QTest::qWaitFor([&] { return order.Answer() != nullptr; }, kPatience));
    order.Study().BetweenPieces({});
    expectHandled("order", 1);

    ShowPage("pagWhatIf");
    auto& whatIf = Page<WhatIfPage>("pagWhatIf");
    whatIf.Study().BetweenPieces(watch);
    Click(Analysis(), "cmdWorkOut");
    ASSERT_TRUE(QTest::qWaitFor([&] { return whatIf.Answer() != nullptr; }, kPatience));
    whatIf.Study().BetweenPieces({});
    expectHandled("what if", 10);
}

TEST_F(AnalysisTest, MayBeClosedAndTheProjectReplacedAtAnyMoment) {
    for (int round = 0; round < 12; ++round) {
        Open(Sample(round % 2 == 0 ? "datacentre.prj" : "hospital.prj"));
        Run("mnuToolsAnalysis");
        QTest::qWait(round * 7);
        if (Page<QPushButton>("cmdPairs").isEnabled()) {
            Click(Analysis(), "cmdPairs");
            QTest::qWait(5);
        }
        if (round % 3 == 0) {
            Analysis().close();
        } else if (round % 3 == 1) {
            Run("mnuFileNew");
        }
    }
    Restart();
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(AnalysisTest, PairsCanBeCancelledAndTheSinglesStay) {
    Analyse("datacentre.prj");
    ShowPage("pagAdvice");
    const auto singles = Page<AdvicePage>("pagAdvice").List();
    Click(Analysis(), "cmdPairs");
    EXPECT_TRUE(Page<QPushButton>("cmdCancelAdvice").isVisible());
    Click(Analysis(), "cmdCancelAdvice");
    EXPECT_FALSE(Page<AdvicePage>("pagAdvice").Study().IsWorking());
    EXPECT_EQ(Page<AdvicePage>("pagAdvice").List(), singles);
    EXPECT_TRUE(Page<QPushButton>("cmdPairs").isEnabled());
}

TEST_F(AnalysisTest, TheReportTellsWhereWhenAndWithinWhat) {
    Analyse("hospital.prj");
    std::string texts;
    for (const FlowBlock& block : AnalysisReport(Analysis().Result(), 0, nullptr, {2026, 3, 4, 15, 6, 7})) {
        if (const auto* text = std::get_if<FlowText>(&block)) {
            texts += text->text.toStdString() + "\n";
        }
    }
    EXPECT_THAT(texts, HasSubstr("Date: March 4, 2026\n"));
    // 152.4 m / 0.3048 = 500 feet; 35 x 1.8 + 32 = 95
    EXPECT_THAT(texts,
                HasSubstr("Site: 480 V, 60 Hz, Diesel, altitude 152 m (500 feet), 35 \u00B0C (95 \u00B0F), "
                          "one set\n"));
    EXPECT_THAT(texts,
                HasSubstr("Limits: voltage dip 10 to 20 % by step, frequency dip 15 %, voltage distortion "
                          "10 %, loading 30 to 80 %\n"));
}

TEST_F(AnalysisTest, TheReportClaimsNoLimitThatNothingWasHeldTo) {
    Analyse("hospital.prj");
    AnalysisResult result = Analysis().Result();
    auto other = std::make_shared<StudyProject>(*result.project);
    other->powerSystem.ConnectCode(4);  // none of those with figures of distortion
    result.project = other;
    std::string limits;
    for (const FlowBlock& block : AnalysisReport(result, 0, nullptr, {2026, 3, 4, 15, 6, 7})) {
        if (const auto* text = std::get_if<FlowText>(&block)) {
            limits += text->text.toStdString();
        }
    }
    EXPECT_THAT(limits, HasSubstr("frequency dip 15 %, no distortion figures for this connection, loading"));
    EXPECT_THAT(limits, Not(HasSubstr("voltage distortion 10 %")));
}

TEST_F(AnalysisTest, WhatStandsThereNowIsReadInBothUnits) {
    Analyse("quarry.prj");
    // 3650.01048 m / 0.3048 = 11975.1 feet
    EXPECT_EQ(Page<QLabel>("lblVaryNow").text().toStdString(), "now 3650.01 m (11975 feet)");
}

TEST_F(AnalysisTest, SavesTheReportOnPages) {
    Analyse("hospital.prj");
    platform.Take();
    platform.files.push_back((folder / "analysis.pdf").string());
    Click(Analysis(), "cmdSaveAnalysis");
    EXPECT_THAT(ReadBytes(folder / "analysis.pdf"), StartsWith("%PDF-"));
    platform.files.push_back((folder / "missing/analysis.pdf").string());
    Click(Analysis(), "cmdSaveAnalysis");
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("was not written"));
}

TEST_F(AnalysisTest, ItsSizeAndPlaceComeBackAtTheNextStart) {
    Analyse("hospital.prj");
    Window().setGeometry(40, 50, 910, 640);
    Analysis().setGeometry(70, 80, 930, 610);
    QCoreApplication::processEvents();
    const QRect before = Analysis().geometry();
    ASSERT_EQ(before.size(), QSize(930, 610));
    Analysis().close();  // hidden, it keeps its place all the same
    g_ProjectDirty = false;
    ASSERT_TRUE(Window().close());
    Restart();
    EXPECT_EQ(Window().size(), QSize(910, 640));
    Run("mnuToolsAnalysis");
    EXPECT_EQ(Analysis().geometry(), before);
}

}  // namespace
}  // namespace genvara
