// The small pieces around the main window: about, system information, splash, error log, side bar, Edit menu,
// help, and what all dialogs have in common.

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QDate>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>

#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <map>

#include "CEditMenu.h"
#include "CShellTool.h"
#include "EntryField.h"
#include "ErrorLog.h"
#include "HelpWindow.h"
#include "QtPlatformServices.h"
#include "RaisedErrorMatcher.h"
#include "StringTable.h"
#include "SystemInfo.h"
#include "Texts.h"
#include "WindowFixture.h"
#include "ctlSideBar.h"

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

/// Four items with the raise values 10 to 13, and a palette whose edges are told apart.
class SideBar : public testing::Test {
  protected:
    SideBar() {
        QPalette colours = bar.palette();
        colours.setColor(QPalette::Light, Qt::red);
        colours.setColor(QPalette::Dark, Qt::blue);
        bar.setPalette(colours);
        for (int item = 0; item < 4; ++item) {
            bar.AddItem("key" + std::to_string(item), "Title", item, 10 + item);
        }
        QObject::connect(&bar, &ctlSideBar::ItemClicked,
                         [this](std::int32_t value) { raised.push_back(value); });
        bar.resize(110, 400);
        bar.show();
    }
    /// Middle of an item's picture: 100 and 1000 twips an item down, 600 twips high, 15 twips a pixel.
    static QPoint Middle(int item) { return {55, (100 + 1000 * item + 300) / 15}; }
    /// Whether a colour is on the bar's edge of the box around an item, from the picture's middle to the left
    /// or the right; the box lies 20 twips, 1 1/3 pixels, outside the picture of 40 pixels.
    bool Edge(int item, int direction, const QColor& colour) {
        const QImage image = bar.grab().toImage();
        const QPoint middle = Middle(item);
        for (int away = 20; away <= 22; ++away) {
            if (image.pixelColor(middle.x() + direction * away, middle.y()) == colour) {
                return true;
            }
        }
        return false;
    }
    void ExpectBox(int item, const QColor& left, const QColor& right) {
        EXPECT_TRUE(Edge(item, -1, left)) << item;
        EXPECT_TRUE(Edge(item, 1, right)) << item;
    }
    void ExpectNoBox(int item) {
        for (const QColor& colour : {QColor(Qt::red), QColor(Qt::blue)}) {
            EXPECT_FALSE(Edge(item, -1, colour)) << item;
            EXPECT_FALSE(Edge(item, 1, colour)) << item;
        }
    }
    void Move(const QPoint& to, Qt::MouseButtons buttons = Qt::NoButton) {
        QMouseEvent event(QEvent::MouseMove, to, bar.mapToGlobal(to), Qt::NoButton, buttons, {});
        QApplication::sendEvent(&bar, &event);
    }

    static inline const QPoint kOutside{3, 395};
    ctlSideBar bar{"barMain"};
    std::vector<std::int32_t> raised;
};

TEST_F(SideBar, KeepsItsItemsByKey) {
    const CBarItem& item = bar.AddItem("fifth", "More", 4, 77);
    EXPECT_EQ(item.Title, "More");
    EXPECT_EQ(item.IconIndex, 4);
    EXPECT_EQ(item.Key, "fifth");
    EXPECT_EQ(item.RaiseValue, 77);
    EXPECT_THAT([this] { bar.AddItem("fifth", "Again", 0, 0); },
                Raises(457, "ctlSideBar::AddItem",
                       "This key is already associated with an element of this collection"));
}

TEST_F(SideBar, LaysPicturesOutInTwips) {
    // Item i from 100 + 1000 i twips on, 600 high: 6.67 .. 46.67, 73.33 .. 113.33, 140 .. 180, 206.67 ..
    // 246.67
    const std::pair<int, int> rows[] = {{7, 46}, {74, 113}, {140, 179}, {207, 246}};
    int item = 0;
    for (const auto& [first, last] : rows) {
        ++item;
        for (const int y : {first, last}) {
            Move({55, y});
            EXPECT_EQ(bar.ActiveCtrl(), item) << y;
        }
        for (const int y : {first - 1, last + 2}) {
            Move({55, y});
            EXPECT_EQ(bar.ActiveCtrl(), 0) << y;
        }
        // Half of the width less the picture's: 35 .. 75.
        for (const int x : {35, 74}) {
            Move({x, first + 10});
            EXPECT_EQ(bar.ActiveCtrl(), item) << x;
        }
        for (const int x : {34, 76}) {
            Move({x, first + 10});
            EXPECT_EQ(bar.ActiveCtrl(), 0) << x;
        }
    }
}

