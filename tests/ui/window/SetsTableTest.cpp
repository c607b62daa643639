// The table of all listed sets beside the lists of View Gensets.

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QSignalSpy>

#include "AnalysisFixture.h"
#include "panRecommend.h"

namespace genvara {
namespace {

using testing::HasSubstr;

class SetsTable : public AnalysisTest {
  protected:
    void View(const std::string& sample) {
        Open(Sample(sample));
        Bar(3);
    }
    GridView& Table() { return Control<GridView>("panRecommend", "tblGensets"); }
    ChoiceBox& Chosen() { return Control<ChoiceBox>("panRecommend", "cboAvailGensets"); }
    ChoiceBox& Rejected() { return Control<ChoiceBox>("panRecommend", "cboRejectedGensets"); }
    QCheckBox& Box() { return Control<QCheckBox>("panRecommend", "chkRejectedGensets"); }
};

TEST_F(SetsTable, ShowsTheFiguresOfEveryListedSet) {
    View("hospital.prj");
    const CDesigner& designer = App().Designer();
    const TextGrid shown = Table().Shown();
    const auto chosen = designer.ChosenSets().size();
    ASSERT_EQ(shown.rows.size(), chosen + designer.RejectedSets().size());
    int withoutData = 0;
    for (std::size_t row = 0; row < shown.rows.size(); ++row) {
        const ChosenSet& set =
            row < chosen ? designer.ChosenSets()[row] : designer.RejectedSets()[row - chosen];
        const auto& cells = shown.rows[row];
        EXPECT_THAT(cells[0].text.toStdString(), testing::StartsWith(set.ModelNum));
        EXPECT_EQ(cells[1].number, set.NominalRating);
        EXPECT_EQ(cells[2].number, set.DeratedRating);
        // One set: what runs, in percent of the rating at the site.
        EXPECT_DOUBLE_EQ(*cells[3].number, designer.TotalRunningKW() / set.DeratedRating * 100.0);
        EXPECT_EQ(cells[3].bar->limit, 80.0);
        EXPECT_EQ(cells[4].number, set.StartKVA35);
        EXPECT_EQ(cells[5].number, set.MaxStepVoltDip);
        EXPECT_EQ(cells[7].number, set.MaxStepVTHD);
        EXPECT_EQ(cells[8].text == "recommended", row < chosen);
        if (set.FreqDipAvail) {
            EXPECT_EQ(cells[6].number, set.MaxStepFreqDip);
        } else {
            EXPECT_EQ(cells[6].text, "no data");
            ++withoutData;
        }
    }
    EXPECT_GT(withoutData, 0) << "the sample's smallest set has none";
}

TEST_F(SetsTable, ARowChoosesInTheListsAndTheyInIt) {
    View("hospital.prj");
    const int chosen = App().Designer().NumChosenSets();
    EXPECT_EQ(Table().ChosenRow(), 0);
    Table().ChooseRow(2);
    EXPECT_FALSE(Box().isChecked());
    EXPECT_EQ(Chosen().currentIndex(), 2);
    Table().ChooseRow(chosen + 3);
    EXPECT_TRUE(Box().isChecked());
    EXPECT_EQ(Rejected().currentIndex(), 3);
    Rejected().SelectRow(1);
    EXPECT_EQ(Table().ChosenRow(), chosen + 1);
    Box().click();
    EXPECT_EQ(Table().ChosenRow(), 2) << "the list's own row comes back";
    Chosen().SelectRow(chosen - 1);
    EXPECT_EQ(Table().ChosenRow(), chosen - 1);
    Table().sortByColumn(1, Qt::DescendingOrder);
    Table().ChooseRow(1);
    EXPECT_EQ(Chosen().currentIndex(), 1) << "whatever it is sorted by";
}

TEST_F(SetsTable, SaysWhichSetHasNoFrequencyData) {
    View("hospital.prj");
    auto& note = Control<QLabel>("panRecommend", "lblNoData");
    const auto& sets = App().Designer().ChosenSets();
    int with = 0;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        Chosen().SelectRow(static_cast<int>(i));
        EXPECT_EQ(note.isVisible(), !sets[i].FreqDipAvail) << i;
        if (note.isVisible()) {
            EXPECT_THAT(note.text().toStdString(), HasSubstr(sets[i].ModelNum));
        }
        with += sets[i].FreqDipAvail ? 1 : 0;
    }
    EXPECT_GT(with, 0);
}

TEST_F(SetsTable, WithoutARecommendedSetItListsTheUndersizedOnes) {
    View("quarry.prj");
    EXPECT_EQ(App().Designer().NumChosenSets(), 0);
    EXPECT_EQ(Table().model()->rowCount(), App().Designer().NumRejectedSets());
    EXPECT_EQ(Table().ChosenRow(), -1);
    Table().ChooseRow(0);
    EXPECT_TRUE(Box().isChecked());
    Run("mnuFileNew");
    EXPECT_EQ(Table().model()->rowCount(), 0);
}

TEST_F(SetsTable, CopiesAsText) {
    View("farm.prj");
    Find<QAction>(Table(), "actCopy").trigger();
    const QString text = QApplication::clipboard()->text();
    EXPECT_EQ(text.count('\n'), Table().model()->rowCount() + 1);
    EXPECT_THAT(text.toStdString(), testing::StartsWith("Genset\tRated kW\t"));
}

TEST_F(SetsTable, ItsMenuOpensTheAnalysisOfTheChosenSet) {
    View("hospital.prj");
    Table().ChooseRow(4);
    Find<QAction>(Table(), "actAnalysis").trigger();
    Settle();
    EXPECT_EQ(Page<ChoiceBox>("cboSet").currentIndex(), 4);
}

}  // namespace
}  // namespace genvara
