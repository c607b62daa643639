// Saving where it cannot be done, where something else is kept, and what the window says of it.

#include <sys/resource.h>

#include <csignal>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>
#include <QTreeWidget>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "Globals.h"
#include "UpDown.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Saving : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }

    std::string FileOf(const char* name) { return (folder / name).string(); }
    std::string Missing() { return FileOf("missing/a.prj"); }
    void Name(const char* text) { Control<EntryField>("panProject", "txtName").setText(text); }
    std::string ShownName() { return Control<EntryField>("panProject", "txtName").Content(); }
    void SaveAs(const std::string& file) {
        platform.files.push_back(file);
        Run("mnuFileSaveAs");
        platform.Take();
    }
    bool SaysNotSaved() { return Find<QLabel>(Window(), "lblNotSaved").isVisible(); }
    std::string FileLabel() { return Find<QLabel>(Window(), "lblFile").text().toStdString(); }
    std::string StatusLine() { return Find<QStatusBar>(Window(), "sbrMain").currentMessage().toStdString(); }
    /// One box with one sentence, and the program goes on with the project.
    void ExpectToldOnce(const std::string& reason) {
        const auto asked = platform.Take();
        std::vector<Message> boxes;
        for (const auto& question : asked) {
            if (question.what == "message") {
                boxes.push_back(question.message);
            }
        }
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_EQ(boxes[0].text, "The project was not saved as " + reason + ".");
        EXPECT_EQ(boxes[0].icon, MessageIcon::Exclamation);
        EXPECT_EQ(boxes[0].title, "Genvara");
        EXPECT_TRUE(platform.ends.empty());
        EXPECT_TRUE(SaysNotSaved());
        EXPECT_TRUE(g_ProjectDirty);
        EXPECT_EQ(ShownName(), "Precious");
    }
};

TEST_F(Saving, WhereItCannotBeDoneIsToldByMenuToolbarAndKeyAndTheProgramGoesOn) {
    std::filesystem::create_directory(folder / "folder.prj");
    const std::vector<std::pair<std::string, std::string>> cases{
        {Missing(), "its folder does not exist"},
        {FileOf("folder.prj"), "there is a folder of that name"},
        {"/dev/null", "there is a device of that name"},
        {(folder / "program/Genvara.db").string(), "this is the genset catalogue"},
    };
    const std::string catalogue = ReadBytes(folder / "program/Genvara.db");
    const std::vector<std::function<void()>> ways{
        [this] { Run("mnuFileSave"); }, [this] { Run("mnuFileSaveAs"); }, [this] { Run("butSave"); },
        [this] { QTest::keyClick(&Window(), Qt::Key_S, Qt::ControlModifier); }};
    Name("Precious");
    for (const auto& [file, reason] : cases) {
        for (const auto& save : ways) {
            SCOPED_TRACE(file);
            g_ProjectDirty = true;
            platform.files = {file};
            save();
            ExpectToldOnce(std::string(file).append(": ").append(reason));
            EXPECT_EQ(Window().ProjectFile(), "") << "a name that cannot be saved to is not taken";
        }
    }
    EXPECT_TRUE(ReadBytes(folder / "program/Genvara.db") == catalogue);

    platform.files = {FileOf("good.prj")};
    Run("mnuFileSave");
    EXPECT_FALSE(SaysNotSaved());
    EXPECT_THAT(ReadBytes(folder / "good.prj"), HasSubstr("\"Precious\""));
}

TEST_F(Saving, AFolderThatIsGoneIsToldAndTheOldNameStays) {
    std::filesystem::create_directory(folder / "stick");
    SaveAs(FileOf("stick/a.prj"));
    Name("Precious");
    g_ProjectDirty = true;
    std::filesystem::remove_all(folder / "stick");
    Run("mnuFileSave");
    ExpectToldOnce(FileOf("stick/a.prj") + ": its folder does not exist");
    EXPECT_EQ(Window().ProjectFile(), FileOf("stick/a.prj"));
    std::filesystem::create_directory(folder / "stick");
    Run("butSave");
    EXPECT_FALSE(SaysNotSaved());
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_THAT(ReadBytes(folder / "stick/a.prj"), HasSubstr("\"Precious\""));
}

TEST_F(Saving, ADiskThatFillsUpIsToldAndTheOldFileStays) {
    SaveAs(FileOf("a.prj"));
    const std::string before = ReadBytes(folder / "a.prj");
    Name("Precious");
    g_ProjectDirty = true;
    struct rlimit old {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);  // as the program does
    const struct rlimit tiny { .rlim_cur = 16, .rlim_max = old.rlim_max };
    setrlimit(RLIMIT_FSIZE, &tiny);
    Run("mnuFileSave");
    setrlimit(RLIMIT_FSIZE, &old);
    (void)std::signal(SIGXFSZ, formerHandler);
    ExpectToldOnce(FileOf("a.prj") + ": it would be larger than files may be");
    EXPECT_EQ(ReadBytes(folder / "a.prj"), before);
    Run("mnuFileSave");
    EXPECT_FALSE(SaysNotSaved());
}

