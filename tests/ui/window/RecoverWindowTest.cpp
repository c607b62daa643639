// What the window keeps against crashes, what it offers at its start, and files that others change.

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

#include "EntryField.h"
#include "Globals.h"
#include "RecoveryFiles.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class RecoverInTheWindow : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }

    std::string FileOf(const char* name) { return (folder / name).string(); }
    EntryField& Name() { return Control<EntryField>("panProject", "txtName"); }
    void Type(const char* name) {
        Bar(0);
        Name().setFocus();
        Name().selectAll();
        QTest::keyClicks(&Name(), name);
    }
    std::string FileLabel() { return Find<QLabel>(Window(), "lblFile").text().toStdString(); }
    std::vector<KeptProject> Dropped() { return DroppedProjects(folder / "state/recovery"); }
    /// Keeps what is on screen as a program does that ends without its ordinary end.
    void LeaveAsIfKilled() { Window().Rescue(); }
    int CountKept() {
        int count = 0;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "state/recovery", none)) {
            count += entry.path().extension() == ".project" ? 1 : 0;
        }
        return count;
    }
    std::string DetailsOf(QDialog& dialog) {
        return Find<QPlainTextEdit>(dialog, "txtDetails").toPlainText().toStdString();
    }
};

TEST_F(RecoverInTheWindow, ATypedTextIsKeptBeforeTheFieldIsLeft) {
    Type("Mill");
    QTest::qWait(1000);
    int waited = 0;
    while (CountKept() == 0 && waited++ < 20) {
        QTest::qWait(100);
    }
    ASSERT_EQ(CountKept(), 1);
    for (const auto& entry : std::filesystem::directory_iterator(folder / "state/recovery")) {
        if (entry.path().extension() == ".project") {
            EXPECT_THAT(ReadBytes(entry.path()), HasSubstr("\"Mill\""));
        }
    }
    EXPECT_EQ(App().Project().ProjName(), "") << "it is not stored before its time";
}

TEST_F(RecoverInTheWindow, ANormalEndWithNothingUnsavedLeavesNothing) {
    Type("Mill");
    platform.files = {FileOf("a.prj")};
    Run("mnuFileSaveAs");
    Restart();
    EXPECT_EQ(CountKept(), 0);
}

TEST_F(RecoverInTheWindow, WhatIsDroppedUnaskedCanBeHadBack) {
    Type("Only named");
    g_ProjectDirty = false;  // a name alone raises no question
    Run("mnuFileNew");
    EXPECT_EQ(Name().Content(), "");
    EXPECT_THAT(platform.Take(), IsEmpty());
    std::string details;
    InNextDialog([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmRecover");
        EXPECT_EQ(Find<QListWidget>(dialog, "lstKept").count(), 1);
        details = DetailsOf(dialog);
        Click(dialog, "cmdRestore");
    });
    Run("mnuFileRecover");
    EXPECT_THAT(details, HasSubstr("Never saved as a file.\nSteps: 0, loads: 0."));
    EXPECT_EQ(Name().Content(), "Only named");
    EXPECT_EQ(Window().ProjectFile(), "");
    EXPECT_TRUE(g_ProjectDirty) << "nobody has saved it";
    EXPECT_THAT(Dropped(), IsEmpty()) << "it is the project at hand again";
}

TEST_F(RecoverInTheWindow, WhatTheUserLetGoIsNotKept) {
    Type("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::No};
    Run("mnuFileNew");
    Type("Yard");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::Yes};
    Window().close();
    Restart();
    EXPECT_THAT(Dropped(), IsEmpty());
    EXPECT_EQ(CountKept(), 0);
}

TEST_F(RecoverInTheWindow, WhatACancelledSaveDialogDropsIsKept) {
    Type("Mill");
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::Yes};
    platform.files = {""};
    Run("mnuFileNew");
    EXPECT_EQ(Name().Content(), "");
    Restart();
    ASSERT_THAT(Dropped(), SizeIs(1));
    EXPECT_THAT(ReadBytes(Dropped()[0].project), HasSubstr("\"Mill\""));
}

TEST_F(RecoverInTheWindow, OpeningARecentFileAndClosingKeepWhatTheyDrop) {
    platform.files = {FileOf("a.prj")};
    Run("mnuFileSaveAs");
    Type("First");
    g_ProjectDirty = false;
    Run("mnuFileMRU0");
    Type("Second");
    g_ProjectDirty = false;
    Window().close();
    Restart();
    ASSERT_THAT(Dropped(), SizeIs(2));
    EXPECT_THAT(ReadBytes(Dropped()[0].project), HasSubstr("\"Second\""));
    EXPECT_THAT(ReadBytes(Dropped()[1].project), HasSubstr("\"First\""));
    EXPECT_EQ(Dropped()[1].origin.file, FileOf("a.prj"));
}

TEST_F(RecoverInTheWindow, AFileThatCannotBeReadDropsNothing) {
    Type("Mill");
    WriteBytes(folder / "garbage.prj", "Dear diary");
    Open(folder / "garbage.prj");
    Open(folder / "missing.prj");
    EXPECT_EQ(Name().Content(), "Mill");
    Run("mnuFileNew");  // and this once
    Restart();
    EXPECT_THAT(Dropped(), SizeIs(1));
}

