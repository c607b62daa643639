// The side bar: layout, hover box, clicks and keys.

#include "ctlSideBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <algorithm>

#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(SideBar, IsAsWideAsItsTitlesInLargeLetters) {
    EXPECT_EQ(bar.width(), 110);
    bar.AddItem("long", "View Gensets", 0, 99);
    EXPECT_EQ(bar.width(), 110);
    QFont large = bar.font();
    large.setPixelSize(24);
    bar.setFont(large);
    large.setBold(true);
    EXPECT_GT(bar.width(), QFontMetrics(large).horizontalAdvance("View Gensets"));
    EXPECT_GT(bar.width(), 110);
}

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
        Move({55, first - 1});
        EXPECT_EQ(bar.ActiveCtrl(), 0) << first - 1;
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

TEST_F(SideBar, TheTitleActsLikeItsPictureAndThereIsNothingBetweenThem) {
    const QFontMetrics text(bar.font());
    const int half = text.horizontalAdvance("Title") / 2;
    for (int item = 0; item < 4; ++item) {
        // The picture ends 46.67 pixels below the item's top of 66.67 each; the title's line begins 2 below.
        const int end = (100 + 1000 * item + 600) / 15;
        for (const int y : {end, end + 1, end + 2 + text.height() / 2, end + text.height()}) {
            Move({54, y});
            EXPECT_EQ(bar.ActiveCtrl(), item + 1) << y;
            ExpectBox(item, Qt::red, Qt::blue);
            QTest::mouseClick(&bar, Qt::LeftButton, {}, {54 - half + 2, y});
            EXPECT_THAT(raised, ElementsAre(10 + item));
            raised.clear();
        }
        for (const QPoint beside : {QPoint(54 - half - 4, end + 8), QPoint(54 + half + 4, end + 8),
                                    QPoint(54, end + 2 + text.height() + 2)}) {
            Move(beside);
            EXPECT_EQ(bar.ActiveCtrl(), 0) << beside.x() << ", " << beside.y();
        }
    }
}

TEST_F(SideBar, ItsItemsAreButtonsToAScreenReader) {
    bar.Keys({"Ctrl+1", "Ctrl+2", "Ctrl+3"});
    bar.ShowCurrent(12);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->text(QAccessible::Name), "Panels");
    ASSERT_EQ(reader->childCount(), 4);
    EXPECT_EQ(reader->child(4), nullptr);
    EXPECT_EQ(reader->child(-1), nullptr);
    bar.AddItem("last", "Another title", 4, 99);
    ASSERT_EQ(reader->childCount(), 5);
    QApplication::setActiveWindow(&bar);
    bar.setFocus();
    for (int index = 0; index < 5; ++index) {
        QAccessibleInterface* item = reader->child(index);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->role(), QAccessible::Button);
        EXPECT_EQ(item->text(QAccessible::Name), index == 4 ? "Another title" : "Title");
        EXPECT_EQ(item->text(QAccessible::Accelerator), index < 3 ? QString("Ctrl+%1").arg(index + 1) : "");
        EXPECT_EQ(item->parent(), reader);
        EXPECT_EQ(reader->indexOfChild(item), index);
        EXPECT_EQ(reader->child(index), item) << "the same each time";
        EXPECT_EQ(item->childCount(), 0);
        EXPECT_EQ(item->state().checked, index == 2U) << "the panel that is shown";
        EXPECT_TRUE(item->state().checkable && item->state().focusable);
        EXPECT_EQ(item->state().focused, index == 0U);
        const QPoint middle = bar.mapToGlobal(Middle(index));
        EXPECT_TRUE(item->rect().contains(middle));
        EXPECT_EQ(reader->childAt(middle.x(), middle.y()), item);
    }
    EXPECT_EQ(reader->childAt(bar.mapToGlobal(kOutside).x(), bar.mapToGlobal(kOutside).y()), nullptr);

    QAccessibleActionInterface* second = reader->child(1)->actionInterface();
    ASSERT_NE(second, nullptr);
    EXPECT_THAT(second->actionNames(), ElementsAre("Press", "SetFocus"));
    EXPECT_EQ(second->keyBindingsForAction("Press"), QStringList{"Ctrl+2"});
    EXPECT_EQ(reader->child(3)->actionInterface()->keyBindingsForAction("Press"), QStringList());
    second->doAction("Press");
    EXPECT_THAT(raised, ElementsAre(11));
    EXPECT_EQ(reader->focusChild(), reader->child(1)) << "the keyboard goes on from there";
    reader->child(3)->actionInterface()->doAction("SetFocus");
    EXPECT_EQ(reader->focusChild(), reader->child(3));
    EXPECT_THAT(raised, ElementsAre(11));
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
    Move(Middle(3));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&bar, &leave);
    ExpectNoBox(3);
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

}  // namespace
}  // namespace genvara
