// Every way of opening or beginning a project, from every panel: the window ends on the project panel with
// nothing of the project before it.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <array>

#include "Globals.h"
#include "ReportView.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::array<const char*, 4> kPanels{"panProject", "panPwrSys", "panLoadProfile", "panRecommend"};
constexpr std::array<const char*, 5> kReportCommands{"mnuFileSaveReport", "mnuFilePrint", "mnuFileExport",
                                                     "butPrint", "butExport"};

/// What stands at the name that a way of opening is given.
enum class Met : std::uint8_t { Good, Incompatible, Garbage, Empty, Missing };
constexpr std::array<Met, 4> kNotRead{Met::Incompatible, Met::Garbage, Met::Empty, Met::Missing};

class Opening : public WindowTest {
  protected:
    /// A way to another project.
    struct Way {
        const char* name;
        bool changed;  ///< whether the project at hand has changes that are asked about
        std::function<void(const std::string& file)> go;
    };

    void SetUp() override {
        std::filesystem::copy_file(Sample("workshop.prj"), folder / "first.prj");
        std::filesystem::copy_file(Sample("farm.prj"), folder / "good.prj");
        WriteBytes(folder / "incompatible.prj", "8,0,0,2\r\n");
        WriteBytes(folder / "garbage.prj", std::string("\0\xFF no project \x7F", 15));
        WriteBytes(folder / "empty.prj", "");
    }

    std::vector<Way> WaysToOpen() {
        const auto dialog = [this](const std::function<void()>& press) {
            return [this, press](const std::string& file) {
                platform.files.push_back(file);
                press();
            };
        };
        const auto menu = [this] { Run("mnuFileOpen"); };
        return {
            {"menu", false, dialog(menu)},
            {"toolbar", false, dialog([this] { Run("butOpen"); })},
            {"key", false, dialog([this] { QTest::keyClick(&Window(), Qt::Key_O, Qt::ControlModifier); })},
            {"menu, changes dropped", true, dialog([this, menu] {
                 platform.answers = {MessageAnswer::No};
                 menu();
             })},
            {"menu, changes saved", true, dialog([this, menu] {
                 platform.answers = {MessageAnswer::Yes};
                 menu();
             })},
            {"recent file", false, [this](const std::string& file) { OpenRecent(file); }},
            {"recent file, changed", true, [this](const std::string& file) { OpenRecent(file); }},
            {"from the desktop", false, [this](const std::string& file) { Window().OpenFile(file); }}};
    }
    std::vector<Way> WaysToBegin() {
        const auto answered = [this](MessageAnswer answer) {
            return [this, answer](const std::string&) {
                platform.answers = {answer};
                Run("mnuFileNew");
            };
        };
        return {{"menu", false, [this](const std::string&) { Run("mnuFileNew"); }},
                {"toolbar", false, [this](const std::string&) { Run("butNew"); }},
                {"key", false,
                 [this](const std::string&) { QTest::keyClick(&Window(), Qt::Key_N, Qt::ControlModifier); }},
                {"changes dropped", true, answered(MessageAnswer::No)},
                {"changes saved", true, answered(MessageAnswer::Yes)}};
    }

    /// Takes every way from every panel, from a project that has just been sized with an undersized set on
    /// view.
    void TakeAll(const std::vector<Way>& ways, const std::string& file, const std::function<void()>& look) {
        for (const Way& way : ways) {
            for (int panel = 0; panel < static_cast<int>(kPanels.size()); ++panel) {
                SCOPED_TRACE(std::string(way.name) + " on " + kPanels.at(static_cast<std::size_t>(panel)));
                ASSERT_NO_FATAL_FAILURE(BeginAt(panel));
                g_ProjectDirty = way.changed;
                way.go(file);
                look();
            }
        }
    }
    void BeginAt(int panel) {
        g_ProjectDirty = false;
        platform.answers.clear();
        platform.files.clear();
        Open(folder / "first.prj");
        Bar(3);
        Click(Window(), "chkRejectedGensets");
        ASSERT_GT(Control<QComboBox>("panRecommend", "cboRejectedGensets").count(), 0);
        if (panel != 3) {
            Bar(panel);
        }
        ASSERT_EQ(ShownPanel(), kPanels.at(static_cast<std::size_t>(panel)));
        m_report = Report();
        platform.Take();
    }
    void OpenRecent(const std::string& file) {
        Find<QAction>(Window(), "mnuFileMRU0").setData(QString::fromStdString(file));
        platform.answers = {MessageAnswer::No};  // a missing file is not looked for
        Run("mnuFileMRU0");
    }

