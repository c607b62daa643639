// The main window's commands on files.

#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTreeWidget>

#include "EntryField.h"
#include "Globals.h"
#include "RecentFiles.h"
#include "ReportView.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class FileCommands : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    std::string NewFile(const char* name) { return (folder / name).string(); }
    void Name(const char* text) { Control<EntryField>("panProject", "txtName").setText(text); }
    std::string ShownName() { return Control<EntryField>("panProject", "txtName").Content(); }
    void SaveAs(const std::string& file) {
        platform.files.push_back(file);
        Run("mnuFileSaveAs");
        platform.Take();
    }
    std::vector<std::string> RecentItems() {
        std::vector<std::string> items;
        for (const char* name : {"mnuFileMRU0", "mnuFileMRU1", "mnuFileMRU2", "mnuFileMRU3"}) {
            const QAction& item = Find<QAction>(Window(), name);
            if (item.isVisible()) {
                items.push_back(item.text().toStdString());
            }
        }
        return items;
    }
    /// A file that cannot be written: its folder is missing.
    std::string Unwritable() { return (folder / "missing/x.prj").string(); }
};

TEST_F(FileCommands, SavesUnderANewNameAndReadsItBack) {
    Name("Mill");
    AddStepWithLoad();
    g_ProjectDirty = true;
    platform.files = {NewFile("mill.prj")};
    Run("mnuFileSave");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].what, "save");
    EXPECT_EQ(asked[0].file.title, "Save Project");
    EXPECT_EQ(asked[0].file.defaultExtension, ".prj");
    EXPECT_EQ(asked[0].file.filter, "Project Files (*.prj)|*.prj|All Files (*.*)|*.*");
    EXPECT_EQ(asked[0].file.initialFolder, "");
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_EQ(Window().ProjectFile(), NewFile("mill.prj"));
    EXPECT_THAT(RecentItems(), ElementsAre(NewFile("mill.prj")));

    Run("mnuFileNew");
    EXPECT_EQ(ShownName(), "");
    EXPECT_EQ(App().LoadProfile().NumLoadSteps(), 0);
    Open(NewFile("mill.prj"));
    EXPECT_EQ(ShownName(), "Mill");
    EXPECT_EQ(App().LoadProfile().LoadStep(1).NumLoads(), 1);
    EXPECT_EQ(Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay").topLevelItem(0)->child(0)->text(0),
              "Heater");
    EXPECT_EQ(Window().windowTitle(), "Morvane Genvara - Mill");
}

TEST_F(FileCommands, ASecondSaveAsksNothing) {
    SaveAs(NewFile("a.prj"));
    Name("Changed");
    g_ProjectDirty = true;
    Run("mnuFileSave");
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_THAT(ReadBytes(NewFile("a.prj")), HasSubstr("\"Changed\""));
}