TEST_F(RecoverInTheWindow, OffersWhatAKilledProgramLeftAndRestoresItWithoutTouchingItsFile) {
    std::filesystem::copy_file(Sample("farm.prj"), folder / "farm.prj");
    Open(folder / "farm.prj");
    Type("Precious");
    Control<EntryField>("panProject", "txtCustomer").setFocus();
    LeaveAsIfKilled();
    std::string details;
    InNextDialog([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmRecover");
        details = DetailsOf(dialog);
        Click(dialog, "cmdRestore");
    });
    Restart();
    EXPECT_THAT(details, HasSubstr("File: " + FileOf("farm.prj")));
    EXPECT_THAT(details, HasSubstr("now \"Precious\""));
    EXPECT_EQ(Name().Content(), "Precious");
    EXPECT_EQ(Window().ProjectFile(), FileOf("farm.prj"));
    EXPECT_EQ(FileLabel(), "\u25CF farm.prj");
    EXPECT_EQ(ReadBytes(folder / "farm.prj"), ReadBytes(Sample("farm.prj")));
    Run("mnuFileSave");
    EXPECT_THAT(ReadBytes(folder / "farm.prj"), HasSubstr("\"Precious\""));
    EXPECT_EQ(FileLabel(), "farm.prj");
}

TEST_F(RecoverInTheWindow, WhatIsNotRestoredStaysInTheListUntilItIsDiscarded) {
    Type("Precious");
    LeaveAsIfKilled();
    InNextDialog([](QDialog& dialog) { Click(dialog, "cmdClose"); });
    Restart();
    EXPECT_EQ(Name().Content(), "");
    EXPECT_THAT(Find<QStatusBar>(Window(), "sbrMain").currentMessage().toStdString(),
                HasSubstr("File > Recover"));
    InNextDialog([this](QDialog& dialog) {
        platform.answers = {MessageAnswer::No, MessageAnswer::Yes};
        Click(dialog, "cmdDiscard");
        EXPECT_EQ(Find<QListWidget>(dialog, "lstKept").count(), 1);
        Click(dialog, "cmdDiscard");
        EXPECT_EQ(Find<QListWidget>(dialog, "lstKept").count(), 0);
        EXPECT_FALSE(Find<QPushButton>(dialog, "cmdRestore").isEnabled());
        EXPECT_FALSE(Find<QPushButton>(dialog, "cmdDiscard").isEnabled());
        Click(dialog, "cmdClose");
    });
    Run("mnuFileRecover");
    EXPECT_THAT(Dropped(), IsEmpty());
}

TEST_F(RecoverInTheWindow, AFileThatAnotherProgramChangedIsAskedAboutBeforeItIsReplaced) {
    platform.files = {FileOf("a.prj")};
    Run("mnuFileSaveAs");
    platform.Take();
    const std::string theirs = ReadBytes(folder / "a.prj") + " ";
    WriteBytes(folder / "a.prj", theirs);
    Type("Mine");
    for (const char* save : {"mnuFileSave", "butSave"}) {
        platform.answers = {MessageAnswer::No};
        Run(save);
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, FileOf("a.prj") +
                                    " was changed by another program since it was read. Replace it with the "
                                    "project on screen?");
        EXPECT_EQ(message.buttons, MessageButtons::YesNo);
        EXPECT_EQ(ReadBytes(folder / "a.prj"), theirs);
    }
    platform.answers = {MessageAnswer::Yes};
    Run("mnuFileSave");
    EXPECT_THAT(ReadBytes(folder / "a.prj"), HasSubstr("\"Mine\""));
    platform.Take();
    Run("mnuFileSave");
    EXPECT_THAT(platform.Take(), IsEmpty()) << "its own save is nobody else's";
    Type("Elsewhere");
    WriteBytes(folder / "a.prj", theirs);
    platform.files = {FileOf("b.prj")};
    Run("mnuFileSaveAs");
    EXPECT_THAT(platform.Take(), SizeIs(1)) << "the dialog alone: another file is not touched";
}

TEST_F(RecoverInTheWindow, JsonProjectsOpenAndSaveByTheirEnding) {
    std::filesystem::copy_file(Sample("farm.prj"), folder / "farm.prj");
    Open(folder / "farm.prj");
    const std::int32_t steps = App().LoadProfile().NumLoadSteps();
    platform.files = {FileOf("farm.JSON")};
    Run("mnuFileSaveAs");
    EXPECT_EQ(ReadBytes(folder / "farm.JSON").substr(0, 1), "{");
    Type("As JSON");
    Run("mnuFileSave");
    Run("mnuFileNew");
    Open(folder / "farm.JSON");
    EXPECT_EQ(Name().Content(), "As JSON");
    EXPECT_EQ(App().LoadProfile().NumLoadSteps(), steps);
    platform.Take();
    platform.files = {""};
    Run("mnuFileSaveAs");
    EXPECT_EQ(platform.Take().at(0).file.initialName, "As JSON.json") << "what it was read as";
    platform.files = {FileOf("back.prj")};
    Run("mnuFileSaveAs");
    EXPECT_EQ(ReadBytes(folder / "back.prj").substr(0, 7), "8,0,0,1");
}

TEST_F(RecoverInTheWindow, ABrokenJsonProjectIsToldHoweverItIsOpened) {
    platform.files = {FileOf("a.json")};
    Run("mnuFileSaveAs");
    WriteBytes(folder / "a.json", "{\"Format\": \"genvara-project\", \"Version\": 1, \"Odd\": 2}");
    platform.Take();
    Open(folder / "a.json");
    platform.files = {FileOf("a.json")};
    Run("mnuFileOpen");
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("Odd"));
    Run("mnuFileMRU0");
    EXPECT_THAT(platform.TakeMessage().text, HasSubstr("Odd"));
    Window().OpenFile(FileOf("a.json"));
    EXPECT_THAT(platform.TakeMessage().text, HasSubstr("Odd"));
}

}  // namespace
}  // namespace genvara
