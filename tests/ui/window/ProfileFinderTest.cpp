// Finding steps and loads by what is said of them.

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "CMtrLoad.h"
#include "ProfileFinder.h"
#include "ProfileFixture.h"

namespace genvara {
namespace {

class Finder : public ProfileTest {
  protected:
    void SetUp() override {
        ProfileTest::SetUp();
        AddStep("Pumps");
        AddLoad(1, "Booster");
        auto motor = std::make_unique<CMtrLoad>();
        motor->name("Jockey");
        motor->Description("keeps the PUMP room dry");
        const std::int32_t id = Profile().LoadStep(1).AddLoad(std::move(motor));
        Panel().DisplayNewLoad(1, id);
        AddStep("Light");
        AddLoad(2, "Spare pump");
        Select(1);
        Tree().setFocus();
        QTest::keyClick(&Window(), Qt::Key_F, Qt::ControlModifier);
    }
    QLineEdit& Text() { return Control<QLineEdit>("panLoadProfile", "txtFind"); }
    std::string Said() { return Control<QLabel>("panLoadProfile", "lblFound").text().toStdString(); }
    bool IsOpen() { return Control<ProfileFinder>("panLoadProfile", "fraFind").isVisible(); }
    void Type(const char* text) {
        Text().clear();
        QTest::keyClicks(&Text(), text);
    }
    /// Text of the selected row.
    std::string Found() { return Tree().Selected()->text(0).toStdString(); }
};

TEST_F(Finder, EveryPictureThatIsPressedHasAName) {
    for (const auto* button :
         Control<QWidget>("panLoadProfile", "fraFind").findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty() && button->text().isEmpty())
            << button->metaObject()->className();
    }
}

TEST_F(Finder, FindsNamesDescriptionsAndKindsWhileOneTypes) {
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(Text().hasFocus());
    Type("pump");
    EXPECT_EQ(Found(), "Pumps") << "the row at hand counts";
    EXPECT_EQ(Said(), "1 of 3");
    Type("boo");
    EXPECT_EQ(Found(), "Booster");
    Type("motor");
    EXPECT_EQ(Found(), "Jockey");
    EXPECT_EQ(Said(), "1 of 1");
    Type("LIGHT");
    EXPECT_EQ(Found(), "Light");
    Type("misc");
    EXPECT_EQ(Said(), "2 of 2") << "behind the row at hand first";
    EXPECT_EQ(Found(), "Spare pump");
}

TEST_F(Finder, GoesOnAndBackAroundTheEnds) {
    Type("pump");
    std::vector<std::string> found;
    for (int time = 0; time < 3; ++time) {
        QTest::keyClick(&Text(), Qt::Key_Return);
        found.push_back(Found() + " " + Said());
    }
    EXPECT_THAT(found, testing::ElementsAre("Jockey 2 of 3", "Spare pump 3 of 3", "Pumps 1 of 3"));
    QTest::keyClick(&Text(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Found(), "Spare pump");
    QTest::keyClick(&Window(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Found(), "Jockey");
    QTest::keyClick(&Window(), Qt::Key_F3);
    EXPECT_EQ(Found(), "Spare pump");
    Click(Window(), "cmdFindNext");
    EXPECT_EQ(Found(), "Pumps");
    Click(Window(), "cmdFindPrevious");
    EXPECT_EQ(Found(), "Spare pump");
    EXPECT_TRUE(platform.Take().empty()) << "Enter pressed nothing else";
}

TEST_F(Finder, SaysThatThereIsNoMatch) {
    Type("pump");
    QTest::keyClick(&Text(), Qt::Key_Return);
    Type("zzz");
    EXPECT_EQ(Said(), "no match");
    EXPECT_EQ(Found(), "Jockey") << "the selection stays";
    QTest::keyClick(&Text(), Qt::Key_Return);
    EXPECT_EQ(Said(), "no match");
    Text().selectAll();
    QTest::keyClick(&Text(), Qt::Key_Delete);
    EXPECT_EQ(Said(), "");
}

TEST_F(Finder, ClosesAndComesBackWithItsText) {
    Type("pump");
    QTest::keyClick(&Text(), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(Tree().hasFocus());
    QTest::keyClick(&Window(), Qt::Key_F3);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Found(), "Jockey");
    EXPECT_TRUE(Tree().hasFocus()) << "the focus stays with F3";
    QTest::keyClick(&Window(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Text().selectedText(), "pump");
    Click(Window(), "cmdFindClose");
    EXPECT_FALSE(IsOpen());
}

TEST_F(Finder, LooksAtTheProfileAsItIs) {
    Type("pump");
    EXPECT_EQ(Said(), "1 of 3");
    AddLoad(2, "Pump of tomorrow");
    QTest::keyClick(&Text(), Qt::Key_Return);
    EXPECT_EQ(Said(), "2 of 4");
    Panel().ClearAllLoads();
    Profile().DeleteAllLoadSteps();
    QTest::keyClick(&Text(), Qt::Key_Return);
    EXPECT_EQ(Said(), "no match");
}

TEST_F(Finder, BelongsToTheLoadProfile) {
    EXPECT_TRUE(Enabled("mnuEditFind"));
    Bar(0);
    EXPECT_FALSE(Enabled("mnuEditFind"));
    EXPECT_FALSE(Enabled("mnuEditFindNext"));
    EXPECT_FALSE(Enabled("mnuEditFindPrevious"));
}

}  // namespace
}  // namespace genvara
