// Files of other programs, of other catalogues and of nobody: whatever a file or a catalogue holds, walking
// through the whole window ends nothing.

#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <array>
#include <cctype>
#include <random>

#include "ChoiceBox.h"
#include "DamagedCatalogue.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::IsEmpty;

constexpr int kProjects = 150;
constexpr unsigned kMostChanges = 4;  // of a project
/// What stands in the place of a figure: codes that nobody knows, wrong signs, borders, numbers beyond all.
constexpr std::array<const char*, 16> kOddFigures{
    "0", "-1", "1", "2", "3", "4", "7", "9", "1.2", "100", "-480", "347", "99999", "1e30", "1e300", "-0.5"};

class OddProjects : public WindowTest {
  protected:
    void SetUp() override {
        platform.dice = [this] { return Throw(1U << 30U); };
        platform.diceFiles = {""};
    }

    unsigned Throw(unsigned sides) { return std::uniform_int_distribution<unsigned>(0, sides - 1)(m_dice); }

    /// A sample with some of its figures replaced, those of the first line apart, which says what it is.
    std::string OddProject() {
        constexpr std::array<const char*, 8> kSamples{"datacentre",      "farm",           "hospital",
                                                      "office",          "quarry",         "workshop",
                                                      "pumping-station", "telecom-shelter"};
        std::string text = ReadBytes(Sample(std::string(kSamples[Throw(kSamples.size())]) + ".prj"));
        for (unsigned left = 1 + Throw(kMostChanges); left > 0; --left) {
            ReplaceFigure(text);
        }
        return text;
    }
    void ReplaceFigure(std::string& text) {
        const std::size_t first = text.find("\r\n");
        std::size_t begin = first + Throw(static_cast<unsigned>(text.size() - first));
        begin = text.find_first_of(",\n", begin);
        const bool figure = begin != std::string::npos && ++begin < text.size() &&
                            std::isdigit(static_cast<unsigned char>(text[begin])) != 0;
        if (!figure) {
            return;
        }
        const std::size_t end = text.find_first_not_of("0123456789.", begin);
        text.replace(begin, end - begin, kOddFigures[Throw(kOddFigures.size())]);
    }

    void OpenOdd(const std::string& text) {
        WriteBytes(folder / "odd.prj", text);
        platform.files = {(folder / "odd.prj").string()};
        Run("mnuFileOpen");
    }

    /// Shows every panel, every step and load with its form, every list and report.
    void WalkThrough() {
        for (const int panel : {0, 1, 2}) {
            Bar(panel);
        }
        auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
        for (int step = 0; step < tree.topLevelItemCount(); ++step) {
            tree.setCurrentItem(tree.topLevelItem(step));
            for (int load = 0; load < tree.topLevelItem(step)->childCount(); ++load) {
                tree.setCurrentItem(tree.topLevelItem(step)->child(load));
                m_loads += 1;
                if (Throw(8) == 0) {
                    EditAndCancel();
                }
            }
        }
        Bar(3);
        if (ShownPanel() == "panRecommend") {
            ++m_sized;
            LookAtReports();
            Click(Window(), "chkRejectedGensets");
            LookAtReports();
            Click(Window(), "chkRejectedGensets");
        } else {
            ++m_refused;
        }
        platform.files = {(folder / "again.prj").string()};
        Run("mnuFileSaveAs");
        platform.files = {(folder / "report.rtf").string()};
        Run("mnuFileSaveReport");
        platform.files = {(folder / "spec.gvx").string()};
        Run("mnuFileExport");
        Bar(0);
    }
    void EditAndCancel() {
        QTimer closer;  // a load that no form can show is told in a message box of the script
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                ++s_forms;
                dialog->reject();
            }
        });
        closer.start(0);
        Click(Window(), "cmdEdit");
    }
    void LookAtReports() {
        auto& reports = Control<ChoiceBox>("panRecommend", "cboAvailReports");
        for (const int report : {1, 0}) {
            reports.SelectRow(report);
        }
    }

    int m_loads = 0;
    int m_sized = 0;
    int m_refused = 0;

    static inline int s_forms = 0;

  private:
    std::mt19937 m_dice{20260305};
};

TEST_F(OddProjects, EndNothing) {
    s_forms = 0;
    for (int project = 0; project < kProjects; ++project) {
        const std::string text = OddProject();
        OpenOdd(text);
        WalkThrough();
        ASSERT_THAT(platform.ends, IsEmpty()) << "project " << project << ":\n" << text;
        platform.Take();
    }
    EXPECT_GT(m_sized, kProjects / 3) << "the dice never came to the recommendations";
    EXPECT_GT(m_refused, 5) << "the dice never came to what cannot be sized";
    EXPECT_GT(m_loads, 20 * kProjects / 3);
    EXPECT_GT(s_forms, kProjects / 2) << "the dice never came to the forms";
}

TEST_F(OddProjects, DamagedCataloguesEndNothing) {
    for (const char* damage :
         {"DROP TABLE [Gensets]", "DROP TABLE [Derate Codes]", "DROP TABLE [Alternators]",
          "DROP TABLE [Motor Code Letters]", "DROP TABLE [Motor Starting Multiplier]",
          "DROP TABLE [Motor Power Conversions]", "DELETE FROM [Motor Power Conversions]",
          "DELETE FROM [Alternators]", "DELETE FROM [Derate Codes]", "DELETE FROM [Connections]",
          "UPDATE [Alternators] SET [BasekW] = 0", "UPDATE [Gensets] SET [ExpC] = -5",
          "UPDATE [Gensets] SET [LRkVA] = 'many'", "UPDATE [Gensets] SET [GensetModel] = NULL"}) {
        SCOPED_TRACE(damage);
        DamageCatalogue(folder / "program", damage);
        Restart();
        for (const char* sample : {"hospital.prj", "workshop.prj"}) {
            OpenOdd(ReadBytes(Sample(sample)));
            WalkThrough();
        }
        EXPECT_THAT(platform.ends, IsEmpty());
        platform.Take();
    }
}

}  // namespace
}  // namespace genvara