TEST_F(SideBar, PrintsTheTitleCentredBeneathThePicture) {
    const QImage image = bar.grab().toImage();
    const QColor ground = image.pixelColor(3, 120);
    int left = 110;
    int right = 0;
    for (int y = 48; y < 70; ++y) {
        for (int x = 3; x < 106; ++x) {
            if (image.pixelColor(x, y) != ground) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    ASSERT_LT(left, right) << "there is a title";
    EXPECT_NEAR((left + right) / 2.0, 54.5, 2.0);
}

TEST_F(SideBar, ShowsTheLargePicturesAndTheSmallOnesWithoutThem) {
    const auto icon = [](Qt::GlobalColor colour) {
        QPixmap picture(40, 40);
        picture.fill(colour);
        return QIcon(picture);
    };
    bar.SmallIcons({icon(Qt::green)});
    EXPECT_EQ(bar.grab().toImage().pixelColor(Middle(0)), QColor(Qt::green));
    bar.LargeIcons({icon(Qt::yellow)});
    EXPECT_EQ(bar.grab().toImage().pixelColor(Middle(0)), QColor(Qt::yellow));
}

TEST_F(SideBar, RaisesAndSinksTheBoxOfTheItemUnderThePointer) {
    Move(Middle(1));
    ExpectBox(1, Qt::red, Qt::blue);
    ExpectNoBox(0);
    Move(Middle(1), Qt::LeftButton);
    ExpectBox(1, Qt::blue, Qt::red);
    Move(Middle(2), Qt::LeftButton);
    ExpectNoBox(1);
    ExpectBox(2, Qt::blue, Qt::red);
    Move(kOutside);
    ExpectNoBox(2);
    EXPECT_EQ(bar.ActiveCtrl(), 0);
}

TEST_F(SideBar, ThePressSinksTheBoxAndTheReleaseRaisesTheItem) {
    QTest::mousePress(&bar, Qt::LeftButton, {}, Middle(3));
    ExpectBox(3, Qt::blue, Qt::red);
    EXPECT_THAT(raised, IsEmpty());
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, Middle(3));
    ExpectBox(3, Qt::red, Qt::blue);
    EXPECT_THAT(raised, ElementsAre(13));
}

TEST_F(SideBar, AReleaseOutsideRaisesNothing) {
    QTest::mousePress(&bar, Qt::LeftButton, {}, Middle(0));
    Move(kOutside, Qt::LeftButton);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, kOutside);
    EXPECT_THAT(raised, IsEmpty());
}

TEST_F(SideBar, AReleaseOnAnotherItemRaisesThatOne) {
    QTest::mousePress(&bar, Qt::LeftButton, {}, Middle(0));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, Middle(2));
    EXPECT_THAT(raised, ElementsAre(12));
    QTest::mousePress(&bar, Qt::LeftButton, {}, kOutside);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, Middle(1));
    EXPECT_THAT(raised, ElementsAre(12, 11)) << "the press may have been beside them";
    QTest::mouseClick(&bar, Qt::RightButton, {}, Middle(0));
    EXPECT_THAT(raised, ElementsAre(12, 11, 10)) << "any button";
}

TEST_F(SideBar, AReleaseWhosePressWentElsewhereRaisesNothing) {
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, Middle(0));
    EXPECT_THAT(raised, IsEmpty());
}

TEST_F(SideBar, TheKeyboardDoesWhatTheMouseDoes) {
    bar.setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Space, Qt::Key_End, Qt::Key_Enter,
                              Qt::Key_Down, Qt::Key_Return, Qt::Key_Home, Qt::Key_Up, Qt::Key_Return}) {
        QTest::keyClick(&bar, key);
    }
    EXPECT_THAT(raised, ElementsAre(10, 11, 13, 13, 10));
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

    QtPlatformServices desktop;
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
           [](QMessageBox& box) { EXPECT_EQ(box.windowTitle(), QApplication::applicationDisplayName()); });
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
    EXPECT_FALSE(desktop.ShowHelp(nullptr, (folder / "missing.hlp").string()));
    ASSERT_TRUE(desktop.ShowHelp(nullptr, (folder / "Helpfile.hlp").string()));
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

/// What holds for the dialogs of the main window alike.
class AllDialogs : public WindowTest {
  protected:
    void SetUp() override {
        AddStepWithLoad();
        platform.Take();
    }
    struct Opener {
        const char* dialog;
        std::function<void()> open;
    };
    std::vector<Opener> Dialogs() {
        const auto onTheProfile = [this](const char* button) {
            return [this, button] {
                Bar(2);
                auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
                tree.setCurrentItem(tree.topLevelItem(0));
                Click(Window(), button);
            };
        };
        return {{"frmOptions", [this] { Run("mnuToolsOptions"); }},
                {"frmDefaults", [this] { Run("mnuToolsDefaults"); }},
                {"frmAbout", [this] { Run("mnuHelpAbout"); }},
                {"frmAddStep", onTheProfile("cmdAddStep")},
                {"frmEditStep", onTheProfile("cmdEdit")},
                {"frmAddLoad", onTheProfile("cmdAddLoad")}};
    }
    void ForEach(const std::function<void(QDialog&)>& look) {
        for (const Opener& opener : Dialogs()) {
            SCOPED_TRACE(opener.dialog);
            bool looked = false;
            InNextDialog([&](QDialog& dialog) {
                looked = true;
                EXPECT_EQ(dialog.objectName(), opener.dialog);
                QApplication::setActiveWindow(&dialog);
                look(dialog);
            });
            opener.open();
            EXPECT_TRUE(looked);
        }
    }
    /// Every page of a dialog in turn; the dialog itself where it has none.
    static void ForEachPage(QDialog& dialog, const std::function<void()>& look) {
        auto* pages = dialog.findChild<QTabWidget*>();
        for (int page = 0; page < (pages == nullptr ? 1 : pages->count()); ++page) {
            if (pages != nullptr) {
                pages->setCurrentIndex(page);
            }
            look();
        }
    }
    static bool TakesTab(const QWidget& widget) {
        return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr &&
               widget.isVisible() && widget.isEnabled();
    }
};