    std::string FileThatIs(Met met) {
        constexpr std::array<const char*, 5> kNames{"good.prj", "incompatible.prj", "garbage.prj",
                                                    "empty.prj", "missing.prj"};
        return (folder / kNames.at(static_cast<std::size_t>(met))).string();
    }
    /// The whole heading; the label shows what there is room for.
    std::string HeadingOf(const char* panel) {
        const auto& label = Control<QLabel>(panel, "lblProjName");
        return (label.toolTip().isEmpty() ? label.text() : label.toolTip()).toStdString();
    }
    std::string Report() { return Control<ReportView>("panRecommend", "rtfRecommend").RichText(); }

    void ExpectNothingOfTheProjectBefore(const std::string& name) {
        EXPECT_EQ(ShownPanel(), "panProject");
        EXPECT_EQ(Control<QComboBox>("panRecommend", "cboAvailGensets").count(), 0);
        EXPECT_EQ(Control<QComboBox>("panRecommend", "cboRejectedGensets").count(), 0);
        EXPECT_FALSE(Find<QAbstractButton>(Window(), "chkRejectedGensets").isChecked());
        EXPECT_EQ(Report(), "");
        for (const char* command : kReportCommands) {
            EXPECT_FALSE(Enabled(command)) << command;
        }
        for (const char* panel : kPanels) {
            EXPECT_EQ(HeadingOf(panel), name) << panel;
        }
        EXPECT_EQ(App().Designer().NumChosenSets(), 0);
        EXPECT_EQ(App().Designer().NumRejectedSets(), 0);
        EXPECT_EQ(App().Designer().TotalRunningKW(), 0.0);
        EXPECT_EQ(App().Designer().PeakStartingKVA(), 0.0);
        EXPECT_TRUE(platform.ends.empty());
    }
    /// The window shows the project before, and nothing of another.
    void ExpectTheProjectBefore() {
        EXPECT_EQ(Control<QLineEdit>("panProject", "txtName").text(), kFirstName);
        EXPECT_EQ(App().Project().ProjName(), kFirstName);
        for (const char* panel : kPanels) {
            EXPECT_EQ(HeadingOf(panel), kFirstName) << panel;
        }
        EXPECT_EQ(Report(), m_report);
        EXPECT_GT(App().Designer().NumRejectedSets(), 0) << "the lists can be used still";
        EXPECT_EQ(Enabled("mnuFileSaveReport"), ShownPanel() == "panRecommend");
        EXPECT_TRUE(platform.ends.empty());
    }

    static constexpr const char* kFirstName = "Atelier Fontvieille";
    static constexpr const char* kGoodName = "Osgood grain dryer";

  private:
    std::string m_report;
};

TEST_F(Opening, ShowsTheProjectOfTheFileAlone) {
    TakeAll(WaysToOpen(), FileThatIs(Met::Good), [this] {
        ExpectNothingOfTheProjectBefore(kGoodName);
        EXPECT_EQ(App().Project().ProjName(), kGoodName);
        EXPECT_EQ(Window().windowTitle().toStdString(), std::string("Morvane Genvara - ") + kGoodName);
        EXPECT_EQ(Window().ProjectFile(), FileThatIs(Met::Good));
        Bar(3);
        EXPECT_THAT(Report(), HasSubstr(kGoodName));
        EXPECT_THAT(Report(), Not(HasSubstr(kFirstName)));
    });
}

TEST_F(Opening, ShowsTheProjectBeforeWhereTheFileIsNone) {
    for (const Met met : kNotRead) {
        SCOPED_TRACE(FileThatIs(met));
        TakeAll(WaysToOpen(), FileThatIs(met), [this] { ExpectTheProjectBefore(); });
    }
}

TEST_F(Opening, ANewProjectBeginsWithNothingOfTheOneBefore) {
    TakeAll(WaysToBegin(), {}, [this] {
        ExpectNothingOfTheProjectBefore("");
        EXPECT_EQ(App().Project().ProjName(), "");
        EXPECT_EQ(Window().windowTitle(), "Morvane Genvara");
        EXPECT_EQ(Window().ProjectFile(), "");
    });
}

TEST_F(Opening, ASearchThatFindsNoSetShowsNoTotalsOfTheProjectBefore) {
    // A voltage at which the catalogue has no set: the run has no candidate, and works out no totals.
    std::string text = ReadBytes(folder / "good.prj");
    text.replace(text.find(",240\r\n"), 6, ",13800\r\n");
    WriteBytes(folder / "good.prj", text);
    TakeAll({WaysToOpen().front()}, FileThatIs(Met::Good), [this] {
        App().PowerSystem().Voltage(13800);
        App().Document().Size();
        EXPECT_EQ(App().Designer().TotalRunningKW(), 0.0);
        EXPECT_EQ(App().Designer().PeakStartingKVA(), 0.0);
    });
}

}  // namespace
}  // namespace genvara
