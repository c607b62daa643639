// F1 in dialogs: the page of the manual that is about them, readable beside them.

#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <array>

#include "HelpPages.h"
#include "HelpWindow.h"
#include "LoadKinds.h"
#include "MakeLoadForm.h"
#include "QtPlatformServices.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::IsEmpty;

class HelpKey : public WindowTest {
  protected:
    void SetUp() override {
        // The help file is set at the start, where there is one.
        App().HelpFile().Filename(GENVARA_TEST_HELP "/Helpfile.hlp");
        AddStepWithLoad();
        platform.Take();
    }
    /// Presses F1 in a modal dialog; what the desktop was asked.
    ScriptedPlatform::Asked Press(const std::function<void()>& open) {
        platform.Take();
        InNextDialog([](QDialog& dialog) {
            QWidget* focus = QApplication::focusWidget();
            QTest::keyClick(focus != nullptr && focus->window() == &dialog ? focus : &dialog, Qt::Key_F1);
        });
        open();
        const auto asked = platform.Take();
        EXPECT_EQ(asked.size(), 1U);
        return asked.empty() ? ScriptedPlatform::Asked{} : asked.front();
    }
    void OnTheProfile(const char* button) {
        Bar(2);
        auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
        tree.setCurrentItem(tree.topLevelItem(0));
        Click(Window(), button);
    }
    void ExpectHelp(const char* dialog, const char* place, const std::function<void()>& open) {
        SCOPED_TRACE(dialog);
        const auto asked = Press(open);
        EXPECT_EQ(asked.what, "help");
        EXPECT_EQ(asked.text, place);
        EXPECT_EQ(platform.helpOwner, dialog);
    }
};

TEST_F(HelpKey, OpensThePageOfEveryDialogOfTheWindow) {
    ExpectHelp("frmOptions", "site.html#defaults", [this] { Run("mnuToolsOptions"); });
    ExpectHelp("frmDefaults", "site.html#defaults", [this] { Run("mnuToolsDefaults"); });
    ExpectHelp("frmAbout", "index.html", [this] { Run("mnuHelpAbout"); });
    ExpectHelp("frmAddStep", "loads.html#common", [this] { OnTheProfile("cmdAddStep"); });
    ExpectHelp("frmEditStep", "loads.html#common", [this] { OnTheProfile("cmdEdit"); });
    ExpectHelp("frmAddLoad", "loads.html#common", [this] { OnTheProfile("cmdAddLoad"); });
}

TEST_F(HelpKey, OpensThePageOfEveryKindOfLoad) {
    constexpr std::array<const char*, 9> kPlaces{
        "loads.html#air",     "loads.html#charger", "loads.html#lighting",
        "loads.html#medical", "loads.html#misc",    "loads.html#motor",
        "loads.html#office",  "loads.html#ups",     "loads.html#vfd"};
    const LoadFormServices services{
        .owner = &Window(),
        .platform = platform,
        .host = Window(),
        .project = {
            .profile = App().LoadProfile(), .site = App().PowerSystem(), .catalogue = App().Catalogue()}};
    for (std::int32_t kind = 0; kind < load_type::kCount; ++kind) {
        ExpectHelp(FindLoadKind(kind)->form.data(), kPlaces.at(static_cast<std::size_t>(kind)),
                   [&] { DisplayNewLoadInputForm(kind, services); });
    }
}

TEST_F(HelpKey, OpensTheContentsFromADialogOfTheDesktop) {
    QDialog foreign(&Window());
    const auto asked = Press([&] { foreign.exec(); });
    EXPECT_EQ(asked.text, GENVARA_TEST_HELP "/Helpfile.hlp");
}

TEST_F(HelpKey, OtherKeysAndTheWindowItselfAreLeftAlone) {
    InNextDialog([](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_F1, Qt::ShiftModifier);
        QTest::keyClick(&dialog, Qt::Key_F2);
    });
    Run("mnuToolsOptions");
    EXPECT_THAT(platform.Take(), IsEmpty());
    QApplication::setActiveWindow(&Window());
    QTest::keyClick(&Window(), Qt::Key_F1);
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 1U) << "once, by the command's key";
    EXPECT_EQ(asked[0].text, GENVARA_TEST_HELP "/Helpfile.hlp");
}

TEST_F(HelpKey, IsToldWhereThereIsNoHelp) {
    platform.helpFails = true;
    InNextDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_F1); });
    Run("mnuToolsOptions");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].message.text, "Help not available.");
    EXPECT_EQ(asked[1].message.icon, MessageIcon::Stop);
}

TEST(HelpPages, AreThoseOfTheManual) {
    for (const HelpPage& page : kHelpPages) {
        const QString place = QString::fromUtf8(page.place.data(), static_cast<qsizetype>(page.place.size()));
        QFile file(QString(GENVARA_TEST_HELP "/") + place.section('#', 0, 0));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << page.place;
        if (place.contains('#')) {
            EXPECT_TRUE(file.readAll().contains("id=\"" + place.section('#', 1).toUtf8() + "\""))
                << page.place;
        }
    }
    EXPECT_EQ(HelpPlaceOf("frmMtrLoad"), "loads.html#motor");
    EXPECT_EQ(HelpPlaceOf("qt_msgbox"), "");
}

/// The help of the real desktop, beside a modal dialog.
TEST(HelpBesideADialog, CanBeUsedAndStaysWhenTheDialogEnds) {
    QtPlatformServices desktop("Genvara");
    QWidget main;
    main.show();
    QDialog dialog(&main);
    HelpWindow* help = nullptr;
    QTimer::singleShot(0, &dialog, [&] {
        ASSERT_TRUE(desktop.ShowHelp(&dialog, GENVARA_TEST_HELP "/Helpfile.hlp", "loads.html#ups"));
        help = dialog.findChild<HelpWindow*>("helpWindow");
        ASSERT_NE(help, nullptr) << "a window of the dialog's own is not locked out by it";
        auto& page = Find<QTextBrowser>(*help, "helpPage");
        EXPECT_EQ(page.source().fileName(), "loads.html");
        EXPECT_EQ(page.source().fragment(), "ups");
        EXPECT_GT(page.verticalScrollBar()->value(), 0) << "the place is in view";
        dialog.accept();
    });
    dialog.exec();
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->parentWidget(), &main);
    EXPECT_TRUE(help->isVisible());
    EXPECT_TRUE(desktop.ShowHelp(&main, GENVARA_TEST_HELP "/Helpfile.hlp", {}));
    EXPECT_EQ(main.findChild<HelpWindow*>("helpWindow"), help) << "the same one";
    EXPECT_FALSE(desktop.ShowHelp(&main, GENVARA_TEST_HELP "/Helpfile.hlp", "missing.html"));
    EXPECT_TRUE(desktop.CloseHelp());
}

}  // namespace
}  // namespace genvara
