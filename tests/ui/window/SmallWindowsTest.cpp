// The small pieces around the main window: about, system information, splash, error log, Edit menu, help.

#include <QCheckBox>
#include <QClipboard>
#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include "CEditMenu.h"
#include "CShellTool.h"
#include "ErrorLog.h"
#include "HelpWindow.h"
#include "QtPlatformServices.h"
#include "RaisedErrorMatcher.h"
#include "StringTable.h"
#include "SystemInfo.h"
#include "Texts.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A value of the environment, until the end of the test.
class Environment {
  public:
    Environment(const char* name, const QByteArray& value) : m_name(name), m_former(qgetenv(name)) {
        qputenv(name, value);
    }
    ~Environment() { qputenv(m_name, m_former); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    Environment(Environment&&) = delete;
    Environment& operator=(Environment&&) = delete;

  private:
    const char* m_name;
    QByteArray m_former;
};

class AboutBox : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    void InAbout(const std::function<void(QDialog&)>& act) {
        bool acted = false;
        InNextDialog([&](QDialog& dialog) {
            acted = true;
            act(dialog);
        });
        Run("mnuHelpAbout");
        EXPECT_TRUE(acted);
    }
    void Store(const char* key, const char* name, std::int32_t type, const clsTRX_Registry::Variant& value) {
        clsTRX_Registry& registry = App().Registry();
        registry.RootKey(HKEY_LOCAL_MACHINE);
        registry.SubKey(key);
        registry.AutoCreate(true);
        registry.OpenKey();
        registry.Value(name, type, value);
        registry.CloseKey();
    }
    /// What the button starts; empty if nothing.
    std::string Started() {
        InAbout([](QDialog& dialog) { Click(dialog, "cmdSysInfo"); });
        return !platform.asked.empty() && platform.asked.front().what == "start" ? platform.Take()[0].text
                                                                                 : std::string();
    }

    static constexpr const char* kInfoKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
    static constexpr const char* kToolsKey = "SOFTWARE\\Microsoft\\Shared Tools Location";
};

TEST_F(AboutBox, TellsProgramDatabaseAndBuild) {
    InAbout([this](QDialog& dialog) {
        const auto text = [&](const char* name) { return Find<QLabel>(dialog, name).text().toStdString(); };
        EXPECT_EQ(dialog.windowTitle(), "Morvane Genvara");
        EXPECT_EQ(text("lblTitle"), "Genvara 8.0.0");
        EXPECT_TRUE(Find<QLabel>(dialog, "lblTitle").font().bold());
        EXPECT_EQ(text("lblVersion"), "Database Version " + App().Designer().DatabaseVersion());
        EXPECT_FALSE(App().Designer().DatabaseVersion().empty());
        EXPECT_EQ(
            text("lblBuildDate"),
            "Build Date: " + QLocale().toString(QDate(2002, 11, 22), QLocale::LongFormat).toStdString());
        EXPECT_THAT(text("lblBuildDate"), HasSubstr("2002"));
        EXPECT_EQ(text("lblCopyright"), StringTable::Text(307));
        EXPECT_EQ(text("lblDisclaimer"), StringTable::Text(309));
        EXPECT_GT(text("lblDisclaimer").size(), text("lblCopyright").size()) << "the longer notice";
        const QFont small = Find<QLabel>(dialog, "lblDisclaimer").font();
        EXPECT_EQ(small.family(), "Arial");
        EXPECT_EQ(small.pointSize(), 7);
        EXPECT_FALSE(Find<QLabel>(dialog, "picIcon").pixmap(Qt::ReturnByValue).isNull());
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdSysInfo").text(), "&System Info...");
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdOK").text(), "OK");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
}

TEST_F(AboutBox, StartsTheSystemInformationThatTheStoreNames) {
    Store(kInfoKey, "PATH", registry_type::REG_SZ, "sysinfo --all");
    EXPECT_EQ(Started(), "sysinfo --all");
    const std::filesystem::path program = folder / "with blanks";
    WriteBytes(program, "");
    Store(kInfoKey, "PATH", registry_type::REG_SZ, program.string());
    EXPECT_EQ(Started(), '"' + program.string() + '"') << "one word, whatever its name";
}

TEST_F(AboutBox, LooksAmongTheSharedToolsNext) {
    Store(kToolsKey, "MSINFO", registry_type::REG_SZ, folder.Path().string());
    WriteBytes(folder / "MSINFO32.EXE", "");
    EXPECT_THAT(Started(), HasSubstr((folder / "MSINFO32.EXE").string()));
}

TEST_F(AboutBox, TellsThatThereIsNoSystemInformation) {
    const Environment path("PATH", folder.Path().string().c_str());
    Store(kToolsKey, "MSINFO", registry_type::REG_SZ, (folder / "nowhere").string());
    EXPECT_EQ(Started(), "");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "MSINFO32 failed to start.");
    EXPECT_EQ(message.title, "Setup Program");
}

TEST_F(AboutBox, TellsThatTheSystemInformationDoesNotStart) {
    Store(kInfoKey, "PATH", registry_type::REG_SZ, "sysinfo");
    platform.startFails = true;
    InAbout([](QDialog& dialog) { Click(dialog, "cmdSysInfo"); });
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].message.text, "MSINFO32 failed to start.");
}

