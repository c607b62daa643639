// Pictures of the analysis, for people to look at and for the manual: the folder is named by
// GENVARA_PICTURES.

#include <QDir>
#include <QLineEdit>
#include <QPixmap>

#include "AnalysisFixture.h"
#include "panRecommend.h"

namespace genvara {
namespace {

class AnalysisPictures : public AnalysisTest {
  protected:
    void SetUp() override {
        m_folder = qEnvironmentVariable("GENVARA_PICTURES");
        if (m_folder.isEmpty()) {
            GTEST_SKIP() << "set GENVARA_PICTURES to a folder";
        }
        QDir().mkpath(m_folder);
    }
    void Save(QWidget& widget, const QString& name) {
        QCoreApplication::processEvents();
        EXPECT_TRUE(widget.grab().save(m_folder + "/" + name + ".png"));
    }

  private:
    QString m_folder;
};

TEST_F(AnalysisPictures, OfEveryPage) {
    Analyse("hospital.prj");
    Analysis().resize(980, 560);
    Save(Analysis(), "analysis-tests");
    Page<ChoiceBox>("cboSet").SelectRow(Page<ChoiceBox>("cboSet").count() - 1);
    ShowPage("pagSteps");
    Save(Analysis(), "analysis-steps");
    ShowPage("pagWhatIf");
    Page<QLineEdit>("txtVaryFrom").setText("0");
    Page<QLineEdit>("txtVaryTo").setText("4500");
    Click(Analysis(), "chkExact");
    Click(Analysis(), "cmdWorkOut");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return Page<WhatIfPage>("pagWhatIf").Answer() != nullptr; }, kPatience));
    Save(Analysis(), "analysis-whatif");
    Open(Sample("quarry.prj"));
    Settle();
    ShowPage("pagAdvice");
    Save(Analysis(), "analysis-advice");
    ShowPage("pagOrder");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return Page<OrderPage>("pagOrder").Answer() != nullptr; }, kPatience));
    Save(Analysis(), "analysis-order");
}

TEST_F(AnalysisPictures, OfTheTableOfSets) {
    Window().resize(1100, 720);
    Open(Sample("hospital.prj"));
    Bar(3);
    Save(Window(), "sets-table");
}

}  // namespace
}  // namespace genvara