TEST_F(AllDialogs, EveryControlHasAWordForReaders) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            for (QWidget* widget : dialog.findChildren<QWidget*>()) {
                if (TakesTab(*widget)) {
                    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
                    ASSERT_NE(reader, nullptr);
                    const QString name = reader->text(QAccessible::Name);
                    EXPECT_FALSE(name.isEmpty()) << widget->objectName().toStdString();
                    EXPECT_FALSE(name.contains('&')) << name.toStdString();
                }
            }
        });
    });
}

TEST_F(AllDialogs, NoTwoCaptionsShareAKey) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            std::map<QString, QString> keys;
            const auto use = [&keys](const QString& caption) {
                const qsizetype mark = caption.indexOf('&');
                if (mark >= 0) {
                    const auto [place, fresh] = keys.emplace(caption.mid(mark + 1, 1).toUpper(), caption);
                    EXPECT_TRUE(fresh)
                        << caption.toStdString() << " and " << place->second.toStdString() << " share a key";
                }
            };
            for (const auto* label : dialog.findChildren<QLabel*>()) {
                if (label->isVisible() && label->buddy() != nullptr) {
                    use(label->text());
                }
            }
            for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
                if (button->isVisible()) {
                    use(button->text());
                }
            }
        });
    });
}

TEST_F(AllDialogs, TabFollowsTheLayout) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            constexpr int kOneLine = 12;  // pixels between the middles of what stands in one line
            std::vector<QWidget*> stops;
            for (QWidget* widget = dialog.nextInFocusChain(); widget != &dialog;
                 widget = widget->nextInFocusChain()) {
                if (TakesTab(*widget) && dialog.isAncestorOf(widget)) {
                    stops.push_back(widget);
                }
            }
            ASSERT_GE(stops.size(), 2U);
            for (std::size_t stop = 1; stop < stops.size(); ++stop) {
                const auto middle = [&dialog](const QWidget* widget) {
                    return widget->mapTo(&dialog, widget->rect().center());
                };
                const QPoint from = middle(stops[stop - 1]);
                const QPoint to = middle(stops[stop]);
                const bool oneLine = std::abs(to.y() - from.y()) <= kOneLine;
                EXPECT_TRUE(oneLine ? to.x() > from.x() : to.y() > from.y())
                    << stops[stop - 1]->objectName().toStdString() << " before "
                    << stops[stop]->objectName().toStdString();
            }
        });
    });
}

TEST_F(AllDialogs, EscapeClosesWithoutWriting) {
    const CLoadStep& step = App().LoadProfile().LoadStep(1);
    ForEach([this](QDialog& dialog) {
        for (auto* field : dialog.findChildren<EntryField*>()) {
            if (!field->isReadOnly()) {
                field->setText("7");
            }
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.result(), QDialog::Rejected);
        EXPECT_TRUE(platform.Take().empty());
    });
    EXPECT_EQ(App().Designer().MaxLoading(), 80);
    EXPECT_EQ(App().Designer().MaxSetsRecommended(), 16);
    EXPECT_EQ(App().ProjectPath(), "");
    EXPECT_EQ(App().Defaults().UserName(), "");
    EXPECT_EQ(App().Defaults().NumParallelSets(), 1);
    EXPECT_EQ(App().LoadProfile().NumLoadSteps(), 1);
    EXPECT_EQ(step.Description(), "Step");
    EXPECT_EQ(step.NumLoads(), 1);
}

TEST_F(AllDialogs, EnterIsOk) {
    ForEach([](QDialog& dialog) {
        bool pressed = false;
        auto& ok = Find<QPushButton>(dialog, "cmdOK");
        EXPECT_TRUE(ok.isDefault());
        QObject::connect(&ok, &QPushButton::pressed, [&pressed] { pressed = true; });
        ok.disconnect(SIGNAL(clicked(bool)));  // what it does is tested elsewhere
        if (auto* list = dialog.findChild<QListWidget*>()) {
            list->setCurrentRow(0);  // OK waits for a choice
        }
        QWidget* at = QApplication::focusWidget();
        ASSERT_NE(at, nullptr) << "the focus is where the next entry is";
        QTest::keyClick(at, Qt::Key_Return);
        EXPECT_TRUE(pressed);
    });
}

}  // namespace
}  // namespace genvara