TEST_F(FileCommands, ACancelledSaveLeavesTheProjectUnnamedAndDirty) {
    g_ProjectDirty = true;
    platform.files = {""};
    Run("mnuFileSave");
    EXPECT_EQ(Window().ProjectFile(), "");
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(FileCommands, ASaveShowsItsTimeButTheRecordKeepsItsOwn) {
    App().Project().LastModified(DateTime{2001, 2, 3, 4, 5, 6});
    SaveAs(NewFile("a.prj"));
    EXPECT_EQ(Control<QLabel>("panProject", "lblModified").text(), "Last Saved: March 4, 2026; 03:06:07 PM");
    EXPECT_EQ(App().Project().LastModified(), (DateTime{2001, 2, 3, 4, 5, 6}));
}

TEST_F(FileCommands, ASaveStoresWhatTheFieldsHold) {
    Bar(1);
    Control<EntryField>("panPwrSys", "txtMaxVoltDip").setText("30");
    SaveAs(NewFile("a.prj"));
    EXPECT_EQ(App().PowerSystem().MaxVoltageDip(), 30);
}

TEST_F(FileCommands, NewAsksForChanges) {
    g_ProjectDirty = true;
    Name("Mill");
    platform.answers = {MessageAnswer::Cancel};
    Run("mnuFileNew");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Do you want to save the changes you made to the project?");
    EXPECT_EQ(message.icon, MessageIcon::Question);
    EXPECT_EQ(message.buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(message.title, "Genvara");
    EXPECT_EQ(ShownName(), "Mill");
    EXPECT_TRUE(g_ProjectDirty);

    platform.answers = {MessageAnswer::No};
    Run("mnuFileNew");
    EXPECT_EQ(ShownName(), "");
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(FileCommands, NewSavesFirstAndThenStartsAnew) {
    SaveAs(NewFile("a.prj"));
    Name("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::Yes};
    Run("mnuFileNew");
    EXPECT_THAT(ReadBytes(NewFile("a.prj")), HasSubstr("\"Mill\""));
    EXPECT_EQ(ShownName(), "");
    EXPECT_EQ(Window().ProjectFile(), "");
}

TEST_F(FileCommands, NewDropsAnUnnamedProjectWhoseSaveDialogIsCancelled) {
    Name("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::Yes};
    platform.files = {""};
    Run("mnuFileNew");
    EXPECT_EQ(ShownName(), "");
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(FileCommands, NewAsksAgainWhereTheProjectCannotBeSaved) {
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Yes}) {
        Name("Mill");
        g_ProjectDirty = true;
        platform.answers = {MessageAnswer::Yes, answer};
        platform.files = {Unwritable()};
        Run("mnuFileNew");
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 3U);
        EXPECT_EQ(asked[2].message.text, "The project can not be saved.\r\nOpen a new project anyway?");
        EXPECT_EQ(asked[2].message.icon, MessageIcon::Exclamation);
        EXPECT_EQ(asked[2].message.buttons, MessageButtons::YesNo);
        EXPECT_EQ(asked[2].message.title, "Genvara");
        EXPECT_EQ(ShownName(), answer == MessageAnswer::Yes ? "" : "Mill");
        g_ProjectDirty = false;
        Run("mnuFileNew");
    }
}

TEST_F(FileCommands, NewTakesTheUsersDefaultsAndTheFirstPanel) {
    App().Defaults().UserName("Ann");
    App().Defaults().VoltageLL(208);
    Bar(2);
    AddStepWithLoad();
    Bar(3);
    Run("mnuFileNew");
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_EQ(Control<EntryField>("panProject", "txtUserName").Content(), "Ann");
    EXPECT_EQ(App().PowerSystem().Voltage(), 208);
    EXPECT_EQ(Control<ReportView>("panRecommend", "rtfRecommend").RichText(), "");
    EXPECT_EQ(Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay").topLevelItemCount(), 0);
}

TEST_F(FileCommands, OpenBeginsInTheProgramsFolderUntilThereIsAPath) {
    platform.files = {""};
    Run("mnuFileOpen");
    auto asked = platform.Take();
    EXPECT_EQ(asked.at(0).file.title, "Open Project");
    EXPECT_EQ(asked.at(0).file.initialFolder, (folder / "program").string());
    App().ProjectPath("/projects");
    platform.files = {""};
    Run("mnuFileOpen");
    asked = platform.Take();
    EXPECT_EQ(asked.size(), 1U) << "a cancelled dialog says nothing";
    EXPECT_EQ(asked.at(0).file.initialFolder, "/projects");
}

TEST_F(FileCommands, OpenTellsWhyAFileCannotBeRead) {
    Name("Mill");
    platform.files = {NewFile("missing.prj")};
    Run("mnuFileOpen");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_THAT(asked[1].message.text, StartsWith("Unable to open project file.\r\n"));
    EXPECT_EQ(asked[1].message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(asked[1].message.title, "Genvara");
    EXPECT_EQ(ShownName(), "Mill");
}

TEST_F(FileCommands, TheDesktopHandsAFileOver) {
    Window().OpenFile(Sample("farm.prj").string());
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_EQ(Window().ProjectFile(), Sample("farm.prj").string());
    EXPECT_GT(App().LoadProfile().NumLoadSteps(), 0);
    Window().OpenFile(NewFile("missing.prj"));
    EXPECT_THAT(platform.TakeMessage().text, StartsWith("Unable to open project file.\r\n"));
    EXPECT_EQ(Window().ProjectFile(), "") << "a name that was never read is not saved to";
}

TEST_F(FileCommands, OpenRefusesAnIncompatibleFileButTakesItsName) {
    WriteBytes(folder / "other.prj", "8,0,0,2\r\n");
    Name("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::No};
    platform.files = {NewFile("other.prj")};
    Run("mnuFileOpen");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_EQ(asked[2].message.text, "This project file is not compatible with Genvara 8.0.0");
    EXPECT_EQ(asked[2].message.title, "Genvara 8.0.0");
    EXPECT_EQ(asked[2].message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(ShownName(), "Mill");
    EXPECT_EQ(Window().ProjectFile(), NewFile("other.prj"));
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(FileCommands, OpenSavesFirstWhereItIsAskedTo) {
    SaveAs(NewFile("a.prj"));
    Name("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::Yes};
    Open(Sample("farm.prj"));
    EXPECT_THAT(ReadBytes(NewFile("a.prj")), HasSubstr("\"Mill\""));
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(FileCommands, OpeningDoesNotChangeTheRecentList) {
    SaveAs(NewFile("a.prj"));
    SaveAs(NewFile("b.prj"));
    Open(NewFile("a.prj"));
    Open(Sample("farm.prj"));
    EXPECT_THAT(RecentItems(), ElementsAre(NewFile("b.prj"), NewFile("a.prj")));
    SaveAs(NewFile("a.prj"));
    EXPECT_THAT(RecentItems(), ElementsAre(NewFile("b.prj"), NewFile("a.prj"))) << "a listed name stays";
}

TEST_F(FileCommands, TheFifthRecentFileDropsTheOldestAndTheListSurvivesTheProgram) {
    for (const char* name : {"a.prj", "b.prj", "c.prj", "d.prj", "e.prj"}) {
        SaveAs(NewFile(name));
    }
    const auto expected = ElementsAre(NewFile("e.prj"), NewFile("d.prj"), NewFile("c.prj"), NewFile("b.prj"));
    EXPECT_THAT(RecentItems(), expected);
    Restart();
    EXPECT_THAT(RecentItems(), expected);
    EXPECT_TRUE(Find<QAction>(Window(), "mnuFileSep4").isVisible());
}

TEST_F(FileCommands, ARecentFileWithAnAmpersandIsShownAndFoundUnderItsOwnName) {
    Name("Mill");
    SaveAs(NewFile("R&D.prj"));
    SaveAs(NewFile("R&D.prj"));
    EXPECT_THAT(RecentItems(), ElementsAre((folder / "R&&D.prj").string())) << "one \"&\" marks a key";
    Run("mnuFileNew");
    Run("mnuFileMRU0");
    EXPECT_EQ(Window().ProjectFile(), NewFile("R&D.prj"));
    EXPECT_EQ(ShownName(), "Mill");
}

TEST_F(FileCommands, ARecentFileIsReadWithoutAQuestion) {
    Name("Mill");
    SaveAs(NewFile("a.prj"));
    Run("mnuFileNew");
    g_ProjectDirty = true;
    platform.Take();
    Run("mnuFileMRU0");
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_EQ(ShownName(), "Mill");
    EXPECT_TRUE(g_ProjectDirty);
}

TEST_F(FileCommands, AMissingRecentFileLeadsToTheOpenDialog) {
    SaveAs(NewFile("a.prj"));
    std::filesystem::remove(folder / "a.prj");
    platform.answers = {MessageAnswer::No};
    Run("mnuFileMRU0");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Project file not found.\r\nTry Again?");
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_EQ(message.buttons, MessageButtons::YesNo);
    platform.answers = {MessageAnswer::Yes};
    platform.files = {Sample("farm.prj").string()};
    Run("mnuFileMRU0");
    EXPECT_EQ(Window().ProjectFile(), Sample("farm.prj").string());
}

TEST_F(FileCommands, ARecentFileThatIsAFolderIsTold) {
    SaveAs(NewFile("a.prj"));
    std::filesystem::remove(folder / "a.prj");
    std::filesystem::create_directory(folder / "a.prj");
    Run("mnuFileMRU0");
    const Message message = platform.TakeMessage();
    EXPECT_THAT(message.text, StartsWith("ERROR: 21\r\n"));  // EISDIR
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_EQ(message.title, "ERROR");
}

TEST_F(FileCommands, MailSavesFirst) {
    platform.files = {""};
    Run("mnuFileSendMail");
    EXPECT_EQ(platform.Take().size(), 1U) << "a cancelled save dialog ends the command";
    platform.files = {NewFile("a.prj")};
    Run("mnuFileSendMail");
    auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].what, "mail");
    EXPECT_EQ(asked[1].text, NewFile("a.prj"));
    EXPECT_TRUE(std::filesystem::exists(folder / "a.prj"));
    platform.mailFails = true;
    Run("mnuFileSendMail");
    asked = platform.Take();
    EXPECT_EQ(asked.back().message.text, "Unable to open Microsoft Outlook(tm).");
    EXPECT_EQ(asked.back().message.icon, MessageIcon::Stop);
    EXPECT_EQ(asked.back().message.title, "");
}

TEST_F(FileCommands, MailTellsThatTheProjectCannotBeSaved) {
    platform.files = {Unwritable()};
    Run("mnuFileSendMail");
    const auto asked = platform.Take();
    EXPECT_EQ(asked.back().message.text, "Can not save project file for attachment.");
    EXPECT_EQ(asked.back().message.icon, MessageIcon::Stop);
}

class ReportCommands : public FileCommands {
  protected:
    void SetUp() override {
        AddStepWithLoad();
        Bar(3);
        platform.Take();
    }
    void ExpectComplaint(const char* text) {
        const Message message = platform.Take().back().message;
        EXPECT_EQ(message.text, text);
        EXPECT_EQ(message.icon, MessageIcon::Stop);
        EXPECT_EQ(message.title, "ERROR");
    }
};

TEST_F(ReportCommands, SaveTheReportsVeryBytes) {
    platform.files = {NewFile("r.rtf")};
    Run("mnuFileSaveReport");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].file.title, "Save Report");
    EXPECT_EQ(asked[0].file.defaultExtension, ".rtf");
    EXPECT_EQ(asked[0].file.filter, "Rich Text Files (*.rtf)|*.rtf|All Files (*.*)|*.*");
    EXPECT_EQ(ReadBytes(folder / "r.rtf"), Control<ReportView>("panRecommend", "rtfRecommend").RichText());
    platform.files = {Unwritable()};
    Run("mnuFileSaveReport");
    ExpectComplaint("An error occured while attempting to save the report.");
    platform.files = {""};
    Run("mnuFileSaveReport");
    EXPECT_EQ(platform.Take().size(), 1U);
}

TEST_F(ReportCommands, SaveTheReportAsPdfUnderTheProjectsName) {
    Name(" Mill / east\u00e9 ");
    Bar(3);
    platform.files = {NewFile("r.pdf")};
    platform.Take();
    Run("mnuFileSaveReportPdf");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].file.title, "Save Report as PDF");
    EXPECT_EQ(asked[0].file.initialName, "Mill - east\u00e9.pdf");
    EXPECT_EQ(asked[0].file.defaultExtension, ".pdf");
    EXPECT_EQ(asked[0].file.filter, "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*");
    EXPECT_TRUE(asked[0].file.asksBeforeReplacing);
    EXPECT_THAT(ReadBytes(folder / "r.pdf"), StartsWith("%PDF"));
    EXPECT_THAT(ReadBytes(folder / "r.pdf"), HasSubstr("/CreationDate (D:20260304150607"));
    EXPECT_EQ(Find<QStatusBar>(Window(), "sbrMain").currentMessage().toStdString(),
              "Saved the report as r.pdf.");
    Name("");
    platform.files = {""};
    Run("mnuFileSaveReportPdf");
    EXPECT_EQ(platform.Take().at(0).file.initialName, "");
}

TEST_F(ReportCommands, SaveNoPdfOverWhatTheReportWasMadeFrom) {
    platform.files = {NewFile("p.prj")};
    Run("mnuFileSaveAs");
    const std::string project = ReadBytes(folder / "p.prj");
    std::filesystem::create_symlink(folder / "p.prj", folder / "link.pdf");
    for (const std::filesystem::path& input :
         {folder / "p.prj", folder / "link.pdf", folder / "program/Genvara.db"}) {
        platform.files = {input.string()};
        platform.Take();
        Run("mnuFileSaveReportPdf");
        const Message message = platform.Take().back().message;
        EXPECT_THAT(message.text, StartsWith("Nothing was written to " + input.string() + ": this is the "));
    }
    EXPECT_EQ(ReadBytes(folder / "p.prj"), project);
}

TEST_F(ReportCommands, TellWhyAPdfCannotBeSaved) {
    platform.files = {(folder / "no folder/r.pdf").string()};
    Run("mnuFileSaveReportPdf");
    ExpectComplaint("The report cannot be saved: No such file or directory");
    platform.files = {""};
    Run("mnuFileSaveReportPdf");
    EXPECT_EQ(platform.Take().size(), 1U);
}

TEST_F(ReportCommands, WriteNothingWhereNoReportIsShown) {
    Control<ReportView>("panRecommend", "rtfRecommend").Clear();
    platform.Take();
    for (const char* command : {"mnuFileSaveReport", "mnuFileSaveReportPdf", "mnuFilePrint"}) {
        Run(command);
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 1U) << command;
        EXPECT_EQ(asked[0].message.text, command == std::string("mnuFilePrint")
                                             ? "There is no report to print."
                                             : "There is no report to save.");
    }
}

TEST_F(ReportCommands, ExportTheSpecOfTheSet) {
    platform.files = {NewFile("s.gvx")};
    Run("butExport");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].file.title, "Export Spec. Data");
    EXPECT_EQ(asked[0].file.initialFolder, (folder / "program").string());
    EXPECT_EQ(asked[0].file.defaultExtension, ".gvx");
    EXPECT_EQ(asked[0].file.filter, "Spec. Export Files (*.gvx)|*.gvx|All Files (*.*)|*.*");
    EXPECT_THAT(ReadBytes(folder / "s.gvx"), HasSubstr(App().Designer().SetModelNum(0)));
    platform.files = {Unwritable()};
    Run("mnuFileExport");
    ExpectComplaint("An error occured while attempting to export the spec.");
}

TEST_F(ReportCommands, ExportTellsOfCharactersThatTheFileLacks) {
    platform.files = {NewFile("s.gvx"), NewFile("t.gvx")};
    Run("mnuFileExport");
    EXPECT_EQ(Find<QStatusBar>(Window(), "sbrMain").currentMessage(), "Exported s.gvx.");
    Name("\u03a9mega \u0142");  // a Greek and a Polish letter, neither in Windows-1252
    Bar(3);
    Run("mnuFileExport");
    EXPECT_THAT(ReadBytes(folder / "t.gvx"), HasSubstr("?mega ?"));
    EXPECT_EQ(Find<QStatusBar>(Window(), "sbrMain").currentMessage(),
              "Exported t.gvx; 2 characters that the file cannot hold were written as \"?\".");
}

TEST_F(ReportCommands, PrintIntoNoFileThatTheReportWasMadeFrom) {
    const std::string project = (folder / "mill.prj").string();
    platform.files = {project};
    Run("mnuFileSaveAs");
    platform.Take();
    const std::string catalogue = (folder / "program/Genvara.db").string();
    for (const auto& [file, reason] : {std::pair(project, "this is the file of the project"),
                                       std::pair(catalogue, "this is the genset catalogue")}) {
        const std::string before = ReadBytes(file);
        platform.printFile = file;
        Run("mnuFilePrint");
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 2U) << file;
        EXPECT_EQ(asked[1].message.text, "Nothing was written to " + file + ": " + reason + ".");
        EXPECT_EQ(ReadBytes(file), before);
    }
}

TEST_F(ReportCommands, PrintTheWholeReport) {
    platform.printFile = folder / "r.pdf";
    Run("mnuFilePrint");
    EXPECT_EQ(platform.Take().at(0).what, "print");
    EXPECT_THAT(ReadBytes(folder / "r.pdf"), StartsWith("%PDF"));
    platform.printFails = true;
    Run("butPrint");
    ExpectComplaint("An error occured while attempting to print the report.");
    Run("mnuFilePrintSetup");
    ExpectComplaint("An error occured while attempting to setup the printer.");
}

}  // namespace
}  // namespace genvara