TEST_F(Saving, StoresNothingWhereItCannotBeDone) {
    Name("Precious");
    platform.files = {Missing()};
    Run("butSave");
    EXPECT_EQ(App().Project().ProjName(), "");
}

TEST_F(Saving, NotSavedGoesWithTheProject) {
    for (const bool opened : {true, false}) {
        platform.files = {Missing()};
        Run("mnuFileSave");
        EXPECT_TRUE(SaysNotSaved());
        if (opened) {
            Open(Sample("farm.prj"));
        } else {
            Run("mnuFileNew");
        }
        EXPECT_FALSE(SaysNotSaved());
        platform.Take();
        Run("mnuFileNew");
    }
}

TEST_F(Saving, OverAFileThatWasNoProjectAsksOnce) {
    WriteBytes(folder / "letter.txt", "Dear Sir");
    platform.files = {FileOf("letter.txt")};
    Run("mnuFileOpen");
    platform.Take();
    ASSERT_EQ(Window().ProjectFile(), FileOf("letter.txt"));
    Name("Mill");
    for (const char* save : {"mnuFileSave", "butSave"}) {
        platform.answers = {MessageAnswer::No};
        Run(save);
        const Message message = platform.TakeMessage();
        EXPECT_EQ(
            message.text,
            FileOf("letter.txt") + " could not be read as a project. Replace it with the project on screen?");
        EXPECT_EQ(message.icon, MessageIcon::Question);
        EXPECT_EQ(message.buttons, MessageButtons::YesNo);
        EXPECT_EQ(message.title, "Genvara");
        EXPECT_EQ(ReadBytes(folder / "letter.txt"), "Dear Sir");
        EXPECT_FALSE(SaysNotSaved()) << "the user's own wish";
    }
    platform.answers = {MessageAnswer::Yes};
    Run("mnuFileSave");
    EXPECT_THAT(ReadBytes(folder / "letter.txt"), HasSubstr("\"Mill\""));
    platform.Take();
    Run("mnuFileSave");
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(Saving, TheStatusLineNamesTheFileOfTheNextSave) {
    SaveAs(FileOf("a.prj"));
    SaveAs(FileOf("b.prj"));
    ASSERT_EQ(FileLabel(), "b.prj");
    WriteBytes(folder / "letter.txt", "Dear Sir");
    platform.files = {FileOf("letter.txt")};
    Run("mnuFileOpen");
    EXPECT_EQ(FileLabel(), "letter.txt") << "of another version";
    platform.files = {FileOf("b.prj")};
    Run("mnuFileOpen");
    EXPECT_EQ(FileLabel(), "b.prj");
    std::filesystem::remove(folder / "a.prj");
    platform.Take();
    platform.answers = {MessageAnswer::No};
    Run("mnuFileMRU1");
    ASSERT_EQ(Window().ProjectFile(), FileOf("a.prj"));
    EXPECT_EQ(FileLabel(), "a.prj") << "a file that is gone";
}

TEST_F(Saving, NoTextOfAProjectEndsAtAQuoteInItsFile) {
    AddStepWithLoad();
    App().LoadProfile().AddLoadStep("the \"second\"", 15, 0);
    App().LoadProfile().LoadStep(1).begin()->name("12\" pump");
    Control<EntryField>("panProject", "txtName").setText("\"Mill\"");
    const std::string json = FileOf("a.json");
    SaveAs(json);
    EXPECT_EQ(App().LoadProfile().LoadStep(1).begin()->name(), "12\" pump") << "JSON holds it";
    EXPECT_EQ(App().Project().ProjName(), "\"Mill\"");
    Open(json);
    SaveAs(FileOf("a.prj"));
    EXPECT_EQ(
        StatusLine(),
        "Saved a.prj; a project file cannot hold the double quotes of 3 texts, which are typographic now.");
    EXPECT_EQ(ShownName(), "\u201CMill\u201D");
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    ASSERT_EQ(tree.topLevelItemCount(), 2);
    EXPECT_EQ(tree.topLevelItem(0)->child(0)->text(0).toStdString(), "12\u201D pump");
    EXPECT_EQ(tree.topLevelItem(1)->text(0).toStdString(), "the \u201Csecond\u201D");
    Run("mnuFileNew");
    Open(FileOf("a.prj"));
    EXPECT_EQ(App().Project().ProjName(), "\u201CMill\u201D");
    ASSERT_EQ(App().LoadProfile().NumLoadSteps(), 2);
    EXPECT_EQ(App().LoadProfile().LoadStep(1).begin()->name(), "12\u201D pump");
    EXPECT_EQ(App().LoadProfile().LoadStep(2).Description(), "the \u201Csecond\u201D");
    EXPECT_EQ(App().LoadProfile().LoadStep(2).NumLoads(), 0);
}

TEST_F(Saving, NothingSaysSavedOnceASaveHasFailed) {
    std::filesystem::create_directory(folder / "later");
    SaveAs(FileOf("later/a.prj"));
    ASSERT_EQ(StatusLine(), "Saved a.prj.");
    std::filesystem::remove_all(folder / "later");
    Run("mnuFileSave");
    EXPECT_TRUE(SaysNotSaved());
    EXPECT_EQ(StatusLine(), "");
}

TEST_F(Saving, ARecentFileThatIsNoProjectAnyMoreIsAskedAbout) {
    SaveAs(FileOf("a.prj"));
    WriteBytes(folder / "a.prj", "");
    Run("mnuFileMRU0");
    platform.Take();
    ASSERT_EQ(Window().ProjectFile(), FileOf("a.prj"));
    platform.answers = {MessageAnswer::No};
    QTest::keyClick(&Window(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(platform.TakeMessage().text, HasSubstr("could not be read as a project"));
    EXPECT_EQ(ReadBytes(folder / "a.prj"), "");
}

TEST_F(Saving, ARefusedFileFromTheDesktopGivesTheProjectNoName) {
    for (const char* content : {"8,0,0,2\r\n", "",
                                "\x7F"
                                "ELF garbage"}) {
        WriteBytes(folder / "refused.prj", content);
        Window().OpenFile(FileOf("refused.prj"));
        platform.Take();
        EXPECT_EQ(Window().ProjectFile(), "");
        platform.files = {""};
        Run("mnuFileSave");
        EXPECT_THAT(platform.Take(), testing::SizeIs(1)) << "the save dialog, since there is no name";
        EXPECT_EQ(ReadBytes(folder / "refused.prj"), content);
        platform.files = {FileOf("refused.prj")};
        platform.answers = {MessageAnswer::No};
        Run("mnuFileSave");
        EXPECT_THAT(platform.Take().back().message.text, HasSubstr("could not be read as a project"));
        EXPECT_EQ(ReadBytes(folder / "refused.prj"), content);
        EXPECT_EQ(Window().ProjectFile(), "");
    }
}

TEST_F(Saving, ANoBeforeAnotherProjectLosesNothing) {
    WriteBytes(folder / "letter.txt", "Dear Sir");
    platform.files = {FileOf("letter.txt")};
    Run("mnuFileOpen");
    Name("Precious");
    for (const char* command : {"mnuFileNew", "mnuFileOpen"}) {
        g_ProjectDirty = true;
        platform.answers = {MessageAnswer::Yes, MessageAnswer::No};
        Run(command);
        EXPECT_EQ(ShownName(), "Precious");
        EXPECT_TRUE(g_ProjectDirty);
        EXPECT_EQ(ReadBytes(folder / "letter.txt"), "Dear Sir");
    }
    platform.Take();
    platform.answers = {MessageAnswer::No};
    Run("mnuFileSendMail");
    EXPECT_THAT(platform.Take(), testing::SizeIs(1)) << "the question, and no complaint";
}

TEST_F(Saving, NamesTheFileAndWhatWasEntered) {
    EXPECT_EQ(FileLabel(), "New project");
    SaveAs(FileOf("mill.prj"));
    EXPECT_EQ(FileLabel(), "mill.prj");
    EXPECT_EQ(StatusLine(), "Saved mill.prj.");
    EXPECT_EQ(Find<QLabel>(Window(), "lblFile").toolTip().toStdString(), FileOf("mill.prj"));

    QTest::keyClicks(&Control<EntryField>("panProject", "txtName"), "Mill");
    EXPECT_EQ(FileLabel(), "\u25CF mill.prj");
    EXPECT_THAT(Find<QLabel>(Window(), "lblFile").toolTip().toStdString(),
                StartsWith(FileOf("mill.prj") + "\n"));
    EXPECT_EQ(Find<QLabel>(Window(), "lblFile").accessibleName(), "mill.prj, changed");
    Run("mnuFileSave");
    EXPECT_EQ(FileLabel(), "mill.prj");
    Run("mnuFileNew");
    EXPECT_EQ(FileLabel(), "New project");
}

TEST_F(Saving, MarksWhateverIsEnteredAndNothingThatIsShown) {
    Open(Sample("hospital.prj"));
    SaveAs(FileOf("a.prj"));
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    const auto onStep = [&](const char* button) {
        return [this, &tree, button] {
            Bar(2);
            tree.setCurrentItem(tree.topLevelItem(0));
            Click(Find<QWidget>(Window(), "panLoadProfile"), button);
        };
    };
    const auto inDialog = [](const std::function<void()>& open) {
        return [open] {
            InNextDialog([](QDialog& dialog) { Click(dialog, "cmdOK"); });
            open();
        };
    };
    const std::vector<std::pair<const char*, std::function<void()>>> edits{
        {"customer",
         [this] {
             Bar(0);
             QTest::keyClick(&Control<EntryField>("panProject", "txtCustomer"), Qt::Key_X);
         }},
        {"description",
         [this] {
             Bar(0);
             QTest::keyClick(&Control<QPlainTextEdit>("panProject", "txtDescription"), Qt::Key_X);
         }},
        {"description again",
         [this] { QTest::keyClick(&Control<QPlainTextEdit>("panProject", "txtDescription"), Qt::Key_Y); }},
        {"fuel",
         [this] {
             Bar(1);
             QTest::mouseClick(&Control<QRadioButton>("panPwrSys", "optLP"), Qt::LeftButton);
         }},
        {"voltage", [this] { QTest::keyClick(&Control<ChoiceBox>("panPwrSys", "cboVolts"), Qt::Key_Up); }},
        {"dip by key",
         [this] { QTest::keyClick(&Control<EntryField>("panPwrSys", "txtMaxVoltDip"), Qt::Key_Up); }},
        {"step moved", onStep("cmdMoveDown")},
        {"step edited",
         [&] {
             InNextDialog([](QDialog& dialog) {
                 Find<EntryField>(dialog, "txtDescription").setText("another name");
                 Click(dialog, "cmdOK");
             });
             onStep("cmdEdit")();
         }},
        {"step added", inDialog(onStep("cmdAddStep"))},
        {"step deleted", onStep("cmdDeleteStep")},
    };
    for (const auto& [what, edit] : edits) {
        SCOPED_TRACE(what);
        EXPECT_EQ(FileLabel(), "a.prj");
        edit();
        EXPECT_EQ(FileLabel(), "\u25CF a.prj");
        Run("mnuFileSave");
    }
    for (const int panel : {0, 1, 2, 3}) {
        Bar(panel);
        EXPECT_EQ(FileLabel(), "a.prj") << panel;
    }
    Open(FileOf("a.prj"));
    EXPECT_EQ(FileLabel(), "a.prj");
}

TEST_F(Saving, DialogsSuggestTheProjectsName) {
    const auto suggested = [this](const char* command) {
        platform.files = {""};
        Run(command);
        return platform.Take().at(0).file.initialName;
    };
    EXPECT_EQ(suggested("mnuFileSaveAs"), "");
    SaveAs(FileOf("mill.prj"));
    EXPECT_EQ(suggested("mnuFileSaveAs"), "mill.prj");
    Name("Mill 2/3");
    EXPECT_EQ(suggested("mnuFileSaveAs"), "Mill 2-3.prj");
    EXPECT_EQ(suggested("mnuFileOpen"), "");
    AddStepWithLoad();
    Bar(3);
    EXPECT_EQ(suggested("mnuFileSaveReport"), "Mill 2-3.rtf");
    EXPECT_EQ(suggested("mnuFileExport"), "Mill 2-3.gvx");
}

TEST_F(Saving, ReportsAndExportsAreNotWrittenOverTheirInputs) {
    AddStepWithLoad();
    SaveAs(FileOf("a.prj"));
    std::filesystem::create_symlink(folder / "a.prj", folder / "link.rtf");
    std::filesystem::create_hard_link(folder / "a.prj", folder / "hard.gvx");
    const std::string project = ReadBytes(folder / "a.prj");
    const std::string catalogue = ReadBytes(folder / "program/Genvara.db");
    Bar(3);
    for (const char* command : {"mnuFileSaveReport", "mnuFileExport", "butExport"}) {
        for (const char* name : {"a.prj", "link.rtf", "hard.gvx", "program/Genvara.db"}) {
            platform.files = {FileOf(name)};
            Run(command);
            const auto asked = platform.Take();
            ASSERT_EQ(asked.size(), 2U);
            EXPECT_EQ(
                asked[1].message.text,
                "Nothing was written to " + FileOf(name) + ": this is the " +
                    (std::string(name).ends_with(".db") ? "genset catalogue." : "file of the project."));
        }
    }
    EXPECT_EQ(ReadBytes(folder / "a.prj"), project);
    EXPECT_TRUE(ReadBytes(folder / "program/Genvara.db") == catalogue);
    platform.files = {FileOf("r.rtf")};
    Run("mnuFileSaveReport");
    EXPECT_EQ(StatusLine(), "Saved the report as r.rtf.");
    EXPECT_THAT(ReadBytes(folder / "r.rtf"), StartsWith("{\\rtf1"));
}

}  // namespace
}  // namespace genvara