TEST_F(AboutBox, ReadsIntegersOfTheStoreAsHexadecimalText) {
    std::string value = "as it was";
    EXPECT_FALSE(GetKeyValue(App().Registry(), "SOFTWARE\\Nobody", "PATH", value));
    EXPECT_EQ(value, "as it was");
    Store("SOFTWARE\\Some", "Number", registry_type::REG_DWORD, std::int32_t{-6});
    EXPECT_TRUE(GetKeyValue(App().Registry(), "SOFTWARE\\Some", "Number", value));
    EXPECT_EQ(value, "&hFFFFFFFA");
    EXPECT_FALSE(GetKeyValue(App().Registry(), "SOFTWARE\\Some", "Other", value));
}

TEST_F(AboutBox, SystemInformationLeavesTheSettingsWhereTheyAre) {
    Store(kInfoKey, "PATH", registry_type::REG_SZ, "sysinfo");
    Started();
    App().ProjectPath("/projects");
    Restart();
    EXPECT_EQ(App().ProjectPath(), "/projects");
}

TEST(Splash, IsBlankWithoutItsPicture) {
    frmSplash splash("/nowhere/GenvaraSplash.bmp", nullptr);
    EXPECT_EQ(splash.size(), QSize(7605 / 15, 5430 / 15));  // twips of a fifteenth of a pixel
    const QImage image = splash.grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::white));
        }
    }
}

TEST(Splash, ShowsItsPicture) {
    const TemporaryFolder folder;
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(ToQt((folder / "splash.bmp").string())));
    frmSplash splash(folder / "splash.bmp", nullptr);
    EXPECT_EQ(splash.grab().toImage().pixelColor(20, 20), QColor(Qt::red));
}

class ErrorLogWindow : public testing::Test {
  protected:
    std::string File() { return ReadBytes(folder / "err.log"); }
    std::string Shown() { return Find<QPlainTextEdit>(window, "txtLog").toPlainText().toStdString(); }
    void Tick() { Find<QCheckBox>(window, "chkLogFile").click(); }

    TemporaryFolder folder;
    ErrorLog log{folder.Path()};
    frmErrLog window{log};
};

TEST_F(ErrorLogWindow, HasItsCaptions) {
    EXPECT_EQ(window.windowTitle(), "Error/Debug Log");
    EXPECT_EQ(Find<QCheckBox>(window, "chkLogFile").text(), "Log to File");
    EXPECT_FALSE(Find<QCheckBox>(window, "chkLogFile").isChecked());
    const std::pair<const char*, const char*> buttons[] = {
        {"cmdClear", "&Clear Log"}, {"cmdExit", "E&xit"}, {"cmdSave", "&Save"}, {"cmdPrint", "&Print"}};
    for (const auto& [name, caption] : buttons) {
        EXPECT_EQ(Find<QPushButton>(window, name).text(), caption);
    }
}

