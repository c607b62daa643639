// The project panel.

#include "panProject.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>

#include "EntryField.h"
#include "StringTable.h"
#include "Texts.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

class ProjectPanel : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    panProject& Panel() { return Find<panProject>(Window(), "panProject"); }
    QPlainTextEdit& Description() { return Control<QPlainTextEdit>("panProject", "txtDescription"); }
};

TEST_F(ProjectPanel, TakesItsCaptionsFromTheStringTable) {
    const std::pair<const char*, int> labels[] = {
        {"lblName", 130}, {"lblCustomer", 131}, {"lblDescription", 132}, {"lblUserName", 133}};
    for (const auto& [name, id] : labels) {
        EXPECT_EQ(FromQt(WithoutMnemonic(Control<QLabel>("panProject", name).text())), StringTable::Text(id));
    }
}

TEST_F(ProjectPanel, TakesSixtyFourCharactersOfAName) {
    for (const char* name : {"txtName", "txtCustomer", "txtUserName"}) {
        auto& field = Control<EntryField>("panProject", name);
        field.clear();
        QTest::keyClicks(&field, QString(70, 'x'));
        EXPECT_EQ(field.text(), QString(64, 'x')) << name;
    }
}

TEST_F(ProjectPanel, ShowsALongerNameOfAFileWhole) {
    Panel().ProjectName(std::string(70, 'y'));
    Panel().Store(App().Project());
    EXPECT_EQ(App().Project().ProjName(), std::string(70, 'y'));
}

TEST_F(ProjectPanel, StoresItsFourFields) {
    Control<EntryField>("panProject", "txtName").setText("Mill");
    Control<EntryField>("panProject", "txtCustomer").setText("Miller");
    Control<EntryField>("panProject", "txtUserName").setText("Ann");
    Description().setPlainText("Two\nlines");
    Panel().Store(App().Project());
    EXPECT_EQ(App().Project().ProjName(), "Mill");
    EXPECT_EQ(App().Project().Customer(), "Miller");
    EXPECT_EQ(App().Project().UserName(), "Ann");
}

TEST_F(ProjectPanel, EndsTheLinesOfAnEditedDescriptionAsFilesDo) {
    Panel().Description("one\r\ntwo\xC2\xA0kW");
    Description().moveCursor(QTextCursor::End);
    QTest::keyClick(&Description(), Qt::Key_Return);
    QTest::keyClicks(&Description(), "three");
    EXPECT_EQ(Panel().Description(), "one\r\ntwo\xC2\xA0kW\r\nthree");
}

TEST_F(ProjectPanel, ADescriptionThatNobodyTouchedKeepsItsBytes) {
    for (const char* text : {"one\r\ntwo", "one\ntwo", "one\rtwo", "no\u00A0break", ""}) {
        Panel().Description(text);
        EXPECT_EQ(Panel().Description(), text);
    }
}

TEST_F(ProjectPanel, TakesNoDoubleQuoteWhichWouldEndTheTextInAFile) {
    for (const char* name : {"txtName", "txtCustomer", "txtUserName"}) {
        auto& field = Control<EntryField>("panProject", name);
        field.clear();
        QTest::keyClicks(&field, "\"A\" 12\"");
        EXPECT_EQ(field.Content(), "\u201CA\u201D 12\u201D") << name;
    }
    Panel().Description("\"as it came\"");
    EXPECT_EQ(Panel().Description(), "\"as it came\"") << "not entered";
    Description().clear();
    QTest::keyClicks(&Description(), "4\" pipe");
    QTest::keyClick(&Description(), Qt::Key_Return);
    QTest::keyClicks(&Description(), "\"B\"");
    EXPECT_EQ(Panel().Description(), "4\u201D pipe\r\n\u201CB\u201D");
    Description().undo();
    EXPECT_EQ(Panel().Description().find('"'), std::string::npos);
    QApplication::clipboard()->setText("6\" and \"C\"");
    Description().clear();
    Description().paste();
    EXPECT_EQ(Panel().Description(), "6\u201D and \u201CC\u201D");
}

TEST_F(ProjectPanel, ShowsItsDatesWithTheHoursOfTwoHalves) {
    Panel().CreatedDateTime({2026, 12, 31, 0, 5, 9});
    Panel().ModifiedDateTime({2027, 1, 2, 12, 0, 0});
    EXPECT_EQ(Control<QLabel>("panProject", "lblCreated").text(), "Created: December 31, 2026; 12:05:09 AM");
    EXPECT_EQ(Control<QLabel>("panProject", "lblModified").text(),
              "Last Saved: January 2, 2027; 12:00:00 PM");
}

TEST_F(ProjectPanel, TellsWhichControlIsActive) {
    auto& customer = Control<EntryField>("panProject", "txtCustomer");
    customer.setFocus();
    EXPECT_EQ(Panel().ActiveCtrl(), &customer);
    Bar(1);
    EXPECT_EQ(Panel().ActiveCtrl(), nullptr);
}

}  // namespace
}  // namespace genvara
