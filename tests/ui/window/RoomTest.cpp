// Room on the screen: what fits, what is cut, and where the window comes back.

#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "Load.h"
#include "MakeLoadForm.h"
#include "ReportView.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

/// A screen of 1920 x 1080 at 200 %, less a desktop's bar and a window's frame [logical pixels].
constexpr QSize kRoom(950, 490);

class Room : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    /// Every dialog that a command opens, as it opens.
    void ForEachDialog(const std::function<void(QDialog&)>& look) {
        Open(Sample("hospital.prj"));
        Bar(2);
        auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
        tree.setCurrentItem(tree.topLevelItem(0));
        const std::function<void()> openers[] = {
            [this] { Run("mnuToolsOptions"); },     [this] { Run("mnuToolsDefaults"); },
            [this] { Run("mnuHelpAbout"); },        [this] { Click(Window(), "cmdAddStep"); },
            [this] { Click(Window(), "cmdEdit"); }, [this] { Click(Window(), "cmdAddLoad"); }};
        for (const auto& open : openers) {
            InNextDialog([&](QDialog& dialog) { look(dialog); });
            open();
        }
        for (std::int32_t type = 0; type < load_type::kCount; ++type) {
            const auto form = MakeLoadForm(type, {.owner = &Window(),
                                                  .platform = platform,
                                                  .host = Window(),
                                                  .project = {.profile = App().LoadProfile(),
                                                              .site = App().PowerSystem(),
                                                              .catalogue = App().Catalogue()}});
            form->show();
            QCoreApplication::processEvents();
            look(*form);
        }
    }
};

TEST_F(Room, AtTheFirstSizeTheWholeWidthOfAReportIsSeen) {
    Open(Sample("hospital.prj"));
    Window().resize(800, 567);
    Window().show();
    Bar(3);
    QCoreApplication::processEvents();
    const auto& view = Control<ReportView>("panRecommend", "rtfRecommend");
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0) << view.viewport()->width();
    EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
}

TEST_F(Room, EveryDialogFitsAFullHDScreenAtTwiceItsSize) {
    int dialogs = 0;
    ForEachDialog([&dialogs](QDialog& dialog) {
        ++dialogs;
        EXPECT_LE(dialog.width(), kRoom.width()) << dialog.objectName().toStdString();
        EXPECT_LE(dialog.height(), kRoom.height()) << dialog.objectName().toStdString();
    });
    EXPECT_EQ(dialogs, 15);
}

TEST_F(Room, NoCaptionOfADialogIsCut) {
    ForEachDialog([](QDialog& dialog) {
        auto* pages = dialog.findChild<QTabWidget*>();
        for (int page = 0; page < (pages == nullptr ? 1 : pages->count()); ++page) {
            if (pages != nullptr) {
                pages->setCurrentIndex(page);
            }
            QCoreApplication::processEvents();
            for (const auto* label : dialog.findChildren<QLabel*>()) {
                if (label->isVisible() && !label->wordWrap()) {
                    EXPECT_GE(label->width(), label->sizeHint().width())
                        << dialog.objectName().toStdString() << ": " << label->text().toStdString();
                }
            }
            for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
                if (button->isVisible() && !button->text().isEmpty()) {
                    EXPECT_GE(button->width(), button->minimumSizeHint().width())
                        << dialog.objectName().toStdString() << ": " << button->text().toStdString();
                }
            }
        }
    });
}

TEST_F(Room, TheWindowFitsItToo) {
    EXPECT_LE(Window().minimumSizeHint().height(), kRoom.height() + 20);
    EXPECT_LE(Window().minimumSizeHint().width(), kRoom.width());
}

TEST_F(Room, NoConnectionIsCutInTheFirstSize) {
    Bar(1);
    Window().resize(800, 567);
    QCoreApplication::processEvents();
    auto& list = Control<ChoiceBox>("panPwrSys", "cboConn");
    ASSERT_GT(list.count(), 0);
    QStyleOptionComboBox option;
    option.initFrom(&list);
    const QRect text =
        list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list);
    for (int row = 0; row < list.count(); ++row) {
        EXPECT_LE(list.fontMetrics().horizontalAdvance(list.itemText(row)), text.width())
            << list.itemText(row).toStdString();
    }
    for (const auto* label : Find<QWidget>(Window(), "panPwrSys").findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy() != nullptr) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
        }
    }
}

TEST_F(Room, TheFirstSizeHasRoomOnItsScreen) {
    const QSize screen = Window().screen()->availableSize();
    EXPECT_LE(Window().height(), screen.height());
}

TEST_F(Room, SizeAndPlaceComeBackAtTheNextStart) {
    Window().setGeometry(60, 90, 900, 650);
    QCoreApplication::processEvents();
    const QRect before = Window().geometry();
    EXPECT_EQ(before.size(), QSize(900, 650));
    ASSERT_TRUE(Window().close());
    Restart();
    EXPECT_EQ(Window().geometry(), before);
}

TEST_F(Room, AMaximisedWindowComesBackSo) {
    Window().showMaximized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(Window().close());
    Restart();
    EXPECT_TRUE(Window().isMaximized());
}

TEST_F(Room, APlaceThatIsDamagedOrOffTheScreenIsPassedOver) {
    for (const char* text : {"", "rubbish", "01d9d0cb0003", "ffffffffffffffffffffffff"}) {
        clsTRX_Registry& registry = App().Registry();
        registry.SubKey(CApplication::BaseRegistrySubkey() + "Window");
        registry.AutoCreate(true);
        registry.OpenKey();
        registry.Value("Geometry", registry_type::REG_SZ, std::string(text));
        Restart();
        EXPECT_EQ(Window().height(), 567) << text;
    }
    Window().setGeometry(100000, 100000, 900, 650);
    ASSERT_TRUE(Window().close());
    Restart();
    EXPECT_TRUE(Window().screen()->geometry().intersects(Window().geometry()));
}

}  // namespace
}  // namespace genvara