TEST_F(ErrorLogWindow, AppendsErrorsAndDebugTextsAlike) {
    window.LogError("first");
    window.LogDebug("second");
    EXPECT_EQ(log.Text(), "first\r\nsecond\r\n");
    EXPECT_EQ(Shown(), "first\nsecond\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "err.log")) << "not ticked";
}

TEST_F(ErrorLogWindow, WritesEntriesWithABlankLineBehindEachWhileItIsTicked) {
    window.LogError("before");
    Tick();
    window.LogError("first");
    window.LogDebug("second");
    EXPECT_EQ(File(), "first\r\n\r\nsecond\r\n\r\n");
    Tick();
    window.LogError("behind");
    EXPECT_EQ(File(), "first\r\n\r\nsecond\r\n\r\n");
    ErrorLog next{folder.Path()};
    frmErrLog later{next};
    Find<QCheckBox>(later, "chkLogFile").click();
    later.LogError("third");
    EXPECT_EQ(File(), "first\r\n\r\nsecond\r\n\r\nthird\r\n\r\n") << "never truncated";
}

TEST_F(ErrorLogWindow, ClearEmptiesTheTextAndNotTheFile) {
    Tick();
    window.LogError("first");
    Find<QPushButton>(window, "cmdClear").click();
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(File(), "first\r\n\r\n");
    window.LogError("second");
    EXPECT_EQ(Shown(), "second\n");
}

TEST_F(ErrorLogWindow, ExitClosesItAndTheOtherButtonsDoNothing) {
    window.show();
    window.LogError("first");
    Find<QPushButton>(window, "cmdSave").click();
    Find<QPushButton>(window, "cmdPrint").click();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(Shown(), "first\n");
    Find<QPushButton>(window, "cmdExit").click();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ErrorLogWindow, AFileThatCannotBeWrittenIsRaised) {
    std::filesystem::create_directory(folder / "err.log");
    Tick();
    EXPECT_THROW(window.LogError("lost?"), RaisedError);
    EXPECT_THAT(log.Text(), HasSubstr("lost?")) << "it stays in memory";
}

class EditMenu : public testing::Test {
  protected:
    EditMenu() {
        QApplication::clipboard()->setText("pasted");
        line.setText("some text");
        line.setSelection(0, 4);
    }
    ScriptedPlatform platform;
    CEditMenu menu{platform};
    QLineEdit line;
    QPlainTextEdit text;
};

TEST_F(EditMenu, CutsWhereThereIsASelectionAndNoLock) {
    menu.ActiveTextBox(&line);
    EXPECT_TRUE(menu.CanCut());
    EXPECT_TRUE(menu.CanCopy());
    line.deselect();
    EXPECT_FALSE(menu.CanCut());
    EXPECT_FALSE(menu.CanCopy());
    line.selectAll();
    line.setReadOnly(true);
    EXPECT_FALSE(menu.CanCut());
    EXPECT_TRUE(menu.CanCopy()) << "as in the report view";
}

TEST_F(EditMenu, BothSettersSetTheOneControl) {
    text.setPlainText("more");
    text.selectAll();
    menu.ActiveTextBox(&line);
    menu.ActiveRTFBox(&text);
    line.deselect();
    EXPECT_TRUE(menu.CanCopy());
    menu.ActiveTextBox(&line);
    EXPECT_FALSE(menu.CanCopy());
}

TEST_F(EditMenu, PastesWhateverTheControlIs) {
    line.setReadOnly(true);
    menu.ActiveTextBox(&line);
    EXPECT_TRUE(menu.CanPaste());
    platform.clipboardHoldsText = false;
    EXPECT_FALSE(menu.CanPaste());
    line.setReadOnly(false);
    EXPECT_FALSE(menu.CanPaste());
}

TEST_F(EditMenu, CommandsReachTheControl) {
    menu.ActiveTextBox(&line);
    menu.Cut();
    EXPECT_EQ(line.text(), " text");
    EXPECT_EQ(QApplication::clipboard()->text(), "some");
    line.setCursorPosition(5);
    menu.Paste();
    EXPECT_EQ(line.text(), " textsome");
    text.setPlainText("more");
    text.selectAll();
    menu.ActiveTextBox(&text);
    menu.Copy();
    EXPECT_EQ(QApplication::clipboard()->text(), "more");
    menu.Cut();
    EXPECT_EQ(text.toPlainText(), "");
}

TEST_F(EditMenu, NoCommandChangesALockedControl) {
    line.setReadOnly(true);
    text.setPlainText("more");
    text.selectAll();
    text.setReadOnly(true);
    for (QWidget* control : std::initializer_list<QWidget*>{&line, &text}) {
        menu.ActiveTextBox(control);
        menu.Cut();
        menu.Paste();
    }
    EXPECT_EQ(line.text(), "some text");
    EXPECT_EQ(text.toPlainText(), "more");
    menu.ActiveTextBox(&line);
    menu.Copy();
    EXPECT_EQ(QApplication::clipboard()->text(), "some");
}

TEST(HelpFile, KeepsItsNameWhereAFileIsMissing) {
    const TemporaryFolder folder;
    const std::string file = (folder / "Helpfile.hlp").string();
    WriteBytes(file, "help");
    clsTRX_HelpFile help;
    EXPECT_EQ(help.Filename(), "");
    EXPECT_EQ(help.RequestingWindow(), 0);
    help.Filename(file);
    EXPECT_THAT([&] { help.Filename((folder / "other.hlp").string()); },
                Raises(0x8004044F, "clsTRX_HelpFileFilename <property let> --- ", "Help file not found."));
    EXPECT_EQ(help.Filename(), file);
}

TEST(HelpFile, HandsCommandsToTheViewerAndRaisesWhatFails) {
    clsTRX_HelpFile help;
    EXPECT_THAT([&] { help.ShowHelp(); },
                Raises(0x8004044E, ".ShowHelp", "Unable to display requested help window."));
    std::vector<std::int32_t> commands;
    bool works = true;
    help.HelpViewer([&](std::int32_t window, const std::string&, std::int32_t command) {
        commands.insert(commands.end(), {window, command});
        return works;
    });
    help.RequestingWindow(5);
    help.ShowHelp();
    help.CloseFile();
    EXPECT_THAT(commands, ElementsAre(5, 11, 5, 2));
    works = false;
    EXPECT_THAT([&] { help.CloseFile(); },
                Raises(0x8004044D, "CloseFile <sub> --- ", "Unable to close help file window."));
}

/// The real desktop's services, as far as they work without a screen.
class Desktop : public testing::Test {
  protected:
    /// What a message box shows while it is up; it is answered by a key.
    template <typename Look>
    MessageAnswer Answer(const Message& message, Qt::Key key, Look look) {
        bool looked = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            looked = true;
            look(*box);
            QTest::keyClick(box, key);
            if (box->isVisible()) {
                box->done(0);
            }
        });
        const MessageAnswer answer = desktop.ShowMessage(nullptr, message);
        EXPECT_TRUE(looked);
        return answer;
    }

    QtPlatformServices desktop{"Genvara"};
    TemporaryFolder folder;
};

