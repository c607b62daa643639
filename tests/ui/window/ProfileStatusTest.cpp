// What the status bar says of the whole load, and that no message has to wait for it.

#include <QLabel>
#include <QStatusBar>

#include "ProfileFixture.h"

namespace genvara {
namespace {

class ProfileStatusLine : public ProfileTest {
  protected:
    QLabel& Label() { return Find<QLabel>(Window(), "lblRunning"); }
    std::string Text() {
        QCoreApplication::processEvents();
        return Label().isVisible() ? Label().text().toStdString() : "";
    }
    void Widen(int width) {
        Window().resize(width, Window().height());
        QCoreApplication::processEvents();
    }
};

TEST_F(ProfileStatusLine, SaysWhatRunsAndTheLargestStart) {
    Widen(1280);
    App().PowerSystem().Voltage(400);
    EXPECT_EQ(Text(), "");
    AddStep("A");
    EXPECT_EQ(Text(), "") << "nothing draws anything";
    AddLoad(1, "Heater", 30000);
    AddLoad(1, "Oven", 90000);
    AddStep("B");
    AddLoad(2, "Lamp", 4500);
    // 90 kVA / (400 V x sqrt(3)) = 129.9 A
    EXPECT_EQ(Text(), "Running 124.50 kW, 124.50 kVA. Largest start 90.00 kVA, 130 A: Oven");
    EXPECT_EQ(Label().accessibleName().toStdString(), Text());
    EXPECT_TRUE(Label().toolTip().contains("400 V"));
    Select(1, 2);
    Click(Window(), "cmdDeleteLoad");
    EXPECT_TRUE(Text().starts_with("Running 34.50 kW"));
    Run("mnuEditUndo");
    EXPECT_TRUE(Text().starts_with("Running 124.50 kW"));
    platform.answers = {MessageAnswer::No};
    Run("mnuFileNew");
    EXPECT_EQ(Text(), "");
}

TEST_F(ProfileStatusLine, FollowsTheVoltageOfTheSite) {
    Widen(1280);
    App().PowerSystem().Voltage(400);
    AddStep("A");
    AddLoad(1, "Oven", 90000);
    EXPECT_NE(Text().find("130 A"), std::string::npos) << Text();
    Window().Change("Voltage", [this] { App().PowerSystem().Voltage(480); });
    EXPECT_NE(Text().find("108 A"), std::string::npos) << Text();  // 90000 / (480 x 1.73205) = 108.25
}

TEST_F(ProfileStatusLine, LeavesTheRoomToMessages) {
    AddStep("A");
    AddLoad(1, "Oven", 90000);
    const std::string running = "Running 90.00 kW, 90.00 kVA";
    const std::string whole = running + ". Largest start 90.00 kVA, ";
    Widen(1280);
    EXPECT_TRUE(Text().starts_with(whole)) << Text();
    QStatusBar& bar = *Window().statusBar();
    const QString word("A message of the status bar");
    QString message = word;
    std::vector<std::string> texts;
    for (int longer = 0; longer < 20; ++longer) {
        message += " " + word;
        bar.showMessage(message);
        const std::string text = Text();
        const int taken = text.empty() ? 0 : Label().width();
        const int room = bar.width() - taken - Find<QWidget>(bar, "lblFile").width();
        EXPECT_TRUE(text.empty() || bar.fontMetrics().horizontalAdvance(message) < room) << longer;
        if (texts.empty() || texts.back() != text) {
            texts.push_back(text);
        }
    }
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_TRUE(texts[0].starts_with(whole));
    EXPECT_EQ(texts[1], running);
    EXPECT_EQ(texts[2], "");
    bar.clearMessage();
    EXPECT_TRUE(Text().starts_with(whole)) << "and it comes back";
}

TEST_F(ProfileStatusLine, ALongNameIsCutButSpokenWhole) {
    Widen(1280);
    const std::string name(100, 'x');
    AddStep("A");
    AddLoad(1, name, 90000);
    EXPECT_EQ(Text().find(name), std::string::npos);
    EXPECT_NE(Text().find("xxxx"), std::string::npos);
    EXPECT_TRUE(Label().accessibleName().endsWith(QString::fromStdString(name)));
}

}  // namespace
}  // namespace genvara