TEST_F(Desktop, ShowsAMessageAsItIs) {
    const std::pair<MessageIcon, QMessageBox::Icon> icons[] = {
        {MessageIcon::None, QMessageBox::NoIcon},
        {MessageIcon::Stop, QMessageBox::Critical},
        {MessageIcon::Question, QMessageBox::Question},
        {MessageIcon::Exclamation, QMessageBox::Warning},
        {MessageIcon::Information, QMessageBox::Information}};
    for (const auto& [icon, shown] : icons) {
        Answer({.text = "<b>5 & 6</b>\r\nmore", .icon = icon, .title = "ERROR"}, Qt::Key_Escape,
               [shown = shown](QMessageBox& box) {
                   EXPECT_EQ(box.icon(), shown);
                   EXPECT_EQ(box.text(), "<b>5 & 6</b>\nmore");
                   EXPECT_EQ(box.textFormat(), Qt::PlainText) << "no markup";
                   EXPECT_EQ(box.windowTitle(), "ERROR");
               });
    }
    Answer({.text = "no title"}, Qt::Key_Escape,
           [](QMessageBox& box) { EXPECT_EQ(box.windowTitle(), "Genvara"); });
}

TEST_F(Desktop, ReturnsTheAnswer) {
    const auto nothing = [](QMessageBox&) {};
    EXPECT_EQ(Answer({.text = "?", .buttons = MessageButtons::YesNoCancel}, Qt::Key_Escape, nothing),
              MessageAnswer::Cancel);
    EXPECT_EQ(Answer({.text = "?", .buttons = MessageButtons::YesNoCancel}, Qt::Key_Return, nothing),
              MessageAnswer::Yes);
    EXPECT_EQ(Answer({.text = "?"}, Qt::Key_Escape, nothing), MessageAnswer::Ok);
}

TEST_F(Desktop, TellsWhetherTheClipboardHoldsText) {
    QApplication::clipboard()->setText("text");
    EXPECT_TRUE(desktop.ClipboardHoldsText());
    auto* data = new QMimeData;
    data->setData("application/x-nothing", "1");
    QApplication::clipboard()->setMimeData(data);
    EXPECT_FALSE(desktop.ClipboardHoldsText());
}

TEST_F(Desktop, RunsProgramsToTheirEndAndWithout) {
    const CShellTool shell(desktop);
    EXPECT_EQ(shell.ExecCmd("/bin/sh -c \"exit 3\""), 3);
    EXPECT_EQ(shell.ExecCmd("/bin/sh -c \"exit 0\""), 0);
    EXPECT_EQ(shell.ExecCmd("/nowhere/to/be/found"), std::nullopt);
    EXPECT_EQ(shell.ExecCmd(""), std::nullopt);
    const std::string file = (folder / "done").string();
    EXPECT_TRUE(shell.ExecCmdModeless(ToQt("/bin/sh -c \"echo done > '" + file + "'\"")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(file); }));
    EXPECT_FALSE(shell.ExecCmdModeless("/nowhere/to/be/found"));
    EXPECT_FALSE(shell.ExecCmdModeless(" "));
}

TEST_F(Desktop, ShowsFindsInAndClosesTheHelp) {
    WriteBytes(folder / "Helpfile.hlp",
               "<html><body><h1>Steps</h1><p>A genset starts a step.</p></body></html>");
    EXPECT_TRUE(desktop.CloseHelp()) << "there is none";
    EXPECT_FALSE(desktop.ShowHelp(nullptr, (folder / "missing.hlp").string(), {}));
    ASSERT_TRUE(desktop.ShowHelp(nullptr, (folder / "Helpfile.hlp").string(), {}));
    HelpWindow* help = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<HelpWindow*>(widget); window != nullptr && window->isVisible()) {
            help = window;
        }
    }
    ASSERT_NE(help, nullptr);
    auto& page = Find<QTextBrowser>(*help, "helpPage");
    EXPECT_THAT(page.toPlainText().toStdString(), HasSubstr("A genset starts a step."));
    auto& find = Find<QLineEdit>(*help, "txtFind");
    QTest::keyClicks(&find, "step");
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_EQ(page.textCursor().selectedText(), "Step");
    const int first = page.textCursor().position();
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_GT(page.textCursor().position(), first);
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_EQ(page.textCursor().position(), first) << "from the beginning again";
    EXPECT_TRUE(desktop.CloseHelp());
    EXPECT_FALSE(help->isVisible());
}

}  // namespace
}  // namespace genvara
